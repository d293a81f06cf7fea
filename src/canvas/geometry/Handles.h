#pragma once

#include <QPointF>
#include <QRectF>

namespace quilmora {

// Sizes of the round handles on the canvas, in canvas units, for drawing and hit tests alike.
struct HandleMetrics {
  static constexpr double edgeHandleDiameter = 12.0;        // both ends and the bend of a selected edge
  static constexpr double connectionHandleDiameter = 22.0;  // at the right edge of a selected topic
  static constexpr double connectionHandleGap = 8.0;        // from the topic's right edge to the handle's centre
  static constexpr double connectionDragDiameter = 20.0;    // the disc at the end of a connection being drawn
  static constexpr double deleteButtonDiameter = 20.0;      // a symbol of 16 with a padding of 2 around it
  static constexpr double deleteButtonRise = 15.0;          // above the midpoint of a selected relationship
  static constexpr double resizeHandleDiameter = 14.0;      // at the bottom right of a selected region
};

// Whether a round handle contains the point.
bool handleContains(QPointF center, double diameter, QPointF point);

// The centre of a selected relationship's delete button, from the midpoint of its curve.
QPointF deleteButtonCenter(QPointF relationshipMidpoint);

// The centre of a selected region's resize handle.
QPointF resizeHandleCenter(const QRectF& regionRect);

}  // namespace quilmora
