#include <gtest/gtest.h>

#include "exchange/ImportedMap.h"
#include "support/QtPrinters.h"
#include "support/SmallMap.h"

namespace quilmora {
namespace {

using test::Ends;
using test::mapOf;
using Places = std::vector<std::pair<double, double>>;

Places placesOf(const MindMap& map) {
  Places places;
  for (const Node& node : map.nodes) places.emplace_back(node.position.x(), node.position.y());
  return places;
}

Places placedDepthFirst(MindMap map) {
  placeDepthFirst(map);
  return placesOf(map);
}

Places placedByDepthTable(MindMap map) {
  placeByDepthTable(map);
  return placesOf(map);
}

TEST(ImportedMap, BeginsWithTheDefaultsAndTheTimeOfTheImport) {
  const ManualClock clock(TimePoint(std::chrono::seconds(1'710'000'000)));
  const MindMap map = importedMap(QStringLiteral("Imported from OPML"), clock);
  EXPECT_EQ(map.version, 1);
  EXPECT_EQ(map.title, QStringLiteral("Imported from OPML"));
  EXPECT_EQ(map.createdAt, clock.now());
  EXPECT_EQ(map.updatedAt, clock.now());
  EXPECT_TRUE(map.nodes.empty());
  EXPECT_TRUE(map.edges.empty());
  EXPECT_TRUE(map.relationships.empty());
  EXPECT_TRUE(map.regions.empty());
  EXPECT_EQ(map.layout, MindMap::Layout::manual);
  EXPECT_EQ(map.canvas.background, QStringLiteral("#F8F0FF"));
  EXPECT_EQ(map.canvas.themeId, QStringLiteral("purple"));
  EXPECT_TRUE(map.canvas.grid);
  EXPECT_TRUE(map.canvas.snap);
  EXPECT_EQ(map.hierarchical, HierarchicalConfig());
}

TEST(ImportedMap, ATopicHasTheDefaultStyleAndNothingElse) {
  const Node node = importedNode(QStringLiteral("Title"), QStringLiteral("Notes"));
  EXPECT_FALSE(node.id.isNull());
  EXPECT_EQ(node.title, QStringLiteral("Title"));
  EXPECT_EQ(node.notes, QStringLiteral("Notes"));
  EXPECT_EQ(node.position.x(), 0.0);
  EXPECT_EQ(node.position.y(), 0.0);
  EXPECT_EQ(node.style, NodeStyle::defaultStyle());
  EXPECT_FALSE(node.icon || node.badge || node.aiGenerated || node.emoji || node.url || node.imageData);
  EXPECT_NE(importedNode({}, {}).id, importedNode({}, {}).id);
}

TEST(ImportedMap, AnEdgeHasTheFixedColourAndTaper) {
  const Edge edge = importedEdge(test::topicId(1), test::topicId(2));
  EXPECT_FALSE(edge.id.isNull());
  EXPECT_EQ(edge.from, test::topicId(1));
  EXPECT_EQ(edge.to, test::topicId(2));
  EXPECT_EQ(edge.label, QString());
  EXPECT_EQ(edge.style.color, QStringLiteral("#3B82A0"));
  EXPECT_FALSE(edge.style.dashed);
  EXPECT_EQ(edge.style.arrowHead, EdgeStyle::ArrowHead::triangle);
  EXPECT_EQ(edge.style.taper.startWidth, 6.0);
  EXPECT_EQ(edge.style.taper.endWidth, 2.0);
  EXPECT_EQ(edge.style.taper.easing, EdgeStyle::TaperEasing::quadraticIn);
  EXPECT_FALSE(edge.controlPointOffset);
}

TEST(ImportedMap, LevelsStandTwoHundredApartAndSlotsOneHundred) {
  const MindMap map = mapOf({1, 2, 3, 4, 5}, {{1, 2}, {2, 3}, {1, 4}, {4, 5}});
  const Places expected{{100, 100}, {300, 100}, {500, 100}, {300, 200}, {500, 200}};
  EXPECT_EQ(placedDepthFirst(map), expected);
  EXPECT_EQ(placedByDepthTable(map), expected);
}

TEST(ImportedMap, RootsShareTheFirstLevel) {
  EXPECT_EQ(placedDepthFirst(mapOf({1, 2})), (Places{{100, 100}, {100, 200}}));
  EXPECT_EQ(placedByDepthTable(mapOf({1, 2})), (Places{{100, 100}, {100, 200}}));
}

TEST(ImportedMap, DepthFirstFollowsTheEdgesAndTheTableTheTopics) {
  const MindMap map = mapOf({1, 2, 3}, {{1, 3}, {1, 2}});
  EXPECT_EQ(placedDepthFirst(map), (Places{{100, 100}, {300, 200}, {300, 100}}));
  EXPECT_EQ(placedByDepthTable(map), (Places{{100, 100}, {300, 100}, {300, 200}}));
}

TEST(ImportedMap, ATopicOfTwoParentsIsPlacedWhereItIsReachedFirst) {
  const MindMap map = mapOf({1, 2, 3}, {{1, 2}, {2, 3}, {1, 3}});
  EXPECT_EQ(placedDepthFirst(map), (Places{{100, 100}, {300, 100}, {500, 100}}));
}

TEST(ImportedMap, ACycleEndsAndWhatNoRootReachesStaysInPlace) {
  const MindMap below = mapOf({1, 2, 3}, {{1, 2}, {2, 3}, {3, 2}});
  EXPECT_EQ(placedDepthFirst(below), (Places{{100, 100}, {300, 100}, {500, 100}}));
  const MindMap alone = mapOf({1, 2}, {{1, 2}, {2, 1}});
  EXPECT_EQ(placedDepthFirst(alone), (Places{{0, 0}, {0, 0}}));
  EXPECT_EQ(placedByDepthTable(alone), (Places{{0, 0}, {0, 0}}));
}

TEST(ImportedMap, AnEdgeToNowhereTakesNoSlot) {
  EXPECT_EQ(placedDepthFirst(mapOf({1, 2}, {{1, 9}, {1, 2}})), (Places{{100, 100}, {300, 100}}));
}

TEST(ImportedMap, AChainOfAHundredThousandIsPlaced) {
  MindMap map;
  for (int i = 0; i < 100'000; ++i) map.nodes.append(test::topic(i));
  for (int i = 1; i < 100'000; ++i) map.edges.append(test::edgeBetween(i, i - 1, i));
  placeDepthFirst(map);
  EXPECT_EQ(map.nodes.back().position.x(), 99'999.0 * 200.0 + 100.0);
  EXPECT_EQ(map.nodes.back().position.y(), 100.0);
}

}  // namespace
}  // namespace quilmora
