#include "editor/edits/EditsRig.h"
#include "editor/edits/RegionEdits.h"

using namespace quilmora;
using namespace quilmora::edits;
using namespace quilmora::test;

namespace {

EditsRig twoTopics() {
  MindMap map = mapOf({});
  map.nodes = {topic(0, 100, 200), topic(1, 400, 300)};
  return EditsRig(map);
}

}  // namespace

TEST(RegionEdits, ANewRegionLiesAroundTheTopicsWithRoomForItsLabel) {
  EXPECT_EQ(newRegionRect(twoTopics().index, ids({0, 1, 9}), QPointF(7, 7)), QRectF(20, 100, 460, 280));
}

TEST(RegionEdits, WithoutTopicsItLiesAroundThePointOrAtAFixedPlace) {
  EXPECT_EQ(newRegionRect(twoTopics().index, {}, QPointF(500, 500)), QRectF(350, 400, 300, 200));
  EXPECT_EQ(newRegionRect(twoTopics().index, ids({9}), std::nullopt), QRectF(250, 200, 300, 200));
}

TEST(RegionEdits, ColoursTakeTurns) {
  EXPECT_EQ(newRegion(0, {}).color, QStringLiteral("#7C4DFF"));
  EXPECT_EQ(newRegion(6, {}).color, QStringLiteral("#9CCC65"));
  EXPECT_EQ(newRegion(7, {}).color, QStringLiteral("#7C4DFF"));
}

TEST(RegionEdits, NoSideFallsBelowItsLeast) {
  EXPECT_EQ(regionSize({10, 200}), QSizeF(80, 200));
  EXPECT_EQ(regionSize({200, -5}), QSizeF(200, 60));
}
