#include <gtest/gtest.h>

#include "support/EditorRig.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

using Editor = MindMapViewModel;

// Every assignment notifies observers, even one that keeps the value.
template <class Assign>
void expectSignals(Editor& editor, void (Editor::*signal)(), Assign assign) {
  QSignalSpy spy(&editor, signal);
  assign();
  assign();
  EXPECT_EQ(spy.count(), 2);
}

}  // namespace

TEST(EditorState, InitialValues) {
  const MindMap map = mapOf({0, 1}, {{0, 1}});
  EditorRig rig(map);
  const Editor& editor = rig.editor;
  EXPECT_EQ(editor.mindMap(), map);
  EXPECT_TRUE(editor.selectedNodeIDs().empty());
  EXPECT_TRUE(editor.selectedEdgeIDs().empty());
  EXPECT_FALSE(editor.selectedRegionID().has_value());
  EXPECT_EQ(editor.canvasOffset(), QPointF(0.0, 0.0));
  EXPECT_EQ(editor.canvasZoom(), 1.0);
  EXPECT_FALSE(editor.isEdgeCreationMode());
  EXPECT_FALSE(editor.edgeCreationSourceID().has_value());
  EXPECT_TRUE(editor.collapsedNodeIDs().empty());
  EXPECT_FALSE(editor.isEditingInline());
  EXPECT_FALSE(editor.quickLookNodeID().has_value());
  EXPECT_EQ(editor.activeLens(), Editor::FocusLens::none);
  EXPECT_FALSE(editor.isPresentationMode());
  EXPECT_EQ(editor.presentationNodeIndex(), 0);
  EXPECT_TRUE(editor.presentationOrder().empty());
  EXPECT_TRUE(editor.copiedNodes().empty());
  EXPECT_TRUE(editor.copiedEdges().empty());
  EXPECT_FALSE(editor.isSearching());
  EXPECT_TRUE(editor.searchQuery().isEmpty());
  EXPECT_TRUE(editor.searchResultIDs().empty());
  EXPECT_EQ(editor.searchResultIndex(), 0);
  EXPECT_EQ(editor.cursorLocation, QPointF(0.0, 0.0));
  EXPECT_FALSE(editor.isCanvasHovered);
  EXPECT_FALSE(editor.blockCanvasScroll);
  EXPECT_FALSE(editor.lastKnownCanvasSize().has_value());
  EXPECT_EQ(editor.undoCount(), 0);
  EXPECT_EQ(editor.redoCount(), 0);
  EXPECT_FALSE(editor.isDirty());
  EXPECT_FALSE(editor.lastSavedFilePath().has_value());
  EXPECT_FALSE(editor.hasExplicitSavePath());
  EXPECT_EQ(editor.treeGeneration(), 0u);
  EXPECT_EQ(Editor::maxHistorySize, 50);
  EXPECT_EQ(Editor::captureThrottleInterval, std::chrono::milliseconds(500));
}

TEST(EditorState, SetterStoresNotifiesAndBumpsTheGeneration) {
  EditorRig rig(mapOf({0}));
  QSignalSpy changes(&rig.editor, &Editor::mindMapChanged);
  rig.editor.setMindMap(mapOf({0, 1}));
  EXPECT_EQ(rig.map().nodes.size(), 2u);
  EXPECT_EQ(changes.count(), 1);
  EXPECT_EQ(rig.editor.treeGeneration(), 1u);
  rig.editor.setMindMap(rig.map());
  EXPECT_EQ(changes.count(), 2);
  EXPECT_EQ(rig.editor.treeGeneration(), 2u);
}

TEST(EditorState, SetterTakesNoSnapshotAndLeavesTheDirtyFlagAndTheStampAlone) {
  EditorRig rig(mapOf({0}));
  MindMap map = mapOf({0, 1});
  map.updatedAt = TimePoint(std::chrono::seconds(5));
  rig.editor.setMindMap(map);
  EXPECT_EQ(rig.editor.undoCount(), 0);
  EXPECT_FALSE(rig.editor.isDirty());
  EXPECT_EQ(rig.map().updatedAt, TimePoint(std::chrono::seconds(5)));
}

TEST(EditorState, ObserversSeeTheNewMapItsTreeAndItsTopics) {
  EditorRig rig(mapOf({0, 1}, {{0, 1}}));
  rig.editor.treeInfo();
  int calls = 0;
  QObject::connect(&rig.editor, &Editor::mindMapChanged, &rig.editor, [&] {
    ++calls;
    EXPECT_EQ(rig.editor.treeGeneration(), 1u);
    EXPECT_EQ(rig.editor.treeInfo().parent(topicId(0)), topicId(1));
    EXPECT_TRUE(rig.editor.nodeByID(topicId(2)).has_value());
  });
  rig.editor.setMindMap(mapOf({1, 0, 2}, {{1, 0}}));
  EXPECT_EQ(calls, 1);
}

TEST(EditorState, TreeIsBuiltOnceAndServedUntilTheNextWrite) {
  EditorRig rig(mapOf({0, 1}, {{0, 1}}));
  const auto* roots = &rig.editor.treeInfo().roots();
  EXPECT_EQ(&rig.editor.treeInfo().roots(), roots);
  rig.editor.setMindMap(mapOf({0, 1, 2}, {{0, 1}}));
  EXPECT_EQ(rig.editor.treeInfo().roots().size(), 2u);
  const auto* newRoots = &rig.editor.treeInfo().roots();
  EXPECT_EQ(&rig.editor.treeInfo().roots(), newRoots);
}

TEST(EditorState, SelectionCollapseAndViewLeaveTheTreeAlone) {
  EditorRig rig(mapOf({0, 1}, {{0, 1}}));
  const auto* roots = &rig.editor.treeInfo().roots();
  rig.editor.selectAll();
  rig.editor.toggleCollapsed(topicId(0));
  rig.editor.setCanvasZoom(2.0);
  rig.editor.setCanvasOffset(QPointF(5.0, 5.0));
  EXPECT_EQ(rig.editor.treeGeneration(), 0u);
  EXPECT_EQ(&rig.editor.treeInfo().roots(), roots);
}

TEST(EditorState, TreeForgetsAMapThatWasEmptied) {
  std::vector<int> numbers;
  std::vector<Ends> ends;
  for (int i = 0; i < 3000; ++i) {
    numbers.push_back(i);
    if (i > 0) ends.push_back({0, i});
  }
  EditorRig rig(mapOf(numbers, ends));
  EXPECT_EQ(rig.editor.treeInfo().maxDepth(), 1);
  rig.editor.setCollapsedNodeIDs({topicId(0)});
  EXPECT_TRUE(rig.editor.isHidden(topicId(1)));
  rig.editor.setMindMap(MindMap());
  EXPECT_TRUE(rig.editor.treeInfo().roots().empty());
  EXPECT_EQ(rig.editor.treeInfo().maxDepth(), 0);
  EXPECT_FALSE(rig.editor.treeInfo().parent(topicId(1)).has_value());
  EXPECT_FALSE(rig.editor.isHidden(topicId(1)));
  EXPECT_TRUE(rig.editor.hiddenNodes().empty());
}

TEST(EditorState, NodeByIdGivesACopy) {
  EditorRig rig(mapOf({0, 1}));
  std::optional<Node> copy = rig.editor.nodeByID(topicId(1));
  ASSERT_TRUE(copy.has_value());
  EXPECT_EQ(*copy, topic(1));
  copy->title = QStringLiteral("changed");
  EXPECT_EQ(rig.node(1).title, QStringLiteral("Topic 1"));
  EXPECT_TRUE(rig.editor.hasNode(topicId(1)));
}

TEST(EditorState, NodeByIdKnowsNoIdThatOnlyAnEdgeNames) {
  EditorRig rig(mapOf({0}, {{0, 99}, {98, 0}}));
  for (const int number : {98, 99, 7}) {
    EXPECT_FALSE(rig.editor.nodeByID(topicId(number)).has_value());
    EXPECT_FALSE(rig.editor.hasNode(topicId(number)));
  }
  EXPECT_FALSE(rig.editor.nodeByID(QUuid()).has_value());
}

TEST(EditorState, NodeByIdTakesTheLastOfTwoTopicsWithOneId) {
  MindMap map = mapOf({0, 1, 0});
  map.nodes.update(2, [](Node& node) { node.title = QStringLiteral("later"); });
  EditorRig rig(map);
  EXPECT_EQ(rig.editor.nodeByID(topicId(0))->title, QStringLiteral("later"));
}

TEST(EditorState, NodeByIdFollowsEveryChange) {
  EditorRig rig(mapOf({0, 1, 2}));
  EXPECT_TRUE(rig.editor.hasNode(topicId(1)));
  rig.editor.deleteNode(topicId(1));
  EXPECT_FALSE(rig.editor.hasNode(topicId(1)));
  EXPECT_EQ(rig.editor.nodeByID(topicId(2))->title, QStringLiteral("Topic 2"));
  rig.editor.undo();
  EXPECT_EQ(rig.editor.nodeByID(topicId(1))->title, QStringLiteral("Topic 1"));
}

TEST(EditorState, EveryAssignmentIsToldAlsoOfTheSameValue) {
  EditorRig rig(mapOf({0}));
  Editor& e = rig.editor;
  expectSignals(e, &Editor::mindMapChanged, [&] { e.setMindMap(mapOf({0})); });
  expectSignals(e, &Editor::selectedNodeIDsChanged, [&] { e.setSelectedNodeIDs({topicId(0)}); });
  expectSignals(e, &Editor::selectedEdgeIDsChanged, [&] { e.setSelectedEdgeIDs({edgeId(0)}); });
  expectSignals(e, &Editor::selectedRegionIDChanged, [&] { e.setSelectedRegionID(topicId(3)); });
  expectSignals(e, &Editor::canvasOffsetChanged, [&] { e.setCanvasOffset(QPointF(1.0, 2.0)); });
  expectSignals(e, &Editor::canvasZoomChanged, [&] { e.setCanvasZoom(2.0); });
  expectSignals(e, &Editor::isEdgeCreationModeChanged, [&] { e.setIsEdgeCreationMode(true); });
  expectSignals(e, &Editor::edgeCreationSourceIDChanged, [&] { e.setEdgeCreationSourceID(topicId(0)); });
  expectSignals(e, &Editor::collapsedNodeIDsChanged, [&] { e.setCollapsedNodeIDs({topicId(0)}); });
  expectSignals(e, &Editor::isEditingInlineChanged, [&] { e.setIsEditingInline(true); });
  expectSignals(e, &Editor::quickLookNodeIDChanged, [&] { e.setQuickLookNodeID(topicId(0)); });
  expectSignals(e, &Editor::activeLensChanged, [&] { e.setActiveLens(Editor::FocusLens::depth); });
  expectSignals(e, &Editor::isPresentationModeChanged, [&] { e.setIsPresentationMode(true); });
  expectSignals(e, &Editor::presentationNodeIndexChanged, [&] { e.setPresentationNodeIndex(3); });
  expectSignals(e, &Editor::isSearchingChanged, [&] { e.setIsSearching(true); });
  expectSignals(e, &Editor::searchQueryChanged, [&] { e.setSearchQuery(QStringLiteral("q")); });
  expectSignals(e, &Editor::searchResultIDsChanged, [&] { e.setSearchResultIDs({topicId(0)}); });
  expectSignals(e, &Editor::searchResultIndexChanged, [&] { e.setSearchResultIndex(2); });
  expectSignals(e, &Editor::isDirtyChanged, [&] { e.captureSnapshot(false); });
  EXPECT_EQ(e.selectedRegionID(), topicId(3));
  EXPECT_EQ(e.canvasZoom(), 2.0);
  EXPECT_EQ(e.edgeCreationSourceID(), topicId(0));
  EXPECT_EQ(e.quickLookNodeID(), topicId(0));
  EXPECT_EQ(e.presentationNodeIndex(), 3);
  EXPECT_EQ(e.searchResultIndex(), 2);
}

TEST(EditorState, DepthFractionIsNothingForAMapOfRootsOnly) {
  EditorRig flat(mapOf({0, 1}));
  EXPECT_FALSE(flat.editor.depthFraction(topicId(0)).has_value());
  EditorRig deep(mapOf({0, 1, 2}, {{0, 1}, {1, 2}}));
  EXPECT_EQ(deep.editor.depthFraction(topicId(0)), 0.0);
  EXPECT_EQ(deep.editor.depthFraction(topicId(1)), 0.5);
  EXPECT_EQ(deep.editor.depthFraction(topicId(2)), 1.0);
}

TEST(EditorState, LensesHaveTheirTexts) {
  EXPECT_EQ(rawValue(Editor::FocusLens::none), QStringLiteral("None"));
  EXPECT_EQ(rawValue(Editor::FocusLens::priority), QStringLiteral("Priority"));
  EXPECT_EQ(rawValue(Editor::FocusLens::progress), QStringLiteral("Progress"));
  EXPECT_EQ(rawValue(Editor::FocusLens::depth), QStringLiteral("Depth"));
}
