#include <sys/stat.h>

#include "editor/DocumentFileName.h"
#include "editor/SavingFixture.h"
#include "platform/SettingsKeys.h"
#include "support/TemporaryDisk.h"

namespace quilmora {
namespace {

using namespace std::chrono_literals;

class AutoSave : public SavingFixture {
 protected:
  // Opens a file of its own, so that auto-save has a place.
  QString openFile(const QString& file) {
    put(file, encodeDocument(mapWithTitle(QStringLiteral("Plan"))));
    session->open(file);
    scheduler.advance(1s);
    return file;
  }
};

TEST_F(AutoSave, PutsANewMapIntoTheDefaultFolderAfterFiveSeconds) {
  setTitle(QStringLiteral("Trip"));
  edit();
  scheduler.advance(4999ms);
  EXPECT_FALSE(QFileInfo::exists(defaultFolder()));
  EXPECT_TRUE(editor->isDirty());
  scheduler.advance(1ms);

  const QString file = inDefaultFolder(QStringLiteral("Trip.mindmap"));
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
  EXPECT_FALSE(editor->isDirty());
  EXPECT_EQ(editor->lastSavedFilePath(), file);
  EXPECT_FALSE(editor->hasExplicitSavePath());
  EXPECT_EQ(settings.text(settings::lastSavedFilePath), file);
  EXPECT_EQ(recentFiles->urls(), QStringList());
  EXPECT_EQ(log.lines(), QStringList{QStringLiteral("Quilmora: saved security-scoped bookmark for ") + file});

  session->saveDocument();
  EXPECT_EQ(panels.saveRequests.size(), 1);
}

TEST_F(AutoSave, ComesFiveSecondsAfterTheFirstChange) {
  setTitle(QStringLiteral("Trip"));
  edit();
  scheduler.advance(3s);
  edit();
  scheduler.advance(2s);
  const QString file = inDefaultFolder(QStringLiteral("Trip.mindmap"));
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
  EXPECT_EQ(scheduler.waitingCount(), 0u);

  edit();
  EXPECT_EQ(scheduler.waitingCount(), 1u);
  scheduler.advance(5s);
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
  EXPECT_EQ(log.lines().last(), QStringLiteral("Quilmora: auto-saved to ") + file);
}

TEST_F(AutoSave, StartsAnewWhenAChangeFollowsASave) {
  const QString file = openFile(path(QStringLiteral("Plan.mindmap")));
  edit();
  scheduler.advance(3s);
  session->saveDocument();
  edit();
  scheduler.advance(4999ms);
  EXPECT_NE(content(file), encodeDocument(editor->mindMap()));
  scheduler.advance(1ms);
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
}

TEST_F(AutoSave, WritesNothingWithoutAChange) {
  const QString file = openFile(path(QStringLiteral("Plan.mindmap")));
  edit();
  session->saveDocument();
  put(file, QByteArrayLiteral("written by another program"));
  scheduler.advance(1h);
  session->autoSave();
  notifications.post(Notification::autoSaveBeforeQuit);
  EXPECT_EQ(content(file), QByteArrayLiteral("written by another program"));
}

TEST_F(AutoSave, RunsAtOnceBeforeQuitting) {
  const QString file = openFile(path(QStringLiteral("Plan.mindmap")));
  edit();
  notifications.post(Notification::autoSaveBeforeQuit);
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
  EXPECT_FALSE(editor->isDirty());

  session.reset();
  editor->createFreeNode(0, 0);
  notifications.post(Notification::autoSaveBeforeQuit);
  EXPECT_TRUE(editor->isDirty());
}

TEST_F(AutoSave, EndsWithTheSession) {
  edit();
  EXPECT_EQ(scheduler.waitingCount(), 1u);
  session.reset();
  EXPECT_EQ(scheduler.waitingCount(), 0u);
}

TEST_F(AutoSave, FailureGoesToTheLogOnceAndAQuitWritesAtOnce) {
  const QString file = openFile(path(QStringLiteral("folder/Plan.mindmap")));
  ASSERT_TRUE(QDir(path(QStringLiteral("folder"))).removeRecursively());
  edit();
  scheduler.advance(5s);

  const QString line = QStringLiteral(
                           "Quilmora: auto-save FAILED for %1: “Plan.mindmap” could not be written. "
                           "The folder “%2” does not exist.")
                           .arg(file, path(QStringLiteral("folder")));
  EXPECT_EQ(log.lines().last(), line);
  EXPECT_TRUE(editor->isDirty());
  EXPECT_EQ(errors, QStringList());
  EXPECT_FALSE(QFileInfo::exists(path(QStringLiteral("folder"))));
  const qsizetype lineCount = log.lines().size();
  edit();
  scheduler.advance(1h);
  EXPECT_EQ(log.lines().size(), lineCount);

  ASSERT_TRUE(QDir(home()).mkdir(QStringLiteral("folder")));
  notifications.post(Notification::autoSaveBeforeQuit);
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
  EXPECT_FALSE(editor->isDirty());
}

TEST_F(AutoSave, KeepsTheOldFileOnAFullDisk) {
  TemporaryDisk disk;
  if (!disk.isMounted()) GTEST_SKIP() << "mounting a small disk needs root";
  const QString file = openFile(disk.path(QStringLiteral("Plan.mindmap")));
  const QByteArray before = content(file);
  edit();
  disk.fill();
  scheduler.advance(5s);
  EXPECT_EQ(log.lines().last(),
            QStringLiteral("Quilmora: auto-save FAILED for %1: “Plan.mindmap” could not be written. "
                           "The disk is full.")
                .arg(file));
  EXPECT_TRUE(editor->isDirty());
  EXPECT_EQ(content(file), before);

  ASSERT_TRUE(QFile::remove(disk.path(QStringLiteral("filler"))));
  session->saveDocument();
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
  EXPECT_EQ(panels.saveRequests.size(), 0);
}

TEST_F(AutoSave, KeepsTheOldFileInAFolderThatCanOnlyBeRead) {
  TemporaryDisk disk;
  if (!disk.isMounted()) GTEST_SKIP() << "mounting a small disk needs root";
  const QString file = openFile(disk.path(QStringLiteral("Plan.mindmap")));
  const QByteArray before = content(file);
  ASSERT_TRUE(disk.makeReadOnly());
  edit();
  scheduler.advance(5s);
  EXPECT_EQ(log.lines().last(),
            QStringLiteral("Quilmora: auto-save FAILED for %1: “Plan.mindmap” could not be written. "
                           "The folder “%2” is on a disk that can only be read.")
                .arg(file, QFileInfo(file).path()));
  EXPECT_EQ(content(file), before);
  panels.savePaths = {path(QStringLiteral("Elsewhere.mindmap"))};
  session->saveDocument();
  EXPECT_EQ(content(path(QStringLiteral("Elsewhere.mindmap"))), encodeDocument(editor->mindMap()));
}

TEST_F(AutoSave, CountsOnWhereTheNameIsTaken) {
  put(inDefaultFolder(QStringLiteral("Plan.mindmap")), QByteArrayLiteral("a"));
  put(inDefaultFolder(QStringLiteral("Plan 1.mindmap")), QByteArrayLiteral("b"));
  setTitle(QStringLiteral("Plan"));
  edit();
  scheduler.advance(5s);
  EXPECT_EQ(editor->lastSavedFilePath(), inDefaultFolder(QStringLiteral("Plan 2.mindmap")));
  EXPECT_EQ(content(inDefaultFolder(QStringLiteral("Plan.mindmap"))), QByteArrayLiteral("a"));
  EXPECT_EQ(content(inDefaultFolder(QStringLiteral("Plan 1.mindmap"))), QByteArrayLiteral("b"));
  EXPECT_EQ(content(inDefaultFolder(QStringLiteral("Plan 2.mindmap"))), encodeDocument(editor->mindMap()));
}

TEST_F(AutoSave, CallsAMapWithoutTitleUntitled) {
  setTitle(QString());
  edit();
  scheduler.advance(5s);
  EXPECT_EQ(namesIn(defaultFolder()), QStringList{QStringLiteral("Untitled.mindmap")});
}

TEST_F(AutoSave, StaysSilentWhenTheDefaultFolderCannotBeMade) {
  put(path(QStringLiteral("Documents")), QByteArrayLiteral("a file in the way"));
  edit();
  scheduler.advance(5s);
  EXPECT_TRUE(editor->isDirty());
  EXPECT_EQ(editor->lastSavedFilePath(), std::nullopt);
  EXPECT_EQ(log.lines(), QStringList());
  EXPECT_EQ(errors, QStringList());
}

TEST_F(AutoSave, KeepsAnyTitleWithinTheDefaultFolder) {
  const struct {
    QString title;
    QString name;
  } cases[] = {
      {QStringLiteral("../../escaped"), QStringLiteral("..-..-escaped.mindmap")},
      {QStringLiteral("/etc/plan"), QStringLiteral("-etc-plan.mindmap")},
      {QStringLiteral("."), QStringLiteral("..mindmap")},
      {QStringLiteral(".."), QStringLiteral("...mindmap")},
      {QStringLiteral("a") + QChar(u'\0') + QStringLiteral("b"), QStringLiteral("a-b.mindmap")},
      {QStringLiteral("first\nsecond\u2028third"), QStringLiteral("first second third.mindmap")},
      {QStringLiteral("1. Plan: 50 % <ö> 🌍"), QStringLiteral("1. Plan: 50 % <ö> 🌍.mindmap")},
  };
  for (const auto& [title, name] : cases) {
    start();
    setTitle(title);
    edit();
    scheduler.advance(5s);
    EXPECT_EQ(editor->lastSavedFilePath(), inDefaultFolder(name));
    EXPECT_EQ(decodeDocumentAt(inDefaultFolder(name)).title, title);
  }
  EXPECT_EQ(namesIn(defaultFolder()).size(), 7);
  EXPECT_EQ(namesIn(home()), QStringList{QStringLiteral("Documents")});
}

TEST_F(AutoSave, CutsATitleThatIsTooLongForAFileName) {
  for (int round = 0; round < 3; ++round) {
    start();
    setTitle(QString(1000, u'a'));
    edit();
    scheduler.advance(5s);
  }
  EXPECT_EQ(namesIn(defaultFolder()), QStringList({QString(245, u'a') + QStringLiteral(" 1.mindmap"),
                                                   QString(245, u'a') + QStringLiteral(" 2.mindmap"),
                                                   QString(247, u'a') + QStringLiteral(".mindmap")}));
}

TEST(DocumentFileName, CutsBetweenCharacters) {
  EXPECT_EQ(documentFileName(QStringLiteral("a") + QString(200, u'ö')),
            QStringLiteral("a") + QString(123, u'ö') + QStringLiteral(".mindmap"));
  const QString family = QStringLiteral("👨‍👩‍👧‍👦");
  ASSERT_EQ(family.toUtf8().size(), 25);
  const QString name = documentFileName(family.repeated(20));
  EXPECT_EQ(name, family.repeated(9) + QStringLiteral(".mindmap"));
  EXPECT_EQ(documentFileName(QString(247, u'a')).size(), 255);
  EXPECT_EQ(documentFileName(QString(247, u'a')), QString(247, u'a') + QStringLiteral(".mindmap"));
  EXPECT_EQ(documentFileName(QStringLiteral("Plan"), 12), QStringLiteral("Plan 12.mindmap"));
}

TEST(ExportFileName, IsTheTitleWithTheExtension) {
  EXPECT_EQ(exportFileName(QStringLiteral("Plan v1.2"), QStringLiteral("md")), QStringLiteral("Plan v1.2.md"));
  EXPECT_EQ(exportFileName(QString(), QStringLiteral("md")), QStringLiteral(".md"));
  EXPECT_EQ(exportFileName(QStringLiteral("a/b\nc"), QStringLiteral("opml")), QStringLiteral("a-b c.opml"));
  EXPECT_EQ(exportFileName(QString(300, u'a'), QStringLiteral("svg")), QString(251, u'a') + QStringLiteral(".svg"));
}

TEST(WithExtension, AppendsWhatIsNotThereInEitherCase) {
  const QString md = QStringLiteral("md");
  EXPECT_EQ(withExtension(QStringLiteral("/a/Plan"), md), QStringLiteral("/a/Plan.md"));
  EXPECT_EQ(withExtension(QStringLiteral("/a/Plan v1.2"), md), QStringLiteral("/a/Plan v1.2.md"));
  EXPECT_EQ(withExtension(QStringLiteral("/a/Plan.MD"), md), QStringLiteral("/a/Plan.MD"));
  EXPECT_EQ(withExtension(QStringLiteral("/a/Planmd"), md), QStringLiteral("/a/Planmd.md"));
}

TEST(DocumentFileName, ReplacesTheExtensionOnly) {
  const auto replaced = [](const char* path) { return withDocumentExtension(QString::fromUtf8(path)).toStdString(); };
  EXPECT_EQ(replaced("/a/Plan.mindmap"), "/a/Plan.mindmap");
  EXPECT_EQ(replaced("/a/Plan.json"), "/a/Plan.mindmap");
  EXPECT_EQ(replaced("/a/Plan.tar.gz"), "/a/Plan.tar.mindmap");
  EXPECT_EQ(replaced("/a.b/Plan"), "/a.b/Plan.mindmap");
  EXPECT_EQ(replaced("/a/Plan."), "/a/Plan..mindmap");
  EXPECT_EQ(replaced("/a/1. Plan"), "/a/1. Plan.mindmap");
  EXPECT_EQ(replaced("/a/.hidden"), "/a/.hidden.mindmap");
  EXPECT_EQ(replaced("/a/Plan.MINDMAP"), "/a/Plan.mindmap");
}

}  // namespace
}  // namespace quilmora
