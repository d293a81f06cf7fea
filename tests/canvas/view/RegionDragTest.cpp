#include <gtest/gtest.h>

#include "canvas/view/CanvasRig.h"
#include "canvas/view/RegionMaps.h"
#include "themes/RegionColors.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

// A region from (100, 100) to (400, 300), with a topic on it. Its middle and its corner can be pressed.
struct RegionDrag : testing::Test {
  RegionDrag() {
    rig.extraTargets = {{{200, 250}, {CanvasTarget::Kind::region, regionId(1)}},
                        {{400, 300}, {CanvasTarget::Kind::regionResizeHandle, regionId(1)}}};
    rig.clock.advance(std::chrono::hours(1));
  }
  CanvasRig rig{mapWithRegions({region(1, {100, 100, 300, 200})}, {topic(1, 150, 150)})};
  const RegionGesture& layer() const { return rig.state().regions; }
  Region stored() const { return rig.editor.mindMap().regions[0]; }
  QRectF shown() const { return displayRect(stored(), layer()); }
  bool isStamped() const { return rig.editor.mindMap().updatedAt == rig.clock.now(); }
};

}  // namespace

TEST_F(RegionDrag, TapSelectsTheRegionAndLeavesTheTopicsSelected) {
  rig.editor.setSelectedNodeIDs({topicId(1)});
  rig.tap({200, 250});
  EXPECT_EQ(rig.editor.selectedRegionID(), regionId(1));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1)}));
  EXPECT_EQ(rig.editor.undoCount(), 0);
}

TEST_F(RegionDrag, OfLessThanThreePixelsIsATap) {
  rig.drag({200, 250}, {202.9, 250});
  EXPECT_EQ(stored().rect, QRectF(100, 100, 300, 200));
  EXPECT_EQ(rig.editor.selectedRegionID(), regionId(1));
  EXPECT_EQ(rig.editor.undoCount(), 0);
}

TEST_F(RegionDrag, OfThreePixelsMovesTheRegionAlone) {
  rig.press({200, 250});
  rig.move({203, 250});
  EXPECT_EQ(layer().draggingRegionID, regionId(1));
  EXPECT_EQ(layer().dragOffset, QSizeF(3, 0));
  EXPECT_EQ(shown(), QRectF(103, 100, 300, 200));
  EXPECT_EQ(stored().rect, QRectF(100, 100, 300, 200));
  EXPECT_EQ(rig.editor.undoCount(), 0);
  rig.release({203, 250});
  EXPECT_EQ(stored().rect, QRectF(103, 100, 300, 200));
  EXPECT_EQ(rig.positionOf(1), QPointF(150, 150));
  EXPECT_EQ(rig.editor.undoCount(), 1);
  EXPECT_TRUE(isStamped());
  EXPECT_EQ(layer(), RegionGesture());
  EXPECT_FALSE(rig.editor.selectedRegionID());
}

TEST_F(RegionDrag, CountsItsDistanceInViewPixels) {
  rig.look(0.5, {0, 0});
  rig.drag({100, 125}, {102, 125});
  EXPECT_EQ(stored().rect.x(), 100);
  rig.drag({100, 125}, {103, 125});
  EXPECT_EQ(stored().rect.x(), 106);
}

TEST_F(RegionDrag, Of100PixelsAtHalfZoomMovesTheRegionBy200) {
  rig.look(0.5, {0, 0});
  rig.press({100, 125});
  rig.move({200, 125});
  EXPECT_EQ(layer().dragOffset, QSizeF(200, 0));
  rig.release({200, 125});
  EXPECT_EQ(stored().rect, QRectF(300, 100, 300, 200));
}

TEST_F(RegionDrag, AtNoZoomAtAllDividesByAHundredth) {
  rig.look(0.001, {200, 250});
  rig.extraTargets = {{{0, 0}, {CanvasTarget::Kind::region, regionId(1)}}};
  rig.drag({200, 250}, {210, 245});
  EXPECT_EQ(stored().rect, QRectF(1100, -400, 300, 200));
}

TEST_F(RegionDrag, TakesOneSnapshotForAnyNumberOfMoves) {
  rig.press({200, 250});
  for (int i = 1; i <= 40; ++i) rig.move({200.0 + i, 250.0 - i});
  rig.release({240, 210});
  EXPECT_EQ(stored().rect, QRectF(140, 60, 300, 200));
  EXPECT_EQ(rig.editor.undoCount(), 1);
  rig.editor.undo();
  EXPECT_EQ(stored().rect, QRectF(100, 100, 300, 200));
}

TEST_F(RegionDrag, StaysUnderThePointerWhileTheCanvasMoves) {
  rig.press({200, 250});
  rig.move({210, 250});
  rig.gestures.wheel({{0, -20}, true, {}});
  EXPECT_EQ(layer().dragOffset, QSizeF(10, 20));
  rig.release({210, 250});
  EXPECT_EQ(stored().rect, QRectF(110, 120, 300, 200));
}

TEST_F(RegionDrag, CancelLeavesNothing) {
  const MindMap before = rig.editor.mindMap();
  for (const QPointF start : {QPointF(200, 250), QPointF(400, 300)}) {
    rig.press(start);
    rig.move(start + QPointF(50, 50));
    EXPECT_NE(layer(), RegionGesture());
    EXPECT_TRUE(rig.keys.press(Qt::Key_Escape));
    EXPECT_EQ(layer(), RegionGesture());
    rig.release(start + QPointF(50, 50));
  }
  EXPECT_EQ(rig.editor.mindMap(), before);
  EXPECT_EQ(rig.editor.undoCount(), 0);
  EXPECT_FALSE(rig.editor.selectedRegionID());
}

TEST_F(RegionDrag, EndsWhenTheRegionVanishes) {
  for (const QPointF start : {QPointF(200, 250), QPointF(400, 300)}) {
    rig.press(start);
    rig.move(start + QPointF(50, 50));
    rig.editor.deleteRegion(regionId(1));
    EXPECT_EQ(layer(), RegionGesture());
    EXPECT_FALSE(rig.gestures.isDragging());
    const MindMap before = rig.editor.mindMap();
    rig.release(start + QPointF(50, 50));
    EXPECT_EQ(rig.editor.mindMap(), before);
    rig.editor.undo();
  }
  EXPECT_EQ(rig.editor.undoCount(), 0);
}

TEST_F(RegionDrag, TapOnARegionThatHasGoneSelectsNothing) {
  rig.press({200, 250});
  rig.editor.deleteRegion(regionId(1));
  rig.release({200, 250});
  EXPECT_FALSE(rig.editor.selectedRegionID());
}

// --- Resize ---

TEST_F(RegionDrag, HandleNeedsTwoPixels) {
  rig.drag({400, 300}, {401.9, 300});
  EXPECT_EQ(rig.editor.undoCount(), 0);
  EXPECT_FALSE(rig.editor.selectedRegionID());
  rig.drag({400, 300}, {402, 300});
  EXPECT_EQ(stored().rect, QRectF(100, 100, 302, 200));
  EXPECT_EQ(rig.editor.undoCount(), 1);
}

TEST_F(RegionDrag, HandleGivesTheSizeAndLeavesTheOriginAndTheTimeStamp) {
  rig.look(2.0, {0, 0});
  rig.press({800, 600});
  rig.move({850, 580});
  EXPECT_EQ(layer().resizingRegionID, regionId(1));
  EXPECT_EQ(layer().resizeDelta, QSizeF(25, -10));
  EXPECT_EQ(shown(), QRectF(100, 100, 325, 190));
  rig.release({850, 580});
  EXPECT_EQ(stored().rect, QRectF(100, 100, 325, 190));
  EXPECT_EQ(rig.editor.undoCount(), 1);
  EXPECT_FALSE(isStamped());
  EXPECT_EQ(layer(), RegionGesture());
}

TEST_F(RegionDrag, HandleFarUpAndLeftStopsAt80By60) {
  rig.press({400, 300});
  rig.move({-500, -900});
  EXPECT_EQ(layer().resizeDelta, QSizeF(-900, -1200));
  EXPECT_EQ(shown(), QRectF(100, 100, 80, 60));
  rig.release({-500, -900});
  EXPECT_EQ(stored().rect, QRectF(100, 100, 80, 60));
}

TEST_F(RegionDrag, DisplayRectangleIsItsOwnForEveryOtherRegion) {
  const Region other = region(2, {0, 0, 10, 10});
  rig.press({400, 300});
  rig.move({450, 350});
  EXPECT_EQ(displayRect(other, layer()), QRectF(0, 0, 10, 10));
}

// --- Label and palette ---

TEST_F(RegionDrag, LabelIsEditedBesideTheMapAndStoredAtTheEnd) {
  rig.gestures.beginLabelEditing(regionId(1));
  EXPECT_EQ(layer().editingLabelID, regionId(1));
  EXPECT_EQ(layer().editingLabelText, QStringLiteral("Region 1"));
  rig.gestures.setEditingLabelText(QStringLiteral("Work"));
  EXPECT_EQ(stored().label, QStringLiteral("Region 1"));
  EXPECT_EQ(rig.editor.undoCount(), 0);
  rig.gestures.submitLabel();
  EXPECT_EQ(stored().label, QStringLiteral("Work"));
  EXPECT_EQ(rig.editor.undoCount(), 1);
  EXPECT_EQ(layer(), RegionGesture());
}

TEST_F(RegionDrag, LabelMayBeEmpty) {
  rig.gestures.beginLabelEditing(regionId(1));
  rig.gestures.setEditingLabelText(QString());
  rig.gestures.submitLabel();
  EXPECT_EQ(stored().label, QString());
}

TEST_F(RegionDrag, LabelStaysWithoutSubmission) {
  rig.gestures.beginLabelEditing(regionId(1));
  rig.gestures.setEditingLabelText(QStringLiteral("Work"));
  rig.gestures.endLabelEditing();
  rig.gestures.submitLabel();
  EXPECT_EQ(stored().label, QStringLiteral("Region 1"));
  EXPECT_EQ(rig.editor.undoCount(), 0);
}

TEST_F(RegionDrag, LabelEditEndsWhenTheRegionVanishes) {
  rig.gestures.beginLabelEditing(regionId(1));
  rig.editor.deleteRegion(regionId(1));
  EXPECT_EQ(layer(), RegionGesture());
  rig.gestures.beginLabelEditing(regionId(1));
  EXPECT_EQ(layer(), RegionGesture());
}

TEST(RegionPalette, HoldsEightColoursInOrder) {
  const char* colors[] = {"#7C4DFF", "#FF7043", "#26A69A", "#FFCA28", "#EC407A", "#42A5F5", "#9CCC65", "#AB47BC"};
  ASSERT_EQ(regionColorPalette.size(), 8u);
  for (int i = 0; i < 8; ++i) EXPECT_EQ(regionColorPalette[i].hex, QLatin1String(colors[i])) << i;
}
