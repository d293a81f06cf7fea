#include <QMenuBar>

#include "app/AppFixture.h"
#include "app/companions/CanvasCompanions.h"
#include "app/companions/MiniMapView.h"
#include "app/companions/SearchBar.h"
#include "app/inspectors/InspectorPanel.h"
#include "app/window/Sidebar.h"
#include "app/window/StatusLine.h"
#include "app/window/Toolbar.h"
#include "app/window/WindowPlace.h"

namespace quilmora {
namespace {

class PresentationScreenTest : public AppTest {
 protected:
  // What is visible besides the map.
  QStringList around() {
    QStringList names;
    const auto add = [&](const QWidget& widget, const char* name) {
      if (widget.isVisible()) names.append(QLatin1String(name));
    };
    add(*window().menuBar(), "menu bar");
    add(window().toolbar(), "toolbar");
    add(window().sidebar(), "sidebar");
    add(window().inspector(), "inspector");
    add(window().statusLine(), "status line");
    add(window().companions().miniMap(), "mini-map");
    add(window().companions().searchBar(), "search bar");
    return names;
  }
  void present() {
    notifications().post(Notification::togglePresentation);
    QCoreApplication::processEvents();
  }
};

TEST_F(PresentationScreenTest, TheMapHasTheScreenAloneAndEverythingComesBack) {
  startActive();
  editor().toggleSearch();
  const QStringList before = around();
  ASSERT_EQ(before.size(), 7);
  present();
  EXPECT_EQ(around(), QStringList());
  EXPECT_TRUE(window().isFullScreen());
  EXPECT_EQ(window().canvas().size(), window().size());
  EXPECT_TRUE(window().canvas().hasFocus());
  QTest::keyClick(&window().canvas(), Qt::Key_Escape);
  QCoreApplication::processEvents();
  EXPECT_FALSE(editor().isPresentationMode());
  EXPECT_FALSE(window().isFullScreen());
  EXPECT_EQ(around(), before);
}

TEST_F(PresentationScreenTest, AMaximizedWindowIsMaximizedAgain) {
  startActive();
  window().setWindowState(Qt::WindowMaximized);
  present();
  EXPECT_TRUE(window().isFullScreen());
  present();
  EXPECT_FALSE(window().isFullScreen());
  EXPECT_TRUE(window().isMaximized());
}

TEST_F(PresentationScreenTest, AFullScreenWindowStaysOne) {
  startActive();
  action("fullScreen")->trigger();
  present();
  EXPECT_FALSE(action("fullScreen")->isEnabled());
  present();
  EXPECT_TRUE(window().isFullScreen());
}

TEST_F(PresentationScreenTest, TheShownTopicHasNoRingAndNoHandle) {
  startActive();
  window().canvas().assumeQuickPainting();
  present();
  const QImage presented = window().canvas().grab().toImage();
  editor().clearSelection();
  EXPECT_EQ(window().canvas().grab().toImage(), presented);
}

TEST_F(PresentationScreenTest, NothingOfItReachesTheSettings) {
  startActive();
  present();
  QCoreApplication::processEvents();
  m_scheduler.advance(WindowPlace::storeDelay * 4);
  EXPECT_TRUE(isNothingStored());
}

TEST_F(PresentationScreenTest, TheTopicStaysInTheMiddleWhenTheScreenComes) {
  startActive();
  present();
  const QUuid shown = *editor().currentPresentationNode();
  window().resize(1000, 700);
  QCoreApplication::processEvents();
  const QPointF place = editor().nodeByID(shown)->position * editor().canvasZoom() + editor().canvasOffset();
  EXPECT_EQ(place, QRectF(window().canvas().rect()).center());
}

TEST_F(PresentationScreenTest, StepsAndKeysWorkWithoutTheMenuBar) {
  startActive();
  editor().createChild(editor().mindMap().nodes[0].id);
  QTest::keyClick(&window().canvas(), Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
  ASSERT_TRUE(editor().isPresentationMode());
  QTest::keyClick(&window().canvas(), Qt::Key_Right);
  EXPECT_EQ(editor().presentationNodeIndex(), 1);
  QTest::keyClick(&window().canvas(), Qt::Key_Delete);
  EXPECT_EQ(editor().mindMap().nodes.size(), 2U);
  QTest::keyClick(&window().canvas(), Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_FALSE(editor().isPresentationMode());
}

}  // namespace
}  // namespace quilmora
