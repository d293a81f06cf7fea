#pragma once

#include <QByteArray>

namespace quilmora {

// Every write uses a temporary file or folder next to its target. A killed write leaves it behind, and the next write
// in that folder removes it. Names and paths are in the file system's own bytes.

// A new name for a temporary file or folder.
QByteArray temporaryName();

// Tells other processes that this descriptor's file is being written, until the descriptor is closed.
void holdTemporary(int descriptor);

// Removes what killed writes left in this folder: the user's own files and folders with our names and contents that
// nobody holds and that are older than any write takes. Follows no symbolic link.
void removeStaleTemporaries(const QByteArray& folder);
// The same, but only once per folder in the life of the process.
void removeStaleTemporariesOnce(const QByteArray& folder);

}  // namespace quilmora
