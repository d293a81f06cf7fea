#pragma once

#include <unordered_map>

#include <QImage>
#include <QRect>

#include "canvas/painting/BoxShadow.h"

class QPainter;

namespace quilmora {

// Boxes of topics, composed of plain rectangles and small pictures of their rounded corners: many times faster than
// filling rounded paths, and sharp because they are aligned to whole device pixels.
class BoxPicture {
 public:
  // `scale` is in device pixels per canvas unit.
  void prepare(double scale);
  // Paints an opaque box of one fill with a border of `borderWidth` canvas units inside its edge. The painter's
  // coordinates must be device pixels. Returns false if the box is too small to be composed.
  bool paint(QPainter& painter, const QRect& deviceBox, QRgb fill, QRgb border, double borderWidth,
             const SeenPatches& seen);

 private:
  struct Corners {
    QImage picture;  // two by two corners
    int side = 0;    // of one corner
  };
  const Corners& cornersFor(QRgb fill, QRgb border, double borderWidth);

  double m_scale = 0.0;
  std::unordered_map<quint64, Corners> m_corners;
  quint64 m_lastKey = 0;
  const Corners* m_last = nullptr;
};

}  // namespace quilmora
