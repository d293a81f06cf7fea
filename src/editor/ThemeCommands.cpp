#include "editor/MindMapViewModel.h"
#include "editor/edits/LayoutEdits.h"
#include "editor/edits/StyleEdits.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

namespace quilmora {

namespace {

const QString fallbackTheme = QStringLiteral("purple");

}  // namespace

const Theme& MindMapViewModel::currentTheme() const {
  const auto& chosen = mindMap().canvas.themeId;
  const QString wanted = chosen ? *chosen
                                : m_services.settings.text(settings::defaultTheme)
                                      .value_or(settings::settingDefault(settings::defaultTheme).toString());
  if (const Theme* theme = builtInTheme(wanted)) return *theme;
  if (const Theme* theme = builtInTheme(fallbackTheme)) return *theme;
  return allThemes().front();
}

NodeStyle MindMapViewModel::styleForDepth(int depth) const {
  return edits::newTopicStyle(currentTheme(), depth);
}

EdgeStyle MindMapViewModel::newEdgeStyle() const {
  return edits::newEdgeStyle(currentTheme());
}

void MindMapViewModel::applyTheme(const Theme& theme) {
  captureSnapshot(false);
  const TreeInfo& tree = treeInfo();
  restyle([&](MindMap& map) {
    map.canvas.background = theme.background;
    map.canvas.themeId = theme.id;
    edits::recolorByTheme(map, theme, tree, mapIndex());
    stamp(map);
  });
}

void MindMapViewModel::recolorByBranch() {
  captureSnapshot(false);
  const TreeInfo& tree = treeInfo();
  restyle([&](MindMap& map) { edits::recolorByBranch(map, tree, mapIndex()); });
}

void MindMapViewModel::recolorByTheme() {
  captureSnapshot(false);
  const Theme* found = builtInTheme(m_services.settings.text(settings::selectedTheme).value_or(fallbackTheme));
  const Theme& theme = found ? *found : allThemes().front();
  const TreeInfo& tree = treeInfo();
  restyle([&](MindMap& map) { edits::recolorByTheme(map, theme, tree, mapIndex()); });
}

void MindMapViewModel::applyLayout(MindMap::Layout layout, QSizeF canvasSize) {
  const auto algorithm = makeLayout(layout);
  if (!algorithm) return;
  captureSnapshot(false);
  const PositionTable placed = algorithm->positionsOf(mapIndex(), canvasSize);
  rearrange(edits::positionsAfter(placed, mapIndex()), [&](MindMap& map) {
    map.layout = layout;
    stamp(map);
  });
}

}  // namespace quilmora
