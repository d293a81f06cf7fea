#pragma once

#include <optional>

#include <QPointF>
#include <QRectF>

namespace quilmora {

// The curve of a relationship: a quadratic Bézier between two topics' centres that bends by a fifth of their distance,
// always to the same side. Canvas coordinates.
struct RelationshipCurve {
  static constexpr double hitWidth = 15.0;

  QPointF from;
  QPointF to;
  QPointF control;

  RelationshipCurve(QPointF from, QPointF to, const std::optional<QPointF>& offset);

  QPointF pointAt(double t) const;
  QPointF midpoint() const;
  // A rectangle that contains the curve, without the width of its stroke.
  QRectF bounds() const;
  // Whether the point is within the hit stroke.
  bool contains(QPointF point) const;
};

}  // namespace quilmora
