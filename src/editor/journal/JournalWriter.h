#pragma once

#include <QString>

#include "editor/journal/JournalFile.h"
#include "editor/journal/MapFingerprint.h"
#include "model/MindMap.h"

namespace quilmora::journal {

// How many bytes a journal may have beside a document of this map, whose own size is above that.
std::uint64_t journalLimit(const MindMap& map);

// Keeps the journal of one open map on the disk: what leads from the map that its document holds to the map as it is
// now. Whatever it returns, the file on the disk is whole up to its last record, and flushed. Not for two threads at a
// time. While it keeps a journal, other processes leave it alone. These calls return an empty text, or why the disk
// does not hold what they were given; the next call then tries again.
class JournalWriter {
 public:
  explicit JournalWriter(QString folder) : m_folder(std::move(folder)) {}
  // Leaves the journal where it is.
  ~JournalWriter();
  JournalWriter(const JournalWriter&) = delete;
  JournalWriter& operator=(const JournalWriter&) = delete;

  // The open map is another one from now on, and its document holds `base`. The journal of the map before goes. With
  // `takesOver` a journal that an ended process left for this document is replaced or removed as if it were our own.
  QString start(const QString& document, const MindMap& base, bool takesOver);
  // The document holds `base` now, at this place. What was recorded beyond it stays recorded.
  QString moveBase(const QString& document, const MindMap& base);
  // The map is this now.
  QString record(const MindMap& now);
  // Nothing differs from the document that would be missed: the journal goes.
  void clear();

  // Of the journal on the disk.
  std::uint64_t size() const { return m_size; }

 private:
  QString path() const;
  bool isOpen() const { return m_descriptor >= 0; }
  void close();
  void remove();
  // A new journal with one record takes the place of the old one.
  QString rewrite(const MindMap& now);
  QString append(const MindMap& now, const QByteArray& delta);

  QString m_folder;
  QString m_document;
  MindMap m_base;
  MindMap m_last;  // as recorded; the base where there is no journal
  MapFingerprint m_fingerprint;
  int m_descriptor = -1;
  JournalHeader m_header;
  std::uint64_t m_count = 0;
  std::uint64_t m_size = 0;
  std::uint64_t m_limit = 0;
  bool m_ownsFile = false;  // what lies at the path is ours to replace
};

}  // namespace quilmora::journal
