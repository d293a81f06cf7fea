#include <clocale>
#include <cstdio>
#include <cstring>

#include <QGuiApplication>
#include <langinfo.h>

#include "cli/CommandLine.h"
#include "platform/Paths.h"
#include "platform/ProcessGuards.h"

// Unless the locale is UTF-8, Qt writes a warning to standard error, where scripts expect only our own line.
static void useUtf8Locale() {
  std::setlocale(LC_ALL, "");
  if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) qputenv("LC_ALL", "C.UTF-8");
}

// Scripts expect only our own line on standard error.
static void silence(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (type == QtFatalMsg) std::fprintf(stderr, "quilmora-cli: %s\n", qPrintable(message));
}

int main(int argc, char** argv) {
  quilmora::guardProcess();
  useUtf8Locale();
  qInstallMessageHandler(silence);
  // Pictures need fonts, and fonts need a platform; this one needs no display.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QStringList arguments;
  for (int index = 1; index < argc; ++index) arguments.append(quilmora::pathFromBytes(argv[index]));
  // The toolkit sees no arguments: a file may have the name of one of its options.
  int toolkitArgumentCount = 1;
  QGuiApplication application(toolkitArgumentCount, argv);
  QCoreApplication::setApplicationName(QStringLiteral("quilmora-cli"));
  return quilmora::runCommandLine(arguments);
}
