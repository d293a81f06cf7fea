#include <gtest/gtest.h>

#include "ai/MapOutline.h"
#include "support/LargeMaps.h"
#include "support/QtPrinters.h"

namespace quilmora {

namespace {

QString outlineOf(const MindMap& map) {
  const MapIndex index(map.nodes, map.edges);
  return mapOutline(map, index, TreeInfo(index));
}

// One topic without a parent whose title makes the outline this long.
MindMap mapOfLength(int characters) {
  MindMap map = test::mapOf({0});
  const int before = static_cast<int>(QStringLiteral("Title: Small\nNodes: 1\n- ").size());
  map.nodes.update(0, [&](Node& node) { node.title = QString(characters - before, u'x'); });
  return map;
}

}  // namespace

TEST(MapOutline, IndentsTopicsByDepthInTheOrderOfTheEdges) {
  MindMap map = test::mapOf({0, 1, 2, 3}, {{0, 2}, {0, 1}, {2, 3}});
  map.nodes.update(3, [](Node& node) { node.notes = QStringLiteral("about three"); });
  EXPECT_EQ(outlineOf(map),
            QStringLiteral("Title: Small\nNodes: 4\n- Topic 0\n  - Topic 2\n    - Topic 3 [about three]\n  - Topic 1"));
}

TEST(MapOutline, AnEmptyMapHasTwoLines) {
  EXPECT_EQ(outlineOf(test::mapOf({})), QStringLiteral("Title: Small\nNodes: 0"));
}

TEST(MapOutline, NotesAreCutTo60CharactersWithoutAnEllipsis) {
  MindMap map = test::mapOf({0});
  map.nodes.update(0, [](Node& node) { node.notes = QString(60, u'n') + u'!'; });
  EXPECT_EQ(outlineOf(map), QStringLiteral("Title: Small\nNodes: 1\n- Topic 0 [") + QString(60, u'n') + u']');
  const QString flags = QString::fromUtf8("🇪🇺").repeated(61);
  map.nodes.update(0, [&](Node& node) { node.notes = flags; });
  EXPECT_EQ(outlineOf(map),
            QStringLiteral("Title: Small\nNodes: 1\n- Topic 0 [") + QString::fromUtf8("🇪🇺").repeated(60) + u']');
}

TEST(MapOutline, Of3000CharactersStaysWholeAndOf3001IsCut) {
  const QString whole = outlineOf(mapOfLength(3000));
  EXPECT_EQ(whole.size(), 3000);
  EXPECT_TRUE(whole.endsWith(u'x'));
  const QString cut = outlineOf(mapOfLength(3001));
  EXPECT_EQ(cut, whole + QStringLiteral("\n... (truncated)"));
}

TEST(MapOutline, SkipsIdsThatNameNoTopicWithWhatIsBelow) {
  EXPECT_EQ(outlineOf(test::mapOf({0, 1, 2}, {{0, 9}, {9, 1}, {0, 2}})),
            QStringLiteral("Title: Small\nNodes: 3\n- Topic 0\n  - Topic 2"));
}

TEST(MapOutline, EndsOnEveryDamage) {
  EXPECT_TRUE(outlineOf(test::cycleMap()).endsWith(QStringLiteral("\n... (truncated)")));
  EXPECT_TRUE(outlineOf(test::ladderMap(64)).endsWith(QStringLiteral("\n... (truncated)")));
  EXPECT_TRUE(outlineOf(test::chainMap(100'000)).endsWith(QStringLiteral("\n... (truncated)")));
  EXPECT_TRUE(outlineOf(test::starMap(100'000)).startsWith(QStringLiteral("Title: Small\nNodes: 100000\n- Topic 0\n")));
  EXPECT_FALSE(outlineOf(test::brokenMap()).isEmpty());
}

}  // namespace quilmora
