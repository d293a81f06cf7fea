#include "canvas/painting/BadgeLook.h"

namespace quilmora {

const BadgeLook& badgeLook(Badge badge) {
  static const BadgeLook looks[] = {
      {QStringLiteral("exclamationmark.3"), QColor(0xE74C3C)},
      {QStringLiteral("exclamationmark.2"), QColor(0xF39C12)},
      {QStringLiteral("exclamationmark"), QColor(0x3498DB)},
      {QStringLiteral("checkmark.circle.fill"), QColor(0x27AE60)},
      {QStringLiteral("arrow.triangle.2.circlepath"), QColor(0x8E44AD)},
      {QStringLiteral("xmark.octagon.fill"), QColor(0xC0392B)},
  };
  return looks[static_cast<std::size_t>(badge)];
}

}  // namespace quilmora
