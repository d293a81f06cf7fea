#pragma once

#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>
#include <gtest/gtest.h>

#include "canvas/view/CanvasMaps.h"
#include "canvas/view/CanvasView.h"
#include "canvas/view/TitleEditor.h"
#include "editor/WindowCommands.h"
#include "platform/Bookmarks.h"
#include "platform/Log.h"
#include "platform/Scheduler.h"
#include "platform/SettingsStore.h"
#include "support/QtPrinters.h"

namespace quilmora::test {

// The canvas in a window of 800 × 600, fed with events as the platform sends them.
class WindowRig {
 public:
  explicit WindowRig(MindMap map) : editor(std::move(map), EditorServices{clock, settings, bookmarks, log}) {
    // However slow the machine is, each frame is complete.
    view.assumeQuickPainting();
    window.resize(800, 600);
    view.setGeometry(0, 0, 800, 600);
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    view.setFocus();
    QApplication::processEvents();
  }

  ManualClock clock;
  ManualScheduler scheduler;
  MemorySettingsStore settings;
  PathBookmarks bookmarks;
  MemoryLog log;
  NotificationCenter notifications;
  MindMapViewModel editor;
  WindowCommands commands{editor};
  QWidget window;
  CanvasView view{editor, commands, notifications, scheduler, clock, &window};

  QWindow* handle() { return window.windowHandle(); }
  // Where a topic's centre is shown, plus an offset in view pixels.
  QPoint at(int number, QPoint offset = {}) {
    const QPointF shown = editor.nodeByID(topicId(number))->position * editor.canvasZoom() + editor.canvasOffset();
    return shown.toPoint() + offset;
  }
  void mouse(QTest::MouseAction action, QPoint to, Qt::MouseButton button = Qt::LeftButton,
             Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseEvent(action, handle(), action == QTest::MouseMove ? Qt::NoButton : button, modifiers, to);
  }
  void click(QPoint to, Qt::KeyboardModifiers modifiers = {}) {
    mouse(QTest::MousePress, to, Qt::LeftButton, modifiers);
    mouse(QTest::MouseRelease, to, Qt::LeftButton, modifiers);
  }
  void drag(QPoint from, QPoint to, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers modifiers = {}) {
    mouse(QTest::MouseMove, from, button, modifiers);
    mouse(QTest::MousePress, from, button, modifiers);
    mouse(QTest::MouseMove, (from + to) / 2, button, modifiers);
    mouse(QTest::MouseMove, to, button, modifiers);
    mouse(QTest::MouseRelease, to, button, modifiers);
  }
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(handle(), key, modifiers); }
  // Each letter goes to the widget that has the keyboard by then.
  void type(const QString& text) {
    for (const QChar letter : text) QTest::keyClicks(QApplication::focusWidget(), QString(letter));
  }
  // How far right of a topic's centre, in view pixels, the pointer first hits this button or handle.
  std::optional<int> partBeside(int number, CanvasTarget::Kind kind) {
    for (int x = -120; x <= 120; ++x) {
      mouse(QTest::MouseMove, at(number, {x, 0}));
      if (view.gestures().state().hoveredPart == CanvasTarget{kind, topicId(number)}) return x;
    }
    return std::nullopt;
  }
  void wheel(QPoint to, QPoint pixelDelta, QPoint angleDelta, Qt::KeyboardModifiers modifiers = {},
             Qt::ScrollPhase phase = Qt::NoScrollPhase) {
    QWheelEvent event(to, view.mapToGlobal(to), pixelDelta, angleDelta, Qt::NoButton, modifiers, phase, false);
    QCoreApplication::sendEvent(&view, &event);
  }
  // Double-clicks the topic and waits until the title field has the keyboard.
  TitleEditor* editTitleOf(int number) {
    QTest::mouseDClick(handle(), Qt::LeftButton, {}, at(number));
    scheduler.advance(TitleEditor::focusDelay);
    return view.titleEditor();
  }
  QString titleOf(int number) { return editor.nodeByID(topicId(number))->title; }
};

}  // namespace quilmora::test
