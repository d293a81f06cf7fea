#pragma once

#include "model/TreeInfo.h"

namespace quilmora {

// One step of a tree after its index: works out what a small change of edges and topics changes in it. Used once.
class TreeChange {
 public:
  TreeChange(const TreeInfo::Data& before, const MapIndex& index, const MapIndex::Change& change);

  // The data of the tree after the change, or nothing if only a tree built anew can tell.
  std::shared_ptr<const TreeInfo::Data> run();

 private:
  using Numbers = std::vector<std::uint32_t>;

  bool replaceLinks(const MapIndex::LinkRun& run);
  bool replaceChildren(const MapIndex::LinkRun& run, std::uint32_t parent, const Numbers& gone, const Numbers& came);
  std::optional<std::size_t> indexAmong(const MapIndex::LinkRun& run, std::uint32_t parent, const Numbers& gone);
  bool setParents();
  void setRoots();
  bool settleDepths();
  int depthOf(std::uint32_t number) const;
  void setDepth(std::uint32_t number, int depth);
  bool isTopic(std::uint32_t number) const { return m_index.nodeOfNumber()[number] != MapIndex::npos; }

  const TreeInfo::Data& m_before;
  const MapIndex& m_index;
  const MapIndex::Change& m_change;
  std::shared_ptr<TreeInfo::Data> m_data;
  Numbers m_concerned;                // whose edges or topics changed
  std::vector<MapIndex::Link> m_new;  // edges that came
  int m_countedEdges = 0;             // how often all edges were walked
};

}  // namespace quilmora
