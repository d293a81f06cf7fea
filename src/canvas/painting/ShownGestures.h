#pragma once

#include <optional>

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QUuid>

#include "model/Records.h"

namespace quilmora {

// What the rearmost layer of the canvas remembers: a region under drag, or the label that is being edited.
struct RegionLayerState {
  std::optional<QUuid> draggingRegionID;
  QSizeF dragOffset{0.0, 0.0};  // canvas units, added to the region's origin
  std::optional<QUuid> resizingRegionID;
  QSizeF resizeDelta{0.0, 0.0};  // canvas units, added to the region's size
  std::optional<QUuid> editingLabelID;
  QString editingLabelText;

  bool operator==(const RegionLayerState&) const = default;
};

// Where a region shows, in canvas units: its rectangle as a drag under way has it.
QRectF displayRect(const Region& region, const RegionLayerState& state);

// What gestures under way show of themselves in the picture of a map, and what they have selected or opened there. A
// new preview is one more field here, filled by its gesture, and the place that draws it; SceneDifference tells where
// it shows.
struct ShownGestures {
  enum class HandleKind { edgeSource, edgeTarget, edgeBend, relationshipBend };

  // A handle on the way: of which edge or relationship, and how far it was dragged, in canvas units.
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
  // The topic that would take what is being dragged, and in which colour it says so.
  struct DropTarget {
    QUuid id;
    bool isReparenting;  // else a connection or an image

    bool operator==(const DropTarget&) const = default;
  };

  std::optional<QUuid> selectedRelationshipID;
  QPointF nodeDragTranslation;  // canvas units, of all selected topics while the drag lasts
  std::optional<QUuid> reparentTargetID;
  std::optional<QUuid> handleDragSourceID;
  std::optional<QPointF> handleDragEndPoint;  // canvas units
  std::optional<QUuid> handleDragTargetID;
  std::optional<DraggedHandle> draggedHandle;
  std::optional<QUuid> imageDropTargetID;  // the topic that an image file is held over
  // The topic whose title an editor covers: its title is left out. The text in that editor sizes the box.
  std::optional<QUuid> editingNodeID;
  std::optional<QString> editingTitle;
  RegionLayerState regions;

  std::optional<ConnectionDrag> connectionDrag() const;
  std::optional<DropTarget> dropTarget() const;

  bool operator==(const ShownGestures&) const = default;
};

}  // namespace quilmora
