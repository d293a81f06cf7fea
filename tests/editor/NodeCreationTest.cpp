#include <gtest/gtest.h>

#include "support/EditorRig.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

MindMap oneTopicAt(double x, double y) {
  MindMap map = mapOf({});
  map.nodes.append(topic(0, x, y));
  return map;
}

void expectFresh(const Node& node) {
  EXPECT_EQ(node.title, QStringLiteral("New Node"));
  EXPECT_TRUE(node.notes.isEmpty());
  EXPECT_FALSE(node.icon || node.badge || node.emoji || node.url || node.imageData || node.aiGenerated);
  EXPECT_FALSE(node.id.isNull());
}

void expectUntouched(EditorRig& rig, const MindMap& before) {
  EXPECT_TRUE(isVeryMap(rig.map(), before));
  EXPECT_EQ(rig.editor.undoCount(), 0);
  EXPECT_FALSE(rig.editor.isDirty());
  EXPECT_EQ(rig.editor.treeGeneration(), 0u);
}

// The candidates of the search around the origin with a step of 200, so wide that no topic blocks two of them.
std::vector<QPointF> candidates(double direction) {
  std::vector<QPointF> points = {{0.0, 0.0}, {0.0, 200.0}};
  for (int k = 1; k <= 20; ++k) {
    points.push_back({0.0, -200.0 * k});
    points.push_back({200.0 * k * direction, 0.0});
    if (k < 20) points.push_back({0.0, 200.0 * (k + 1)});
  }
  return points;
}

}  // namespace

TEST(CreateFreeNode, AddsOneUnconnectedSelectedTopic) {
  EditorRig rig(mapOf({0}));
  rig.editor.selectNode(topicId(0), false);
  rig.editor.createFreeNode(12.5, -40.0);
  ASSERT_EQ(rig.map().nodes.size(), 2u);
  expectFresh(rig.node(1));
  EXPECT_EQ(rig.position(1), QPointF(12.5, -40.0));
  EXPECT_EQ(rig.node(1).style, rig.editor.styleForDepth(0));
  EXPECT_TRUE(rig.map().edges.empty());
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet{rig.node(1).id});
  EXPECT_EQ(rig.editor.undoCount(), 1);
  EXPECT_TRUE(rig.editor.isDirty());
  EXPECT_TRUE(rig.isStamped());
}

TEST(CreateFreeNode, LooksForNoFreeSpot) {
  EditorRig rig(oneTopicAt(5.0, 5.0));
  rig.editor.createFreeNode(5.0, 5.0);
  EXPECT_EQ(rig.position(1), QPointF(5.0, 5.0));
}

TEST(CreateFreeNode, SnapshotIsNeverThrottled) {
  EditorRig rig;
  rig.editor.captureSnapshot(true);
  rig.editor.createFreeNode(0.0, 0.0);
  rig.editor.createFreeNode(0.0, 0.0);
  EXPECT_EQ(rig.editor.undoCount(), 3);
}

TEST(CreateChild, SixChildrenOfALoneRoot) {
  EditorRig rig(oneTopicAt(0.0, 0.0));
  for (int i = 0; i < 6; ++i) rig.editor.createChild(topicId(0));
  ASSERT_EQ(rig.map().nodes.size(), 7u);
  EXPECT_EQ(rig.position(1), QPointF(180.0, 0.0));
  EXPECT_EQ(rig.position(2), QPointF(180.0, 90.0));
  EXPECT_EQ(rig.position(3), QPointF(180.0, 180.0));
  EXPECT_EQ(rig.position(4), QPointF(300.0, 90.0));
  EXPECT_EQ(rig.position(5), QPointF(180.0, 300.0));
  EXPECT_EQ(rig.position(6), QPointF(180.0, 390.0));
  EXPECT_EQ(rig.editor.undoCount(), 6);
}

TEST(CreateChild, MakesTopicAndEdgeAndSelectsTheChild) {
  EditorRig rig(mapOf({0}));
  rig.editor.setSelectedNodeIDs({topicId(0), topicId(5)});
  rig.editor.createChild(topicId(0));
  ASSERT_EQ(rig.map().nodes.size(), 2u);
  ASSERT_EQ(rig.map().edges.size(), 1u);
  expectFresh(rig.node(1));
  EXPECT_EQ(rig.edge(0).from, topicId(0));
  EXPECT_EQ(rig.edge(0).to, rig.node(1).id);
  EXPECT_TRUE(rig.edge(0).label.isEmpty());
  EXPECT_FALSE(rig.edge(0).controlPointOffset.has_value());
  EXPECT_EQ(rig.edge(0).style, rig.editor.newEdgeStyle());
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet{rig.node(1).id});
  EXPECT_TRUE(rig.isStamped());
  EXPECT_EQ(rig.editor.undoCount(), 1);
}

TEST(CreateChild, UnknownParentHasNoEffect) {
  const MindMap map = mapOf({0}, {{0, 99}});
  EditorRig rig(map);
  const MindMap before = rig.map();
  rig.editor.createChild(topicId(7));
  rig.editor.createChild(topicId(99));
  expectUntouched(rig, before);
}

TEST(CreateChild, GrowsLeftBelowATopicThatLiesLeftOfItsParent) {
  MindMap map = mapOf({}, {{0, 1}});
  map.nodes = {topic(0, 0.0, 0.0), topic(1, -200.0, 0.0)};
  EditorRig rig(map);
  rig.editor.createChild(topicId(1));
  EXPECT_EQ(rig.position(2), QPointF(-380.0, 0.0));
  rig.editor.createChild(rig.node(2).id);
  EXPECT_EQ(rig.position(3), QPointF(-560.0, 0.0));
}

TEST(CreateChild, GrowsRightWhereTheGrandparentIsNotToTheRight) {
  for (const double x : {0.0, 200.0}) {
    MindMap map = mapOf({}, {{0, 1}});
    map.nodes = {topic(0, 0.0, 500.0), topic(1, x, 0.0)};
    EditorRig rig(map);
    rig.editor.createChild(topicId(1));
    EXPECT_EQ(rig.position(2), QPointF(x + 180.0, 0.0));
  }
}

TEST(CreateChild, FirstEdgeToTheParentNamesTheGrandparent) {
  MindMap map = mapOf({}, {{0, 2}, {1, 2}});
  map.nodes = {topic(0, 1000.0, 0.0), topic(1, -1000.0, 0.0), topic(2, 0.0, 0.0)};
  EditorRig first(map);
  first.editor.createChild(topicId(2));
  EXPECT_EQ(first.position(3), QPointF(-180.0, 0.0));
  map.edges = edgesOf({{1, 2}, {0, 2}});
  EditorRig second(map);
  second.editor.createChild(topicId(2));
  EXPECT_EQ(second.position(3), QPointF(180.0, 0.0));
}

TEST(CreateChild, MissingGrandparentMeansRight) {
  MindMap map = mapOf({}, {{99, 0}, {1, 0}});
  map.nodes = {topic(0, 0.0, 0.0), topic(1, 1000.0, 0.0)};
  EditorRig rig(map);
  rig.editor.createChild(topicId(0));
  EXPECT_EQ(rig.position(2), QPointF(180.0, 0.0));
}

TEST(CreateChild, EveryEdgeFromTheParentCountsForTheWantedPoint) {
  // Two edges to one distant child and one to a missing topic: n is 3, so the wanted y is 90.
  MindMap map = mapOf({}, {{0, 1}, {0, 1}, {0, 99}});
  map.nodes = {topic(0, 0.0, 0.0), topic(1, 5000.0, 0.0)};
  EditorRig rig(map);
  rig.editor.createChild(topicId(0));
  EXPECT_EQ(rig.position(2), QPointF(180.0, 90.0));
}

TEST(CreateChild, TakesTheStyleOfItsDepth) {
  MindMap map = mapOf({0, 1, 2}, {{0, 1}, {1, 2}});
  map.canvas.themeId = QStringLiteral("ocean");
  EditorRig rig(map);
  rig.editor.createChild(topicId(0));
  rig.editor.createChild(topicId(2));
  EXPECT_EQ(rig.node(3).style.fill, QStringLiteral("#2980B9"));
  EXPECT_EQ(rig.node(4).style.fill, QStringLiteral("#AED6F1"));
  EXPECT_EQ(rig.node(4).style.iconSize, 16.0);
  EXPECT_EQ(rig.edge(2).style.color, QStringLiteral("#3B82A0"));
}

TEST(CreateChild, ParentOnACycleCountsAsDepth0) {
  MindMap map = mapOf({0, 1}, {{0, 1}, {1, 0}});
  map.canvas.themeId = QStringLiteral("ocean");
  EditorRig rig(map);
  rig.editor.createChild(topicId(1));
  EXPECT_EQ(rig.node(2).style.fill, QStringLiteral("#2980B9"));
}

TEST(CreateChildAt, PlacesAtThePointWithoutASearch) {
  EditorRig rig(oneTopicAt(0.0, 0.0));
  rig.editor.createChildAt(topicId(0), 1.0, 2.0);
  ASSERT_EQ(rig.map().nodes.size(), 2u);
  expectFresh(rig.node(1));
  EXPECT_EQ(rig.position(1), QPointF(1.0, 2.0));
  EXPECT_EQ(rig.edge(0).from, topicId(0));
  EXPECT_EQ(rig.edge(0).to, rig.node(1).id);
  EXPECT_EQ(rig.node(1).style, rig.editor.styleForDepth(1));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet{rig.node(1).id});
  EXPECT_EQ(rig.editor.undoCount(), 1);
  EXPECT_TRUE(rig.isStamped());
}

TEST(CreateChildAt, UnknownParentHasNoEffect) {
  EditorRig rig(mapOf({0}));
  const MindMap before = rig.map();
  rig.editor.createChildAt(topicId(9), 1.0, 2.0);
  expectUntouched(rig, before);
}

TEST(FreeSpot, TakesTheFirstFreeCandidateInOrder) {
  for (const double direction : {1.0, -1.0}) {
    const std::vector<QPointF> points = candidates(direction);
    ASSERT_EQ(points.size(), 61u);
    MindMap map = mapOf({});
    for (std::size_t taken = 0; taken < points.size(); ++taken) {
      EXPECT_EQ(EditorRig(map).editor.findFreeSpot(0.0, 0.0, direction, 200.0), points[taken]) << taken;
      map.nodes.append(topic(static_cast<int>(taken), points[taken].x(), points[taken].y()));
    }
    EXPECT_EQ(EditorRig(map).editor.findFreeSpot(0.0, 0.0, direction, 200.0), QPointF(0.0, 0.0));
  }
}

TEST(FreeSpot, SearchOfAChildGoesTheSameWay) {
  // A column of topics blocks everything above and below; the sixth step outwards is the first free place.
  MindMap map = mapOf({});
  int number = 1;
  map.nodes.append(topic(0, -180.0, 0.0));
  for (int y = -2000; y <= 2000; y += 50)
    for (int x = 0; x <= 250; x += 50) map.nodes.append(topic(number++, x, y));
  EditorRig rig(map);
  rig.editor.createChild(topicId(0));
  EXPECT_EQ(rig.map().nodes.back().position, QPointF(360.0, 0.0));
}

TEST(FreeSpot, CrowdedAreaTakesTheWantedPoint) {
  MindMap map = mapOf({});
  int number = 0;
  map.nodes.append(topic(number++, 0.0, 0.0));
  for (int x = -100; x <= 1700; x += 60)
    for (int y = -1400; y <= 1400; y += 60) map.nodes.append(topic(number++, x, y));
  EditorRig rig(map);
  rig.editor.createChild(topicId(0));
  EXPECT_EQ(rig.map().nodes.back().position, QPointF(180.0, 0.0));
}

TEST(FreeSpot, ADistanceOfExactly90IsFree) {
  MindMap map = mapOf({});
  map.nodes = {topic(0, 90.0, 0.0)};
  EXPECT_EQ(EditorRig(map).editor.findFreeSpot(0.0, 0.0, 1.0, 60.0), QPointF(0.0, 0.0));
  map.nodes = {topic(0, 54.0, 72.0)};
  EXPECT_EQ(EditorRig(map).editor.findFreeSpot(0.0, 0.0, 1.0, 60.0), QPointF(0.0, 0.0));
  map.nodes = {topic(0, 89.999, 0.0)};
  EXPECT_EQ(EditorRig(map).editor.findFreeSpot(0.0, 0.0, 1.0, 60.0), QPointF(0.0, 60.0));
}

TEST(FreeSpot, HiddenTopicsCountToo) {
  MindMap map = mapOf({}, {{0, 1}});
  map.nodes = {topic(0, 5000.0, 0.0), topic(1, 0.0, 0.0)};
  EditorRig rig(map);
  rig.editor.setCollapsedNodeIDs({topicId(0)});
  EXPECT_EQ(rig.editor.findFreeSpot(0.0, 0.0, 1.0, 200.0), QPointF(0.0, 200.0));
}
