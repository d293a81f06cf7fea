#pragma once

#include <cstdint>
#include <vector>

#include <QPointF>

#include "model/IdSet.h"
#include "model/MapIndex.h"

// Topics lined up and spread out. Centres count; the sizes of topics play no part.
namespace quilmora::edits {

// To which extreme of the topics, or to the middle between two, each of them moves along one axis.
enum class Alignment { left, centerH, right, top, centerV, bottom };
enum class Axis { horizontal, vertical };

// A topic, told by its ordinal, and where it goes.
struct Placement {
  std::uint32_t ordinal;
  QPointF position;
};

// Both give a placement for each id that names a topic, and none at all where fewer than two do.
std::vector<Placement> aligned(const MapIndex& index, const IdSet& ids, Alignment alignment);
// In even steps from the first to the last along the axis, in steps of 80 where these lie less than 1 apart.
std::vector<Placement> distributed(const MapIndex& index, const IdSet& ids, Axis axis);

void place(MindMap& map, const std::vector<Placement>& placements);

}  // namespace quilmora::edits
