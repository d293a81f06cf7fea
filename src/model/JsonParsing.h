#pragma once

#include <functional>
#include <span>
#include <string_view>

#include <simdjson.h>

#include "model/PaddedText.h"

namespace quilmora::json {

// Parses a whole text of at most 4 GB. Throws DocumentError unless it is one JSON value.
simdjson::dom::document parseWhole(PaddedText text);

// Takes the next items of the array at `key`; they are valid only during the call.
using ItemReceiver = std::function<void(std::string_view key, simdjson::dom::array items)>;

// Reads a text of any size window by window, so that the parser needs memory for only `windowSize` bytes, or for one
// item if that is larger. Passes on the items of the arrays at `keys` of the outermost object, and returns the rest of
// the text, in which these arrays are empty. Accepts what parseWhole() accepts and throws where it throws. The memory
// of text already read is freed on the way.
simdjson::dom::document parseInWindows(PaddedText text, std::span<const std::string_view> keys, std::size_t windowSize,
                                       const ItemReceiver& receive);

}  // namespace quilmora::json
