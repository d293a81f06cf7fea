#include "editor/journal/Bytes.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

#include <QStringDecoder>

namespace quilmora::journal {

namespace {

// Longer texts rarely repeat.
constexpr qsizetype maxPooledLength = 48;

// What precedes a text: how it is written, or the number of an earlier equal text.
enum TextForm : std::uint64_t { utf8 = 0, pooledUtf8 = 1, utf16 = 2, firstPooled = 3 };

double finite(double value) {
  constexpr double greatest = std::numeric_limits<double>::max();
  if (std::isnan(value) || value == 0) return 0;  // and -0
  return std::clamp(value, -greatest, greatest);
}

QString withoutHalfPairs(const QString& text) {
  QString whole = text;
  for (qsizetype i = 0; i < whole.size(); ++i) {
    const bool isPair = whole[i].isHighSurrogate() && i + 1 < whole.size() && whole[i + 1].isLowSurrogate();
    if (isPair)
      ++i;
    else if (whole[i].isSurrogate())
      whole[i] = QChar::ReplacementCharacter;
  }
  return whole;
}

}  // namespace

void failReading() {
  throw JournalError(QStringLiteral("the journal is damaged"));
}

void ByteWriter::put(double value) {
  putFixed(std::bit_cast<std::uint64_t>(finite(value)), 8);
}

void ByteWriter::put(const QPointF& point) {
  put(point.x());
  put(point.y());
}

void ByteWriter::put(const QRectF& rect) {
  for (const double value : {rect.x(), rect.y(), rect.width(), rect.height()}) put(value);
}

void ByteWriter::put(const QUuid& id) {
  putFixed(id.data1, 4);
  putFixed(id.data2, 2);
  putFixed(id.data3, 2);
  m_bytes.put({reinterpret_cast<const char*>(id.data4), sizeof id.data4});
}

void ByteWriter::put(const QString& text) {
  const bool isWhole = text.isValidUtf16();
  if (m_texts == Texts::plain) {
    const QString whole = isWhole ? text : withoutHalfPairs(text);
    put(static_cast<std::uint64_t>(whole.size()));
    m_bytes.put({reinterpret_cast<const char*>(whole.utf16()), 2 * static_cast<std::size_t>(whole.size())});
    return;
  }
  if (!isWhole) {
    put(TextForm::utf16);
    put(static_cast<std::uint64_t>(text.size()));
    for (const QChar unit : text) putFixed(unit.unicode(), 2);
    return;
  }
  const bool isPooled = text.size() <= maxPooledLength;
  if (isPooled) {
    if (const auto known = m_pool.constFind(text); known != m_pool.constEnd()) return put(firstPooled + *known);
    m_pool.insert(text, static_cast<std::uint64_t>(m_pool.size()));
  }
  const QByteArray bytes = text.toUtf8();
  put(isPooled ? TextForm::pooledUtf8 : TextForm::utf8);
  put(static_cast<std::uint64_t>(bytes.size()));
  m_bytes.put({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

QByteArrayView ByteReader::next(std::uint64_t count) {
  if (count > static_cast<std::uint64_t>(m_bytes.size() - m_at)) failReading();
  const QByteArrayView found = m_bytes.sliced(m_at, static_cast<qsizetype>(count));
  m_at += static_cast<qsizetype>(count);
  return found;
}

std::uint64_t ByteReader::takeNumber() {
  std::uint64_t value = 0;
  for (int shift = 0; shift < 64; shift += 7) {
    const auto byte = static_cast<unsigned char>(next(1)[0]);
    if (shift == 63 && byte > 1) failReading();
    value |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
    if (byte < 0x80) return value;
  }
  failReading();
}

std::uint64_t ByteReader::takeFixed(int bytes) {
  const QByteArrayView view = next(static_cast<std::uint64_t>(bytes));
  std::uint64_t value = 0;
  for (int i = 0; i < bytes; ++i) value |= static_cast<std::uint64_t>(static_cast<unsigned char>(view[i])) << (8 * i);
  return value;
}

void ByteReader::take(bool& value) {
  const char byte = next(1)[0];
  if (byte != 0 && byte != 1) failReading();
  value = byte == 1;
}

void ByteReader::take(double& value) {
  value = std::bit_cast<double>(takeFixed(8));
  if (!std::isfinite(value)) failReading();
}

void ByteReader::take(QPointF& point) {
  take(point.rx());
  take(point.ry());
}

void ByteReader::take(QRectF& rect) {
  double x = 0, y = 0, width = 0, height = 0;
  for (double* value : {&x, &y, &width, &height}) take(*value);
  rect = QRectF(x, y, width, height);
}

void ByteReader::take(QUuid& id) {
  id.data1 = static_cast<uint>(takeFixed(4));
  id.data2 = static_cast<ushort>(takeFixed(2));
  id.data3 = static_cast<ushort>(takeFixed(2));
  std::memcpy(id.data4, next(sizeof id.data4).data(), sizeof id.data4);
}

void ByteReader::take(QString& text) {
  const std::uint64_t form = takeNumber();
  if (form >= firstPooled) {
    if (form - firstPooled >= m_pool.size()) failReading();
    text = m_pool[form - firstPooled];
    return;
  }
  const std::uint64_t count = takeNumber();
  if (form == TextForm::utf16) {
    if (count > static_cast<std::uint64_t>(m_bytes.size())) failReading();
    const QByteArrayView units = next(2 * count);
    text.resize(static_cast<qsizetype>(count));
    for (qsizetype i = 0; i < text.size(); ++i)
      text[i] = QChar(static_cast<char16_t>(static_cast<unsigned char>(units[2 * i]) |
                                            static_cast<unsigned char>(units[2 * i + 1]) << 8));
    return;
  }
  QStringDecoder decode(QStringDecoder::Utf8,
                        QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
  text = decode(next(count));
  if (decode.hasError()) failReading();
  if (form == TextForm::pooledUtf8) m_pool.push_back(text);
}

void ByteReader::take(TimePoint& time) {
  time = TimePoint(std::chrono::microseconds(static_cast<std::int64_t>(takeFixed(8))));
}

std::uint64_t hashOf(QByteArrayView bytes, std::uint64_t seed) {
  constexpr std::uint64_t factor = 0x9FB21C651E98DF25;
  const auto mix = [](std::uint64_t value) {
    value ^= value >> 32;
    value *= factor;
    value ^= value >> 29;
    return value;
  };
  std::uint64_t hash = mix(seed ^ static_cast<std::uint64_t>(bytes.size()) * factor);
  const char* at = bytes.data();
  qsizetype left = bytes.size();
  for (; left >= 8; at += 8, left -= 8) {
    std::uint64_t word = 0;
    std::memcpy(&word, at, 8);
    hash = mix(hash ^ (word * 0xD6E8FEB86659FD93));
  }
  std::uint64_t rest = 0;
  if (left > 0) std::memcpy(&rest, at, static_cast<std::size_t>(left));
  return mix(mix(hash ^ rest));
}

}  // namespace quilmora::journal
