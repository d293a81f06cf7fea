#pragma once

#include <ostream>

#include <QByteArray>
#include <QString>

// How a failed expectation prints Qt's texts. Found by argument type, so these are in no namespace.
inline void PrintTo(const QString& text, std::ostream* stream) {
  *stream << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QByteArray& bytes, std::ostream* stream) {
  *stream << '"' << bytes.toPercentEncoding(" /.,:{}[]").toStdString() << '"';
}
