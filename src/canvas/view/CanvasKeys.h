#pragma once

#include "editor/KeyCommands.h"
#include "editor/MindMapViewModel.h"

namespace quilmora {

class CanvasGestures;

// What the keys do while the canvas has the keyboard: a few of its own, then those of the window.
class CanvasKeys {
 public:
  CanvasKeys(MindMapViewModel& editor, WindowCommands& commands, Scheduler& scheduler, CanvasGestures& gestures)
      : m_editor(editor), m_gestures(gestures), m_windowKeys(editor, commands, scheduler) {}

  // A Qt::Key with its modifiers. Returns whether the key was handled. While a title is being edited none is.
  bool press(int key, Qt::KeyboardModifiers modifiers = {});

  // Whether the key goes to the canvas rather than to a menu entry with the same shortcut.
  static bool comesBeforeShortcuts(int key, Qt::KeyboardModifiers modifiers);

 private:
  bool editTitle();
  // With no topic selected, an arrow starts at the root nearest to the middle of the view.
  bool selectRootInTheMiddle();

  MindMapViewModel& m_editor;
  CanvasGestures& m_gestures;
  KeyCommands m_windowKeys;
};

}  // namespace quilmora
