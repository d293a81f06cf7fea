#include "editor/HiddenTopics.h"

#include <algorithm>
#include <utility>

#include "editor/edits/Hierarchy.h"

namespace quilmora {

void HiddenTopics::noteStructure(const MapIndex::Change& change) {
  if (m_isStale) return;
  m_topics.insert(m_topics.end(), change.topics.begin(), change.topics.end());
  for (const MapIndex::LinkRun& run : change.links)
    for (const auto* links : {&run.before, &run.now})
      for (const MapIndex::Link& link : *links) m_concerned.push_back(link.to);
  // Nobody has asked for long: beginning anew is cheaper by now.
  if (m_topics.size() + m_concerned.size() > m_numbers.size() + 4096) forget();
}

void HiddenTopics::noteCollapsed(const TreeInfo& tree, const IdSet& before, const IdSet& now) {
  if (m_isStale) return;
  const auto noteChildren = [&](const QUuid& id) {
    const auto children = tree.childNumbers(tree.number(id));
    m_concerned.insert(m_concerned.end(), children.begin(), children.end());
  };
  for (const QUuid& id : before)
    if (!now.contains(id)) noteChildren(id);
  for (const QUuid& id : now)
    if (!before.contains(id)) noteChildren(id);
}

void HiddenTopics::update(const TreeInfo& tree, const MapIndex& index, const IdSet& collapsed) {
  if (!m_isStale && m_concerned.empty() && m_topics.empty()) return;
  if (collapsed.empty() && (m_isStale || m_hidesNone)) {
    hideNone(tree, index);
  } else if (m_isStale || index.hasTwins()) {
    m_numbers = edits::hiddenNumbers(tree, collapsed);
    setNodes(index);
  } else {
    patchNodes(index, edits::followHidden(tree, collapsed, m_concerned, m_numbers));
  }
  m_isStale = false;
  m_hidesNone = collapsed.empty();
  m_concerned.clear();
  m_topics.clear();
}

void HiddenTopics::hideNone(const TreeInfo& tree, const MapIndex& index) {
  const std::size_t count = index.numberOfNode().size();
  if (!m_hidesNone) m_numbers.clear();
  m_numbers.resize(tree.numberCount(), 0);
  if (!m_hidesNone || m_nodes->size() != count) m_nodes = SharedValue(std::vector<char>(count, 0));
}

void HiddenTopics::patchNodes(const MapIndex& index, const std::vector<std::uint32_t>& changed) {
  if (!areTopicsAppended(index)) {
    setNodes(index);
    return;
  }
  const std::size_t count = index.numberOfNode().size();
  if (changed.empty() && m_nodes->size() == count) return;
  std::vector<char>& nodes = m_nodes.write();
  nodes.resize(count, 0);
  for (const auto* numbers : {&changed, &std::as_const(m_topics)})
    for (const std::uint32_t number : *numbers)
      if (const std::uint32_t ordinal = index.nodeOfNumber()[number]; ordinal != MapIndex::npos)
        nodes[ordinal] = m_numbers[number];
}

// Whether all other topics have kept their ordinals.
bool HiddenTopics::areTopicsAppended(const MapIndex& index) const {
  return std::ranges::all_of(m_topics, [&](std::uint32_t number) {
    const std::uint32_t ordinal = index.nodeOfNumber()[number];
    return ordinal != MapIndex::npos && ordinal >= m_nodes->size();
  });
}

void HiddenTopics::setNodes(const MapIndex& index) {
  std::vector<char> nodes;
  nodes.reserve(index.numberOfNode().size());
  for (const std::uint32_t number : index.numberOfNode()) nodes.push_back(m_numbers[number]);
  m_nodes = SharedValue(std::move(nodes));
}

}  // namespace quilmora
