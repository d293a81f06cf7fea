#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace quilmora {

// Bytes with padding at the end, because the JSON parser reads a little beyond the text.
struct PaddedText {
  static constexpr std::size_t padding = 64;
  struct Free {
    void operator()(char* block) const { std::free(block); }
  };

  std::unique_ptr<char[], Free> bytes;
  std::size_t size = 0;
  std::size_t forgotten = 0;

  // Room for `capacity` bytes and the padding, not zeroed. Throws DocumentError when memory runs out.
  static PaddedText withCapacity(std::size_t capacity);
  static PaddedText copyOf(std::string_view text);
  // Returns the memory before `end` to the system, except for a large page or two; it reads as zeros from then on.
  void forgetUntil(std::size_t end);
  std::string_view view() const { return {bytes.get(), size}; }
};

// Asks the system to back a large buffer with large pages before it is first touched; otherwise page faults take most
// of the time of filling it.
void adviseLargePages(void* begin, std::size_t size);

}  // namespace quilmora
