#include <gtest/gtest.h>

#include "support/QtPrinters.h"
#include "themes/StylePresets.h"

namespace quilmora {
namespace {

TEST(StylePresets, TheTable) {
  QStringList rows;
  for (const StylePreset& preset : stylePresets())
    rows.append(QStringList{preset.name, preset.colors.fill, preset.colors.stroke, preset.colors.textColor}.join(
        QStringLiteral(" | ")));
  QStringList expected;
  for (const char* row : {"Ocean | #1A5276 | #0E3652 | #FFFFFF", "Sky | #2980B9 | #1A5276 | #FFFFFF",
                          "Mist | #AED6F1 | #5DADE2 | #1A3A4A", "Forest | #1E5631 | #0D3320 | #FFFFFF",
                          "Mint | #81C784 | #4CAF50 | #1B3A1B", "Sunset | #E65100 | #B71C1C | #FFFFFF",
                          "Coral | #E74C3C | #C0392B | #FFFFFF", "Lavender | #7B1FA2 | #4A148C | #FFFFFF",
                          "Rose | #CE93D8 | #AB47BC | #3A1A4A", "Earth | #795548 | #5D4037 | #FFFFFF",
                          "Sand | #D7CCC8 | #A1887F | #3E2723", "Slate | #424242 | #212121 | #FFFFFF",
                          "Silver | #E0E0E0 | #BDBDBD | #212121", "Teal | #00796B | #004D40 | #FFFFFF"})
    expected.append(QLatin1String(row));
  EXPECT_EQ(rows, expected);
}

}  // namespace
}  // namespace quilmora
