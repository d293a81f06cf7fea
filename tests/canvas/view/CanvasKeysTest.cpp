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
  EXPECT_FALSE(rig.keys.press(Qt::Key_Tab));
  rig.editor.setSelectedNodeIDs({topicId(2)});
  EXPECT_TRUE(rig.keys.press(Qt::Key_Tab));
  EXPECT_EQ(rig.editor.mindMap().nodes.size(), 3u);
  EXPECT_EQ(rig.editor.treeInfo().parent(rig.editor.mindMap().nodes.back().id), topicId(2));
}

TEST_F(CanvasKeyPress, DeleteRemovesSelectedTopicsButPassesOnWithOnlyAnEdge) {
  rig.editor.setSelectedEdgeIDs({edgeId(0)});
  EXPECT_FALSE(rig.keys.press(Qt::Key_Delete));
  EXPECT_EQ(rig.editor.mindMap().edges.size(), 1u);
  rig.editor.setSelectedNodeIDs({topicId(2)});
  EXPECT_TRUE(rig.keys.press(Qt::Key_Delete));
  EXPECT_EQ(rig.editor.mindMap().nodes.size(), 1u);
}

TEST_F(CanvasKeyPress, NothingIsHandledWhileATitleIsEdited) {
  rig.editor.setSelectedNodeIDs({topicId(2)});
  rig.gestures.beginEditing(topicId(2));
  for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Delete, Qt::Key_Escape, Qt::Key_F2, Qt::Key_Return, Qt::Key_Space,
                            Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down})
    EXPECT_FALSE(rig.keys.press(key)) << key;
  EXPECT_FALSE(rig.keys.press(Qt::Key_A, Qt::ControlModifier));
  EXPECT_EQ(rig.editor.mindMap().nodes.size(), 2u);
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(2)}));
}

TEST_F(CanvasKeyPress, SelectAllActsOnTheNextTurn) {
  EXPECT_TRUE(rig.keys.press(Qt::Key_A, Qt::ControlModifier));
  EXPECT_TRUE(rig.editor.selectedNodeIDs().empty());
  rig.scheduler.advance(std::chrono::milliseconds(0));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1), topicId(2)}));
}

TEST_F(CanvasKeyPress, EscapeEndsADragBeforeAnythingElse) {
  rig.editor.setActiveLens(MindMapViewModel::FocusLens::depth);
  rig.press({100, 100});
  rig.move({200, 100});
  EXPECT_TRUE(rig.keys.press(Qt::Key_Escape));
  EXPECT_FALSE(rig.state().draggedNodeID);
  EXPECT_EQ(rig.editor.activeLens(), MindMapViewModel::FocusLens::depth);
  EXPECT_TRUE(rig.keys.press(Qt::Key_Escape));
  EXPECT_EQ(rig.editor.activeLens(), MindMapViewModel::FocusLens::none);
  EXPECT_TRUE(rig.keys.press(Qt::Key_Escape));
  EXPECT_TRUE(rig.editor.selectedNodeIDs().empty());
  EXPECT_FALSE(rig.keys.press(Qt::Key_Escape));
}

TEST_F(CanvasKeyPress, ArrowsStepThroughTopicsAndPassOnWithoutOne) {
  rig.editor.setSelectedNodeIDs({topicId(1)});
  EXPECT_TRUE(rig.keys.press(Qt::Key_Right));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(2)}));
  EXPECT_FALSE(rig.keys.press(Qt::Key_Up));
  EXPECT_TRUE(rig.keys.press(Qt::Key_Left));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1)}));
}

TEST_F(CanvasKeyPress, ArrowWithNothingSelectedBeginsAtTheRootNearestToTheMiddleOfTheView) {
  rig.editor.setMindMap(mapWith({topic(1, 0, 0), topic(2, 2000, 0), topic(3, 1900, 40)}, {{2, 3}}));
  rig.gestures.appear({800, 600});
  rig.editor.selectEdge(edgeId(0), false);
  rig.look(1.0, {-1500, 300});
  const QPointF offset = rig.editor.canvasOffset();
  EXPECT_TRUE(rig.keys.press(Qt::Key_Left));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(2)}));
  EXPECT_TRUE(rig.editor.selectedEdgeIDs().empty());
  EXPECT_EQ(rig.editor.canvasOffset(), offset);
  rig.editor.setSelectedNodeIDs({topicId(77)});
  rig.look(0.5, {390, 300});
  EXPECT_TRUE(rig.keys.press(Qt::Key_Down));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1)}));
}

TEST_F(CanvasKeyPress, ArrowOnAnEmptyMapPassesOn) {
  rig.editor.setMindMap(mapWith({}));
  EXPECT_FALSE(rig.keys.press(Qt::Key_Right));
}

TEST_F(CanvasKeyPress, ArrowsStepThroughAPresentation) {
  rig.editor.togglePresentation();
  EXPECT_TRUE(rig.keys.press(Qt::Key_Down));
  EXPECT_EQ(rig.editor.presentationNodeIndex(), 1);
  EXPECT_TRUE(rig.keys.press(Qt::Key_Left));
  EXPECT_EQ(rig.editor.presentationNodeIndex(), 0);
}

TEST_F(CanvasKeyPress, EditTitleNeedsExactlyOneExistingTopic) {
  EXPECT_FALSE(rig.keys.press(Qt::Key_F2));
  rig.editor.setSelectedNodeIDs({topicId(1), topicId(2)});
  EXPECT_FALSE(rig.keys.press(Qt::Key_F2));
  rig.editor.setSelectedNodeIDs({topicId(77)});
  EXPECT_FALSE(rig.keys.press(Qt::Key_F2));
  rig.editor.setSelectedNodeIDs({topicId(1)});
  EXPECT_TRUE(rig.keys.press(Qt::Key_F2));
  EXPECT_EQ(rig.state().editingNodeID, topicId(1));
}

TEST_F(CanvasKeyPress, EditTitleIsOffInPresentationMode) {
  rig.editor.setSelectedNodeIDs({topicId(1)});
  rig.editor.setIsPresentationMode(true);
  EXPECT_FALSE(rig.keys.press(Qt::Key_F2));
  EXPECT_FALSE(rig.editor.isEditingInline());
}

TEST_F(CanvasKeyPress, EditTitleTakesReturnWithoutModifiersOnly) {
  rig.editor.setSelectedNodeIDs({topicId(1)});
  EXPECT_FALSE(rig.keys.press(Qt::Key_Return, Qt::ControlModifier));
  EXPECT_FALSE(rig.editor.isEditingInline());
  EXPECT_TRUE(rig.keys.press(Qt::Key_Enter, Qt::KeypadModifier));
  EXPECT_TRUE(rig.editor.isEditingInline());
}

TEST_F(CanvasKeyPress, SpaceLooksAtTheSelectedTopicOnTheNextTurn) {
  EXPECT_FALSE(rig.keys.press(Qt::Key_Space));
  rig.editor.setSelectedNodeIDs({topicId(2)});
  EXPECT_TRUE(rig.keys.press(Qt::Key_Space));
  EXPECT_FALSE(rig.editor.quickLookNodeID());
  rig.scheduler.advance(std::chrono::milliseconds(0));
  EXPECT_EQ(rig.editor.quickLookNodeID(), topicId(2));
}

TEST_F(CanvasKeyPress, OtherKeysPassOn) {
  rig.editor.setSelectedNodeIDs({topicId(2)});
  for (const Qt::Key key : {Qt::Key_A, Qt::Key_Home, Qt::Key_F1, Qt::Key_Plus}) EXPECT_FALSE(rig.keys.press(key));
  EXPECT_FALSE(rig.keys.press(Qt::Key_Tab, Qt::ShiftModifier));
}
