#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>

#include "app/AppFixture.h"
#include "app/look/Widgets.h"
#include "app/onboarding/OnboardingPages.h"
#include "app/onboarding/OnboardingPieces.h"
#include "app/onboarding/OnboardingView.h"
#include "canvas/painting/Symbols.h"
#include "commands/CommandTable.h"
#include "support/AccessibleNames.h"
#include "support/Lines.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

using test::lines;

// --- Content ---

QStringList told(int page) {
  const OnboardingPage& told = onboardingPages().at(static_cast<std::size_t>(page));
  QStringList list{told.symbol + QStringLiteral(" | ") + told.title, told.text};
  for (const OnboardingRow& row : told.rows)
    list.append(row.symbol + QStringLiteral(" | ") + row.keys + QStringLiteral(" | ") + row.description);
  list.append(told.note);
  list.removeAll(QString());
  return list;
}

TEST(OnboardingPages, Welcome) {
  EXPECT_EQ(told(0), lines({"tree.fill | Welcome to Quilmora",
                            "Visual thinking for your desktop.\nMap ideas, plan projects, and let AI help you "
                            "explore."}));
}

TEST(OnboardingPages, InfiniteCanvas) {
  EXPECT_EQ(told(1), lines({" | Infinite Canvas", "plus.circle.fill | Ctrl + N | Create a new topic",
                            "arrow.turn.down.right | Tab | Add a child topic",
                            "arrow.up.and.down.and.arrow.left.and.right | Arrow keys | Navigate between topics",
                            "hand.draw.fill | Ctrl + drag | Reparent a topic",
                            "arrow.up.left.and.arrow.down.right | Ctrl + 0 | Zoom to fit everything"}));
}

TEST(OnboardingPages, AiPowered) {
  EXPECT_EQ(told(2),
            lines({"sparkles | AI-Powered", "text.bubble.fill | Ctrl + Shift + L | Chat with AI about your map",
                   "wand.and.stars | Ctrl + Shift + G | Generate entire maps from a prompt",
                   "arrow.branch | Right-click → Expand | Expand any topic into subtopics",
                   "doc.plaintext | Right-click → Summary | Summarize a branch into key points",
                   "Works offline with Smart mode, or connect Claude / OpenAI in Settings."}));
}

TEST(OnboardingPages, StayOrganized) {
  EXPECT_EQ(told(3), lines({"command | Stay Organized",
                            "command.circle.fill | Ctrl + K | Command palette — quick access to everything",
                            "list.bullet.indent | Ctrl + Shift + O | Outline view — see your map as a tree",
                            "play.rectangle.fill | Ctrl + Shift + P | Present your map in fullscreen",
                            "magnifyingglass | Ctrl + F | Search across all topics",
                            "square.and.arrow.up | Export | PDF, PNG, SVG, Markdown, OPML"}));
}

TEST(OnboardingPages, Ready) {
  EXPECT_EQ(told(4), lines({"sparkle | Ready to go!", "Start with a template or a blank canvas.",
                            "Reopen anytime from Help → Quilmora Quick Start"}));
}

TEST(OnboardingPages, AreFive) {
  EXPECT_EQ(OnboardingView::pageCount(), 5);
}

// Every key mentioned is the key of a command, except for those of the canvas and the pointer, which are not commands.
TEST(OnboardingPages, EveryKeyIsTheOneThatWorks) {
  const QStringList others =
      lines({"Tab", "Arrow keys", "Ctrl + drag", "Right-click → Expand", "Right-click → Summary", "Export"});
  int count = 0;
  for (const OnboardingPage& page : onboardingPages()) {
    for (const OnboardingRow& row : page.rows) {
      EXPECT_TRUE(hasSymbol(row.symbol)) << row.symbol.toStdString();
      if (others.contains(row.keys)) continue;
      const QKeySequence sequence(QString(row.keys).remove(u' '), QKeySequence::PortableText);
      const bool isCommand = std::ranges::any_of(
          commandTable(), [&](const Command& command) { return command.keySequence() == sequence; });
      EXPECT_TRUE(isCommand) << row.keys.toStdString();
      ++count;
    }
  }
  EXPECT_EQ(count, 8);
}

// --- The sheet ---

class OnboardingViewTest : public AppTest {
 protected:
  OnboardingViewTest() { m_desktop.setPrefersStillness(true); }

  void startFirst() {
    m_isFirstStart = true;
    startActive();
    ASSERT_NE(sheet(), nullptr);
  }
  OnboardingView* sheet() { return window().onboarding(); }
  void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QWidget* owner = QApplication::focusWidget();
    ASSERT_NE(owner, nullptr);
    QTest::keyClick(owner, static_cast<Qt::Key>(key), modifiers);
  }
  QAbstractButton* button(const char* text) {
    if (sheet() == nullptr) return nullptr;
    for (QAbstractButton* button : sheet()->findChildren<QAbstractButton*>())
      if (button->isVisible() && button->text().remove(u'&') == QLatin1String(text)) return button;
    return nullptr;
  }
  void goToPage(int page) {
    while (sheet()->currentPage() < page) button("Next")->click();
    ASSERT_EQ(sheet()->currentPage(), page);
  }
  QStringList labels() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QStringList texts;
    for (const TextLabel* label : sheet()->findChildren<TextLabel*>())
      if (label->isVisible()) texts.append(label->text());
    return texts;
  }
  std::optional<bool> flag() { return m_settings.flag(settings::onboardingShown); }
};

TEST_F(OnboardingViewTest, TheFirstStartShowsIt) {
  startFirst();
  EXPECT_EQ(sheet()->currentPage(), 0);
  EXPECT_EQ(labels().first(), QStringLiteral("Welcome to Quilmora"));
  EXPECT_EQ(flag(), std::nullopt);
}

TEST_F(OnboardingViewTest, ALaterStartDoesNotBuildIt) {
  startActive();
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_TRUE(window().findChildren<OnboardingView*>().isEmpty());
}

TEST_F(OnboardingViewTest, AFlagOfAnotherKindReadsAsAbsent) {
  m_settings.setText(settings::onboardingShown, QStringLiteral("yes"));
  startFirst();
}

TEST_F(OnboardingViewTest, SkipOnTheFirstPageIsRemembered) {
  startFirst();
  button("Skip")->click();
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_EQ(flag(), true);
  m_application.reset();
  startActive();
  EXPECT_EQ(sheet(), nullptr);
}

TEST_F(OnboardingViewTest, EscapeIsRememberedAndTheKeyboardIsBack) {
  startFirst();
  press(Qt::Key_Escape);
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_EQ(flag(), true);
  EXPECT_EQ(QApplication::focusWidget(), &window().canvas());
}

TEST_F(OnboardingViewTest, NextGoesThroughThePages) {
  startFirst();
  const QStringList titles =
      lines({"Welcome to Quilmora", "Infinite Canvas", "AI-Powered", "Stay Organized", "Ready to go!"});
  for (int page = 0; page < 5; ++page) {
    EXPECT_EQ(sheet()->currentPage(), page);
    EXPECT_EQ(labels().first(), titles.at(page));
    EXPECT_EQ(button("Skip") != nullptr, page < 4);
    ASSERT_EQ(button("Next") != nullptr, page < 4);
    if (page < 4) button("Next")->click();
  }
}

TEST_F(OnboardingViewTest, KeysTurnThePages) {
  startFirst();
  press(Qt::Key_Return);
  EXPECT_EQ(sheet()->currentPage(), 1);
  press(Qt::Key_Right);
  EXPECT_EQ(sheet()->currentPage(), 2);
  press(Qt::Key_Left);
  EXPECT_EQ(sheet()->currentPage(), 1);
  press(Qt::Key_N, Qt::AltModifier);
  EXPECT_EQ(sheet()->currentPage(), 2);
  press(Qt::Key_PageDown);
  EXPECT_EQ(sheet()->currentPage(), 3);
  press(Qt::Key_PageDown);
  EXPECT_EQ(sheet()->currentPage(), 4);
  press(Qt::Key_PageDown);
  EXPECT_EQ(sheet()->currentPage(), 4);
  press(Qt::Key_PageUp);
  EXPECT_EQ(sheet()->currentPage(), 3);
  EXPECT_EQ(QApplication::focusWidget(), button("Next"));
  press(Qt::Key_S, Qt::AltModifier);
  EXPECT_EQ(sheet(), nullptr);
}

TEST_F(OnboardingViewTest, LeftOnTheFirstPageStays) {
  startFirst();
  press(Qt::Key_Left);
  EXPECT_EQ(sheet()->currentPage(), 0);
}

TEST_F(OnboardingViewTest, DotsTellThePageAndLeadToOthers) {
  startFirst();
  auto* dots = sheet()->findChild<PageDots*>();
  EXPECT_EQ(dots->accessibleName(), QStringLiteral("Page 1 of 5"));
  QTest::mouseClick(dots, Qt::LeftButton, {}, dots->dotPlace(3).center());
  EXPECT_EQ(sheet()->currentPage(), 3);
  EXPECT_EQ(dots->accessibleName(), QStringLiteral("Page 4 of 5"));
  QTest::mouseClick(dots, Qt::LeftButton, {}, dots->dotPlace(0).center());
  EXPECT_EQ(sheet()->currentPage(), 0);
}

TEST_F(OnboardingViewTest, TheLastPageOffersTheTemplatesInTwoRows) {
  startFirst();
  goToPage(4);
  QCoreApplication::processEvents();
  QStringList names;
  std::vector<int> rows;
  for (const TemplateButton* starter : sheet()->findChildren<TemplateButton*>()) {
    names.append(starter->text());
    rows.push_back(starter->y());
  }
  EXPECT_EQ(names, lines({"Brainstorm", "Project Plan", "Meeting Notes", "Research", "Personal Goals"}));
  EXPECT_EQ(rows[0], rows[2]);
  EXPECT_LT(rows[2], rows[3]);
  EXPECT_EQ(rows[3], rows[4]);
  EXPECT_NE(button("Generate with AI"), nullptr);
  EXPECT_NE(button("Start Blank"), nullptr);
}

TEST_F(OnboardingViewTest, ATemplateClosesTheSheetAndIsInstalled) {
  startFirst();
  goToPage(4);
  bool wasOpen = true;
  const auto receiver =
      notifications().observe(Notification::newFromTemplate, [&](const QVariant&) { wasOpen = sheet() != nullptr; });
  button("Meeting Notes")->click();
  EXPECT_FALSE(wasOpen);
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_EQ(flag(), true);
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Meeting Notes"));
  EXPECT_EQ(editor().mindMap().nodes.size(), 5u);
  EXPECT_EQ(QApplication::focusWidget(), &window().canvas());
}

TEST_F(OnboardingViewTest, GenerateClosesTheSheetAndAsksForTheAi) {
  startFirst();
  goToPage(4);
  int count = 0;
  bool hadObject = false;
  const auto receiver = notifications().observe(Notification::aiGenerate, [&](const QVariant& object) {
    if (sheet() == nullptr) ++count;
    hadObject = object.isValid();
  });
  button("Generate with AI")->click();
  EXPECT_EQ(count, 1);
  EXPECT_FALSE(hadObject);
  EXPECT_EQ(flag(), true);
}

TEST_F(OnboardingViewTest, StartBlankLeavesTheBlankMap) {
  startFirst();
  goToPage(4);
  button("Start Blank")->click();
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_EQ(flag(), true);
  EXPECT_EQ(editor().mindMap().nodes[0].title, QStringLiteral("Start Here"));
}

TEST_F(OnboardingViewTest, HelpOpensItAtTheFirstPageWhateverTheFlagSays) {
  startActive();
  action("showOnboarding")->trigger();
  ASSERT_NE(sheet(), nullptr);
  goToPage(2);
  // It is already open.
  notifications().post(Notification::showOnboarding);
  EXPECT_EQ(sheet()->currentPage(), 2);
  EXPECT_EQ(window().findChildren<OnboardingView*>().size(), 1);
  press(Qt::Key_Escape);
  EXPECT_EQ(flag(), true);
  notifications().post(Notification::showOnboarding);
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(sheet()->currentPage(), 0);
}

TEST_F(OnboardingViewTest, TheFlagIsTheUsersAndNoDocuments) {
  m_isFirstStart = true;
  startActive({writtenMap("One.mindmap", "One")});
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("One"));
  press(Qt::Key_Escape);
  window().session().open(writtenMap("Two.mindmap", "Two"));
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_EQ(flag(), true);
}

TEST_F(OnboardingViewTest, Is520WideAnd420High) {
  startFirst();
  for (int page = 0; page < 5; ++page) {
    goToPage(page);
    QCoreApplication::processEvents();
    EXPECT_EQ(sheet()->panel().size(), QSize(520, 420));
    const auto* area = sheet()->findChildren<QScrollArea*>().last();
    EXPECT_EQ(area->verticalScrollBar()->maximum(), 0) << page;
  }
}

TEST_F(OnboardingViewTest, FitsASmallWindow) {
  startFirst();
  window().setMinimumSize(560, 380);
  window().resize(560, 380);
  goToPage(4);
  QCoreApplication::processEvents();
  EXPECT_TRUE(sheet()->rect().contains(sheet()->panel().geometry()));
  auto* dots = sheet()->findChild<PageDots*>();
  EXPECT_TRUE(sheet()->panel().rect().contains(dots->geometry()));
  const auto* area = sheet()->findChildren<QScrollArea*>().last();
  EXPECT_GT(area->height(), 150);
  // The focused control is scrolled into view.
  EXPECT_GT(area->verticalScrollBar()->maximum(), 0);
  for (int i = 0; i < 6; ++i) press(Qt::Key_Tab);
  ASSERT_EQ(QApplication::focusWidget(), button("Start Blank"));
  const QWidget* last = QApplication::focusWidget();
  EXPECT_TRUE(area->viewport()->rect().contains(QRect(last->mapTo(area->viewport(), QPoint()), last->size())));
}

TEST_F(OnboardingViewTest, TabStaysInTheSheet) {
  startFirst();
  EXPECT_EQ(QApplication::focusWidget(), button("Next"));
  press(Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), button("Skip"));
  press(Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), button("Next"));
  goToPage(4);
  for (const char* name : {"Brainstorm", "Project Plan", "Meeting Notes", "Research", "Personal Goals",
                           "Generate with AI", "Start Blank", "Brainstorm"}) {
    EXPECT_EQ(QApplication::focusWidget(), button(name)) << name;
    press(Qt::Key_Tab);
  }
}

TEST_F(OnboardingViewTest, KeysOfMenusDoNothingBelowIt) {
  startFirst();
  press(Qt::Key_N, Qt::ControlModifier);
  press(Qt::Key_K, Qt::ControlModifier);
  EXPECT_EQ(editor().mindMap().nodes.size(), 1u);
  EXPECT_NE(sheet(), nullptr);
}

TEST_F(OnboardingViewTest, EveryControlHasAName) {
  startFirst();
  for (int page = 0; page < 5; ++page) {
    goToPage(page);
    const test::AccessibleWalk walk(*sheet());
    EXPECT_EQ(walk.nameless, QStringList()) << page;
    EXPECT_GE(walk.names.size(), page < 4 ? 2 : 7) << page;
  }
  EXPECT_EQ(sheet()->accessibleName(), QStringLiteral("Quilmora Quick Start"));
}

TEST_F(OnboardingViewTest, PagesSlideInWhereTheDesktopLetsThem) {
  m_desktop.setPrefersStillness(false);
  startFirst();
  const auto page = [this] { return sheet()->findChildren<QScrollArea*>().last(); };
  button("Next")->click();
  EXPECT_GT(page()->x(), 0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return page()->x() == 0; }));
}

}  // namespace
}  // namespace quilmora
