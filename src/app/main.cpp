#include <cstdio>

#include <QApplication>
#include <QPainter>
#include <QStandardPaths>
#include <QSvgRenderer>
#include <QThreadPool>

#include "app/Application.h"
#include "app/SystemClipboard.h"
#include "app/Vendors.h"
#include "app/dialogs/AlertSheet.h"
#include "app/dialogs/FileDialogPanels.h"
#include "app/look/DesktopAppearance.h"
#include "app/look/Look.h"
#include "app/look/Widgets.h"
#include "app/window/MainWindow.h"
#include "platform/Bookmarks.h"
#include "platform/FileWriter.h"
#include "platform/KeychainKeyStore.h"
#include "platform/LocalModelServer.h"
#include "platform/Log.h"
#include "platform/NetworkTransport.h"
#include "platform/OpeningMark.h"
#include "platform/Paths.h"
#include "platform/ProcessGuards.h"
#include "platform/RecentlyUsedFile.h"
#include "platform/Scheduler.h"
#include "platform/SettingsStore.h"
#include "platform/SingleInstance.h"
#include "platform/TerminationSignals.h"

using namespace quilmora;

namespace {

// Of a window that contains only an alert.
constexpr QSize aloneSize(520, 240);

QStringList argumentsOf(int argc, char** argv) {
  QStringList arguments;
  for (int index = 1; index < argc; ++index) arguments.append(pathFromBytes(argv[index]));
  return arguments;
}

QIcon applicationIcon() {
  QSvgRenderer drawing(QStringLiteral(":/icons/quilmora.svg"));
  QIcon icon;
  for (const int size : {32, 64, 128}) {
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    drawing.render(&painter);
    painter.end();
    icon.addPixmap(picture);
  }
  return icon;
}

QString defaultFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) + QStringLiteral("/Quilmora");
}

// Another editor holds the documents and does not answer. A user who started this one from the desktop sees no
// terminal.
int tellWhyNotStarted(QApplication& toolkit, const QString& reason) {
  std::fprintf(stderr, "Quilmora: %s\n", qPrintable(reason));
  DesktopSettingsStore settings;
  const SystemDesktopAppearance desktop;
  Look look(settings, desktop);
  look.install(toolkit);
  Ground window(look, &Tokens::window, {});
  window.setWindowTitle(QGuiApplication::applicationDisplayName());
  window.resize(aloneSize);
  auto* alert = new AlertSheet(look, AlertSheet::Kind::error, QStringLiteral("Error"), reason, &window);
  QObject::connect(alert, &AlertSheet::closed, &window, &QWidget::close, Qt::QueuedConnection);
  window.show();
  alert->open();
  QApplication::exec();
  return 1;
}

// The window works anyway, and nothing is reported twice.
void tellWhatCannotBeKept(Application& application, DesktopSettingsStore& settings, const SingleInstance& instance,
                          Log& log, Alerts& alerts) {
  const auto tell = [&](const QString& message) {
    log.write(QStringLiteral("Quilmora: ") + message);
    alerts.showError(&application.window(), message);
  };
  const auto tellOfSettings = [tell](const QString& reason) {
    tell(QStringLiteral("Settings and the list of recent documents cannot be kept. ") + reason);
  };
  if (const QString obstacle = settings.obstacle(); !obstacle.isEmpty())
    tellOfSettings(obstacle);
  else
    settings.setFailureReceiver(tellOfSettings);
  if (!instance.error().isEmpty()) tell(instance.error());
}

}  // namespace

int main(int argc, char** argv) {
  guardProcess();
  neverWaitForStandardError();
  const QStringList documents = documentsOf(argumentsOf(argc, argv));
  // The toolkit sees no arguments: every one of them is a document.
  int toolkitArgumentCount = 1;
  QApplication toolkit(toolkitArgumentCount, argv);
  QCoreApplication::setApplicationName(QStringLiteral("quilmora"));
  QCoreApplication::setOrganizationName(QStringLiteral("quilmora"));
  QCoreApplication::setApplicationVersion(QStringLiteral(QUILMORA_VERSION));
  QGuiApplication::setApplicationDisplayName(QStringLiteral("Quilmora"));
  QGuiApplication::setDesktopFileName(QStringLiteral("quilmora"));

  const std::unique_ptr<SingleInstance> instance(SingleInstance::forUser());
  switch (instance->start(documents)) {
    case SingleInstance::Result::first:
      break;
    case SingleInstance::Result::handedOver:
      return 0;
    case SingleInstance::Result::failed:
      return tellWhyNotStarted(toolkit, instance->error());
  }

  QGuiApplication::setWindowIcon(applicationIcon());

  const TerminationSignals signalsCaught;
  const SystemClock clock;
  DesktopSettingsStore settings;
  PathBookmarks bookmarks;
  SystemLog log;
  DiskFileWriter writer;
  QThreadPool savingPool;
  savingPool.setMaxThreadCount(1);
  FileOpeningMark openingMark(QFileInfo(settings.path()).path() + QStringLiteral("/opening"));
  TimerScheduler scheduler;
  const SystemDesktopAppearance desktop;
  Look look(settings, desktop);
  FileDialogPanels panels(look, defaultFolder());
  const SystemClipboard clipboard;
  SheetAlerts alerts(look);
  KeychainKeyStore keys;
  const Vendors vendors = programVendors();
  NetworkTransport transport(vendors.tls);
  LocalModelServer onDeviceModel(transport, settings);
  RecentlyUsedFile recentlyUsed(RecentlyUsedFile::pathForUser(), writer, clock);
  Application application(toolkit, {clock,
                                    settings,
                                    bookmarks,
                                    log,
                                    writer,
                                    scheduler,
                                    panels,
                                    clipboard,
                                    alerts,
                                    look,
                                    defaultFolder(),
                                    [] { QCoreApplication::exit(0); },
                                    keys,
                                    transport,
                                    onDeviceModel,
                                    {[&recentlyUsed](const QString& path) { recentlyUsed.note(path); },
                                     [&recentlyUsed] { recentlyUsed.clear(); }},
                                    &openingMark,
                                    &savingPool,
                                    stateFolder(),
                                    vendors.claudeHost,
                                    vendors.openAIHost});
  QObject::connect(&signalsCaught, &TerminationSignals::received, &application, [&application] { application.quit(); });
  QObject::connect(instance.get(), &SingleInstance::documentsReceived, &application, &Application::documentsReceived);
  application.start(documents);
  tellWhatCannotBeKept(application, settings, *instance, log, alerts);
  return QApplication::exec();
}
