#include "canvas/painting/SceneDifference.h"

#include <algorithm>
#include <utility>

#include "canvas/painting/HiddenCount.h"
#include "canvas/painting/RecordChanges.h"

namespace quilmora {

namespace {

// From this many changed records or topics on, repainting everything is simpler than finding what changed.
constexpr std::size_t maxRecordCount = 20000;
constexpr std::size_t maxChangeCount = 2000;

}  // namespace

ChangedParts SceneDifference::follow(const MapScene& scene, const PaintOptions& options, MapPainter& painter) {
  m_parts = {};
  m_options = &options;
  m_painter = &painter;
  m_zoom = scene.view.zoom / scene.pixelRatio;
  m_isAnyMoved = false;
  m_looksBefore.clear();
  m_parts.everything = !m_scene || changesEverything(scene);
  m_areAllNew = !m_scene || !hasSameTopics(scene) ||
                ((hasOtherStructure(scene) || hasOtherSelection(scene)) && (m_hasTwins || !isSelectionSmall(scene)));
  if (m_areAllNew) findLooks(scene);
  m_isMoved.assign(m_areAllNew ? m_newLooks.size() : m_looks.size(), 0);
  if (!m_areAllNew)
    compareSomeLooks(scene);
  else if (!m_parts.everything)
    compareLooks(scene);
  if (!m_parts.everything) compareRecords(scene);
  if (std::exchange(m_areAllNew, false)) std::swap(m_looks, m_newLooks);
  if (!m_parts.everything) compareGestures(scene);
  m_parts.leaveMapAlone = m_scene && !hasOtherMap(scene);
  m_scene = scene;
  if (m_parts.areas.size() + m_parts.edges.size() > 4 * maxChangeCount) m_parts.everything = true;
  return std::move(m_parts);
}

bool SceneDifference::hasOtherStructure(const MapScene& scene) const {
  return !scene.index.sharesStorageWith(m_scene->index) || !scene.hiddenNodes.sharesStorageWith(m_scene->hiddenNodes) ||
         !scene.collapsedNodeIDs.sharesStorageWith(m_scene->collapsedNodeIDs) ||
         scene.isDragging() != m_scene->isDragging();
}

bool SceneDifference::hasSameTopics(const MapScene& scene) const {
  const MapIndex& now = scene.index;
  const MapIndex& before = m_scene->index;
  return now.ids() == before.ids() && now.numberOfNode().sharesStorageWith(before.numberOfNode()) &&
         now.nodeOfNumber().sharesStorageWith(before.nodeOfNumber()) &&
         now.edgeFrom().sharesStorageWith(before.edgeFrom()) && now.edgeTo().sharesStorageWith(before.edgeTo()) &&
         scene.hiddenNodes.sharesStorageWith(m_scene->hiddenNodes) &&
         scene.collapsedNodeIDs.sharesStorageWith(m_scene->collapsedNodeIDs);
}

bool SceneDifference::hasOtherMap(const MapScene& scene) const {
  const MindMap& before = m_scene->map;
  const MindMap& now = scene.map;
  return !now.nodes.sharesStorageWith(before.nodes) || !now.edges.sharesStorageWith(before.edges) ||
         !now.relationships.sharesStorageWith(before.relationships) || !now.regions.sharesStorageWith(before.regions) ||
         now.hierarchical != before.hierarchical || hasOtherStructure(scene);
}

bool SceneDifference::hasOtherSelection(const MapScene& scene) const {
  return !scene.selectedNodeIDs.sharesStorageWith(m_scene->selectedNodeIDs) ||
         !scene.selectedEdgeIDs.sharesStorageWith(m_scene->selectedEdgeIDs);
}

bool SceneDifference::isSelectionSmall(const MapScene& scene) const {
  return scene.selectedNodeIDs.size() + m_scene->selectedNodeIDs.size() <= maxChangeCount;
}

bool SceneDifference::changesEverything(const MapScene& scene) const {
  const MindMap& before = m_scene->map;
  const HierarchicalConfig& config = scene.map.hierarchical;
  if (scene.opacityRule != m_scene->opacityRule || scene.map.canvas != before.canvas) return true;
  if (!sizeTopicsAlike(config, before.hierarchical) || !sizeConnectorsAlike(config, before.hierarchical)) return true;
  if (scene.index.ids() != m_scene->index.ids()) return true;
  const int depth = scene.tree.maxDepth();
  const int depthBefore = m_scene->tree.maxDepth();
  return depth != depthBefore && (config.nodeSizing || (config.edgeSizing && (depth < 1) != (depthBefore < 1)));
}

bool SceneDifference::haveHandlesMoved(const MapScene& scene) const {
  return handlesLieAbove(scene, *m_options) != handlesLieAbove(*m_scene, *m_options);
}

void SceneDifference::compareRecords(const MapScene& scene) {
  using Comparison = void (SceneDifference::*)(const MapScene&);
  for (const Comparison compare : {&SceneDifference::compareNodes, &SceneDifference::compareEdges,
                                   &SceneDifference::compareSelectedEdges, &SceneDifference::compareRelationships})
    if (!m_parts.everything) (this->*compare)(scene);
  if (!m_parts.everything) compareRegions(scene);
}

// --- The map, and what is selected and collapsed ---

void SceneDifference::findLooks(const MapScene& scene) {
  const MapIndex& index = scene.index;
  std::vector<NodeLook>& looks = m_newLooks;
  looks.assign(index.numberCount(), NodeLook());
  m_hasTwins = false;
  for (std::size_t i = 0; i < index.positions().size(); ++i) {
    const std::uint32_t number = index.numberOfNode()[i];
    NodeLook& look = looks[number];
    m_hasTwins = m_hasTwins || look.exists;
    look.position = index.positions()[i];
    look.exists = true;
    look.isShown = !scene.isHidden(i);
    if (number >= scene.tree.numberCount()) continue;
    look.depth = std::max(0, scene.tree.depthOfNumber(number));
    look.hasChildren = !scene.tree.childNumbers(number).empty();
  }
  const auto mark = [&](const IdSet& ids, bool NodeLook::*flag) {
    index.ids()->visitNumbers(ids, [&](std::uint32_t number) {
      if (number < looks.size()) looks[number].*flag = true;
    });
  };
  mark(scene.selectedNodeIDs, &NodeLook::isSelected);
  if (scene.selectedNodeIDs.size() == 1) mark(scene.selectedNodeIDs, &NodeLook::hasHandle);
  mark(scene.collapsedNodeIDs, &NodeLook::isCollapsed);
  for (std::uint32_t number = 0; number < looks.size(); ++number)
    if (looks[number].isCollapsed && looks[number].isShown)
      looks[number].hiddenCount = static_cast<std::uint32_t>(hiddenCount(scene.tree, number));
  if (scene.isDragging())
    for (NodeLook& look : looks) look.isShown = look.isShown && !look.isSelected;
}

std::vector<std::uint32_t> SceneDifference::selectedAndMoved(const MapScene& scene) const {
  std::vector<std::uint32_t> numbers;
  const MapIndex& index = scene.index;
  if (hasOtherSelection(scene) || scene.isDragging() != m_scene->isDragging()) {
    const auto add = [&](std::uint32_t number) { numbers.push_back(number); };
    index.ids()->visitNumbers(m_scene->selectedNodeIDs, add);
    index.ids()->visitNumbers(scene.selectedNodeIDs, add);
  }
  const auto& now = index.positions();
  const auto& before = m_scene->index.positions();
  if (!now.sharesStorageWith(before))
    for (std::size_t i = 0; i < now.size(); ++i)
      if (now[i].x() != before[i].x() || now[i].y() != before[i].y()) numbers.push_back(index.numberOfNode()[i]);
  return numbers;
}

// What is dragged is left out of the picture, with its edges.
void SceneDifference::compareSomeLooks(const MapScene& scene) {
  // Of topics with one id only the last is told apart.
  if (m_hasTwins && hasOtherMap(scene)) m_parts.everything = true;
  const MapIndex& index = scene.index;
  const IdSet& selected = scene.selectedNodeIDs;
  for (const std::uint32_t number : selectedAndMoved(scene)) {
    if (number >= m_looks.size() || !m_looks[number].exists) continue;
    NodeLook& look = m_looks[number];
    const NodeLook before = look;
    const std::uint32_t ordinal = index.nodeOfNumber()[number];
    look.position = index.positions()[ordinal];
    look.isSelected = selected.contains((*index.ids())[number]);
    look.hasHandle = look.isSelected && selected.size() == 1;
    look.isShown = !scene.isHidden(ordinal) && !(scene.isDragging() && look.isSelected);
    const bool hasMoved = look.position != before.position || look.isShown != before.isShown;
    if (!hasMoved && look.isSelected == before.isSelected && look.hasHandle == before.hasHandle) continue;
    m_looksBefore.emplace(number, before);
    if (hasMoved) markMoved(number);
    m_parts.everything = m_parts.everything || m_looksBefore.size() > maxChangeCount;
    if (m_parts.everything) continue;
    // As in compareLooks().
    Node node = scene.map.nodes[ordinal];
    if (look.isShown) addNode(node, look.depth, scene);
    node.position = before.position;
    if (hasMoved && before.isShown) addNode(node, before.depth, scene);
  }
}

void SceneDifference::markMoved(std::uint32_t number) {
  m_isMoved[number] = 1;
  m_isAnyMoved = true;
}

void SceneDifference::compareLooks(const MapScene& scene) {
  const MapIndex& index = scene.index;
  const HierarchicalConfig& config = scene.map.hierarchical;
  const bool isSizedByDepth = config.nodeSizing || scene.opacityRule != 0;
  std::size_t count = 0;
  // Of topics with the same id only the last is distinguished.
  m_parts.everything = m_hasTwins;
  if (m_hasTwins) return;
  for (std::size_t i = 0; i < index.positions().size(); ++i) {
    const std::uint32_t number = index.numberOfNode()[i];
    const NodeLook& now = m_newLooks[number];
    const NodeLook before = number < m_looks.size() ? m_looks[number] : NodeLook();
    const bool hasMoved =
        now.position != before.position || now.isShown != before.isShown || now.exists != before.exists;
    if (hasMoved || (config.edgeSizing && now.depth != before.depth)) markMoved(number);
    const bool isOther = hasMoved || now.isSelected != before.isSelected || now.hasHandle != before.hasHandle ||
                         now.isCollapsed != before.isCollapsed || now.hiddenCount != before.hiddenCount ||
                         now.hasChildren != before.hasChildren || (isSizedByDepth && now.depth != before.depth);
    if (!isOther && !m_isMoved[number]) continue;
    if (++count > maxChangeCount) {
      m_parts.everything = true;
      return;
    }
    if (!isOther) continue;
    // Changed records are compared separately; here the current record is shown at both places.
    Node node = scene.map.nodes[i];
    if (now.isShown) addNode(node, now.depth, scene);
    node.position = before.position;
    if (before.exists && before.isShown) addNode(node, before.depth, scene);
  }
}

void SceneDifference::compareNodes(const MapScene& scene) {
  const RecordChanges<Node> changes(m_scene->map.nodes, scene.map.nodes, maxRecordCount);
  if (changes.isTooMuch || changes.gone.size() + changes.came.size() > 2 * maxChangeCount) {
    m_parts.everything = true;
    return;
  }
  for (const Node* node : changes.gone) {
    const std::uint32_t number = scene.index.ids()->find(node->id);
    const NodeLook* before = lookOf(number, When::before);
    if (!before || !before->exists) continue;
    if (before->isShown) addNode(*node, before->depth, scene);
    const NodeLook* now = lookOf(number, When::now);
    if (now && !now->exists) markMoved(number);
  }
  for (const Node* node : changes.came) {
    const NodeLook* now = lookOf(scene.index.ids()->find(node->id), When::now);
    if (now && now->isShown) addNode(*node, now->depth, scene);
  }
}

void SceneDifference::compareEdges(const MapScene& scene) {
  const RecordChanges<Edge> changes(m_scene->map.edges, scene.map.edges, maxRecordCount);
  if (changes.isTooMuch || changes.gone.size() + changes.came.size() > 2 * maxChangeCount) {
    m_parts.everything = true;
    return;
  }
  for (const Edge* edge : changes.gone) addEdge(*edge, When::before, scene);
  for (const Edge* edge : changes.came) addEdge(*edge, When::now, scene);
  // Those that hang on topics which moved, went or came into sight.
  if (!m_isAnyMoved) return;
  const MapIndex& index = scene.index;
  for (std::size_t i = 0; i < index.edgeFrom().size(); ++i) {
    if (!m_isMoved[index.edgeFrom()[i]] && !m_isMoved[index.edgeTo()[i]]) continue;
    if (m_parts.edges.size() > 2 * maxChangeCount) {
      m_parts.everything = true;
      return;
    }
    const Edge& edge = scene.map.edges[i];
    addEdge(edge, When::before, scene);
    addEdge(edge, When::now, scene);
  }
}

void SceneDifference::compareSelectedEdges(const MapScene& scene) {
  const IdSet& now = scene.selectedEdgeIDs;
  const IdSet& before = m_scene->selectedEdgeIDs;
  const bool areHandlesMoved = haveHandlesMoved(scene);
  if (now.sharesStorageWith(before) && !areHandlesMoved) return;
  IdSet changed;
  for (const QUuid& id : now)
    if (areHandlesMoved || !before.contains(id)) changed.insert(id);
  for (const QUuid& id : before)
    if (!now.contains(id)) changed.insert(id);
  if (changed.empty()) return;
  if (changed.size() > maxChangeCount) {
    m_parts.everything = true;
    return;
  }
  // A few ids are compared faster than hashed.
  const std::vector<QUuid> few(changed.begin(), changed.end());
  const bool areFew = few.size() <= 4;
  for (const Edge& edge : scene.map.edges)
    if (areFew ? std::ranges::find(few, edge.id) != few.end() : changed.contains(edge.id))
      addEdge(edge, When::now, scene);
}

void SceneDifference::compareRelationships(const MapScene& scene) {
  const RecordChanges<Relationship> changes(m_scene->map.relationships, scene.map.relationships, maxRecordCount);
  if (changes.isTooMuch) {
    m_parts.everything = true;
    return;
  }
  for (const Relationship* relationship : changes.gone) addRelationship(*relationship, When::before, scene);
  for (const Relationship* relationship : changes.came) addRelationship(*relationship, When::now, scene);
  if (!m_isAnyMoved) return;
  const auto isMoved = [&](const QUuid& id) {
    const std::uint32_t number = scene.index.ids()->find(id);
    return number < m_isMoved.size() && m_isMoved[number];
  };
  for (const Relationship& relationship : scene.map.relationships) {
    if (!isMoved(relationship.from) && !isMoved(relationship.to)) continue;
    addRelationship(relationship, When::before, scene);
    addRelationship(relationship, When::now, scene);
  }
}

void SceneDifference::compareRegions(const MapScene& scene) {
  const RecordChanges<Region> changes(m_scene->map.regions, scene.map.regions, maxRecordCount);
  m_parts.everything = m_parts.everything || changes.isTooMuch;
  for (const Region* region : changes.gone) addRegion(displayRect(*region, m_scene->shown.regions));
  for (const Region* region : changes.came) addRegion(displayRect(*region, scene.shown.regions));
}

// --- Gestures ---

void SceneDifference::compareGestures(const MapScene& scene) {
  const ShownGestures& before = m_scene->shown;
  const ShownGestures& now = scene.shown;
  // Marks go by id, which twins share.
  if (m_hasTwins && before != now) m_parts.everything = true;
  if (m_parts.everything) return;
  const auto compareNode = [&](const std::optional<QUuid>& one, const std::optional<QUuid>& other) {
    if (one == other) return;
    addNodeOf(one, scene);
    addNodeOf(other, scene);
  };
  if (now.editingNodeID != before.editingNodeID || now.editingTitle != before.editingTitle) {
    addNodeOf(before.editingNodeID, scene);
    addNodeOf(now.editingNodeID, scene);
  }
  const auto target = now.dropTarget();
  const auto targetBefore = before.dropTarget();
  if (target != targetBefore) {
    if (target) addNodeOf(target->id, scene);
    if (targetBefore) addNodeOf(targetBefore->id, scene);
  }
  // The handle of the topic that a connection starts from is being dragged.
  compareNode(before.handleDragSourceID, now.handleDragSourceID);
  compareLinks(scene);
  compareShownRegions(scene);
}

void SceneDifference::compareLinks(const MapScene& scene) {
  const ShownGestures& before = m_scene->shown;
  const ShownGestures& now = scene.shown;
  // A handle's dragged place shows above the picture.
  const auto handleOf = [](const ShownGestures& shown) {
    return shown.draggedHandle ? std::optional(std::pair(shown.draggedHandle->kind, shown.draggedHandle->ownerID))
                               : std::nullopt;
  };
  std::vector<QUuid> links;
  if (handleOf(before) != handleOf(now))
    for (const ShownGestures* one : {&before, &now})
      if (one->draggedHandle) links.push_back(one->draggedHandle->ownerID);
  if (before.selectedRelationshipID != now.selectedRelationshipID || haveHandlesMoved(scene))
    for (const auto& id : {before.selectedRelationshipID, now.selectedRelationshipID})
      if (id) links.push_back(*id);
  if (links.empty()) return;
  const auto isMeant = [&](const QUuid& id) { return std::ranges::find(links, id) != links.end(); };
  for (const Edge& edge : scene.map.edges)
    if (isMeant(edge.id)) addEdge(edge, When::now, scene);
  for (const Relationship& relationship : scene.map.relationships)
    if (isMeant(relationship.id)) addRelationship(relationship, When::now, scene);
}

void SceneDifference::compareShownRegions(const MapScene& scene) {
  const RegionGesture& before = m_scene->shown.regions;
  const RegionGesture& now = scene.shown.regions;
  if (before == now && m_scene->selectedRegionID == scene.selectedRegionID) return;
  for (const Region& region : scene.map.regions) {
    const QRectF rectBefore = displayRect(region, before);
    const QRectF rect = displayRect(region, now);
    const bool isOther = rectBefore != rect ||
                         (m_scene->selectedRegionID == region.id) != (scene.selectedRegionID == region.id) ||
                         (before.editingLabelID == region.id) != (now.editingLabelID == region.id);
    if (!isOther) continue;
    addRegion(rectBefore);
    addRegion(rect);
  }
}

}  // namespace quilmora
