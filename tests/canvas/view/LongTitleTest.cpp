#include <QClipboard>
#include <QMimeData>
#include <QTextDocument>
#include <rapidcheck/gtest.h>

#include "canvas/view/WindowRig.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

// Numbered letters without spaces between them.
QString longText(int length) {
  QString text;
  for (int number = 0; text.size() < length; ++number) text += QString::number(number) + QLatin1Char('x');
  return text.left(length);
}

struct LongTitle : testing::Test {
  WindowRig rig{mapWith({topic(1, 100, 100), topic(2, 300, 100)})};

  TitleEditor* open(const QString& title) {
    rig.editor.setNodeTitle(topicId(1), title);
    rig.editor.setSelectedNodeIDs({topicId(1)});
    rig.key(Qt::Key_F2);
    rig.scheduler.advance(TitleEditor::focusDelay);
    return rig.view.titleEditor();
  }
  void paste(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    rig.key(Qt::Key_V, Qt::ControlModifier);
  }
};

bool isBounded(const TitleEditor& field) {
  return field.document()->characterCount() <= TextPart::longest + 1;
}

}  // namespace

TEST_F(LongTitle, IsLaidOutInPartAndKeptAsAWhole) {
  const QString title = longText(1'000'000);
  TitleEditor* field = open(title);
  EXPECT_TRUE(isBounded(*field));
  EXPECT_EQ(field->editableTitle(), title);
  rig.key(Qt::Key_End, Qt::ControlModifier);
  rig.type(QStringLiteral("!"));
  EXPECT_TRUE(isBounded(*field));
  EXPECT_EQ(field->editableTitle(), title + QLatin1Char('!'));
  rig.key(Qt::Key_Home, Qt::ControlModifier);
  rig.type(QStringLiteral("?"));
  rig.key(Qt::Key_Return);
  EXPECT_EQ(rig.titleOf(1), QLatin1Char('?') + title + QLatin1Char('!'));
}

TEST_F(LongTitle, IsReplacedAsAWholeByTheFirstLetterAndComesBackByUndo) {
  const QString title = longText(5000);
  TitleEditor* field = open(title);
  rig.type(QStringLiteral("a"));
  EXPECT_EQ(field->editableTitle(), QStringLiteral("a"));
  QApplication::processEvents();
  rig.key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(field->editableTitle(), title);
  rig.key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(field->editableTitle(), QStringLiteral("a"));
}

TEST_F(LongTitle, IsCopiedAsAWhole) {
  const QString title = longText(5000);
  open(title);
  rig.key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), title);
  rig.key(Qt::Key_Right);
  rig.key(Qt::Key_A, Qt::ControlModifier);
  rig.key(Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(rig.view.titleEditor()->editableTitle(), QString());
  EXPECT_EQ(QGuiApplication::clipboard()->text(), title);
}

TEST_F(LongTitle, PasteIsTakenBackAsAWhole) {
  TitleEditor* field = open(QStringLiteral("Topic"));
  rig.key(Qt::Key_End);
  paste(longText(100'000));
  EXPECT_TRUE(isBounded(*field));
  EXPECT_EQ(field->editableTitle(), QStringLiteral("Topic") + longText(100'000));
  rig.type(QStringLiteral("end"));
  EXPECT_EQ(field->editableTitle(), QStringLiteral("Topic") + longText(100'000) + QStringLiteral("end"));
  for (int i = 0; i < 2; ++i) rig.key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(field->editableTitle(), QStringLiteral("Topic"));
}

TEST_F(LongTitle, PictureOrPageWithoutTextInTheClipboardChangesNothing) {
  TitleEditor* field = open(QStringLiteral("Topic"));
  auto* page = new QMimeData;
  page->setHtml(QStringLiteral("<b>bold</b>"));
  QGuiApplication::clipboard()->setMimeData(page);
  field->paste();
  EXPECT_EQ(field->editableTitle(), QStringLiteral("Topic"));
  QImage picture(4, 4, QImage::Format_RGB32);
  picture.fill(Qt::red);
  QGuiApplication::clipboard()->setImage(picture);
  field->paste();
  EXPECT_EQ(field->editableTitle(), QStringLiteral("Topic"));
}

// Whatever is done, the field edits the text as a plain field would, and lays out no more than its part.
TEST_F(LongTitle, IsEditedLikeAPlainText) {
  rc::check([this] {
    QString text = longText(*rc::gen::inRange(0, 9000));
    TitleEditor* field = open(text);
    qsizetype cursor = text.size();
    rig.key(Qt::Key_End, Qt::ControlModifier);
    const int steps = *rc::gen::inRange(1, 12);
    const auto jump = [&](qsizetype way) {
      QTextCursor moved = field->textCursor();
      const int last = field->document()->characterCount() - 1;
      const int place = std::clamp(moved.position() + static_cast<int>(way), 0, last);
      cursor += place - moved.position();
      moved.setPosition(place);
      field->setTextCursor(moved);
    };
    for (int step = 0; step < steps; ++step) {
      const int count = *rc::gen::inRange(1, 60);
      switch (*rc::gen::inRange(0, 8)) {
        case 0:
          rig.type(QStringLiteral("k"));
          text.insert(cursor++, QLatin1Char('k'));
          break;
        case 1:
          rig.key(Qt::Key_Backspace);
          if (cursor > 0) text.remove(--cursor, 1);
          break;
        case 2:
          rig.key(Qt::Key_Delete);
          text.remove(cursor, 1);
          break;
        case 3:
          jump(-20 * count);
          rig.key(Qt::Key_Left);
          cursor = std::max<qsizetype>(0, cursor - 1);
          break;
        case 4:
          jump(20 * count);
          rig.key(Qt::Key_Right);
          cursor = std::min(text.size(), cursor + 1);
          break;
        case 5:
          rig.key(Qt::Key_Home, Qt::ControlModifier);
          cursor = 0;
          break;
        case 6:
          rig.key(Qt::Key_End, Qt::ControlModifier);
          cursor = text.size();
          break;
        default: {
          const QString pasted = longText(count * 60);
          paste(pasted);
          text.insert(cursor, pasted);
          cursor += pasted.size();
        }
      }
      RC_ASSERT(field->editableTitle() == text);
      RC_ASSERT(isBounded(*field));
    }
    rig.key(Qt::Key_Return, Qt::ControlModifier);
    RC_ASSERT(rig.titleOf(1) == text);
  });
}
