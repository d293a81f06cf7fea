#pragma once

#include <QSizeF>

namespace quilmora {

inline constexpr QSizeF minRegionSize{80.0, 60.0};

// The size that a region gets when it is resized to `wanted`.
inline QSizeF regionSize(QSizeF wanted) {
  return wanted.expandedTo(minRegionSize);
}

}  // namespace quilmora
