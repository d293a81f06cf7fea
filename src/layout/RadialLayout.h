#pragma once

#include "layout/LayoutAlgorithm.h"

namespace quilmora {

// The root in the centre and its descendants on rings; each subtree gets a sector proportional to its leaves.
struct RadialLayout final : LayoutAlgorithm {
  double baseRadius = 200.0;   // of the first ring
  double ringSpacing = 180.0;  // between consecutive rings

  RadialLayout() = default;
  RadialLayout(double base, double spacing) : baseRadius(base), ringSpacing(spacing) {}

  PositionTable positionsOf(const MapIndex& index, QSizeF canvasSize) const override;
};

}  // namespace quilmora
