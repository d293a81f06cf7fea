#pragma once

#include <vector>

#include <QString>

namespace quilmora {

// The three colours of a flat topic.
struct TopicColors {
  QString fill;
  QString stroke;
  QString textColor;

  bool operator==(const TopicColors&) const = default;
};

// A ready-made colouring of a topic, whatever the theme.
struct StylePreset {
  QString name;
  TopicColors colors;
};

// In the order in which they are offered.
const std::vector<StylePreset>& stylePresets();

}  // namespace quilmora
