#include "app/flows/ImportFlow.h"

#include <new>
#include <optional>
#include <utility>

#include <QFileInfo>
#include <QPointer>

#include "editor/DocumentSession.h"
#include "exchange/MapImport.h"
#include "platform/FileDialogs.h"
#include "platform/Futures.h"
#include "platform/Paths.h"
#include "platform/StartInPool.h"

namespace quilmora {

struct ImportFlow::Reading {
  std::optional<MindMap> map;
  QString error;
};

ImportFlow::ImportFlow(DocumentSession& session, FileDialogs& panels, const Clock& clock, Scheduler& scheduler)
    : m_session(session), m_panels(panels), m_clock(clock), m_scheduler(scheduler) {
  m_pool.setMaxThreadCount(1);
  connect(&session, &DocumentSession::mapWillBeReplaced, this, &ImportFlow::drop);
}

ImportFlow::~ImportFlow() {
  m_scheduler.cancel(m_delayed);
}

void ImportFlow::run() {
  const QPointer<ImportFlow> guard(this);
  const auto chosen = m_panels.askOpenPath({importedExtensions(), false, FileDialogs::Content::imports});
  // The program may end while the dialog is open.
  if (guard && chosen) importFrom(absolutePath(*chosen));
}

void ImportFlow::importFrom(const QString& path) {
  drop();
  m_isImporting = true;
  m_delayed = m_scheduler.after(messageDelay, [this, path] {
    m_delayed = 0;
    setProgressMessage(QStringLiteral("Importing %1…").arg(QFileInfo(path).suffix().toUpper()));
  });
  const auto reading = startInPool(&m_pool, [path, &clock = m_clock] { return read(path, clock); });
  whenFinished(
      reading, this,
      [this, path, wish = m_wish](const Reading& done) {
        if (wish == m_wish) finish(path, done);
      },
      [](const std::exception&) {});
}

ImportFlow::Reading ImportFlow::read(const QString& path, const Clock& clock) {
  try {
    return {importMapAt(path, clock), {}};
  } catch (const std::bad_alloc&) {
    return {std::nullopt, QStringLiteral("the file is too large for the memory of this machine")};
  } catch (const TextError& failure) {
    return {std::nullopt, failure.message()};
  }
}

void ImportFlow::finish(const QString& path, const Reading& reading) {
  drop();
  if (!reading.error.isEmpty()) {
    Q_EMIT errorRaised(QStringLiteral("Import failed: %1: %2").arg(fileNameIn(path), reading.error));
  } else if (reading.map) {
    Q_EMIT mapRead();
    m_session.replaceWithImported(*reading.map);
  }
}

void ImportFlow::drop() {
  ++m_wish;
  m_isImporting = false;
  m_scheduler.cancel(std::exchange(m_delayed, 0));
  setProgressMessage({});
}

void ImportFlow::setProgressMessage(const QString& message) {
  if (message == m_progressMessage) return;
  m_progressMessage = message;
  Q_EMIT progressMessageChanged();
}

}  // namespace quilmora
