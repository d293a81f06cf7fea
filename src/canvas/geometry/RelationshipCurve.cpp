#include "canvas/geometry/RelationshipCurve.h"

#include <algorithm>
#include <cmath>

#include "canvas/geometry/Polygons.h"

namespace quilmora {

RelationshipCurve::RelationshipCurve(QPointF start, QPointF end, const std::optional<QPointF>& offset)
    : from(start), to(end) {
  constexpr double bow = 0.2;
  const QPointF middle = from * 0.5 + to * 0.5;
  const QPointF bend = offset.value_or(QPointF());
  const double dx = to.x() - from.x();
  const double dy = to.y() - from.y();
  control = QPointF(middle.x() - dy * bow + bend.x(), middle.y() + dx * bow + bend.y());
}

QPointF RelationshipCurve::pointAt(double t) const {
  const double u = 1.0 - t;
  return from * (u * u) + control * (2 * u * t) + to * (t * t);
}

QPointF RelationshipCurve::midpoint() const {
  return from * 0.25 + control * 0.5 + to * 0.25;
}

QRectF RelationshipCurve::bounds() const {
  const auto [left, right] = std::minmax({from.x(), to.x(), control.x()});
  const auto [top, bottom] = std::minmax({from.y(), to.y(), control.y()});
  return QRectF(QPointF(left, top), QPointF(right, bottom));
}

bool RelationshipCurve::contains(QPointF point) const {
  const double reach = hitWidth / 2.0;
  if (!bounds().adjusted(-reach, -reach, reach, reach).contains(point)) return false;
  // A chord of n equal steps deviates from the curve by |P0 − 2P1 + P2| ÷ 4n²: enough steps for a quarter of a unit.
  const QPointF bend = from - control * 2.0 + to;
  const double wanted = std::ceil(std::sqrt(std::hypot(bend.x(), bend.y())));
  if (!std::isfinite(wanted)) return false;
  const int steps = static_cast<int>(std::clamp(wanted, 8.0, 1024.0));
  QPointF previous = from;
  for (int i = 1; i <= steps; ++i) {
    const QPointF next = pointAt(static_cast<double>(i) / steps);
    if (distanceToSegment(point, previous, next) <= reach) return true;
    previous = next;
  }
  return false;
}

}  // namespace quilmora
