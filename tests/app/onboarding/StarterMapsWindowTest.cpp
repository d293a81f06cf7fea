#include <QDir>
#include <QSignalSpy>

#include "app/AppFixture.h"
#include "canvas/view/TitleEditor.h"
#include "model/DocumentFile.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

// Starter maps in the window: from the menu entry to the resulting document.
class StarterMapsWindowTest : public AppTest {
 protected:
  void choose(const char* name) { action((QByteArray("newFromTemplate:") + name).constData())->trigger(); }
  void post(const QVariant& object) { notifications().post(Notification::newFromTemplate, object); }
  const MindMap& map() { return editor().mindMap(); }
  QStringList filesInDefaultFolder() { return QDir(defaultFolder()).entryList(QDir::Files); }
};

TEST_F(StarterMapsWindowTest, TheMenuInstallsAMapWithAFreshHistory) {
  startActive();
  editor().createFreeNode(10, 10);
  editor().undo();
  choose("Project Plan");
  EXPECT_EQ(map().title, QStringLiteral("Project Plan"));
  EXPECT_EQ(map().nodes.size(), 6u);
  EXPECT_EQ(editor().undoCount(), 0);
  EXPECT_EQ(editor().redoCount(), 0);
  EXPECT_FALSE(action("undo")->isEnabled());
  editor().undo();
  EXPECT_EQ(map().title, QStringLiteral("Project Plan"));
  EXPECT_FALSE(editor().isDirty());
  EXPECT_EQ(window().windowTitle(), QStringLiteral("Project Plan[*]"));
}

TEST_F(StarterMapsWindowTest, UnknownNamesAndOtherObjectsDoNothing) {
  startActive();
  const quint64 generation = editor().treeGeneration();
  for (const QVariant& object : {QVariant(), QVariant(QStringLiteral("Brainstorming")), QVariant(QString()),
                                 QVariant(3), QVariant(QByteArray("Research"))})
    post(object);
  EXPECT_EQ(editor().treeGeneration(), generation);
}

TEST_F(StarterMapsWindowTest, TheDefaultThemeOfTheSettingsMakesNoDifference) {
  m_settings.setText(settings::defaultTheme, QStringLiteral("ocean"));
  startActive();
  choose("Research");
  EXPECT_EQ(map().canvas, (CanvasConfig{QStringLiteral("#F8F0FF"), true, true, QStringLiteral("purple")}));
}

TEST_F(StarterMapsWindowTest, TheSavedPlaceIsForgotten) {
  const QString file = writtenMap("Old.mindmap", "Old");
  startActive({file});
  ASSERT_EQ(m_settings.text(settings::lastSavedFilePath), file);
  choose("Brainstorm");
  EXPECT_EQ(editor().lastSavedFilePath(), std::nullopt);
  EXPECT_EQ(m_settings.text(settings::lastSavedFilePath), std::nullopt);
  // The next save asks for a place.
  m_panels.savePaths = {path("New.mindmap")};
  action("saveDocument")->trigger();
  EXPECT_EQ(m_panels.saveRequests.size(), 1);
  EXPECT_EQ(titleIn(path("New.mindmap")), QStringLiteral("Brainstorm"));
  EXPECT_EQ(titleIn(file), QStringLiteral("Old"));
}

TEST_F(StarterMapsWindowTest, NobodyIsAskedAndNothingOfTheEarlierMapIsLost) {
  const QString file = writtenMap("Old.mindmap", "Old");
  startActive({file});
  editor().createFreeNode(10, 10);
  choose("Brainstorm");
  EXPECT_EQ(decodeDocumentAt(file).nodes.size(), 2u);
  EXPECT_TRUE(m_alerts.questions.empty());
  EXPECT_TRUE(m_panels.saveRequests.isEmpty());
}

TEST_F(StarterMapsWindowTest, AnEarlierMapWithoutAPlaceStaysInTheDefaultFolder) {
  startActive();
  editor().createFreeNode(10, 10);
  choose("Brainstorm");
  ASSERT_EQ(filesInDefaultFolder(), QStringList{QStringLiteral("Untitled Map.mindmap")});
  EXPECT_EQ(decodeDocumentAt(defaultFolder() + QStringLiteral("/Untitled Map.mindmap")).nodes.size(), 2u);
  EXPECT_EQ(map().title, QStringLiteral("Brainstorm"));
}

TEST_F(StarterMapsWindowTest, AnUntouchedMapLeavesNoFile) {
  startActive();
  choose("Brainstorm");
  choose("Research");
  m_scheduler.advance(std::chrono::minutes(1));
  EXPECT_EQ(filesInDefaultFolder(), QStringList());
}

TEST_F(StarterMapsWindowTest, WhereTheEarlierMapCannotBeKeptItStays) {
  startActive();
  ASSERT_TRUE(QFile(path("Documents")).open(QIODevice::WriteOnly));
  editor().createFreeNode(10, 10);
  choose("Brainstorm");
  EXPECT_EQ(map().nodes.size(), 2u);
  ASSERT_EQ(m_alerts.messages.size(), 1);
  EXPECT_TRUE(m_alerts.messages.first().startsWith(QStringLiteral("Failed to save document: ")));
}

TEST_F(StarterMapsWindowTest, AnEditedTemplateIsSavedByItself) {
  startActive();
  choose("Personal Goals");
  editor().createFreeNode(10, 10);
  m_scheduler.advance(std::chrono::seconds(6));
  EXPECT_EQ(filesInDefaultFolder(), QStringList{QStringLiteral("Personal Goals.mindmap")});
}

TEST_F(StarterMapsWindowTest, AnswersThatTheAiStillOwesAreForTheEarlierMap) {
  startActive();
  const quint64 before = editor().documentNumber();
  choose("Brainstorm");
  EXPECT_EQ(editor().documentNumber(), before + 1);
}

TEST_F(StarterMapsWindowTest, TheMapComesIntoSight) {
  m_desktop.setPrefersStillness(true);
  startActive();
  editor().setCanvasOffset(QPointF(-5000, -5000));
  choose("Brainstorm");
  m_scheduler.advance(std::chrono::seconds(1));
  const QPointF root = map().nodes[0].position * editor().canvasZoom() + editor().canvasOffset();
  EXPECT_TRUE(QRectF(window().canvas().rect()).contains(root));
}

TEST_F(StarterMapsWindowTest, NothingOfTheEarlierMapStaysSelected) {
  startActive();
  editor().selectAll();
  choose("Brainstorm");
  EXPECT_TRUE(editor().selectedNodeIDs().empty());
  EXPECT_FALSE(action("delete")->isEnabled());
  action("createNode")->trigger();
  EXPECT_EQ(map().nodes.size(), 7u);
  EXPECT_EQ(map().edges.back().from, map().nodes[0].id);
}

TEST_F(StarterMapsWindowTest, ATitleThatIsBeingEditedGoesWithItsMap) {
  startActive();
  editor().selectAll();
  QTest::keyClick(&window().canvas(), Qt::Key_F2);
  m_scheduler.advance(TitleEditor::focusDelay);
  QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("Typed"));
  choose("Brainstorm");
  EXPECT_FALSE(editor().isEditingInline());
  const MindMap kept = decodeDocumentAt(defaultFolder() + QStringLiteral("/Untitled Map.mindmap"));
  EXPECT_EQ(kept.nodes[0].title, QStringLiteral("Typed"));
  EXPECT_EQ(map().nodes[0].title, QStringLiteral("Brainstorm"));
}

}  // namespace
}  // namespace quilmora
