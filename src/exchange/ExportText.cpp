#include "exchange/ExportText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include <QString>

namespace quilmora {

namespace {

// The XML replacement of a character below 0x80; empty for one that needs none.
constexpr auto xmlReplacements = [] {
  std::array<std::string_view, 128> table{};
  for (std::size_t c = 0; c < 0x20; ++c)
    if (c != '\t' && c != '\n' && c != '\r') table[c] = "\xEF\xBF\xBD";
  table['&'] = "&amp;";
  table['<'] = "&lt;";
  table['>'] = "&gt;";
  table['"'] = "&quot;";
  table['\''] = "&apos;";
  return table;
}();

enum class Escapes { none, xml };

template <Escapes escapes>
void putPiece(ByteBuffer& buffer, QStringView text) {
  constexpr qsizetype longest = escapes == Escapes::xml ? 6 : 3;  // bytes per UTF-16 unit
  char* at = buffer.room(longest * text.size());
  const char16_t* const end = text.utf16() + text.size();
  for (const char16_t* unit = text.utf16(); unit != end; ++unit) {
    const char16_t c = *unit;
    if (c < 0x80) {
      if (escapes == Escapes::xml && !xmlReplacements[c].empty())
        at = std::copy(xmlReplacements[c].begin(), xmlReplacements[c].end(), at);
      else
        *at++ = static_cast<char>(c);
    } else if (QChar::isHighSurrogate(c) && unit + 1 != end && QChar::isLowSurrogate(unit[1])) {
      at = putCodePoint(at, QChar::surrogateToUcs4(c, *++unit));
    } else if (QChar::isSurrogate(c) || (escapes == Escapes::xml && c >= 0xFFFE)) {
      at = putCodePoint(at, QChar::ReplacementCharacter);
    } else {
      at = putCodePoint(at, c);
    }
  }
  buffer.setEnd(at);
}

// In pieces, because room is made for the longest form of every character.
template <Escapes escapes>
void putPieces(ByteBuffer& buffer, QStringView text) {
  constexpr qsizetype pieceLength = 4096;
  while (!text.isEmpty()) {
    qsizetype length = std::min(pieceLength, text.size());
    if (length < text.size() && text[length - 1].isHighSurrogate()) ++length;
    putPiece<escapes>(buffer, text.first(length));
    text = text.sliced(length);
  }
}

double finite(double value) {
  constexpr double greatest = std::numeric_limits<double>::max();
  return std::isnan(value) ? 0.0 : std::clamp(value, -greatest, greatest);
}

// A sign, and 309 digits before the point or 17 significant ones after 323 zeros.
constexpr qsizetype maxNumberLength = 400;

}  // namespace

void putText(ByteBuffer& buffer, QStringView text) {
  putPieces<Escapes::none>(buffer, text);
}

void putXmlText(ByteBuffer& buffer, QStringView text) {
  putPieces<Escapes::xml>(buffer, text);
}

void putReal(ByteBuffer& buffer, double value) {
  char* const at = buffer.room(maxNumberLength);
  char* end = std::to_chars(at, at + maxNumberLength - 2, finite(value), std::chars_format::fixed).ptr;
  if (std::find(at, end, '.') == end) {
    *end++ = '.';
    *end++ = '0';
  }
  buffer.setEnd(end);
}

void putWhole(ByteBuffer& buffer, double value) {
  char* const at = buffer.room(maxNumberLength);
  const double whole = std::trunc(finite(value)) + 0.0;  // no "-0"
  buffer.setEnd(std::to_chars(at, at + maxNumberLength, whole, std::chars_format::fixed).ptr);
}

}  // namespace quilmora
