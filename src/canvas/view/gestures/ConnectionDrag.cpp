#include "canvas/view/gestures/ConnectionDrag.h"

#include <cmath>

#include "canvas/view/NodeSearch.h"

namespace quilmora {

ConnectionDrag::ConnectionDrag(GestureContext context, const QUuid& sourceID, QPointF start)
    : CanvasGesture(context), m_sourceID(sourceID), m_start(start) {}

ConnectionDrag::~ConnectionDrag() {
  state().handleDragSourceID.reset();
  state().handleDragEndPoint.reset();
  state().handleDragTargetID.reset();
}

// The connection grows out of the topic's centre, not out of the handle.
std::optional<QPointF> ConnectionDrag::endPoint(const PointerInput& input) const {
  const std::optional<Node> source = editor().nodeByID(m_sourceID);
  if (!source) return std::nullopt;
  return source->position + canvasPoint(input.position) - m_start;
}

void ConnectionDrag::change(const PointerInput& input) {
  state().handleDragSourceID = m_sourceID;
  state().handleDragEndPoint = endPoint(input);
  state().handleDragTargetID.reset();
  if (const auto& point = state().handleDragEndPoint)
    state().handleDragTargetID = findNearestNode(editor(), *point, m_sourceID, previewRadius);
}

void ConnectionDrag::end(const PointerInput& input) {
  const std::optional<QPointF> point = endPoint(input);
  if (!point) return;
  if (const std::optional<QUuid> target = dropTarget(*point))
    input.modifiers.shift ? editor().addRelationship(m_sourceID, *target) : editor().createEdge(m_sourceID, *target);
  else
    editor().createChildAt(m_sourceID, point->x(), point->y());
}

// The first topic in drawing order that is near enough, not the nearest.
std::optional<QUuid> ConnectionDrag::dropTarget(QPointF point) const {
  const MapIndex& index = editor().mapIndex();
  const auto& positions = index.positions();
  for (std::size_t i = 0; i < positions.size(); ++i) {
    if (!(std::hypot(positions[i].x() - point.x(), positions[i].y() - point.y()) < dropRadius)) continue;
    const QUuid& id = (*index.ids())[index.numberOfNode()[i]];
    if (id != m_sourceID) return id;
  }
  return std::nullopt;
}

}  // namespace quilmora
