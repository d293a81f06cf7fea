#pragma once

#include <functional>
#include <string_view>

#include "model/MindMap.h"
#include "platform/FileState.h"

namespace quilmora {

// Takes the next piece of a document's text; returning false stops the writing.
using DocumentReceiver = std::function<bool(std::string_view piece)>;

// Passes the text of encodeDocument() on in pieces of about a megabyte, so that a large map needs no second copy in
// memory. Returns whether the receiver took all of it. May run off the main thread, on a copy of the map. Throws
// DocumentError where encodeDocument() does.
bool streamDocument(const MindMap& map, const DocumentReceiver& receiver);

// The file that decodeDocumentAt() reads: the path itself, or the document inside a package.
QString documentFileAt(const QString& path);

struct ReadDocument {
  MindMap map;
  FileState state;  // of documentFileAt(), as it was read
};

// decodeDocumentAt() for callers that later need to know whether the file has changed.
ReadDocument readDocumentAt(const QString& path);

}  // namespace quilmora
