#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include <QRectF>
#include <QString>
#include <QUuid>

#include "canvas/geometry/ViewTransform.h"
#include "model/IdSet.h"
#include "model/MapIndex.h"
#include "model/TreeInfo.h"

namespace quilmora {

// Everything that a picture of a map depends on; SceneDifference compares all of it. Pointers are borrowed for the time
// of one call; the first three must be set and belong to the same state of the map.
struct MapScene {
  enum class DropTarget { reparent, connection };
  enum class HandleKind { edgeSource, edgeTarget, edgeBend, relationshipBend };

  // A handle on the way: of which edge or relationship, and how far it was dragged, in canvas units.
  struct DraggedHandle {
    HandleKind kind;
    QUuid ownerID;
    QPointF translation;
  };
  // A connection being drawn from a topic's connection handle to a point of the canvas or to a topic.
  struct ConnectionDrag {
    QUuid sourceID;
    QPointF end;
    std::optional<QUuid> targetID;
  };
  // A region on the way: where it shows instead of its own rectangle.
  struct RegionDrag {
    QUuid regionID;
    QRectF rect;
  };

  const MindMap* map = nullptr;
  const MapIndex* index = nullptr;
  const TreeInfo* tree = nullptr;
  // By position in `nodes`: 1 for a topic that a collapsed one hides. None is hidden without it.
  const std::vector<char>* hiddenNodes = nullptr;

  ViewTransform view;
  // What has to be painted, in view coordinates.
  QRectF exposed;
  // Which device pixel of a larger picture the painter's first one is: its painting moves by as much up and left.
  QPoint pixelOrigin;
  // Where set, only these positions in `nodes` and `edges` are looked at, in ascending order.
  const std::vector<std::uint32_t>* nodesInSight = nullptr;
  const std::vector<std::uint32_t>* edgesInSight = nullptr;

  const IdSet* selectedNodeIDs = nullptr;
  const IdSet* selectedEdgeIDs = nullptr;
  const IdSet* collapsedNodeIDs = nullptr;
  std::optional<QUuid> selectedRegionID;
  std::optional<QUuid> selectedRelationshipID;

  // By how much the selected topics are being dragged, in canvas units.
  QPointF nodeDragTranslation;
  // The topic whose title an editor covers: its title is left out. `editingTitle` is the text in that editor, which
  // sizes the box.
  std::optional<QUuid> editingNodeID;
  std::optional<QString> editingTitle;
  std::optional<QUuid> dropTargetID;
  DropTarget dropTarget = DropTarget::reparent;
  std::optional<ConnectionDrag> connectionDrag;
  std::optional<DraggedHandle> draggedHandle;
  std::optional<RegionDrag> regionDrag;
  // The region whose label an editor covers.
  std::optional<QUuid> editingRegionID;
  // The opacity that a lens gives a topic, from 0 to 1; all are opaque without it.
  std::function<double(const Node&)> nodeOpacity;
  // Another number for every other rule by which opacities follow from topics and their depths.
  int opacityRule = 0;
};

struct PaintOptions {
  bool background = true;
  bool regions = true;
  bool relationships = true;
  bool selection = true;    // selection borders, handles, drop targets, previews
  bool depthSizing = true;  // topics and edges sized by depth as the map's settings tell
  bool bends = true;        // offsets of edges' curves
  bool collapseToggles = true;
  bool fullEdgeOpacity = false;  // unselected edges at opacity 1 instead of 0.8
  bool levelsOfDetail = true;    // leave out what is too small to be seen
  // Paints every pixel alike whatever part of a picture is painted, so that parts fit together without a seam. For
  // upright views without levels of detail, sizing by depth and selection.
  bool exactPixels = false;
  // Draws the handles of selected edges and relationships above the topics while no topic is selected.
  bool handlesAboveNodes = false;

  // A picture of the whole map as an image file holds it.
  static PaintOptions forExport();
};

// Whether the topic shows its connection handle, for painting and hits alike: the only one that is selected does, while
// its title is not edited.
inline bool showsConnectionHandle(const MapScene& scene, const QUuid& nodeID) {
  return scene.selectedNodeIDs && scene.selectedNodeIDs->size() == 1 && scene.selectedNodeIDs->contains(nodeID) &&
         scene.editingNodeID != nodeID;
}

// Whether the handles of selected edges and relationships lie above the topics, for painting and hits alike. Where a
// topic is selected it is the one that is to be moved, and handles on its middle must not take the press.
inline bool handlesLieAbove(const MapScene& scene, const PaintOptions& options) {
  return options.handlesAboveNodes && (!scene.selectedNodeIDs || scene.selectedNodeIDs->empty());
}

}  // namespace quilmora
