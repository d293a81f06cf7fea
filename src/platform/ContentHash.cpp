#include "platform/ContentHash.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace quilmora {

namespace {

// Odd, so that multiplying by them loses no information.
constexpr std::uint64_t multiplier = 0x9E3779B97F4A7C15u;
constexpr std::uint64_t wordMultiplier = 0x452821E638D01377u;

std::uint64_t mixed(std::uint64_t value) {
  value ^= value >> 32;
  value *= multiplier;
  value ^= value >> 29;
  value *= multiplier;
  return value ^ value >> 32;
}

}  // namespace

// Four independent lanes. The rotation moves the top bits, which the first multiplication does not spread, down, so
// that the second one spreads them before the next word could cancel them.
void ContentHash::addBlock(const char* bytes) {
  for (std::size_t lane = 0; lane < m_lanes.size(); ++lane) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes + lane * sizeof word, sizeof word);
    m_lanes[lane] = std::rotl(m_lanes[lane] + word * wordMultiplier, 27) * multiplier;
  }
}

void ContentHash::add(std::string_view bytes) {
  m_length += bytes.size();
  if (m_restSize > 0) {
    const std::size_t taken = std::min(bytes.size(), blockSize - m_restSize);
    std::copy_n(bytes.begin(), taken, m_rest.begin() + m_restSize);
    m_restSize += taken;
    bytes.remove_prefix(taken);
    if (m_restSize < blockSize) return;
    addBlock(m_rest.data());
    m_restSize = 0;
  }
  // NOLINTNEXTLINE(bugprone-suspicious-stringview-data-usage): a block has its own size
  for (; bytes.size() >= blockSize; bytes.remove_prefix(blockSize)) addBlock(bytes.data());
  std::copy(bytes.begin(), bytes.end(), m_rest.begin());
  m_restSize = bytes.size();
}

std::uint64_t ContentHash::value() const {
  ContentHash last = *this;
  std::fill(last.m_rest.begin() + static_cast<std::ptrdiff_t>(m_restSize), last.m_rest.end(), '\0');
  last.addBlock(last.m_rest.data());
  std::uint64_t value = mixed(m_length);
  for (const std::uint64_t lane : last.m_lanes) value = mixed(value ^ lane) + multiplier;
  return mixed(value);
}

}  // namespace quilmora
