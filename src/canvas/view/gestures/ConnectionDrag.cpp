#include "canvas/view/gestures/ConnectionDrag.h"

#include <cmath>

#include "canvas/view/NodeSearch.h"

namespace quilmora {

ConnectionDrag::ConnectionDrag(GestureContext context, const QUuid& sourceID)
    : CanvasGesture(context), m_sourceID(sourceID) {}

ConnectionDrag::~ConnectionDrag() {
  state().handleDragSourceID.reset();
  state().handleDragEndPoint.reset();
  state().handleDragTargetID.reset();
}

void ConnectionDrag::change(const PointerInput& input) {
  const QPointF point = canvasPoint(input.position);
  state().handleDragSourceID = m_sourceID;
  state().handleDragEndPoint = point;
  state().handleDragTargetID = findNearestNode(editor(), point, m_sourceID, previewRadius);
}

void ConnectionDrag::end(const PointerInput& input) {
  if (!editor().hasNode(m_sourceID)) return;
  const QPointF point = canvasPoint(input.position);
  if (const std::optional<QUuid> target = dropTarget(point))
    input.modifiers.shift ? editor().addRelationship(m_sourceID, *target) : editor().createEdge(m_sourceID, *target);
  else
    editor().createChildAt(m_sourceID, point.x(), point.y());
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
