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

// One rule for painting and hit tests: what is not painted cannot be pressed, and what is painted is pressed where it
// shows. `zoom` is in window pixels, not device pixels, per canvas unit.

bool isPartShown(CanvasPart part, double zoom);

// How much larger a part is drawn than its own size in canvas units, so that it stays recognisable when zoomed out.
double partGrowth(CanvasPart part, double zoom);

// The diameter of a round part as shown, in canvas units.
double partDiameter(CanvasPart part, double zoom);

// Where a part is shown that is at `place` at zoom 1: enlarged around its centre, or to the left for a collapse mark.
// Empty if it is not shown or `place` is empty.
QRectF shownPart(CanvasPart part, const QRectF& place, double zoom);

// The centre of a selected relationship's delete button as shown, from the midpoint of its curve.
QPointF shownDeleteButtonCenter(QPointF relationshipMidpoint, double zoom);

// How far shadow, selection ring, marks and handle of a topic extend beyond its box, in canvas units.
double topicSurroundings(double zoom, bool isSelected, bool isCollapsed);
// The maximum for any topic in any state, including rounding to pixels.
double maxTopicSurroundings(double zoom);

// How far the handles of an edge or a relationship extend from their centres, shadow included, in canvas units.
double handleSurroundings(double zoom);

}  // namespace quilmora
