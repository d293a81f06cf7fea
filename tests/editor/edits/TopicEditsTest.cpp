#include "editor/edits/ConnectionEdits.h"
#include "editor/edits/EditsRig.h"
#include "editor/edits/Finding.h"
#include "editor/edits/TopicEdits.h"
#include "model/FindById.h"
#include "support/MapGenerators.h"

using namespace quilmora;
using namespace quilmora::edits;
using namespace quilmora::test;

TEST(TopicEdits, ANewTopicHasAnIdOfItsOwn) {
  const Node first = newTopic({1.0, 2.0}, NodeStyle::defaultStyle());
  const Node second = newTopic({1.0, 2.0}, NodeStyle::defaultStyle());
  EXPECT_EQ(first.title, QStringLiteral("New Node"));
  EXPECT_EQ(first.position, QPointF(1.0, 2.0));
  EXPECT_FALSE(first.id.isNull());
  EXPECT_NE(first.id, second.id);
}

TEST(TopicEdits, ATopicWithAParentComesWithItsEdge) {
  MindMap map = mapOf({0});
  EdgeStyle style = EdgeStyle::defaultStyle();
  style.color = QStringLiteral("#123456");
  addTopic(map, topic(1), topicId(0), style);
  addTopic(map, topic(2), std::nullopt, style);
  ASSERT_EQ(map.nodes.size(), 3U);
  ASSERT_EQ(map.edges.size(), 1U);
  EXPECT_EQ(map.edges[0].from, topicId(0));
  EXPECT_EQ(map.edges[0].to, topicId(1));
  EXPECT_EQ(map.edges[0].style, style);
}

TEST(TopicEdits, AFreeSpotIsTheWantedOneThenBelowThenAboveThenOutward) {
  PositionGrid taken{PagedArray<QPointF>()};
  for (const QPointF spot : {QPointF(0, 0), QPointF(0, 100), QPointF(0, -100), QPointF(-100, 0), QPointF(0, 200)}) {
    EXPECT_EQ(freeSpot(taken, {0, 0}, -1.0, 100.0), spot);
    taken.insert(spot);
  }
}

TEST(TopicEdits, ASpotNinetyAwayIsFree) {
  EXPECT_EQ(freeSpot(PositionGrid(PagedArray<QPointF>{{90.0, 0.0}}), {0, 0}, 1.0, 60.0), QPointF(0, 0));
  EXPECT_NE(freeSpot(PositionGrid(PagedArray<QPointF>{{89.9, 0.0}}), {0, 0}, 1.0, 60.0), QPointF(0, 0));
}

TEST(TopicEdits, AChildGrowsAwayFromItsGrandparent) {
  MindMap map = mapOf({0, 1, 2}, {{0, 1}, {0, 2}});
  map.nodes.update(1, [](Node& node) { node.position = {300, 0}; });
  map.nodes.update(2, [](Node& node) { node.position = {-300, 0}; });
  const EditsRig rig(map);
  EXPECT_EQ(childSpot(rig.index, rig.tree, rig.grid, rig.ordinal(1)), QPointF(480, 0));
  EXPECT_EQ(childSpot(rig.index, rig.tree, rig.grid, rig.ordinal(2)), QPointF(-480, 0));
  EXPECT_EQ(childSpot(rig.index, rig.tree, rig.grid, rig.ordinal(0)), QPointF(180, 60));
}

TEST(TopicEdits, MovingLeavesTheBlocksOfOthersShared) {
  MindMap map = mapOf({0, 1});
  map.nodes = {};
  for (int i = 0; i < 1000; ++i) map.nodes.append(topic(i));
  const MindMap before = map;
  const MapIndex index(map.nodes, map.edges);
  moveTopics(map, ordinalsOf(index, ids({3})), {5, 6});
  EXPECT_EQ(map.nodes[3].position, QPointF(5, 6));
  EXPECT_EQ(map.nodes[4].position, QPointF(0, 0));
  EXPECT_EQ(&map.nodes.block(5), &before.nodes.block(5));
}

TEST(TopicEdits, OfTwoTopicsWithOneIdTheLastMoves) {
  MindMap map = mapOf({0, 0});
  moveTopics(map, ordinalsOf(MapIndex(map.nodes, map.edges), ids({0})), {5, 0});
  EXPECT_EQ(map.nodes[0].position, QPointF(0, 0));
  EXPECT_EQ(map.nodes[1].position, QPointF(5, 0));
}

TEST(TopicEdits, ANewParentReplacesEveryEdgeThatLedToTheTopic) {
  MindMap map = mapOf({0, 1, 2, 3}, {{0, 2}, {1, 2}, {2, 3}});
  reparent(map, MapIndex(map.nodes, map.edges), topicId(2), topicId(3), EdgeStyle::defaultStyle());
  const std::vector<std::pair<QUuid, QUuid>> expected{{topicId(2), topicId(3)}, {topicId(3), topicId(2)}};
  EXPECT_EQ(endsOf(map), expected);
}

TEST(TopicEdits, RemovedTopicsTakeTheirEdgesAndRelationshipsAlong) {
  MindMap map = mapOf({0, 1, 2, 3}, {{0, 1}, {1, 2}, {0, 3}});
  map.relationships = {newRelationship(topicId(1), topicId(3)), newRelationship(topicId(0), topicId(3))};
  removeRecords(map, MapIndex(map.nodes, map.edges), ids({1}), {}, std::nullopt);
  EXPECT_EQ(map.nodes.size(), 3U);
  EXPECT_EQ(endsOf(map), (std::vector<std::pair<QUuid, QUuid>>{{topicId(0), topicId(3)}}));
  EXPECT_EQ(map.relationships.size(), 1U);
}

TEST(TopicEdits, OnlyTheNamedEdgeAndRegionGoWhereNoTopicIsNamed) {
  MindMap map = mapOf({0, 1, 2}, {{0, 1}, {1, 2}});
  map.regions = {Region{topicId(70), {}, {}, {}}, Region{topicId(71), {}, {}, {}}};
  removeRecords(map, MapIndex(map.nodes, map.edges), {}, IdSet{edgeId(0)}, topicId(71));
  EXPECT_EQ(map.nodes.size(), 3U);
  EXPECT_EQ(endsOf(map), (std::vector<std::pair<QUuid, QUuid>>{{topicId(1), topicId(2)}}));
  ASSERT_EQ(map.regions.size(), 1U);
  EXPECT_EQ(map.regions[0].id, topicId(70));
}

TEST(TopicEdits, RemovingEqualsRemovingOneTopicAfterTheOther) {
  EXPECT_TRUE(rc::check("what is removed at once is what is removed one by one", [](const Drawing& drawing) {
    MindMap map = drawing.map();
    for (const auto& [from, to] :
         *rc::gen::container<std::vector<Ends>>(rc::gen::pair(rc::gen::inRange(0, 12), rc::gen::inRange(0, 12))))
      map.relationships.append(newRelationship(topicId(from), topicId(to)));
    const auto gone = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 14));
    const auto goneEdges = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 14));
    MindMap expected = map;
    IdSet nodes;
    IdSet edges;
    for (const int number : gone) {
      nodes.insert(topicId(number));
      expected.removeNode(topicId(number), {});
    }
    for (const int number : goneEdges) {
      edges.insert(edgeId(number));
      eraseByID(expected.edges, edgeId(number));
    }
    removeRecords(map, MapIndex(map.nodes, map.edges), nodes, edges, std::nullopt);
    RC_ASSERT(map == expected);
  }));
}
