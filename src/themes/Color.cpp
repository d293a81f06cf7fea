#include "themes/Color.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include <QChar>
#include <QRgba64>
#include <QTextBoundaryFinder>

namespace quilmora {

namespace {

constexpr qsizetype digitCount = 6;
constexpr int grey = 128;

constexpr int hexValue(char16_t unit) {
  if (unit >= u'0' && unit <= u'9') return unit - u'0';
  if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
  if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
  return -1;
}

double linear(double component) {
  return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

QColor opaqueColor(std::uint32_t value) {
  return QColor(static_cast<int>(value >> 16 & 0xFF), static_cast<int>(value >> 8 & 0xFF),
                static_cast<int>(value & 0xFF));
}

// Nearly every colour in a map is written "#RRGGBB" or "RRGGBB".
std::optional<std::uint32_t> plainValue(QStringView text) {
  if (text.size() == digitCount + 1 && text.front() == u'#') text = text.sliced(1);
  if (text.size() != digitCount) return std::nullopt;
  std::uint32_t value = 0;
  for (const QChar character : text) {
    const int digit = hexValue(character.unicode());
    if (digit < 0) return std::nullopt;
    value = value << 4 | static_cast<std::uint32_t>(digit);
  }
  return value;
}

// Combining marks belong to the letters that carry them.
bool isAlphanumeric(char32_t point) {
  return QChar::isLetterOrNumber(point) || QChar::isMark(point);
}

char32_t firstPoint(QStringView text) {
  if (text.size() > 1 && text[0].isHighSurrogate() && text[1].isLowSurrogate())
    return QChar::surrogateToUcs4(text[0], text[1]);
  return text[0].unicode();
}

char32_t lastPoint(QStringView text) {
  const qsizetype last = text.size() - 1;
  if (last > 0 && text[last].isLowSurrogate() && text[last - 1].isHighSurrogate())
    return QChar::surrogateToUcs4(text[last - 1], text[last]);
  return text[last].unicode();
}

QStringView stripped(QStringView text) {
  while (!text.isEmpty()) {
    const char32_t point = firstPoint(text);
    if (isAlphanumeric(point)) break;
    text = text.sliced(QChar::requiresSurrogates(point) ? 2 : 1);
  }
  while (!text.isEmpty()) {
    const char32_t point = lastPoint(text);
    if (isAlphanumeric(point)) break;
    text.chop(QChar::requiresSurrogates(point) ? 2 : 1);
  }
  return text;
}

// Whether the text has exactly six user-perceived characters. Reads no further than the seventh.
bool hasSixCharacters(QStringView text) {
  if (text.size() < digitCount) return false;
  if (std::all_of(text.begin(), text.end(), [](QChar unit) { return unit.unicode() < 0x80 && unit != u'\r'; }))
    return text.size() == digitCount;
  QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.data(), text.size());
  for (qsizetype count = 0; count < digitCount; ++count)
    if (finder.toNextBoundary() < 0) return false;
  return finder.position() == text.size();
}

// Like the usual scanner of hexadecimal numbers: accepts an optional 0x and stops at the first character that is not a
// digit.
std::uint32_t scanHexadecimal(QStringView text) {
  if (text.size() > 2 && text[0] == u'0' && (text[1] == u'x' || text[1] == u'X') && hexValue(text[2].unicode()) >= 0)
    text = text.sliced(2);
  std::uint32_t value = 0;
  for (const QChar character : text) {
    const int digit = hexValue(character.unicode());
    if (digit < 0) break;
    value = value << 4 | static_cast<std::uint32_t>(digit);
  }
  return value;
}

// What "%02X" prints for a signed machine integer: a negative number appears as its two's complement.
std::uint32_t printedStep(double component) {
  const double scaled = std::trunc(component * 255.0);
  constexpr double limit = 9223372036854775808.0;  // 2^63
  if (std::isnan(scaled)) return 0;
  if (scaled >= limit) return static_cast<std::uint32_t>(std::numeric_limits<std::int64_t>::max());
  if (scaled < -limit) return static_cast<std::uint32_t>(std::numeric_limits<std::int64_t>::min());
  return static_cast<std::uint32_t>(static_cast<std::int64_t>(scaled));
}

}  // namespace

QColor colorFromHex(const QString& text) {
  if (const auto value = plainValue(text)) return opaqueColor(*value);
  const QStringView core = stripped(text);
  if (!hasSixCharacters(core)) return QColor(grey, grey, grey);
  return opaqueColor(scanHexadecimal(core));
}

QString hexFromColor(const QColor& color) {
  if (!color.isValid()) return hexFromColor(std::span<const double>());
  if (color.spec() == QColor::ExtendedRgb) {
    const std::array<double, 3> components = {color.redF(), color.greenF(), color.blueF()};
    return hexFromColor(components);
  }
  // The 16-bit components: QColor's own reals are single precision and would lose more.
  const QRgba64 stored = color.rgba64();
  const std::array<double, 3> components = {stored.red() / 65535.0, stored.green() / 65535.0, stored.blue() / 65535.0};
  return hexFromColor(components);
}

QString hexFromColor(std::span<const double> components) {
  if (components.empty()) return QStringLiteral("#808080");
  const bool isGrey = components.size() < 3;
  return QString::asprintf("#%02X%02X%02X", printedStep(components[0]), printedStep(components[isGrey ? 0 : 1]),
                           printedStep(components[isGrey ? 0 : 2]));
}

QColor withOpacity(QColor color, double opacity) {
  color.setAlphaF(static_cast<float>(std::clamp(opacity, 0.0, 1.0)));
  return color;
}

double relativeLuminance(const QColor& color) {
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrastRatio(const QColor& a, const QColor& b) {
  const double first = relativeLuminance(a);
  const double second = relativeLuminance(b);
  return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QColor readableOn(const QColor& ground) {
  constexpr double minContrast = 2.5;
  return contrastRatio(Qt::white, ground) >= minContrast ? QColor(Qt::white) : QColor(0x1D, 0x1D, 0x1F);
}

}  // namespace quilmora
