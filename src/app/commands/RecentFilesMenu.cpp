#include "app/commands/RecentFilesMenu.h"

#include <QFileInfo>

#include "canvas/view/PlainText.h"
#include "editor/RecentFiles.h"
#include "platform/Notifications.h"

namespace quilmora {

RecentFilesMenu::RecentFilesMenu(const QString& title, RecentFiles& files, NotificationCenter& notifications,
                                 QWidget* parent)
    : QMenu(title, parent), m_files(files), m_notifications(notifications) {
  setToolTipsVisible(true);
  // Queued, because the list changes while one of its own entries is being triggered.
  connect(&files, &RecentFiles::urlsChanged, this, &RecentFilesMenu::rebuild, Qt::QueuedConnection);
  rebuild();
}

void RecentFilesMenu::rebuild() {
  clear();
  for (const QString& path : m_files.urls()) {
    QAction* entry = plain::addAction(*this, QFileInfo(path).fileName());
    plain::setToolTip(*entry, path);
    connect(entry, &QAction::triggered, this,
            [this, path] { m_notifications.post(Notification::openRecentFile, path); });
  }
  if (m_files.urls().isEmpty()) {
    addAction(QStringLiteral("No Recent Documents"))->setEnabled(false);
    return;
  }
  addSeparator();
  connect(addAction(QStringLiteral("&Clear Menu")), &QAction::triggered, this, [this] { m_files.clear(); });
}

}  // namespace quilmora
