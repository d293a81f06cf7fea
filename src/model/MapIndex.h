#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "model/IdTable.h"
#include "model/MindMap.h"
#include "model/SharedValue.h"

namespace quilmora {

// Flat arrays over a map's topics and edges, for code that walks the map: ids become dense numbers, including those
// that only an edge names. update() examines only the blocks that changed since the last call. Copies share the arrays
// until one of them is updated.
class MapIndex {
 public:
  static constexpr std::uint32_t npos = IdTable::npos;

  // What an update found changed. Structure means ids of topics or ends of edges, not titles, styles or positions.
  struct Change {
    bool structure = false;
    bool positions = false;
  };

  MapIndex() : m_ids(std::make_shared<IdTable>()) {}
  MapIndex(const SharedArray<Node>& nodes, const SharedArray<Edge>& edges) : MapIndex() { update(nodes, edges); }

  Change update(const SharedArray<Node>& nodes, const SharedArray<Edge>& edges);

  // Takes arrays that differ from the last ones only in texts and styles, without examining them.
  void adopt(const SharedArray<Node>& nodes, const SharedArray<Edge>& edges) {
    m_nodes = nodes;
    m_edges = edges;
  }
  // The same for topics that were also moved; `positions` are the new ones, by ordinal in `nodes`.
  void adopt(const SharedArray<Node>& nodes, std::vector<QPointF> positions) {
    m_nodes = nodes;
    m_positions = SharedValue(std::move(positions));
  }

  // Shared with whoever keeps it. Later updates only add to it, so that numbers stay valid; code with arrays by number
  // treats a higher number as unknown.
  const std::shared_ptr<IdTable>& ids() const { return m_ids; }
  // How many numbers this index knows; the shared ids may hold more, added by later updates of a copy.
  std::uint32_t numberCount() const { return static_cast<std::uint32_t>(m_nodeOfNumber->size()); }
  // Whether the other index is known to hold the same arrays, without comparing them.
  bool sharesStorageWith(const MapIndex& other) const {
    return m_ids == other.m_ids && m_positions.sharesStorageWith(other.m_positions) &&
           m_numberOfNode.sharesStorageWith(other.m_numberOfNode) &&
           m_nodeOfNumber.sharesStorageWith(other.m_nodeOfNumber) && m_edgeFrom.sharesStorageWith(other.m_edgeFrom) &&
           m_edgeTo.sharesStorageWith(other.m_edgeTo);
  }

  // By ordinal in `nodes`.
  const std::vector<std::uint32_t>& numberOfNode() const { return *m_numberOfNode; }
  const std::vector<QPointF>& positions() const { return *m_positions; }

  // By number: the last ordinal in `nodes` with this id, or npos if the id names no topic.
  const std::vector<std::uint32_t>& nodeOfNumber() const { return *m_nodeOfNumber; }

  // By ordinal in `edges`: the number of each end.
  const std::vector<std::uint32_t>& edgeFrom() const { return *m_edgeFrom; }
  const std::vector<std::uint32_t>& edgeTo() const { return *m_edgeTo; }

  // The ordinal of the topic in `nodes`, or npos.
  std::uint32_t find(const QUuid& id) const;

 private:
  bool updateNodes(const SharedArray<Node>& nodes, bool& positionsChanged);
  bool updateEdges(const SharedArray<Edge>& edges);
  std::uint32_t numberOf(const QUuid& id, std::uint32_t likely);
  // Renumbers the topics from this ordinal on; 0 starts afresh.
  void renumber(std::size_t first);

  SharedArray<Node> m_nodes;
  SharedArray<Edge> m_edges;
  std::shared_ptr<IdTable> m_ids;
  SharedValue<std::vector<std::uint32_t>> m_numberOfNode;
  SharedValue<std::vector<QPointF>> m_positions;
  SharedValue<std::vector<std::uint32_t>> m_nodeOfNumber;
  SharedValue<std::vector<std::uint32_t>> m_edgeFrom;
  SharedValue<std::vector<std::uint32_t>> m_edgeTo;
};

// Children of every number in the order of the edges, in one flat list.
struct ChildTable {
  std::vector<std::uint32_t> start;    // by number, with one extra entry at the end
  std::vector<std::uint32_t> numbers;  // children, grouped by parent
  std::vector<char> isTarget;          // by number: whether an edge leads to it

  explicit ChildTable(const MapIndex& index);
  std::uint32_t childCount(std::uint32_t number) const { return start[number + 1] - start[number]; }
};

}  // namespace quilmora
