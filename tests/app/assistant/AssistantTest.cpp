#include <QAccessible>
#include <QEventLoop>
#include <QMenu>

#include "app/assistant/AssistantFixture.h"

namespace quilmora {
namespace {

class AssistantWindowTest : public AssistantTest {
 protected:
  QMenu* topicMenu() {
    editor().selectAll();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {0, 0}, window().canvas().mapToGlobal(QPoint(0, 0)));
    QCoreApplication::sendEvent(&window().canvas(), &event);
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
  }
  static QAction* entry(const QMenu& menu, const char* text) {
    for (QAction* action : menu.actions())
      if (action->text() == QLatin1String(text)) return action;
    return nullptr;
  }
  void choose(const char* text) {
    QMenu* menu = topicMenu();
    ASSERT_NE(menu, nullptr);
    QAction* action = entry(*menu, text);
    ASSERT_NE(action, nullptr) << text;
    action->trigger();
    menu->close();
  }
  AIActivityCard& card() { return assistant().card(); }
};

TEST_F(AssistantWindowTest, TheMenuOfATopicOffersToExpandAndToSummarize) {
  startActive();
  QMenu* menu = topicMenu();
  ASSERT_NE(menu, nullptr);
  QStringList texts;
  for (const QAction* action : menu->actions())
    if (!action->isSeparator()) texts.append(action->text());
  menu->close();
  EXPECT_EQ(texts,
            QStringList({QStringLiteral("Add Sub-topic"), QStringLiteral("Duplicate"), QStringLiteral("Add Image..."),
                         QStringLiteral("AI Expand"), QStringLiteral("AI Summarize"), QStringLiteral("Delete")}));
}

TEST_F(AssistantWindowTest, AnExpandedTopicGetsChildrenInOneStep) {
  startActive();
  editor().setNodeTitle(map().nodes[0].id, QStringLiteral("Coffee"));
  const int undoCount = editor().undoCount();
  choose("AI Expand");
  ASSERT_TRUE(isGenerated());
  EXPECT_EQ(map().nodes.size(), 8u);
  EXPECT_EQ(map().nodes[1].title, QStringLiteral("Espresso"));
  EXPECT_EQ(editor().undoCount(), undoCount + 1);
  editor().undo();
  EXPECT_EQ(map().nodes.size(), 1u);
}

TEST_F(AssistantWindowTest, ASummaryBecomesTheNotes) {
  startActive();
  editor().setNodeTitle(map().nodes[0].id, QStringLiteral("Coffee"));
  choose("AI Summarize");
  ASSERT_TRUE(isGenerated());
  EXPECT_EQ(map().nodes[0].notes, QStringLiteral("This branch covers: Coffee."));
  editor().undo();
  EXPECT_EQ(map().nodes[0].notes, QString());
}

TEST_F(AssistantWindowTest, TheCanvasTellsWhatIsUnderWay) {
  useClaude();
  startActive();
  editor().setNodeTitle(map().nodes[0].id, QStringLiteral("<b>Tea</b>"));
  EXPECT_FALSE(card().isShown());
  workflows().expandNode(map().nodes[0].id);
  EXPECT_TRUE(card().isShown());
  EXPECT_EQ(card().text(), QStringLiteral("Expanding <b>Tea</b>..."));
  EXPECT_FALSE(card().isError());
  ASSERT_TRUE(isAsked());
  replyAsClaude(0, QStringLiteral(R"({"title":"Tea","children":[{"title":"Green"}]})"));
  ASSERT_TRUE(isGenerated());
  EXPECT_FALSE(card().isShown());
}

TEST_F(AssistantWindowTest, TheCanvasTellsWhatFailedUntilItIsDismissed) {
  useClaude();
  startActive();
  workflows().summarizeBranch(map().nodes[0].id);
  ASSERT_TRUE(isAsked());
  m_transport.answer(0, {500, "broken"});
  ASSERT_TRUE(isGenerated());
  EXPECT_TRUE(card().isShown());
  EXPECT_TRUE(card().isError());
  EXPECT_EQ(card().text(), QStringLiteral("Could not parse AI response: HTTP 500: broken"));
  card().closeButton().click();
  EXPECT_FALSE(card().isShown());
  workflows().summarizeBranch(map().nodes[0].id);
  EXPECT_TRUE(card().isShown());
  EXPECT_FALSE(card().isError());
}

TEST_F(AssistantWindowTest, TheMapCanBeEditedWhileAReplyIsAwaited) {
  useClaude();
  startActive();
  workflows().expandNode(map().nodes[0].id);
  ASSERT_TRUE(isAsked());
  press(Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(map().nodes.size(), 2u);
}

// With a running event loop: Quit is chosen, the loop ends, the window is destroyed, and only then the reply comes.
TEST_F(AssistantWindowTest, QuitWhileRepliesAreAwaited) {
  useClaude();
  startActive();
  press(Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier);
  type("tea");
  press(Qt::Key_Return);
  chat().sendChat(QStringLiteral("hello"));
  ASSERT_TRUE(isAsked(2));
  QEventLoop loop;
  QTimer::singleShot(0, &loop, [&] {
    m_application->quit();
    loop.quit();
  });
  loop.exec();
  EXPECT_EQ(m_terminations, 1);
  m_application.reset();
  EXPECT_TRUE(m_transport.isCancelled(0));
  EXPECT_TRUE(m_transport.isCancelled(1));
  replyAsClaude(0, QStringLiteral(R"({"title":"Tea","children":[{"title":"Green"}]})"));
  settle();
  m_scheduler.advance(std::chrono::seconds(5));
}

TEST_F(AssistantWindowTest, AReplyAfterQuitWasChosenButNotDoneChangesWhatIsSavedNext) {
  useClaude();
  startActive();
  workflows().expandNode(map().nodes[0].id);
  ASSERT_TRUE(isAsked());
  m_application->quit();
  replyAsClaude(0, QStringLiteral(R"({"title":"Tea","children":[{"title":"Green"}]})"));
  ASSERT_TRUE(isGenerated());
  EXPECT_EQ(map().nodes.size(), 2u);
  EXPECT_TRUE(editor().isDirty());
}

TEST_F(AssistantWindowTest, TheToolbarOpensSheetAndChat) {
  startActive();
  EXPECT_TRUE(action("aiGenerate")->isEnabled());
  EXPECT_TRUE(action("toggleAIChat")->isEnabled());
  action("aiGenerate")->trigger();
  ASSERT_NE(sheet(), nullptr);
  workflows().setShowAIPrompt(true);
  EXPECT_TRUE(sheet()->isOpen());
  workflows().setShowAIPrompt(false);
  EXPECT_EQ(sheet(), nullptr);
}

TEST_F(AssistantWindowTest, LightAndDarkCanBeExchangedAtAnyTime) {
  useClaude();
  startActive();
  chat().sendChat(QStringLiteral("hello"));
  ASSERT_TRUE(isAsked());
  replyAsClaude(0, QStringLiteral(R"({"title":"Tea","children":[{"title":"Green"}]})"));
  ASSERT_TRUE(isAnswered());
  const QImage light = chatView().grab().toImage();
  m_desktop.setPrefersDark(true);
  settle();
  const QImage dark = chatView().grab().toImage();
  EXPECT_NE(light, dark);
}

// --- Accessibility ---

// Everything that a screen reader can reach must have a name.
void expectNames(QAccessibleInterface& part, int& count) {
  const QAccessible::State state = part.state();
  if (state.invisible) return;
  if (state.focusable) {
    ++count;
    EXPECT_FALSE(part.text(QAccessible::Name).isEmpty()) << part.object()->metaObject()->className();
  }
  for (int index = 0; index < part.childCount(); ++index)
    if (QAccessibleInterface* child = part.child(index)) expectNames(*child, count);
}

TEST_F(AssistantWindowTest, EveryPartOfChatAndSheetHasAName) {
  useClaude();
  startActive();
  int count = 0;
  expectNames(*QAccessible::queryAccessibleInterface(&chatView()), count);
  EXPECT_GE(count, 18);
  chat().sendChat(QStringLiteral("hello"));
  ASSERT_TRUE(isAsked());
  replyAsClaude(0, QStringLiteral(R"({"title":"Tea","children":[{"title":"Green"}]})"));
  ASSERT_TRUE(isAnswered());
  chat().sendChat(QStringLiteral("again"));
  count = 0;
  expectNames(*QAccessible::queryAccessibleInterface(&chatView()), count);
  EXPECT_GE(count, 8);
  EXPECT_EQ(bubbles()[0]->accessibleName(), QStringLiteral("You: hello"));
  EXPECT_EQ(bubbles()[1]->accessibleName(), QStringLiteral("Assistant: Here's Tea with: Green"));
  workflows().setShowAIPrompt(true);
  count = 0;
  expectNames(*QAccessible::queryAccessibleInterface(sheet()), count);
  EXPECT_GE(count, 8);
  for (const Chip* mode : sheet()->modeButtons()) EXPECT_FALSE(mode->accessibleName().isEmpty());
}

// What was last announced to screen readers.
QString heard(QWidget& window) {
  const QAccessibleInterface* whole = QAccessible::queryAccessibleInterface(&window);
  for (int index = 0; index < whole->childCount(); ++index)
    if (const QAccessibleInterface* part = whole->child(index); part->role() == QAccessible::Notification)
      return part->text(QAccessible::Name);
  return {};
}

TEST_F(AssistantWindowTest, RepliesAreToldToScreenReaders) {
  useClaude();
  startActive();
  chat().sendChat(QStringLiteral("hello"));
  EXPECT_EQ(heard(window()), QString()) << "the own words";
  ASSERT_TRUE(isAsked());
  replyAsClaude(0, QStringLiteral("Good morning."));
  ASSERT_TRUE(isAnswered());
  EXPECT_EQ(heard(window()), QStringLiteral("Assistant: Good morning."));
  chat().sendChat(QStringLiteral("again"));
  ASSERT_TRUE(isAsked(2));
  m_transport.answer(1, {429, ""});
  ASSERT_TRUE(isAnswered());
  EXPECT_EQ(heard(window()), QStringLiteral("Assistant: Error: Rate limited — try again shortly"));
}

TEST_F(AssistantWindowTest, WhatIsUnderWayAndWhatFailedAreToldToScreenReaders) {
  useClaude();
  startActive();
  editor().setNodeTitle(map().nodes[0].id, QStringLiteral("Tea"));
  workflows().expandNode(map().nodes[0].id);
  EXPECT_EQ(heard(window()), QStringLiteral("Expanding Tea..."));
  ASSERT_TRUE(isAsked());
  m_transport.answer(0, {401, "no"});
  ASSERT_TRUE(isGenerated());
  EXPECT_EQ(heard(window()), QStringLiteral("Invalid API key"));
  workflows().expandNode(map().nodes[0].id);
  EXPECT_EQ(heard(window()), QStringLiteral("Expanding Tea..."));
}

}  // namespace
}  // namespace quilmora
