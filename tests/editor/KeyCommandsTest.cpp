#include "editor/CommandRig.h"
#include "editor/KeyCommands.h"
#include "editor/WindowCommands.h"
#include "platform/Clipboard.h"
#include "platform/Scheduler.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

// Topics 0, 1 and 2 in a row from left to right and 3 below 0; 0 is selected.
struct Keyboard : CommandRig {
  Keyboard() : CommandRig(row()) { select({0}); }
  static MindMap row() {
    MindMap map = mapOf({}, {{0, 1}, {1, 2}});
    map.nodes = {topic(0, 0.0, 0.0), topic(1, 100.0, 0.0), topic(2, 200.0, 0.0), topic(3, 0.0, 100.0)};
    return map;
  }
  bool press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) { return keys.press(key, modifiers, false); }
  void turn() { scheduler.advance(std::chrono::milliseconds(0)); }

  MemoryClipboard clipboard;
  WindowCommands commands{editor, &clipboard};
  ManualScheduler scheduler;
  KeyCommands keys{editor, commands, scheduler};
};

constexpr int answeredKeys[] = {Qt::Key_Left,  Qt::Key_Right,     Qt::Key_Up,  Qt::Key_Down,  Qt::Key_Delete,
                                Qt::Key_Space, Qt::Key_Backspace, Qt::Key_Tab, Qt::Key_Escape};

}  // namespace

TEST(KeyCommands, ArrowsMoveTheSelectionAndPassOnWhereNothingLies) {
  Keyboard rig;
  EXPECT_TRUE(rig.press(Qt::Key_Right));
  EXPECT_EQ(rig.selected(), idSet({1}));
  EXPECT_TRUE(rig.press(Qt::Key_Left));
  EXPECT_EQ(rig.selected(), idSet({0}));
  EXPECT_TRUE(rig.press(Qt::Key_Down));
  EXPECT_EQ(rig.selected(), idSet({3}));
  EXPECT_TRUE(rig.press(Qt::Key_Up));
  EXPECT_EQ(rig.selected(), idSet({0}));
  rig.log.take();
  EXPECT_FALSE(rig.press(Qt::Key_Left));
  EXPECT_FALSE(rig.press(Qt::Key_Up));
  rig.expectNothing();
}

TEST(KeyCommands, ArrowsStepThroughAPresentation) {
  Keyboard rig;
  rig.editor.togglePresentation();
  EXPECT_TRUE(rig.press(Qt::Key_Right));
  EXPECT_EQ(rig.editor.presentationNodeIndex(), 1);
  EXPECT_TRUE(rig.press(Qt::Key_Down));
  EXPECT_EQ(rig.editor.presentationNodeIndex(), 2);
  EXPECT_TRUE(rig.press(Qt::Key_Left));
  EXPECT_EQ(rig.editor.presentationNodeIndex(), 1);
  EXPECT_TRUE(rig.press(Qt::Key_Up));
  EXPECT_EQ(rig.editor.presentationNodeIndex(), 0);
}

TEST(KeyCommands, DeleteRemovesSelectedTopics) {
  for (const int key : {Qt::Key_Delete, Qt::Key_Backspace}) {
    Keyboard rig;
    EXPECT_TRUE(rig.press(key));
    EXPECT_EQ(rig.map().nodes.size(), 3u);
    EXPECT_FALSE(rig.press(key));
    EXPECT_EQ(rig.editor.undoCount(), 1);
  }
}

TEST(KeyCommands, DeletePassesOnWithOnlyAnEdgeSelectedAndInAPresentation) {
  Keyboard rig;
  rig.editor.selectEdge(edgeId(0), false);
  rig.log.take();
  EXPECT_FALSE(rig.press(Qt::Key_Delete));
  rig.expectNothing();
  rig.editor.togglePresentation();
  rig.log.take();
  EXPECT_FALSE(rig.press(Qt::Key_Delete));
  EXPECT_FALSE(rig.press(Qt::Key_Backspace));
  rig.expectNothing();
}

TEST(KeyCommands, SpaceTogglesQuickLookOnTheNextTurn) {
  Keyboard rig;
  EXPECT_TRUE(rig.press(Qt::Key_Space));
  rig.expectNothing();
  rig.turn();
  EXPECT_EQ(rig.editor.quickLookNodeID(), topicId(0));
  EXPECT_TRUE(rig.press(Qt::Key_Space));
  rig.turn();
  EXPECT_EQ(rig.editor.quickLookNodeID(), std::nullopt);
}

TEST(KeyCommands, SpacePassesOnWithoutASelectedTopic) {
  Keyboard rig;
  rig.select({});
  EXPECT_FALSE(rig.press(Qt::Key_Space));
  EXPECT_EQ(rig.scheduler.waitingCount(), 0u);
}

TEST(KeyCommands, ControlASelectsAllTopicsOnTheNextTurn) {
  Keyboard rig;
  EXPECT_TRUE(rig.press(Qt::Key_A, Qt::ControlModifier));
  rig.expectNothing();
  rig.turn();
  EXPECT_EQ(rig.selected(), idSet({0, 1, 2, 3}));
}

TEST(KeyCommands, OtherKeysPassOn) {
  Keyboard rig;
  EXPECT_FALSE(rig.press(Qt::Key_A));
  EXPECT_FALSE(rig.press(Qt::Key_A, Qt::ShiftModifier));
  EXPECT_FALSE(rig.press(Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier));
  EXPECT_FALSE(rig.press(Qt::Key_V, Qt::ControlModifier));
  EXPECT_FALSE(rig.press(Qt::Key_Return));
  EXPECT_FALSE(rig.press(Qt::Key_F2));
  EXPECT_FALSE(rig.press(Qt::Key_Backtab, Qt::ShiftModifier));
  EXPECT_FALSE(rig.press(Qt::Key_Tab, Qt::ControlModifier));
  EXPECT_EQ(rig.scheduler.waitingCount(), 0u);
  rig.expectNothing();
}

TEST(KeyCommands, ControlVWithLinesOfTextAsksHowToPasteOnTheNextTurn) {
  Keyboard rig;
  rig.clipboard.setText(QStringLiteral(" a\n\tb\n"));
  EXPECT_TRUE(rig.press(Qt::Key_V, Qt::ControlModifier));
  rig.expectNothing();
  EXPECT_FALSE(rig.editor.showSmartPaste());
  EXPECT_EQ(rig.editor.smartPasteText(), QString());
  rig.turn();
  EXPECT_TRUE(rig.editor.showSmartPaste());
  EXPECT_EQ(rig.editor.smartPasteText(), QStringLiteral(" a\n\tb\n"));
  EXPECT_EQ(rig.log.take(), QStringLiteral("smartPasteText showSmartPaste"));
  rig.expectMapUntouched();
}

TEST(KeyCommands, ControlVTakesTheClipboardOfTheMomentOfTheKey) {
  Keyboard rig;
  rig.clipboard.setText(QStringLiteral("a\nb"));
  EXPECT_TRUE(rig.press(Qt::Key_V, Qt::ControlModifier));
  rig.clipboard.setText(QStringLiteral("c\nd"));
  rig.turn();
  EXPECT_EQ(rig.editor.smartPasteText(), QStringLiteral("a\nb"));
}

TEST(KeyCommands, ControlVPassesOnWithAnyOtherClipboard) {
  Keyboard rig;
  for (const QString& text : {QString(), QStringLiteral("one line"), QStringLiteral("x\n"), QStringLiteral(" \n \n")}) {
    rig.clipboard.setText(text);
    EXPECT_FALSE(rig.press(Qt::Key_V, Qt::ControlModifier)) << text.toStdString();
  }
  rig.clipboard.setText(std::nullopt);
  EXPECT_FALSE(rig.press(Qt::Key_V, Qt::ControlModifier));
  EXPECT_EQ(rig.scheduler.waitingCount(), 0u);
  rig.expectNothing();
}

TEST(KeyCommands, PastingPassesOnWithOtherModifiersAndWhereTextIsTyped) {
  Keyboard rig;
  rig.clipboard.setText(QStringLiteral("a\nb"));
  EXPECT_FALSE(rig.press(Qt::Key_V));
  EXPECT_FALSE(rig.press(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier));
  EXPECT_FALSE(rig.keys.press(Qt::Key_V, Qt::ControlModifier, true));
  rig.editor.setIsEditingInline(true);
  EXPECT_FALSE(rig.press(Qt::Key_V, Qt::ControlModifier));
  EXPECT_EQ(rig.scheduler.waitingCount(), 0u);
}

TEST(KeyCommands, KeypadKeysAreLikeTheOthers) {
  Keyboard rig;
  EXPECT_TRUE(rig.press(Qt::Key_Right, Qt::KeypadModifier));
  EXPECT_EQ(rig.selected(), idSet({1}));
  EXPECT_TRUE(rig.press(Qt::Key_A, Qt::ControlModifier | Qt::KeypadModifier));
}

TEST(KeyCommands, ArrowsAnswerByKeyWhateverIsHeld) {
  Keyboard rig;
  EXPECT_TRUE(rig.press(Qt::Key_Right, Qt::ShiftModifier));
  EXPECT_EQ(rig.selected(), idSet({1}));
}

TEST(KeyCommands, TabAddsAChildOfTheSelectedTopic) {
  Keyboard rig;
  EXPECT_TRUE(rig.press(Qt::Key_Tab));
  ASSERT_EQ(rig.map().nodes.size(), 5u);
  EXPECT_EQ(rig.editor.treeInfo().parent(rig.node(4).id), topicId(0));
  rig.select({});
  EXPECT_FALSE(rig.press(Qt::Key_Tab));
  EXPECT_EQ(rig.map().nodes.size(), 5u);
}

TEST(KeyCommands, EscapeEndsWhatIsOnAndThenPassesOn) {
  Keyboard rig;
  EXPECT_TRUE(rig.press(Qt::Key_Escape));
  EXPECT_TRUE(rig.selected().empty());
  EXPECT_FALSE(rig.press(Qt::Key_Escape));
}

TEST(KeyCommands, EverythingPassesOnWhileATitleIsEdited) {
  Keyboard rig;
  rig.editor.setIsEditingInline(true);
  rig.log.take();
  for (const int key : answeredKeys) EXPECT_FALSE(rig.press(key)) << key;
  EXPECT_FALSE(rig.press(Qt::Key_A, Qt::ControlModifier));
  rig.turn();
  rig.expectNothing();
}

TEST(KeyCommands, EverythingPassesOnWhileATextFieldHasTheKeyboard) {
  Keyboard rig;
  for (const int key : answeredKeys) EXPECT_FALSE(rig.keys.press(key, Qt::NoModifier, true)) << key;
  EXPECT_FALSE(rig.keys.press(Qt::Key_A, Qt::ControlModifier, true));
  rig.turn();
  rig.expectNothing();
}

TEST(KeyCommands, DeferredWorkOfAnEndedEditorIsDropped) {
  ManualScheduler scheduler;
  {
    CommandRig rig(mapOf({0}));
    MemoryClipboard clipboard;
    clipboard.setText(QStringLiteral("a\nb"));
    WindowCommands commands(rig.editor, &clipboard);
    KeyCommands keys(rig.editor, commands, scheduler);
    rig.select({0});
    EXPECT_TRUE(keys.press(Qt::Key_Space, Qt::NoModifier, false));
    EXPECT_TRUE(keys.press(Qt::Key_A, Qt::ControlModifier, false));
    EXPECT_TRUE(keys.press(Qt::Key_V, Qt::ControlModifier, false));
  }
  EXPECT_EQ(scheduler.waitingCount(), 3u);
  scheduler.advance(std::chrono::milliseconds(1));
  EXPECT_EQ(scheduler.waitingCount(), 0u);
}

TEST(KeyCommands, StaleSelectionsAreBorne) {
  Keyboard rig;
  rig.select({88});
  EXPECT_FALSE(rig.press(Qt::Key_Right));
  EXPECT_FALSE(rig.editor.undoCount());
  EXPECT_TRUE(rig.press(Qt::Key_Tab));
  EXPECT_EQ(rig.map().nodes.size(), 4u);
  EXPECT_TRUE(rig.press(Qt::Key_Space));
  rig.turn();
  EXPECT_EQ(rig.editor.quickLookNodeID(), topicId(88));
  EXPECT_TRUE(rig.press(Qt::Key_Delete));
  EXPECT_TRUE(rig.selected().empty());
  EXPECT_EQ(rig.map().nodes.size(), 4u);
}
