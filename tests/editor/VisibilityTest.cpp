#include <gtest/gtest.h>

#include "model/TreeReference.h"
#include "support/EditorRig.h"
#include "support/MapGenerators.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

struct Fold : EditorRig {
  Fold(const std::vector<int>& numbers, const std::vector<Ends>& ends, IdSet collapsed)
      : EditorRig(mapOf(numbers, ends)) {
    editor.setCollapsedNodeIDs(std::move(collapsed));
  }
  bool hides(int number) { return editor.isHidden(topicId(number)); }
};

}  // namespace

TEST(Visibility, OnlyStrictAncestorsHide) {
  Fold fold({0, 1, 2}, {{0, 1}, {1, 2}}, {topicId(1)});
  EXPECT_FALSE(fold.hides(0));
  EXPECT_FALSE(fold.hides(1));
  EXPECT_TRUE(fold.hides(2));
}

TEST(Visibility, EveryDescendantIsHidden) {
  Fold fold({0, 1, 2, 3, 4}, {{0, 1}, {1, 2}, {2, 3}}, {topicId(0)});
  for (const int number : {1, 2, 3}) EXPECT_TRUE(fold.hides(number));
  EXPECT_FALSE(fold.hides(4));
}

TEST(Visibility, OnlyTheParentLinkOfTheLastEdgeIsFollowed) {
  Fold first({0, 1, 2}, {{0, 2}, {1, 2}}, {topicId(0)});
  EXPECT_FALSE(first.hides(2));
  Fold last({0, 1, 2}, {{0, 2}, {1, 2}}, {topicId(1)});
  EXPECT_TRUE(last.hides(2));
}

TEST(Visibility, CycleOfParentLinksEndsAndIsShown) {
  Fold fold({0, 1, 2}, {{0, 1}, {1, 0}, {1, 2}}, {});
  for (const int number : {0, 1, 2}) EXPECT_FALSE(fold.hides(number));
}

TEST(Visibility, CollapsedTopicOnACycleHidesAllWhoseWalkMeetsIt) {
  Fold fold({0, 1, 2, 3}, {{0, 1}, {1, 2}, {2, 0}, {2, 3}}, {topicId(1)});
  for (const int number : {0, 1, 2, 3}) EXPECT_TRUE(fold.hides(number)) << number;
}

TEST(Visibility, CollapsedTopicBelowACycleHidesWhatLiesBelowIt) {
  Fold fold({0, 1, 2, 3}, {{0, 1}, {1, 0}, {1, 2}, {2, 3}}, {topicId(2)});
  EXPECT_FALSE(fold.hides(0));
  EXPECT_FALSE(fold.hides(1));
  EXPECT_FALSE(fold.hides(2));
  EXPECT_TRUE(fold.hides(3));
}

TEST(Visibility, CollapsedSelfLoopHidesItself) {
  EXPECT_TRUE(Fold({0}, {{0, 0}}, {topicId(0)}).hides(0));
  EXPECT_FALSE(Fold({0}, {{0, 0}}, {}).hides(0));
}

TEST(Visibility, MissingParentHidesWhenItsIdIsCollapsed) {
  Fold fold({0}, {{99, 0}}, {topicId(99)});
  EXPECT_TRUE(fold.hides(0));
}

TEST(Visibility, UnknownIdIsNotHidden) {
  Fold fold({0, 1}, {{0, 1}}, {topicId(0), topicId(55)});
  EXPECT_FALSE(fold.hides(55));
  EXPECT_FALSE(fold.hides(56));
}

TEST(Visibility, FollowsEditsOfTheTreeAndOfTheCollapsedSet) {
  Fold fold({0, 1, 2}, {{0, 1}}, {topicId(0)});
  EXPECT_TRUE(fold.hides(1));
  EXPECT_FALSE(fold.hides(2));
  fold.editor.reparentNode(topicId(2), topicId(1));
  EXPECT_TRUE(fold.hides(2));
  fold.editor.toggleCollapsed(topicId(0));
  EXPECT_FALSE(fold.hides(2));
  fold.editor.undo();
  fold.editor.toggleCollapsed(topicId(0));
  EXPECT_FALSE(fold.hides(2));
  EXPECT_TRUE(fold.hides(1));
}

TEST(Visibility, HiddenNodesStandByPosition) {
  Fold fold({2, 1, 0}, {{0, 1}, {1, 2}}, {topicId(1)});
  EXPECT_EQ(fold.editor.hiddenNodes(), (std::vector<char>{1, 0, 0}));
}

TEST(Visibility, ChainOf100000TopicsIsAnswered) {
  MindMap map;
  for (int i = 0; i < 100'000; ++i) {
    map.nodes.append(topic(i));
    if (i > 0) map.edges.append(edgeBetween(i, i - 1, i));
  }
  EditorRig rig(map);
  EXPECT_FALSE(rig.editor.isHidden(topicId(99'999)));
  rig.editor.setCollapsedNodeIDs({topicId(0)});
  EXPECT_TRUE(rig.editor.isHidden(topicId(99'999)));
  EXPECT_FALSE(rig.editor.isHidden(topicId(0)));
}

TEST(Visibility, AgreesWithTheNaiveWalk) {
  EXPECT_TRUE(rc::check("hidden is what the walk to the parents answers", [](const Drawing& drawing) {
    const MindMap map = drawing.map();
    IdSet collapsed;
    for (const int number : *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 13)))
      collapsed.insert(topicId(number));
    EditorRig rig(map);
    rig.editor.setCollapsedNodeIDs(collapsed);
    const TreeReference reference(map);
    for (const QUuid& id : reference.known) RC_ASSERT(rig.editor.isHidden(id) == reference.isHidden(id, collapsed));
    for (std::size_t i = 0; i < map.nodes.size(); ++i)
      RC_ASSERT((rig.editor.hiddenNodes()[i] != 0) == reference.isHidden(map.nodes[i].id, collapsed));
  }));
}

TEST(Descendants, AreReachedThroughChildren) {
  EditorRig rig(mapOf({0, 1, 2, 3}, {{0, 1}, {1, 2}}));
  EXPECT_TRUE(rig.editor.isDescendant(topicId(1), topicId(0)));
  EXPECT_TRUE(rig.editor.isDescendant(topicId(2), topicId(0)));
  EXPECT_FALSE(rig.editor.isDescendant(topicId(0), topicId(2)));
  EXPECT_FALSE(rig.editor.isDescendant(topicId(3), topicId(0)));
}

TEST(Descendants, TopicIsItsOwnOnlyThroughACycle) {
  EditorRig tree(mapOf({0, 1}, {{0, 1}}));
  EXPECT_FALSE(tree.editor.isDescendant(topicId(0), topicId(0)));
  EditorRig cycle(mapOf({0, 1}, {{0, 1}, {1, 0}}));
  EXPECT_TRUE(cycle.editor.isDescendant(topicId(0), topicId(0)));
  EditorRig loop(mapOf({0}, {{0, 0}}));
  EXPECT_TRUE(loop.editor.isDescendant(topicId(0), topicId(0)));
}

TEST(Descendants, MissingTopicsCountAndUnknownIdsDoNot) {
  EditorRig rig(mapOf({0, 1}, {{0, 99}, {99, 1}}));
  EXPECT_TRUE(rig.editor.isDescendant(topicId(99), topicId(0)));
  EXPECT_TRUE(rig.editor.isDescendant(topicId(1), topicId(0)));
  EXPECT_FALSE(rig.editor.isDescendant(topicId(55), topicId(0)));
  EXPECT_FALSE(rig.editor.isDescendant(topicId(0), topicId(55)));
}

TEST(Descendants, AgreeWithTheReference) {
  EXPECT_TRUE(rc::check("descendants are what a search over the children finds", [](const Drawing& drawing) {
    const MindMap map = drawing.map();
    EditorRig rig(map);
    const TreeReference reference(map);
    const QUuid root = topicId(*rc::gen::inRange(0, 13));
    for (const QUuid& id : reference.known)
      RC_ASSERT(rig.editor.isDescendant(id, root) == reference.isDescendant(id, root));
  }));
}
