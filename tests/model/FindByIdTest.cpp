#include <gtest/gtest.h>

#include "model/FindById.h"
#include "support/SmallMap.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

SharedArray<Node> threeWithARepeat() {
  SharedArray<Node> nodes{topic(0), topic(1), topic(1)};
  nodes.update(2, [](Node& node) { node.title = QStringLiteral("second"); });
  return nodes;
}

}  // namespace

TEST(FindById, TheFirstOfSeveralIsFound) {
  EXPECT_EQ(ordinalOf(threeWithARepeat(), topicId(1)), 1U);
  EXPECT_EQ(recordByID(threeWithARepeat(), topicId(1))->title, QStringLiteral("Topic 1"));
}

TEST(FindById, AnUnknownIdFindsNothing) {
  EXPECT_FALSE(ordinalOf(threeWithARepeat(), topicId(7)));
  EXPECT_FALSE(recordByID(threeWithARepeat(), topicId(7)));
}

TEST(FindById, ErasingTakesAllWithTheId) {
  SharedArray<Node> nodes = threeWithARepeat();
  eraseByID(nodes, topicId(1));
  EXPECT_EQ(nodes.size(), 1U);
}
