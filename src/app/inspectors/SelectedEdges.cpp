#include "app/inspectors/SelectedEdges.h"

#include <algorithm>

namespace quilmora {

bool SelectedEdges::stillHolds(const SharedArray<Edge>& edges, const IdSet& ids) const {
  return m_ordinals.size() == ids.size() && std::ranges::all_of(m_ordinals, [&](std::size_t ordinal) {
           return ordinal < edges.size() && ids.contains(edges[ordinal].id);
         });
}

const std::vector<std::size_t>& SelectedEdges::find(const SharedArray<Edge>& edges, const IdSet& ids) {
  if (stillHolds(edges, ids)) return m_ordinals;
  m_ordinals.clear();
  if (ids.empty()) return m_ordinals;
  std::size_t ordinal = 0;
  for (const Edge& edge : edges) {
    if (ids.contains(edge.id)) m_ordinals.push_back(ordinal);
    ++ordinal;
  }
  return m_ordinals;
}

}  // namespace quilmora
