#include <clocale>
#include <cstring>

#include <QCoreApplication>
#include <langinfo.h>

#include "cli/CommandLine.h"

// Qt writes a warning to standard error, where scripts expect nothing but our own line, unless the locale is UTF-8.
static void useUtf8Locale() {
  std::setlocale(LC_ALL, "");
  if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) qputenv("LC_ALL", "C.UTF-8");
}

int main(int argc, char** argv) {
  useUtf8Locale();
  QCoreApplication application(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("quilmora-cli"));
  return quilmora::runCommandLine(QCoreApplication::arguments().mid(1));
}
