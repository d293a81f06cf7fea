#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <QPointF>
#include <QSizeF>

#include "model/MapIndex.h"

namespace quilmora {

// Points by topic id, in the order of placement. Setting an id again replaces its point.
class PositionTable {
 public:
  PositionTable() : m_table(std::make_shared<IdTable>()) {}
  // For the topics of an index, whose numbers save searching for ids.
  explicit PositionTable(const MapIndex& index);

  void set(const QUuid& id, QPointF point);
  // By a number of the index.
  void setNumber(std::uint32_t number, QPointF point);
  std::optional<QPointF> find(const QUuid& id) const;
  bool contains(const QUuid& id) const { return indexOf(m_table->find(id)) != npos; }
  bool containsNumber(std::uint32_t number) const { return indexOf(number) != npos; }
  std::size_t size() const { return m_points.size(); }
  bool empty() const { return m_points.empty(); }
  const std::vector<QUuid>& ids() const { return m_ids; }
  const std::vector<QPointF>& points() const { return m_points; }
  std::vector<QPointF>& points() { return m_points; }
  // The number of the topic of a point, if the table was made for this map; else npos.
  std::uint32_t numberIn(const MapIndex& map, std::size_t index) const;

 private:
  static constexpr std::uint32_t npos = IdTable::npos;

  std::uint32_t indexOf(std::uint32_t number) const { return number < m_indexes.size() ? m_indexes[number] : npos; }

  std::shared_ptr<IdTable> m_table;      // may be an index's own
  std::vector<std::uint32_t> m_indexes;  // by number in the table: where its point is
  std::vector<std::uint32_t> m_numbers;
  std::vector<QUuid> m_ids;
  std::vector<QPointF> m_points;
};

// Arranges topics: a pure function of ids and edges that ignores sizes, titles and collapse. Returns centres in canvas
// units; an id in the result need not name a topic.
class LayoutAlgorithm {
 public:
  virtual ~LayoutAlgorithm() = default;
  virtual PositionTable positionsOf(const MapIndex& index, QSizeF canvasSize) const = 0;
  PositionTable computePositions(const SharedArray<Node>& nodes, const SharedArray<Edge>& edges,
                                 QSizeF canvasSize) const {
    return positionsOf(MapIndex(nodes, edges), canvasSize);
  }
};

// The algorithm and constants for a layout value; nothing for `manual`.
std::unique_ptr<LayoutAlgorithm> makeLayout(MindMap::Layout layout);

// Shifts all points by one offset, so that their bounding box is centred on the canvas.
PositionTable centerPositions(PositionTable positions, QSizeF canvasSize);

}  // namespace quilmora
