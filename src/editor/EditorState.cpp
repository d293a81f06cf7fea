#include "editor/EditorState.h"

#include <utility>

#include "editor/edits/Hierarchy.h"
#include "model/FindById.h"

namespace quilmora {

void EditorState::setMindMap(MindMap map) {
  m_mindMap = std::move(map);
  mapWasReplaced();
}

void EditorState::mapWasReplaced() {
  m_indexStale = true;
  ++m_treeGeneration;
  Q_EMIT mindMapChanged();
}

void EditorState::moveAll(const std::vector<QPointF>& positions) {
  mapIndex();
  std::size_t ordinal = 0;
  m_mindMap.nodes.updateAll([&](Node& node) { node.position = positions[ordinal++]; });
  m_index.adopt(m_mindMap.nodes, positions);
  m_grid.reset();
}

const MapIndex& EditorState::mapIndex() {
  if (m_indexStale) {
    const MapIndex::Change change = m_index.update(m_mindMap.nodes, m_mindMap.edges);
    m_indexStale = false;
    if (change.positions) followPositions(change);
    if (change.structure) {
      // Nothing if the tree cannot follow.
      if (m_treeInfo) m_treeInfo = m_treeInfo->followed(m_index, change);
      if (m_treeInfo)
        m_hidden.noteStructure(change);
      else
        m_hidden.forget();
    }
  }
  return m_index;
}

void EditorState::followPositions(const MapIndex::Change& change) {
  if (!m_grid) return;
  if (!change.isSmall) {
    m_grid.reset();
    return;
  }
  for (const QPointF& position : change.left) m_grid->remove(position);
  for (const QPointF& position : change.came) m_grid->insert(position);
}

const edits::PositionGrid& EditorState::positionGrid() {
  const MapIndex& index = mapIndex();
  if (!m_grid) m_grid.emplace(index.positions());
  return *m_grid;
}

const TreeInfo& EditorState::treeInfo() {
  const MapIndex& index = mapIndex();
  if (!m_treeInfo) m_treeInfo.emplace(index);
  return *m_treeInfo;
}

std::optional<Node> EditorState::nodeByID(const QUuid& id) {
  const std::uint32_t ordinal = mapIndex().find(id);
  if (ordinal == MapIndex::npos) return std::nullopt;
  return m_mindMap.nodes[ordinal];
}

bool EditorState::hasNode(const QUuid& id) {
  return mapIndex().find(id) != MapIndex::npos;
}

std::optional<Region> EditorState::regionByID(const QUuid& id) const {
  return recordByID(m_mindMap.regions, id);
}

bool EditorState::isDescendant(const QUuid& target, const QUuid& root) {
  return edits::isDescendant(treeInfo(), target, root);
}

const HiddenTopics& EditorState::hidden() {
  const TreeInfo& tree = treeInfo();
  m_hidden.update(tree, m_index, m_collapsedNodeIDs);
  return m_hidden;
}

bool EditorState::isHidden(const QUuid& id) {
  return hidden().isHidden(treeInfo().number(id));
}

const SharedValue<std::vector<char>>& EditorState::sharedHiddenNodes() {
  return hidden().nodes();
}

std::optional<double> EditorState::depthFraction(const QUuid& id) {
  const TreeInfo& tree = treeInfo();
  if (tree.maxDepth() < 1) return std::nullopt;
  return static_cast<double>(tree.depth(id).value_or(0)) / tree.maxDepth();
}

// --- Observable properties ---

void EditorState::setSelectedNodeIDs(IdSet ids) {
  m_selectedNodeIDs = std::move(ids);
  Q_EMIT selectedNodeIDsChanged();
}

void EditorState::setSelectedEdgeIDs(IdSet ids) {
  m_selectedEdgeIDs = std::move(ids);
  Q_EMIT selectedEdgeIDsChanged();
}

void EditorState::setSelectedRegionID(std::optional<QUuid> id) {
  m_selectedRegionID = id;
  Q_EMIT selectedRegionIDChanged();
}

void EditorState::setCanvasOffset(QPointF offset) {
  m_canvasOffset = offset;
  Q_EMIT canvasOffsetChanged();
}

void EditorState::setCanvasZoom(double zoom) {
  m_canvasZoom = zoom;
  Q_EMIT canvasZoomChanged();
}

void EditorState::setIsEdgeCreationMode(bool on) {
  m_isEdgeCreationMode = on;
  Q_EMIT isEdgeCreationModeChanged();
}

void EditorState::setEdgeCreationSourceID(std::optional<QUuid> id) {
  m_edgeCreationSourceID = id;
  Q_EMIT edgeCreationSourceIDChanged();
}

void EditorState::setCollapsedNodeIDs(IdSet ids) {
  const IdSet before = std::exchange(m_collapsedNodeIDs, std::move(ids));
  if (!m_hidden.isStale()) m_hidden.noteCollapsed(treeInfo(), before, m_collapsedNodeIDs);
  Q_EMIT collapsedNodeIDsChanged();
}

void EditorState::setIsEditingInline(bool editing) {
  m_isEditingInline = editing;
  Q_EMIT isEditingInlineChanged();
}

void EditorState::setQuickLookNodeID(std::optional<QUuid> id) {
  m_quickLookNodeID = id;
  Q_EMIT quickLookNodeIDChanged();
}

void EditorState::setShowSmartPaste(bool shows) {
  m_showSmartPaste = shows;
  Q_EMIT showSmartPasteChanged();
}

void EditorState::setSmartPasteText(const QString& text) {
  m_smartPasteText = text;
  Q_EMIT smartPasteTextChanged();
}

void EditorState::setActiveLens(FocusLens lens) {
  m_activeLens = lens;
  Q_EMIT activeLensChanged();
}

void EditorState::setIsPresentationMode(bool on) {
  m_isPresentationMode = on;
  Q_EMIT isPresentationModeChanged();
}

void EditorState::setPresentationNodeIndex(int index) {
  m_presentationNodeIndex = index;
  Q_EMIT presentationNodeIndexChanged();
}

void EditorState::setIsSearching(bool searching) {
  m_isSearching = searching;
  Q_EMIT isSearchingChanged();
}

void EditorState::setSearchQuery(const QString& query) {
  m_searchQuery = query;
  Q_EMIT searchQueryChanged();
}

void EditorState::setSearchResultIDs(std::vector<QUuid> ids) {
  m_searchResultIDs = std::move(ids);
  Q_EMIT searchResultIDsChanged();
}

void EditorState::setSearchResultIndex(int index) {
  m_searchResultIndex = index;
  Q_EMIT searchResultIndexChanged();
}

void EditorState::setLastKnownCanvasSize(std::optional<QSizeF> size) {
  m_lastKnownCanvasSize = size;
  Q_EMIT lastKnownCanvasSizeChanged();
}

void EditorState::setIsDirty(bool dirty) {
  m_isDirty = dirty;
  Q_EMIT isDirtyChanged();
}

QString rawValue(EditorState::FocusLens lens) {
  switch (lens) {
    case EditorState::FocusLens::none:
      return QStringLiteral("None");
    case EditorState::FocusLens::priority:
      return QStringLiteral("Priority");
    case EditorState::FocusLens::progress:
      return QStringLiteral("Progress");
    case EditorState::FocusLens::depth:
      return QStringLiteral("Depth");
  }
  Q_UNREACHABLE();
}

}  // namespace quilmora
