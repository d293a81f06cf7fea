#pragma once

#include "support/SmallMap.h"

namespace quilmora::test {

inline MindMap mapWith(const std::vector<Node>& nodes, const std::vector<Ends>& ends = {}) {
  MindMap map = mapOf({}, ends);
  for (const Node& node : nodes) map.nodes.append(node);
  return map;
}

}  // namespace quilmora::test
