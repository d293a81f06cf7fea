#include "editor/versions/VersionStore.h"

#include <algorithm>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "editor/journal/MapDelta.h"
#include "platform/FileWriter.h"
#include "platform/RegularFile.h"

namespace quilmora::versions {

namespace {

using journal::ByteReader;
using journal::ByteWriter;
using journal::JournalError;

constexpr QByteArrayView magic("QMVERS01");
constexpr qsizetype checksumSize = 16;
constexpr qsizetype maxListLength = qsizetype{1} << 30;

const QString listEnding = QStringLiteral(".version");
const QString pieceEnding = QStringLiteral(".blocks");

QByteArray checksum(QByteArrayView bytes) {
  ByteWriter out;
  out.putFixed(journal::hashOf(bytes, 1), 8);
  out.putFixed(journal::hashOf(bytes, 2), 8);
  return out.take();
}

QString fileName(std::uint64_t number, const QString& ending) {
  return QStringLiteral("%1").arg(number, 12, 10, QLatin1Char('0')) + ending;
}

std::uint64_t numberOf(const QString& name) {
  return name.section(u'.', 0, 0).toULongLong();
}

QStringList namesIn(const QString& folder, const QString& ending) {
  return QDir(folder).entryList({u'*' + ending}, QDir::Files, QDir::Name);
}

bool isNewer(const Version& a, const Version& b) {
  return std::pair(a.time, a.number) > std::pair(b.time, b.number);
}

[[noreturn]] void failReading() {
  throw VersionError(QStringLiteral("this version is damaged"));
}

}  // namespace

std::set<std::uint64_t> VersionStore::Contents::pieces() const {
  std::set<std::uint64_t> pieces;
  for (const auto& part : blocks)
    for (const BlockPlace& place : part) pieces.insert(place.piece);
  return pieces;
}

QString VersionStore::folderOf(const QString& document) const {
  const QByteArray hash = QCryptographicHash::hash(document.toUtf8(), QCryptographicHash::Sha256);
  return m_folder + u'/' + QString::fromLatin1(hash.first(12).toHex());
}

QByteArray VersionStore::bytesOf(const Contents& contents) {
  ByteWriter out;
  out.put(contents.document);
  out.put(contents.version.time);
  out.put(contents.version.topicCount);
  out.put(contents.version.title);
  out.put(static_cast<std::uint64_t>(contents.head.size()));
  QByteArray bytes = magic.toByteArray() + out.take() + contents.head;
  for (const auto& part : contents.blocks) {
    out.put(static_cast<std::uint64_t>(part.size()));
    for (const BlockPlace& place : part) {
      for (const std::uint64_t number : {place.piece, place.offset, place.length}) out.put(number);
      for (const std::uint64_t hash : place.hash) out.putFixed(hash, 8);
    }
  }
  out.putFixed(contents.fingerprint, 8);
  bytes += out.take();
  return bytes + checksum(bytes);
}

VersionStore::Contents VersionStore::read(const QString& path) try {
  const QByteArray file = readWholeFile(path, maxListLength);
  const qsizetype length = file.size() - checksumSize;
  if (length < magic.size() || !file.startsWith(magic)) failReading();
  const QByteArrayView bytes = QByteArrayView(file).first(length);
  if (checksum(bytes) != QByteArrayView(file).last(checksumSize)) failReading();
  ByteReader in(bytes.sliced(magic.size()));
  Contents contents;
  contents.version.number = numberOf(QFileInfo(path).fileName());
  in.take(contents.document);
  in.take(contents.version.time);
  contents.version.topicCount = in.takeNumber();
  in.take(contents.version.title);
  contents.head = in.takeBytes(in.takeNumber()).toByteArray();
  for (auto& part : contents.blocks) {
    // Each takes at least some bytes, so that no number allocates memory that the file does not fill.
    const std::uint64_t count = in.takeNumber();
    for (std::uint64_t i = 0; i < count; ++i) {
      BlockPlace& place = part.emplace_back();
      for (std::uint64_t* number : {&place.piece, &place.offset, &place.length}) *number = in.takeNumber();
      for (std::uint64_t& hash : place.hash) hash = in.takeFixed(8);
    }
  }
  // The earliest lists had none.
  if (!in.atEnd()) contents.fingerprint = in.takeFixed(8);
  if (!in.atEnd()) failReading();
  return contents;
} catch (const JournalError&) {
  failReading();
} catch (const FileReadError& error) {
  throw VersionError(error.message());
}

// The files of a document's blocks, opened as needed.
class VersionStore::Pieces {
 public:
  explicit Pieces(QString folder) : m_folder(std::move(folder)) {}

  // Throws VersionError if the bytes are not what was written.
  QByteArray bytesAt(const BlockPlace& place) {
    std::unique_ptr<QFile>& piece = m_files[place.piece];
    if (!piece) {
      const QString path = m_folder + u'/' + fileName(place.piece, pieceEnding);
      piece = std::make_unique<QFile>(path);
      if (!QFileInfo(path).isFile() || !piece->open(QIODevice::ReadOnly)) failReading();
    }
    const auto size = static_cast<std::uint64_t>(piece->size());
    if (place.length > size || place.offset > size - place.length) failReading();
    QByteArray bytes;
    if (piece->seek(static_cast<qint64>(place.offset))) bytes = piece->read(static_cast<qint64>(place.length));
    if (static_cast<std::uint64_t>(bytes.size()) != place.length || journal::hashOf(bytes, 1) != place.hash[0] ||
        journal::hashOf(bytes, 2) != place.hash[1])
      failReading();
    return bytes;
  }

 private:
  QString m_folder;
  std::map<std::uint64_t, std::unique_ptr<QFile>> m_files;
};

// One call of keep(): finds the places of all blocks, and writes those that are not stored yet.
class VersionStore::Keeping {
 public:
  Keeping(VersionStore& store, const QString& document) : m_store(store), m_folder(store.folderOf(document)) {
    for (const QString& name : namesIn(m_folder, listEnding)) {
      m_number = std::max(m_number, numberOf(name) + 1);
      try {
        const Contents contents = read(m_folder + u'/' + name);
        m_kept.push_back({contents.version, contents.fingerprint});
        for (const auto& part : contents.blocks)
          for (const BlockPlace& place : part) m_known.emplace(keyOf(place), place);
      } catch (const VersionError&) {
        continue;
      }
    }
    std::ranges::stable_sort(m_kept, isNewer, &Kept::version);
    for (const QString& name : namesIn(m_folder, pieceEnding)) m_number = std::max(m_number, numberOf(name) + 1);
    if (store.m_lastDocument != document) store.m_lastPlaces.clear();
  }

  void run(const QString& document, const MindMap& map, TimePoint time) {
    Contents contents;
    contents.fingerprint = m_store.m_fingerprint.of(map);
    if (const std::optional<Version> twin = twinOf(map, contents.fingerprint)) {
      if (twin->time < time && *twin != m_kept.front().version) moveUp(*twin, time);
      return;
    }
    contents.document = document;
    contents.version = {m_number, time, map.nodes.size(), map.title};
    contents.head = journal::bytesOfHead(map);
    contents.blocks[0] = placesOf(map.nodes);
    contents.blocks[1] = placesOf(map.edges);
    contents.blocks[2] = placesOf(map.relationships);
    contents.blocks[3] = placesOf(map.regions);
    if (!QDir().mkpath(m_folder)) throw VersionError(QStringLiteral("the folder %1 cannot be made").arg(m_folder));
    // The list is written last: what is in no list is not a version.
    if (!m_fresh.isEmpty()) write(m_folder + u'/' + fileName(m_number, pieceEnding), m_fresh);
    write(listPath(m_number), bytesOf(contents));
    m_store.m_lastDocument = document;
    m_store.m_last = map;
    m_store.m_lastPlaces = std::move(m_places);
  }

 private:
  struct Kept {
    Version version;
    std::uint64_t fingerprint;
  };

  static BlockKey keyOf(const BlockPlace& place) { return {place.length, place.hash[0], place.hash[1]}; }
  QString listPath(std::uint64_t number) const { return m_folder + u'/' + fileName(number, listEnding); }

  void moveUp(const Version& version, TimePoint time) const {
    Contents contents = read(listPath(version.number));
    contents.version.time = time;
    write(listPath(version.number), bytesOf(contents));
  }

  // The version that already holds exactly this map, apart from the time of its last change.
  std::optional<Version> twinOf(const MindMap& map, std::uint64_t fingerprint) const {
    for (const Kept& kept : m_kept)
      if (kept.fingerprint == fingerprint && holds(kept.version.number, map)) return kept.version;
    return std::nullopt;
  }

  // Different fingerprints mean different maps, but equal ones are no proof of equal maps.
  bool holds(std::uint64_t number, const MindMap& map) const try {
    const Contents contents = read(listPath(number));
    MindMap withHead = map;
    journal::readHead(contents.head, withHead);
    Pieces pieces(m_folder);
    return withHead == map && holds(pieces, contents.blocks[0], map.nodes) &&
           holds(pieces, contents.blocks[1], map.edges) && holds(pieces, contents.blocks[2], map.relationships) &&
           holds(pieces, contents.blocks[3], map.regions);
  } catch (const VersionError&) {
    return false;
  } catch (const JournalError&) {
    return false;
  }

  // Independent of how the records are cut into blocks.
  template <class Record>
  static bool holds(Pieces& pieces, const std::vector<BlockPlace>& places, const SharedArray<Record>& records) {
    auto at = records.begin();
    for (const BlockPlace& place : places) {
      SharedArray<Record> block;
      journal::readBlock(pieces.bytesAt(place), block);
      for (const Record& record : block)
        if (at == records.end() || !(*at++ == record)) return false;
    }
    return at == records.end();
  }

  template <class Record>
  std::vector<BlockPlace> placesOf(const SharedArray<Record>& records) {
    std::vector<BlockPlace> places;
    places.reserve(records.blockCount());
    for (std::size_t k = 0; k < records.blockCount(); ++k) {
      const auto& block = records.block(k);
      const auto last = m_store.m_lastPlaces.find(&block);
      places.push_back(last != m_store.m_lastPlaces.end() ? last->second : placeOf(journal::bytesOfBlock(block)));
      m_places.emplace(&block, places.back());
    }
    return places;
  }

  BlockPlace placeOf(const QByteArray& bytes) {
    BlockPlace place{m_number,
                     static_cast<std::uint64_t>(m_fresh.size()),
                     static_cast<std::uint64_t>(bytes.size()),
                     {journal::hashOf(bytes, 1), journal::hashOf(bytes, 2)}};
    const auto [known, isFresh] = m_known.emplace(keyOf(place), place);
    if (isFresh) m_fresh += bytes;
    return known->second;
  }

  static void write(const QString& path, const QByteArray& bytes) {
    const Outcome outcome = DiskFileWriter().write(path, bytes);
    if (!outcome.isDone()) throw VersionError(outcome.reason());
  }

  VersionStore& m_store;
  QString m_folder;
  std::uint64_t m_number = 1;
  std::vector<Kept> m_kept;  // newest first
  std::map<BlockKey, BlockPlace> m_known;
  std::unordered_map<const void*, BlockPlace> m_places;
  QByteArray m_fresh;
};

void VersionStore::keep(const QString& document, const MindMap& map, TimePoint time, TimePoint now) {
  Keeping(*this, document).run(document, map, time);
  prune(document, now);
}

std::vector<Version> VersionStore::list(const QString& document) const {
  const QString folder = folderOf(document);
  std::vector<Version> versions;
  for (const QString& name : namesIn(folder, listEnding)) {
    try {
      const Contents contents = read(folder + u'/' + name);
      if (contents.document == document) versions.push_back(contents.version);
    } catch (const VersionError&) {
      continue;
    }
  }
  std::ranges::stable_sort(versions, isNewer);
  return versions;
}

MindMap VersionStore::load(const QString& document, std::uint64_t number) const try {
  const QString folder = folderOf(document);
  const Contents contents = read(folder + u'/' + fileName(number, listEnding));
  if (contents.document != document) failReading();
  Pieces pieces(folder);
  MindMap map;
  journal::readHead(contents.head, map);
  const auto readPart = [&](const std::vector<BlockPlace>& places, auto& records) {
    for (const BlockPlace& place : places) journal::readBlock(pieces.bytesAt(place), records);
  };
  readPart(contents.blocks[0], map.nodes);
  readPart(contents.blocks[1], map.edges);
  readPart(contents.blocks[2], map.relationships);
  readPart(contents.blocks[3], map.regions);
  return map;
} catch (const JournalError&) {
  failReading();
}

std::uint64_t VersionStore::size() const {
  std::uint64_t total = 0;
  for (const QFileInfo& folder : QDir(m_folder).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot))
    for (const QFileInfo& file : QDir(folder.filePath()).entryInfoList(QDir::Files))
      total += static_cast<std::uint64_t>(file.size());
  return total;
}

void VersionStore::prune(const QString& document, TimePoint now) {
  const bool isOfAll = size() > m_limit;
  struct Kept {
    QString folder;
    QString list;
  };
  std::vector<Kept> kept;
  std::vector<VersionSize> sizes;
  std::map<std::uint64_t, std::uint64_t> bytesOfPieces;
  std::map<std::uint64_t, QString> piecePaths;
  // Pieces of all documents are numbered together here.
  std::uint64_t documentNumber = 0;
  for (const QFileInfo& folder : QDir(m_folder).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    if (!isOfAll && folder.filePath() != folderOf(document)) continue;
    const std::uint64_t first = ++documentNumber << 40;
    std::vector<Contents> all;
    std::vector<TimePoint> times;
    for (const QString& name : namesIn(folder.filePath(), listEnding)) {
      const QString path = folder.filePath() + u'/' + name;
      try {
        all.push_back(read(path));
        times.push_back(all.back().version.time);
      } catch (const VersionError&) {
        QFile::remove(path);
      }
    }
    for (const QString& name : namesIn(folder.filePath(), pieceEnding)) {
      const QString path = folder.filePath() + u'/' + name;
      bytesOfPieces[first + numberOf(name)] = static_cast<std::uint64_t>(QFileInfo(path).size());
      piecePaths[first + numberOf(name)] = path;
    }
    const std::vector<bool> stays = versionsThatStay(times, now);
    for (std::size_t i = 0; i < all.size(); ++i) {
      const QString path = folder.filePath() + u'/' + fileName(all[i].version.number, listEnding);
      if (!stays[i]) {
        QFile::remove(path);
        continue;
      }
      VersionSize size{times[i], static_cast<std::uint64_t>(QFileInfo(path).size()), {}};
      for (const std::uint64_t piece : all[i].pieces()) size.pieces.insert(first + piece);
      kept.push_back({folder.filePath(), path});
      sizes.push_back(std::move(size));
    }
  }
  std::set<std::size_t> going;
  for (const std::size_t i : versionsBeyond(m_limit, sizes, bytesOfPieces)) {
    QFile::remove(kept[i].list);
    going.insert(i);
  }
  std::set<std::uint64_t> needed;
  for (std::size_t i = 0; i < sizes.size(); ++i)
    if (!going.contains(i)) needed.insert(sizes[i].pieces.begin(), sizes[i].pieces.end());
  for (const auto& [number, path] : piecePaths)
    if (!needed.contains(number)) QFile::remove(path);
  for (const Kept& one : kept) QDir().rmdir(one.folder);
}

}  // namespace quilmora::versions
