#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <QScopedValueRollback>

#include "editor/DocumentFileName.h"
#include "editor/DocumentSession.h"
#include "editor/RecentFiles.h"
#include "platform/Bookmarks.h"
#include "platform/FileDialogs.h"
#include "platform/Futures.h"
#include "platform/Paths.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"
#include "platform/StartInPool.h"

namespace quilmora {

// --- One save after the other ---

void DocumentSession::beginSave(SaveKind kind, const QString& path, const std::optional<FileState>& known,
                                const QString& otherVersion) {
  const std::optional<QString>& place = m_editor.lastSavedFilePath();
  m_save.emplace(Save{++m_saveCount, kind, {m_editor.mindMap(), path, known, {}, otherVersion}, !place, {}});
  // The copy that auto-save made until the map had a place of its own would only confuse.
  if (kind == SaveKind::chosen && m_watch.known() && place && place == m_autoSavedPlace &&
      !m_editor.hasExplicitSavePath())
    m_save->write.superseded = DocumentWrite::Superseded{*place, *m_watch.known()};
  Q_EMIT fileWillBeWritten(path, m_save->write.map, kind == SaveKind::automatic);
  m_watch.beginWrite();
  m_save->written = startInPool(
      m_services.pool, [write = m_save->write, &writer = m_services.writer] { return writeDocument(write, writer); });
  if (m_services.pool == nullptr) return endSave(m_save->written.result());
  const auto isThis = [this, number = m_saveCount] { return m_save && m_save->number == number; };
  whenFinished(
      m_save->written, this,
      [this, isThis](const WrittenDocument& written) {
        // A caller that waited may have ended it already.
        if (isThis()) endSave(written);
      },
      [this, isThis](const std::exception&) {
        if (isThis()) endSave({Outcome::failed(noMemory()), {}, {}});
      });
}

void DocumentSession::endSave(const WrittenDocument& written) {
  const Save save = *std::exchange(m_save, std::nullopt);
  const MindMap before = m_keptMap;
  m_lastSave = written.outcome;
  if (written.outcome.isDone()) {
    keep(save.write);
    m_watch.follow(save.write.path, written.state);
  } else if (written.change != FileChange::none && save.write.path == m_editor.lastSavedFilePath()) {
    m_watch.found({written.change, written.state});
  }
  m_watch.endWrite();
  const QPointer<DocumentSession> guard(this);
  switch (save.kind) {
    case SaveKind::byHand:
      endSaveByHand(save.write.path, written.outcome);
      break;
    case SaveKind::chosen:
      endChosenSave(save.write.path, written.outcome);
      break;
    case SaveKind::automatic:
      endAutoSave(save, written.outcome);
      break;
  }
  // Code that handles an error or a dialog may destroy the session.
  if (!guard) return;
  if (written.outcome.isDone()) {
    // Edits made in between are not written yet.
    if (m_editor.mindMap() != save.write.map) m_editor.markDirty();
    Q_EMIT fileWritten(save.write.path, before, save.write.map);
  }
  beginNextSave();
}

void DocumentSession::beginNextSave() {
  if (m_save) return;
  if (!m_chosenPlaces.empty()) {
    const QString path = m_chosenPlaces.front();
    m_chosenPlaces.pop_front();
    beginSave(SaveKind::chosen, path, std::nullopt);
  } else if (std::exchange(m_isSaveWanted, false)) {
    saveDocument();
  } else if (std::exchange(m_isAutoSaveWanted, false)) {
    autoSave();
  }
}

void DocumentSession::waitForSaves() {
  const QScopedValueRollback waiting(m_isWaitingForSaves, true);
  while (m_save) endSave(m_save->written.result());
}

void DocumentSession::keep(const DocumentWrite& write) {
  m_keptMap = write.map;
  m_retryDelay = firstRetryDelay;
  setAutoSaveProblem({});
}

std::optional<FileState> DocumentSession::knownOrGone() const {
  std::optional<FileState> known = m_watch.known();
  if (known) known->mayBeMissing = true;
  return known;
}

// --- Save and Save As ---

void DocumentSession::saveDocument() {
  if (m_save) {
    m_isSaveWanted = true;
    return;
  }
  const std::optional<QString> path = m_editor.lastSavedFilePath();
  if (m_editor.hasExplicitSavePath() && path)
    beginSave(SaveKind::byHand, *path, knownOrGone());
  else
    askAndSave({});
}

void DocumentSession::endSaveByHand(const QString& path, const Outcome& written) {
  if (!written.isDone()) return askAndSave(written.reason());
  m_editor.recordSaveLocation(path, true);
  m_services.recentFiles.add(path);
}

void DocumentSession::saveDocumentAs() {
  askAndSave({});
}

void DocumentSession::askAndSave(const QString& reason) {
  // Nobody is there to ask.
  if (m_isWaitingForSaves) return;
  const QPointer<DocumentSession> guard(this);
  const quint64 installCount = m_installCount;
  const std::optional<QString> chosen = m_services.panels.askSavePath(
      {createdDefaultFolder(), documentFileName(m_editor.mindMap().title), QStringLiteral("mindmap"), reason});
  // While the dialog is open the program may end, or another start may pass its document on: the chosen place was for
  // the map that the user saw.
  if (!guard || !chosen || installCount != m_installCount) return;
  m_chosenPlaces.push_back(withDocumentExtension(absolutePath(*chosen)));
  beginNextSave();
}

void DocumentSession::endChosenSave(const QString& path, const Outcome& written) {
  if (!written.isDone()) {
    Q_EMIT errorRaised(QStringLiteral("Failed to save document: ") + written.reason());
    return;
  }
  m_autoSavedPlace.reset();
  m_editor.recordSaveLocation(path, true);
  m_services.recentFiles.add(path);
}

// --- Auto-save ---

// Only the change to true starts the timer: further edits do not postpone the save.
void DocumentSession::dirtyFlagWasSet() {
  const bool wasDirty = std::exchange(m_wasDirty, m_editor.isDirty());
  if (wasDirty || !m_wasDirty) return;
  autoSaveAfter(autoSaveDelay);
}

void DocumentSession::autoSaveAfter(std::chrono::milliseconds delay) {
  m_services.scheduler.cancel(m_autoSaveTimer);
  m_autoSaveTimer = m_services.scheduler.after(delay, [this] {
    m_autoSaveTimer = 0;
    autoSave();
  });
}

void DocumentSession::setAutoSaveProblem(const QString& problem) {
  m_autoSaveProblem = problem;
  refreshProblem();
}

void DocumentSession::autoSave() {
  // A version that another program wrote waits for the user's decision.
  if (!m_editor.isDirty() || m_watch.isForeign()) return;
  if (m_save)
    m_isAutoSaveWanted = true;
  else
    beginAutoSave(m_watch.known());
}

// A map without a place goes where no file exists yet.
void DocumentSession::beginAutoSave(const std::optional<FileState>& known) {
  const std::optional<QString> path = m_editor.lastSavedFilePath();
  if (path)
    beginSave(SaveKind::automatic, *path, known);
  else
    beginSave(SaveKind::automatic, freePathInDefaultFolder(m_document.mindMap.title), FileState::absent());
}

void DocumentSession::endAutoSave(const Save& save, const Outcome& written) {
  const QString& path = save.write.path;
  if (written.isDone()) {
    if (save.takesPlace) m_autoSavedPlace = path;
    m_editor.recordSaveLocation(path, false);
    if (!save.takesPlace) log(QStringLiteral("Quilmora: auto-saved to ") + path);
    return;
  }
  // The same reason is reported only once for a place.
  if (!save.takesPlace && written.reason() != m_autoSaveProblem)
    log(QStringLiteral("Quilmora: auto-save FAILED for %1: %2").arg(path, written.reason()));
  setAutoSaveProblem(written.reason());
  if (m_watch.isForeign()) return;
  // The disk may accept later what it refuses now, so auto-save tries again and again, until the map is written or
  // replaced.
  autoSaveAfter(m_retryDelay);
  m_retryDelay = std::min(2 * m_retryDelay, maxRetryDelay);
}

// --- Before the map is replaced ---

bool DocumentSession::hasUnkeptChanges() const {
  return m_editor.isDirty() || m_editor.mindMap() != m_keptMap;
}

Outcome DocumentSession::writePendingChanges() {
  waitForSaves();
  if (!hasUnkeptChanges()) return Outcome::done();
  beginAutoSave(knownOrGone());
  waitForSaves();
  return m_lastSave;
}

// A map that was never written gets a file of its own in the default folder, which the document does not adopt: the
// next save would overwrite it.
Outcome DocumentSession::keepBeforeImport() {
  waitForSaves();
  if (!hasUnkeptChanges()) return Outcome::done();
  return m_editor.lastSavedFilePath() ? writePendingChanges()
                                      : writeCopy(freePathInDefaultFolder(m_document.mindMap.title));
}

// There is no later chance: changes that cannot be written to the map's own place, such as a disk that was removed, go
// into the default folder, where the next start finds them. The session may continue after all, so the editor keeps its
// own place.
void DocumentSession::saveForQuit() {
  endOpening();
  if (writePendingChanges().isDone() || !m_editor.lastSavedFilePath()) return;
  const RescueCopy copy = writeRescueCopy();
  if (!copy.outcome.isDone()) return;
  SettingsStore& settings = m_services.editor.settings;
  settings.setText(settings::lastSavedFilePath, copy.path);
  if (const auto made = m_services.editor.bookmarks.make(copy.path, Bookmarks::Kind::plain); !made.data.isEmpty()) {
    settings.setBytes(settings::lastSavedFileBookmark, made.data);
  } else {
    settings.remove(settings::lastSavedFileBookmark);
  }
}

DocumentSession::RescueCopy DocumentSession::writeRescueCopy() {
  const QString place = freePathInDefaultFolder(m_document.mindMap.title);
  Outcome written = writeCopy(place);
  log(written.isDone() ? QStringLiteral("Quilmora: saved a rescue copy to ") + place
                       : QStringLiteral("Quilmora: rescue copy FAILED: ") + written.reason());
  return {place, std::move(written)};
}

// The document's own file stays its place.
Outcome DocumentSession::writeCopy(const QString& path) {
  waitForSaves();
  const DocumentWrite write{m_editor.mindMap(), path, FileState::absent(), {}, {}};
  Q_EMIT fileWillBeWritten(path, write.map, true);
  Outcome written = writeDocument(write, m_services.writer).outcome;
  if (!written.isDone()) return written;
  const MindMap before = std::exchange(m_keptMap, write.map);
  keep(write);
  Q_EMIT fileWritten(path, before, write.map);
  return written;
}

QString DocumentSession::createdDefaultFolder() const {
  // A failure shows when something is written there.
  QDir().mkpath(m_services.defaultFolder);
  return m_services.defaultFolder;
}

QString DocumentSession::freePathInDefaultFolder(const QString& title) const {
  const QDir folder(createdDefaultFolder());
  const QString name = title.isEmpty() ? QStringLiteral("Untitled") : title;
  QString path = folder.filePath(documentFileName(name));
  for (int number = 1; QFileInfo::exists(path); ++number) path = folder.filePath(documentFileName(name, number));
  return path;
}

}  // namespace quilmora
