#include "canvas/painting/SceneSketch.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <utility>

#include "canvas/geometry/TaperedConnector.h"
#include "canvas/painting/NodeMetrics.h"
#include "canvas/painting/PartVisibility.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

// How far ahead to look for a topic among those previously in its block.
constexpr std::size_t maxStepsAhead = 32;

float narrowed(double value) {
  return std::isfinite(value) ? static_cast<float>(std::clamp(value, -1e30, 1e30)) : 0.0f;
}

QRgb averaged(QRgb a, QRgb b) {
  return qRgb((qRed(a) + qRed(b)) / 2, (qGreen(a) + qGreen(b)) / 2, (qBlue(a) + qBlue(b)) / 2);
}

// Calls visit(index, record) for the records in blocks that `before` does not have at the same place.
template <class Array, class Visit>
void visitChanged(const Array& before, const Array& now, Visit&& visit) {
  for (std::size_t k = 0; k < now.blockCount(); ++k) {
    const auto& block = now.block(k);
    const bool isKnown =
        k < before.blockCount() && &before.block(k) == &block && before.blockStart(k) == now.blockStart(k);
    if (isKnown) continue;
    for (std::size_t i = 0; i < block.size(); ++i) visit(now.blockStart(k) + i, block[i]);
  }
}

double fontScaleOf(const HierarchicalConfig& config) {
  if (!config.nodeSizing) return 1.0;
  const double largest = std::max({config.rootFontSize, config.leafFontSize, 15.0}) / 15.0;
  return std::isfinite(largest) ? std::min(largest, 40.0) : 1.0;
}

double reach(const EdgeStyle::TaperConfig& widths, bool hasHead, const HierarchicalConfig& config, double zoom) {
  double reach = connectorReach(widths, hasHead ? widths.endWidth : 0.0);
  if (config.edgeSizing)
    reach = std::max(reach, connectorReach({config.rootEdgeWidth, config.leafEdgeWidth, widths.easing}, 0.0));
  return std::max(handleSurroundings(zoom), reach + 1.0);
}

// Estimated sizes of a box whose texts have not been shaped yet.
SceneSketch::NodeSketch sketchOf(const Node& node, double fontScale) {
  constexpr double lineHeight = 19.0;
  constexpr double characterWidth = 8.0;
  constexpr double padding = 20.0;
  const qsizetype length = std::min<qsizetype>(node.title.size(), NodeMeasurer::maxTitleLength);
  const qsizetype breaks = node.title.left(8000).count(QLatin1Char('\n'));
  const bool hasImage = node.imageData && !node.imageData->isEmpty();
  const double likelyWidth =
      std::min(static_cast<double>(length) * characterWidth, NodeMetrics::titleMaxWidth) * fontScale + 2 * padding;
  const double likelyLines = 1.0 + static_cast<double>(breaks) +
                             std::floor(static_cast<double>(length) * characterWidth / NodeMetrics::titleMaxWidth);
  // The widest characters are alone on their lines.
  const qsizetype emojiLength = node.emoji ? std::min<qsizetype>(node.emoji->size(), NodeMeasurer::maxTitleLength) : 0;
  const double maxLines =
      1.0 + static_cast<double>(breaks) + static_cast<double>(length) / 4.0 + static_cast<double>(emojiLength) / 4.0;
  const double extra = padding + (hasImage ? 404.0 : 0.0);
  SceneSketch::NodeSketch sketch;
  sketch.measuredFor = 0;
  sketch.sizingFraction = SceneSketch::unsized;
  sketch.fill = colorFromHex(node.style.fill).rgb();
  if (node.style.fillGradient) sketch.fill = averaged(sketch.fill, colorFromHex(*node.style.fillGradient).rgb());
  sketch.halfWidth = narrowed(likelyWidth / 2);
  sketch.halfHeight = narrowed((likelyLines * lineHeight * fontScale + 16.0 + (hasImage ? 150.0 : 0.0)) / 2);
  sketch.boundOfLines = narrowed(maxLines * lineHeight * 1.5 / 2);
  sketch.boundOfRest = narrowed(extra / 2 + padding);
  return sketch;
}

// Whether two records of a topic give boxes of the same size when nothing is sized by depth. Images are compared by
// address: they are long, and shared as long as nobody changes them.
bool isSizedAlike(const Node& a, const Node& b) {
  const auto imageOf = [](const Node& node) { return node.imageData ? node.imageData->constData() : nullptr; };
  return a.title == b.title && a.emoji == b.emoji && a.icon.has_value() == b.icon.has_value() &&
         imageOf(a) == imageOf(b) && a.style.bold == b.style.bold && a.style.italic == b.style.italic;
}

}  // namespace

bool SceneSketch::isOf(const MindMap& map) const {
  return m_nodes.sharesStorageWith(map.nodes) && m_edges.sharesStorageWith(map.edges) &&
         m_hierarchical == map.hierarchical;
}

void SceneSketch::update(const MindMap& map) {
  if (!sizeTopicsAlike(m_hierarchical, map.hierarchical)) {
    m_fontScale = fontScaleOf(map.hierarchical);
    ++m_settingsNumber;
  }
  m_hierarchical = map.hierarchical;
  if (!m_nodes.sharesStorageWith(map.nodes)) updateNodes(map.nodes);
  if (!m_edges.sharesStorageWith(map.edges)) updateEdges(map);
}

// The sketches of blocks that both arrays begin or end with stay in place.
void SceneSketch::updateNodes(const SharedArray<Node>& nodes) {
  const auto isSame = [&](std::size_t k, std::size_t kBefore) { return &nodes.block(k) == &m_nodes.block(kBefore); };
  std::size_t first = 0;
  std::size_t last = nodes.blockCount();
  std::size_t lastBefore = m_nodes.blockCount();
  while (first < std::min(last, lastBefore) && isSame(first, first)) ++first;
  while (std::min(last, lastBefore) > first && isSame(last - 1, lastBefore - 1)) --last, --lastBefore;
  const auto startOf = [](const SharedArray<Node>& array, std::size_t k) {
    return k < array.blockCount() ? array.blockStart(k) : array.size();
  };
  const std::size_t start = startOf(nodes, first);
  const auto at = [&](std::size_t index) { return m_nodeSketches.begin() + static_cast<std::ptrdiff_t>(index); };
  const std::vector<NodeSketch> before(at(start), at(startOf(m_nodes, lastBefore)));
  const std::size_t count = startOf(nodes, last) - start;
  if (count < before.size())
    m_nodeSketches.erase(at(start + count), at(start + before.size()));
  else
    m_nodeSketches.insert(at(start + before.size()), count - before.size(), NodeSketch());

  std::unordered_map<const void*, std::size_t> startBefore;
  for (std::size_t k = first; k < lastBefore; ++k)
    startBefore.emplace(&m_nodes.block(k), m_nodes.blockStart(k) - start);
  for (std::size_t k = first; k < last; ++k) {
    NodeSketch* sketches = m_nodeSketches.data() + nodes.blockStart(k);
    if (const auto known = startBefore.find(&nodes.block(k)); known != startBefore.end())
      std::copy_n(before.data() + known->second, nodes.block(k).size(), sketches);
    else if (k < lastBefore)
      sketchBlock(nodes.block(k), m_nodes.block(k), before.data() + (m_nodes.blockStart(k) - start), sketches);
    else
      sketchBlock(nodes.block(k), {}, nullptr, sketches);
  }
  m_nodes = nodes;
}

// Sizes that were measured stay: what is painted anew must fit to what is not.
void SceneSketch::sketchBlock(const SharedArray<Node>::Block& block, const SharedArray<Node>::Block& blockBefore,
                              const NodeSketch* before, NodeSketch* sketches) const {
  std::size_t next = 0;
  for (std::size_t i = 0; i < block.size(); ++i) {
    sketches[i] = sketchOf(block[i], m_fontScale);
    const std::size_t end = std::min(blockBefore.size(), next + maxStepsAhead);
    std::size_t old = next;
    while (old < end && blockBefore[old].id != block[i].id) ++old;
    if (old >= end) continue;
    next = old + 1;
    const NodeSketch& kept = before[old];
    if (kept.measuredFor != m_settingsNumber || !isSizedAlike(blockBefore[old], block[i])) continue;
    sketches[i].halfWidth = kept.halfWidth;
    sketches[i].halfHeight = kept.halfHeight;
    sketches[i].measuredFor = kept.measuredFor;
    sketches[i].sizingFraction = kept.sizingFraction;
  }
}

void SceneSketch::updateEdges(const MindMap& map) {
  m_edgeSketches.resize(map.edges.size());
  visitChanged(m_edges, map.edges, [&](std::size_t index, const Edge& edge) {
    EdgeSketch& sketch = m_edgeSketches[index];
    sketch.id = edge.id;
    sketch.color = colorFromHex(edge.style.color).rgb();
    sketch.startWidth = narrowed(edge.style.taper.startWidth);
    sketch.endWidth = narrowed(edge.style.taper.endWidth);
    sketch.hasHead = edge.style.arrowHead == EdgeStyle::ArrowHead::triangle;
    sketch.isDashed = edge.style.dashed;
    sketch.easing = edge.style.taper.easing;
    sketch.isBent = edge.controlPointOffset.has_value();
    sketch.bend = edge.controlPointOffset.value_or(QPointF());
  });
  m_edges = map.edges;
}

void SceneSketch::rememberBox(std::size_t nodeIndex, const QRectF& box, float sizingFraction) {
  NodeSketch& sketch = m_nodeSketches[nodeIndex];
  sketch.halfWidth = narrowed(box.width() / 2);
  sketch.halfHeight = narrowed(box.height() / 2);
  sketch.measuredFor = m_settingsNumber;
  sketch.sizingFraction = sizingFraction;
}

double SceneSketch::edgeReach(std::size_t edge, double zoom) const {
  const EdgeSketch& sketch = m_edgeSketches[edge];
  return reach({sketch.startWidth, sketch.endWidth, sketch.easing}, sketch.hasHead, m_hierarchical, zoom);
}

double SceneSketch::reachOf(const Edge& edge, const HierarchicalConfig& config, double zoom) {
  const EdgeStyle::TaperConfig& taper = edge.style.taper;
  return reach({narrowed(taper.startWidth), narrowed(taper.endWidth), taper.easing},
               edge.style.arrowHead == EdgeStyle::ArrowHead::triangle, config, zoom);
}

double SceneSketch::maxHalfWidth() const {
  // An emoji text as wide as a title, icon, gaps, paddings and the connection handle next to the widest title.
  const double padding =
      m_hierarchical.nodeSizing
          ? std::clamp(std::max(m_hierarchical.rootPadding, m_hierarchical.leafPadding), 12.0, 1000.0)
          : 12.0;
  const double font = m_hierarchical.nodeSizing
                          ? std::clamp(std::max(m_hierarchical.rootFontSize, m_hierarchical.leafFontSize), 17.0, 512.0)
                          : 17.0;
  return NodeMetrics::titleWidthLimit(m_hierarchical.nodeSizing ? font : 15.0) + padding + font + 40.0;
}

}  // namespace quilmora
