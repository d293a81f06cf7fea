#include <QAccessible>
#include <QPushButton>
#include <QThreadPool>

#include "app/AppFixture.h"
#include "app/window/DocumentBar.h"

namespace quilmora::test {
namespace {

using namespace std::chrono_literals;

// What the window says and offers when another program changes the document's file.
class DocumentBarTest : public AppTest {
 protected:
  DocumentBarTest() { start({writtenMap("Plan.mindmap", "Mine")}); }

  DocumentBar& bar() { return window().documentBar(); }
  void changeFile() {
    writtenMap("Plan.mindmap", "Theirs");
    window().session().checkFile();
  }
  void edit() { editor().createFreeNode(40, 40); }
};

TEST_F(DocumentBarTest, IsAwayWhileThereIsNothingToTell) {
  EXPECT_FALSE(bar().isVisible());
  edit();
  m_scheduler.advance(5s);
  EXPECT_FALSE(bar().isVisible());
}

TEST_F(DocumentBarTest, ComesAboveTheCanvasAndLeavesTheMapInItsPlace) {
  m_scheduler.advance(1s);
  const QPointF before = editor().canvasOffset();
  const QRect canvasBefore = window().canvas().geometry();
  const QWidget* focus = window().focusWidget();
  changeFile();
  ASSERT_TRUE(bar().isVisible());
  EXPECT_EQ(bar().text(), QStringLiteral("Another program has changed “Plan.mindmap”."));
  EXPECT_EQ(bar().geometry().bottom() + 1, window().canvas().y());
  EXPECT_EQ(window().canvas().geometry().bottom(), canvasBefore.bottom());
  EXPECT_EQ(editor().canvasOffset() + QPointF(window().canvas().pos()), before + QPointF(canvasBefore.topLeft()));
  EXPECT_EQ(window().focusWidget(), focus);
  EXPECT_EQ(m_alerts.messages, QStringList());
}

TEST_F(DocumentBarTest, IsToldToScreenReadersWhenItComes) {
  changeFile();
  const QAccessibleInterface* whole = QAccessible::queryAccessibleInterface(&window());
  QStringList heard;
  for (int index = 0; index < whole->childCount(); ++index)
    if (whole->child(index)->role() == QAccessible::Notification) heard << whole->child(index)->text(QAccessible::Name);
  EXPECT_EQ(heard, QStringList({QStringLiteral("Another program has changed “Plan.mindmap”.")}));
}

TEST_F(DocumentBarTest, ReloadShowsTheOtherMapAsOneStep) {
  edit();
  changeFile();
  bar().reloadButton().click();
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Theirs"));
  EXPECT_FALSE(bar().isVisible());
  action("undo")->trigger();
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Mine"));
  EXPECT_EQ(editor().mindMap().nodes.size(), 2u);
}

TEST_F(DocumentBarTest, KeepMineWritesTheOpenMap) {
  edit();
  changeFile();
  bar().keepMineButton().click();
  EXPECT_EQ(titleIn(path("Plan.mindmap")), QStringLiteral("Mine"));
  EXPECT_FALSE(bar().isVisible());
  EXPECT_FALSE(window().isWindowModified());
}

TEST_F(DocumentBarTest, SaveACopyAsksForAPlace) {
  changeFile();
  m_panels.savePaths = {path("Copy.mindmap")};
  bar().saveCopyButton().click();
  EXPECT_EQ(titleIn(path("Copy.mindmap")), QStringLiteral("Mine"));
  EXPECT_EQ(titleIn(path("Plan.mindmap")), QStringLiteral("Theirs"));
  EXPECT_FALSE(bar().isVisible());
}

TEST_F(DocumentBarTest, OffersOnlyWhatCanBeDone) {
  ASSERT_TRUE(QFile::remove(path("Plan.mindmap")));
  window().session().checkFile();
  EXPECT_TRUE(bar().isVisible());
  EXPECT_FALSE(bar().reloadButton().isVisible());
  EXPECT_TRUE(bar().keepMineButton().isVisible());
  EXPECT_TRUE(bar().saveCopyButton().isVisible());
}

TEST_F(DocumentBarTest, HasRoomForItsWordsInTheSmallestWindow) {
  window().resize(window().minimumSizeHint());
  changeFile();
  QCoreApplication::processEvents();
  ASSERT_TRUE(bar().isVisible());
  for (const QPushButton* button : {&bar().reloadButton(), &bar().keepMineButton(), &bar().saveCopyButton()}) {
    EXPECT_GE(button->width(), button->minimumSizeHint().width());
    EXPECT_TRUE(bar().rect().contains(QRect(button->mapTo(&bar(), QPoint(0, 0)), button->size())));
  }
  EXPECT_EQ(bar().height(), bar().heightForWidth(bar().width()));
}

TEST_F(DocumentBarTest, GoesWithTheWindowIntoAPresentation) {
  changeFile();
  editor().togglePresentation();
  EXPECT_FALSE(bar().isVisible());
  editor().togglePresentation();
  EXPECT_TRUE(bar().isVisible());
}

TEST_F(DocumentBarTest, TakesTheNameOfAFileAsPlainText) {
  const QString file = writtenMap("<b>Plan<b>.mindmap", "Mine");
  window().session().open(file);
  writtenMap("<b>Plan<b>.mindmap", "Theirs");
  window().session().checkFile();
  EXPECT_EQ(bar().text(), QStringLiteral("Another program has changed “<b>Plan<b>.mindmap”."));
}

}  // namespace
}  // namespace quilmora::test
