#include "support/Folders.h"

// The only source that knows where it was built, so that a compiler cache can serve all the others in any folder.
QString sourceFolder() {
  return QStringLiteral(QUILMORA_SOURCE_FOLDER);
}

QString programFolder() {
  return QStringLiteral(QUILMORA_PROGRAM_FOLDER);
}

QString supportProgramFolder() {
  return QStringLiteral(QUILMORA_SUPPORT_PROGRAM_FOLDER);
}
