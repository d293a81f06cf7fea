#include <QInputMethodEvent>

#include "canvas/view/WindowRig.h"

using namespace quilmora;
using namespace quilmora::test;
using namespace std::chrono_literals;

namespace {

struct Typing : testing::Test {
  WindowRig rig{mapWith({topic(1, 100, 100), topic(2, 300, 100), topic(3, 300, 250)}, {{1, 2}})};

  void expectNoField() { EXPECT_EQ(rig.view.titleEditor(), nullptr); }
};

}  // namespace

TEST_F(Typing, LetterOpensTheTitleOfTheSelectedTopicInItsPlace) {
  rig.click(rig.at(1));
  rig.type(QStringLiteral("Hello"));
  ASSERT_NE(rig.view.titleEditor(), nullptr);
  EXPECT_EQ(rig.view.titleEditor()->editableTitle(), QStringLiteral("Hello"));
  rig.key(Qt::Key_Return);
  EXPECT_EQ(rig.titleOf(1), QStringLiteral("Hello"));
  EXPECT_EQ(rig.editor.undoCount(), 1);
}

TEST_F(Typing, EscapeBringsTheOldTitleBack) {
  rig.click(rig.at(1));
  rig.type(QStringLiteral("Ab"));
  rig.key(Qt::Key_Escape);
  expectNoField();
  EXPECT_EQ(rig.titleOf(1), QStringLiteral("Topic 1"));
  EXPECT_EQ(rig.editor.undoCount(), 0);
}

TEST_F(Typing, GoesToATopicThatWasJustMade) {
  rig.commands.createNode();
  rig.type(QStringLiteral("New"));
  rig.key(Qt::Key_Return);
  EXPECT_EQ(rig.editor.mindMap().nodes.back().title, QStringLiteral("New"));
}

TEST_F(Typing, NeedsExactlyOneTopicAndNothingElseGoingOn) {
  rig.type(QStringLiteral("a"));
  expectNoField();
  rig.editor.setSelectedNodeIDs({topicId(1), topicId(2)});
  rig.type(QStringLiteral("a"));
  expectNoField();
  rig.editor.setSelectedNodeIDs({topicId(77)});
  rig.type(QStringLiteral("a"));
  expectNoField();
  rig.editor.setSelectedNodeIDs({topicId(1)});
  rig.editor.setIsPresentationMode(true);
  rig.type(QStringLiteral("a"));
  expectNoField();
  rig.editor.setIsPresentationMode(false);
  rig.editor.startEdgeCreation();
  rig.type(QStringLiteral("a"));
  expectNoField();
}

TEST_F(Typing, CommandsStayCommands) {
  rig.click(rig.at(1));
  rig.key(Qt::Key_Space);
  rig.scheduler.advance(0ms);
  EXPECT_EQ(rig.editor.quickLookNodeID(), topicId(1));
  rig.key(Qt::Key_B, Qt::ControlModifier);
  rig.key(Qt::Key_B, Qt::AltModifier);
  rig.key(Qt::Key_Home);
  expectNoField();
  rig.type(QStringLiteral("A"));
  EXPECT_NE(rig.view.titleEditor(), nullptr);
}

TEST_F(Typing, InputMethodComposesInTheTitleFromTheFirstLetterOn) {
  EXPECT_FALSE(rig.view.testAttribute(Qt::WA_InputMethodEnabled));
  rig.click(rig.at(1));
  EXPECT_TRUE(rig.view.testAttribute(Qt::WA_InputMethodEnabled));
  QInputMethodEvent composing(QStringLiteral("ni"), {});
  QCoreApplication::sendEvent(&rig.view, &composing);
  ASSERT_NE(rig.view.titleEditor(), nullptr);
  EXPECT_EQ(rig.view.titleEditor()->shownTitle(), QStringLiteral("ni"));
  QInputMethodEvent done;
  done.setCommitString(QString(QChar(0x4F60)));
  QCoreApplication::sendEvent(&rig.view, &done);
  EXPECT_EQ(rig.view.titleEditor()->editableTitle(), QString(QChar(0x4F60)));
  EXPECT_TRUE(rig.view.titleEditor()->hasFocus());
  rig.key(Qt::Key_Escape);
  EXPECT_EQ(rig.titleOf(1), QStringLiteral("Topic 1"));
  rig.editor.clearSelection();
  EXPECT_FALSE(rig.view.testAttribute(Qt::WA_InputMethodEnabled));
}
