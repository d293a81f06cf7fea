#include <QNativeGestureEvent>
#include <QPushButton>
#include <QToolTip>

#include "canvas/view/WindowRig.h"

using namespace quilmora;
using namespace quilmora::test;
using namespace std::chrono_literals;

namespace {

// The first topic is centred, so a canvas point p is shown at p + (300, 200).
struct CanvasWindow : testing::Test {
  CanvasWindow() { QApplication::setWheelScrollLines(3); }
  WindowRig rig{mapWith({topic(1, 100, 100), topic(2, 300, 100), topic(3, 300, 250)}, {{1, 2}})};
};

// Counts the paint events of a widget.
class PaintCounter : public QObject {
 public:
  explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++count;
    return false;
  }
  int count = 0;
};

}  // namespace

TEST_F(CanvasWindow, FirstAppearanceCentresTheFirstTopicAndStoresTheSize) {
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(300, 200));
  EXPECT_EQ(rig.editor.lastKnownCanvasSize(), QSizeF(800, 600));
  rig.view.resize(640, 480);
  EXPECT_EQ(rig.editor.lastKnownCanvasSize(), QSizeF(640, 480));
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(300, 200));
}

TEST_F(CanvasWindow, ClickSelectsAndShiftClickAdds) {
  rig.click(rig.at(1));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1)}));
  rig.click(rig.at(3), Qt::ShiftModifier);
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1), topicId(3)}));
  rig.click({10, 10});
  EXPECT_TRUE(rig.editor.selectedNodeIDs().empty());
}

TEST_F(CanvasWindow, ClickOnARibbonSelectsItsEdge) {
  rig.click({500, 300});
  EXPECT_EQ(rig.editor.selectedEdgeIDs(), IdSet({edgeId(0)}));
}

TEST_F(CanvasWindow, ClickOnTheBackgroundTakesTheKeyboard) {
  QPushButton elsewhere(&rig.window);
  elsewhere.show();
  elsewhere.setFocus();
  ASSERT_FALSE(rig.view.hasFocus());
  rig.click({10, 500});
  EXPECT_TRUE(rig.view.hasFocus());
}

TEST_F(CanvasWindow, DragMovesATopicAtItsEnd) {
  rig.drag(rig.at(3), rig.at(3, {40, -20}));
  EXPECT_EQ(rig.editor.nodeByID(topicId(3))->position, QPointF(340, 230));
  EXPECT_EQ(rig.editor.undoCount(), 1);
}

TEST_F(CanvasWindow, EscapeTakesADragBack) {
  const QPoint start = rig.at(3);
  rig.mouse(QTest::MousePress, start);
  rig.mouse(QTest::MouseMove, start + QPoint(60, 0));
  ASSERT_EQ(rig.view.gestures().state().nodeDragTranslation, QPointF(60, 0));
  rig.key(Qt::Key_Escape);
  EXPECT_EQ(rig.view.gestures().state().nodeDragTranslation, QPointF());
  rig.mouse(QTest::MouseRelease, start + QPoint(60, 0));
  EXPECT_EQ(rig.editor.nodeByID(topicId(3))->position, QPointF(300, 250));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(3)}));
}

TEST_F(CanvasWindow, LostWindowTakesADragBack) {
  rig.mouse(QTest::MousePress, rig.at(3));
  rig.mouse(QTest::MouseMove, rig.at(3, {60, 0}));
  ASSERT_TRUE(rig.view.gestures().isDragging());
  QEvent lost(QEvent::WindowDeactivate);
  QCoreApplication::sendEvent(&rig.view, &lost);
  EXPECT_FALSE(rig.view.gestures().isDragging());
  rig.mouse(QTest::MouseRelease, rig.at(3, {60, 0}));
  EXPECT_EQ(rig.editor.nodeByID(topicId(3))->position, QPointF(300, 250));
}

TEST_F(CanvasWindow, ControlDragHangsATopicUnderAnother) {
  rig.drag(rig.at(3), rig.at(1, {10, 5}), Qt::LeftButton, Qt::ControlModifier);
  EXPECT_EQ(rig.editor.treeInfo().parent(topicId(3)), topicId(1));
  EXPECT_EQ(rig.editor.nodeByID(topicId(3))->position, QPointF(300, 250));
}

TEST_F(CanvasWindow, DragOnTheBackgroundSelectsByABox) {
  rig.drag({560, 280}, {640, 480});
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(2), topicId(3)}));
  EXPECT_EQ(rig.editor.selectedEdgeIDs(), IdSet({edgeId(0)}));
}

TEST_F(CanvasWindow, AltDragAndMiddleDragPan) {
  rig.drag({20, 20}, {70, 40}, Qt::LeftButton, Qt::AltModifier);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(350, 220));
  rig.drag({20, 20}, {10, 25}, Qt::MiddleButton);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(340, 225));
  EXPECT_TRUE(rig.editor.selectedNodeIDs().empty());
}

TEST_F(CanvasWindow, PanningShowsAClosedHandAndLeavingTheArrow) {
  rig.mouse(QTest::MousePress, {20, 20}, Qt::MiddleButton);
  rig.mouse(QTest::MouseMove, {40, 20}, Qt::MiddleButton);
  EXPECT_EQ(rig.view.cursor().shape(), Qt::ClosedHandCursor);
  rig.mouse(QTest::MouseRelease, {40, 20}, Qt::MiddleButton);
  EXPECT_EQ(rig.view.cursor().shape(), Qt::ArrowCursor);
  QTest::keyPress(rig.handle(), Qt::Key_Alt);
  EXPECT_EQ(rig.view.cursor().shape(), Qt::OpenHandCursor);
  rig.window.hide();
  EXPECT_EQ(rig.view.cursor().shape(), Qt::ArrowCursor);
  EXPECT_FALSE(rig.editor.isCanvasHovered);
  EXPECT_FALSE(rig.view.gestures().state().isOptionHeld);
}

TEST_F(CanvasWindow, AltShowsAnOpenHand) {
  QTest::keyPress(rig.handle(), Qt::Key_Alt);
  EXPECT_EQ(rig.view.cursor().shape(), Qt::OpenHandCursor);
  QTest::keyRelease(rig.handle(), Qt::Key_Alt);
  EXPECT_EQ(rig.view.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(CanvasWindow, HandleOfTheSelectedTopicMakesAChildOnAClick) {
  rig.click(rig.at(3));
  const auto handle = rig.partBeside(3, CanvasTarget::Kind::connectionHandle);
  ASSERT_TRUE(handle);
  rig.click(rig.at(3, {*handle + 3, 0}));
  ASSERT_EQ(rig.editor.mindMap().nodes.size(), 4u);
  EXPECT_EQ(rig.editor.treeInfo().parent(rig.editor.mindMap().nodes.back().id), topicId(3));
}

TEST_F(CanvasWindow, CollapseToggleHidesTheBranch) {
  const auto toggle = rig.partBeside(1, CanvasTarget::Kind::collapseToggle);
  ASSERT_TRUE(toggle);
  rig.click(rig.at(1, {*toggle + 3, 0}));
  EXPECT_EQ(rig.editor.collapsedNodeIDs(), IdSet({topicId(1)}));
  rig.click(rig.at(2));
  EXPECT_FALSE(rig.editor.selectedNodeIDs().contains(topicId(2)));
}

TEST_F(CanvasWindow, ButtonsAndHandlesAnswerToThePointer) {
  rig.editor.selectNode(topicId(1), false);
  const auto colorAt = [&](QPoint point) { return rig.view.grab().toImage().pixelColor(point); };
  for (const auto kind : {CanvasTarget::Kind::collapseToggle, CanvasTarget::Kind::connectionHandle}) {
    const auto x = rig.partBeside(1, kind);
    ASSERT_TRUE(x);
    // Near the edge, away from the symbol.
    const QPoint probe = rig.at(1, {*x + 2, 0});
    rig.mouse(QTest::MouseMove, {20, 20});
    const QColor rest = colorAt(probe);
    rig.mouse(QTest::MouseMove, probe);
    const QColor hovered = colorAt(probe);
    EXPECT_NE(hovered, rest);
    rig.mouse(QTest::MousePress, probe);
    EXPECT_NE(colorAt(probe), hovered);
    EXPECT_NE(colorAt(probe), rest);
    // Escape ends the press, and, with nothing else to end, clears the selection.
    rig.key(Qt::Key_Escape);
    rig.mouse(QTest::MouseRelease, probe);
    rig.editor.selectNode(topicId(1), false);
    rig.mouse(QTest::MouseMove, {20, 20});
    EXPECT_EQ(colorAt(probe), rest);
  }
  EXPECT_EQ(rig.editor.mindMap().nodes.size(), 3u);
  EXPECT_TRUE(rig.editor.collapsedNodeIDs().empty());
}

TEST(CanvasHover, GivesUpInAHeapOfTopics) {
  std::vector<Node> nodes;
  for (int i = 1; i <= 2000; ++i) nodes.push_back(topic(i, 0, 0));
  WindowRig rig(mapWith(nodes));
  rig.editor.setSelectedNodeIDs({topicId(1)});
  // The handle of the lowest topic is not covered, but all the others would have to be measured to know that.
  EXPECT_FALSE(rig.partBeside(1, CanvasTarget::Kind::connectionHandle));
  for (int i = 2; i <= 1900; ++i) nodes[static_cast<std::size_t>(i - 1)].position = QPointF(0, 5000);
  rig.editor.setMindMap(mapWith(nodes));
  EXPECT_TRUE(rig.partBeside(1, CanvasTarget::Kind::connectionHandle));
}

TEST_F(CanvasWindow, ButtonsAndHandlesSayWhatTheyDo) {
  using Kind = CanvasTarget::Kind;
  const auto toolTipAt = [&](QPoint point) {
    rig.mouse(QTest::MouseMove, point);
    QHelpEvent event(QEvent::ToolTip, point, rig.view.mapToGlobal(point));
    QCoreApplication::sendEvent(&rig.view, &event);
    return QToolTip::text();
  };
  const QPoint toggle = rig.at(1, {rig.partBeside(1, Kind::collapseToggle).value(), 0});
  EXPECT_EQ(toolTipAt(toggle), QStringLiteral("Collapse Branch (Ctrl+[)"));
  rig.editor.toggleCollapsed(topicId(1));
  EXPECT_EQ(toolTipAt(toggle), QStringLiteral("Expand Branch (Ctrl+])"));
  rig.editor.toggleCollapsed(topicId(1));
  EXPECT_FALSE(rig.partBeside(3, Kind::connectionHandle));
  rig.editor.selectNode(topicId(3), false);
  EXPECT_EQ(toolTipAt(rig.at(3, {rig.partBeside(3, Kind::connectionHandle).value(), 0})),
            QStringLiteral("Add Sub-topic (Tab)\nDrag to connect"));
  rig.editor.selectEdge(edgeId(0), false);
  EXPECT_EQ(toolTipAt(rig.at(1)), QStringLiteral("Drag to another topic"));
  EXPECT_EQ(toolTipAt({500, 300}), QStringLiteral("Drag to bend"));
  toolTipAt({500, 400});
  EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
}

// --- Wheel and pinch ---

TEST_F(CanvasWindow, NotchOfTheWheelPansByTheDesktopsLines) {
  rig.wheel({400, 300}, {}, {0, 120});
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(300, 230));
  rig.wheel({400, 300}, {}, {-120, 0});
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(270, 230));
}

TEST_F(CanvasWindow, WheelWithShiftPansSideways) {
  rig.wheel({400, 300}, {}, {0, 120}, Qt::ShiftModifier);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(330, 200));
  rig.wheel({400, 300}, {}, {-120, 0}, Qt::ShiftModifier);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(300, 200));
}

TEST_F(CanvasWindow, WheelOfHighResolutionPansByParts) {
  rig.wheel({400, 300}, {}, {0, 15});
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(300, 203.75));
}

TEST_F(CanvasWindow, TrackpadPansByPixels) {
  rig.wheel({400, 300}, {7, -11}, {14, -22}, {}, Qt::ScrollUpdate);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(307, 189));
}

TEST_F(CanvasWindow, PixelsOfAWheelDoNotCount) {
  rig.wheel({400, 300}, {0, 15}, {0, 120});
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(300, 230));
}

TEST_F(CanvasWindow, ControlWheelZoomsAboutThePointer) {
  rig.wheel({500, 300}, {}, {0, 120}, Qt::ControlModifier);
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), 1.15);
  // The canvas point (200, 100) stays at (500, 300).
  EXPECT_DOUBLE_EQ(200 * 1.15 + rig.editor.canvasOffset().x(), 500);
  EXPECT_DOUBLE_EQ(100 * 1.15 + rig.editor.canvasOffset().y(), 300);
}

TEST_F(CanvasWindow, ControlAndTrackpadZoomAHundredthForEachPixel) {
  rig.wheel({400, 300}, {0, 10}, {0, 20}, Qt::ControlModifier, Qt::ScrollUpdate);
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), 1.1);
}

TEST_F(CanvasWindow, ControlAndAWheelOfHighResolutionZoomByParts) {
  rig.wheel({400, 300}, {}, {0, 12}, Qt::ControlModifier);
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), 1.015);
}

TEST_F(CanvasWindow, PinchOnATouchScreenZoomsAboutTheFingers) {
  std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
  const QPoint middle(500, 300);
  const auto fingers = [&](int apart) {
    return std::pair(middle - QPoint(apart / 2, 0), middle + QPoint(apart / 2, 0));
  };
  const auto [left, right] = fingers(100);
  QTest::touchEvent(rig.handle(), screen.get()).press(0, left).press(1, right);
  for (int apart = 110; apart <= 200; apart += 10) {
    const auto [nowLeft, nowRight] = fingers(apart);
    QTest::touchEvent(rig.handle(), screen.get()).move(0, nowLeft).move(1, nowRight);
  }
  const double zoom = rig.editor.canvasZoom();
  EXPECT_GT(zoom, 1.5);
  EXPECT_LE(zoom, 2.0);
  // The canvas point (200, 100) stays between the fingers.
  EXPECT_NEAR(200 * zoom + rig.editor.canvasOffset().x(), 500, 1);
  EXPECT_NEAR(100 * zoom + rig.editor.canvasOffset().y(), 300, 1);
  QTest::touchEvent(rig.handle(), screen.get()).release(0, fingers(200).first).release(1, fingers(200).second);
  EXPECT_DOUBLE_EQ(rig.view.gestures().state().initialZoom, zoom);
  EXPECT_TRUE(rig.editor.selectedNodeIDs().empty());
}

TEST_F(CanvasWindow, BlockedScrollingPassesTheWheelOn) {
  rig.editor.blockCanvasScroll = true;
  QWheelEvent event(QPointF(400, 300), rig.view.mapToGlobal(QPointF(400, 300)), {}, {0, 120}, Qt::NoButton, {},
                    Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&rig.view, &event);
  EXPECT_FALSE(event.isAccepted());
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(300, 200));
}

TEST_F(CanvasWindow, PinchOnATrackpadZooms) {
  const auto send = [&](Qt::NativeGestureType type, double value) {
    const QPointF at(500, 300);
    QNativeGestureEvent event(type, QPointingDevice::primaryPointingDevice(), 2, at, at, rig.view.mapToGlobal(at),
                              value, QPointF());
    QCoreApplication::sendEvent(&rig.view, &event);
    EXPECT_TRUE(event.isAccepted());
  };
  send(Qt::BeginNativeGesture, 0);
  send(Qt::ZoomNativeGesture, 0.25);
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), 1.25);
  send(Qt::ZoomNativeGesture, 0.2);
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), 1.5);
  EXPECT_DOUBLE_EQ(200 * 1.5 + rig.editor.canvasOffset().x(), 500);
  send(Qt::EndNativeGesture, 0);
  EXPECT_EQ(rig.view.gestures().state().initialZoom, 1.5);
}

// However a fit in motion is interrupted, the view is as if it had arrived at once.
TEST_F(CanvasWindow, WheelAndPinchInterruptAFitAsIfItHadBeenThereAtOnce) {
  rig.notifications.post(Notification::zoomToFit);
  rig.clock.advance(150ms);
  rig.scheduler.advance(16ms);
  const double fitted = 440.0 / 350.0;
  ASSERT_NE(rig.editor.canvasZoom(), fitted);
  rig.wheel({400, 300}, {}, {0, 120}, Qt::ControlModifier);
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), fitted * 1.15);
  EXPECT_EQ(rig.view.gestures().state().initialZoom, fitted);
  EXPECT_FALSE(rig.view.isAnimating());
  EXPECT_EQ(rig.scheduler.waitingCount(), 0u);
  rig.notifications.post(Notification::zoomToFit);
  rig.clock.advance(150ms);
  rig.scheduler.advance(16ms);
  const QPointF at(500, 300);
  QNativeGestureEvent pinch(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2, at, at,
                            rig.view.mapToGlobal(at), 0.5, QPointF());
  QCoreApplication::sendEvent(&rig.view, &pinch);
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), fitted * 1.5);
}

TEST_F(CanvasWindow, PressStopsAFitWhereItIs) {
  rig.notifications.post(Notification::zoomToFit);
  rig.clock.advance(150ms);
  rig.scheduler.advance(16ms);
  const double zoom = rig.editor.canvasZoom();
  rig.click(rig.at(3));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(3)}));
  EXPECT_EQ(rig.editor.canvasZoom(), zoom);
  EXPECT_EQ(rig.view.gestures().state().initialZoom, zoom);
}

// --- Keys ---

TEST_F(CanvasWindow, AltIsForTheCanvasUnderThePointerWhereverTheKeyboardIs) {
  QPushButton elsewhere(&rig.window);
  elsewhere.show();
  elsewhere.setFocus();
  QEnterEvent enter(QPointF(400, 300), QPointF(400, 300), rig.view.mapToGlobal(QPointF(400, 300)));
  QCoreApplication::sendEvent(&rig.view, &enter);
  QTest::keyPress(rig.handle(), Qt::Key_Alt);
  EXPECT_EQ(rig.view.cursor().shape(), Qt::OpenHandCursor);
  QTest::keyRelease(rig.handle(), Qt::Key_Alt);
  EXPECT_EQ(rig.view.cursor().shape(), Qt::ArrowCursor);
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(&rig.view, &leave);
  QTest::keyPress(rig.handle(), Qt::Key_Alt);
  EXPECT_EQ(rig.view.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(CanvasWindow, ToolTipDoesNotFollowThePointerOntoACard) {
  QWidget card(&rig.view);
  card.setGeometry(500, 400, 200, 150);
  card.show();
  ASSERT_TRUE(rig.partBeside(1, CanvasTarget::Kind::collapseToggle));
  ASSERT_TRUE(rig.view.gestures().state().hoveredPart);
  QEnterEvent enter(QPointF(5, 5), QPointF(505, 405), rig.view.mapToGlobal(QPointF(505, 405)));
  QCoreApplication::sendEvent(&card, &enter);
  EXPECT_FALSE(rig.view.gestures().state().hoveredPart);
  QHelpEvent help(QEvent::ToolTip, {5, 5}, card.mapToGlobal(QPoint(5, 5)));
  QCoreApplication::sendEvent(&card, &help);
  EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
}

TEST_F(CanvasWindow, TabMakesAChildAndNeverLeavesTheCanvas) {
  rig.click(rig.at(2));
  rig.key(Qt::Key_Tab);
  EXPECT_EQ(rig.editor.mindMap().nodes.size(), 4u);
  EXPECT_TRUE(rig.view.hasFocus());
  QPushButton next(&rig.window);
  next.show();
  rig.editor.clearSelection();
  rig.key(Qt::Key_Tab);
  rig.key(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(rig.editor.mindMap().nodes.size(), 4u);
  EXPECT_TRUE(rig.view.hasFocus());
}

TEST_F(CanvasWindow, DeleteAndBackspaceRemoveTheSelectedTopics) {
  rig.click(rig.at(2));
  rig.key(Qt::Key_Delete);
  EXPECT_EQ(rig.editor.mindMap().nodes.size(), 2u);
  rig.click(rig.at(3));
  rig.key(Qt::Key_Backspace);
  EXPECT_EQ(rig.editor.mindMap().nodes.size(), 1u);
}

TEST_F(CanvasWindow, ControlASelectsAll) {
  rig.key(Qt::Key_A, Qt::ControlModifier);
  rig.scheduler.advance(0ms);
  EXPECT_EQ(rig.editor.selectedNodeIDs().size(), 3u);
  rig.key(Qt::Key_Escape);
  EXPECT_TRUE(rig.editor.selectedNodeIDs().empty());
}

TEST_F(CanvasWindow, ArrowsMoveTheSelection) {
  rig.click(rig.at(1));
  rig.key(Qt::Key_Right);
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(2)}));
}

// --- Notifications ---

TEST_F(CanvasWindow, ZoomToFitGlidesAndThenRefreshesTheZoomOfThePinch) {
  rig.notifications.post(Notification::zoomToFit);
  EXPECT_EQ(rig.editor.canvasZoom(), 1.0);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(300, 200));
  rig.clock.advance(150ms);
  rig.scheduler.advance(16ms);
  // The target is 440 ÷ 350, as the height of the content is 350.
  EXPECT_NEAR(rig.editor.canvasZoom(), (1.0 + 440.0 / 350.0) / 2, 1e-12);
  EXPECT_EQ(rig.view.gestures().state().initialZoom, 1.0);
  rig.clock.advance(150ms);
  rig.scheduler.advance(16ms);
  EXPECT_EQ(rig.editor.canvasZoom(), 440.0 / 350.0);
  EXPECT_EQ(rig.view.gestures().state().initialZoom, 440.0 / 350.0);
  EXPECT_EQ(rig.scheduler.waitingCount(), 0u);
}

TEST_F(CanvasWindow, ZoomToFitJumpsWhileNobodySees) {
  rig.window.hide();
  rig.notifications.post(Notification::zoomToFit);
  EXPECT_EQ(rig.editor.canvasZoom(), 440.0 / 350.0);
  EXPECT_EQ(rig.scheduler.waitingCount(), 0u);
}

TEST_F(CanvasWindow, ZoomInAndOutKeepTheMiddle) {
  rig.notifications.post(Notification::zoomIn);
  EXPECT_EQ(rig.editor.canvasZoom(), 1.25);
  EXPECT_EQ(rig.at(1), QPoint(400, 300));
  rig.notifications.post(Notification::zoomOut);
  EXPECT_EQ(rig.editor.canvasZoom(), 1.0);
}

TEST_F(CanvasWindow, RequestForARegionMakesItWhereThePointerIs) {
  rig.mouse(QTest::MouseMove, {500, 450});
  rig.notifications.post(Notification::createRegion);
  ASSERT_EQ(rig.editor.mindMap().regions.size(), 1u);
  EXPECT_EQ(rig.editor.mindMap().regions[0].rect, QRectF(200 - 150, 250 - 100, 300, 200));
}

TEST_F(CanvasWindow, RequestForARegionMakesItInTheMiddleWithoutThePointer) {
  rig.mouse(QTest::MouseMove, {500, 450});
  QEvent left(QEvent::Leave);
  QCoreApplication::sendEvent(&rig.view, &left);
  rig.editor.setCanvasZoom(2.0);
  rig.editor.setCanvasOffset({0, 0});
  rig.notifications.post(Notification::createRegion);
  ASSERT_EQ(rig.editor.mindMap().regions.size(), 1u);
  EXPECT_EQ(rig.editor.mindMap().regions[0].rect, QRectF(200 - 150, 150 - 100, 300, 200));
}

// --- Drawing ---

TEST_F(CanvasWindow, PaintsOnceForManyChangesAndNotAtAllForNone) {
  QApplication::processEvents();
  PaintCounter paints(rig.view);
  rig.editor.setCanvasOffset({1, 2});
  rig.editor.setCanvasZoom(1.5);
  rig.editor.setSelectedNodeIDs({topicId(1)});
  rig.editor.setNodeTitle(topicId(1), QStringLiteral("Changed"));
  EXPECT_EQ(paints.count, 0);
  QApplication::processEvents();
  EXPECT_EQ(paints.count, 1);
  rig.mouse(QTest::MouseMove, {15, 15});
  rig.mouse(QTest::MouseMove, {18, 19});
  QApplication::processEvents();
  EXPECT_EQ(paints.count, 1);
  EXPECT_EQ(rig.scheduler.waitingCount(), 0u);
}

TEST_F(CanvasWindow, DrawsTheBackgroundAndTheTopicsOfTheMap) {
  const QImage picture = rig.view.grab().toImage();
  EXPECT_EQ(picture.pixelColor(5, 5), QColor(rig.editor.mindMap().canvas.background));
  EXPECT_EQ(picture.pixelColor(rig.at(3, {-20, -12})), QColor(rig.editor.nodeByID(topicId(3))->style.fill));
}

TEST_F(CanvasWindow, DrawsTheSelectionBoxWhileItIsPulled) {
  const QColor before = rig.view.grab().toImage().pixelColor(100, 100);
  rig.mouse(QTest::MousePress, {50, 50});
  rig.mouse(QTest::MouseMove, {150, 150});
  EXPECT_NE(rig.view.grab().toImage().pixelColor(100, 100), before);
  rig.mouse(QTest::MouseRelease, {150, 150});
  EXPECT_EQ(rig.view.grab().toImage().pixelColor(100, 100), before);
}
