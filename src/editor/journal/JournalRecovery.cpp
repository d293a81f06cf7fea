#include "editor/journal/JournalRecovery.h"

#include <new>

#include <QFile>
#include <QFileInfo>

#include "editor/journal/JournalFile.h"
#include "editor/journal/JournalFolder.h"
#include "editor/journal/MapDelta.h"
#include "editor/journal/MapFingerprint.h"
#include "platform/RegularFile.h"

namespace quilmora::journal {

namespace {

class Following {
 public:
  Following(JournalReader& reader, const MindMap& base)
      : m_reader(reader), m_map(base), m_start(m_fingerprint.of(base)), m_isFound(m_start == reader.header().base) {}

  // Whether the document's current content equals one of the maps in the journal.
  bool isFound() const { return m_isFound; }
  bool isDamaged() const { return m_isDamaged || m_reader.hasRest(); }
  const MindMap& map() const { return m_map; }

  void follow() {
    while (const std::optional<JournalRecord> record = m_reader.next()) {
      if (!m_isFound)
        m_isFound = record->fingerprint == m_start;
      else if (!take(*record))
        return;
    }
  }

 private:
  bool take(const JournalRecord& record) {
    try {
      MindMap next = appliedDelta(m_map, record.delta);
      m_isDamaged = m_fingerprint.of(next) != record.fingerprint;
      if (!m_isDamaged) m_map = std::move(next);
    } catch (const JournalError&) {
      m_isDamaged = true;
    }
    return !m_isDamaged;
  }

  JournalReader& m_reader;
  MindMap m_map;
  MapFingerprint m_fingerprint;
  std::uint64_t m_start;
  bool m_isFound;
  bool m_isDamaged = false;
};

}  // namespace

Recovery recover(const QString& folder, const QString& document, const MindMap& base) {
  const QString path = journalPath(folder, document);
  const QFileInfo file(path);
  if ((!file.exists() && !file.isSymLink()) || isHeld(path)) return {};
  Recovery recovery;
  if (file.isSymLink() || !file.isFile()) {
    setAside(path);
    recovery.isSetAside = true;
    return recovery;
  }
  try {
    JournalReader reader(path);
    Following following(reader, base);
    const bool isOurs = reader.header().document == document;
    if (isOurs) following.follow();
    recovery.isSetAside = !isOurs || !following.isFound() || following.isDamaged();
    if (isOurs && following.isFound() && !(following.map() == base)) recovery.map = following.map();
  } catch (const JournalError&) {
    recovery.isSetAside = true;
  } catch (const FileReadError& error) {
    recovery.problem = error.message();
    return recovery;
  } catch (const std::bad_alloc&) {
    recovery.problem = QStringLiteral("There is not enough memory for it.");
    return recovery;
  }
  if (recovery.isSetAside)
    setAside(path, recovery.map.has_value());
  else if (!recovery.map)
    QFile::remove(path);
  return recovery;
}

}  // namespace quilmora::journal
