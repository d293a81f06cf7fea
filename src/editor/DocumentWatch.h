#pragma once

#include <QFileSystemWatcher>
#include <QObject>

#include "platform/FileState.h"
#include "platform/Scheduler.h"

class QThreadPool;

namespace quilmora {

// Notices what other programs do to the open document's file: it watches the file and its folder, and checks again when
// asked. Checks run off the main thread, because they may have to read the whole file.
class DocumentWatch : public QObject {
  Q_OBJECT

 public:
  // Programs that replace a file take a moment, in which it may be missing.
  static constexpr std::chrono::milliseconds settleDelay{250};

  // `pool` is the one that writes the file, so that no check runs during a write; without one, checks block.
  DocumentWatch(Scheduler& scheduler, QThreadPool* pool);
  ~DocumentWatch() override;

  // The file as this program has just read or written it.
  void follow(const QString& path, const FileState& state);
  // There is no file, or it cannot be written.
  void forget();

  // The file as this program knows it, and may overwrite it; nothing if none is followed.
  const std::optional<FileState>& known() const { return m_known; }
  // What another program has done to it since, and the file as it is now.
  FileChange change() const { return m_change; }
  const FileState& present() const { return m_present; }
  // The file has other content now, and must not be overwritten without asking.
  bool isForeign() const;

  // Checks the file soon, or when the write in progress has ended.
  void check();
  // Between these two calls this program is writing the file.
  void beginWrite();
  void endWrite();
  // What the write found, unless follow() was called in between.
  void found(const FileComparison& comparison);

 Q_SIGNALS:
  // change() or present() has changed.
  void changed();

 private:
  void lookSoon();
  void rearm();

  Scheduler& m_scheduler;
  QThreadPool* m_pool;
  QFileSystemWatcher m_watcher;
  QString m_path;
  std::optional<FileState> m_known;
  FileChange m_change = FileChange::none;
  FileState m_present;
  Scheduler::Task m_lookTask = 0;
  quint64 m_lookNumber = 0;  // only the latest check counts
  bool m_isWriting = false;
  bool m_isLookWanted = false;
};

}  // namespace quilmora
