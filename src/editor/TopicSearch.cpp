#include "editor/TopicSearch.h"

#include <utility>

namespace quilmora {

namespace {

// What the query finds by a look at every record.
std::vector<std::uint32_t> foundInRecords(const SharedArray<Node>& nodes, const edits::CaseInsensitiveQuery& query) {
  std::vector<std::uint32_t> found;
  std::uint32_t ordinal = 0;
  for (const Node& node : nodes) {
    if (query.isIn(node.title) || query.isIn(node.notes)) found.push_back(ordinal);
    ++ordinal;
  }
  return found;
}

}  // namespace

std::vector<QUuid> TopicSearch::find(const SharedArray<Node>& nodes, quint64 generation, const QString& query) {
  if (query.isEmpty()) {
    m_query.reset();
    m_found = {};
    return {};
  }
  edits::CaseInsensitiveQuery wanted(query);
  std::vector<QUuid> ids;
  if (!wanted.isFoldable()) {
    m_query.reset();
    for (const std::uint32_t ordinal : foundInRecords(nodes, wanted)) ids.push_back(nodes[ordinal].id);
    return ids;
  }
  const bool goesOn = m_query && m_generation == generation && wanted.goesOnFrom(*m_query);
  m_found = goesOn ? m_texts.findAmong(m_found, nodes, wanted) : m_texts.find(nodes, wanted);
  m_query = std::move(wanted);
  m_generation = generation;
  return m_texts.idsOf(m_found);
}

void TopicSearch::forget() {
  m_query.reset();
  m_found = {};
  m_texts.forget();
}

}  // namespace quilmora
