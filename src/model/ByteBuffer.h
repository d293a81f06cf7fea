#pragma once

#include <string_view>

#include <QByteArray>

namespace quilmora {

// One growing buffer for writers of text. Those who know how much they are about to write take room(), write there and
// hand the end to setEnd().
class ByteBuffer {
 public:
  // Makes room for `count` more bytes and answers where they go.
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

  // What stands in the buffer.
  std::string_view text() const {
    return {m_bytes.constData(), m_end ? static_cast<std::size_t>(m_end - m_bytes.constData()) : 0};
  }
  // Empties the buffer, which keeps its room.
  void clear() { m_end = m_end ? m_bytes.data() : nullptr; }

  // The whole text; the buffer is empty again.
  QByteArray take();

 private:
  void grow(qsizetype count);

  QByteArray m_bytes;
  char* m_end = nullptr;  // where the next byte goes
  char* m_limit = nullptr;
};

// Writes one code point as UTF-8, four bytes at most, and answers the place behind it. A surrogate becomes what no
// decoder takes; callers replace it before.
char* putCodePoint(char* at, char32_t c);

}  // namespace quilmora
