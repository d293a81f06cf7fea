#include <QAbstractButton>
#include <QClipboard>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>

#include "AppFixture.h"
#include "app/SystemClipboard.h"
#include "app/dialogs/SheetRow.h"
#include "app/flows/SmartPasteView.h"
#include "app/look/Widgets.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

class SmartPasteViewTest : public AppTest {
 protected:
  // Presses the key where a user's key would arrive, with the menus' keys before it.
  void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QWidget* owner = QApplication::focusWidget();
    ASSERT_NE(owner, nullptr);
    QTest::keyClick(owner, static_cast<Qt::Key>(key), modifiers);
  }
  void pasteText(const QString& text) {
    m_clipboard.setText(text);
    press(Qt::Key_V, Qt::ControlModifier);
    m_scheduler.advance(std::chrono::milliseconds(0));
  }
  SmartPasteView* sheet() { return window().smartPaste(); }
  std::vector<SheetRow*> rows() {
    const auto found = sheet()->findChildren<SheetRow*>();
    return {found.begin(), found.end()};
  }
  QStringList titles() {
    QStringList titles;
    for (const SheetRow* row : rows()) titles.append(row->title());
    return titles;
  }
  QStringList labels() {
    QStringList texts;
    for (const TextLabel* label : sheet()->findChildren<TextLabel*>()) texts.append(label->text());
    return texts;
  }
  QPushButton* cancel() { return sheet()->findChild<QPushButton*>(); }
  std::size_t topicCount() { return editor().mindMap().nodes.size(); }
};

TEST_F(SmartPasteViewTest, TheKeyOpensTheSheetOnTheNextTurn) {
  startActive();
  m_clipboard.setText(QStringLiteral("a\n  b\n"));
  press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(sheet(), nullptr);
  m_scheduler.advance(std::chrono::milliseconds(0));
  ASSERT_NE(sheet(), nullptr);
  EXPECT_TRUE(sheet()->isVisible());
  EXPECT_EQ(sheet()->text(), QStringLiteral("a\n  b\n"));
  EXPECT_EQ(labels(), QStringList({QStringLiteral("Smart Paste"), QStringLiteral("2 lines detected")}));
  EXPECT_EQ(titles(), QStringList({QStringLiteral("Single Node"), QStringLiteral("Multiple Nodes"),
                                   QStringLiteral("Nested Outline")}));
  EXPECT_EQ(rows()[0]->description(), QStringLiteral("Paste all text as one node's title"));
  EXPECT_EQ(rows()[1]->description(), QStringLiteral("One node per line (2 nodes)"));
  EXPECT_EQ(rows()[2]->description(), QStringLiteral("Preserve indentation as hierarchy"));
  EXPECT_EQ(cancel()->text().remove(u'&'), QStringLiteral("Cancel"));
  EXPECT_EQ(topicCount(), 1u);
}

TEST_F(SmartPasteViewTest, OnlyTheWaysThatSuitTheTextAreOffered) {
  startActive();
  pasteText(QStringLiteral("xy\n"));
  EXPECT_EQ(labels().last(), QStringLiteral("1 lines detected"));
  EXPECT_EQ(titles(), QStringList({QStringLiteral("Single Node")}));
  press(Qt::Key_Escape);
  pasteText(QStringLiteral("a\nb\nc"));
  EXPECT_EQ(titles(), QStringList({QStringLiteral("Single Node"), QStringLiteral("Multiple Nodes")}));
  press(Qt::Key_Escape);
  pasteText(QStringLiteral("\n  xy"));
  EXPECT_EQ(titles(), QStringList({QStringLiteral("Single Node")}));
}

TEST_F(SmartPasteViewTest, OtherClipboardsOpenNothing) {
  startActive();
  pasteText(QStringLiteral("x\n"));
  EXPECT_EQ(sheet(), nullptr);
  pasteText(QStringLiteral("one line"));
  EXPECT_EQ(sheet(), nullptr);
  m_clipboard.setText(std::nullopt);
  press(Qt::Key_V, Qt::ControlModifier);
  m_scheduler.advance(std::chrono::milliseconds(0));
  EXPECT_EQ(sheet(), nullptr);
}

TEST_F(SmartPasteViewTest, ATitleBeingEditedTakesTheTextItself) {
  startActive();
  editor().selectAll();
  press(Qt::Key_Return);
  ASSERT_TRUE(editor().isEditingInline());
  pasteText(QStringLiteral("a\nb"));
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_FALSE(editor().showSmartPaste());
}

TEST_F(SmartPasteViewTest, ReturnOnTheFirstRowPastesOneTopicAndTheCanvasHasTheNextKey) {
  startActive();
  pasteText(QStringLiteral(" a\nb "));
  press(Qt::Key_Return);
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_FALSE(editor().showSmartPaste());
  EXPECT_EQ(editor().smartPasteText(), QStringLiteral(" a\nb "));
  ASSERT_EQ(topicCount(), 2u);
  EXPECT_EQ(editor().mindMap().nodes[1].title, QStringLiteral("a\nb"));
  EXPECT_EQ(QApplication::focusWidget(), &window().canvas());
  press(Qt::Key_Delete);
  EXPECT_EQ(topicCount(), 1u);
}

TEST_F(SmartPasteViewTest, ArrowsChooseARow) {
  startActive();
  pasteText(QStringLiteral("a\n  b"));
  EXPECT_EQ(QApplication::focusWidget(), rows()[0]);
  press(Qt::Key_Down);
  EXPECT_EQ(QApplication::focusWidget(), rows()[1]);
  press(Qt::Key_Down);
  press(Qt::Key_Down);
  EXPECT_EQ(QApplication::focusWidget(), cancel());
  press(Qt::Key_Down);
  EXPECT_EQ(QApplication::focusWidget(), rows()[0]);
  press(Qt::Key_Up);
  press(Qt::Key_Up);
  EXPECT_EQ(QApplication::focusWidget(), rows()[2]);
  press(Qt::Key_Enter);
  ASSERT_EQ(topicCount(), 3u);
  const QUuid b = editor().mindMap().nodes[2].id;
  EXPECT_EQ(editor().treeInfo().parent(b), editor().mindMap().nodes[1].id);
}

TEST_F(SmartPasteViewTest, MnemonicsAndSpaceChooseToo) {
  startActive();
  pasteText(QStringLiteral("a\n  b"));
  press(Qt::Key_M, Qt::AltModifier);
  EXPECT_EQ(topicCount(), 3u);
  EXPECT_EQ(sheet(), nullptr);
  pasteText(QStringLiteral("a\n  b"));
  press(Qt::Key_Tab);
  press(Qt::Key_Tab);
  press(Qt::Key_Space);
  EXPECT_EQ(topicCount(), 5u);
  pasteText(QStringLiteral("a\n  b"));
  press(Qt::Key_C, Qt::AltModifier);
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_EQ(topicCount(), 5u);
}

TEST_F(SmartPasteViewTest, AClickOnARowChoosesIt) {
  startActive();
  pasteText(QStringLiteral("a\nb"));
  QTest::mouseClick(rows()[1], Qt::LeftButton);
  EXPECT_EQ(topicCount(), 3u);
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_EQ(QApplication::focusWidget(), &window().canvas());
}

TEST_F(SmartPasteViewTest, EscapeAndCancelPasteNothing) {
  startActive();
  pasteText(QStringLiteral("a\nb"));
  press(Qt::Key_Escape);
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_FALSE(editor().showSmartPaste());
  EXPECT_EQ(QApplication::focusWidget(), &window().canvas());
  pasteText(QStringLiteral("a\nb"));
  QTest::mouseClick(cancel(), Qt::LeftButton);
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_EQ(topicCount(), 1u);
  EXPECT_EQ(editor().undoCount(), 0);
}

TEST_F(SmartPasteViewTest, NothingElseHearsTheKeyboardWhileItIsOpen) {
  startActive();
  pasteText(QStringLiteral("a\n  b"));
  press(Qt::Key_N, Qt::ControlModifier);
  press(Qt::Key_A, Qt::ControlModifier);
  press(Qt::Key_V, Qt::ControlModifier);
  press(Qt::Key_Delete);
  press(Qt::Key_X);
  m_scheduler.advance(std::chrono::milliseconds(0));
  EXPECT_EQ(topicCount(), 1u);
  EXPECT_TRUE(editor().selectedNodeIDs().empty());
  for (int i = 0; i < 9; ++i) {
    press(Qt::Key_Tab, i < 5 ? Qt::NoModifier : Qt::ShiftModifier);
    EXPECT_TRUE(sheet()->isAncestorOf(QApplication::focusWidget())) << i;
  }
  window().canvas().setFocus();
  EXPECT_EQ(QApplication::focusWidget(), rows()[0]);
}

TEST_F(SmartPasteViewTest, ClicksOnTheVeilReachNothing) {
  startActive();
  pasteText(QStringLiteral("a\nb"));
  EXPECT_EQ(sheet()->geometry(), window().rect());
  EXPECT_EQ(window().childAt(window().canvas().mapTo(&window(), QPoint(5, 5))), sheet());
  QTest::mouseClick(sheet(), Qt::LeftButton, {}, QPoint(5, 5));
  EXPECT_NE(sheet(), nullptr);
}

TEST_F(SmartPasteViewTest, ASecondTextTakesThePlaceOfTheFirst) {
  startActive();
  pasteText(QStringLiteral("a\nb"));
  editor().setSmartPasteText(QStringLiteral("a\nb\nc"));
  editor().setShowSmartPaste(true);
  EXPECT_EQ(labels().last(), QStringLiteral("3 lines detected"));
  press(Qt::Key_M, Qt::AltModifier);
  EXPECT_EQ(topicCount(), 4u);
  EXPECT_EQ(QApplication::focusWidget(), &window().canvas());
}

// Everything is inside the panel and no text is cut off.
TEST_F(SmartPasteViewTest, FitsItsWordsInAnyWindow) {
  startActive();
  QString text;
  for (int i = 0; i < 12'345; ++i) text += QStringLiteral("  line\n");
  pasteText(text);
  for (const QSize size : {QSize(1280, 800), QSize(700, 480), QSize(560, 380)}) {
    window().setMinimumSize(size);
    window().resize(size);
    qApp->processEvents();
    const QRect panel = sheet()->panel().geometry();
    EXPECT_TRUE(sheet()->rect().contains(panel)) << size.height();
    int bottom = 0;
    for (SheetRow* row : rows()) {
      EXPECT_GE(row->height(), row->heightForWidth(row->width())) << size.height();
      EXPECT_GE(row->y(), bottom);
      bottom = row->geometry().bottom();
    }
    EXPECT_GT(cancel()->y(), bottom);
    EXPECT_LE(cancel()->geometry().bottom() + metrics::gap, panel.height()) << size.height();
  }
}

TEST(SheetRow, LongWordsWrapInsteadOfBeingCut) {
  MemorySettingsStore settings;
  FixedDesktopAppearance desktop;
  const Look look(settings, desktop);
  const SheetRow row(look, QStringLiteral("list.bullet"), QStringLiteral("&Title"),
                     QStringLiteral("A description of so many words that one line has no room for all of them"));
  EXPECT_EQ(row.title(), QStringLiteral("Title"));
  EXPECT_EQ(row.accessibleName(), QStringLiteral("Title"));
  EXPECT_GT(row.heightForWidth(200), row.heightForWidth(row.sizeHint().width()));
  EXPECT_EQ(row.heightForWidth(row.sizeHint().width()), row.sizeHint().height());
}

// --- The desktop's clipboard ---

class SystemClipboardTest : public ::testing::Test {
 protected:
  void TearDown() override { QGuiApplication::clipboard()->clear(); }
  static std::optional<QString> textOf(QMimeData* content) {
    QGuiApplication::clipboard()->setMimeData(content);
    return SystemClipboard().text();
  }
};

TEST_F(SystemClipboardTest, GivesTextAsItStands) {
  auto* content = new QMimeData;
  content->setText(QStringLiteral(" a\r\n\tb\n"));
  EXPECT_EQ(textOf(content), QStringLiteral(" a\r\n\tb\n"));
}

TEST_F(SystemClipboardTest, PicturesAndFilesAloneAreNoText) {
  auto* picture = new QMimeData;
  picture->setImageData(QImage(2, 2, QImage::Format_RGB32));
  EXPECT_EQ(textOf(picture), std::nullopt);
  auto* files = new QMimeData;
  files->setUrls({QUrl(QStringLiteral("file:///tmp/a.png")), QUrl(QStringLiteral("file:///tmp/b.png"))});
  EXPECT_EQ(textOf(files), std::nullopt);
  auto* page = new QMimeData;
  page->setHtml(QStringLiteral("<p>a<br>b"));
  EXPECT_EQ(textOf(page), std::nullopt);
}

TEST_F(SystemClipboardTest, TextBesideOtherThingsCounts) {
  auto* both = new QMimeData;
  both->setImageData(QImage(2, 2, QImage::Format_RGB32));
  both->setUrls({QUrl(QStringLiteral("file:///tmp/a.png"))});
  both->setText(QStringLiteral("a\nb"));
  EXPECT_EQ(textOf(both), QStringLiteral("a\nb"));
}

TEST_F(SystemClipboardTest, AnEmptyClipboardHasNoText) {
  QGuiApplication::clipboard()->clear();
  EXPECT_EQ(SystemClipboard().text().value_or(QString()), QString());
}

}  // namespace
}  // namespace quilmora
