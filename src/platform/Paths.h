#pragma once

#include <QString>

namespace quilmora {

// The path from the root of the file system, without slashes at its end. Leaves ".." alone: behind a symbolic link only
// the file system knows where it leads.
QString absolutePath(const QString& path);

}  // namespace quilmora
