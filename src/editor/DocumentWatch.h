#pragma once

#include <QFileSystemWatcher>
#include <QObject>

#include "platform/FileState.h"
#include "platform/Scheduler.h"

class QThreadPool;

namespace quilmora {

// Notices what other programs do to the file of the open document: it watches the file and its folder, and looks again
// when it is asked to. The looking is done beside the main thread, for it may have to read the whole file.
class DocumentWatch : public QObject {
  Q_OBJECT

 public:
  // Programs that replace a file take a moment, in which it may be gone.
  static constexpr std::chrono::milliseconds settleDelay{250};

  // `pool` is the one that writes the file, so that no look falls into a write; without one, looks wait.
  DocumentWatch(Scheduler& scheduler, QThreadPool* pool);
  ~DocumentWatch() override;

  // The file as this program has just read or written it.
  void follow(const QString& path, const FileState& state);
  // No file, or one that cannot be written.
  void forget();

  // The file as this program knows it, which is what may be overwritten; nothing where none is followed.
  const std::optional<FileState>& known() const { return m_known; }
  // What another program did to it since, and the file as it is now.
  FileChange change() const { return m_change; }
  const FileState& present() const { return m_present; }
  // The file is another one now, and must not be written unasked.
  bool isForeign() const;

  // Compares the file soon, or when the write under way has ended.
  void look();
  // Between these two the file is being written by this program.
  void beginWrite();
  // What the write found, unless follow() told it before.
  void endWrite();
  void found(const FileComparison& comparison);

 Q_SIGNALS:
  // change() or present() is another.
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
  quint64 m_lookNumber = 0;  // only the last look counts
  bool m_isWriting = false;
  bool m_isLookWanted = false;
};

}  // namespace quilmora
