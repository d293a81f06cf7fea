#include <gtest/gtest.h>

#include "model/TreeInfo.h"
#include "model/TreeReference.h"
#include "support/MapGenerators.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

TreeInfo treeOf(const std::vector<int>& numbers, const std::vector<Ends>& ends) {
  return TreeInfo(MapIndex(topics(numbers), edgesOf(ends)));
}

std::vector<QUuid> ids(const std::vector<int>& numbers) {
  std::vector<QUuid> result;
  for (const int number : numbers) result.push_back(topicId(number));
  return result;
}

std::vector<QUuid> childrenOf(const TreeInfo& tree, int number) {
  std::vector<QUuid> result;
  for (const QUuid& child : tree.children(topicId(number))) result.push_back(child);
  return result;
}

bool isRoot(const TreeInfo& tree, const QUuid& id) {
  return std::ranges::count(tree.roots(), id) > 0;
}

}  // namespace

TEST(TreeInfo, EmptyMapGivesAnEmptyTree) {
  for (const TreeInfo& tree : {TreeInfo(), treeOf({}, {})}) {
    EXPECT_EQ(tree.maxDepth(), 0);
    EXPECT_TRUE(tree.roots().empty());
    EXPECT_EQ(tree.numberCount(), 0u);
    EXPECT_FALSE(tree.depth(topicId(0)).has_value());
    EXPECT_FALSE(tree.parent(topicId(0)).has_value());
    EXPECT_TRUE(childrenOf(tree, 0).empty());
    EXPECT_FALSE(isRoot(tree, topicId(0)));
  }
}

TEST(TreeInfo, UnknownIdHasNothing) {
  const TreeInfo tree = treeOf({0, 1}, {{0, 1}});
  EXPECT_FALSE(tree.depth(topicId(9)).has_value());
  EXPECT_FALSE(tree.parent(topicId(9)).has_value());
  EXPECT_EQ(tree.childCount(topicId(9)), 0u);
  EXPECT_FALSE(isRoot(tree, topicId(9)));
  EXPECT_EQ(tree.number(topicId(9)), TreeInfo::npos);
  EXPECT_FALSE(tree.depth(QUuid()).has_value());
}

TEST(TreeInfo, DepthsCountFromTheRoot) {
  const TreeInfo tree = treeOf({0, 1, 2, 3}, {{0, 1}, {1, 2}, {0, 3}});
  EXPECT_EQ(tree.depth(topicId(0)), 0);
  EXPECT_EQ(tree.depth(topicId(1)), 1);
  EXPECT_EQ(tree.depth(topicId(2)), 2);
  EXPECT_EQ(tree.depth(topicId(3)), 1);
  EXPECT_EQ(tree.maxDepth(), 2);
  EXPECT_EQ(tree.roots(), ids({0}));
}

TEST(TreeInfo, ChildrenStandInTheOrderOfTheEdges) {
  const TreeInfo tree = treeOf({0, 1, 2, 3}, {{0, 3}, {0, 1}, {0, 2}});
  EXPECT_EQ(childrenOf(tree, 0), ids({3, 1, 2}));
}

TEST(TreeInfo, RootsStandInTheOrderOfTheTopics) {
  EXPECT_EQ(treeOf({2, 0, 1}, {{2, 1}}).roots(), ids({2, 0}));
}

TEST(TreeInfo, LastEdgeWinsAsParentAndTheNearestRootAsDepth) {
  // 0 -> 1 -> 2 -> 3 and the later edge 0 -> 3.
  const TreeInfo near = treeOf({0, 1, 2, 3}, {{0, 1}, {1, 2}, {2, 3}, {0, 3}});
  EXPECT_EQ(near.parent(topicId(3)), topicId(0));
  EXPECT_EQ(childrenOf(near, 2), ids({3}));
  EXPECT_EQ(childrenOf(near, 0), ids({1, 3}));
  EXPECT_EQ(near.depth(topicId(3)), 1);

  const TreeInfo far = treeOf({0, 1, 2, 3}, {{0, 3}, {0, 1}, {1, 2}, {2, 3}});
  EXPECT_EQ(far.parent(topicId(3)), topicId(2));
  EXPECT_EQ(childrenOf(far, 2), ids({3}));
  EXPECT_EQ(childrenOf(far, 0), ids({3, 1}));
  EXPECT_EQ(far.depth(topicId(3)), 1);
  EXPECT_EQ(far.maxDepth(), 2);
}

TEST(TreeInfo, DoubledEdgeCountsTwiceAmongTheChildren) {
  EXPECT_EQ(childrenOf(treeOf({0, 1}, {{0, 1}, {0, 1}}), 0), ids({1, 1}));
}

TEST(TreeInfo, CycleHasNoRootAndDepth0) {
  const TreeInfo tree = treeOf({0, 1}, {{0, 1}, {1, 0}});
  EXPECT_TRUE(tree.roots().empty());
  EXPECT_EQ(tree.maxDepth(), 0);
  EXPECT_EQ(tree.depth(topicId(0)), 0);
  EXPECT_EQ(tree.depth(topicId(1)), 0);
  EXPECT_EQ(tree.parent(topicId(0)), topicId(1));
  EXPECT_EQ(tree.parent(topicId(1)), topicId(0));
}

TEST(TreeInfo, TopicsBelowACycleHaveDepth0AndDoNotCountInTheMaximum) {
  const TreeInfo tree = treeOf({0, 1, 2, 3}, {{0, 1}, {1, 0}, {1, 2}, {2, 3}});
  EXPECT_EQ(tree.depth(topicId(3)), 0);
  EXPECT_EQ(tree.maxDepth(), 0);
  EXPECT_FALSE(isRoot(tree, topicId(3)));
}

TEST(TreeInfo, SelfLoopIsNoRoot) {
  const TreeInfo tree = treeOf({0}, {{0, 0}});
  EXPECT_TRUE(tree.roots().empty());
  EXPECT_EQ(tree.depth(topicId(0)), 0);
  EXPECT_EQ(tree.parent(topicId(0)), topicId(0));
  EXPECT_EQ(childrenOf(tree, 0), ids({0}));
}

TEST(TreeInfo, EdgeFromAMissingTopicStillRemovesItsTargetFromTheRoots) {
  const TreeInfo tree = treeOf({0, 1}, {{99, 1}});
  EXPECT_EQ(tree.roots(), ids({0}));
  EXPECT_EQ(tree.depth(topicId(1)), 0);
  EXPECT_EQ(tree.parent(topicId(1)), topicId(99));
  EXPECT_EQ(childrenOf(tree, 99), ids({1}));
  EXPECT_FALSE(tree.depth(topicId(99)).has_value());
  EXPECT_FALSE(isRoot(tree, topicId(99)));
}

TEST(TreeInfo, MissingChildHasADepthThatCounts) {
  const TreeInfo tree = treeOf({0}, {{0, 98}, {98, 99}});
  EXPECT_EQ(tree.depth(topicId(98)), 1);
  EXPECT_EQ(tree.depth(topicId(99)), 2);
  EXPECT_EQ(tree.maxDepth(), 2);
}

TEST(TreeInfo, DoubledTopicIsOneRoot) {
  const TreeInfo tree = treeOf({0, 0, 1}, {{0, 1}});
  EXPECT_EQ(tree.roots(), ids({0}));
  EXPECT_EQ(tree.depth(topicId(1)), 1);
}

TEST(TreeInfo, IsAValueThatOutlivesItsIndex) {
  MapIndex index(topics({0, 1}), edgesOf({{0, 1}}));
  const TreeInfo before(index);
  index.update(topics({0, 1, 2, 3}), edgesOf({{1, 0}, {2, 3}}));
  EXPECT_EQ(before.depth(topicId(1)), 1);
  EXPECT_EQ(before.parent(topicId(1)), topicId(0));
  EXPECT_FALSE(before.depth(topicId(3)).has_value());
  EXPECT_FALSE(before.parent(topicId(3)).has_value());
  EXPECT_EQ(before.childCount(topicId(2)), 0u);
  EXPECT_FALSE(isRoot(before, topicId(2)));
}

TEST(TreeInfo, ChainOf100000TopicsIsBuilt) {
  SharedArray<Node> nodes;
  SharedArray<Edge> edges;
  for (int i = 0; i < 100'000; ++i) {
    nodes.append(topic(i));
    if (i > 0) edges.append(edgeBetween(i, i - 1, i));
  }
  const TreeInfo tree{MapIndex(nodes, edges)};
  EXPECT_EQ(tree.maxDepth(), 99'999);
  EXPECT_EQ(tree.depth(topicId(99'999)), 99'999);
}

TEST(TreeInfo, AgreesWithTheReference) {
  EXPECT_TRUE(rc::check("every map gives the tree that the rules tell", [](const Drawing& drawing) {
    const MindMap map = drawing.map();
    RC_ASSERT(TreeReference(map).differenceTo(TreeInfo(MapIndex(map.nodes, map.edges))) == "");
  }));
}
