#include <new>

#include <QFileInfo>

#include "editor/DocumentSession.h"
#include "platform/Futures.h"
#include "platform/StartInPool.h"

namespace quilmora {

// What the session does when another program changed the document's file. Auto-save pauses until the user decides.

void DocumentSession::fileMayHaveChanged() {
  m_reloadProblem.clear();
  refreshProblem();
  // What was held back, or could not be written, may be writable now.
  if (m_watch.change() == FileChange::none && m_editor.isDirty()) autoSaveAfter(autoSaveDelay);
}

void DocumentSession::refreshProblem() {
  const QString path = m_editor.lastSavedFilePath().value_or(QString());
  const DocumentProblem problem = problemOf(path, m_watch, m_autoSaveProblem, m_reloadProblem);
  if (std::exchange(m_problem, problem) != problem) Q_EMIT problemChanged();
}

void DocumentSession::keepMine() {
  waitForSaves();
  const std::optional<QString> path = m_editor.lastSavedFilePath();
  if (!path || !m_watch.isForeign()) return;
  // The version that the user knows about, and no later one.
  FileState agreed = m_watch.present();
  agreed.mayBeMissing = true;
  const QString name = QStringLiteral("%1 (other version)").arg(QFileInfo(*path).completeBaseName());
  beginSave(SaveKind::automatic, *path, agreed, freePathInDefaultFolder(name));
}

void DocumentSession::reload() {
  waitForSaves();
  const std::optional<QString> path = m_editor.lastSavedFilePath();
  if (!path || !m_watch.isForeign() || m_isReloading) return;
  std::optional<DocumentWrite> mine;
  // The history has it too, but is lost when the program ends.
  if (hasUnkeptChanges())
    mine = DocumentWrite{
        m_editor.mindMap(), freePathInDefaultFolder(m_document.mindMap.title), FileState::absent(), {}, {}};
  m_isReloading = true;
  const auto read = startInPool(
      m_services.pool, [path = *path, mine, &writer = m_services.writer] { return readAnew(path, mine, writer); });
  if (m_services.pool == nullptr) return endReload(read.result());
  whenFinished(
      read, this,
      [this, installCount = m_installCount, path](const Reloaded& reloaded) {
        if (installCount == m_installCount && path == m_editor.lastSavedFilePath()) return endReload(reloaded);
        m_isReloading = false;
      },
      [this](const std::exception&) { m_isReloading = false; });
}

// Runs off the main thread.
DocumentSession::Reloaded DocumentSession::readAnew(const QString& path, const std::optional<DocumentWrite>& mine,
                                                    FileWriter& writer) {
  Reloaded reloaded;
  try {
    reloaded.document = readDocumentAt(path);
  } catch (const DocumentError& error) {
    reloaded.outcome = Outcome::failed(error.message() + u'.');
  } catch (const std::bad_alloc&) {
    reloaded.outcome = Outcome::failed(noMemory());
  }
  if (!mine || !reloaded.outcome.isDone()) return reloaded;
  reloaded.copyOfMine = mine->path;
  reloaded.outcome = writeDocument(*mine, writer).outcome;
  return reloaded;
}

void DocumentSession::endReload(const Reloaded& reloaded) {
  m_isReloading = false;
  if (!reloaded.outcome.isDone()) {
    m_reloadProblem = reloaded.outcome.reason();
    return refreshProblem();
  }
  if (!reloaded.copyOfMine.isEmpty()) log(QStringLiteral("Quilmora: saved a rescue copy to ") + reloaded.copyOfMine);
  const MindMap& map = reloaded.document.map;
  const MindMap before = m_keptMap;
  Q_EMIT mapWillBeReplaced(m_editor.mindMap());
  m_editor.captureSnapshot(false);
  m_document.mindMap = map;
  m_keptMap = map;
  m_editor.beginOtherDocument();
  m_editor.setMindMap(map);
  m_editor.recordSaveLocation(std::nullopt, false);
  m_retryDelay = firstRetryDelay;
  m_watch.follow(*m_editor.lastSavedFilePath(), reloaded.document.state);
  setAutoSaveProblem({});
  Q_EMIT fileWritten(*m_editor.lastSavedFilePath(), before, map);
}

}  // namespace quilmora
