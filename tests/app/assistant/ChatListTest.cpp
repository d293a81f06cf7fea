#include <QClipboard>

#include "app/assistant/ChatFixture.h"

namespace quilmora {
namespace {

using ChatListTest = ChatTest;

// --- Keys and selecting ---

TEST_F(ChatListTest, TabWalksOnceThroughTheChatAndOn) {
  openChat();
  ask("create a map about tea");
  ask("create a map about coffee");
  chatView().header().clearButton().setFocus();
  QList<QWidget*> seen;
  for (int step = 0; step < 5; ++step) {
    press(Qt::Key_Tab);
    seen.append(QApplication::focusWidget());
  }
  EXPECT_EQ(seen, QList<QWidget*>({&chatView().header().providerButton(), bubbles()[3], bubbles()[3]->applyButton(),
                                   &chatView().input(), QApplication::focusWidget()}));
  EXPECT_FALSE(chatView().isAncestorOf(QApplication::focusWidget()));
  chatView().input().setFocus();
  press(Qt::Key_Tab, Qt::ShiftModifier);
  press(Qt::Key_Tab, Qt::ShiftModifier);
  EXPECT_TRUE(bubbles()[3]->hasFocus());
}

TEST_F(ChatListTest, ArrowsStepThroughTheMessages) {
  openChat();
  ask("create a map about tea");
  ask("create a map about coffee");
  bubbles()[3]->setFocus(Qt::TabFocusReason);
  press(Qt::Key_Up);
  EXPECT_TRUE(bubbles()[2]->hasFocus());
  press(Qt::Key_Home);
  EXPECT_TRUE(bubbles()[0]->hasFocus());
  press(Qt::Key_Up);
  EXPECT_TRUE(bubbles()[0]->hasFocus());
  press(Qt::Key_End);
  EXPECT_TRUE(bubbles()[3]->hasFocus());
  press(Qt::Key_Return);
  EXPECT_GT(map().nodes.size(), 1u);
  press(Qt::Key_Escape);
  EXPECT_EQ(QApplication::focusWidget(), &window().canvas());
}

TEST_F(ChatListTest, KeysOnAMessageNeverReachTheMap) {
  openChat();
  ask("hello");
  editor().selectAll();
  bubbles()[1]->setFocus();
  for (const int key : {Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Space, Qt::Key_Left, Qt::Key_Right}) press(key);
  press(Qt::Key_A, Qt::ControlModifier);
  press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(map().nodes.size(), 1u);
  EXPECT_TRUE(editor().copiedNodes().empty());
}

TEST_F(ChatListTest, TextIsSelectedAndCopied) {
  useClaude();
  openChat();
  hear(QStringLiteral("one **two** three"));
  ChatBubble* bubble = bubbles()[1];
  EXPECT_EQ(bubble->text().text(), QStringLiteral("one two three"));
  bubble->setFocus();
  press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("one two three"));
  for (int step = 0; step < 3; ++step) press(Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_EQ(bubble->selectedText(), QStringLiteral("one"));
  press(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
  press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text().trimmed(), QStringLiteral("one"));
  press(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(bubble->selectedText(), QStringLiteral("one two three"));
  chatView().input().setFocus();
  EXPECT_EQ(bubble->selectedText(), QString());
  QGuiApplication::clipboard()->clear();
}

TEST_F(ChatListTest, TheMouseSelectsLettersAndWords) {
  useClaude();
  openChat();
  hear(QStringLiteral("alpha beta"));
  ChatBubble* bubble = bubbles()[1];
  const QPoint start(ChatBubble::indent + 10, 12);
  const auto send = [&](QEvent::Type type, QPoint place, Qt::MouseButton button, Qt::MouseButtons held) {
    QMouseEvent event(type, place, bubble->mapToGlobal(place), button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(bubble, &event);
  };
  send(QEvent::MouseButtonPress, start, Qt::LeftButton, Qt::LeftButton);
  send(QEvent::MouseMove, start + QPoint(500, 0), Qt::NoButton, Qt::LeftButton);
  send(QEvent::MouseButtonRelease, start + QPoint(500, 0), Qt::LeftButton, Qt::NoButton);
  EXPECT_EQ(bubble->selectedText(), QStringLiteral("alpha beta"));
  QTest::mouseDClick(bubble, Qt::LeftButton, {}, start + QPoint(3, 0));
  EXPECT_EQ(bubble->selectedText(), QStringLiteral("alpha"));
}

TEST_F(ChatListTest, NothingInAReplyIsMarkupOrALink) {
  useClaude();
  openChat();
  const QString reply = QStringLiteral("<b>x</b> [a](https://example.org) https://example.org # y `z` *w*");
  hear(reply);
  EXPECT_EQ(textOf(1), reply);
  EXPECT_TRUE(bubbles()[1]->text().bold().empty());
}

// --- Scrolling ---

TEST_F(ChatListTest, ScrollsToTheNewestUnlessThePersonScrolledUp) {
  useClaude();
  openChat();
  for (int i = 0; i < 12; ++i) hear(QStringLiteral("line\nline\nline\nline"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return list().isMeasured(); }));
  EXPECT_GT(bar().maximum(), 0);
  EXPECT_EQ(bar().value(), bar().maximum());
  bar().setValue(40);
  EXPECT_FALSE(list().followsNewest());
  hear(QStringLiteral("more"));
  settle();
  EXPECT_EQ(bar().value(), 40);
  bar().setValue(bar().maximum());
  hear(QStringLiteral("still more"));
  settle();
  EXPECT_EQ(bar().value(), bar().maximum());
}

TEST_F(ChatListTest, SendingBringsTheOwnWordsIntoSight) {
  useClaude();
  openChat();
  for (int i = 0; i < 12; ++i) hear(QStringLiteral("line\nline\nline\nline"));
  bar().setValue(0);
  type("mine");
  press(Qt::Key_Return);
  settle();
  EXPECT_EQ(bar().value(), bar().maximum());
}

TEST_F(ChatListTest, AReplyOfAMegabyteIsShapedOnlyWhereItShows) {
  useClaude();
  openChat();
  QString reply;
  while (reply.size() < 1'000'000)
    reply += QStringLiteral("Some words of a long reply, number %1.\n").arg(reply.size());
  hear(reply);
  ChatBubble* bubble = bubbles()[1];
  ASSERT_TRUE(QTest::qWaitFor([&] { return list().isMeasured(); }, 30'000));
  EXPECT_EQ(bar().value(), bar().maximum());
  bar().setValue(bar().maximum() / 2);
  window().repaint();
  EXPECT_LT(bubble->text().shapedCount(), 4u);
  EXPECT_GT(bubble->height(), 300'000);
  const int value = bar().value();
  settle();
  EXPECT_EQ(bar().value(), value);
}

TEST_F(ChatListTest, WhatIsReadStaysWhileTheRestIsMeasured) {
  useClaude();
  openChat();
  QString reply;
  for (int i = 0; i < 4000; ++i) reply += QStringLiteral("iiiiiiii WWWWWWWW %1 ").arg(i);
  hear(reply);
  ChatBubble* bubble = bubbles()[1];
  bar().setValue(bubble->y() + bubble->height() / 3);
  const auto readWord = [&] {
    return const_cast<MessageText&>(bubble->text()).positionAt(QPointF(0, bar().value() - bubble->y()));
  };
  const qsizetype before = readWord();
  ASSERT_TRUE(QTest::qWaitFor([&] { return list().isMeasured(); }, 30'000));
  EXPECT_NEAR(static_cast<double>(readWord()), static_cast<double>(before), 80.0);
}

}  // namespace
}  // namespace quilmora
