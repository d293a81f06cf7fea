#include "editor/edits/PositionGrid.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace quilmora::edits {

namespace {

constexpr double cellSize = 128.0;
// Cells beyond would be too large for their numbers.
constexpr double edgeOfCells = 1e12;

bool isSame(QPointF a, QPointF b) {
  return std::memcmp(&a, &b, sizeof(QPointF)) == 0;
}

}  // namespace

PositionGrid::PositionGrid(const PagedArray<QPointF>& positions)
    : m_heads(std::bit_ceil(std::max<std::size_t>(positions.size(), 64)), none) {
  m_entries.reserve(positions.size());
  for (const QPointF& position : positions) insert(position);
}

void PositionGrid::insert(QPointF position) {
  if (isFar(position)) {
    m_far.push_back(position);
    return;
  }
  std::uint32_t& head = m_heads[bucketOf(position)];
  std::uint32_t index = m_free;
  if (index == none) {
    index = static_cast<std::uint32_t>(m_entries.size());
    m_entries.emplace_back();
  } else {
    m_free = m_entries[index].next;
  }
  m_entries[index] = {position, head};
  head = index;
}

void PositionGrid::remove(QPointF position) {
  if (isFar(position)) {
    const auto found = std::ranges::find_if(m_far, [&](QPointF other) { return isSame(other, position); });
    if (found != m_far.end()) m_far.erase(found);
    return;
  }
  std::uint32_t* link = &m_heads[bucketOf(position)];
  while (*link != none && !isSame(m_entries[*link].position, position)) link = &m_entries[*link].next;
  if (*link == none) return;
  const std::uint32_t index = *link;
  *link = m_entries[index].next;
  m_entries[index].next = m_free;
  m_free = index;
}

bool PositionGrid::isFar(QPointF position) {
  return !(std::abs(position.x()) <= edgeOfCells && std::abs(position.y()) <= edgeOfCells);
}

std::int64_t PositionGrid::cellOf(double coordinate) {
  return static_cast<std::int64_t>(std::floor(coordinate / cellSize));
}

PositionGrid::Range PositionGrid::cellsAround(double coordinate) {
  if (std::isnan(coordinate)) return {0, -1};
  return {cellOf(std::clamp(coordinate - reach, -edgeOfCells, edgeOfCells)),
          cellOf(std::clamp(coordinate + reach, -edgeOfCells, edgeOfCells))};
}

std::size_t PositionGrid::bucketOf(std::int64_t column, std::int64_t row) const {
  std::uint64_t bits = static_cast<std::uint64_t>(column) * 0x9E3779B97F4A7C15ull + static_cast<std::uint64_t>(row);
  bits *= 0xBF58476D1CE4E5B9ull;
  return static_cast<std::size_t>(bits >> 32) & (m_heads.size() - 1);
}

}  // namespace quilmora::edits
