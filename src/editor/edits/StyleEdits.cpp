#include "editor/edits/StyleEdits.h"

#include <algorithm>

#include "editor/edits/Finding.h"

namespace quilmora::edits {

namespace {

void takeColors(NodeStyle& style, const Theme::NodeColorSet& row) {
  style.fill = row.fill;
  style.stroke = row.stroke;
  style.textColor = row.textColor;
  style.fillGradient = row.fillGradient;
}

// The colour row of every number under branch colouring, or nullptr. A topic reached by two branches takes the row of
// the later one: walking the roots and their branches backwards, whatever a later branch has reached is final, with
// everything below it.
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

NodeStyle newTopicStyle(const Theme& theme, int depth) {
  // The row's gradient is deliberately left out: a new topic is flat until a theme is applied to the whole map.
  const Theme::NodeColorSet& row = theme.rowForDepth(depth);
  return NodeStyle{row.fill, row.stroke, row.textColor, NodeStyle::Shape::roundedRect,
                   16.0,     false,      false,         std::nullopt};
}

EdgeStyle newEdgeStyle(const Theme& theme) {
  EdgeStyle style = EdgeStyle::defaultStyle();
  style.color = theme.edgeColor;
  return style;
}

void recolorByTheme(MindMap& map, const Theme& theme, const TreeInfo& tree, const MapIndex& index) {
  std::size_t ordinal = 0;
  map.nodes.updateAll([&](Node& node) {
    takeColors(node.style, theme.rowForDepth(tree.depthOfNumber(index.numberOfNode()[ordinal++])));
  });
  map.edges.updateAll([&](Edge& edge) { edge.style.color = theme.edgeColor; });
}

void recolorByBranch(MindMap& map, const TreeInfo& tree, const MapIndex& index) {
  const auto rows = branchRows(tree);
  const auto& numbers = index.numberOfNode();
  std::size_t ordinal = 0;
  map.nodes.updateIf([&](const Node&) { return rows[numbers[ordinal++]] != nullptr; },
                     [&](Node& node) { takeColors(node.style, *rows[numbers[ordinal - 1]]); });
  const auto& targets = index.edgeTo();
  ordinal = 0;
  map.edges.updateIf([&](const Edge&) { return rows[targets[ordinal++]] != nullptr; },
                     [&](Edge& edge) { edge.style.color = rows[targets[ordinal - 1]]->stroke; });
}

void takeColors(NodeStyle& style, const TopicColors& colors) {
  style.fill = colors.fill;
  style.stroke = colors.stroke;
  style.textColor = colors.textColor;
}

void colorTopics(MindMap& map, const MapIndex& index, const IdSet& ids, const TopicColors& colors) {
  for (const std::uint32_t ordinal : ordinalsOf(index, ids))
    map.nodes.update(ordinal, [&](Node& node) { takeColors(node.style, colors); });
}

void colorEdges(MindMap& map, const IdSet& ids, const QString& color) {
  map.edges.updateIf([&](const Edge& edge) { return ids.contains(edge.id); },
                     [&](Edge& edge) { edge.style.color = color; });
}

void taperEdges(MindMap& map, const IdSet& ids, double startWidth, double endWidth) {
  map.edges.updateIf([&](const Edge& edge) { return ids.contains(edge.id); },
                     [&](Edge& edge) {
                       edge.style.taper.startWidth = startWidth;
                       edge.style.taper.endWidth = endWidth;
                     });
}

}  // namespace quilmora::edits
