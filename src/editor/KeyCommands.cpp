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
  switch (actionOf(key)) {
    case Action::arrow:
      return arrow(key);
    case Action::remove:
      return m_commands.deleteKey();
    case Action::quickLook:
      return quickLook();
    case Action::escape:
      return m_editor.escape();
    case Action::tab:
      return held == Qt::NoModifier && m_commands.tabKey();
    case Action::none:
      break;
  }
  if (held != Qt::ControlModifier) return false;
  if (key == Qt::Key_V) return paste();
  if (key != Qt::Key_A) return false;
  m_scheduler.after(nextTurn, [editor = QPointer(&m_editor)] {
    if (editor) editor->selectAll();
  });
  return true;
}

KeyCommands::Action KeyCommands::actionOf(int key) {
  switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
      return Action::arrow;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
      return Action::remove;
    case Qt::Key_Space:
      return Action::quickLook;
    case Qt::Key_Escape:
      return Action::escape;
    case Qt::Key_Tab:
      return Action::tab;
    default:
      return Action::none;
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
