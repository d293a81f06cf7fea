#include <gtest/gtest.h>

#include "model/TreeReference.h"
#include "support/MapGenerators.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

// A map with its index and a tree that follows it.
class Follower {
 public:
  explicit Follower(MindMap start) : map(std::move(start)), m_index(map.nodes, map.edges), m_tree(m_index) {}

  // Whether the tree could follow; where it could not, it is built anew.
  bool follow() {
    const MapIndex::Change change = m_index.update(map.nodes, map.edges);
    if (!change.structure) return true;
    const std::optional<TreeInfo> followed = m_tree.followed(m_index, change);
    m_tree = followed ? *followed : TreeInfo(m_index);
    return followed.has_value();
  }
  std::string difference() const { return TreeReference(map).differenceTo(m_tree); }
  const TreeInfo& tree() const { return m_tree; }

  MindMap map;

 private:
  MapIndex m_index;
  TreeInfo m_tree;
};

// Topics in rows of three children each.
MindMap wideTree(int count) {
  MindMap map;
  for (int i = 0; i < count; ++i) {
    map.nodes.append(topic(i));
    if (i > 0) map.edges.append(edgeBetween(i, (i - 1) / 3, i));
  }
  return map;
}

void addChild(MindMap& map, int number, int parent) {
  map.nodes.append(topic(number));
  map.edges.append(edgeBetween(number, parent, number));
}

void moveBelow(MindMap& map, int number, int parent) {
  map.edges.eraseIf([&](const Edge& edge) { return edge.to == topicId(number); });
  map.edges.append(edgeBetween(number, parent, number));
}

void anyChange(MindMap& map, int& next) {
  const int topics = std::max(next, 1);
  const auto number = [&] { return *rc::gen::inRange(0, topics); };
  switch (*rc::gen::inRange(0, 9)) {
    case 0:
    case 1:
      addChild(map, next++, number());
      break;
    case 2:
      map.nodes.append(topic(next++));
      break;
    case 3:
    case 4:
      map.removeNode(topicId(number()), {});
      break;
    case 5:
      moveBelow(map, number(), number());
      break;
    case 6:
      if (!map.edges.empty())
        map.edges.update(static_cast<std::size_t>(number()) % map.edges.size(),
                         [from = number()](Edge& edge) { edge.from = topicId(from); });
      break;
    case 7:
      map.edges.append(edgeBetween(5000 + next, number(), number()));
      break;
    default:
      if (!map.nodes.empty())
        map.nodes.update(static_cast<std::size_t>(number()) % map.nodes.size(),
                         [id = topicId(number())](Node& node) { node.id = id; });
  }
}

}  // namespace

TEST(TreeChange, FollowsEverydayEditsWithoutBuildingAnew) {
  Follower follower(wideTree(3000));
  const MindMap start = follower.map;
  const auto expectFollowed = [&](const char* what) {
    EXPECT_TRUE(follower.follow()) << what;
    EXPECT_EQ(follower.difference(), "") << what;
  };
  addChild(follower.map, 4000, 7);
  expectFollowed("a child");
  follower.map.nodes.append(topic(4001));
  expectFollowed("a free topic");
  follower.map.removeNode(topicId(2500), {});
  expectFollowed("a leaf goes");
  const MindMap before = follower.map;
  follower.map.removeNode(topicId(200), {});
  expectFollowed("a topic with children goes");
  EXPECT_EQ(follower.tree().roots().size(), 5U);
  follower.map = before;
  expectFollowed("and comes back");
  moveBelow(follower.map, 30, 2999);
  expectFollowed("a branch goes below a leaf");
  follower.map.removeNode(topicId(0), {});
  expectFollowed("the root goes");
  follower.map = start;
  expectFollowed("everything comes back");
}

TEST(TreeChange, FollowsTheDeepestTopicUpAndDown) {
  Follower follower(mapOf({0, 1, 2, 3}, {{0, 1}, {1, 2}, {0, 3}}));
  EXPECT_EQ(follower.tree().maxDepth(), 2);
  moveBelow(follower.map, 2, 0);
  EXPECT_TRUE(follower.follow());
  EXPECT_EQ(follower.tree().maxDepth(), 1);
  moveBelow(follower.map, 0, 99);
  EXPECT_TRUE(follower.follow());
  EXPECT_EQ(follower.difference(), "");
  EXPECT_EQ(follower.tree().maxDepth(), 0);
}

TEST(TreeChange, LeavesCyclesAndSeveralParentsToATreeBuiltAnew) {
  Follower cycle(mapOf({0, 1, 2}, {{0, 1}, {1, 2}}));
  cycle.map.edges.append(edgeBetween(9, 2, 0));
  EXPECT_FALSE(cycle.follow());
  EXPECT_EQ(cycle.difference(), "");
  Follower parents(mapOf({0, 1, 2}, {{0, 2}}));
  parents.map.edges.append(edgeBetween(9, 1, 2));
  EXPECT_FALSE(parents.follow());
  EXPECT_EQ(parents.difference(), "");
}

TEST(TreeChange, LeavesTopicsWithOneIdToATreeBuiltAnew) {
  // The first of them gives a root its place, the last of them is the one that is found.
  Follower follower(mapOf({1, 2, 1}, {{2, 1}}));
  follower.map.edges.clear();
  EXPECT_FALSE(follower.follow());
  EXPECT_EQ(follower.difference(), "");
}

TEST(TreeChange, FollowsTheEndOfACycle) {
  Follower follower(mapOf({0, 1, 2}, {{0, 1}, {1, 0}, {1, 2}}));
  follower.map.edges.eraseIf([](const Edge& edge) { return edge.to == topicId(0); });
  EXPECT_TRUE(follower.follow());
  EXPECT_EQ(follower.difference(), "");
  EXPECT_EQ(follower.tree().depth(topicId(2)), 2);
}

TEST(TreeChange, EarlierTreesStayAsTheyWere) {
  Follower follower(wideTree(2000));
  const MindMap before = follower.map;
  const TreeInfo tree = follower.tree();
  follower.map.removeNode(topicId(3), {});
  addChild(follower.map, 5000, 4);
  EXPECT_TRUE(follower.follow());
  EXPECT_EQ(TreeReference(before).differenceTo(tree), "");
}

TEST(TreeChange, AgreesWithATreeBuiltAnewAfterAnyRowOfChanges) {
  EXPECT_TRUE(rc::check("a tree that follows is the tree of the map", [] {
    const bool isLarge = *rc::gen::inRange(0, 4) == 0;
    const Drawing drawing = isLarge ? anyForest(300) : anyDrawing();
    Follower follower(drawing.map());
    std::vector<MindMap> earlier{follower.map};
    int next = isLarge ? 300 : 41;
    for (int step = *rc::gen::inRange(1, 20); step > 0; --step) {
      if (*rc::gen::inRange(0, 4) == 0)
        follower.map = earlier[static_cast<std::size_t>(*rc::gen::inRange<int>(0, static_cast<int>(earlier.size())))];
      else
        for (int count = *rc::gen::inRange(1, 4); count > 0; --count) anyChange(follower.map, next);
      follower.follow();
      RC_ASSERT(follower.difference() == "");
      earlier.push_back(follower.map);
    }
  }));
}
