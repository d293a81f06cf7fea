#pragma once

#include <QPointF>
#include <QRectF>
#include <QTransform>

namespace quilmora {

// The view of the canvas: a canvas point p is shown at p × zoom + offset, in view coordinates (device-independent
// pixels).
struct ViewTransform {
  QPointF offset;
  double zoom = 1.0;

  QPointF toView(QPointF canvasPoint) const { return canvasPoint * zoom + offset; }
  QPointF toCanvas(QPointF viewPoint) const { return (viewPoint - offset) / safeZoom(); }
  QRectF toView(const QRectF& canvasRect) const;
  // The part of the canvas shown in a rectangle of the view.
  QRectF toCanvas(const QRectF& viewRect) const;
  QTransform transform() const { return QTransform(zoom, 0, 0, zoom, offset.x(), offset.y()); }

  bool operator==(const ViewTransform&) const = default;

 private:
  // Users cannot zoom below 0.1, but an inverse must exist for any value.
  double safeZoom() const { return zoom > 1e-6 ? zoom : 1e-6; }
};

}  // namespace quilmora
