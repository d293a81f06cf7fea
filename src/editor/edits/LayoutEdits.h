#pragma once

#include <vector>

#include "layout/LayoutAlgorithm.h"
#include "model/MapIndex.h"

namespace quilmora::edits {

// Where all topics lie, by ordinal, once those that a layout placed are moved.
std::vector<QPointF> positionsAfter(const PositionTable& placed, const MapIndex& index);

}  // namespace quilmora::edits
