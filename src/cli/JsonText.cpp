#include "cli/JsonText.h"

#include <array>
#include <charconv>
#include <cmath>

namespace quilmora {

namespace {

// The bytes of a JSON string, without the quotes.
void appendEscaped(QByteArray& out, const QByteArray& utf8) {
  static constexpr char digits[] = "0123456789abcdef";
  for (const char c : utf8) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      out.append('\\').append(c);
    } else if (c == '\n') {
      out.append("\\n");
    } else if (c == '\t') {
      out.append("\\t");
    } else if (byte < 0x20) {
      out.append("\\u00").append(digits[byte >> 4]).append(digits[byte & 15]);
    } else {
      out.append(c);
    }
  }
}

}  // namespace

void JsonText::separate() {
  if (m_needsComma) m_text.append(',');
  m_needsComma = true;
}

JsonText& JsonText::beginObject() {
  separate();
  m_text.append('{');
  m_needsComma = false;
  return *this;
}

JsonText& JsonText::endObject() {
  m_text.append('}');
  m_needsComma = true;
  return *this;
}

JsonText& JsonText::beginArray() {
  separate();
  m_text.append('[');
  m_needsComma = false;
  return *this;
}

JsonText& JsonText::endArray() {
  m_text.append(']');
  m_needsComma = true;
  return *this;
}

JsonText& JsonText::key(const QString& name) {
  text(name);
  m_text.append(':');
  m_needsComma = false;
  return *this;
}

JsonText& JsonText::text(const QString& value) {
  separate();
  m_text.append('"');
  appendEscaped(m_text, value.toUtf8());
  m_text.append('"');
  return *this;
}

JsonText& JsonText::number(double value) {
  if (!std::isfinite(value)) return null();
  separate();
  std::array<char, 32> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  m_text.append(digits.data(), end - digits.data());
  return *this;
}

JsonText& JsonText::integer(qint64 value) {
  separate();
  m_text.append(QByteArray::number(value));
  return *this;
}

JsonText& JsonText::flag(bool value) {
  separate();
  m_text.append(value ? "true" : "false");
  return *this;
}

JsonText& JsonText::null() {
  separate();
  m_text.append("null");
  return *this;
}

JsonText& JsonText::id(const QUuid& value) { return text(idText(value)); }

JsonText& JsonText::point(QPointF value) { return beginArray().number(value.x()).number(value.y()).endArray(); }

JsonText& JsonText::raw(const QByteArray& json) {
  separate();
  m_text.append(json);
  return *this;
}

QString idText(const QUuid& id) { return id.toString(QUuid::WithoutBraces).toUpper(); }

}  // namespace quilmora
