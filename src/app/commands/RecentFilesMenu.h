#pragma once

#include <QMenu>

namespace quilmora {

class NotificationCenter;
class RecentFiles;

// The recent documents, newest first, each by its file name.
class RecentFilesMenu : public QMenu {
  Q_OBJECT

 public:
  RecentFilesMenu(const QString& title, RecentFiles& files, NotificationCenter& notifications, QWidget* parent);

 private:
  void rebuild();

  RecentFiles& m_files;
  NotificationCenter& m_notifications;
};

}  // namespace quilmora
