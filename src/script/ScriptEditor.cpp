#include "script/ScriptEditor.h"

namespace quilmora {

void ScriptEditor::start(MindMap map) {
  m_commands.reset();
  m_editor =
      std::make_unique<MindMapViewModel>(std::move(map), EditorServices{m_clock, m_settings, m_bookmarks, m_log});
  m_commands = std::make_unique<WindowCommands>(*m_editor);
}

}  // namespace quilmora
