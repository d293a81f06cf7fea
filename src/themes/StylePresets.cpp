#include "themes/StylePresets.h"

namespace quilmora {

const std::vector<StylePreset>& stylePresets() {
  using namespace Qt::StringLiterals;
  static const std::vector<StylePreset> presets = {
      {u"Ocean"_s, {u"#1A5276"_s, u"#0E3652"_s, u"#FFFFFF"_s}},
      {u"Sky"_s, {u"#2980B9"_s, u"#1A5276"_s, u"#FFFFFF"_s}},
      {u"Mist"_s, {u"#AED6F1"_s, u"#5DADE2"_s, u"#1A3A4A"_s}},
      {u"Forest"_s, {u"#1E5631"_s, u"#0D3320"_s, u"#FFFFFF"_s}},
      {u"Mint"_s, {u"#81C784"_s, u"#4CAF50"_s, u"#1B3A1B"_s}},
      {u"Sunset"_s, {u"#E65100"_s, u"#B71C1C"_s, u"#FFFFFF"_s}},
      {u"Coral"_s, {u"#E74C3C"_s, u"#C0392B"_s, u"#FFFFFF"_s}},
      {u"Lavender"_s, {u"#7B1FA2"_s, u"#4A148C"_s, u"#FFFFFF"_s}},
      {u"Rose"_s, {u"#CE93D8"_s, u"#AB47BC"_s, u"#3A1A4A"_s}},
      {u"Earth"_s, {u"#795548"_s, u"#5D4037"_s, u"#FFFFFF"_s}},
      {u"Sand"_s, {u"#D7CCC8"_s, u"#A1887F"_s, u"#3E2723"_s}},
      {u"Slate"_s, {u"#424242"_s, u"#212121"_s, u"#FFFFFF"_s}},
      {u"Silver"_s, {u"#E0E0E0"_s, u"#BDBDBD"_s, u"#212121"_s}},
      {u"Teal"_s, {u"#00796B"_s, u"#004D40"_s, u"#FFFFFF"_s}},
  };
  return presets;
}

}  // namespace quilmora
