#include <gtest/gtest.h>

#include "support/EditorRig.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

Relationship link(int number, int from, int to) {
  return Relationship{edgeId(500 + number), topicId(from), topicId(to), QString(), QStringLiteral("#112233"), {}};
}

Region regionOf(int number) {
  return Region{edgeId(900 + number), QStringLiteral("Region"), QStringLiteral("#445566"), QRectF(0, 0, 10, 10)};
}

std::vector<Ends> endsOf(const MindMap& map) {
  std::vector<Ends> ends;
  const auto numberOf = [](const QUuid& id) {
    return id.data4[4] << 24 | id.data4[5] << 16 | id.data4[6] << 8 | id.data4[7];
  };
  for (const Edge& edge : map.edges) ends.push_back({numberOf(edge.from), numberOf(edge.to)});
  return ends;
}

struct Untouched {
  explicit Untouched(EditorRig& watched) : rig(watched), before(watched.map()), count(watched.editor.undoCount()) {}
  ~Untouched() {
    EXPECT_TRUE(isVeryMap(rig.map(), before));
    EXPECT_EQ(rig.editor.undoCount(), count);
    EXPECT_EQ(changes.count(), 0);
  }
  EditorRig& rig;
  const MindMap before;
  const int count;
  QSignalSpy changes{&rig.editor, &MindMapViewModel::mindMapChanged};
};

}  // namespace

TEST(MoveSelectedNodes, ShortDragIsNoMoveAndNoSnapshot) {
  EditorRig rig(mapOf({0}));
  rig.editor.selectAll();
  const Untouched untouched(rig);
  for (const QPointF drag :
       {QPointF(2.9, 0.0), QPointF(0.0, -2.9), QPointF(3.0, 0.0), QPointF(0.0, -3.0), QPointF(2, 2)})
    rig.editor.moveSelectedNodes(drag);
  EXPECT_FALSE(rig.editor.isDirty());
}

TEST(MoveSelectedNodes, DragOf3Point1Moves) {
  EditorRig rig(mapOf({0}));
  rig.editor.selectAll();
  rig.editor.moveSelectedNodes(QPointF(3.1, 0.0));
  EXPECT_EQ(rig.position(0), QPointF(3.1, 0.0));
  EXPECT_EQ(rig.editor.undoCount(), 1);
  EXPECT_TRUE(rig.isStamped());
}

TEST(MoveSelectedNodes, EachTopicMakesASnapshotOfItsOwn) {
  EditorRig rig(mapOf({0, 1, 2, 3}));
  rig.editor.setSelectedNodeIDs({topicId(2), topicId(0), topicId(3)});
  rig.editor.moveSelectedNodes(QPointF(10.0, 20.0));
  const QPointF moved(10.0, 20.0);
  const QPointF still(0.0, 0.0);
  EXPECT_EQ(rig.editor.undoCount(), 3);
  EXPECT_EQ(rig.position(0), moved);
  EXPECT_EQ(rig.position(1), still);
  EXPECT_EQ(rig.position(2), moved);
  EXPECT_EQ(rig.position(3), moved);
  rig.editor.undo();
  EXPECT_EQ(rig.position(3), still);
  EXPECT_EQ(rig.position(0), moved);
  rig.editor.undo();
  EXPECT_EQ(rig.position(0), still);
  EXPECT_EQ(rig.position(2), moved);
  rig.editor.undo();
  EXPECT_EQ(rig.position(2), still);
}

TEST(MoveSelectedNodes, ChildrenFollowOnlyWhenSelected) {
  EditorRig rig(mapOf({0, 1}, {{0, 1}}));
  rig.editor.setSelectedNodeIDs({topicId(0)});
  rig.editor.moveSelectedNodes(QPointF(0.0, 50.0));
  EXPECT_EQ(rig.position(0), QPointF(0.0, 50.0));
  EXPECT_EQ(rig.position(1), QPointF(0.0, 0.0));
}

TEST(MoveSelectedNodes, NothingSelectedMovesNothing) {
  EditorRig rig(mapOf({0}));
  const Untouched untouched(rig);
  rig.editor.moveSelectedNodes(QPointF(100.0, 0.0));
}

TEST(MoveSelectedNodes, SelectionThatOutlivedItsTopicMovesTheOthers) {
  EditorRig rig(mapOf({0, 1}));
  rig.editor.setSelectedNodeIDs({topicId(9), topicId(1)});
  rig.editor.moveSelectedNodes(QPointF(4.0, 0.0));
  EXPECT_EQ(rig.position(1), QPointF(4.0, 0.0));
  EXPECT_EQ(rig.editor.undoCount(), 1);
}

TEST(MoveSelectedNodes, HistoryKeepsTheLastFiftyOfAManyTopicDrag) {
  std::vector<int> numbers;
  for (int i = 0; i < 60; ++i) numbers.push_back(i);
  EditorRig rig(mapOf(numbers));
  rig.editor.selectAll();
  rig.editor.moveSelectedNodes(QPointF(0.0, 8.0));
  for (std::size_t i = 0; i < 60; ++i) EXPECT_EQ(rig.position(i), QPointF(0.0, 8.0));
  EXPECT_EQ(rig.editor.undoCount(), 50);
  for (int i = 0; i < 50; ++i) rig.editor.undo();
  for (std::size_t i = 0; i < 60; ++i) EXPECT_EQ(rig.position(i).y(), i < 10 ? 8.0 : 0.0) << i;
  EXPECT_TRUE(rig.isStamped());
}

TEST(ReparentNode, TopicItselfIsRefused) {
  EditorRig rig(mapOf({0, 1}, {{0, 1}}));
  const Untouched untouched(rig);
  rig.editor.reparentNode(topicId(1), topicId(1));
}

TEST(ReparentNode, OwnParentIsRefused) {
  EditorRig rig(mapOf({0, 1}, {{0, 1}}));
  const Untouched untouched(rig);
  rig.editor.reparentNode(topicId(1), topicId(0));
}

TEST(ReparentNode, OneOfTwoParentsIsRefused) {
  EditorRig rig(mapOf({0, 1, 2}, {{0, 2}, {1, 2}}));
  const Untouched untouched(rig);
  rig.editor.reparentNode(topicId(2), topicId(0));
  rig.editor.reparentNode(topicId(2), topicId(1));
}

TEST(ReparentNode, DescendantIsRefused) {
  EditorRig rig(mapOf({0, 1, 2}, {{0, 1}, {1, 2}}));
  const Untouched untouched(rig);
  rig.editor.reparentNode(topicId(0), topicId(1));
  rig.editor.reparentNode(topicId(0), topicId(2));
}

TEST(ReparentNode, MovesTheEdgeToTheEndWithAFreshStyle) {
  MindMap map = mapOf({0, 1, 2, 3}, {{0, 1}, {0, 2}, {0, 3}});
  map.edges.update(0, [](Edge& edge) {
    edge.label = QStringLiteral("label");
    edge.style.dashed = true;
    edge.controlPointOffset = QPointF(1.0, 1.0);
  });
  map.nodes.update(1, [](Node& node) { node.position = QPointF(77.0, 88.0); });
  EditorRig rig(map);
  rig.editor.setSelectedNodeIDs({topicId(0)});
  rig.editor.reparentNode(topicId(1), topicId(2));
  EXPECT_EQ(endsOf(rig.map()), (std::vector<Ends>{{0, 2}, {0, 3}, {2, 1}}));
  EXPECT_EQ(rig.edge(2).style, rig.editor.newEdgeStyle());
  EXPECT_TRUE(rig.edge(2).label.isEmpty());
  EXPECT_FALSE(rig.edge(2).controlPointOffset.has_value());
  EXPECT_NE(rig.edge(2).id, edgeId(0));
  EXPECT_EQ(rig.position(1), QPointF(77.0, 88.0));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet{topicId(0)});
  EXPECT_EQ(rig.editor.undoCount(), 1);
  EXPECT_TRUE(rig.isStamped());
}

TEST(ReparentNode, RootGetsAParent) {
  EditorRig rig(mapOf({0, 1}));
  rig.editor.reparentNode(topicId(1), topicId(0));
  EXPECT_EQ(endsOf(rig.map()), (std::vector<Ends>{{0, 1}}));
}

TEST(ReparentNode, TwoIncomingEdgesBecomeOne) {
  EditorRig rig(mapOf({0, 1, 2, 3}, {{0, 3}, {1, 3}}));
  rig.editor.reparentNode(topicId(3), topicId(2));
  EXPECT_EQ(endsOf(rig.map()), (std::vector<Ends>{{2, 3}}));
}

TEST(DeleteNode, RemovesTheOneTopicAndWhatTouchesIt) {
  MindMap map = mapOf({0, 1, 2, 3}, {{0, 1}, {1, 2}, {2, 3}});
  map.relationships = {link(0, 1, 3), link(1, 0, 3), link(2, 3, 1)};
  map.regions = {regionOf(0)};
  EditorRig rig(map);
  rig.editor.setSelectedNodeIDs({topicId(0), topicId(1)});
  rig.editor.deleteNode(topicId(1));
  EXPECT_EQ(rig.map().nodes, topics({0, 2, 3}));
  EXPECT_EQ(endsOf(rig.map()), (std::vector<Ends>{{2, 3}}));
  ASSERT_EQ(rig.map().relationships.size(), 1u);
  EXPECT_EQ(rig.map().relationships[0].id, edgeId(501));
  EXPECT_EQ(rig.map().regions.size(), 1u);
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet{topicId(0)});
  EXPECT_EQ(rig.editor.undoCount(), 1);
  EXPECT_TRUE(rig.isStamped());
}

TEST(DeleteNode, MiddleOfAChainLeavesTwoTrees) {
  EditorRig rig(mapOf({0, 1, 2}, {{0, 1}, {1, 2}}));
  rig.editor.deleteNode(topicId(1));
  EXPECT_EQ(rig.editor.treeInfo().roots(), (std::vector<QUuid>{topicId(0), topicId(2)}));
}

TEST(DeleteNode, RemovesEveryTopicWithTheId) {
  EditorRig rig(mapOf({0, 1, 0}));
  rig.editor.deleteNode(topicId(0));
  EXPECT_EQ(rig.map().nodes, topics({1}));
}

TEST(DeleteSelection, NothingSelectedHasNoEffect) {
  EditorRig rig(mapOf({0}));
  const Untouched untouched(rig);
  rig.editor.deleteSelection();
  EXPECT_FALSE(rig.editor.isDirty());
}

TEST(DeleteSelection, RemovesTopicsEdgesAndTheRegionInOneStep) {
  MindMap map = mapOf({0, 1, 2, 3, 4}, {{0, 1}, {1, 2}, {2, 3}, {3, 4}});
  map.relationships = {link(0, 0, 4), link(1, 1, 4)};
  map.regions = {regionOf(0), regionOf(1)};
  EditorRig rig(map);
  const MindMap before = rig.map();
  rig.editor.setSelectedNodeIDs({topicId(1)});
  rig.editor.setSelectedEdgeIDs({edgeId(3)});
  rig.editor.setSelectedRegionID(edgeId(901));
  rig.editor.deleteSelection();
  EXPECT_EQ(rig.map().nodes, topics({0, 2, 3, 4}));
  EXPECT_EQ(endsOf(rig.map()), (std::vector<Ends>{{2, 3}}));
  ASSERT_EQ(rig.map().relationships.size(), 1u);
  EXPECT_EQ(rig.map().relationships[0].id, edgeId(500));
  ASSERT_EQ(rig.map().regions.size(), 1u);
  EXPECT_EQ(rig.map().regions[0].id, edgeId(900));
  EXPECT_TRUE(rig.editor.selectedNodeIDs().empty());
  EXPECT_TRUE(rig.editor.selectedEdgeIDs().empty());
  EXPECT_FALSE(rig.editor.selectedRegionID().has_value());
  EXPECT_TRUE(rig.isStamped());
  EXPECT_EQ(rig.editor.undoCount(), 1);
  rig.editor.undo();
  EXPECT_TRUE(isVeryMap(rig.map(), before));
}

TEST(DeleteSelection, EdgesAloneSetTheStamp) {
  EditorRig rig(mapOf({0, 1}, {{0, 1}}));
  rig.editor.setSelectedEdgeIDs({edgeId(0)});
  rig.editor.deleteSelection();
  EXPECT_TRUE(rig.map().edges.empty());
  EXPECT_EQ(rig.map().nodes.size(), 2u);
  EXPECT_TRUE(rig.isStamped());
}

TEST(DeleteSelection, RegionAloneLeavesTheStamp) {
  MindMap map = mapOf({0});
  map.regions = {regionOf(0)};
  EditorRig rig(map);
  const TimePoint stamp = rig.map().updatedAt;
  rig.editor.setSelectedRegionID(edgeId(900));
  rig.editor.deleteSelection();
  EXPECT_TRUE(rig.map().regions.empty());
  EXPECT_EQ(rig.map().updatedAt, stamp);
  EXPECT_EQ(rig.editor.undoCount(), 1);
}

TEST(DeleteSelection, SelectionThatOutlivedItsTopicStillTakesASnapshotAndTheStamp) {
  EditorRig rig(mapOf({0}));
  rig.editor.setSelectedNodeIDs({topicId(9)});
  rig.editor.deleteSelection();
  EXPECT_EQ(rig.map().nodes.size(), 1u);
  EXPECT_EQ(rig.editor.undoCount(), 1);
  EXPECT_TRUE(rig.isStamped());
  EXPECT_TRUE(rig.editor.selectedNodeIDs().empty());
}

TEST(DeleteSelection, ChildrenOfDeletedTopicsStayAsRoots) {
  EditorRig rig(mapOf({0, 1, 2}, {{0, 1}, {1, 2}}));
  rig.editor.setSelectedNodeIDs({topicId(0)});
  rig.editor.deleteSelection();
  EXPECT_EQ(rig.editor.treeInfo().roots(), (std::vector<QUuid>{topicId(1)}));
  EXPECT_EQ(rig.editor.treeInfo().parent(topicId(2)), topicId(1));
}
