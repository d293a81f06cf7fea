#pragma once

#include <initializer_list>

#include <QStringList>

namespace quilmora::test {

// Texts to compare a list with, in UTF-8.
inline QStringList lines(std::initializer_list<const char*> texts) {
  QStringList list;
  for (const char* text : texts) list.append(QString::fromUtf8(text));
  return list;
}

}  // namespace quilmora::test
