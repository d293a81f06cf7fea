#include "script/JsonText.h"

#include "model/StoredText.h"

namespace quilmora {

// The writer, ready for the next value.
json::JsonWriter& JsonText::next() {
  if (!m_levels.empty() && m_levels.back() == 'a') m_writer.item();
  return m_writer;
}

JsonText& JsonText::open(bool isArray) {
  json::JsonWriter& writer = next();
  isArray ? writer.beginArray() : writer.beginObject();
  m_levels.push_back(isArray ? 'a' : 'o');
  return *this;
}

JsonText& JsonText::endObject() {
  m_levels.pop_back();
  m_writer.endObject();
  return *this;
}

JsonText& JsonText::endArray() {
  m_levels.pop_back();
  m_writer.endArray();
  return *this;
}

JsonText& JsonText::key(std::string_view name) {
  m_writer.key(name);
  return *this;
}

JsonText& JsonText::text(const QString& value) {
  next().text(value);
  return *this;
}

JsonText& JsonText::number(double value) {
  next().number(value);
  return *this;
}

JsonText& JsonText::integer(qint64 value) {
  next().integer(value);
  return *this;
}

JsonText& JsonText::flag(bool value) {
  next().boolean(value);
  return *this;
}

JsonText& JsonText::null() {
  next().null();
  return *this;
}

JsonText& JsonText::id(const QUuid& value) {
  next().plainText(idText(value));
  return *this;
}

JsonText& JsonText::point(QPointF value) {
  next().pair(value.x(), value.y());
  return *this;
}

std::string idText(const QUuid& id) {
  const auto text = textOfUuid(id);
  return std::string(text.data(), text.size());
}

}  // namespace quilmora
