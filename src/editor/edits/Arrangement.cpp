#include "editor/edits/Arrangement.h"

#include <algorithm>
#include <cmath>

#include "editor/edits/Finding.h"

namespace quilmora::edits {

namespace {

// Topics that span less than this count as being on one spot.
constexpr double minSpan = 1.0;
constexpr double fixedStep = 80.0;

using Coordinate = double& (QPointF::*)();

double coordinateOf(QPointF point, Coordinate coordinate) {
  return (point.*coordinate)();
}

// Avoids the sum, which may overflow.
double middle(double a, double b) {
  const double sum = a + b;
  return std::isfinite(sum) ? sum * 0.5 : a * 0.5 + b * 0.5;
}

// Place number `count` of `gaps` even steps from the first place to the last.
double placeBetween(double first, double last, double count, double gaps) {
  const double span = last - first;
  if (span < minSpan) return first + count * fixedStep;
  if (std::isfinite(span)) return first + count * (span / gaps);
  return first * (1 - count / gaps) + last * (count / gaps);
}

// The current positions of the topics, in their order in the map.
std::vector<Placement> present(const MapIndex& index, const IdSet& ids) {
  std::vector<Placement> placements;
  for (const std::uint32_t ordinal : ordinalsOf(index, ids))
    placements.push_back({ordinal, index.positions()[ordinal]});
  if (placements.size() < 2) placements.clear();
  return placements;
}

double goalOf(Alignment alignment, double least, double most) {
  switch (alignment) {
    case Alignment::left:
    case Alignment::top:
      return least;
    case Alignment::right:
    case Alignment::bottom:
      return most;
    case Alignment::centerH:
    case Alignment::centerV:
      return middle(least, most);
  }
  Q_UNREACHABLE();
}

}  // namespace

std::vector<Placement> aligned(const MapIndex& index, const IdSet& ids, Alignment alignment) {
  std::vector<Placement> placements = present(index, ids);
  if (placements.empty()) return placements;
  const bool isHorizontal =
      alignment == Alignment::left || alignment == Alignment::centerH || alignment == Alignment::right;
  const Coordinate coordinate = isHorizontal ? &QPointF::rx : &QPointF::ry;
  const auto [least, most] = std::ranges::minmax(
      placements, {}, [&](const Placement& placement) { return coordinateOf(placement.position, coordinate); });
  const double goal =
      goalOf(alignment, coordinateOf(least.position, coordinate), coordinateOf(most.position, coordinate));
  for (Placement& placement : placements) (placement.position.*coordinate)() = goal;
  return placements;
}

std::vector<Placement> distributed(const MapIndex& index, const IdSet& ids, Axis axis) {
  std::vector<Placement> placements = present(index, ids);
  if (placements.empty()) return placements;
  const Coordinate coordinate = axis == Axis::horizontal ? &QPointF::rx : &QPointF::ry;
  // Topics on one spot keep their order in the map.
  std::ranges::stable_sort(placements, {},
                           [&](const Placement& placement) { return coordinateOf(placement.position, coordinate); });
  const double first = coordinateOf(placements.front().position, coordinate);
  const double last = coordinateOf(placements.back().position, coordinate);
  const auto gaps = static_cast<double>(placements.size() - 1);
  double count = 0;
  for (Placement& placement : placements) (placement.position.*coordinate)() = placeBetween(first, last, count++, gaps);
  return placements;
}

void place(MindMap& map, const std::vector<Placement>& placements) {
  for (const Placement& placement : placements)
    map.nodes.update(placement.ordinal, [&](Node& node) { node.position = placement.position; });
}

}  // namespace quilmora::edits
