#pragma once

#include <QByteArray>

namespace quilmora {

// A write goes through a temporary file or folder beside its target. One that is killed leaves it behind, and the next
// write in that folder removes it. Names and paths are in the file system's own bytes.

// A new name for a temporary file or folder.
QByteArray temporaryName();

// Tells other processes that the file of this descriptor is being written, until the descriptor is closed.
void holdTemporary(int descriptor);

// Removes what killed writes left in this folder: files and folders of the user's own, with our names and contents,
// that nobody holds and that are older than any write takes. Follows no symbolic link.
void removeStrays(const QByteArray& folder);
// The same, but once in the life of the process for each folder.
void removeStraysOnce(const QByteArray& folder);

}  // namespace quilmora
