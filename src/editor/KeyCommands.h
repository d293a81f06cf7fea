#pragma once

#include <Qt>

namespace quilmora {

class MindMapViewModel;
class Scheduler;
class WindowCommands;

// What the keys of a window do before any view sees them. All three arguments must outlive it.
class KeyCommands {
 public:
  KeyCommands(MindMapViewModel& editor, WindowCommands& commands, Scheduler& scheduler)
      : m_editor(editor), m_commands(commands), m_scheduler(scheduler) {}

  // Returns whether the key is consumed; otherwise it is passed on unchanged to the views. Every key is passed on while
  // a title is being edited, or while a text field has the keyboard (`textHasKeyboard`).
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
