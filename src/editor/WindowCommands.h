#pragma once

#include "editor/MindMapViewModel.h"

namespace quilmora {

class Clipboard;

// The commands that menus and keys of a window bind, above the editor object: they choose what the editor's own
// commands act on. Those that a person gives while a title is being edited are ignored.
class WindowCommands {
 public:
  // Without a clipboard there is nothing to paste. Both outlive the object.
  explicit WindowCommands(MindMapViewModel& editor, const Clipboard* clipboard = nullptr)
      : m_editor(editor), m_clipboard(clipboard) {}

  // A free topic at a fixed spot that moves on by 40 each time and never comes back.
  void createFreeTopic();
  // A sibling of the first selected topic, a child when that is a root, else a child of the first root or a first
  // topic.
  void createNode();
  // A child of the first selected topic. Returns whether the key counts as handled.
  bool tabKey();
  // Deletes the selection when at least one topic is selected. Returns whether the key counts as handled.
  bool deleteKey();
  // Ends branch mode when it is on, and starts it otherwise.
  void toggleEdgeCreation();
  // The editor's own command, but for a title being edited.
  void duplicateSelection();
  // The clipboard's text where pasting it onto the canvas asks how, or nothing.
  std::optional<QString> textForSmartPaste() const;
  void collapseNode();
  void expandNode();
  void zoomIn(QSizeF canvasSize);
  void zoomOut(QSizeF canvasSize);

  double newNodeOffset() const { return m_newNodeOffset; }

 private:
  MindMapViewModel& m_editor;
  const Clipboard* m_clipboard;
  double m_newNodeOffset = 0.0;
};

}  // namespace quilmora
