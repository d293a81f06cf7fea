#include <gtest/gtest.h>

#include "canvas/view/CanvasRig.h"
#include "canvas/view/LayoutNotificationReceivers.h"
#include "canvas/view/ViewAnimation.h"
#include "layout/LayoutAlgorithm.h"

using namespace quilmora;
using namespace quilmora::test;
using namespace std::chrono_literals;

namespace {

struct ViewLife : testing::Test {
  CanvasRig rig{mapWith({topic(1, 100, 100), topic(2, 400, 100)}, {{1, 2}})};
};

struct ViewGlide : ViewLife {
  ViewAnimation animation{rig.editor, rig.scheduler, rig.clock};
  int finished = 0;

  void start() {
    animation.start({2.0, {100, -50}}, [this] { ++finished; });
  }
  void pass(std::chrono::milliseconds time) {
    rig.clock.advance(time);
    rig.scheduler.advance(ViewAnimation::frameInterval);
  }
};

}  // namespace

TEST_F(ViewLife, FirstAppearanceStoresTheSizeAndCentresTheFirstTopic) {
  rig.editor.setCanvasZoom(2.0);
  rig.gestures.appear({1000, 600});
  EXPECT_TRUE(rig.state().hasAppearedOnce);
  EXPECT_EQ(rig.state().canvasSize, QSizeF(1000, 600));
  EXPECT_EQ(rig.editor.lastKnownCanvasSize(), QSizeF(1000, 600));
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(500 - 200, 300 - 200));
}

TEST_F(ViewLife, LaterAppearancesLeaveTheViewWhereItIs) {
  rig.gestures.appear({1000, 600});
  rig.editor.setCanvasOffset({7, 7});
  rig.gestures.appear({1000, 600});
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(7, 7));
}

TEST_F(ViewLife, FirstAppearanceOfAnEmptyMapLooksAtTheOrigin) {
  CanvasRig empty(mapWith({}));
  empty.gestures.appear({1000, 600});
  EXPECT_EQ(empty.editor.canvasOffset(), QPointF(0, 0));
}

TEST_F(ViewLife, SizeChangesAreStored) {
  rig.gestures.appear({1000, 600});
  rig.gestures.resize({640, 480});
  EXPECT_EQ(rig.state().canvasSize, QSizeF(640, 480));
  EXPECT_EQ(rig.editor.lastKnownCanvasSize(), QSizeF(640, 480));
}

TEST_F(ViewLife, LayoutRequestArrangesFramesAndRefreshesTheZoomOfThePinch) {
  NotificationCenter notifications;
  const LayoutNotificationReceivers receivers(rig.editor, rig.gestures, notifications);
  rig.gestures.appear({1000, 600});
  notifications.post(Notification::applyTreeLayout);
  EXPECT_EQ(rig.editor.mindMap().layout, MindMap::Layout::tree);
  EXPECT_EQ(rig.positionOf(1), QPointF(375, 300));
  EXPECT_EQ(rig.positionOf(2), QPointF(625, 300));
  // Content of 500 × 300, the minimum size, so the height decides: 440 ÷ 300.
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), 440.0 / 300.0);
  EXPECT_EQ(rig.state().initialZoom, rig.editor.canvasZoom());
  notifications.post(Notification::applyVerticalTreeLayout);
  EXPECT_EQ(rig.editor.mindMap().layout, MindMap::Layout::verticalTree);
  EXPECT_EQ(rig.positionOf(2), QPointF(500, 425));
}

TEST_F(ViewLife, EveryLayoutRequestHasAReceiver) {
  NotificationCenter notifications;
  const LayoutNotificationReceivers receivers(rig.editor, rig.gestures, notifications);
  const std::pair<Notification, MindMap::Layout> requests[] = {
      {Notification::applyTreeLayout, MindMap::Layout::tree},
      {Notification::applyVerticalTreeLayout, MindMap::Layout::verticalTree},
      {Notification::applyRadialLayout, MindMap::Layout::radial},
      {Notification::applyLeftRightLayout, MindMap::Layout::leftRightTree},
      {Notification::applyOrgChartLayout, MindMap::Layout::orgChart},
  };
  for (const auto& [request, layout] : requests) {
    EXPECT_TRUE(notifications.hasReceiver(request));
    notifications.post(request);
    EXPECT_EQ(rig.editor.mindMap().layout, layout);
  }
}

TEST_F(ViewLife, RecolouringRequestsReachTheEditor) {
  NotificationCenter notifications;
  const LayoutNotificationReceivers receivers(rig.editor, rig.gestures, notifications);
  notifications.post(Notification::recolorByBranch);
  EXPECT_EQ(rig.editor.nodeByID(topicId(1))->style.fill, QStringLiteral("#37474F"));
  EXPECT_EQ(rig.editor.nodeByID(topicId(2))->style.fill, QStringLiteral("#1565C0"));
  notifications.post(Notification::recolorByTheme);
  EXPECT_NE(rig.editor.nodeByID(topicId(1))->style.fill, QStringLiteral("#37474F"));
  EXPECT_EQ(rig.editor.undoCount(), 2);
}

TEST_F(ViewGlide, IsHalfWayAfterHalfItsTime) {
  start();
  pass(150ms);
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), 1.5);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(50, -25));
  EXPECT_EQ(finished, 0);
}

TEST_F(ViewGlide, IsSlowAtBothEnds) {
  start();
  pass(30ms);
  EXPECT_NEAR(rig.editor.canvasZoom(), 1.02, 1e-9);
  pass(240ms);
  EXPECT_NEAR(rig.editor.canvasZoom(), 1.98, 1e-9);
}

TEST_F(ViewGlide, EndsAtItsTargetWithNoTimerLeft) {
  start();
  pass(299ms);
  EXPECT_TRUE(animation.isRunning());
  pass(1ms);
  EXPECT_EQ(rig.editor.canvasZoom(), 2.0);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(100, -50));
  EXPECT_EQ(finished, 1);
  EXPECT_FALSE(animation.isRunning());
  EXPECT_EQ(rig.scheduler.waitingCount(), 0u);
}

TEST_F(ViewGlide, GivesWayToAnyoneElseWhoMovesTheView) {
  start();
  pass(100ms);
  rig.editor.setCanvasOffset({-7, -7});
  pass(100ms);
  pass(200ms);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(-7, -7));
  EXPECT_EQ(finished, 1);
  EXPECT_EQ(rig.scheduler.waitingCount(), 0u);
}

TEST_F(ViewGlide, IsFinishedAtItsTargetOrStoppedWhereItIs) {
  start();
  pass(150ms);
  animation.finish();
  EXPECT_EQ(rig.editor.canvasZoom(), 2.0);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(100, -50));
  EXPECT_EQ(finished, 1);
  rig.look(1.0, {0, 0});
  start();
  pass(150ms);
  animation.stop();
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), 1.5);
  EXPECT_EQ(finished, 2);
  animation.finish();
  EXPECT_EQ(finished, 2);
  EXPECT_EQ(rig.scheduler.waitingCount(), 0u);
}

TEST_F(ViewGlide, ThatWasMovedElsewhereIsNotThrownToItsTarget) {
  start();
  pass(150ms);
  rig.editor.setCanvasOffset({-7, -7});
  animation.finish();
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(-7, -7));
  EXPECT_EQ(finished, 1);
}

TEST_F(ViewGlide, GoesOnWhenTheTimeOfDayIsSetBack) {
  start();
  rig.clock.set(rig.clock.now() - 1h);
  pass(150ms);
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), 1.5);
  pass(150ms);
  EXPECT_EQ(rig.editor.canvasZoom(), 2.0);
  EXPECT_EQ(finished, 1);
}
