#include <gtest/gtest.h>

#include "canvas/view/BoxSelection.h"
#include "canvas/view/CanvasRig.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

struct SelectionBox : testing::Test {
  CanvasRig rig{mapWith({topic(1, 100, 100), topic(2, 400, 100), topic(3, 400, 500)}, {{1, 2}, {1, 3}})};
  CanvasRig bent{mapWith({topic(1, 0, 0), topic(2, 300, 0)}, {{1, 2}})};

  void select(const QRectF& box) { selectByRectangle(rig.editor, box); }
};

}  // namespace

TEST_F(SelectionBox, StartsAtThePressAndFollowsThePointer) {
  rig.press({200, 300});
  rig.move({203, 303.9});
  EXPECT_FALSE(rig.state().selectionBoxStart);
  rig.move({203, 304});
  EXPECT_EQ(rig.state().selectionBoxStart, QPointF(200, 300));
  EXPECT_EQ(rig.state().selectionBoxCurrent, QPointF(203, 304));
  rig.move({50, 90});
  EXPECT_EQ(rig.state().selectionBoxStart, QPointF(200, 300));
  EXPECT_EQ(rig.state().selectionBoxCurrent, QPointF(50, 90));
  rig.release({50, 90});
  EXPECT_FALSE(rig.state().selectionBoxStart);
  EXPECT_FALSE(rig.state().selectionBoxCurrent);
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1)}));
}

TEST_F(SelectionBox, SelectsTopicsByTheirCentre) {
  select(QRectF(99, 99, 2, 2));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1)}));
  select(QRectF(101, 101, 200, 2));
  EXPECT_TRUE(rig.editor.selectedNodeIDs().empty());
}

TEST_F(SelectionBox, ReplacesTheSelection) {
  rig.editor.setSelectedNodeIDs({topicId(2), topicId(3)});
  rig.editor.setSelectedEdgeIDs({edgeId(1)});
  select(QRectF(90, 90, 20, 20));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1)}));
  EXPECT_EQ(rig.editor.selectedEdgeIDs(), IdSet({edgeId(0), edgeId(1)}));
}

TEST_F(SelectionBox, IsInViewCoordinatesAtHalfZoom) {
  rig.look(0.5, {20, 10});
  // The second topic is shown at (220, 60).
  select(QRectF(219, 59, 2, 2));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(2)}));
  select(QRectF(399, 99, 2, 2));
  EXPECT_TRUE(rig.editor.selectedNodeIDs().empty());
}

TEST_F(SelectionBox, IsInViewCoordinatesAtDoubleZoom) {
  rig.look(2.0, {-300, 0});
  // The second topic is shown at (500, 200).
  select(QRectF(499, 199, 2, 2));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(2)}));
}

TEST_F(SelectionBox, FindsAnEdgeAtASample) {
  // The straight edge from (100, 100) to (400, 100) has samples 15 apart in its middle: it is caught at 235, 250 and
  // 265, but not between them.
  select(QRectF(249, 99, 2, 2));
  EXPECT_EQ(rig.editor.selectedEdgeIDs(), IdSet({edgeId(0)}));
  select(QRectF(252, 99, 10, 2));
  EXPECT_TRUE(rig.editor.selectedEdgeIDs().empty());
}

TEST_F(SelectionBox, FindsAnEdgeAtBothEnds) {
  select(QRectF(99.5, 99.5, 1, 1));
  EXPECT_EQ(rig.editor.selectedEdgeIDs(), IdSet({edgeId(0), edgeId(1)}));
  select(QRectF(399.5, 499.5, 1, 1));
  EXPECT_EQ(rig.editor.selectedEdgeIDs(), IdSet({edgeId(1)}));
}

TEST_F(SelectionBox, FindsABentEdgeWhereItIsBentTo) {
  MindMap map = bent.editor.mindMap();
  map.edges.update(0, [](Edge& edge) { edge.controlPointOffset = QPointF(0, 100); });
  bent.editor.setMindMap(map);
  // Both inner points move by 100, the middle of the curve by three quarters of that.
  selectByRectangle(bent.editor, QRectF(149, 74, 2, 2));
  EXPECT_EQ(bent.editor.selectedEdgeIDs(), IdSet({edgeId(0)}));
  selectByRectangle(bent.editor, QRectF(149, -1, 2, 2));
  EXPECT_TRUE(bent.editor.selectedEdgeIDs().empty());
  bent.look(2.0, {10, 0});
  selectByRectangle(bent.editor, QRectF(309, 149, 2, 2));
  EXPECT_EQ(bent.editor.selectedEdgeIDs(), IdSet({edgeId(0)}));
}

TEST_F(SelectionBox, LeavesOutAnEdgeWithAMissingTopic) {
  MindMap map = rig.editor.mindMap();
  map.edges.append(edgeBetween(9, 1, 77));
  rig.editor.setMindMap(map);
  select(QRectF(-1000, -1000, 3000, 3000));
  EXPECT_EQ(rig.editor.selectedEdgeIDs(), IdSet({edgeId(0), edgeId(1)}));
  EXPECT_EQ(rig.editor.selectedNodeIDs().size(), 3u);
}

TEST_F(SelectionBox, TakesTopicsThatACollapsedOneHidesAsWell) {
  rig.editor.toggleCollapsed(topicId(1));
  ASSERT_TRUE(rig.editor.isHidden(topicId(2)));
  rig.drag({0, 300}, {1000, 50});
  EXPECT_TRUE(rig.editor.selectedNodeIDs().contains(topicId(2)));
}

TEST_F(SelectionBox, StartsOnAnEdgeAsOnTheBackground) {
  rig.extraTargets = {{{250, 100}, {CanvasTarget::Kind::edge, edgeId(0)}}};
  rig.press({250, 100});
  rig.move({260, 110});
  EXPECT_EQ(rig.state().selectionBoxStart, QPointF(250, 100));
  rig.release({260, 110});
  EXPECT_EQ(rig.editor.selectedEdgeIDs(), IdSet({edgeId(0)}));
}

TEST_F(SelectionBox, CancelledSelectsNothing) {
  rig.editor.setSelectedNodeIDs({topicId(3)});
  rig.press({0, 0});
  rig.move({900, 900});
  rig.gestures.cancel();
  EXPECT_FALSE(rig.state().selectionBoxStart);
  rig.release({900, 900});
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(3)}));
}

TEST_F(SelectionBox, BearsCoordinatesBeyondAnyScreen) {
  CanvasRig far(mapWith({topic(1, 1e300, -1e300), topic(2, 0, 0)}, {{1, 2}}));
  far.look(5.0, {1e9, 1e9});
  selectByRectangle(far.editor, QRectF(1e9 - 1, 1e9 - 1, 2, 2));
  EXPECT_EQ(far.editor.selectedNodeIDs(), IdSet({topicId(2)}));
}
