#include "canvas/view/gestures/HandleDrags.h"

#include "canvas/view/NodeSearch.h"
#include "model/FindById.h"

namespace quilmora {

// --- Ends of an edge ---

EndpointDrag::EndpointDrag(GestureContext context, const QUuid& edgeID, EdgeEndpoint endpoint, QPointF start)
    : CanvasGesture(context), m_edgeID(edgeID), m_endpoint(endpoint), m_start(start) {}

EndpointDrag::~EndpointDrag() {
  state().draggingEdgeID.reset();
  state().draggingEdgeEndpoint.reset();
  state().edgeDragPosition.reset();
  state().draggedHandle.reset();
}

std::optional<Edge> EndpointDrag::edge() const {
  return recordByID(editor().mindMap().edges, m_edgeID);
}

void EndpointDrag::change(const PointerInput& input) {
  state().draggingEdgeID = m_edgeID;
  state().draggingEdgeEndpoint = m_endpoint;
  state().edgeDragPosition.reset();
  const QPointF translation = canvasPoint(input.position) - m_start;
  using Kind = ShownGestures::HandleKind;
  const Kind kind = m_endpoint == EdgeEndpoint::source ? Kind::edgeSource : Kind::edgeTarget;
  state().draggedHandle = {kind, m_edgeID, translation};
  const std::optional<Edge> dragged = edge();
  if (!dragged) return;
  const std::optional<Node> node = editor().nodeByID(m_endpoint == EdgeEndpoint::source ? dragged->from : dragged->to);
  if (node) state().edgeDragPosition = node->position + translation;
}

void EndpointDrag::end(const PointerInput& input) {
  change(input);
  const std::optional<Edge> dragged = edge();
  if (dragged && state().edgeDragPosition) reconnect(*dragged, *state().edgeDragPosition);
}

void EndpointDrag::reconnect(const Edge& dragged, QPointF point) const {
  const bool movesTarget = m_endpoint == EdgeEndpoint::target;
  const QUuid& otherEnd = movesTarget ? dragged.from : dragged.to;
  const std::optional<QUuid> topic = findNearestNode(editor(), point, otherEnd, dropRadius);
  if (!topic) return;
  if (movesTarget) {
    if (!editor().isDescendant(dragged.from, *topic)) editor().reconnectEdgeTarget(m_edgeID, *topic);
  } else if (!editor().isDescendant(*topic, dragged.to)) {
    editor().reconnectEdgeSource(m_edgeID, *topic);
  }
}

// --- Bends ---

BendDrag::BendDrag(GestureContext context, ShownGestures::HandleKind kind, const QUuid& ownerID, QPointF start)
    : CanvasGesture(context), m_kind(kind), m_ownerID(ownerID), m_start(start) {}

BendDrag::~BendDrag() {
  state().draggedHandle.reset();
}

void BendDrag::change(const PointerInput& input) {
  state().draggedHandle = {m_kind, m_ownerID, canvasPoint(input.position) - m_start};
}

void BendDrag::end(const PointerInput& input) {
  const QPointF translation = canvasPoint(input.position) - m_start;
  if (m_kind == ShownGestures::HandleKind::relationshipBend) {
    if (const auto link = recordByID(editor().mindMap().relationships, m_ownerID))
      editor().setRelationshipBend(link->id, link->controlPointOffset.value_or(QPointF()) + translation);
  } else if (const auto edge = recordByID(editor().mindMap().edges, m_ownerID)) {
    editor().setEdgeBend(edge->id, edge->controlPointOffset.value_or(QPointF()) + translation);
  }
}

}  // namespace quilmora
