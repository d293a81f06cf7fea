#include <QAbstractButton>

#include "app/AppFixture.h"
#include "app/window/Sidebar.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

class SidebarTest : public AppTest {
 protected:
  // In the bar: the panels below have no other checkable buttons.
  QList<QAbstractButton*> tabs() {
    QList<QAbstractButton*> tabs;
    for (QAbstractButton* button : window().sidebar().findChildren<QAbstractButton*>())
      if (button->autoExclusive() && button->isCheckable()) tabs.append(button);
    return tabs;
  }
  QStringList active() {
    QStringList names;
    for (const QAbstractButton* tab : tabs())
      if (tab->isChecked()) names.append(tab->text());
    return names;
  }
};

TEST_F(SidebarTest, ABarOf36HasAButtonForEachTab) {
  start();
  ASSERT_EQ(tabs().size(), 2);
  EXPECT_EQ(tabs()[0]->text(), QStringLiteral("AI Chat"));
  EXPECT_EQ(tabs()[1]->text(), QStringLiteral("Outline"));
  for (const QAbstractButton* tab : tabs()) EXPECT_EQ(tab->height(), 36);
  EXPECT_EQ(window().sidebar().width(), 260);
  EXPECT_EQ(rawValue(SidebarTab::aiChat), QStringLiteral("aiChat"));
  EXPECT_EQ(rawValue(SidebarTab::outline), QStringLiteral("outline"));
  EXPECT_EQ(symbol(SidebarTab::aiChat), QStringLiteral("bubble.left.and.text.bubble.right"));
  EXPECT_EQ(symbol(SidebarTab::outline), QStringLiteral("list.bullet.indent"));
}

TEST_F(SidebarTest, AClickShowsItsTab) {
  startActive();
  EXPECT_EQ(active(), QStringList{QStringLiteral("AI Chat")});
  QTest::mouseClick(tabs()[1], Qt::LeftButton);
  EXPECT_EQ(window().sidebarTab(), SidebarTab::outline);
  EXPECT_EQ(active(), QStringList{QStringLiteral("Outline")});
  EXPECT_TRUE(action("toggleOutline")->isChecked());
  QTest::mouseClick(tabs()[1], Qt::LeftButton);
  EXPECT_EQ(active(), QStringList{QStringLiteral("Outline")});
  QTest::mouseClick(tabs()[0], Qt::LeftButton);
  EXPECT_EQ(window().sidebarTab(), SidebarTab::aiChat);
}

TEST_F(SidebarTest, TheSettingsOfItsBeginningHaveNoEffect) {
  m_settings.setText(settings::sidebarDefaultTab, QStringLiteral("outline"));
  m_settings.setFlag(settings::sidebarDefaultOpen, false);
  start();
  EXPECT_TRUE(window().sidebar().isVisible());
  EXPECT_EQ(window().sidebarTab(), SidebarTab::aiChat);
}

}  // namespace
}  // namespace quilmora
