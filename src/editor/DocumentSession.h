#pragma once

#include <deque>
#include <optional>

#include <QFuture>
#include <QObject>
#include <QString>

#include "editor/DocumentProblem.h"
#include "editor/DocumentWatch.h"
#include "editor/DocumentWriting.h"
#include "editor/MindMapViewModel.h"
#include "model/DocumentStream.h"
#include "model/MindMapDocument.h"
#include "platform/Notifications.h"
#include "platform/Outcome.h"
#include "platform/Scheduler.h"

class QThreadPool;

namespace quilmora {

class FileDialogs;
class FileWriter;
class OpeningMark;
class RecentFiles;

// How one window's map reaches the disk and comes back: Save, Save As, Open, auto-save and reopening. Holds the last
// saved map and keeps it up to date. Handles autoSaveBeforeQuit itself; the other requests are calls. It has no
// widgets: dialogs go through FileDialogs, and errors for the user through errorRaised().
//
// Save, Save As and auto-save write a copy of the map off the main thread, one after the other; flags, log lines and
// errors follow when the write is done. Quitting and opening another document wait for it.
class DocumentSession : public QObject {
  Q_OBJECT

 public:
  static constexpr std::chrono::seconds autoSaveDelay{5};
  // After a failed auto-save; doubled each time.
  static constexpr std::chrono::seconds firstRetryDelay{10};
  static constexpr std::chrono::seconds maxRetryDelay{300};

  // All must outlive the session.
  struct Services {
    EditorServices editor;
    FileWriter& writer;
    FileDialogs& panels;
    Scheduler& scheduler;
    NotificationCenter& notifications;
    RecentFiles& recentFiles;
    QString defaultFolder;  // the user's Documents/Quilmora
    OpeningMark* openingMark = nullptr;
    // Writes run here; must have one thread. Without a pool, writes happen at once.
    QThreadPool* pool = nullptr;
  };

  DocumentSession(MindMapViewModel& editor, Services services);
  ~DocumentSession() override;

  const MindMapDocument& document() const { return m_document; }

  // Writes to the place that the user chose before, and asks for one if there is none or writing there fails, for
  // instance because another program changed the file.
  void saveDocument();
  void saveDocumentAs();
  void openDocument();
  void open(const QString& path);
  // One after the other; the errors of several are reported together.
  void openAll(const QStringList& paths);
  // After changesNotKept() for this document: opens it anyway and leaves a copy of the open map in the default folder,
  // or first saves the open map somewhere else.
  void openLeavingCopy(const QString& path);
  void saveAsAndOpen(const QString& path);
  // Whether a document was opened or reopened, or another map replaced the first one.
  bool hasReplacedMap() const { return m_installCount > 0; }
  // Replaces the open map with an imported one. Unsaved changes are written first, and if that fails the open map
  // stays. The document's place stays the same, and no undo step is captured.
  void replaceWithImported(const MindMap& map);
  // Replaces the open map with a starter map, as a new document without a place. Unsaved changes are written first, and
  // if that fails the open map stays.
  void startWith(const MindMap& map);
  // Writes if there are changes since the last write. Quitting and opening another document do the same first.
  void autoSave();
  // A write is in progress.
  bool isSaving() const { return m_save.has_value(); }
  // The map has changed since it was read or written. Covers more than the dirty flag: an undo after a save, and typing
  // that continues after one, change the map without setting it.
  bool hasUnkeptChanges() const;
  // Returns when everything requested has been written, or has failed.
  void waitForSaves();
  // Why the last auto-save failed, or an empty text if nothing is waiting to be written.
  const QString& autoSaveProblem() const { return m_autoSaveProblem; }
  // What keeps the map from being saved, including changes by another program. Such a file is not overwritten until the
  // user decides: reload() shows it, as one undo step; keepMine() overwrites it with the open map; saving as another
  // file leaves it alone. Whichever version is replaced stays as a copy in the default folder.
  const DocumentProblem& problem() const { return m_problem; }
  void reload();
  void keepMine();
  // Checks whether another program changed the file, in addition to the system's own notices.
  void checkFile() { m_watch.check(); }
  // Does not reopen the last document if opening or drawing it crashed the program before; emits reopeningDoubted()
  // instead.
  void reopenLastDocument();
  void reopenAllTheSame();
  // The document has been drawn completely since it was opened, so the next start may reopen it.
  void documentWasShown();

 Q_SIGNALS:
  // To be shown to the user, in an alert titled "Error".
  void errorRaised(const QString& message);
  // The document was not opened, because the changes of the open one cannot be written.
  void changesNotKept(const QString& path, const QString& reason);
  void problemChanged();
  // A file is about to be overwritten or created with `map`; `isAutomatic` if nobody asked for it.
  void fileWillBeWritten(const QString& path, const MindMap& map, bool isAutomatic);
  // `map` has been written completely to the file at `path`, where the session had last written or found `before`.
  // Emitted for every save, auto-save, rescue copy and reload, after all flags are set.
  void fileWritten(const QString& path, const MindMap& before, const MindMap& map);
  // Another map is about to replace `before`, which may have changes that no file holds.
  void mapWillBeReplaced(const MindMap& before);
  // A document was opened or reopened, and is about to be drawn.
  void documentInstalled();
  // This document crashed the program last time.
  void reopeningDoubted(const QString& path);

 private:
  struct LastDocument {
    QString path;
    bool isAccessGranted = false;
  };
  struct RescueCopy {
    QString path;
    Outcome outcome;
  };
  enum class Pending { written, copied };
  enum class SaveKind { byHand, chosen, automatic };
  struct Save {
    quint64 number;
    SaveKind kind;
    DocumentWrite write;
    bool takesPlace;  // the map had no place before
    QFuture<WrittenDocument> written;
  };

  struct Reloaded {
    Outcome outcome = Outcome::done();
    ReadDocument document;
    QString copyOfMine;
  };

  void documentFollowsEditor();
  void fileMayHaveChanged();
  void refreshProblem();
  static Reloaded readAnew(const QString& path, const std::optional<DocumentWrite>& mine, FileWriter& writer);
  void endReload(const Reloaded& reloaded);
  void dirtyFlagWasSet();
  void autoSaveAfter(std::chrono::milliseconds delay);
  void setAutoSaveProblem(const QString& problem);
  void raise(const QString& message);
  void beginOpening(const QString& path);
  void endOpening();
  void reopen(const LastDocument& last);
  QString createdDefaultFolder() const;
  void beginSave(SaveKind kind, const QString& path, const std::optional<FileState>& known,
                 const QString& otherVersion = {});
  void endSave(const WrittenDocument& written);
  void beginNextSave();
  void beginAutoSave(const std::optional<FileState>& known);
  void endSaveByHand(const QString& path, const Outcome& written);
  void endChosenSave(const QString& path, const Outcome& written);
  void endAutoSave(const Save& save, const Outcome& written);
  void keep(const DocumentWrite& write);
  // What must still be at the document's own place, which may have disappeared.
  std::optional<FileState> knownOrGone() const;
  // `reason` says why the user is asked.
  void askAndSave(const QString& reason);
  // The path of the first file of this name that does not exist.
  QString freePathInDefaultFolder(const QString& title) const;
  Outcome keepBeforeImport();
  Outcome writePendingChanges();
  void saveForQuit();
  Outcome writeCopy(const QString& path);
  RescueCopy writeRescueCopy();
  void loadChosen(const QString& path, Pending pending = Pending::written);
  void install(const ReadDocument& document, const QString& path);
  void zoomToFitAfter(std::chrono::milliseconds delay);
  std::optional<LastDocument> findLastDocument();
  void log(const QString& line) const;
  static QString noMemory();

  MindMapViewModel& m_editor;
  Services m_services;
  DocumentWatch m_watch;
  DocumentProblem m_problem;
  QString m_reloadProblem;
  bool m_isReloading = false;
  MindMapDocument m_document;
  MindMap m_keptMap;                        // as last read or written
  std::optional<QString> m_autoSavedPlace;  // in the default folder, where this session put the map without being asked
  std::optional<Save> m_save;               // in progress
  quint64 m_saveCount = 0;
  Outcome m_lastSave = Outcome::done();
  std::deque<QString> m_chosenPlaces;  // chosen in Save As, waiting for the save in progress, as are the next two
  bool m_isSaveWanted = false;
  bool m_isAutoSaveWanted = false;
  bool m_isWaitingForSaves = false;
  quint64 m_installCount = 0;
  NotificationCenter::Subscription m_quitSubscription;
  Scheduler::Task m_autoSaveTimer = 0;
  std::chrono::seconds m_retryDelay = firstRetryDelay;
  QString m_autoSaveProblem;
  bool m_isOpeningMarked = false;
  std::optional<QStringList> m_heldErrors;  // while several documents are being opened
  bool m_wasDirty = false;
};

}  // namespace quilmora
