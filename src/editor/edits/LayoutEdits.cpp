#include "editor/edits/LayoutEdits.h"

namespace quilmora::edits {

std::vector<QPointF> positionsAfter(const PositionTable& placed, const MapIndex& index) {
  std::vector<QPointF> positions = index.positions().toVector();
  for (std::size_t i = 0; i < placed.size(); ++i) {
    const std::uint32_t number = placed.numberIn(index, i);
    const std::uint32_t ordinal = number != MapIndex::npos ? index.nodeOfNumber()[number] : index.find(placed.ids()[i]);
    if (ordinal != MapIndex::npos) positions[ordinal] = placed.points()[i];
  }
  return positions;
}

}  // namespace quilmora::edits
