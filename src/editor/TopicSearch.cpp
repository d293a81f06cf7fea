#include "editor/TopicSearch.h"

#include <utility>

namespace quilmora {

std::vector<QUuid> TopicSearch::find(const SharedArray<Node>& nodes, quint64 generation, const QString& query) {
  std::vector<QUuid> ids;
  if (query.isEmpty()) {
    forget();
    return ids;
  }
  edits::CaseInsensitiveQuery wanted(query);
  std::vector<std::uint32_t> found;
  const auto look = [&](const Node& node, std::size_t ordinal) {
    if (!wanted.isIn(node.title) && !wanted.isIn(node.notes)) return;
    found.push_back(static_cast<std::uint32_t>(ordinal));
    ids.push_back(node.id);
  };
  if (m_query && m_generation == generation && wanted.goesOnFrom(*m_query)) {
    std::size_t block = 0;
    for (const std::uint32_t ordinal : m_found) {
      while (ordinal - nodes.blockStart(block) >= nodes.block(block).size()) ++block;
      look(nodes.block(block)[ordinal - nodes.blockStart(block)], ordinal);
    }
  } else {
    std::size_t ordinal = 0;
    for (const Node& node : nodes) look(node, ordinal++);
  }
  m_query = std::move(wanted);
  m_generation = generation;
  m_found = std::move(found);
  return ids;
}

void TopicSearch::forget() {
  m_query.reset();
  m_found = {};
}

}  // namespace quilmora
