#include "app/outline/OutlineFixture.h"

namespace quilmora::test {
namespace {

class OutlineKeysTest : public OutlineTest {};

TEST_F(OutlineKeysTest, TheMenuKeyOpensTheMenuOfTheCurrentRow) {
  openActive(family());
  list().showRow(row(3));
  QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
  QCoreApplication::sendEvent(&list(), &event);
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  menu->actions().last()->trigger();
  menu->close();
  EXPECT_FALSE(editor().hasNode(topicId(3)));
  list().setFocus();
  key(Qt::Key_F10, Qt::ShiftModifier);
  ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  QApplication::activePopupWidget()->close();
}

TEST_F(OutlineKeysTest, ArrowsHomeAndEndWalkThroughTheRows) {
  openActive(family());
  key(Qt::Key_Home);
  EXPECT_EQ(editor().selectedNodeIDs(), IdSet({topicId(1)}));
  key(Qt::Key_Down);
  key(Qt::Key_Down);
  EXPECT_EQ(editor().selectedNodeIDs(), IdSet({topicId(4)}));
  key(Qt::Key_Up);
  EXPECT_EQ(editor().selectedNodeIDs(), IdSet({topicId(2)}));
  key(Qt::Key_End);
  EXPECT_EQ(editor().selectedNodeIDs(), IdSet({topicId(5)}));
  EXPECT_EQ(current(), QStringLiteral("Topic 5"));
}

TEST_F(OutlineKeysTest, LeftAndRightFoldExpandAndChangeTheLevel) {
  openActive(family());
  key(Qt::Key_Home);
  key(Qt::Key_Right);
  EXPECT_EQ(current(), QStringLiteral("Topic 2"));
  key(Qt::Key_Left);
  EXPECT_EQ(titles(), lines({"Topic 1", "Topic 2", "Topic 3", "Topic 5"}));
  EXPECT_EQ(current(), QStringLiteral("Topic 2"));
  key(Qt::Key_Left);
  EXPECT_EQ(current(), QStringLiteral("Topic 1"));
  key(Qt::Key_Down);
  key(Qt::Key_Right);
  EXPECT_EQ(titles().size(), 5);
  EXPECT_EQ(current(), QStringLiteral("Topic 2"));
  key(Qt::Key_Right);
  key(Qt::Key_Right);
  EXPECT_EQ(current(), QStringLiteral("Topic 4")) << "a leaf leads nowhere";
}

TEST_F(OutlineKeysTest, LettersGoToTheNextTitleThatBeginsWithThem) {
  MindMap map = mapOf({1, 2, 3, 4});
  const char* names[] = {"Apple", "Banana", "berry", "Blue sky"};
  for (std::size_t i = 0; i < 4; ++i) map.nodes.update(i, [&](Node& node) { node.title = QLatin1String(names[i]); });
  openActive(std::move(map));
  type("b");
  EXPECT_EQ(current(), QStringLiteral("Banana"));
  type("b");
  EXPECT_EQ(current(), QStringLiteral("berry")) << "the same letter goes on";
  list().keyboardSearch(QStringLiteral("x"));
  EXPECT_EQ(current(), QStringLiteral("berry"));
  key(Qt::Key_Home);
  type("blue s");
  EXPECT_EQ(current(), QStringLiteral("Blue sky"));
  EXPECT_EQ(editor().selectedNodeIDs(), IdSet({topicId(4)}));
}

TEST_F(OutlineKeysTest, DeleteTakesWhatIsSelectedElseTheCurrentRow) {
  openActive(family());
  editor().setSelectedNodeIDs({topicId(4), topicId(5)});
  AIRig::settle();
  key(Qt::Key_Delete);
  EXPECT_EQ(titles(), lines({"Topic 1", "Topic 2", "Topic 3"}));
  EXPECT_EQ(editor().undoCount(), 1);
  list().showRow(row(3));
  key(Qt::Key_Delete);
  EXPECT_EQ(titles(), lines({"Topic 1", "Topic 2"}));
  EXPECT_EQ(editor().undoCount(), 2);
}

TEST_F(OutlineKeysTest, F2RenamesInPlace) {
  openActive(family());
  list().showRow(row(3));
  key(Qt::Key_F2);
  QLineEdit* field = list().renameField();
  ASSERT_NE(field, nullptr);
  EXPECT_EQ(field->text(), QStringLiteral("Topic 3"));
  EXPECT_EQ(field->selectedText(), QStringLiteral("Topic 3"));
  EXPECT_EQ(field->accessibleName(), QStringLiteral("Title"));
  EXPECT_TRUE(list().visualRect(index(row(3))).contains(field->geometry()));
  type("new");
  EXPECT_EQ(m_rig->node(2).title, QStringLiteral("Topic 3")) << "not before it ends";
  key(Qt::Key_Return);
  EXPECT_EQ(m_rig->node(2).title, QStringLiteral("new"));
  EXPECT_EQ(editor().undoCount(), 1);
  EXPECT_EQ(list().renameField(), nullptr);
  EXPECT_TRUE(list().hasFocus());
}

TEST_F(OutlineKeysTest, EscapeAndAnUnchangedTitleChangeNothing) {
  openActive(family());
  list().showRow(row(3));
  key(Qt::Key_F2);
  type("new");
  key(Qt::Key_Escape);
  EXPECT_EQ(m_rig->node(2).title, QStringLiteral("Topic 3"));
  EXPECT_TRUE(list().hasFocus());
  key(Qt::Key_F2);
  key(Qt::Key_Return);
  EXPECT_EQ(editor().undoCount(), 0);
}

TEST_F(OutlineKeysTest, AClickOnAnotherRowKeepsTheTitleOfTheTopicThatWasEdited) {
  openActive(family());
  list().showRow(row(3));
  key(Qt::Key_F2);
  type("new");
  clickTitle(row(1));
  EXPECT_EQ(m_rig->node(2).title, QStringLiteral("new"));
  EXPECT_EQ(m_rig->node(0).title, QStringLiteral("Topic 1"));
  EXPECT_EQ(editor().selectedNodeIDs(), IdSet({topicId(1)}));
}

TEST_F(OutlineKeysTest, WhatIsTypedOutlivesChangesOfTheMap) {
  openActive(family());
  list().showRow(row(3));
  key(Qt::Key_F2);
  type("new");
  editor().createChild(topicId(2));
  editor().setNodeTitle(topicId(3), QStringLiteral("other"));
  AIRig::settle();
  ASSERT_NE(list().renameField(), nullptr);
  EXPECT_EQ(list().renameField()->text(), QStringLiteral("new"));
  m_view->finishRename();
  EXPECT_EQ(editor().nodeByID(topicId(3))->title, QStringLiteral("new"));
}

TEST_F(OutlineKeysTest, ATitleOfSeveralLinesKeepsThemWhenItsEndIsEdited) {
  MindMap map = mapOf({1});
  map.nodes.update(0, [](Node& node) { node.title = QStringLiteral("One\nTwo"); });
  openActive(std::move(map));
  key(Qt::Key_F2);
  ASSERT_NE(list().renameField(), nullptr);
  key(Qt::Key_End);
  type("x");
  key(Qt::Key_Return);
  EXPECT_EQ(m_rig->node(0).title, QStringLiteral("One\nTwox"));
}

}  // namespace
}  // namespace quilmora::test
