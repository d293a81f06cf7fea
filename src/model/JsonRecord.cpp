#include "model/JsonRecord.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "model/DocumentError.h"
#include "model/StoredText.h"

namespace quilmora::json {

namespace {

using simdjson::dom::element;

// A text of the document as part of a message: at most one line.
QString quotable(std::string_view text) {
  constexpr qsizetype longest = 40;
  QString quoted = QString::fromUtf8(QByteArrayView(text.substr(0, 4 * longest)));
  if (quoted.size() > longest) quoted = quoted.left(longest) + QChar(0x2026);
  for (QChar& character : quoted)
    if (character.category() == QChar::Other_Control) character = QChar(QChar::ReplacementCharacter);
  return quoted;
}

[[noreturn]] void failKeyTwice(const Place& record, std::string_view key) {
  fail(Place(record, key), QStringLiteral("the key stands twice"));
}

std::optional<std::array<double, 2>> pairOf(element value) {
  simdjson::dom::array items;
  if (value.get(items) != simdjson::SUCCESS) return std::nullopt;
  std::array<double, 2> pair{};
  std::size_t count = 0;
  for (const element item : items) {
    if (count == 2 || item.get(pair[count]) != simdjson::SUCCESS) return std::nullopt;
    ++count;
  }
  if (count != 2) return std::nullopt;
  return pair;
}

}  // namespace

QString textFromUtf8(std::string_view text) {
  // QString::fromUtf8 drops U+FEFF at the start as an encoding mark, but here it is content.
  constexpr std::string_view mark = "\xEF\xBB\xBF";
  qsizetype marks = 0;
  for (; text.starts_with(mark); text.remove_prefix(mark.size())) ++marks;
  QString result = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  if (marks > 0) result.prepend(QString(marks, QChar(QChar::ByteOrderMark)));
  return result;
}

QString Place::text() const {
  if (!m_parent) return {};
  const QString before = m_parent->text();
  if (m_index != noIndex) return before + QLatin1Char('[') + QString::number(m_index) + QLatin1Char(']');
  return before.isEmpty() ? quotable(m_key) : before + QLatin1Char('.') + quotable(m_key);
}

void fail(const Place& place, const QString& cause) {
  const QString where = place.text();
  throw DocumentError((where.isEmpty() ? QStringLiteral("the document") : where) + QStringLiteral(": ") + cause);
}

void failUnknownValue(const Field& field, std::string_view text) {
  fail(field.place, QStringLiteral("unknown value \"%1\"").arg(quotable(text)));
}

std::uint32_t collectFields(const Field& field, std::span<const std::string_view> names, std::span<element> values) {
  simdjson::dom::object object;
  if (field.value.get(object) != simdjson::SUCCESS) fail(field.place, QStringLiteral("expected an object"));
  std::uint32_t seen = 0;
  std::uint32_t present = 0;
  std::vector<std::string_view> unknown;
  std::size_t next = 0;
  for (const auto& [key, value] : object) {
    // In a document with sorted keys the next key follows the last one.
    std::size_t k = next;
    while (k < names.size() && names[k] != key) ++k;
    if (k == names.size()) {
      k = 0;
      while (k < next && names[k] != key) ++k;
      if (k == next) {
        unknown.push_back(key);
        continue;
      }
    }
    if ((seen >> k & 1) != 0) failKeyTwice(field.place, key);
    seen |= 1u << k;
    next = k + 1;
    if (value.is_null()) continue;
    values[k] = value;
    present |= 1u << k;
  }
  std::sort(unknown.begin(), unknown.end());
  const auto twice = std::adjacent_find(unknown.begin(), unknown.end());
  if (twice != unknown.end()) failKeyTwice(field.place, *twice);
  return present;
}

simdjson::dom::array asArray(const Field& field) {
  simdjson::dom::array array;
  if (field.value.get(array) != simdjson::SUCCESS) fail(field.place, QStringLiteral("expected an array"));
  return array;
}

std::string_view asUtf8(const Field& field) {
  std::string_view text;
  if (field.value.get(text) != simdjson::SUCCESS) fail(field.place, QStringLiteral("expected a text"));
  return text;
}

QString asText(const Field& field) {
  return textFromUtf8(asUtf8(field));
}

bool asBoolean(const Field& field) {
  bool value = false;
  if (field.value.get(value) != simdjson::SUCCESS) fail(field.place, QStringLiteral("expected true or false"));
  return value;
}

double asNumber(const Field& field) {
  double value = 0;
  if (field.value.get(value) != simdjson::SUCCESS) fail(field.place, QStringLiteral("expected a number"));
  return value;
}

std::int64_t asInteger(const Field& field) {
  std::int64_t whole = 0;
  if (field.value.get(whole) == simdjson::SUCCESS) return whole;
  const double real = asNumber(field);
  if (real != std::trunc(real)) fail(field.place, QStringLiteral("expected a whole number"));
  constexpr double limit = 9223372036854775808.0;  // 2^63
  if (real < -limit || real >= limit) fail(field.place, QStringLiteral("number out of range"));
  return static_cast<std::int64_t>(real);
}

QPointF asPoint(const Field& field) {
  const auto pair = pairOf(field.value);
  if (!pair) fail(field.place, QStringLiteral("expected an array of two numbers"));
  return {(*pair)[0], (*pair)[1]};
}

QRectF asRect(const Field& field) {
  const QString cause = QStringLiteral("expected an array of two arrays of two numbers");
  simdjson::dom::array items;
  if (field.value.get(items) != simdjson::SUCCESS) fail(field.place, cause);
  std::array<std::array<double, 2>, 2> pairs{};
  std::size_t count = 0;
  for (const element item : items) {
    const auto pair = pairOf(item);
    if (count == 2 || !pair) fail(field.place, cause);
    pairs[count++] = *pair;
  }
  if (count != 2) fail(field.place, cause);
  return {pairs[0][0], pairs[0][1], pairs[1][0], pairs[1][1]};
}

QUuid asUuid(const Field& field) {
  const std::optional<QUuid> id = uuidFromText(asUtf8(field));
  if (!id) fail(field.place, QStringLiteral("not a UUID"));
  return *id;
}

TimePoint asTime(const Field& field) {
  const std::optional<TimePoint> time = timeFromText(asUtf8(field));
  if (!time) fail(field.place, QStringLiteral("not a date of the form YYYY-MM-DDTHH:MM:SSZ"));
  return *time;
}

QString TextPool::shared(std::string_view text) {
  constexpr std::size_t longest = 32;
  if (text.empty()) return {};
  if (text.size() > longest) return textFromUtf8(text);
  std::uint32_t hash = 2166136261u;  // FNV-1a
  for (const char character : text) hash = (hash ^ static_cast<unsigned char>(character)) * 16777619u;
  Entry& entry = m_entries[(hash ^ hash >> 15) % m_entries.size()];
  if (entry.key != text) entry = {text, textFromUtf8(text)};
  return entry.text;
}

}  // namespace quilmora::json
