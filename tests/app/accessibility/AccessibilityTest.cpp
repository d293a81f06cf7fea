#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>

#include "app/accessibility/AccessibilityFixture.h"
#include "app/companions/CanvasCompanions.h"
#include "app/companions/ProgressOverlay.h"
#include "app/companions/SearchBar.h"
#include "app/dialogs/AlertSheet.h"
#include "app/inspectors/InspectorPanel.h"
#include "app/window/Sidebar.h"
#include "app/window/Toolbar.h"

namespace quilmora {
namespace {

TEST_F(AccessibilityTest, EveryControlOfThePanelsHasAName) {
  startWithMap();
  EXPECT_EQ(nameless(), nothing);
  showOutline();
  EXPECT_EQ(nameless(), nothing) << "outline";
  editor().setSelectedNodeIDs({topicId(2)});
  EXPECT_EQ(nameless(), nothing) << "a topic";
  editor().selectAll();
  EXPECT_EQ(nameless(), nothing) << "topics";
  editor().clearSelection();
  editor().setSelectedEdgeIDs({edgeId(0)});
  EXPECT_EQ(nameless(), nothing) << "a branch";
  editor().clearSelection();
  editor().setSelectedRegionID(topicId(900));
  EXPECT_EQ(nameless(), nothing) << "a region";
}

TEST_F(AccessibilityTest, EveryControlAboveTheCanvasHasAName) {
  startWithMap();
  editor().setSelectedNodeIDs({topicId(2)});
  editor().toggleSearch();
  editor().setSearchQuery(QStringLiteral("Topic"));
  editor().runSearch();
  editor().toggleQuickLook(topicId(2));
  EXPECT_EQ(nameless(), nothing);
  editor().toggleSearch();
  editor().startEdgeCreation();
  EXPECT_EQ(nameless(), nothing) << "branch mode";
  editor().escape();
  editor().setSelectedNodeIDs({topicId(3)});
  window().canvas().setFocus();
  key(Qt::Key_F2);
  EXPECT_TRUE(editor().isEditingInline());
  EXPECT_EQ(nameless(), nothing) << "title";
}

TEST_F(AccessibilityTest, EveryEntryOfTheMenusHasAName) {
  startWithMap();
  std::vector<const QMenu*> menus;
  for (const QMenu* menu : window().menuBar()->findChildren<QMenu*>()) menus.push_back(menu);
  EXPECT_GE(menus.size(), 4u);
  for (const QMenu* menu : menus)
    for (const QAction* entry : menu->actions())
      EXPECT_TRUE(entry->isSeparator() || !entry->text().trimmed().isEmpty()) << menu->title().toStdString();
}

TEST_F(AccessibilityTest, ToolbarButtonsAndTabsTellWhatTheyAre) {
  startWithMap();
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&window().toolbar())->text(QAccessible::Name),
            QStringLiteral("Toolbar"));
  int count = 0;
  for (QAbstractButton* button : window().toolbar().findChildren<QAbstractButton*>()) {
    const QAccessibleInterface* part = QAccessible::queryAccessibleInterface(button);
    EXPECT_FALSE(part->text(QAccessible::Name).isEmpty());
    EXPECT_TRUE(part->role() == QAccessible::Button || part->role() == QAccessible::CheckBox ||
                part->role() == QAccessible::ButtonMenu)
        << described(*part).toStdString();
    ++count;
  }
  EXPECT_EQ(count, 7);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&window().canvas())->role(), QAccessible::Canvas);
  QStringList tabs;
  for (QAbstractButton* button : window().sidebar().findChildren<QAbstractButton*>())
    tabs << QAccessible::queryAccessibleInterface(button)->text(QAccessible::Name);
  EXPECT_TRUE(tabs.contains(QStringLiteral("AI Chat")));
  EXPECT_TRUE(tabs.contains(QStringLiteral("Outline")));
}

TEST_F(AccessibilityTest, TabReachesEveryControl) {
  startWithMap();
  showOutline();
  editor().setSelectedNodeIDs({topicId(2)});
  settle();
  for (QWidget* area : {static_cast<QWidget*>(&window().toolbar()), static_cast<QWidget*>(&window().sidebar()),
                        static_cast<QWidget*>(&window().inspector())})
    EXPECT_EQ(unreached(*area), nothing) << area->accessibleName().toStdString();
  notifications().post(Notification::toggleAIChat);
  settle();
  EXPECT_EQ(unreached(window().sidebar()), nothing);
  auto* alert =
      new AlertSheet(*m_look, AlertSheet::Kind::error, QStringLiteral("Error"), QStringLiteral("Why"), &window());
  alert->addAnswer({QStringLiteral("&Again"), Question::Answer::Weight::primary, [] {}});
  alert->open();
  EXPECT_EQ(unreached(*alert), nothing);
}

TEST_F(AccessibilityTest, EscapeClosesWhatWasOpenedLastAndGivesTheKeyboardBack) {
  startWithMap();
  OutlineList& list = showOutline();
  const auto focusList = [&] {
    list.setFocus(Qt::TabFocusReason);
    settle();
    ASSERT_TRUE(list.hasFocus());
  };
  focusList();
  notifications().post(Notification::toggleSearch);
  settle();
  ASSERT_TRUE(window().companions().searchBar().isFocused());
  key(Qt::Key_Escape);
  EXPECT_FALSE(editor().isSearching());
  EXPECT_TRUE(list.hasFocus()) << "search";

  makeAboutSheet(*m_look, &window())->open();
  settle();
  EXPECT_FALSE(list.hasFocus());
  key(Qt::Key_Escape);
  EXPECT_TRUE(list.hasFocus()) << "about";

  editor().setSelectedNodeIDs({topicId(2)});
  settle();
  key(Qt::Key_F2);
  ASSERT_NE(list.renameField(), nullptr);
  key(Qt::Key_Escape);
  EXPECT_EQ(list.renameField(), nullptr);
  EXPECT_TRUE(list.hasFocus()) << "rename";
  EXPECT_EQ(editor().selectedNodeIDs().size(), 1u) << "Escape closed the field only";

  // One after the other, the last first.
  notifications().post(Notification::toggleSearch);
  settle();
  makeAboutSheet(*m_look, &window())->open();
  settle();
  key(Qt::Key_Escape);
  EXPECT_TRUE(editor().isSearching());
  EXPECT_TRUE(window().companions().searchBar().isFocused());
  key(Qt::Key_Escape);
  EXPECT_FALSE(editor().isSearching());
  EXPECT_TRUE(list.hasFocus());

  for (const Notification opened : {Notification::toggleCommandPalette, Notification::aiGenerate}) {
    notifications().post(opened);
    settle();
    if (list.hasFocus()) continue;  // nothing opens for it
    key(Qt::Key_Escape);
    EXPECT_TRUE(list.hasFocus()) << static_cast<int>(opened);
  }
}

TEST_F(AccessibilityTest, MotionEndsWithTheDesktopsWishWhileTheProgramRuns) {
  startWithMap();
  int changes = 0;
  QObject::connect(m_look.get(), &Look::changed, m_look.get(), [&] { ++changes; });
  m_desktop.setPrefersStillness(true);
  EXPECT_TRUE(m_look->isStill());
  EXPECT_EQ(changes, 1);
  notifications().post(Notification::zoomToFit);
  EXPECT_FALSE(window().canvas().isAnimating());
  ProgressOverlay& overlay = window().companions().progressOverlay();
  overlay.setWorking(true);
  EXPECT_EQ(overlay.shownOpacity(), 1.0);
  overlay.setWorking(false);
  EXPECT_FALSE(overlay.isShown());
  m_desktop.setPrefersStillness(false);
  EXPECT_FALSE(m_look->isStill());
  EXPECT_EQ(changes, 2);
  notifications().post(Notification::zoomToFit);
  EXPECT_TRUE(window().canvas().isAnimating());
}

TEST_F(AccessibilityTest, TextsOfTwiceTheSizeStayInTheirPanels) {
  QFont large = QApplication::font();
  large.setPixelSize(26);
  m_desktop.setInterfaceFont(large);
  startWithMap();
  showOutline();
  editor().setSelectedNodeIDs({topicId(2)});
  settle();
  for (QWidget* panel : {static_cast<QWidget*>(&window().sidebar()), static_cast<QWidget*>(&window().inspector())}) {
    for (const QWidget* part : panel->findChildren<QWidget*>()) {
      if (!part->isVisible() || part->visibleRegion().isEmpty()) continue;
      const QRect place(part->mapTo(panel, QPoint()), part->size());
      EXPECT_GE(place.left(), 0) << part->metaObject()->className() << ' ' << part->accessibleName().toStdString();
      EXPECT_LE(place.right(), panel->width())
          << part->metaObject()->className() << ' ' << part->accessibleName().toStdString();
    }
  }
  OutlineList& list = window().outline()->list();
  EXPECT_GE(list.visualRect(list.model()->index(0, 0)).height(), QFontMetrics(m_look->font()).height());
}

}  // namespace
}  // namespace quilmora
