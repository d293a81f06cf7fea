#include <gtest/gtest.h>

#include "editor/WindowCommands.h"
#include "support/EditorRig.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

struct Window : EditorRig {
  using EditorRig::EditorRig;
  WindowCommands commands{editor};

  bool isUntouched() const { return editor.undoCount() == 0 && editor.treeGeneration() == 0; }
  const Node& last() const { return map().nodes.back(); }
};

}  // namespace

TEST(CreateFreeTopic, MovesOnBy40EachTime) {
  Window window;
  EXPECT_EQ(window.commands.newNodeOffset(), 0.0);
  for (int i = 0; i < 20; ++i) window.commands.createFreeTopic();
  EXPECT_EQ(window.position(0), QPointF(400.0, 300.0));
  EXPECT_EQ(window.position(1), QPointF(440.0, 340.0));
  EXPECT_EQ(window.position(19), QPointF(1160.0, 1060.0));
  EXPECT_EQ(window.commands.newNodeOffset(), 800.0);
  EXPECT_EQ(window.editor.undoCount(), 20);
}

TEST(CreateFreeTopic, OffsetSurvivesUndoAndANewMap) {
  Window window;
  window.commands.createFreeTopic();
  window.editor.undo();
  window.editor.setMindMap(mapOf({}));
  window.commands.createFreeTopic();
  EXPECT_EQ(window.position(0), QPointF(440.0, 340.0));
}

TEST(CreateNode, MakesASiblingOfASelectedChild) {
  Window window(mapOf({0, 1}, {{0, 1}}));
  window.editor.selectNode(topicId(1), false);
  window.commands.createNode();
  ASSERT_EQ(window.map().edges.size(), 2u);
  EXPECT_EQ(window.edge(1).from, topicId(0));
  EXPECT_EQ(window.edge(1).to, window.last().id);
}

TEST(CreateNode, MakesAChildOfASelectedRoot) {
  Window window(mapOf({0, 1}));
  window.editor.selectNode(topicId(1), false);
  window.commands.createNode();
  ASSERT_EQ(window.map().edges.size(), 1u);
  EXPECT_EQ(window.edge(0).from, topicId(1));
}

TEST(CreateNode, ParentOfTheLastEdgeGetsTheSibling) {
  Window window(mapOf({0, 1, 2}, {{0, 2}, {1, 2}}));
  window.editor.selectNode(topicId(2), false);
  window.commands.createNode();
  EXPECT_EQ(window.edge(2).from, topicId(1));
}

TEST(CreateNode, MissingParentMakesNothing) {
  Window window(mapOf({0}, {{99, 0}}));
  window.editor.selectNode(topicId(0), false);
  window.commands.createNode();
  EXPECT_TRUE(window.isUntouched());
}

TEST(CreateNode, WithoutSelectionMakesAChildOfTheFirstRoot) {
  Window window(mapOf({1, 2, 0}, {{0, 1}}));
  window.commands.createNode();
  EXPECT_EQ(window.edge(1).from, topicId(2));
}

TEST(CreateNode, WithoutRootsMakesAChildOfTheFirstTopic) {
  Window window(mapOf({1, 0}, {{0, 1}, {1, 0}}));
  window.commands.createNode();
  EXPECT_EQ(window.edge(2).from, topicId(1));
}

TEST(CreateNode, EmptyMapGetsAFreeTopic) {
  Window window;
  window.commands.createNode();
  ASSERT_EQ(window.map().nodes.size(), 1u);
  EXPECT_EQ(window.position(0), QPointF(400.0, 300.0));
  EXPECT_EQ(window.commands.newNodeOffset(), 0.0);
}

TEST(CreateNode, IsIgnoredWhileATitleIsEdited) {
  Window window(mapOf({0}));
  window.editor.setIsEditingInline(true);
  window.commands.createNode();
  EXPECT_TRUE(window.isUntouched());
}

TEST(TabKey, MakesAChildOfTheSelectedTopic) {
  Window window(mapOf({0, 1}, {{0, 1}}));
  window.editor.selectNode(topicId(1), false);
  EXPECT_TRUE(window.commands.tabKey());
  EXPECT_EQ(window.edge(1).from, topicId(1));
  EXPECT_EQ(window.editor.selectedNodeIDs(), IdSet{window.last().id});
}

TEST(TabKey, IsPassedOnWithoutASelection) {
  Window window(mapOf({0}));
  EXPECT_FALSE(window.commands.tabKey());
  window.editor.setSelectedEdgeIDs({edgeId(0)});
  EXPECT_FALSE(window.commands.tabKey());
  EXPECT_TRUE(window.isUntouched());
}

TEST(TabKey, IsIgnoredWhileATitleIsEditedAndInPresentationMode) {
  Window window(mapOf({0}));
  window.editor.selectAll();
  window.editor.setIsEditingInline(true);
  EXPECT_FALSE(window.commands.tabKey());
  window.editor.setIsEditingInline(false);
  window.editor.setIsPresentationMode(true);
  EXPECT_FALSE(window.commands.tabKey());
  EXPECT_TRUE(window.isUntouched());
}

TEST(DeleteKey, DeletesTheSelectionWithAtLeastOneTopic) {
  Window window(mapOf({0, 1}, {{0, 1}}));
  window.editor.selectNode(topicId(0), false);
  EXPECT_TRUE(window.commands.deleteKey());
  EXPECT_EQ(window.map().nodes.size(), 1u);
  EXPECT_TRUE(window.map().edges.empty());
}

TEST(DeleteKey, IsPassedOnWithOnlyAnEdgeOrARegion) {
  Window window(mapOf({0, 1}, {{0, 1}}));
  window.editor.selectEdge(edgeId(0), false);
  EXPECT_FALSE(window.commands.deleteKey());
  window.editor.setSelectedRegionID(topicId(3));
  EXPECT_FALSE(window.commands.deleteKey());
  EXPECT_TRUE(window.isUntouched());
}

TEST(DeleteKey, IsPassedOnInPresentationModeAndWhileATitleIsEdited) {
  Window window(mapOf({0}));
  window.editor.selectAll();
  window.editor.setIsPresentationMode(true);
  EXPECT_FALSE(window.commands.deleteKey());
  window.editor.setIsPresentationMode(false);
  window.editor.setIsEditingInline(true);
  EXPECT_FALSE(window.commands.deleteKey());
  EXPECT_TRUE(window.isUntouched());
}

TEST(CollapseNode, CollapsesATopicWithChildrenOnce) {
  Window window(mapOf({0, 1}, {{0, 1}}));
  window.editor.selectNode(topicId(0), false);
  window.commands.collapseNode();
  EXPECT_EQ(window.editor.collapsedNodeIDs(), IdSet{topicId(0)});
  window.commands.collapseNode();
  EXPECT_EQ(window.editor.collapsedNodeIDs(), IdSet{topicId(0)});
  EXPECT_TRUE(window.isUntouched());
}

TEST(CollapseNode, LeafStaysOpen) {
  Window window(mapOf({0, 1}, {{0, 1}}));
  window.editor.selectNode(topicId(1), false);
  window.commands.collapseNode();
  EXPECT_TRUE(window.editor.collapsedNodeIDs().empty());
}

TEST(ExpandNode, OpensACollapsedTopicOnly) {
  Window window(mapOf({0, 1}, {{0, 1}}));
  window.editor.setCollapsedNodeIDs({topicId(0)});
  window.editor.selectNode(topicId(1), false);
  window.commands.expandNode();
  EXPECT_EQ(window.editor.collapsedNodeIDs(), IdSet{topicId(0)});
  window.editor.selectNode(topicId(0), false);
  window.commands.expandNode();
  window.commands.expandNode();
  EXPECT_TRUE(window.editor.collapsedNodeIDs().empty());
}

TEST(CollapseNode, NothingSelectedDoesNothing) {
  Window window(mapOf({0, 1}, {{0, 1}}));
  window.editor.setCollapsedNodeIDs({topicId(0)});
  window.commands.collapseNode();
  window.commands.expandNode();
  EXPECT_EQ(window.editor.collapsedNodeIDs(), IdSet{topicId(0)});
}

TEST(ZoomInAndOut, StepByAQuarterAboutTheCanvasCenter) {
  Window window(mapOf({0}));
  window.commands.zoomIn(QSizeF(800.0, 600.0));
  EXPECT_DOUBLE_EQ(window.editor.canvasZoom(), 1.25);
  EXPECT_DOUBLE_EQ(window.editor.canvasOffset().x(), -100.0);
  EXPECT_DOUBLE_EQ(window.editor.canvasOffset().y(), -75.0);
  window.commands.zoomOut(QSizeF(800.0, 600.0));
  EXPECT_DOUBLE_EQ(window.editor.canvasZoom(), 1.0);
  EXPECT_NEAR(window.editor.canvasOffset().x(), 0.0, 1e-9);
}

TEST(ZoomInAndOut, StopAtTheLimits) {
  Window window(mapOf({0}));
  window.editor.setCanvasZoom(4.0);
  window.commands.zoomIn(QSizeF(800.0, 600.0));
  window.commands.zoomIn(QSizeF(800.0, 600.0));
  EXPECT_EQ(window.editor.canvasZoom(), 5.0);
  for (int i = 0; i < 30; ++i) window.commands.zoomOut(QSizeF(800.0, 600.0));
  EXPECT_EQ(window.editor.canvasZoom(), 0.1);
}
