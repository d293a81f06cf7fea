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

// Uses up one of the measurements left. False if there are none left; without a count there is no limit.
inline bool takeMeasure(std::size_t* measuresLeft) {
  if (measuresLeft == nullptr) return true;
  if (*measuresLeft > 0) --*measuresLeft;
  return *measuresLeft > 0;
}

// Draws maps on a painter for any device, in view coordinates: the painter's own transform and device pixel ratio are
// respected. Caches only what can be rebuilt; use one painter per view, so that its caches are useful.
class MapPainter {
 public:
  MapPainter();
  ~MapPainter();

  // If `part` is given, only what it names is examined.
  void paint(QPainter& painter, const MapScene& scene, const PaintOptions& options = {},
             const ScenePlan::Part* part = nullptr);

  // The same in small steps, tile by tile, but for what a gesture moves. Painters must outlive the steps, and so must
  // the plan that is made. Both calls must be given the same scene but for view, exposed part, selection and gestures.
  PaintSteps makePlan(ScenePlan& plan, MapScene scene, PaintOptions options);
  PaintSteps paintTile(QPainter& painter, const std::shared_ptr<const ScenePlan>& plan, QPoint tile,
                       const MapScene& scene, const PaintOptions& options);
  // What a gesture moves, to be painted above those tiles.
  void paintMoving(QPainter& painter, const MapScene& scene, const PaintOptions& options = {});

  NodeMeasurer& measurer() { return m_measurer; }
  const NodeMeasurer& measurer() const { return m_measurer; }
  // Measures the topic with an ordinal in `nodes` as it is painted, in canvas units from its centre.
  NodeMetrics measure(const MapScene& scene, std::size_t nodeIndex, const PaintOptions& options = {});
  // The topmost topic whose box contains the canvas point, as its ordinal in `nodes`, ignoring hidden topics.
  // `measuresLeft` is the number of topics that may still be measured; when it runs out the result is nothing.
  std::optional<std::size_t> nodeAt(const MapScene& scene, QPointF canvasPoint, const PaintOptions& options = {},
                                    std::size_t* measuresLeft = nullptr);
  // The topmost edge whose ribbon or head contains the canvas point, as its ordinal in `edges`.
  std::optional<std::size_t> edgeAt(const MapScene& scene, QPointF canvasPoint, const PaintOptions& options = {});
  // The topmost relationship whose hit stroke contains the canvas point, as its ordinal in `relationships`.
  std::optional<std::size_t> relationshipAt(const MapScene& scene, QPointF canvasPoint);

 private:
  struct Session;
  struct SelectedNumbers {
    IdSet ids;
    std::shared_ptr<IdTable> numbers;
    std::shared_ptr<const std::vector<char>> isSelected;
  };
  const std::shared_ptr<SceneSketch>& sketchOf(const MindMap& map);
  PaintContext enter(QPainter& painter, const MapScene& scene, const PaintOptions& options, SceneSketch& sketch,
                     CoverageGrid& coverage, const std::vector<char>& isSelected);
  PaintSteps paintSteps(QPainter& painter, MapScene scene, PaintOptions options, const ScenePlan::Part& part,
                        std::shared_ptr<const ScenePlan> plan);
  // By number of the index: 1 for a selected topic; empty where none is selected or shown so.
  std::shared_ptr<const std::vector<char>> selectedNumbers(const MapScene& scene, const PaintOptions& options);

  NodeMeasurer m_measurer;
  std::shared_ptr<SceneSketch> m_sketch;  // paintings under way have it, too
  SelectedNumbers m_selected;             // as last asked for
  std::unique_ptr<PictureStore> m_pictures;
  std::unique_ptr<MovingStore> m_moving;
};

}  // namespace quilmora
