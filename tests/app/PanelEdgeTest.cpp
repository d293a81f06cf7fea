#include <QAccessible>

#include "app/AppFixture.h"
#include "app/inspectors/InspectorPanel.h"
#include "app/look/Tokens.h"
#include "app/window/PanelEdge.h"
#include "app/window/Sidebar.h"

namespace quilmora {
namespace {

// The edge of the sidebar in a window of 1280, where it can get 560 wide.
class PanelEdgeTest : public AppTest {
 protected:
  void SetUp() override {
    startActive();
    edge().setFocus(Qt::TabFocusReason);
  }
  PanelEdge& edge() { return *window().findChild<PanelEdge*>(); }
  int sidebarWidth() { return window().sidebar().width(); }
  void key(Qt::Key key) { QTest::keyClick(window().windowHandle(), key); }
};

TEST_F(PanelEdgeTest, ArrowsHomeAndEndMoveIt) {
  EXPECT_EQ(sidebarWidth(), 260);
  key(Qt::Key_Right);
  EXPECT_EQ(sidebarWidth(), 276);
  key(Qt::Key_Right);
  key(Qt::Key_Left);
  EXPECT_EQ(sidebarWidth(), 276);
  key(Qt::Key_End);
  EXPECT_EQ(sidebarWidth(), 560);
  EXPECT_EQ(window().canvas().width(), metrics::canvasMinWidth);
  key(Qt::Key_Right);
  EXPECT_EQ(sidebarWidth(), 560);
  key(Qt::Key_Home);
  key(Qt::Key_Left);
  EXPECT_EQ(sidebarWidth(), 260);
  EXPECT_TRUE(edge().hasFocus());
}

TEST_F(PanelEdgeTest, ThePointerDragsItAndADoubleClickPutsItBack) {
  QWindow* screen = window().windowHandle();
  const QPoint grip = edge().mapTo(&window(), QPoint(PanelEdge::thickness / 2, 300));
  const QPoint wider = grip + QPoint(80, 0);
  QTest::mousePress(screen, Qt::LeftButton, {}, grip);
  QTest::mouseMove(screen, wider);
  QTest::mouseRelease(screen, Qt::LeftButton, {}, wider);
  EXPECT_EQ(sidebarWidth(), 340);
  QTest::mouseDClick(screen, Qt::LeftButton, {}, wider);
  EXPECT_EQ(sidebarWidth(), 260);
  EXPECT_EQ(QGuiApplication::mouseButtons(), Qt::NoButton);
}

TEST_F(PanelEdgeTest, TabComesToItFromTheLastControlOfEitherTab) {
  for (const Notification shown : {Notification::toggleOutline, Notification::toggleAIChat}) {
    notifications().post(shown);
    QCoreApplication::processEvents();
    edge().setFocus(Qt::TabFocusReason);
    key(Qt::Key_Backtab);
    const QWidget* before = window().focusWidget();
    EXPECT_TRUE(window().sidebar().isAncestorOf(before)) << before->metaObject()->className();
    key(Qt::Key_Tab);
    EXPECT_TRUE(edge().hasFocus());
    key(Qt::Key_Tab);
    const QWidget* after = window().focusWidget();
    EXPECT_FALSE(window().sidebar().isAncestorOf(after)) << after->metaObject()->className();
  }
}

TEST_F(PanelEdgeTest, ItsKeysLeaveTheTopicsAlone) {
  editor().selectNode(editor().mindMap().nodes[0].id, false);
  editor().createFreeNode(0, 200);
  const auto selected = editor().selectedNodeIDs();
  for (const Qt::Key pressed : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right}) key(pressed);
  EXPECT_EQ(editor().selectedNodeIDs(), selected);
}

TEST_F(PanelEdgeTest, ScreenReadersKnowItAsASplitterWithItsPlace) {
  QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(&edge());
  EXPECT_EQ(heard->role(), QAccessible::Splitter);
  EXPECT_FALSE(heard->text(QAccessible::Name).isEmpty());
  QAccessibleValueInterface* value = heard->valueInterface();
  ASSERT_NE(value, nullptr);
  EXPECT_EQ(value->currentValue(), 260);
  EXPECT_EQ(value->minimumValue(), 260);
  EXPECT_EQ(value->maximumValue(), 560);
  EXPECT_EQ(value->minimumStepSize(), PanelEdge::step);
  value->setCurrentValue(300);
  EXPECT_EQ(sidebarWidth(), 300);
  EXPECT_EQ(value->currentValue(), 300);
}

TEST_F(PanelEdgeTest, ShowsThatItHasTheKeyboard) {
  key(Qt::Key_Backtab);
  key(Qt::Key_Tab);
  ASSERT_TRUE(edge().hasFocus());
  const QImage with = edge().grab().toImage();
  window().canvas().setFocus();
  EXPECT_NE(edge().grab().toImage(), with);
}

TEST_F(PanelEdgeTest, GivesTheKeyboardToTheCanvasWhenTheSidebarGoes) {
  action("toggleSidebar")->trigger();
  EXPECT_TRUE(window().canvas().hasFocus());
}

}  // namespace
}  // namespace quilmora
