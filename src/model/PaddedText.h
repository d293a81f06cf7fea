#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace quilmora {

// Bytes with room behind them, because the JSON parser reads a little beyond the end.
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

  // Room for `capacity` bytes and the padding, not zeroed. Throws DocumentError when memory runs out.
  static PaddedText withCapacity(std::size_t capacity);
  std::string_view view() const { return {bytes.get(), size}; }
};

// Asks the system to back a large buffer with large pages before it is first touched: filling one otherwise spends most
// of its time in page faults.
void adviseLargePages(void* begin, std::size_t size);

}  // namespace quilmora
