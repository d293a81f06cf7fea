#include "canvas/painting/MapPainter.h"

#include <algorithm>
#include <cmath>

#include <QPainter>
#include <QSemaphore>
#include <QThreadPool>

#include "canvas/geometry/Polygons.h"
#include "canvas/geometry/RelationshipCurve.h"
#include "canvas/geometry/TaperedConnector.h"
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

PaintContext::Detail detailAt(double scale, const MapScene& scene, const PaintOptions& options) {
  if (!options.levelsOfDetail) return PaintContext::Detail::full;
  double fontScale = 1.0;
  if (options.depthSizing && scene.map->hierarchical.nodeSizing)
    fontScale = std::clamp(
        std::max(scene.map->hierarchical.rootFontSize, scene.map->hierarchical.leafFontSize) / typicalFontSize, 1.0, 4.0);
  if (scale * typicalBoxHeight * fontScale < minBoxHeight) return PaintContext::Detail::dots;
  if (scale * typicalFontSize * fontScale < minFontSize) return PaintContext::Detail::bars;
  return PaintContext::Detail::full;
}

// Runs the work in a thread of the global pool, and waits. Qt divides every fill of some hundred spans among that pool's
// threads, unless it is asked by one of them; for many small fills the waking and waiting costs several times the filling. For
// work without texts only: fonts belong to the thread that loaded them.
void runUndivided(const std::function<void()>& work) {
  QSemaphore done;
  const bool isStarted = QThreadPool::globalInstance()->tryStart([&] {
    work();
    done.release();
  });
  if (isStarted)
    done.acquire();
  else
    work();
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

MapPainter::MapPainter() : m_sketch(std::make_unique<SceneSketch>()), m_pictures(std::make_unique<PictureStore>()) {}

MapPainter::~MapPainter() = default;

void MapPainter::paint(QPainter& painter, const MapScene& scene, const PaintOptions& options) {
  if (!isFinite(scene.exposed) || scene.exposed.isEmpty() || !isFinite(scene.view.offset) ||
      !std::isfinite(scene.view.zoom) || scene.view.zoom <= 0)
    return;
  m_sketch->update(*scene.map);
  const QColor background = colorFromHex(scene.map->canvas.background);

  painter.save();
  const QTransform toPicture = scene.view.transform() * painter.deviceTransform();
  painter.translate(-scene.pixelOrigin);
  if (options.background) painter.fillRect(scene.exposed, background);
  painter.setClipRect(scene.exposed, Qt::IntersectClip);
  painter.setTransform(scene.view.transform(), true);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
  const double scale = std::sqrt(std::abs(painter.deviceTransform().determinant()));
  const double margin = (options.exactPixels ? exactDrawableMargin : drawableMargin) / std::max(scale, 1e-6);
  const QRectF exposed = scene.view.toCanvas(scene.exposed);

  const PaintContext context{scene,
                             options,
                             m_measurer,
                             *m_sketch,
                             *m_pictures,
                             CanvasColors::onBackground(background),
                             scale,
                             painter.deviceTransform(),
                             toPicture,
                             painter.deviceTransform().type() <= QTransform::TxScale,
                             detailAt(scale, scene, options),
                             exposed,
                             exposed.adjusted(-margin, -margin, margin, margin),
                             options.selection ? selectedNumbers(scene) : std::vector<char>()};
  NodeLayer nodes(painter, context);
  nodes.collect();
  if (options.regions) paintRegions(painter, context);
  runUndivided([&] {
    paintEdges(painter, context);
    if (options.relationships) paintRelationships(painter, context);
  });
  if (options.selection && !options.handlesAboveNodes) paintConnectorHandles(painter, context);
  if (options.selection) paintConnectionDrag(painter, context);
  nodes.paint();
  if (options.selection && options.handlesAboveNodes) paintConnectorHandles(painter, context);
  painter.restore();
}

NodeMetrics MapPainter::measure(const MapScene& scene, std::size_t nodeIndex, const PaintOptions& options) {
  const Node& node = scene.map->nodes[nodeIndex];
  const bool isEdited = scene.editingNodeID == node.id;
  return m_measurer.measure(node, depthFraction(scene, scene.index->numberOfNode()[nodeIndex]),
                            options.depthSizing ? &scene.map->hierarchical : nullptr,
                            isEdited ? std::optional(scene.editingTitle.value_or(node.title)) : std::nullopt);
}

std::optional<std::size_t> MapPainter::nodeAt(const MapScene& scene, QPointF canvasPoint, const PaintOptions& options) {
  m_sketch->update(*scene.map);
  const std::vector<QPointF>& positions = scene.index->positions();
  const double reach = m_sketch->maxHalfWidth();
  for (std::size_t i = positions.size(); i-- > 0;) {
    const QPointF distance = canvasPoint - positions[i];
    if (!(std::abs(distance.x()) <= reach)) continue;
    if (!(std::abs(distance.y()) <= static_cast<double>(m_sketch->nodes()[i].boundHalfHeight))) continue;
    if (scene.hiddenNodes && i < scene.hiddenNodes->size() && (*scene.hiddenNodes)[i]) continue;
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
    const double reach =
        2.5 * std::max({std::abs(double{sketch.startWidth}), std::abs(double{sketch.endWidth}),
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
