#pragma once

#include <functional>
#include <optional>

#include <QObject>

#include "editor/journal/Journal.h"
#include "editor/versions/EarlierVersions.h"

namespace quilmora {

class Clock;
class DocumentSession;
class MindMapViewModel;

// Connects the journal and the earlier versions to one window's editor and session: reports what is opened, changed,
// written and replaced, and restores what the last run left behind.
class DocumentGuard : public QObject {
  Q_OBJECT

 public:
  // All must outlive it; `folder` is the program's own folder in the state folder.
  DocumentGuard(MindMapViewModel& editor, DocumentSession& session, const Clock& clock, Scheduler& scheduler, Log& log,
                const QString& folder);

  // Where the text of an open field comes from; openTextChanged() reports a change of it.
  void setOpenText(std::function<std::optional<OpenText>()> openText) { m_openText = std::move(openText); }
  void openTextChanged() { m_journal.changed(); }
  // The window has opened its documents. If it has none, it recovers what was left without a document.
  void begin();
  // Call at the end of the process.
  void settle();

  EarlierVersions& versions() { return m_versions; }
  const Journal& journal() const { return m_journal; }

 Q_SIGNALS:
  // The editor holds what the last run did not save; undo() goes back to the saved map.
  void changesRecovered();
  // What the last run left does not fit the current map and was set aside.
  void journalSetAside();

 private:
  Journal::State state() const;
  void takeUp(const QString& document, const MindMap& base);
  void documentInstalled();
  void fileWillBeWritten(const QString& path, const MindMap& map, bool isAutomatic);
  void fileWritten(const QString& path, const MindMap& map);

  MindMapViewModel& m_editor;
  DocumentSession& m_session;
  Log& m_log;
  Journal m_journal;
  EarlierVersions m_versions;
  std::function<std::optional<OpenText>()> m_openText;
  bool m_isWriting = false;
  bool m_isAutomatic = false;  // of the write in progress
};

}  // namespace quilmora
