#pragma once

#include <Qt>

namespace quilmora {

class MindMapViewModel;
class Scheduler;
class WindowCommands;

// What the keys of a window do before any view sees them. All three arguments outlive it.
class KeyCommands {
 public:
  KeyCommands(MindMapViewModel& editor, WindowCommands& commands, Scheduler& scheduler)
      : m_editor(editor), m_commands(commands), m_scheduler(scheduler) {}

  // Returns whether the key is consumed; otherwise it passes on unchanged to the views. Every key passes on while a
  // title is being edited, or a text field has the keyboard as the caller tells.
  bool press(int key, Qt::KeyboardModifiers modifiers, bool textHasKeyboard);

 private:
  bool arrow(int key);
  bool quickLook();
  bool paste();

  MindMapViewModel& m_editor;
  WindowCommands& m_commands;
  Scheduler& m_scheduler;
};

}  // namespace quilmora
