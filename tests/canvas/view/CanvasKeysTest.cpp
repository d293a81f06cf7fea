#include <gtest/gtest.h>

#include "canvas/view/CanvasRig.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

struct CanvasKeyPress : testing::Test {
  CanvasRig rig{mapWith({topic(1, 100, 100), topic(2, 400, 100)}, {{1, 2}})};
};

}  // namespace

TEST_F(CanvasKeyPress, TabMakesAChildOfTheSelectedTopic) {
  EXPECT_FALSE(rig.keys.press(CanvasKey::tab));
  rig.editor.setSelectedNodeIDs({topicId(2)});
  EXPECT_TRUE(rig.keys.press(CanvasKey::tab));
  EXPECT_EQ(rig.editor.mindMap().nodes.size(), 3u);
  EXPECT_EQ(rig.editor.treeInfo().parent(rig.editor.mindMap().nodes.back().id), topicId(2));
}

TEST_F(CanvasKeyPress, DeleteRemovesSelectedTopicsButPassesOnWithOnlyAnEdge) {
  rig.editor.setSelectedEdgeIDs({edgeId(0)});
  EXPECT_FALSE(rig.keys.press(CanvasKey::deleteKey));
  EXPECT_EQ(rig.editor.mindMap().edges.size(), 1u);
  rig.editor.setSelectedNodeIDs({topicId(2)});
  EXPECT_TRUE(rig.keys.press(CanvasKey::deleteKey));
  EXPECT_EQ(rig.editor.mindMap().nodes.size(), 1u);
}

TEST_F(CanvasKeyPress, NothingIsHandledWhileATitleIsEdited) {
  rig.editor.setSelectedNodeIDs({topicId(2)});
  rig.gestures.beginEditing(topicId(2));
  for (const CanvasKey key : {CanvasKey::tab, CanvasKey::deleteKey, CanvasKey::escape, CanvasKey::selectAll,
                              CanvasKey::editTitle, CanvasKey::left, CanvasKey::right, CanvasKey::up, CanvasKey::down})
    EXPECT_FALSE(rig.keys.press(key));
  EXPECT_EQ(rig.editor.mindMap().nodes.size(), 2u);
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(2)}));
}

TEST_F(CanvasKeyPress, SelectAllActsOnTheNextTurn) {
  EXPECT_TRUE(rig.keys.press(CanvasKey::selectAll));
  EXPECT_TRUE(rig.editor.selectedNodeIDs().empty());
  rig.scheduler.advance(std::chrono::milliseconds(0));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1), topicId(2)}));
}

TEST_F(CanvasKeyPress, EscapeEndsADragBeforeAnythingElse) {
  rig.editor.setActiveLens(MindMapViewModel::FocusLens::depth);
  rig.press({100, 100});
  rig.move({200, 100});
  EXPECT_TRUE(rig.keys.press(CanvasKey::escape));
  EXPECT_FALSE(rig.state().draggedNodeID);
  EXPECT_EQ(rig.editor.activeLens(), MindMapViewModel::FocusLens::depth);
  EXPECT_TRUE(rig.keys.press(CanvasKey::escape));
  EXPECT_EQ(rig.editor.activeLens(), MindMapViewModel::FocusLens::none);
  EXPECT_TRUE(rig.keys.press(CanvasKey::escape));
  EXPECT_TRUE(rig.editor.selectedNodeIDs().empty());
  EXPECT_FALSE(rig.keys.press(CanvasKey::escape));
}

TEST_F(CanvasKeyPress, ArrowsStepThroughTopicsAndPassOnWithoutOne) {
  rig.editor.setSelectedNodeIDs({topicId(1)});
  EXPECT_TRUE(rig.keys.press(CanvasKey::right));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(2)}));
  EXPECT_FALSE(rig.keys.press(CanvasKey::up));
  EXPECT_TRUE(rig.keys.press(CanvasKey::left));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1)}));
}

TEST_F(CanvasKeyPress, ArrowsStepThroughAPresentation) {
  rig.editor.togglePresentation();
  EXPECT_TRUE(rig.keys.press(CanvasKey::down));
  EXPECT_EQ(rig.editor.presentationNodeIndex(), 1);
  EXPECT_TRUE(rig.keys.press(CanvasKey::left));
  EXPECT_EQ(rig.editor.presentationNodeIndex(), 0);
}

TEST_F(CanvasKeyPress, EditTitleNeedsExactlyOneExistingTopic) {
  EXPECT_FALSE(rig.keys.press(CanvasKey::editTitle));
  rig.editor.setSelectedNodeIDs({topicId(1), topicId(2)});
  EXPECT_FALSE(rig.keys.press(CanvasKey::editTitle));
  rig.editor.setSelectedNodeIDs({topicId(77)});
  EXPECT_FALSE(rig.keys.press(CanvasKey::editTitle));
  rig.editor.setSelectedNodeIDs({topicId(1)});
  EXPECT_TRUE(rig.keys.press(CanvasKey::editTitle));
  EXPECT_EQ(rig.state().editingNodeID, topicId(1));
}

TEST_F(CanvasKeyPress, EditTitleIsOffInPresentationMode) {
  rig.editor.setSelectedNodeIDs({topicId(1)});
  rig.editor.setIsPresentationMode(true);
  EXPECT_FALSE(rig.keys.press(CanvasKey::editTitle));
  EXPECT_FALSE(rig.editor.isEditingInline());
}
