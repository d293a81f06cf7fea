#pragma once

#include <cstddef>
#include <optional>

#include <QUuid>

#include "model/SharedArray.h"

namespace quilmora {

// The index of the first record with this id, or nothing. Walks the array; to find topics, a MapIndex is faster.
template <class Record>
std::optional<std::size_t> ordinalOf(const SharedArray<Record>& records, const QUuid& id) {
  std::size_t ordinal = 0;
  for (const Record& record : records) {
    if (record.id == id) return ordinal;
    ++ordinal;
  }
  return std::nullopt;
}

// A copy of the first record with this id, or nothing.
template <class Record>
std::optional<Record> recordByID(const SharedArray<Record>& records, const QUuid& id) {
  for (const Record& record : records)
    if (record.id == id) return record;
  return std::nullopt;
}

// Removes every record with this id.
template <class Record>
void eraseByID(SharedArray<Record>& records, const QUuid& id) {
  records.eraseIf([&](const Record& record) { return record.id == id; });
}

}  // namespace quilmora
