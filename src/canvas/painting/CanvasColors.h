#pragma once

#include <QColor>

namespace quilmora {

// The colour of what is selected or active, on light and on dark grounds, in canvas and windows alike.
inline constexpr QRgb accentOnLight = 0xFF0A6CFF;
inline constexpr QRgb accentOnDark = 0xFF3D94FF;

// The colours on the canvas that no map stores. They follow the map's background, not the appearance of the windows.
struct CanvasColors {
  QColor selection;         // borders of what is selected, the connection handle and its preview
  QColor reparentTarget;    // border of the topic that a dragged one would be hung under
  QColor connectionTarget;  // border of the topic that a new connection would lead to
  QColor endpointHandle;
  QColor bendHandle;
  QColor deleteButton;
  QColor aiMarker;

  static const CanvasColors& onBackground(const QColor& background);
};

}  // namespace quilmora
