#pragma once

#include <array>
#include <list>

#include <QImage>

#include "canvas/painting/HandleLook.h"

class QPainter;

namespace quilmora {

// Small pictures of round handles, for views with thousands of them: drawing one costs a fraction of filling its rings.
// Centres are rounded to a quarter of a device pixel.
class HandlePictures {
 public:
  // Paints a handle around the device pixel `center`; `scale` is in device pixels per unit of the look. The painter's
  // coordinates must be device pixels.
  void paint(QPainter& painter, QPointF center, const HandleLook& look, double scale);

 private:
  static constexpr int phases = 4;  // in each direction
  struct Pictures {
    HandleLook look;
    double scale = 0.0;
    int half = 0;  // from the left edge of a picture to the pixel of the centre
    std::array<QImage, phases * phases> images;
  };
  Pictures& picturesOf(const HandleLook& look, double scale);

  std::list<Pictures> m_kept;  // the last used first
};

}  // namespace quilmora
