#pragma once

#include <map>
#include <memory>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "editor/DocumentSession.h"
#include "editor/RecentFiles.h"
#include "platform/Bookmarks.h"
#include "platform/FileDialogs.h"
#include "platform/FileWriter.h"
#include "platform/Log.h"
#include "platform/SettingsStore.h"
#include "support/QtPrinters.h"

namespace quilmora {

// Bookmarks of a sandboxed desktop, whose every call can be made to fail. The data contains the kind and the path.
class ScriptedBookmarks final : public Bookmarks {
 public:
  Made make(const QString& path, Kind kind) override {
    const bool fails = kind == Kind::securityScoped ? scopedMakingFails : plainMakingFails;
    if (fails) return {{}, QStringLiteral("not allowed")};
    return {(kind == Kind::securityScoped ? "scoped:" : "plain:") + path.toUtf8(), {}};
  }
  std::optional<Resolved> resolve(const QByteArray& bookmark, Kind kind) override {
    const QByteArray prefix = kind == Kind::securityScoped ? "scoped:" : "plain:";
    if (!bookmark.startsWith(prefix) || unresolvable.contains(bookmark)) return std::nullopt;
    return Resolved{QString::fromUtf8(bookmark.mid(prefix.size())), isStale};
  }
  bool startAccess(const QString& path) override {
    calls.append(QStringLiteral("start ") + path);
    return grantsAccess;
  }
  void stopAccess(const QString& path) override { calls.append(QStringLiteral("stop ") + path); }

  bool scopedMakingFails = false;
  bool plainMakingFails = false;
  bool isStale = false;
  bool grantsAccess = true;
  QList<QByteArray> unresolvable;
  QStringList calls;
};

// One window's saving with real files in a temporary folder, and everything else in memory.
class SavingFixture : public testing::Test {
 protected:
  SavingFixture() { start(); }

  // A new start of the program: another editor and session with the same settings and files.
  void start() {
    session.reset();
    editor.reset();
    recentFiles = std::make_unique<RecentFiles>(settings, bookmarks);
    const EditorServices services{clock, settings, bookmarks, log};
    editor = std::make_unique<MindMapViewModel>(MindMap::blankMap(clock), services);
    session = std::make_unique<DocumentSession>(
        *editor,
        DocumentSession::Services{services, writer, panels, scheduler, notifications, *recentFiles, defaultFolder()});
    QObject::connect(session.get(), &DocumentSession::errorRaised,
                     [this](const QString& message) { errors.append(message); });
    QObject::connect(session.get(), &DocumentSession::changesNotKept,
                     [this](const QString& path, const QString& reason) {
                       notKept.append({path, reason});
                     });
  }

  QString path(const QString& name) const { return m_home.filePath(name); }
  QString home() const { return m_home.path(); }
  QString defaultFolder() const { return path(QStringLiteral("Documents/Quilmora")); }
  QString inDefaultFolder(const QString& name) const { return defaultFolder() + u'/' + name; }

  void setTitle(const QString& title) {
    MindMap map = editor->mindMap();
    map.title = title;
    editor->setMindMap(map);
  }
  // Adds a topic, with a snapshot as every command takes one.
  void edit() { editor->createFreeNode(40.0 * static_cast<double>(editor->mindMap().nodes.size()), 0.0); }
  MindMap mapWithTitle(const QString& title) const {
    MindMap map = MindMap::blankMap(clock);
    map.title = title;
    return map;
  }
  static void put(const QString& file, const QByteArray& data) {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(file).path()));
    QFile output(file);
    ASSERT_TRUE(output.open(QIODevice::WriteOnly));
    ASSERT_EQ(output.write(data), data.size());
  }
  static QByteArray content(const QString& file) {
    QFile input(file);
    return input.open(QIODevice::ReadOnly) ? input.readAll() : QByteArrayLiteral("(unreadable)");
  }
  static QStringList namesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
  }

  ManualClock clock;
  MemorySettingsStore settings;
  ScriptedBookmarks bookmarks;
  MemoryLog log;
  DiskFileWriter writer;
  QueuedFileDialogs panels;
  ManualScheduler scheduler;
  NotificationCenter notifications;
  std::unique_ptr<RecentFiles> recentFiles;
  std::unique_ptr<MindMapViewModel> editor;
  std::unique_ptr<DocumentSession> session;
  QStringList errors;
  QList<std::pair<QString, QString>> notKept;  // the document that was not opened, and why

 private:
  QTemporaryDir m_home;
};

}  // namespace quilmora
