#include "canvas/painting/MovingLayer.h"

#include <algorithm>
#include <cmath>

#include <QPainter>

#include "canvas/geometry/Handles.h"
#include "canvas/geometry/Polygons.h"
#include "canvas/painting/NodeLayer.h"
#include "canvas/painting/PaintSteps.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

constexpr double previewOpacity = 0.6;
constexpr double previewWidth = 2.0;
// So many smooth wide lines would take longer than a frame, and nobody could tell them apart.
constexpr std::size_t maxSmoothPreviews = 3000;
// From so many topics on a drag moves their picture, which reaches so far beyond the view (device pixels).
constexpr std::size_t minPictureCount = 40;
constexpr int pictureMargin = 160;
// From so many on previews between dragged topics are in the picture, too.
constexpr std::size_t minPicturedPreviews = 400;

}  // namespace

bool MovingLayer::isNeeded(const MapScene& scene) {
  return (scene.isDragging() && !scene.selectedNodeIDs.empty()) || scene.shown.connectionDrag() ||
         scene.shown.draggedHandle;
}

void MovingLayer::paint() {
  findDraggedNodes();
  if (hasPicture()) preparePicture();
  paintLines();
  paintDraggedNodes();
  if (m_context.scene.shown.connectionDrag()) paintMovedConnectionHandle();
  paintHandles();
}

void MovingLayer::findDraggedNodes() {
  if (!m_context.isDragging()) return;
  const std::size_t count = m_context.scene.index.positions().size();
  for (std::size_t i = 0; i < count; ++i)
    if (m_context.isNodeDragged(i)) m_dragged.push_back(i);
}

bool MovingLayer::hasPicture() const {
  return m_dragged.size() >= minPictureCount && m_context.standsUpright;
}

// Below the topics that rest, which the picture beneath shows already.
void MovingLayer::paintLines() {
  m_painter.save();
  const QTransform transform = m_painter.transform();
  m_painter.setTransform(m_context.toDevice.inverted() * transform);
  m_painter.setClipRegion(m_kept.mask.freeRegion(m_context), Qt::IntersectClip);
  if (hasPicture()) drawPicture(m_kept.dragged.previews);
  m_painter.setTransform(transform);
  paintRelationships();
  const double reach = previewWidth / 2 + 1.0 / m_context.scale;
  const QRectF seen = m_context.exposed.adjusted(-reach, -reach, reach, reach);
  std::vector<Preview> previews = previewsIn(seen, false);
  if (!hasPicture() || m_kept.dragged.previews.isNull()) {
    const std::vector<Preview> within = previewsIn(seen, true);
    previews.insert(previews.end(), within.begin(), within.end());
  }
  runInPool([&] { paintPreviews(m_painter, previews); });
  paintConnectionLine(m_painter, m_context);
  paintConnectionDisc(m_painter, m_context);
  m_painter.restore();
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

std::vector<MovingLayer::Preview> MovingLayer::previewsIn(const QRectF& seen, bool areWithin) const {
  std::vector<Preview> previews;
  if (!m_context.isDragging()) return previews;
  const MapIndex& index = m_context.scene.index;
  const auto& sketches = m_context.sketch.edges();
  for (std::size_t i = 0; i < index.edgeFrom().size(); ++i) {
    const bool movesFrom = m_context.isNodeSelected(index.edgeFrom()[i]);
    const bool movesTo = m_context.isNodeSelected(index.edgeTo()[i]);
    if (!(movesFrom || movesTo) || (movesFrom && movesTo) != areWithin) continue;
    const std::uint32_t from = index.nodeOfNumber()[index.edgeFrom()[i]];
    const std::uint32_t to = index.nodeOfNumber()[index.edgeTo()[i]];
    if (from == MapIndex::npos || to == MapIndex::npos) continue;
    if (m_context.isHidden(from) || m_context.isHidden(to)) continue;
    QPointF a = m_context.shownPosition(from);
    QPointF b = m_context.shownPosition(to);
    if (clipSegment(a, b, seen)) previews.push_back({QLineF(a, b), sketches[i].color});
  }
  return previews;
}

void MovingLayer::paintPreviews(QPainter& painter, const std::vector<Preview>& previews) {
  const bool areSmooth = previews.size() <= maxSmoothPreviews;
  painter.setRenderHint(QPainter::Antialiasing, areSmooth);
  for (const Preview& preview : previews) {
    QPen pen(withOpacity(QColor(preview.color), previewOpacity), areSmooth ? previewWidth : 1.0);
    pen.setCosmetic(!areSmooth);
    pen.setCapStyle(Qt::FlatCap);
    painter.setPen(pen);
    painter.drawLine(preview.line);
  }
  painter.setRenderHint(QPainter::Antialiasing, true);
}

// The handle from which the connection comes moves along with the pointer. The disc at the end of the line stands for
// it unless that leads to a topic.
void MovingLayer::paintMovedConnectionHandle() {
  const MapScene& scene = m_context.scene;
  const auto drag = scene.shown.connectionDrag();
  if (!drag->targetID) return;
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

void MovingLayer::paintDraggedNodes() {
  if (m_dragged.empty()) return;
  if (hasPicture()) {
    const QTransform transform = m_painter.transform();
    m_painter.setTransform(m_context.toDevice.inverted() * transform);
    drawPicture(m_kept.dragged.topics);
    m_painter.setTransform(transform);
    return;
  }
  NodeLayer layer(m_painter, m_context);
  layer.prepareCoverage();
  for (std::size_t k = m_dragged.size(); k-- > 0;) layer.collect(m_dragged[k]);
  for (std::size_t k = 0; k < layer.pieceCount(); ++k) layer.paintPiece(k);
}

QPoint MovingLayer::shift() const {
  const QPointF way = (m_context.scene.shown.nodeDragTranslation - m_kept.dragged.translation) * m_context.scale;
  return QPoint(static_cast<int>(std::lround(way.x())), static_cast<int>(std::lround(way.y())));
}

void MovingLayer::drawPicture(const QImage& picture) {
  if (!picture.isNull()) m_painter.drawImage(m_kept.dragged.origin + shift(), picture);
}

void MovingLayer::preparePicture() {
  const MapScene& scene = m_context.scene;
  const DraggedPicture& kept = m_kept.dragged;
  const QRect shown = m_context.toDevice.mapRect(m_context.exposed).toAlignedRect();
  const bool isKept = !kept.topics.isNull() && kept.toDevice == m_context.toDevice &&
                      kept.nodes.sharesStorageWith(scene.map.nodes) && kept.edges.sharesStorageWith(scene.map.edges) &&
                      kept.opacityRule == scene.opacityRule && kept.isSelected == m_context.isSelected &&
                      *kept.isHidden == *scene.hiddenNodes &&
                      std::max(std::abs(shift().x()), std::abs(shift().y())) <= pictureMargin &&
                      QRect(kept.origin + shift(), kept.topics.size()).contains(shown);
  if (!isKept) renderPicture(shown.adjusted(-pictureMargin, -pictureMargin, pictureMargin, pictureMargin));
}

void MovingLayer::renderPicture(const QRect& pixels) {
  const MapScene& scene = m_context.scene;
  DraggedPicture& kept = m_kept.dragged;
  kept = {QImage(pixels.size(), QImage::Format_ARGB32_Premultiplied),
          QImage(),
          pixels.topLeft(),
          scene.shown.nodeDragTranslation,
          m_context.toDevice,
          scene.map.nodes,
          scene.map.edges,
          m_context.isSelected,
          scene.hiddenNodes,
          scene.opacityRule};
  const auto paintOn = [&](QImage& image, auto&& paint) {
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    painter.setTransform(m_context.toDevice * QTransform::fromTranslate(-pixels.x(), -pixels.y()));
    paint(painter);
  };
  const double margin = pictureMargin / m_context.scale;
  const QRectF seen = m_context.exposed.adjusted(-margin, -margin, margin, margin);
  paintOn(kept.topics, [&](QPainter& painter) {
    PaintContext context{m_context};
    context.toDevice = context.toPicture = painter.transform();
    context.exposed = seen;
    NodeLayer layer(painter, context);
    layer.prepareCoverage();
    for (std::size_t k = m_dragged.size(); k-- > 0;) layer.collect(m_dragged[k]);
    for (std::size_t k = 0; k < layer.pieceCount(); ++k) layer.paintPiece(k);
  });
  const std::vector<Preview> previews = previewsIn(seen, true);
  if (previews.size() < minPicturedPreviews) return;
  kept.previews = QImage(pixels.size(), QImage::Format_ARGB32_Premultiplied);
  paintOn(kept.previews, [&](QPainter& painter) { runInPool([&] { paintPreviews(painter, previews); }); });
}

}  // namespace quilmora
