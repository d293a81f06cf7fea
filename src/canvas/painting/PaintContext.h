#pragma once

#include <vector>

#include <QLineF>

#include "canvas/painting/BoxPicture.h"
#include "canvas/painting/BoxShadow.h"
#include "canvas/painting/CanvasColors.h"
#include "canvas/painting/CoverageGrid.h"
#include "canvas/painting/MapScene.h"
#include "canvas/painting/NodeMetrics.h"
#include "canvas/painting/SceneSketch.h"

class QPainter;

namespace quilmora {

// What is kept from frame to frame besides texts and images.
struct PictureStore {
  BoxShadow shadow;
  BoxPicture box;
};

// What the parts of one painting share.
struct PaintContext {
  // How much of the topics and edges can be seen.
  enum class Detail { full, dots };

  const MapScene& scene;
  const PaintOptions& options;
  NodeMeasurer& measurer;
  SceneSketch& sketch;
  PictureStore& pictures;
  CoverageGrid& coverage;
  const CanvasColors& colors;
  double scale;          // device pixels a canvas unit
  double zoom;           // pixels of the window a canvas unit
  QTransform toDevice;   // from canvas units to device pixels
  QTransform toPicture;  // the same to the pixels of the larger picture that the scene's pixel origin tells of
  bool standsUpright;    // whether that transform only scales and moves
  Detail detail;
  QRectF exposed;  // canvas units
  // Shapes that reach beyond this rectangle (canvas units) are clipped to it first: rasterisers keep device coordinates
  // in narrow integers.
  QRectF drawable;
  const std::vector<char>& isSelected;  // by number of the index; empty when nothing is selected or shown so

  bool isDragging() const { return scene.isDragging() && !isSelected.empty(); }
  // Whether the topic or one end of the edge is being dragged along with the selection.
  bool isNodeDragged(std::size_t nodeIndex) const {
    return isDragging() && isNodeSelected(scene.index.numberOfNode()[nodeIndex]);
  }
  bool isEdgeDragged(std::size_t edge) const {
    return isDragging() && (isNodeSelected(scene.index.edgeFrom()[edge]) || isNodeSelected(scene.index.edgeTo()[edge]));
  }
  bool isNodeSelected(std::uint32_t number) const { return !isSelected.empty() && isSelected[number]; }
  bool isHidden(std::size_t nodeIndex) const { return scene.isHidden(nodeIndex); }
  // Where a topic shows, with the drag under way.
  QPointF shownPosition(std::size_t nodeIndex) const;
  // The depth of a topic by its number; 0 for one that the tree doesn't know.
  int depth(std::uint32_t number) const;
  std::optional<double> depthFraction(std::uint32_t number) const;
  const HierarchicalConfig* sizing() const;
  // The topic's ordinal in `nodes` if it exists and shows.
  std::optional<std::size_t> shownNode(const QUuid& id) const;
};

std::optional<double> depthFraction(const MapScene& scene, std::uint32_t number);

void paintRegions(QPainter& painter, const PaintContext& context);
// The handles of an edge and of a relationship are those that rest, or the one that is being dragged.
enum class HandleState { resting, dragged };
void paintEdgeHandles(QPainter& painter, const PaintContext& context, std::size_t edge, HandleState state);
void paintRelationship(QPainter& painter, const PaintContext& context, const Relationship& relationship);
void paintRelationshipHandles(QPainter& painter, const PaintContext& context, const Relationship& relationship,
                              HandleState state);
// The line that a connection drag draws, and the disc at its end, which lies above it.
std::optional<QLineF> connectionLine(const PaintContext& context);
void paintConnectionLine(QPainter& painter, const PaintContext& context);
void paintConnectionDisc(QPainter& painter, const PaintContext& context);

// Adds the dashes of one straight stretch that begins at `phase` of the pattern. Where a view begins and ends has no
// say in where dashes lie, unlike with dashed pens. A stretch of more than maxDashCount dashes gets none.
inline constexpr int maxDashCount = 20000;
void addDashes(std::vector<QLineF>& dashes, const QLineF& stretch, double phase, double on, double off);

// A disc with an optional contour inside its edge and a soft shadow below it. `growth` enlarges all of it.
struct HandleLook {
  double diameter;
  QColor fill;
  QColor contour;
  double contourWidth;
  QColor shadow;
  double shadowBlur;
};
void paintHandle(QPainter& painter, QPointF center, const HandleLook& look, double growth = 1.0);

}  // namespace quilmora
