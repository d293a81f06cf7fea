#pragma once

#include "editor/MindMapViewModel.h"

namespace quilmora {

class Clipboard;

// The commands behind a window's menus and keys, one level above the editor: they choose what the editor's own commands
// act on. They are ignored while a title is being edited.
class WindowCommands {
 public:
  // Without a clipboard there is nothing to paste. Both must outlive the object.
  explicit WindowCommands(MindMapViewModel& editor, const Clipboard* clipboard = nullptr)
      : m_editor(editor), m_clipboard(clipboard) {}

  // A free topic at a fixed spot that moves on by 40 each time and never returns.
  void createFreeTopic();
  // A sibling of the first selected topic; a child if that is a root; else a child of the first root, or a first topic.
  void createNode();
  // A child of the first selected topic. Returns whether the key was handled.
  bool tabKey();
  // Deletes the selection if at least one topic is selected. Returns whether the key was handled.
  bool deleteKey();
  // Ends branch mode if it is on, and starts it otherwise.
  void toggleEdgeCreation();
  // The editor's own command, ignored while a title is being edited.
  void duplicateSelection();
  // The clipboard's text, if pasting it onto the canvas asks how; otherwise nothing.
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
