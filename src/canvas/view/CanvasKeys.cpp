#include "canvas/view/CanvasKeys.h"

#include "canvas/view/CanvasGestures.h"

namespace quilmora {

bool CanvasKeys::press(int key, Qt::KeyboardModifiers modifiers) {
  if (m_editor.isEditingInline()) return false;
  const bool isPlain = (modifiers & ~Qt::KeypadModifier) == Qt::NoModifier;
  switch (key) {
    case Qt::Key_Escape:
      if (m_gestures.cancel()) return true;
      break;
    case Qt::Key_F2:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return isPlain && editTitle();
    default:
      break;
  }
  return m_windowKeys.press(key, modifiers, false);
}

bool CanvasKeys::editTitle() {
  if (m_editor.selectedNodeIDs().size() != 1) return false;
  m_gestures.beginEditing(*m_editor.firstSelectedNode());
  return m_editor.isEditingInline();
}

}  // namespace quilmora
