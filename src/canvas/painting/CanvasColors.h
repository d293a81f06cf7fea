#pragma once

#include <QColor>

namespace quilmora {

// The colour of whatever is selected or active, on light and dark backgrounds, on the canvas and in windows.
inline constexpr QRgb accentOnLight = 0xFF0A6CFF;
inline constexpr QRgb accentOnDark = 0xFF3D94FF;

// The canvas colours that are not stored in a map. They follow the map's background, not the appearance of the windows.
struct CanvasColors {
  QColor selection;         // borders of the selection, the connection handle and its preview
  QColor reparentTarget;    // border of the topic that a dragged one would be moved below
  QColor connectionTarget;  // border of the topic that a new connection would lead to
  QColor endpointHandle;
  QColor bendHandle;
  QColor deleteButton;
  QColor aiMarker;

  static const CanvasColors& onBackground(const QColor& background);
};

}  // namespace quilmora
