#include "platform/Log.h"

#include "platform/ProcessGuards.h"

namespace quilmora {

void SystemLog::write(const QString& line) {
  QByteArray bytes = line.toUtf8();
  // One entry stays on one line, whatever the name of a file.
  bytes.replace('\n', ' ').replace('\r', ' ');
  bytes.append('\n');
  writeToStandardError(bytes);
}

}  // namespace quilmora
