#include <algorithm>
#include <cmath>

#include <QBuffer>

#include "editor/MindMapViewModel.h"

namespace quilmora {

namespace {

constexpr double childDistance = 180.0;
constexpr double siblingStep = 60.0;
constexpr double occupiedRadius = 90.0;
constexpr int searchRounds = 20;
constexpr double minMoveLength = 3.0;
constexpr int maxImageSide = 400;

Node makeNode(QPointF position, NodeStyle style) {
  Node node;
  node.id = QUuid::createUuid();
  node.title = QStringLiteral("New Node");
  node.position = position;
  node.style = std::move(style);
  return node;
}

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
  const std::uint32_t position = mapIndex().find(id);
  edit([&](MindMap& map) {
    if (position == MapIndex::npos) return;
    map.nodes.update(position, change);
    map.updatedAt = m_services.clock.now();
  });
}

void MindMapViewModel::addNode(Node node, const std::optional<QUuid>& parentID) {
  const QUuid id = node.id;
  edit([&](MindMap& map) {
    map.nodes.append(std::move(node));
    if (parentID) map.edges.append(Edge{QUuid::createUuid(), *parentID, id, QString(), newEdgeStyle(), std::nullopt});
    map.updatedAt = m_services.clock.now();
  });
  setSelectedNodeIDs({id});
}

void MindMapViewModel::createFreeNode(double x, double y) {
  captureSnapshot(false);
  addNode(makeNode(QPointF(x, y), styleForDepth(0)), std::nullopt);
}

void MindMapViewModel::createChild(const QUuid& parentID) {
  const MapIndex& index = mapIndex();
  const std::uint32_t parentPosition = index.find(parentID);
  if (parentPosition == MapIndex::npos) return;
  captureSnapshot(false);
  const TreeInfo& tree = treeInfo();
  const QPointF parent = index.positions()[parentPosition];

  // A child grows away from the parent's own parent, as the first edge to it tells, and from a root to the right.
  double direction = 1.0;
  const auto& targets = index.edgeTo();
  const auto incoming = std::find(targets.begin(), targets.end(), tree.number(parentID));
  if (incoming != targets.end()) {
    const std::uint32_t grandparent = index.nodeOfNumber()[index.edgeFrom()[incoming - targets.begin()]];
    if (grandparent != MapIndex::npos && index.positions()[grandparent].x() > parent.x()) direction = -1.0;
  }

  const auto childCount = static_cast<double>(tree.childCount(parentID));
  const double x = parent.x() + direction * childDistance;
  const double y = parent.y() + childCount * siblingStep - childCount * siblingStep * 0.5;
  const QPointF position = findFreeSpot(x, y, direction, siblingStep);
  addNode(makeNode(position, styleForDepth(tree.depth(parentID).value_or(0) + 1)), parentID);
}

void MindMapViewModel::createChildAt(const QUuid& parentID, double x, double y) {
  if (!hasNode(parentID)) return;
  captureSnapshot(false);
  addNode(makeNode(QPointF(x, y), styleForDepth(treeInfo().depth(parentID).value_or(0) + 1)), parentID);
}

QPointF MindMapViewModel::findFreeSpot(double x, double y, double direction, double step) {
  // Only topics near the candidates matter; one pass over flat positions finds them.
  const double reach = (searchRounds + 1) * std::abs(step) + occupiedRadius;
  std::vector<QPointF> near;
  for (const QPointF& position : mapIndex().positions())
    if (std::abs(position.x() - x) <= reach && std::abs(position.y() - y) <= reach) near.push_back(position);
  const auto isFree = [&near](QPointF point) {
    return std::none_of(near.begin(), near.end(), [point](QPointF other) {
      return std::hypot(other.x() - point.x(), other.y() - point.y()) < occupiedRadius;
    });
  };

  const QPointF wanted(x, y);
  if (isFree(wanted)) return wanted;
  if (const QPointF below(x, y + step); isFree(below)) return below;
  for (int k = 1; k <= searchRounds; ++k) {
    if (const QPointF above(x, y - k * step); isFree(above)) return above;
    if (const QPointF outward(x + k * direction * step, y); isFree(outward)) return outward;
    if (k == searchRounds) break;
    if (const QPointF below(x, y + (k + 1) * step); isFree(below)) return below;
  }
  return wanted;
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
  // An id that outlived its topic moves nothing, and a snapshot belongs to a move.
  std::vector<QUuid> moved;
  for (const QUuid& id : m_selectedNodeIDs)
    if (hasNode(id)) moved.push_back(id);

  // Each topic makes a snapshot of its own, of which the history keeps the last ones: those before need not be taken.
  if (moved.size() > maxHistorySize) {
    const std::size_t unseen = moved.size() - maxHistorySize;
    IdSet first;
    for (std::size_t i = 0; i < unseen; ++i) first.insert(moved[i]);
    const MapIndex& index = mapIndex();
    std::uint32_t position = 0;
    edit([&](MindMap& map) {
      map.nodes.updateIf(
          [&](const Node& node) {
            const std::uint32_t here = position++;
            return first.contains(node.id) && index.find(node.id) == here;
          },
          [&](Node& node) { node.position += translation; });
      map.updatedAt = m_services.clock.now();
    });
    moved.erase(moved.begin(), moved.begin() + unseen);
  }
  for (const QUuid& id : moved) {
    captureSnapshot(false);
    editNode(id, [&](Node& node) { node.position += translation; });
  }
}

void MindMapViewModel::reparentNode(const QUuid& nodeID, const QUuid& newParentID) {
  if (nodeID == newParentID) return;
  if (isDescendant(newParentID, nodeID)) return;
  if (std::ranges::any_of(treeInfo().children(newParentID), [&](const QUuid& child) { return child == nodeID; }))
    return;
  captureSnapshot(false);
  edit([&](MindMap& map) {
    map.edges.eraseIf([&](const Edge& edge) { return edge.to == nodeID; });
    map.edges.append(Edge{QUuid::createUuid(), newParentID, nodeID, QString(), newEdgeStyle(), std::nullopt});
    map.updatedAt = m_services.clock.now();
  });
}

void MindMapViewModel::deleteNode(const QUuid& id) {
  captureSnapshot(false);
  edit([&](MindMap& map) { map.removeNode(id, m_services.clock.now()); });
  IdSet selected = m_selectedNodeIDs;
  selected.remove(id);
  setSelectedNodeIDs(std::move(selected));
}

void MindMapViewModel::deleteSelection() {
  if (m_selectedNodeIDs.empty() && m_selectedEdgeIDs.empty() && !m_selectedRegionID) return;
  captureSnapshot(false);
  edit([&](MindMap& map) {
    // What removing one topic after the other gives, in one pass.
    const IdSet& nodes = m_selectedNodeIDs;
    const IdSet& edges = m_selectedEdgeIDs;
    const bool removesNodes = !nodes.empty();
    if (removesNodes) {
      map.nodes.eraseIf([&](const Node& node) { return nodes.contains(node.id); });
      map.relationships.eraseIf(
          [&](const Relationship& link) { return nodes.contains(link.from) || nodes.contains(link.to); });
    }
    map.edges.eraseIf([&](const Edge& edge) {
      return edges.contains(edge.id) || (removesNodes && (nodes.contains(edge.from) || nodes.contains(edge.to)));
    });
    if (m_selectedRegionID) map.regions.eraseIf([&](const Region& region) { return region.id == *m_selectedRegionID; });
    if (removesNodes || !edges.empty()) map.updatedAt = m_services.clock.now();
  });
  if (m_selectedRegionID) setSelectedRegionID(std::nullopt);
  setSelectedNodeIDs({});
  setSelectedEdgeIDs({});
}

void MindMapViewModel::toggleCollapsed(const QUuid& id) {
  IdSet collapsed = m_collapsedNodeIDs;
  if (!collapsed.remove(id)) collapsed.insert(id);
  setCollapsedNodeIDs(std::move(collapsed));
}

}  // namespace quilmora
