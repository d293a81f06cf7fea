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
  // By ordinal in `nodes`: 1 for a topic that a collapsed one hides. None is hidden where it is empty.
  SharedValue<std::vector<char>> hiddenNodes;

  ViewTransform view;
  // How many of the view's pixels are one of the window's, by which the sizes of handles and marks are bounded.
  double pixelRatio = 1.0;
  // What has to be painted, in view coordinates.
  QRectF exposed;
  // Which device pixel of a larger picture the painter's first one is: its painting moves by as much up and left.
  QPoint pixelOrigin;

  IdSet selectedNodeIDs;
  IdSet selectedEdgeIDs;
  IdSet collapsedNodeIDs;
  std::optional<QUuid> selectedRegionID;
  ShownGestures shown;
  // The selected topics were dropped just now: they show above the picture until it has caught up.
  bool isLanding = false;
  // The opacity that a lens gives a topic, from 0 to 1; all are opaque without it.
  std::function<double(const Node&)> nodeOpacity;
  // Another number for every other rule by which opacities follow from topics and their depths.
  int opacityRule = 0;

  bool isHidden(std::size_t node) const { return node < hiddenNodes->size() && (*hiddenNodes)[node]; }
  // Whether the selected topics lie above the picture.
  bool isDragging() const { return isLanding || !shown.nodeDragTranslation.isNull(); }
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
  return scene.selectedNodeIDs.size() == 1 && scene.selectedNodeIDs.contains(nodeID) &&
         scene.shown.editingNodeID != nodeID;
}

// Whether the handles of selected edges and relationships lie above the topics, for painting and hits alike. Where a
// topic is selected it is the one that is to be moved, and handles on its middle must not take the press.
inline bool handlesLieAbove(const MapScene& scene, const PaintOptions& options) {
  return options.handlesAboveNodes && scene.selectedNodeIDs.empty();
}

}  // namespace quilmora
