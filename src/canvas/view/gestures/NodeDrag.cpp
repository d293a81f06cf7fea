#include "canvas/view/gestures/NodeDrag.h"

#include "canvas/view/NodeSearch.h"

namespace quilmora {

NodeDrag::NodeDrag(GestureContext context, const QUuid& nodeID, QPointF start)
    : CanvasGesture(context), m_nodeID(nodeID), m_start(start) {}

NodeDrag::~NodeDrag() {
  state().draggedNodeID.reset();
  state().nodeDragTranslation = {};
  state().reparentTargetID.reset();
}

void NodeDrag::change(const PointerInput& input) {
  if (!editor().selectedNodeIDs().contains(m_nodeID)) editor().selectNode(m_nodeID, input.modifiers.shift);
  state().draggedNodeID = m_nodeID;
  state().nodeDragTranslation = canvasPoint(input.position) - m_start;
  state().reparentTargetID = input.modifiers.command ? dropTarget(state().nodeDragTranslation) : std::optional<QUuid>();
}

void NodeDrag::end(const PointerInput& input) {
  if (state().reparentTargetID) {
    editor().reparentNode(m_nodeID, *state().reparentTargetID);
    return;
  }
  editor().moveSelectedNodes(canvasPoint(input.position) - m_start);
}

std::optional<QUuid> NodeDrag::dropTarget(QPointF translation) const {
  const std::optional<Node> node = editor().nodeByID(m_nodeID);
  if (!node) return std::nullopt;
  return findNearestNode(editor(), node->position + translation, m_nodeID, dropRadius);
}

}  // namespace quilmora
