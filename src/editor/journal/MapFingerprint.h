#pragma once

#include <cstdint>
#include <vector>

#include "model/MindMap.h"

namespace quilmora::journal {

// Identifies a map by one number that survives writing and reading: it depends on what a document holds, except the
// map's two times, and not on how the records lie in blocks. Remembers the last map, so that the next one costs only
// the blocks that differ.
class MapFingerprint {
 public:
  std::uint64_t of(const MindMap& map);

 private:
  template <class Record>
  struct Part {
    SharedArray<Record> records;
    std::vector<std::uint64_t> blocks;  // by block of `records`
    std::uint64_t whole = 0;

    std::uint64_t of(const SharedArray<Record>& now);
  };

  Part<Node> m_nodes;
  Part<Edge> m_edges;
  Part<Relationship> m_relationships;
  Part<Region> m_regions;
};

}  // namespace quilmora::journal
