#pragma once

#include <cstdlib>

#include <QFile>
#include <QString>
#include <sys/mman.h>
#include <unistd.h>

#include "editor/journal/JournalFile.h"
#include "editor/journal/MapDelta.h"
#include "model/MindMapDocument.h"
#include "platform/RegularFile.h"
#include "support/SmallMap.h"

namespace quilmora::test {

// The map that hostile deltas are applied to.
inline MindMap journalBase() {
  MindMap map = mapOf({0, 1, 2, 3, 4}, {{0, 1}, {0, 2}, {2, 3}});
  map.relationships.append({edgeId(900), topicId(0), topicId(4), QStringLiteral("to"), QStringLiteral("#888888"), {}});
  map.regions.append({edgeId(901), QStringLiteral("Home"), QStringLiteral("#FF0000"), QRectF(0, 0, 10, 10)});
  return map;
}

// Any bytes give an error, or a map that can be written and that its own delta leads to.
inline bool deltaHolds(QByteArrayView delta) {
  const MindMap base = journalBase();
  MindMap map;
  try {
    map = journal::appliedDelta(base, delta);
  } catch (const journal::JournalError&) {
    return true;
  }
  const QByteArray own = journal::deltaBetween(base, map);
  const MindMap again = own.isEmpty() ? base : journal::appliedDelta(base, own);
  return again == map && base == journalBase() &&
         encodeDocument(decodeDocument(encodeDocument(map))) == encodeDocument(map);
}

// Any bytes are read as a journal to their end, or refused.
inline bool fileHolds(QByteArrayView bytes) {
  const int file = ::memfd_create("journal", MFD_CLOEXEC);
  if (file < 0 || ::write(file, bytes.data(), static_cast<std::size_t>(bytes.size())) != bytes.size()) std::abort();
  qsizetype taken = 0;
  try {
    journal::JournalReader reader(QStringLiteral("/proc/self/fd/%1").arg(file));
    while (const auto record = reader.next()) taken += record->delta.size();
  } catch (const journal::JournalError&) {
  } catch (const FileReadError&) {
  }
  ::close(file);
  return taken <= bytes.size();
}

// Used by the fuzzer: files as they are, and records with correct checksums.
inline bool journalHolds(QByteArrayView bytes) {
  if (bytes.startsWith("QMJRNL")) return fileHolds(bytes);
  const journal::JournalHeader header{1, 2, QStringLiteral("/plan.mindmap")};
  const QByteArray file = journal::bytesOf(header) + journal::bytesOf({3, bytes.toByteArray()}, header, 0);
  return deltaHolds(bytes) && fileHolds(file);
}

}  // namespace quilmora::test
