#pragma once

#include <optional>

#include <QString>

#include "model/MindMap.h"

namespace quilmora::journal {

// What an ended process left of its work on a document.
struct Recovery {
  std::optional<MindMap> map;  // where it differs from what the document holds
  bool isSetAside = false;     // the journal, or its rest, does not belong to this document as it stands, or is damaged
  QString problem;             // the journal could not be read now, and stays

  bool foundAnything() const { return map.has_value() || isSetAside || !problem.isEmpty(); }
};

// Follows the journal of this document, which holds `base`, to its last whole record. A document that was saved after
// some of the records begins at the one that led to it. Leaves the journal in its place until another is written over
// it, but for one that tells nothing, which goes. A journal of a living process is left alone.
Recovery recover(const QString& folder, const QString& document, const MindMap& base);

}  // namespace quilmora::journal
