#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <QRectF>
#include <QUuid>

#include "canvas/geometry/ViewTransform.h"
#include "canvas/painting/ShownGestures.h"
#include "model/IdSet.h"
#include "model/MapIndex.h"
#include "model/SharedValue.h"
#include "model/TreeInfo.h"

namespace quilmora {

// Everything that a picture of a map depends on; SceneDifference compares all of it. A value: a painting that pauses
// between two frames keeps its own, whatever happens to the map meanwhile. Map, index and tree belong to the same
// state.
struct MapScene {
  MindMap map;
  MapIndex index;
  TreeInfo tree;
  // By ordinal in `nodes`: 1 for a topic hidden by a collapsed one. If empty, none is hidden.
  SharedValue<std::vector<char>> hiddenNodes;

  ViewTransform view;
  // How many pixels of the view make one of the window; limits the sizes of handles and marks.
  double pixelRatio = 1.0;
  // What must be painted, in view coordinates.
  QRectF exposed;
  // The device pixel of a larger picture that is this painter's first: its painting moves up and left by as much.
  QPoint pixelOrigin;

  IdSet selectedNodeIDs;
  IdSet selectedEdgeIDs;
  IdSet collapsedNodeIDs;
  std::optional<QUuid> selectedRegionID;
  ShownGestures shown;
  // The selected topics have just been dropped: they are shown above the picture until it has caught up.
  bool isLanding = false;
  // The opacity that a lens gives a topic, from 0 to 1; without a function all are opaque.
  std::function<double(const Node&)> nodeOpacity;
  // A different number for each rule that derives opacities from topics and their depths.
  int opacityRule = 0;

  bool isHidden(std::size_t node) const { return node < hiddenNodes->size() && (*hiddenNodes)[node]; }
  // Whether the selected topics are above the picture.
  bool isDragging() const { return isLanding || !shown.nodeDragTranslation.isNull(); }
};

// Whether two settings give the same sizes by depth: to topics, and to connectors.
bool sizeTopicsAlike(const HierarchicalConfig& a, const HierarchicalConfig& b);
bool sizeConnectorsAlike(const HierarchicalConfig& a, const HierarchicalConfig& b);

struct PaintOptions {
  bool background = true;
  bool regions = true;
  bool relationships = true;
  bool selection = true;    // selection borders, handles, drop targets, previews
  bool depthSizing = true;  // topics and edges sized by depth according to the map's settings
  bool bends = true;        // bends of edges' curves
  bool collapseToggles = true;
  bool fullEdgeOpacity = false;  // unselected edges at opacity 1 instead of 0.8
  bool levelsOfDetail = true;    // leave out what is too small to see
  // Paints every pixel the same whatever part of a picture is painted, so that parts join without a seam. For upright
  // views without levels of detail, sizing by depth and selection.
  bool exactPixels = false;
  // Draws the handles of selected edges and relationships above the topics while no topic is selected.
  bool handlesAboveNodes = false;

  // A picture of the whole map, as in an image file.
  static PaintOptions forExport();
};

// Whether the topic shows its connection handle, for painting and hit tests alike: only the sole selected topic does,
// while its title is not being edited.
inline bool showsConnectionHandle(const MapScene& scene, const QUuid& nodeID) {
  return scene.selectedNodeIDs.size() == 1 && scene.selectedNodeIDs.contains(nodeID) &&
         scene.shown.editingNodeID != nodeID;
}

// Whether the handles of selected edges and relationships are above the topics, for painting and hit tests alike. A
// press on a selected topic should move it, so handles in its middle must not take the press.
inline bool handlesLieAbove(const MapScene& scene, const PaintOptions& options) {
  return options.handlesAboveNodes && scene.selectedNodeIDs.empty();
}

}  // namespace quilmora
