#include "canvas/painting/CanvasColors.h"

namespace quilmora {

const CanvasColors& CanvasColors::onBackground(const QColor& background) {
  static const CanvasColors light{QColor(accentOnLight), QColor(0x34C759), QColor(accentOnLight), QColor(0xFF9500),
                                  QColor(0xAF52DE),      QColor(0xFF3B30), QColor(0xAF52DE)};
  static const CanvasColors dark{QColor(accentOnDark), QColor(0x30D158), QColor(accentOnDark), QColor(0xFF9F0A),
                                 QColor(0xBF5AF2),     QColor(0xFF453A), QColor(0xBF5AF2)};
  return qGray(background.rgb()) < 128 ? dark : light;
}

}  // namespace quilmora
