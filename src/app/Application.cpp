#include "app/Application.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QSessionManager>
#include <QUrl>

#include "app/look/Look.h"
#include "app/window/MainWindow.h"
#include "platform/KeyStore.h"
#include "platform/Paths.h"

namespace quilmora {

namespace {

bool isMinimizeKey(const QKeyEvent& event) {
  return event.key() == Qt::Key_W && event.modifiers() == Qt::ControlModifier;
}

// A dialog stands for the window that it belongs to.
QWidget* activeTopLevelWindow() {
  QWidget* window = QApplication::activeWindow();
  while (window != nullptr && window->parentWidget() != nullptr) window = window->parentWidget()->window();
  return window;
}

}  // namespace

Application::Application(QApplication& toolkit, Machine machine)
    : m_toolkit(toolkit),
      m_machine(std::move(machine)),
      m_recentFiles(m_machine.settings, m_machine.bookmarks, m_machine.desktopList) {
  toolkit.setQuitOnLastWindowClosed(false);
  toolkit.installEventFilter(this);
  connect(&toolkit, &QGuiApplication::commitDataRequest, this, &Application::sessionEnds, Qt::DirectConnection);
  // The desktop session restarts the program without arguments: it reopens its document by itself.
  connect(&toolkit, &QGuiApplication::saveStateRequest, this,
          [](QSessionManager& manager) { manager.setRestartCommand({QCoreApplication::applicationFilePath()}); });
}

Application::~Application() {
  m_toolkit.removeEventFilter(this);
}

void Application::start(const QStringList& documents) {
  migrateKeys(m_machine.settings, m_machine.keys);
  m_machine.look.install(m_toolkit);
  m_window = std::make_unique<MainWindow>(m_machine, m_notifications, m_recentFiles, documents, [this] { quit(); });
  m_window->show();
}

void Application::documentsReceived(const QStringList& paths) {
  m_window->openHandedOver(paths);
}

void Application::quit() {
  m_notifications.post(Notification::autoSaveBeforeQuit);
  m_machine.terminate();
}

void Application::sessionEnds(QSessionManager&) {
  m_notifications.post(Notification::autoSaveBeforeQuit);
}

bool Application::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && isMinimizeKey(*static_cast<QKeyEvent*>(event))) {
    if (QWidget* window = activeTopLevelWindow()) window->showMinimized();
    return true;
  }
  // The desktop asks to quit; the toolkit would first try to close the windows, which refuse.
  if (event->type() == QEvent::Quit && watched == &m_toolkit) {
    quit();
    return true;
  }
  return QObject::eventFilter(watched, event);
}

QStringList documentsOf(const QStringList& arguments) {
  QStringList documents;
  for (const QString& argument : arguments) {
    const QUrl url(argument);
    const QString path = url.isLocalFile() ? pathFromUrl(url) : argument;
    if (!path.isEmpty()) documents.append(absolutePath(path));
  }
  return documents;
}

}  // namespace quilmora
