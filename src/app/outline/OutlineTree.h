#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "app/outline/OutlineFolds.h"
#include "model/MapIndex.h"
#include "model/TreeInfo.h"

namespace quilmora {

// One row of an outline: a topic below one of its parents.
struct OutlineNodeRow {
  std::uint32_t number = 0;  // of the topic in the map's index
  std::uint32_t depth = 0;
  bool isExpanded = true;

  bool operator==(const OutlineNodeRow&) const = default;
};

// The structure from which the rows are made, at one moment. Everything is by the numbers of the map's index.
class OutlineTree {
 public:
  OutlineTree() = default;
  // Shares what stayed the same with the previous tree.
  OutlineTree(const TreeInfo& tree, const MapIndex& index, const OutlineTree& before);

  std::span<const std::uint32_t> roots() const { return m_roots; }
  std::span<const std::uint32_t> children(std::uint32_t number) const { return m_tree.childNumbers(number); }
  // False for ids that name no topic, although edges use them.
  bool isTopic(std::uint32_t number) const { return ordinal(number) != MapIndex::npos; }
  // The ordinal of the topic in the map's nodes, or npos.
  std::uint32_t ordinal(std::uint32_t number) const;
  bool hasRepeatedIds() const;
  const QUuid& idOf(std::uint32_t number) const { return m_tree.idOf(number); }
  const TreeInfo& tree() const { return m_tree; }
  const MapIndex& index() const { return m_index; }

  // Whether the numbers of both mean the same ids.
  bool sharesNumbersWith(const OutlineTree& other) const { return m_index.ids() == other.m_index.ids(); }
  // Whether both are known to have the same topics and edges, without comparing them; may be false although they do.
  bool sharesStructureWith(const OutlineTree& other) const;
  // By number: whether the topics directly below it differ between the two, including their order.
  std::vector<char> changesFrom(const OutlineTree& before) const;

 private:
  TreeInfo m_tree;
  MapIndex m_index;
  std::vector<std::uint32_t> m_roots;
};

// Walks the rows from top to bottom. Never recurses, and stops at a topic that is its own ancestor.
class OutlineWalk {
 public:
  using Numbers = std::span<const std::uint32_t>;

  // Both must outlive it.
  OutlineWalk(const OutlineTree& tree, const OutlineFolds& folds);

  // The ancestors of the rows that follow, from the root down, and the place of the last one.
  void setPath(const std::vector<std::uint32_t>& path, OutlineFolds::Place place);
  // Which of these topics have a row below the path: not those that are ancestors, nor ids that name no topic.
  std::vector<std::uint32_t> shown(Numbers siblings) const;
  // The rows of siblings[first, last) with everything visible below them, but not many more than `limit`.
  std::vector<OutlineNodeRow> rows(Numbers siblings, std::size_t first, std::size_t last, std::size_t limit);
  // Whether the last call left rows out.
  bool wasCut() const { return m_wasCut; }

 private:
  OutlineFolds::Place placeOf(OutlineFolds::Place above, Numbers siblings, std::size_t position) const;

  const OutlineTree& m_tree;
  const OutlineFolds& m_folds;
  std::vector<std::uint32_t> m_path;
  std::vector<char> m_isAbove;  // by number
  OutlineFolds::Place m_place = OutlineFolds::top;
  bool m_wasCut = false;
};

}  // namespace quilmora
