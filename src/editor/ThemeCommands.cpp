#include <algorithm>

#include "editor/MindMapViewModel.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

namespace quilmora {

namespace {

const QString fallbackTheme = QStringLiteral("purple");

void takeColors(NodeStyle& style, const Theme::NodeColorSet& row) {
  style.fill = row.fill;
  style.stroke = row.stroke;
  style.textColor = row.textColor;
  style.fillGradient = row.fillGradient;
}

// Gives every topic the theme's row for its depth, and every edge the theme's colour.
void takeTheme(MindMap& map, const Theme& theme, const TreeInfo& tree, const MapIndex& index) {
  std::size_t position = 0;
  map.nodes.updateAll([&](Node& node) {
    takeColors(node.style, theme.rowForDepth(tree.depthOfNumber(index.numberOfNode()[position++])));
  });
  map.edges.updateAll([&](Edge& edge) { edge.style.color = theme.edgeColor; });
}

// The colour row of every number under branch colouring, or nullptr. A topic that two branches reach keeps the row of
// the later one: going through the roots and their branches backwards, whatever a later branch reached is settled, with
// all that lies below it.
std::vector<const Theme::NodeColorSet*> branchRows(const TreeInfo& tree) {
  std::vector<const Theme::NodeColorSet*> rows(tree.numberCount(), nullptr);
  const auto& palettes = branchPalettes();
  struct Step {
    std::uint32_t number;
    std::size_t depth;
  };
  std::vector<Step> queue;
  std::vector<char> visited(tree.numberCount(), 0);
  for (std::size_t r = tree.roots().size(); r-- > 0;) {
    const std::uint32_t rootNumber = tree.number(tree.roots()[r]);
    rows[rootNumber] = &branchRootColors();
    const auto branches = tree.childNumbers(rootNumber);
    for (std::size_t b = branches.size(); b-- > 0;) {
      const BranchPalette& palette = palettes[b % palettes.size()];
      queue.assign(1, Step{branches[b], 0});
      for (std::size_t head = 0; head < queue.size(); ++head) {
        const Step step = queue[head];
        if (visited[step.number]) continue;
        visited[step.number] = 1;
        rows[step.number] = &palette[std::min(step.depth, palette.size() - 1)];
        for (const std::uint32_t child : tree.childNumbers(step.number)) queue.push_back({child, step.depth + 1});
      }
    }
  }
  return rows;
}

}  // namespace

const Theme& MindMapViewModel::currentTheme() const {
  const QString wanted = m_mindMap.canvas.themeId
                             ? *m_mindMap.canvas.themeId
                             : m_services.settings.text(settings::defaultTheme)
                                   .value_or(settings::settingDefault(settings::defaultTheme).toString());
  if (const Theme* theme = builtInTheme(wanted)) return *theme;
  if (const Theme* theme = builtInTheme(fallbackTheme)) return *theme;
  return allThemes().front();
}

NodeStyle MindMapViewModel::styleForDepth(int depth) const {
  // The row's gradient is left out on purpose: a new topic is flat until a theme is applied to the whole map.
  const Theme::NodeColorSet& row = currentTheme().rowForDepth(depth);
  return NodeStyle{row.fill, row.stroke, row.textColor, NodeStyle::Shape::roundedRect,
                   16.0,     false,      false,         std::nullopt};
}

EdgeStyle MindMapViewModel::newEdgeStyle() const {
  EdgeStyle style = EdgeStyle::defaultStyle();
  style.color = currentTheme().edgeColor;
  return style;
}

void MindMapViewModel::applyTheme(const Theme& theme) {
  captureSnapshot(false);
  const TreeInfo tree = treeInfo();
  restyle([&](MindMap& map) {
    map.canvas.background = theme.background;
    map.canvas.themeId = theme.id;
    takeTheme(map, theme, tree, m_index);
    map.updatedAt = m_services.clock.now();
  });
}

void MindMapViewModel::recolorByBranch() {
  captureSnapshot(false);
  const auto rows = branchRows(treeInfo());
  restyle([&](MindMap& map) {
    const auto& numbers = m_index.numberOfNode();
    std::size_t position = 0;
    map.nodes.updateIf([&](const Node&) { return rows[numbers[position++]] != nullptr; },
                       [&](Node& node) { takeColors(node.style, *rows[numbers[position - 1]]); });
    const auto& targets = m_index.edgeTo();
    position = 0;
    map.edges.updateIf([&](const Edge&) { return rows[targets[position++]] != nullptr; },
                       [&](Edge& edge) { edge.style.color = rows[targets[position - 1]]->stroke; });
  });
}

void MindMapViewModel::recolorByTheme() {
  captureSnapshot(false);
  const Theme* found = builtInTheme(m_services.settings.text(settings::selectedTheme).value_or(fallbackTheme));
  const Theme& theme = found ? *found : allThemes().front();
  const TreeInfo tree = treeInfo();
  restyle([&](MindMap& map) { takeTheme(map, theme, tree, m_index); });
}

}  // namespace quilmora
