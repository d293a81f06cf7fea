#pragma once

#include <vector>

#include "model/IdSet.h"
#include "model/MindMap.h"

namespace quilmora {

// Finds edges by their ids. Tries their last ordinals first, so that following them from change to change does not walk
// all edges of a large map.
class SelectedEdges {
 public:
  // The ordinals of those that are in the map, ascending. Valid until the next call.
  const std::vector<std::size_t>& find(const SharedArray<Edge>& edges, const IdSet& ids);

 private:
  bool stillHolds(const SharedArray<Edge>& edges, const IdSet& ids) const;

  std::vector<std::size_t> m_ordinals;
};

}  // namespace quilmora
