#pragma once

#include <vector>

#include <QLineF>

#include "canvas/painting/BoxPicture.h"
#include "canvas/painting/BoxShadow.h"
#include "canvas/painting/CanvasColors.h"
#include "canvas/painting/CoverageGrid.h"
#include "canvas/painting/HandleLook.h"
#include "canvas/painting/HandlePictures.h"
#include "canvas/painting/MapScene.h"
#include "canvas/painting/NodeMetrics.h"
#include "canvas/painting/RingPicture.h"
#include "canvas/painting/SceneSketch.h"

class QPainter;

namespace quilmora {

// What is kept from frame to frame besides texts and images.
struct PictureStore {
  BoxShadow shadow;
  BoxPicture box;
  HandlePictures handles;
  RingPicture ring;
};

// What the parts of one painting share.
struct PaintContext {
  // How much of topics and edges is drawn.
  enum class Detail { full, dots };

  const MapScene& scene;
  const PaintOptions& options;
  NodeMeasurer& measurer;
  SceneSketch& sketch;
  PictureStore& pictures;
  CoverageGrid& coverage;
  const CanvasColors& colors;
  double scale;          // device pixels per canvas unit
  double zoom;           // window pixels per canvas unit
  QTransform toDevice;   // from canvas units to device pixels
  QTransform toPicture;  // to the pixels of the larger picture, by the scene's pixel origin
  bool standsUpright;    // whether that transform only scales and moves
  Detail detail;
  QRectF exposed;  // canvas units
  // Shapes that extend beyond this rectangle (canvas units) are clipped to it first: rasterisers keep device
  // coordinates in narrow integers.
  QRectF drawable;
  const std::vector<char>& isSelected;  // by number in the index; empty if no selection is shown

  bool isDragging() const { return scene.isDragging() && !isSelected.empty(); }
  // Whether the topic, or one end of the edge, is being dragged with the selection.
  bool isNodeDragged(std::size_t nodeIndex) const {
    return isDragging() && isNodeSelected(scene.index.numberOfNode()[nodeIndex]);
  }
  bool isEdgeDragged(std::size_t edge) const {
    return isDragging() && (isNodeSelected(scene.index.edgeFrom()[edge]) || isNodeSelected(scene.index.edgeTo()[edge]));
  }
  bool isNodeSelected(std::uint32_t number) const { return !isSelected.empty() && isSelected[number]; }
  bool isHidden(std::size_t nodeIndex) const { return scene.isHidden(nodeIndex); }
  // Where a topic is shown, including the current drag.
  QPointF shownPosition(std::size_t nodeIndex) const;
  // The depth of a topic by its number; 0 for one that is not in the tree.
  int depth(std::uint32_t number) const;
  std::optional<double> depthFraction(std::uint32_t number) const;
  const HierarchicalConfig* sizing() const;
  // The topic's ordinal in `nodes` if it exists and is visible.
  std::optional<std::size_t> shownNode(const QUuid& id) const;
};

std::optional<double> depthFraction(const MapScene& scene, std::uint32_t number);

void paintRegions(QPainter& painter, const PaintContext& context);
// Which handles of an edge or relationship to draw: those at rest, or the one being dragged.
enum class HandleState { resting, dragged };
void paintRelationship(QPainter& painter, const PaintContext& context, const Relationship& relationship);
void paintRelationshipHandles(QPainter& painter, const PaintContext& context, const Relationship& relationship,
                              HandleState state);
// The line of a connection drag, and the disc at its end, which is above it.
std::optional<QLineF> connectionLine(const PaintContext& context);
void paintConnectionLine(QPainter& painter, const PaintContext& context);
void paintConnectionDisc(QPainter& painter, const PaintContext& context);

// Adds the dashes of one straight stretch, starting at `phase` in the pattern. Unlike with dashed pens, the dashes do
// not depend on where the view begins and ends. A stretch of more than maxDashCount dashes gets none.
inline constexpr int maxDashCount = 20000;
void addDashes(std::vector<QLineF>& dashes, const QLineF& stretch, double phase, double on, double off);

}  // namespace quilmora
