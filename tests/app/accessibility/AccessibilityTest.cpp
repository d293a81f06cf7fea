#include <vector>

#include <QAccessible>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QScrollBar>

#include "app/AppFixture.h"
#include "app/companions/CanvasCompanions.h"
#include "app/companions/ExportOverlay.h"
#include "app/companions/SearchBar.h"
#include "app/dialogs/AlertSheet.h"
#include "app/dialogs/Sheet.h"
#include "app/inspectors/InspectorPanel.h"
#include "app/outline/OutlineList.h"
#include "app/outline/OutlineView.h"
#include "app/window/Sidebar.h"
#include "app/window/Toolbar.h"
#include "support/QtPrinters.h"
#include "support/SmallMap.h"

namespace quilmora {
namespace {

using namespace test;

// Everything that a user can operate, or that has a value.
bool isControl(const QAccessibleInterface& part) {
  switch (part.role()) {
    case QAccessible::Button:
    case QAccessible::ButtonMenu:
    case QAccessible::ButtonDropDown:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::Slider:
    case QAccessible::SpinBox:
    case QAccessible::Link:
    case QAccessible::PageTab:
    case QAccessible::MenuItem:
    case QAccessible::Tree:
    case QAccessible::TreeItem:
    case QAccessible::List:
    case QAccessible::ListItem:
    case QAccessible::Dialog:
    case QAccessible::Splitter:
    case QAccessible::Canvas:
    case QAccessible::ProgressBar:
      return true;
    default:
      return part.state().focusable != 0;
  }
}

QString described(const QAccessibleInterface& part) {
  const QObject* object = part.object();
  return QStringLiteral("role %1, %2")
      .arg(part.role())
      .arg(object ? QLatin1String(object->metaObject()->className()) : QLatin1String("no object"));
}

// A whole window, and what opens in it.
class AccessibilityTest : public AppTest {
 protected:
  void startWithMap() {
    startActive();
    MindMap map = mapOf({1, 2, 3, 4}, {{1, 2}, {1, 3}});
    map.nodes.update(1, [](Node& node) {
      node.notes = QStringLiteral("A note.");
      node.url = QStringLiteral("https://example.org");
      node.emoji = QStringLiteral("🚀");
      node.badge = Badge::done;
    });
    for (std::size_t i = 0; i < map.nodes.size(); ++i)
      map.nodes.update(i, [&](Node& node) { node.position = QPointF(200.0 * static_cast<double>(i), 0); });
    map.regions.append(
        Region{topicId(900), QStringLiteral("Zone"), QStringLiteral("#FFD54F"), QRectF(0, 200, 200, 100)});
    editor().setMindMap(std::move(map));
    settle();
  }
  static void settle() {
    for (int turn = 0; turn < 10; ++turn) QCoreApplication::processEvents();
  }

  // The visible controls below it that have no name.
  static QStringList nameless(QAccessibleInterface* part) {
    QStringList found;
    if (part == nullptr || part->state().invisible) return found;
    if (isControl(*part) && part->text(QAccessible::Name).trimmed().isEmpty()) found << described(*part);
    for (int i = 0; i < std::min(part->childCount(), 60); ++i) found << nameless(part->child(i));
    return found;
  }
  QStringList nameless() {
    settle();
    return nameless(QAccessible::queryAccessibleInterface(&window()));
  }

  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(window().windowHandle(), key, modifiers);
    settle();
  }
  // What Tab should reach below it.
  static std::vector<QPointer<QWidget>> stops(const QWidget& area) {
    std::vector<QPointer<QWidget>> found;
    for (QWidget* part : area.findChildren<QWidget*>())
      if (part->isVisible() && part->isEnabled() && (part->focusPolicy() & Qt::TabFocus) &&
          part->focusProxy() == nullptr)
        found.emplace_back(part);
    return found;
  }
  // Those of them that Tab does not reach from the first.
  QStringList unreached(const QWidget& area) {
    std::vector<QPointer<QWidget>> left = stops(area);
    if (left.empty()) return {};
    left.front()->setFocus(Qt::TabFocusReason);
    const std::size_t most = 4 * (stops(window()).size() + 20);
    for (std::size_t i = 0; i < most && !left.empty(); ++i) {
      std::erase_if(left, [&](const QPointer<QWidget>& stop) { return !stop || stop == window().focusWidget(); });
      // The canvas keeps Tab for itself; F6 moves on.
      key(window().focusWidget() == &window().canvas() ? Qt::Key_F6 : Qt::Key_Tab);
    }
    QStringList names;
    for (const QPointer<QWidget>& part : left)
      if (part) names << QLatin1String(part->metaObject()->className()) + QLatin1Char(' ') + part->accessibleName();
    return names;
  }

  OutlineList& showOutline() {
    if (window().sidebarTab() != SidebarTab::outline) notifications().post(Notification::toggleOutline);
    settle();
    return window().outline()->list();
  }
};

const QStringList none;

TEST_F(AccessibilityTest, EveryControlOfThePanelsHasAName) {
  startWithMap();
  EXPECT_EQ(nameless(), none);
  showOutline();
  EXPECT_EQ(nameless(), none) << "outline";
  editor().setSelectedNodeIDs({topicId(2)});
  EXPECT_EQ(nameless(), none) << "a topic";
  editor().selectAll();
  EXPECT_EQ(nameless(), none) << "topics";
  editor().clearSelection();
  editor().setSelectedEdgeIDs({edgeId(0)});
  EXPECT_EQ(nameless(), none) << "a branch";
  editor().clearSelection();
  editor().setSelectedRegionID(topicId(900));
  EXPECT_EQ(nameless(), none) << "a region";
}

TEST_F(AccessibilityTest, EveryControlAboveTheCanvasHasAName) {
  startWithMap();
  editor().setSelectedNodeIDs({topicId(2)});
  editor().toggleSearch();
  editor().setSearchQuery(QStringLiteral("Topic"));
  editor().runSearch();
  editor().toggleQuickLook(topicId(2));
  EXPECT_EQ(nameless(), none);
  editor().toggleSearch();
  editor().startEdgeCreation();
  EXPECT_EQ(nameless(), none) << "branch mode";
  editor().escape();
  editor().setSelectedNodeIDs({topicId(3)});
  window().canvas().setFocus();
  key(Qt::Key_F2);
  EXPECT_TRUE(editor().isEditingInline());
  EXPECT_EQ(nameless(), none) << "title";
}

TEST_F(AccessibilityTest, EveryControlOfTheSheetsHasAName) {
  startWithMap();
  editor().setSmartPasteText(QStringLiteral("One\nTwo"));
  editor().setShowSmartPaste(true);
  EXPECT_EQ(nameless(), none) << "smart paste";
  editor().setShowSmartPaste(false);
  auto* alert =
      new AlertSheet(*m_look, AlertSheet::Kind::error, QStringLiteral("Error"), QStringLiteral("Why"), &window());
  alert->addAnswer({QStringLiteral("&Again"), Question::Answer::Weight::primary, [] {}});
  alert->open();
  EXPECT_EQ(nameless(), none) << "alert";
  for (const Notification sheet :
       {Notification::toggleCommandPalette, Notification::aiGenerate, Notification::showOnboarding}) {
    if (Sheet* open = window().findChild<Sheet*>()) open->finish();
    settle();
    notifications().post(sheet);
    EXPECT_EQ(nameless(), none) << static_cast<int>(sheet);
    key(Qt::Key_Escape);
  }
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
    EXPECT_EQ(unreached(*area), none) << area->accessibleName().toStdString();
  notifications().post(Notification::toggleAIChat);
  settle();
  EXPECT_EQ(unreached(window().sidebar()), none);
  auto* alert =
      new AlertSheet(*m_look, AlertSheet::Kind::error, QStringLiteral("Error"), QStringLiteral("Why"), &window());
  alert->addAnswer({QStringLiteral("&Again"), Question::Answer::Weight::primary, [] {}});
  alert->open();
  EXPECT_EQ(unreached(*alert), none);
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
  ExportOverlay& overlay = window().companions().exportOverlay();
  overlay.setExporting(true);
  EXPECT_EQ(overlay.shownOpacity(), 1.0);
  overlay.setExporting(false);
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
