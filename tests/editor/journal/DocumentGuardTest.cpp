#include <algorithm>

#include <QtTest/QTest>

#include "editor/DocumentGuard.h"
#include "editor/SavingFixture.h"
#include "model/MindMapDocument.h"
#include "platform/SettingsKeys.h"

namespace quilmora {
namespace {

class DocumentGuardTest : public SavingFixture {
 protected:
  DocumentGuardTest() { startProgram(); }
  ~DocumentGuardTest() override { keeping.reset(); }

  // A start of the program, after the previous process ended without saving.
  void startProgram() {
    keeping.reset();
    start();
    keeping = std::make_unique<DocumentGuard>(*editor, *session, clock, scheduler, log, path(QStringLiteral("state")));
    QObject::connect(keeping.get(), &DocumentGuard::changesRecovered, [this] { ++recoveredCount; });
    QObject::connect(keeping.get(), &DocumentGuard::journalSetAside, [this] { ++asideCount; });
    session->reopenLastDocument();
    keeping->begin();
  }
  void letTimePass(std::chrono::milliseconds time = Journal::delay) {
    scheduler.advance(time);
    ASSERT_TRUE(QTest::qWaitFor([this] { return keeping->journal().isAtRest(); }, 20'000));
  }
  void openNew(const QString& name) {
    put(path(name), encodeDocument(mapWithTitle(name)));
    session->open(path(name));
  }
  std::vector<versions::Version> versionsOf(const QString& name) {
    auto future = keeping->versions().list(path(name));
    future.waitForFinished();
    return future.result();
  }
  MindMap versionOf(const QString& name, std::size_t index) {
    auto future = keeping->versions().load(path(name), versionsOf(name).at(index).number);
    future.waitForFinished();
    return future.result().value_or(MindMap());
  }

  std::unique_ptr<DocumentGuard> keeping;
  int recoveredCount = 0;
  int asideCount = 0;
};

const QString plan = QStringLiteral("plan.mindmap");

TEST_F(DocumentGuardTest, BringsBackWhatWasNotSavedAndUndoGoesBackToTheFile) {
  openNew(plan);
  edit();
  letTimePass();
  const MindMap left = editor->mindMap();
  startProgram();
  EXPECT_EQ(recoveredCount, 1);
  EXPECT_EQ(editor->mindMap(), left);
  EXPECT_TRUE(editor->isDirty());
  EXPECT_EQ(editor->undoCount(), 1);
  editor->undo();
  EXPECT_EQ(editor->mindMap(), decodeDocumentAt(path(plan)));
}

TEST_F(DocumentGuardTest, SavesWhatItBroughtBackAndSaysSoOnce) {
  openNew(plan);
  edit();
  letTimePass();
  const MindMap left = editor->mindMap();
  startProgram();
  letTimePass(DocumentSession::autoSaveDelay);
  EXPECT_EQ(decodeDocumentAt(path(plan)), left);
  letTimePass();
  startProgram();
  EXPECT_EQ(recoveredCount, 1);
  EXPECT_EQ(editor->mindMap(), left);
}

TEST_F(DocumentGuardTest, BringsBackAMapThatHasNoDocumentYet) {
  edit();
  letTimePass();
  const MindMap left = editor->mindMap();
  startProgram();
  EXPECT_EQ(recoveredCount, 1);
  EXPECT_EQ(editor->mindMap(), left);
  EXPECT_FALSE(editor->lastSavedFilePath().has_value());
}

TEST_F(DocumentGuardTest, BringsBackADocumentThatIsOpenedLater) {
  openNew(plan);
  edit();
  letTimePass();
  const MindMap left = editor->mindMap();
  settings.remove(quilmora::settings::lastSavedFilePath);
  settings.remove(quilmora::settings::lastSavedFileBookmark);
  startProgram();
  EXPECT_EQ(recoveredCount, 0);
  session->open(path(plan));
  EXPECT_EQ(recoveredCount, 1);
  EXPECT_EQ(editor->mindMap(), left);
}

TEST_F(DocumentGuardTest, ForgetsWhatWasSavedBeforeTheEnd) {
  openNew(plan);
  edit();
  letTimePass();
  session->saveDocument();
  letTimePass();
  startProgram();
  EXPECT_EQ(recoveredCount, 0);
  EXPECT_EQ(asideCount, 0);
}

TEST_F(DocumentGuardTest, RemembersAnUndoAfterASave) {
  openNew(plan);
  edit();
  session->saveDocument();
  letTimePass();
  editor->undo();
  letTimePass();
  const MindMap left = editor->mindMap();
  startProgram();
  EXPECT_EQ(recoveredCount, 1);
  EXPECT_EQ(editor->mindMap(), left);
}

TEST_F(DocumentGuardTest, LeavesADocumentAloneThatSomebodyElseChanged) {
  openNew(plan);
  edit();
  letTimePass();
  put(path(plan), encodeDocument(mapWithTitle(QStringLiteral("Theirs"))));
  startProgram();
  EXPECT_EQ(recoveredCount, 0);
  EXPECT_EQ(asideCount, 1);
  EXPECT_EQ(editor->mindMap().title, QStringLiteral("Theirs"));
}

TEST_F(DocumentGuardTest, KeepsWhatASaveReplaces) {
  openNew(plan);
  const MindMap before = editor->mindMap();
  edit();
  session->saveDocument();
  ASSERT_EQ(versionsOf(plan).size(), 1U);
  EXPECT_EQ(versionOf(plan, 0), before);
}

TEST_F(DocumentGuardTest, KeepsWhatAnImportIsSavedOver) {
  // Later than the file's own time.
  clock.set(SystemClock().now() + std::chrono::hours(1));
  openNew(plan);
  edit();
  session->saveDocument();
  const MindMap before = editor->mindMap();
  session->replaceWithImported(mapWithTitle(QStringLiteral("Imported")));
  edit();
  letTimePass(DocumentSession::autoSaveDelay);
  EXPECT_EQ(decodeDocumentAt(path(plan)).title, QStringLiteral("Imported"));
  EXPECT_EQ(versionOf(plan, 0), before);
}

TEST_F(DocumentGuardTest, KeepsWhatReloadReplaces) {
  openNew(plan);
  const MindMap before = editor->mindMap();
  edit();
  const MindMap edited = editor->mindMap();
  put(path(plan), encodeDocument(mapWithTitle(QStringLiteral("Theirs"))));
  session->autoSave();
  session->reload();
  ASSERT_EQ(editor->mindMap().title, QStringLiteral("Theirs"));
  const std::size_t count = versionsOf(plan).size();
  std::vector<MindMap> kept;
  for (std::size_t i = 0; i < count; ++i) kept.push_back(versionOf(plan, i));
  EXPECT_NE(std::ranges::find(kept, before), kept.end());
  EXPECT_NE(std::ranges::find(kept, edited), kept.end());
}

TEST_F(DocumentGuardTest, KeepsEachContentOnceHoweverOftenOneChoosesBetweenTwo) {
  const QByteArray theirs = encodeDocument(mapWithTitle(QStringLiteral("Theirs")));
  openNew(plan);
  const QByteArray first = content(path(plan));
  for (const QByteArray& foreign : {theirs, first, theirs, first}) {
    edit();
    put(path(plan), foreign);
    session->autoSave();
    session->keepMine();
    ASSERT_FALSE(editor->isDirty());
    edit();
    put(path(plan), theirs);
    session->autoSave();
    session->reload();
    ASSERT_EQ(editor->mindMap().title, QStringLiteral("Theirs"));
  }
  std::vector<MindMap> kept;
  for (std::size_t i = 0; i < versionsOf(plan).size(); ++i) kept.push_back(versionOf(plan, i));
  ASSERT_GE(kept.size(), 6U);
  for (std::size_t i = 0; i < kept.size(); ++i)
    for (std::size_t j = 0; j < i; ++j) EXPECT_NE(kept[i], kept[j]) << i << " and " << j;
}

TEST_F(DocumentGuardTest, KeepsADocumentThatSaveAsGoesOver) {
  put(path(QStringLiteral("other.mindmap")), encodeDocument(mapWithTitle(QStringLiteral("Other"))));
  panels.savePaths.append(path(QStringLiteral("other.mindmap")));
  session->saveDocumentAs();
  keeping->versions().settle();
  EXPECT_EQ(versionOf(QStringLiteral("other.mindmap"), 0).title, QStringLiteral("Other"));
}

TEST_F(DocumentGuardTest, AutoSavesOfAMinuteAreOneVersion) {
  // The file's own time says since when it holds what is opened.
  clock.set(SystemClock().now());
  openNew(plan);
  for (int round = 0; round < 8; ++round) {
    edit();
    clock.advance(std::chrono::seconds(10));
    letTimePass(DocumentSession::autoSaveDelay);
  }
  // What was opened, and what was there a minute later.
  EXPECT_EQ(versionsOf(plan).size(), 2U);
}

}  // namespace
}  // namespace quilmora
