#pragma once

#include "layout/LayoutAlgorithm.h"

namespace quilmora {

class MapIndex;

// Places every topic of the table's index without a position in a row along the bottom of the canvas, in the order of
// the topics.
void placeUnreached(PositionTable& table, const MapIndex& index, QSizeF canvasSize);

}  // namespace quilmora
