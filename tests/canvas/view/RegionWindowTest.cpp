#include "canvas/view/RegionLabelField.h"
#include "canvas/view/RegionMaps.h"
#include "canvas/view/WindowRig.h"
#include "themes/Color.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

// The first topic is centred, so a canvas point p is shown at p + (300, 200).
struct RegionWindow : testing::Test {
  WindowRig rig{
      mapWithRegions({region(1, {-200, 0, 240, 200}), region(2, {-20, 150, 200, 150})}, {topic(1, 100, 100)})};
  static QPoint seen(double x, double y) { return {qRound(x + 300), qRound(y + 200)}; }
  Region stored(int number) { return *rig.editor.regionByID(regionId(number)); }
};

}  // namespace

TEST_F(RegionWindow, ClickSelectsAndTheUpperOneComesFirst) {
  rig.click(seen(-100, 50));
  EXPECT_EQ(rig.editor.selectedRegionID(), regionId(1));
  // Where both overlap, the later one is on top.
  rig.click(seen(0, 180));
  EXPECT_EQ(rig.editor.selectedRegionID(), regionId(2));
  rig.click(seen(250, -50));
  EXPECT_FALSE(rig.editor.selectedRegionID());
}

TEST_F(RegionWindow, TopicOnARegionIsHitBeforeIt) {
  rig.editor.setMindMap(
      mapWithRegions({region(1, {-200, 0, 600, 400})}, {topic(1, 100, 100), topic(2, -50, 100)}, {{1, 2}}));
  rig.click(rig.at(1));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1)}));
  rig.click(seen(25, 100));
  EXPECT_EQ(rig.editor.selectedEdgeIDs(), IdSet({edgeId(0)}));
  EXPECT_FALSE(rig.editor.selectedRegionID());
}

TEST_F(RegionWindow, DragMovesTheRegion) {
  rig.drag(seen(-100, 50), seen(-60, 30));
  EXPECT_EQ(stored(1).rect, QRectF(-160, -20, 240, 200));
  EXPECT_EQ(rig.editor.undoCount(), 1);
}

TEST_F(RegionWindow, DragShowsTheRegionOnItsWay) {
  const QPoint outside = seen(-210, 60);
  const QColor before = rig.view.grab().toImage().pixelColor(outside);
  rig.mouse(QTest::MousePress, seen(-100, 60));
  rig.mouse(QTest::MouseMove, seen(-130, 60));
  EXPECT_NE(rig.view.grab().toImage().pixelColor(outside), before);
  rig.key(Qt::Key_Escape);
  EXPECT_EQ(rig.view.grab().toImage().pixelColor(outside), before);
  rig.mouse(QTest::MouseRelease, seen(-130, 60));
  EXPECT_EQ(stored(1).rect, QRectF(-200, 0, 240, 200));
}

TEST_F(RegionWindow, HandleOfTheSelectedRegionResizesIt) {
  // The corner of an unselected region belongs to the canvas like any other point of it.
  rig.drag(seen(175, 297), seen(185, 297));
  EXPECT_EQ(stored(2).rect, QRectF(-10, 150, 200, 150));
  rig.click(seen(100, 250));
  ASSERT_EQ(rig.editor.selectedRegionID(), regionId(2));
  rig.drag(seen(195, 304), seen(225, 314));
  EXPECT_EQ(stored(2).rect, QRectF(-10, 150, 230, 160));
}

TEST_F(RegionWindow, LostWindowTakesTheDragBack) {
  rig.mouse(QTest::MousePress, seen(-100, 60));
  rig.mouse(QTest::MouseMove, seen(-130, 60));
  ASSERT_TRUE(rig.view.gestures().isDragging());
  QEvent lost(QEvent::WindowDeactivate);
  QCoreApplication::sendEvent(&rig.view, &lost);
  EXPECT_EQ(rig.view.gestures().state().regions, RegionGesture());
  rig.mouse(QTest::MouseRelease, seen(-130, 60));
  EXPECT_EQ(stored(1).rect, QRectF(-200, 0, 240, 200));
}

TEST_F(RegionWindow, MiddleDragPansFromARegionToo) {
  rig.drag(seen(-100, 50), seen(-90, 50), Qt::MiddleButton);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(310, 200));
  EXPECT_EQ(stored(1).rect, QRectF(-200, 0, 240, 200));
}

TEST_F(RegionWindow, RegionNeverHidesATopic) {
  rig.editor.setMindMap(mapWithRegions({region(1, {-200, -100, 600, 400})}, {topic(1, 100, 100)}));
  EXPECT_EQ(rig.view.grab().toImage().pixelColor(rig.at(1, {-20, -12})),
            QColor(rig.editor.nodeByID(topicId(1))->style.fill));
}
