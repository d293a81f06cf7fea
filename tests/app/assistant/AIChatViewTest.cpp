#include "app/assistant/ChatFixture.h"

namespace quilmora {
namespace {

using AIChatViewTest = ChatTest;

TEST_F(AIChatViewTest, TheKeyShowsTheChatAndGivesItsFieldTheKeyboard) {
  startActive();
  press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_FALSE(window().showsSidebar());
  press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_TRUE(chatView().isVisible());
  EXPECT_EQ(QApplication::focusWidget(), &chatView().input());
  press(Qt::Key_Escape);
  EXPECT_EQ(QApplication::focusWidget(), &window().canvas());
}

TEST_F(AIChatViewTest, HidingTheChatGivesTheKeyboardToTheCanvas) {
  openChat();
  press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_FALSE(window().showsSidebar());
  EXPECT_EQ(QApplication::focusWidget(), &window().canvas());
}

TEST_F(AIChatViewTest, BeginsWithGroupsOfChips) {
  openChat();
  EXPECT_TRUE(chatView().suggestions().isVisible());
  EXPECT_FALSE(list().isVisible());
  QStringList labels;
  for (const TextLabel* label : chatView().suggestions().findChildren<TextLabel*>()) labels.append(label->text());
  EXPECT_EQ(labels,
            QStringList({QStringLiteral("Ask or Generate"), QStringLiteral("Try a demo"), QStringLiteral("Business"),
                         QStringLiteral("Learning"), QStringLiteral("Lifestyle"), QStringLiteral("Your map")}));
  QStringList chips;
  for (const Chip* chip : chatView().suggestions().chips()) chips.append(chip->label());
  EXPECT_EQ(chips.join(u'|'),
            QStringLiteral("World Capitals|Solar System|Cuisines|SWOT Analysis|Project Plan|Marketing|Startup|Science|"
                           "History|Psychology|Fitness|Travel|Cooking|What's missing?|Improvements|Summary"));
  EXPECT_EQ(chatView().input().placeholderText(), QStringLiteral("Ask or generate..."));
}

TEST_F(AIChatViewTest, EachChipSendsItsPrompt) {
  const char* prompts[] = {"Map capitals of the countries", "Create a map about space",
                           "Generate a map about cuisines", "Build a SWOT analysis for a startup",
                           "Create a project plan",         "Map out a marketing strategy",
                           "Generate a startup roadmap",    "Create a map about science",
                           "Generate a map about history",  "Map out psychology",
                           "Create a fitness plan",         "Plan a trip",
                           "Map cooking techniques",        "What's missing from my map?",
                           "Suggest improvements",          "Summarize the main topics"};
  openChat();
  const auto& chips = chatView().suggestions().chips();
  ASSERT_EQ(chips.size(), std::size(prompts));
  for (std::size_t index = 0; index < chips.size(); ++index) {
    chips[index]->click();
    ASSERT_TRUE(isAnswered());
    ASSERT_EQ(chat().chatMessages().size(), 2u);
    EXPECT_EQ(chat().chatMessages()[0].content, QString::fromUtf8(prompts[index]));
    EXPECT_EQ(chatView().input().toPlainText(), QString());
    chat().clearChat();
  }
}

TEST_F(AIChatViewTest, ChipsAreWalkedByArrowsAndChosenByReturn) {
  openChat();
  chatView().suggestions().chips()[0]->setFocus();
  press(Qt::Key_Right);
  EXPECT_TRUE(chatView().suggestions().chips()[1]->hasFocus());
  press(Qt::Key_Return);
  ASSERT_TRUE(isAnswered());
  EXPECT_EQ(chat().chatMessages()[0].content, QStringLiteral("Create a map about space"));
  EXPECT_EQ(QApplication::focusWidget(), &chatView().input());
}

TEST_F(AIChatViewTest, ChipsThatTabComesToAreInSight) {
  openChat();
  window().resize(window().minimumSizeHint().expandedTo({900, 300}));
  settle();
  Chip* last = chatView().suggestions().chips().back();
  ASSERT_TRUE(last->visibleRegion().isEmpty());
  press(Qt::Key_Tab, Qt::ShiftModifier);
  ASSERT_TRUE(last->hasFocus());
  EXPECT_EQ(last->visibleRegion().boundingRect().size(), last->size());
}

TEST_F(AIChatViewTest, ReturnSendsTheTrimmedWords) {
  openChat();
  type("  create a map about tea ");
  press(Qt::Key_Return);
  EXPECT_EQ(chatView().input().toPlainText(), QString());
  ASSERT_TRUE(isAnswered());
  ASSERT_EQ(bubbles().size(), 2u);
  EXPECT_EQ(textOf(0), QStringLiteral("create a map about tea"));
  EXPECT_TRUE(textOf(1).startsWith(QStringLiteral("Here's Tea with: "))) << textOf(1).toStdString();
  EXPECT_EQ(bubbles()[1]->text().bold(), (std::vector<BoldRange>{{7, 3}}));
  EXPECT_FALSE(chatView().suggestions().isVisible());
  EXPECT_TRUE(list().isVisible());
}

TEST_F(AIChatViewTest, BlanksAreNotSent) {
  openChat();
  EXPECT_FALSE(chatView().sendButton().isEnabled());
  type("   ");
  press(Qt::Key_Return);
  EXPECT_EQ(chat().chatMessages().size(), 0u);
  EXPECT_EQ(chatView().input().toPlainText(), QStringLiteral("   "));
}

TEST_F(AIChatViewTest, NothingIsSentWhileAReplyIsAwaited) {
  useClaude();
  openChat();
  type("one");
  press(Qt::Key_Return);
  ASSERT_TRUE(isAsked());
  type("two");
  press(Qt::Key_Return);
  EXPECT_EQ(chat().chatMessages().size(), 1u);
  EXPECT_EQ(chatView().input().toPlainText(), QStringLiteral("two"));
  EXPECT_FALSE(chatView().sendButton().isEnabled());
}

TEST_F(AIChatViewTest, TheStopButtonCancelsTheRequest) {
  useClaude();
  openChat();
  type("one");
  press(Qt::Key_Return);
  ASSERT_TRUE(isAsked());
  EXPECT_TRUE(list().stopButton().isVisible());
  EXPECT_EQ(list().stopButton().toolTip(), QStringLiteral("Cancel request"));
  list().stopButton().setFocus();
  press(Qt::Key_Space);
  EXPECT_FALSE(list().stopButton().isVisible());
  EXPECT_FALSE(chat().chatIsLoading());
  EXPECT_TRUE(m_transport.isCancelled(0));
  EXPECT_EQ(QApplication::focusWidget(), &chatView().input());
  ASSERT_TRUE(QTest::qWaitFor([&] { return bubbles().size() == 2; }));
  EXPECT_EQ(textOf(1), QStringLiteral("Cancelled."));
}

TEST_F(AIChatViewTest, AdviceNamesTheKeysOfThisDesktop) {
  openChat();
  ask("any feedback?");
  EXPECT_TRUE(textOf(1).contains(QStringLiteral("(Ctrl+K → 'layout')"))) << textOf(1).toStdString();
}

TEST_F(AIChatViewTest, AMissingModelIsToldInOwnWords) {
  m_settings.remove(settings::aiProvider);
  m_onDeviceModel.isRunning = true;
  openChat();
  chat().sendChat(QStringLiteral("hello"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return m_onDeviceModel.prompts().size() == 1; }));
  m_onDeviceModel.fail(0, QStringLiteral("the model is not available"));
  ASSERT_TRUE(isAnswered());
  EXPECT_EQ(textOf(1),
            QStringLiteral("Error: Could not parse AI response: No local model answers. Start a model server "
                           "on this machine, wait until its model is loaded, and try again."));
}

TEST_F(AIChatViewTest, ErrorsAreMessages) {
  useClaude();
  openChat();
  type("one");
  press(Qt::Key_Return);
  ASSERT_TRUE(isAsked());
  m_transport.answer(0, {429, ""});
  ASSERT_TRUE(isAnswered());
  EXPECT_EQ(textOf(1), QStringLiteral("Error: Rate limited — try again shortly"));
  EXPECT_EQ(bubbles()[1]->applyButton(), nullptr);
}

TEST_F(AIChatViewTest, ApplyToMapReplacesTheMapOnce) {
  openChat();
  ask("create a map about tea");
  QPushButton* apply = bubbles()[1]->applyButton();
  ASSERT_NE(apply, nullptr);
  EXPECT_EQ(apply->text(), QStringLiteral("Apply to Map"));
  EXPECT_EQ(apply->x(), 28);
  EXPECT_EQ(bubbles()[0]->applyButton(), nullptr);
  QTest::mouseClick(apply, Qt::LeftButton);
  EXPECT_EQ(apply->text(), QStringLiteral("Applied"));
  EXPECT_FALSE(apply->isEnabled());
  EXPECT_GT(map().nodes.size(), 3u);
  EXPECT_EQ(editor().undoCount(), 1);
  editor().undo();
  EXPECT_EQ(map().nodes.size(), 1u);
}

TEST_F(AIChatViewTest, TheTrashAsksBeforeItClears) {
  openChat();
  EXPECT_FALSE(chatView().header().clearButton().isEnabled());
  ask("hello");
  EXPECT_EQ(chatView().header().clearButton().toolTip(), QStringLiteral("Clear chat"));
  chatView().header().clearButton().click();
  ASSERT_EQ(m_alerts.questions.size(), 1u);
  EXPECT_EQ(m_alerts.questions[0].title, QStringLiteral("Clear Chat"));
  EXPECT_EQ(m_alerts.questions[0].message, QStringLiteral("This will delete all chat messages."));
  ASSERT_EQ(m_alerts.questions[0].answers.size(), 1u);
  EXPECT_EQ(m_alerts.questions[0].answers[0].text.remove(u'&'), QStringLiteral("Clear"));
  EXPECT_EQ(bubbles().size(), 2u);
  m_alerts.questions[0].answers[0].chosen();
  EXPECT_TRUE(bubbles().empty());
  EXPECT_TRUE(chatView().suggestions().isVisible());
}

TEST_F(AIChatViewTest, ClearingDoesNotCancelWhatIsUnderWay) {
  useClaude();
  openChat();
  type("one");
  press(Qt::Key_Return);
  ASSERT_TRUE(isAsked());
  chat().clearChat();
  EXPECT_TRUE(list().stopButton().isVisible());
  replyAsClaude(0, QStringLiteral("late"));
  ASSERT_TRUE(isAnswered());
  ASSERT_EQ(bubbles().size(), 1u);
  EXPECT_EQ(textOf(0), QStringLiteral("late"));
}

// --- Who answers ---

TEST_F(AIChatViewTest, TheOfflineGeneratorNeedsNoWarning) {
  openChat();
  EXPECT_EQ(providerLabel(), QStringLiteral("Offline"));
  EXPECT_EQ(chatView().header().warningText(), QString());
  EXPECT_EQ(chatView().header().destinationText(), QStringLiteral("Stays on this machine"));
  EXPECT_FALSE(chatView().header().settingsButton().isVisible());
  EXPECT_EQ(chatView().header().providerButton().toolTip(), QStringLiteral("Switch AI provider"));
}

TEST_F(AIChatViewTest, TheMenuTellsWhatIsMissing) {
  m_keys.items[accounts::openAIKey] = "sk-test-123456";
  openChat();
  menuRows();
  settle();
  EXPECT_EQ(menuRows(),
            QStringList({QStringLiteral("On-Device — no model server"), QStringLiteral("Claude — no API key"),
                         QStringLiteral("OpenAI"), QStringLiteral("Smart (Offline)")}));
  m_onDeviceModel.isRunning = true;
  m_keys.saveKey(accounts::claudeKey, QStringLiteral("sk-test-654321"));
  menuRows();
  settle();
  EXPECT_EQ(menuRows().first(), QStringLiteral("On-Device"));
  EXPECT_EQ(menuRows().at(1), QStringLiteral("Claude (Anthropic)"));
}

TEST_F(AIChatViewTest, ARowWithoutAKeyCanBeChosenAndWarns) {
  openChat();
  menuRows();
  choose(1);
  settle();
  EXPECT_EQ(m_settings.text(settings::aiProvider), QStringLiteral("claude"));
  EXPECT_EQ(providerLabel(), QStringLiteral("Claude (Offline)"));
  EXPECT_EQ(chatView().header().warningText(), QStringLiteral("API key missing — using Offline mode"));
  EXPECT_TRUE(chatView().header().settingsButton().isVisible());
  ask("create a map about tea");
  EXPECT_NE(bubbles()[1]->applyButton(), nullptr);
  EXPECT_EQ(m_transport.count(), 0u);
}

TEST_F(AIChatViewTest, ChoosingARowGivesTheServiceItsBackEnd) {
  m_keys.items[accounts::openAIKey] = "sk-test-123456";
  openChat();
  menuRows();
  settle();
  choose(2);
  ASSERT_NE(workflows().aiService(), nullptr);
  EXPECT_EQ(workflows().aiService()->provider()->name(), QStringLiteral("OpenAI"));
  settle();
  EXPECT_EQ(providerLabel(), QStringLiteral("OpenAI"));
  EXPECT_EQ(chatView().header().destinationText(), QStringLiteral("Sent to api.openai.com"));
}

TEST_F(AIChatViewTest, WithoutAModelServerItSaysSoInItsOwnWords) {
  m_settings.remove(settings::aiProvider);
  openChat();
  EXPECT_EQ(providerLabel(), QStringLiteral("On-Device (Offline)"));
  EXPECT_EQ(chatView().header().warningText(), QStringLiteral("No local model server answers — using Offline mode"));
}

TEST_F(AIChatViewTest, AKeyThatIsSavedElsewhereTakesTheWarningAway) {
  m_settings.setText(settings::aiProvider, QStringLiteral("claude"));
  openChat();
  EXPECT_EQ(providerLabel(), QStringLiteral("Claude (Offline)"));
  m_keys.saveKey(accounts::claudeKey, QStringLiteral("sk-test-123456"));
  settle();
  EXPECT_EQ(providerLabel(), QStringLiteral("Claude"));
  EXPECT_EQ(chatView().header().destinationText(), QStringLiteral("Sent to api.anthropic.com"));
}

}  // namespace
}  // namespace quilmora
