#include "platform/Paths.h"

#include <QDir>

namespace quilmora {

QString absolutePath(const QString& path) {
  QString result = path.startsWith(u'/') ? path : QDir::currentPath() + u'/' + path;
  while (result.size() > 1 && result.endsWith(u'/')) result.chop(1);
  return result;
}

}  // namespace quilmora
