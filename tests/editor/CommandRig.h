#pragma once

#include <gtest/gtest.h>

#include "support/EditorRig.h"
#include "support/QtPrinters.h"

namespace quilmora::test {

// Records the signals of an editor by name, in the order of emission.
class SignalLog {
 public:
  explicit SignalLog(MindMapViewModel& editor) {
    using Editor = MindMapViewModel;
    note(editor, &Editor::mindMapChanged, "mindMap");
    note(editor, &Editor::selectedNodeIDsChanged, "nodes");
    note(editor, &Editor::selectedEdgeIDsChanged, "edges");
    note(editor, &Editor::selectedRegionIDChanged, "region");
    note(editor, &Editor::canvasOffsetChanged, "offset");
    note(editor, &Editor::canvasZoomChanged, "zoom");
    note(editor, &Editor::isEdgeCreationModeChanged, "branchMode");
    note(editor, &Editor::edgeCreationSourceIDChanged, "branchSource");
    note(editor, &Editor::collapsedNodeIDsChanged, "collapsed");
    note(editor, &Editor::isEditingInlineChanged, "editing");
    note(editor, &Editor::quickLookNodeIDChanged, "quickLook");
    note(editor, &Editor::showSmartPasteChanged, "showSmartPaste");
    note(editor, &Editor::smartPasteTextChanged, "smartPasteText");
    note(editor, &Editor::activeLensChanged, "lens");
    note(editor, &Editor::isPresentationModeChanged, "presentation");
    note(editor, &Editor::presentationNodeIndexChanged, "presentationIndex");
    note(editor, &Editor::isSearchingChanged, "searching");
    note(editor, &Editor::searchQueryChanged, "query");
    note(editor, &Editor::searchResultIDsChanged, "results");
    note(editor, &Editor::searchResultIndexChanged, "resultIndex");
    note(editor, &Editor::lastKnownCanvasSizeChanged, "canvasSize");
    note(editor, &Editor::isDirtyChanged, "dirty");
    note(editor, &Editor::historyChanged, "history");
  }

  // The signals since the last call, such as "history dirty mindMap".
  QString take() { return std::exchange(m_names, {}).join(QLatin1Char(' ')); }

 private:
  void note(MindMapViewModel& editor, void (MindMapViewModel::*signal)(), const char* name) {
    QObject::connect(&editor, signal, &m_context, [this, name] { m_names.append(QLatin1String(name)); });
  }

  QObject m_context;
  QStringList m_names;
};

// An editor whose signals are recorded, and which reports what a command did to the map and its history.
struct CommandRig : EditorRig {
  explicit CommandRig(MindMap map = {}) : EditorRig(std::move(map)), before(editor.mindMap()), log(editor) {}

  // Forgets what happened so far.
  void settle() {
    before = editor.mindMap();
    undoBefore = editor.undoCount();
    clock.advance(std::chrono::hours(1));
    log.take();
  }
  // No signal, no snapshot, and exactly the same map as before.
  void expectNothing() {
    EXPECT_EQ(log.take(), QString());
    EXPECT_EQ(editor.undoCount(), undoBefore);
    EXPECT_TRUE(isVeryMap(editor.mindMap(), before));
  }
  // This many snapshots, the first of which is the previous map, and whether updatedAt is now.
  void expectChange(int snapshots, bool stamps) {
    EXPECT_EQ(editor.undoCount() - undoBefore, snapshots);
    EXPECT_EQ(editor.isDirty(), snapshots > 0 || undoBefore > 0);
    EXPECT_EQ(isStamped(), stamps);
    const MindMap after = editor.mindMap();
    for (int i = 0; i < snapshots; ++i) editor.undo();
    EXPECT_TRUE(isVeryMap(editor.mindMap(), before));
    for (int i = 0; i < snapshots; ++i) editor.redo();
    EXPECT_TRUE(isVeryMap(editor.mindMap(), after));
    log.take();
  }
  // The map, the history and the dirty flag are as before; the view may have moved.
  void expectMapUntouched() {
    EXPECT_EQ(editor.undoCount(), undoBefore);
    EXPECT_EQ(editor.isDirty(), undoBefore > 0);
    EXPECT_TRUE(isVeryMap(editor.mindMap(), before));
  }
  IdSet selected() const { return editor.selectedNodeIDs(); }
  void select(std::initializer_list<int> numbers) {
    IdSet ids;
    for (const int number : numbers) ids.insert(topicId(number));
    editor.setSelectedNodeIDs(std::move(ids));
    log.take();
  }

  MindMap before;
  int undoBefore = 0;
  SignalLog log;
};

inline IdSet idSet(std::initializer_list<int> numbers) {
  IdSet ids;
  for (const int number : numbers) ids.insert(topicId(number));
  return ids;
}

// No topic of SmallMap's numbering has it.
inline QUuid missingId() {
  return topicId(999'999'999);
}

}  // namespace quilmora::test
