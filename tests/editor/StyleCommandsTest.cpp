#include "editor/CommandRig.h"

namespace quilmora::test {
namespace {

const TopicColors paint{QStringLiteral("#111111"), QStringLiteral("#222222"), QStringLiteral("#333333")};

MindMap threeTopics() {
  MindMap map = mapOf({}, {{1, 2}, {1, 3}});
  map.nodes = {topic(1, 0, 0), topic(2, 10, 20), topic(3, 100, 40)};
  return map;
}

TEST(StyleCommands, EachTakesOneSnapshotAndStamps) {
  CommandRig rig(threeTopics());
  NodeStyle style = rig.node(0).style;
  style.shape = NodeStyle::Shape::circle;
  rig.settle();
  rig.editor.setNodeStyle(topicId(1), style);
  EXPECT_EQ(rig.node(0).style.shape, NodeStyle::Shape::circle);
  rig.expectChange(1, true);

  rig.settle();
  rig.editor.setNodeEmoji(topicId(2), QStringLiteral("🚀"));
  EXPECT_EQ(rig.node(1).emoji, QStringLiteral("🚀"));
  rig.expectChange(1, true);

  rig.settle();
  rig.editor.setNodeUrl(topicId(2), QStringLiteral("https://example.org"));
  EXPECT_EQ(rig.node(1).url, QStringLiteral("https://example.org"));
  rig.expectChange(1, true);

  rig.settle();
  rig.editor.setCanvasBackground(QStringLiteral("#010203"));
  EXPECT_EQ(rig.map().canvas.background, QStringLiteral("#010203"));
  rig.expectChange(1, true);
}

TEST(StyleCommands, WithoutTheirSubjectTheyDoNothing) {
  CommandRig rig(threeTopics());
  rig.settle();
  rig.editor.setNodeStyle(missingId(), {});
  rig.editor.setNodeEmoji(missingId(), QStringLiteral("🚀"));
  rig.editor.setNodeUrl(missingId(), QStringLiteral("x"));
  rig.editor.colorSelectedNodes(paint);
  rig.select({77});
  rig.editor.colorSelectedNodes(paint);
  rig.editor.colorSelectedEdges(QStringLiteral("#111111"));
  rig.editor.taperSelectedEdges(1, 2);
  rig.editor.alignSelectedNodes(edits::Alignment::left);
  rig.editor.distributeSelectedNodes(edits::Axis::vertical);
  rig.expectNothing();
}

TEST(StyleCommands, OneTopicIsNeitherAlignedNorDistributed) {
  CommandRig rig(threeTopics());
  rig.select({2});
  rig.settle();
  rig.editor.alignSelectedNodes(edits::Alignment::left);
  rig.editor.distributeSelectedNodes(edits::Axis::horizontal);
  rig.expectNothing();
}

TEST(StyleCommands, AllSelectedTopicsArePaintedInOneStep) {
  CommandRig rig(threeTopics());
  rig.select({1, 3});
  rig.settle();
  rig.editor.colorSelectedNodes(paint);
  EXPECT_EQ(rig.node(0).style.fill, QStringLiteral("#111111"));
  EXPECT_EQ(rig.node(1).style, NodeStyle::defaultStyle());
  EXPECT_EQ(rig.node(2).style.textColor, QStringLiteral("#333333"));
  rig.expectChange(1, true);
}

TEST(StyleCommands, AllSelectedConnectorsChangeInOneStep) {
  CommandRig rig(threeTopics());
  rig.editor.setSelectedEdgeIDs({edgeId(0), edgeId(1)});
  rig.settle();
  rig.editor.colorSelectedEdges(QStringLiteral("#ABCDEF"));
  EXPECT_EQ(rig.edge(1).style.color, QStringLiteral("#ABCDEF"));
  rig.expectChange(1, true);
  rig.settle();
  rig.editor.taperSelectedEdges(12.5, 3);
  EXPECT_EQ(rig.edge(0).style.taper.startWidth, 12.5);
  EXPECT_EQ(rig.edge(1).style.taper.endWidth, 3);
  rig.expectChange(1, true);
}

TEST(StyleCommands, ArrangingIsOneStep) {
  CommandRig rig(threeTopics());
  rig.select({1, 2, 3});
  rig.settle();
  rig.editor.distributeSelectedNodes(edits::Axis::horizontal);
  EXPECT_EQ(rig.position(1).x(), 50);
  EXPECT_EQ(rig.position(2).x(), 100);
  rig.expectChange(1, true);
  rig.settle();
  rig.editor.alignSelectedNodes(edits::Alignment::bottom);
  EXPECT_EQ(rig.position(0).y(), 40);
  rig.expectChange(1, true);
  EXPECT_EQ(rig.editor.mapIndex().positions()[0].y(), 40);
}

TEST(StyleCommands, ALinkIsTypedLikeATitle) {
  CommandRig rig(threeTopics());
  rig.settle();
  rig.editor.setNodeUrl(topicId(1), QStringLiteral("h"));
  rig.editor.setNodeUrl(topicId(1), QStringLiteral("ht"));
  EXPECT_EQ(rig.editor.undoCount(), rig.undoBefore + 1);
  rig.editor.undo();
  EXPECT_EQ(rig.node(0).url, std::nullopt);
}

TEST(StyleCommands, AMovingSliderMakesOneSnapshotAndASwitchItsOwn) {
  CommandRig rig(threeTopics());
  rig.settle();
  HierarchicalConfig config = rig.map().hierarchical;
  for (const double width : {14.5, 14.0, 13.5}) {
    config.rootEdgeWidth = width;
    rig.editor.setHierarchical(config, true);
  }
  EXPECT_EQ(rig.map().hierarchical.rootEdgeWidth, 13.5);
  rig.expectChange(1, true);
  rig.settle();
  config.nodeSizing = true;
  rig.editor.setHierarchical(config, false);
  config.nodeSizing = false;
  rig.editor.setHierarchical(config, false);
  EXPECT_EQ(rig.editor.undoCount(), rig.undoBefore + 2);
}

}  // namespace
}  // namespace quilmora::test
