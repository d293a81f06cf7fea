#include "themes/ThemeDraft.h"

#include <algorithm>

#include "model/NewId.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

constexpr double addedFillOpacity = 0.7;

std::vector<ThemeDraft::LevelColors> levelsOf(const Theme& theme) {
  std::vector<ThemeDraft::LevelColors> levels;
  levels.reserve(theme.nodeColors.size());
  for (const Theme::NodeColorSet& row : theme.nodeColors)
    levels.push_back({newId(), colorFromHex(row.fill), colorFromHex(row.stroke), colorFromHex(row.textColor)});
  return levels;
}

}  // namespace

ThemeDraft ThemeDraft::initial() {
  return {QStringLiteral("My Theme"), Qt::white, QColor(0x80, 0x80, 0x80),
          levelsOf(*builtInTheme(QStringLiteral("ocean")))};
}

ThemeDraft ThemeDraft::from(const Theme& theme) {
  return {theme.name + QStringLiteral(" Custom"), colorFromHex(theme.background), colorFromHex(theme.edgeColor),
          levelsOf(theme)};
}

void ThemeDraft::addLevel() {
  LevelColors level = levels.back();
  level.id = newId();
  level.fill = withOpacity(level.fill, addedFillOpacity);
  levels.push_back(level);
}

void ThemeDraft::removeLevel(const QUuid& id) {
  if (levels.size() > 1) std::erase_if(levels, [&](const LevelColors& level) { return level.id == id; });
}

CustomTheme ThemeDraft::toCustomTheme() const {
  CustomTheme theme{
      newId().toString(QUuid::WithoutBraces).toUpper(), name, hexFromColor(background), hexFromColor(edgeColor), {}};
  for (const LevelColors& level : levels)
    theme.nodeColors.push_back({hexFromColor(level.fill), hexFromColor(level.stroke), hexFromColor(level.text)});
  return theme;
}

}  // namespace quilmora
