#pragma once

#include <vector>

#include "model/IdSet.h"
#include "model/MindMap.h"

namespace quilmora::edits {

// Topics that were copied, and the edges between them.
struct Clipping {
  std::vector<Node> nodes;
  std::vector<Edge> edges;
};

// The topics with these ids in the order of the map, and the edges with both ends among the ids.
Clipping copied(const MindMap& map, const IdSet& ids);

// Appends the clipping with fresh ids, moved by (40, 40), and returns the ids. Of a topic, title, notes, style, icon
// and position are copied; badge, AI mark, emoji, link and picture are not. Does not set updatedAt.
IdSet paste(MindMap& map, const Clipping& clipping);

}  // namespace quilmora::edits
