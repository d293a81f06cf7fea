#include "editor/SavingFixture.h"

namespace quilmora {
namespace {

using namespace std::chrono_literals;

class PendingChanges : public SavingFixture {
 protected:
  QString makeFile(const QString& name) {
    const QString file = path(name);
    put(file, encodeDocument(mapWithTitle(name)));
    return file;
  }
};

TEST_F(PendingChanges, AreWrittenBeforeAnotherDocumentOpens) {
  const QString first = makeFile(QStringLiteral("first.mindmap"));
  session->open(first);
  edit();
  const QByteArray edited = encodeDocument(editor->mindMap());
  session->open(makeFile(QStringLiteral("second.mindmap")));
  EXPECT_EQ(content(first), edited);
  EXPECT_EQ(editor->mindMap().title, QStringLiteral("second.mindmap"));
  EXPECT_FALSE(editor->isDirty());
}

TEST_F(PendingChanges, OfAMapWithoutAFileGoToTheDefaultFolderBeforeAnotherOpens) {
  setTitle(QStringLiteral("Ideas"));
  edit();
  const QByteArray edited = encodeDocument(editor->mindMap());
  session->open(makeFile(QStringLiteral("second.mindmap")));
  EXPECT_EQ(content(inDefaultFolder(QStringLiteral("Ideas.mindmap"))), edited);
}

TEST_F(PendingChanges, SurviveOpeningTheirOwnFileAgain) {
  const QString file = makeFile(QStringLiteral("first.mindmap"));
  session->open(file);
  edit();
  const MindMap edited = editor->mindMap();
  session->open(file);
  EXPECT_EQ(editor->mindMap(), edited);
}

TEST_F(PendingChanges, KeepTheirMapOpenWhenTheyCannotBeWritten) {
  const QString file = makeFile(QStringLiteral("gone/first.mindmap"));
  session->open(file);
  edit();
  const MindMap edited = editor->mindMap();
  ASSERT_TRUE(QDir(path(QStringLiteral("gone"))).removeRecursively());
  const QString second = makeFile(QStringLiteral("second.mindmap"));
  session->open(second);
  EXPECT_EQ(editor->mindMap(), edited);
  EXPECT_TRUE(editor->isDirty());
  EXPECT_EQ(errors, QStringList());
  ASSERT_EQ(notKept.size(), 1);
  EXPECT_EQ(notKept.first().first, second);
  EXPECT_TRUE(notKept.first().second.contains(QStringLiteral("first.mindmap")));
}

TEST_F(PendingChanges, ThatCannotBeWrittenStayInACopyWhenTheUserOpensAnyway) {
  const QString file = makeFile(QStringLiteral("gone/first.mindmap"));
  session->open(file);
  setTitle(QStringLiteral("Plan"));
  edit();
  const QByteArray edited = encodeDocument(editor->mindMap());
  ASSERT_TRUE(QDir(path(QStringLiteral("gone"))).removeRecursively());
  session->openLeavingCopy(makeFile(QStringLiteral("second.mindmap")));
  EXPECT_EQ(editor->mindMap().title, QStringLiteral("second.mindmap"));
  EXPECT_EQ(content(inDefaultFolder(QStringLiteral("Plan.mindmap"))), edited);
  EXPECT_EQ(editor->lastSavedFilePath(), path(QStringLiteral("second.mindmap")));
  EXPECT_EQ(errors, QStringList());
}

TEST_F(PendingChanges, ThatCannotBeCopiedEitherKeepTheirMapOpen) {
  put(path(QStringLiteral("Documents")), "no folder");
  edit();
  const MindMap edited = editor->mindMap();
  session->openLeavingCopy(makeFile(QStringLiteral("second.mindmap")));
  EXPECT_EQ(editor->mindMap(), edited);
  ASSERT_EQ(errors.size(), 1);
  EXPECT_TRUE(errors.first().startsWith(QStringLiteral("Failed to save document: "))) << errors.first().toStdString();
}

TEST_F(PendingChanges, AreSavedElsewhereBeforeTheWantedDocumentOpens) {
  const QString file = makeFile(QStringLiteral("gone/first.mindmap"));
  session->open(file);
  edit();
  const QByteArray edited = encodeDocument(editor->mindMap());
  ASSERT_TRUE(QDir(path(QStringLiteral("gone"))).removeRecursively());
  const QString second = makeFile(QStringLiteral("second.mindmap"));
  // When cancelled, it opens nothing.
  session->saveAsAndOpen(second);
  EXPECT_NE(editor->mindMap().title, QStringLiteral("second.mindmap"));
  panels.savePaths = {path(QStringLiteral("elsewhere.mindmap"))};
  session->saveAsAndOpen(second);
  EXPECT_EQ(content(path(QStringLiteral("elsewhere.mindmap"))), edited);
  EXPECT_EQ(editor->mindMap().title, QStringLiteral("second.mindmap"));
}

TEST_F(PendingChanges, GoToTheDefaultFolderOnQuitWhenTheirOwnFolderIsGone) {
  const QString file = makeFile(QStringLiteral("gone/first.mindmap"));
  session->open(file);
  setTitle(QStringLiteral("Plan"));
  edit();
  ASSERT_TRUE(QDir(path(QStringLiteral("gone"))).removeRecursively());
  notifications.post(Notification::autoSaveBeforeQuit);

  const QString rescued = inDefaultFolder(QStringLiteral("Plan.mindmap"));
  EXPECT_EQ(content(rescued), encodeDocument(editor->mindMap()));
  EXPECT_EQ(log.lines().last(), QStringLiteral("Quilmora: saved a rescue copy to ") + rescued);

  const MindMap edited = editor->mindMap();
  start();
  session->reopenLastDocument();
  EXPECT_EQ(editor->mindMap(), edited);
}

TEST_F(PendingChanges, RescuedWhileTheSessionGoesOnStillBelongToTheirOwnFile) {
  const QString file = makeFile(QStringLiteral("gone/first.mindmap"));
  session->open(file);
  edit();
  const QString folder = path(QStringLiteral("gone"));
  ASSERT_TRUE(QDir(folder).removeRecursively());
  notifications.post(Notification::autoSaveBeforeQuit);
  ASSERT_TRUE(QDir().mkpath(folder));
  edit();
  session->saveDocument();
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
  EXPECT_EQ(editor->lastSavedFilePath(), file);
  EXPECT_EQ(panels.saveRequests.size(), 0);
}

TEST_F(PendingChanges, OfAnUndoAfterASaveAreKeptOnQuit) {
  const QString file = makeFile(QStringLiteral("first.mindmap"));
  session->open(file);
  edit();
  session->saveDocument();
  editor->undo();
  EXPECT_FALSE(editor->isDirty());
  notifications.post(Notification::autoSaveBeforeQuit);
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
}

TEST_F(PendingChanges, OfTypingThatGoesOnAfterASaveAreKeptOnQuit) {
  const QString file = makeFile(QStringLiteral("first.mindmap"));
  session->open(file);
  const QUuid id = editor->mindMap().nodes.front().id;
  editor->setNodeTitle(id, QStringLiteral("Fir"));
  session->saveDocument();
  editor->setNodeTitle(id, QStringLiteral("First"));
  EXPECT_FALSE(editor->isDirty());
  notifications.post(Notification::autoSaveBeforeQuit);
  EXPECT_EQ(content(file), encodeDocument(editor->mindMap()));
}

TEST_F(PendingChanges, OfAnUntouchedMapAreNone) {
  notifications.post(Notification::autoSaveBeforeQuit);
  EXPECT_FALSE(QFileInfo::exists(defaultFolder()));
}

TEST_F(PendingChanges, StayWhereTheyAreWhileTheProgramRuns) {
  const QString file = makeFile(QStringLiteral("gone/first.mindmap"));
  session->open(file);
  edit();
  ASSERT_TRUE(QDir(path(QStringLiteral("gone"))).removeRecursively());
  scheduler.advance(5s);
  EXPECT_FALSE(QFileInfo::exists(defaultFolder()));
  EXPECT_TRUE(editor->isDirty());
}

}  // namespace
}  // namespace quilmora
