#include "editor/RecentFiles.h"

#include "platform/Bookmarks.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

namespace quilmora {

RecentFiles::RecentFiles(SettingsStore& settings, Bookmarks& bookmarks, DesktopList desktopList)
    : m_settings(settings), m_bookmarks(bookmarks), m_desktopList(std::move(desktopList)) {
  reload();
}

void RecentFiles::add(const QString& path) {
  const Bookmarks::Made made = m_bookmarks.make(path, Bookmarks::Kind::securityScoped);
  if (made.data.isEmpty()) return;
  QList<QByteArray> stored = storedWithout(path);
  stored.prepend(made.data);
  if (stored.size() > maxCount) stored.resize(maxCount);
  m_settings.setBytesList(settings::recentFileBookmarks, stored);
  if (m_desktopList.note) m_desktopList.note(path);
  reload();
}

void RecentFiles::remove(const QString& path) {
  m_settings.setBytesList(settings::recentFileBookmarks, storedWithout(path));
  reload();
}

void RecentFiles::clear() {
  m_settings.remove(settings::recentFileBookmarks);
  if (m_desktopList.clear) m_desktopList.clear();
  reload();
}

void RecentFiles::reload() {
  m_urls.clear();
  for (const QByteArray& bookmark : m_settings.bytesList(settings::recentFileBookmarks).value_or(QList<QByteArray>())) {
    if (const auto resolved = m_bookmarks.resolve(bookmark, Bookmarks::Kind::securityScoped))
      m_urls.append(resolved->path);
  }
  Q_EMIT urlsChanged();
}

// The stored list and the published one have the same order, so an entry is found by its index.
QList<QByteArray> RecentFiles::storedWithout(const QString& path) const {
  const QList<QByteArray> stored = m_settings.bytesList(settings::recentFileBookmarks).value_or(QList<QByteArray>());
  QList<QByteArray> kept;
  for (qsizetype index = 0; index < stored.size(); ++index) {
    if (index < m_urls.size() && m_urls.at(index) == path) continue;
    kept.append(stored.at(index));
  }
  return kept;
}

}  // namespace quilmora
