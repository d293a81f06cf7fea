#pragma once

#include <QString>

#include "model/DocumentError.h"
#include "model/MindMap.h"

namespace quilmora {

// Reads the plain document at `path`, or the `document.json` inside it when it is a package folder. Throws
// DocumentError.
MindMap decodeDocumentAt(const QString& path);

// Writes a new package: a folder at `path` with `document.json` and the empty folders `Assets` and `Thumbnails`. Throws
// DocumentError.
void writePackage(const MindMap& map, const QString& path);

}  // namespace quilmora
