#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include <QPointF>
#include <QRectF>
#include <QString>
#include <QUuid>
#include <simdjson.h>

#include "model/MindMap.h"
#include "platform/Clock.h"

// Strict reading of records from a parsed JSON document. Everything here throws DocumentError naming the place of the
// value.
namespace quilmora::json {

// The place of a value in the document. It is turned into text only for an error. Points to its parent, which must
// outlive it.
class Place {
 public:
  Place() = default;  // the document as a whole
  Place(const Place& parent, std::string_view key) : m_parent(&parent), m_key(key) {}
  Place(const Place& parent, std::size_t index) : m_parent(&parent), m_index(index) {}

  // Such as "nodes[12].style.fill".
  QString text() const;

 private:
  static constexpr std::size_t noIndex = static_cast<std::size_t>(-1);

  const Place* m_parent = nullptr;
  std::string_view m_key;
  std::size_t m_index = noIndex;
};

[[noreturn]] void fail(const Place& place, const QString& cause);

struct Field {
  simdjson::dom::element value;
  Place place;
};

// The keys of a record. List them in sorted order, the order in which documents hold them.
template <std::size_t N>
struct KeyList {
  std::array<std::string_view, N> names;

  // The number of a key; an unlisted key does not compile.
  consteval std::size_t operator[](std::string_view name) const {
    for (std::size_t i = 0; i < N; ++i)
      if (names[i] == name) return i;
    throw "no such key";
  }
};
template <class... Texts>
constexpr KeyList<sizeof...(Texts)> keyList(const Texts&... texts) {
  return {{std::string_view(texts)...}};
}

// Puts the values of the listed keys into `values` and returns a bit mask of those present. A null counts as absent,
// unlisted keys are ignored, and a repeated key throws.
std::uint32_t collectFields(const Field& field, std::span<const std::string_view> names,
                            std::span<simdjson::dom::element> values);

template <std::size_t N>
class Record {
 public:
  Record(const Field& field, const KeyList<N>& keys)
      : m_place(field.place), m_keys(keys), m_present(collectFields(field, keys.names, m_values)) {
    static_assert(N <= 32);
  }
  Record(const Record&) = delete;
  Record& operator=(const Record&) = delete;

  bool has(std::size_t key) const { return (m_present >> key & 1) != 0; }
  Field required(std::size_t key) const {
    if (!has(key)) fail(Place(m_place, m_keys.names[key]), QStringLiteral("missing"));
    return {m_values[key], Place(m_place, m_keys.names[key])};
  }
  // Reads the field with read(Field) if it is present.
  template <class Read>
  auto optional(std::size_t key, Read&& read) const -> std::optional<decltype(read(std::declval<Field>()))> {
    if (!has(key)) return std::nullopt;
    return read(Field{m_values[key], Place(m_place, m_keys.names[key])});
  }

 private:
  Place m_place;
  const KeyList<N>& m_keys;
  std::array<simdjson::dom::element, N> m_values;
  std::uint32_t m_present;
};

// Converts well-formed UTF-8 without loss.
QString textFromUtf8(std::string_view text);

simdjson::dom::array asArray(const Field& field);
std::string_view asUtf8(const Field& field);
QString asText(const Field& field);
bool asBoolean(const Field& field);
double asNumber(const Field& field);
// A whole number, possibly written as a real such as 1.0.
std::int64_t asInteger(const Field& field);
QPointF asPoint(const Field& field);
QRectF asRect(const Field& field);
QUuid asUuid(const Field& field);
TimePoint asTime(const Field& field);

[[noreturn]] void failUnknownValue(const Field& field, std::string_view text);

template <class Enumeration>
Enumeration asEnumeration(const Field& field) {
  const std::string_view text = asUtf8(field);
  const std::optional<Enumeration> value = fromRawValue<Enumeration>(text);
  if (!value) failUnknownValue(field, text);
  return *value;
}

// Gives equal short texts, mostly colours, one shared storage. Remembers a bounded number of them, for as long as the
// parsed document exists.
class TextPool {
 public:
  QString shared(std::string_view text);

 private:
  struct Entry {
    std::string_view key;
    QString text;
  };
  std::array<Entry, 1024> m_entries;
};

}  // namespace quilmora::json
