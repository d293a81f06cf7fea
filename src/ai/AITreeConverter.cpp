#include "ai/AITreeConverter.h"

#include <algorithm>
#include <limits>

#include "layout/LayoutAlgorithm.h"
#include "model/NewId.h"
#include "platform/SettingsKeys.h"

namespace quilmora {

namespace {

NodeStyle styleOf(const Theme::NodeColorSet& colors) {
  NodeStyle style;
  style.fill = colors.fill;
  style.stroke = colors.stroke;
  style.textColor = colors.textColor;
  style.fillGradient = colors.fillGradient;
  style.shape = NodeStyle::Shape::roundedRect;
  style.iconSize = 16.0;
  return style;
}

Node makeNode(const AITreeNode& tree, QPointF position, NodeStyle style) {
  Node node;
  node.id = newId();
  node.title = tree.title;
  node.notes = tree.notes.value_or(QString());
  node.position = position;
  node.style = std::move(style);
  node.aiGenerated = true;
  return node;
}

// The colour is the same in every theme.
Edge makeEdge(const QUuid& from, const QUuid& to) {
  static const EdgeStyle style{QStringLiteral("#3B82A0"),
                               false,
                               EdgeStyle::ArrowHead::triangle,
                               {6.0, 2.0, EdgeStyle::TaperEasing::quadraticIn}};
  Edge edge;
  edge.id = newId();
  edge.from = from;
  edge.to = to;
  edge.style = style;
  return edge;
}

QPointF positionOf(const MindMap& map, const QUuid& id) {
  for (const Node& node : map.nodes)
    if (node.id == id) return node.position;
  return {};
}

// The offset along the y axis of sibling `index` in a fan of `count`.
double fanOffset(std::size_t index, std::size_t count, double step) {
  const std::size_t middle = count / 2;
  return (static_cast<double>(index) - static_cast<double>(middle)) * step;
}

void arrange(MindMap& map, MindMap::Layout layout, QSizeF canvasSize) {
  const auto algorithm = makeLayout(layout == MindMap::Layout::manual ? MindMap::Layout::tree : layout);
  const PositionTable positions = algorithm->computePositions(map.nodes, map.edges, canvasSize);
  map.nodes.updateAll([&positions](Node& node) { node.position = positions.find(node.id).value_or(node.position); });
}

}  // namespace

const Theme& AITreeConverter::resolvedTheme(const SettingsStore& settings) const {
  static const QString fallback = QStringLiteral("purple");
  const QString wanted = themeId ? *themeId : settings.text(settings::defaultTheme).value_or(fallback);
  if (const Theme* theme = builtInTheme(wanted)) return *theme;
  if (const Theme* theme = builtInTheme(fallback)) return *theme;
  return allThemes().front();
}

NodeStyle AITreeConverter::styleForDepth(int depth, const SettingsStore& settings) const {
  return styleOf(resolvedTheme(settings).rowForDepth(depth));
}

MindMap AITreeConverter::convert(const AITreeNode& tree, const SettingsStore& settings, const Clock& clock) const {
  const Theme& theme = resolvedTheme(settings);
  std::vector<NodeStyle> styles;
  styles.reserve(theme.nodeColors.size());
  for (const Theme::NodeColorSet& row : theme.nodeColors) styles.push_back(styleOf(row));

  MindMap map;
  const auto add = [&](const AITreeNode& topic, std::size_t depth, const QUuid* parent) {
    Node node = makeNode(topic, {}, styles[std::min(depth, styles.size() - 1)]);
    const QUuid id = node.id;
    map.nodes.append(std::move(node));
    if (parent) map.edges.append(makeEdge(*parent, id));
    return id;
  };
  struct Level {
    const AITreeNode* topic;
    QUuid id;
    std::size_t next = 0;
  };
  std::vector<Level> open{{&tree, add(tree, 0, nullptr)}};
  while (!open.empty()) {
    Level& level = open.back();
    if (!level.topic->children || level.next == level.topic->children->size()) {
      open.pop_back();
      continue;
    }
    const AITreeNode& child = (*level.topic->children)[level.next++];
    open.push_back({&child, add(child, open.size(), &level.id)});
  }

  map.title = tree.title;
  map.createdAt = clock.now();
  map.updatedAt = map.createdAt;
  map.canvas = {theme.background, true, true, theme.id};
  arrange(map, layout, canvasSize);
  return map;
}

void AITreeConverter::addChildren(std::span<const AITreeNode> children, MindMap& map, QUuid parentID, int parentDepth,
                                  const SettingsStore& settings, const Clock& clock) const {
  constexpr double columnStep = 180.0;
  constexpr double childStep = 60.0;
  constexpr double grandchildStep = 50.0;
  const Theme& theme = resolvedTheme(settings);
  const int depth = std::min(parentDepth, std::numeric_limits<int>::max() - 2);
  const NodeStyle childStyle = styleOf(theme.rowForDepth(depth + 1));
  const NodeStyle grandchildStyle = styleOf(theme.rowForDepth(depth + 2));
  const QPointF base = positionOf(map, parentID) + QPointF(columnStep, 0);
  const auto add = [&map](const AITreeNode& topic, QPointF position, const NodeStyle& style, const QUuid& parent) {
    Node node = makeNode(topic, position, style);
    const QUuid id = node.id;
    map.nodes.append(std::move(node));
    map.edges.append(makeEdge(parent, id));
    return id;
  };
  for (std::size_t i = 0; i < children.size(); ++i) {
    const QPointF position = base + QPointF(0, fanOffset(i, children.size(), childStep));
    const QUuid id = add(children[i], position, childStyle, parentID);
    if (!children[i].children) continue;
    const std::vector<AITreeNode>& grandchildren = *children[i].children;
    for (std::size_t j = 0; j < grandchildren.size(); ++j)
      add(grandchildren[j], position + QPointF(columnStep, fanOffset(j, grandchildren.size(), grandchildStep)),
          grandchildStyle, id);
  }
  map.updatedAt = clock.now();
}

}  // namespace quilmora
