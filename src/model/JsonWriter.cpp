#include "model/JsonWriter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace quilmora::json {

namespace {

// What follows the backslash for a character below 0x80: 0 if it needs no escape, 'u' if it has no short form.
constexpr auto escapes = [] {
  std::array<char, 128> table{};
  for (std::size_t c = 0; c < 0x20; ++c) table[c] = 'u';
  table['"'] = '"';
  table['\\'] = '\\';
  table['\b'] = 'b';
  table['\f'] = 'f';
  table['\n'] = 'n';
  table['\r'] = 'r';
  table['\t'] = 't';
  return table;
}();

}  // namespace

void JsonWriter::newLine() {
  if (!m_isPretty) return;
  m_buffer.put('\n');
  m_buffer.putBlanks(qsizetype{2} * m_depth);
}

void JsonWriter::separate() {
  if (!m_isFirst) m_buffer.put(',');
  m_isFirst = false;
  newLine();
}

void JsonWriter::open(char bracket) {
  m_buffer.put(bracket);
  ++m_depth;
  m_isFirst = true;
}

void JsonWriter::close(char bracket) {
  --m_depth;
  if (!m_isFirst) newLine();
  m_isFirst = false;
  m_buffer.put(bracket);
}

void JsonWriter::key(std::string_view name) {
  separate();
  plainText(name);
  m_buffer.put(m_isPretty ? std::string_view(": ") : std::string_view(":"));
}

void JsonWriter::plainText(std::string_view text) {
  char* at = m_buffer.room(static_cast<qsizetype>(text.size()) + 2);
  *at++ = '"';
  at = std::copy(text.begin(), text.end(), at);
  *at++ = '"';
  m_buffer.setEnd(at);
}

void JsonWriter::text(const QString& text) {
  // In pieces, because room is made for the longest escapes.
  constexpr qsizetype pieceLength = 4096;
  const auto* units = reinterpret_cast<const char16_t*>(text.utf16());
  m_buffer.put('"');
  for (qsizetype start = 0; start < text.size();) {
    qsizetype end = std::min(start + pieceLength, text.size());
    if (end < text.size() && QChar::isHighSurrogate(units[end - 1])) ++end;
    putText(units + start, end - start);
    start = end;
  }
  m_buffer.put('"');
}

void JsonWriter::putText(const char16_t* units, qsizetype count) {
  char* at = m_buffer.room(6 * count);
  for (qsizetype i = 0; i < count; ++i) {
    const char16_t unit = units[i];
    if (unit < 0x80) {
      const char escape = escapes[unit];
      if (escape == 0) {
        *at++ = static_cast<char>(unit);
        continue;
      }
      *at++ = '\\';
      *at++ = escape;
      if (escape != 'u') continue;
      *at++ = '0';
      *at++ = '0';
      *at++ = "0123456789ABCDEF"[unit >> 4];
      *at++ = "0123456789ABCDEF"[unit & 15];
    } else if (!QChar::isSurrogate(unit)) {
      at = putCodePoint(at, unit);
    } else if (QChar::isHighSurrogate(unit) && i + 1 < count && QChar::isLowSurrogate(units[i + 1])) {
      at = putCodePoint(at, QChar::surrogateToUcs4(unit, units[++i]));
    } else {
      at = putCodePoint(at, QChar::ReplacementCharacter);
    }
  }
  m_buffer.setEnd(at);
}

void JsonWriter::number(double value) {
  constexpr double greatest = std::numeric_limits<double>::max();
  // Beyond this, whole numbers are written with an exponent: many readers take plain digits for a 64-bit integer.
  constexpr double greatestWhole = 9007199254740992.0;  // 2^53
  if (!(value != 0)) value = 0;                         // and -0
  if (std::isnan(value)) value = 0;
  value = std::clamp(value, -greatest, greatest);
  if (std::abs(value) <= greatestWhole && value == std::trunc(value)) {
    integer(static_cast<std::int64_t>(value));
    return;
  }
  char* const at = m_buffer.room(32);
  const auto result = std::abs(value) > greatestWhole ? std::to_chars(at, at + 32, value, std::chars_format::scientific)
                                                      : std::to_chars(at, at + 32, value);
  m_buffer.setEnd(result.ptr);
}

void JsonWriter::integer(std::int64_t value) {
  char* const at = m_buffer.room(24);
  m_buffer.setEnd(std::to_chars(at, at + 24, value).ptr);
}

void JsonWriter::boolean(bool value) {
  m_buffer.put(value ? std::string_view("true") : std::string_view("false"));
}

void JsonWriter::null() {
  m_buffer.put(std::string_view("null"));
}

void JsonWriter::pair(double x, double y) {
  m_buffer.put('[');
  number(x);
  m_buffer.put(m_isPretty ? std::string_view(", ") : std::string_view(","));
  number(y);
  m_buffer.put(']');
}

void JsonWriter::finish() {
  if (m_isPretty) m_buffer.put('\n');
}

QByteArray JsonWriter::take() {
  finish();
  return m_buffer.take();
}

}  // namespace quilmora::json
