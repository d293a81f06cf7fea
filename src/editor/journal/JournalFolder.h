#pragma once

#include <QString>

namespace quilmora::journal {

// The path of a document's journal in the folder of journals, or of the journal of a map without a document if
// `document` is empty.
QString journalPath(const QString& folder, const QString& document);

// Whether a running process holds the journal at this path.
bool isHeld(const QString& path);

// Moves what cannot be used into a folder next to it, because it may still contain somebody's work; the last few are
// kept there. With `staysInPlace` it also stays here until another journal is written over it.
void setAside(const QString& path, bool staysInPlace = false);

}  // namespace quilmora::journal
