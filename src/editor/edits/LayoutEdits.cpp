#include "editor/edits/LayoutEdits.h"

namespace quilmora::edits {

std::vector<QPointF> positionsAfter(const PositionTable& placed, const MapIndex& index) {
  std::vector<QPointF> positions = index.positions();
  for (std::size_t i = 0; i < placed.size(); ++i)
    if (const std::uint32_t ordinal = index.find(placed.ids()[i]); ordinal != MapIndex::npos)
      positions[ordinal] = placed.points()[i];
  return positions;
}

}  // namespace quilmora::edits
