#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <QPointF>
#include <QSizeF>

#include "model/IdTable.h"
#include "model/MindMap.h"

namespace quilmora {

// Points by topic id, in the order in which they were placed. Setting an id again replaces its point.
class PositionTable {
 public:
  void set(const QUuid& id, QPointF point);
  std::optional<QPointF> find(const QUuid& id) const;
  bool contains(const QUuid& id) const { return m_ids.contains(id); }
  std::size_t size() const { return m_points.size(); }
  bool empty() const { return m_points.empty(); }
  const std::vector<QUuid>& ids() const { return m_ids.ids(); }
  const std::vector<QPointF>& points() const { return m_points; }
  std::vector<QPointF>& points() { return m_points; }
  void reserve(std::size_t count);

 private:
  IdTable m_ids;
  std::vector<QPointF> m_points;
};

// Arranges topics: a pure function that sees ids and edges only and is blind to sizes, titles and collapse. The result
// gives centres in canvas units; an id in it need not name a topic.
class LayoutAlgorithm {
 public:
  virtual ~LayoutAlgorithm() = default;
  virtual PositionTable computePositions(const SharedArray<Node>& nodes, const SharedArray<Edge>& edges,
                                         QSizeF canvasSize) const = 0;
};

// The algorithm and constants behind a layout value. Nothing for `manual`.
std::unique_ptr<LayoutAlgorithm> makeLayout(MindMap::Layout layout);

// Shifts all points by one offset, so that the centre of their bounding box falls on the canvas centre.
PositionTable centerPositions(PositionTable positions, QSizeF canvasSize);

}  // namespace quilmora
