#include <QScrollBar>
#include <QSignalSpy>

#include "app/companions/CanvasCompanions.h"
#include "app/companions/SearchBar.h"
#include "app/dialogs/TextField.h"
#include "app/look/Tokens.h"
#include "app/palette/CommandPalette.h"
#include "app/palette/PaletteFixture.h"
#include "app/window/Toolbar.h"
#include "canvas/view/TitleEditor.h"
#include "themes/CustomThemes.h"

namespace quilmora {
namespace {

// --- Opening and leaving ---

TEST_F(CommandPaletteTest, ItsKeyOpensItWithTheKeyboardInAnEmptyField) {
  open();
  EXPECT_TRUE(palette()->isVisible());
  EXPECT_EQ(QApplication::focusWidget(), &palette()->field());
  EXPECT_EQ(palette()->field().text(), QString());
  EXPECT_EQ(palette()->field().placeholderText(), QStringLiteral("Type a command..."));
  EXPECT_EQ(list().highlightedIndex(), 0);
}

TEST_F(CommandPaletteTest, IsNotThereBeforeItIsOpened) {
  startActive();
  EXPECT_EQ(palette(), nullptr);
  EXPECT_EQ(window().findChild<CommandPalette*>(), nullptr);
}

TEST_F(CommandPaletteTest, ItsKeyClosesItToo) {
  open();
  press(Qt::Key_K, Qt::ControlModifier);
  EXPECT_EQ(palette(), nullptr);
  EXPECT_TRUE(canvasHasKeyboard());
}

TEST_F(CommandPaletteTest, EscapeClosesItAndTheKeyboardIsBackWhereItWas) {
  open();
  press(Qt::Key_Escape);
  EXPECT_EQ(palette(), nullptr);
  EXPECT_TRUE(canvasHasKeyboard());
  window().toolbar().button(QStringLiteral("createNode"))->setFocus(Qt::TabFocusReason);
  press(Qt::Key_K, Qt::ControlModifier);
  ASSERT_NE(palette(), nullptr);
  press(Qt::Key_Escape);
  EXPECT_EQ(QApplication::focusWidget(), window().toolbar().button(QStringLiteral("createNode")));
}

TEST_F(CommandPaletteTest, EscapeEndsNothingElse) {
  startActive();
  editor().selectAll();
  press(Qt::Key_K, Qt::ControlModifier);
  press(Qt::Key_Escape);
  EXPECT_EQ(editor().selectedNodeIDs().size(), 1u);
}

TEST_F(CommandPaletteTest, EachOpeningIsNew) {
  open();
  type("tree");
  press(Qt::Key_Down);
  press(Qt::Key_Escape);
  press(Qt::Key_K, Qt::ControlModifier);
  EXPECT_EQ(palette()->field().text(), QString());
  EXPECT_EQ(list().highlightedIndex(), 0);
  EXPECT_EQ(titles().size(), 15);
}

TEST_F(CommandPaletteTest, APressBesideItClosesIt) {
  open();
  QTest::mousePress(&window().canvas(), Qt::LeftButton, {}, QPoint(20, 400));
  QTest::mouseRelease(&window().canvas(), Qt::LeftButton, {}, QPoint(20, 400));
  EXPECT_EQ(palette(), nullptr);
  press(Qt::Key_K, Qt::ControlModifier);
  ASSERT_NE(palette(), nullptr);
  // Even on something that a click does not focus.
  QTest::mouseClick(window().toolbar().button(QStringLiteral("toggleInspector")), Qt::LeftButton);
  EXPECT_EQ(palette(), nullptr);
  EXPECT_FALSE(window().showsInspector());
}

TEST_F(CommandPaletteTest, GoesWhenTheKeyboardGoes) {
  open();
  window().toolbar().button(QStringLiteral("createNode"))->setFocus(Qt::TabFocusReason);
  EXPECT_EQ(palette(), nullptr);
  EXPECT_EQ(QApplication::focusWidget(), window().toolbar().button(QStringLiteral("createNode")));
}

TEST_F(CommandPaletteTest, TabStaysInTheField) {
  open();
  press(Qt::Key_Tab);
  press(Qt::Key_Backtab, Qt::ShiftModifier);
  ASSERT_NE(palette(), nullptr);
  EXPECT_EQ(QApplication::focusWidget(), &palette()->field());
}

TEST_F(CommandPaletteTest, GoesWithItsWindow) {
  open();
  m_application.reset();
}

// --- Rows ---

TEST_F(CommandPaletteTest, WithoutAQueryTheFirstFifteenRowsShow) {
  open();
  EXPECT_EQ(titles(), lines({"AI Generate Map", "AI Chat", "AI Expand Node", "New Topic", "New Branch", "Duplicate",
                             "Delete", "Zoom to Fit", "Search", "Toggle Outline", "Presentation Mode",
                             "Recolor by Branch", "Recolor by Theme", "Tree Layout", "Vertical Layout"}));
}

TEST_F(CommandPaletteTest, TypingFiltersAndHighlightsTheFirstRow) {
  open();
  press(Qt::Key_Down);
  press(Qt::Key_Down);
  type("lay");
  EXPECT_EQ(titles(), lines({"Tree Layout", "Vertical Layout", "Radial Layout", "L/R Layout"}));
  EXPECT_EQ(list().highlightedIndex(), 0);
  press(Qt::Key_Down);
  press(Qt::Key_Backspace);
  EXPECT_EQ(list().highlightedIndex(), 0);
}

TEST_F(CommandPaletteTest, WhereNothingMatchesReturnDoesNothingAndThePaletteStays) {
  open();
  type("zzz");
  EXPECT_EQ(titles(), QStringList());
  EXPECT_FALSE(list().isVisible());
  press(Qt::Key_Down);
  press(Qt::Key_Return);
  ASSERT_NE(palette(), nullptr);
  EXPECT_EQ(editor().undoCount(), 0);
  press(Qt::Key_Backspace);
  press(Qt::Key_Backspace);
  press(Qt::Key_Backspace);
  EXPECT_EQ(titles().size(), 15);
  EXPECT_TRUE(list().isVisible());
}

TEST_F(CommandPaletteTest, ManyThemesAreCutToFifteenRows) {
  std::vector<CustomTheme> themes(5, {QStringLiteral("A"), QStringLiteral("Mine"), {}, {}, {}});
  saveCustomThemes(m_settings, themes);
  open();
  type("theme");
  EXPECT_EQ(titles().size(), 15);
  EXPECT_EQ(titles().first(), QStringLiteral("Recolor by Theme"));
  EXPECT_EQ(titles().last(), QStringLiteral("Theme: Mine"));
}

TEST_F(CommandPaletteTest, ArrowsStopAtTheEnds) {
  open();
  press(Qt::Key_Up);
  EXPECT_EQ(list().highlightedIndex(), 0);
  for (int i = 0; i < 30; ++i) press(Qt::Key_Down);
  EXPECT_EQ(list().highlightedIndex(), 14);
  press(Qt::Key_Up);
  EXPECT_EQ(list().highlightedIndex(), 13);
}

TEST_F(CommandPaletteTest, OfManyMatchesTheArrowsReachFifteen) {
  open();
  type("o");
  ASSERT_GE(filteredCommands(QStringLiteral("o"), m_settings).size(), 20u);
  for (int i = 0; i < 20; ++i) press(Qt::Key_Down);
  EXPECT_EQ(list().highlightedIndex(), 14);
}

TEST_F(CommandPaletteTest, TheHighlightedRowIsInTheMiddleOfTheList) {
  open();
  EXPECT_GT(list().verticalScrollBar()->maximum(), 0);
  for (int i = 0; i < 7; ++i) press(Qt::Key_Down);
  EXPECT_NEAR(middleOf(7).y(), list().viewport()->height() / 2, 2);
  for (int i = 0; i < 7; ++i) press(Qt::Key_Down);
  EXPECT_EQ(list().verticalScrollBar()->value(), list().verticalScrollBar()->maximum());
}

TEST_F(CommandPaletteTest, ThePointerHighlightsAndTheListRestsBelowIt) {
  open();
  hover(6);
  EXPECT_EQ(list().highlightedIndex(), 6);
  EXPECT_EQ(list().verticalScrollBar()->value(), 0);
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(&list(), &leave);
  EXPECT_NEAR(middleOf(6).y(), list().viewport()->height() / 2, 2);
}

TEST_F(CommandPaletteTest, AListThatMovesBelowAStillPointerKeepsItsHighlight) {
  open();
  hover(3);
  const QPoint still = list().viewport()->mapToGlobal(middleOf(3));
  press(Qt::Key_Down);
  QMouseEvent same(QEvent::MouseMove, list().viewport()->mapFromGlobal(still), still, Qt::NoButton, {}, {});
  QCoreApplication::sendEvent(list().viewport(), &same);
  EXPECT_EQ(list().highlightedIndex(), 4);
}

TEST_F(CommandPaletteTest, TheHighlightEasesOverBelowThePointerAlone) {
  open();
  const auto strongest = [&] {
    const QImage shown = list().viewport()->grab().toImage();
    const QColor accent = m_look->tokens().accentFill;
    const qreal ratio = shown.devicePixelRatio();
    // Near the left end of the second row, away from symbol and text.
    return shown.pixelColor(QPointF(3 * ratio, middleOf(1).y() * ratio).toPoint()) == accent;
  };
  press(Qt::Key_Down);
  EXPECT_TRUE(strongest());
  press(Qt::Key_Up);
  hover(1);
  EXPECT_FALSE(strongest());
  EXPECT_TRUE(QTest::qWaitFor(strongest));
}

// --- Running ---

TEST_F(CommandPaletteTest, ReturnRunsTheHighlightedRowAndCloses) {
  open();
  type("lavender");
  press(Qt::Key_Return);
  EXPECT_EQ(palette(), nullptr);
  EXPECT_EQ(editor().undoCount(), 1);
  EXPECT_TRUE(canvasHasKeyboard());
}

TEST_F(CommandPaletteTest, AClickRunsItsRowAndCloses) {
  open();
  type("theme: ocean");
  QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, middleOf(0));
  EXPECT_EQ(palette(), nullptr);
  EXPECT_EQ(editor().mindMap().canvas.themeId, QStringLiteral("ocean"));
  EXPECT_TRUE(canvasHasKeyboard());
}

TEST_F(CommandPaletteTest, AButtonReleasedOnAnotherRowRunsNothing) {
  open();
  QTest::mousePress(list().viewport(), Qt::LeftButton, {}, middleOf(0));
  QTest::mouseRelease(list().viewport(), Qt::LeftButton, {}, middleOf(1));
  EXPECT_NE(palette(), nullptr);
}

TEST_F(CommandPaletteTest, CountsAsOpenUntilTheCommandHasRun) {
  open();
  bool wasOpen = false;
  bool wasSeen = true;
  const auto receiver = notifications().observe(Notification::saveDocument, [&](const QVariant&) {
    wasOpen = palette() != nullptr;
    wasSeen = palette() != nullptr && palette()->isVisible();
  });
  m_panels.savePaths = {std::nullopt};
  type("save");
  press(Qt::Key_Return);
  EXPECT_TRUE(wasOpen);
  EXPECT_FALSE(wasSeen);
  EXPECT_EQ(palette(), nullptr);
}

TEST_F(CommandPaletteTest, SearchGetsTheKeyboard) {
  open();
  type("find nodes");
  press(Qt::Key_Return);
  EXPECT_TRUE(editor().isSearching());
  EXPECT_TRUE(isTextField(QApplication::focusWidget()));
  EXPECT_TRUE(window().companions().searchBar().isAncestorOf(QApplication::focusWidget()));
}

TEST_F(CommandPaletteTest, NewTopicLeavesTheKeyboardToTheCanvas) {
  startActive();
  window().toolbar().button(QStringLiteral("createNode"))->setFocus(Qt::TabFocusReason);
  press(Qt::Key_K, Qt::ControlModifier);
  type("new topic");
  press(Qt::Key_Return);
  EXPECT_EQ(editor().mindMap().nodes.size(), 2u);
  EXPECT_TRUE(canvasHasKeyboard());
}

TEST_F(CommandPaletteTest, ATitleThatIsBeingEditedIsKept) {
  startActive();
  editor().selectAll();
  press(Qt::Key_F2);
  m_scheduler.advance(TitleEditor::focusDelay);
  type("Typed");
  press(Qt::Key_K, Qt::ControlModifier);
  ASSERT_NE(palette(), nullptr);
  EXPECT_EQ(editor().mindMap().nodes[0].title, QStringLiteral("Typed"));
  press(Qt::Key_Escape);
  EXPECT_TRUE(canvasHasKeyboard());
}

TEST_F(CommandPaletteTest, KeysOfTheFieldAreNotTheCanvas) {
  startActive();
  editor().selectAll();
  press(Qt::Key_K, Qt::ControlModifier);
  type("a b");
  press(Qt::Key_Backspace);
  press(Qt::Key_Delete);
  press(Qt::Key_PageDown);
  EXPECT_EQ(palette()->field().text(), QStringLiteral("a "));
  EXPECT_EQ(editor().mindMap().nodes.size(), 1u);
  EXPECT_EQ(editor().mindMap().nodes[0].title, QStringLiteral("Start Here"));
  EXPECT_FALSE(editor().quickLookNodeID().has_value());
  press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_NE(palette()->field().text(), QStringLiteral("a "));
  EXPECT_EQ(editor().undoCount(), 0);
}

TEST_F(CommandPaletteTest, WorksInAPresentation) {
  startActive();
  editor().togglePresentation();
  press(Qt::Key_K, Qt::ControlModifier);
  ASSERT_NE(palette(), nullptr);
  type("presentation");
  press(Qt::Key_Return);
  EXPECT_FALSE(editor().isPresentationMode());
}

}  // namespace
}  // namespace quilmora
