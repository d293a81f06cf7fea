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

// The application object: the window's life, the key that minimises it, and the ways to end. Everything of the machine
// comes from outside.
class Application : public QObject {
  Q_OBJECT

 public:
  Application(QApplication& toolkit, Machine machine);
  ~Application() override;

  // Dresses the application, and makes and shows the window with these documents, or with the last one when there are
  // none.
  void start(const QStringList& documents);
  // A later start of the program: shows the window and opens the documents, if any, in it.
  void documentsReceived(const QStringList& paths);
  // Saves, and ends.
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

// The documents that a command line names, as absolute paths. Every argument is a document: a path or a file URL.
QStringList documentsOf(const QStringList& arguments);

}  // namespace quilmora
