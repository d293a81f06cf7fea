#pragma once

#include <optional>
#include <vector>

#include "model/IdSet.h"
#include "model/MapIndex.h"

// Finding topics by their ids and their positions.
namespace quilmora::edits {

// The ordinals of the topics with these ids, ascending. Ids that name no topic are left out.
std::vector<std::uint32_t> ordinalsOf(const MapIndex& index, const IdSet& ids);

// The numbers are used in scripts.
enum class Direction { left = 0, right = 1, up = 2, down = 3 };

// The nearest topic from the one with this ordinal in the direction, among those not marked in `hidden` (by ordinal);
// straight ahead counts as nearer than to the side.
std::optional<QUuid> neighbour(const MapIndex& index, const std::vector<char>& hidden, std::uint32_t from,
                               Direction direction);

}  // namespace quilmora::edits
