#include <QClipboard>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPointer>
#include <QScrollBar>
#include <QTextDocument>

#include "canvas/view/WindowRig.h"
#include "support/QtPrinters.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

struct TitleEditing : testing::Test {
  TitleEditing() { other.show(); }
  WindowRig rig{mapWith({topic(1, 100, 100), topic(2, 300, 100), topic(3, 300, 250)}, {{1, 2}})};
  QLineEdit other{&rig.window};

  QRect textArea() {
    TitleEditor* field = rig.view.titleEditor();
    return QRect(field->viewport()->mapTo(&rig.view, QPoint()), field->viewport()->size());
  }
};

// The rectangle of the black and grey pixels around the middle of a topic; the blue of a selection is bright.
QRect inkAround(WindowRig& rig, QPoint center) {
  const QImage picture = rig.view.grab().toImage();
  QRect ink;
  for (int y = std::max(0, center.y() - 60); y < std::min(picture.height(), center.y() + 60); ++y)
    for (int x = std::max(0, center.x() - 220); x < std::min(picture.width(), center.x() + 220); ++x)
      if (picture.pixelColor(x, y).value() < 160) ink |= QRect(x, y, 1, 1);
  return ink;
}

MindMap blackOnWhite(const QString& title) {
  MindMap map = mapWith({topic(1, 0, 0)});
  map.canvas.background = QStringLiteral("#FFFFFF");
  map.nodes.update(0, [&](Node& node) {
    node.title = title;
    node.style.fill = QStringLiteral("#FFFFFF");
    node.style.stroke = QStringLiteral("#FFFFFF");
    node.style.textColor = QStringLiteral("#000000");
  });
  return map;
}

}  // namespace

TEST_F(TitleEditing, DoubleClickOpensTheFieldWithTheTitleSelected) {
  QTest::mouseDClick(rig.handle(), Qt::LeftButton, {}, rig.at(1));
  TitleEditor* field = rig.view.titleEditor();
  ASSERT_NE(field, nullptr);
  EXPECT_EQ(rig.view.gestures().state().editingNodeID, topicId(1));
  EXPECT_EQ(field->editableTitle(), QStringLiteral("Topic 1"));
  EXPECT_EQ(field->textCursor().selectedText(), QStringLiteral("Topic 1"));
}

TEST_F(TitleEditing, FieldTakesTheKeyboardAfterAMoment) {
  QTest::mouseDClick(rig.handle(), Qt::LeftButton, {}, rig.at(1));
  EXPECT_TRUE(rig.view.hasFocus());
  rig.scheduler.advance(std::chrono::milliseconds(49));
  EXPECT_TRUE(rig.view.hasFocus());
  rig.scheduler.advance(std::chrono::milliseconds(1));
  EXPECT_TRUE(rig.view.titleEditor()->hasFocus());
  EXPECT_EQ(rig.scheduler.waitingCount(), 0u);
}

TEST_F(TitleEditing, LettersBeforeThatMomentAreNotLost) {
  rig.click(rig.at(1));
  rig.key(Qt::Key_F2);
  rig.type(QStringLiteral("a"));
  rig.type(QStringLiteral("b"));
  ASSERT_NE(rig.view.titleEditor(), nullptr);
  EXPECT_EQ(rig.view.titleEditor()->editableTitle(), QStringLiteral("ab"));
}

TEST_F(TitleEditing, ReturnCommitsAndGivesTheKeyboardBack) {
  rig.editTitleOf(1);
  rig.type(QStringLiteral("Renamed"));
  rig.key(Qt::Key_Return);
  EXPECT_EQ(rig.titleOf(1), QStringLiteral("Renamed"));
  EXPECT_EQ(rig.view.titleEditor(), nullptr);
  EXPECT_FALSE(rig.editor.isEditingInline());
  EXPECT_TRUE(rig.view.hasFocus());
  EXPECT_EQ(rig.editor.undoCount(), 1);
  rig.key(Qt::Key_Tab);
  EXPECT_EQ(rig.editor.mindMap().nodes.size(), 4u);
}

TEST_F(TitleEditing, EscapeCancels) {
  rig.editTitleOf(1);
  rig.type(QStringLiteral("Renamed"));
  rig.key(Qt::Key_Escape);
  EXPECT_EQ(rig.titleOf(1), QStringLiteral("Topic 1"));
  EXPECT_EQ(rig.view.titleEditor(), nullptr);
  EXPECT_FALSE(rig.editor.isEditingInline());
  EXPECT_EQ(rig.editor.undoCount(), 0);
  EXPECT_TRUE(rig.view.hasFocus());
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1)}));
}

TEST_F(TitleEditing, ReturnInATitleOfTwoLinesTypesAThird) {
  rig.editor.setNodeTitle(topicId(1), QStringLiteral("one\ntwo"));
  rig.editTitleOf(1);
  rig.key(Qt::Key_End, Qt::ControlModifier);
  rig.key(Qt::Key_Return);
  ASSERT_NE(rig.view.titleEditor(), nullptr);
  EXPECT_EQ(rig.view.titleEditor()->editableTitle(), QStringLiteral("one\ntwo\n"));
  rig.type(QStringLiteral("three"));
  rig.key(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(rig.titleOf(1), QStringLiteral("one\ntwo\nthree"));
  EXPECT_EQ(rig.view.titleEditor(), nullptr);
}

TEST_F(TitleEditing, ShiftReturnTypesTheFirstLineBreak) {
  rig.editTitleOf(1);
  rig.type(QStringLiteral("one"));
  rig.key(Qt::Key_Return, Qt::ShiftModifier);
  rig.type(QStringLiteral("two"));
  rig.key(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(rig.titleOf(1), QStringLiteral("one\ntwo"));
}

TEST_F(TitleEditing, ControlReturnCommitsASingleLineToo) {
  rig.editTitleOf(1);
  rig.type(QStringLiteral("x"));
  rig.key(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(rig.titleOf(1), QStringLiteral("x"));
}

TEST_F(TitleEditing, ClickOnTheCanvasCommits) {
  rig.editTitleOf(1);
  rig.type(QStringLiteral("Left"));
  rig.click({20, 550});
  EXPECT_EQ(rig.titleOf(1), QStringLiteral("Left"));
  EXPECT_EQ(rig.view.titleEditor(), nullptr);
  EXPECT_TRUE(rig.view.hasFocus());
}

TEST_F(TitleEditing, FieldElsewhereTakesTheKeyboardAndKeepsIt) {
  rig.editTitleOf(1);
  rig.type(QStringLiteral("Left"));
  other.setFocus();
  EXPECT_EQ(rig.titleOf(1), QStringLiteral("Left"));
  EXPECT_TRUE(other.hasFocus());
}

TEST_F(TitleEditing, AnotherWindowInFrontKeepsTheEdit) {
  rig.editTitleOf(1);
  rig.type(QStringLiteral("Half"));
  QFocusEvent away(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
  QCoreApplication::sendEvent(rig.view.titleEditor(), &away);
  EXPECT_NE(rig.view.titleEditor(), nullptr);
  EXPECT_EQ(rig.titleOf(1), QStringLiteral("Topic 1"));
}

TEST_F(TitleEditing, DeleteAndTabBelongToTheText) {
  rig.editTitleOf(1);
  rig.key(Qt::Key_Delete);
  rig.key(Qt::Key_Backspace);
  rig.key(Qt::Key_Tab);
  rig.key(Qt::Key_Backtab);
  EXPECT_EQ(rig.editor.mindMap().nodes.size(), 3u);
  ASSERT_NE(rig.view.titleEditor(), nullptr);
  EXPECT_TRUE(rig.view.titleEditor()->hasFocus());
  EXPECT_EQ(rig.view.titleEditor()->editableTitle(), QString());
}

TEST_F(TitleEditing, UndoInTheFieldIsItsOwn) {
  rig.editTitleOf(1);
  rig.type(QStringLiteral("abc"));
  rig.key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(rig.view.titleEditor()->editableTitle(), QStringLiteral("Topic 1"));
  EXPECT_EQ(rig.editor.undoCount(), 0);
  EXPECT_EQ(rig.editor.redoCount(), 0);
}

TEST_F(TitleEditing, TopicDeletedMeanwhileTakesTheFieldWithIt) {
  rig.editTitleOf(3);
  rig.type(QStringLiteral("gone"));
  rig.editor.deleteNode(topicId(3));
  EXPECT_EQ(rig.view.titleEditor(), nullptr);
  EXPECT_FALSE(rig.editor.isEditingInline());
  EXPECT_EQ(rig.editor.mindMap().nodes.size(), 2u);
  QApplication::processEvents();
  EXPECT_TRUE(rig.view.hasFocus());
}

TEST_F(TitleEditing, TopicUndoneAwayTakesTheFieldWithIt) {
  rig.editor.createChild(topicId(2));
  rig.key(Qt::Key_Return);
  ASSERT_NE(rig.view.titleEditor(), nullptr);
  rig.scheduler.advance(TitleEditor::focusDelay);
  rig.editor.undo();
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(rig.view.titleEditor(), nullptr);
  EXPECT_EQ(rig.editor.mindMap().nodes.size(), 3u);
  EXPECT_EQ(rig.editor.undoCount(), 0);
}

TEST_F(TitleEditing, CollapsedBranchCommitsTheFieldInIt) {
  rig.editTitleOf(2);
  rig.type(QStringLiteral("Hidden"));
  rig.editor.toggleCollapsed(topicId(1));
  EXPECT_EQ(rig.view.titleEditor(), nullptr);
  EXPECT_EQ(rig.titleOf(2), QStringLiteral("Hidden"));
}

TEST_F(TitleEditing, CommitOnDemandIsForThoseAboutToSave) {
  rig.view.commitTitleEdit();
  EXPECT_EQ(rig.editor.undoCount(), 0);
  rig.editTitleOf(1);
  rig.type(QStringLiteral("Saved"));
  rig.view.commitTitleEdit();
  EXPECT_EQ(rig.titleOf(1), QStringLiteral("Saved"));
}

TEST_F(TitleEditing, ViewMayEndWhileATitleIsEdited) {
  auto passing = std::make_unique<WindowRig>(mapWith({topic(1, 100, 100)}));
  passing->editTitleOf(1);
  passing->type(QStringLiteral("never"));
  const QPointer<TitleEditor> field = passing->view.titleEditor();
  ASSERT_TRUE(field);
  int changes = 0;
  QObject::connect(&passing->editor, &MindMapViewModel::mindMapChanged, [&] { ++changes; });
  passing.reset();
  QApplication::processEvents();
  EXPECT_FALSE(field);
  EXPECT_EQ(changes, 0);
}

TEST_F(TitleEditing, SpacesThatDoNotBreakAreKept) {
  rig.editor.setNodeTitle(topicId(1), QStringLiteral("10\u00A0km"));
  rig.editTitleOf(1);
  rig.key(Qt::Key_Return);
  EXPECT_EQ(rig.titleOf(1), QStringLiteral("10\u00A0km"));
}

TEST_F(TitleEditing, PastedTextIsPlain) {
  rig.editTitleOf(1);
  auto* data = new QMimeData;
  data->setHtml(QStringLiteral("<b>bold</b>"));
  data->setText(QStringLiteral("bold"));
  QApplication::clipboard()->setMimeData(data);
  rig.key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(rig.view.titleEditor()->toPlainText(), QStringLiteral("bold"));
  EXPECT_FALSE(rig.view.titleEditor()->textCursor().charFormat().font().bold());
}

TEST_F(TitleEditing, InputMethodComposesInTheField) {
  TitleEditor* field = rig.editTitleOf(1);
  EXPECT_TRUE(field->testAttribute(Qt::WA_InputMethodEnabled));
  QInputMethodEvent composing(QStringLiteral("にほ"), {});
  QCoreApplication::sendEvent(field, &composing);
  EXPECT_EQ(field->shownTitle(), QStringLiteral("にほ"));
  QInputMethodEvent done;
  done.setCommitString(QStringLiteral("日本"));
  QCoreApplication::sendEvent(field, &done);
  rig.key(Qt::Key_Return);
  EXPECT_EQ(rig.titleOf(1), QStringLiteral("日本"));
}

TEST_F(TitleEditing, CompositionThatBeginsBeforeTheFieldHasTheKeyboardGoesOn) {
  rig.click(rig.at(1));
  rig.key(Qt::Key_F2);
  TitleEditor* field = rig.view.titleEditor();
  ASSERT_NE(field, nullptr);
  EXPECT_TRUE(rig.view.testAttribute(Qt::WA_InputMethodEnabled));
  EXPECT_TRUE(rig.view.rect().contains(rig.view.inputMethodQuery(Qt::ImCursorRectangle).toRectF().center().toPoint()));
  const auto compose = [&](const QString& preedit, const QString& done = QString()) {
    QInputMethodEvent event(preedit, {});
    event.setCommitString(done);
    QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
  };
  compose(QStringLiteral("n"));
  EXPECT_EQ(field->shownTitle(), QStringLiteral("n"));
  rig.scheduler.advance(TitleEditor::focusDelay);
  EXPECT_TRUE(rig.view.hasFocus());
  compose(QStringLiteral("に"));
  compose(QString(), QStringLiteral("日"));
  EXPECT_TRUE(field->hasFocus());
  compose(QStringLiteral("ほん"));
  compose(QString(), QStringLiteral("本"));
  rig.key(Qt::Key_Return);
  EXPECT_EQ(rig.titleOf(1), QStringLiteral("日本"));
  // The topic is still selected and accepts letters.
  EXPECT_TRUE(rig.view.testAttribute(Qt::WA_InputMethodEnabled));
  rig.editor.clearSelection();
  EXPECT_FALSE(rig.view.testAttribute(Qt::WA_InputMethodEnabled));
}

TEST_F(TitleEditing, ZoomInTheMiddleOfAnEditIsNoStepOfItsOwn) {
  rig.editor.setNodeTitle(topicId(1), QStringLiteral("one\ntwo"));
  TitleEditor* field = rig.editTitleOf(1);
  EXPECT_FALSE(field->document()->isUndoAvailable());
  rig.editor.zoomAt(0.6, 0, 0);
  EXPECT_FALSE(field->document()->isUndoAvailable());
  rig.key(Qt::Key_End, Qt::ControlModifier);
  rig.type(QStringLiteral("x"));
  rig.editor.zoomAt(0.8, 0, 0);
  rig.key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(field->editableTitle(), QStringLiteral("one\ntwo"));
  rig.editor.zoomAt(0.7, 0, 0);
  rig.key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(field->editableTitle(), QStringLiteral("one\ntwox"));
}

// --- Where the field is ---

TEST_F(TitleEditing, TextStandsInTheMiddleOfItsTopic) {
  rig.editTitleOf(1);
  EXPECT_NEAR(textArea().center().x(), rig.at(1).x(), 3);
  EXPECT_NEAR(textArea().center().y(), rig.at(1).y(), 2);
}

TEST_F(TitleEditing, FieldFollowsPanAndZoom) {
  rig.editTitleOf(1);
  const QRect before = textArea();
  rig.editor.setCanvasOffset(rig.editor.canvasOffset() + QPointF(40, -30));
  EXPECT_EQ(textArea(), before.translated(40, -30));
  rig.editor.zoomAt(2.0, 0, 0);
  EXPECT_NEAR(textArea().center().x(), rig.at(1).x(), 3);
  EXPECT_NEAR(textArea().width(), 2 * before.width(), 6);
  EXPECT_NEAR(textArea().height(), 2 * before.height(), 3);
}

TEST_F(TitleEditing, FieldGrowsWithItsTextAndWrapsAtTwoHundred) {
  rig.editTitleOf(1);
  rig.type(QStringLiteral("x"));
  EXPECT_NEAR(rig.view.titleEditor()->width(), 80, 1);
  EXPECT_NEAR(rig.view.titleEditor()->height(), 20, 1);
  rig.type(QStringLiteral("a title that is far too long for one line of a topic on the canvas"));
  EXPECT_LE(textArea().width(), 204);
  EXPECT_GT(textArea().width(), 150);
  EXPECT_GT(textArea().height(), 36);
  EXPECT_NEAR(textArea().center().y(), rig.at(1).y(), 2);
  EXPECT_EQ(rig.view.titleEditor()->verticalScrollBar()->value(), 0);
  EXPECT_LE(rig.view.titleEditor()->document()->size().height(), textArea().height() + 1);
}

TEST(TitleField, BearsATopicBeyondAnyScreen) {
  WindowRig rig(mapWith({topic(1, 0, 0), topic(2, 1e300, -1e300)}));
  rig.editor.setSelectedNodeIDs({topicId(2)});
  rig.key(Qt::Key_F2);
  rig.scheduler.advance(TitleEditor::focusDelay);
  rig.type(QStringLiteral("far"));
  rig.key(Qt::Key_Return);
  EXPECT_EQ(rig.titleOf(2), QStringLiteral("far"));
}

// Letters and lines have whole pixels at each size, so they may drift by one in addition to the size of a unit.
TEST(TitleField, MovesNoLetterByMoreThanAUnitAndAPixel) {
  for (const QString& title :
       {QStringLiteral("Hg"), QStringLiteral("Ten days in Portugal"),
        QStringLiteral("A longer title that runs over more than a single line"), QStringLiteral("שלום עולם"),
        QStringLiteral("two\nlines"), QStringLiteral("H\nsix\nlines\nof\na\nH")})
    for (const double zoom : {0.4, 0.6, 0.75, 1.0, 1.3, 2.0}) {
      WindowRig rig(blackOnWhite(title));
      rig.editor.setCanvasZoom(zoom);
      const QRect before = inkAround(rig, rig.at(1));
      ASSERT_GT(before.width(), 5);
      // The field has no text cursor yet, as it does not have the keyboard.
      QTest::mouseDClick(rig.handle(), Qt::LeftButton, {}, rig.at(1));
      TitleEditor* field = rig.view.titleEditor();
      ASSERT_NE(field, nullptr);
      QTextCursor cursor = field->textCursor();
      cursor.clearSelection();
      field->setTextCursor(cursor);
      const QRect during = inkAround(rig, rig.at(1));
      const double allowed = std::min(zoom, 0.5) + 1.0;
      EXPECT_NEAR(during.left(), before.left(), allowed) << title.toStdString() << " at " << zoom;
      EXPECT_NEAR(during.right(), before.right(), allowed) << title.toStdString() << " at " << zoom;
      EXPECT_NEAR(during.top(), before.top(), allowed) << title.toStdString() << " at " << zoom;
      EXPECT_NEAR(during.bottom(), before.bottom(), allowed) << title.toStdString() << " at " << zoom;
    }
}
