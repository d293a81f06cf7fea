#pragma once

#include "canvas/view/CanvasInput.h"
#include "editor/MindMapViewModel.h"

namespace quilmora {

class CanvasGestures;
class Scheduler;
class WindowCommands;

// What the keys do while the canvas has the keyboard.
class CanvasKeys {
 public:
  CanvasKeys(MindMapViewModel& editor, WindowCommands& commands, Scheduler& scheduler, CanvasGestures& gestures)
      : m_editor(editor), m_commands(commands), m_scheduler(scheduler), m_gestures(gestures) {}

  // Returns whether the key counts as handled. While a title is being edited none does.
  bool press(CanvasKey key);

 private:
  bool arrow(MindMapViewModel::Direction direction);
  bool editTitle();

  MindMapViewModel& m_editor;
  WindowCommands& m_commands;
  Scheduler& m_scheduler;
  CanvasGestures& m_gestures;
};

}  // namespace quilmora
