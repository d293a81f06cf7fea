#include "editor/edits/EditsRig.h"
#include "editor/edits/PastedTopics.h"
#include "editor/edits/SmartPaste.h"

using namespace quilmora;
using namespace quilmora::edits;
using namespace quilmora::test;

namespace {

struct PasteRig : EditsRig {
  using EditsRig::EditsRig;

  PasteTarget below(std::optional<int> number) const {
    return {map, index, tree, allThemes().front(), number ? std::optional(topicId(*number)) : std::nullopt};
  }
};

}  // namespace

TEST(PastedTopics, OneTopicStandsBesideItsParent) {
  MindMap map = mapOf({});
  map.nodes.append(topic(0, 10, 20));
  const PasteRig rig(map);
  const PastedTopics pasted = pastedTopic(QStringLiteral("  one\ntwo "), rig.below(0));
  ASSERT_EQ(pasted.nodes.size(), 1U);
  EXPECT_EQ(pasted.nodes[0].title, QStringLiteral("one\ntwo"));
  EXPECT_EQ(pasted.nodes[0].position, QPointF(190, 20));
  ASSERT_EQ(pasted.edges.size(), 1U);
  EXPECT_EQ(pasted.edges[0].from, topicId(0));
}

TEST(PastedTopics, SiblingsStandInAColumn) {
  const PasteRig rig(mapOf({}));
  const QString text = QStringLiteral("a\nb");
  const PastedTopics pasted = pastedSiblings(linesWithText(text), rig.below(std::nullopt));
  ASSERT_EQ(pasted.nodes.size(), 2U);
  EXPECT_EQ(pasted.nodes[0].position, QPointF(400, 300));
  EXPECT_EQ(pasted.nodes[1].position, QPointF(400, 360));
  EXPECT_TRUE(pasted.edges.empty());
}

TEST(PastedTopics, AnOutlineHangsEachLineBelowTheLastLessIndentedOne) {
  const PasteRig rig(mapOf({}));
  const QString text = QStringLiteral("root\n  - a\n    b\n  c");
  PastedTopics pasted = pastedOutline(linesWithText(text), rig.below(std::nullopt));
  ASSERT_EQ(pasted.nodes.size(), 4U);
  EXPECT_EQ(pasted.nodes[1].title, QStringLiteral("a"));
  ASSERT_EQ(pasted.edges.size(), 3U);
  EXPECT_EQ(pasted.edges[0].from, pasted.nodes[0].id);
  EXPECT_EQ(pasted.edges[1].from, pasted.nodes[1].id);
  EXPECT_EQ(pasted.edges[2].from, pasted.nodes[0].id);
}

TEST(PastedTopics, AppendingLeavesNothingBehind) {
  MindMap map = mapOf({0});
  PastedTopics pasted;
  pasted.add(topic(1), topicId(0), EdgeStyle::defaultStyle());
  EXPECT_EQ(pasted.ids(), ids({1}));
  pasted.appendTo(map);
  EXPECT_TRUE(pasted.nodes.empty());
  EXPECT_EQ(map.nodes.size(), 2U);
  EXPECT_EQ(map.edges.size(), 1U);
}
