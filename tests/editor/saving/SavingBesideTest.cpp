#include <atomic>
#include <semaphore>

#include <QThreadPool>
#include <QtTest/QTest>

#include "editor/SavingFixture.h"

namespace quilmora {
namespace {

using namespace std::chrono_literals;

// A disk that holds back each write until it is released, and counts writes.
class GatedWriter final : public FileWriter {
 public:
  Outcome write(const QString& path, const QByteArray& data) override {
    ++begun;
    gate.acquire();
    if (refuses) return refusedWrite(path, QStringLiteral("The disk is full."));
    return m_disk.write(path, data);
  }
  void letGo(int count = 1) { gate.release(count); }

  std::atomic<int> begun = 0;
  std::atomic<bool> refuses = false;
  std::counting_semaphore<> gate{0};

 private:
  DiskFileWriter m_disk;
};

class SavingBeside : public SavingFixture {
 protected:
  SavingBeside() {
    pool.setMaxThreadCount(1);
    session.reset();
    const EditorServices services{clock, settings, bookmarks, log};
    editor = std::make_unique<MindMapViewModel>(MindMap::blankMap(clock), services);
    session = std::make_unique<DocumentSession>(
        *editor, DocumentSession::Services{services, gated, panels, scheduler, notifications, *recentFiles,
                                           defaultFolder(), nullptr, &pool});
    QObject::connect(session.get(), &DocumentSession::errorRaised,
                     [this](const QString& message) { errors.append(message); });
    QObject::connect(session.get(), &DocumentSession::fileWritten,
                     [this](const QString& file, const MindMap&, const MindMap& map) {
                       written.append({file, map.nodes.size()});
                     });
  }
  ~SavingBeside() override {
    gated.letGo(100);
    session.reset();
  }
  QString openPlan() {
    const QString file = path(QStringLiteral("Plan.mindmap"));
    put(file, encodeDocument(mapWithTitle(QStringLiteral("Plan"))));
    session->open(file);
    return file;
  }
  bool begins(int count) {
    return QTest::qWaitFor([&] { return gated.begun == count; }, 10'000);
  }
  bool isDone() {
    return QTest::qWaitFor([&] { return !session->isSaving(); }, 10'000);
  }

  QThreadPool pool;
  GatedWriter gated;
  QList<std::pair<QString, std::size_t>> written;
};

TEST_F(SavingBeside, AutoSaveLeavesTheHandFreeAndTellsWhenItIsDone) {
  const QString file = openPlan();
  const qsizetype linesBefore = log.lines().size();
  edit();
  scheduler.advance(5s);
  ASSERT_TRUE(begins(1));
  EXPECT_TRUE(session->isSaving());
  EXPECT_TRUE(editor->isDirty());
  EXPECT_EQ(log.lines().size(), linesBefore);
  EXPECT_EQ(decodeDocumentAt(file).nodes.size(), 1u);

  gated.letGo();
  ASSERT_TRUE(isDone());
  EXPECT_FALSE(editor->isDirty());
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
  EXPECT_EQ(log.lines().mid(linesBefore),
            QStringList({QStringLiteral("Quilmora: saved security-scoped bookmark for ") + file,
                         QStringLiteral("Quilmora: auto-saved to ") + file}));
  EXPECT_EQ(written, (QList<std::pair<QString, std::size_t>>{{file, 2}}));
}

TEST_F(SavingBeside, AnEditInBetweenKeepsTheMapDirtyAndIsWrittenNext) {
  const QString file = openPlan();
  edit();
  scheduler.advance(5s);
  ASSERT_TRUE(begins(1));
  edit();
  gated.letGo();
  ASSERT_TRUE(isDone());
  EXPECT_EQ(decodeDocumentAt(file).nodes.size(), 2u);
  EXPECT_TRUE(editor->isDirty());
  gated.letGo();
  scheduler.advance(5s);
  ASSERT_TRUE(isDone());
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
  EXPECT_FALSE(editor->isDirty());
}

TEST_F(SavingBeside, AnEditThatIsTakenBackInBetweenIsNone) {
  openPlan();
  edit();
  session->saveDocument();
  ASSERT_TRUE(begins(1));
  edit();
  editor->undo();
  gated.letGo();
  ASSERT_TRUE(isDone());
  EXPECT_FALSE(editor->isDirty());
}

TEST_F(SavingBeside, SavesNeverOvertakeEachOtherAndManyWishesAreOneSave) {
  const QString file = openPlan();
  edit();
  scheduler.advance(5s);
  ASSERT_TRUE(begins(1));
  edit();
  session->saveDocument();
  session->saveDocument();
  edit();
  session->saveDocument();
  EXPECT_EQ(gated.begun, 1);
  gated.letGo(10);
  ASSERT_TRUE(isDone());
  EXPECT_EQ(gated.begun, 2);
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
  EXPECT_FALSE(editor->isDirty());
  EXPECT_EQ(written, (QList<std::pair<QString, std::size_t>>{{file, 2}, {file, 4}}));
}

TEST_F(SavingBeside, AsWaitsForTheSaveUnderWay) {
  const QString file = openPlan();
  const QString other = path(QStringLiteral("Other.mindmap"));
  edit();
  scheduler.advance(5s);
  ASSERT_TRUE(begins(1));
  panels.savePaths = {other};
  session->saveDocumentAs();
  edit();
  EXPECT_EQ(editor->lastSavedFilePath(), file);
  gated.letGo(2);
  ASSERT_TRUE(isDone());
  EXPECT_EQ(editor->lastSavedFilePath(), other);
  EXPECT_EQ(decodeDocumentAt(file).nodes.size(), 2u);
  EXPECT_EQ(decodeDocumentAt(other).nodes.size(), 3u);
}

TEST_F(SavingBeside, AutoSaveThatFallsIntoAnotherSaveFollowsIfThatFails) {
  const QString file = openPlan();
  edit();
  panels.savePaths = {path(QStringLiteral("gone/Other.mindmap"))};
  session->saveDocumentAs();
  ASSERT_TRUE(begins(1));
  scheduler.advance(5s);
  EXPECT_EQ(gated.begun, 1);
  gated.letGo(2);
  ASSERT_TRUE(isDone());
  EXPECT_EQ(errors.size(), 1);
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
}

TEST_F(SavingBeside, AFailedSaveAsksWhenItHasFailed) {
  openPlan();
  edit();
  gated.refuses = true;
  session->saveDocument();
  ASSERT_TRUE(begins(1));
  EXPECT_EQ(panels.saveRequests.size(), 0);
  gated.letGo();
  ASSERT_TRUE(isDone());
  ASSERT_EQ(panels.saveRequests.size(), 1);
  EXPECT_EQ(panels.saveRequests.at(0).reason, QStringLiteral("“Plan.mindmap” could not be written. The disk is full."));
  EXPECT_TRUE(editor->isDirty());
}

TEST_F(SavingBeside, QuittingWaitsForTheSaveUnderWayAndWritesWhatCameIn) {
  const QString file = openPlan();
  edit();
  scheduler.advance(5s);
  ASSERT_TRUE(begins(1));
  edit();
  gated.letGo(2);
  notifications.post(Notification::autoSaveBeforeQuit);
  EXPECT_FALSE(session->isSaving());
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
  EXPECT_FALSE(editor->isDirty());
}

TEST_F(SavingBeside, QuittingAsksNobodyAndRescues) {
  openPlan();
  edit();
  gated.refuses = true;
  session->saveDocument();
  ASSERT_TRUE(begins(1));
  gated.letGo(3);
  notifications.post(Notification::autoSaveBeforeQuit);
  EXPECT_EQ(panels.saveRequests.size(), 0);
  EXPECT_EQ(gated.begun, 3) << "the save, the one of quitting and the rescue copy";
}

TEST_F(SavingBeside, AnotherDocumentOpensOnceTheSaveIsDone) {
  const QString file = openPlan();
  edit();
  const QByteArray edited = encodeDocument(editor->mindMap());
  const QString second = path(QStringLiteral("Second.mindmap"));
  put(second, encodeDocument(mapWithTitle(QStringLiteral("Second"))));
  session->saveDocument();
  ASSERT_TRUE(begins(1));
  gated.letGo(2);
  session->open(second);
  EXPECT_EQ(content(file), edited);
  EXPECT_EQ(editor->mindMap().title, QStringLiteral("Second"));
  EXPECT_EQ(editor->lastSavedFilePath(), second);
  QTest::qWait(1);
  EXPECT_EQ(editor->lastSavedFilePath(), second);
  EXPECT_EQ(gated.begun, 1);
}

TEST_F(SavingBeside, TheSessionEndsOnceTheSaveIsDone) {
  const QString file = openPlan();
  edit();
  session->saveDocument();
  ASSERT_TRUE(begins(1));
  const QByteArray edited = encodeDocument(editor->mindMap());
  gated.letGo();
  session.reset();
  EXPECT_EQ(content(file), edited);
}

TEST_F(SavingBeside, TellsOfTheMapThatAnImportReplaces) {
  openPlan();
  QString before;
  QObject::connect(session.get(), &DocumentSession::mapWillBeReplaced, [&](const MindMap& map) { before = map.title; });
  session->replaceWithImported(mapWithTitle(QStringLiteral("Imported")));
  EXPECT_EQ(before, QStringLiteral("Plan"));
}

}  // namespace
}  // namespace quilmora
