#include <random>

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
  EXPECT_TRUE(sketch.isMeasured(1));
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
  EXPECT_TRUE(sketch.isMeasured(1));
  EXPECT_FALSE(sketch.isMeasured(2));
  EXPECT_EQ(sketch.nodes()[2].halfWidth, guessed);
}

TEST(SceneSketch, OtherSizesByDepthForgetWhatWasMeasured) {
  MindMap map = threeTopics();
  SceneSketch sketch;
  sketch.update(map);
  sketch.rememberBox(1, QRectF(-90, -20, 180, 40));
  map.hierarchical.leafFontSize = 40.0;
  map.hierarchical.leafEdgeWidth = 3.0;
  sketch.update(map);
  EXPECT_TRUE(sketch.isMeasured(1)) << "topics are not sized by depth";
  const double bound = sketch.boundHalfHeight(1);
  map.hierarchical.nodeSizing = true;
  sketch.update(map);
  EXPECT_FALSE(sketch.isMeasured(1));
  EXPECT_GT(sketch.boundHalfHeight(1), bound);
  sketch.rememberBox(1, QRectF(-90, -20, 180, 40));
  map.hierarchical.leafFontSize = 39.0;
  sketch.update(map);
  EXPECT_FALSE(sketch.isMeasured(1));
}

// What it holds of a map must not depend on the maps before.
TEST(SceneSketch, FollowsAnyChangeOfTheTopics) {
  std::mt19937 random(7);
  const auto below = [&](std::size_t bound) { return static_cast<std::size_t>(random()) % bound; };
  MindMap map;
  std::vector<MindMap> kept;
  SceneSketch sketch;
  for (int step = 0; step < 300; ++step) {
    for (std::size_t count = below(200); count > 0 && map.nodes.size() < 2000; --count) {
      Node node;
      node.id = QUuid::createUuid();
      node.title = QString(static_cast<qsizetype>(below(50)), QLatin1Char('x'));
      map.nodes.append(node);
    }
    const std::size_t from = below(map.nodes.size() + 1);
    const std::size_t to = from + below(300);
    std::size_t place = 0;
    switch (below(4)) {
      case 0:
        map.nodes.eraseIf([&](const Node&) { return place++, place > from && place <= to; });
        break;
      case 1:
        map.nodes.updateIf([&](const Node&) { return place++, place > from && place <= to; },
                           [](Node& node) { node.title += QStringLiteral("yy"); });
        break;
      case 2:
        kept.push_back(map);
        break;
      default:
        if (!kept.empty()) map = kept[below(kept.size())];
        break;
    }
    sketch.update(map);
    SceneSketch fresh;
    fresh.update(map);
    ASSERT_EQ(sketch.nodes().size(), map.nodes.size());
    for (std::size_t i = 0; i < map.nodes.size(); ++i) {
      ASSERT_EQ(sketch.boundHalfHeight(i), fresh.boundHalfHeight(i)) << step << ' ' << i;
      ASSERT_EQ(sketch.isMeasured(i), false);
    }
  }
}
