#include "editor/CommandRig.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

MindMap positioned(const std::vector<QPointF>& points) {
  MindMap map = mapOf({});
  for (std::size_t i = 0; i < points.size(); ++i)
    map.nodes.append(topic(static_cast<int>(i), points[i].x(), points[i].y()));
  return map;
}

void expectRect(const QRectF& rect, double x, double y, double width, double height) {
  EXPECT_EQ(rect.x(), x);
  EXPECT_EQ(rect.y(), y);
  EXPECT_EQ(rect.width(), width);
  EXPECT_EQ(rect.height(), height);
}

}  // namespace

TEST(CreateRegion, AroundOneSelectedTopic) {
  CommandRig rig(positioned({{100.0, 100.0}}));
  rig.select({0});
  rig.editor.createRegion(QPointF(900.0, 900.0));
  ASSERT_EQ(rig.map().regions.size(), 1u);
  expectRect(rig.map().regions[0].rect, 20.0, 0.0, 160.0, 180.0);
}

TEST(CreateRegion, AroundSeveralSelectedTopicsWithRoomForTheLabel) {
  CommandRig rig(positioned({{-50.0, 40.0}, {250.0, -10.0}, {100.0, 500.0}, {9000.0, 9000.0}}));
  rig.select({0, 1, 2});
  rig.editor.createRegion(std::nullopt);
  expectRect(rig.map().regions[0].rect, -130.0, -110.0, 460.0, 690.0);
}

TEST(CreateRegion, LeavesOutSelectedTopicsThatNoLongerExist) {
  CommandRig rig(positioned({{100.0, 100.0}}));
  rig.select({55, 0});
  rig.editor.createRegion(std::nullopt);
  expectRect(rig.map().regions[0].rect, 20.0, 0.0, 160.0, 180.0);
}

TEST(CreateRegion, FallsBackToThePointWhenNothingSelectedExists) {
  CommandRig rig(positioned({{100.0, 100.0}}));
  rig.select({55});
  rig.editor.createRegion(QPointF(500.0, 400.0));
  expectRect(rig.map().regions[0].rect, 350.0, 300.0, 300.0, 200.0);
}

TEST(CreateRegion, CentresOnThePointWithoutASelection) {
  CommandRig rig(positioned({{100.0, 100.0}}));
  rig.editor.createRegion(QPointF(500.0, 400.0));
  expectRect(rig.map().regions[0].rect, 350.0, 300.0, 300.0, 200.0);
}

TEST(CreateRegion, HasAFixedPlaceWithoutSelectionAndPoint) {
  CommandRig rig(positioned({}));
  rig.editor.createRegion(std::nullopt);
  expectRect(rig.map().regions[0].rect, 250.0, 200.0, 300.0, 200.0);
}

TEST(CreateRegion, BecomesTheSelectionAndLeavesTheTimeStamp) {
  CommandRig rig(mapOf({0, 1}, {{0, 1}}));
  rig.select({0});
  rig.editor.setSelectedEdgeIDs({edgeId(0)});
  rig.log.take();
  rig.editor.createRegion(std::nullopt);
  EXPECT_EQ(rig.log.take(), QStringLiteral("history dirty mindMap region nodes edges"));
  EXPECT_EQ(rig.map().regions[0].label, QStringLiteral("Region"));
  EXPECT_FALSE(rig.map().regions[0].id.isNull());
  EXPECT_EQ(rig.editor.selectedRegionID(), rig.map().regions[0].id);
  EXPECT_TRUE(rig.selected().empty());
  EXPECT_TRUE(rig.editor.selectedEdgeIDs().empty());
  rig.expectChange(1, false);
}

TEST(CreateRegion, PicksColoursByCount) {
  CommandRig rig;
  for (int i = 0; i < 8; ++i) rig.editor.createRegion(std::nullopt);
  const char* colors[] = {"#7C4DFF", "#FF7043", "#26A69A", "#FFCA28", "#EC407A", "#42A5F5", "#9CCC65", "#7C4DFF"};
  for (int i = 0; i < 8; ++i) EXPECT_EQ(rig.map().regions[i].color, QLatin1String(colors[i])) << i;
}

TEST(CreateRegion, MayRepeatAColourAfterADeletion) {
  CommandRig rig;
  for (int i = 0; i < 3; ++i) rig.editor.createRegion(std::nullopt);
  rig.editor.deleteRegion(rig.map().regions[0].id);
  rig.editor.createRegion(std::nullopt);
  ASSERT_EQ(rig.map().regions.size(), 3u);
  EXPECT_EQ(rig.map().regions[1].color, QStringLiteral("#26A69A"));
  EXPECT_EQ(rig.map().regions[2].color, QStringLiteral("#26A69A"));
}

TEST(CreateRegion, AroundTopicsAtTheEndsOfTheCanvas) {
  CommandRig rig(positioned({{-1e9, 1e9}, {1e9, -1e9}}));
  rig.select({0, 1});
  rig.editor.createRegion(std::nullopt);
  expectRect(rig.map().regions[0].rect, -1000000080.0, -1000000100.0, 2000000160.0, 2000000180.0);
}

TEST(DeleteRegion, ClearsTheSelectionOfThatRegionOnly) {
  CommandRig rig;
  rig.editor.createRegion(std::nullopt);
  rig.editor.createRegion(std::nullopt);
  const QUuid first = rig.map().regions[0].id;
  const QUuid second = rig.map().regions[1].id;
  rig.settle();
  rig.editor.deleteRegion(first);
  EXPECT_EQ(rig.log.take(), QStringLiteral("history dirty mindMap"));
  EXPECT_EQ(rig.editor.selectedRegionID(), second);
  rig.expectChange(1, false);
  rig.settle();
  rig.editor.deleteRegion(second);
  EXPECT_EQ(rig.log.take(), QStringLiteral("history dirty mindMap region"));
  EXPECT_EQ(rig.editor.selectedRegionID(), std::nullopt);
  EXPECT_TRUE(rig.map().regions.empty());
  rig.expectChange(1, false);
}

// --- Editing a region by hand and by menu ---

namespace {

QUuid regionId(int number) {
  return topicId(5000 + number);
}

struct RegionEdits : testing::Test {
  RegionEdits() { rig.settle(); }
  static MindMap map() {
    MindMap map = mapOf({0});
    map.regions.append(Region{regionId(0), QStringLiteral("First"), QStringLiteral("#7C4DFF"), {10, 20, 300, 200}});
    map.regions.append(Region{regionId(1), QStringLiteral("Second"), QStringLiteral("#FF7043"), {500, 20, 100, 90}});
    return map;
  }
  CommandRig rig{map()};
  const Region& region(int number) const { return rig.map().regions[number]; }
};

}  // namespace

TEST_F(RegionEdits, MoveTranslatesTheRectangleAndSetsTheTimeStamp) {
  rig.editor.moveRegion(regionId(1), {-30.5, 12});
  EXPECT_EQ(rig.log.take(), QStringLiteral("history dirty mindMap"));
  expectRect(region(1).rect, 469.5, 32.0, 100.0, 90.0);
  expectRect(region(0).rect, 10.0, 20.0, 300.0, 200.0);
  EXPECT_EQ(rig.map().nodes[0].position, QPointF());
  rig.expectChange(1, true);
}

TEST_F(RegionEdits, ResizeKeepsTheOriginAndStopsAt80By60) {
  rig.editor.resizeRegion(regionId(0), {50, -40});
  expectRect(region(0).rect, 10.0, 20.0, 350.0, 160.0);
  rig.expectChange(1, false);
  rig.editor.resizeRegion(regionId(0), {-270.5, -100.5});
  expectRect(region(0).rect, 10.0, 20.0, 80.0, 60.0);
  rig.editor.resizeRegion(regionId(0), {-1e9, 0.5});
  expectRect(region(0).rect, 10.0, 20.0, 80.0, 60.5);
}

TEST_F(RegionEdits, LabelIsStoredAsItIsAndLeavesTheTimeStamp) {
  rig.editor.setRegionLabel(regionId(0), QStringLiteral("  Neu \n"));
  EXPECT_EQ(region(0).label, QStringLiteral("  Neu \n"));
  EXPECT_EQ(region(1).label, QStringLiteral("Second"));
  rig.expectChange(1, false);
  rig.settle();
  // Setting the same text again is an edit as well.
  rig.editor.setRegionLabel(regionId(0), QStringLiteral("  Neu \n"));
  EXPECT_EQ(rig.editor.undoCount(), rig.undoBefore + 1);
}

TEST_F(RegionEdits, ColourIsStoredAndSetsTheTimeStamp) {
  rig.editor.setRegionColor(regionId(1), QStringLiteral("#AB47BC"));
  EXPECT_EQ(region(1).color, QStringLiteral("#AB47BC"));
  EXPECT_EQ(region(0).color, QStringLiteral("#7C4DFF"));
  rig.expectChange(1, true);
}

TEST_F(RegionEdits, DoNothingWithoutTheRegion) {
  rig.editor.moveRegion(regionId(7), {5, 5});
  rig.editor.resizeRegion(regionId(7), {5, 5});
  rig.editor.setRegionLabel(regionId(7), QStringLiteral("x"));
  rig.editor.setRegionColor(regionId(7), QStringLiteral("#AB47BC"));
  rig.expectNothing();
}

TEST_F(RegionEdits, OfTwoWithTheSameIdTheFirstIsMeant) {
  MindMap twice = map();
  twice.regions.append(Region{regionId(0), QStringLiteral("Twin"), QStringLiteral("#42A5F5"), {0, 0, 90, 90}});
  CommandRig twins(twice);
  twins.editor.setRegionLabel(regionId(0), QStringLiteral("One"));
  EXPECT_EQ(twins.map().regions[0].label, QStringLiteral("One"));
  EXPECT_EQ(twins.map().regions[2].label, QStringLiteral("Twin"));
}
