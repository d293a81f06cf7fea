#pragma once

#include <QString>

#include "model/MapIndex.h"
#include "model/TreeInfo.h"

namespace quilmora {

// The map as a chat describes it to a model: title, number of topics, and an indented list of titles with the
// beginnings of their notes; at most 3000 characters in total. `index` and `tree` must be of this map.
QString mapOutline(const MindMap& map, const MapIndex& index, const TreeInfo& tree);

}  // namespace quilmora
