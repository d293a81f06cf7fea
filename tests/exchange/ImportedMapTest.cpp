#include <gtest/gtest.h>

#include "exchange/ImportedMap.h"
#include "support/QtPrinters.h"
#include "support/SmallMap.h"

namespace quilmora {
namespace {

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
  LevelPlaces places;
  EXPECT_EQ(places.next(0), QPointF(100, 100));
  EXPECT_EQ(places.next(1), QPointF(300, 100));
  EXPECT_EQ(places.next(2), QPointF(500, 100));
  EXPECT_EQ(places.next(1), QPointF(300, 200));
  EXPECT_EQ(places.next(2), QPointF(500, 200));
  EXPECT_EQ(places.next(0), QPointF(100, 200));
}

TEST(ImportedMap, FarLevelsAndSlotsArePlacedExactly) {
  LevelPlaces places;
  EXPECT_EQ(places.next(30'000'000), QPointF(6'000'000'100.0, 100));
  QPointF last;
  for (int i = 0; i < 1'000'000; ++i) last = places.next(0);
  EXPECT_EQ(last, QPointF(100, 100'000'000));
}

}  // namespace
}  // namespace quilmora
