#include <QMetaEnum>

#include "editor/CommandRig.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

using enum MindMapViewModel::FocusLens;

double opacity(MindMapViewModel::FocusLens lens, std::optional<Badge> badge) {
  CommandRig rig(mapOf({0}));
  rig.editor.setActiveLens(lens);
  Node node = rig.node(0);
  node.badge = badge;
  return rig.editor.nodeOpacity(node);
}

}  // namespace

TEST(Lens, HasFourTextsInOrder) {
  const QMetaEnum cases = QMetaEnum::fromType<MindMapViewModel::FocusLens>();
  ASSERT_EQ(cases.keyCount(), 4);
  const char* texts[] = {"None", "Priority", "Progress", "Depth"};
  for (int i = 0; i < 4; ++i)
    EXPECT_EQ(rawValue(static_cast<MindMapViewModel::FocusLens>(cases.value(i))), QLatin1String(texts[i]));
}

TEST(Lens, NoneShowsEverythingInFull) {
  EXPECT_EQ(opacity(none, std::nullopt), 1.0);
  EXPECT_EQ(opacity(none, Badge::blocked), 1.0);
}

TEST(Lens, PriorityTakesEveryBadge) {
  for (const Badge badge :
       {Badge::priority1, Badge::priority2, Badge::priority3, Badge::done, Badge::inProgress, Badge::blocked})
    EXPECT_EQ(opacity(priority, badge), 1.0);
  EXPECT_EQ(opacity(priority, std::nullopt), 0.2);
}

TEST(Lens, ProgressTakesTheStatusBadges) {
  for (const Badge badge : {Badge::done, Badge::inProgress, Badge::blocked}) EXPECT_EQ(opacity(progress, badge), 1.0);
  for (const Badge badge : {Badge::priority1, Badge::priority2, Badge::priority3})
    EXPECT_EQ(opacity(progress, badge), 0.25);
  EXPECT_EQ(opacity(progress, std::nullopt), 0.25);
}

TEST(Lens, DepthDimsByAFifthALevelDownToAFifth) {
  std::vector<int> numbers;
  std::vector<Ends> chain;
  for (int i = 0; i < 10; ++i) {
    numbers.push_back(i);
    if (i > 0) chain.push_back({i - 1, i});
  }
  CommandRig rig(mapOf(numbers, chain));
  rig.editor.setActiveLens(depth);
  EXPECT_EQ(rig.editor.nodeOpacity(rig.node(0)), 1.0);
  EXPECT_EQ(rig.editor.nodeOpacity(rig.node(1)), 0.8);
  EXPECT_EQ(rig.editor.nodeOpacity(rig.node(2)), 0.6);
  EXPECT_DOUBLE_EQ(rig.editor.nodeOpacity(rig.node(3)), 0.4);
  EXPECT_EQ(rig.editor.nodeOpacity(rig.node(4)), 0.2);
  EXPECT_EQ(rig.editor.nodeOpacity(rig.node(9)), 0.2);
}

TEST(Lens, DepthShowsATopicWithoutADepthInFull) {
  CommandRig rig(mapOf({0}));
  rig.editor.setActiveLens(depth);
  EXPECT_EQ(rig.editor.nodeOpacity(topic(55)), 1.0);
}

TEST(Lens, ChangesNothingElse) {
  CommandRig rig(mapOf({0}));
  rig.editor.setActiveLens(priority);
  EXPECT_EQ(rig.log.take(), QStringLiteral("lens"));
  rig.editor.nodeOpacity(rig.node(0));
  rig.expectNothing();
}

TEST(QuickLook, TogglesByTopic) {
  CommandRig rig(mapOf({0, 1}));
  rig.editor.toggleQuickLook(topicId(0));
  EXPECT_EQ(rig.editor.quickLookNodeID(), topicId(0));
  rig.editor.toggleQuickLook(topicId(1));
  EXPECT_EQ(rig.editor.quickLookNodeID(), topicId(1));
  rig.editor.toggleQuickLook(topicId(1));
  EXPECT_EQ(rig.editor.quickLookNodeID(), std::nullopt);
  EXPECT_EQ(rig.log.take(), QStringLiteral("quickLook quickLook quickLook"));
  rig.expectMapUntouched();
}
