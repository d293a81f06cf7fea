#include <QScrollArea>

#include "app/assistant/AssistantFixture.h"

namespace quilmora {
namespace {

class AIPromptViewTest : public AssistantTest {
 protected:
  void openSheet() {
    startActive();
    press(Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_NE(sheet(), nullptr);
  }
  QStringList labels() {
    QStringList texts;
    for (const TextLabel* label : sheet()->findChildren<TextLabel*>())
      if (label->isVisibleTo(sheet())) texts.append(label->text());
    return texts;
  }
  QStringList examples() {
    QStringList texts;
    for (const Chip* chip : sheet()->exampleButtons()) texts.append(chip->label());
    return texts;
  }
  void pass(int milliseconds) { m_scheduler.advance(std::chrono::milliseconds(milliseconds)); }
};

TEST_F(AIPromptViewTest, TheKeyOpensTheSheetWithTheKeyboardInItsField) {
  openSheet();
  EXPECT_TRUE(sheet()->isVisible());
  EXPECT_EQ(QApplication::focusWidget(), &sheet()->prompt());
  EXPECT_EQ(labels(), QStringList({QStringLiteral("Quilmora AI"), QStringLiteral("Offline · Stays on this machine"),
                                   QStringLiteral("Describe your map"), QStringLiteral("Or try an example")}));
  EXPECT_EQ(sheet()->prompt().toPlainText(), QString());
  EXPECT_EQ(sheet()->selectedMode().id, QStringLiteral("brainstorm"));
  EXPECT_EQ(sheet()->prompt().placeholderText(), QStringLiteral("e.g. Creative marketing ideas for a coffee shop"));
  EXPECT_EQ(sheet()->generateButton().text().remove(u'&'), QStringLiteral("Generate"));
  EXPECT_EQ(sheet()->cancelButton().text().remove(u'&'), QStringLiteral("Cancel"));
}

TEST_F(AIPromptViewTest, EachModeHasItsPlaceholderAndItsExamples) {
  openSheet();
  ASSERT_EQ(sheet()->modeButtons().size(), promptModes().size());
  for (std::size_t index = 0; index < promptModes().size(); ++index) {
    const PromptMode& mode = promptModes()[index];
    Chip* button = sheet()->modeButtons()[index];
    EXPECT_EQ(button->label(), mode.label);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(sheet()->selectedMode().id, mode.id);
    EXPECT_EQ(sheet()->prompt().placeholderText(), mode.placeholder);
    EXPECT_EQ(examples(), mode.examples);
  }
}

TEST_F(AIPromptViewTest, TwoKeystrokesMakeAMapWithoutNetwork) {
  openSheet();
  type("coffee");
  press(Qt::Key_Return);
  ASSERT_TRUE(isGenerated());
  EXPECT_GT(map().nodes.size(), 5u);
  EXPECT_NE(sheet(), nullptr);
  pass(500);
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_FALSE(workflows().showAIPrompt());
  EXPECT_EQ(QApplication::focusWidget(), &window().canvas());
  EXPECT_EQ(m_transport.count(), 0u);
  editor().undo();
  EXPECT_EQ(map().nodes.size(), 1u);
}

TEST_F(AIPromptViewTest, TheModesWordsGoBeforeThePrompt) {
  useClaude();
  openSheet();
  QTest::mouseClick(sheet()->modeButtons()[1], Qt::LeftButton);
  sheet()->prompt().setPlainText(QStringLiteral("a garden, radial"));
  QTest::mouseClick(&sheet()->generateButton(), Qt::LeftButton);
  ASSERT_TRUE(isAsked());
  EXPECT_TRUE(m_transport.request(0).body.contains("Create a project plan for: a garden, radial"));
}

TEST_F(AIPromptViewTest, AnExampleFillsTheFieldAndIsSubmittedAtOnce) {
  useClaude();
  openSheet();
  QTest::mouseClick(sheet()->exampleButtons()[2], Qt::LeftButton);
  EXPECT_EQ(sheet()->prompt().toPlainText(), QStringLiteral("Weekend trip to Lisbon"));
  ASSERT_TRUE(isAsked());
  EXPECT_TRUE(m_transport.request(0).body.contains("Weekend trip to Lisbon"));
}

TEST_F(AIPromptViewTest, AnEmptyPromptDoesNothing) {
  openSheet();
  EXPECT_FALSE(sheet()->generateButton().isEnabled());
  press(Qt::Key_Return);
  pass(2000);
  EXPECT_NE(sheet(), nullptr);
  EXPECT_FALSE(workflows().aiIsGenerating());
  EXPECT_EQ(editor().undoCount(), 0);
}

TEST_F(AIPromptViewTest, ReturnWithShiftBeginsALine) {
  openSheet();
  type("a");
  press(Qt::Key_Return, Qt::ShiftModifier);
  type("b");
  EXPECT_EQ(sheet()->prompt().toPlainText(), QStringLiteral("a\nb"));
  EXPECT_FALSE(workflows().aiIsGenerating());
}

TEST_F(AIPromptViewTest, WaitsForTheReplyAndLooksEvery300Milliseconds) {
  useClaude();
  openSheet();
  type("tea");
  press(Qt::Key_Return);
  ASSERT_TRUE(isAsked());
  EXPECT_EQ(sheet()->progressText(), QStringLiteral("Generating map..."));
  EXPECT_FALSE(sheet()->generateButton().isEnabled());
  pass(500);
  EXPECT_NE(sheet(), nullptr);
  replyAsClaude(0, QStringLiteral(R"({"title":"Tea","children":[{"title":"Green"}]})"));
  ASSERT_TRUE(isGenerated());
  EXPECT_EQ(map().title, QStringLiteral("Tea"));
  pass(299);
  EXPECT_NE(sheet(), nullptr);
  pass(1);
  EXPECT_EQ(sheet(), nullptr);
}

TEST_F(AIPromptViewTest, TellsTheErrorOfTheLastFlow) {
  useClaude();
  startActive();
  workflows().expandNode(map().nodes[0].id);
  ASSERT_TRUE(isAsked());
  m_transport.answer(0, {401, "no"});
  ASSERT_TRUE(isGenerated());
  press(Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(sheet()->errorText(), QStringLiteral("Invalid API key"));
  type("tea");
  press(Qt::Key_Return);
  EXPECT_EQ(sheet()->errorText(), QString());
}

TEST_F(AIPromptViewTest, StaysOpenWithTheErrorAndCanBeSubmittedAgain) {
  useClaude();
  openSheet();
  type("tea");
  press(Qt::Key_Return);
  ASSERT_TRUE(isAsked());
  // Meanwhile another document opens in the window.
  editor().beginOtherDocument();
  replyAsClaude(0, QStringLiteral(R"({"title":"Tea","children":[{"title":"Green"}]})"));
  ASSERT_TRUE(isGenerated());
  pass(500);
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(sheet()->errorText(), QStringLiteral("Another document was opened before the answer came."));
  EXPECT_EQ(sheet()->progressText(), QString());
  EXPECT_EQ(sheet()->prompt().toPlainText(), QStringLiteral("tea"));
  press(Qt::Key_Return);
  EXPECT_TRUE(isAsked(2));
}

TEST_F(AIPromptViewTest, EscapeLeavesAndTheMapComesAllTheSame) {
  useClaude();
  openSheet();
  type("tea");
  press(Qt::Key_Return);
  ASSERT_TRUE(isAsked());
  press(Qt::Key_Escape);
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_TRUE(assistant().card().isShown());
  EXPECT_EQ(assistant().card().text(), QStringLiteral("Generating map..."));
  replyAsClaude(0, QStringLiteral(R"({"title":"Tea","children":[{"title":"Green"}]})"));
  ASSERT_TRUE(isGenerated());
  pass(2000);
  EXPECT_EQ(map().title, QStringLiteral("Tea"));
  EXPECT_FALSE(assistant().card().isShown());
}

TEST_F(AIPromptViewTest, TellsWhereTheTextGoesBeforeTheFirstRequest) {
  useClaude();
  openSheet();
  settle();
  EXPECT_EQ(sheet()->destinationText(), QStringLiteral("Claude · Sent to api.anthropic.com"));
  EXPECT_EQ(m_transport.count(), 0u);
}

TEST_F(AIPromptViewTest, WithoutAKeyItStaysOnThisMachine) {
  m_settings.setText(settings::aiProvider, QStringLiteral("openai"));
  openSheet();
  settle();
  EXPECT_EQ(sheet()->destinationText(), QStringLiteral("OpenAI (Offline) · Stays on this machine"));
}

TEST_F(AIPromptViewTest, NoKeyReachesTheMapBelow) {
  openSheet();
  press(Qt::Key_N, Qt::ControlModifier);
  press(Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier);
  press(Qt::Key_Delete);
  EXPECT_EQ(map().nodes.size(), 1u);
  for (int step = 0; step < 20; ++step) {
    press(Qt::Key_Tab, step < 10 ? Qt::NoModifier : Qt::ShiftModifier);
    EXPECT_TRUE(sheet()->isAncestorOf(QApplication::focusWidget())) << step;
  }
}

// What is between head and buttons scrolls if the window is low; the buttons do not overlap it.
TEST_F(AIPromptViewTest, FitsItsWordsInAnyWindow) {
  openSheet();
  for (const QSize size : {QSize(1280, 800), QSize(640, 560), QSize(640, 400)}) {
    window().setMinimumSize(size);
    window().resize(size);
    settle();
    const QRect panel = sheet()->panel().rect();
    const auto placeOf = [&](const QWidget& part) {
      return QRect(part.mapTo(&sheet()->panel(), QPoint()), part.size());
    };
    const QRect middle = placeOf(*sheet()->findChild<QScrollArea*>());
    for (const QWidget* button : {&sheet()->cancelButton(), &sheet()->generateButton()}) {
      EXPECT_TRUE(panel.contains(placeOf(*button))) << size.height();
      EXPECT_GT(placeOf(*button).top(), middle.bottom() + metrics::gap) << size.height();
    }
    EXPECT_TRUE(panel.contains(middle)) << size.height();
    for (Chip* example : sheet()->exampleButtons()) {
      example->setFocus();
      settle();
      EXPECT_TRUE(middle.contains(placeOf(*example))) << size.height() << ' ' << example->label().toStdString();
    }
  }
}

}  // namespace
}  // namespace quilmora
