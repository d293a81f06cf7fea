#include <QImage>
#include <QLineEdit>

#include "app/AppFixture.h"
#include "app/inspectors/CopyFields.h"
#include "app/inspectors/InspectorPanel.h"
#include "model/DocumentFile.h"

namespace quilmora {
namespace {

class InspectorWindowTest : public AppTest {
 protected:
  void startWithTwoTopics() {
    startActive();
    m_first = editor().mindMap().nodes.front().id;
    editor().createChild(m_first);
    m_second = editor().mindMap().nodes.back().id;
    editor().selectNode(m_first, false);
    settle();
  }
  static void settle() { QCoreApplication::processEvents(); }
  QLineEdit& title() {
    for (auto* field : window().inspector().findChildren<CopyField*>())
      if (field->accessibleName() == QStringLiteral("Title")) return *field;
    throw std::runtime_error("no title");
  }
  void type(const char* text) {
    title().setFocus();
    title().selectAll();
    QTest::keyClicks(&title(), QLatin1String(text));
  }
  void clickOn(const QUuid& id) {
    const QPointF place = editor().nodeByID(id)->position * editor().canvasZoom() + editor().canvasOffset();
    QTest::mouseClick(&window().canvas(), Qt::LeftButton, {}, place.toPoint());
    settle();
  }
  QString titleOf(const QUuid& id) { return editor().nodeByID(id)->title; }

  QUuid m_first;
  QUuid m_second;
};

TEST_F(InspectorWindowTest, ClickingAnotherTopicWritesToTheOneThatWasEdited) {
  startWithTwoTopics();
  editor().fitToContent(window().canvas().width(), window().canvas().height(), 80);
  type("Harbour");
  clickOn(m_second);
  EXPECT_EQ(editor().selectedNodeIDs(), IdSet{m_second});
  EXPECT_EQ(titleOf(m_first), QStringLiteral("Harbour"));
  EXPECT_EQ(titleOf(m_second), QStringLiteral("New Node"));
  EXPECT_EQ(title().text(), QStringLiteral("New Node"));
}

TEST_F(InspectorWindowTest, SavingTakesWhatIsBeingTyped) {
  startWithTwoTopics();
  m_panels.savePaths = {path("map.mindmap")};
  type("Harbour");
  action("saveDocumentAs")->trigger();
  EXPECT_EQ(decodeDocumentAt(path("map.mindmap")).nodes[0].title, QStringLiteral("Harbour"));
}

TEST_F(InspectorWindowTest, QuittingTakesWhatIsBeingTyped) {
  startWithTwoTopics();
  m_panels.savePaths = {path("map.mindmap")};
  action("saveDocumentAs")->trigger();
  type("Harbour");
  notifications().post(Notification::autoSaveBeforeQuit);
  EXPECT_EQ(decodeDocumentAt(path("map.mindmap")).nodes[0].title, QStringLiteral("Harbour"));
}

TEST_F(InspectorWindowTest, UndoFromTheMenuTakesBackWhatIsBeingTyped) {
  startWithTwoTopics();
  m_clock.advance(std::chrono::seconds(10));
  type("Harbour");
  action("undo")->trigger();
  settle();
  EXPECT_EQ(titleOf(m_first), QStringLiteral("Start Here"));
  EXPECT_EQ(title().text(), QStringLiteral("Start Here"));
  action("redo")->trigger();
  EXPECT_EQ(titleOf(m_first), QStringLiteral("Harbour"));
}

TEST_F(InspectorWindowTest, KeysOfTheMenusAreTheFieldsWhileOneIsTypedIn) {
  startWithTwoTopics();
  type("abc");
  QTest::keyClick(&title(), Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&title(), Qt::Key_Delete);
  EXPECT_EQ(title().text(), QString());
  EXPECT_EQ(editor().mindMap().nodes.size(), 2u);
}

TEST_F(InspectorWindowTest, APictureIsAskedForThroughTheDesktop) {
  startWithTwoTopics();
  QImage image(6, 6, QImage::Format_RGB32);
  image.fill(Qt::blue);
  ASSERT_TRUE(image.save(path("blue.png")));
  m_panels.openPaths = {path("blue.png")};
  for (auto* button : window().inspector().findChildren<QAbstractButton*>())
    if (button->accessibleName() == QStringLiteral("Add Image...")) button->click();
  settle();
  EXPECT_TRUE(editor().nodeByID(m_first)->imageData.has_value());
}

TEST_F(InspectorWindowTest, AHiddenPanelIsNotBuilt) {
  m_settings.setFlag(settings::showInspector, false);
  start();
  settle();
  EXPECT_EQ(window().inspector().inspector(), nullptr);
}

TEST_F(InspectorWindowTest, EscapeInThePanelLeavesTheSelection) {
  startWithTwoTopics();
  type("x");
  QTest::keyClick(&title(), Qt::Key_Escape);
  EXPECT_TRUE(window().canvas().hasFocus());
  EXPECT_EQ(editor().selectedNodeIDs(), IdSet{m_first});
  EXPECT_EQ(titleOf(m_first), QStringLiteral("Start Here"));
}

}  // namespace
}  // namespace quilmora
