#include "app/ExportFlow.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QPointer>

#include "editor/DocumentFileName.h"
#include "editor/MindMapViewModel.h"
#include "exchange/ExportWriter.h"
#include "platform/FilePanels.h"
#include "platform/Paths.h"

namespace quilmora {

ExportFlow::ExportFlow(const MindMapViewModel& editor, Services services, QObject* parent)
    : QObject(parent), m_editor(editor), m_services(std::move(services)) {}

ExportFlow::~ExportFlow() {
  m_services.scheduler.cancel(m_task);
}

QString ExportFlow::startFolder() const {
  if (QDir(m_lastFolder).exists() && !m_lastFolder.isEmpty()) return m_lastFolder;
  if (const auto& path = m_editor.lastSavedFilePath()) return QFileInfo(*path).absolutePath();
  return m_services.defaultFolder;
}

void ExportFlow::start(const QString& formatText) {
  const ExportFormat format = requestedExportFormat(formatText);
  const QString extension = rawValue(format);
  // The program may end while the panel is open.
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

// On the next turn of the main loop, so that the overlay is drawn before the thread is taken up.
void ExportFlow::queueNext() {
  m_task = m_services.scheduler.after(std::chrono::milliseconds(0), [this] { runNext(); });
}

void ExportFlow::runNext() {
  m_task = 0;
  const Job job = std::move(m_jobs.front());
  m_jobs.pop_front();
  Q_EMIT workBegins();
  m_isWorking = true;
  const ExportOutcome outcome =
      writeExport(job.map, job.format, job.path, m_services.writer, [this](double share) {
        Q_EMIT shareDoneChanged(share);
        // The window goes on painting; what the user types and clicks waits for the end.
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
      });
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
