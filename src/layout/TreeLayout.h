#pragma once

#include "layout/LayoutAlgorithm.h"

namespace quilmora {

// Depth along one axis, siblings stacked along the other; a parent is centred on its leaves.
struct TreeLayout final : LayoutAlgorithm {
  enum class Orientation { horizontal = 0, vertical = 1 };

  Orientation orientation = Orientation::horizontal;
  double levelSpacing = 250.0;    // between consecutive depths
  double siblingSpacing = 100.0;  // the cursor's advance after each leaf
  double subtreeSpacing = 40.0;   // extra advance between children of one parent

  TreeLayout() = default;
  TreeLayout(Orientation o, double level, double sibling, double subtree)
      : orientation(o), levelSpacing(level), siblingSpacing(sibling), subtreeSpacing(subtree) {}

  PositionTable positionsOf(const MapIndex& index, QSizeF canvasSize) const override;
};

}  // namespace quilmora
