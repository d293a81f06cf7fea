#pragma once

#include <ostream>

#include <QByteArray>
#include <QString>

// How a failed expectation shows Qt's texts. Found by the type of the argument, so these stand in no namespace.
inline void PrintTo(const QString& text, std::ostream* stream) {
  *stream << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QByteArray& bytes, std::ostream* stream) {
  *stream << '"' << bytes.toPercentEncoding(" /.,:{}[]").toStdString() << '"';
}
