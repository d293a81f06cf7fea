#include "canvas/painting/ScenePlan.h"

#include "canvas/painting/TileWalk.h"

namespace quilmora {

ScenePlan::ScenePlan(double tileSide, const QRect& tiles)
    : m_tileSide(tileSide),
      m_tiles(tiles),
      m_parts(static_cast<std::size_t>(tiles.width()) * static_cast<std::size_t>(tiles.height())) {}

std::size_t ScenePlan::indexOf(QPoint tile) const {
  return static_cast<std::size_t>(tile.y() - m_tiles.top()) * static_cast<std::size_t>(m_tiles.width()) +
         static_cast<std::size_t>(tile.x() - m_tiles.left());
}

void ScenePlan::addNode(std::uint32_t index, const QRectF& bounds) {
  const QRect tiles = tilesUnder(bounds, m_tileSide, m_tiles);
  for (int y = tiles.top(); y <= tiles.bottom(); ++y)
    for (int x = tiles.left(); x <= tiles.right(); ++x) m_parts[indexOf({x, y})].nodes.push_back(index);
}

void ScenePlan::addEdge(std::uint32_t index, QPointF from, QPointF to, QPointF bend, double reach) {
  visitTilesOfEdge(from, to, bend, reach, m_tileSide, m_tiles,
                   [&](QPoint tile) { m_parts[indexOf(tile)].edges.push_back(index); });
}

void ScenePlan::addRelationship(std::uint32_t index, const RelationshipCurve& curve, double reach) {
  visitTilesOfRelationship(curve, reach, m_tileSide, m_tiles, [&](QPoint tile) {
    auto& relationships = m_parts[indexOf(tile)].relationships;
    if (relationships.empty() || relationships.back() != index) relationships.push_back(index);
  });
}

}  // namespace quilmora
