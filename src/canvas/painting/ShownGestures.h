#pragma once

#include <optional>

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QUuid>

#include "model/Records.h"

namespace quilmora {

// State of the region layer: a region being dragged, or the label being edited.
struct RegionGesture {
  std::optional<QUuid> draggingRegionID;
  QSizeF dragOffset{0.0, 0.0};  // canvas units, added to the region's origin
  std::optional<QUuid> resizingRegionID;
  QSizeF resizeDelta{0.0, 0.0};  // canvas units, added to the region's size
  std::optional<QUuid> editingLabelID;
  QString editingLabelText;

  bool operator==(const RegionGesture&) const = default;
};

// Where a region is shown, in canvas units: its rectangle including a drag in progress.
QRectF displayRect(const Region& region, const RegionGesture& state);

// What active gestures show in the picture of a map, and what they have selected or opened there. A new preview is one
// more field here, set by its gesture, plus the code that draws it; SceneDifference finds where it shows.
struct ShownGestures {
  enum class HandleKind { edgeSource, edgeTarget, edgeBend, relationshipBend };

  // A handle being dragged: of which edge or relationship, and how far, in canvas units.
  struct DraggedHandle {
    HandleKind kind;
    QUuid ownerID;
    QPointF translation;

    bool operator==(const DraggedHandle&) const = default;
  };
  // A connection being drawn from a topic's connection handle to a point of the canvas or to a topic.
  struct ConnectionDrag {
    QUuid sourceID;
    QPointF end;
    std::optional<QUuid> targetID;
  };
  // The topic that would take what is being dragged, and the colour of its border.
  struct DropTarget {
    QUuid id;
    bool isReparenting;  // otherwise a connection or an image

    bool operator==(const DropTarget&) const = default;
  };

  std::optional<QUuid> selectedRelationshipID;
  QPointF nodeDragTranslation;  // of all selected topics during a drag, in canvas units
  std::optional<QUuid> reparentTargetID;
  std::optional<QUuid> handleDragSourceID;
  std::optional<QPointF> handleDragEndPoint;  // canvas units
  std::optional<QUuid> handleDragTargetID;
  std::optional<DraggedHandle> draggedHandle;
  std::optional<QUuid> imageDropTargetID;  // the topic that an image file is held over
  // The topic with an open title field: its title is not drawn, and the text in the field sizes its box.
  std::optional<QUuid> editingNodeID;
  std::optional<QString> editingTitle;
  RegionGesture regions;

  std::optional<ConnectionDrag> connectionDrag() const;
  std::optional<DropTarget> dropTarget() const;

  bool operator==(const ShownGestures&) const = default;
};

}  // namespace quilmora
