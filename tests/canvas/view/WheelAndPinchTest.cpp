#include <gtest/gtest.h>

#include "canvas/view/CanvasRig.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

struct CanvasWheel : testing::Test {
  CanvasWheel() { rig.move({200, 150}); }
  CanvasRig rig{mapWith({topic(1, 100, 100)})};

  void wheel(QPointF delta, bool isPrecise, InputModifiers modifiers = {}) {
    rig.gestures.wheel({delta, isPrecise, modifiers});
  }
};

using CanvasPinch = CanvasWheel;

}  // namespace

TEST_F(CanvasWheel, PansByTheDeltaOfATrackpad) {
  rig.look(2.0, {10, 20});
  wheel({3, -7.5}, true);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(13, 12.5));
  EXPECT_EQ(rig.editor.canvasZoom(), 2.0);
}

TEST_F(CanvasWheel, PansByTenTimesTheLines) {
  rig.look(1.0, {10, 20});
  wheel({0.5, -3}, false);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(15, -10));
}

TEST_F(CanvasWheel, WithCommandZoomsAHundredthForEachPixel) {
  wheel({0, 20}, true, command);
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), 1.2);
}

TEST_F(CanvasWheel, WithCommandZoomsATwentiethForEachLine) {
  wheel({0, 3}, false, command);
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), 1.15);
  wheel({0, -2}, false, command);
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), 1.15 * 0.9);
}

TEST_F(CanvasWheel, ZoomsAboutThePointer) {
  rig.look(1.0, {50, 30});
  // The canvas point under (200, 150) is (150, 120).
  wheel({0, 10}, false, command);
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), 1.5);
  EXPECT_DOUBLE_EQ(rig.editor.canvasOffset().x(), 200 - 150 * 1.5);
  EXPECT_DOUBLE_EQ(rig.editor.canvasOffset().y(), 150 - 120 * 1.5);
}

TEST_F(CanvasWheel, ZoomStaysWithinItsLimits) {
  wheel({0, 1000}, true, command);
  EXPECT_EQ(rig.editor.canvasZoom(), 5.0);
  wheel({0, -1000}, true, command);
  EXPECT_EQ(rig.editor.canvasZoom(), 0.1);
}

TEST_F(CanvasWheel, SidewaysWithCommandDoesNotZoom) {
  wheel({30, 0}, false, command);
  EXPECT_EQ(rig.editor.canvasZoom(), 1.0);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(0, 0));
}

TEST_F(CanvasWheel, DoesNothingWhileScrollingIsBlocked) {
  rig.editor.blockCanvasScroll = true;
  EXPECT_FALSE(rig.gestures.wheel({{0, 3}, false, {}}));
  EXPECT_FALSE(rig.gestures.wheel({{0, 3}, false, command}));
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(0, 0));
  EXPECT_EQ(rig.editor.canvasZoom(), 1.0);
}

TEST_F(CanvasWheel, DoesNothingWhileThePointerIsElsewhere) {
  rig.gestures.leave();
  EXPECT_FALSE(rig.editor.isCanvasHovered);
  EXPECT_FALSE(rig.gestures.wheel({{0, 3}, false, {}}));
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(0, 0));
  rig.move({10, 10});
  EXPECT_TRUE(rig.editor.isCanvasHovered);
  EXPECT_EQ(rig.editor.cursorLocation, QPointF(10, 10));
  EXPECT_TRUE(rig.gestures.wheel({{0, 3}, false, {}}));
}

TEST_F(CanvasPinch, ZoomsFromTheZoomAtItsStart) {
  rig.gestures.pinch(1.5);
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), 1.5);
  rig.gestures.pinch(2.0);
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), 2.0);
  EXPECT_EQ(rig.state().initialZoom, 1.0);
  rig.gestures.pinchEnded();
  EXPECT_EQ(rig.state().initialZoom, 2.0);
  rig.gestures.pinch(1.25);
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), 2.5);
}

TEST_F(CanvasPinch, KeepsThePointUnderThePointer) {
  rig.look(1.0, {50, 30});
  rig.gestures.pinch(2.0);
  EXPECT_DOUBLE_EQ(rig.editor.canvasOffset().x(), 200 - 150 * 2.0);
  EXPECT_DOUBLE_EQ(rig.editor.canvasOffset().y(), 150 - 120 * 2.0);
}

TEST_F(CanvasPinch, UsesAStaleInitialZoom) {
  wheel({0, 10}, false, command);
  ASSERT_DOUBLE_EQ(rig.editor.canvasZoom(), 1.5);
  rig.gestures.pinch(1.1);
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), 1.1);
}

TEST_F(CanvasPinch, BeginsAtAHundredth) {
  rig.gestures.pinch(1.0099);
  EXPECT_EQ(rig.editor.canvasZoom(), 1.0);
  rig.gestures.pinch(1.011);
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), 1.011);
  rig.gestures.pinch(1.001);
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), 1.001);
}

TEST_F(CanvasPinch, ThatBeginsTakesADragBack) {
  rig.press({100, 100});
  rig.move({150, 130});
  ASSERT_TRUE(rig.gestures.isDragging());
  rig.gestures.pinch(1.005);
  EXPECT_TRUE(rig.gestures.isDragging());
  rig.gestures.pinch(1.2);
  EXPECT_FALSE(rig.gestures.isDragging());
  EXPECT_EQ(rig.state().nodeDragTranslation, QPointF());
  rig.release({150, 130});
  EXPECT_EQ(rig.positionOf(1), QPointF(100, 100));
  EXPECT_EQ(rig.editor.undoCount(), 0);
}

TEST_F(CanvasPinch, ThatNeverBeganLeavesTheInitialZoomAlone) {
  wheel({0, 10}, false, command);
  rig.gestures.pinch(1.005);
  rig.gestures.pinchEnded();
  EXPECT_EQ(rig.state().initialZoom, 1.0);
}

TEST_F(CanvasPinch, StaysWithinTheLimits) {
  rig.gestures.pinch(100.0);
  EXPECT_EQ(rig.editor.canvasZoom(), 5.0);
  rig.gestures.pinch(0.001);
  EXPECT_EQ(rig.editor.canvasZoom(), 0.1);
}
