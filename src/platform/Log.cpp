#include "platform/Log.h"

#include <cstdio>

namespace quilmora {

void SystemLog::write(const QString& line) {
  QByteArray bytes = line.toUtf8();
  // One entry stays one line, whatever a file is called.
  bytes.replace('\n', ' ').replace('\r', ' ');
  bytes.append('\n');
  std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
  std::fflush(stderr);
}

}  // namespace quilmora
