#pragma once

#include <memory>

#include <QObject>
#include <QStringList>

#include "app/window/Machine.h"
#include "editor/RecentFiles.h"
#include "platform/Notifications.h"

class QApplication;
class QSessionManager;

namespace quilmora {

class MainWindow;

// The application object: the life of the window, the key that minimises it, and the ways to quit. Everything from the
// machine is passed in.
class Application : public QObject {
  Q_OBJECT

 public:
  Application(QApplication& toolkit, Machine machine);
  ~Application() override;

  // Sets the application's look, and creates and shows the window with these documents, or with the last one if there
  // are none.
  void start(const QStringList& documents);
  // From a later start of the program: shows the window and opens the documents, if any, in it.
  void documentsReceived(const QStringList& paths);
  // Saves and quits.
  void quit();

  NotificationCenter& notifications() { return m_notifications; }
  RecentFiles& recentFiles() { return m_recentFiles; }
  MainWindow& window() { return *m_window; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void sessionEnds(QSessionManager& manager);

  QApplication& m_toolkit;
  Machine m_machine;
  NotificationCenter m_notifications;
  RecentFiles m_recentFiles;
  std::unique_ptr<MainWindow> m_window;
};

// The documents named on a command line, as absolute paths. Every argument is a document: a path or a file URL.
QStringList documentsOf(const QStringList& arguments);

}  // namespace quilmora
