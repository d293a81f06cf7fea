#include "editor/edits/PastedTopics.h"

#include <algorithm>

#include "editor/edits/ConnectionEdits.h"
#include "editor/edits/SmartPaste.h"
#include "editor/edits/StyleEdits.h"
#include "model/NewId.h"

namespace quilmora::edits {

namespace {

constexpr double parentDistance = 180.0;
constexpr double rowStep = 60.0;
constexpr QPointF freeSpotOfText(400.0, 300.0);
const QString outlineMarker = QStringLiteral("- ");

// A possible parent for the lines of an outline.
struct Parent {
  QUuid id;
  std::optional<QPointF> position;  // absent if the id names no topic
  int depth = 0;                    // in the tree once all topics are there
  bool isReached = true;            // from a root; below an unreachable parent the depth is always 0
  qsizetype indent = 0;
};

QPointF placeBeside(const std::optional<QPointF>& parent, std::size_t row) {
  const double step = static_cast<double>(row) * rowStep;
  return parent ? *parent + QPointF(parentDistance, step - rowStep) : freeSpotOfText + QPointF(0.0, step);
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

std::optional<QPointF> PasteTarget::anchorPosition() const {
  const std::uint32_t ordinal = anchor ? index.find(*anchor) : MapIndex::npos;
  return ordinal == MapIndex::npos ? std::nullopt : std::optional(map.nodes[ordinal].position);
}

int PasteTarget::anchorDepth() const {
  return anchor ? tree.depth(*anchor).value_or(0) : 0;
}

void PastedTopics::reserve(std::size_t count) {
  nodes.reserve(count);
  edges.reserve(count);
}

void PastedTopics::add(Node node, const std::optional<QUuid>& parentID, const EdgeStyle& edgeStyle) {
  if (parentID) edges.push_back(newEdge(*parentID, node.id, edgeStyle));
  nodes.push_back(std::move(node));
}

IdSet PastedTopics::ids() const {
  IdSet ids;
  ids.reserve(nodes.size());
  for (const Node& node : nodes) ids.insert(node.id);
  return ids;
}

void PastedTopics::appendTo(MindMap& map) {
  for (Node& node : nodes) map.nodes.append(std::move(node));
  for (Edge& edge : edges) map.edges.append(std::move(edge));
  nodes.clear();
  edges.clear();
}

PastedTopics pastedTopic(const QString& text, const PasteTarget& target) {
  const std::optional<QPointF> beside = target.anchorPosition();
  const QPointF position = beside ? *beside + QPointF(parentDistance, 0.0) : freeSpotOfText;
  PastedTopics pasted;
  pasted.add(makeTopic(text.trimmed(), position, NodeStyle::defaultStyle()), target.anchor, newEdgeStyle(target.theme));
  return pasted;
}

PastedTopics pastedSiblings(const std::vector<QStringView>& lines, const PasteTarget& target) {
  const std::optional<QPointF> beside = target.anchorPosition();
  const NodeStyle style = newTopicStyle(target.theme, target.anchorDepth() + 1);
  const EdgeStyle edgeStyle = newEdgeStyle(target.theme);
  PastedTopics pasted;
  pasted.reserve(lines.size());
  for (const QStringView line : lines) {
    const QPointF position = placeBeside(beside, pasted.nodes.size());
    pasted.add(makeTopic(withoutBlanksAndTabs(line).toString(), position, style), target.anchor, edgeStyle);
  }
  return pasted;
}

PastedTopics pastedOutline(const std::vector<QStringView>& lines, const PasteTarget& target) {
  std::vector<Parent> open;  // from the outermost to the innermost; the first stays
  if (target.anchor) {
    const std::optional<QPointF> position = target.anchorPosition();
    const int depth = target.anchorDepth();
    const bool isRoot = position && !target.tree.parent(*target.anchor);
    open.push_back({*target.anchor, position, depth, depth > 0 || isRoot, -1});
  }
  const EdgeStyle edgeStyle = newEdgeStyle(target.theme);
  std::vector<NodeStyle> styles;  // by depth; all deeper ones equal the last
  for (std::size_t depth = 0; depth <= target.theme.nodeColors.size(); ++depth)
    styles.push_back(newTopicStyle(target.theme, static_cast<int>(depth)));

  PastedTopics pasted;
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

}  // namespace quilmora::edits
