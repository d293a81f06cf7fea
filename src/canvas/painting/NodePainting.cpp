#include <algorithm>
#include <cmath>

#include <QLinearGradient>
#include <QPainter>

#include "canvas/geometry/Handles.h"
#include "canvas/painting/BadgeLook.h"
#include "canvas/painting/HiddenCount.h"
#include "canvas/painting/NodeLayer.h"
#include "canvas/painting/PartVisibility.h"
#include "canvas/painting/Symbols.h"
#include "themes/Color.h"

// How one topic is painted.

namespace quilmora {

namespace {

constexpr double borderWidth = 1.5;
constexpr double selectedBorderWidth = 2.5;
constexpr double dropBorderWidth = 3.0;
constexpr double imageCornerRadius = 4.0;
// The ring around a selected topic, so that the selection shows even on a fill of its colour. It never gets thinner
// than a few window pixels.
constexpr double ringGap = 2.0;
constexpr double ringWidth = 2.0;
constexpr double minRingPixels = 1.25;
constexpr double countFontSize = 9.0;
constexpr double countHeight = 13.0;
constexpr double countPadding = 5.0;

QColor mixed(const QColor& a, const QColor& b, double weight) {
  const auto mix = [weight](int x, int y) { return static_cast<int>(std::lround(x * weight + y * (1.0 - weight))); };
  return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

void paintDisc(QPainter& painter, const QRectF& rect, const QColor& color) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawEllipse(rect);
}

}  // namespace

bool NodeLayer::isDropTarget(const QUuid& id) const {
  const auto target = m_context.scene.shown.dropTarget();
  return m_context.options.selection && target && target->id == id;
}

QColor NodeLayer::dropColor() const {
  return m_context.scene.shown.dropTarget()->isReparenting ? m_context.colors.reparentTarget
                                                           : m_context.colors.connectionTarget;
}

NodeLayer::Border NodeLayer::borderOf(const Node& node, bool isSelected) const {
  if (isDropTarget(node.id)) return {dropColor(), dropBorderWidth};
  if (isSelected) return {m_context.colors.selection, selectedBorderWidth};
  return {colorFromHex(node.style.stroke), borderWidth};
}

// The background below dimmed topics comes first, then dots, then topics.
void NodeLayer::paintPiece(std::size_t number) {
  const std::size_t bundles = pieceCount() - m_dimmed.size() - m_seen.size();
  if (number < m_dimmed.size())
    paintGround(m_seen[m_dimmed[number]]);
  else if (number < m_dimmed.size() + bundles)
    paintDots(number - m_dimmed.size());
  else
    paintSeen(m_seen[pieceCount() - 1 - number]);
}

// --- Dots ---

void NodeLayer::paintDots(std::size_t bundle) {
  m_painter.setTransform(m_devicePixels);
  const std::size_t last = std::min(m_dots.size(), (bundle + 1) * bundleSize);
  for (std::size_t k = bundle * bundleSize; k < last; ++k) paintDot(m_dots[m_dots.size() - 1 - k]);
  m_painter.setTransform(m_canvasTransform);
}

void NodeLayer::paintDot(const Dot& dot) {
  const Node& node = m_context.scene.map.nodes[dot.index];
  const Border border = borderOf(node, dot.isSelected);
  const QColor fill = QColor(m_context.sketch.nodes()[dot.index].fill);
  const bool isMarked = dot.isSelected || isDropTarget(node.id);
  const QColor rim = isMarked ? border.color : mixed(border.color, fill, std::min(1.0, border.width * m_context.scale));
  if (dot.opacity < 1.0) m_painter.setOpacity(dot.opacity);
  if (dot.pixels.width() < 3 || dot.pixels.height() < 3) {
    m_painter.fillRect(dot.pixels, isMarked ? border.color : fill);
  } else {
    paintFrame(dot.pixels, rim);
    m_painter.fillRect(dot.pixels.adjusted(1, 1, -1, -1), fill);
  }
  if (dot.isSelected)
    paintFrame(dot.pixels.adjusted(-dotRingReach, -dotRingReach, dotRingReach, dotRingReach),
               m_context.colors.selection);
  if (dot.opacity < 1.0) m_painter.setOpacity(1.0);
}

// A frame of one device pixel inside the rectangle.
void NodeLayer::paintFrame(const QRect& outer, const QColor& color) {
  m_painter.fillRect(outer.x(), outer.y(), outer.width(), 1, color);
  m_painter.fillRect(outer.x(), outer.bottom(), outer.width(), 1, color);
  m_painter.fillRect(outer.x(), outer.y() + 1, 1, outer.height() - 2, color);
  m_painter.fillRect(outer.right(), outer.y() + 1, 1, outer.height() - 2, color);
}

// --- Whole topics ---

QRect NodeLayer::pixelsAround(const SeenNode& seen) const {
  const int margin = static_cast<int>(std::ceil(surroundings(seen.index) * m_context.scale)) + 1;
  return seen.pixels.adjusted(-margin, -margin, margin, margin);
}

void NodeLayer::paintGround(const SeenNode& seen) {
  const QRect shown = m_context.toDevice.mapRect(m_context.exposed).toAlignedRect();
  if (m_ground.isNull()) {
    m_ground = QImage(shown.size(), QImage::Format_RGB32);
    if (m_ground.isNull()) return;
    m_ground.fill(colorFromHex(m_context.scene.map.canvas.background));
    QPainter painter(&m_ground);
    painter.setRenderHints(m_painter.renderHints());
    painter.setTransform(m_context.toDevice * QTransform::fromTranslate(-shown.x(), -shown.y()));
    if (m_context.options.regions) paintRegions(painter, m_context);
  }
  QBrush brush(m_ground);
  brush.setTransform(QTransform::fromTranslate(shown.x(), shown.y()));
  m_painter.setTransform(m_devicePixels);
  m_painter.setPen(Qt::NoPen);
  m_painter.setBrush(brush);
  const double radius = NodeMetrics::cornerRadius * m_context.scale;
  m_painter.drawRoundedRect(QRectF(seen.pixels), radius, radius);
  m_painter.setTransform(m_canvasTransform);
}

void NodeLayer::paintSeen(const SeenNode& seen) {
  if (m_context.options.exactPixels && m_context.standsUpright)
    paintApart(seen);
  else if (seen.opacity < 1.0 && m_context.standsUpright)
    paintDimmed(seen);
  else
    paintNode(seen);
}

void NodeLayer::paintNode(const SeenNode& seen) {
  const Node& node = m_context.scene.map.nodes[seen.index];
  const std::uint32_t number = m_context.scene.index.numberOfNode()[seen.index];
  paintBox(seen, node);
  m_painter.translate(seen.position);
  if (seen.isSelected) paintSelectionRing(seen);
  if (!seen.isContentCovered) {
    if (seen.isTextShown)
      paintContent(node, seen.metrics, seen.isEditing);
    else if (!seen.isEditing)
      paintBars(node, seen.metrics);
  }
  paintMarkers(node, number, seen);
  if (seen.isSelected && showsConnectionHandle(m_context.scene, node.id))
    paintConnectionHandle(node, seen.metrics.connectionHandle);
  m_painter.setTransform(m_canvasTransform);
}

void NodeLayer::paintOnPicture(const SeenNode& seen, QImage& picture, QPoint origin) const {
  QPainter painter(&picture);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
  const QPointF corner = QPointF(seen.pixels.topLeft() - origin) - seen.metrics.box.topLeft() * m_context.scale;
  painter.setTransform(QTransform(m_context.scale, 0, 0, m_context.scale, corner.x(), corner.y()));
  PaintContext context = m_context;
  context.toDevice = context.toPicture = painter.transform();
  SeenNode whole = seen;
  whole.position = QPointF(0, 0);
  whole.pixels.translate(-origin);
  whole.opacity = 1.0;
  whole.patches = {};
  whole.patches.pixels = picture.rect();
  NodeLayer(painter, context, m_hasShadows ? Shadows::all : Shadows::none).paintNode(whole);
}

// Paints the topic on a separate picture, always at the same place in it, and copies that to its place: rasterising
// depends slightly on where a shape is. A very high topic is painted in slices.
void NodeLayer::paintApart(const SeenNode& seen) {
  constexpr int sliceHeight = 4096;
  const QRect whole = pixelsAround(seen);
  const QRect shown = m_context.toDevice.mapRect(m_context.exposed).toAlignedRect();
  for (int top = 0; top < whole.height(); top += sliceHeight) {
    const QRect slice(whole.x(), whole.y() + top, whole.width(), std::min(sliceHeight, whole.height() - top));
    if (!slice.intersects(shown)) continue;
    QImage picture(slice.size(), QImage::Format_ARGB32_Premultiplied);
    if (picture.isNull()) return;
    picture.fill(Qt::transparent);
    paintOnPicture(seen, picture, slice.topLeft());
    m_painter.setTransform(m_devicePixels);
    m_painter.drawImage(slice.topLeft(), picture);
    m_painter.setTransform(m_canvasTransform);
  }
}

// A dimmed topic is one picture, so that its parts do not show through each other.
void NodeLayer::paintDimmed(const SeenNode& seen) {
  const QRect shown = pixelsAround(seen) & m_context.toDevice.mapRect(m_context.exposed).toAlignedRect();
  if (shown.isEmpty()) return;
  QImage picture(shown.size(), QImage::Format_ARGB32_Premultiplied);
  if (picture.isNull()) return;
  picture.fill(Qt::transparent);
  paintOnPicture(seen, picture, shown.topLeft());
  m_painter.setTransform(m_devicePixels);
  m_painter.setOpacity(seen.opacity);
  m_painter.drawImage(shown.topLeft(), picture);
  m_painter.setOpacity(1.0);
  m_painter.setTransform(m_canvasTransform);
}

void NodeLayer::paintBox(const SeenNode& seen, const Node& node) {
  const Border border = borderOf(node, seen.isSelected);
  if (m_context.standsUpright) {
    m_painter.setTransform(m_devicePixels);
    if (m_hasShadows) m_context.pictures.shadow.paint(m_painter, seen.pixels, seen.patches);
    const bool isDone = !node.style.fillGradient &&
                        m_context.pictures.box.paint(m_painter, seen.pixels, colorFromHex(node.style.fill).rgb(),
                                                     border.color.rgb(), border.width, seen.patches);
    m_painter.setTransform(m_canvasTransform);
    if (isDone) return;
  }
  paintRoundedBox(seen.metrics.box.translated(seen.position), node, border);
}

void NodeLayer::paintRoundedBox(const QRectF& box, const Node& node, const Border& border) {
  constexpr double radius = NodeMetrics::cornerRadius;
  const QRectF inner = box.adjusted(border.width, border.width, -border.width, -border.width);
  const double innerRadius = std::max(0.0, radius - border.width);
  m_painter.setPen(Qt::NoPen);
  m_painter.setBrush(border.color);
  m_painter.drawRoundedRect(box, radius, radius);
  if (node.style.fillGradient) {
    QLinearGradient gradient(box.topLeft(), box.bottomRight());
    gradient.setColorAt(0.0, colorFromHex(node.style.fill));
    gradient.setColorAt(1.0, colorFromHex(*node.style.fillGradient));
    m_painter.setBrush(gradient);
  } else {
    m_painter.setBrush(colorFromHex(node.style.fill));
  }
  m_painter.drawRoundedRect(inner, innerRadius, innerRadius);
}

void NodeLayer::paintSelectionRing(const SeenNode& seen) {
  const double width = std::max(ringWidth, minRingPixels / m_context.zoom);
  const double gap = std::max(ringGap, minRingPixels / m_context.zoom);
  const double reach = gap + width / 2;
  const double radius = NodeMetrics::cornerRadius + reach;
  if (m_context.standsUpright && m_context.options.levelsOfDetail) {
    const QTransform transform = m_painter.transform();
    const double scale = m_context.scale;
    m_painter.setTransform(m_devicePixels);
    const bool isPainted = m_context.pictures.ring.paint(
        m_painter, seen.pixels, {m_context.colors.selection.rgb(), gap * scale, width * scale, radius * scale});
    m_painter.setTransform(transform);
    if (isPainted) return;
  }
  m_painter.setPen(QPen(m_context.colors.selection, width));
  m_painter.setBrush(Qt::NoBrush);
  m_painter.drawRoundedRect(seen.metrics.box.adjusted(-reach, -reach, reach, reach), radius, radius);
}

// Lines of a title too small to read.
void NodeLayer::paintBars(const Node& node, const NodeMetrics& metrics) {
  if (!metrics.image.isEmpty()) paintImage(*node.imageData, metrics.image);
  if (node.title.isEmpty()) return;
  const QColor color = withOpacity(colorFromHex(node.style.textColor), 0.5);
  const QRectF& title = metrics.title;
  const double lineHeight = 1.25 * metrics.sizing.fontSize;
  const int lines = std::clamp(static_cast<int>(std::lround(title.height() / lineHeight)), 1, 100);
  const double height = 0.32 * metrics.sizing.fontSize;
  for (int line = 0; line < lines && title.width() > 0; ++line) {
    const double middle = title.top() + title.height() * (line + 0.5) / lines;
    const double width = line > 0 && line == lines - 1 ? title.width() * 0.6 : title.width();
    m_painter.fillRect(QRectF(title.left(), middle - height / 2, width, height), color);
  }
}

void NodeLayer::paintContent(const Node& node, const NodeMetrics& metrics, bool isEditing) {
  if (!metrics.image.isEmpty()) paintImage(*node.imageData, metrics.image);
  const QColor textColor = colorFromHex(node.style.textColor);
  if (!metrics.icon.isEmpty())
    paintSymbol(m_painter, node.icon->type == IconRef::IconType::embedded ? QStringLiteral("photo") : node.icon->value,
                metrics.icon, textColor);
  m_painter.setPen(textColor);
  if (!metrics.emoji.isEmpty())
    m_context.measurer.shapedEmoji(*node.emoji, metrics.sizing).draw(m_painter, metrics.emoji.topLeft());
  if (!isEditing && !node.title.isEmpty())
    m_context.measurer.shapedTitle(node.title, metrics.sizing).draw(m_painter, metrics.title.topLeft());
}

void NodeLayer::paintImage(const QString& imageData, const QRectF& rect) {
  ShownImage* shown = m_context.measurer.pictures().image(imageData, rect.width() * m_context.scale);
  if (!shown) return;
  const QImage& picture = shown->forWidth(rect.width() * m_context.scale);
  QBrush brush(picture);
  brush.setTransform(QTransform::fromScale(rect.width() / picture.width(), rect.height() / picture.height()) *
                     QTransform::fromTranslate(rect.left(), rect.top()));
  m_painter.setPen(Qt::NoPen);
  m_painter.setBrush(brush);
  m_painter.drawRoundedRect(rect, imageCornerRadius, imageCornerRadius);
}

// --- Marks and handle ---

void NodeLayer::paintMarkers(const Node& node, std::uint32_t number, const SeenNode& seen) {
  if (!seen.isEveryMarkerCovered) paintCornerMarkers(node, seen.metrics);
  if (!hasChildren(node, number)) return;
  const bool collapsed = isCollapsed(seen.index);
  if (!seen.isToggleCovered) paintToggle(node, seen.metrics, collapsed);
  if (collapsed) paintHiddenCount(node, number, seen.metrics.box);
}

void NodeLayer::paintCornerMarkers(const Node& node, const NodeMetrics& metrics) {
  const QColor faint = withOpacity(colorFromHex(node.style.textColor), 0.5);
  const auto paintMark = [&](CanvasPart part, const QRectF& place, const QString& symbol, const QColor& color) {
    if (const QRectF shown = shownPart(part, place, m_context.zoom); !shown.isEmpty())
      paintSymbol(m_painter, symbol, shown, color);
  };
  paintMark(CanvasPart::linkMarker, metrics.linkMarker, QStringLiteral("link"), faint);
  paintMark(CanvasPart::noteMarker, metrics.noteMarker, QStringLiteral("note.text"), faint);
  paintMark(CanvasPart::aiMarker, metrics.aiMarker, QStringLiteral("sparkles"),
            withOpacity(m_context.colors.aiMarker, 0.7));
  if (const QRectF shown = shownPart(CanvasPart::badge, metrics.badge, m_context.zoom); !shown.isEmpty())
    paintBadge(m_painter, *node.badge, shown);
}

bool NodeLayer::hasChildren(const Node& node, std::uint32_t number) const {
  if (!m_context.options.collapseToggles) return false;
  if (number < m_context.scene.tree.numberCount()) return !m_context.scene.tree.childNumbers(number).empty();
  return m_context.scene.tree.childCount(node.id) > 0;
}

void NodeLayer::paintToggle(const Node& node, const NodeMetrics& metrics, bool isCollapsed) {
  const QRectF disc = shownPart(CanvasPart::collapseToggle, metrics.collapseToggle, m_context.zoom);
  if (disc.isEmpty()) return;
  paintDisc(m_painter, disc, withOpacity(colorFromHex(node.style.fill), 0.8));
  const double inset = disc.width() * (1.0 - 9.0 / 16.0) / 2;
  paintSymbol(m_painter, isCollapsed ? QStringLiteral("chevron.right") : QStringLiteral("chevron.down"),
              disc.adjusted(inset, inset, -inset, -inset), withOpacity(colorFromHex(node.style.textColor), 0.5), 1.2);
}

// A plate on the bottom edge with the number of topics that a collapsed branch hides: it makes collapsed branches
// recognisable at a glance, from any distance.
void NodeLayer::paintHiddenCount(const Node& node, std::uint32_t number, const QRectF& box) {
  if (!isPartShown(CanvasPart::hiddenCount, m_context.zoom)) return;
  NodeSizing sizing;
  sizing.fontSize = countFontSize;
  sizing.weight = QFont::DemiBold;
  const ShapedText& text = m_context.measurer.shapedTitle(hiddenCountText(m_context.scene.tree, number), sizing);
  const double growth = partGrowth(CanvasPart::hiddenCount, m_context.zoom);
  const QSizeF plate(std::max(text.size.width() + 2 * countPadding, countHeight), countHeight);
  const QColor ground = colorFromHex(node.style.stroke);
  m_painter.save();
  m_painter.translate(0, box.bottom());
  m_painter.scale(growth, growth);
  // A rim in the fill colour separates the plate from the box.
  m_painter.setPen(QPen(colorFromHex(node.style.fill), 1.0));
  m_painter.setBrush(ground);
  m_painter.drawRoundedRect(QRectF(QPointF(-plate.width() / 2, -plate.height() / 2), plate), countHeight / 2,
                            countHeight / 2);
  m_painter.setPen(readableOn(ground));
  text.draw(m_painter, QPointF(-text.size.width() / 2, -text.size.height() / 2));
  m_painter.restore();
}

void NodeLayer::paintConnectionHandle(const Node& node, const QRectF& rect) {
  // A handle being dragged is drawn at the end of its line.
  if (m_context.scene.shown.handleDragSourceID == node.id) return;
  if (!isPartShown(CanvasPart::connectionHandle, m_context.zoom)) return;
  const QPointF center = rect.center();
  const double growth = partGrowth(CanvasPart::connectionHandle, m_context.zoom);
  paintHandle(m_painter, center,
              {HandleMetrics::connectionHandleDiameter, m_context.colors.selection, Qt::transparent, 0.0,
               withOpacity(m_context.colors.selection, 0.3), 2.0},
              growth);
  const double plus = 13.0 * growth;
  paintSymbol(m_painter, QStringLiteral("plus"), QRectF(center.x() - plus / 2, center.y() - plus / 2, plus, plus),
              Qt::white, 0.8);
}

}  // namespace quilmora
