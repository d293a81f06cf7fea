#include "canvas/view/CanvasScene.h"

#include <QPainter>

#include "editor/MindMapViewModel.h"
#include "themes/Color.h"

namespace quilmora {

void CanvasScene::paint(QPainter& painter, const QRectF& exposed, const CanvasState&, QSizeF) {
  painter.fillRect(exposed, colorFromHex(m_editor.mindMap().canvas.background));
}

CanvasTarget CanvasScene::targetAt(QPointF, const CanvasState&) {
  return {};
}

TitleLook CanvasScene::titleLook(const QUuid&) {
  return {};
}

QRectF CanvasScene::titleField(const QUuid& nodeID, QSizeF size) {
  const std::optional<Node> node = m_editor.nodeByID(nodeID);
  QRectF field(QPointF(), size);
  if (node) field.moveCenter(node->position);
  return field;
}

}  // namespace quilmora
