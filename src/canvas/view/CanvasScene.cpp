#include "canvas/view/CanvasScene.h"

#include <cmath>

#include <QPainter>

#include "canvas/geometry/Handles.h"
#include "canvas/geometry/RelationshipCurve.h"
#include "canvas/geometry/TaperedConnector.h"
#include "canvas/painting/CanvasColors.h"
#include "canvas/painting/PartVisibility.h"
#include "canvas/view/CanvasParts.h"
#include "editor/EditorNavigation.h"
#include "model/FindById.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

// The greatest distance of small parts from a topic's centre: they are in the middle of its left and right edges.
constexpr double maxPartDistanceX = 12000.0;
constexpr double maxPartDistanceY = HandleMetrics::connectionHandleDiameter / 2.0;
// How many topics are measured for one move of the pointer. Few are near a point except in a heap, where each takes
// microseconds.
constexpr std::size_t measuresPerMove = 300;

// More topics than this would cost more than their picture below.
constexpr std::size_t maxLandingCount = 500;

const PaintOptions& canvasOptions() {
  static const PaintOptions options = [] {
    PaintOptions canvas;
    // The ends of a selected edge are on the centres of its topics, where they could not be reached from below, and the
    // middle of a relationship can be anywhere.
    canvas.handlesAboveNodes = true;
    return canvas;
  }();
  return options;
}

bool isOnDisc(const QRectF& disc, QPointF point) {
  return !disc.isEmpty() && handleContains(disc.center(), disc.width(), point);
}

}  // namespace

const MapScene& CanvasScene::current(const ShownGestures& shown) {
  // A presentation shows the map alone: no rings and no handles.
  const bool showsSelection = !m_editor.isPresentationMode() || !shown.nodeDragTranslation.isNull();
  const IdSet selectedNodes = showsSelection ? m_editor.selectedNodeIDs() : IdSet();
  const IdSet selectedEdges = showsSelection ? m_editor.selectedEdgeIDs() : IdSet();
  if (!isCurrent(selectedNodes, selectedEdges)) {
    m_current.map = m_editor.mindMap();
    m_current.index = m_editor.mapIndex();
    m_current.tree = m_editor.treeInfo();
    m_current.hiddenNodes = m_editor.sharedHiddenNodes();
    m_current.selectedNodeIDs = selectedNodes;
    m_current.selectedEdgeIDs = selectedEdges;
    m_current.collapsedNodeIDs = m_editor.collapsedNodeIDs();
    using Lens = EditorNavigation::FocusLens;
    const Lens lens = m_editor.activeLens();
    m_current.opacityRule = static_cast<int>(lens);
    m_current.nodeOpacity = nullptr;
    if (lens != Lens::none)
      m_current.nodeOpacity = [lens, tree = m_current.tree](const Node& node) {
        return EditorNavigation::opacityUnder(lens, node, tree);
      };
  }
  m_current.view = {m_editor.canvasOffset(), m_editor.canvasZoom()};
  m_current.selectedRegionID = showsSelection ? m_editor.selectedRegionID() : std::nullopt;
  m_current.shown = shown;
  if (!showsSelection) m_current.shown.selectedRelationshipID.reset();
  return m_current;
}

// Decided by what both sides share, without comparing contents.
bool CanvasScene::isCurrent(const IdSet& selectedNodes, const IdSet& selectedEdges) {
  const MindMap& map = m_editor.mindMap();
  return m_current.map.nodes.sharesStorageWith(map.nodes) && m_current.map.edges.sharesStorageWith(map.edges) &&
         m_current.map.relationships.sharesStorageWith(map.relationships) &&
         m_current.map.regions.sharesStorageWith(map.regions) && m_current.map.canvas == map.canvas &&
         m_current.map.hierarchical == map.hierarchical &&
         m_current.hiddenNodes.sharesStorageWith(m_editor.sharedHiddenNodes()) &&
         m_current.selectedNodeIDs.sharesStorageWith(selectedNodes) &&
         m_current.selectedEdgeIDs.sharesStorageWith(selectedEdges) &&
         m_current.collapsedNodeIDs.sharesStorageWith(m_editor.collapsedNodeIDs()) &&
         m_current.opacityRule == static_cast<int>(m_editor.activeLens());
}

ChangedParts CanvasScene::follow(const ShownGestures& shown) {
  const bool wasDragging = !m_pictured.shown.nodeDragTranslation.isNull();
  const bool wasLanding = std::exchange(m_pictured.isLanding, false);
  m_pictured = current(shown);
  ChangedParts changes = m_difference.follow(m_pictured, canvasOptions(), m_painter);
  m_pictured.isLanding = shown.nodeDragTranslation.isNull() && (wasDragging || (wasLanding && changes.isEmpty())) &&
                         m_pictured.selectedNodeIDs.size() <= maxLandingCount;
  return changes;
}

MapScene CanvasScene::pictured(const ViewTransform& view, const QRectF& exposed) const {
  MapScene scene = m_pictured;
  scene.view = view;
  scene.pixelRatio = m_pixelRatio;
  scene.exposed = exposed;
  scene.isLanding = false;
  return scene;
}

PaintSteps CanvasScene::prepare(double zoom, const QRect& tiles) {
  m_plan = std::make_shared<ScenePlan>(PictureTiles::side / zoom, tiles);
  return m_painter.makePlan(*m_plan, pictured({QPointF(0, 0), zoom}, QRectF()), canvasOptions());
}

PaintSteps CanvasScene::paint(QPainter& painter, double zoom, QPoint tile) {
  constexpr double side = PictureTiles::side;
  return m_painter.paintTile(painter, m_plan, tile, pictured({-QPointF(tile) * side, zoom}, QRectF(0, 0, side, side)),
                             canvasOptions());
}

void CanvasScene::paintMoving(QPainter& painter, QSize pixels, const ViewTransform& view, bool haveTilesCaughtUp) {
  m_pictured.isLanding = m_pictured.isLanding && !haveTilesCaughtUp;
  MapScene scene = pictured(view, QRectF(QPointF(0, 0), QSizeF(pixels)));
  scene.isLanding = m_pictured.isLanding;
  m_painter.paintMoving(painter, scene, canvasOptions());
}

void CanvasScene::paintSelectionBox(QPainter& painter, const CanvasState& state) const {
  if (!state.selectionBoxStart || !state.selectionBoxCurrent) return;
  const QColor background = colorFromHex(m_editor.mindMap().canvas.background);
  const QColor contour = CanvasColors::onBackground(background).selection;
  QColor fill = contour;
  fill.setAlphaF(0.1F);
  painter.setPen(QPen(contour, 1.5));
  painter.setBrush(fill);
  painter.drawRect(QRectF(*state.selectionBoxStart, *state.selectionBoxCurrent).normalized());
}

void CanvasScene::paintPartState(QPainter& painter, const CanvasState& state) {
  const auto& part = state.pressedPart ? state.pressedPart : state.hoveredPart;
  if (!part) return;
  const auto disc = partRect(*part, state);
  if (!disc) return;
  const ViewTransform view{m_editor.canvasOffset(), m_editor.canvasZoom()};
  const auto topic = m_editor.nodeByID(part->id);
  quilmora::paintPartState(painter, view.toView(*disc), part->kind,
                           state.pressedPart ? PartState::pressed : PartState::hovered,
                           topic ? colorFromHex(topic->style.textColor) : QColor());
}

// --- Hit tests ---

CanvasTarget CanvasScene::targetAt(QPointF point, const CanvasState& state) {
  const MapScene& scene = current(state);
  const bool handlesAbove = handlesLieAbove(scene, canvasOptions());
  if (handlesAbove)
    if (const auto handle = linkHandleAt(point, state)) return *handle;
  if (const auto part = nodePartAt(scene, point)) return *part;
  if (!handlesAbove)
    if (const auto handle = linkHandleAt(point, state)) return *handle;
  if (const auto index = m_painter.relationshipAt(scene, point))
    return {CanvasTarget::Kind::relationship, scene.map.relationships[*index].id};
  if (const auto index = m_painter.edgeAt(scene, point, canvasOptions()))
    return {CanvasTarget::Kind::edge, scene.map.edges[*index].id};
  return regionAt(point).value_or(CanvasTarget());
}

CanvasTarget CanvasScene::partAt(QPointF point, const CanvasState& state) {
  const MapScene& scene = current(state);
  const bool handlesAbove = handlesLieAbove(scene, canvasOptions());
  if (handlesAbove)
    if (const auto handle = linkHandleAt(point, state)) return *handle;
  std::size_t measuresLeft = measuresPerMove;
  const auto part = nodePartAt(scene, point, &measuresLeft);
  if (part) return part->isPart() ? *part : CanvasTarget();
  if (measuresLeft == 0) return {};
  if (!handlesAbove)
    if (const auto handle = linkHandleAt(point, state)) return *handle;
  const auto region = regionAt(point);
  if (!region || !region->isPart()) return {};
  // Connectors are above regions.
  const CanvasTarget target = targetAt(point, state);
  return target.isPart() ? target : CanvasTarget();
}

namespace {

QRectF discAt(QPointF center, double diameter) {
  return {center.x() - diameter / 2, center.y() - diameter / 2, diameter, diameter};
}

}  // namespace

double CanvasScene::handleDiameter(CanvasPart part) const {
  return partDiameter(part, m_editor.canvasZoom());
}

std::optional<QRectF> CanvasScene::partRect(const CanvasTarget& part, const CanvasState& state) {
  using Kind = CanvasTarget::Kind;
  switch (part.kind) {
    case Kind::collapseToggle:
    case Kind::connectionHandle:
      return nodePartRect(part, state);
    case Kind::edgeSourceHandle:
    case Kind::edgeTargetHandle:
    case Kind::edgeBendHandle:
      return edgeHandleRect(part);
    case Kind::relationshipBendHandle:
    case Kind::relationshipDeleteButton:
      return state.selectedRelationshipID == part.id ? relationshipHandleRect(part) : std::nullopt;
    case Kind::regionResizeHandle: {
      const auto region = m_editor.regionByID(part.id);
      if (!region || m_editor.selectedRegionID() != part.id) return std::nullopt;
      return discAt(resizeHandleCenter(region->rect.normalized()), handleDiameter(CanvasPart::resizeHandle));
    }
    default:
      return std::nullopt;
  }
}

std::optional<QRectF> CanvasScene::nodePartRect(const CanvasTarget& part, const CanvasState& state) {
  const auto position = shownPosition(part.id);
  if (!position) return std::nullopt;
  const bool isHandle = part.kind == CanvasTarget::Kind::connectionHandle;
  if (isHandle ? !showsConnectionHandle(current(state), part.id) : m_editor.treeInfo().childCount(part.id) == 0)
    return std::nullopt;
  const NodeMetrics metrics = m_painter.measure(current(state), m_editor.mapIndex().find(part.id), canvasOptions());
  const CanvasPart shape = isHandle ? CanvasPart::connectionHandle : CanvasPart::collapseToggle;
  const QRectF place = isHandle ? metrics.connectionHandle : metrics.collapseToggle;
  const QRectF shown = shownPart(shape, place.translated(*position), m_editor.canvasZoom());
  return shown.isEmpty() ? std::nullopt : std::optional(shown);
}

std::optional<QRectF> CanvasScene::edgeHandleRect(const CanvasTarget& part) {
  const auto edge = recordByID(m_editor.mindMap().edges, part.id);
  if (!edge || !m_editor.selectedEdgeIDs().contains(part.id)) return std::nullopt;
  const auto from = shownPosition(edge->from);
  const auto to = shownPosition(edge->to);
  if (!from || !to) return std::nullopt;
  const QPointF center = part.kind == CanvasTarget::Kind::edgeSourceHandle ? *from
                         : part.kind == CanvasTarget::Kind::edgeTargetHandle
                             ? *to
                             : TaperedConnector(*edge, *from, *to).bendHandlePosition();
  return discAt(center, handleDiameter(CanvasPart::edgeHandle));
}

std::optional<QRectF> CanvasScene::relationshipHandleRect(const CanvasTarget& part) {
  const auto link = recordByID(m_editor.mindMap().relationships, part.id);
  const auto from = link ? shownPosition(link->from) : std::nullopt;
  const auto to = link ? shownPosition(link->to) : std::nullopt;
  if (!from || !to) return std::nullopt;
  const QPointF middle = RelationshipCurve(*from, *to, link->controlPointOffset).midpoint();
  if (part.kind == CanvasTarget::Kind::relationshipBendHandle)
    return discAt(middle, handleDiameter(CanvasPart::bendHandle));
  return discAt(shownDeleteButtonCenter(middle, m_editor.canvasZoom()), handleDiameter(CanvasPart::deleteButton));
}

std::optional<QUuid> CanvasScene::topicAt(QPointF point) {
  const auto part = nodePartAt(current(), point);
  return part ? std::optional(part->id) : std::nullopt;
}

// From the topmost down, each with its handle in front of it.
std::optional<CanvasTarget> CanvasScene::regionAt(QPointF point) const {
  const auto& regions = m_editor.mindMap().regions;
  const std::optional<QUuid> selected = m_editor.selectedRegionID();
  for (std::size_t i = regions.size(); i-- > 0;) {
    const Region& region = regions[i];
    const QRectF rect = region.rect.normalized();
    if (region.id == selected &&
        handleContains(resizeHandleCenter(rect), handleDiameter(CanvasPart::resizeHandle), point))
      return CanvasTarget{CanvasTarget::Kind::regionResizeHandle, region.id};
    if (rect.contains(point)) return CanvasTarget{CanvasTarget::Kind::region, region.id};
  }
  return std::nullopt;
}

std::optional<QPointF> CanvasScene::shownPosition(const QUuid& nodeID) {
  const std::uint32_t index = m_editor.mapIndex().find(nodeID);
  if (index == MapIndex::npos || m_editor.hiddenNodes()[index]) return std::nullopt;
  return m_editor.mapIndex().positions()[index];
}

std::optional<CanvasTarget> CanvasScene::linkHandleAt(QPointF point, const CanvasState& state) {
  const auto handle = relationshipHandleAt(point, state);
  return handle ? handle : edgeHandleAt(point);
}

std::optional<CanvasTarget> CanvasScene::edgeHandleAt(QPointF point) {
  if (m_editor.selectedEdgeIDs().empty()) return std::nullopt;
  const auto isOn = [this, point](QPointF center) {
    return handleContains(center, handleDiameter(CanvasPart::edgeHandle), point);
  };
  // The last one is drawn on top.
  std::optional<CanvasTarget> found;
  for (const Edge& edge : m_editor.mindMap().edges) {
    if (!m_editor.selectedEdgeIDs().contains(edge.id)) continue;
    const auto from = shownPosition(edge.from);
    const auto to = shownPosition(edge.to);
    if (!from || !to) continue;
    if (isOn(TaperedConnector(edge, *from, *to).bendHandlePosition()))
      found = CanvasTarget{CanvasTarget::Kind::edgeBendHandle, edge.id};
    else if (isOn(*to))
      found = CanvasTarget{CanvasTarget::Kind::edgeTargetHandle, edge.id};
    else if (isOn(*from))
      found = CanvasTarget{CanvasTarget::Kind::edgeSourceHandle, edge.id};
  }
  return found;
}

std::optional<CanvasTarget> CanvasScene::relationshipHandleAt(QPointF point, const CanvasState& state) {
  if (!state.selectedRelationshipID) return std::nullopt;
  for (const Relationship& link : m_editor.mindMap().relationships) {
    if (link.id != *state.selectedRelationshipID) continue;
    const auto from = shownPosition(link.from);
    const auto to = shownPosition(link.to);
    if (!from || !to) return std::nullopt;
    const QPointF middle = RelationshipCurve(*from, *to, link.controlPointOffset).midpoint();
    if (handleContains(shownDeleteButtonCenter(middle, m_editor.canvasZoom()), handleDiameter(CanvasPart::deleteButton),
                       point))
      return CanvasTarget{CanvasTarget::Kind::relationshipDeleteButton, link.id};
    if (handleContains(middle, handleDiameter(CanvasPart::bendHandle), point))
      return CanvasTarget{CanvasTarget::Kind::relationshipBendHandle, link.id};
    return std::nullopt;
  }
  return std::nullopt;
}

// Toggles and handles stick out of the boxes, so the topics are tested for them from the top down, to the topmost box
// that contains the point.
std::optional<CanvasTarget> CanvasScene::nodePartAt(const MapScene& scene, QPointF point, std::size_t* measuresLeft) {
  using Kind = CanvasTarget::Kind;
  const auto boxed = m_painter.nodeAt(scene, point, canvasOptions(), measuresLeft);
  const auto& positions = scene.index.positions();
  const std::size_t last = boxed.value_or(0);
  const double zoom = scene.view.zoom;
  const double reach = partGrowth(CanvasPart::connectionHandle, zoom) * maxPartDistanceY;
  if (isPartShown(CanvasPart::connectionHandle, zoom) || isPartShown(CanvasPart::collapseToggle, zoom))
    for (std::size_t i = positions.size(); i-- > last;) {
      const QPointF offset = point - positions[i];
      if (!(std::abs(offset.y()) <= reach && std::abs(offset.x()) <= maxPartDistanceX)) continue;
      if (scene.isHidden(i)) continue;
      const QUuid id = scene.map.nodes[i].id;
      const bool hasHandle = showsConnectionHandle(scene, id);
      const bool hasToggle = scene.tree.childCount(id) > 0;
      if (!hasHandle && !hasToggle) continue;
      if (!takeMeasure(measuresLeft)) return std::nullopt;
      const NodeMetrics metrics = m_painter.measure(scene, i, canvasOptions());
      if (hasHandle && isOnDisc(shownPart(CanvasPart::connectionHandle, metrics.connectionHandle, zoom), offset))
        return CanvasTarget{Kind::connectionHandle, id};
      if (hasToggle && isOnDisc(shownPart(CanvasPart::collapseToggle, metrics.collapseToggle, zoom), offset))
        return CanvasTarget{Kind::collapseToggle, id};
    }
  if (!boxed) return std::nullopt;
  return CanvasTarget{Kind::node, scene.map.nodes[*boxed].id};
}

QRectF CanvasScene::topicBounds(const QUuid& nodeID) {
  const std::size_t index = m_editor.mapIndex().find(nodeID);
  const NodeMetrics metrics = m_painter.measure(current(), index, canvasOptions());
  return metrics.bounds().united(metrics.connectionHandle).translated(m_editor.mapIndex().positions()[index]);
}

// --- Title field ---

TitleLook CanvasScene::titleLook(const QUuid& nodeID) {
  const std::size_t index = m_editor.mapIndex().find(nodeID);
  const NodeSizing sizing = m_painter.measure(current(), index, canvasOptions()).sizing;
  return {sizing.titleFont(), sizing.fontSize, colorFromHex(m_editor.mindMap().nodes[index].style.textColor)};
}

QRectF CanvasScene::titleField(const QUuid& nodeID, const QString& editedTitle) {
  const std::size_t index = m_editor.mapIndex().find(nodeID);
  ShownGestures shown;
  shown.editingNodeID = nodeID;
  shown.editingTitle = editedTitle;
  const MapScene& scene = current(shown);
  return m_painter.measure(scene, index, canvasOptions()).title.translated(scene.index.positions()[index]);
}

}  // namespace quilmora
