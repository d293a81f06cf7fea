#pragma once

#include <algorithm>

#include <QColor>
#include <QPointF>

class QPainter;

namespace quilmora {

// A disc with an optional contour inside its edge and a soft shadow below it.
struct HandleLook {
  double diameter;
  QColor fill;
  QColor contour;
  double contourWidth;
  QColor shadow;
  double shadowBlur;

  // From the centre to the end of the shadow.
  double reach() const { return diameter / 2 + std::max(0.0, shadowBlur); }
  bool operator==(const HandleLook&) const = default;
};

// `growth` enlarges all of it.
void paintHandle(QPainter& painter, QPointF center, const HandleLook& look, double growth = 1.0);

}  // namespace quilmora
