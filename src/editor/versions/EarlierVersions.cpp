#include "editor/versions/EarlierVersions.h"

#include <new>

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <fcntl.h>
#include <unistd.h>

#include "model/DocumentFile.h"
#include "platform/Log.h"
#include "platform/StartInPool.h"

namespace quilmora {

namespace {

TimePoint timeOf(const QFileInfo& file) {
  return TimePoint(std::chrono::milliseconds(file.lastModified().toMSecsSinceEpoch()));
}

qint64 modifiedAt(const QString& path) {
  const QFileInfo file(path);
  return file.exists() ? file.lastModified().toMSecsSinceEpoch() : 0;
}

// A failure with a version does not affect the document itself.
void guarded(Log& log, const std::function<void()>& work) {
  QString problem;
  try {
    return work();
  } catch (const TextError& error) {
    problem = error.message();
  } catch (const std::bad_alloc&) {
    problem = QStringLiteral("There is not enough memory for it.");
  }
  log.write(QStringLiteral("Quilmora: earlier version FAILED: ") + problem);
}

}  // namespace

EarlierVersions::EarlierVersions(const Clock& clock, Log& log, const QString& folder)
    : m_clock(clock), m_log(log), m_store(std::make_shared<versions::VersionStore>(folder)) {
  m_pool.setMaxThreadCount(1);
}

EarlierVersions::~EarlierVersions() {
  settle();
}

void EarlierVersions::documentHolds(const QString& document, const MindMap& map, Origin origin,
                                    std::optional<TimePoint> time) {
  if (!m_held || m_held->document != document) m_lastKept.reset();
  const QFileInfo file(document);
  const TimePoint since = time ? *time : origin == Origin::opened && file.exists() ? timeOf(file) : m_clock.now();
  m_held = Held{document, map, since, origin, modifiedAt(document)};
}

void EarlierVersions::documentWillBeReplaced(const QString& document) {
  const qint64 modified = modifiedAt(document);
  if (modified == 0) return;
  const bool isHeld = m_held && m_held->document == document;
  if (!isHeld || m_held->modified != modified) keepFile(document);
  if (!isHeld || !versions::becomesVersion(m_held->origin, m_held->time, m_lastKept)) return;
  m_lastKept = m_held->time;
  keepAt(document, m_held->map, m_held->time);
}

void EarlierVersions::documentWasReplaced() {
  if (m_held) keepAt(m_held->document, m_held->map, m_held->time);
}

void EarlierVersions::keep(const QString& document, const MindMap& map) {
  keepAt(document, map, m_clock.now());
}

void EarlierVersions::keepAt(const QString& document, const MindMap& map, TimePoint time) {
  startInPool(&m_pool, [store = m_store, &log = m_log, document, map, time, now = m_clock.now()] {
    guarded(log, [&] { store->keep(document, map, time, now); });
  });
}

// An open file keeps its content when another one takes its place.
void EarlierVersions::keepFile(const QString& document) {
  const QFileInfo file(document);
  if (!file.isFile()) return;
  const int descriptor = ::open(QFile::encodeName(document).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return;
  startInPool(&m_pool, [store = m_store, &log = m_log, document, descriptor, time = timeOf(file), now = m_clock.now()] {
    guarded(log, [&] {
      const MindMap map = decodeDocumentAt(QStringLiteral("/proc/self/fd/%1").arg(descriptor));
      store->keep(document, map, time, now);
    });
    ::close(descriptor);
  });
}

QFuture<std::vector<versions::Version>> EarlierVersions::list(const QString& document) {
  return startInPool(&m_pool, [store = m_store, document] { return store->list(document); });
}

QFuture<std::optional<MindMap>> EarlierVersions::load(const QString& document, std::uint64_t number) {
  return startInPool(&m_pool, [store = m_store, &log = m_log, document, number]() -> std::optional<MindMap> {
    std::optional<MindMap> map;
    guarded(log, [&] { map = store->load(document, number); });
    return map;
  });
}

}  // namespace quilmora
