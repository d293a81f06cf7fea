#include <set>

#include <QRegularExpression>
#include <QStringList>
#include <gtest/gtest.h>

#include "themes/Theme.h"

using namespace quilmora;

namespace {

QString rowText(const Theme::NodeColorSet& row) {
  QStringList parts = {row.fill, row.stroke, row.textColor};
  if (row.fillGradient) parts.append(*row.fillGradient);
  return QStringLiteral("  ") + parts.join(u' ') + u'\n';
}

std::string allThemesAsText() {
  QString text;
  for (const Theme& theme : allThemes()) {
    text += QStringList{theme.id, theme.name, theme.background, theme.edgeColor, rawValue(theme.category)}.join(u' ') +
            u'\n';
    for (const auto& row : theme.nodeColors) text += rowText(row);
  }
  return text.toStdString();
}

constexpr const char* themeTable = R"(ocean Ocean #F0F7FF #3B82A0 classic
  #1A5276 #0E3652 #FFFFFF
  #2980B9 #1A5276 #FFFFFF
  #5DADE2 #2980B9 #1A3A4A
  #AED6F1 #5DADE2 #1A3A4A
  #D6EAF8 #AED6F1 #2C3E50
forest Forest #F5FAF0 #4A7C3F classic
  #1E5631 #0D3320 #FFFFFF
  #2E7D32 #1E5631 #FFFFFF
  #4CAF50 #2E7D32 #1B3A1B
  #81C784 #4CAF50 #1B3A1B
  #C8E6C9 #81C784 #2E3B2E
purple Lavender #F8F0FF #7B5EA7 classic
  #4A148C #2A0054 #FFFFFF
  #7B1FA2 #4A148C #FFFFFF
  #AB47BC #7B1FA2 #FFFFFF
  #CE93D8 #AB47BC #3A1A4A
  #E1BEE7 #CE93D8 #3A1A4A
earth Earth #FAF6F0 #8D6E4C classic
  #5D4037 #3E2723 #FFFFFF
  #795548 #5D4037 #FFFFFF
  #A1887F #795548 #3E2723
  #D7CCC8 #A1887F #3E2723
  #EFEBE9 #D7CCC8 #3E2723
teal Teal #F0FAFA #00796B classic
  #004D40 #00251A #FFFFFF
  #00796B #004D40 #FFFFFF
  #26A69A #00796B #FFFFFF
  #80CBC4 #26A69A #1A3A36
  #B2DFDB #80CBC4 #1A3A36
mono Mono #FAFAFA #555555 classic
  #212121 #000000 #FFFFFF
  #424242 #212121 #FFFFFF
  #757575 #424242 #FFFFFF
  #BDBDBD #757575 #212121
  #E0E0E0 #BDBDBD #212121
default Plain #FFFFFF #666666 classic
  #F0F0F0 #333333 #000000
sunset Sunset #FFF8F0 #C0634A vibrant
  #B71C1C #7F0000 #FFFFFF #E65100
  #E65100 #B71C1C #FFFFFF #FF8F00
  #FF8F00 #E65100 #3E2200 #FFB74D
  #FFB74D #FF8F00 #3E2200 #FFE0B2
  #FFE0B2 #FFB74D #4E342E #FFF3E0
coral Coral #FFF5F5 #D4726A vibrant
  #C0392B #922B21 #FFFFFF #E74C3C
  #E74C3C #C0392B #FFFFFF #F1948A
  #F1948A #E74C3C #4A1A1A #FADBD8
  #FADBD8 #F1948A #4A1A1A #FDEDEC
  #FDEDEC #FADBD8 #4A2020 #FFFFFF
blueprint Blueprint #1A2332 #00BCD4 vibrant
  #0D47A1 #00BCD4 #E0F7FA #1976D2
  #1565C0 #00ACC1 #E0F7FA #1E88E5
  #1976D2 #0097A7 #E0F7FA #2196F3
  #1E88E5 #00838F #E0F7FA #42A5F5
  #2196F3 #006064 #E0F7FA #64B5F6
aurora Aurora #0F0B2E #7C4DFF vibrant
  #4A148C #E040FB #F3E5F5 #7C4DFF
  #1A237E #7C4DFF #E8EAF6 #3949AB
  #006064 #18FFFF #E0F7FA #00ACC1
  #1B5E20 #69F0AE #E8F5E9 #43A047
  #311B92 #B388FF #EDE7F6 #5E35B1
neon Neon #0A0E27 #F72585 vibrant
  #F72585 #B5179E #FFFFFF #7209B7
  #7209B7 #560BAD #FFFFFF #3A0CA3
  #3A0CA3 #3F37C9 #FFFFFF #4361EE
  #4361EE #4895EF #FFFFFF #4CC9F0
  #4CC9F0 #4895EF #0A0E27 #B5E48C
candy Candy #FFF0F7 #C05DC5 vibrant
  #FF6B9D #C9266F #FFFFFF #FFC4E0
  #FFA07A #E67C5A #FFFFFF #FFD4B8
  #FFD93D #D4A800 #4A3800 #FFF4B8
  #6BCB77 #3A9440 #FFFFFF #B8E6C1
  #4D96FF #1E5FBF #FFFFFF #B4D4FF
)";

constexpr const char* paletteTable = R"(palette 0
  #1565C0 #0D47A1 #FFFFFF
  #1E88E5 #1565C0 #FFFFFF
  #64B5F6 #1E88E5 #0D2F4F
  #BBDEFB #64B5F6 #0D2F4F
  #E3F2FD #BBDEFB #0D2F4F
palette 1
  #2E7D32 #1B5E20 #FFFFFF
  #43A047 #2E7D32 #FFFFFF
  #81C784 #43A047 #1B3A1B
  #C8E6C9 #81C784 #1B3A1B
  #E8F5E9 #C8E6C9 #1B3A1B
palette 2
  #EF6C00 #E65100 #FFFFFF
  #FB8C00 #EF6C00 #FFFFFF
  #FFB74D #FB8C00 #4A2800
  #FFE0B2 #FFB74D #4A2800
  #FFF3E0 #FFE0B2 #4A2800
palette 3
  #7B1FA2 #4A148C #FFFFFF
  #8E24AA #7B1FA2 #FFFFFF
  #BA68C8 #8E24AA #3A0F4A
  #E1BEE7 #BA68C8 #3A0F4A
  #F3E5F5 #E1BEE7 #3A0F4A
palette 4
  #C62828 #8E0000 #FFFFFF
  #E53935 #C62828 #FFFFFF
  #EF5350 #E53935 #4A0000
  #FFCDD2 #EF5350 #4A0000
  #FFEBEE #FFCDD2 #4A0000
palette 5
  #00796B #004D40 #FFFFFF
  #00897B #00796B #FFFFFF
  #4DB6AC #00897B #003833
  #B2DFDB #4DB6AC #003833
  #E0F2F1 #B2DFDB #003833
palette 6
  #C2185B #880E4F #FFFFFF
  #D81B60 #C2185B #FFFFFF
  #F06292 #D81B60 #4A0028
  #F8BBD0 #F06292 #4A0028
  #FCE4EC #F8BBD0 #4A0028
palette 7
  #F57F17 #E65100 #FFFFFF
  #F9A825 #F57F17 #3A2800
  #FDD835 #F9A825 #3A2800
  #FFF59D #FDD835 #3A2800
  #FFFDE7 #FFF59D #3A2800
)";

const Theme& theme(const char* id) {
  return *builtInTheme(QString::fromLatin1(id));
}

bool isColorText(const QString& text) {
  static const QRegularExpression form(QStringLiteral("\\A#[0-9A-F]{6}\\z"));
  return form.match(text).hasMatch();
}

}  // namespace

TEST(Theme, BuiltInTableIsExact) {
  EXPECT_EQ(allThemesAsText(), themeTable);
}

TEST(Theme, SevenClassicThemesComeBeforeSixVibrantOnes) {
  ASSERT_EQ(allThemes().size(), 13u);
  for (std::size_t i = 0; i < 13; ++i)
    EXPECT_EQ(allThemes()[i].category, i < 7 ? ThemeCategory::classic : ThemeCategory::vibrant) << i;
}

TEST(Theme, FirstThemeIsOcean) {
  EXPECT_EQ(allThemes().front().id, QStringLiteral("ocean"));
}

TEST(Theme, IdsAreDistinct) {
  std::set<QString> ids;
  for (const Theme& each : allThemes()) ids.insert(each.id);
  EXPECT_EQ(ids.size(), 13u);
}

TEST(Theme, IdAndNameOfTwoThemesDiffer) {
  EXPECT_EQ(theme("purple").name, QStringLiteral("Lavender"));
  EXPECT_EQ(theme("default").name, QStringLiteral("Plain"));
}

TEST(Theme, VibrantRowsHaveGradientsAndClassicRowsHaveNone) {
  for (const Theme& each : allThemes()) {
    EXPECT_EQ(each.nodeColors.size(), each.id == QStringLiteral("default") ? 1u : 5u);
    for (const auto& row : each.nodeColors)
      EXPECT_EQ(row.fillGradient.has_value(), each.category == ThemeCategory::vibrant);
  }
}

TEST(Theme, EveryColorIsWrittenInFull) {
  for (const Theme& each : allThemes()) {
    EXPECT_TRUE(isColorText(each.background)) << each.id.toStdString();
    EXPECT_TRUE(isColorText(each.edgeColor)) << each.id.toStdString();
    for (const auto& row : each.nodeColors)
      for (const QString& text : {row.fill, row.stroke, row.textColor, row.fillGradient.value_or(row.fill)})
        EXPECT_TRUE(isColorText(text)) << text.toStdString();
  }
}

TEST(Theme, LiteralRows) {
  EXPECT_EQ(theme("purple").nodeColors[0],
            (Theme::NodeColorSet{QStringLiteral("#4A148C"), QStringLiteral("#2A0054"), QStringLiteral("#FFFFFF"), {}}));
  EXPECT_EQ(theme("sunset").nodeColors[2], (Theme::NodeColorSet{QStringLiteral("#FF8F00"), QStringLiteral("#E65100"),
                                                                QStringLiteral("#3E2200"), QStringLiteral("#FFB74D")}));
  EXPECT_EQ(theme("candy").nodeColors[4].fillGradient, QStringLiteral("#B4D4FF"));
  EXPECT_EQ(theme("default").edgeColor, QStringLiteral("#666666"));
}

TEST(Theme, LastRowServesEveryDeeperLevel) {
  EXPECT_EQ(theme("ocean").rowForDepth(0).fill, QStringLiteral("#1A5276"));
  EXPECT_EQ(theme("ocean").rowForDepth(4).fill, QStringLiteral("#D6EAF8"));
  EXPECT_EQ(theme("ocean").rowForDepth(5).fill, QStringLiteral("#D6EAF8"));
  EXPECT_EQ(theme("ocean").rowForDepth(2147483647).fill, QStringLiteral("#D6EAF8"));
  EXPECT_EQ(theme("default").rowForDepth(3).fill, QStringLiteral("#F0F0F0"));
}

TEST(Theme, NegativeDepthTakesTheFirstRow) {
  EXPECT_EQ(theme("ocean").rowForDepth(-1).fill, QStringLiteral("#1A5276"));
}

TEST(Theme, UnknownAndCustomIdsAreNotBuiltIn) {
  EXPECT_EQ(builtInTheme(QStringLiteral("nothing")), nullptr);
  EXPECT_EQ(builtInTheme(QStringLiteral("custom_1")), nullptr);
  EXPECT_EQ(builtInTheme(QStringLiteral("Ocean")), nullptr);
  EXPECT_EQ(builtInTheme(QString()), nullptr);
}

TEST(Theme, CategoriesHaveRawTextAndLabel) {
  EXPECT_EQ(rawValue(ThemeCategory::classic), QStringLiteral("classic"));
  EXPECT_EQ(rawValue(ThemeCategory::vibrant), QStringLiteral("vibrant"));
  EXPECT_EQ(rawValue(ThemeCategory::custom), QStringLiteral("custom"));
  EXPECT_EQ(label(ThemeCategory::classic), QStringLiteral("Classic"));
  EXPECT_EQ(label(ThemeCategory::vibrant), QStringLiteral("Vibrant"));
  EXPECT_EQ(label(ThemeCategory::custom), QStringLiteral("Custom"));
}

TEST(BranchPalettes, TableIsExact) {
  QString text;
  for (std::size_t i = 0; i < branchPalettes().size(); ++i) {
    text += QStringLiteral("palette %1\n").arg(i);
    for (const auto& row : branchPalettes()[i]) text += rowText(row);
  }
  EXPECT_EQ(text.toStdString(), paletteTable);
}

TEST(BranchPalettes, AmberTurnsDarkOneRowEarlier) {
  ASSERT_EQ(branchPalettes().size(), 8u);
  for (std::size_t i = 0; i < 8; ++i) {
    ASSERT_EQ(branchPalettes()[i].size(), 5u);
    EXPECT_EQ(branchPalettes()[i][1].textColor == QStringLiteral("#FFFFFF"), i != 7) << i;
    EXPECT_NE(branchPalettes()[i][2].textColor, QStringLiteral("#FFFFFF")) << i;
  }
}

TEST(BranchPalettes, RootHasItsOwnRow) {
  EXPECT_EQ(branchRootColors(),
            (Theme::NodeColorSet{QStringLiteral("#37474F"), QStringLiteral("#263238"), QStringLiteral("#FFFFFF"), {}}));
}
