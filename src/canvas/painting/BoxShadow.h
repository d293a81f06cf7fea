#pragma once

#include <QImage>
#include <QRectF>

class QPainter;

namespace quilmora {

// The soft shadow below topics: blurred once for a scale, then put together from pieces of that picture, because a blur at
// every frame costs more than all else.
class BoxShadow {
 public:
  // `scale` is in device pixels a canvas unit.
  void prepare(double scale);
  // Paints the shadow around a box given in device pixels. The painter's coordinates must be device pixels.
  void paint(QPainter& painter, const QRectF& deviceBox) const;

 private:
  double m_scale = 0.0;
  int m_reach = 0;    // how far the shadow goes beyond the box
  int m_corner = 0;   // side of a corner piece
  int m_drop = 0;     // how far it is moved down
  QImage m_picture;   // two by two corners, with one stretchable pixel between them
};

}  // namespace quilmora
