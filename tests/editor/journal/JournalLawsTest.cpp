#include <algorithm>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "editor/RandomCommands.h"
#include "editor/journal/JournalFolder.h"
#include "editor/journal/JournalRecovery.h"
#include "editor/journal/JournalWriter.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

const QString document = QStringLiteral("/home/somebody/plan.mindmap");

QByteArray contentOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void put(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  RC_ASSERT(file.open(QIODevice::WriteOnly));
  RC_ASSERT(file.write(bytes) == bytes.size());
}

// The journal of random commands on a map, and the intermediate maps with the journal's size at each.
struct Walk {
  explicit Walk(const QString& folder, std::uint64_t seed, int steps = 12)
      : path(journal::journalPath(folder, document)) {
    // A document stores only whole seconds.
    const MindMap start = decodeDocument(encodeDocument(*anyDamagedMap()));
    EditorRig rig(start);
    RandomCommands commands(rig, seed);
    journal::JournalWriter writer(folder);
    writer.start(document, start, false);
    maps.push_back(start);
    sizes.push_back(0);
    for (int step = 0; step < steps; ++step) {
      commands.run();
      RC_ASSERT(writer.record(rig.map()) == QString());
      if (writer.size() == sizes.back()) continue;
      // A journal that grew too long was rewritten as a single record.
      if (writer.size() < sizes.back()) {
        maps.resize(1);
        sizes.resize(1);
      }
      maps.push_back(rig.map());
      sizes.push_back(writer.size());
    }
    bytes = contentOf(path);
    RC_ASSERT(static_cast<std::uint64_t>(bytes.size()) == sizes.back());
  }

  // The map after the last record that ends within this many bytes.
  const MindMap& mapAt(qsizetype size) const {
    std::size_t last = 0;
    for (std::size_t i = 0; i < sizes.size(); ++i)
      if (sizes[i] <= static_cast<std::uint64_t>(size)) last = i;
    return maps[last];
  }

  QString path;
  std::vector<MindMap> maps;
  std::vector<std::uint64_t> sizes;
  QByteArray bytes;
};

MindMap recovered(const QString& folder, const MindMap& base) {
  return journal::recover(folder, document, base).map.value_or(base);
}

}  // namespace

TEST(JournalLaws, ReplayingGivesTheVeryMap) {
  EXPECT_TRUE(rc::check("replaying random commands", [](std::uint64_t seed) {
    const QTemporaryDir folder;
    const Walk walk(folder.path(), seed, 30);
    RC_ASSERT(recovered(folder.path(), walk.maps.front()) == walk.maps.back());
  }));
}

TEST(JournalLaws, CutAnywhereItGivesTheMapOfTheLastWholeRecord) {
  EXPECT_TRUE(rc::check("a torn journal", [](std::uint64_t seed) {
    const QTemporaryDir folder;
    const Walk walk(folder.path(), seed);
    RandomMapMaker random(seed);
    for (int round = 0; round < 20; ++round) {
      const qsizetype size = random.below(static_cast<int>(walk.bytes.size()) + 1);
      put(walk.path, walk.bytes.first(size));
      RC_ASSERT(recovered(folder.path(), walk.maps.front()) == walk.mapAt(size));
      QFile::remove(walk.path);
    }
  }));
}

TEST(JournalLaws, AChangedByteNeverGivesAHalfAppliedRecord) {
  EXPECT_TRUE(rc::check("a damaged journal", [](std::uint64_t seed) {
    const QTemporaryDir folder;
    const Walk walk(folder.path(), seed);
    if (walk.bytes.isEmpty()) return;
    RandomMapMaker random(seed);
    for (int round = 0; round < 20; ++round) {
      QByteArray damaged = walk.bytes;
      const qsizetype place = random.below(static_cast<int>(damaged.size()));
      damaged[place] = static_cast<char>(damaged[place] ^ (1 + random.below(255)));
      put(walk.path, damaged);
      const journal::Recovery recovery = journal::recover(folder.path(), document, walk.maps.front());
      RC_ASSERT(recovery.isSetAside);
      RC_ASSERT(recovery.map.value_or(walk.maps.front()) == walk.mapAt(place));
      QFile::remove(walk.path);
    }
  }));
}

TEST(JournalLaws, ADocumentSavedOnTheWayGoesOnFromThere) {
  EXPECT_TRUE(rc::check("a save between the records", [](std::uint64_t seed) {
    const QTemporaryDir folder;
    const Walk walk(folder.path(), seed);
    for (const MindMap& saved : walk.maps) {
      put(walk.path, walk.bytes);
      const MindMap base = decodeDocument(encodeDocument(saved));
      const journal::Recovery recovery = journal::recover(folder.path(), document, base);
      RC_ASSERT(!recovery.isSetAside);
      RC_ASSERT(recovery.map.value_or(base) == walk.maps.back());
    }
  }));
}

TEST(JournalLaws, AMapOnNoRecordsWayIsLeftAlone) {
  EXPECT_TRUE(rc::check("a stale journal", [](std::uint64_t seed) {
    const QTemporaryDir folder;
    const Walk walk(folder.path(), seed);
    if (walk.bytes.isEmpty()) return;
    MindMap other = walk.maps.front();
    other.title += QStringLiteral(" of somebody else");
    const journal::Recovery recovery = journal::recover(folder.path(), document, other);
    const bool wasOnTheWay = std::ranges::find(walk.maps, other) != walk.maps.end();
    RC_ASSERT(wasOnTheWay || (!recovery.map && recovery.isSetAside && !QFile::exists(walk.path)));
  }));
}
