#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace quilmora::json {

// How deeply a document may nest arrays and objects; our own documents use six levels.
constexpr std::size_t deepestNesting = 1024;

// Where a part of a text begins, so that faults are reported at their place in the whole.
struct TextOrigin {
  std::size_t lines = 0;  // that end before the part
  std::size_t bytes = 0;
};

// Finds the first fault of a text that the parser refused, and throws DocumentError with its line, column and cause.
// For valid JSON, returns the end positions of whole numbers with more than 18 digits, which the parser cannot read.
// Nesting beyond `deepest` levels is a fault. Linear time, no recursion.
std::vector<std::size_t> diagnose(std::string_view text, std::size_t deepest = deepestNesting, TextOrigin origin = {});

}  // namespace quilmora::json
