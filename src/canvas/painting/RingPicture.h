#pragma once

#include <QColor>
#include <QImage>
#include <QRect>

class QPainter;

namespace quilmora {

// The rings around selected topics, composed of a small picture of their corners and of plain lines: many times faster
// than stroking a rounded path for each.
class RingPicture {
 public:
  // All in device pixels, from the edge of a box: the gap, the width of the ring, and the radius of its middle.
  struct Look {
    QRgb color = 0;
    double gap = 0.0;
    double width = 0.0;
    double radius = 0.0;

    bool operator==(const Look&) const = default;
  };

  // Paints the ring around a box. The painter's coordinates must be device pixels. Returns false if the box is too
  // small for a composed one.
  bool paint(QPainter& painter, const QRect& box, const Look& look);

 private:
  void prepare(const Look& look);

  Look m_look;
  QImage m_picture;  // a ring of two by two corners
  int m_reach = 0;   // from the edge of a box to the edge of the picture
  int m_side = 0;    // of a corner
};

}  // namespace quilmora
