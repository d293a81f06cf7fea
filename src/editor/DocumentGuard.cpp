#include "editor/DocumentGuard.h"

#include <utility>

#include "editor/DocumentSession.h"
#include "platform/Log.h"

namespace quilmora {

namespace {

QString name(const QString& document) {
  return document.isEmpty() ? QStringLiteral("a map without a document") : document;
}

}  // namespace

DocumentGuard::DocumentGuard(MindMapViewModel& editor, DocumentSession& session, const Clock& clock,
                             Scheduler& scheduler, Log& log, const QString& folder)
    : m_editor(editor),
      m_session(session),
      m_log(log),
      m_journal(scheduler, log, folder + QStringLiteral("/journals")),
      m_versions(clock, log, folder + QStringLiteral("/versions")) {
  m_journal.setSource([this] { return state(); });
  connect(&editor, &MindMapViewModel::mindMapChanged, &m_journal, &Journal::changed);
  connect(&editor, &MindMapViewModel::isDirtyChanged, &m_journal, &Journal::changed);
  connect(&session, &DocumentSession::documentInstalled, this, &DocumentGuard::documentInstalled);
  connect(&session, &DocumentSession::fileWillBeWritten, this, &DocumentGuard::fileWillBeWritten);
  connect(&session, &DocumentSession::fileWritten, this,
          [this](const QString& path, const MindMap&, const MindMap& map) { fileWritten(path, map); });
  connect(&session, &DocumentSession::mapWillBeReplaced, this, [this](const MindMap& before) {
    const auto& document = m_editor.lastSavedFilePath();
    if (document && m_session.hasUnkeptChanges()) m_versions.keep(*document, before);
  });
}

Journal::State DocumentGuard::state() const {
  return {m_editor.mindMap(), !m_session.hasUnkeptChanges(), m_openText ? m_openText() : std::nullopt};
}

void DocumentGuard::begin() {
  // A map without a document starts from nothing, because a blank map differs at each start.
  if (!m_session.hasReplacedMap()) takeUp({}, MindMap());
}

void DocumentGuard::takeUp(const QString& document, const MindMap& base) {
  const journal::Recovery recovery = m_journal.start(document, base);
  if (recovery.map) {
    m_editor.captureSnapshot(false);
    m_editor.setMindMap(*recovery.map);
    m_log.write(QStringLiteral("Quilmora: brought back unsaved changes of ") + name(document));
    Q_EMIT changesRecovered();
  }
  if (recovery.isSetAside) {
    m_log.write(QStringLiteral("Quilmora: set aside a journal of ") + name(document));
    Q_EMIT journalSetAside();
  }
  if (!recovery.problem.isEmpty())
    m_log.write(QStringLiteral("Quilmora: journal of %1 FAILED: %2").arg(name(document), recovery.problem));
}

void DocumentGuard::documentInstalled() {
  const QString document = m_editor.lastSavedFilePath().value_or(QString());
  m_versions.documentHolds(document, m_editor.mindMap(), EarlierVersions::Origin::opened);
  takeUp(document, m_editor.mindMap());
}

void DocumentGuard::fileWillBeWritten(const QString& path, const MindMap& map, bool isAutomatic) {
  m_isWriting = true;
  m_isAutomatic = isAutomatic;
  m_versions.documentWillBeReplaced(path);
  m_journal.savingBegins(map);
}

// A copy elsewhere leaves the document's own file as it is.
void DocumentGuard::fileWritten(const QString& path, const MindMap& map) {
  const bool isOwnWrite = std::exchange(m_isWriting, false);
  if (path != m_editor.lastSavedFilePath()) return;
  // Read again, because another program wrote it.
  if (!isOwnWrite) m_versions.documentWasReplaced();
  m_journal.saved(path, map);
  m_versions.documentHolds(path, map,
                           m_isAutomatic ? EarlierVersions::Origin::autoSaved : EarlierVersions::Origin::saved);
}

void DocumentGuard::settle() {
  m_journal.settle();
  m_versions.settle();
}

}  // namespace quilmora
