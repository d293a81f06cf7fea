#include <algorithm>

#include "themes/Theme.h"

namespace quilmora {

namespace {

struct RowText {
  const char* fill;
  const char* stroke;
  const char* textColor;
  const char* fillGradient = nullptr;
};

struct ThemeText {
  const char* id;
  const char* name;
  const char* background;
  const char* edgeColor;
  ThemeCategory category;
  std::vector<RowText> rows;
};

const std::vector<ThemeText>& themeTexts() {
  static const std::vector<ThemeText> texts = {
      {"ocean",
       "Ocean",
       "#F0F7FF",
       "#3B82A0",
       ThemeCategory::classic,
       {{"#1A5276", "#0E3652", "#FFFFFF"},
        {"#2980B9", "#1A5276", "#FFFFFF"},
        {"#5DADE2", "#2980B9", "#1A3A4A"},
        {"#AED6F1", "#5DADE2", "#1A3A4A"},
        {"#D6EAF8", "#AED6F1", "#2C3E50"}}},
      {"forest",
       "Forest",
       "#F5FAF0",
       "#4A7C3F",
       ThemeCategory::classic,
       {{"#1E5631", "#0D3320", "#FFFFFF"},
        {"#2E7D32", "#1E5631", "#FFFFFF"},
        {"#4CAF50", "#2E7D32", "#1B3A1B"},
        {"#81C784", "#4CAF50", "#1B3A1B"},
        {"#C8E6C9", "#81C784", "#2E3B2E"}}},
      {"purple",
       "Lavender",
       "#F8F0FF",
       "#7B5EA7",
       ThemeCategory::classic,
       {{"#4A148C", "#2A0054", "#FFFFFF"},
        {"#7B1FA2", "#4A148C", "#FFFFFF"},
        {"#AB47BC", "#7B1FA2", "#FFFFFF"},
        {"#CE93D8", "#AB47BC", "#3A1A4A"},
        {"#E1BEE7", "#CE93D8", "#3A1A4A"}}},
      {"earth",
       "Earth",
       "#FAF6F0",
       "#8D6E4C",
       ThemeCategory::classic,
       {{"#5D4037", "#3E2723", "#FFFFFF"},
        {"#795548", "#5D4037", "#FFFFFF"},
        {"#A1887F", "#795548", "#3E2723"},
        {"#D7CCC8", "#A1887F", "#3E2723"},
        {"#EFEBE9", "#D7CCC8", "#3E2723"}}},
      {"teal",
       "Teal",
       "#F0FAFA",
       "#00796B",
       ThemeCategory::classic,
       {{"#004D40", "#00251A", "#FFFFFF"},
        {"#00796B", "#004D40", "#FFFFFF"},
        {"#26A69A", "#00796B", "#FFFFFF"},
        {"#80CBC4", "#26A69A", "#1A3A36"},
        {"#B2DFDB", "#80CBC4", "#1A3A36"}}},
      {"mono",
       "Mono",
       "#FAFAFA",
       "#555555",
       ThemeCategory::classic,
       {{"#212121", "#000000", "#FFFFFF"},
        {"#424242", "#212121", "#FFFFFF"},
        {"#757575", "#424242", "#FFFFFF"},
        {"#BDBDBD", "#757575", "#212121"},
        {"#E0E0E0", "#BDBDBD", "#212121"}}},
      {"default", "Plain", "#FFFFFF", "#666666", ThemeCategory::classic, {{"#F0F0F0", "#333333", "#000000"}}},
      {"sunset",
       "Sunset",
       "#FFF8F0",
       "#C0634A",
       ThemeCategory::vibrant,
       {{"#B71C1C", "#7F0000", "#FFFFFF", "#E65100"},
        {"#E65100", "#B71C1C", "#FFFFFF", "#FF8F00"},
        {"#FF8F00", "#E65100", "#3E2200", "#FFB74D"},
        {"#FFB74D", "#FF8F00", "#3E2200", "#FFE0B2"},
        {"#FFE0B2", "#FFB74D", "#4E342E", "#FFF3E0"}}},
      {"coral",
       "Coral",
       "#FFF5F5",
       "#D4726A",
       ThemeCategory::vibrant,
       {{"#C0392B", "#922B21", "#FFFFFF", "#E74C3C"},
        {"#E74C3C", "#C0392B", "#FFFFFF", "#F1948A"},
        {"#F1948A", "#E74C3C", "#4A1A1A", "#FADBD8"},
        {"#FADBD8", "#F1948A", "#4A1A1A", "#FDEDEC"},
        {"#FDEDEC", "#FADBD8", "#4A2020", "#FFFFFF"}}},
      {"blueprint",
       "Blueprint",
       "#1A2332",
       "#00BCD4",
       ThemeCategory::vibrant,
       {{"#0D47A1", "#00BCD4", "#E0F7FA", "#1976D2"},
        {"#1565C0", "#00ACC1", "#E0F7FA", "#1E88E5"},
        {"#1976D2", "#0097A7", "#E0F7FA", "#2196F3"},
        {"#1E88E5", "#00838F", "#E0F7FA", "#42A5F5"},
        {"#2196F3", "#006064", "#E0F7FA", "#64B5F6"}}},
      {"aurora",
       "Aurora",
       "#0F0B2E",
       "#7C4DFF",
       ThemeCategory::vibrant,
       {{"#4A148C", "#E040FB", "#F3E5F5", "#7C4DFF"},
        {"#1A237E", "#7C4DFF", "#E8EAF6", "#3949AB"},
        {"#006064", "#18FFFF", "#E0F7FA", "#00ACC1"},
        {"#1B5E20", "#69F0AE", "#E8F5E9", "#43A047"},
        {"#311B92", "#B388FF", "#EDE7F6", "#5E35B1"}}},
      {"neon",
       "Neon",
       "#0A0E27",
       "#F72585",
       ThemeCategory::vibrant,
       {{"#F72585", "#B5179E", "#FFFFFF", "#7209B7"},
        {"#7209B7", "#560BAD", "#FFFFFF", "#3A0CA3"},
        {"#3A0CA3", "#3F37C9", "#FFFFFF", "#4361EE"},
        {"#4361EE", "#4895EF", "#FFFFFF", "#4CC9F0"},
        {"#4CC9F0", "#4895EF", "#0A0E27", "#B5E48C"}}},
      {"candy",
       "Candy",
       "#FFF0F7",
       "#C05DC5",
       ThemeCategory::vibrant,
       {{"#FF6B9D", "#C9266F", "#FFFFFF", "#FFC4E0"},
        {"#FFA07A", "#E67C5A", "#FFFFFF", "#FFD4B8"},
        {"#FFD93D", "#D4A800", "#4A3800", "#FFF4B8"},
        {"#6BCB77", "#3A9440", "#FFFFFF", "#B8E6C1"},
        {"#4D96FF", "#1E5FBF", "#FFFFFF", "#B4D4FF"}}},
  };
  return texts;
}

Theme::NodeColorSet colorSet(const RowText& text) {
  Theme::NodeColorSet row{QString::fromLatin1(text.fill), QString::fromLatin1(text.stroke),
                          QString::fromLatin1(text.textColor), std::nullopt};
  if (text.fillGradient) row.fillGradient = QString::fromLatin1(text.fillGradient);
  return row;
}

Theme themeFrom(const ThemeText& text) {
  Theme theme{QString::fromLatin1(text.id),
              QString::fromLatin1(text.name),
              QString::fromLatin1(text.background),
              QString::fromLatin1(text.edgeColor),
              text.category,
              {}};
  for (const RowText& row : text.rows) theme.nodeColors.push_back(colorSet(row));
  return theme;
}

}  // namespace

const std::vector<Theme>& allThemes() {
  static const std::vector<Theme> themes = [] {
    std::vector<Theme> made;
    for (const ThemeText& text : themeTexts()) made.push_back(themeFrom(text));
    return made;
  }();
  return themes;
}

const Theme* builtInTheme(const QString& id) {
  const auto& themes = allThemes();
  const auto found = std::find_if(themes.begin(), themes.end(), [&](const Theme& theme) { return theme.id == id; });
  return found == themes.end() ? nullptr : &*found;
}

}  // namespace quilmora
