#pragma once

#include <gtest/gtest.h>

#include "editor/edits/PositionGrid.h"
#include "model/IdSet.h"
#include "model/TreeInfo.h"
#include "support/QtPrinters.h"
#include "support/SmallMap.h"

namespace quilmora::test {

// A map with what is derived from it, without an editor.
struct EditsRig {
  explicit EditsRig(MindMap start)
      : map(std::move(start)), index(map.nodes, map.edges), tree(index), grid(index.positions()) {}

  std::uint32_t ordinal(int number) const { return index.find(topicId(number)); }

  MindMap map;
  MapIndex index;
  TreeInfo tree;
  edits::PositionGrid grid;
};

inline IdSet ids(std::initializer_list<int> numbers) {
  IdSet set;
  for (const int number : numbers) set.insert(topicId(number));
  return set;
}

// Ends of all edges by topic id, in order.
inline std::vector<std::pair<QUuid, QUuid>> endsOf(const MindMap& map) {
  std::vector<std::pair<QUuid, QUuid>> ends;
  for (const Edge& edge : map.edges) ends.emplace_back(edge.from, edge.to);
  return ends;
}

}  // namespace quilmora::test
