#pragma once

#include <vector>

#include "model/MapIndex.h"

namespace quilmora {

// The topics of a map by the dense numbers of their ids; of topics with the same id the first counts. The map must
// outlive it.
class TopicTable {
 public:
  explicit TopicTable(const MindMap& map);

  const MapIndex& index() const { return m_index; }
  // In the map's order, repeated ids included.
  const std::vector<const Node*>& topics() const { return m_topics; }
  // nullptr if the number names no topic.
  const Node* find(std::uint32_t number) const { return m_firstOfNumber[number]; }

 private:
  MapIndex m_index;
  std::vector<const Node*> m_topics;
  std::vector<const Node*> m_firstOfNumber;
};

// A topic in an outline.
struct OutlineTopic {
  const Node* node;
  std::uint32_t depth;
  bool hasChildren;  // an edge leads to some topic, which may be elsewhere in the outline
};

// The forest from its roots, depth first, each id once and below the first of its parents. Topics that no root reaches
// are left out. Points into the map.
std::vector<OutlineTopic> outlineOf(const MindMap& map);

}  // namespace quilmora
