#include "editor/KeyCommands.h"

#include <QPointer>

#include "editor/MindMapViewModel.h"
#include "editor/WindowCommands.h"
#include "platform/Scheduler.h"

namespace quilmora {

namespace {

constexpr std::chrono::milliseconds nextTurn{0};

MindMapViewModel::Direction directionOf(int arrowKey) {
  switch (arrowKey) {
    case Qt::Key_Left:
      return MindMapViewModel::Direction::left;
    case Qt::Key_Right:
      return MindMapViewModel::Direction::right;
    case Qt::Key_Up:
      return MindMapViewModel::Direction::up;
    default:
      return MindMapViewModel::Direction::down;
  }
}

}  // namespace

bool KeyCommands::press(int key, Qt::KeyboardModifiers modifiers, bool textHasKeyboard) {
  if (textHasKeyboard || m_editor.isEditingInline()) return false;
  // The keypad's keys are treated like the others. Except for the letters and Tab below, modifiers make no difference.
  const Qt::KeyboardModifiers held = modifiers & ~Qt::KeypadModifier;
  switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
      return arrow(key);
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
      return m_commands.deleteKey();
    case Qt::Key_Space:
      return quickLook();
    case Qt::Key_Escape:
      return m_editor.escape();
    case Qt::Key_Tab:
      return held == Qt::NoModifier && m_commands.tabKey();
    case Qt::Key_A:
      if (held != Qt::ControlModifier) return false;
      m_scheduler.after(nextTurn, [editor = QPointer(&m_editor)] {
        if (editor) editor->selectAll();
      });
      return true;
    case Qt::Key_V:
      return held == Qt::ControlModifier && paste();
    default:
      return false;
  }
}

bool KeyCommands::arrow(int key) {
  if (!m_editor.isPresentationMode()) return m_editor.moveSelection(directionOf(key));
  if (key == Qt::Key_Left || key == Qt::Key_Up)
    m_editor.previousPresentationStep();
  else
    m_editor.nextPresentationStep();
  return true;
}

// State changes after the event, never during it.
bool KeyCommands::quickLook() {
  const auto selected = m_editor.firstSelectedNode();
  if (!selected) return false;
  m_scheduler.after(nextTurn, [editor = QPointer(&m_editor), id = *selected] {
    if (editor) editor->toggleQuickLook(id);
  });
  return true;
}

// The sheet opens once the key event is over, so that it does not receive the rest of it.
bool KeyCommands::paste() {
  const std::optional<QString> text = m_commands.textForSmartPaste();
  if (!text) return false;
  m_scheduler.after(nextTurn, [editor = QPointer(&m_editor), text = *text] {
    if (!editor) return;
    editor->setSmartPasteText(text);
    editor->setShowSmartPaste(true);
  });
  return true;
}

}  // namespace quilmora
