#pragma once

#include <map>
#include <optional>
#include <unordered_map>
#include <vector>

#include <QString>

#include "editor/journal/MapFingerprint.h"
#include "editor/versions/VersionRules.h"
#include "model/MindMap.h"
#include "platform/TextError.h"

namespace quilmora::versions {

// Why a version could not be kept or read, as a text to show.
class VersionError : public TextError {
 public:
  using TextError::TextError;
};

// One earlier version of a document.
struct Version {
  std::uint64_t number = 0;  // identifies it within its document
  TimePoint time;            // when the document first held it
  std::uint64_t topicCount = 0;
  QString title;

  bool operator==(const Version&) const = default;
};

// The earlier versions of documents, in a folder of the state folder. The records of a version are stored in blocks,
// and equal blocks of a document are stored once. For one thread at a time.
class VersionStore {
 public:
  explicit VersionStore(QString folder, std::uint64_t limit = maxVersionBytes)
      : m_folder(std::move(folder)), m_limit(limit) {}

  // Keeps the map, which this document has held since `time`, and removes what the rules no longer keep. A map that is
  // already a version stays one: the newest as it is, an older one with the new time. Throws VersionError.
  void keep(const QString& document, const MindMap& map, TimePoint time, TimePoint now);
  // Newest first. Unreadable versions are left out.
  std::vector<Version> list(const QString& document) const;
  // Throws VersionError.
  MindMap load(const QString& document, std::uint64_t number) const;
  // The size of all versions of all documents, in bytes.
  std::uint64_t size() const;

 private:
  // Where a block is stored.
  struct BlockPlace {
    std::uint64_t piece = 0;  // the file, by number
    std::uint64_t offset = 0;
    std::uint64_t length = 0;
    std::uint64_t hash[2] = {0, 0};

    auto operator<=>(const BlockPlace&) const = default;
  };
  struct BlockKey {
    std::uint64_t length, first, second;
    auto operator<=>(const BlockKey&) const = default;
  };
  struct Contents {
    Version version;
    QString document;
    QByteArray head;
    std::vector<BlockPlace> blocks[4];  // topics, connectors, relationships, regions
    std::uint64_t fingerprint = 0;      // of the map; 0 if the list has none

    std::set<std::uint64_t> pieces() const;
  };
  class Pieces;
  class Keeping;

  QString folderOf(const QString& document) const;
  static Contents read(const QString& path);
  static QByteArray bytesOf(const Contents& contents);
  // Of all documents if they have grown beyond the limit, else of this one.
  void prune(const QString& document, TimePoint now);

  QString m_folder;
  std::uint64_t m_limit;
  journal::MapFingerprint m_fingerprint;
  // Of the map that was kept last: a block it shares with the next map need not be examined.
  QString m_lastDocument;
  MindMap m_last;
  std::unordered_map<const void*, BlockPlace> m_lastPlaces;
};

}  // namespace quilmora::versions
