#include <rapidcheck.h>

#include "layout/LayoutMaps.h"
#include "layout/OrgChartLayout.h"
#include "support/MapGenerators.h"

using namespace quilmora;
using namespace quilmora::test;

TEST(OrgChartLayout, GrowsDownwardsWithItsOwnConstants) {
  // Two leaves are 120 + 50 apart, with the root above their middle.
  const PositionTable placed = SmallMap(3, {{0, 1}, {0, 2}}).place(OrgChartLayout());
  expectAt(placed, 0, 500.0, 225.0);
  expectAt(placed, 1, 415.0, 375.0);
  expectAt(placed, 2, 585.0, 375.0);
}

TEST(OrgChartLayout, PutsASingleTopicOnTheCanvasCentre) {
  expectAt(SmallMap(1).place(OrgChartLayout()), 0, 500.0, 300.0);
}

TEST(OrgChartLayout, SeparatesTwoTreesByTwiceTheSiblingSpacing) {
  const PositionTable placed = SmallMap(2).place(OrgChartLayout());
  expectAt(placed, 0, 320.0, 300.0);
  expectAt(placed, 1, 680.0, 300.0);
}

TEST(OrgChartLayout, PutsUnreachedTopicsIntoTheRootsRank) {
  // Cross coordinates 0 for the tree, and 120 and 240 for the cycle after it, with no further gap.
  const PositionTable placed = SmallMap(4, {{0, 1}, {2, 3}, {3, 2}}).place(OrgChartLayout());
  expectAt(placed, 0, 380.0, 225.0);
  expectAt(placed, 1, 380.0, 375.0);
  expectAt(placed, 2, 500.0, 225.0);
  expectAt(placed, 3, 620.0, 225.0);
}

TEST(OrgChartLayout, OfNoTopicsIsEmptyWhateverTheEdges) {
  EXPECT_TRUE(SmallMap(0, {{0, 1}}).place(OrgChartLayout()).empty());
}

TEST(OrgChartLayout, IsTheVerticalTreeOnEveryMap) {
  EXPECT_TRUE(rc::check("is the vertical tree", [](const Drawing& drawing) {
    const SmallMap map(drawing.numbers, drawing.ends);
    const PositionTable chart = map.place(OrgChartLayout(70.0, 30.0, 11.0));
    const PositionTable tree = map.place(TreeLayout(TreeLayout::Orientation::vertical, 70.0, 30.0, 11.0));
    RC_ASSERT(chart.ids() == tree.ids());
    RC_ASSERT(chart.points() == tree.points());
  }));
}
