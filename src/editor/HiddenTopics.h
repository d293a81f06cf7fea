#pragma once

#include <cstdint>
#include <vector>

#include "model/IdSet.h"
#include "model/MapIndex.h"
#include "model/SharedValue.h"
#include "model/TreeInfo.h"

namespace quilmora {

// Which topics are hidden below collapsed ones, kept from one state of the map to the next.
class HiddenTopics {
 public:
  // Small changes that the next update takes into account.
  void noteStructure(const MapIndex::Change& change);
  void noteCollapsed(const TreeInfo& tree, const IdSet& before, const IdSet& now);
  // Whether the next update begins anew, so that no changes need to be noted.
  bool isStale() const { return m_isStale; }
  // The next update begins anew.
  void forget() { m_isStale = true; }

  void update(const TreeInfo& tree, const MapIndex& index, const IdSet& collapsed);

  // These tell of the last update.
  bool isHidden(std::uint32_t number) const { return number < m_numbers.size() && m_numbers[number] != 0; }
  // By ordinal in `nodes`: 1 for a hidden topic. Other storage only if something differs.
  const SharedValue<std::vector<char>>& nodes() const { return m_nodes; }

 private:
  void hideNone(const TreeInfo& tree, const MapIndex& index);
  void patchNodes(const MapIndex& index, const std::vector<std::uint32_t>& changed);
  void setNodes(const MapIndex& index);
  bool areTopicsAppended(const MapIndex& index) const;

  std::vector<char> m_numbers;  // by number in the index
  SharedValue<std::vector<char>> m_nodes;
  bool m_isStale = true;
  bool m_hidesNone = false;
  std::vector<std::uint32_t> m_concerned;  // since the last update: numbers with another parent or parent's state
  std::vector<std::uint32_t> m_topics;     // since then: numbers that became or ceased to be a topic's
};

}  // namespace quilmora
