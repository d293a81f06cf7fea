#pragma once

#include "layout/TreeLayout.h"

namespace quilmora {

// The tree layout from the top down, with its own constants.
struct OrgChartLayout final : LayoutAlgorithm {
  double levelSpacing = 150.0;
  double siblingSpacing = 120.0;
  double subtreeSpacing = 50.0;

  OrgChartLayout() = default;
  OrgChartLayout(double level, double sibling, double subtree)
      : levelSpacing(level), siblingSpacing(sibling), subtreeSpacing(subtree) {}

  PositionTable positionsOf(const MapIndex& index, QSizeF canvasSize) const override {
    return TreeLayout(TreeLayout::Orientation::vertical, levelSpacing, siblingSpacing, subtreeSpacing)
        .positionsOf(index, canvasSize);
  }
};

}  // namespace quilmora
