#include "themes/Theme.h"

#include <algorithm>

namespace quilmora {

QString rawValue(ThemeCategory category) {
  switch (category) {
    case ThemeCategory::classic:
      return QStringLiteral("classic");
    case ThemeCategory::vibrant:
      return QStringLiteral("vibrant");
    case ThemeCategory::custom:
      break;
  }
  return QStringLiteral("custom");
}

QString label(ThemeCategory category) {
  switch (category) {
    case ThemeCategory::classic:
      return QStringLiteral("Classic");
    case ThemeCategory::vibrant:
      return QStringLiteral("Vibrant");
    case ThemeCategory::custom:
      break;
  }
  return QStringLiteral("Custom");
}

const Theme::NodeColorSet& Theme::rowForDepth(int depth) const {
  const int last = static_cast<int>(nodeColors.size()) - 1;
  return nodeColors[static_cast<std::size_t>(std::max(0, std::min(depth, last)))];
}

}  // namespace quilmora
