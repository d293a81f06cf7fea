#include "editor/MindMapViewModel.h"

#include <algorithm>

#include "platform/Bookmarks.h"

namespace quilmora {

MindMapViewModel::MindMapViewModel(MindMap map, EditorServices services)
    : m_services(services), m_mindMap(std::move(map)) {}

MindMapViewModel::~MindMapViewModel() {
  if (m_heldScopedPath) m_services.bookmarks.stopAccess(*m_heldScopedPath);
}

void MindMapViewModel::setMindMap(MindMap map) {
  m_mindMap = std::move(map);
  mapWasReplaced();
}

void MindMapViewModel::mapWasReplaced() {
  m_indexStale = true;
  ++m_treeGeneration;
  Q_EMIT mindMapChanged();
}

const MapIndex& MindMapViewModel::mapIndex() {
  if (m_indexStale) {
    const MapIndex::Change change = m_index.update(m_mindMap.nodes, m_mindMap.edges);
    m_indexStale = false;
    if (change.structure) {
      m_treeInfo.reset();
      m_hiddenStale = true;
    }
  }
  return m_index;
}

const TreeInfo& MindMapViewModel::treeInfo() {
  const MapIndex& index = mapIndex();
  if (!m_treeInfo) m_treeInfo.emplace(index);
  return *m_treeInfo;
}

std::optional<Node> MindMapViewModel::nodeByID(const QUuid& id) {
  const std::uint32_t position = mapIndex().find(id);
  if (position == MapIndex::npos) return std::nullopt;
  return m_mindMap.nodes[position];
}

bool MindMapViewModel::hasNode(const QUuid& id) {
  return mapIndex().find(id) != MapIndex::npos;
}

bool MindMapViewModel::isDescendant(const QUuid& target, const QUuid& root) {
  const TreeInfo& tree = treeInfo();
  const std::uint32_t wanted = tree.number(target);
  if (wanted >= tree.numberCount()) return false;
  std::vector<char> visited(tree.numberCount(), 0);
  std::vector<std::uint32_t> queue;
  const auto pushChildren = [&](std::uint32_t number) {
    for (const std::uint32_t child : tree.childNumbers(number))
      if (!visited[child]) {
        visited[child] = 1;
        queue.push_back(child);
      }
  };
  pushChildren(tree.number(root));
  for (std::size_t head = 0; head < queue.size(); ++head) {
    if (queue[head] == wanted) return true;
    pushChildren(queue[head]);
  }
  return false;
}

const std::vector<char>& MindMapViewModel::hiddenNumbers() {
  const TreeInfo& tree = treeInfo();
  if (!m_hiddenStale) return m_hiddenNumbers;
  enum : char { unknown = 2, onPath = 3 };
  const std::uint32_t count = tree.numberCount();
  std::vector<char> collapsed(count, 0);
  for (const QUuid& id : m_collapsedNodeIDs)
    if (const std::uint32_t number = tree.number(id); number < count) collapsed[number] = 1;
  m_hiddenNumbers.assign(count, unknown);
  std::vector<std::uint32_t> path;
  for (std::uint32_t start = 0; start < count; ++start) {
    // Walk up to the first ancestor that decides, then give the answer to the whole path. A repetition decides too:
    // parent links form a cycle there, and nothing collapsed lies on it.
    path.clear();
    char answer = 0;
    for (std::uint32_t number = start;;) {
      if (m_hiddenNumbers[number] != unknown) {
        answer = m_hiddenNumbers[number] == onPath ? 0 : m_hiddenNumbers[number];
        break;
      }
      m_hiddenNumbers[number] = onPath;
      path.push_back(number);
      const std::uint32_t parent = tree.parentNumber(number);
      if (parent == TreeInfo::npos) break;
      if (collapsed[parent]) {
        answer = 1;
        break;
      }
      number = parent;
    }
    for (const std::uint32_t number : path) m_hiddenNumbers[number] = answer;
  }
  const auto& numberOfNode = m_index.numberOfNode();
  m_hiddenNodes.resize(numberOfNode.size());
  for (std::size_t i = 0; i < numberOfNode.size(); ++i) m_hiddenNodes[i] = m_hiddenNumbers[numberOfNode[i]];
  m_hiddenStale = false;
  return m_hiddenNumbers;
}

bool MindMapViewModel::isHidden(const QUuid& id) {
  const std::vector<char>& hidden = hiddenNumbers();
  const std::uint32_t number = treeInfo().number(id);
  return number < hidden.size() && hidden[number];
}

const std::vector<char>& MindMapViewModel::hiddenNodes() {
  hiddenNumbers();
  return m_hiddenNodes;
}

std::optional<double> MindMapViewModel::depthFraction(const QUuid& id) {
  const TreeInfo& tree = treeInfo();
  if (tree.maxDepth() < 1) return std::nullopt;
  return static_cast<double>(tree.depth(id).value_or(0)) / tree.maxDepth();
}

// --- Observable properties ---

void MindMapViewModel::setSelectedNodeIDs(IdSet ids) {
  m_selectedNodeIDs = std::move(ids);
  Q_EMIT selectedNodeIDsChanged();
}

void MindMapViewModel::setSelectedEdgeIDs(IdSet ids) {
  m_selectedEdgeIDs = std::move(ids);
  Q_EMIT selectedEdgeIDsChanged();
}

void MindMapViewModel::setSelectedRegionID(std::optional<QUuid> id) {
  m_selectedRegionID = id;
  Q_EMIT selectedRegionIDChanged();
}

void MindMapViewModel::setCanvasOffset(QPointF offset) {
  m_canvasOffset = offset;
  Q_EMIT canvasOffsetChanged();
}

void MindMapViewModel::setCanvasZoom(double zoom) {
  m_canvasZoom = zoom;
  Q_EMIT canvasZoomChanged();
}

void MindMapViewModel::setIsEdgeCreationMode(bool on) {
  m_isEdgeCreationMode = on;
  Q_EMIT isEdgeCreationModeChanged();
}

void MindMapViewModel::setEdgeCreationSourceID(std::optional<QUuid> id) {
  m_edgeCreationSourceID = id;
  Q_EMIT edgeCreationSourceIDChanged();
}

void MindMapViewModel::setCollapsedNodeIDs(IdSet ids) {
  m_collapsedNodeIDs = std::move(ids);
  m_hiddenStale = true;
  Q_EMIT collapsedNodeIDsChanged();
}

void MindMapViewModel::setIsEditingInline(bool editing) {
  m_isEditingInline = editing;
  Q_EMIT isEditingInlineChanged();
}

void MindMapViewModel::setQuickLookNodeID(std::optional<QUuid> id) {
  m_quickLookNodeID = id;
  Q_EMIT quickLookNodeIDChanged();
}

void MindMapViewModel::setShowSmartPaste(bool shows) {
  m_showSmartPaste = shows;
  Q_EMIT showSmartPasteChanged();
}

void MindMapViewModel::setSmartPasteText(const QString& text) {
  m_smartPasteText = text;
  Q_EMIT smartPasteTextChanged();
}

void MindMapViewModel::setActiveLens(FocusLens lens) {
  m_activeLens = lens;
  Q_EMIT activeLensChanged();
}

void MindMapViewModel::setIsPresentationMode(bool on) {
  m_isPresentationMode = on;
  Q_EMIT isPresentationModeChanged();
}

void MindMapViewModel::setPresentationNodeIndex(int index) {
  m_presentationNodeIndex = index;
  Q_EMIT presentationNodeIndexChanged();
}

void MindMapViewModel::setIsSearching(bool searching) {
  m_isSearching = searching;
  Q_EMIT isSearchingChanged();
}

void MindMapViewModel::setSearchQuery(const QString& query) {
  m_searchQuery = query;
  Q_EMIT searchQueryChanged();
}

void MindMapViewModel::setSearchResultIDs(std::vector<QUuid> ids) {
  m_searchResultIDs = std::move(ids);
  Q_EMIT searchResultIDsChanged();
}

void MindMapViewModel::setSearchResultIndex(int index) {
  m_searchResultIndex = index;
  Q_EMIT searchResultIndexChanged();
}

void MindMapViewModel::setLastKnownCanvasSize(std::optional<QSizeF> size) {
  m_lastKnownCanvasSize = size;
  Q_EMIT lastKnownCanvasSizeChanged();
}

void MindMapViewModel::setIsDirty(bool dirty) {
  m_isDirty = dirty;
  Q_EMIT isDirtyChanged();
}

QString rawValue(MindMapViewModel::FocusLens lens) {
  switch (lens) {
    case MindMapViewModel::FocusLens::none:
      return QStringLiteral("None");
    case MindMapViewModel::FocusLens::priority:
      return QStringLiteral("Priority");
    case MindMapViewModel::FocusLens::progress:
      return QStringLiteral("Progress");
    case MindMapViewModel::FocusLens::depth:
      return QStringLiteral("Depth");
  }
  Q_UNREACHABLE();
}

}  // namespace quilmora
