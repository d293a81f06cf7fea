#pragma once

#include <QUuid>

namespace quilmora::test {

inline QUuid id(unsigned number) {
  return QUuid(number, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
}

}  // namespace quilmora::test
