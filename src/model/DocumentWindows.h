#pragma once

#include <cstddef>

#include "model/DocumentReader.h"
#include "model/PaddedText.h"

namespace quilmora {

// A text that is larger is read window by window, which spares memory and is not bound to the parser's 4 GB; a single
// record still is.
constexpr std::size_t documentWindow = std::size_t{16} << 20;

MindMap decodePadded(PaddedText text, std::size_t windowSize);

}  // namespace quilmora
