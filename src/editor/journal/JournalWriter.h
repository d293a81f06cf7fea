#pragma once

#include <QString>

#include "editor/journal/JournalFile.h"
#include "editor/journal/MapFingerprint.h"
#include "model/MindMap.h"

namespace quilmora::journal {

// How many bytes a journal may have for a document of this map; the document itself is larger.
std::uint64_t journalLimit(const MindMap& map);

// Keeps the journal of one open map on disk: the difference from the map in its document to the current map. Whatever
// the calls return, the file on disk is complete up to its last record, and flushed. For one thread at a time. Other
// processes leave the journal alone while this object holds it. The calls return an empty text, or why the disk does
// not hold what they were given; the next call then tries again.
class JournalWriter {
 public:
  explicit JournalWriter(QString folder) : m_folder(std::move(folder)) {}
  // Leaves the journal in place.
  ~JournalWriter();
  JournalWriter(const JournalWriter&) = delete;
  JournalWriter& operator=(const JournalWriter&) = delete;

  // From now on another map is open, and its document holds `base`. The journal of the previous map is removed. With
  // `takesOver`, a journal that an ended process left for this document is replaced or removed as if it were our own.
  QString start(const QString& document, const MindMap& base, bool takesOver);
  // The document at this place now holds `base`. What was recorded beyond it stays recorded.
  QString moveBase(const QString& document, const MindMap& base);
  // The current map.
  QString record(const MindMap& now);
  // Nothing worth keeping differs from the document: removes the journal.
  void clear();

  // Of the journal on disk.
  std::uint64_t size() const { return m_size; }

 private:
  QString path() const;
  bool isOpen() const { return m_descriptor >= 0; }
  void close();
  void remove();
  // Replaces the journal with a new one that has one record.
  QString rewrite(const MindMap& now);
  QString append(const MindMap& now, const QByteArray& delta);

  QString m_folder;
  QString m_document;
  MindMap m_base;
  MindMap m_last;  // as recorded; the base if there is no journal
  MapFingerprint m_fingerprint;
  int m_descriptor = -1;
  JournalHeader m_header;
  std::uint64_t m_count = 0;
  std::uint64_t m_size = 0;
  std::uint64_t m_limit = 0;
  bool m_ownsFile = false;  // whatever is at the path is ours to replace
};

}  // namespace quilmora::journal
