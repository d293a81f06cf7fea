#pragma once

#include <functional>
#include <string_view>

#include "model/MindMap.h"
#include "platform/FileState.h"

namespace quilmora {

// Takes the next piece of a document's text; false ends the writing.
using DocumentReceiver = std::function<bool(std::string_view piece)>;

// The text of encodeDocument() in pieces of about a megabyte, so that a large map needs no second copy. Whether the
// receiver took all of it. May run beside the main thread, over a copy of the map.
bool streamDocument(const MindMap& map, const DocumentReceiver& receiver);

// The file that decodeDocumentAt() reads: the path itself, or what a package holds.
QString documentFileAt(const QString& path);

struct ReadDocument {
  MindMap map;
  FileState state;  // of documentFileAt(), as it was read
};

// decodeDocumentAt() for who wants to know later whether the file is still the one that was read.
ReadDocument readDocumentAt(const QString& path);

}  // namespace quilmora
