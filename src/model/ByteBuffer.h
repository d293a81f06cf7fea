#pragma once

#include <string_view>

#include <QByteArray>

namespace quilmora {

// A growing buffer for text writers. Writers that know their maximum size call room(), write there and pass the end to
// setEnd().
class ByteBuffer {
 public:
  // Makes room for `count` more bytes and returns where they go.
  char* room(qsizetype count) {
    if (m_limit - m_end < count) grow(count);
    return m_end;
  }
  void setEnd(char* end) { m_end = end; }

  void put(char c) {
    *room(1) = c;
    ++m_end;
  }
  void put(std::string_view text);
  void putBlanks(qsizetype count);

  // The buffer's content.
  std::string_view text() const {
    return {m_bytes.constData(), m_end ? static_cast<std::size_t>(m_end - m_bytes.constData()) : 0};
  }
  // Empties the buffer but keeps its memory.
  void clear() { m_end = m_end ? m_bytes.data() : nullptr; }

  // The whole text; leaves the buffer empty.
  QByteArray take();

 private:
  void grow(qsizetype count);

  QByteArray m_bytes;
  char* m_end = nullptr;  // where the next byte goes
  char* m_limit = nullptr;
};

// Writes one code point as UTF-8, at most four bytes, and returns the end. A surrogate would give bytes that no decoder
// accepts; callers replace it first.
char* putCodePoint(char* at, char32_t c);

}  // namespace quilmora
