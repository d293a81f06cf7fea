#pragma once

#include <optional>
#include <string>

#include <QPointF>
#include <QUuid>

#include "model/JsonWriter.h"

namespace quilmora {

// Writes JSON on one line, call by call, and inserts commas itself.
class JsonText {
 public:
  JsonText& beginObject() { return open(false); }
  JsonText& endObject();
  JsonText& beginArray() { return open(true); }
  JsonText& endArray();
  // A name that needs no escapes.
  JsonText& key(std::string_view name);

  JsonText& text(const QString& value);
  JsonText& number(double value);
  JsonText& integer(qint64 value);
  JsonText& flag(bool value);
  JsonText& null();
  JsonText& id(const QUuid& value);
  JsonText& optionalId(const std::optional<QUuid>& value) { return value ? id(*value) : null(); }
  JsonText& point(QPointF value);
  // Sets JSON from elsewhere as the whole text.
  void whole(QByteArray json) { m_whole = std::move(json); }

  // The text, or empty if nothing was written.
  QByteArray take() { return m_whole.isEmpty() ? m_writer.take() : std::move(m_whole); }

 private:
  JsonText& open(bool isArray);
  json::JsonWriter& next();

  json::JsonWriter m_writer{JsonForm::compact};
  std::string m_levels;  // 'a' for each open array, 'o' for each open object
  QByteArray m_whole;
};

// An id as documents write it: 36 characters, upper case.
std::string idText(const QUuid& id);

}  // namespace quilmora
