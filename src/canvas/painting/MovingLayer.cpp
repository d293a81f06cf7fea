#include "canvas/painting/MovingLayer.h"

#include <algorithm>
#include <cmath>

#include <QPainter>

#include "canvas/geometry/Handles.h"
#include "canvas/geometry/Polygons.h"
#include "canvas/painting/NodeLayer.h"

namespace quilmora {

namespace {

constexpr double previewOpacity = 0.6;
constexpr double previewWidth = 2.0;
constexpr double cellSide = 8.0;  // device pixels
constexpr int maxCells = 4096;    // in a row or a column

QColor withOpacity(QColor color, double opacity) {
  color.setAlphaF(static_cast<float>(opacity));
  return color;
}

}  // namespace

bool MovingLayer::isNeeded(const MapScene& scene) {
  return (!scene.nodeDragTranslation.isNull() && scene.selectedNodeIDs && !scene.selectedNodeIDs->empty()) ||
         scene.connectionDrag || scene.draggedHandle;
}

void MovingLayer::paint() {
  const QSizeF size = m_context.exposed.size() * m_context.scale;
  m_columns = static_cast<int>(std::clamp(std::ceil(size.width() / cellSide), 1.0, double{maxCells}));
  m_rows = static_cast<int>(std::clamp(std::ceil(size.height() / cellSide), 1.0, double{maxCells}));
  m_marks.assign(static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(m_rows), 0);
  paintPreviews();
  if (m_context.scene.connectionDrag) paintConnection();
  paintNodes();
  if (m_context.scene.connectionDrag) paintMovedConnectionHandle();
  paintHandles();
}

void MovingLayer::paintPreviews() {
  if (!m_context.isDragging()) return;
  const MapIndex& index = *m_context.scene.index;
  const auto& sketches = m_context.sketch.edges();
  for (const Relationship& relationship : m_context.scene.map->relationships) {
    const auto from = m_context.shownNode(relationship.from);
    const auto to = m_context.shownNode(relationship.to);
    if (from && to && (m_context.isNodeDragged(*from) || m_context.isNodeDragged(*to)))
      paintRelationship(m_painter, m_context, relationship);
  }
  for (std::size_t i = 0; i < std::min(index.edgeFrom().size(), sketches.size()); ++i) {
    if (!m_context.isEdgeDragged(i)) continue;
    const std::uint32_t from = index.nodeOfNumber()[index.edgeFrom()[i]];
    const std::uint32_t to = index.nodeOfNumber()[index.edgeTo()[i]];
    if (from == MapIndex::npos || to == MapIndex::npos) continue;
    if (m_context.isHidden(from) || m_context.isHidden(to)) continue;
    QPointF a = m_context.shownPosition(from);
    QPointF b = m_context.shownPosition(to);
    const double reach = previewWidth / 2 + 1.0 / m_context.scale;
    if (!clipSegment(a, b, m_context.exposed.adjusted(-reach, -reach, reach, reach))) continue;
    a = m_context.shownPosition(from);
    b = m_context.shownPosition(to);
    if (!clipSegment(a, b, m_context.drawable)) continue;
    m_painter.setPen(QPen(withOpacity(QColor(sketches[i].color), previewOpacity), previewWidth));
    m_painter.drawLine(a, b);
    mark(a, b, reach);
  }
}

void MovingLayer::paintConnection() {
  const auto line = connectionLine(m_context);
  if (!line) return;
  paintConnectionLine(m_painter, m_context);
  paintConnectionDisc(m_painter, m_context);
  mark(line->p1(), line->p2(), 2.0);
  mark(line->p2(), line->p2(), HandleMetrics::connectionDragDiameter / 2 + 6.0);
}

// The handle from which the connection comes moves along with the pointer.
void MovingLayer::paintMovedConnectionHandle() {
  const MapScene& scene = m_context.scene;
  const auto source = m_context.shownNode(scene.connectionDrag->sourceID);
  if (!source || !m_context.isNodeSelected(scene.index->numberOfNode()[*source])) return;
  const NodeMetrics metrics =
      m_context.measurer.measure(scene.map->nodes[*source], m_context.depthFraction(scene.index->numberOfNode()[*source]),
                                 m_context.sizing());
  const QPointF center = scene.connectionDrag->end + metrics.connectionHandle.center();
  if (!m_context.drawable.contains(center)) return;
  paintHandle(m_painter, center,
              {HandleMetrics::connectionHandleDiameter, m_context.colors.selection, Qt::transparent, 0.0,
               withOpacity(m_context.colors.selection, 0.3), 2.0});
}

void MovingLayer::paintHandles() {
  const MapScene& scene = m_context.scene;
  if (scene.draggedHandle && scene.draggedHandle->kind == MapScene::HandleKind::relationshipBend) {
    for (const Relationship& relationship : scene.map->relationships)
      if (relationship.id == scene.draggedHandle->ownerID)
        paintRelationshipHandles(m_painter, m_context, relationship, HandleState::dragged);
    return;
  }
  if (!scene.selectedEdgeIDs || scene.selectedEdgeIDs->empty()) return;
  const auto& sketches = m_context.sketch.edges();
  for (std::size_t i = 0; i < sketches.size(); ++i) {
    if (scene.draggedHandle && sketches[i].id == scene.draggedHandle->ownerID)
      paintEdgeHandles(m_painter, m_context, i, HandleState::dragged);
    if (m_context.isEdgeDragged(i) && scene.selectedEdgeIDs->contains(sketches[i].id))
      paintEdgeHandles(m_painter, m_context, i, HandleState::resting);
  }
}

void MovingLayer::mark(QPointF from, QPointF to, double reach) {
  const QRectF& exposed = m_context.exposed;
  const QRectF around = exposed.adjusted(-reach, -reach, reach, reach);
  if (!clipSegment(from, to, around)) return;
  const double side = cellSide / m_context.scale;
  const double length = std::hypot(to.x() - from.x(), to.y() - from.y());
  const int steps = static_cast<int>(std::clamp(std::ceil(length / side), 1.0, 4.0 * maxCells));
  for (int step = 0; step <= steps; ++step) {
    const QPointF place = from + (to - from) * (static_cast<double>(step) / steps) - exposed.topLeft();
    const double around2 = reach + side / 2;
    const auto cell = [side](double at, int count) {
      return static_cast<int>(std::clamp(std::floor(at / side), 0.0, count - 1.0));
    };
    for (int row = cell(place.y() - around2, m_rows); row <= cell(place.y() + around2, m_rows); ++row)
      for (int column = cell(place.x() - around2, m_columns); column <= cell(place.x() + around2, m_columns); ++column)
        m_marks[static_cast<std::size_t>(row * m_columns + column)] = 1;
  }
}

bool MovingLayer::isMarked(const QRectF& rect) const {
  const double side = cellSide / m_context.scale;
  const QRectF inside = rect.intersected(m_context.exposed).translated(-m_context.exposed.topLeft());
  if (inside.isEmpty()) return false;
  const int bottom = std::min(static_cast<int>(inside.bottom() / side), m_rows - 1);
  const int right = std::min(static_cast<int>(inside.right() / side), m_columns - 1);
  for (int row = static_cast<int>(inside.top() / side); row <= bottom; ++row)
    for (int column = static_cast<int>(inside.left() / side); column <= right; ++column)
      if (m_marks[static_cast<std::size_t>(row * m_columns + column)]) return true;
  return false;
}

void MovingLayer::paintNodes() {
  const MapScene& scene = m_context.scene;
  const auto& positions = scene.index->positions();
  const auto& sketches = m_context.sketch.nodes();
  const bool hasMarks = std::ranges::find(m_marks, 1) != m_marks.end();
  // The picture below has the shadows of topics at rest already.
  NodeLayer resting(m_painter, m_context, NodeLayer::Shadows::none);
  if (hasMarks)
    for (std::size_t i = std::min(positions.size(), sketches.size()); i-- > 0;) {
      const QSizeF half(sketches[i].halfWidth, sketches[i].halfHeight);
      const QRectF box(positions[i].x() - half.width(), positions[i].y() - half.height(), 2 * half.width(),
                       2 * half.height());
      if (!box.intersects(m_context.exposed) || m_context.isNodeDragged(i) || !isMarked(box)) continue;
      // What shines through would do so twice.
      if (scene.nodeOpacity && scene.nodeOpacity(scene.map->nodes[i]) < 1.0) continue;
      resting.collect(i);
    }
  resting.collectionEnded();
  for (std::size_t k = 0; k < resting.pieceCount(); ++k) resting.paintPiece(k);
  if (!m_context.isDragging()) return;
  NodeLayer dragged(m_painter, m_context);
  for (std::size_t i = std::min(positions.size(), sketches.size()); i-- > 0;)
    if (m_context.isNodeDragged(i)) dragged.collect(i);
  dragged.collectionEnded();
  for (std::size_t k = 0; k < dragged.pieceCount(); ++k) dragged.paintPiece(k);
}

}  // namespace quilmora
