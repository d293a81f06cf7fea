#include "canvas/view/WindowRig.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

MindMap linkedMap() {
  MindMap map = mapWith({topic(1, 0, 0), topic(2, 200, 0), topic(3, 0, 160), topic(4, 200, 160)}, {{1, 2}});
  map.relationships.append(Relationship{edgeId(70), topicId(3), topicId(4), QString(), QStringLiteral("#888888"), {}});
  return map;
}

// The first topic is centred, so a canvas point p is shown at p + (400, 300). The relationship of topics 3 and 4 bends
// by a fifth of its length: its middle is (100, 180).
struct HandleWindow : testing::Test {
  WindowRig rig{linkedMap()};

  static QPoint shown(int x, int y) { return {400 + x, 300 + y}; }
  const SharedArray<Edge>& edges() { return rig.editor.mindMap().edges; }
  const SharedArray<Relationship>& relationships() { return rig.editor.mindMap().relationships; }
  void dragHandleOfThird(QPoint to, Qt::KeyboardModifiers modifiers = {}) {
    rig.clock.advance(std::chrono::seconds(1));
    rig.click(rig.at(3));
    const QPoint handle = rig.at(3, {rig.partBeside(3, CanvasTarget::Kind::connectionHandle).value() + 3, 0});
    rig.drag(handle, to, Qt::LeftButton, modifiers);
  }
};

}  // namespace

TEST_F(HandleWindow, ConnectionHandleDrawsAnEdgeToATopic) {
  dragHandleOfThird(shown(195, 165));
  ASSERT_EQ(edges().size(), 2u);
  EXPECT_EQ(edges()[1].from, topicId(3));
  EXPECT_EQ(edges()[1].to, topicId(4));
}

TEST_F(HandleWindow, ConnectionHandleWithShiftDrawsARelationship) {
  dragHandleOfThird(shown(200, 0), Qt::ShiftModifier);
  EXPECT_EQ(edges().size(), 1u);
  ASSERT_EQ(relationships().size(), 2u);
  EXPECT_EQ(relationships()[1].from, topicId(3));
  EXPECT_EQ(relationships()[1].to, topicId(2));
}

TEST_F(HandleWindow, ConnectionHandleOnFreeCanvasMakesAChildThereAlsoWithShift) {
  dragHandleOfThird(shown(-60, 230));
  dragHandleOfThird(shown(-160, 230), Qt::ShiftModifier);
  ASSERT_EQ(rig.editor.mindMap().nodes.size(), 6u);
  EXPECT_EQ(rig.editor.mindMap().nodes[4].position, QPointF(-60, 230));
  EXPECT_EQ(rig.editor.mindMap().nodes[5].position, QPointF(-160, 230));
  EXPECT_EQ(rig.editor.treeInfo().parent(rig.editor.mindMap().nodes[5].id), topicId(3));
}

TEST_F(HandleWindow, ConnectionHandleShowsItsTargetOnTheWay) {
  rig.click(rig.at(3));
  const QPoint handle = rig.at(3, {rig.partBeside(3, CanvasTarget::Kind::connectionHandle).value() + 3, 0});
  const QPoint border = rig.at(4, {0, 0});
  const QImage before = rig.view.grab().toImage();
  rig.mouse(QTest::MousePress, handle);
  rig.mouse(QTest::MouseMove, handle + QPoint(210, 0));
  EXPECT_EQ(rig.view.gestures().state().handleDragTargetID, topicId(4));
  // The dashes of the preview are between the two, and a border marks the target.
  const QImage during = rig.view.grab().toImage();
  int changed = 0;
  for (int y = border.y() - 25; y < border.y() + 25; ++y)
    changed += before.pixel(border.x(), y) != during.pixel(border.x(), y);
  EXPECT_GE(changed, 4);
  rig.key(Qt::Key_Escape);
  EXPECT_FALSE(rig.view.gestures().state().handleDragSourceID);
  rig.mouse(QTest::MouseRelease, handle + QPoint(210, 0));
  EXPECT_EQ(edges().size(), 1u);
}

TEST_F(HandleWindow, EndsOfASelectedEdgeAreDraggedToOtherTopics) {
  rig.click(shown(100, 0));
  ASSERT_EQ(rig.editor.selectedEdgeIDs(), IdSet({edgeId(0)}));
  rig.drag(shown(200, 0), shown(210, 150));
  EXPECT_EQ(edges()[0].to, topicId(4));
  rig.drag(shown(0, 0), shown(5, 155));
  EXPECT_EQ(edges()[0].from, topicId(3));
  EXPECT_EQ(rig.editor.undoCount(), 2);
}

TEST_F(HandleWindow, ClickOnAnEndOfASelectedEdgeSelectsItsTopic) {
  rig.click(shown(100, 0));
  rig.click(shown(200, 0));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(2)}));
  EXPECT_TRUE(rig.editor.selectedEdgeIDs().empty());
}

// A box also selects connectors, whose ends are on the middles of their topics.
TEST_F(HandleWindow, BoxedSelectionMovesByTheMiddleOfATopic) {
  rig.drag(shown(-120, -60), shown(280, 60));
  ASSERT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1), topicId(2)}));
  ASSERT_EQ(rig.editor.selectedEdgeIDs(), IdSet({edgeId(0)}));
  rig.drag(rig.at(2), rig.at(2, {30, 20}));
  EXPECT_EQ(rig.editor.nodeByID(topicId(1))->position, QPointF(30, 20));
  EXPECT_EQ(rig.editor.nodeByID(topicId(2))->position, QPointF(230, 20));
  EXPECT_EQ(edges()[0].to, topicId(2));
  // The topic that is not selected takes a press in its middle too.
  rig.drag(rig.at(3), rig.at(3, {10, 10}));
  EXPECT_EQ(rig.editor.nodeByID(topicId(3))->position, QPointF(10, 170));
}

TEST_F(HandleWindow, HandlesOfAnEdgeShowOnTopicsOnlyWhileNoTopicIsSelected) {
  const auto middleOf = [&](int number) {
    return rig.view.grab().toImage().copy(QRect(rig.at(number) - QPoint(5, 5), QSize(10, 10)));
  };
  rig.mouse(QTest::MouseMove, {10, 10});
  const QImage bare = middleOf(1);
  rig.editor.setSelectedEdgeIDs({edgeId(0)});
  EXPECT_NE(middleOf(1), bare);
  rig.editor.setSelectedNodeIDs({topicId(4)});
  EXPECT_EQ(middleOf(1), bare);
  rig.editor.setSelectedNodeIDs({});
  EXPECT_NE(middleOf(1), bare);
}

TEST_F(HandleWindow, SelectedEdgeIsBentByItsMiddle) {
  rig.click(shown(100, 0));
  rig.drag(shown(100, 0), shown(110, -40));
  EXPECT_EQ(edges()[0].controlPointOffset, QPointF(10, -40));
  EXPECT_EQ(rig.editor.undoCount(), 1);
}

TEST_F(HandleWindow, SelectedRelationshipIsBentAndDeleted) {
  rig.click(rig.at(1));
  rig.click(shown(100, 180));
  ASSERT_EQ(rig.view.gestures().state().selectedRelationshipID, edgeId(70));
  EXPECT_TRUE(rig.editor.selectedNodeIDs().empty());
  rig.drag(shown(100, 180), shown(110, 200));
  EXPECT_EQ(relationships()[0].controlPointOffset, QPointF(10, 20));
  // The middle moves by half the offset, and the button is 15 above it.
  rig.click(shown(105, 190 - 15));
  EXPECT_TRUE(relationships().empty());
  EXPECT_FALSE(rig.view.gestures().state().selectedRelationshipID);
  rig.editor.undo();
  EXPECT_EQ(relationships().size(), 1u);
}

TEST_F(HandleWindow, HandlesOfARelationshipAreHitAboveATopic) {
  rig.editor.createFreeNode(100, 172);
  rig.editor.setNodeTitle(*rig.editor.firstSelectedNode(), QStringLiteral("x"));
  rig.click(shown(60, 177));
  ASSERT_EQ(rig.view.gestures().state().selectedRelationshipID, edgeId(70));
  rig.drag(shown(100, 180), shown(100, 220));
  EXPECT_EQ(relationships()[0].controlPointOffset, QPointF(0, 40));
  rig.click(shown(100, 200 - 15));
  EXPECT_TRUE(relationships().empty());
  EXPECT_EQ(rig.editor.mindMap().nodes.size(), 5u);
}

TEST_F(HandleWindow, BranchModeConnectsOnAClick) {
  rig.click(rig.at(1));
  rig.editor.startEdgeCreation();
  rig.click(rig.at(4));
  ASSERT_EQ(edges().size(), 2u);
  EXPECT_EQ(edges()[1].from, topicId(1));
  EXPECT_EQ(edges()[1].to, topicId(4));
  EXPECT_FALSE(rig.editor.isEdgeCreationMode());
}
