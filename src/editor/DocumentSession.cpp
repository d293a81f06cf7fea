#include "editor/DocumentSession.h"

#include <algorithm>
#include <new>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>

#include "editor/DocumentFileName.h"
#include "editor/RecentFiles.h"
#include "platform/Bookmarks.h"
#include "platform/FilePanels.h"
#include "platform/FileWriter.h"
#include "platform/Log.h"
#include "platform/Paths.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

namespace quilmora {

namespace {

using namespace std::chrono_literals;

constexpr auto zoomDelayAfterOpen = 200ms;

QString lastComponent(const QString& path) {
  return path.mid(path.lastIndexOf(u'/') + 1);
}

// The reason tells a place in the file, and not which file.
QString named(const QString& path, const QString& reason) {
  return lastComponent(path) + QStringLiteral(": ") + reason;
}

bool fileExists(const QString& path) {
  return QFileInfo::exists(path);
}

}  // namespace

DocumentSession::DocumentSession(MindMapViewModel& editor, Services services)
    : m_editor(editor),
      m_services(std::move(services)),
      m_document(m_services.editor.clock),
      m_quitSubscription(m_services.notifications.observe(Notification::autoSaveBeforeQuit,
                                                          [this](const QVariant&) { saveForQuit(); })) {
  m_document.mindMap = m_editor.mindMap();
  m_keptMap = m_editor.mindMap();
  connect(&m_editor, &MindMapViewModel::mindMapChanged, this, &DocumentSession::documentFollowsEditor);
  connect(&m_editor, &MindMapViewModel::isDirtyChanged, this, &DocumentSession::dirtyFlagWasSet);
  dirtyFlagWasSet();
}

DocumentSession::~DocumentSession() {
  m_services.scheduler.cancel(m_autoSaveTimer);
}

void DocumentSession::documentFollowsEditor() {
  if (m_document.mindMap != m_editor.mindMap()) m_document.mindMap = m_editor.mindMap();
}

// Only the change to true starts the timer: edits that follow do not put the save off.
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
  if (std::exchange(m_autoSaveProblem, problem) != problem) Q_EMIT autoSaveProblemChanged();
}

QString DocumentSession::createdDefaultFolder() const {
  // A failure shows when something is written there.
  QDir().mkpath(m_services.defaultFolder);
  return m_services.defaultFolder;
}

Outcome DocumentSession::writeTo(const QString& path) {
  try {
    Outcome written = m_services.writer.write(path, encodeDocument(m_editor.mindMap()));
    if (!written.isDone()) return written;
    m_keptMap = m_editor.mindMap();
    m_retryDelay = firstRetryDelay;
    setAutoSaveProblem({});
    return written;
  } catch (const DocumentError& error) {
    return Outcome::failed(error.message());
  } catch (const std::bad_alloc&) {
    return Outcome::failed(noMemory());
  }
}

void DocumentSession::saveDocument() {
  const std::optional<QString> path = m_editor.lastSavedFilePath();
  QString reason;
  if (m_editor.hasExplicitSavePath() && path) {
    const Outcome written = writeTo(*path);
    reason = written.reason();
    if (written.isDone()) {
      m_editor.recordSaveLocation(path, true);
      m_services.recentFiles.add(*path);
      return;
    }
  }
  askAndSave(reason);
}

void DocumentSession::saveDocumentAs() {
  askAndSave({});
}

void DocumentSession::askAndSave(const QString& reason) {
  const QPointer<DocumentSession> guard(this);
  const quint64 installCount = m_installCount;
  const std::optional<QString> chosen = m_services.panels.askSavePath(
      {createdDefaultFolder(), documentFileName(m_editor.mindMap().title), QStringLiteral("mindmap"), reason});
  // While the panel is open the program may end, or another start may hand its document over: the chosen place was for
  // the map that the user saw.
  if (!guard || !chosen || installCount != m_installCount) return;
  const QString path = withDocumentExtension(absolutePath(*chosen));
  const MindMap autoSaved = m_keptMap;
  if (const Outcome written = writeTo(path); !written.isDone()) {
    Q_EMIT errorRaised(QStringLiteral("Failed to save document: ") + written.reason());
    return;
  }
  removeAutoSaved(autoSaved, path);
  m_editor.recordSaveLocation(path, true);
  m_services.recentFiles.add(path);
}

// The copy that auto-save made until the map had a place of its own would only confuse. It goes where it is this
// session's and holds what was written there, so that nothing is lost that the new file and the history don't have.
void DocumentSession::removeAutoSaved(const MindMap& autoSaved, const QString& newPath) {
  const std::optional<QString> place = std::exchange(m_autoSavedPlace, std::nullopt);
  if (!place || place != m_editor.lastSavedFilePath() || m_editor.hasExplicitSavePath()) return;
  if (QFileInfo(*place).canonicalFilePath() == QFileInfo(newPath).canonicalFilePath()) return;
  try {
    if (QFileInfo(*place).isFile() && !QFileInfo(*place).isSymLink() && decodeDocumentAt(*place) == autoSaved)
      QFile::remove(*place);
  } catch (const DocumentError&) {
    // Somebody else wrote there, and it stays.
  }
}

void DocumentSession::openDocument() {
  const QPointer<DocumentSession> guard(this);
  const std::optional<QString> chosen =
      m_services.panels.askOpenPath({{QStringLiteral("mindmap"), QStringLiteral("json")}, true});
  if (guard && chosen) loadChosen(absolutePath(*chosen));
}

void DocumentSession::open(const QString& givenPath) {
  const QString path = absolutePath(givenPath);
  Bookmarks& bookmarks = m_services.editor.bookmarks;
  RecentFiles& recentFiles = m_services.recentFiles;
  if (const QString refusal = refusalOfPath(path); !refusal.isEmpty())
    return raise(QStringLiteral("Failed to open document: ") + named(path, refusal));
  const bool isAccessGranted = bookmarks.startAccess(path);
  if (fileExists(path)) {
    loadChosen(path);
  } else {
    // Whoever shows the error may end the session, but nothing that it was given.
    raise(QStringLiteral("File not found: ") + lastComponent(path));
    recentFiles.remove(path);
  }
  if (isAccessGranted) bookmarks.stopAccess(path);
}

void DocumentSession::openLeavingCopy(const QString& path) {
  loadChosen(absolutePath(path), Pending::copied);
}

void DocumentSession::saveAsAndOpen(const QString& path) {
  const QPointer<DocumentSession> guard(this);
  saveDocumentAs();
  if (guard && !hasUnkeptChanges()) loadChosen(absolutePath(path));
}

void DocumentSession::openAll(const QStringList& paths) {
  constexpr qsizetype mostTold = 5;
  m_heldErrors.emplace();
  for (const QString& path : paths) open(path);
  QStringList errors = *std::exchange(m_heldErrors, std::nullopt);
  if (errors.isEmpty()) return;
  const qsizetype more = errors.size() - mostTold;
  if (more > 1) {
    errors.resize(mostTold);
    errors.append(QStringLiteral("… and %1 more").arg(more));
  }
  raise(errors.join(u'\n'));
}

void DocumentSession::raise(const QString& message) {
  if (m_heldErrors)
    m_heldErrors->append(message);
  else
    Q_EMIT errorRaised(message);
}

void DocumentSession::loadChosen(const QString& path, Pending pending) {
  beginOpening(path);
  try {
    MindMap map = decodeDocumentAt(path);
    if (hasUnkeptChanges()) {
      // They may be the chosen file's own, and the open map goes only once they are kept.
      const bool isCopied = pending == Pending::copied;
      if (const Outcome kept = isCopied ? writeRescueCopy().outcome : writePendingChanges(); !kept.isDone()) {
        endOpening();
        if (isCopied)
          raise(QStringLiteral("Failed to save document: ") + kept.reason());
        else
          Q_EMIT changesNotKept(path, kept.reason());
        return;
      }
      map = decodeDocumentAt(path);
    }
    install(map, path);
  } catch (const DocumentError& error) {
    endOpening();
    raise(QStringLiteral("Failed to open document: ") + named(path, error.message()));
    return;
  } catch (const std::bad_alloc&) {
    endOpening();
    raise(QStringLiteral("Failed to open document: ") + named(path, noMemory()));
    return;
  }
  m_editor.setCanvasOffset(QPointF(0, 0));
  m_editor.setCanvasZoom(1.0);
  zoomToFitAfter(zoomDelayAfterOpen);
}

void DocumentSession::replaceWithImported(const MindMap& map) {
  if (const Outcome kept = keepBeforeImport(); !kept.isDone()) {
    Q_EMIT errorRaised(QStringLiteral("Failed to save document: ") + kept.reason());
    return;
  }
  ++m_installCount;
  m_document.mindMap = map;
  // Its file still stands: as long as nothing is edited, nothing is lost by quitting, and the document's own file must
  // not be overwritten for it.
  m_keptMap = map;
  m_editor.beginOtherDocument();
  m_editor.setMindMap(map);
  zoomToFitAfter(zoomDelayAfterOpen);
}

void DocumentSession::startWith(const MindMap& map) {
  if (const Outcome kept = keepBeforeImport(); !kept.isDone()) {
    Q_EMIT errorRaised(QStringLiteral("Failed to save document: ") + kept.reason());
    return;
  }
  ++m_installCount;
  m_keptMap = map;
  m_autoSavedPlace.reset();
  m_retryDelay = firstRetryDelay;
  setAutoSaveProblem({});
  m_editor.startWith(map);
  zoomToFitAfter(zoomDelayAfterOpen);
}

// A map that was never written gets a file of its own in the default folder, which does not become the document's
// place: the next save would overwrite it.
Outcome DocumentSession::keepBeforeImport() {
  if (!hasUnkeptChanges()) return Outcome::done();
  return m_editor.lastSavedFilePath() ? writePendingChanges() : writeTo(freePathInDefaultFolder());
}

void DocumentSession::install(const MindMap& map, const QString& path) {
  ++m_installCount;
  m_document.mindMap = map;
  m_keptMap = map;
  m_editor.beginOtherDocument();
  m_autoSavedPlace.reset();
  m_editor.setMindMap(map);
  m_editor.clearHistory();
  m_editor.recordSaveLocation(path, true);
  m_services.recentFiles.add(path);
  m_retryDelay = firstRetryDelay;
  setAutoSaveProblem({});
  Q_EMIT documentInstalled();
}

void DocumentSession::zoomToFitAfter(std::chrono::milliseconds delay) {
  NotificationCenter& notifications = m_services.notifications;
  m_services.scheduler.after(delay, [&notifications] { notifications.post(Notification::zoomToFit); });
}

// What the disk does not take now it may take later, so a failure is no reason to stop: tried again by and by, until
// the map is written or replaced.
void DocumentSession::autoSave() {
  if (!m_editor.isDirty()) return;
  const Outcome written = writePendingChanges();
  if (written.isDone()) return;
  setAutoSaveProblem(written.reason());
  autoSaveAfter(m_retryDelay);
  m_retryDelay = std::min(2 * m_retryDelay, longestRetryDelay);
}

// More than the dirty flag tells: an undo after a save, and typing that goes on after one, change the map without it.
bool DocumentSession::hasUnkeptChanges() const {
  return m_editor.isDirty() || m_editor.mindMap() != m_keptMap;
}

Outcome DocumentSession::writePendingChanges() {
  const std::optional<QString> path = m_editor.lastSavedFilePath();
  if (!path) {
    const QString place = freePathInDefaultFolder();
    Outcome written = writeTo(place);
    if (!written.isDone()) return written;
    m_autoSavedPlace = place;
    m_editor.recordSaveLocation(place, false);
    return written;
  }
  Outcome written = writeTo(*path);
  if (!written.isDone()) {
    // A place that goes on refusing for the same reason is told of once.
    if (written.reason() != m_autoSaveProblem)
      log(QStringLiteral("Quilmora: auto-save FAILED for %1: %2").arg(*path, written.reason()));
    return written;
  }
  m_editor.recordSaveLocation(path, false);
  log(QStringLiteral("Quilmora: auto-saved to ") + *path);
  return written;
}

QString DocumentSession::freePathInDefaultFolder() const {
  const QDir folder(createdDefaultFolder());
  const QString title = m_document.mindMap.title.isEmpty() ? QStringLiteral("Untitled") : m_document.mindMap.title;
  QString path = folder.filePath(documentFileName(title));
  for (int number = 1; fileExists(path); ++number) path = folder.filePath(documentFileName(title, number));
  return path;
}

// There is no later chance: changes that the map's own place does not take, such as a disk that was pulled out, go into
// the default folder, where the next start finds them. The session may go on after all, so the editor keeps its own
// place.
void DocumentSession::saveForQuit() {
  endOpening();
  if (!hasUnkeptChanges() || writePendingChanges().isDone() || !m_editor.lastSavedFilePath()) return;
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
  const QString place = freePathInDefaultFolder();
  Outcome written = writeTo(place);
  log(written.isDone() ? QStringLiteral("Quilmora: saved a rescue copy to ") + place
                       : QStringLiteral("Quilmora: rescue copy FAILED: ") + written.reason());
  return {place, std::move(written)};
}

QString DocumentSession::noMemory() {
  return QStringLiteral("There is not enough memory for it.");
}

void DocumentSession::log(const QString& line) const {
  m_services.editor.log.write(line);
}

}  // namespace quilmora
