#include "editor/RandomCommands.h"
#include "editor/journal/MapDelta.h"
#include "editor/journal/MapFingerprint.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

MindMap mapOfTopics(int count) {
  MindMap map = mapOf({});
  for (int i = 0; i < count; ++i) map.nodes.append(topic(i));
  return map;
}

std::uint64_t fingerprint(const MindMap& map) {
  return journal::MapFingerprint().of(map);
}

}  // namespace

TEST(MapDelta, NothingDiffersFromACopy) {
  const MindMap map = mapOfTopics(300);
  EXPECT_TRUE(journal::deltaBetween(map, map).isEmpty());
  MindMap written = map;
  written.nodes.update(7, [](Node& node) { node.title += QStringLiteral("x"); });
  written.nodes.update(7, [](Node& node) { node.title.chop(1); });
  EXPECT_TRUE(journal::deltaBetween(map, written).isEmpty());
}

TEST(MapDelta, IsAsSmallAsTheChange) {
  const MindMap map = mapOfTopics(10'000);
  MindMap titled = map;
  titled.nodes.update(5'000, [](Node& node) { node.title = QStringLiteral("Bread"); });
  EXPECT_LT(journal::deltaBetween(map, titled).size(), 40);
  MindMap grown = map;
  grown.nodes.append(topic(20'000));
  EXPECT_LT(journal::deltaBetween(map, grown).size(), 120);
  MindMap shorter = map;
  shorter.nodes.eraseIf([](const Node& node) { return node.id == topicId(17); });
  EXPECT_LT(journal::deltaBetween(map, shorter).size(), 40);
  EXPECT_LT(journal::deltaBetween(shorter, map).size(), 120);
  MindMap moved = map;
  moved.nodes.updateAll([](Node& node) { node.position += QPointF(1, 0); });
  EXPECT_LT(journal::deltaBetween(map, moved).size(), 10'000 * 18);
}

TEST(MapDelta, LeavesBlocksSharedThatItDoesNotTouch) {
  const MindMap map = mapOfTopics(1'000);
  MindMap changed = map;
  changed.nodes.update(500, [](Node& node) { node.title = QStringLiteral("Bread"); });
  const MindMap applied = journal::appliedDelta(map, journal::deltaBetween(map, changed));
  std::size_t shared = 0;
  for (std::size_t k = 0; k < applied.nodes.blockCount(); ++k)
    shared += &applied.nodes.block(k) == &map.nodes.block(k) ? 1 : 0;
  EXPECT_EQ(shared, map.nodes.blockCount() - 1);
  EXPECT_TRUE(applied.edges.sharesStorageWith(map.edges));
}

TEST(MapDelta, OfRecordsInAnotherOrderLeadsThere) {
  const MindMap map = mapOf({0, 1, 2, 3, 4});
  const MindMap turned = mapOf({4, 3, 3, 0, 1});
  EXPECT_EQ(journal::appliedDelta(map, journal::deltaBetween(map, turned)), turned);
}

TEST(MapDelta, KeepsHalvesOfPairsInTexts) {
  MindMap map = mapOf({0});
  MindMap odd = map;
  odd.nodes.update(0, [](Node& node) { node.title = QString(QChar(0xD800)) + u'a' + QChar(0xFEFF); });
  odd.title = QString(QChar(0xFEFF)) + QStringLiteral("Plan");
  EXPECT_EQ(journal::appliedDelta(map, journal::deltaBetween(map, odd)), odd);
}

TEST(MapDelta, OfAnotherMapIsRefused) {
  const MindMap map = mapOfTopics(100);
  MindMap changed = map;
  changed.nodes.update(50, [](Node& node) { node.title = QStringLiteral("Bread"); });
  const QByteArray delta = journal::deltaBetween(map, changed);
  EXPECT_THROW(journal::appliedDelta(mapOfTopics(99), delta), journal::JournalError);
  EXPECT_THROW(journal::appliedDelta(map, delta + '\0'), journal::JournalError);
  EXPECT_THROW(journal::appliedDelta(map, {}), journal::JournalError);
}

TEST(MapDelta, LeadsFromAnyMapToAnyOther) {
  EXPECT_TRUE(rc::check("a delta between two maps", [] {
    const MindMap before = *anyDamagedMap();
    const MindMap now = *anyDamagedMap();
    const QByteArray delta = journal::deltaBetween(before, now);
    RC_ASSERT(isVeryMap(delta.isEmpty() ? before : journal::appliedDelta(before, delta), now));
  }));
}

TEST(MapDelta, EndsCutShortOrChangedInAMapOrAnError) {
  EXPECT_TRUE(rc::check("a hostile delta", [](std::uint64_t seed) {
    const MindMap before = *anyDamagedMap();
    QByteArray delta = journal::deltaBetween(before, *anyDamagedMap());
    RandomMapMaker random(seed);
    if (random.chance(50)) delta.truncate(random.below(static_cast<int>(delta.size()) + 1));
    for (int count = random.below(4); count > 0 && !delta.isEmpty(); --count)
      delta[random.below(static_cast<int>(delta.size()))] = static_cast<char>(random.below(256));
    const MindMap copy = before;
    try {
      const MindMap now = journal::appliedDelta(before, delta);
      // The result is a map that can be written.
      RC_ASSERT(decodeDocument(encodeDocument(now)) == decodeDocument(encodeDocument(now)));
    } catch (const journal::JournalError&) {
    }
    RC_ASSERT(isVeryMap(before, copy));
  }));
}

TEST(MapFingerprint, StaysWhenAMapIsWrittenAndReadBack) {
  EXPECT_TRUE(rc::check("a map and its document", [] {
    const MindMap map = *anyDamagedMap();
    RC_ASSERT(fingerprint(decodeDocument(encodeDocument(map))) == fingerprint(map));
  }));
  MindMap odd = mapOf({0});
  odd.nodes.update(0, [](Node& node) {
    node.title = QString(QChar(0xDC00));
    node.position = QPointF(std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::infinity());
  });
  EXPECT_EQ(fingerprint(decodeDocument(encodeDocument(odd))), fingerprint(odd));
}

TEST(MapFingerprint, IsTheSameForTheSameRecordsInOtherBlocks) {
  MindMap map = mapOfTopics(1'000);
  map.nodes.eraseIf([](const Node& node) { return node.id == topicId(3) || node.id == topicId(500); });
  MindMap copied = map;
  copied.nodes.clear();
  for (const Node& node : map.nodes) copied.nodes.append(node);
  EXPECT_EQ(fingerprint(copied), fingerprint(map));
}

TEST(MapFingerprint, TellsChangesApartAndForgetsNone) {
  EXPECT_TRUE(rc::check("a walk of commands", [](std::uint64_t seed) {
    EditorRig rig(*anyDamagedMap());
    RandomCommands commands(rig, seed);
    journal::MapFingerprint walking;
    for (int step = 0; step < 20; ++step) {
      const MindMap before = rig.map();
      const std::uint64_t beforeFingerprint = walking.of(before);
      commands.run();
      const std::uint64_t now = walking.of(rig.map());
      RC_ASSERT(now == fingerprint(rig.map()));
      RC_ASSERT((now == beforeFingerprint) == (rig.map() == before));
    }
  }));
}
