#pragma once

#include <QImage>
#include <QRectF>

class QPainter;

namespace quilmora {

// The parts of a box and its surroundings that must be painted because later boxes leave them visible. The nine patches
// are the corners, the sides and the middle, row by row; the corner patches extend `inset` into the box.
struct SeenPatches {
  enum Patch : unsigned { topLeft, top, topRight, left, middle, right, bottomLeft, bottom, bottomRight };

  unsigned patches = 0x1FF;
  QRect pixels;  // contains everything visible

  bool has(Patch patch) const { return patches >> patch & 1U; }
  // Whole sides with their corner patches: whatever stretches from corner to corner starts within these.
  bool hasTop() const { return patches & 0x007; }
  bool hasBottom() const { return patches & 0x1C0; }
  bool hasLeft() const { return patches & 0x049; }
  bool hasRight() const { return patches & 0x124; }
};

// The soft shadow below topics: blurred once per scale, then composed of pieces of that picture, because a blur in
// every frame would cost more than everything else.
class BoxShadow {
 public:
  // `scale` is in device pixels per canvas unit.
  void prepare(double scale);
  // Paints the shadow around a box given in device pixels. The painter's coordinates must be device pixels.
  void paint(QPainter& painter, const QRectF& deviceBox, const SeenPatches& seen) const;

 private:
  double m_scale = 0.0;
  int m_reach = 0;   // how far the shadow extends beyond the box
  int m_corner = 0;  // side of a corner piece
  int m_drop = 0;    // how far it is moved down
  QImage m_picture;  // two by two corners, with one stretchable pixel between them
  // That pixel's column and row repeated in long strips, as stretching them at each use is slow.
  QImage m_across;
  QImage m_down;
};

}  // namespace quilmora
