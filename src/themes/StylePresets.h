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

// Ready-made colours for a topic, independent of the theme.
struct StylePreset {
  QString name;
  TopicColors colors;
};

// In the order in which they are offered.
const std::vector<StylePreset>& stylePresets();

}  // namespace quilmora
