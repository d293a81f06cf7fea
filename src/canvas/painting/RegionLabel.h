#pragma once

#include <QFont>
#include <QRectF>
#include <QString>

namespace quilmora {

// Measures of the plate at the top left corner of a region that holds its label, in canvas units, for painting and for
// the field that takes its place.
struct RegionLabel {
  static constexpr double fontSize = 11.0;
  static constexpr double paddingX = 8.0;
  static constexpr double paddingY = 3.0;
  static constexpr double plateOpacity = 0.95;
  static constexpr double cornerRadius = 8.0;

  // A label never gets smaller on the screen than so many pixels, and may run beyond a narrow region as far as this.
  static constexpr double minPixels = 8.0;
  static constexpr double maxOwnWidth = 330.0;

  // In pixels of the given size.
  static QFont font(int pixelSize);
  // By how much the plate is larger than its measures, at a zoom in pixels of the window a canvas unit.
  static double growth(double zoom);
  // What the plate of a region can cover at most, in canvas units.
  static QRectF reach(const QRectF& region, double zoom);
};

}  // namespace quilmora
