#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <QPointF>
#include <QSizeF>

#include "model/IdTable.h"
#include "model/MindMap.h"

namespace quilmora {

// Points by topic id, in the order of placement. Setting an id again replaces its point.
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

// Arranges topics: a pure function of ids and edges that ignores sizes, titles and collapse. Returns centres in canvas
// units; an id in the result need not name a topic.
class LayoutAlgorithm {
 public:
  virtual ~LayoutAlgorithm() = default;
  virtual PositionTable computePositions(const SharedArray<Node>& nodes, const SharedArray<Edge>& edges,
                                         QSizeF canvasSize) const = 0;
};

// The algorithm and constants for a layout value; nothing for `manual`.
std::unique_ptr<LayoutAlgorithm> makeLayout(MindMap::Layout layout);

// Shifts all points by one offset, so that their bounding box is centred on the canvas.
PositionTable centerPositions(PositionTable positions, QSizeF canvasSize);

}  // namespace quilmora
