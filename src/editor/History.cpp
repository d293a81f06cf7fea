#include "editor/MindMapViewModel.h"

namespace quilmora {

void MindMapViewModel::captureSnapshot(bool throttled) {
  if (throttled) {
    const SteadyPoint now = m_services.clock.steadyNow();
    if (m_lastCaptureTime && !(now - *m_lastCaptureTime > captureThrottleInterval)) return;
    m_lastCaptureTime = now;
  }
  pushHistory(m_undoStack);
  m_redoStack.clear();
  Q_EMIT historyChanged();
  setIsDirty(true);
}

void MindMapViewModel::pushHistory(std::vector<MindMap>& stack) {
  const bool isFull = stack.size() >= maxHistorySize;
  stack.push_back(mindMap());
  if (isFull) stack.erase(stack.begin());
}

void MindMapViewModel::undo() {
  if (m_undoStack.empty()) return;
  pushHistory(m_redoStack);
  MindMap before = std::move(m_undoStack.back());
  m_undoStack.pop_back();
  setMindMap(std::move(before));
  Q_EMIT historyChanged();
}

void MindMapViewModel::redo() {
  if (m_redoStack.empty()) return;
  pushHistory(m_undoStack);
  MindMap after = std::move(m_redoStack.back());
  m_redoStack.pop_back();
  setMindMap(std::move(after));
  Q_EMIT historyChanged();
}

void MindMapViewModel::clearHistory() {
  m_undoStack.clear();
  m_redoStack.clear();
  Q_EMIT historyChanged();
}

}  // namespace quilmora
