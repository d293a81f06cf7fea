#include "canvas/painting/MapPainter.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include <QPainter>

#include "canvas/geometry/Polygons.h"
#include "canvas/geometry/RelationshipCurve.h"
#include "canvas/geometry/TaperedConnector.h"
#include "canvas/painting/EdgeHandles.h"
#include "canvas/painting/EdgeLayer.h"
#include "canvas/painting/MovingLayer.h"
#include "canvas/painting/NodeLayer.h"
#include "canvas/painting/PaintContext.h"
#include "canvas/painting/PartVisibility.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

// The typical height of a topic's box, and the size of its text, in canvas units.
constexpr double typicalBoxHeight = 34.0;
constexpr double typicalFontSize = 15.0;
// In device pixels.
constexpr double minBoxHeight = 5.0;
constexpr double drawableMargin = 4000.0;
// As far as the rasteriser allows beside a part of a few thousand pixels: clipping moves lines slightly.
constexpr double exactDrawableMargin = 65536.0;
// The number of records a plan processes in one step.
constexpr std::uint32_t planStep = 1024;

PaintContext::Detail detailAt(double scale, const MapScene& scene, const PaintOptions& options) {
  if (!options.levelsOfDetail) return PaintContext::Detail::full;
  double fontScale = 1.0;
  if (options.depthSizing && scene.map.hierarchical.nodeSizing)
    fontScale = std::clamp(
        std::max(scene.map.hierarchical.rootFontSize, scene.map.hierarchical.leafFontSize) / typicalFontSize, 1.0, 4.0);
  return scale * typicalBoxHeight * fontScale < minBoxHeight ? PaintContext::Detail::dots : PaintContext::Detail::full;
}

bool isDragged(const PaintContext& context, const Relationship& relationship) {
  if (!context.isDragging()) return false;
  const auto from = context.shownNode(relationship.from);
  const auto to = context.shownNode(relationship.to);
  return (from && context.isNodeDragged(*from)) || (to && context.isNodeDragged(*to));
}

// The curve of a relationship between visible topics, at rest.
std::optional<RelationshipCurve> curveOf(const MapScene& scene, const Relationship& relationship) {
  const std::uint32_t from = scene.index.find(relationship.from);
  const std::uint32_t to = scene.index.find(relationship.to);
  if (from == MapIndex::npos || to == MapIndex::npos || scene.isHidden(from) || scene.isHidden(to)) return std::nullopt;
  const RelationshipCurve curve(scene.index.positions()[from], scene.index.positions()[to],
                                relationship.controlPointOffset);
  return isFinite(curve.bounds()) ? std::optional(curve) : std::nullopt;
}

// Half the stroke, and what smoothing adds, in canvas units at a zoom in device pixels.
double relationshipReach(double zoom) {
  return 2.0 + 2.0 / zoom;
}

void paintSelectedRelationship(QPainter& painter, const PaintContext& context) {
  if (!context.scene.shown.selectedRelationshipID) return;
  for (const Relationship& relationship : context.scene.map.relationships)
    if (relationship.id == context.scene.shown.selectedRelationshipID)
      paintRelationshipHandles(painter, context, relationship, HandleState::resting);
}

}  // namespace

PaintOptions PaintOptions::forExport() {
  PaintOptions options;
  options.regions = false;
  options.relationships = false;
  options.selection = false;
  options.depthSizing = false;
  options.bends = false;
  options.collapseToggles = false;
  options.fullEdgeOpacity = true;
  options.levelsOfDetail = false;
  options.exactPixels = true;
  return options;
}

MapPainter::MapPainter()
    : m_sketch(std::make_shared<SceneSketch>()),
      m_pictures(std::make_unique<PictureStore>()),
      m_moving(std::make_unique<MovingStore>()) {}

MapPainter::~MapPainter() = default;

// The state of one painting.
struct MapPainter::Session {
  QPainter& painter;
  std::shared_ptr<SceneSketch> sketch;
  std::shared_ptr<const std::vector<char>> isSelected;
  CoverageGrid coverage;
  PaintContext context;

  Session(MapPainter& owner, QPainter& target, const MapScene& scene, const PaintOptions& options)
      : painter(target),
        sketch(owner.sketchOf(scene.map)),
        isSelected(owner.selectedNumbers(scene, options)),
        context(owner.enter(target, scene, options, *sketch, coverage, *isSelected)) {}
  Session(const Session&) = delete;
  ~Session() { painter.restore(); }
};

namespace {

bool hasSense(const MapScene& scene) {
  return isFinite(scene.exposed) && !scene.exposed.isEmpty() && isFinite(scene.view.offset) &&
         std::isfinite(scene.view.zoom) && scene.view.zoom > 0;
}

}  // namespace

PaintContext MapPainter::enter(QPainter& painter, const MapScene& scene, const PaintOptions& options,
                               SceneSketch& sketch, CoverageGrid& coverage, const std::vector<char>& isSelected) {
  painter.save();
  const QTransform toPicture = scene.view.transform() * painter.deviceTransform();
  painter.translate(-scene.pixelOrigin);
  painter.setClipRect(scene.exposed, Qt::IntersectClip);
  painter.setTransform(scene.view.transform(), true);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
  const double scale = std::sqrt(std::abs(painter.deviceTransform().determinant()));
  const double margin = (options.exactPixels ? exactDrawableMargin : drawableMargin) / std::max(scale, 1e-6);
  const QRectF exposed = scene.view.toCanvas(scene.exposed);
  return PaintContext{scene,
                      options,
                      m_measurer,
                      sketch,
                      *m_pictures,
                      coverage,
                      CanvasColors::onBackground(colorFromHex(scene.map.canvas.background)),
                      scale,
                      options.levelsOfDetail ? scene.view.zoom / scene.pixelRatio : std::max(scale, 1.0),
                      painter.deviceTransform(),
                      toPicture,
                      painter.deviceTransform().type() <= QTransform::TxScale,
                      detailAt(scale, scene, options),
                      exposed,
                      exposed.adjusted(-margin, -margin, margin, margin),
                      isSelected};
}

// A painting in progress keeps the sketch it started with.
const std::shared_ptr<SceneSketch>& MapPainter::sketchOf(const MindMap& map) {
  if (m_sketch->isOf(map)) return m_sketch;
  if (m_sketch.use_count() > 1) m_sketch = std::make_shared<SceneSketch>(*m_sketch);
  m_sketch->update(map);
  return m_sketch;
}

// Asked for every tile and every frame of a drag.
std::shared_ptr<const std::vector<char>> MapPainter::selectedNumbers(const MapScene& scene,
                                                                     const PaintOptions& options) {
  const IdSet ids = options.selection ? scene.selectedNodeIDs : IdSet();
  SelectedNumbers& known = m_selected;
  const std::uint32_t count = ids.empty() ? 0 : scene.index.numberCount();
  if (known.isSelected && known.ids.sharesStorageWith(ids) && known.numbers == scene.index.ids() &&
      known.isSelected->size() == count)
    return known.isSelected;
  auto isSelected = std::make_shared<std::vector<char>>(count, 0);
  scene.index.ids()->visitNumbers(ids, [&](std::uint32_t number) {
    if (number < count) (*isSelected)[number] = 1;
  });
  known = {ids, scene.index.ids(), std::move(isSelected)};
  return known.isSelected;
}

void MapPainter::paint(QPainter& painter, const MapScene& scene, const PaintOptions& options,
                       const ScenePlan::Part* part) {
  if (!hasSense(scene)) return;
  ScenePlan::Part all;
  if (!part) {
    all.nodes.resize(scene.index.positions().size());
    all.edges.resize(scene.index.edgeFrom().size());
    all.relationships.resize(scene.map.relationships.size());
    std::iota(all.nodes.begin(), all.nodes.end(), 0U);
    std::iota(all.edges.begin(), all.edges.end(), 0U);
    std::iota(all.relationships.begin(), all.relationships.end(), 0U);
  }
  paintSteps(painter, scene, options, part ? *part : all, nullptr).finish();
  paintMoving(painter, scene, options);
}

void MapPainter::paintMoving(QPainter& painter, const MapScene& scene, const PaintOptions& options) {
  if (!hasSense(scene) || !options.selection || !MovingLayer::isNeeded(scene)) {
    *m_moving = {};
    return;
  }
  const Session session(*this, painter, scene, options);
  MovingLayer(painter, session.context, *m_moving).paint();
}

PaintSteps MapPainter::makePlan(ScenePlan& plan, MapScene scene, PaintOptions options) {
  using Work = PaintSteps::Work;
  const std::shared_ptr<SceneSketch> sketch = sketchOf(scene.map);
  co_yield Work::texts;
  const MapIndex& index = scene.index;
  const double zoom = scene.view.zoom / scene.pixelRatio;
  const double around = maxTopicSurroundings(zoom);
  const double halfWidth = sketch->maxHalfWidth() + around;
  const std::size_t nodeCount = index.positions().size();
  for (std::uint32_t i = 0; i < nodeCount; ++i) {
    if (i % planStep == 0) co_yield Work::texts;
    if (scene.isHidden(i)) continue;
    const QPointF position = index.positions()[i];
    const double halfHeight = sketch->boundHalfHeight(i) + around;
    plan.addNode(i, QRectF(position.x() - halfWidth, position.y() - halfHeight, 2 * halfWidth, 2 * halfHeight));
  }
  const std::size_t edgeCount = index.edgeFrom().size();
  for (std::uint32_t i = 0; i < edgeCount; ++i) {
    if (i % planStep == 0) co_yield Work::texts;
    const std::uint32_t from = index.nodeOfNumber()[index.edgeFrom()[i]];
    const std::uint32_t to = index.nodeOfNumber()[index.edgeTo()[i]];
    if (from == MapIndex::npos || to == MapIndex::npos || scene.isHidden(from) || scene.isHidden(to)) continue;
    const auto& edge = sketch->edges()[i];
    plan.addEdge(i, index.positions()[from], index.positions()[to],
                 edge.isBent && options.bends ? edge.bend : QPointF(), sketch->edgeReach(i, zoom));
  }
  if (!options.relationships) co_return;
  std::uint32_t i = 0;
  for (const Relationship& relationship : scene.map.relationships) {
    if (i % planStep == 0) co_yield Work::texts;
    const auto curve = curveOf(scene, relationship);
    if (curve) plan.addRelationship(i, *curve, relationshipReach(scene.view.zoom));
    ++i;
  }
}

PaintSteps MapPainter::paintTile(QPainter& painter, const std::shared_ptr<const ScenePlan>& plan, QPoint tile,
                                 const MapScene& scene, const PaintOptions& options) {
  return paintSteps(painter, scene, options, plan->part(tile), plan);
}

PaintSteps MapPainter::paintSteps(QPainter& painter, MapScene scene, PaintOptions options, const ScenePlan::Part& part,
                                  std::shared_ptr<const ScenePlan> plan) {
  using Work = PaintSteps::Work;
  // The part may be its own.
  const std::shared_ptr<const ScenePlan> kept = std::move(plan);
  if (!hasSense(scene)) co_return;
  if (options.background)
    painter.fillRect(scene.exposed.translated(-scene.pixelOrigin), colorFromHex(scene.map.canvas.background));
  const Session session(*this, painter, scene, options);
  const PaintContext& context = session.context;

  const bool handlesAbove = handlesLieAbove(scene, options);
  const bool hasEdgeHandles = options.selection && !scene.selectedEdgeIDs.empty();
  NodeLayer nodes(painter, context);
  nodes.prepareCoverage();
  if (options.background) nodes.standOnGround();
  EdgeHandles handles(painter, context);
  const auto collectHandle = [&](std::uint32_t edge) {
    if (!context.isEdgeDragged(edge) && scene.selectedEdgeIDs.contains(context.sketch.edges()[edge].id))
      handles.collect(edge);
  };
  for (std::size_t k = hasEdgeHandles && handlesAbove ? part.edges.size() : 0; k-- > 0;) {
    collectHandle(part.edges[k]);
    if (k % 16 == 0) co_yield Work::texts;
  }
  for (std::size_t k = part.nodes.size(); k-- > 0;) {
    if (!context.isNodeDragged(part.nodes[k])) nodes.collect(part.nodes[k]);
    if (k % 4 == 0) co_yield Work::texts;
  }
  for (std::size_t k = hasEdgeHandles && !handlesAbove ? part.edges.size() : 0; k-- > 0;) {
    collectHandle(part.edges[k]);
    if (k % 16 == 0) co_yield Work::texts;
  }
  if (options.regions) paintRegions(painter, context);

  co_yield Work::shapes;
  EdgeLayer edges(painter, context);
  for (std::size_t k = part.edges.size(); k-- > 0;) {
    if (context.coverage.isActive() && context.coverage.isAllCovered()) break;
    if (!context.isEdgeDragged(part.edges[k])) edges.collect(part.edges[k]);
    if (k % 4 == 0) co_yield Work::shapes;
  }
  for (std::size_t k = 0; k < edges.pieceCount(); ++k) {
    edges.paintPiece(k);
    co_yield Work::shapes;
  }
  std::size_t number = 0;
  if (options.relationships)
    for (const std::uint32_t i : part.relationships) {
      if (++number % 16 == 0) co_yield Work::shapes;
      const Relationship& relationship = scene.map.relationships[i];
      if (!isDragged(context, relationship)) paintRelationship(painter, context, relationship);
    }

  co_yield Work::texts;
  // The last handles are those of the relationship.
  const std::size_t handleCount = options.selection ? handles.pieceCount() + 1 : 0;
  const auto paintHandles = [&](std::size_t k) {
    if (k < handles.pieceCount())
      handles.paintPiece(k);
    else
      paintSelectedRelationship(painter, context);
  };
  for (std::size_t k = 0; k < handleCount && !handlesAbove; ++k) {
    paintHandles(k);
    co_yield Work::texts;
  }
  for (std::size_t k = 0; k < nodes.pieceCount(); ++k) {
    nodes.paintPiece(k);
    co_yield Work::texts;
  }
  for (std::size_t k = 0; k < handleCount && handlesAbove; ++k) {
    paintHandles(k);
    co_yield Work::texts;
  }
}

NodeMetrics MapPainter::measure(const MapScene& scene, std::size_t nodeIndex, const PaintOptions& options) {
  const Node& node = scene.map.nodes[nodeIndex];
  const bool isEdited = scene.shown.editingNodeID == node.id;
  return m_measurer.measure(node, depthFraction(scene, scene.index.numberOfNode()[nodeIndex]),
                            options.depthSizing ? &scene.map.hierarchical : nullptr,
                            isEdited ? std::optional(scene.shown.editingTitle.value_or(node.title)) : std::nullopt);
}

std::optional<std::size_t> MapPainter::nodeAt(const MapScene& scene, QPointF canvasPoint, const PaintOptions& options,
                                              std::size_t* measuresLeft) {
  const SceneSketch& sketch = *sketchOf(scene.map);
  const auto& positions = scene.index.positions();
  const double reach = sketch.maxHalfWidth();
  for (std::size_t i = positions.size(); i-- > 0;) {
    const QPointF distance = canvasPoint - positions[i];
    if (!(std::abs(distance.x()) <= reach)) continue;
    if (!(std::abs(distance.y()) <= sketch.boundHalfHeight(i))) continue;
    if (scene.isHidden(i)) continue;
    if (!takeMeasure(measuresLeft)) return std::nullopt;
    if (measure(scene, i, options).box.contains(distance)) return i;
  }
  return std::nullopt;
}

std::optional<std::size_t> MapPainter::edgeAt(const MapScene& scene, QPointF canvasPoint, const PaintOptions& options) {
  const std::shared_ptr<SceneSketch>& sketches = sketchOf(scene.map);
  const MapIndex& index = scene.index;
  const HierarchicalConfig& config = scene.map.hierarchical;
  for (std::size_t i = index.edgeFrom().size(); i-- > 0;) {
    const std::uint32_t from = index.nodeOfNumber()[index.edgeFrom()[i]];
    const std::uint32_t to = index.nodeOfNumber()[index.edgeTo()[i]];
    if (from == MapIndex::npos || to == MapIndex::npos) continue;
    if (scene.isHidden(from) || scene.isHidden(to)) continue;
    // Except for its bend, the curve stays between its ends, and the ribbon and the head within a few widths of it.
    const auto& sketch = sketches->edges()[i];
    const double reach =
        sketches->edgeReach(i, 1.0) + (options.bends ? std::abs(sketch.bend.x()) + std::abs(sketch.bend.y()) : 0.0);
    const QPointF a = index.positions()[from];
    const QPointF b = index.positions()[to];
    if (canvasPoint.x() < std::min(a.x(), b.x()) - reach || canvasPoint.x() > std::max(a.x(), b.x()) + reach) continue;
    if (canvasPoint.y() < std::min(a.y(), b.y()) - reach || canvasPoint.y() > std::max(a.y(), b.y()) + reach) continue;
    Edge edge = scene.map.edges[i];
    if (!options.bends) edge.controlPointOffset.reset();
    const auto taper = options.depthSizing ? effectiveTaper(edge, scene.tree, config) : std::nullopt;
    if (TaperedConnector(edge, a, b, taper).contains(canvasPoint)) return i;
  }
  return std::nullopt;
}

std::optional<std::size_t> MapPainter::relationshipAt(const MapScene& scene, QPointF canvasPoint) {
  std::optional<std::size_t> found;
  std::size_t i = 0;
  for (const Relationship& relationship : scene.map.relationships) {
    const auto curve = curveOf(scene, relationship);
    if (curve && curve->contains(canvasPoint)) found = i;
    ++i;
  }
  return found;
}

}  // namespace quilmora
