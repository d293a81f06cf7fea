#include "canvas/painting/NodeLayer.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <QPainter>

#include "canvas/geometry/Polygons.h"
#include "canvas/painting/PartVisibility.h"

namespace quilmora {

namespace {

constexpr double minShadowScale = 0.4;
// The size of the corners of box and shadow, measured into the box in canvas units.
constexpr double cornerInset = 9.5;
// In device pixels per canvas unit: smaller topics need a finer grid to hide anything.
constexpr double minFineScale = 0.6;
// In device pixels: smaller letters become one bar per line.
constexpr double minTextPixels = 4.0;

}  // namespace

NodeLayer::NodeLayer(QPainter& painter, const PaintContext& context, Shadows shadows)
    : m_painter(painter),
      m_context(context),
      m_canvasTransform(painter.transform()),
      m_devicePixels(context.toDevice.inverted() * m_canvasTransform),
      m_maxSurroundings(maxTopicSurroundings(context.zoom)),
      m_hasShadows(shadows == Shadows::all && context.scale >= minShadowScale && context.standsUpright &&
                   context.detail == PaintContext::Detail::full) {
  if (m_hasShadows) context.pictures.shadow.prepare(context.scale);
  context.pictures.box.prepare(context.scale);
}

void NodeLayer::collect(std::size_t index) {
  const QRectF& seen = m_context.exposed;
  const QPointF position = m_context.shownPosition(index);
  const double reachX = m_context.sketch.maxHalfWidth() + m_maxSurroundings;
  const double reachY = m_context.sketch.boundHalfHeight(index) + m_maxSurroundings;
  if (!(position.x() + reachX >= seen.left() && position.x() - reachX <= seen.right() &&
        position.y() + reachY >= seen.top() && position.y() - reachY <= seen.bottom()))
    return;
  if (m_context.isHidden(index)) return;
  if (m_context.detail == PaintContext::Detail::dots)
    collectDot(index, position);
  else if (!isKnownToBeCovered(index, position))
    collectNode(index, position);
}

std::size_t NodeLayer::pieceCount() const {
  return m_dimmed.size() + (m_dots.size() + bundleSize - 1) / bundleSize + m_seen.size();
}

void NodeLayer::prepareCoverage() {
  const QRect pixels = m_context.toDevice.mapRect(m_context.exposed).toAlignedRect();
  // A picture of absurd size gets no grid.
  const bool isWorthWhile =
      m_context.standsUpright && m_context.options.levelsOfDetail && pixels.width() < 20000 && pixels.height() < 20000;
  const int cellSide = m_context.detail == PaintContext::Detail::dots || m_context.scale < minFineScale ? 2 : 4;
  const QPoint anchor(static_cast<int>(std::lround(std::fmod(m_context.toDevice.dx(), cellSide))),
                      static_cast<int>(std::lround(std::fmod(m_context.toDevice.dy(), cellSide))));
  m_context.coverage.reset(isWorthWhile ? pixels : QRect(), cellSide, anchor);
}

double NodeLayer::surroundings(std::size_t index) const {
  const std::uint32_t number = m_context.scene.index.numberOfNode()[index];
  return topicSurroundings(m_context.zoom, m_context.isNodeSelected(number), isCollapsed(index));
}

bool NodeLayer::isCollapsed(std::size_t index) const {
  const IdSet& collapsed = m_context.scene.collapsedNodeIDs;
  return !collapsed.empty() && collapsed.contains(m_context.scene.map.nodes[index].id);
}

float NodeLayer::sizingFraction(std::size_t index) const {
  const HierarchicalConfig* sizing = m_context.sizing();
  if (!sizing || !sizing->nodeSizing) return SceneSketch::unsized;
  const auto fraction = m_context.depthFraction(m_context.scene.index.numberOfNode()[index]);
  return fraction ? static_cast<float>(*fraction) : SceneSketch::unsized;
}

bool NodeLayer::isSizeKnown(std::size_t index) const {
  const SceneSketch& sketch = m_context.sketch;
  if (!sketch.isMeasured(index) || sketch.nodes()[index].sizingFraction != sizingFraction(index)) return false;
  return !m_context.scene.shown.editingNodeID ||
         m_context.scene.map.nodes[index].id != m_context.scene.shown.editingNodeID;
}

NodeSizing NodeLayer::sizingOf(std::size_t index) const {
  return NodeSizing(m_context.scene.map.nodes[index].style,
                    m_context.depthFraction(m_context.scene.index.numberOfNode()[index]), m_context.sizing());
}

bool NodeLayer::isKnownToBeCovered(std::size_t index, QPointF position) const {
  const CoverageGrid& coverage = m_context.coverage;
  if (!coverage.isActive()) return false;
  const auto& sketch = m_context.sketch.nodes()[index];
  const bool isKnown = isSizeKnown(index);
  // One pixel more on all sides, for moving a box to whole pixels.
  const double margin = surroundings(index) + 1.0 / m_context.scale;
  const double halfWidth = (isKnown ? double{sketch.halfWidth} : m_context.sketch.maxHalfWidth()) + margin;
  const double halfHeight = (isKnown ? double{sketch.halfHeight} : m_context.sketch.boundHalfHeight(index)) + margin;
  return coverage.isCovered(m_context.toDevice.mapRect(
      QRectF(position.x() - halfWidth, position.y() - halfHeight, 2 * halfWidth, 2 * halfHeight)));
}

bool NodeLayer::isContentKnownToBeCovered(std::size_t index, QPointF position) const {
  const CoverageGrid& coverage = m_context.coverage;
  if (!coverage.isActive() || !isSizeKnown(index)) return false;
  const auto& sketch = m_context.sketch.nodes()[index];
  const NodeSizing sizing = sizingOf(index);
  const double halfWidth = sketch.halfWidth - sizing.horizontalPadding + 1.0 / m_context.scale;
  const double halfHeight = sketch.halfHeight - sizing.verticalPadding + 1.0 / m_context.scale;
  return coverage.isCovered(m_context.toDevice.mapRect(
      QRectF(position.x() - halfWidth, position.y() - halfHeight, 2 * halfWidth, 2 * halfHeight)));
}

bool NodeLayer::findSeenPart(SeenNode& seen) {
  CoverageGrid& coverage = m_context.coverage;
  const QRectF box = m_context.toDevice.mapRect(seen.metrics.box.translated(seen.position));
  const double margin = surroundings(seen.index) * m_context.scale;
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
  const auto isPartCovered = [&](CanvasPart part, const QRectF& place) {
    const QRectF shown = shownPart(part, place, m_context.zoom);
    return shown.isEmpty() || coverage.isCovered(m_context.toDevice.mapRect(shown.translated(seen.position)));
  };
  const NodeMetrics& metrics = seen.metrics;
  seen.isToggleCovered = isPartCovered(CanvasPart::collapseToggle, metrics.collapseToggle);
  seen.isEveryMarkerCovered = isPartCovered(CanvasPart::badge, metrics.badge) &&
                              isPartCovered(CanvasPart::aiMarker, metrics.aiMarker) &&
                              isPartCovered(CanvasPart::linkMarker, metrics.linkMarker) &&
                              isPartCovered(CanvasPart::noteMarker, metrics.noteMarker);
  if (seen.opacity >= 1.0) {
    const double radius = NodeMetrics::cornerRadius * m_context.scale;
    // Only boxes composed on whole pixels hide everything below their edges.
    const int smallest = 2 * static_cast<int>(std::ceil(radius)) + 2;
    const bool isSharp = m_context.standsUpright && seen.pixels.width() >= smallest &&
                         seen.pixels.height() >= smallest && !m_context.scene.map.nodes[seen.index].style.fillGradient;
    const QRectF opaque = isSharp ? QRectF(seen.pixels) : box.adjusted(0.5, 0.5, -0.5, -0.5);
    coverage.cover(opaque.adjusted(radius, 0, -radius, 0));
    coverage.cover(opaque.adjusted(0, radius, 0, -radius));
  }
  return true;
}

double NodeLayer::opacityOf(std::size_t index) const {
  if (!m_context.scene.nodeOpacity) return 1.0;
  return std::clamp(m_context.scene.nodeOpacity(m_context.scene.map.nodes[index]), 0.0, 1.0);
}

QRect NodeLayer::wholePixels(const QRectF& box) const {
  const QRectF device = m_context.toPicture.mapRect(box);
  // Halves are rounded up on both sides of zero, so that the origin of the pixels does not matter.
  const QPoint corner(static_cast<int>(std::floor(device.left() + 0.5)),
                      static_cast<int>(std::floor(device.top() + 0.5)));
  return QRect(corner - m_context.scene.pixelOrigin,
               QSize(std::max(1, static_cast<int>(std::lround(device.width()))),
                     std::max(1, static_cast<int>(std::lround(device.height())))));
}

void NodeLayer::collectDot(std::size_t index, QPointF position) {
  const double opacity = opacityOf(index);
  if (opacity <= 0.0) return;
  ensureSize(index);
  const auto& sketch = m_context.sketch.nodes()[index];
  const QRectF box(position.x() - sketch.halfWidth, position.y() - sketch.halfHeight, 2.0 * sketch.halfWidth,
                   2.0 * sketch.halfHeight);
  Dot dot{index, m_context.standsUpright ? wholePixels(box) : m_context.toDevice.mapRect(box).toRect(), opacity,
          m_context.isNodeSelected(m_context.scene.index.numberOfNode()[index])};
  if (dot.pixels.isEmpty()) dot.pixels.setSize(QSize(1, 1));
  CoverageGrid& coverage = m_context.coverage;
  if (coverage.isActive()) {
    const int reach = dot.isSelected ? dotRingReach : 0;
    if (coverage.isCovered(QRectF(dot.pixels.adjusted(-reach, -reach, reach, reach)))) return;
    if (opacity >= 1.0) coverage.cover(QRectF(dot.pixels));
  }
  m_dots.push_back(dot);
}

// Measures the topic if that has not been done: what is painted must not depend on what was in view before.
void NodeLayer::ensureSize(std::size_t index) {
  if (isSizeKnown(index)) return;
  const MapScene& scene = m_context.scene;
  const Node& node = scene.map.nodes[index];
  m_context.sketch.rememberBox(
      index,
      m_context.measurer.measure(node, m_context.depthFraction(scene.index.numberOfNode()[index]), m_context.sizing())
          .box,
      sizingFraction(index));
}

void NodeLayer::collectNode(std::size_t index, QPointF position) {
  const MapScene& scene = m_context.scene;
  const Node& node = scene.map.nodes[index];
  const std::uint32_t number = scene.index.numberOfNode()[index];
  SeenNode seen{
      index, position, {}, {}, opacityOf(index), scene.shown.editingNodeID == node.id, m_context.isNodeSelected(number),
      {}};
  if (seen.opacity <= 0.0) return;
  seen.isTextShown = isTextShown(index);
  const bool isSketched =
      !seen.isEditing && !node.imageData && (!seen.isTextShown || isContentKnownToBeCovered(index, position));
  if (isSketched) {
    ensureSize(index);
    seen.metrics = sketchedMetrics(index, node);
  } else {
    seen.metrics = m_context.measurer.measure(
        node, m_context.depthFraction(number), m_context.sizing(),
        seen.isEditing ? std::optional(scene.shown.editingTitle.value_or(node.title)) : std::nullopt);
    if (!seen.isEditing) m_context.sketch.rememberBox(index, seen.metrics.box, sizingFraction(index));
  }
  const QRectF box = seen.metrics.box.translated(position);
  const double reach = surroundings(index);
  if (!box.adjusted(-reach, -reach, reach, reach).intersects(m_context.exposed)) return;
  if (m_context.standsUpright) {
    // The whole topic moves with its box to whole pixels, by less than one.
    seen.pixels = wholePixels(box);
    seen.position += (QPointF(seen.pixels.topLeft() + scene.pixelOrigin) - m_context.toPicture.mapRect(box).topLeft()) /
                     m_context.scale;
  }
  if (!findSeenPart(seen)) return;
  if (m_showsGround && seen.opacity < 1.0 && m_context.standsUpright) m_dimmed.push_back(m_seen.size());
  m_seen.push_back(seen);
}

bool NodeLayer::isTextShown(std::size_t index) const {
  return !m_context.options.levelsOfDetail || sizingOf(index).fontSize * m_context.scale >= minTextPixels;
}

NodeMetrics NodeLayer::sketchedMetrics(std::size_t index, const Node& node) const {
  const auto& sketch = m_context.sketch.nodes()[index];
  NodeMetrics metrics;
  metrics.sizing = sizingOf(index);
  metrics.box = QRectF(-sketch.halfWidth, -sketch.halfHeight, 2.0 * sketch.halfWidth, 2.0 * sketch.halfHeight);
  metrics.title = metrics.box.adjusted(metrics.sizing.horizontalPadding, metrics.sizing.verticalPadding,
                                       -metrics.sizing.horizontalPadding, -metrics.sizing.verticalPadding);
  metrics.placeMarkers(node);
  return metrics;
}

}  // namespace quilmora
