#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

namespace quilmora {

// Bytes that the JSON parser may read a little beyond the end of.
struct PaddedText {
  static constexpr std::size_t padding = 64;
  // What the parser can take: its offsets have 32 bits.
  static constexpr std::size_t maxSize = 0xFFFFFFFFu - padding;

  std::unique_ptr<char[]> bytes;
  std::size_t size = 0;

  // Room for `capacity` bytes and the padding; nothing is set to zero.
  static PaddedText withCapacity(std::size_t capacity) {
    return {std::make_unique_for_overwrite<char[]>(capacity + padding), 0};
  }
  std::string_view view() const { return {bytes.get(), size}; }
};

struct MindMap;

// Reads a whole document and frees the text as soon as it is parsed. Throws DocumentError.
MindMap readDocument(PaddedText text);

}  // namespace quilmora
