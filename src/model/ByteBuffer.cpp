#include "model/ByteBuffer.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace quilmora {

void ByteBuffer::put(std::string_view text) {
  char* at = room(static_cast<qsizetype>(text.size()));
  std::memcpy(at, text.data(), text.size());
  m_end = at + text.size();
}

void ByteBuffer::putBlanks(qsizetype count) {
  m_end = std::fill_n(room(count), count, ' ');
}

QByteArray ByteBuffer::take() {
  if (m_end) m_bytes.resize(m_end - m_bytes.constData());
  m_bytes.squeeze();
  m_end = m_limit = nullptr;
  return std::exchange(m_bytes, {});
}

void ByteBuffer::grow(qsizetype count) {
  const qsizetype size = m_end ? m_end - m_bytes.constData() : 0;
  m_bytes.resize(std::max<qsizetype>({4096, 2 * m_bytes.size(), size + count}));
  m_end = m_bytes.data() + size;
  m_limit = m_bytes.data() + m_bytes.size();
}

char* putCodePoint(char* at, char32_t c) {
  const auto tail = [&](int shift) { return static_cast<char>(0x80 | (c >> shift & 0x3F)); };
  if (c < 0x80) {
    *at++ = static_cast<char>(c);
    return at;
  }
  if (c < 0x800) {
    *at++ = static_cast<char>(0xC0 | c >> 6);
  } else if (c < 0x10000) {
    *at++ = static_cast<char>(0xE0 | c >> 12);
    *at++ = tail(6);
  } else {
    *at++ = static_cast<char>(0xF0 | c >> 18);
    *at++ = tail(12);
    *at++ = tail(6);
  }
  *at++ = tail(0);
  return at;
}

}  // namespace quilmora
