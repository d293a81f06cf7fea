// One start of a program that runs once per user. Prints its result and, if it is the first, each path that later
// starts pass on, and "shown" for starts without paths. Usage: support_single_instance LOCK SOCKET TIMEOUT
// [DOCUMENT...]

#include <cstdio>

#include <QCoreApplication>

#include "platform/SingleInstance.h"

using quilmora::SingleInstance;

namespace {

void tell(const QString& line) {
  std::puts(qPrintable(line));
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  const QStringList arguments = application.arguments();
  if (arguments.size() < 4) return 2;
  SingleInstance instance(arguments.at(1), arguments.at(2));
  QObject::connect(&instance, &SingleInstance::documentsReceived, [](const QStringList& paths) {
    if (paths.isEmpty()) tell(QStringLiteral("shown"));
    for (const QString& path : paths) tell(path);
  });
  switch (instance.start(arguments.mid(4), arguments.at(3).toInt())) {
    case SingleInstance::Result::first:
      tell(QStringLiteral("first"));
      return application.exec();
    case SingleInstance::Result::handedOver:
      tell(QStringLiteral("handed over"));
      return 0;
    case SingleInstance::Result::failed:
      tell(QStringLiteral("failed: ") + instance.error());
      return 1;
  }
}
