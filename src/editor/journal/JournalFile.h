#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include <QByteArray>
#include <QString>

#include "editor/journal/Bytes.h"

namespace quilmora {
class RegularFile;
}

namespace quilmora::journal {

// The file format of a journal: a header that says which map of which document it starts from, then records, each with
// its length, a checksum over all of it and the fingerprint of the resulting map. A record counts only if it is
// complete and at its own place in its own journal.

struct JournalHeader {
  std::uint64_t id = 0;    // of this journal alone
  std::uint64_t base = 0;  // fingerprint of the map that its document holds
  QString document;        // path of the document; empty for a map without one
};

struct JournalRecord {
  std::uint64_t fingerprint = 0;  // of the map after the record
  QByteArray delta;
};

QByteArray bytesOf(const JournalHeader& header);
// `number` counts the records of a journal from 0.
QByteArray bytesOf(const JournalRecord& record, const JournalHeader& header, std::uint64_t number);

// Reads a journal from its beginning. Needs no more memory than its longest record. Throws JournalError if the file is
// not a journal, and FileReadError if it cannot be read.
class JournalReader {
 public:
  explicit JournalReader(const QString& path);
  ~JournalReader();
  JournalReader(const JournalReader&) = delete;
  JournalReader& operator=(const JournalReader&) = delete;

  const JournalHeader& header() const { return m_header; }
  // The next complete record; nothing at the end, or if the rest is torn or damaged.
  std::optional<JournalRecord> next();
  // After the last record: more bytes follow that are not a record.
  bool hasRest() const { return m_at < m_size; }

 private:
  std::optional<QByteArray> read(std::uint64_t count);

  std::unique_ptr<RegularFile> m_file;
  std::uint64_t m_size = 0;
  std::uint64_t m_at = 0;  // end of the last complete record
  std::uint64_t m_number = 0;
  bool m_isBroken = false;
  JournalHeader m_header;
};

}  // namespace quilmora::journal
