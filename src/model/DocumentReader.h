#pragma once

#include <QByteArray>

#include "model/DocumentError.h"
#include "model/MindMap.h"

namespace quilmora {

struct PaddedText;

// Reads what encodeDocument writes, strictly and whole. Throws DocumentError.
MindMap decodeDocument(const QByteArray& json);
// The same for a text in a padded buffer, which is freed as soon as it is parsed.
MindMap decodePadded(PaddedText text);

// A single record of a document, read as strictly. Throws DocumentError.
EdgeStyle decodeEdgeStyle(const QByteArray& json);

}  // namespace quilmora
