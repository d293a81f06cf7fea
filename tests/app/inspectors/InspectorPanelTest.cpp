#include <QKeyEvent>
#include <QLineEdit>
#include <QWheelEvent>

#include "app/inspectors/InspectorsFixture.h"
#include "app/look/ThemeSwatch.h"

namespace quilmora::test {
namespace {

TEST_F(InspectorsTest, TheSelectionDecidesWhichInspectorShows) {
  start();
  EXPECT_EQ(kind(), QStringLiteral("CanvasInspector"));
  select({2});
  EXPECT_EQ(kind(), QStringLiteral("NodeInspector"));
  select({2, 3});
  EXPECT_EQ(kind(), QStringLiteral("MultiNodeInspector"));
  selectEdges({0});
  EXPECT_EQ(kind(), QStringLiteral("EdgeInspector"));
  selectEdges({0, 1});
  EXPECT_EQ(kind(), QStringLiteral("MultiEdgeInspector"));
  selectEdges({});
  EXPECT_EQ(kind(), QStringLiteral("CanvasInspector"));
}

TEST_F(InspectorsTest, SeveralTopicsComeBeforeSeveralConnectorsAndTheseBeforeOneTopic) {
  start();
  editor().setSelectedNodeIDs({topicId(1), topicId(2)});
  editor().setSelectedEdgeIDs({edgeId(0), edgeId(1)});
  settle();
  EXPECT_EQ(kind(), QStringLiteral("MultiNodeInspector"));
  editor().setSelectedNodeIDs({topicId(1)});
  settle();
  EXPECT_EQ(kind(), QStringLiteral("MultiEdgeInspector"));
  editor().setSelectedEdgeIDs({edgeId(0)});
  settle();
  EXPECT_EQ(kind(), QStringLiteral("NodeInspector"));
}

TEST_F(InspectorsTest, IdsThatNameNothingAreNotSelected) {
  start();
  editor().setSelectedNodeIDs({topicId(1), topicId(77)});
  settle();
  EXPECT_EQ(kind(), QStringLiteral("NodeInspector"));
  editor().setSelectedNodeIDs({topicId(77), topicId(78)});
  editor().setSelectedEdgeIDs({edgeId(77), edgeId(78)});
  settle();
  EXPECT_EQ(kind(), QStringLiteral("CanvasInspector"));
}

TEST_F(InspectorsTest, NothingShowsOfATopicThatWasDeleted) {
  start();
  select({2});
  editor().deleteNode(topicId(2));
  settle();
  EXPECT_EQ(kind(), QStringLiteral("CanvasInspector"));
  select({3});
  press("Delete Topic");
  EXPECT_EQ(kind(), QStringLiteral("CanvasInspector"));
  EXPECT_TRUE(m_canvas->hasFocus());
}

TEST_F(InspectorsTest, AlignmentIsNotOfferedForOneTopic) {
  start();
  select({1});
  EXPECT_FALSE(has<QAbstractButton>("Left"));
  select({1, 2});
  EXPECT_TRUE(has<QAbstractButton>("Left"));
}

TEST_F(InspectorsTest, WhatIsNotSeenIsNotBuilt) {
  start();
  EXPECT_EQ(m_panel->findChildren<Inspector*>().size(), 1);
  m_panel->hide();
  select({1});
  EXPECT_EQ(m_panel->findChildren<Inspector*>().size(), 1);
  m_panel->show();
  settle();
  EXPECT_EQ(kind(), QStringLiteral("NodeInspector"));
  EXPECT_EQ(control<QLineEdit>("Title").text(), QStringLiteral("Topic 1"));
}

TEST_F(InspectorsTest, WhatWasTypedGoesToTheTopicThatItWasTypedFor) {
  start();
  select({2});
  auto& title = control<QLineEdit>("Title");
  title.setFocus();
  title.selectAll();
  QTest::keyClicks(&title, QStringLiteral("Harbour"));
  auto& link = control<QLineEdit>("Link");
  link.setFocus();
  QTest::keyClicks(&link, QStringLiteral("https://example.org"));
  auto& notes = control<CopyNotes>("Notes");
  notes.setFocus();
  QTest::keyClicks(&notes, QStringLiteral("By boat"));
  // The selection changes while the field still has the keyboard.
  select({3});
  EXPECT_EQ(node(2).title, QStringLiteral("Harbour"));
  EXPECT_EQ(node(2).url, QStringLiteral("https://example.org"));
  EXPECT_EQ(node(2).notes, QStringLiteral("By boat"));
  EXPECT_EQ(node(3), topic(3, 100, 40));
  EXPECT_EQ(title.text(), QStringLiteral("Topic 3"));
  EXPECT_EQ(link.text(), QString());
  EXPECT_EQ(notes.toPlainText(), QString());
}

TEST_F(InspectorsTest, WhatWasTypedIsKeptWhenAnotherInspectorComes) {
  start();
  const std::vector<std::function<void()>> ways = {[this] { selectEdges({0}); }, [this] { select({}); },
                                                   [this] {
                                                     select({1, 3});
                                                   },
                                                   [this] { m_panel->hide(); }};
  for (const auto& leave : ways) {
    select({2});
    auto& title = control<QLineEdit>("Title");
    title.setFocus();
    title.setText(QString());
    QTest::keyClicks(&title, QStringLiteral("Kept"));
    leave();
    EXPECT_EQ(node(2).title, QStringLiteral("Kept"));
    m_panel->show();
    editor().setNodeTitle(topicId(2), QString());
    settle();
  }
}

TEST_F(InspectorsTest, WhatWasTypedForADeletedTopicIsDropped) {
  start();
  select({2});
  auto& title = control<QLineEdit>("Title");
  title.setFocus();
  QTest::keyClicks(&title, QStringLiteral("Gone"));
  editor().deleteNode(topicId(2));
  rest();
  settle();
  m_canvas->setFocus();
  EXPECT_EQ(steps(), 0);
  EXPECT_EQ(kind(), QStringLiteral("CanvasInspector"));
}

TEST_F(InspectorsTest, EscapeGivesTheKeyboardBackToTheCanvas) {
  start();
  select({2});
  auto& title = control<QLineEdit>("Title");
  title.setFocus();
  QTest::keyClicks(&title, QStringLiteral("Never mind"));
  QTest::keyClick(&title, Qt::Key_Escape);
  EXPECT_TRUE(m_canvas->hasFocus());
  EXPECT_EQ(title.text(), QStringLiteral("Topic 2"));
  EXPECT_EQ(node(2).title, QStringLiteral("Topic 2"));
  select({});
  slider("Root Width").setFocus();
  QTest::keyClick(&slider("Root Width"), Qt::Key_Escape);
  EXPECT_TRUE(m_canvas->hasFocus());
}

TEST_F(InspectorsTest, KeysThatNoControlUsesNeverReachTheMap) {
  struct Window : QWidget {
    void keyPressEvent(QKeyEvent* event) override { seen.append(event->key()); }
    QList<int> seen;
  } window;
  start();
  m_panel->setParent(&window);
  m_panel->show();
  window.show();
  select({2});
  auto& button = control<QAbstractButton>("Delete Topic");
  for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Left, Qt::Key_Down, Qt::Key_A, Qt::Key_Return})
    QTest::keyClick(&button, key);
  EXPECT_EQ(window.seen, QList<int>());
  QTest::keyClick(&button, Qt::Key_F6);
  QTest::keyClick(&button, Qt::Key_D, Qt::ControlModifier);
  EXPECT_EQ(window.seen, (QList<int>{Qt::Key_F6, Qt::Key_Control, Qt::Key_D}));
  m_panel->setParent(m_window.get());
}

TEST_F(InspectorsTest, TheWheelNeverChangesAValue) {
  start();
  StepSlider& width = slider("Root Width");
  const int before = width.value();
  QWheelEvent turn(QPointF(5, 5), width.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&width, &turn);
  EXPECT_EQ(width.value(), before);
  EXPECT_FALSE(turn.isAccepted());
  auto& lens = control<PanelPicker>("Focus Lens");
  QCoreApplication::sendEvent(&lens, &turn);
  EXPECT_EQ(lens.currentIndex(), 0);
}

}  // namespace
}  // namespace quilmora::test
