#include "editor/edits/Clipping.h"
#include "editor/edits/EditsRig.h"

using namespace quilmora;
using namespace quilmora::edits;
using namespace quilmora::test;

TEST(Clipping, HoldsTopicsInTheOrderOfTheMapAndTheEdgesBetweenThem) {
  const Clipping clipping = copied(mapOf({0, 1, 2}, {{0, 1}, {1, 2}}), ids({1, 0}));
  ASSERT_EQ(clipping.nodes.size(), 2U);
  EXPECT_EQ(clipping.nodes[0].id, topicId(0));
  ASSERT_EQ(clipping.edges.size(), 1U);
  EXPECT_EQ(clipping.edges[0].to, topicId(1));
}

TEST(Clipping, PastesWithFreshIdsALittleAside) {
  MindMap map = mapOf({0, 1}, {{0, 1}});
  const IdSet pasted = paste(map, copied(map, ids({0, 1})));
  ASSERT_EQ(map.nodes.size(), 4U);
  EXPECT_EQ(pasted, (IdSet{map.nodes[2].id, map.nodes[3].id}));
  EXPECT_FALSE(pasted.contains(topicId(0)));
  EXPECT_EQ(map.nodes[2].position, QPointF(40, 40));
  ASSERT_EQ(map.edges.size(), 2U);
  EXPECT_EQ(map.edges[1].from, map.nodes[2].id);
  EXPECT_EQ(map.edges[1].to, map.nodes[3].id);
  EXPECT_NE(map.edges[1].id, map.edges[0].id);
}

TEST(Clipping, LeavesBadgeMarkEmojiLinkAndPictureBehind) {
  MindMap map = mapOf({});
  Node full = topic(0);
  full.notes = QStringLiteral("notes");
  full.icon = IconRef{IconRef::IconType::sfSymbol, QStringLiteral("star")};
  full.badge = Badge::done;
  full.aiGenerated = true;
  full.emoji = QStringLiteral("🙂");
  full.url = QStringLiteral("https://example.org");
  full.imageData = QStringLiteral("AAAA");
  map.nodes.append(full);
  paste(map, copied(map, ids({0})));
  Node expected = topic(0);
  expected.id = map.nodes[1].id;
  expected.position = {40, 40};
  expected.notes = full.notes;
  expected.icon = full.icon;
  EXPECT_EQ(map.nodes[1], expected);
}
