#include <array>

#include "themes/Theme.h"

namespace quilmora {

namespace {

constexpr std::size_t paletteCount = 8;
constexpr std::size_t rowCount = 5;

struct RowText {
  const char* fill;
  const char* stroke;
  const char* textColor;
};

constexpr std::array<std::array<RowText, rowCount>, paletteCount> paletteTexts = {{
    // blue
    {{{"#1565C0", "#0D47A1", "#FFFFFF"},
      {"#1E88E5", "#1565C0", "#FFFFFF"},
      {"#64B5F6", "#1E88E5", "#0D2F4F"},
      {"#BBDEFB", "#64B5F6", "#0D2F4F"},
      {"#E3F2FD", "#BBDEFB", "#0D2F4F"}}},
    // green
    {{{"#2E7D32", "#1B5E20", "#FFFFFF"},
      {"#43A047", "#2E7D32", "#FFFFFF"},
      {"#81C784", "#43A047", "#1B3A1B"},
      {"#C8E6C9", "#81C784", "#1B3A1B"},
      {"#E8F5E9", "#C8E6C9", "#1B3A1B"}}},
    // orange
    {{{"#EF6C00", "#E65100", "#FFFFFF"},
      {"#FB8C00", "#EF6C00", "#FFFFFF"},
      {"#FFB74D", "#FB8C00", "#4A2800"},
      {"#FFE0B2", "#FFB74D", "#4A2800"},
      {"#FFF3E0", "#FFE0B2", "#4A2800"}}},
    // purple
    {{{"#7B1FA2", "#4A148C", "#FFFFFF"},
      {"#8E24AA", "#7B1FA2", "#FFFFFF"},
      {"#BA68C8", "#8E24AA", "#3A0F4A"},
      {"#E1BEE7", "#BA68C8", "#3A0F4A"},
      {"#F3E5F5", "#E1BEE7", "#3A0F4A"}}},
    // red
    {{{"#C62828", "#8E0000", "#FFFFFF"},
      {"#E53935", "#C62828", "#FFFFFF"},
      {"#EF5350", "#E53935", "#4A0000"},
      {"#FFCDD2", "#EF5350", "#4A0000"},
      {"#FFEBEE", "#FFCDD2", "#4A0000"}}},
    // teal
    {{{"#00796B", "#004D40", "#FFFFFF"},
      {"#00897B", "#00796B", "#FFFFFF"},
      {"#4DB6AC", "#00897B", "#003833"},
      {"#B2DFDB", "#4DB6AC", "#003833"},
      {"#E0F2F1", "#B2DFDB", "#003833"}}},
    // pink
    {{{"#C2185B", "#880E4F", "#FFFFFF"},
      {"#D81B60", "#C2185B", "#FFFFFF"},
      {"#F06292", "#D81B60", "#4A0028"},
      {"#F8BBD0", "#F06292", "#4A0028"},
      {"#FCE4EC", "#F8BBD0", "#4A0028"}}},
    // amber
    {{{"#F57F17", "#E65100", "#FFFFFF"},
      {"#F9A825", "#F57F17", "#3A2800"},
      {"#FDD835", "#F9A825", "#3A2800"},
      {"#FFF59D", "#FDD835", "#3A2800"},
      {"#FFFDE7", "#FFF59D", "#3A2800"}}},
}};

Theme::NodeColorSet colorSet(const RowText& text) {
  return {QString::fromLatin1(text.fill), QString::fromLatin1(text.stroke), QString::fromLatin1(text.textColor),
          std::nullopt};
}

}  // namespace

const std::vector<BranchPalette>& branchPalettes() {
  static const std::vector<BranchPalette> palettes = [] {
    std::vector<BranchPalette> made;
    for (const auto& texts : paletteTexts) {
      BranchPalette palette;
      for (const RowText& text : texts) palette.push_back(colorSet(text));
      made.push_back(std::move(palette));
    }
    return made;
  }();
  return palettes;
}

const Theme::NodeColorSet& branchRootColors() {
  static const Theme::NodeColorSet colors = colorSet({"#37474F", "#263238", "#FFFFFF"});
  return colors;
}

}  // namespace quilmora
