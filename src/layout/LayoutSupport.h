#pragma once

#include "layout/LayoutAlgorithm.h"

namespace quilmora {

class MapIndex;

// Places every topic that has no position yet in a row along the bottom of the canvas, in the order of the topics.
void placeUnreached(PositionTable& table, const MapIndex& index, QSizeF canvasSize);

}  // namespace quilmora
