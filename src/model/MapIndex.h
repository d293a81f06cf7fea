#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "model/ArrayChanges.h"
#include "model/IdSet.h"
#include "model/IdTable.h"
#include "model/MindMap.h"
#include "model/PagedArray.h"

namespace quilmora {

// Flat arrays over a map's topics and edges, for code that walks the map: ids become dense numbers, including those
// that only an edge names. update() examines only the blocks that changed since the last call, and writes only what
// differs; after a removal it moves what follows. Copies share the arrays until one of them is updated.
class MapIndex {
 public:
  static constexpr std::uint32_t npos = IdTable::npos;

  // An edge, by the numbers of its ends.
  struct Link {
    std::uint32_t from;
    std::uint32_t to;
    bool operator==(const Link&) const = default;
  };
  // Edges in a row that others took the place of; `start` is their ordinal once the runs before have been replaced.
  struct LinkRun {
    std::size_t start;
    bool isAtEnd;  // no edge follows
    std::vector<Link> before;
    std::vector<Link> now;
  };
  // What an update found changed. Structure means ids of topics or ends of edges, not titles, styles or positions.
  struct Change {
    bool structure = false;
    bool positions = false;
    // Only if the change is small are the following lists complete, and only then is it certain that the topics which
    // stay have kept their order and that no two topics have the same id.
    bool isSmall = true;
    std::vector<std::uint32_t> topics;  // numbers that became or ceased to be a topic's
    std::vector<LinkRun> links;
    std::vector<QPointF> left;  // positions that topics left,
    std::vector<QPointF> came;  // and those that they came to
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
  void adopt(const SharedArray<Node>& nodes, const std::vector<QPointF>& positions) {
    m_nodes = nodes;
    m_positions = PagedArray(positions);
  }

  // Shared with whoever keeps it. Later updates only add to it, so that numbers stay valid; code with arrays by number
  // treats a higher number as unknown.
  const std::shared_ptr<IdTable>& ids() const { return m_ids; }
  // How many numbers this index knows; the shared ids may hold more, added by later updates of a copy.
  std::uint32_t numberCount() const { return static_cast<std::uint32_t>(m_nodeOfNumber.size()); }
  // Whether the other index is known to hold the same arrays, without comparing them.
  bool sharesStorageWith(const MapIndex& other) const {
    return m_ids == other.m_ids && m_positions.sharesStorageWith(other.m_positions) &&
           m_numberOfNode.sharesStorageWith(other.m_numberOfNode) &&
           m_nodeOfNumber.sharesStorageWith(other.m_nodeOfNumber) && m_edgeFrom.sharesStorageWith(other.m_edgeFrom) &&
           m_edgeTo.sharesStorageWith(other.m_edgeTo);
  }

  // By ordinal in `nodes`.
  const PagedArray<std::uint32_t>& numberOfNode() const { return m_numberOfNode; }
  const PagedArray<QPointF>& positions() const { return m_positions; }

  // By number: the last ordinal in `nodes` with this id, or npos if the id names no topic.
  const PagedArray<std::uint32_t>& nodeOfNumber() const { return m_nodeOfNumber; }

  // By ordinal in `edges`: the number of each end.
  const PagedArray<std::uint32_t>& edgeFrom() const { return m_edgeFrom; }
  const PagedArray<std::uint32_t>& edgeTo() const { return m_edgeTo; }

  // The ordinals in `edges` of those with this id, ascending.
  std::vector<std::size_t> edgesWithId(const QUuid& id) const;
  std::vector<std::size_t> edgesWithIds(const IdSet& ids) const;
  // The ordinals of the edges that lead to a number, or that touch it at either end, ascending.
  std::vector<std::size_t> edgesLeadingTo(std::uint32_t number) const;
  std::vector<std::size_t> edgesTouching(std::uint32_t number) const;

  // Whether several topics have one id; the last of them is the one that is found.
  bool hasTwins() const { return m_hasTwins; }
  // The ordinal of the topic in `nodes`, or npos.
  std::uint32_t find(const QUuid& id) const;

 private:
  void updateNodes(const SharedArray<Node>& nodes, Change& change);
  void updateEdges(const SharedArray<Edge>& edges, Change& change);
  void noteLinks(const std::vector<ArrayChange>& runs, const std::vector<std::uint32_t>& from,
                 const std::vector<std::uint32_t>& to, Change& change) const;
  std::uint32_t numberOf(const QUuid& id, std::uint32_t likely);
  // Gives the numbers of changed runs of topics their ordinals, and moves those of the topics after them. False if
  // several topics have one id.
  bool renumberRuns(const std::vector<ArrayChange>& runs, const std::vector<std::uint32_t>& before,
                    const std::vector<std::uint32_t>& now);
  void renumberAll();

  SharedArray<Node> m_nodes;
  SharedArray<Edge> m_edges;
  std::shared_ptr<IdTable> m_ids;
  bool m_hasTwins = false;  // several topics have one id
  PagedArray<std::uint32_t> m_numberOfNode;
  PagedArray<QPointF> m_positions;
  PagedArray<std::uint32_t> m_nodeOfNumber;
  PagedArray<std::uint32_t> m_edgeFrom;
  PagedArray<std::uint32_t> m_edgeTo;
  PagedArray<std::uint32_t> m_edgeKeys;  // by ordinal: some bits of the id, so that a search reads few records
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
