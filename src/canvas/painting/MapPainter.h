#pragma once

#include <memory>

#include "canvas/painting/MapScene.h"
#include "canvas/painting/NodeMetrics.h"
#include "canvas/painting/PaintSteps.h"
#include "canvas/painting/ScenePlan.h"

class QPainter;

namespace quilmora {

class CoverageGrid;
class SceneSketch;
struct MovingStore;
struct PaintContext;
struct PictureStore;

// Counts one measurement down. False where none is left; without a count there always is one.
inline bool takeMeasure(std::size_t* measuresLeft) {
  if (measuresLeft == nullptr) return true;
  if (*measuresLeft > 0) --*measuresLeft;
  return *measuresLeft > 0;
}

// Draws maps on a painter of any device, in view coordinates: the painter's own transform and device pixel ratio are
// respected. Keeps only what can be made again; keep one painter for one view, so that it has something to keep.
class MapPainter {
 public:
  MapPainter();
  ~MapPainter();

  // Where a part is given, only what it names is looked at.
  void paint(QPainter& painter, const MapScene& scene, const PaintOptions& options = {},
             const ScenePlan::Part* part = nullptr);

  // The same in small steps, tile by tile, but for what a gesture moves. Plan and painters must outlive the steps.
  // Fills the plan; both calls must be given the same scene but for view and exposed part.
  PaintSteps makePlan(ScenePlan& plan, MapScene scene, PaintOptions options);
  PaintSteps paintTile(QPainter& painter, const ScenePlan& plan, QPoint tile, const MapScene& scene,
                       const PaintOptions& options);
  // What a gesture moves, to be painted above those tiles.
  void paintMoving(QPainter& painter, const MapScene& scene, const PaintOptions& options = {});

  NodeMeasurer& measurer() { return m_measurer; }
  const NodeMeasurer& measurer() const { return m_measurer; }
  // Measures the topic with an ordinal in `nodes` as it is painted, in canvas units from its centre.
  NodeMetrics measure(const MapScene& scene, std::size_t nodeIndex, const PaintOptions& options = {});
  // The topmost topic whose box holds the canvas point, as its ordinal in `nodes`; hidden topics don't count.
  // `measuresLeft` counts the topics that may still be measured for it; without any left the answer is nothing.
  std::optional<std::size_t> nodeAt(const MapScene& scene, QPointF canvasPoint, const PaintOptions& options = {},
                                    std::size_t* measuresLeft = nullptr);
  // The topmost edge whose ribbon or head holds the canvas point, as its ordinal in `edges`.
  std::optional<std::size_t> edgeAt(const MapScene& scene, QPointF canvasPoint, const PaintOptions& options = {});
  // The topmost relationship whose hit stroke holds the canvas point, as its position in `relationships`.
  std::optional<std::size_t> relationshipAt(const MapScene& scene, QPointF canvasPoint);

 private:
  struct Session;
  const std::shared_ptr<SceneSketch>& sketchOf(const MindMap& map);
  PaintContext enter(QPainter& painter, const MapScene& scene, const PaintOptions& options, SceneSketch& sketch,
                     CoverageGrid& coverage, const std::vector<char>& isSelected);
  PaintSteps paintSteps(QPainter& painter, MapScene scene, PaintOptions options, const ScenePlan::Part& part,
                        const std::vector<char>& isSelected);

  NodeMeasurer m_measurer;
  std::shared_ptr<SceneSketch> m_sketch;  // paintings under way have it, too
  std::unique_ptr<PictureStore> m_pictures;
  std::unique_ptr<MovingStore> m_moving;
};

}  // namespace quilmora
