#include <utility>

#include "canvas/geometry/RelationshipCurve.h"
#include "canvas/painting/PartVisibility.h"
#include "canvas/painting/RegionLabel.h"
#include "canvas/painting/SceneDifference.h"
#include "canvas/painting/SceneSketch.h"

// What a difference marks as changed.

namespace quilmora {

void SceneDifference::addNode(const Node& node, int depth, const MapScene& scene) {
  const double deepest = scene.tree.maxDepth();
  const auto fraction = deepest >= 1 ? std::optional(std::max(0, depth) / deepest) : std::nullopt;
  const HierarchicalConfig& config = scene.map.hierarchical;
  const HierarchicalConfig* sizing = m_options->depthSizing ? &config : nullptr;
  QSizeF box = m_painter->measurer().measure(node, fraction, sizing).box.size();
  // A topic that was or is being edited has the size of the text in its field.
  for (const ShownGestures* one : {&std::as_const(m_scene)->shown, &scene.shown})
    if (one->editingNodeID == node.id)
      box = box.expandedTo(
          m_painter->measurer().measure(node, fraction, sizing, one->editingTitle.value_or(node.title)).box.size());
  const double margin = maxTopicSurroundings(m_zoom);
  const QSizeF half(box.width() / 2 + margin, box.height() / 2 + margin);
  m_parts.areas.emplace_back(node.position.x() - half.width(), node.position.y() - half.height(), 2 * half.width(),
                             2 * half.height());
}

void SceneDifference::addNodeOf(const std::optional<QUuid>& id, const MapScene& scene) {
  if (!id) return;
  const std::uint32_t ordinal = scene.index.find(*id);
  if (ordinal == MapIndex::npos) return;
  addNode(scene.map.nodes[ordinal], m_looks[scene.index.numberOfNode()[ordinal]].depth, scene);
}

const SceneDifference::NodeLook* SceneDifference::lookOf(std::uint32_t number, When when) const {
  if (when == When::before)
    if (const auto changed = m_looksBefore.find(number); changed != m_looksBefore.end()) return &changed->second;
  const std::vector<NodeLook>& looks = when == When::now && m_areAllNew ? m_newLooks : m_looks;
  return number < looks.size() ? &looks[number] : nullptr;
}

const SceneDifference::NodeLook* SceneDifference::shown(const QUuid& id, When when, const MapScene& scene) const {
  const NodeLook* look = lookOf(scene.index.ids()->find(id), when);
  return look && look->exists && look->isShown ? look : nullptr;
}

void SceneDifference::addEdge(const Edge& edge, When when, const MapScene& scene) {
  const NodeLook* from = shown(edge.from, when, scene);
  const NodeLook* to = shown(edge.to, when, scene);
  if (!from || !to) return;
  m_parts.edges.push_back({from->position, to->position, edge.controlPointOffset.value_or(QPointF()),
                           SceneSketch::reachOf(edge, scene.map.hierarchical, m_zoom)});
}

void SceneDifference::addRelationship(const Relationship& relationship, When when, const MapScene& scene) {
  const NodeLook* from = shown(relationship.from, when, scene);
  const NodeLook* to = shown(relationship.to, when, scene);
  if (!from || !to) return;
  const RelationshipCurve curve(from->position, to->position, relationship.controlPointOffset);
  const double reach = handleSurroundings(m_zoom);
  m_parts.areas.push_back(curve.bounds().adjusted(-reach, -reach, reach, reach));
}

void SceneDifference::addRegion(const QRectF& rect) {
  const double handle = partDiameter(CanvasPart::resizeHandle, m_zoom) / 2 + 4.0;
  m_parts.areas.push_back(RegionLabel::reach(rect.normalized(), m_zoom).adjusted(-handle, -handle, handle, handle));
}

}  // namespace quilmora
