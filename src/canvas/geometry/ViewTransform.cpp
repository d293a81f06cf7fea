#include "canvas/geometry/ViewTransform.h"

namespace quilmora {

QRectF ViewTransform::toView(const QRectF& canvasRect) const {
  return QRectF(toView(canvasRect.topLeft()), canvasRect.size() * zoom);
}

QRectF ViewTransform::toCanvas(const QRectF& viewRect) const {
  return QRectF(toCanvas(viewRect.topLeft()), viewRect.size() / safeZoom());
}

}  // namespace quilmora
