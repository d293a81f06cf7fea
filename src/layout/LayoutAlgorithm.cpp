#include "layout/LayoutAlgorithm.h"

#include <algorithm>

#include "layout/LeftRightTreeLayout.h"
#include "layout/OrgChartLayout.h"
#include "layout/RadialLayout.h"
#include "layout/TreeLayout.h"

namespace quilmora {

PositionTable::PositionTable(const MapIndex& index) : m_table(index.ids()), m_indexes(index.numberCount(), npos) {
  m_numbers.reserve(index.numberCount());
  m_ids.reserve(index.numberCount());
  m_points.reserve(index.numberCount());
}

void PositionTable::set(const QUuid& id, QPointF point) {
  std::uint32_t number = m_table->find(id);
  if (number == npos) {
    // An index keeps its numbers to itself.
    if (m_table.use_count() > 1) m_table = std::make_shared<IdTable>(*m_table);
    number = m_table->insert(id);
  }
  setNumber(number, point);
}

void PositionTable::setNumber(std::uint32_t number, QPointF point) {
  if (number >= m_indexes.size()) m_indexes.resize(number + 1, npos);
  std::uint32_t& index = m_indexes[number];
  if (index != npos) {
    m_points[index] = point;
    return;
  }
  index = static_cast<std::uint32_t>(m_points.size());
  m_numbers.push_back(number);
  m_ids.push_back((*m_table)[number]);
  m_points.push_back(point);
}

std::optional<QPointF> PositionTable::find(const QUuid& id) const {
  const std::uint32_t index = indexOf(m_table->find(id));
  if (index == npos) return std::nullopt;
  return m_points[index];
}

std::uint32_t PositionTable::numberIn(const MapIndex& map, std::size_t index) const {
  return m_table == map.ids() ? m_numbers[index] : npos;
}

std::unique_ptr<LayoutAlgorithm> makeLayout(MindMap::Layout layout) {
  switch (layout) {
    case MindMap::Layout::tree:
      return std::make_unique<TreeLayout>(TreeLayout::Orientation::horizontal, 250.0, 100.0, 40.0);
    case MindMap::Layout::verticalTree:
      return std::make_unique<TreeLayout>(TreeLayout::Orientation::vertical, 250.0, 100.0, 40.0);
    case MindMap::Layout::radial:
      return std::make_unique<RadialLayout>(200.0, 180.0);
    case MindMap::Layout::leftRightTree:
      return std::make_unique<LeftRightTreeLayout>(250.0, 80.0);
    case MindMap::Layout::orgChart:
      return std::make_unique<OrgChartLayout>(150.0, 120.0, 50.0);
    case MindMap::Layout::manual:
      break;
  }
  return nullptr;
}

PositionTable centerPositions(PositionTable positions, QSizeF canvasSize) {
  if (positions.empty()) return positions;
  double minX = positions.points().front().x(), maxX = minX;
  double minY = positions.points().front().y(), maxY = minY;
  for (const QPointF& point : positions.points()) {
    minX = std::min(minX, point.x());
    maxX = std::max(maxX, point.x());
    minY = std::min(minY, point.y());
    maxY = std::max(maxY, point.y());
  }
  const QPointF offset(canvasSize.width() * 0.5 - (minX + maxX) * 0.5, canvasSize.height() * 0.5 - (minY + maxY) * 0.5);
  for (QPointF& point : positions.points()) point += offset;
  return positions;
}

}  // namespace quilmora
