#include <new>

#include "editor/SavingFixture.h"
#include "platform/OpeningMark.h"

namespace quilmora {
namespace {

using namespace std::chrono_literals;

// A disk that can be made to refuse, or to need more memory than there is.
class MoodyWriter final : public FileWriter {
 public:
  Outcome write(const QString& path, const QByteArray& data) override {
    ++writes;
    if (lacksMemory) throw std::bad_alloc();
    return refusal.isEmpty() ? m_disk.write(path, data) : Outcome::failed(refusal);
  }

  QString refusal;
  bool lacksMemory = false;
  int writes = 0;

 private:
  DiskFileWriter m_disk;
};

class SavingHostile : public SavingFixture {
 protected:
  SavingHostile() { restart(); }

  // A start of the program whose sessions use the moody writer and mark what they open.
  void restart() {
    mark.startAnew();
    session.reset();
    const EditorServices services{clock, settings, bookmarks, log};
    editor = std::make_unique<MindMapViewModel>(MindMap::blankMap(clock), services);
    session = std::make_unique<DocumentSession>(
        *editor, DocumentSession::Services{services, moody, panels, scheduler, notifications, *recentFiles,
                                           defaultFolder(), &mark});
    QObject::connect(session.get(), &DocumentSession::errorRaised,
                     [this](const QString& message) { errors.append(message); });
    QObject::connect(session.get(), &DocumentSession::reopeningDoubted,
                     [this](const QString& doubtedPath) { doubted.append(doubtedPath); });
  }
  QString map(const char* name) {
    const QString file = path(QLatin1String(name));
    put(file, encodeDocument(mapWithTitle(QLatin1String(name))));
    return file;
  }
  QString title() const { return editor->mindMap().title; }

  MoodyWriter moody;
  MemoryOpeningMark mark;
  QStringList doubted;
};

TEST_F(SavingHostile, AnAutoSaveThatFailedIsTriedAgainLaterEachTime) {
  const QString file = map("Plan.mindmap");
  session->open(file);
  moody.refusal = QStringLiteral("The disk is full.");
  edit();
  scheduler.advance(5s);
  EXPECT_EQ(moody.writes, 1);
  EXPECT_EQ(session->autoSaveProblem(), moody.refusal);
  const qsizetype lines = log.lines().size();
  for (const auto& [wait, writes] :
       {std::pair{9999ms, 1}, {1ms, 2}, {19999ms, 2}, {1ms, 3}, {40s, 4}, {80s, 5}, {160s, 6}, {300s, 7}, {300s, 8}}) {
    scheduler.advance(wait);
    EXPECT_EQ(moody.writes, writes);
  }
  EXPECT_EQ(log.lines().size(), lines);
  EXPECT_TRUE(editor->isDirty());
  EXPECT_EQ(errors, QStringList());

  moody.refusal.clear();
  scheduler.advance(300s);
  EXPECT_FALSE(editor->isDirty());
  EXPECT_EQ(session->autoSaveProblem(), QString());
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
  EXPECT_EQ(log.lines().last(), QStringLiteral("Quilmora: auto-saved to ") + file);
  scheduler.advance(1h);
  EXPECT_EQ(moody.writes, 9);
}

TEST_F(SavingHostile, ASaveByHandEndsTheTriesAndTheirGrowth) {
  const QString file = map("Plan.mindmap");
  session->open(file);
  moody.refusal = QStringLiteral("The disk is full.");
  edit();
  scheduler.advance(15s);
  EXPECT_EQ(moody.writes, 2);
  moody.refusal.clear();
  session->saveDocument();
  EXPECT_EQ(session->autoSaveProblem(), QString());
  scheduler.advance(1h);
  EXPECT_EQ(moody.writes, 3);
  edit();
  scheduler.advance(5s);
  EXPECT_EQ(moody.writes, 4);
}

TEST_F(SavingHostile, MemoryThatDoesNotSufficeForSavingIsToldAndTheMapStays) {
  const QString file = map("Plan.mindmap");
  session->open(file);
  edit();
  moody.lacksMemory = true;
  panels.savePaths = {file};
  session->saveDocument();
  EXPECT_EQ(errors, QStringList{QStringLiteral("Failed to save document: There is not enough memory for it.")});
  scheduler.advance(5s);
  EXPECT_TRUE(editor->isDirty());
  EXPECT_EQ(editor->mindMap().nodes.size(), 2u);
  moody.lacksMemory = false;
  session->saveDocument();
  EXPECT_FALSE(editor->isDirty());
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
}

TEST_F(SavingHostile, ADocumentThatEndedTheProgramIsNotReopenedUnasked) {
  const QString file = map("Bomb.mindmap");
  session->open(file);
  EXPECT_EQ(mark.marked(), file);
  restart();
  session->reopenLastDocument();
  EXPECT_EQ(doubted, QStringList{file});
  EXPECT_EQ(title(), MindMap::blankMap(clock).title);
  EXPECT_EQ(editor->lastSavedFilePath(), std::nullopt);
  // Until the user says yes, every start asks.
  restart();
  session->reopenLastDocument();
  EXPECT_EQ(doubted.size(), 2);
  session->reopenAllTheSame();
  EXPECT_EQ(title(), QStringLiteral("Bomb.mindmap"));
  EXPECT_EQ(mark.marked(), file);
  session->documentWasShown();
  EXPECT_EQ(mark.marked(), std::nullopt);
  restart();
  session->reopenLastDocument();
  EXPECT_EQ(doubted.size(), 2);
  EXPECT_EQ(title(), QStringLiteral("Bomb.mindmap"));
}

TEST_F(SavingHostile, AnOrderlyEndAndARefusedDocumentLeaveNoMark) {
  session->open(map("Plan.mindmap"));
  notifications.post(Notification::autoSaveBeforeQuit);
  EXPECT_EQ(mark.marked(), std::nullopt);

  const QString damaged = path(QStringLiteral("Damaged.mindmap"));
  put(damaged, "{");
  session->open(damaged);
  EXPECT_EQ(errors.size(), 1);
  EXPECT_EQ(mark.marked(), std::nullopt);
}

TEST_F(SavingHostile, AnOrderlyEndWithoutAnAnswerAsksAgain) {
  session->open(map("Bomb.mindmap"));
  restart();
  session->reopenLastDocument();
  notifications.post(Notification::autoSaveBeforeQuit);
  restart();
  session->reopenLastDocument();
  EXPECT_EQ(doubted.size(), 2);
}

TEST_F(SavingHostile, TheMarkOfAnotherDocumentDoubtsNothing) {
  const QString good = map("Good.mindmap");
  session->open(good);
  session->documentWasShown();
  // This one crashed the program before it was in the settings.
  mark.set(path(QStringLiteral("Bomb.mindmap")));
  restart();
  session->reopenLastDocument();
  EXPECT_EQ(doubted, QStringList());
  EXPECT_EQ(title(), QStringLiteral("Good.mindmap"));
}

TEST_F(SavingHostile, ThousandsOfMissingFilesAreToldAtOnce) {
  QStringList paths;
  for (int number = 0; number < 3000; ++number) paths.append(path(QStringLiteral("%1.mindmap").arg(number)));
  session->openAll(paths);
  ASSERT_EQ(errors.size(), 1);
  EXPECT_EQ(errors[0],
            QStringLiteral("File not found: 0.mindmap\nFile not found: 1.mindmap\nFile not found: 2.mindmap\n"
                           "File not found: 3.mindmap\nFile not found: 4.mindmap\n… and 2995 more"));
  errors.clear();
  session->openAll({map("Good.mindmap"), paths[0]});
  EXPECT_EQ(errors, QStringList{QStringLiteral("File not found: 0.mindmap")});
  EXPECT_EQ(title(), QStringLiteral("Good.mindmap"));
}

}  // namespace
}  // namespace quilmora
