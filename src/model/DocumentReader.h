#pragma once

#include <QByteArray>

#include "model/DocumentError.h"
#include "model/MindMap.h"

namespace quilmora {

struct PaddedText;

// Reads what encodeDocument writes, strictly and whole. Throws DocumentError.
MindMap decodeDocument(const QByteArray& json);
// The same for a text that was read with room behind it; it is freed as soon as it is parsed.
MindMap decodePadded(PaddedText text);

// One record of a document by itself, as strictly. Throws DocumentError.
EdgeStyle decodeEdgeStyle(const QByteArray& json);

}  // namespace quilmora
