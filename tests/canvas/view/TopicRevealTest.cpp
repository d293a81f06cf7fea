#include "canvas/view/WindowRig.h"

using namespace quilmora;
using namespace quilmora::test;
using namespace std::chrono_literals;

namespace {

// The view is 800 by 600; a canvas point p is shown at p + (300, 200).
struct NewTopics : testing::Test {
  WindowRig rig{mapWith({topic(1, 100, 100), topic(2, 300, 100)}, {{1, 2}})};

  void pass(std::chrono::milliseconds time) {
    rig.scheduler.advance(0ms);
    for (auto passed = 0ms; passed < time; passed += 16ms) {
      rig.clock.advance(16ms);
      rig.scheduler.advance(16ms);
    }
  }
  QPointF shown(const QUuid& id) {
    return rig.editor.nodeByID(id)->position * rig.editor.canvasZoom() + rig.editor.canvasOffset();
  }
};

}  // namespace

TEST_F(NewTopics, InSightLeaveTheViewWhereItIs) {
  rig.editor.createChild(topicId(1));
  pass(400ms);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(300, 200));
}

TEST_F(NewTopics, OutsideTheViewAreBroughtIntoItByAsLittleAsNeeded) {
  rig.editor.createChildAt(topicId(1), 100, 700);
  const QUuid id = *rig.editor.firstSelectedNode();
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(300, 200));
  pass(150ms);
  EXPECT_LT(rig.editor.canvasOffset().y(), 200);
  EXPECT_TRUE(rig.view.isAnimating());
  pass(300ms);
  EXPECT_FALSE(rig.view.isAnimating());
  EXPECT_EQ(rig.editor.canvasOffset().x(), 300);
  EXPECT_GT(shown(id).y(), 540);
  EXPECT_LT(shown(id).y(), 600 - 24 - 10);
  EXPECT_EQ(rig.editor.canvasZoom(), 1.0);
}

TEST_F(NewTopics, AreNotLeftBelowACard) {
  rig.view.setCoveredAreas([] { return std::vector<QRect>{QRect(600, 450, 190, 140)}; });
  rig.editor.createChildAt(topicId(1), 350, 300);
  const QUuid id = *rig.editor.firstSelectedNode();
  pass(400ms);
  EXPECT_FALSE(QRectF(590, 440, 200, 150).contains(shown(id)));
  EXPECT_NE(rig.editor.canvasOffset(), QPointF(300, 200));
}

TEST_F(NewTopics, WithoutAWishForMotionAreThereAtOnce) {
  rig.view.setGlides(false);
  rig.editor.createChildAt(topicId(1), 100, 700);
  rig.scheduler.advance(0ms);
  EXPECT_LT(rig.editor.canvasOffset().y(), 200);
  EXPECT_FALSE(rig.view.isAnimating());
}

TEST_F(NewTopics, FollowEachOtherInOneGlide) {
  rig.editor.createChildAt(topicId(1), 100, 700);
  pass(100ms);
  rig.editor.createChildAt(topicId(1), 100, 900);
  pass(400ms);
  EXPECT_LT(shown(*rig.editor.firstSelectedNode()).y(), 600 - 24 - 10);
  EXPECT_GT(shown(*rig.editor.firstSelectedNode()).y(), 540);
}

TEST_F(NewTopics, ThatComeWithADocumentAreNotLookedFor) {
  rig.editor.setMindMap(mapWith({topic(5, 5000, 0), topic(6, 5000, 900), topic(7, 0, 0)}));
  pass(400ms);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(300, 200));
  rig.editor.selectNode(topicId(5), false);
  pass(400ms);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(300, 200));
}

TEST_F(NewTopics, UndoneAndRedoneLeaveTheViewToThePerson) {
  rig.editor.createChildAt(topicId(1), 100, 700);
  pass(400ms);
  rig.editor.setCanvasOffset({300, 200});
  rig.editor.undo();
  rig.editor.redo();
  pass(400ms);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(300, 200));
}

TEST_F(NewTopics, RootThatAnArrowSelectsIsBroughtIntoSight) {
  rig.editor.setCanvasOffset({-2000, 200});
  rig.key(Qt::Key_Right);
  pass(400ms);
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1)}));
  EXPECT_GT(shown(topicId(1)).x(), 24);
  EXPECT_LT(shown(topicId(1)).x(), 100);
}
