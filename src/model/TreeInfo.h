#pragma once

#include <memory>
#include <optional>
#include <ranges>
#include <span>
#include <vector>

#include <QUuid>

#include "model/ChildLists.h"
#include "model/MapIndex.h"

namespace quilmora {

// The tree that a map's edges describe: an immutable value, cheap to copy. Ids that only an edge names have children
// and a depth too; callers look topics up and skip the others.
class TreeInfo {
 public:
  static constexpr std::uint32_t npos = IdTable::npos;

  TreeInfo();
  explicit TreeInfo(const MapIndex& index);

  // The tree after a change that `index` has taken in, at the cost of what the change touches: the children lists of
  // the parents concerned, and the topics whose depth is another one. Nothing where only a tree built anew can tell:
  // after a large change, or where topics with several parents or a new cycle are concerned.
  std::optional<TreeInfo> followed(const MapIndex& index, const MapIndex::Change& change) const;

  // Distance from the nearest root; 0 for roots and for topics that no root reaches. Nothing for an unknown id.
  std::optional<int> depth(const QUuid& id) const;
  // By the last edge that leads to the id.
  std::optional<QUuid> parent(const QUuid& id) const;
  // In the order of the edges; empty for an unknown id.
  auto children(const QUuid& id) const {
    return childNumbers(number(id)) |
           std::views::transform([ids = m_data->ids.get()](std::uint32_t child) { return (*ids)[child]; });
  }
  std::size_t childCount(const QUuid& id) const { return childNumbers(number(id)).size(); }
  // Topics that no edge leads to, in the order of the map's topics.
  const std::vector<QUuid>& roots() const { return *m_data->roots; }
  // The greatest depth reached from a root.
  int maxDepth() const { return m_data->maxDepth; }

  // The same by the numbers of the index that the tree was built from; npos if there is none.
  std::uint32_t number(const QUuid& id) const { return m_data->ids->find(id); }
  std::uint32_t numberCount() const { return static_cast<std::uint32_t>(m_data->depths.size()); }
  const QUuid& idOf(std::uint32_t number) const { return (*m_data->ids)[number]; }
  std::span<const std::uint32_t> childNumbers(std::uint32_t number) const;
  std::uint32_t parentNumber(std::uint32_t number) const { return m_data->parents[number]; }
  // -1 if the id has no depth.
  int depthOfNumber(std::uint32_t number) const {
    const int depth = m_data->depths[number];
    return depth == unreached ? 0 : depth;
  }
  // How many edges lead to it.
  std::uint32_t edgesTo(std::uint32_t number) const { return m_data->edgesTo[number]; }

 private:
  friend class TreeChange;

  // What a number without a distance from a root has for one: nothing if it is no topic, and a topic its own mark.
  static constexpr int none = -1;
  static constexpr int unreached = -2;

  // By number, where nothing else is said.
  struct Data {
    std::shared_ptr<const IdTable> ids;
    ChildLists children;
    PagedArray<std::uint32_t> parents;
    PagedArray<std::uint32_t> edgesTo;
    PagedArray<int> depths;
    PagedArray<std::uint32_t> countOfDepth;  // by depth, from 1 on: how many numbers have it
    std::shared_ptr<const std::vector<QUuid>> roots;
    int maxDepth = 0;
  };

  explicit TreeInfo(std::shared_ptr<const Data> data) : m_data(std::move(data)) {}

  std::shared_ptr<const Data> m_data;
};

}  // namespace quilmora
