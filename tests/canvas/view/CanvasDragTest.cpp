#include <gtest/gtest.h>

#include "canvas/view/CanvasRig.h"
#include "canvas/view/NodeSearch.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

struct CanvasDrag : testing::Test {
  CanvasRig rig{mapWith({topic(1, 100, 100), topic(2, 400, 100), topic(3, 700, 100)}, {{1, 2}})};
};

}  // namespace

TEST_F(CanvasDrag, OfLessThanThreeMovesNothingAndIsATap) {
  rig.drag({100, 100}, {102.9, 100});
  EXPECT_EQ(rig.positionOf(1), QPointF(100, 100));
  EXPECT_EQ(rig.editor.undoCount(), 0);
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1)}));
}

TEST_F(CanvasDrag, OfExactlyThreeMovesNothingAndRecordsNothing) {
  rig.press({100, 100});
  rig.move({103, 100});
  EXPECT_EQ(rig.state().draggedNodeID, topicId(1));
  rig.release({103, 100});
  EXPECT_EQ(rig.positionOf(1), QPointF(100, 100));
  EXPECT_EQ(rig.editor.undoCount(), 0);
}

TEST_F(CanvasDrag, OfMoreThanThreeMovesTheTopic) {
  rig.drag({100, 100}, {103.1, 100});
  EXPECT_DOUBLE_EQ(rig.positionOf(1).x(), 103.1);
  EXPECT_EQ(rig.editor.undoCount(), 1);
}

TEST_F(CanvasDrag, CountsItsDistanceInCanvasUnits) {
  rig.look(2.0, {0, 0});
  rig.drag({200, 200}, {205.8, 200});
  EXPECT_EQ(rig.positionOf(1), QPointF(100, 100));
  rig.drag({200, 200}, {206.2, 200});
  EXPECT_DOUBLE_EQ(rig.positionOf(1).x(), 103.1);
}

TEST_F(CanvasDrag, ShowsATranslationAndLeavesTheMapAloneUntilTheEnd) {
  rig.look(0.5, {10, 20});
  rig.press({60, 70});
  rig.move({110, 90});
  EXPECT_EQ(rig.state().draggedNodeID, topicId(1));
  EXPECT_EQ(rig.state().nodeDragTranslation, QPointF(100, 40));
  EXPECT_EQ(rig.positionOf(1), QPointF(100, 100));
  rig.release({110, 90});
  EXPECT_EQ(rig.positionOf(1), QPointF(200, 140));
  EXPECT_FALSE(rig.state().draggedNodeID);
  EXPECT_EQ(rig.state().nodeDragTranslation, QPointF());
}

TEST_F(CanvasDrag, OfATopicThatIsNotSelectedSelectsItAlone) {
  rig.editor.setSelectedNodeIDs({topicId(2)});
  rig.drag({100, 100}, {150, 100});
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1)}));
  EXPECT_EQ(rig.positionOf(2), QPointF(400, 100));
}

TEST_F(CanvasDrag, WithShiftTakesTheSelectionAlong) {
  rig.editor.setSelectedNodeIDs({topicId(2)});
  rig.drag({100, 100}, {150, 100}, shift);
  EXPECT_EQ(rig.positionOf(1), QPointF(150, 100));
  EXPECT_EQ(rig.positionOf(2), QPointF(450, 100));
}

TEST_F(CanvasDrag, OfASelectionMakesASnapshotForEachTopic) {
  rig.editor.setSelectedNodeIDs({topicId(1), topicId(2), topicId(3)});
  rig.drag({100, 100}, {110, 130});
  EXPECT_EQ(rig.editor.undoCount(), 3);
  EXPECT_EQ(rig.positionOf(3), QPointF(710, 130));
}

TEST_F(CanvasDrag, ThatIsCancelledLeavesNothing) {
  rig.press({100, 100});
  rig.move({200, 200});
  EXPECT_TRUE(rig.gestures.cancel());
  EXPECT_FALSE(rig.state().draggedNodeID);
  EXPECT_EQ(rig.state().nodeDragTranslation, QPointF());
  rig.move({300, 300});
  rig.release({300, 300});
  EXPECT_EQ(rig.positionOf(1), QPointF(100, 100));
  EXPECT_EQ(rig.editor.undoCount(), 0);
  EXPECT_FALSE(rig.gestures.cancel());
}

TEST_F(CanvasDrag, KeepsTheTopicUnderThePointerWhileTheCanvasScrolls) {
  rig.move({100, 100});
  rig.press({100, 100});
  rig.move({150, 100});
  rig.gestures.wheel({{-20, 0}, true, {}});
  EXPECT_EQ(rig.state().nodeDragTranslation, QPointF(70, 0));
}

TEST_F(CanvasDrag, OfATopicUndoneAwayMeanwhileDoesNothing) {
  rig.editor.createChild(topicId(1));
  const Node child = rig.editor.mindMap().nodes.back();
  rig.press(child.position);
  rig.move(child.position + QPointF(50, 50));
  rig.editor.undo();
  rig.move(child.position + QPointF(60, 60), command);
  rig.release(child.position + QPointF(60, 60));
  EXPECT_EQ(rig.editor.mindMap().nodes.size(), 3u);
  EXPECT_EQ(rig.editor.undoCount(), 0);
}

// --- Moving a topic below another ---

TEST_F(CanvasDrag, WithCommandOverAnotherTopicHangsItThereAndMovesNothing) {
  rig.press({700, 100}, command);
  rig.move({449, 100}, command);
  EXPECT_EQ(rig.state().reparentTargetID, topicId(2));
  rig.release({449, 100}, command);
  EXPECT_FALSE(rig.state().reparentTargetID);
  EXPECT_EQ(rig.positionOf(3), QPointF(700, 100));
  EXPECT_EQ(rig.editor.treeInfo().parent(topicId(3)), topicId(2));
  EXPECT_EQ(rig.editor.undoCount(), 1);
}

TEST_F(CanvasDrag, WithCommandFiftyAwayFindsNoTopic) {
  rig.press({700, 100}, command);
  rig.move({450, 100}, command);
  EXPECT_FALSE(rig.state().reparentTargetID);
  rig.move({449.9, 100}, command);
  EXPECT_EQ(rig.state().reparentTargetID, topicId(2));
}

TEST_F(CanvasDrag, ForgetsItsTargetWhenCommandIsReleased) {
  rig.press({700, 100}, command);
  rig.move({449, 100}, command);
  rig.move({448, 100});
  EXPECT_FALSE(rig.state().reparentTargetID);
  rig.release({448, 100});
  EXPECT_EQ(rig.positionOf(3), QPointF(448, 100));
  EXPECT_FALSE(rig.editor.treeInfo().parent(topicId(3)));
}

TEST_F(CanvasDrag, LeavesSelectedTopicsOutOfItsTargets) {
  rig.editor.setSelectedNodeIDs({topicId(2), topicId(3)});
  rig.press({700, 100}, command);
  rig.move({410, 100}, command);
  EXPECT_FALSE(rig.state().reparentTargetID);
}

TEST(NodeSearch, EarlierTopicWinsOnEqualDistance) {
  CanvasRig rig(mapWith({topic(1, 0, 0), topic(2, 40, 0), topic(3, 500, 0)}));
  EXPECT_EQ(findNearestNode(rig.editor, {20, 0}, topicId(3), 50), topicId(1));
  EXPECT_EQ(findNearestNode(rig.editor, {21, 0}, topicId(3), 50), topicId(2));
  EXPECT_EQ(findNearestNode(rig.editor, {21, 0}, topicId(2), 50), topicId(1));
}

TEST(NodeSearch, RadiusIsStrict) {
  CanvasRig rig(mapWith({topic(1, 0, 0)}));
  EXPECT_FALSE(findNearestNode(rig.editor, {30, 40}, topicId(9), 50));
  EXPECT_EQ(findNearestNode(rig.editor, {30, 39.9}, topicId(9), 50), topicId(1));
}

// --- Panning ---

TEST_F(CanvasDrag, WithOptionPansFromTheFirstFivePixelsOn) {
  rig.look(1.0, {7, 9});
  rig.press({250, 300}, option);
  rig.move({254.9, 300}, option);
  EXPECT_FALSE(rig.state().isPanning);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(7, 9));
  rig.move({255, 300}, option);
  EXPECT_TRUE(rig.state().isPanning);
  EXPECT_EQ(rig.state().panStartOffset, QPointF(7, 9));
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(12, 9));
  rig.move({240, 330}, option);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(-3, 39));
  rig.release({240, 330}, option);
  EXPECT_FALSE(rig.state().isPanning);
  EXPECT_FALSE(rig.state().selectionBoxStart);
}

TEST_F(CanvasDrag, WithOptionEndsWithoutSelecting) {
  rig.editor.setSelectedNodeIDs({topicId(2)});
  rig.drag({0, 0}, {900, 300}, option);
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(2)}));
}

TEST_F(CanvasDrag, WithTheMiddleButtonPansFromAnywhere) {
  rig.press({100, 100}, {}, PointerButton::middle);
  rig.move({101, 98});
  EXPECT_TRUE(rig.state().isPanning);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(1, -2));
  rig.release({101, 98}, {}, PointerButton::middle);
  EXPECT_FALSE(rig.state().isPanning);
  EXPECT_TRUE(rig.editor.selectedNodeIDs().empty());
  EXPECT_EQ(rig.positionOf(1), QPointF(100, 100));
}

TEST_F(CanvasDrag, IsNotEndedByAnotherButton) {
  rig.press({100, 100});
  rig.move({150, 100});
  rig.press({150, 100}, {}, PointerButton::middle);
  rig.release({150, 100}, {}, PointerButton::middle);
  EXPECT_EQ(rig.state().draggedNodeID, topicId(1));
  rig.release({150, 100});
  EXPECT_EQ(rig.positionOf(1), QPointF(150, 100));
}

TEST_F(CanvasDrag, CursorTellsOfPanningAndOfOption) {
  EXPECT_EQ(rig.gestures.cursor(), CanvasCursor::arrow);
  rig.move({250, 300}, option);
  EXPECT_EQ(rig.gestures.cursor(), CanvasCursor::openHand);
  rig.press({250, 300}, option);
  rig.move({270, 300}, option);
  EXPECT_EQ(rig.gestures.cursor(), CanvasCursor::closedHand);
  rig.release({270, 300}, option);
  EXPECT_EQ(rig.gestures.cursor(), CanvasCursor::openHand);
  rig.gestures.leave();
  EXPECT_EQ(rig.gestures.cursor(), CanvasCursor::arrow);
}
