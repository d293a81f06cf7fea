#include <QToolButton>

#include "app/AppFixture.h"
#include "app/inspectors/InspectorPanel.h"
#include "app/window/FocusWalk.h"
#include "app/window/PanelEdge.h"
#include "app/window/Sidebar.h"
#include "app/window/Toolbar.h"

namespace quilmora {
namespace {

class FocusWalkTest : public AppTest {
 protected:
  QString area() {
    const QWidget* focus = window().focusWidget();
    const std::pair<QString, QWidget*> areas[] = {{QStringLiteral("toolbar"), &window().toolbar()},
                                                  {QStringLiteral("sidebar"), &window().sidebar()},
                                                  {QStringLiteral("canvas"), &window().canvas()},
                                                  {QStringLiteral("inspector"), &window().inspector()}};
    for (const auto& [name, widget] : areas)
      if (focus && (focus == widget || widget->isAncestorOf(focus))) return name;
    return {};
  }
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(window().windowHandle(), key, modifiers);
  }
};

TEST_F(FocusWalkTest, StartsOnTheCanvasAndGoesRound) {
  startActive();
  EXPECT_EQ(area(), QStringLiteral("canvas"));
  QStringList visited;
  for (int i = 0; i < 4; ++i) {
    key(Qt::Key_F6);
    visited << area();
  }
  EXPECT_EQ(visited, QStringList({QStringLiteral("inspector"), QStringLiteral("toolbar"), QStringLiteral("sidebar"),
                                  QStringLiteral("canvas")}));
  key(Qt::Key_F6, Qt::ShiftModifier);
  EXPECT_EQ(area(), QStringLiteral("sidebar"));
  key(Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(area(), QStringLiteral("canvas"));
}

TEST_F(FocusWalkTest, TheEdgeOfTheSidebarCountsToIt) {
  startActive();
  QWidget* edge = window().findChild<PanelEdge*>();
  edge->setFocus(Qt::TabFocusReason);
  key(Qt::Key_F6);
  EXPECT_EQ(area(), QStringLiteral("canvas"));
  edge->setFocus(Qt::TabFocusReason);
  key(Qt::Key_F6, Qt::ShiftModifier);
  EXPECT_EQ(area(), QStringLiteral("toolbar"));
}

TEST_F(FocusWalkTest, LeavesOutWhatIsHidden) {
  startActive();
  action("toggleSidebar")->trigger();
  action("toggleInspector")->trigger();
  key(Qt::Key_F6);
  EXPECT_EQ(area(), QStringLiteral("toolbar"));
  key(Qt::Key_F6);
  EXPECT_EQ(area(), QStringLiteral("canvas"));
}

TEST_F(FocusWalkTest, TabNeverLeavesTheCanvas) {
  startActive();
  key(Qt::Key_Tab);
  key(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(area(), QStringLiteral("canvas"));
}

TEST_F(FocusWalkTest, NewTopicBringsTheKeyboardToTheCanvas) {
  startActive();
  for (QToolButton* button : window().toolbar().findChildren<QToolButton*>())
    if (button->isEnabled()) button->setFocus();
  ASSERT_EQ(area(), QStringLiteral("toolbar"));
  notifications().post(Notification::createNode);
  EXPECT_EQ(area(), QStringLiteral("canvas"));
  // Each letter goes to the widget that has the keyboard by then.
  for (const char letter : {'t', 'y', 'p', 'e', 'd'}) QTest::keyClick(QApplication::focusWidget(), letter);
  key(Qt::Key_Return);
  EXPECT_EQ(editor().mindMap().nodes.back().title, QStringLiteral("typed"));
}

}  // namespace
}  // namespace quilmora
