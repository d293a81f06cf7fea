#include "layout/LayoutAlgorithm.h"

#include <algorithm>

#include "layout/LeftRightTreeLayout.h"
#include "layout/OrgChartLayout.h"
#include "layout/RadialLayout.h"
#include "layout/TreeLayout.h"

namespace quilmora {

void PositionTable::set(const QUuid& id, QPointF point) {
  const std::uint32_t number = m_ids.insert(id);
  if (number == m_points.size())
    m_points.push_back(point);
  else
    m_points[number] = point;
}

std::optional<QPointF> PositionTable::find(const QUuid& id) const {
  const std::uint32_t number = m_ids.find(id);
  if (number == IdTable::npos) return std::nullopt;
  return m_points[number];
}

void PositionTable::reserve(std::size_t count) {
  m_ids.reserve(count);
  m_points.reserve(count);
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
