#pragma once

#include <functional>

#include <QByteArray>
#include <QList>
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

  // The desktop's own list of recent documents, if it has one; both may be empty.
  struct DesktopList {
    std::function<void(const QString& path)> note;
    std::function<void()> clear;
  };

  RecentFiles(SettingsStore& settings, Bookmarks& bookmarks, DesktopList desktopList = {});

  // Paths whose bookmarks resolve.
  const QStringList& urls() const { return m_urls; }
  void add(const QString& path);
  void remove(const QString& path);
  void clear();
  void reload();

 Q_SIGNALS:
  void urlsChanged();

 private:
  QList<QByteArray> storedWithout(const QString& path) const;

  SettingsStore& m_settings;
  Bookmarks& m_bookmarks;
  DesktopList m_desktopList;
  QStringList m_urls;
};

}  // namespace quilmora
