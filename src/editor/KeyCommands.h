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

  // Whether press() has something to do for this key when no modifier is held.
  static bool isPlainKey(int key) { return actionOf(key) != Action::none; }

 private:
  enum class Action { none, arrow, remove, quickLook, escape, tab };
  static Action actionOf(int key);
  bool arrow(int key);
  bool quickLook();
  bool paste();

  MindMapViewModel& m_editor;
  WindowCommands& m_commands;
  Scheduler& m_scheduler;
};

}  // namespace quilmora
