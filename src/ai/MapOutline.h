#pragma once

#include <QString>

#include "model/MapIndex.h"
#include "model/TreeInfo.h"

namespace quilmora {

// The map as a chat tells it to a model: title, number of topics, and an indented list of titles with the beginnings of
// their notes; at most 3000 characters of all that. Index and tree are of this map.
QString mapOutline(const MindMap& map, const MapIndex& index, const TreeInfo& tree);

}  // namespace quilmora
