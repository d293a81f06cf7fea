#include <sys/stat.h>

#include "editor/SavingFixture.h"
#include "platform/SettingsKeys.h"
#include "support/TemporaryDisk.h"

namespace quilmora {
namespace {

using namespace std::chrono_literals;

class Saving : public SavingFixture {};

TEST_F(Saving, AsksForAPlaceAtFirstAndThenWritesThere) {
  const QString file = path(QStringLiteral("Plan.mindmap"));
  panels.savePaths = {file};
  setTitle(QStringLiteral("Plan"));
  edit();

  session->saveDocument();

  ASSERT_EQ(panels.saveRequests.size(), 1);
  EXPECT_EQ(panels.saveRequests.at(0).folder, defaultFolder());
  EXPECT_EQ(panels.saveRequests.at(0).suggestedName, QStringLiteral("Plan.mindmap"));
  EXPECT_EQ(panels.saveRequests.at(0).extension, QStringLiteral("mindmap"));
  EXPECT_TRUE(QFileInfo(defaultFolder()).isDir());
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
  EXPECT_FALSE(editor->isDirty());
  EXPECT_TRUE(editor->hasExplicitSavePath());
  EXPECT_EQ(editor->lastSavedFilePath(), file);
  EXPECT_EQ(settings.text(settings::lastSavedFilePath), file);
  EXPECT_EQ(settings.bytes(settings::lastSavedFileBookmark), "scoped:" + file.toUtf8());
  EXPECT_EQ(recentFiles->urls(), QStringList{file});
  EXPECT_EQ(log.lines(), QStringList{QStringLiteral("Quilmora: saved security-scoped bookmark for ") + file});

  edit();
  session->saveDocument();

  EXPECT_EQ(panels.saveRequests.size(), 1);
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
  EXPECT_FALSE(editor->isDirty());
  EXPECT_EQ(errors, QStringList());
}

TEST_F(Saving, CancelledPanelChangesNothing) {
  edit();
  session->saveDocument();
  EXPECT_TRUE(editor->isDirty());
  EXPECT_FALSE(editor->hasExplicitSavePath());
  EXPECT_EQ(editor->lastSavedFilePath(), std::nullopt);
  EXPECT_EQ(log.lines(), QStringList());
  EXPECT_EQ(errors, QStringList());
  session->openDocument();
  EXPECT_EQ(panels.openRequests.size(), 1);
  EXPECT_EQ(errors, QStringList());
}

TEST_F(Saving, AsReplacesAnotherExtension) {
  panels.savePaths = {path(QStringLiteral("Plan.json")), path(QStringLiteral("Plan two")),
                      path(QStringLiteral("v1.final.MindMap"))};
  session->saveDocumentAs();
  session->saveDocumentAs();
  session->saveDocumentAs();
  EXPECT_EQ(namesIn(home()), QStringList({QStringLiteral("Documents"), QStringLiteral("Plan two.mindmap"),
                                          QStringLiteral("Plan.mindmap"), QStringLiteral("v1.final.mindmap")}));
  EXPECT_EQ(editor->lastSavedFilePath(), path(QStringLiteral("v1.final.mindmap")));
}

TEST_F(Saving, AsTellsOfAFailureAndKeepsTheFlag) {
  panels.savePaths = {path(QStringLiteral("gone/Plan.mindmap"))};
  edit();
  session->saveDocumentAs();
  EXPECT_EQ(errors, QStringList{QStringLiteral("Failed to save document: “Plan.mindmap” could not be written. "
                                               "The folder “%1/gone” does not exist.")
                                    .arg(home())});
  EXPECT_TRUE(editor->isDirty());
  EXPECT_FALSE(editor->hasExplicitSavePath());
  EXPECT_EQ(recentFiles->urls(), QStringList());
}

TEST_F(Saving, FailingAtTheKnownPlaceAsksWithoutAWord) {
  ASSERT_TRUE(QDir(home()).mkdir(QStringLiteral("folder")));
  panels.savePaths = {path(QStringLiteral("folder/Plan.mindmap")), path(QStringLiteral("Other.mindmap"))};
  session->saveDocument();
  ASSERT_TRUE(QDir(path(QStringLiteral("folder"))).removeRecursively());
  edit();

  session->saveDocument();

  EXPECT_EQ(panels.saveRequests.size(), 2);
  EXPECT_EQ(errors, QStringList());
  EXPECT_EQ(editor->lastSavedFilePath(), path(QStringLiteral("Other.mindmap")));
  EXPECT_EQ(content(path(QStringLiteral("Other.mindmap"))), encodeDocument(editor->mindMap()));
}

TEST_F(Saving, AsDropsThePlaceWhenAnotherDocumentCameWhileThePanelWasOpen) {
  struct InterruptedPanels final : FileDialogs {
    std::optional<QString> askSavePath(const SaveRequest&) override {
      interrupt();
      return chosen;
    }
    std::optional<QString> askOpenPath(const OpenRequest&) override { return std::nullopt; }
    std::function<void()> interrupt;
    QString chosen;
  } interrupted;
  const QString other = path(QStringLiteral("Other.mindmap"));
  put(other, encodeDocument(mapWithTitle(QStringLiteral("Other"))));
  interrupted.chosen = path(QStringLiteral("Chosen.mindmap"));
  interrupted.interrupt = [&] { session->open(other); };
  const EditorServices services{clock, settings, bookmarks, log};
  session = std::make_unique<DocumentSession>(
      *editor, DocumentSession::Services{services, writer, interrupted, scheduler, notifications, *recentFiles,
                                         defaultFolder()});
  session->saveDocumentAs();
  EXPECT_FALSE(QFileInfo::exists(interrupted.chosen));
  EXPECT_EQ(editor->lastSavedFilePath(), other);
}

TEST_F(Saving, AsMayEndTheProgramWhileThePanelIsOpen) {
  struct EndingPanels final : FileDialogs {
    std::optional<QString> askSavePath(const SaveRequest&) override {
      end();
      return QStringLiteral("/nowhere/Plan.mindmap");
    }
    std::optional<QString> askOpenPath(const OpenRequest&) override {
      end();
      return QStringLiteral("/nowhere/Plan.mindmap");
    }
    std::function<void()> end;
  } ending;
  ending.end = [&] { session.reset(); };
  const EditorServices services{clock, settings, bookmarks, log};
  for (const auto request : {&DocumentSession::saveDocumentAs, &DocumentSession::openDocument}) {
    session = std::make_unique<DocumentSession>(
        *editor,
        DocumentSession::Services{services, writer, ending, scheduler, notifications, *recentFiles, defaultFolder()});
    (session.get()->*request)();
    EXPECT_EQ(session, nullptr);
  }
}

TEST_F(Saving, RecordsALocationAsTold) {
  edit();
  editor->recordSaveLocation(std::nullopt, true);
  EXPECT_FALSE(editor->isDirty());
  EXPECT_TRUE(editor->hasExplicitSavePath());
  EXPECT_EQ(editor->lastSavedFilePath(), std::nullopt);
  EXPECT_EQ(log.lines(), QStringList());
  EXPECT_TRUE(settings.isEmpty());

  editor->recordSaveLocation(QStringLiteral("/a.mindmap"), false);
  EXPECT_TRUE(editor->hasExplicitSavePath());
  EXPECT_EQ(editor->lastSavedFilePath(), QStringLiteral("/a.mindmap"));
}

TEST_F(Saving, FallsBackToAPlainBookmarkAndThenToNone) {
  bookmarks.scopedMakingFails = true;
  editor->recordSaveLocation(QStringLiteral("/a.mindmap"), true);
  EXPECT_EQ(settings.bytes(settings::lastSavedFileBookmark), QByteArrayLiteral("plain:/a.mindmap"));
  bookmarks.plainMakingFails = true;
  editor->recordSaveLocation(QStringLiteral("/b.mindmap"), true);
  EXPECT_EQ(settings.bytes(settings::lastSavedFileBookmark), std::nullopt);
  EXPECT_EQ(settings.text(settings::lastSavedFilePath), QStringLiteral("/b.mindmap"));
  const QString line =
      QStringLiteral("Quilmora: security-scoped bookmark failed (not allowed) — saving plain bookmark");
  EXPECT_EQ(log.lines(), QStringList({line, line}));
}

TEST_F(Saving, HoldsAccessToOneFileUntilTheEditorEnds) {
  editor->holdScopedAccess(QStringLiteral("/a"));
  editor->holdScopedAccess(QStringLiteral("/a"));
  EXPECT_EQ(bookmarks.calls, QStringList());
  editor->holdScopedAccess(QStringLiteral("/b"));
  EXPECT_EQ(bookmarks.calls, QStringList{QStringLiteral("stop /a")});
  session.reset();
  editor.reset();
  EXPECT_EQ(bookmarks.calls, QStringList({QStringLiteral("stop /a"), QStringLiteral("stop /b")}));
}

TEST_F(Saving, KeepsTheDocumentEqualToTheEditorsMap) {
  edit();
  setTitle(QStringLiteral("Renamed"));
  EXPECT_EQ(session->document().mindMap, editor->mindMap());
  EXPECT_EQ(session->document().mindMap.title, QStringLiteral("Renamed"));
  editor->undo();
  EXPECT_EQ(session->document().mindMap, editor->mindMap());

  // A change of the time stamps alone is no change.
  MindMap later = editor->mindMap();
  const TimePoint before = session->document().mindMap.updatedAt;
  later.updatedAt += 1h;
  editor->setMindMap(later);
  EXPECT_EQ(session->document().mindMap.updatedAt, before);
}

class Opening : public SavingFixture {
 protected:
  // What the user sees of the editor when nothing was opened.
  void expectUntouched(const MindMap& map) {
    EXPECT_EQ(editor->mindMap(), map);
    EXPECT_EQ(session->document().mindMap, map);
    EXPECT_EQ(editor->lastSavedFilePath(), std::nullopt);
    EXPECT_EQ(editor->undoCount(), 1);
    EXPECT_TRUE(editor->isDirty());
  }
};

TEST_F(Opening, TakesTheMapAndForgetsTheHistory) {
  const QString file = path(QStringLiteral("Plan.mindmap"));
  const MindMap stored = mapWithTitle(QStringLiteral("Plan"));
  put(file, encodeDocument(stored));
  edit();
  edit();
  editor->undo();
  editor->setCanvasOffset(QPointF(30, -20));
  editor->setCanvasZoom(2.5);
  editor->selectAll();
  const IdSet selected = editor->selectedNodeIDs();
  int fits = 0;
  const auto subscription = notifications.observe(Notification::zoomToFit, [&](const QVariant&) { ++fits; });

  session->open(file);

  EXPECT_EQ(editor->mindMap(), stored);
  EXPECT_EQ(session->document().mindMap, stored);
  EXPECT_EQ(editor->undoCount(), 0);
  EXPECT_EQ(editor->redoCount(), 0);
  EXPECT_FALSE(editor->isDirty());
  EXPECT_TRUE(editor->hasExplicitSavePath());
  EXPECT_EQ(editor->lastSavedFilePath(), file);
  EXPECT_EQ(recentFiles->urls(), QStringList{file});
  EXPECT_EQ(editor->canvasOffset(), QPointF(0, 0));
  EXPECT_EQ(editor->canvasZoom(), 1.0);
  EXPECT_TRUE(editor->selectedNodeIDs() == selected);
  EXPECT_EQ(bookmarks.calls, QStringList({QStringLiteral("start ") + file, QStringLiteral("stop ") + file}));
  EXPECT_EQ(errors, QStringList());

  scheduler.advance(199ms);
  EXPECT_EQ(fits, 0);
  scheduler.advance(1ms);
  EXPECT_EQ(fits, 1);
}

TEST_F(Opening, WithoutGrantedAccessStopsNone) {
  const QString file = path(QStringLiteral("Plan.mindmap"));
  put(file, encodeDocument(mapWithTitle(QStringLiteral("Plan"))));
  bookmarks.grantsAccess = false;
  session->open(file);
  EXPECT_EQ(editor->mindMap().title, QStringLiteral("Plan"));
  EXPECT_EQ(bookmarks.calls, QStringList{QStringLiteral("start ") + file});
}

TEST_F(Opening, APathThatVanishedTellsAndLeavesTheRecentList) {
  const QString file = path(QStringLiteral("Plan.mindmap"));
  recentFiles->add(file);
  edit();
  const MindMap before = editor->mindMap();
  session->open(file);
  EXPECT_EQ(errors, QStringList{QStringLiteral("File not found: Plan.mindmap")});
  EXPECT_EQ(recentFiles->urls(), QStringList());
  EXPECT_EQ(bookmarks.calls, QStringList({QStringLiteral("start ") + file, QStringLiteral("stop ") + file}));
  expectUntouched(before);
}

TEST_F(Opening, ADamagedFileTellsAndKeepsTheOpenMap) {
  const QString file = path(QStringLiteral("Plan.mindmap"));
  put(file, QByteArrayLiteral("{\"version\": 1}"));
  edit();
  const MindMap before = editor->mindMap();
  session->open(file);
  ASSERT_EQ(errors.size(), 1);
  const QString begin = QStringLiteral("Failed to open document: Plan.mindmap: ");
  EXPECT_TRUE(errors.at(0).startsWith(begin)) << errors.at(0).toStdString();
  EXPECT_GT(errors.at(0).size(), begin.size());
  EXPECT_EQ(bookmarks.calls, QStringList({QStringLiteral("start ") + file, QStringLiteral("stop ") + file}));
  EXPECT_EQ(recentFiles->urls(), QStringList());
  expectUntouched(before);
  scheduler.advance(1s);
}

TEST_F(Opening, AFifoTellsWithoutWaiting) {
  const QString fifo = path(QStringLiteral("fifo.mindmap"));
  ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
  edit();
  const MindMap before = editor->mindMap();
  session->open(fifo);
  ASSERT_EQ(errors.size(), 1);
  EXPECT_TRUE(errors.at(0).startsWith(QStringLiteral("Failed to open document: ")));
  expectUntouched(before);
}

TEST_F(Opening, ThroughThePanelTakesPackagesToo) {
  const QString package = path(QStringLiteral("Plan.mindmap"));
  writePackage(mapWithTitle(QStringLiteral("Packed")), package);
  panels.openPaths = {package + u'/', path(QStringLiteral("gone.mindmap"))};
  session->openDocument();
  ASSERT_EQ(panels.openRequests.size(), 1);
  EXPECT_EQ(panels.openRequests.at(0).extensions, QStringList({QStringLiteral("mindmap"), QStringLiteral("json")}));
  EXPECT_TRUE(panels.openRequests.at(0).allowsFolders);
  EXPECT_EQ(editor->mindMap().title, QStringLiteral("Packed"));
  EXPECT_EQ(editor->lastSavedFilePath(), package);
  // The dialog grants access itself.
  EXPECT_EQ(bookmarks.calls, QStringList());

  session->openDocument();
  ASSERT_EQ(errors.size(), 1);
  EXPECT_TRUE(errors.at(0).startsWith(QStringLiteral("Failed to open document: ")));
}

TEST_F(Opening, APackageIsSavedElsewhereAsAPlainFile) {
  const QString package = path(QStringLiteral("Plan.mindmap"));
  writePackage(mapWithTitle(QStringLiteral("Packed")), package);
  session->open(package);
  edit();
  scheduler.advance(5s);
  EXPECT_EQ(log.lines().last(),
            QStringLiteral("Quilmora: auto-save FAILED for %1: “Plan.mindmap” could not be written. "
                           "There is a folder of this name.")
                .arg(package));
  EXPECT_TRUE(editor->isDirty());

  panels.savePaths = {path(QStringLiteral("Plain.mindmap"))};
  session->saveDocument();
  EXPECT_EQ(panels.saveRequests.size(), 1);
  EXPECT_EQ(errors, QStringList());
  EXPECT_FALSE(editor->isDirty());
  EXPECT_EQ(content(path(QStringLiteral("Plain.mindmap"))), encodeDocument(editor->mindMap()));
  EXPECT_EQ(decodeDocumentAt(package).title, QStringLiteral("Packed"));
}

TEST_F(Saving, WhoIsAskedForAPlaceBecauseTheOwnOneFailsHearsWhy) {
  panels.savePaths = {path(QStringLiteral("gone/plan.mindmap")), std::nullopt};
  ASSERT_TRUE(QDir(home()).mkpath(QStringLiteral("gone")));
  session->saveDocument();
  ASSERT_TRUE(QDir(path(QStringLiteral("gone"))).removeRecursively());
  session->saveDocument();
  ASSERT_EQ(panels.saveRequests.size(), 2);
  EXPECT_EQ(panels.saveRequests.at(0).reason, QString());
  EXPECT_TRUE(panels.saveRequests.at(1).reason.contains(QStringLiteral("“plan.mindmap” could not be written")))
      << panels.saveRequests.at(1).reason.toStdString();
  EXPECT_EQ(errors, QStringList());
}

TEST_F(Saving, TheNewPlaceIsKnownWhenTheFlagClears) {
  edit();
  std::optional<QString> heard;
  QObject::connect(editor.get(), &MindMapViewModel::isDirtyChanged, session.get(),
                   [&] { heard = editor->lastSavedFilePath(); });
  panels.savePaths = {path(QStringLiteral("plan.mindmap"))};
  session->saveDocumentAs();
  EXPECT_EQ(heard, path(QStringLiteral("plan.mindmap")));
}

class AutoSavedCopy : public SavingFixture {
 protected:
  AutoSavedCopy() {
    edit();
    scheduler.advance(DocumentSession::autoSaveDelay);
  }
  QString copy() const { return inDefaultFolder(QStringLiteral("Untitled Map.mindmap")); }
  void saveAs(const QString& name) {
    panels.savePaths = {name};
    session->saveDocument();
  }
};

TEST_F(AutoSavedCopy, GoesWhenTheMapGetsAPlaceOfItsOwn) {
  ASSERT_TRUE(QFileInfo::exists(copy()));
  edit();
  saveAs(path(QStringLiteral("Company plan.mindmap")));
  EXPECT_FALSE(QFileInfo::exists(copy()));
  EXPECT_EQ(content(path(QStringLiteral("Company plan.mindmap"))), encodeDocument(editor->mindMap()));
}

TEST_F(AutoSavedCopy, StaysWhereItIsThePlaceThatWasChosen) {
  saveAs(copy());
  EXPECT_EQ(content(copy()), encodeDocument(editor->mindMap()));
}

TEST_F(AutoSavedCopy, StaysWhereSomebodyElseWroteInIt) {
  const QByteArray other = encodeDocument(mapWithTitle(QStringLiteral("Another")));
  put(copy(), other);
  saveAs(path(QStringLiteral("Company plan.mindmap")));
  EXPECT_EQ(content(copy()), other);
}

TEST_F(AutoSavedCopy, StaysWhenTheSaveFails) {
  saveAs(path(QStringLiteral("no/such/folder/plan.mindmap")));
  EXPECT_EQ(errors.size(), 1);
  EXPECT_TRUE(QFileInfo::exists(copy()));
}

TEST_F(AutoSavedCopy, OfAnEarlierSessionStays) {
  start();
  session->reopenLastDocument();
  edit();
  panels.savePaths = {path(QStringLiteral("Company plan.mindmap"))};
  session->saveDocumentAs();
  EXPECT_TRUE(QFileInfo::exists(copy()));
}

}  // namespace
}  // namespace quilmora
