#pragma once

#include <QString>

namespace quilmora::journal {

// Where the journal of a document lies in the folder of journals; of a map without a document where `document` is
// empty.
QString journalPath(const QString& folder, const QString& document);

// Whether a living process keeps the journal at this path.
bool isHeld(const QString& path);

// Moves what cannot be used into a folder beside it, because it may still hold somebody's work; the last few stay
// there. With `staysInPlace` it is there too until another journal is written over it.
void setAside(const QString& path, bool staysInPlace = false);

}  // namespace quilmora::journal
