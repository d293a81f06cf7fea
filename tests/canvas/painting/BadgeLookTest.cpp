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

}  // namespace
}  // namespace quilmora
