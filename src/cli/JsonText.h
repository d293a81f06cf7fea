#pragma once

#include <optional>

#include <QByteArray>
#include <QPointF>
#include <QString>
#include <QUuid>

namespace quilmora {

// Writes JSON on one line straight into a text. Numbers keep their full precision; one that is not finite becomes null. The
// caller opens and closes what it needs in the right order.
class JsonText {
 public:
  JsonText& beginObject();
  JsonText& endObject();
  JsonText& beginArray();
  JsonText& endArray();
  JsonText& key(const QString& name);
  JsonText& key(const char* name) { return key(QString::fromLatin1(name)); }

  JsonText& text(const QString& value);
  JsonText& number(double value);
  JsonText& integer(qint64 value);
  JsonText& flag(bool value);
  JsonText& null();
  JsonText& id(const QUuid& value);
  JsonText& point(QPointF value);
  // JSON that somebody else wrote.
  JsonText& raw(const QByteArray& json);

  JsonText& optionalId(const std::optional<QUuid>& value) { return value ? id(*value) : null(); }

  const QByteArray& result() const { return m_text; }

 private:
  void separate();

  QByteArray m_text;
  bool m_needsComma = false;
};

// An id as documents write it: 36 characters, upper case.
QString idText(const QUuid& id);

}  // namespace quilmora
