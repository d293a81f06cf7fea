#include "app/flows/ImportFlow.h"

#include <new>

#include <QFileInfo>
#include <QPointer>

#include "editor/DocumentSession.h"
#include "exchange/MapImport.h"
#include "platform/FileDialogs.h"
#include "platform/Paths.h"

namespace quilmora {

ImportFlow::ImportFlow(DocumentSession& session, FileDialogs& panels, const Clock& clock)
    : m_session(session), m_panels(panels), m_clock(clock) {}

void ImportFlow::run() {
  const QPointer<ImportFlow> guard(this);
  const auto chosen = m_panels.askOpenPath({importedExtensions(), false, FileDialogs::Content::imports});
  // The program may end while the dialog is open.
  if (guard && chosen) importFrom(absolutePath(*chosen));
}

void ImportFlow::importFrom(const QString& path) {
  std::optional<MindMap> map;
  QString error;
  try {
    map = importMapAt(path, m_clock);
  } catch (const std::bad_alloc&) {
    error = QStringLiteral("the file is too large for the memory of this machine");
  } catch (const TextError& failure) {
    error = failure.message();
  }
  if (!error.isEmpty())
    Q_EMIT errorRaised(QStringLiteral("Import failed: %1: %2").arg(QFileInfo(path).fileName(), error));
  else if (map)
    m_session.replaceWithImported(*map);
}

}  // namespace quilmora
