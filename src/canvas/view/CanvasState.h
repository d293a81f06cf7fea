#pragma once

#include <optional>

#include <QPointF>
#include <QSizeF>
#include <QUuid>

#include "canvas/view/CanvasTarget.h"
#include "canvas/view/RegionLayer.h"
#include "platform/Clock.h"

namespace quilmora {

enum class EdgeEndpoint { source, target };

// What the canvas remembers between two inputs, and what its layers draw of a gesture under way. Nothing of it reaches
// the document.
struct CanvasState {
  // A bend handle under drag.
  struct Bend {
    bool isRelationship = false;
    QUuid ownerID;        // the edge or the relationship
    QPointF translation;  // canvas units

    bool operator==(const Bend&) const = default;
  };

  std::optional<QUuid> draggedNodeID;
  QPointF nodeDragTranslation;  // canvas units, of all selected topics while the drag lasts
  double initialZoom = 1.0;     // the zoom that a pinch starts from
  bool hasAppearedOnce = false;
  std::optional<QPointF> selectionBoxStart;  // view coordinates
  std::optional<QPointF> selectionBoxCurrent;
  bool isPanning = false;
  QPointF panStartOffset;
  bool isOptionHeld = false;
  QSizeF canvasSize;
  std::optional<QUuid> handleDragSourceID;
  std::optional<QPointF> handleDragEndPoint;  // canvas units
  std::optional<QUuid> lastTapNodeID;
  SteadyPoint lastTapTime;
  std::optional<QUuid> editingNodeID;
  std::optional<QUuid> reparentTargetID;
  std::optional<QUuid> selectedRelationshipID;
  std::optional<QUuid> handleDragTargetID;
  std::optional<QUuid> draggingEdgeID;
  std::optional<EdgeEndpoint> draggingEdgeEndpoint;
  std::optional<QPointF> edgeDragPosition;     // canvas units
  std::optional<QPointF> edgeDragTranslation;  // from the endpoint's own place
  std::optional<Bend> draggedBend;
  std::optional<QUuid> imageDropTargetID;   // the topic that an image file is held over
  std::optional<CanvasTarget> hoveredPart;  // the button or handle under the pointer while nothing is pressed
  std::optional<CanvasTarget> pressedPart;  // the one that is held down with the pointer still on it
  RegionLayerState regions;

  bool operator==(const CanvasState&) const = default;
};

}  // namespace quilmora
