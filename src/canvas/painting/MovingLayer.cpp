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
// As many previews are painted smoothly, and as many topics at rest above them.
constexpr std::size_t maxSmoothPreviews = 100;
constexpr std::size_t maxRestingCount = 300;
// From so many topics on a drag moves their picture, which reaches so far beyond the view (device pixels).
constexpr std::size_t minPictureCount = 40;
constexpr int pictureMargin = 160;

QColor withOpacity(QColor color, double opacity) {
  color.setAlphaF(static_cast<float>(opacity));
  return color;
}

}  // namespace

bool MovingLayer::isNeeded(const MapScene& scene) {
  return (scene.isDragging() && !scene.selectedNodeIDs.empty()) || scene.shown.connectionDrag() ||
         scene.shown.draggedHandle;
}

void MovingLayer::paint() {
  const QSizeF size = m_context.exposed.size() * m_context.scale;
  m_columns = static_cast<int>(std::clamp(std::ceil(size.width() / cellSide), 1.0, double{maxCells}));
  m_rows = static_cast<int>(std::clamp(std::ceil(size.height() / cellSide), 1.0, double{maxCells}));
  m_marks.assign(static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(m_rows), 0);
  paintRelationships();
  paintPreviews();
  if (m_context.scene.shown.connectionDrag()) paintConnection();
  paintRestingNodes();
  paintDraggedNodes();
  if (m_context.scene.shown.connectionDrag()) paintMovedConnectionHandle();
  paintHandles();
}

void MovingLayer::paintRelationships() {
  if (!m_context.isDragging()) return;
  for (const Relationship& relationship : m_context.scene.map.relationships) {
    const auto from = m_context.shownNode(relationship.from);
    const auto to = m_context.shownNode(relationship.to);
    if (from && to && (m_context.isNodeDragged(*from) || m_context.isNodeDragged(*to)))
      paintRelationship(m_painter, m_context, relationship);
  }
}

void MovingLayer::paintPreviews() {
  if (!m_context.isDragging()) return;
  const MapIndex& index = m_context.scene.index;
  const auto& sketches = m_context.sketch.edges();
  struct Preview {
    QLineF line;
    QRgb color;
  };
  std::vector<Preview> previews;
  const double reach = previewWidth / 2 + 1.0 / m_context.scale;
  const QRectF seen = m_context.exposed.adjusted(-reach, -reach, reach, reach);
  for (std::size_t i = 0; i < std::min(index.edgeFrom().size(), sketches.size()); ++i) {
    if (!m_context.isEdgeDragged(i)) continue;
    const std::uint32_t from = index.nodeOfNumber()[index.edgeFrom()[i]];
    const std::uint32_t to = index.nodeOfNumber()[index.edgeTo()[i]];
    if (from == MapIndex::npos || to == MapIndex::npos) continue;
    if (m_context.isHidden(from) || m_context.isHidden(to)) continue;
    QPointF a = m_context.shownPosition(from);
    QPointF b = m_context.shownPosition(to);
    if (clipSegment(a, b, seen)) previews.push_back({QLineF(a, b), sketches[i].color});
  }
  // Smooth wide lines in great number would take longer than a frame, and nobody could tell them apart.
  const bool areFew = previews.size() <= maxSmoothPreviews;
  m_painter.setRenderHint(QPainter::Antialiasing, areFew);
  for (const Preview& preview : previews) {
    QPen pen(withOpacity(QColor(preview.color), previewOpacity), areFew ? previewWidth : 1.0);
    pen.setCosmetic(!areFew);
    m_painter.setPen(pen);
    m_painter.drawLine(preview.line);
    if (areFew) mark(preview.line.p1(), preview.line.p2(), reach);
  }
  m_painter.setRenderHint(QPainter::Antialiasing, true);
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
  const auto drag = scene.shown.connectionDrag();
  const auto source = m_context.shownNode(drag->sourceID);
  if (!source || !m_context.isNodeSelected(scene.index.numberOfNode()[*source])) return;
  const QPointF center = drag->end;
  if (!m_context.drawable.contains(center)) return;
  paintHandle(m_painter, center,
              {HandleMetrics::connectionHandleDiameter, m_context.colors.selection, Qt::transparent, 0.0,
               withOpacity(m_context.colors.selection, 0.3), 2.0});
}

void MovingLayer::paintHandles() {
  const MapScene& scene = m_context.scene;
  if (scene.shown.draggedHandle && scene.shown.draggedHandle->kind == ShownGestures::HandleKind::relationshipBend) {
    for (const Relationship& relationship : scene.map.relationships)
      if (relationship.id == scene.shown.draggedHandle->ownerID)
        paintRelationshipHandles(m_painter, m_context, relationship, HandleState::dragged);
    return;
  }
  if (!scene.shown.draggedHandle) return;
  const auto& sketches = m_context.sketch.edges();
  for (std::size_t i = 0; i < sketches.size(); ++i)
    if (sketches[i].id == scene.shown.draggedHandle->ownerID)
      paintEdgeHandles(m_painter, m_context, i, HandleState::dragged);
}

void MovingLayer::mark(QPointF from, QPointF to, double reach) {
  const QRectF& exposed = m_context.exposed;
  const QRectF around = exposed.adjusted(-reach, -reach, reach, reach);
  if (!clipSegment(from, to, around)) return;
  m_hasMarks = true;
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

void MovingLayer::paintRestingNodes() {
  if (!m_hasMarks) return;
  const MapScene& scene = m_context.scene;
  const auto& positions = scene.index.positions();
  const auto& sketches = m_context.sketch.nodes();
  // The picture below has the shadows of topics at rest already.
  NodeLayer resting(m_painter, m_context, NodeLayer::Shadows::none);
  std::size_t count = 0;
  for (std::size_t i = std::min(positions.size(), sketches.size()); i-- > 0 && count < maxRestingCount;) {
    const QSizeF half(sketches[i].halfWidth, sketches[i].halfHeight);
    const QRectF box(positions[i].x() - half.width(), positions[i].y() - half.height(), 2 * half.width(),
                     2 * half.height());
    if (!box.intersects(m_context.exposed) || m_context.isNodeDragged(i) || !isMarked(box)) continue;
    // What shines through would do so twice.
    if (scene.nodeOpacity && scene.nodeOpacity(scene.map.nodes[i]) < 1.0) continue;
    resting.collect(i);
    ++count;
  }
  resting.collectionEnded();
  for (std::size_t k = 0; k < resting.pieceCount(); ++k) resting.paintPiece(k);
}

void MovingLayer::paintDraggedNodes() {
  if (!m_context.isDragging()) return;
  std::vector<std::size_t> dragged;
  const std::size_t count = std::min(m_context.scene.index.positions().size(), m_context.sketch.nodes().size());
  for (std::size_t i = 0; i < count; ++i)
    if (m_context.isNodeDragged(i)) dragged.push_back(i);
  if (dragged.size() >= minPictureCount && m_context.standsUpright) return paintAsPicture(dragged);
  NodeLayer layer(m_painter, m_context);
  for (std::size_t k = dragged.size(); k-- > 0;) layer.collect(dragged[k]);
  layer.collectionEnded();
  for (std::size_t k = 0; k < layer.pieceCount(); ++k) layer.paintPiece(k);
}

void MovingLayer::paintAsPicture(const std::vector<std::size_t>& dragged) {
  const MapScene& scene = m_context.scene;
  const auto shift = [&] {
    const QPointF way = (scene.shown.nodeDragTranslation - m_kept.translation) * m_context.scale;
    return QPoint(static_cast<int>(std::lround(way.x())), static_cast<int>(std::lround(way.y())));
  };
  const QRect shown = m_context.toDevice.mapRect(m_context.exposed).toAlignedRect();
  const bool isKept = !m_kept.image.isNull() && m_kept.toDevice == m_context.toDevice &&
                      m_kept.nodes.sharesStorageWith(scene.map.nodes) && m_kept.opacityRule == scene.opacityRule &&
                      m_kept.isSelected == m_context.isSelected && *m_kept.isHidden == *scene.hiddenNodes &&
                      std::max(std::abs(shift().x()), std::abs(shift().y())) <= pictureMargin &&
                      QRect(m_kept.origin + shift(), m_kept.image.size()).contains(shown);
  if (!isKept) renderPicture(dragged, shown.adjusted(-pictureMargin, -pictureMargin, pictureMargin, pictureMargin));
  const QTransform transform = m_painter.transform();
  m_painter.setTransform(m_context.toDevice.inverted() * transform);
  m_painter.drawImage(m_kept.origin + shift(), m_kept.image);
  m_painter.setTransform(transform);
}

void MovingLayer::renderPicture(const std::vector<std::size_t>& dragged, const QRect& pixels) {
  m_kept = {QImage(pixels.size(), QImage::Format_ARGB32_Premultiplied),
            pixels.topLeft(),
            m_context.scene.shown.nodeDragTranslation,
            m_context.toDevice,
            m_context.scene.map.nodes,
            m_context.isSelected,
            m_context.scene.hiddenNodes,
            m_context.scene.opacityRule};
  m_kept.image.fill(Qt::transparent);
  QPainter painter(&m_kept.image);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
  painter.setTransform(m_context.toDevice * QTransform::fromTranslate(-pixels.x(), -pixels.y()));
  const double margin = pictureMargin / m_context.scale;
  PaintContext context{m_context};
  context.toDevice = context.toPicture = painter.transform();
  context.exposed = m_context.exposed.adjusted(-margin, -margin, margin, margin);
  NodeLayer layer(painter, context);
  for (std::size_t k = dragged.size(); k-- > 0;) layer.collect(dragged[k]);
  layer.collectionEnded();
  for (std::size_t k = 0; k < layer.pieceCount(); ++k) layer.paintPiece(k);
}

}  // namespace quilmora
