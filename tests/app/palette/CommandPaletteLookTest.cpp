#include <QScrollBar>

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
