#include <QInputMethodEvent>
#include <QKeyEvent>

#include "canvas/view/CanvasView.h"
#include "canvas/view/EventTranslation.h"
#include "canvas/view/TitleEditor.h"

namespace quilmora {

bool CanvasView::pressKey(const QKeyEvent& event) {
  if (event.key() == Qt::Key_Alt) m_gestures.setOptionHeld(true);
  if (isModifierKey(event.key())) return false;
  m_animation.finish();
  if (m_titleEditor && !m_titleEditor->hasFocus()) {
    m_titleEditor->takeKey(event);
    return true;
  }
  if (event.key() == Qt::Key_F10 && event.modifiers() == Qt::ShiftModifier) return openMenuOfSelection();
  if (pressArrowOrCommand(event)) return true;
  // A letter opens the title with everything selected, and so replaces it.
  if (!typesText(event) || !beginTyping()) return false;
  m_titleEditor->takeKey(event);
  return true;
}

bool CanvasView::pressArrowOrCommand(const QKeyEvent& event) {
  const bool hadSelection = !m_editor.selectedNodeIDs().empty();
  if (!m_keys.press(event.key(), event.modifiers())) return false;
  // Unlike later ones, the first topic selected by keys is not centred.
  const auto selected = m_editor.firstSelectedNode();
  if (!hadSelection && selected && !m_editor.isPresentationMode()) m_reveal.reveal({*selected});
  return true;
}

void CanvasView::keyReleaseEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Alt) m_gestures.setOptionHeld(false);
  QWidget::keyReleaseEvent(event);
}

// --- Letters ---

bool CanvasView::takesLetters() const {
  return !m_labelField && !m_gestures.isDragging() && !m_editor.isEditingInline() && !m_editor.isPresentationMode() &&
         !m_editor.isEdgeCreationMode() && m_editor.selectedNodeIDs().size() == 1;
}

bool CanvasView::beginTyping() {
  if (!takesLetters()) return false;
  const QUuid id = *m_editor.firstSelectedNode();
  if (!m_editor.hasNode(id) || m_editor.isHidden(id)) return false;
  m_gestures.beginEditing(id);
  return m_titleEditor != nullptr;
}

// Input methods compose, and show their keyboards, only where text is accepted.
void CanvasView::followInputMethod() {
  const bool isWanted = m_titleEditor || takesLetters();
  if (testAttribute(Qt::WA_InputMethodEnabled) != isWanted) setAttribute(Qt::WA_InputMethodEnabled, isWanted);
}

void CanvasView::inputMethodEvent(QInputMethodEvent* event) {
  const bool hasText = !event->preeditString().isEmpty() || !event->commitString().isEmpty();
  if (!m_titleEditor && hasText) beginTyping();
  if (m_titleEditor)
    m_titleEditor->takeInput(*event);
  else
    QWidget::inputMethodEvent(event);
}

QVariant CanvasView::inputMethodQuery(Qt::InputMethodQuery query) const {
  const bool asksForPlace = query == Qt::ImCursorRectangle || query == Qt::ImAnchorRectangle;
  if (!m_titleEditor && asksForPlace && takesLetters()) {
    const auto node = m_editor.firstSelectedNode();
    const ViewTransform view{m_editor.canvasOffset(), m_editor.canvasZoom()};
    if (const auto topic = node ? m_editor.nodeByID(*node) : std::nullopt)
      return QRectF(view.toView(topic->position), QSizeF(1, 1));
  }
  if (!m_titleEditor || query == Qt::ImEnabled) return QWidget::inputMethodQuery(query);
  const QVariant answer = m_titleEditor->inputMethodQuery(query);
  return asksForPlace ? QVariant(answer.toRectF().translated(m_titleEditor->pos())) : answer;
}

}  // namespace quilmora
