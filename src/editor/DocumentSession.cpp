#include "editor/DocumentSession.h"

#include <new>

#include <QFileInfo>
#include <QPointer>

#include "editor/DocumentFileName.h"
#include "editor/RecentFiles.h"
#include "platform/Bookmarks.h"
#include "platform/FileDialogs.h"
#include "platform/Log.h"
#include "platform/Paths.h"

namespace quilmora {

namespace {

using namespace std::chrono_literals;

constexpr auto zoomDelayAfterOpen = 200ms;

// The reason names a place in the file, but not the file.
QString named(const QString& path, const QString& reason) {
  return fileNameIn(path) + QStringLiteral(": ") + reason;
}

bool fileExists(const QString& path) {
  return QFileInfo::exists(path);
}

}  // namespace

DocumentSession::DocumentSession(MindMapViewModel& editor, Services services)
    : m_editor(editor),
      m_services(std::move(services)),
      m_watch(m_services.scheduler, m_services.pool),
      m_document(m_services.editor.clock),
      m_quitSubscription(m_services.notifications.observe(Notification::autoSaveBeforeQuit,
                                                          [this](const QVariant&) { saveForQuit(); })) {
  m_document.mindMap = m_editor.mindMap();
  m_keptMap = m_editor.mindMap();
  connect(&m_editor, &MindMapViewModel::mindMapChanged, this, &DocumentSession::documentFollowsEditor);
  connect(&m_editor, &MindMapViewModel::isDirtyChanged, this, &DocumentSession::dirtyFlagWasSet);
  connect(&m_watch, &DocumentWatch::changed, this, &DocumentSession::fileMayHaveChanged);
  dirtyFlagWasSet();
}

DocumentSession::~DocumentSession() {
  m_services.scheduler.cancel(m_autoSaveTimer);
  // The write uses a service of this session.
  if (m_save) m_save->written.waitForFinished();
}

void DocumentSession::documentFollowsEditor() {
  if (m_document.mindMap != m_editor.mindMap()) m_document.mindMap = m_editor.mindMap();
}

void DocumentSession::openDocument() {
  const QPointer<DocumentSession> guard(this);
  const std::optional<QString> chosen = m_services.panels.askOpenPath({documentExtensions(), true});
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
    // Code that shows the error may destroy the session, but not its services.
    raise(QStringLiteral("File not found: ") + fileNameIn(path));
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
  if (guard) waitForSaves();
  if (guard && !hasUnkeptChanges()) loadChosen(absolutePath(path));
}

void DocumentSession::openAll(const QStringList& paths) {
  constexpr qsizetype maxTold = 5;
  m_heldErrors.emplace();
  for (const QString& path : paths) open(path);
  QStringList errors = *std::exchange(m_heldErrors, std::nullopt);
  if (errors.isEmpty()) return;
  const qsizetype more = errors.size() - maxTold;
  if (more > 1) {
    errors.resize(maxTold);
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
  waitForSaves();
  beginOpening(path);
  try {
    ReadDocument document = readDocumentAt(path);
    if (hasUnkeptChanges()) {
      // They may belong to the chosen file itself, and the open map is replaced only once they are kept.
      const bool isCopied = pending == Pending::copied;
      if (const Outcome kept = isCopied ? writeRescueCopy().outcome : writePendingChanges(); !kept.isDone()) {
        endOpening();
        if (isCopied)
          raise(QStringLiteral("Failed to save document: ") + kept.reason());
        else
          Q_EMIT changesNotKept(path, kept.reason());
        return;
      }
      document = readDocumentAt(path);
    }
    install(document, path);
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
  Q_EMIT mapWillBeReplaced(m_editor.mindMap());
  m_document.mindMap = map;
  // The imported file still exists: while nothing is edited, quitting loses nothing, and the document's own file must
  // not be overwritten with the import.
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
  Q_EMIT mapWillBeReplaced(m_editor.mindMap());
  m_keptMap = map;
  m_watch.forget();
  m_autoSavedPlace.reset();
  m_retryDelay = firstRetryDelay;
  m_editor.startWith(map);
  // A selected topic of the previous map would become a parent for new ones.
  m_editor.clearSelection();
  setAutoSaveProblem({});
  zoomToFitAfter(zoomDelayAfterOpen);
}

void DocumentSession::install(const ReadDocument& document, const QString& path) {
  ++m_installCount;
  Q_EMIT mapWillBeReplaced(m_editor.mindMap());
  m_document.mindMap = document.map;
  m_keptMap = document.map;
  m_editor.beginOtherDocument();
  m_autoSavedPlace.reset();
  m_editor.setMindMap(document.map);
  m_editor.clearHistory();
  m_editor.recordSaveLocation(path, true);
  m_services.recentFiles.add(path);
  // A package cannot be written to, and nothing in it may be overwritten.
  if (documentFileAt(path) == path)
    m_watch.follow(path, document.state);
  else
    m_watch.forget();
  m_retryDelay = firstRetryDelay;
  setAutoSaveProblem({});
  Q_EMIT documentInstalled();
}

void DocumentSession::zoomToFitAfter(std::chrono::milliseconds delay) {
  NotificationCenter& notifications = m_services.notifications;
  m_services.scheduler.after(delay, [&notifications] { notifications.post(Notification::zoomToFit); });
}

QString DocumentSession::noMemory() {
  return QStringLiteral("There is not enough memory for it.");
}

void DocumentSession::log(const QString& line) const {
  m_services.editor.log.write(line);
}

}  // namespace quilmora
