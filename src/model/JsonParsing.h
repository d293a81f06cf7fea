#pragma once

#include <functional>
#include <span>
#include <string_view>

#include <simdjson.h>

#include "model/PaddedText.h"

namespace quilmora::json {

// The whole text as values, at most 4 GB of it. Throws DocumentError unless it is one JSON value.
simdjson::dom::document parseWhole(PaddedText text);

// Takes the next items of the array that stands at `key`; they stand only during the call.
using ItemReceiver = std::function<void(std::string_view key, simdjson::dom::array items)>;

// Reads a text of any size window by window, so that the parser needs no memory for more than `windowSize` bytes, or
// for one item that is larger: hands over the items of the arrays at `keys` of the outermost object, and answers the
// rest of the text, in which these arrays are empty. Takes what parseWhole() takes and throws where that throws. The
// memory of what was read is given back on the way.
simdjson::dom::document parseInWindows(PaddedText text, std::span<const std::string_view> keys, std::size_t windowSize,
                                       const ItemReceiver& receive);

}  // namespace quilmora::json
