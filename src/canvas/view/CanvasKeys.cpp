#include "canvas/view/CanvasKeys.h"

#include <cmath>

#include "canvas/geometry/ViewTransform.h"
#include "canvas/view/CanvasGestures.h"

namespace quilmora {

namespace {

bool isArrow(int key) {
  return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
}

bool opensTitle(int key) {
  return key == Qt::Key_F2 || key == Qt::Key_Return || key == Qt::Key_Enter;
}

}  // namespace

bool CanvasKeys::comesBeforeShortcuts(int key, Qt::KeyboardModifiers modifiers) {
  const Qt::KeyboardModifiers held = modifiers & ~Qt::KeypadModifier;
  if (held == Qt::NoModifier) return opensTitle(key) || KeyCommands::isPlainKey(key);
  return held == Qt::ControlModifier && key == Qt::Key_A;
}

bool CanvasKeys::press(int key, Qt::KeyboardModifiers modifiers) {
  if (m_editor.isEditingInline()) return false;
  const bool isPlain = (modifiers & ~Qt::KeypadModifier) == Qt::NoModifier;
  if (opensTitle(key)) return isPlain && editTitle();
  if (key == Qt::Key_Escape && m_gestures.cancel()) return true;
  return m_windowKeys.press(key, modifiers, false) || (isArrow(key) && selectRootInTheMiddle());
}

bool CanvasKeys::selectRootInTheMiddle() {
  const std::optional<QUuid> selected = m_editor.firstSelectedNode();
  if (m_editor.isPresentationMode() || (selected && m_editor.hasNode(*selected))) return false;
  const QSizeF size = m_editor.lastKnownCanvasSize().value_or(MindMapViewModel::assumedCanvasSize);
  const QPointF middle = ViewTransform{m_editor.canvasOffset(), m_editor.canvasZoom()}.toCanvas(
      QPointF(size.width() / 2, size.height() / 2));
  const MapIndex& index = m_editor.mapIndex();
  std::optional<QUuid> nearest;
  double shortest = 0.0;
  for (const QUuid& root : m_editor.treeInfo().roots()) {
    const std::uint32_t ordinal = index.find(root);
    if (ordinal == MapIndex::npos) continue;
    const QPointF way = index.positions()[ordinal] - middle;
    const double distance = std::hypot(way.x(), way.y());
    if (nearest && !(distance < shortest)) continue;
    nearest = root;
    shortest = distance;
  }
  if (nearest) m_editor.selectNode(*nearest, false);
  return nearest.has_value();
}

bool CanvasKeys::editTitle() {
  if (m_editor.selectedNodeIDs().size() != 1) return false;
  m_gestures.beginEditing(*m_editor.firstSelectedNode());
  return m_editor.isEditingInline();
}

}  // namespace quilmora
