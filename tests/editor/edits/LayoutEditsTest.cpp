#include "editor/edits/EditsRig.h"
#include "editor/edits/LayoutEdits.h"

using namespace quilmora;
using namespace quilmora::edits;
using namespace quilmora::test;

TEST(LayoutEdits, OnlyPlacedTopicsMove) {
  MindMap map = mapOf({});
  map.nodes = {topic(0, 1, 1), topic(1, 2, 2)};
  PositionTable placed;
  placed.set(topicId(1), {7, 8});
  placed.set(topicId(9), {5, 5});
  const std::vector<QPointF> expected{{1, 1}, {7, 8}};
  EXPECT_EQ(positionsAfter(placed, EditsRig(map).index), expected);
}
