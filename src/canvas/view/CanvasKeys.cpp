#include "canvas/view/CanvasKeys.h"

#include "canvas/view/CanvasGestures.h"
#include "editor/WindowCommands.h"
#include "platform/Scheduler.h"

namespace quilmora {

namespace {

using Direction = MindMapViewModel::Direction;

}  // namespace

bool CanvasKeys::press(CanvasKey key) {
  if (m_editor.isEditingInline()) return false;
  switch (key) {
    case CanvasKey::tab:
      return m_commands.tabKey();
    case CanvasKey::deleteKey:
      return m_commands.deleteKey();
    case CanvasKey::escape:
      return m_gestures.cancel() || m_editor.escape();
    case CanvasKey::editTitle:
      return editTitle();
    case CanvasKey::selectAll:
      // State changes after the event, never inside it. The editor outlives the scheduler's work.
      m_scheduler.after(std::chrono::milliseconds(0), [&editor = m_editor] { editor.selectAll(); });
      return true;
    case CanvasKey::left:
      return arrow(Direction::left);
    case CanvasKey::right:
      return arrow(Direction::right);
    case CanvasKey::up:
      return arrow(Direction::up);
    case CanvasKey::down:
      return arrow(Direction::down);
    case CanvasKey::other:
      return false;
  }
  Q_UNREACHABLE();
}

bool CanvasKeys::arrow(Direction direction) {
  if (!m_editor.isPresentationMode()) return m_editor.moveSelection(direction);
  const bool isBackward = direction == Direction::left || direction == Direction::up;
  isBackward ? m_editor.previousPresentationStep() : m_editor.nextPresentationStep();
  return true;
}

bool CanvasKeys::editTitle() {
  if (m_editor.selectedNodeIDs().size() != 1) return false;
  m_gestures.beginEditing(*m_editor.firstSelectedNode());
  return m_editor.isEditingInline();
}

}  // namespace quilmora
