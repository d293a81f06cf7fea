#pragma once

#include <cstdint>
#include <vector>

#include "model/MindMap.h"

namespace quilmora::journal {

// Tells maps apart by one number, which a map keeps through being written and read back: it depends on what a document
// holds, the two times of the map aside, and not on how the records lie in blocks. Remembers the last map, so that the
// next one costs only the blocks that differ.
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
