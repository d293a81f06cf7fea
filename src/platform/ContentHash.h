#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quilmora {

// A hash to tell contents apart at the speed of memory. Not for security: collisions can be made on purpose. The same
// bytes give the same value, however they are split into pieces.
class ContentHash {
 public:
  void add(std::string_view bytes);
  std::uint64_t value() const;

 private:
  static constexpr std::size_t blockSize = 32;

  void addBlock(const char* bytes);

  std::array<std::uint64_t, 4> m_lanes{0x243F6A8885A308D3u, 0x13198A2E03707344u, 0xA4093822299F31D0u,
                                       0x082EFA98EC4E6C89u};
  std::array<char, blockSize> m_rest{};
  std::size_t m_restSize = 0;
  std::uint64_t m_length = 0;
};

}  // namespace quilmora
