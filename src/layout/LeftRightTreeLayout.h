#pragma once

#include "layout/LayoutAlgorithm.h"

namespace quilmora {

// A root's children go right and left in turn; each level is spread by a fixed step, ignoring subtree sizes.
struct LeftRightTreeLayout final : LayoutAlgorithm {
  double levelSpacing = 250.0;
  double siblingSpacing = 80.0;

  LeftRightTreeLayout() = default;
  LeftRightTreeLayout(double level, double sibling) : levelSpacing(level), siblingSpacing(sibling) {}

  PositionTable positionsOf(const MapIndex& index, QSizeF canvasSize) const override;
};

}  // namespace quilmora
