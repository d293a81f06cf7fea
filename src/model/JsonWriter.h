#pragma once

#include <cstdint>
#include <string_view>

#include <QByteArray>
#include <QPointF>
#include <QString>

#include "model/ByteBuffer.h"
#include "model/DocumentWriter.h"

namespace quilmora::json {

// Writes JSON text into one growing buffer. The caller is responsible for the structure: in an object each value
// follows its key. The text is always valid: lone surrogates become U+FFFD, infinite numbers the nearest finite one,
// NaN 0.
class JsonWriter {
 public:
  explicit JsonWriter(JsonForm form) : m_isPretty(form == JsonForm::pretty) {}

  void beginObject() { open('{'); }
  void endObject() { close('}'); }
  void beginArray() { open('['); }
  void endArray() { close(']'); }

  // The key of the next value; must need no escapes.
  void key(std::string_view name);
  // Begins the next value of an array.
  void item() { separate(); }

  void text(const QString& text);
  // A text that needs no escapes.
  void plainText(std::string_view text);
  void number(double value);
  void integer(std::int64_t value);
  void boolean(bool value);
  void null();
  // "[x, y]" on one line.
  void pair(double x, double y);

  // The text since the last clear(), for writing it out in pieces.
  std::string_view pending() const { return m_buffer.text(); }
  void clear() { m_buffer.clear(); }
  // Call after the last value: adds a line feed when pretty.
  void finish();
  // The whole text, finished.
  QByteArray take();

 private:
  void open(char bracket);
  void close(char bracket);
  void separate();
  void newLine();
  void putText(const char16_t* units, qsizetype count);

  ByteBuffer m_buffer;
  int m_depth = 0;
  bool m_isPretty;
  bool m_isFirst = true;  // the innermost array or object is still empty
};

}  // namespace quilmora::json
