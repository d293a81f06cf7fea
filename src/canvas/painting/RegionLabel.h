#pragma once

#include <QFont>
#include <QRectF>
#include <QString>

namespace quilmora {

// Measures of the plate in a region's top left corner that holds its label, in canvas units, for painting and for the
// field that replaces it.
struct RegionLabel {
  static constexpr double fontSize = 11.0;
  static constexpr double paddingX = 8.0;
  static constexpr double paddingY = 3.0;
  static constexpr double plateOpacity = 0.95;
  static constexpr double cornerRadius = 8.0;

  // A label is never smaller on the screen than this many pixels, and may extend beyond a narrow region this far.
  static constexpr double minPixels = 8.0;
  static constexpr double maxOwnWidth = 330.0;

  // `pixelSize` in pixels.
  static QFont font(int pixelSize);
  // How much larger the plate is than its measures, at a zoom in window pixels per canvas unit.
  static double growth(double zoom);
  // The largest area that a region's plate can cover, in canvas units.
  static QRectF reach(const QRectF& region, double zoom);
};

}  // namespace quilmora
