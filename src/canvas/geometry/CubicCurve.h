#pragma once

#include <QPointF>

namespace quilmora {

// A cubic Bézier curve, given by its two ends and its two inner points.
struct CubicCurve {
  QPointF start;
  QPointF inner1;
  QPointF inner2;
  QPointF end;

  // For t from 0 to 1.
  QPointF pointAt(double t) const {
    const double u = 1.0 - t;
    return start * (u * u * u) + inner1 * (3 * u * u * t) + inner2 * (3 * u * t * t) + end * (t * t * t);
  }
  QPointF tangentAt(double t) const {
    const double u = 1.0 - t;
    return (inner1 - start) * (3 * u * u) + (inner2 - inner1) * (6 * u * t) + (end - inner2) * (3 * t * t);
  }
};

}  // namespace quilmora
