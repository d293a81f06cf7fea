#pragma once

#include <memory>

#include "editor/MindMapViewModel.h"
#include "editor/WindowCommands.h"
#include "platform/Bookmarks.h"
#include "platform/Clock.h"
#include "platform/Log.h"
#include "platform/SettingsStore.h"

namespace quilmora {

// The editor without a window that a script works on, and its services. Its settings live in memory, empty at first,
// for the whole script.
class ScriptEditor {
 public:
  ScriptEditor() { startBlank(); }

  // Replaces the editor with a fresh one.
  void start(MindMap map);
  void startBlank() { start(MindMap::blankMap(m_clock)); }

  MindMapViewModel& editor() { return *m_editor; }
  WindowCommands& commands() { return *m_commands; }
  SettingsStore& settings() { return m_settings; }
  const Clock& clock() const { return m_clock; }

 private:
  SystemClock m_clock;
  MemorySettingsStore m_settings;
  PathBookmarks m_bookmarks;
  MemoryLog m_log;
  std::unique_ptr<MindMapViewModel> m_editor;
  std::unique_ptr<WindowCommands> m_commands;
};

}  // namespace quilmora
