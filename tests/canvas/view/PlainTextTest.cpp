#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTextDocument>
#include <gtest/gtest.h>

#include "canvas/view/PlainText.h"

namespace quilmora::test {
namespace {

const QString hostile = QStringLiteral("<img src=\"file:///dev/zero\"> plan");

// What a user would read in a tool tip.
QString read(const QString& toolTip) {
  if (!Qt::mightBeRichText(toolTip)) return toolTip;
  QTextDocument document;
  document.setHtml(toolTip);
  return document.toPlainText();
}

bool loadsNothing(const QString& toolTip) {
  return !Qt::mightBeRichText(toolTip) || !toolTip.contains(QLatin1String("<img"));
}

TEST(PlainText, MarkupIsShownAsItsLetters) {
  QWidget widget;
  QAction action;
  plain::setToolTip(widget, hostile);
  plain::setToolTip(action, hostile);
  for (const QString& toolTip : {widget.toolTip(), action.toolTip()}) {
    EXPECT_TRUE(loadsNothing(toolTip)) << toolTip.toStdString();
    EXPECT_EQ(read(toolTip), hostile);
  }
  QLabel* label = plain::newLabel(hostile, &widget);
  EXPECT_EQ(label->textFormat(), Qt::PlainText);
  EXPECT_EQ(label->text(), hostile);
}

TEST(PlainText, NoBeginningIsTakenForMarkup) {
  for (const QString& begin :
       {QStringLiteral("<?xml version='1.0'?><p>"), QStringLiteral("<!DOCTYPE html>"), QStringLiteral("&lt;"),
        QStringLiteral("  \n\t<b>"), QStringLiteral("a < b > c <i>"), QStringLiteral("</p><img src='/dev/zero'>")}) {
    QWidget widget;
    plain::setToolTip(widget, begin + hostile);
    EXPECT_TRUE(loadsNothing(widget.toolTip())) << begin.toStdString();
    EXPECT_EQ(read(widget.toolTip()), begin + hostile);
  }
}

TEST(PlainText, AShortToolTipStaysAsItIs) {
  QWidget widget;
  plain::setToolTip(widget, QStringLiteral("Search (Ctrl+F)"));
  EXPECT_EQ(widget.toolTip(), QStringLiteral("Search (Ctrl+F)"));
  plain::setToolTip(widget, QString());
  EXPECT_EQ(widget.toolTip(), QString());
}

TEST(PlainText, ALongToolTipWrapsAndIsCut) {
  QWidget widget;
  plain::setToolTip(widget, QString(1'000'000, u'x'));
  EXPECT_TRUE(Qt::mightBeRichText(widget.toolTip()));
  const QString shown = read(widget.toolTip()).remove(QChar(0x200B));
  EXPECT_EQ(shown, QString(600, u'x') + QChar(0x2026));
}

TEST(PlainText, AmpersandsAreNoMnemonics) {
  QMenu menu;
  EXPECT_EQ(plain::addAction(menu, QStringLiteral("R&D.mindmap"))->text(), QStringLiteral("R&&D.mindmap"));
  QPushButton button;
  plain::setText(button, QStringLiteral("R&D"));
  EXPECT_EQ(button.text(), QStringLiteral("R&&D"));
  EXPECT_TRUE(button.shortcut().isEmpty());
}

TEST(PlainText, ControlsAndOverridesAreHarmless) {
  EXPECT_EQ(plain::text(QStringLiteral("a\nb\tc")), QStringLiteral("a\nb\tc"));
  EXPECT_EQ(plain::text(QString::fromUtf16(u"a\0b\x1b"
                                           u"c\x7f",
                                           6)),
            QString::fromUtf16(u"a\xFFFD"
                               u"b\xFFFD"
                               u"c\xFFFD"));
  EXPECT_EQ(plain::text(QStringLiteral("gpj.\u202Efdp\u2066x\u2069")), QStringLiteral("gpj.fdpx"));
  EXPECT_EQ(plain::text(QString(QChar(0xD83D))), QString(QChar(0xFFFD)));
  EXPECT_EQ(plain::line(QStringLiteral(" two\nlines ")), QStringLiteral("two lines"));
}

TEST(PlainText, ALongTextIsCutBetweenCharacters) {
  EXPECT_EQ(plain::text(QStringLiteral("abc\U0001F600d"), 4), QStringLiteral("abc\u2026"));
  EXPECT_EQ(plain::text(QStringLiteral("abcd"), 4), QStringLiteral("abcd"));
}

}  // namespace
}  // namespace quilmora::test
