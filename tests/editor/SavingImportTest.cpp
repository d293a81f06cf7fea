#include "editor/SavingFixture.h"

namespace quilmora {
namespace {

using namespace std::chrono_literals;

class ImportedMap : public SavingFixture {
 protected:
  QString makeFile(const QString& name) {
    const QString file = path(name);
    put(file, encodeDocument(mapWithTitle(name)));
    return file;
  }
  MindMap imported() const { return mapWithTitle(QStringLiteral("Imported")); }
};

TEST_F(ImportedMap, TakesThePlaceOfDocumentAndEditor) {
  session->replaceWithImported(imported());
  EXPECT_EQ(editor->mindMap().title, QStringLiteral("Imported"));
  EXPECT_EQ(session->document().mindMap.title, QStringLiteral("Imported"));
  EXPECT_TRUE(errors.isEmpty());
}

TEST_F(ImportedMap, CapturesNothingForUndo) {
  edit();
  const int before = editor->undoCount();
  session->replaceWithImported(imported());
  EXPECT_EQ(editor->undoCount(), before);
  EXPECT_EQ(editor->redoCount(), 0);
}

TEST_F(ImportedMap, IsNotMarkedAsSavedAndGoesToThePathOfTheDocumentNext) {
  const QString file = makeFile(QStringLiteral("plan.mindmap"));
  const QByteArray before = content(file);
  session->open(file);
  session->replaceWithImported(imported());
  EXPECT_EQ(editor->lastSavedFilePath(), file);
  EXPECT_TRUE(editor->hasExplicitSavePath());
  EXPECT_EQ(content(file), before) << "the import itself writes nothing";
  session->saveDocument();
  EXPECT_EQ(decodeDocumentAt(file).title, QStringLiteral("Imported"));
  EXPECT_TRUE(panels.saveRequests.isEmpty());
}

TEST_F(ImportedMap, OfADocumentWithoutAPathIsSavedWhereTheUserSays) {
  panels.savePaths = {path(QStringLiteral("new.mindmap"))};
  session->replaceWithImported(imported());
  session->saveDocument();
  EXPECT_EQ(panels.saveRequests.size(), 1);
  EXPECT_EQ(decodeDocumentAt(path(QStringLiteral("new.mindmap"))).title, QStringLiteral("Imported"));
}

TEST_F(ImportedMap, LetsPendingChangesBeWrittenFirst) {
  const QString file = makeFile(QStringLiteral("plan.mindmap"));
  session->open(file);
  edit();
  const QByteArray edited = encodeDocument(editor->mindMap());
  session->replaceWithImported(imported());
  EXPECT_EQ(content(file), edited);
  EXPECT_EQ(editor->mindMap().title, QStringLiteral("Imported"));
}

TEST_F(ImportedMap, LeavesTheCopyOfAMapWithoutAFileAlone) {
  setTitle(QStringLiteral("Ideas"));
  edit();
  const QByteArray edited = encodeDocument(editor->mindMap());
  session->replaceWithImported(imported());
  EXPECT_EQ(editor->lastSavedFilePath(), std::nullopt);
  edit();
  scheduler.advance(5s);
  EXPECT_EQ(content(inDefaultFolder(QStringLiteral("Ideas.mindmap"))), edited);
  EXPECT_EQ(decodeDocumentAt(inDefaultFolder(QStringLiteral("Imported.mindmap"))).nodes.size(), 2u);
}

TEST_F(ImportedMap, DoesNotComeWhenPendingChangesCannotBeWritten) {
  const QString file = makeFile(QStringLiteral("gone/plan.mindmap"));
  session->open(file);
  edit();
  const MindMap edited = editor->mindMap();
  ASSERT_TRUE(QDir(path(QStringLiteral("gone"))).removeRecursively());
  session->replaceWithImported(imported());
  EXPECT_EQ(editor->mindMap(), edited);
  EXPECT_TRUE(editor->isDirty());
  ASSERT_EQ(errors.size(), 1);
  EXPECT_TRUE(errors.first().startsWith(QStringLiteral("Failed to save document: "))) << errors.first().toStdString();
}

TEST_F(ImportedMap, LeftUneditedDoesNotOverwriteTheDocumentOnQuit) {
  const QString file = makeFile(QStringLiteral("plan.mindmap"));
  session->open(file);
  session->replaceWithImported(imported());
  notifications.post(Notification::autoSaveBeforeQuit);
  EXPECT_EQ(decodeDocumentAt(file).title, QStringLiteral("plan.mindmap"));
}

TEST_F(ImportedMap, IsFittedIntoViewAfterAMoment) {
  int fits = 0;
  const auto subscription = notifications.observe(Notification::zoomToFit, [&](const QVariant&) { ++fits; });
  session->replaceWithImported(imported());
  scheduler.advance(199ms);
  EXPECT_EQ(fits, 0);
  scheduler.advance(1ms);
  EXPECT_EQ(fits, 1);
}

}  // namespace
}  // namespace quilmora
