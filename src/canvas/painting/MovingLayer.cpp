#include "canvas/painting/MovingLayer.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <QPainter>

#include "canvas/geometry/Handles.h"
#include "canvas/geometry/Polygons.h"
#include "canvas/painting/EdgeHandles.h"
#include "canvas/painting/NodeLayer.h"
#include "canvas/painting/PaintSteps.h"
#include "canvas/painting/PartVisibility.h"
#include "platform/SideTask.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

constexpr double previewOpacity = 0.6;
constexpr double previewWidth = 2.0;
// A smooth line costs its length in pixels times the sum of its width and this constant. Beyond the limit, about 3 ms,
// smooth lines would delay the frame.
constexpr double costBesideWidth = 0.8;
constexpr double maxSmoothCost = 300'000.0;
// From this many topics on, a drag moves their picture, which extends this far beyond the view (device pixels).
constexpr std::size_t minPictureCount = 40;
constexpr int pictureMargin = 160;
// How many times as large as the view it may be where it holds all that is dragged, and is never painted again.
constexpr double maxPictureViews = 2.0;
// As far as the rasteriser counts, with room to spare.
constexpr double maxPictureSide = 16000.0;
// From so many on previews between dragged topics are in the picture, too.
constexpr std::size_t minPicturedPreviews = 400;
// From so many on a second thread pays.
constexpr std::size_t minSharedPreviews = 100;

}  // namespace

bool MovingLayer::isNeeded(const MapScene& scene) {
  return (scene.isDragging() && !scene.selectedNodeIDs.empty()) || scene.shown.connectionDrag() ||
         scene.shown.draggedHandle;
}

void MovingLayer::paint() {
  findDragged();
  if (hasPicture()) preparePicture();
  paintLines();
  paintDraggedNodes();
  if (m_context.scene.shown.connectionDrag()) paintMovedConnectionHandle();
  paintHandles();
}

bool DraggedParts::areOf(const PaintContext& context) const {
  return index.sharesStorageWith(context.scene.index) &&
         relationships.sharesStorageWith(context.scene.map.relationships) && isSelected == context.isSelected;
}

DraggedParts DraggedParts::find(const PaintContext& context) {
  const MapIndex& index = context.scene.index;
  DraggedParts parts{context.isSelected, index, context.scene.map.relationships, {}, {}, {}, {}};
  for (std::size_t i = 0; i < index.numberOfNode().size(); ++i)
    if (context.isNodeSelected(index.numberOfNode()[i])) parts.nodes.push_back(i);
  for (std::uint32_t i = 0; i < index.edgeFrom().size(); ++i) {
    const bool movesFrom = context.isNodeSelected(index.edgeFrom()[i]);
    const bool movesTo = context.isNodeSelected(index.edgeTo()[i]);
    if (movesFrom || movesTo) (movesFrom && movesTo ? parts.edgesWithin : parts.edgesAcross).push_back(i);
  }
  const auto moves = [&](const QUuid& id) {
    const std::uint32_t number = index.ids()->find(id);
    return number < index.numberCount() && context.isNodeSelected(number);
  };
  std::uint32_t i = 0;
  for (const Relationship& relationship : parts.relationships) {
    if (moves(relationship.from) || moves(relationship.to)) parts.links.push_back(i);
    ++i;
  }
  return parts;
}

void MovingLayer::findDragged() {
  if (!m_context.isDragging())
    m_kept.parts = {};
  else if (!m_kept.parts.areOf(m_context))
    m_kept.parts = DraggedParts::find(m_context);
}

bool MovingLayer::hasPicture() const {
  return m_kept.parts.nodes.size() >= minPictureCount && m_context.standsUpright;
}

// Lines go below the topics at rest, which the picture beneath already shows. They are painted on a separate picture:
// clipping that many lines to that many boxes takes longer than erasing them under the boxes.
void MovingLayer::paintLines() {
  const double reach = previewWidth / 2 + 1.0 / m_context.scale;
  const QRectF seen = m_context.exposed.adjusted(-reach, -reach, reach, reach);
  std::vector<Preview> previews = previewsIn(seen, false);
  const bool hasPictured = hasPicture() && !m_kept.dragged.previews.isNull();
  if (!hasPictured) {
    const std::vector<Preview> within = previewsIn(seen, true);
    previews.insert(previews.end(), within.begin(), within.end());
  }
  const std::vector<const Relationship*> relationships = draggedRelationships();
  QRect pixels = relationships.empty() ? boundsOf(previews) : viewPixels();
  if (hasPictured) pixels |= QRect(m_kept.dragged.origin + shift(), m_kept.dragged.previews.size()) & viewPixels();
  if (pixels.isEmpty()) return;

  QImage& picture = m_kept.lines;
  if (picture.size() != pixels.size()) picture = QImage(pixels.size(), QImage::Format_ARGB32_Premultiplied);
  const QTransform toPicture = m_context.toDevice * QTransform::fromTranslate(-pixels.x(), -pixels.y());
  paintPreviews(picture, toPicture, previews);
  QPainter painter(&picture);
  if (hasPictured) painter.drawImage(m_kept.dragged.origin + shift() - pixels.topLeft(), m_kept.dragged.previews);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
  painter.setTransform(toPicture);
  for (const Relationship* relationship : relationships) paintRelationship(painter, m_context, *relationship);
  paintConnectionLine(painter, m_context);
  paintConnectionDisc(painter, m_context);
  painter.end();
  m_kept.mask.erase(picture, pixels.topLeft(), m_context);
  drawOnPixels(pixels.topLeft(), picture);
}

QRect MovingLayer::viewPixels() const {
  return m_context.toDevice.mapRect(m_context.exposed).toAlignedRect();
}

// In device pixels, including the unfinished connection.
QRect MovingLayer::boundsOf(const std::vector<Preview>& previews) const {
  QRectF bounds;
  const auto add = [&bounds](const QLineF& line, double reach) {
    bounds |= QRectF(line.p1(), line.p2()).normalized().adjusted(-reach, -reach, reach, reach);
  };
  for (const Preview& preview : previews) add(preview.line, previewWidth);
  if (const auto line = connectionLine(m_context)) add(*line, HandleMetrics::connectionDragDiameter);
  return m_context.toDevice.mapRect(bounds & m_context.exposed).toAlignedRect() & viewPixels();
}

std::vector<const Relationship*> MovingLayer::draggedRelationships() const {
  std::vector<const Relationship*> found;
  for (const std::uint32_t i : m_kept.parts.links) {
    const Relationship& relationship = m_kept.parts.relationships[i];
    if (m_context.shownNode(relationship.from) && m_context.shownNode(relationship.to)) found.push_back(&relationship);
  }
  return found;
}

std::vector<MovingLayer::Preview> MovingLayer::previewsIn(const QRectF& seen, bool areWithin) const {
  std::vector<Preview> previews;
  const MapIndex& index = m_context.scene.index;
  const auto& sketches = m_context.sketch.edges();
  for (const std::uint32_t i : areWithin ? m_kept.parts.edgesWithin : m_kept.parts.edgesAcross) {
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

bool MovingLayer::areSmooth(const std::vector<Preview>& previews) const {
  double length = 0;
  for (const Preview& preview : previews) length += preview.line.length();
  const double scale = m_context.scale;
  return length * scale * (costBesideWidth + previewWidth * scale) <= maxSmoothCost;
}

// Opaque lines take half the time of others; all fade together. Many are painted in two threads, each on one half of
// the picture.
void MovingLayer::paintPreviews(QImage& picture, const QTransform& toPicture,
                                const std::vector<Preview>& previews) const {
  const bool areSmooth = this->areSmooth(previews);
  uchar* const bytes = picture.bits();
  const auto paintRows = [&](int first, int end) {
    QImage rows(bytes + first * picture.bytesPerLine(), picture.width(), end - first, picture.bytesPerLine(),
                picture.format());
    rows.fill(Qt::transparent);
    QPainter painter(&rows);
    painter.setRenderHint(QPainter::Antialiasing, areSmooth);
    painter.setTransform(toPicture * QTransform::fromTranslate(0, -first));
    for (const Preview& preview : previews) {
      QPen pen(QColor(preview.color), areSmooth ? previewWidth : 1.0);
      pen.setCosmetic(!areSmooth);
      pen.setCapStyle(Qt::FlatCap);
      painter.setPen(pen);
      painter.drawLine(preview.line);
    }
    painter.resetTransform();
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.fillRect(rows.rect(), withOpacity(Qt::black, previewOpacity));
  };
  const int middle = previews.size() < minSharedPreviews ? 0 : picture.height() / 2;
  SideTask upperHalf = middle > 0 ? SideTask([&] { paintRows(0, middle); }) : SideTask();
  runInPool([&] { paintRows(upperHalf.isStarted() ? middle : 0, picture.height()); });
  upperHalf.wait();
}

// The handle that the connection comes from moves with the pointer. Unless the line leads to a topic, the disc at its
// end takes the handle's place.
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
    if (sketches[i].id == scene.shown.draggedHandle->ownerID) paintDraggedEdgeHandle(m_painter, m_context, i);
}

void MovingLayer::paintDraggedNodes() {
  if (m_kept.parts.nodes.empty()) return;
  if (hasPicture()) {
    drawOnPixels(m_kept.dragged.origin + shift(), m_kept.dragged.topics);
    return;
  }
  NodeLayer layer(m_painter, m_context);
  layer.prepareCoverage();
  for (std::size_t k = m_kept.parts.nodes.size(); k-- > 0;) layer.collect(m_kept.parts.nodes[k]);
  for (std::size_t k = 0; k < layer.pieceCount(); ++k) layer.paintPiece(k);
}

QPoint MovingLayer::shift() const {
  const QPointF way = (m_context.scene.shown.nodeDragTranslation - m_kept.dragged.translation) * m_context.scale;
  return QPoint(static_cast<int>(std::lround(way.x())), static_cast<int>(std::lround(way.y())));
}

void MovingLayer::drawOnPixels(QPoint place, const QImage& picture) {
  const QTransform transform = m_painter.transform();
  m_painter.setTransform(m_context.toDevice.inverted() * transform);
  m_painter.drawImage(place, picture);
  m_painter.setTransform(transform);
}

void MovingLayer::preparePicture() {
  if (m_context.scene.isLanding) followDrop();
  if (isPictureKept()) return;
  const QRect around = viewPixels().adjusted(-pictureMargin, -pictureMargin, pictureMargin, pictureMargin);
  const QRectF whole = draggedPixels();
  const bool fits = std::max(whole.width(), whole.height()) <= maxPictureSide &&
                    whole.width() * whole.height() <= maxPictureViews * around.width() * around.height();
  renderPicture(fits ? whole.toAlignedRect() : around, fits);
}

bool MovingLayer::isPictureKept() const {
  const MapScene& scene = m_context.scene;
  const DraggedPicture& kept = m_kept.dragged;
  return !kept.topics.isNull() && kept.toDevice == m_context.toDevice &&
         kept.nodes.sharesStorageWith(scene.map.nodes) && kept.edges.sharesStorageWith(scene.map.edges) &&
         kept.opacityRule == scene.opacityRule && kept.isSelected == m_context.isSelected &&
         (kept.isHidden.sharesStorageWith(scene.hiddenNodes) || *kept.isHidden == *scene.hiddenNodes) &&
         (kept.isWhole || (std::max(std::abs(shift().x()), std::abs(shift().y())) <= pictureMargin &&
                           QRect(kept.origin + shift(), kept.topics.size()).contains(viewPixels())));
}

void MovingLayer::followDrop() {
  const SharedArray<Node>& nodes = m_context.scene.map.nodes;
  DraggedPicture& kept = m_kept.dragged;
  if (kept.topics.isNull() || kept.nodes.sharesStorageWith(nodes) || kept.nodes.size() != nodes.size()) return;
  const QPointF way = nodes[m_kept.parts.nodes.front()].position - kept.nodes[m_kept.parts.nodes.front()].position;
  const bool areTheSame = std::ranges::all_of(m_kept.parts.nodes, [&](std::size_t i) {
    Node moved = kept.nodes[i];
    const QPointF aside = nodes[i].position - moved.position - way;
    moved.position = nodes[i].position;
    return moved == nodes[i] && std::hypot(aside.x(), aside.y()) * m_context.scale < 0.01;
  });
  if (!areTheSame) return;
  kept.nodes = nodes;
  kept.translation -= way;
}

QRectF MovingLayer::draggedPixels() const {
  const SceneSketch& sketch = m_context.sketch;
  const double around = maxTopicSurroundings(m_context.zoom);
  double left = std::numeric_limits<double>::infinity();
  double top = left;
  double right = -left;
  double bottom = -left;
  for (const std::size_t i : m_kept.parts.nodes) {
    if (m_context.isHidden(i)) continue;
    const QPointF center = m_context.shownPosition(i);
    const double halfWidth =
        around + (sketch.isMeasured(i) ? double{sketch.nodes()[i].halfWidth} : sketch.maxHalfWidth());
    const double halfHeight =
        around + (sketch.isMeasured(i) ? double{sketch.nodes()[i].halfHeight} : sketch.boundHalfHeight(i));
    left = std::min(left, center.x() - halfWidth);
    right = std::max(right, center.x() + halfWidth);
    top = std::min(top, center.y() - halfHeight);
    bottom = std::max(bottom, center.y() + halfHeight);
  }
  return m_context.toDevice.mapRect(QRectF(QPointF(left, top), QPointF(right, bottom)));
}

void MovingLayer::renderPicture(const QRect& pixels, bool isWhole) {
  const MapScene& scene = m_context.scene;
  DraggedPicture& kept = m_kept.dragged;
  kept = {QImage(pixels.size(), QImage::Format_ARGB32_Premultiplied),
          QImage(),
          isWhole,
          pixels.topLeft(),
          scene.shown.nodeDragTranslation,
          m_context.toDevice,
          scene.map.nodes,
          scene.map.edges,
          m_context.isSelected,
          scene.hiddenNodes,
          scene.opacityRule};
  const QTransform toPicture = m_context.toDevice * QTransform::fromTranslate(-pixels.x(), -pixels.y());
  const QRectF seen = m_context.toDevice.inverted().mapRect(QRectF(pixels));
  PaintContext context{m_context};
  context.toDevice = context.toPicture = toPicture;
  context.exposed = seen;
  kept.topics.fill(Qt::transparent);
  QPainter painter(&kept.topics);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
  painter.setTransform(toPicture);
  NodeLayer layer(painter, context);
  layer.prepareCoverage();
  for (std::size_t k = m_kept.parts.nodes.size(); k-- > 0;) layer.collect(m_kept.parts.nodes[k]);
  for (std::size_t k = 0; k < layer.pieceCount(); ++k) layer.paintPiece(k);

  const std::vector<Preview> previews = previewsIn(seen, true);
  if (previews.size() < minPicturedPreviews) return;
  kept.previews = QImage(pixels.size(), QImage::Format_ARGB32_Premultiplied);
  paintPreviews(kept.previews, toPicture, previews);
}

}  // namespace quilmora
