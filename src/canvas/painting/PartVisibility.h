#pragma once

#include <QPointF>
#include <QRectF>

namespace quilmora {

// The small parts on and around topics, connectors and regions: marks, buttons, handles.
enum class CanvasPart {
  badge,
  collapseToggle,
  hiddenCount,
  aiMarker,
  linkMarker,
  noteMarker,
  connectionHandle,
  edgeHandle,  // both ends of a selected edge
  bendHandle,  // of a selected edge or relationship
  deleteButton,
  resizeHandle,
};

// One rule for painting and for hits: what is not painted cannot be pressed, and what is painted is pressed where it
// shows. `zoom` counts pixels of the window, not of the device, a canvas unit.

bool isPartShown(CanvasPart part, double zoom);

// By how much a part is larger than its own size in canvas units, so that it stays recognisable on a small picture.
double partGrowth(CanvasPart part, double zoom);

// The diameter of a round part as it shows, in canvas units.
double partDiameter(CanvasPart part, double zoom);

// Where a part shows whose place at zoom 1 this is: grown about its centre, a collapse mark to the left. Empty where it
// doesn't show or is empty.
QRectF shownPart(CanvasPart part, const QRectF& place, double zoom);

// Where the delete button of a selected relationship shows, from the midpoint of its curve.
QPointF shownDeleteButtonCenter(QPointF relationshipMidpoint, double zoom);

// How far shadow, selection ring, marks and handle of a topic reach beyond its box, in canvas units.
double topicSurroundings(double zoom, bool isSelected, bool isCollapsed);
// The same for any topic, whatever its state, with what rounding to pixels adds.
double maxTopicSurroundings(double zoom);

// How far the handles of an edge or a relationship reach from their centres, shadow included, in canvas units.
double handleSurroundings(double zoom);

}  // namespace quilmora
