#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include "app/assistant/MessageText.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

QFont font() {
  QFont font;
  font.setPixelSize(13);
  return font;
}

MessageText laidOut(const QString& content, double width = 180) {
  MessageText text(shownMessage(content), font());
  text.setWidth(width);
  return text;
}

void measureAll(MessageText& text) {
  while (!text.isMeasured()) text.measureUntil(std::chrono::steady_clock::now() + std::chrono::seconds(1), 0);
}

TEST(ShownMessage, PairsOfAsterisksMakeBold) {
  const ShownMessage message = shownMessage(QStringLiteral("Here's **Tea** with: **a b**."));
  EXPECT_EQ(message.text, QStringLiteral("Here's Tea with: a b."));
  EXPECT_EQ(message.bold, (std::vector<BoldRange>{{7, 3}, {17, 3}}));
}

TEST(ShownMessage, AsterisksWithoutAPartnerStay) {
  for (const char* content : {"**", "a ** b", "* a *", "****", "2 ** 3"})
    EXPECT_EQ(shownMessage(QString::fromLatin1(content)).text, QString::fromLatin1(content));
  EXPECT_EQ(shownMessage(QStringLiteral("**a** **b")).text, QStringLiteral("a **b"));
}

TEST(ShownMessage, CharactersThatTurnOrHideTextAreTakenOut) {
  EXPECT_EQ(shownMessage(QStringLiteral("a\u202Eb\u0007c\nd")).text, QStringLiteral("ab\uFFFDc\nd"));
}

TEST(MessageText, WrapsAtItsWidth) {
  MessageText text = laidOut(QStringLiteral("some words that need more than one line of this width"));
  measureAll(text);
  const double lineHeight = text.caretAt(0).height();
  EXPECT_GE(text.height(), 2 * lineHeight);
  EXPECT_LE(text.usedWidth(), 180);
  MessageText word = laidOut(QString(500, u'w'));
  measureAll(word);
  EXPECT_GT(word.height(), 10 * lineHeight);
}

TEST(MessageText, AShortTextIsAsWideAsItsWords) {
  MessageText text = laidOut(QStringLiteral("Hi"));
  measureAll(text);
  EXPECT_LT(text.usedWidth(), 40);
  EXPECT_GT(text.usedWidth(), 5);
}

TEST(MessageText, AnEmptyTextHasOneLine) {
  MessageText text = laidOut(QString());
  measureAll(text);
  EXPECT_GT(text.height(), 5);
  EXPECT_EQ(text.positionAt(QPointF(50, 5)), 0);
  EXPECT_EQ(text.step(0, true, false), 0);
  EXPECT_EQ(text.step(0, false, true), 0);
  EXPECT_TRUE(text.wordAt(0).isEmpty());
}

// However a text is cut into pieces, stepping visits its letters one after the other.
TEST(MessageText, StepsThroughEveryLetterOfAnyPieces) {
  QString content;
  for (int i = 0; i < 900; ++i) content += QStringLiteral("word %1%2").arg(i).arg(i % 7 == 0 ? u'\n' : u' ');
  content += QString(9000, u'x');
  MessageText text = laidOut(content);
  const qsizetype size = text.text().size();
  qsizetype position = 0;
  qsizetype count = 0;
  while (position < size && count <= size) {
    const qsizetype next = text.step(position, true, false);
    ASSERT_EQ(next, position + 1);
    ASSERT_EQ(text.step(next, false, false), position);
    position = next;
    ++count;
  }
  EXPECT_EQ(count, size);
}

TEST(MessageText, APointIsThePlaceOfItsCaret) {
  MessageText text = laidOut(QStringLiteral("alpha beta gamma delta epsilon\nzeta"));
  measureAll(text);
  for (qsizetype position = 0; position < text.text().size(); position += 5)
    EXPECT_EQ(text.positionAt(text.caretAt(position).center()), position);
  EXPECT_EQ(text.positionAt(QPointF(0, -5)), 0);
  EXPECT_EQ(text.positionAt(QPointF(0, 1e6)), text.text().size());
}

TEST(MessageText, FindsWords) {
  MessageText text = laidOut(QStringLiteral("alpha, Šipka!"));
  EXPECT_EQ(text.wordAt(2).start(), 0);
  EXPECT_EQ(text.wordAt(2).end(), 5);
  EXPECT_EQ(text.wordAt(8).start(), 7);
  EXPECT_EQ(text.wordAt(8).end(), 12);
}

TEST(MessageText, EstimatesComeNearWhatIsMeasured) {
  QString content;
  for (int i = 0; i < 3000; ++i) content += QStringLiteral("A line of usual words, number %1.\n").arg(i);
  MessageText text = laidOut(content);
  const double estimated = text.height();
  measureAll(text);
  EXPECT_GT(estimated, text.height() * 0.4);
  EXPECT_LT(estimated, text.height() * 2.5);
}

TEST(MessageText, DrawingShapesOnlyWhatShows) {
  MessageText text = laidOut(QStringLiteral("word ").repeated(200'000));
  QImage picture(200, 300, QImage::Format_RGB32);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  const double top = text.height() / 2;
  painter.translate(0, -top);
  text.draw(painter, top, top + 300, {Qt::black, Qt::yellow, Qt::black}, {});
  painter.end();
  EXPECT_LE(text.shapedCount(), 3u);
  bool hasInk = false;
  for (int y = 0; y < 300; ++y) hasInk = hasInk || picture.pixel(4, y) != qRgb(255, 255, 255);
  EXPECT_TRUE(hasInk);
}

TEST(MessageText, SelectedLettersHaveAGround) {
  MessageText text = laidOut(QStringLiteral("alpha beta"));
  QImage picture(200, 30, QImage::Format_RGB32);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  text.draw(painter, 0, 30, {Qt::black, Qt::yellow, Qt::black}, {0, 5});
  painter.end();
  int yellow = 0;
  for (int x = 0; x < 200; ++x) yellow += picture.pixel(x, 2) == qRgb(255, 255, 0) ? 1 : 0;
  EXPECT_GT(yellow, 10);
  EXPECT_LT(yellow, 60);
}

TEST(MessageText, ALetterOfSeveralPartsIsNeverCut) {
  const QString letter = QString::fromUtf8("👩‍👩‍👧");
  MessageText text = laidOut(letter.repeated(2000));
  qsizetype position = 0;
  while (position < text.text().size()) {
    const qsizetype next = text.step(position, true, false);
    ASSERT_EQ(next - position, letter.size());
    position = next;
  }
}

}  // namespace
}  // namespace quilmora
