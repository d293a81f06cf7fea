#include "editor/edits/Finding.h"

#include <algorithm>
#include <cmath>

namespace quilmora::edits {

namespace {

constexpr double minNeighbourDistance = 10.0;

}  // namespace

std::vector<std::uint32_t> ordinalsOf(const MapIndex& index, const IdSet& ids) {
  std::vector<std::uint32_t> ordinals;
  index.ids()->visitNumbers(ids, [&](std::uint32_t number) {
    const std::uint32_t ordinal = number < index.numberCount() ? index.nodeOfNumber()[number] : MapIndex::npos;
    if (ordinal != MapIndex::npos) ordinals.push_back(ordinal);
  });
  std::ranges::sort(ordinals);
  return ordinals;
}

std::optional<QUuid> neighbour(const MapIndex& index, const std::vector<char>& hidden, std::uint32_t from,
                               Direction direction) {
  const auto& positions = index.positions();
  const std::uint32_t number = index.numberOfNode()[from];
  const bool isSideways = direction == Direction::left || direction == Direction::right;
  const double sign = direction == Direction::right || direction == Direction::down ? 1.0 : -1.0;

  std::size_t best = positions.size();
  double bestScore = 0.0;
  for (std::size_t i = 0; i < positions.size(); ++i) {
    const QPointF step = positions[i] - positions[from];
    const double along = sign * (isSideways ? step.x() : step.y());
    if (!(along > minNeighbourDistance) || hidden[i] || index.numberOfNode()[i] == number) continue;
    const double sideways = std::abs(isSideways ? step.y() : step.x());
    const double score = std::sqrt(step.x() * step.x() + step.y() * step.y()) + 2.0 * sideways;
    if (best != positions.size() && !(score < bestScore)) continue;
    best = i;
    bestScore = score;
  }
  if (best == positions.size()) return std::nullopt;
  return (*index.ids())[index.numberOfNode()[best]];
}

}  // namespace quilmora::edits
