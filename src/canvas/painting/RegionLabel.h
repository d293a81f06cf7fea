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

  // In pixels of the given size.
  static QFont font(int pixelSize);
};

}  // namespace quilmora
