#pragma once

#include <vector>

#include "layout/LayoutAlgorithm.h"
#include "model/MapIndex.h"

namespace quilmora::edits {

// The positions of all topics, by ordinal, after moving those that a layout placed.
std::vector<QPointF> positionsAfter(const PositionTable& placed, const MapIndex& index);

}  // namespace quilmora::edits
