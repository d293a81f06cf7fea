#include "model/NewId.h"

#include <array>
#include <cstddef>

#include <sys/random.h>

namespace quilmora {

namespace {

constexpr std::size_t idSize = 16;

class RandomBytes {
 public:
  // The next 16 bytes, or nothing if the system gives none.
  const uchar* next() {
    if (m_used + idSize > m_size && !refill()) return nullptr;
    const uchar* bytes = m_bytes.data() + m_used;
    m_used += idSize;
    return bytes;
  }

 private:
  // A signal may interrupt the read.
  bool refill() {
    const ssize_t count = ::getrandom(m_bytes.data(), m_bytes.size(), 0);
    m_size = count > 0 ? static_cast<std::size_t>(count) : 0;
    m_used = 0;
    return m_size >= idSize;
  }

  std::array<uchar, 4096> m_bytes{};
  std::size_t m_size = 0;
  std::size_t m_used = 0;
};

}  // namespace

QUuid newId() {
  thread_local RandomBytes random;
  const uchar* bytes = random.next();
  if (bytes == nullptr) return QUuid::createUuid();
  const auto pair = [bytes](int at) { return static_cast<ushort>(bytes[at] << 8 | bytes[at + 1]); };
  const uint first = static_cast<uint>(pair(0)) << 16 | pair(2);
  const auto third = static_cast<ushort>((pair(6) & 0x0FFF) | 0x4000);  // version 4
  const auto fourth = static_cast<uchar>((bytes[8] & 0x3F) | 0x80);     // the common variant
  return QUuid(first, pair(4), third, fourth, bytes[9], bytes[10], bytes[11], bytes[12], bytes[13], bytes[14],
               bytes[15]);
}

}  // namespace quilmora
