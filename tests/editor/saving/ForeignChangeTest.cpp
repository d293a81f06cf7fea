#include <QProcess>
#include <QThreadPool>
#include <QtTest/QTest>

#include "editor/SavingFixture.h"
#include "support/Folders.h"
#include "support/TemporaryDisk.h"

namespace quilmora {
namespace {

using namespace std::chrono_literals;

// Another real program changes the file of the open document.
class ForeignChange : public SavingFixture, public testing::WithParamInterface<bool> {
 protected:
  ForeignChange() {
    QDir().mkpath(path(QStringLiteral("folder")));
    put(file, encodeDocument(mapWithTitle(QStringLiteral("Mine"))));
    put(other, encodeDocument(mapWithTitle(QStringLiteral("Theirs"))));
    pool.setMaxThreadCount(1);
    session.reset();
    const EditorServices services{clock, settings, bookmarks, log};
    editor = std::make_unique<MindMapViewModel>(MindMap::blankMap(clock), services);
    session = std::make_unique<DocumentSession>(
        *editor, DocumentSession::Services{services, writer, panels, scheduler, notifications, *recentFiles,
                                           defaultFolder(), nullptr, GetParam() ? &pool : nullptr});
    QObject::connect(session.get(), &DocumentSession::errorRaised,
                     [this](const QString& message) { errors.append(message); });
    session->open(file);
  }
  ~ForeignChange() override { session.reset(); }

  void otherProgram(const QString& work, const QString& with = {}) { otherProgramOn(file, work, with); }
  static void otherProgramOn(const QString& path, const QString& work, const QString& with = {}) {
    ASSERT_EQ(QProcess::execute(supportProgramFolder() + QStringLiteral("/support_change_file"),
                                with.isEmpty() ? QStringList{work, path} : QStringList{work, path, with}),
              0);
  }
  // Waits until the session reports problem that starts with this; an empty text waits for its end.
  bool isTold(const QString& beginning) {
    return QTest::qWaitFor(
        [&] {
          scheduler.advance(DocumentWatch::settleDelay);
          const QString& text = session->problem().text;
          return !session->isSaving() && (beginning.isEmpty() ? text.isEmpty() : text.startsWith(beginning));
        },
        10'000);
  }
  // Lets time pass, with everything that happens in it.
  void wait(std::chrono::milliseconds time) {
    scheduler.advance(time);
    finish();
  }
  void finish() {
    for (int round = 0; round < 5; ++round) {
      pool.waitForDone();
      QCoreApplication::processEvents();
      session->waitForSaves();
    }
  }
  QString titleIn(const QString& path) const { return decodeDocumentAt(path).title; }
  QStringList copies() const { return namesIn(defaultFolder()); }

  QThreadPool pool;
  const QString file = path(QStringLiteral("folder/Plan.mindmap"));
  const QString other = path(QStringLiteral("Other.mindmap"));
  const QString changed = QStringLiteral("Another program has changed “Plan.mindmap”.");
};

TEST_P(ForeignChange, ThatReplacesTheFilePausesAutoSave) {
  otherProgram(QStringLiteral("replace"), other);
  ASSERT_TRUE(isTold(changed));
  EXPECT_TRUE(session->problem().canReload);
  EXPECT_TRUE(session->problem().canKeepMine);
  edit();
  wait(10min);
  EXPECT_EQ(titleIn(file), QStringLiteral("Theirs"));
  EXPECT_TRUE(editor->isDirty());
  EXPECT_EQ(errors, QStringList());
}

TEST_P(ForeignChange, ThatWritesInPlaceIsNoticed) {
  otherProgram(QStringLiteral("write"), other);
  ASSERT_TRUE(isTold(changed));
}

TEST_P(ForeignChange, ThatNobodyTellsOfIsFoundBeforeTheWrite) {
  // The watch has not checked yet when auto-save runs.
  edit();
  otherProgram(QStringLiteral("replace"), other);
  session->autoSave();
  finish();
  EXPECT_EQ(titleIn(file), QStringLiteral("Theirs"));
  EXPECT_EQ(session->problem().text, changed);
  EXPECT_TRUE(editor->isDirty());
  EXPECT_TRUE(log.lines().last().startsWith(QStringLiteral("Quilmora: auto-save FAILED for ") + file));
}

TEST_P(ForeignChange, OfTheTimeAloneIsNone) {
  edit();
  otherProgram(QStringLiteral("rewrite"));
  QTest::qWait(50);
  wait(5s);
  EXPECT_EQ(session->problem().text, QString());
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
}

TEST_P(ForeignChange, ThatIsTakenBackLetsAutoSaveGoOn) {
  const QString kept = path(QStringLiteral("kept"));
  ASSERT_TRUE(QFile::copy(file, kept));
  edit();
  otherProgram(QStringLiteral("replace"), other);
  ASSERT_TRUE(isTold(changed));
  otherProgram(QStringLiteral("replace"), kept);
  ASSERT_TRUE(isTold({}));
  wait(5s);
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
}

TEST_P(ForeignChange, ReloadShowsItAndUndoBringsTheOwnMapBack) {
  edit();
  const MindMap mine = editor->mindMap();
  otherProgram(QStringLiteral("replace"), other);
  ASSERT_TRUE(isTold(changed));
  const int steps = editor->undoCount();
  session->reload();
  finish();
  EXPECT_EQ(editor->mindMap().title, QStringLiteral("Theirs"));
  EXPECT_EQ(session->document().mindMap.title, QStringLiteral("Theirs"));
  EXPECT_FALSE(editor->isDirty());
  EXPECT_EQ(session->problem().text, QString());
  EXPECT_EQ(editor->undoCount(), steps + 1);
  ASSERT_EQ(copies(), QStringList{QStringLiteral("Mine.mindmap")});
  EXPECT_EQ(decodeDocumentAt(inDefaultFolder(QStringLiteral("Mine.mindmap"))), mine);

  editor->undo();
  EXPECT_EQ(editor->mindMap(), mine);
  editor->redo();
  EXPECT_EQ(editor->mindMap().title, QStringLiteral("Theirs"));
  edit();
  wait(5s);
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
}

TEST_P(ForeignChange, ReloadOfAMapWithoutChangesLeavesNoCopy) {
  otherProgram(QStringLiteral("write"), other);
  ASSERT_TRUE(isTold(changed));
  session->reload();
  finish();
  EXPECT_EQ(editor->mindMap().title, QStringLiteral("Theirs"));
  EXPECT_EQ(copies(), QStringList());
}

TEST_P(ForeignChange, ReloadOfWhatIsNoMapKeepsTheOwnOne) {
  put(other, "not a map");
  edit();
  const MindMap mine = editor->mindMap();
  otherProgram(QStringLiteral("replace"), other);
  ASSERT_TRUE(isTold(changed));
  session->reload();
  finish();
  EXPECT_EQ(session->problem().text,
            QStringLiteral("“Plan.mindmap” cannot be reloaded: line 1, column 1: expected a value."));
  EXPECT_EQ(editor->mindMap(), mine);
  EXPECT_TRUE(editor->isDirty());
  EXPECT_EQ(content(file), QByteArrayLiteral("not a map"));
}

TEST_P(ForeignChange, KeepMineWritesTheOwnMapAndKeepsTheOther) {
  edit();
  otherProgram(QStringLiteral("replace"), other);
  ASSERT_TRUE(isTold(changed));
  session->keepMine();
  finish();
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
  EXPECT_FALSE(editor->isDirty());
  EXPECT_EQ(session->problem().text, QString());
  ASSERT_EQ(copies(), QStringList{QStringLiteral("Plan (other version).mindmap")});
  EXPECT_EQ(content(inDefaultFolder(QStringLiteral("Plan (other version).mindmap"))), content(other));
}

TEST_P(ForeignChange, KeepMineIsNoConsentToALaterChange) {
  edit();
  otherProgram(QStringLiteral("replace"), other);
  ASSERT_TRUE(isTold(changed));
  put(other, encodeDocument(mapWithTitle(QStringLiteral("Theirs again"))));
  otherProgram(QStringLiteral("replace"), other);
  session->keepMine();
  finish();
  EXPECT_EQ(titleIn(file), QStringLiteral("Theirs again"));
  EXPECT_EQ(session->problem().text, changed);
  EXPECT_TRUE(editor->isDirty());
  EXPECT_EQ(copies(), QStringList());
}

TEST_P(ForeignChange, ACopyGoesToAnotherPlaceAndTheFileStaysTheirs) {
  edit();
  otherProgram(QStringLiteral("replace"), other);
  ASSERT_TRUE(isTold(changed));
  const QString copy = path(QStringLiteral("Copy.mindmap"));
  panels.savePaths = {copy};
  session->saveDocumentAs();
  finish();
  EXPECT_EQ(content(copy), encodeDocument(editor->mindMap()));
  EXPECT_EQ(titleIn(file), QStringLiteral("Theirs"));
  EXPECT_EQ(editor->lastSavedFilePath(), copy);
  EXPECT_EQ(session->problem().text, QString());
}

TEST_P(ForeignChange, SaveByHandAsksForAPlaceAndTellsWhy) {
  edit();
  otherProgram(QStringLiteral("replace"), other);
  session->saveDocument();
  finish();
  EXPECT_EQ(titleIn(file), QStringLiteral("Theirs"));
  ASSERT_EQ(panels.saveRequests.size(), 1);
  EXPECT_EQ(panels.saveRequests.at(0).reason,
            QStringLiteral("“Plan.mindmap” could not be written. Another program has changed it."));
}

TEST_P(ForeignChange, QuittingRescuesTheOwnMapAndLeavesTheFile) {
  edit();
  otherProgram(QStringLiteral("replace"), other);
  notifications.post(Notification::autoSaveBeforeQuit);
  EXPECT_EQ(titleIn(file), QStringLiteral("Theirs"));
  EXPECT_EQ(content(inDefaultFolder(QStringLiteral("Mine.mindmap"))), encodeDocument(editor->mindMap()));
}

TEST_P(ForeignChange, ThatRemovesTheFilePausesAutoSaveUntilItIsWantedAgain) {
  otherProgram(QStringLiteral("remove"));
  ASSERT_TRUE(isTold(QStringLiteral("Another program has removed or renamed “Plan.mindmap”.")));
  EXPECT_FALSE(session->problem().canReload);
  edit();
  wait(10min);
  EXPECT_FALSE(QFileInfo::exists(file));
  session->keepMine();
  finish();
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
  EXPECT_EQ(session->problem().text, QString());
  EXPECT_EQ(copies(), QStringList());
}

TEST_P(ForeignChange, ThatRenamesTheFileLeavesItAlone) {
  const QString moved = path(QStringLiteral("folder/Moved.mindmap"));
  edit();
  otherProgram(QStringLiteral("rename"), moved);
  ASSERT_TRUE(isTold(QStringLiteral("Another program has removed or renamed “Plan.mindmap”.")));
  session->saveDocument();
  finish();
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
  EXPECT_EQ(titleIn(moved), QStringLiteral("Mine"));
}

TEST_P(ForeignChange, ThatPutsALinkInItsPlaceIsAChangeEvenWithTheSameContent) {
  const QString twin = path(QStringLiteral("Twin.mindmap"));
  ASSERT_TRUE(QFile::copy(file, twin));
  edit();
  otherProgram(QStringLiteral("link"), twin);
  ASSERT_TRUE(isTold(QStringLiteral("Another program has replaced “Plan.mindmap” by a link to “Twin.mindmap”.")));
  wait(10min);
  EXPECT_EQ(decodeDocumentAt(twin).nodes.size(), 1u);
  session->keepMine();
  finish();
  EXPECT_TRUE(QFileInfo(file).isSymLink());
  EXPECT_EQ(content(twin), encodeDocument(editor->mindMap()));
}

TEST_P(ForeignChange, BehindALinkIsNoticedToo) {
  const QString link = path(QStringLiteral("link.mindmap"));
  ASSERT_TRUE(QFile::link(file, link));
  session->open(link);
  edit();
  otherProgram(QStringLiteral("write"), other);
  ASSERT_TRUE(isTold(QStringLiteral("Another program has changed “link.mindmap”.")));
  wait(10min);
  EXPECT_EQ(titleIn(file), QStringLiteral("Theirs"));
}

TEST_P(ForeignChange, OfTheRightToWriteIsToldAndTriedAgain) {
  edit();
  otherProgram(QStringLiteral("protect"));
  ASSERT_TRUE(isTold(QStringLiteral("“Plan.mindmap” can only be read now.")));
  wait(1min);
  EXPECT_EQ(decodeDocumentAt(file).nodes.size(), 1u);
  EXPECT_TRUE(editor->isDirty());
  otherProgram(QStringLiteral("free"));
  ASSERT_TRUE(isTold({}));
  wait(5s);
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
}

TEST_P(ForeignChange, OfTheFolderIsToldAndTheMapIsWrittenOnceItIsBack) {
  edit();
  ASSERT_EQ(QProcess::execute(QStringLiteral("rm"), {QStringLiteral("-r"), path(QStringLiteral("folder"))}), 0);
  ASSERT_TRUE(isTold(QStringLiteral("The folder of “Plan.mindmap” is gone.")));
  wait(1min);
  EXPECT_TRUE(editor->isDirty());
  ASSERT_EQ(QProcess::execute(QStringLiteral("mkdir"), {path(QStringLiteral("folder"))}), 0);
  ASSERT_TRUE(isTold({}));
  wait(5min);
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
}

TEST_P(ForeignChange, OfAFullDiskIsToldAndTheMapIsWrittenWhenThereIsRoom) {
  TemporaryDisk disk;
  if (!disk.isMounted()) GTEST_SKIP() << "mounting a small disk needs root";
  const QString small = disk.path(QStringLiteral("Small.mindmap"));
  put(small, encodeDocument(mapWithTitle(QStringLiteral("Small"))));
  session->open(small);
  disk.fill();
  edit();
  wait(5s);
  EXPECT_EQ(session->problem().text,
            QStringLiteral("Not saved: “Small.mindmap” could not be written. The disk is full. It is tried again by "
                           "itself."));
  EXPECT_TRUE(editor->isDirty());
  ASSERT_TRUE(QFile::remove(disk.path(QStringLiteral("filler"))));
  wait(10s);
  EXPECT_EQ(session->problem().text, QString());
  EXPECT_EQ(content(small), encodeDocument(editor->mindMap()));
}

TEST_P(ForeignChange, OfAFileThatIsNotOpenAnyMoreIsNobodysBusiness) {
  session->open(other);
  otherProgram(QStringLiteral("remove"));
  QTest::qWait(50);
  wait(1s);
  EXPECT_EQ(session->problem().text, QString());
}

INSTANTIATE_TEST_SUITE_P(AtOnce, ForeignChange, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(BesideTheWindow, ForeignChange, testing::Values(true));

}  // namespace
}  // namespace quilmora
