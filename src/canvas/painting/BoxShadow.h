#pragma once

#include <QImage>
#include <QRectF>

class QPainter;

namespace quilmora {

// What of a box and its surroundings has to be painted, because later boxes leave it in sight. The nine patches are the
// corners, the sides and the middle, row by row; the corner patches reach `inset` into the box.
struct SeenPatches {
  enum Patch : unsigned { topLeft, top, topRight, left, middle, right, bottomLeft, bottom, bottomRight };

  unsigned patches = 0x1FF;
  QRect pixels;  // holds all that is in sight

  bool has(Patch patch) const { return patches >> patch & 1U; }
  // Whole sides with their corner patches: what stretches from corner to corner begins within these.
  bool hasTop() const { return patches & 0x007; }
  bool hasBottom() const { return patches & 0x1C0; }
  bool hasLeft() const { return patches & 0x049; }
  bool hasRight() const { return patches & 0x124; }
};

// The soft shadow below topics: blurred once for a scale, then put together from pieces of that picture, because a blur
// at every frame costs more than all else.
class BoxShadow {
 public:
  // `scale` is in device pixels a canvas unit.
  void prepare(double scale);
  // Paints the shadow around a box given in device pixels. The painter's coordinates must be device pixels.
  void paint(QPainter& painter, const QRectF& deviceBox, const SeenPatches& seen) const;

 private:
  double m_scale = 0.0;
  int m_reach = 0;   // how far the shadow goes beyond the box
  int m_corner = 0;  // side of a corner piece
  int m_drop = 0;    // how far it is moved down
  QImage m_picture;  // two by two corners, with one stretchable pixel between them
  // That pixel's column and row side by side: painted in lengths, as stretching at each use is slow.
  QImage m_across;
  QImage m_down;
};

}  // namespace quilmora
