#include "editor/CommandRig.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

using enum MindMapViewModel::Direction;

// Topic 0 at the origin, selected, and the others where the test puts them.
struct Compass : CommandRig {
  explicit Compass(const std::vector<QPointF>& others, const std::vector<Ends>& ends = {})
      : CommandRig(around(others, ends)) {
    select({0});
  }
  static MindMap around(const std::vector<QPointF>& others, const std::vector<Ends>& ends) {
    MindMap map = mapOf({}, ends);
    map.nodes.append(topic(0, 0.0, 0.0));
    for (std::size_t i = 0; i < others.size(); ++i)
      map.nodes.append(topic(static_cast<int>(i) + 1, others[i].x(), others[i].y()));
    return map;
  }
  // The number of the topic reached, or -1.
  int move(MindMapViewModel::Direction direction) {
    const bool moved = editor.moveSelection(direction);
    if (!moved) return -1;
    EXPECT_EQ(selected().size(), 1u);
    int number = 0;
    while (!selected().contains(topicId(number))) ++number;
    return number;
  }
};

}  // namespace

TEST(ArrowKeys, EachDirectionFindsItsTopic) {
  const std::vector<QPointF> around = {{-50.0, 0.0}, {50.0, 0.0}, {0.0, -50.0}, {0.0, 50.0}};
  EXPECT_EQ(Compass(around).move(left), 1);
  EXPECT_EQ(Compass(around).move(right), 2);
  EXPECT_EQ(Compass(around).move(up), 3);
  EXPECT_EQ(Compass(around).move(down), 4);
}

TEST(ArrowKeys, TenUnitsAwayIsTooNear) {
  const std::vector<QPointF> near = {{-10.0, 0.0}, {10.0, 0.0}, {0.0, -10.0}, {0.0, 10.0}};
  const std::vector<QPointF> beyond = {{-10.5, 0.0}, {10.5, 0.0}, {0.0, -10.5}, {0.0, 10.5}};
  int expected = 1;
  for (const auto direction : {left, right, up, down}) {
    EXPECT_EQ(Compass(near).move(direction), -1);
    EXPECT_EQ(Compass(beyond).move(direction), expected++);
  }
}

TEST(ArrowKeys, SidewaysOffsetCountsDouble) {
  // Scores: 50 + 2 × 30 = 110 against 100, and then against 115.
  EXPECT_EQ(Compass({{40.0, 30.0}, {100.0, 0.0}}).move(right), 2);
  EXPECT_EQ(Compass({{40.0, 30.0}, {115.0, 0.0}}).move(right), 1);
  EXPECT_EQ(Compass({{30.0, 40.0}, {0.0, 100.0}}).move(down), 2);
  EXPECT_EQ(Compass({{-30.0, -40.0}, {0.0, -115.0}}).move(up), 1);
}

TEST(ArrowKeys, TheFirstTopicInMapOrderKeepsATie) {
  EXPECT_EQ(Compass({{100.0, 50.0}, {100.0, -50.0}}).move(right), 1);
  // 50 + 2 × 40 = 130 on both sides, by different ways.
  EXPECT_EQ(Compass({{130.0, 0.0}, {30.0, 40.0}}).move(right), 1);
  EXPECT_EQ(Compass({{30.0, 40.0}, {130.0, 0.0}}).move(right), 1);
}

TEST(ArrowKeys, HiddenTopicsAreNoCandidates) {
  Compass rig({{50.0, 0.0}, {80.0, 0.0}, {300.0, 0.0}}, {{1, 2}});
  rig.editor.setCollapsedNodeIDs(idSet({1}));
  rig.editor.selectNode(topicId(1), false);
  EXPECT_EQ(rig.move(right), 3);
}

TEST(ArrowKeys, SelectAndCentreTheWinner) {
  Compass rig({{100.0, 20.0}});
  rig.editor.setSelectedEdgeIDs({edgeId(4)});
  rig.editor.setSelectedRegionID(edgeId(5));
  rig.editor.setCanvasZoom(2.0);
  rig.log.take();
  EXPECT_TRUE(rig.editor.moveSelection(right));
  EXPECT_EQ(rig.log.take(), QStringLiteral("nodes edges offset"));
  EXPECT_EQ(rig.selected(), idSet({1}));
  EXPECT_TRUE(rig.editor.selectedEdgeIDs().empty());
  EXPECT_EQ(rig.editor.selectedRegionID(), edgeId(5));
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(200.0, 260.0));
  rig.expectMapUntouched();
}

TEST(ArrowKeys, UseTheLastKnownCanvasSize) {
  Compass rig({{100.0, 20.0}});
  rig.editor.setLastKnownCanvasSize(QSizeF(400.0, 200.0));
  EXPECT_TRUE(rig.editor.moveSelection(right));
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(100.0, 80.0));
}

TEST(ArrowKeys, WithoutASelectionOrWithAStaleOneDoNothing) {
  Compass rig({{100.0, 0.0}});
  rig.select({});
  for (const auto direction : {left, right, up, down}) EXPECT_FALSE(rig.editor.moveSelection(direction));
  rig.select({77});
  for (const auto direction : {left, right, up, down}) EXPECT_FALSE(rig.editor.moveSelection(direction));
  EXPECT_EQ(rig.selected(), idSet({77}));
  rig.expectNothing();
}

TEST(ArrowKeys, StartFromTheFirstOfSeveralSelected) {
  Compass rig({{100.0, 0.0}, {200.0, 0.0}});
  rig.select({1, 0});
  EXPECT_EQ(rig.move(right), 2);
}

TEST(ArrowKeys, CrossACanvasOfAnyExtent) {
  Compass rig({{1e9, 0.0}, {1e9, 1e9}, {-1e9, -1e9}});
  EXPECT_EQ(rig.move(right), 1);
  EXPECT_EQ(rig.move(down), 2);
  EXPECT_EQ(rig.move(left), 0);
}
