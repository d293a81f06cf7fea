#include <vector>

#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

#include "app/commands/CommandActions.h"
#include "editor/MindMapViewModel.h"
#include "platform/Bookmarks.h"
#include "platform/Log.h"
#include "platform/SettingsStore.h"

namespace quilmora {
namespace {

class CommandActionsTest : public ::testing::Test {
 protected:
  QAction* action(const char* id) { return m_actions.action(QLatin1String(id)); }
  NotificationCenter::Subscription receive(Notification notification) {
    return m_notifications.observe(notification, [this, notification](const QVariant& object) {
      m_received.append(object.isValid() ? notificationName(notification) + QLatin1Char(' ') + object.toString()
                                         : notificationName(notification));
    });
  }
  QUuid rootWithChild() {
    const QUuid root = m_editor.mindMap().nodes[0].id;
    m_editor.createChild(root);
    m_editor.selectNode(root, false);
    return root;
  }

  ManualClock m_clock;
  MemorySettingsStore m_settings;
  PathBookmarks m_bookmarks;
  MemoryLog m_log;
  NotificationCenter m_notifications;
  MindMapViewModel m_editor{MindMap::blankMap(m_clock), {m_clock, m_settings, m_bookmarks, m_log}};
  QWidget m_window;
  int m_quits = 0;
  CommandActions m_actions{m_editor, m_notifications, {[this] { ++m_quits; }, [] {}, {}, {}, {}, {}}, &m_window};
  QStringList m_received;
};

TEST_F(CommandActionsTest, EntriesAreEnabledWhileSomebodyReceivesTheirNotification) {
  EXPECT_FALSE(action("createNode")->isEnabled());
  {
    const auto subscription = receive(Notification::createNode);
    EXPECT_TRUE(action("createNode")->isEnabled());
    EXPECT_FALSE(action("createEdge")->isEnabled());
  }
  EXPECT_FALSE(action("createNode")->isEnabled());
}

TEST_F(CommandActionsTest, EveryEntryPostsItsNotificationWithItsObject) {
  std::vector<NotificationCenter::Subscription> subscriptions;
  for (int value = 0; value < notificationCount(); ++value) {
    subscriptions.push_back(receive(static_cast<Notification>(value)));
  }
  const QUuid root = rootWithChild();
  m_editor.createChild(root);
  m_editor.undo();
  m_editor.selectNode(root, false);
  int count = 0;
  for (const Command& command : commandTable()) {
    if (!command.notification) continue;
    m_editor.setCollapsedNodeIDs(*command.notification == Notification::expandNode ? IdSet{root} : IdSet());
    ASSERT_TRUE(m_actions.action(command.id)->isEnabled()) << command.id.toStdString();
    m_received.clear();
    m_actions.action(command.id)->trigger();
    QString expected = notificationName(*command.notification);
    if (command.object.isValid()) expected += QLatin1Char(' ') + command.object.toString();
    EXPECT_EQ(m_received, QStringList{expected});
    ++count;
  }
  EXPECT_EQ(count, 41);
}

TEST_F(CommandActionsTest, UndoAndRedoAreEnabledWhenTheyCanDoSomething) {
  const auto undo = receive(Notification::undo);
  const auto redo = receive(Notification::redo);
  EXPECT_FALSE(action("undo")->isEnabled());
  EXPECT_FALSE(action("redo")->isEnabled());
  m_editor.createFreeNode(0, 0);
  EXPECT_TRUE(action("undo")->isEnabled());
  EXPECT_FALSE(action("redo")->isEnabled());
  m_editor.undo();
  EXPECT_FALSE(action("undo")->isEnabled());
  EXPECT_TRUE(action("redo")->isEnabled());
}

TEST_F(CommandActionsTest, CollapseAndExpandFollowTheSelection) {
  const auto collapse = receive(Notification::collapseNode);
  const auto expand = receive(Notification::expandNode);
  const QUuid root = rootWithChild();
  EXPECT_TRUE(action("collapseNode")->isEnabled());
  EXPECT_FALSE(action("expandNode")->isEnabled());
  m_editor.toggleCollapsed(root);
  EXPECT_FALSE(action("collapseNode")->isEnabled());
  EXPECT_TRUE(action("expandNode")->isEnabled());
  m_editor.clearSelection();
  EXPECT_FALSE(action("expandNode")->isEnabled());
}

TEST_F(CommandActionsTest, DeleteTakesTheSelection) {
  EXPECT_FALSE(action("delete")->isEnabled());
  m_editor.selectAll();
  EXPECT_TRUE(action("delete")->isEnabled());
  action("delete")->trigger();
  EXPECT_EQ(m_editor.mindMap().nodes.size(), 0U);
  EXPECT_FALSE(action("delete")->isEnabled());
}

TEST_F(CommandActionsTest, ASelectionOfTheMapBeforeCannotBeDeletedOrDuplicated) {
  const auto duplicate = receive(Notification::duplicateSelection);
  m_editor.selectAll();
  EXPECT_TRUE(action("delete")->isEnabled());
  EXPECT_TRUE(action("duplicateSelection")->isEnabled());
  m_editor.setMindMap(MindMap::blankMap(m_clock));
  ASSERT_FALSE(m_editor.selectedNodeIDs().empty());
  EXPECT_FALSE(action("delete")->isEnabled());
  EXPECT_FALSE(action("duplicateSelection")->isEnabled());
}

TEST_F(CommandActionsTest, AConnectorOrRegionOfTheMapBeforeCannotBeDeleted) {
  rootWithChild();
  const MindMap before = m_editor.mindMap();
  m_editor.clearSelection();
  m_editor.selectEdge(before.edges[0].id, false);
  EXPECT_TRUE(action("delete")->isEnabled());
  m_editor.setMindMap(MindMap::blankMap(m_clock));
  ASSERT_FALSE(m_editor.selectedEdgeIDs().empty());
  EXPECT_FALSE(action("delete")->isEnabled());

  m_editor.setMindMap(before);
  m_editor.clearSelection();
  m_editor.createRegion(QPointF(0.0, 0.0));
  m_editor.setSelectedRegionID(m_editor.mindMap().regions[0].id);
  EXPECT_TRUE(action("delete")->isEnabled());
  m_editor.setMindMap(before);
  ASSERT_TRUE(m_editor.selectedRegionID());
  EXPECT_FALSE(action("delete")->isEnabled());
}

TEST_F(CommandActionsTest, MarksTellTheStateAndNotTheClick) {
  const auto sidebar = receive(Notification::toggleSidebar);
  EXPECT_TRUE(action("toggleSidebar")->isChecked());
  action("toggleSidebar")->trigger();
  EXPECT_TRUE(action("toggleSidebar")->isChecked());
  m_actions.setShown({.sidebar = false, .inspector = true, .outline = false, .isFullScreen = true});
  EXPECT_FALSE(action("toggleSidebar")->isChecked());
  EXPECT_TRUE(action("toggleInspector")->isChecked());
  EXPECT_FALSE(action("toggleOutline")->isChecked());
  EXPECT_TRUE(action("fullScreen")->isChecked());
  m_editor.setIsEdgeCreationMode(true);
  EXPECT_TRUE(action("createEdge")->isChecked());
  m_editor.escape();
  EXPECT_FALSE(action("createEdge")->isChecked());
}

TEST_F(CommandActionsTest, OtherKeysOfUndoAndRedoWorkOnTheTextField) {
  const auto undo = receive(Notification::undo);
  const auto redo = receive(Notification::redo);
  m_editor.createFreeNode(0, 0);
  m_editor.undo();
  auto* field = new QLineEdit(&m_window);
  m_window.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
  field->setFocus();
  QTest::keyClicks(field, QStringLiteral("word"));
  QTest::keyClick(field, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(field->text(), QString());
  QTest::keyClick(field, Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(field->text(), QStringLiteral("word"));
  EXPECT_EQ(m_received, QStringList());
}

TEST_F(CommandActionsTest, EntriesWithoutAHandlerAreDisabled) {
  EXPECT_FALSE(action("settings")->isEnabled());
  EXPECT_TRUE(action("about")->isEnabled());
  action("quit")->trigger();
  EXPECT_EQ(m_quits, 1);
}

TEST_F(CommandActionsTest, ClipboardEntriesActOnTheTextFieldThatHasTheKeyboard) {
  auto* field = new QLineEdit(QStringLiteral("seven words"), &m_window);
  auto* other = new QWidget(&m_window);
  other->setFocusPolicy(Qt::StrongFocus);
  m_window.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
  other->setFocus();
  for (const char* id : {"cut", "copy", "paste"}) EXPECT_FALSE(action(id)->isEnabled()) << id;
  action("selectAll")->trigger();
  EXPECT_EQ(m_editor.selectedNodeIDs().size(), m_editor.mindMap().nodes.size());
  EXPECT_FALSE(m_editor.selectedNodeIDs().empty());
  field->setFocus();
  for (const char* id : {"cut", "copy", "paste", "selectAll"}) EXPECT_TRUE(action(id)->isEnabled()) << id;
  action("selectAll")->trigger();
  EXPECT_EQ(field->selectedText(), QStringLiteral("seven words"));
  action("cut")->trigger();
  EXPECT_EQ(field->text(), QString());
  action("paste")->trigger();
  action("paste")->trigger();
  EXPECT_EQ(field->text(), QStringLiteral("seven wordsseven words"));
  other->setFocus();
  EXPECT_FALSE(action("paste")->isEnabled());
}

}  // namespace
}  // namespace quilmora
