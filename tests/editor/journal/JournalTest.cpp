#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "editor/journal/Journal.h"
#include "editor/journal/JournalFolder.h"
#include "editor/journal/JournalWriter.h"
#include "model/MindMapDocument.h"
#include "platform/Log.h"
#include "support/Await.h"
#include "support/QtPrinters.h"
#include "support/SmallMap.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

const QString document = QStringLiteral("/home/somebody/plan.mindmap");

class JournalTest : public testing::Test {
 protected:
  JournalTest() { startProgram(); }

  void startProgram() {
    journal.reset();
    journal = std::make_unique<Journal>(scheduler, log, folder());
    journal->setSource([this] { return Journal::State{now, isKept, openText}; });
  }
  // The process ends without saving: waiting changes are lost.
  journal::Recovery startAgain(const QString& path = document) {
    startProgram();
    isKept = true;
    now = file;
    openText.reset();
    return journal->start(path, file);
  }
  void change(const QString& title, int index = 0) {
    now.nodes.update(static_cast<std::size_t>(index), [&](Node& node) { node.title = title; });
    isKept = false;
    journal->changed();
  }
  // Waits until everything handed over is on disk.
  void letTimePass(std::chrono::milliseconds time = Journal::delay) {
    scheduler.advance(time);
    ASSERT_TRUE(QTest::qWaitFor([this] { return journal->isAtRest(); }, 20'000));
  }

  QString folder() const { return m_state.filePath(QStringLiteral("state/journals")); }
  QString path(const QString& of = document) const { return journal::journalPath(folder(), of); }
  QStringList names() const { return QDir(folder()).entryList(QDir::Files | QDir::Hidden | QDir::System); }
  QStringList namesAside() const { return QDir(folder() + QStringLiteral("/aside")).entryList(QDir::Files); }
  static void put(const QString& path, const QByteArray& bytes) {
    QFile output(path);
    ASSERT_TRUE(output.open(QIODevice::WriteOnly));
    ASSERT_EQ(output.write(bytes), bytes.size());
  }

  ManualScheduler scheduler;
  MemoryLog log;
  MindMap file = mapOf({0, 1, 2});
  MindMap now = file;
  bool isKept = true;
  std::optional<OpenText> openText;
  std::unique_ptr<Journal> journal;

 private:
  QTemporaryDir m_state;
};

}  // namespace

TEST_F(JournalTest, LeavesNothingWhereNothingChanged) {
  EXPECT_FALSE(journal->start(document, file).foundAnything());
  letTimePass();
  EXPECT_EQ(names(), QStringList());
}

TEST_F(JournalTest, BringsTheChangesBack) {
  journal->start(document, file);
  change(QStringLiteral("Bread"));
  letTimePass();
  change(QStringLiteral("Butter"), 1);
  letTimePass();
  const MindMap left = now;
  const journal::Recovery recovery = startAgain();
  ASSERT_TRUE(recovery.map.has_value());
  EXPECT_EQ(*recovery.map, left);
  EXPECT_FALSE(recovery.isSetAside);
}

TEST_F(JournalTest, RecordsAChangeWithinASecond) {
  journal->start(document, file);
  letTimePass(std::chrono::milliseconds(0));
  change(QStringLiteral("Bread"));
  scheduler.advance(std::chrono::milliseconds(200));
  change(QStringLiteral("Bread and"));
  // Further changes do not postpone it.
  letTimePass(std::chrono::milliseconds(100));
  const journal::Recovery recovery = startAgain();
  ASSERT_TRUE(recovery.map.has_value());
  EXPECT_EQ(recovery.map->nodes[0].title, QStringLiteral("Bread and"));
}

TEST_F(JournalTest, IsReadableByItsOwnerAlone) {
  journal->start(document, file);
  change(QStringLiteral("Bread"));
  letTimePass();
  struct stat status {};
  ASSERT_EQ(::stat(QFile::encodeName(path()).constData(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0600U);
}

TEST_F(JournalTest, GoesWhenTheDocumentIsSaved) {
  journal->start(document, file);
  change(QStringLiteral("Bread"));
  letTimePass();
  ASSERT_EQ(names().size(), 1);
  journal->savingBegins(now);
  journal->saved(document, now);
  isKept = true;
  letTimePass();
  EXPECT_EQ(names(), QStringList());
}

TEST_F(JournalTest, KeepsWhatCameWhileTheDocumentWasWritten) {
  journal->start(document, file);
  change(QStringLiteral("Bread"));
  letTimePass();
  const MindMap saved = now;
  journal->savingBegins(saved);
  change(QStringLiteral("Butter"), 1);
  letTimePass();
  journal->saved(document, saved);
  letTimePass();
  file = saved;
  const MindMap left = now;
  const journal::Recovery recovery = startAgain();
  ASSERT_TRUE(recovery.map.has_value());
  EXPECT_EQ(*recovery.map, left);
}

TEST_F(JournalTest, OfAProcessThatEndedBetweenTheSaveAndItsEndTellsNothing) {
  journal->start(document, file);
  change(QStringLiteral("Bread"));
  letTimePass();
  journal->savingBegins(now);
  letTimePass();
  file = now;
  EXPECT_FALSE(startAgain().foundAnything());
  EXPECT_EQ(names(), QStringList());
}

TEST_F(JournalTest, FollowsTheDocumentToAnotherPlace) {
  journal->start({}, file);
  change(QStringLiteral("Bread"));
  letTimePass();
  EXPECT_TRUE(QFile::exists(path({})));
  const MindMap saved = now;
  journal->saved(document, saved);
  change(QStringLiteral("Butter"), 1);
  letTimePass();
  EXPECT_FALSE(QFile::exists(path({})));
  file = saved;
  EXPECT_TRUE(startAgain().map.has_value());
}

TEST_F(JournalTest, GoesWhenAnotherDocumentIsOpened) {
  journal->start(document, file);
  change(QStringLiteral("Bread"));
  letTimePass();
  journal->start(QStringLiteral("/home/somebody/other.mindmap"), mapOf({7}));
  isKept = true;
  now = mapOf({7});
  letTimePass();
  EXPECT_EQ(names(), QStringList());
}

TEST_F(JournalTest, KnowsAnUndoneChange) {
  journal->start(document, file);
  change(QStringLiteral("Bread"));
  const MindMap saved = now;
  journal->saved(document, saved);
  isKept = true;
  letTimePass();
  now = file;
  isKept = false;
  journal->changed();
  letTimePass();
  const MindMap left = now;
  file = saved;
  const journal::Recovery recovery = startAgain();
  ASSERT_TRUE(recovery.map.has_value());
  EXPECT_EQ(*recovery.map, left);
}

TEST_F(JournalTest, HoldsTheTextOfAnOpenField) {
  now.regions.append({edgeId(1), QStringLiteral("Home"), QStringLiteral("#FF0000"), QRectF(0, 0, 10, 10)});
  file = now;
  journal->start(document, file);
  openText = OpenText{OpenText::Field::topicTitle, topicId(1), QStringLiteral("Half a wo")};
  journal->changed();
  letTimePass();
  journal::Recovery recovery = startAgain();
  ASSERT_TRUE(recovery.map.has_value());
  EXPECT_EQ(recovery.map->nodes[1].title, QStringLiteral("Half a wo"));

  for (const auto field : {OpenText::Field::topicNotes, OpenText::Field::topicUrl}) {
    openText = OpenText{field, topicId(1), QStringLiteral("Half a wo")};
    journal->changed();
    letTimePass();
    recovery = startAgain();
    ASSERT_TRUE(recovery.map.has_value());
    const Node& node = recovery.map->nodes[1];
    EXPECT_EQ(field == OpenText::Field::topicNotes ? node.notes : node.url.value(), QStringLiteral("Half a wo"));
    EXPECT_EQ(node.title, file.nodes[1].title);
  }

  openText = OpenText{OpenText::Field::regionLabel, edgeId(1), QStringLiteral("Hou")};
  journal->changed();
  letTimePass();
  recovery = startAgain();
  ASSERT_TRUE(recovery.map.has_value());
  EXPECT_EQ(recovery.map->regions[0].label, QStringLiteral("Hou"));
}

TEST_F(JournalTest, ForgetsTheTextOfAFieldThatWasLeftWithoutKeepingIt) {
  journal->start(document, file);
  openText = OpenText{OpenText::Field::topicTitle, topicId(1), QStringLiteral("Half a wo")};
  journal->changed();
  letTimePass();
  openText.reset();
  journal->changed();
  letTimePass();
  EXPECT_EQ(names(), QStringList());
}

TEST_F(JournalTest, StaysUntilAnotherTakesItsPlace) {
  journal->start(document, file);
  change(QStringLiteral("Bread"));
  letTimePass();
  const MindMap left = now;
  // The process ends again and again before anything is recorded.
  for (int start = 0; start < 3; ++start) EXPECT_TRUE(startAgain().map.has_value());
  now = left;
  isKept = false;
  journal->changed();
  letTimePass();
  const journal::Recovery recovery = startAgain();
  ASSERT_TRUE(recovery.map.has_value());
  EXPECT_EQ(*recovery.map, left);
}

TEST_F(JournalTest, OfAnotherVersionOfTheDocumentIsSetAside) {
  journal->start(document, file);
  change(QStringLiteral("Bread"));
  letTimePass();
  file.nodes.append(topic(9));
  const journal::Recovery recovery = startAgain();
  EXPECT_FALSE(recovery.map.has_value());
  EXPECT_TRUE(recovery.isSetAside);
  EXPECT_EQ(names(), QStringList());
  EXPECT_EQ(namesAside().size(), 1);
}

TEST_F(JournalTest, OfAnotherDocumentIsSetAside) {
  journal->start(document, file);
  change(QStringLiteral("Bread"));
  letTimePass();
  journal.reset();
  const QString other = QStringLiteral("/home/somebody/other.mindmap");
  ASSERT_TRUE(QFile::rename(path(), path(other)));
  const journal::Recovery recovery = startAgain(other);
  EXPECT_FALSE(recovery.map.has_value());
  EXPECT_TRUE(recovery.isSetAside);
}

TEST_F(JournalTest, WhateverElseHasItsNameIsSetAside) {
  ASSERT_TRUE(QDir().mkpath(folder()));
  put(path(), "no journal");
  EXPECT_TRUE(startAgain().isSetAside);
  ASSERT_TRUE(QDir().mkpath(path()));
  EXPECT_TRUE(startAgain().isSetAside);
  ASSERT_EQ(::mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
  EXPECT_TRUE(startAgain().isSetAside);
  ASSERT_TRUE(QFile::link(QStringLiteral("/dev/zero"), path()));
  EXPECT_TRUE(startAgain().isSetAside);
  change(QStringLiteral("Bread"));
  letTimePass();
  EXPECT_TRUE(startAgain().map.has_value());
}

TEST_F(JournalTest, OnlyTheLastFewStayAside) {
  ASSERT_TRUE(QDir().mkpath(folder()));
  for (int count = 0; count < 12; ++count) {
    put(path(), "no journal");
    EXPECT_TRUE(startAgain().isSetAside);
  }
  EXPECT_EQ(namesAside().size(), 5);
}

TEST_F(JournalTest, OfALivingProcessIsLeftAlone) {
  journal->start(document, file);
  change(QStringLiteral("Bread"));
  letTimePass();
  ASSERT_EQ(names().size(), 1);
  const QByteArray bytes = QFile::encodeName(path());
  const int held = ::open(bytes.constData(), O_RDONLY | O_CLOEXEC);
  journal.reset();
  ASSERT_EQ(::flock(held, LOCK_EX | LOCK_NB), 0);
  EXPECT_FALSE(startAgain().foundAnything());
  change(QStringLiteral("Butter"));
  letTimePass();
  EXPECT_NE(journal->problem(), QString());
  ::close(held);
  EXPECT_EQ(startAgain().map.value_or(MindMap()).nodes[0].title, QStringLiteral("Bread"));
}

TEST_F(JournalTest, TriesAgainWhereTheDiskRefused) {
  const QString blocked = QFileInfo(folder()).path();
  ASSERT_TRUE(QDir().mkpath(QFileInfo(blocked).path()));
  put(blocked, "a file where the folder should be");
  journal->start(document, file);
  change(QStringLiteral("Bread"));
  letTimePass();
  EXPECT_NE(journal->problem(), QString());
  EXPECT_EQ(log.lines().filter(QStringLiteral("journal FAILED")).size(), 1);
  ASSERT_TRUE(QFile::remove(blocked));
  letTimePass(Journal::retryDelay);
  EXPECT_EQ(journal->problem(), QString());
  EXPECT_TRUE(startAgain().map.has_value());
}

TEST_F(JournalTest, IsWholeOnceItSettled) {
  journal->start(document, file);
  change(QStringLiteral("Bread"));
  journal->settle();
  EXPECT_TRUE(startAgain().map.has_value());
}

TEST_F(JournalTest, StaysBelowTheSizeOfTheMap) {
  file = mapOf({});
  for (int i = 0; i < 3000; ++i) file.nodes.append(topic(i));
  now = file;
  journal::JournalWriter writer(folder());
  writer.start(document, file, false);
  const auto documentSize = static_cast<std::uint64_t>(encodeDocument(file).size());
  for (int round = 0; round < 60; ++round) {
    now.nodes.updateAll([&](Node& node) { node.position += QPointF(1, round); });
    ASSERT_EQ(writer.record(now), QString());
    ASSERT_LT(writer.size(), documentSize);
  }
  EXPECT_EQ(journal::recover(folder(), document, file).foundAnything(), false);  // still held
}
