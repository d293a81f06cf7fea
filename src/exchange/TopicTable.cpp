#include "exchange/TopicTable.h"

namespace quilmora {

TopicTable::TopicTable(const MindMap& map)
    : m_index(map.nodes, map.edges), m_firstOfNumber(m_index.numberCount(), nullptr) {
  m_topics.reserve(map.nodes.size());
  for (const Node& node : map.nodes) {
    const Node*& first = m_firstOfNumber[m_index.numberOfNode()[m_topics.size()]];
    if (first == nullptr) first = &node;
    m_topics.push_back(&node);
  }
}

std::vector<OutlineTopic> outlineOf(const MindMap& map) {
  const TopicTable table(map);
  const ChildTable children(table.index());
  std::vector<OutlineTopic> outline;
  outline.reserve(table.topics().size());
  std::vector<char> isVisited(table.index().numberCount(), 0);

  struct Level {
    std::uint32_t next;  // index in the list of children
    std::uint32_t end;
  };
  std::vector<Level> levels;
  const auto visit = [&](std::uint32_t number) {
    const Node* node = table.find(number);
    if (node == nullptr || isVisited[number]) return;
    isVisited[number] = 1;
    const Level level{children.start[number], children.start[number + 1]};
    bool hasChildren = false;
    for (std::uint32_t i = level.next; i < level.end && !hasChildren; ++i)
      hasChildren = table.find(children.numbers[i]) != nullptr;
    outline.push_back({node, static_cast<std::uint32_t>(levels.size()), hasChildren});
    levels.push_back(level);
  };
  for (const std::uint32_t number : table.index().numberOfNode()) {
    if (children.isTarget[number]) continue;
    visit(number);
    while (!levels.empty()) {
      Level& level = levels.back();
      if (level.next == level.end)
        levels.pop_back();
      else
        visit(children.numbers[level.next++]);
    }
  }
  return outline;
}

}  // namespace quilmora
