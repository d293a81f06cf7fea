#include "canvas/geometry/TaperedConnector.h"

#include <algorithm>
#include <cmath>

#include "canvas/geometry/Polygons.h"
#include "model/TreeInfo.h"

namespace quilmora {

namespace {

// Shorter tangents have no direction.
constexpr double minTangentLength = 0.001;
constexpr double headLengthPerWidth = 2.5;
constexpr double headBasePerWidth = 1.5;

double eased(double t, EdgeStyle::TaperEasing easing) {
  switch (easing) {
    case EdgeStyle::TaperEasing::quadraticIn:
      return t * t;
    case EdgeStyle::TaperEasing::cubicIn:
      return t * t * t;
    case EdgeStyle::TaperEasing::linear:
      break;
  }
  return t;
}

double length(QPointF vector) {
  return std::hypot(vector.x(), vector.y());
}

}  // namespace

std::array<QPointF, 2> edgeControlPoints(QPointF from, QPointF to, const std::optional<QPointF>& offset) {
  const double dx = (to.x() - from.x()) / 3.0;
  const QPointF bend = offset.value_or(QPointF());
  return {QPointF(from.x() + dx, from.y()) + bend, QPointF(to.x() - dx, to.y()) + bend};
}

TaperedConnector::TaperedConnector(const Edge& edge, QPointF from, QPointF to,
                                   std::optional<EdgeStyle::TaperConfig> taper)
    : startPoint(from), endPoint(to), style(edge.style), effectiveTaper(taper) {
  const auto controls = edgeControlPoints(from, to, edge.controlPointOffset);
  controlPoint1 = controls[0];
  controlPoint2 = controls[1];
}

int TaperedConnector::sampleCount() const {
  const double count = length(endPoint - startPoint) / 10.0;
  // Clamped before the conversion, which is undefined for numbers beyond an int.
  if (!(count > minSampleCount)) return minSampleCount;
  return static_cast<int>(std::min(count, double{maxSampleCount}));
}

QPointF TaperedConnector::pointAt(double t) const {
  return curve().pointAt(t);
}

QPointF TaperedConnector::tangentAt(double t) const {
  return curve().tangentAt(t);
}

std::array<QPointF, 2> TaperedConnector::sidesAt(double t) const {
  const EdgeStyle::TaperConfig& widths = taper();
  const QPointF tangent = tangentAt(t);
  const double size = length(tangent);
  const QPointF normal = size > minTangentLength ? QPointF(-tangent.y() / size, tangent.x() / size) : QPointF(0, 1);
  const double width = widths.startWidth + (widths.endWidth - widths.startWidth) * eased(t, widths.easing);
  const QPointF side = normal * (width / 2.0);
  const QPointF point = pointAt(t);
  return {point + side, point - side};
}

std::vector<QPointF> TaperedConnector::outline(int samples) const {
  const int count = std::clamp(samples, 1, maxSampleCount);
  std::vector<QPointF> points(static_cast<std::size_t>(2 * (count + 1)));
  for (int i = 0; i <= count; ++i) {
    const auto [left, right] = sidesAt(static_cast<double>(i) / count);
    points[static_cast<std::size_t>(i)] = left;
    points[points.size() - 1 - static_cast<std::size_t>(i)] = right;
  }
  return points;
}

std::vector<QPointF> TaperedConnector::arrowHead() const {
  if (style.arrowHead != EdgeStyle::ArrowHead::triangle) return {};
  const QPointF tangent = (endPoint - controlPoint2) * 3.0;
  const double size = length(tangent);
  if (!(size > minTangentLength)) return {};
  const QPointF direction = tangent / size;
  const QPointF normal(-direction.y(), direction.x());
  const QPointF base = endPoint - direction * (headLengthPerWidth * style.taper.endWidth);
  const QPointF corner = normal * (headBasePerWidth * style.taper.endWidth * 0.5);
  return {endPoint, base + corner, base - corner};
}

QPointF TaperedConnector::bendHandlePosition() const {
  return startPoint * 0.125 + controlPoint1 * 0.375 + controlPoint2 * 0.375 + endPoint * 0.125;
}

QRectF TaperedConnector::bounds() const {
  const auto [left, right] = std::minmax({startPoint.x(), endPoint.x(), controlPoint1.x(), controlPoint2.x()});
  const auto [top, bottom] = std::minmax({startPoint.y(), endPoint.y(), controlPoint1.y(), controlPoint2.y()});
  const double margin =
      connectorReach(taper(), style.arrowHead == EdgeStyle::ArrowHead::triangle ? style.taper.endWidth : 0.0);
  return QRectF(QPointF(left, top), QPointF(right, bottom)).adjusted(-margin, -margin, margin, margin);
}

bool TaperedConnector::contains(QPointF point) const {
  if (!bounds().contains(point)) return false;
  return polygonContains(outline(), point) || polygonContains(arrowHead(), point);
}

double connectorReach(const EdgeStyle::TaperConfig& widths, double headWidth) {
  // From the tip to a corner of the head.
  static const double headReachPerWidth = std::hypot(headLengthPerWidth, headBasePerWidth / 2.0);
  return std::max(
      {std::abs(widths.startWidth) / 2.0, std::abs(widths.endWidth) / 2.0, std::abs(headWidth) * headReachPerWidth});
}

double edgeWidthAtDepth(int depth, const HierarchicalConfig& config) {
  if (depth <= 0) return config.rootEdgeWidth;
  if (depth == 1) return config.rootEdgeWidth * 0.25 + config.leafEdgeWidth * 0.75;
  return config.leafEdgeWidth;
}

std::optional<EdgeStyle::TaperConfig> effectiveTaper(const Edge& edge, const TreeInfo& tree,
                                                     const HierarchicalConfig& config) {
  if (!config.edgeSizing || tree.maxDepth() < 1) return std::nullopt;
  return EdgeStyle::TaperConfig{edgeWidthAtDepth(tree.depth(edge.from).value_or(0), config),
                                edgeWidthAtDepth(tree.depth(edge.to).value_or(0), config),
                                EdgeStyle::TaperEasing::linear};
}

}  // namespace quilmora
