#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace quilmora {

// Bytes that the JSON parser may read a little beyond the end of.
struct PaddedText {
  static constexpr std::size_t padding = 64;
  // A document of 500,000 topics has about as much. Reading a hostile text takes up to 13 times its size in memory, so
  // that what the parser itself could take (4 GB) would take the whole machine.
  static constexpr std::size_t maxSize = std::size_t{512} << 20;

  struct Free {
    void operator()(char* block) const { std::free(block); }
  };

  std::unique_ptr<char[], Free> bytes;
  std::size_t size = 0;

  // Room for `capacity` bytes and the padding; nothing is set to zero. Throws DocumentError
  // where there is none.
  static PaddedText withCapacity(std::size_t capacity);
  std::string_view view() const { return {bytes.get(), size}; }
};

// Asks the system to back a large buffer by large pages before it is first touched: most of the time of filling one
// goes into the faults of small pages.
void adviseLargePages(void* begin, std::size_t size);

struct MindMap;

// Reads a whole document and frees the text as soon as it is parsed. Throws DocumentError.
MindMap readDocument(PaddedText text);

}  // namespace quilmora
