#include "editor/edits/TopicEdits.h"

#include <algorithm>
#include <cmath>

#include "editor/edits/ConnectionEdits.h"
#include "model/FindById.h"
#include "model/NewId.h"

namespace quilmora::edits {

namespace {

constexpr double childDistance = 180.0;
constexpr double siblingStep = 60.0;
constexpr double occupiedRadius = 90.0;
constexpr int searchRounds = 20;

}  // namespace

Node newTopic(QPointF position, NodeStyle style) {
  Node node;
  node.id = newId();
  node.title = QStringLiteral("New Node");
  node.position = position;
  node.style = std::move(style);
  return node;
}

void addTopic(MindMap& map, Node node, const std::optional<QUuid>& parentID, const EdgeStyle& edgeStyle) {
  if (parentID) map.edges.append(newEdge(*parentID, node.id, edgeStyle));
  map.nodes.append(std::move(node));
}

QPointF freeSpot(const std::vector<QPointF>& taken, QPointF wanted, double direction, double step) {
  const double x = wanted.x();
  const double y = wanted.y();
  // Only topics near the candidates matter; one pass over flat positions finds them.
  const double reach = (searchRounds + 1) * std::abs(step) + occupiedRadius;
  std::vector<QPointF> near;
  for (const QPointF& position : taken)
    if (std::abs(position.x() - x) <= reach && std::abs(position.y() - y) <= reach) near.push_back(position);
  const auto isFree = [&near](QPointF point) {
    return std::none_of(near.begin(), near.end(), [point](QPointF other) {
      return std::hypot(other.x() - point.x(), other.y() - point.y()) < occupiedRadius;
    });
  };

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

QPointF childSpot(const MapIndex& index, const TreeInfo& tree, std::uint32_t parentOrdinal) {
  const QPointF parent = index.positions()[parentOrdinal];
  const std::uint32_t parentNumber = index.numberOfNode()[parentOrdinal];

  // A child grows away from the parent's own parent (by the first edge to it), and from a root to the right.
  double direction = 1.0;
  const auto& targets = index.edgeTo();
  const auto incoming = std::find(targets.begin(), targets.end(), parentNumber);
  if (incoming != targets.end()) {
    const std::uint32_t grandparent = index.nodeOfNumber()[index.edgeFrom()[incoming - targets.begin()]];
    if (grandparent != MapIndex::npos && index.positions()[grandparent].x() > parent.x()) direction = -1.0;
  }

  const auto childCount = static_cast<double>(tree.childNumbers(parentNumber).size());
  const double x = parent.x() + direction * childDistance;
  const double y = parent.y() + childCount * siblingStep - childCount * siblingStep * 0.5;
  return freeSpot(index.positions(), QPointF(x, y), direction, siblingStep);
}

void moveTopics(MindMap& map, const MapIndex& index, const IdSet& ids, QPointF translation) {
  std::uint32_t ordinal = 0;
  map.nodes.updateIf(
      [&](const Node& node) {
        const std::uint32_t here = ordinal++;
        return ids.contains(node.id) && index.find(node.id) == here;
      },
      [&](Node& node) { node.position += translation; });
}

void reparent(MindMap& map, const QUuid& nodeID, const QUuid& newParentID, const EdgeStyle& edgeStyle) {
  map.edges.eraseIf([&](const Edge& edge) { return edge.to == nodeID; });
  map.edges.append(newEdge(newParentID, nodeID, edgeStyle));
}

void removeRecords(MindMap& map, const IdSet& nodes, const IdSet& edges, const std::optional<QUuid>& region) {
  // The same result as removing one topic after the other, in one pass.
  const bool removesNodes = !nodes.empty();
  if (removesNodes) {
    map.nodes.eraseIf([&](const Node& node) { return nodes.contains(node.id); });
    map.relationships.eraseIf(
        [&](const Relationship& link) { return nodes.contains(link.from) || nodes.contains(link.to); });
  }
  map.edges.eraseIf([&](const Edge& edge) {
    return edges.contains(edge.id) || (removesNodes && (nodes.contains(edge.from) || nodes.contains(edge.to)));
  });
  if (region) eraseByID(map.regions, *region);
}

}  // namespace quilmora::edits
