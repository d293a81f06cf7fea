#include "editor/MindMapViewModel.h"
#include "editor/edits/PastedTopics.h"

namespace quilmora {

void MindMapViewModel::copySelection() {
  edits::Clipping copied = edits::copied(mindMap(), selectedNodeIDs());
  if (!copied.nodes.empty()) m_copied = std::move(copied);
}

void MindMapViewModel::pasteClipboard() {
  if (m_copied.nodes.empty()) return;
  captureSnapshot(false);
  IdSet pasted;
  stampedEdit([&](MindMap& map) { pasted = edits::paste(map, m_copied); });
  setSelectedNodeIDs(std::move(pasted));
  setSelectedEdgeIDs({});
}

void MindMapViewModel::duplicateSelection() {
  copySelection();
  pasteClipboard();
}

void MindMapViewModel::smartPaste(const QString& text, SmartPasteMode mode, const std::optional<QUuid>& parentID) {
  const std::vector<QStringView> lines = linesWithText(text);
  if (lines.empty()) return;
  captureSnapshot(false);
  const edits::PasteTarget target{mindMap(), mapIndex(), treeInfo(), currentTheme(),
                                  parentID ? parentID : firstSelectedNode()};
  edits::PastedTopics pasted;
  switch (mode) {
    case SmartPasteMode::singleNode:
      pasted = edits::pastedTopic(text, target);
      break;
    case SmartPasteMode::multipleNodes:
      pasted = edits::pastedSiblings(lines, target);
      break;
    case SmartPasteMode::nestedOutline:
      pasted = edits::pastedOutline(lines, target);
      break;
  }
  IdSet ids = pasted.ids();
  edit([&](MindMap& map) {
    pasted.appendTo(map);
    // Only a single topic changes the map's date.
    if (mode == SmartPasteMode::singleNode) stamp(map);
  });
  setSelectedNodeIDs(std::move(ids));
  setIsDirty(true);
}

}  // namespace quilmora
