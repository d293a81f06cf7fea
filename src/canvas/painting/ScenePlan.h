#pragma once

#include <cstdint>
#include <vector>

#include <QPoint>
#include <QRect>

#include "canvas/geometry/RelationshipCurve.h"
#include "canvas/painting/MapScene.h"

namespace quilmora {

// What can be seen of a scene in each of many square tiles, found in one walk over the map: painting a tile then looks
// at that alone. Made by MapPainter::makePlan(); good until the map changes or what is hidden.
class ScenePlan {
 public:
  // What may extend into a tile, by ordinal in `nodes`, `edges` and `relationships`, rearmost first.
  struct Part {
    std::vector<std::uint32_t> nodes;
    std::vector<std::uint32_t> edges;
    std::vector<std::uint32_t> relationships;

    bool isEmpty() const { return nodes.empty() && edges.empty() && relationships.empty(); }
  };

  // Tiles have a side of `tileSide` canvas units; the tile (x, y) starts at x × side, y × side. `tiles` are the
  // coordinates that the plan covers.
  ScenePlan(double tileSide, const QRect& tiles);

  double tileSide() const { return m_tileSide; }
  const QRect& tiles() const { return m_tiles; }
  const Part& part(QPoint tile) const { return m_parts[indexOf(tile)]; }

  void addNode(std::uint32_t index, const QRectF& bounds);
  // An edge that stays within `reach` of its curve; `bend` moves the inner points of the curve.
  void addEdge(std::uint32_t index, QPointF from, QPointF to, QPointF bend, double reach);
  // The stroke of a relationship, which stays within `reach` of its curve.
  void addRelationship(std::uint32_t index, const RelationshipCurve& curve, double reach);

 private:
  std::size_t indexOf(QPoint tile) const;

  double m_tileSide;
  QRect m_tiles;
  std::vector<Part> m_parts;
};

}  // namespace quilmora
