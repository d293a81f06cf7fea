#include "canvas/geometry/Handles.h"

#include <cmath>

namespace quilmora {

bool handleContains(QPointF center, double diameter, QPointF point) {
  return std::hypot(point.x() - center.x(), point.y() - center.y()) <= diameter / 2.0;
}

QPointF deleteButtonCenter(QPointF relationshipMidpoint) {
  return relationshipMidpoint - QPointF(0, HandleMetrics::deleteButtonRise);
}

QPointF resizeHandleCenter(const QRectF& regionRect) {
  return regionRect.bottomRight();
}

}  // namespace quilmora
