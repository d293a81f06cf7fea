#include <QScrollBar>

#include "app/look/Tokens.h"
#include "app/palette/PaletteFixture.h"
#include "support/AccessibleNames.h"

// Where the palette is, and what screen readers read of it.
namespace quilmora {
namespace {

class CommandPaletteLookTest : public CommandPaletteTest {};

TEST_F(CommandPaletteLookTest, Is420WideAndItsListAtMost340High) {
  open();
  EXPECT_EQ(panelPlace().width(), 420);
  EXPECT_LE(list().height(), 340);
  EXPECT_GT(list().height(), 300);
  EXPECT_NEAR(panelPlace().center().x(), window().rect().center().x(), 1);
  type("lavender");
  EXPECT_LT(panelPlace().height(), 120);
}

TEST_F(CommandPaletteLookTest, FitsSmallWindowsAndFollowsTheirSize) {
  open();
  for (const QSize size : {QSize(800, 600), QSize(640, 400), QSize(560, 380)}) {
    window().setMinimumSize(size);
    window().resize(size);
    QCoreApplication::processEvents();
    EXPECT_TRUE(window().rect().contains(panelPlace())) << size.width();
    EXPECT_GT(list().height(), 100) << size.width();
  }
}

TEST_F(CommandPaletteLookTest, TheHighlightedRowIsWhiteOnTheAccent) {
  open();
  const Tokens& tokens = m_look->tokens();
  const QImage shown = list().viewport()->grab().toImage();
  const QRect first = list().visualRect(list().model()->index(0, 0));
  const QRect second = list().visualRect(list().model()->index(1, 0));
  const auto has = [&](const QRect& place, const QColor& color) {
    for (int y = place.top(); y <= place.bottom(); ++y)
      for (int x = place.left(); x <= place.right(); ++x)
        if (shown.pixelColor(x, y) == color) return true;
    return false;
  };
  // The symbol in its frame of 20, then two lines of text.
  const auto symbolOf = [](const QRect& row) { return QRect(row.left() + 8, row.top() + 6, 20, row.height() - 12); };
  const auto textOf = [](const QRect& row) { return row.adjusted(36, 6, -80, -6); };
  EXPECT_EQ(shown.pixelColor(first.left() + 6, first.top()), tokens.accentFill);
  EXPECT_EQ(shown.pixelColor(first.left(), first.top() + 6), tokens.accentFill);
  EXPECT_NE(shown.pixelColor(first.topLeft()), tokens.accentFill);
  EXPECT_EQ(shown.pixelColor(second.left() + 6, second.top() + 1), tokens.raised);
  EXPECT_TRUE(has(symbolOf(first), Qt::white));
  EXPECT_TRUE(has(textOf(first), Qt::white));
  EXPECT_TRUE(has(symbolOf(second), tokens.accent));
  EXPECT_FALSE(has(textOf(second), tokens.accentFill));
}

TEST_F(CommandPaletteLookTest, EveryControlAndRowHasAName) {
  open();
  type("layout");
  const test::AccessibleWalk walk(*palette());
  EXPECT_EQ(walk.nameless, QStringList());
  EXPECT_EQ(walk.names, lines({"Command", "Commands", "Tree Layout, Horizontal tree", "Vertical Layout, Top-down tree",
                               "Radial Layout, Centered radial", "L/R Layout, Balanced tree"}));
  EXPECT_EQ(palette()->accessibleName(), QStringLiteral("Command Palette"));
}

TEST_F(CommandPaletteLookTest, AScreenReaderHearsTheHighlightedRow) {
  open();
  EXPECT_EQ(palette()->field().accessibleDescription(), QStringLiteral("AI Generate Map, 1 of 15"));
  press(Qt::Key_Down);
  EXPECT_EQ(palette()->field().accessibleDescription(), QStringLiteral("AI Chat, 2 of 15"));
  type("zzz");
  EXPECT_EQ(palette()->field().accessibleDescription(), QStringLiteral("No command has these letters"));
}

TEST_F(CommandPaletteLookTest, KeysAreToldInTheWordsOfThisDesktop) {
  open();
  type("outline");
  EXPECT_EQ(list().model()->index(0, 0).data(Qt::AccessibleTextRole).toString(),
            QStringLiteral("Toggle Outline, Show/hide outline, Ctrl+Shift+O"));
}

}  // namespace
}  // namespace quilmora
