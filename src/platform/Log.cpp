#include "platform/Log.h"

#include "platform/ProcessGuards.h"

namespace quilmora {

void SystemLog::write(const QString& line) {
  QByteArray bytes = line.toUtf8();
  // One entry stays one line, whatever a file is called.
  bytes.replace('\n', ' ').replace('\r', ' ');
  bytes.append('\n');
  writeToStandardError(bytes);
}

}  // namespace quilmora
