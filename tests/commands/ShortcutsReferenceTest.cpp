#include <gtest/gtest.h>

#include "commands/ShortcutsReference.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

TEST(ShortcutsReference, TheRows) {
  QStringList rows;
  for (const ShortcutRow& row : shortcutsReference()) rows.append(row.keys + QStringLiteral(" | ") + row.meaning);
  QStringList expected;
  for (const char* row :
       {"⌘N | New sibling / topic", "Tab | New child topic", "⌘E | Toggle branch creation", "⌘D | Duplicate selection",
        "⌘K | Command palette", "⌘F | Search topics", "⇧⌘O | Toggle outline", "⇧⌘L | Toggle AI chat",
        "⇧⌘P | Presentation mode", "⇧⌘G | AI generate", "⌘0 | Zoom to fit", "⌘[/] | Collapse/expand",
        "Arrow keys | Navigate tree", "Space | Quick-look topic", "⌘+drag | Reparent topic",
        "Shift+drag handle | Cross-link", "Esc | Cancel / exit mode"})
    expected.append(QString::fromUtf8(row));
  EXPECT_EQ(rows, expected);
}

}  // namespace
}  // namespace quilmora
