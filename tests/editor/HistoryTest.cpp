#include <gtest/gtest.h>

#include "support/EditorRig.h"

using namespace quilmora;
using namespace quilmora::test;
using namespace std::chrono_literals;

namespace {

struct HistoryTest : ::testing::Test {
  EditorRig rig{mapOf({0})};
  MindMapViewModel& editor = rig.editor;
  QSignalSpy history{&editor, &MindMapViewModel::historyChanged};
  QSignalSpy dirty{&editor, &MindMapViewModel::isDirtyChanged};
  QSignalSpy changes{&editor, &MindMapViewModel::mindMapChanged};

  void retitle(int number) {
    MindMap map = editor.mindMap();
    map.title = QString::number(number);
    editor.setMindMap(std::move(map));
  }
  QString title() const { return editor.mindMap().title; }
};

}  // namespace

TEST_F(HistoryTest, CaptureKeepsTheMapAsItStands) {
  retitle(1);
  editor.captureSnapshot(false);
  retitle(2);
  EXPECT_EQ(editor.undoCount(), 1);
  editor.undo();
  EXPECT_EQ(title(), QStringLiteral("1"));
}

TEST_F(HistoryTest, FiftyOneCapturesLeaveFiftyWithoutTheOldest) {
  for (int i = 0; i < 51; ++i) {
    retitle(i);
    editor.captureSnapshot(false);
  }
  EXPECT_EQ(editor.undoCount(), 50);
  for (int i = 0; i < 50; ++i) editor.undo();
  EXPECT_EQ(title(), QStringLiteral("1"));
  EXPECT_EQ(editor.undoCount(), 0);
}

TEST_F(HistoryTest, FirstThrottledCaptureTakesEffect) {
  rig.clock.set(TimePoint(0us));
  editor.captureSnapshot(true);
  EXPECT_EQ(editor.undoCount(), 1);
  EXPECT_TRUE(editor.isDirty());
}

TEST_F(HistoryTest, ThrottledCaptureRightAfterAThrottledOneDoesNothingAtAll) {
  editor.captureSnapshot(true);
  retitle(1);
  editor.undo();
  ASSERT_EQ(editor.redoCount(), 1);
  history.clear();
  dirty.clear();
  editor.captureSnapshot(true);
  EXPECT_EQ(editor.undoCount(), 0);
  EXPECT_EQ(editor.redoCount(), 1);
  EXPECT_EQ(dirty.count(), 0);
  EXPECT_EQ(history.count(), 0);
}

TEST_F(HistoryTest, ThrottleNeedsMoreThanHalfASecond) {
  editor.captureSnapshot(true);
  rig.clock.advance(500ms);
  editor.captureSnapshot(true);
  EXPECT_EQ(editor.undoCount(), 1);
  rig.clock.advance(1us);
  editor.captureSnapshot(true);
  EXPECT_EQ(editor.undoCount(), 2);
}

// Otherwise, a clock that is set back would make every title edit of the next hours part of the last one.
TEST_F(HistoryTest, SettingTheTimeOfDayNeitherEndsNorStretchesTheThrottle) {
  using std::chrono::hours;
  for (const auto jump : {-hours(24), hours(24)}) {
    rig.clock.advance(1s);
    const auto before = editor.undoCount();
    editor.captureSnapshot(true);
    EXPECT_EQ(editor.undoCount(), before + 1);
    rig.clock.set(rig.clock.now() + jump);
    editor.captureSnapshot(true);
    EXPECT_EQ(editor.undoCount(), before + 1);
    rig.clock.advance(501ms);
    editor.captureSnapshot(true);
    EXPECT_EQ(editor.undoCount(), before + 2);
  }
}

TEST_F(HistoryTest, IntervalRunsFromTheLastSnapshotAndNotFromTheLastTry) {
  editor.captureSnapshot(true);
  for (int i = 0; i < 2; ++i) {
    rig.clock.advance(300ms);
    editor.captureSnapshot(true);
  }
  EXPECT_EQ(editor.undoCount(), 2);
}

TEST_F(HistoryTest, ClockThatGoesBackTakesNoThrottledSnapshot) {
  editor.captureSnapshot(true);
  rig.clock.advance(-10s);
  editor.captureSnapshot(true);
  EXPECT_EQ(editor.undoCount(), 1);
}

TEST_F(HistoryTest, UnthrottledThenThrottledTakesTwo) {
  editor.captureSnapshot(false);
  editor.captureSnapshot(true);
  EXPECT_EQ(editor.undoCount(), 2);
}

TEST_F(HistoryTest, UnthrottledCaptureIsNeverTurnedAway) {
  editor.captureSnapshot(true);
  editor.captureSnapshot(false);
  editor.captureSnapshot(false);
  EXPECT_EQ(editor.undoCount(), 3);
}

TEST_F(HistoryTest, UnthrottledCaptureLeavesTheIntervalAlone) {
  editor.captureSnapshot(true);
  rig.clock.advance(400ms);
  editor.captureSnapshot(false);
  rig.clock.advance(200ms);
  editor.captureSnapshot(true);
  EXPECT_EQ(editor.undoCount(), 3);
}

TEST_F(HistoryTest, CaptureChangesNoMap) {
  const quint64 generation = editor.treeGeneration();
  editor.captureSnapshot(false);
  EXPECT_EQ(editor.treeGeneration(), generation);
  EXPECT_EQ(changes.count(), 0);
  EXPECT_EQ(dirty.count(), 1);
  EXPECT_EQ(history.count(), 1);
}

TEST_F(HistoryTest, UndoAndRedoWithNothingToDoDoNothing) {
  editor.undo();
  editor.redo();
  EXPECT_EQ(changes.count(), 0);
  EXPECT_EQ(history.count(), 0);
  EXPECT_EQ(editor.treeGeneration(), 0u);
}

TEST_F(HistoryTest, UndoThenRedoGivesTheSameMap) {
  const MindMap before = editor.mindMap();
  editor.captureSnapshot(false);
  retitle(7);
  const MindMap after = editor.mindMap();
  editor.undo();
  EXPECT_TRUE(isVeryMap(editor.mindMap(), before));
  EXPECT_EQ(editor.undoCount(), 0);
  EXPECT_EQ(editor.redoCount(), 1);
  editor.redo();
  EXPECT_TRUE(isVeryMap(editor.mindMap(), after));
  EXPECT_EQ(editor.undoCount(), 1);
  EXPECT_EQ(editor.redoCount(), 0);
}

TEST_F(HistoryTest, UndoTakesTheMapThatStandsNowIntoRedoAlsoWhenItChangedWithoutASnapshot) {
  editor.captureSnapshot(false);
  retitle(1);
  retitle(2);
  editor.undo();
  editor.redo();
  EXPECT_EQ(title(), QStringLiteral("2"));
}

TEST_F(HistoryTest, UndoneUpdatedAtComesBack) {
  const TimePoint before = editor.mindMap().updatedAt;
  editor.setNodeTitle(topicId(0), QStringLiteral("x"));
  EXPECT_TRUE(rig.isStamped());
  editor.undo();
  EXPECT_EQ(editor.mindMap().updatedAt, before);
}

TEST_F(HistoryTest, CaptureAfterUndoEmptiesRedo) {
  editor.captureSnapshot(false);
  retitle(1);
  editor.undo();
  editor.captureSnapshot(false);
  EXPECT_EQ(editor.redoCount(), 0);
  EXPECT_EQ(editor.undoCount(), 1);
}

TEST_F(HistoryTest, NoStackHoldsMoreThanFifty) {
  for (int i = 0; i < 50; ++i) editor.captureSnapshot(false);
  for (int i = 0; i < 60; ++i) editor.undo();
  EXPECT_EQ(editor.redoCount(), 50);
  for (int i = 0; i < 60; ++i) editor.redo();
  EXPECT_EQ(editor.undoCount(), 50);
  EXPECT_EQ(editor.redoCount(), 0);
}

TEST_F(HistoryTest, UndoGoesThroughTheSetter) {
  editor.captureSnapshot(false);
  retitle(1);
  changes.clear();
  const quint64 generation = editor.treeGeneration();
  editor.undo();
  EXPECT_EQ(changes.count(), 1);
  EXPECT_EQ(editor.treeGeneration(), generation + 1);
}

TEST_F(HistoryTest, UndoAndRedoLeaveTheDirtyFlagAlone) {
  editor.captureSnapshot(false);
  dirty.clear();
  editor.undo();
  editor.redo();
  EXPECT_EQ(dirty.count(), 0);
  EXPECT_TRUE(editor.isDirty());
}

TEST_F(HistoryTest, RecordedSaveLocationClearsTheFlagAndOnlyASnapshotSetsItAgain) {
  editor.captureSnapshot(true);
  retitle(1);
  editor.recordSaveLocation(std::nullopt, false);
  EXPECT_FALSE(editor.isDirty());
  editor.captureSnapshot(true);
  retitle(2);
  editor.undo();
  editor.redo();
  EXPECT_FALSE(editor.isDirty());
  rig.clock.advance(501ms);
  editor.captureSnapshot(true);
  EXPECT_TRUE(editor.isDirty());
}

TEST_F(HistoryTest, UndoRestoresTheMapAndNothingElse) {
  editor.createChild(topicId(0));
  const IdSet selected = editor.selectedNodeIDs();
  editor.setSelectedEdgeIDs({edgeId(4)});
  editor.setSelectedRegionID(topicId(50));
  editor.setCollapsedNodeIDs({topicId(0)});
  editor.setCanvasOffset(QPointF(11.0, 12.0));
  editor.setCanvasZoom(1.75);
  editor.setActiveLens(MindMapViewModel::FocusLens::depth);
  editor.undo();
  EXPECT_EQ(editor.mindMap().nodes.size(), 1u);
  EXPECT_EQ(editor.selectedNodeIDs(), selected);
  EXPECT_FALSE(editor.nodeByID(*selected.begin()).has_value());
  EXPECT_EQ(editor.selectedEdgeIDs(), IdSet{edgeId(4)});
  EXPECT_EQ(editor.selectedRegionID(), topicId(50));
  EXPECT_EQ(editor.collapsedNodeIDs(), IdSet{topicId(0)});
  EXPECT_EQ(editor.canvasOffset(), QPointF(11.0, 12.0));
  EXPECT_EQ(editor.canvasZoom(), 1.75);
  EXPECT_EQ(editor.activeLens(), MindMapViewModel::FocusLens::depth);
}

TEST_F(HistoryTest, ClearHistoryEmptiesBothStacks) {
  editor.captureSnapshot(false);
  editor.captureSnapshot(false);
  editor.undo();
  editor.clearHistory();
  EXPECT_EQ(editor.undoCount(), 0);
  EXPECT_EQ(editor.redoCount(), 0);
  EXPECT_TRUE(editor.isDirty());
}

TEST_F(HistoryTest, SnapshotIsUntouchedByLaterChanges) {
  editor.captureSnapshot(false);
  for (int i = 0; i < 300; ++i) editor.createFreeNode(1000.0 * i, 0.0);
  editor.applyTheme(*builtInTheme(QStringLiteral("neon")));
  for (int i = 0; i < 50; ++i) editor.undo();
  EXPECT_EQ(editor.undoCount(), 0);
  EXPECT_EQ(editor.mindMap().nodes.size(), 252u);
  EXPECT_EQ(editor.mindMap().nodes[0], topic(0));
}
