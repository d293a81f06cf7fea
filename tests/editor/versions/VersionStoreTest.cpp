#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "editor/versions/VersionStore.h"
#include "support/EditorRig.h"
#include "support/QtPrinters.h"
#include "support/RandomMap.h"

using namespace quilmora;
using namespace quilmora::test;
using namespace quilmora::versions;
using namespace std::chrono_literals;

namespace {

constexpr TimePoint noon(std::chrono::seconds(1'773'489'600));
const QString document = QStringLiteral("/home/somebody/plan.mindmap");

class VersionStoreTest : public testing::Test {
 protected:
  QString folder() const { return m_home.filePath(QStringLiteral("versions")); }
  QStringList files() const {
    QStringList found;
    for (const QString& inner : QDir(folder()).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
      for (const QString& name : QDir(folder() + u'/' + inner).entryList(QDir::Files, QDir::Name)) found.append(name);
    return found;
  }
  QString onlyFolder() const {
    return folder() + u'/' + QDir(folder()).entryList(QDir::Dirs | QDir::NoDotAndDotDot).value(0);
  }
  static MindMap bigMap(int count) {
    MindMap map = mapOf({});
    for (int i = 0; i < count; ++i) map.nodes.append(topic(i));
    return map;
  }
  static MindMap withTitle(MindMap map, std::size_t index, const QString& title) {
    map.nodes.update(index, [&](Node& node) { node.title = title; });
    return map;
  }

 private:
  QTemporaryDir m_home;
};

}  // namespace

TEST_F(VersionStoreTest, ListsNoneOfADocumentThatIsNew) {
  EXPECT_TRUE(VersionStore(folder()).list(document).empty());
}

TEST_F(VersionStoreTest, KeepsAnyMapToTheLastBit) {
  EXPECT_TRUE(rc::check("a kept map", [](std::uint64_t seed) {
    const QTemporaryDir home;
    VersionStore store(home.path());
    const MindMap map = RandomMapMaker(seed).map(150, RandomMapMaker::Structure::damaged);
    store.keep(document, map, noon, noon);
    const std::vector<Version> found = store.list(document);
    RC_ASSERT(found.size() == 1U);
    RC_ASSERT(isVeryMap(store.load(document, found[0].number), map));
    RC_ASSERT(found[0].topicCount == 150U);
    RC_ASSERT(found[0].title == map.title);
    RC_ASSERT(found[0].time == noon);
  }));
}

TEST_F(VersionStoreTest, ListsTheNewestFirstAndEachDocumentForItself) {
  VersionStore store(folder());
  const MindMap map = bigMap(3);
  store.keep(document, map, noon, noon);
  store.keep(document, withTitle(map, 0, QStringLiteral("Bread")), noon + 1min, noon + 1min);
  store.keep(QStringLiteral("/home/somebody/other.mindmap"), bigMap(7), noon, noon + 1min);
  const std::vector<Version> found = VersionStore(folder()).list(document);
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0].time, noon + 1min);
  EXPECT_EQ(found[1].time, noon);
  EXPECT_EQ(store.load(document, found[0].number).nodes[0].title, QStringLiteral("Bread"));
  EXPECT_EQ(store.load(document, found[1].number), map);
}

TEST_F(VersionStoreTest, TakesTheSameMapOnce) {
  VersionStore store(folder());
  MindMap map = bigMap(300);
  store.keep(document, map, noon, noon);
  map.updatedAt += 1h;
  store.keep(document, map, noon + 1min, noon + 1min);
  EXPECT_EQ(VersionStore(folder()).list(document).size(), 1U);
}

TEST_F(VersionStoreTest, TakesTheSameMapOnceHoweverItsRecordsLieInBlocks) {
  MindMap map = bigMap(300);
  MindMap cut = bigMap(310);
  for (int i = 0; i < 10; ++i) cut.nodes.append(cut.nodes[static_cast<std::size_t>(i)]);
  cut.nodes.eraseIf([count = 0](const Node&) mutable { return count++ < 10; });
  map.nodes = {};
  for (const Node& node : cut.nodes) map.nodes.append(node);
  ASSERT_EQ(map, cut);
  ASSERT_NE(map.nodes.blockStart(1), cut.nodes.blockStart(1));
  VersionStore(folder()).keep(document, map, noon, noon);
  const std::uint64_t whole = VersionStore(folder()).size();
  VersionStore(folder()).keep(document, cut, noon + 1min, noon + 1min);
  EXPECT_EQ(VersionStore(folder()).list(document).size(), 1U);
  EXPECT_EQ(VersionStore(folder()).size(), whole);
}

TEST_F(VersionStoreTest, AMapThatCameBackIsOneVersionAndTheNewest) {
  VersionStore store(folder());
  const MindMap map = bigMap(100);
  const MindMap other = withTitle(map, 0, QStringLiteral("Bread"));
  store.keep(document, map, noon, noon);
  store.keep(document, other, noon + 1min, noon + 1min);
  store.keep(document, map, noon + 2min, noon + 2min);
  const std::vector<Version> found = VersionStore(folder()).list(document);
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0].time, noon + 2min);
  EXPECT_EQ(store.load(document, found[0].number), map);
  EXPECT_EQ(found[1].time, noon + 1min);
  EXPECT_EQ(store.load(document, found[1].number), other);
}

TEST_F(VersionStoreTest, StoresEqualBlocksOnceAlsoAfterAStart) {
  const MindMap map = bigMap(64 * 50);
  VersionStore(folder()).keep(document, map, noon, noon);
  const std::uint64_t whole = VersionStore(folder()).size();
  {
    VersionStore store(folder());
    store.keep(document, withTitle(map, 1'000, QStringLiteral("Bread")), noon + 1min, noon + 1min);
  }
  VersionStore store(folder());
  const std::uint64_t more = store.size() - whole;
  EXPECT_LT(more, whole / 10);
  EXPECT_EQ(store.load(document, store.list(document)[0].number).nodes[1'000].title, QStringLiteral("Bread"));
}

TEST_F(VersionStoreTest, LetsGoOfWhatTheRulesLetGoWithItsPieces) {
  VersionStore store(folder());
  MindMap map = bigMap(3);
  for (int i = 0; i < 30; ++i) {
    map = withTitle(map, 0, QString::number(i));
    store.keep(document, map, noon + std::chrono::seconds(i), noon + std::chrono::seconds(i));
  }
  EXPECT_EQ(store.list(document).size(), 20U);
  EXPECT_EQ(files().filter(QStringLiteral(".blocks")).size(), 20);
}

TEST_F(VersionStoreTest, KeepsPiecesThatAYoungerVersionNeeds) {
  VersionStore store(folder());
  const MindMap map = bigMap(64 * 4);
  for (int i = 0; i < 30; ++i) {
    const TimePoint time = noon + std::chrono::seconds(i);
    store.keep(document, withTitle(map, 0, QString::number(i)), time, time);
  }
  for (const Version& version : store.list(document))
    EXPECT_EQ(store.load(document, version.number).nodes[200].title, map.nodes[200].title);
}

TEST_F(VersionStoreTest, StaysBelowItsLimitOfAllDocuments) {
  constexpr std::uint64_t limit = 100'000;
  VersionStore store(folder(), limit);
  RandomMapMaker random(7);
  for (int i = 0; i < 40; ++i) {
    const TimePoint time = noon + std::chrono::hours(i);
    const MindMap map = random.map(60, RandomMapMaker::Structure::forest);
    store.keep(i % 2 == 0 ? document : QStringLiteral("/other"), map, time, time);
    ASSERT_LE(store.size(), limit);
  }
  EXPECT_GT(store.list(document).size(), 1U);
}

TEST_F(VersionStoreTest, ADamagedVersionIsRefusedAndTheOthersStand) {
  VersionStore store(folder());
  const MindMap map = bigMap(64 * 3);
  store.keep(document, map, noon, noon);
  store.keep(document, withTitle(map, 0, QStringLiteral("Bread")), noon + 1min, noon + 1min);
  const std::vector<Version> found = store.list(document);
  ASSERT_EQ(found.size(), 2U);
  RandomMapMaker random(3);
  for (const QString& name : files()) {
    QFile file(onlyFolder() + u'/' + name);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const QByteArray bytes = file.readAll();
    for (int round = 0; round < 30; ++round) {
      QByteArray damaged = bytes;
      const int place = random.below(static_cast<int>(bytes.size()));
      damaged[place] = static_cast<char>(damaged[place] ^ (1 + random.below(255)));
      file.seek(0);
      file.write(damaged);
      file.flush();
      for (const Version& version : found) {
        const MindMap expected = version.time == noon ? map : withTitle(map, 0, QStringLiteral("Bread"));
        try {
          EXPECT_EQ(VersionStore(folder()).load(document, version.number), expected);
        } catch (const VersionError&) {
        }
      }
    }
    file.seek(0);
    file.write(bytes);
  }
  EXPECT_EQ(VersionStore(folder()).list(document).size(), 2U);
}

TEST_F(VersionStoreTest, TellsWhereItCannotWrite) {
  QFile blocked(folder());
  ASSERT_TRUE(blocked.open(QIODevice::WriteOnly));
  blocked.close();
  EXPECT_THROW(VersionStore(folder()).keep(document, bigMap(3), noon, noon), VersionError);
}
