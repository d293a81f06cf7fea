#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include "canvas/painting/BadgeLook.h"
#include "canvas/painting/Symbols.h"

namespace quilmora {
namespace {

TEST(BadgeLook, GivesEachBadgeItsSymbolAndColour) {
  struct Row {
    Badge badge;
    const char* symbol;
    const char* color;
  };
  for (const Row& row :
       {Row{Badge::priority1, "exclamationmark.3", "#e74c3c"}, Row{Badge::priority2, "exclamationmark.2", "#f39c12"},
        Row{Badge::priority3, "exclamationmark", "#3498db"}, Row{Badge::done, "checkmark.circle.fill", "#27ae60"},
        Row{Badge::inProgress, "arrow.triangle.2.circlepath", "#8e44ad"},
        Row{Badge::blocked, "xmark.octagon.fill", "#c0392b"}}) {
    EXPECT_EQ(badgeLook(row.badge).symbol.toStdString(), row.symbol);
    EXPECT_EQ(badgeLook(row.badge).color.name().toStdString(), row.color);
    EXPECT_TRUE(hasSymbol(badgeLook(row.badge).symbol)) << row.symbol;
  }
}

// The sign within a filled shape is a hole in it: in the size of a quick look it must not close.
TEST(BadgeLook, FilledSymbolsKeepTheirHoles) {
  for (const Badge badge : {Badge::done, Badge::blocked}) {
    QImage image(16, 16, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    paintBadge(painter, badge, QRectF(image.rect()));
    painter.end();
    const int dark = badgeLook(badge).color.green();
    int holes = 0;
    for (int y = 5; y < 11; ++y)
      for (int x = 5; x < 11; ++x) holes += image.pixelColor(x, y).green() < (dark + 255) / 2 ? 1 : 0;
    EXPECT_GE(holes, 3) << badgeLook(badge).symbol.toStdString();
    EXPECT_LE(holes, 24) << badgeLook(badge).symbol.toStdString();
  }
}

}  // namespace
}  // namespace quilmora
