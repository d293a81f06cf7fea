#include "model/JsonDiagnosis.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include <QString>
#include <locale.h>
#include <stdlib.h>

#include "model/DocumentError.h"

namespace quilmora::json {

namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
bool isHexDigit(char c) {
  return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}
bool isContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// The length of the well-formed UTF-8 sequence at the start of `text`, or 0.
std::size_t sequenceLength(std::string_view text) {
  const auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u; };
  const unsigned lead = byte(0);
  if (lead < 0x80) return 1;
  if (lead < 0xC2 || lead > 0xF4) return 0;
  const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  for (std::size_t i = 1; i < length; ++i)
    if ((byte(i) & 0xC0) != 0x80) return 0;
  // Overlong forms, surrogates, and anything beyond the last code point.
  if ((lead == 0xE0 && byte(1) < 0xA0) || (lead == 0xED && byte(1) > 0x9F)) return 0;
  if ((lead == 0xF0 && byte(1) < 0x90) || (lead == 0xF4 && byte(1) > 0x8F)) return 0;
  return length;
}

// Whether a well-formed number is too large for a double; one that is too small is fine.
bool isOverflow(std::string_view number) {
  double value = 0;
  if (std::from_chars(number.data(), number.data() + number.size(), value).ec == std::errc()) return false;
  static const locale_t plain = ::newlocale(LC_ALL_MASK, "C", nullptr);
  return std::isinf(::strtod_l(std::string(number).c_str(), nullptr, plain));
}

class Scanner {
 public:
  Scanner(std::string_view text, std::size_t deepest, TextOrigin origin)
      : m_text(text), m_deepest(deepest), m_origin(origin) {}

  std::vector<std::size_t> scan() {
    checkEncoding();
    skipSpace();
    if (atEnd()) throw DocumentError(QStringLiteral("the file is empty"));
    for (bool more = true; more;) {
      if (!beginValue()) continue;  // an array or object was entered and needs a value
      more = afterValue();
    }
    skipSpace();
    if (!atEnd()) fail(QStringLiteral("trailing text after the document"));
    return std::move(m_longNumbers);
  }

 private:
  [[noreturn]] void fail(const QString& cause) const { failAt(m_at, cause); }
  [[noreturn]] void failAt(std::size_t at, const QString& cause) const {
    const std::string_view before = m_text.substr(0, at);
    const auto line = m_origin.lines + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1;
    const std::string_view start = before.substr(before.rfind('\n') + 1);
    const auto column = std::count_if(start.begin(), start.end(), [](char c) { return !isContinuation(c); }) + 1;
    throw DocumentError(QStringLiteral("line %1, column %2: %3").arg(line).arg(column).arg(cause));
  }

  bool atEnd() const { return m_at == m_text.size(); }
  char peek() const { return atEnd() ? '\0' : m_text[m_at]; }
  bool take(char c) {
    if (atEnd() || m_text[m_at] != c) return false;
    ++m_at;
    return true;
  }
  void skipSpace() {
    while (!atEnd() && (peek() == ' ' || peek() == '\n' || peek() == '\r' || peek() == '\t')) ++m_at;
  }
  void expect(char c, const QString& what) {
    skipSpace();
    if (!take(c)) fail(atEnd() ? QStringLiteral("the document ends too early") : what);
  }

  void checkEncoding() const {
    for (std::size_t at = 0; at < m_text.size();) {
      const std::size_t length = sequenceLength(m_text.substr(at, 4));
      if (length == 0) throw DocumentError(QStringLiteral("invalid UTF-8 at byte %1").arg(m_origin.bytes + at));
      at += length;
    }
  }

  // Reads a whole value, or the start of an array or object up to its first value. Returns whether the value is
  // complete.
  bool beginValue() {
    skipSpace();
    if (atEnd()) fail(QStringLiteral("the document ends too early"));
    const char c = peek();
    if (c == '{' || c == '[') {
      if (m_open.size() == m_deepest) fail(QStringLiteral("nested deeper than %1 levels").arg(m_deepest));
      m_open.push_back(c);
      ++m_at;
      skipSpace();
      if (take(c == '{' ? '}' : ']')) {
        m_open.pop_back();
        return true;
      }
      if (c == '{') takeKey();
      return false;
    }
    if (c == '"')
      takeString();
    else if (c == '-' || isDigit(c))
      takeNumber();
    else if (!takeWord("true") && !takeWord("false") && !takeWord("null"))
      fail(QStringLiteral("expected a value"));
    return true;
  }

  // Reads what follows a complete value. Returns whether another value must come.
  bool afterValue() {
    while (!m_open.empty()) {
      skipSpace();
      const bool isObject = m_open.back() == '{';
      if (take(',')) {
        if (isObject) takeKey();
        return true;
      }
      expect(isObject ? '}' : ']', isObject ? QStringLiteral("expected a comma or a closing brace")
                                            : QStringLiteral("expected a comma or a closing bracket"));
      m_open.pop_back();
    }
    return false;
  }

  void takeKey() {
    skipSpace();
    if (peek() != '"')
      fail(atEnd() ? QStringLiteral("the document ends too early")
                   : QStringLiteral("expected a key in quotation marks"));
    takeString();
    expect(':', QStringLiteral("expected a colon"));
  }

  bool takeWord(std::string_view word) {
    if (m_text.substr(m_at, word.size()) != word) return false;
    m_at += word.size();
    return true;
  }

  void takeString() {
    const std::size_t start = m_at++;
    while (!take('"')) {
      if (atEnd()) failAt(start, QStringLiteral("the text has no closing quotation mark"));
      const char c = peek();
      if (static_cast<unsigned char>(c) < 0x20) fail(QStringLiteral("a control character inside a text"));
      if (c == '\\')
        takeEscape();
      else
        ++m_at;
    }
  }

  // The unit of the escape "\uXXXX" at the cursor, or -1.
  int unicodeEscape() const {
    if (m_text.substr(m_at, 2) != "\\u" || m_text.size() - m_at < 6) return -1;
    const std::string digits(m_text.substr(m_at + 2, 4));
    return std::all_of(digits.begin(), digits.end(), isHexDigit) ? std::stoi(digits, nullptr, 16) : -1;
  }

  void takeEscape() {
    const char kind = m_at + 1 < m_text.size() ? m_text[m_at + 1] : '\0';
    if (kind != '\0' && std::string_view("\"\\/bfnrt").find(kind) != std::string_view::npos) {
      m_at += 2;
      return;
    }
    const std::size_t start = m_at;
    const int unit = unicodeEscape();
    if (unit < 0) fail(QStringLiteral("an unknown escape inside a text"));
    m_at += 6;
    const bool isHigh = unit >= 0xD800 && unit < 0xDC00;
    const int second = isHigh ? unicodeEscape() : 0;
    const bool isLone = isHigh ? second < 0xDC00 || second > 0xDFFF : unit >= 0xDC00 && unit <= 0xDFFF;
    if (isLone) failAt(start, QStringLiteral("half of a surrogate pair"));
    if (isHigh) m_at += 6;
  }

  std::size_t takeDigits() {
    const std::size_t start = m_at;
    while (isDigit(peek())) ++m_at;
    if (m_at == start) fail(QStringLiteral("malformed number"));
    return m_at - start;
  }

  void takeNumber() {
    const std::size_t start = m_at;
    take('-');
    const bool hasLeadingZero = peek() == '0';
    const std::size_t wholeDigits = takeDigits();
    if (hasLeadingZero && wholeDigits > 1) failAt(start, QStringLiteral("malformed number"));
    bool isWhole = true;
    if (take('.')) {
      isWhole = false;
      takeDigits();
    }
    if (take('e') || take('E')) {
      isWhole = false;
      if (!take('+')) take('-');
      takeDigits();
    }
    if (isOverflow(m_text.substr(start, m_at - start))) failAt(start, QStringLiteral("number out of range"));
    if (isWhole && wholeDigits > 18) m_longNumbers.push_back(m_at);
  }

  std::string_view m_text;
  std::size_t m_deepest;
  TextOrigin m_origin;
  std::size_t m_at = 0;
  std::string m_open;
  std::vector<std::size_t> m_longNumbers;
};

}  // namespace

std::vector<std::size_t> diagnose(std::string_view text, std::size_t deepest, TextOrigin origin) {
  return Scanner(text, deepest, origin).scan();
}

}  // namespace quilmora::json
