#include <gtest/gtest.h>

#include "app/AppFixture.h"
#include "app/inspectors/InspectorPanel.h"
#include "app/window/PanelPlaces.h"
#include "app/window/Sidebar.h"
#include "app/window/Toolbar.h"
#include "app/window/WindowPlace.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

using namespace std::chrono_literals;

// --- Side panels ---

PanelPlaces shown(bool sidebar, bool inspector, bool floats = false) {
  return {sidebar, inspector, floats};
}

TEST(PanelPlaces, InspectorGivesWayBeforeTheSidebar) {
  const PanelWishes both;
  EXPECT_EQ(placePanels(980, both), shown(true, true));
  EXPECT_EQ(placePanels(979, both), shown(true, false));
  EXPECT_EQ(placePanels(660, both), shown(true, false));
  EXPECT_EQ(placePanels(659, both), shown(false, false));
}

TEST(PanelPlaces, InspectorAloneHasTheRoomThatThereIs) {
  const PanelWishes inspector{.sidebar = false, .inspector = true, .asked = std::nullopt};
  EXPECT_EQ(placePanels(720, inspector), shown(false, true));
  EXPECT_EQ(placePanels(719, inspector), shown(false, false));
}

TEST(PanelPlaces, WhatWasAskedForComesFirst) {
  const PanelWishes asked{.sidebar = true, .inspector = true, .asked = SidePanel::inspector};
  EXPECT_EQ(placePanels(900, asked), shown(false, true));
  EXPECT_EQ(placePanels(980, asked), shown(true, true));
}

TEST(PanelPlaces, WhatWasAskedForLiesAboveTheCanvasWhereThereIsNoRoomBesideIt) {
  const PanelWishes inspector{.sidebar = true, .inspector = true, .asked = SidePanel::inspector};
  EXPECT_EQ(placePanels(700, inspector), shown(false, true, true));
  const PanelWishes sidebar{.sidebar = true, .inspector = true, .asked = SidePanel::sidebar};
  EXPECT_EQ(placePanels(640, sidebar), shown(true, false, true));
}

// --- The place on the screen ---

const QList<QRect> twoScreens = {QRect(0, 0, 1920, 1040), QRect(1920, 0, 1280, 1024)};

TEST(WindowPlace, IsTheRememberedOneWhereAScreenShowsIt) {
  const QRect place(2000, 100, 1000, 700);
  EXPECT_EQ(placeOnScreens(place, twoScreens), place);
}

TEST(WindowPlace, IsMovedAndMadeSmallerUntilTheScreenShowsAllOfIt) {
  EXPECT_EQ(placeOnScreens(QRect(-50, 900, 1000, 700), twoScreens), QRect(0, 340, 1000, 700));
  EXPECT_EQ(placeOnScreens(QRect(100, 100, 1600, 900), {QRect(0, 0, 640, 400)}), QRect(0, 0, 640, 400));
}

TEST(WindowPlace, IsTheUsualOneWhereTheScreenIsGone) {
  const QRect usual(320, 120, 1280, 800);
  EXPECT_EQ(placeOnScreens(QRect(5000, 100, 1000, 700), twoScreens), usual);
  EXPECT_EQ(placeOnScreens(std::nullopt, twoScreens), usual);
  EXPECT_EQ(placeOnScreens(QRect(-970, 100, 1000, 700), twoScreens), usual);
}

TEST(WindowPlace, LeavesTheFrameOfASmallScreenInSight) {
  EXPECT_EQ(placeOnScreens(std::nullopt, {QRect(0, 0, 640, 400)}).size(), QSize(589, 368));
}

class WindowPlaceTest : public AppTest {};

TEST_F(WindowPlaceTest, IsRememberedOnceItRests) {
  startActive();
  window().setGeometry(40, 50, 700, 500);
  QCoreApplication::processEvents();
  EXPECT_EQ(m_settings.text(settings::windowPlace), std::nullopt);
  m_scheduler.advance(WindowPlace::storeDelay);
  EXPECT_EQ(m_settings.text(settings::windowPlace), QStringLiteral("40 50 700 500"));
  EXPECT_EQ(m_settings.flag(settings::windowIsMaximized), false);
  m_application.reset();
  startWhereItStands();
  EXPECT_EQ(window().geometry(), QRect(40, 50, 700, 500));
}

TEST_F(WindowPlaceTest, AMaximizedWindowComesBackMaximizedAndKnowsItsOldPlace) {
  m_settings.setText(settings::windowPlace, QStringLiteral("40 50 700 500"));
  m_settings.setFlag(settings::windowIsMaximized, true);
  startWhereItStands();
  EXPECT_TRUE(window().isMaximized());
  EXPECT_EQ(window().normalGeometry(), QRect(40, 50, 700, 500));
}

TEST_F(WindowPlaceTest, RubbishInTheSettingsIsNoPlace) {
  for (const char* text : {"", "1 2 3", "a b c d", "1 2 3 4 5", "10 10 0 500", "10 10 999999999 500"}) {
    m_settings.setText(settings::windowPlace, QLatin1String(text));
    startWhereItStands();
    EXPECT_EQ(window().geometry(), placeOnScreens(std::nullopt, {window().screen()->availableGeometry()})) << text;
  }
}

TEST_F(WindowPlaceTest, AFullScreenWindowIsNotRemembered) {
  startActive();
  window().setGeometry(40, 50, 700, 500);
  m_scheduler.advance(WindowPlace::storeDelay);
  action("fullScreen")->trigger();
  EXPECT_TRUE(window().isFullScreen());
  QCoreApplication::processEvents();
  m_scheduler.advance(WindowPlace::storeDelay);
  EXPECT_EQ(m_settings.text(settings::windowPlace), QStringLiteral("40 50 700 500"));
  action("fullScreen")->trigger();
  EXPECT_FALSE(window().isFullScreen());
}

TEST_F(WindowPlaceTest, TheWindowFitsASmallScreenAtTwoAndAQuarter) {
  start();
  // 1440 × 900 pixels at 225 %, less a frame.
  EXPECT_LE(window().minimumSizeHint().width(), 620);
  EXPECT_LE(window().minimumSizeHint().height(), 370);
}

TEST_F(WindowPlaceTest, PanelsGiveWayAndComeBackAndNothingIsStoredOfIt) {
  start();
  window().resize(1280, 800);
  EXPECT_TRUE(window().showsSidebar() && window().showsInspector());
  window().resize(800, 600);
  EXPECT_TRUE(window().sidebar().isVisible());
  EXPECT_FALSE(window().inspector().isVisible());
  EXPECT_FALSE(window().toolbar().button(QStringLiteral("toggleInspector"))->isChecked());
  window().resize(640, 400);
  EXPECT_FALSE(window().sidebar().isVisible());
  EXPECT_GE(window().canvas().width(), 400);
  window().resize(1280, 800);
  EXPECT_TRUE(window().sidebar().isVisible() && window().inspector().isVisible());
  EXPECT_EQ(m_settings.flag(settings::showSidebar), std::nullopt);
}

TEST_F(WindowPlaceTest, APanelThatIsAskedForInANarrowWindowComes) {
  start();
  window().resize(640, 500);
  action("toggleInspector")->trigger();
  EXPECT_TRUE(window().inspector().isVisible());
  EXPECT_EQ(window().inspector().geometry().right(), window().canvas().geometry().right());
  EXPECT_TRUE(window().toolbar().button(QStringLiteral("toggleInspector"))->isChecked());
  action("toggleInspector")->trigger();
  EXPECT_FALSE(window().inspector().isVisible());
  action("toggleSidebar")->trigger();
  EXPECT_TRUE(window().sidebar().isVisible());
}

// A screen of 1440 by 900 at 225 %, where the inspector covers more than half of the canvas.
class FloatingPanelTest : public AppTest {
 protected:
  void SetUp() override {
    m_desktop.setPrefersStillness(true);
    startActive();
    window().resize(600, 360);
    m_scheduler.advance(std::chrono::seconds(1));
  }
  void settle() {
    QCoreApplication::processEvents();
    m_scheduler.advance(std::chrono::seconds(1));
    QCoreApplication::processEvents();
  }
  void toggle(SidePanel panel) {
    action(panel == SidePanel::sidebar ? "toggleSidebar" : "toggleInspector")->trigger();
    settle();
  }
  // The middle of the selected topic in the window.
  QPoint selectedPlace() {
    const QPointF position = editor().nodeByID(*editor().firstSelectedNode())->position;
    const QPointF inView = position * editor().canvasZoom() + editor().canvasOffset();
    return window().canvas().mapTo(&window(), inView.toPoint());
  }
  bool isSelectionSeen() { return window().childAt(selectedPlace()) == &window().canvas(); }
};

TEST_F(FloatingPanelTest, ANewTopicDoesNotComeBelowIt) {
  toggle(SidePanel::inspector);
  notifications().post(Notification::createNode);
  settle();
  ASSERT_TRUE(editor().firstSelectedNode());
  EXPECT_TRUE(isSelectionSeen());
}

TEST_F(FloatingPanelTest, TheSelectedTopicComesFromBelowItWhenItOpens) {
  for (const SidePanel panel : {SidePanel::inspector, SidePanel::sidebar}) {
    editor().selectNode(editor().mindMap().nodes[0].id, false);
    editor().centerOn(editor().mindMap().nodes[0].id, 0, 0, true);
    const QSizeF room = window().canvas().size();
    const double share = panel == SidePanel::sidebar ? 0.2 : 0.8;
    editor().setCanvasOffset(editor().canvasOffset() + QPointF(room.width() * (share - 0.5), 0));
    toggle(panel);
    EXPECT_TRUE(isSelectionSeen());
    toggle(panel);
  }
}

TEST_F(FloatingPanelTest, WhatAnArrowSelectsDoesNotStayBelowIt) {
  const QPointF first = editor().mindMap().nodes[0].position;
  editor().createFreeNode(first.x() + 300, first.y());
  editor().selectNode(editor().mindMap().nodes[0].id, false);
  toggle(SidePanel::inspector);
  QTest::keyClick(&window().canvas(), Qt::Key_Right);
  settle();
  ASSERT_EQ(editor().firstSelectedNode(), editor().mindMap().nodes[1].id);
  EXPECT_TRUE(isSelectionSeen());
}

TEST_F(WindowPlaceTest, TheMapStaysInItsPlaceWhenAPanelGivesWay) {
  startActive();
  window().resize(1280, 800);
  const auto mapLeft = [this] {
    return window().canvas().mapTo(&window(), QPoint()).x() + editor().canvasOffset().x();
  };
  const double before = mapLeft();
  window().resize(640, 500);
  EXPECT_EQ(mapLeft(), before);
}

}  // namespace
}  // namespace quilmora
