#include <QFile>
#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include "canvas/painting/Symbols.h"

namespace quilmora {
namespace {

int inkedPixels(const QImage& image) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (qAlpha(image.pixel(x, y)) > 100) ++count;
  return count;
}

QImage drawn(const QString& name, QSizeF size, const QColor& color, qreal ratio) {
  return symbolPixmap(name, size, color, ratio).toImage();
}

TEST(Symbols, KnowsTheNamesOfBadgesToolbarAndTabs) {
  for (const char* name : {"exclamationmark",
                           "exclamationmark.2",
                           "exclamationmark.3",
                           "checkmark.circle.fill",
                           "xmark.octagon.fill",
                           "arrow.triangle.2.circlepath",
                           "sparkles",
                           "link",
                           "note.text",
                           "photo",
                           "plus",
                           "chevron.right",
                           "chevron.down",
                           "chevron.up",
                           "xmark.circle.fill",
                           "sidebar.leading",
                           "sidebar.trailing",
                           "plus.circle",
                           "plus.circle.fill",
                           "bubble.left.and.text.bubble.right",
                           "trash",
                           "arrow.right",
                           "list.bullet.indent",
                           "gearshape",
                           "paintbrush",
                           "hand.tap",
                           "tree.fill",
                           "sparkle",
                           "command",
                           "square.and.arrow.up",
                           "square.and.arrow.down",
                           "folder",
                           "circle.dotted",
                           "arrow.triangle.branch",
                           "chart.bar",
                           "magnifyingglass",
                           "lightbulb",
                           "checklist",
                           "person.3",
                           "book",
                           "star",
                           "arrow.left.arrow.right",
                           "play.rectangle",
                           "play.rectangle.fill",
                           "wand.and.stars",
                           "arrow.branch",
                           "doc.plaintext",
                           "text.bubble.fill",
                           "hand.draw.fill",
                           "command.circle.fill",
                           "doc.on.doc"})
    EXPECT_TRUE(hasSymbol(QString::fromLatin1(name))) << name;
  EXPECT_FALSE(hasSymbol(QStringLiteral("no.such.symbol")));
  EXPECT_FALSE(hasSymbol(QString()));
}

TEST(Symbols, EverySymbolOfTheTableLeavesInkInsideItsSquare) {
  EXPECT_TRUE(hasSymbol(QStringLiteral("trash")));
  QFile table(QStringLiteral(":/symbols/symbols.txt"));
  ASSERT_TRUE(table.open(QIODevice::ReadOnly));
  int count = 0;
  for (const QString& line : QString::fromUtf8(table.readAll()).split(QLatin1Char('\n'))) {
    if (line.isEmpty() || line.startsWith(QLatin1Char('#'))) continue;
    const QString name = line.simplified().section(QLatin1Char(' '), 0, 0);
    const QRectF bounds = symbolPath(name).boundingRect();
    EXPECT_TRUE(QRectF(-0.5, -0.5, 17, 17).contains(bounds)) << name.toStdString();
    EXPECT_GT(inkedPixels(drawn(name, QSizeF(32, 32), Qt::black, 1.0)), 25) << name.toStdString();
    ++count;
  }
  EXPECT_GT(count, 100);
}

TEST(Symbols, TakesTheColourItIsGiven) {
  const QImage image = drawn(QStringLiteral("circle.fill"), QSizeF(16, 16), QColor(0xE74C3C), 1.0);
  EXPECT_EQ(image.pixelColor(8, 8), QColor(0xE74C3C));
  EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
}

TEST(Symbols, DrawsAnUnknownNameAsAPlaceholder) {
  const QImage image = drawn(QStringLiteral("no.such.symbol"), QSizeF(16, 16), Qt::black, 1.0);
  EXPECT_GT(inkedPixels(image), 20);
  EXPECT_EQ(qAlpha(image.pixel(8, 8)), 0);
}

TEST(Symbols, KeepsItsAspectAndStandsInTheMiddle) {
  const QImage image = drawn(QStringLiteral("circle.fill"), QSizeF(48, 16), Qt::black, 1.0);
  EXPECT_EQ(qAlpha(image.pixel(8, 8)), 0);
  EXPECT_EQ(qAlpha(image.pixel(24, 8)), 255);
  EXPECT_EQ(qAlpha(image.pixel(40, 8)), 0);
}

TEST(Symbols, IsSharpAtEveryPixelRatio) {
  EXPECT_EQ(drawn(QStringLiteral("trash"), QSizeF(16, 16), Qt::black, 1.5).size(), QSize(24, 24));
  EXPECT_EQ(drawn(QStringLiteral("trash"), QSizeF(16, 16), Qt::black, 2.25).size(), QSize(36, 36));
  EXPECT_EQ(symbolPixmap(QStringLiteral("trash"), QSizeF(16, 16), Qt::black, 2.25).devicePixelRatio(), 2.25);
}

TEST(Symbols, BearsAbsurdSizes) {
  EXPECT_EQ(drawn(QStringLiteral("trash"), QSizeF(0, 0), Qt::black, 1.0).size(), QSize(1, 1));
  EXPECT_EQ(drawn(QStringLiteral("trash"), QSizeF(1e300, 4), Qt::black, 1.0).width(), 4096);
  QImage image(10, 10, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::white);
  QPainter painter(&image);
  paintSymbol(painter, QStringLiteral("trash"), QRectF(0, 0, qQNaN(), 5), Qt::black);
  paintSymbol(painter, QStringLiteral("trash"), QRectF(0, 0, -5, -5), Qt::black);
  painter.end();
  EXPECT_EQ(image.pixelColor(5, 5), QColor(Qt::white));
}

}  // namespace
}  // namespace quilmora
