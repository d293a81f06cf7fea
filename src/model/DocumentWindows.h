#pragma once

#include <cstddef>

#include "model/DocumentReader.h"
#include "model/DocumentStream.h"
#include "model/DocumentWriter.h"
#include "model/PaddedText.h"

namespace quilmora {

// A larger text is read window by window, which saves memory and is not limited to the parser's 4 GB; a single record
// still is.
constexpr std::size_t documentWindow = std::size_t{16} << 20;
// Leaves room in a window for the smaller records before this one.
constexpr std::size_t maxRecordSize = (std::size_t{4} << 30) - 2 * documentWindow;

MindMap decodePadded(PaddedText text, std::size_t windowSize);

// Both throw DocumentError if a record, or the rest of the map without its records, is longer than `longest` bytes.
QByteArray encodeDocument(const MindMap& map, JsonForm form, std::size_t longest);
bool streamDocument(const MindMap& map, const DocumentReceiver& receiver, std::size_t longest);

}  // namespace quilmora
