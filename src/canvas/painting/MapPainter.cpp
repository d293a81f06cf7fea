#include "canvas/painting/MapPainter.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include <QPainter>

#include "canvas/geometry/Polygons.h"
#include "canvas/geometry/RelationshipCurve.h"
#include "canvas/geometry/TaperedConnector.h"
#include "canvas/painting/EdgeLayer.h"
#include "canvas/painting/MovingLayer.h"
#include "canvas/painting/NodeLayer.h"
#include "canvas/painting/PaintContext.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

// A topic's box is about this high, and its text this big, in canvas units.
constexpr double typicalBoxHeight = 34.0;
constexpr double typicalFontSize = 15.0;
// In device pixels.
constexpr double minBoxHeight = 5.0;
constexpr double minFontSize = 4.5;
constexpr double drawableMargin = 4000.0;
// As far as the rasteriser allows beside a part of some thousand pixels: clipping moves lines a little.
constexpr double exactDrawableMargin = 65536.0;
// As many records of a plan in one step.
constexpr std::uint32_t planStep = 1024;

PaintContext::Detail detailAt(double scale, const MapScene& scene, const PaintOptions& options) {
  if (!options.levelsOfDetail) return PaintContext::Detail::full;
  double fontScale = 1.0;
  if (options.depthSizing && scene.map->hierarchical.nodeSizing)
    fontScale = std::clamp(
        std::max(scene.map->hierarchical.rootFontSize, scene.map->hierarchical.leafFontSize) / typicalFontSize, 1.0,
        4.0);
  if (scale * typicalBoxHeight * fontScale < minBoxHeight) return PaintContext::Detail::dots;
  if (scale * typicalFontSize * fontScale < minFontSize) return PaintContext::Detail::bars;
  return PaintContext::Detail::full;
}

bool isDragged(const PaintContext& context, const Relationship& relationship) {
  if (!context.isDragging()) return false;
  const auto from = context.shownNode(relationship.from);
  const auto to = context.shownNode(relationship.to);
  return (from && context.isNodeDragged(*from)) || (to && context.isNodeDragged(*to));
}

void paintSelectedRelationship(QPainter& painter, const PaintContext& context) {
  if (!context.scene.selectedRelationshipID) return;
  for (const Relationship& relationship : context.scene.map->relationships)
    if (relationship.id == context.scene.selectedRelationshipID)
      paintRelationshipHandles(painter, context, relationship, HandleState::resting);
}

std::vector<char> selectedNumbers(const MapScene& scene) {
  std::vector<char> flags;
  if (!scene.selectedNodeIDs || scene.selectedNodeIDs->empty()) return flags;
  flags.assign(scene.index->numberCount(), 0);
  for (const QUuid& id : *scene.selectedNodeIDs) {
    const std::uint32_t number = scene.index->ids()->find(id);
    if (number != IdTable::npos) flags[number] = 1;
  }
  return flags;
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
    : m_sketch(std::make_unique<SceneSketch>()),
      m_pictures(std::make_unique<PictureStore>()),
      m_dragged(std::make_unique<DraggedPicture>()) {}

MapPainter::~MapPainter() = default;

// What one painting needs for as long as it lasts.
struct MapPainter::Session {
  QPainter& painter;
  CoverageGrid coverage;
  PaintContext context;

  Session(MapPainter& owner, QPainter& target, const MapScene& scene, const PaintOptions& options,
          const std::vector<char>& isSelected)
      : painter(target), context(owner.enter(target, scene, options, coverage, isSelected)) {}
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
                               CoverageGrid& coverage, const std::vector<char>& isSelected) {
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
                      *m_sketch,
                      *m_pictures,
                      coverage,
                      CanvasColors::onBackground(colorFromHex(scene.map->canvas.background)),
                      scale,
                      painter.deviceTransform(),
                      toPicture,
                      painter.deviceTransform().type() <= QTransform::TxScale,
                      detailAt(scale, scene, options),
                      exposed,
                      exposed.adjusted(-margin, -margin, margin, margin),
                      isSelected};
}

void MapPainter::paint(QPainter& painter, const MapScene& scene, const PaintOptions& options) {
  if (!hasSense(scene)) return;
  m_sketch->update(*scene.map);
  const std::vector<char> isSelected = options.selection ? selectedNumbers(scene) : std::vector<char>();
  ScenePlan::Part all;
  const auto inSight = [](const std::vector<std::uint32_t>* chosen, std::size_t count) {
    if (chosen) return *chosen;
    std::vector<std::uint32_t> each(count);
    std::iota(each.begin(), each.end(), 0U);
    return each;
  };
  all.nodes = inSight(scene.nodesInSight, std::min(scene.index->positions().size(), m_sketch->nodes().size()));
  all.edges = inSight(scene.edgesInSight, std::min(scene.index->edgeFrom().size(), m_sketch->edges().size()));
  paintSteps(painter, scene, options, all, isSelected).finish();
  paintMoving(painter, scene, options);
}

void MapPainter::paintMoving(QPainter& painter, const MapScene& scene, const PaintOptions& options) {
  if (!hasSense(scene) || !options.selection || !MovingLayer::isNeeded(scene)) {
    *m_dragged = {};
    return;
  }
  m_sketch->update(*scene.map);
  const std::vector<char> isSelected = selectedNumbers(scene);
  const Session session(*this, painter, scene, options, isSelected);
  MovingLayer(painter, session.context, *m_dragged).paint();
}

PaintSteps MapPainter::makePlan(ScenePlan& plan, MapScene scene, PaintOptions options) {
  using Work = PaintSteps::Work;
  m_sketch->update(*scene.map);
  plan.isSelected = options.selection ? selectedNumbers(scene) : std::vector<char>();
  co_yield Work::texts;
  const MapIndex& index = *scene.index;
  const auto isHidden = [&](std::uint32_t node) { return scene.hiddenNodes && (*scene.hiddenNodes)[node]; };
  const QSizeF reach(m_sketch->maxHalfWidth(), 0.0);
  const std::size_t nodeCount = std::min(index.positions().size(), m_sketch->nodes().size());
  for (std::uint32_t i = 0; i < nodeCount; ++i) {
    if (i % planStep == 0) co_yield Work::texts;
    if (isHidden(i)) continue;
    const QPointF position = index.positions()[i];
    const double halfHeight = m_sketch->nodes()[i].boundHalfHeight;
    plan.addNode(i, QRectF(position.x() - reach.width(), position.y() - halfHeight, 2 * reach.width(), 2 * halfHeight));
  }
  const std::size_t edgeCount = std::min(index.edgeFrom().size(), m_sketch->edges().size());
  for (std::uint32_t i = 0; i < edgeCount; ++i) {
    if (i % planStep == 0) co_yield Work::texts;
    const std::uint32_t from = index.nodeOfNumber()[index.edgeFrom()[i]];
    const std::uint32_t to = index.nodeOfNumber()[index.edgeTo()[i]];
    if (from == MapIndex::npos || to == MapIndex::npos || isHidden(from) || isHidden(to)) continue;
    const auto& sketch = m_sketch->edges()[i];
    plan.addEdge(i, index.positions()[from], index.positions()[to],
                 sketch.isBent && options.bends ? sketch.bend : QPointF(), m_sketch->edgeReach(i));
  }
}

PaintSteps MapPainter::paintTile(QPainter& painter, const ScenePlan& plan, QPoint tile, const MapScene& scene,
                                 const PaintOptions& options) {
  return paintSteps(painter, scene, options, plan.part(tile), plan.isSelected);
}

PaintSteps MapPainter::paintSteps(QPainter& painter, MapScene scene, PaintOptions options, const ScenePlan::Part& part,
                                  const std::vector<char>& isSelected) {
  using Work = PaintSteps::Work;
  if (!hasSense(scene)) co_return;
  if (options.background)
    painter.fillRect(scene.exposed.translated(-scene.pixelOrigin), colorFromHex(scene.map->canvas.background));
  const Session session(*this, painter, scene, options, isSelected);
  const PaintContext& context = session.context;

  NodeLayer nodes(painter, context);
  for (std::size_t k = part.nodes.size(); k-- > 0;) {
    if (!context.isNodeDragged(part.nodes[k])) nodes.collect(part.nodes[k]);
    if (k % 4 == 0) co_yield Work::texts;
  }
  nodes.collectionEnded();
  if (options.regions) paintRegions(painter, context);

  co_yield Work::shapes;
  EdgeLayer edges(painter, context);
  for (std::size_t k = part.edges.size(); k-- > 0;) {
    if (context.coverage.isActive() && context.coverage.isAllCovered()) break;
    if (!context.isEdgeDragged(part.edges[k])) edges.collect(part.edges[k]);
    if (k % 4 == 0) co_yield Work::shapes;
  }
  edges.collectionEnded();
  for (std::size_t k = 0; k < edges.pieceCount(); ++k) {
    edges.paintPiece(k);
    co_yield Work::shapes;
  }
  std::size_t number = 0;
  if (options.relationships)
    for (const Relationship& relationship : scene.map->relationships) {
      if (++number % 16 == 0) co_yield Work::shapes;
      if (!isDragged(context, relationship)) paintRelationship(painter, context, relationship);
    }

  co_yield Work::texts;
  const bool hasHandles = options.selection && scene.selectedEdgeIDs && !scene.selectedEdgeIDs->empty();
  const bool handlesAbove = handlesLieAbove(scene, options);
  for (const bool isAbove : {false, true}) {
    if (hasHandles && handlesAbove == isAbove)
      for (const std::uint32_t edge : part.edges) {
        if (++number % 16 == 0) co_yield Work::texts;
        if (!context.isEdgeDragged(edge) && scene.selectedEdgeIDs->contains(m_sketch->edges()[edge].id))
          paintEdgeHandles(painter, context, edge, HandleState::resting);
      }
    if (options.selection && handlesAbove == isAbove) paintSelectedRelationship(painter, context);
    for (std::size_t k = 0; !isAbove && k < nodes.pieceCount(); ++k) {
      nodes.paintPiece(k);
      co_yield Work::texts;
    }
  }
}

NodeMetrics MapPainter::measure(const MapScene& scene, std::size_t nodeIndex, const PaintOptions& options) {
  const Node& node = scene.map->nodes[nodeIndex];
  const bool isEdited = scene.editingNodeID == node.id;
  return m_measurer.measure(node, depthFraction(scene, scene.index->numberOfNode()[nodeIndex]),
                            options.depthSizing ? &scene.map->hierarchical : nullptr,
                            isEdited ? std::optional(scene.editingTitle.value_or(node.title)) : std::nullopt);
}

std::optional<std::size_t> MapPainter::nodeAt(const MapScene& scene, QPointF canvasPoint, const PaintOptions& options,
                                              std::size_t* patience) {
  m_sketch->update(*scene.map);
  const std::vector<QPointF>& positions = scene.index->positions();
  const double reach = m_sketch->maxHalfWidth();
  for (std::size_t i = positions.size(); i-- > 0;) {
    const QPointF distance = canvasPoint - positions[i];
    if (!(std::abs(distance.x()) <= reach)) continue;
    if (!(std::abs(distance.y()) <= static_cast<double>(m_sketch->nodes()[i].boundHalfHeight))) continue;
    if (scene.hiddenNodes && i < scene.hiddenNodes->size() && (*scene.hiddenNodes)[i]) continue;
    if (patience && (*patience == 0 || --*patience == 0)) return std::nullopt;
    if (measure(scene, i, options).box.contains(distance)) return i;
  }
  return std::nullopt;
}

std::optional<std::size_t> MapPainter::edgeAt(const MapScene& scene, QPointF canvasPoint, const PaintOptions& options) {
  m_sketch->update(*scene.map);
  const MapIndex& index = *scene.index;
  const HierarchicalConfig& config = scene.map->hierarchical;
  for (std::size_t i = index.edgeFrom().size(); i-- > 0;) {
    const std::uint32_t from = index.nodeOfNumber()[index.edgeFrom()[i]];
    const std::uint32_t to = index.nodeOfNumber()[index.edgeTo()[i]];
    if (from == MapIndex::npos || to == MapIndex::npos) continue;
    if (scene.hiddenNodes && ((*scene.hiddenNodes)[from] || (*scene.hiddenNodes)[to])) continue;
    // The curve stays between its ends but for its bend, and the ribbon and the head within a few widths of it.
    const auto& sketch = m_sketch->edges()[i];
    const double reach = 2.5 * std::max({std::abs(double{sketch.startWidth}), std::abs(double{sketch.endWidth}),
                                         std::abs(config.rootEdgeWidth), std::abs(config.leafEdgeWidth)}) +
                         (options.bends ? std::abs(sketch.bend.x()) + std::abs(sketch.bend.y()) : 0.0);
    const QPointF a = index.positions()[from];
    const QPointF b = index.positions()[to];
    if (canvasPoint.x() < std::min(a.x(), b.x()) - reach || canvasPoint.x() > std::max(a.x(), b.x()) + reach) continue;
    if (canvasPoint.y() < std::min(a.y(), b.y()) - reach || canvasPoint.y() > std::max(a.y(), b.y()) + reach) continue;
    Edge edge = scene.map->edges[i];
    if (!options.bends) edge.controlPointOffset.reset();
    const auto taper = options.depthSizing ? effectiveTaper(edge, *scene.tree, config) : std::nullopt;
    if (TaperedConnector(edge, a, b, taper).contains(canvasPoint)) return i;
  }
  return std::nullopt;
}

std::optional<std::size_t> MapPainter::relationshipAt(const MapScene& scene, QPointF canvasPoint) {
  const auto shown = [&](const QUuid& id) -> std::optional<QPointF> {
    const std::uint32_t index = scene.index->find(id);
    if (index == MapIndex::npos) return std::nullopt;
    if (scene.hiddenNodes && (*scene.hiddenNodes)[index]) return std::nullopt;
    return scene.index->positions()[index];
  };
  std::optional<std::size_t> found;
  std::size_t i = 0;
  for (const Relationship& relationship : scene.map->relationships) {
    const auto from = shown(relationship.from);
    const auto to = shown(relationship.to);
    if (from && to && RelationshipCurve(*from, *to, relationship.controlPointOffset).contains(canvasPoint)) found = i;
    ++i;
  }
  return found;
}

void paintMap(QPainter& painter, const MapScene& scene, const PaintOptions& options) {
  MapPainter().paint(painter, scene, options);
}

}  // namespace quilmora
