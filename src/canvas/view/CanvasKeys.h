#pragma once

#include "editor/KeyCommands.h"
#include "editor/MindMapViewModel.h"

namespace quilmora {

class CanvasGestures;

// What the keys do while the canvas has the keyboard: its own few, then those of the window.
class CanvasKeys {
 public:
  CanvasKeys(MindMapViewModel& editor, WindowCommands& commands, Scheduler& scheduler, CanvasGestures& gestures)
      : m_editor(editor), m_gestures(gestures), m_windowKeys(editor, commands, scheduler) {}

  // A Qt::Key with its modifiers. Returns whether the key counts as handled. While a title is being edited none does.
  bool press(int key, Qt::KeyboardModifiers modifiers = {});

 private:
  bool editTitle();
  // Where no topic is selected an arrow begins with the root nearest to the middle of the view.
  bool selectRootInTheMiddle();

  MindMapViewModel& m_editor;
  CanvasGestures& m_gestures;
  KeyCommands m_windowKeys;
};

}  // namespace quilmora
