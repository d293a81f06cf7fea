#pragma once

#include <cstddef>

#include "model/DocumentReader.h"
#include "model/PaddedText.h"

namespace quilmora {

// A larger text is read window by window, which saves memory and is not limited to the parser's 4 GB; a single record
// still is.
constexpr std::size_t documentWindow = std::size_t{16} << 20;

MindMap decodePadded(PaddedText text, std::size_t windowSize);

}  // namespace quilmora
