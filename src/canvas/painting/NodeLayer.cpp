#include "canvas/painting/NodeLayer.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include "canvas/geometry/Handles.h"
#include "canvas/geometry/Polygons.h"
#include "canvas/painting/BadgeLook.h"
#include "canvas/painting/Symbols.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

constexpr double borderWidth = 1.5;
constexpr double selectedBorderWidth = 2.5;
constexpr double dropBorderWidth = 3.0;
constexpr double imageCornerRadius = 4.0;
constexpr double minShadowScale = 0.4;
constexpr double minDotSide = 1.4;  // device pixels
// Up to this many topics are measured truly even where their titles cannot be read.
constexpr std::size_t maxMeasuredCount = 3000;
// How far shadow and markers reach beyond a box, in canvas units.
constexpr double shadowReach = 9.0;
constexpr double markerReach = 8.5;
// The corners of box and shadow, in canvas units into the box.
constexpr double cornerInset = 9.5;
constexpr double handleReach = 30.0;
// In device pixels a canvas unit: smaller topics need a finer grid to hide anything.
constexpr double minFineScale = 0.6;
constexpr std::size_t bundleSize = 256;

QColor withOpacity(QColor color, double opacity) {
  color.setAlphaF(static_cast<float>(std::clamp(opacity, 0.0, 1.0)));
  return color;
}

}  // namespace

NodeLayer::NodeLayer(QPainter& painter, const PaintContext& context, Shadows shadows)
    : m_painter(painter), m_context(context) {
  m_canvasTransform = painter.transform();
  m_devicePixels = context.toDevice.inverted() * m_canvasTransform;
  m_hasShadows = shadows == Shadows::all && context.scale >= minShadowScale && context.standsUpright &&
                 context.detail == PaintContext::Detail::full;
  if (m_hasShadows) context.pictures.shadow.prepare(context.scale);
  context.pictures.box.prepare(context.scale);
  prepareCoverage();
}

bool NodeLayer::areMany(std::size_t topicCount) {
  return topicCount > maxMeasuredCount;
}

void NodeLayer::collect(std::size_t index) {
  const QRectF& seen = m_context.exposed;
  const QPointF position = m_context.shownPosition(index);
  const double reachX = m_context.sketch.maxHalfWidth();
  const double reachY = m_context.sketch.nodes()[index].boundHalfHeight;
  if (!(position.x() + reachX >= seen.left() && position.x() - reachX <= seen.right() &&
        position.y() + reachY >= seen.top() && position.y() - reachY <= seen.bottom()))
    return;
  if (m_context.isHidden(index)) return;
  if (m_context.detail == PaintContext::Detail::dots)
    collectDot(index, position);
  else if (!isKnownToBeCovered(index, position))
    collectNode(index, position);
}

void NodeLayer::collectionEnded() {
  for (const auto& [color, dots] : m_dots)
    for (std::size_t first = 0; first < dots.size(); first += bundleSize)
      m_dotBundles.push_back({color, dots.data() + first, std::min(bundleSize, dots.size() - first)});
}

void NodeLayer::prepareCoverage() {
  const QRect pixels = m_context.toDevice.mapRect(m_context.exposed).toAlignedRect();
  // A picture of absurd size has no grid.
  const bool isWorthWhile =
      m_context.standsUpright && m_context.options.levelsOfDetail && pixels.width() < 20000 && pixels.height() < 20000;
  const int cellSide = m_context.detail == PaintContext::Detail::dots || m_context.scale < minFineScale ? 2 : 4;
  const QPoint anchor(static_cast<int>(std::lround(std::fmod(m_context.toDevice.dx(), cellSide))),
                      static_cast<int>(std::lround(std::fmod(m_context.toDevice.dy(), cellSide))));
  m_context.coverage.reset(isWorthWhile ? pixels : QRect(), cellSide, anchor);
}

double NodeLayer::surroundings(bool isSelected) const {
  return isSelected ? handleReach : m_hasShadows ? shadowReach : markerReach;
}

bool NodeLayer::isSizeKnown(std::size_t index) const {
  const bool isSized = m_context.sizing() && m_context.sizing()->nodeSizing;
  if (!m_context.sketch.nodes()[index].isMeasured || isSized) return false;
  return !m_context.scene.shown.editingNodeID ||
         m_context.scene.map.nodes[index].id != m_context.scene.shown.editingNodeID;
}

bool NodeLayer::isKnownToBeCovered(std::size_t index, QPointF position) const {
  const CoverageGrid& coverage = m_context.coverage;
  if (!coverage.isActive()) return false;
  const auto& sketch = m_context.sketch.nodes()[index];
  const bool isKnown = isSizeKnown(index);
  const bool isSelected = m_context.isNodeSelected(m_context.scene.index.numberOfNode()[index]);
  // A pixel more on all sides, by which a box may move to whole pixels.
  const double margin = surroundings(isSelected) + 1.0 / m_context.scale;
  const double halfWidth = (isKnown ? double{sketch.halfWidth} : m_context.sketch.maxHalfWidth()) + margin;
  const double halfHeight = double{isKnown ? sketch.halfHeight : sketch.boundHalfHeight} + margin;
  return coverage.isCovered(m_context.toDevice.mapRect(
      QRectF(position.x() - halfWidth, position.y() - halfHeight, 2 * halfWidth, 2 * halfHeight)));
}

bool NodeLayer::isContentKnownToBeCovered(std::size_t index, QPointF position) const {
  const CoverageGrid& coverage = m_context.coverage;
  if (!coverage.isActive() || !isSizeKnown(index)) return false;
  const auto& sketch = m_context.sketch.nodes()[index];
  const NodeSizing sizing;
  const double halfWidth = sketch.halfWidth - sizing.horizontalPadding + 1.0 / m_context.scale;
  const double halfHeight = sketch.halfHeight - sizing.verticalPadding + 1.0 / m_context.scale;
  return coverage.isCovered(m_context.toDevice.mapRect(
      QRectF(position.x() - halfWidth, position.y() - halfHeight, 2 * halfWidth, 2 * halfHeight)));
}

bool NodeLayer::findSeenPart(SeenNode& seen) {
  CoverageGrid& coverage = m_context.coverage;
  const QRectF box = m_context.toDevice.mapRect(seen.metrics.box.translated(seen.position));
  const double margin = surroundings(seen.isSelected) * m_context.scale;
  const QRectF outer = box.adjusted(-margin, -margin, margin, margin);
  seen.patches.pixels = outer.toAlignedRect();
  if (!coverage.isActive()) return true;
  seen.patches.pixels = coverage.uncoveredPart(outer);
  if (seen.patches.pixels.isEmpty()) return false;
  const double inset = cornerInset * m_context.scale + 2.0;
  const std::array<double, 4> xs{outer.left(), std::min(box.left() + inset, box.center().x()),
                                 std::max(box.right() - inset, box.center().x()), outer.right()};
  const std::array<double, 4> ys{outer.top(), std::min(box.top() + inset, box.center().y()),
                                 std::max(box.bottom() - inset, box.center().y()), outer.bottom()};
  seen.patches.patches = 0;
  for (std::size_t k = 0; k < 9; ++k) {
    const QRectF patch(QPointF(xs[k % 3], ys[k / 3]), QPointF(xs[k % 3 + 1], ys[k / 3 + 1]));
    if (!coverage.isCovered(patch)) seen.patches.patches |= 1U << k;
  }
  const QRectF content = seen.metrics.title | seen.metrics.emoji | seen.metrics.icon | seen.metrics.image;
  seen.isContentCovered = coverage.isCovered(m_context.toDevice.mapRect(content.translated(seen.position)));
  seen.isToggleCovered =
      coverage.isCovered(m_context.toDevice.mapRect(seen.metrics.collapseToggle.translated(seen.position)));
  const NodeMetrics& metrics = seen.metrics;
  seen.isEveryMarkerCovered = true;
  for (const QRectF& marker : {metrics.badge, metrics.aiMarker, metrics.linkMarker, metrics.noteMarker})
    if (!marker.isEmpty() && !coverage.isCovered(m_context.toDevice.mapRect(marker.translated(seen.position))))
      seen.isEveryMarkerCovered = false;
  if (seen.opacity >= 1.0) {
    const double radius = NodeMetrics::cornerRadius * m_context.scale;
    // Only boxes put together on whole pixels hide all that is below their rim.
    const int smallest = 2 * static_cast<int>(std::ceil(radius)) + 2;
    const bool isSharp = m_context.standsUpright && seen.pixels.width() >= smallest &&
                         seen.pixels.height() >= smallest && !m_context.scene.map.nodes[seen.index].style.fillGradient;
    const QRectF opaque = isSharp ? QRectF(seen.pixels) : box.adjusted(0.5, 0.5, -0.5, -0.5);
    coverage.cover(opaque.adjusted(radius, 0, -radius, 0));
    coverage.cover(opaque.adjusted(0, radius, 0, -radius));
  }
  return true;
}

void NodeLayer::paintPiece(std::size_t number) {
  if (number < m_dotBundles.size())
    paintDots(m_dotBundles[number]);
  else
    m_context.options.exactPixels&& m_context.standsUpright ? paintApart(m_seen[pieceCount() - 1 - number])
                                                            : paintNode(m_seen[pieceCount() - 1 - number]);
}

double NodeLayer::opacityOf(std::size_t index) const {
  if (!m_context.scene.nodeOpacity) return 1.0;
  return std::clamp(m_context.scene.nodeOpacity(m_context.scene.map.nodes[index]), 0.0, 1.0);
}

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

void NodeLayer::collectDot(std::size_t index, QPointF position) {
  const auto& sketch = m_context.sketch.nodes()[index];
  const std::uint32_t number = m_context.scene.index.numberOfNode()[index];
  QRgb color = sketch.fill;
  if (m_context.scene.shown.dropTarget() && isDropTarget(m_context.scene.map.nodes[index].id))
    color = dropColor().rgb();
  else if (m_context.isNodeSelected(number))
    color = m_context.colors.selection.rgb();
  const double opacity = opacityOf(index);
  if (opacity < 1.0) color = withOpacity(QColor(color), opacity).rgba();
  const double smallest = minDotSide / 2 / m_context.scale;
  const double halfWidth = std::max<double>(sketch.halfWidth, smallest);
  const double halfHeight = std::max<double>(sketch.halfHeight, smallest);
  const QRectF dot(position.x() - halfWidth, position.y() - halfHeight, 2 * halfWidth, 2 * halfHeight);
  CoverageGrid& coverage = m_context.coverage;
  if (coverage.isActive()) {
    const QRectF pixels = m_context.toDevice.mapRect(dot);
    if (coverage.isCovered(pixels.adjusted(-0.5, -0.5, 0.5, 0.5))) return;
    // A dot's edge pixels may be left out by rounding.
    if (opacity >= 1.0) coverage.cover(pixels.adjusted(0.5, 0.5, -0.5, -0.5));
  }
  m_dots[color].push_back(dot);
}

void NodeLayer::collectNode(std::size_t index, QPointF position) {
  const MapScene& scene = m_context.scene;
  const Node& node = scene.map.nodes[index];
  const std::uint32_t number = scene.index.numberOfNode()[index];
  const bool isEditing = scene.shown.editingNodeID == node.id;
  const bool isSketched =
      (m_context.detail == PaintContext::Detail::bars && !node.imageData && areMany(scene.map.nodes.size())) ||
      isContentKnownToBeCovered(index, position);
  SeenNode seen{index, position, {}, {}, opacityOf(index), isEditing, m_context.isNodeSelected(number), {}};
  if (seen.opacity <= 0.0) return;
  seen.metrics = isSketched
                     ? sketchedMetrics(index, node)
                     : m_context.measurer.measure(
                           node, m_context.depthFraction(number), m_context.sizing(),
                           isEditing ? std::optional(scene.shown.editingTitle.value_or(node.title)) : std::nullopt);
  if (!isSketched && !isEditing) m_context.sketch.rememberBox(index, seen.metrics.box);
  const QRectF box = seen.metrics.box.translated(position);
  if (!box.adjusted(-handleReach, -handleReach, handleReach, handleReach).intersects(m_context.exposed)) return;
  if (m_context.standsUpright) {
    // The whole topic moves with its box to whole pixels, by less than one.
    const QRectF device = m_context.toPicture.mapRect(box);
    // Halves are rounded up on both sides of zero, so that it doesn't matter from where pixels are counted.
    const QPoint corner(static_cast<int>(std::floor(device.left() + 0.5)),
                        static_cast<int>(std::floor(device.top() + 0.5)));
    seen.pixels = QRect(corner - scene.pixelOrigin, QSize(std::max(1, static_cast<int>(std::lround(device.width()))),
                                                          std::max(1, static_cast<int>(std::lround(device.height())))));
    seen.position += (QPointF(corner) - device.topLeft()) / m_context.scale;
  }
  if (findSeenPart(seen)) m_seen.push_back(std::move(seen));
}

NodeMetrics NodeLayer::sketchedMetrics(std::size_t index, const Node& node) const {
  const auto& sketch = m_context.sketch.nodes()[index];
  NodeMetrics metrics;
  metrics.box = QRectF(-sketch.halfWidth, -sketch.halfHeight, 2.0 * sketch.halfWidth, 2.0 * sketch.halfHeight);
  metrics.title = metrics.box.adjusted(metrics.sizing.horizontalPadding, metrics.sizing.verticalPadding,
                                       -metrics.sizing.horizontalPadding, -metrics.sizing.verticalPadding);
  metrics.placeMarkers(node);
  return metrics;
}

void NodeLayer::paintDots(const DotBundle& bundle) {
  m_painter.setRenderHint(QPainter::Antialiasing, false);
  m_painter.setPen(Qt::NoPen);
  m_painter.setBrush(QColor::fromRgba(bundle.color));
  m_painter.drawRects(bundle.dots, static_cast<int>(bundle.count));
  m_painter.setRenderHint(QPainter::Antialiasing, true);
}

void NodeLayer::paintNode(const SeenNode& seen) {
  const Node& node = m_context.scene.map.nodes[seen.index];
  const std::uint32_t number = m_context.scene.index.numberOfNode()[seen.index];
  if (seen.opacity < 1.0) m_painter.setOpacity(seen.opacity);
  paintBox(seen, node);
  m_painter.translate(seen.position);
  if (m_context.detail == PaintContext::Detail::bars) {
    paintBars(node, seen.metrics);
  } else {
    if (!seen.isContentCovered) paintContent(node, seen.metrics, seen.isEditing);
    paintMarkers(node, number, seen);
    if (seen.isSelected && showsConnectionHandle(m_context.scene, node.id))
      paintConnectionHandle(node, seen.metrics.connectionHandle);
  }
  m_painter.setTransform(m_canvasTransform);
  if (seen.opacity < 1.0) m_painter.setOpacity(1.0);
}

// Paints the topic on a picture of its own, where it always lies alike, and puts that in its place: rasterising depends
// on where a shape lies, if only a little. A very high topic is painted in slices.
void NodeLayer::paintApart(const SeenNode& seen) {
  constexpr int sliceHeight = 4096;
  const int margin = static_cast<int>(std::ceil(surroundings(false) * m_context.scale)) + 1;
  const QRect whole = seen.pixels.adjusted(-margin, -margin, margin, margin);
  const QRect shown = m_context.toDevice.mapRect(m_context.exposed).toAlignedRect();
  for (int top = 0; top < whole.height(); top += sliceHeight) {
    const QRect slice(whole.x(), whole.y() + top, whole.width(), std::min(sliceHeight, whole.height() - top));
    if (!slice.intersects(shown)) continue;
    QImage picture(slice.size(), QImage::Format_ARGB32_Premultiplied);
    if (picture.isNull()) return;
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    const QPointF corner = QPointF(margin, margin - top) - seen.metrics.box.topLeft() * m_context.scale;
    painter.setTransform(QTransform(m_context.scale, 0, 0, m_context.scale, corner.x(), corner.y()));
    PaintContext context = m_context;
    context.toDevice = context.toPicture = painter.transform();
    SeenNode apart = seen;
    apart.position = QPointF(0, 0);
    apart.pixels.moveTo(margin, margin - top);
    apart.patches = {};
    apart.patches.pixels = apart.pixels.adjusted(-margin, -margin, margin, margin);
    NodeLayer(painter, context).paintNode(apart);
    painter.end();
    m_painter.setTransform(m_devicePixels);
    m_painter.drawImage(slice.topLeft(), picture);
    m_painter.setTransform(m_canvasTransform);
  }
}

void NodeLayer::paintBox(const SeenNode& seen, const Node& node) {
  const Border border = borderOf(node, seen.isSelected);
  if (m_context.standsUpright) {
    m_painter.setTransform(m_devicePixels);
    if (m_hasShadows) m_context.pictures.shadow.paint(m_painter, seen.pixels, seen.patches);
    const bool isPlain = seen.opacity >= 1.0 && !node.style.fillGradient;
    const bool isDone =
        isPlain && m_context.pictures.box.paint(m_painter, seen.pixels, colorFromHex(node.style.fill).rgb(),
                                                border.color.rgb(), border.width, seen.patches);
    m_painter.setTransform(m_canvasTransform);
    if (isDone) return;
  }
  paintRoundedBox(seen.metrics.box.translated(seen.position), node, border, seen.opacity);
}

void NodeLayer::paintRoundedBox(const QRectF& box, const Node& node, const Border& border, double opacity) {
  constexpr double radius = NodeMetrics::cornerRadius;
  const QRectF inner = box.adjusted(border.width, border.width, -border.width, -border.width);
  const double innerRadius = std::max(0.0, radius - border.width);
  m_painter.setPen(Qt::NoPen);
  m_painter.setBrush(border.color);
  if (opacity < 1.0) {
    // Under a see-through fill the border must be a ring.
    QPainterPath ring;
    ring.addRoundedRect(box, radius, radius);
    ring.addRoundedRect(inner, innerRadius, innerRadius);
    m_painter.drawPath(ring);
  } else {
    m_painter.drawRoundedRect(box, radius, radius);
  }
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

// Lines of a title too small to be read, and a badge too small to show its symbol.
void NodeLayer::paintBars(const Node& node, const NodeMetrics& metrics) {
  if (!metrics.image.isEmpty()) paintImage(*node.imageData, metrics.image);
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
  if (!metrics.badge.isEmpty()) paintDisc(metrics.badge, badgeLook(*node.badge).color);
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

void NodeLayer::paintMarkers(const Node& node, std::uint32_t number, const SeenNode& seen) {
  const NodeMetrics& metrics = seen.metrics;
  if (m_context.options.levelsOfDetail && m_context.scale < NodeMetrics::minPartScale) {
    if (!metrics.badge.isEmpty()) paintDisc(metrics.badge, badgeLook(*node.badge).color);
    return;
  }
  if (!seen.isEveryMarkerCovered) paintCornerMarkers(node, metrics);
  if (!seen.isToggleCovered && hasChildren(node, number)) {
    const QColor textColor = colorFromHex(node.style.textColor);
    paintDisc(metrics.collapseToggle, withOpacity(colorFromHex(node.style.fill), 0.8));
    const bool isCollapsed = m_context.scene.collapsedNodeIDs.contains(node.id);
    const double inset = (metrics.collapseToggle.width() - 9.0) / 2;
    paintSymbol(m_painter, isCollapsed ? QStringLiteral("chevron.right") : QStringLiteral("chevron.down"),
                metrics.collapseToggle.adjusted(inset, inset, -inset, -inset), withOpacity(textColor, 0.5), 1.2);
  }
}

void NodeLayer::paintCornerMarkers(const Node& node, const NodeMetrics& metrics) {
  const QColor textColor = colorFromHex(node.style.textColor);
  if (!metrics.linkMarker.isEmpty())
    paintSymbol(m_painter, QStringLiteral("link"), metrics.linkMarker, withOpacity(textColor, 0.5));
  if (!metrics.noteMarker.isEmpty())
    paintSymbol(m_painter, QStringLiteral("note.text"), metrics.noteMarker, withOpacity(textColor, 0.5));
  if (!metrics.aiMarker.isEmpty())
    paintSymbol(m_painter, QStringLiteral("sparkles"), metrics.aiMarker, withOpacity(m_context.colors.aiMarker, 0.7));
  if (!metrics.badge.isEmpty()) {
    const BadgeLook& look = badgeLook(*node.badge);
    paintDisc(metrics.badge, look.color);
    // Thicker lines would close the holes of a filled symbol.
    const double boldness = look.symbol.endsWith(QLatin1String(".fill")) ? 0.0 : 0.6;
    paintSymbol(m_painter, look.symbol, metrics.badge.adjusted(3, 3, -3, -3), Qt::white, boldness);
  }
}

bool NodeLayer::hasChildren(const Node& node, std::uint32_t number) const {
  if (!m_context.options.collapseToggles) return false;
  if (number < m_context.scene.tree.numberCount()) return !m_context.scene.tree.childNumbers(number).empty();
  return m_context.scene.tree.childCount(node.id) > 0;
}

void NodeLayer::paintDisc(const QRectF& rect, const QColor& color) {
  m_painter.setPen(Qt::NoPen);
  m_painter.setBrush(color);
  m_painter.drawEllipse(rect);
}

void NodeLayer::paintConnectionHandle(const Node& node, const QRectF& rect) {
  const auto& source = m_context.scene.shown.handleDragSourceID;
  // A handle on its way shows as the end of the line that it draws.
  if (source == node.id) return;
  const QPointF center = rect.center();
  paintHandle(m_painter, center,
              {HandleMetrics::connectionHandleDiameter, m_context.colors.selection, Qt::transparent, 0.0,
               withOpacity(m_context.colors.selection, 0.3), 2.0});
  paintSymbol(m_painter, QStringLiteral("plus"), QRectF(center.x() - 6.5, center.y() - 6.5, 13, 13), Qt::white, 0.8);
}

}  // namespace quilmora
