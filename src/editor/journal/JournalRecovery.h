#pragma once

#include <optional>

#include <QString>

#include "model/MindMap.h"

namespace quilmora::journal {

// What an ended process left of its work on a document.
struct Recovery {
  std::optional<MindMap> map;  // if it differs from what the document holds
  bool isSetAside = false;     // the journal, or its rest, is damaged or does not fit the document as it is
  QString problem;             // why the journal could not be read now; it stays

  bool foundAnything() const { return map.has_value() || isSetAside || !problem.isEmpty(); }
};

// Replays the journal of this document, which holds `base`, up to its last complete record. If the document was saved
// after some of the records, replay begins at the matching one. Leaves the journal in place until another is written
// over it, except for one without content, which is removed. The journal of a running process is left alone.
Recovery recover(const QString& folder, const QString& document, const MindMap& base);

}  // namespace quilmora::journal
