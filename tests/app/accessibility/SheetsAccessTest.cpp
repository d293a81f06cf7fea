#include "app/accessibility/AccessibilityFixture.h"
#include "app/dialogs/AlertSheet.h"
#include "app/dialogs/Sheet.h"
#include "app/flows/SmartPasteView.h"
#include "app/onboarding/OnboardingView.h"
#include "app/versions/EarlierVersionsSheet.h"
#include "app/versions/VersionRow.h"
#include "app/versions/WindowGuard.h"
#include "app/window/DocumentBar.h"

namespace quilmora {
namespace {

using SheetsAccessTest = AccessibilityTest;

TEST_F(SheetsAccessTest, EveryControlOfTheSheetsHasAName) {
  startWithMap();
  editor().setSmartPasteText(QStringLiteral("One\nTwo"));
  editor().setShowSmartPaste(true);
  EXPECT_EQ(nameless(), nothing) << "smart paste";
  editor().setShowSmartPaste(false);
  auto* alert =
      new AlertSheet(*m_look, AlertSheet::Kind::error, QStringLiteral("Error"), QStringLiteral("Why"), &window());
  alert->addAnswer({QStringLiteral("&Again"), Question::Answer::Weight::primary, [] {}});
  alert->open();
  EXPECT_EQ(nameless(), nothing) << "alert";
  for (const Notification sheet :
       {Notification::toggleCommandPalette, Notification::aiGenerate, Notification::showOnboarding}) {
    if (Sheet* open = window().findChild<Sheet*>()) open->finish();
    settle();
    notifications().post(sheet);
    EXPECT_EQ(nameless(), nothing) << static_cast<int>(sheet);
    key(Qt::Key_Escape);
  }
}

TEST_F(SheetsAccessTest, EarlierVersionsAreNamedAndReachedByTab) {
  m_stateFolder = path("state");
  start({writtenMap("plan.mindmap", "Plan")});
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
  for (int save = 0; save < 2; ++save) {
    m_clock.advance(std::chrono::hours(1));
    editor().createFreeNode(100.0 * save, 0);
    window().session().saveDocument();
  }
  action("earlierVersions")->trigger();
  EarlierVersionsSheet* sheet = window().keeping()->flow().sheet();
  ASSERT_NE(sheet, nullptr);
  EXPECT_EQ(nameless(), nothing) << "while they are looked up";
  ASSERT_TRUE(QTest::qWaitFor([sheet] { return sheet->rows().size() == 2; }, 20'000));
  EXPECT_EQ(nameless(), nothing);
  EXPECT_EQ(unreached(*sheet), nothing);
  EXPECT_EQ(unreachable(*sheet), nothing);
}

TEST_F(SheetsAccessTest, TheBarAboutTheFileIsNamedAndReachedByTab) {
  start({writtenMap("plan.mindmap", "Plan")});
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
  writtenMap("plan.mindmap", "Theirs");
  window().session().checkFile();
  ASSERT_TRUE(window().documentBar().isVisible());
  EXPECT_EQ(nameless(), nothing);
  EXPECT_EQ(unreached(window().documentBar()), nothing);
  EXPECT_EQ(unreachable(window().documentBar()), nothing);
}

TEST_F(SheetsAccessTest, EveryControlOfTheSheetsIsReachedByTab) {
  startWithMap();
  editor().setSmartPasteText(QStringLiteral("One\nTwo"));
  editor().setShowSmartPaste(true);
  settle();
  EXPECT_EQ(unreachable(*window().smartPaste()), nothing);
  EXPECT_EQ(unreached(*window().smartPaste()), nothing) << "smart paste";
  editor().setShowSmartPaste(false);
  for (const Notification opened : {Notification::aiGenerate, Notification::showOnboarding}) {
    settle();
    notifications().post(opened);
    settle();
    if (OnboardingView* pages = window().onboarding())
      while (pages->currentPage() < OnboardingView::pageCount() - 1) key(Qt::Key_PageDown);
    const auto sheets = window().findChildren<Sheet*>();
    const auto found = std::ranges::find_if(sheets, [](const Sheet* sheet) { return sheet->isOpen(); });
    ASSERT_NE(found, sheets.end()) << static_cast<int>(opened);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(*found)->role(), QAccessible::Dialog) << static_cast<int>(opened);
    EXPECT_EQ(unreachable(**found), nothing) << static_cast<int>(opened);
    EXPECT_EQ(unreached(**found), nothing) << static_cast<int>(opened);
    key(Qt::Key_Escape);
  }
}

}  // namespace
}  // namespace quilmora
