#include "canvas/geometry/Polygons.h"

#include <algorithm>
#include <cmath>

namespace quilmora {

namespace {

// One of a rectangle's four half planes: coordinate (x or y) × sign is at most limit.
struct HalfPlane {
  bool isHorizontal;
  double sign;
  double limit;

  double excess(QPointF point) const { return (isHorizontal ? point.x() : point.y()) * sign - limit; }
};

QPointF crossing(const HalfPlane& plane, QPointF a, double excessA, QPointF b, double excessB) {
  // The weights stay within 0 to 1 whatever the sizes, so that the products cannot overflow.
  const double t = excessA / (excessA - excessB);
  const auto between = [t](double from, double to) {
    return std::clamp(from * (1.0 - t) + to * t, std::min(from, to), std::max(from, to));
  };
  // Exactly on the limit: between numbers that are far apart, rounding would put the crossing far outside.
  const double limit = plane.limit * plane.sign;
  return plane.isHorizontal ? QPointF(limit, between(a.y(), b.y())) : QPointF(between(a.x(), b.x()), limit);
}

}  // namespace

bool isFinite(QPointF point) {
  return std::isfinite(point.x()) && std::isfinite(point.y());
}

bool isFinite(const QRectF& rect) {
  return isFinite(rect.topLeft()) && isFinite(rect.bottomRight());
}

bool polygonContains(std::span<const QPointF> polygon, QPointF point) {
  int winding = 0;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const QPointF a = polygon[i];
    const QPointF b = polygon[i + 1 == polygon.size() ? 0 : i + 1];
    const bool startsAbove = a.y() <= point.y();
    const bool endsAbove = b.y() <= point.y();
    if (startsAbove == endsAbove) continue;
    const double side = (b.x() - a.x()) * (point.y() - a.y()) - (point.x() - a.x()) * (b.y() - a.y());
    if (startsAbove && side > 0) ++winding;
    if (endsAbove && side < 0) --winding;
  }
  return winding != 0;
}

std::vector<QPointF> clippedPolygon(std::span<const QPointF> polygon, const QRectF& rect) {
  std::vector<QPointF> points(polygon.begin(), polygon.end());
  if (!std::all_of(points.begin(), points.end(), [](QPointF point) { return isFinite(point); })) return {};
  const HalfPlane planes[] = {
      {true, 1, rect.right()}, {true, -1, -rect.left()}, {false, 1, rect.bottom()}, {false, -1, -rect.top()}};
  std::vector<QPointF> kept;
  for (const HalfPlane& plane : planes) {
    kept.clear();
    for (std::size_t i = 0; i < points.size(); ++i) {
      const QPointF a = points[i];
      const QPointF b = points[i + 1 == points.size() ? 0 : i + 1];
      const double excessA = plane.excess(a);
      const double excessB = plane.excess(b);
      if (excessA <= 0) kept.push_back(a);
      if ((excessA <= 0) != (excessB <= 0)) kept.push_back(crossing(plane, a, excessA, b, excessB));
    }
    points.swap(kept);
  }
  return points;
}

bool clipSegment(QPointF& from, QPointF& to, const QRectF& rect) {
  if (!isFinite(from) || !isFinite(to)) return false;
  const HalfPlane planes[] = {
      {true, 1, rect.right()}, {true, -1, -rect.left()}, {false, 1, rect.bottom()}, {false, -1, -rect.top()}};
  for (const HalfPlane& plane : planes) {
    const double excessFrom = plane.excess(from);
    const double excessTo = plane.excess(to);
    if (excessFrom > 0 && excessTo > 0) return false;
    if (excessFrom > 0) from = crossing(plane, from, excessFrom, to, excessTo);
    if (excessTo > 0) to = crossing(plane, from, excessFrom, to, excessTo);
  }
  return true;
}

double distanceToSegment(QPointF point, QPointF from, QPointF to) {
  const QPointF along = to - from;
  const double square = QPointF::dotProduct(along, along);
  const double t = square > 0 ? std::clamp(QPointF::dotProduct(point - from, along) / square, 0.0, 1.0) : 0.0;
  const QPointF nearest = from + along * t;
  return std::hypot(point.x() - nearest.x(), point.y() - nearest.y());
}

}  // namespace quilmora
