#include "editor/DocumentWatch.h"

#include <utility>

#include <QFileInfo>

#include "platform/Futures.h"
#include "platform/StartInPool.h"

namespace quilmora {

namespace {

// The folder of the path, or its nearest existing ancestor.
QString nearestFolder(const QString& path) {
  QString folder = QFileInfo(path).path();
  while (!QFileInfo::exists(folder) && folder.size() > 1) folder = QFileInfo(folder).path();
  return folder;
}

}  // namespace

DocumentWatch::DocumentWatch(Scheduler& scheduler, QThreadPool* pool) : m_scheduler(scheduler), m_pool(pool) {
  connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &DocumentWatch::lookSoon);
  connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &DocumentWatch::lookSoon);
}

DocumentWatch::~DocumentWatch() {
  m_scheduler.cancel(m_lookTask);
}

void DocumentWatch::follow(const QString& path, const FileState& state) {
  ++m_lookNumber;
  m_path = path;
  m_known = state;
  m_present = state;
  m_isLookWanted = false;
  rearm();
  if (std::exchange(m_change, FileChange::none) != FileChange::none) Q_EMIT changed();
}

void DocumentWatch::forget() {
  ++m_lookNumber;
  m_known.reset();
  rearm();
  if (std::exchange(m_change, FileChange::none) != FileChange::none) Q_EMIT changed();
}

bool DocumentWatch::isForeign() const {
  return m_change == FileChange::removed || m_change == FileChange::becameLink || m_change == FileChange::changed;
}

void DocumentWatch::lookSoon() {
  m_scheduler.cancel(m_lookTask);
  m_lookTask = m_scheduler.after(settleDelay, [this] {
    m_lookTask = 0;
    check();
  });
}

void DocumentWatch::check() {
  if (!m_known) return;
  if (m_isWriting) {
    m_isLookWanted = true;
    return;
  }
  rearm();
  const quint64 number = ++m_lookNumber;
  const auto comparison = startInPool(m_pool, [known = *m_known, path = m_path] { return compareFile(known, path); });
  if (m_pool == nullptr) return found(comparison.result());
  whenFinished(
      comparison, this,
      [this, number](const FileComparison& result) {
        if (number == m_lookNumber) found(result);
      },
      [](const std::exception&) {});
}

void DocumentWatch::beginWrite() {
  m_isWriting = true;
  ++m_lookNumber;
}

void DocumentWatch::endWrite() {
  m_isWriting = false;
  rearm();
  if (std::exchange(m_isLookWanted, false)) lookSoon();
}

void DocumentWatch::found(const FileComparison& comparison) {
  if (!m_known) return;
  // The file was rewritten with the same content, or its folder disappeared: from now on that is the known state.
  if (comparison.change == FileChange::none || comparison.change == FileChange::folderGone) m_known = comparison.now;
  const bool isAsBefore = comparison.change == m_change && comparison.now.stamp == m_present.stamp;
  const bool wasChanged = m_change != FileChange::none;
  m_change = comparison.change;
  m_present = comparison.now;
  if (!isAsBefore && (wasChanged || m_change != FileChange::none)) Q_EMIT changed();
}

// A watch belongs to the file that existed when it began, not to the path, so it must be renewed each time.
void DocumentWatch::rearm() {
  const QStringList present = m_watcher.files() + m_watcher.directories();
  if (!present.isEmpty()) m_watcher.removePaths(present);
  if (!m_known) return;
  m_watcher.addPath(nearestFolder(m_path));
  if (QFileInfo::exists(m_path)) m_watcher.addPath(m_path);
}

}  // namespace quilmora
