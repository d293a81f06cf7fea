#include "app/flows/ExportFlow.h"

#include <system_error>

#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <QPromise>

#include "editor/DocumentFileName.h"
#include "editor/MindMapViewModel.h"
#include "exchange/ExportWriter.h"
#include "platform/FileDialogs.h"
#include "platform/Futures.h"
#include "platform/Paths.h"

namespace quilmora {

namespace {

// The smallest progress worth a repaint.
constexpr double minProgress = 0.005;

}  // namespace

ExportFlow::ExportFlow(const MindMapViewModel& editor, Services services, QObject* parent)
    : QObject(parent), m_editor(editor), m_services(std::move(services)) {}

ExportFlow::~ExportFlow() {
  m_services.scheduler.cancel(m_task);
  m_stop.request_stop();
}

QString ExportFlow::startFolder() const {
  if (QDir(m_lastFolder).exists() && !m_lastFolder.isEmpty()) return m_lastFolder;
  if (const auto& path = m_editor.lastSavedFilePath()) return QFileInfo(*path).absolutePath();
  return m_services.defaultFolder;
}

void ExportFlow::start(const QString& formatText) {
  const ExportFormat format = requestedExportFormat(formatText);
  const QString extension = rawValue(format);
  // The program may end while the dialog is open.
  const QPointer<ExportFlow> guard(this);
  const std::optional<QString> chosen =
      m_services.panels.askSavePath({startFolder(), exportFileName(m_editor.mindMap().title, extension), extension});
  if (!guard || !chosen) return;
  const QString path = withExtension(absolutePath(*chosen), extension);
  m_lastFolder = QFileInfo(path).absolutePath();
  m_jobs.push_back({m_editor.mindMap(), format, path});
  if (m_jobs.size() > 1 || m_isWorking) return;
  announce(format);
  setIsExporting(true);
  queueNext();
}

void ExportFlow::setIsExporting(bool isExporting) {
  m_isExporting = isExporting;
  Q_EMIT isExportingChanged();
}

void ExportFlow::announce(ExportFormat format) {
  m_exportProgressMessage = QStringLiteral("Exporting %1…").arg(rawValue(format).toUpper());
  Q_EMIT exportProgressMessageChanged();
}

// On the next turn of the main loop, so that the overlay is drawn first.
void ExportFlow::queueNext() {
  m_task = m_services.scheduler.after(std::chrono::milliseconds(0), [this] { runNext(); });
}

void ExportFlow::runNext() {
  m_task = 0;
  const Job job = std::move(m_jobs.front());
  m_jobs.pop_front();
  m_isWorking = true;
  startWriting(job);
}

void ExportFlow::startWriting(const Job& job) {
  QPromise<ExportOutcome> promise;
  const QFuture<ExportOutcome> written = promise.future();
  auto make = [this, job, stop = m_stop.get_token(), promise = std::move(promise)]() mutable {
    promise.start();
    double told = 0.0;
    const auto progress = [&](double share) {
      if (share < told + minProgress) return;
      told = share;
      QMetaObject::invokeMethod(
          this, [this, share] { Q_EMIT shareDoneChanged(share); }, Qt::QueuedConnection);
    };
    promise.addResult(writeExport(job.map, job.format, job.path, m_services.writer, progress, stop));
    promise.finish();
  };
  const ExportOutcome notRendered{ExportOutcome::State::notRendered, {}};
  try {
    m_thread = std::jthread(std::move(make));
  } catch (const std::system_error&) {
    // A text can do without a thread.
    finish(isPicture(job.format) ? notRendered : writeExport(job.map, job.format, job.path, m_services.writer));
    return;
  }
  whenFinished(
      written, this, [this](const ExportOutcome& outcome) { finish(outcome); },
      [this, notRendered](const std::exception&) { finish(notRendered); });
}

void ExportFlow::finish(const ExportOutcome& outcome) {
  m_isWorking = false;
  if (outcome.state == ExportOutcome::State::failed)
    Q_EMIT errorRaised(QStringLiteral("Export failed: ") + outcome.reason);
  if (m_jobs.empty()) {
    setIsExporting(false);
    return;
  }
  announce(m_jobs.front().format);
  queueNext();
}

}  // namespace quilmora
