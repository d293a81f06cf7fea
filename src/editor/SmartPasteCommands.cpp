#include <algorithm>
#include <vector>

#include "editor/MindMapViewModel.h"
#include "editor/SmartPaste.h"
#include "model/NewId.h"

namespace quilmora {

namespace {

constexpr double parentDistance = 180.0;
constexpr double rowStep = 60.0;
constexpr QPointF freeSpot(400.0, 300.0);
const QString outlineMarker = QStringLiteral("- ");

// What the lines of an outline go below.
struct Parent {
  QUuid id;
  std::optional<QPointF> position;  // nothing where the id names no topic
  int depth = 0;                    // as the tree tells it once all topics are there
  bool isReached = true;            // from a root; what no root reaches lies at depth 0, however deep below its parent
  qsizetype indent = 0;
};

QPointF placeBeside(const std::optional<QPointF>& parent, std::size_t index) {
  const double step = static_cast<double>(index) * rowStep;
  return parent ? *parent + QPointF(parentDistance, step - rowStep) : freeSpot + QPointF(0.0, step);
}

Node makeTopic(QString title, QPointF position, const NodeStyle& style) {
  Node node;
  node.id = newId();
  node.title = std::move(title);
  node.position = position;
  node.style = style;
  return node;
}

qsizetype indentOf(QStringView line) {
  const auto isIndent = [](QChar unit) { return unit == u' ' || unit == u'\t'; };
  return std::find_if_not(line.begin(), line.end(), isIndent) - line.begin();
}

}  // namespace

// The topics and edges of one paste, made beside the map.
struct MindMapViewModel::Pasted {
  std::vector<Node> nodes;
  std::vector<Edge> edges;

  void reserve(std::size_t count) {
    nodes.reserve(count);
    edges.reserve(count);
  }
  void add(Node node, const std::optional<QUuid>& parentID, const EdgeStyle& edgeStyle) {
    if (parentID) edges.push_back(Edge{newId(), *parentID, node.id, QString(), edgeStyle, std::nullopt});
    nodes.push_back(std::move(node));
  }
};

void MindMapViewModel::smartPaste(const QString& text, SmartPasteMode mode, const std::optional<QUuid>& parentID) {
  const std::vector<QStringView> lines = linesWithText(text);
  if (lines.empty()) return;
  captureSnapshot(false);
  const std::optional<QUuid> anchor = parentID ? parentID : firstSelectedNode();

  Pasted pasted;
  switch (mode) {
    case SmartPasteMode::singleNode:
      pasted = pastedTopic(text, anchor);
      break;
    case SmartPasteMode::multipleNodes:
      pasted = pastedSiblings(lines, anchor);
      break;
    case SmartPasteMode::nestedOutline:
      pasted = pastedOutline(lines, anchor);
      break;
  }
  IdSet ids;
  ids.reserve(pasted.nodes.size());
  for (const Node& node : pasted.nodes) ids.insert(node.id);
  edit([&](MindMap& map) {
    for (Node& node : pasted.nodes) map.nodes.append(std::move(node));
    for (Edge& edge : pasted.edges) map.edges.append(std::move(edge));
    // Only the single topic counts as a change of the map's date.
    if (mode == SmartPasteMode::singleNode) map.updatedAt = m_services.clock.now();
  });
  setSelectedNodeIDs(std::move(ids));
  setIsDirty(true);
}

std::optional<QPointF> MindMapViewModel::positionOf(const std::optional<QUuid>& id) {
  const std::optional<Node> node = id ? nodeByID(*id) : std::nullopt;
  return node ? std::optional(node->position) : std::nullopt;
}

MindMapViewModel::Pasted MindMapViewModel::pastedTopic(const QString& text, const std::optional<QUuid>& anchor) {
  const std::optional<QPointF> beside = positionOf(anchor);
  const QPointF position = beside ? *beside + QPointF(parentDistance, 0.0) : freeSpot;
  Pasted pasted;
  pasted.add(makeTopic(text.trimmed(), position, NodeStyle::defaultStyle()), anchor, newEdgeStyle());
  return pasted;
}

MindMapViewModel::Pasted MindMapViewModel::pastedSiblings(const std::vector<QStringView>& lines,
                                                          const std::optional<QUuid>& anchor) {
  const std::optional<QPointF> beside = positionOf(anchor);
  const int depth = anchor ? treeInfo().depth(*anchor).value_or(0) : 0;
  const NodeStyle style = styleForDepth(depth + 1);
  const EdgeStyle edgeStyle = newEdgeStyle();
  Pasted pasted;
  pasted.reserve(lines.size());
  for (const QStringView line : lines) {
    const QPointF position = placeBeside(beside, pasted.nodes.size());
    pasted.add(makeTopic(withoutBlanksAndTabs(line).toString(), position, style), anchor, edgeStyle);
  }
  return pasted;
}

MindMapViewModel::Pasted MindMapViewModel::pastedOutline(const std::vector<QStringView>& lines,
                                                         const std::optional<QUuid>& anchor) {
  std::vector<Parent> open;  // from the outermost to the innermost; the first stays
  if (anchor) {
    const int depth = treeInfo().depth(*anchor).value_or(0);
    const bool isRoot = hasNode(*anchor) && !treeInfo().parent(*anchor);
    open.push_back({*anchor, positionOf(anchor), depth, depth > 0 || isRoot, -1});
  }
  const EdgeStyle edgeStyle = newEdgeStyle();
  std::vector<NodeStyle> styles;  // by depth; all deeper ones are like the last
  for (std::size_t depth = 0; depth <= currentTheme().nodeColors.size(); ++depth)
    styles.push_back(styleForDepth(static_cast<int>(depth)));

  Pasted pasted;
  pasted.reserve(lines.size());
  for (const QStringView line : lines) {
    const qsizetype indent = indentOf(line);
    QStringView title = withoutBlanksAndTabs(line);
    if (title.startsWith(outlineMarker)) title = title.mid(outlineMarker.size());
    while (open.size() >= 2 && open.back().indent >= indent) open.pop_back();

    const Parent* parent = open.empty() ? nullptr : &open.back();
    const std::size_t styleDepth = static_cast<std::size_t>(parent ? parent->depth : 0) + 1;
    const QPointF position = placeBeside(parent ? parent->position : std::nullopt, pasted.nodes.size());
    Node node = makeTopic(title.toString(), position, styles[std::min(styleDepth, styles.size() - 1)]);

    Parent next{node.id, position, 0, !parent || parent->isReached, indent};
    if (parent && parent->isReached) next.depth = parent->depth + 1;
    pasted.add(std::move(node), parent ? std::optional(parent->id) : std::nullopt, edgeStyle);
    open.push_back(next);
  }
  return pasted;
}

}  // namespace quilmora
