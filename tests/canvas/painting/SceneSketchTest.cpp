#include <gtest/gtest.h>

#include "canvas/painting/SceneSketch.h"
#include "model/MindMap.h"

using namespace quilmora;

namespace {

MindMap threeTopics() {
  MindMap map;
  for (int i = 0; i < 3; ++i) {
    Node node;
    node.id = QUuid::createUuid();
    node.title = QStringLiteral("Topic");
    map.nodes.append(node);
  }
  return map;
}

}  // namespace

TEST(SceneSketch, KeepsMeasuredSizesWhenTopicsMoveOrGo) {
  MindMap map = threeTopics();
  SceneSketch sketch;
  sketch.update(map);
  sketch.rememberBox(1, QRectF(-50, -20, 100, 40));
  sketch.rememberBox(2, QRectF(-60, -20, 120, 40));
  map.nodes.update(1, [](Node& node) { node.position = QPointF(5, 5); });
  sketch.update(map);
  EXPECT_TRUE(sketch.nodes()[1].isMeasured);
  EXPECT_EQ(sketch.nodes()[1].halfWidth, 50.0F);
  const QUuid first = map.nodes[0].id;
  map.nodes.eraseIf([&](const Node& node) { return node.id == first; });
  sketch.update(map);
  EXPECT_EQ(sketch.nodes()[0].halfWidth, 50.0F);
  EXPECT_EQ(sketch.nodes()[1].halfWidth, 60.0F);
  EXPECT_EQ(sketch.nodes()[1].halfHeight, 20.0F);
}

TEST(SceneSketch, ForgetsTheSizeOfATopicWithAnotherTitle) {
  MindMap map = threeTopics();
  SceneSketch sketch;
  sketch.update(map);
  const float guessed = sketch.nodes()[2].halfWidth;
  for (const std::size_t index : {std::size_t{1}, std::size_t{2}}) sketch.rememberBox(index, QRectF(-90, -20, 180, 40));
  map.nodes.update(2, [](Node& node) { node.title = QStringLiteral("Other"); });
  sketch.update(map);
  EXPECT_TRUE(sketch.nodes()[1].isMeasured);
  EXPECT_FALSE(sketch.nodes()[2].isMeasured);
  EXPECT_EQ(sketch.nodes()[2].halfWidth, guessed);
}
