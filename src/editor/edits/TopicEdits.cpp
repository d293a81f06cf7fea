#include "editor/edits/TopicEdits.h"

#include <algorithm>
#include <cmath>

#include "editor/edits/ConnectionEdits.h"
#include "editor/edits/Finding.h"
#include "model/FindById.h"
#include "model/NewId.h"

namespace quilmora::edits {

namespace {

constexpr double childDistance = 180.0;
constexpr double siblingStep = 60.0;
constexpr double occupiedRadius = 90.0;
constexpr int searchRounds = 20;

static_assert(occupiedRadius <= PositionGrid::reach);

// The ordinals of the edges with these ids and of those that touch one of the topics, ascending.
std::vector<std::size_t> edgesOf(const MapIndex& index, const IdSet& nodes, const IdSet& edges) {
  std::vector<std::size_t> ordinals;
  const auto add = [&](const std::vector<std::size_t>& more) {
    ordinals.insert(ordinals.end(), more.begin(), more.end());
  };
  // A few ids are searched one by one faster than marked.
  constexpr std::size_t few = 8;
  if (edges.size() <= few)
    for (const QUuid& id : edges) add(index.edgesWithId(id));
  else
    add(index.edgesWithIds(edges));
  if (nodes.size() <= few) {
    for (const QUuid& id : nodes)
      if (const std::uint32_t number = index.ids()->find(id); number != MapIndex::npos)
        add(index.edgesTouching(number));
  } else {
    std::vector<char> isGone(index.numberCount(), 0);
    index.ids()->visitNumbers(nodes, [&](std::uint32_t number) {
      if (number < isGone.size()) isGone[number] = 1;
    });
    auto to = index.edgeTo().begin();
    std::size_t ordinal = 0;
    for (const std::uint32_t from : index.edgeFrom()) {
      if (isGone[from] || isGone[*to]) ordinals.push_back(ordinal);
      ++to;
      ++ordinal;
    }
  }
  std::ranges::sort(ordinals);
  ordinals.erase(std::unique(ordinals.begin(), ordinals.end()), ordinals.end());
  return ordinals;
}

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

QPointF freeSpot(const PositionGrid& taken, QPointF wanted, double direction, double step) {
  const double x = wanted.x();
  const double y = wanted.y();
  // Topics beyond all candidates count for nothing, even where steps are no numbers.
  const double reach = (searchRounds + 1) * std::abs(step) + occupiedRadius;
  const auto isFree = [&](QPointF point) {
    return !taken.hasNear(point, [&](QPointF other) {
      return std::abs(other.x() - x) <= reach && std::abs(other.y() - y) <= reach &&
             std::hypot(other.x() - point.x(), other.y() - point.y()) < occupiedRadius;
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

QPointF childSpot(const MapIndex& index, const TreeInfo& tree, const PositionGrid& taken, std::uint32_t parentOrdinal) {
  const QPointF parent = index.positions()[parentOrdinal];
  const std::uint32_t parentNumber = index.numberOfNode()[parentOrdinal];

  // A child grows away from the parent's own parent (by the first edge to it), and from a root to the right.
  double direction = 1.0;
  if (const std::uint32_t edges = tree.edgesTo(parentNumber); edges > 0) {
    const std::uint32_t above =
        edges == 1 ? tree.parentNumber(parentNumber) : index.edgeFrom()[index.edgesLeadingTo(parentNumber).front()];
    const std::uint32_t grandparent = index.nodeOfNumber()[above];
    if (grandparent != MapIndex::npos && index.positions()[grandparent].x() > parent.x()) direction = -1.0;
  }

  const auto childCount = static_cast<double>(tree.childNumbers(parentNumber).size());
  const double x = parent.x() + direction * childDistance;
  const double y = parent.y() + childCount * siblingStep - childCount * siblingStep * 0.5;
  return freeSpot(taken, QPointF(x, y), direction, siblingStep);
}

void moveTopics(MindMap& map, const std::vector<std::uint32_t>& ordinals, QPointF translation) {
  for (const std::uint32_t ordinal : ordinals)
    map.nodes.update(ordinal, [&](Node& node) { node.position += translation; });
}

void reparent(MindMap& map, const MapIndex& index, const QUuid& nodeID, const QUuid& newParentID,
              const EdgeStyle& edgeStyle) {
  if (const std::uint32_t number = index.ids()->find(nodeID); number != MapIndex::npos)
    map.edges.eraseAt(index.edgesLeadingTo(number));
  map.edges.append(newEdge(newParentID, nodeID, edgeStyle));
}

void removeRecords(MindMap& map, const MapIndex& index, const IdSet& nodes, const IdSet& edges,
                   const std::optional<QUuid>& region) {
  // The same result as removing one topic after the other, without reading the records that stay.
  map.edges.eraseAt(edgesOf(index, nodes, edges));
  if (!nodes.empty()) {
    if (index.hasTwins()) {
      map.nodes.eraseIf([&](const Node& node) { return nodes.contains(node.id); });
    } else {
      const std::vector<std::uint32_t> ordinals = ordinalsOf(index, nodes);
      map.nodes.eraseAt({ordinals.begin(), ordinals.end()});
    }
    map.relationships.eraseIf(
        [&](const Relationship& link) { return nodes.contains(link.from) || nodes.contains(link.to); });
  }
  if (region) eraseByID(map.regions, *region);
}

}  // namespace quilmora::edits
