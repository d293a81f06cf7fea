#pragma once

#include <cstdint>
#include <vector>

#include <QPointF>

#include "model/IdSet.h"
#include "model/MapIndex.h"

// Aligning and distributing topics by their centres; sizes are ignored.
namespace quilmora::edits {

// Which extreme of the topics, or the middle between both, each of them moves to along one axis.
enum class Alignment { left, centerH, right, top, centerV, bottom };
enum class Axis { horizontal, vertical };

// A topic, by its ordinal, and its new position.
struct Placement {
  std::uint32_t ordinal;
  QPointF position;
};

// Both return a placement for each id that names a topic, and none at all if fewer than two do.
std::vector<Placement> aligned(const MapIndex& index, const IdSet& ids, Alignment alignment);
// In even steps from the first to the last along the axis, or in steps of 80 if these are less than 1 apart.
std::vector<Placement> distributed(const MapIndex& index, const IdSet& ids, Axis axis);

void place(MindMap& map, const std::vector<Placement>& placements);

}  // namespace quilmora::edits
