#include <algorithm>
#include <cmath>

#include <QBuffer>

#include "editor/MindMapViewModel.h"
#include "editor/edits/Hierarchy.h"
#include "editor/edits/TopicEdits.h"

namespace quilmora {

namespace {

constexpr double minMoveLength = 3.0;
constexpr int maxImageSide = 400;

QString toBase64Png(const QImage& image) {
  if (image.isNull()) return {};
  QImage scaled = image;
  if (std::max(image.width(), image.height()) > maxImageSide)
    scaled = image.scaled(maxImageSide, maxImageSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  QByteArray png;
  QBuffer buffer(&png);
  if (!buffer.open(QIODevice::WriteOnly) || !scaled.save(&buffer, "PNG")) return {};
  return QString::fromLatin1(png.toBase64());
}

}  // namespace

void MindMapViewModel::editNode(const QUuid& id, const std::function<void(Node&)>& change) {
  const std::uint32_t ordinal = mapIndex().find(id);
  edit([&](MindMap& map) {
    if (ordinal == MapIndex::npos) return;
    map.nodes.update(ordinal, change);
    stamp(map);
  });
}

void MindMapViewModel::addNode(Node node, const std::optional<QUuid>& parentID) {
  const QUuid id = node.id;
  stampedEdit([&](MindMap& map) { edits::addTopic(map, std::move(node), parentID, newEdgeStyle()); });
  setSelectedNodeIDs({id});
}

void MindMapViewModel::createFreeNode(double x, double y) {
  captureSnapshot(false);
  addNode(edits::newTopic(QPointF(x, y), styleForDepth(0)), std::nullopt);
}

void MindMapViewModel::createChild(const QUuid& parentID) {
  const std::uint32_t parent = mapIndex().find(parentID);
  if (parent == MapIndex::npos) return;
  captureSnapshot(false);
  const QPointF spot = edits::childSpot(mapIndex(), treeInfo(), positionGrid(), parent);
  addNode(edits::newTopic(spot, styleForDepth(treeInfo().depth(parentID).value_or(0) + 1)), parentID);
}

void MindMapViewModel::createChildAt(const QUuid& parentID, double x, double y) {
  if (!hasNode(parentID)) return;
  captureSnapshot(false);
  addNode(edits::newTopic(QPointF(x, y), styleForDepth(treeInfo().depth(parentID).value_or(0) + 1)), parentID);
}

QPointF MindMapViewModel::findFreeSpot(double x, double y, double direction, double step) {
  return edits::freeSpot(positionGrid(), QPointF(x, y), direction, step);
}

void MindMapViewModel::setNodeTitle(const QUuid& id, const QString& text) {
  captureSnapshot(true);
  editNode(id, [&](Node& node) { node.title = text; });
  setIsEditingInline(false);
}

void MindMapViewModel::setNodeNotes(const QUuid& id, const QString& text) {
  captureSnapshot(true);
  editNode(id, [&](Node& node) { node.notes = text; });
}

void MindMapViewModel::setNodeBadge(const QUuid& id, std::optional<Badge> badge) {
  captureSnapshot(false);
  editNode(id, [&](Node& node) { node.badge = badge; });
}

void MindMapViewModel::setNodeImage(const QUuid& id, const QImage& image) {
  captureSnapshot(false);
  const QString data = toBase64Png(image);
  if (data.isEmpty()) return;
  editNode(id, [&](Node& node) { node.imageData = data; });
}

void MindMapViewModel::clearNodeImage(const QUuid& id) {
  captureSnapshot(false);
  editNode(id, [](Node& node) { node.imageData.reset(); });
}

void MindMapViewModel::moveSelectedNodes(QPointF translation) {
  if (!(std::hypot(translation.x(), translation.y()) > minMoveLength)) return;
  // An id without a topic moves nothing, and only a move takes a snapshot.
  std::vector<std::uint32_t> moved;
  const MapIndex& index = mapIndex();
  index.ids()->visitNumbers(selectedNodeIDs(), [&](std::uint32_t number) {
    const std::uint32_t ordinal = number < index.numberCount() ? index.nodeOfNumber()[number] : MapIndex::npos;
    if (ordinal != MapIndex::npos) moved.push_back(ordinal);
  });

  // Each topic takes a snapshot of its own, of which the history keeps the last ones: earlier ones need not be taken.
  if (moved.size() > maxHistorySize) {
    const auto seen = moved.end() - maxHistorySize;
    moveUnseen({moved.begin(), seen}, translation);
    moved.erase(moved.begin(), seen);
  }
  for (const std::uint32_t ordinal : moved) {
    captureSnapshot(false);
    stampedEdit([&](MindMap& map) { edits::moveTopics(map, {ordinal}, translation); });
  }
}

void MindMapViewModel::moveUnseen(const std::vector<std::uint32_t>& ordinals, QPointF translation) {
  if (ordinals.size() < mindMap().nodes.size() / 2) {
    stampedEdit([&](MindMap& map) { edits::moveTopics(map, ordinals, translation); });
    return;
  }
  // Where most topics move, the index need not look for those that did.
  std::vector<QPointF> positions = mapIndex().positions().toVector();
  for (const std::uint32_t ordinal : ordinals) positions[ordinal] += translation;
  rearrange(positions, [this](MindMap& map) { stamp(map); });
}

void MindMapViewModel::reparentNode(const QUuid& nodeID, const QUuid& newParentID) {
  if (!edits::canReparent(treeInfo(), nodeID, newParentID)) return;
  captureSnapshot(false);
  const MapIndex& index = mapIndex();
  stampedEdit([&](MindMap& map) { edits::reparent(map, index, nodeID, newParentID, newEdgeStyle()); });
}

void MindMapViewModel::deleteNode(const QUuid& id) {
  captureSnapshot(false);
  const MapIndex& index = mapIndex();
  stampedEdit([&](MindMap& map) { edits::removeRecords(map, index, {id}, {}, std::nullopt); });
  IdSet selected = selectedNodeIDs();
  selected.remove(id);
  setSelectedNodeIDs(std::move(selected));
}

void MindMapViewModel::deleteSelection() {
  const IdSet& nodes = selectedNodeIDs();
  const IdSet& edges = selectedEdgeIDs();
  if (nodes.empty() && edges.empty() && !selectedRegionID()) return;
  captureSnapshot(false);
  const MapIndex& index = mapIndex();
  edit([&](MindMap& map) {
    edits::removeRecords(map, index, nodes, edges, selectedRegionID());
    // Removing only a region leaves the date alone.
    if (!nodes.empty() || !edges.empty()) stamp(map);
  });
  if (selectedRegionID()) setSelectedRegionID(std::nullopt);
  setSelectedNodeIDs({});
  setSelectedEdgeIDs({});
}

}  // namespace quilmora
