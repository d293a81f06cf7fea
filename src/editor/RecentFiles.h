#pragma once

#include <QObject>
#include <QStringList>

namespace quilmora {

class Bookmarks;
class SettingsStore;

// The documents that were opened or saved last, newest first, at most ten; kept as bookmarks in the settings and shared
// by all windows.
class RecentFiles : public QObject {
  Q_OBJECT

 public:
  static constexpr int maxCount = 10;

  RecentFiles(SettingsStore& settings, Bookmarks& bookmarks);

  // Paths whose bookmarks resolve.
  const QStringList& urls() const { return m_urls; }
  void add(const QString& path);
  void remove(const QString& path);
  void clear();
  void reload();

 Q_SIGNALS:
  void urlsChanged();

 private:
  SettingsStore& m_settings;
  Bookmarks& m_bookmarks;
  QStringList m_urls;
};

}  // namespace quilmora
