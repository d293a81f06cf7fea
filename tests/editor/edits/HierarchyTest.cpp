#include "editor/edits/EditsRig.h"
#include "editor/edits/Hierarchy.h"

using namespace quilmora;
using namespace quilmora::edits;
using namespace quilmora::test;

TEST(Hierarchy, DescendantsAreReachedOverChildren) {
  const EditsRig rig(mapOf({0, 1, 2, 3}, {{0, 1}, {1, 2}}));
  EXPECT_TRUE(isDescendant(rig.tree, topicId(2), topicId(0)));
  EXPECT_FALSE(isDescendant(rig.tree, topicId(0), topicId(2)));
  EXPECT_FALSE(isDescendant(rig.tree, topicId(3), topicId(0)));
  EXPECT_FALSE(isDescendant(rig.tree, topicId(0), topicId(0)));
  EXPECT_FALSE(isDescendant(rig.tree, topicId(99), topicId(0)));
}

TEST(Hierarchy, ACycleMakesATopicItsOwnDescendant) {
  const EditsRig rig(mapOf({0, 1}, {{0, 1}, {1, 0}}));
  EXPECT_TRUE(isDescendant(rig.tree, topicId(0), topicId(0)));
}

TEST(Hierarchy, ATopicGoesBelowAnyOtherButItsParentAndItsOwnBranch) {
  const EditsRig rig(mapOf({0, 1, 2, 3}, {{0, 1}, {1, 2}}));
  EXPECT_TRUE(canReparent(rig.tree, topicId(2), topicId(0)));
  EXPECT_TRUE(canReparent(rig.tree, topicId(0), topicId(3)));
  EXPECT_FALSE(canReparent(rig.tree, topicId(2), topicId(1)));
  EXPECT_FALSE(canReparent(rig.tree, topicId(1), topicId(2)));
  EXPECT_FALSE(canReparent(rig.tree, topicId(1), topicId(1)));
}

TEST(Hierarchy, ALineBecomesAnEdgeUnlessTheTargetHasAParentOrACycleWouldClose) {
  const EditsRig rig(mapOf({0, 1, 2, 3}, {{0, 1}, {2, 3}}));
  EXPECT_EQ(connectionBetween(rig.tree, topicId(1), topicId(2)), Connection::edge);
  EXPECT_EQ(connectionBetween(rig.tree, topicId(1), topicId(3)), Connection::relationship);
  EXPECT_EQ(connectionBetween(rig.tree, topicId(1), topicId(0)), Connection::relationship);
  EXPECT_EQ(connectionBetween(rig.tree, topicId(0), topicId(1)), Connection::none);
  EXPECT_EQ(connectionBetween(rig.tree, topicId(0), topicId(0)), Connection::none);
}

TEST(Hierarchy, BelowACollapsedTopicAllIsHiddenButNotItself) {
  const EditsRig rig(mapOf({0, 1, 2, 3}, {{0, 1}, {1, 2}, {0, 3}}));
  const std::vector<char> hidden = hiddenNumbers(rig.tree, ids({1}));
  const auto isHidden = [&](int number) { return hidden[rig.tree.number(topicId(number))] != 0; };
  EXPECT_FALSE(isHidden(0));
  EXPECT_FALSE(isHidden(1));
  EXPECT_TRUE(isHidden(2));
  EXPECT_FALSE(isHidden(3));
}

TEST(Hierarchy, ACollapsedTopicOnACycleHidesTheOthersOnIt) {
  const EditsRig rig(mapOf({0, 1}, {{0, 1}, {1, 0}}));
  const std::vector<char> hidden = hiddenNumbers(rig.tree, ids({0}));
  EXPECT_TRUE(hidden[rig.tree.number(topicId(1))]);
}

TEST(Hierarchy, APresentationGoesDepthFirstAndEndsWithWhatNoRootReaches) {
  const EditsRig rig(mapOf({0, 1, 2, 3, 4, 5}, {{0, 2}, {2, 3}, {0, 1}, {4, 5}, {5, 4}}));
  const std::vector<QUuid> expected{topicId(0), topicId(2), topicId(3), topicId(1), topicId(4), topicId(5)};
  EXPECT_EQ(presentationOrder(rig.tree, rig.index), expected);
}

TEST(Hierarchy, APresentationSkipsAnIdThatNamesNoTopicButNotWhatLiesBelowIt) {
  const EditsRig rig(mapOf({0, 1}, {{0, 9}, {9, 1}}));
  const std::vector<QUuid> expected{topicId(0), topicId(1)};
  EXPECT_EQ(presentationOrder(rig.tree, rig.index), expected);
}
