#pragma once

#include <deque>
#include <optional>

#include <QFuture>
#include <QObject>
#include <QString>

#include "editor/DocumentTrouble.h"
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

class FilePanels;
class FileWriter;
class OpeningMark;
class RecentFiles;

// How one window's map reaches the disk and comes back: Save, Save As, Open, auto-save and reopening. Holds the
// document beside the editor and keeps the two maps equal. Receives autoSaveBeforeQuit itself; the other requests reach
// it as calls. No widget: dialogs come through FilePanels, and what the user must see through errorRaised().
//
// Save, Save As and auto-save write a copy of the map beside the main thread, one after the other; flags, log lines and
// errors follow when the write is done. Quitting and opening another document wait for it.
class DocumentSession : public QObject {
  Q_OBJECT

 public:
  static constexpr std::chrono::seconds autoSaveDelay{5};
  // After an auto-save that failed, doubled each time.
  static constexpr std::chrono::seconds firstRetryDelay{10};
  static constexpr std::chrono::seconds longestRetryDelay{300};

  // All outlive the session.
  struct Services {
    EditorServices editor;
    FileWriter& writer;
    FilePanels& panels;
    Scheduler& scheduler;
    NotificationCenter& notifications;
    RecentFiles& recentFiles;
    QString defaultFolder;  // Documents/Quilmora of the user
    OpeningMark* openingMark = nullptr;
    // Writes here, and must have one thread; without one, writes at once.
    QThreadPool* pool = nullptr;
  };

  DocumentSession(MindMapViewModel& editor, Services services);
  ~DocumentSession() override;

  const MindMapDocument& document() const { return m_document; }

  // Writes to the place that the user chose before, and asks for one when there is none or writing there fails, be it
  // because another program changed the file.
  void saveDocument();
  void saveDocumentAs();
  void openDocument();
  void open(const QString& path);
  // One after the other; what went wrong with several is told at once.
  void openAll(const QStringList& paths);
  // Where changesNotKept() told of this document: opens it all the same and leaves a copy of the open map in the
  // default folder, or saves the open map at another place first.
  void openLeavingCopy(const QString& path);
  void saveAsAndOpen(const QString& path);
  // Whether a document was opened or reopened, or another map took the first one's place.
  bool hasReplacedMap() const { return m_installCount > 0; }
  // Puts an imported map in the place of the open one. Changes that are not kept yet are written first, and when that
  // fails the open map stays. Where the document is saved stays as it is, and nothing is captured for undo.
  void replaceWithImported(const MindMap& map);
  // Puts a starter map in the place of the open one, as a document of its own that has no place yet. Changes that are
  // not kept are written first, and when that fails the open map stays.
  void startWith(const MindMap& map);
  // Writes when there are changes since the last write. Quitting and opening another document do the same first.
  void autoSave();
  // A write is under way.
  bool isSaving() const { return m_save.has_value(); }
  // The map was changed since it was read or written. More than the dirty flag tells: an undo after a save, and typing
  // that goes on after one, change the map without it.
  bool hasUnkeptChanges() const;
  // Returns when all that was asked for is written, or has failed.
  void waitForSaves();
  // Why the last auto-save failed, or an empty text where nothing waits to be written.
  const QString& autoSaveProblem() const { return m_autoSaveProblem; }
  // What keeps the map from being saved, be it that another program changed the file. Nothing is written over such a
  // file until the person decides: reload() shows it, as one step of the history; keepMine() writes the open map in its
  // place; saving as another file leaves it alone. Whichever version makes way stays as a copy in the default folder.
  const DocumentTrouble& trouble() const { return m_trouble; }
  void reload();
  void keepMine();
  // Looks whether another program changed the file, beside what the system tells of it.
  void lookAtFile() { m_watch.look(); }
  // The last document is not reopened when its opening or drawing ended the program before: reopeningDoubted() asks.
  void reopenLastDocument();
  void reopenAllTheSame();
  // The document was drawn whole since it was opened, so that the next start may reopen it.
  void documentWasShown();

 Q_SIGNALS:
  // The user must see this; the alert is titled "Error".
  void errorRaised(const QString& message);
  // The document was not opened, because the changes of the open one cannot be written.
  void changesNotKept(const QString& path, const QString& reason);
  void troubleChanged();
  // A file is about to be written over or made, with `map`; by itself where nobody asked for it.
  void fileWillBeWritten(const QString& path, const MindMap& map, bool isAutomatic);
  // `map` stands whole in the file at `path`, where the session had put or found `before` last; every save, auto-save
  // and rescue copy tells it, and a reload, when all flags are set.
  void fileWritten(const QString& path, const MindMap& before, const MindMap& map);
  // Another map takes the place of `before`, which may have changes that no file holds.
  void mapWillBeReplaced(const MindMap& before);
  // A document was opened or reopened, and is about to be drawn.
  void documentInstalled();
  // This document ended the program last time.
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
    bool takesPlace;  // the map had none
    QFuture<WrittenDocument> written;
  };

  struct Reloaded {
    Outcome outcome = Outcome::done();
    ReadDocument document;
    QString copyOfMine;
  };

  void documentFollowsEditor();
  void fileMayHaveChanged();
  void refreshTrouble();
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
  // What must still stand at the document's own place, which may have gone.
  std::optional<FileState> knownOrGone() const;
  // `reason` tells why the user is asked.
  void askAndSave(const QString& reason);
  // The path of the first file of this name that is not there.
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
  DocumentTrouble m_trouble;
  QString m_reloadProblem;
  bool m_isReloading = false;
  MindMapDocument m_document;
  MindMap m_keptMap;                        // as last read or written
  std::optional<QString> m_autoSavedPlace;  // in the default folder, where this session put the map unasked
  std::optional<Save> m_save;               // under way
  quint64 m_saveCount = 0;
  Outcome m_lastSave = Outcome::done();
  std::deque<QString> m_chosenPlaces;  // of Save As, waiting for the save under way, as do the next two
  bool m_isSaveWanted = false;
  bool m_isAutoSaveWanted = false;
  bool m_isWaitingForSaves = false;
  quint64 m_installCount = 0;
  NotificationCenter::Subscription m_quitSubscription;
  Scheduler::Task m_autoSaveTimer = 0;
  std::chrono::seconds m_retryDelay = firstRetryDelay;
  QString m_autoSaveProblem;
  bool m_isOpeningMarked = false;
  std::optional<QStringList> m_heldErrors;  // while several documents are opened
  bool m_wasDirty = false;
};

}  // namespace quilmora
