#include <algorithm>
#include <cmath>

#include "editor/MindMapViewModel.h"

namespace quilmora {

namespace {

constexpr double minZoom = 0.1;
constexpr double maxZoom = 5.0;
constexpr double arrowMinDistance = 10.0;

}  // namespace

void MindMapViewModel::selectNode(const QUuid& id, bool extend) {
  IdSet selected = extend ? m_selectedNodeIDs : IdSet();
  selected.insert(id);
  setSelectedNodeIDs(std::move(selected));
  if (!extend) setSelectedEdgeIDs({});
  setSelectedRegionID(std::nullopt);
}

void MindMapViewModel::selectEdge(const QUuid& id, bool extend) {
  IdSet selected = extend ? m_selectedEdgeIDs : IdSet();
  selected.insert(id);
  setSelectedEdgeIDs(std::move(selected));
  if (!extend) setSelectedNodeIDs({});
  setSelectedRegionID(std::nullopt);
}

void MindMapViewModel::clearSelection() {
  setSelectedNodeIDs({});
  setSelectedEdgeIDs({});
  setSelectedRegionID(std::nullopt);
}

void MindMapViewModel::selectAll() {
  IdSet all;
  all.reserve(m_mindMap.nodes.size());
  for (const Node& node : m_mindMap.nodes) all.insert(node.id);
  setSelectedNodeIDs(std::move(all));
}

std::optional<QUuid> MindMapViewModel::firstSelectedNode() const {
  if (m_selectedNodeIDs.empty()) return std::nullopt;
  return *m_selectedNodeIDs.begin();
}

double MindMapViewModel::nodeOpacity(const Node& node) {
  switch (m_activeLens) {
    case FocusLens::none:
      return 1.0;
    case FocusLens::priority:
      return node.badge ? 1.0 : 0.2;
    case FocusLens::progress:
      return node.badge == Badge::done || node.badge == Badge::inProgress || node.badge == Badge::blocked ? 1.0 : 0.25;
    case FocusLens::depth:
      return std::max(1.0 - treeInfo().depth(node.id).value_or(0) * 0.2, 0.2);
  }
  Q_UNREACHABLE();
}

void MindMapViewModel::zoomAt(double zoom, double anchorX, double anchorY) {
  if (std::isnan(zoom)) return;
  const double clamped = std::clamp(zoom, minZoom, maxZoom);
  const double ratio = clamped / m_canvasZoom;
  const QPointF offset((1.0 - ratio) * anchorX + ratio * m_canvasOffset.x(),
                       (1.0 - ratio) * anchorY + ratio * m_canvasOffset.y());
  setCanvasZoom(clamped);
  setCanvasOffset(offset);
}

void MindMapViewModel::centerOn(const QUuid& id, double width, double height, bool useLastKnownSize) {
  const std::uint32_t position = mapIndex().find(id);
  if (position == MapIndex::npos) return;
  QSizeF size(width, height);
  if (useLastKnownSize) size = m_lastKnownCanvasSize.value_or(assumedCanvasSize);
  const QPointF center = m_index.positions()[position];
  setCanvasOffset(
      QPointF(size.width() * 0.5 - center.x() * m_canvasZoom, size.height() * 0.5 - center.y() * m_canvasZoom));
}

void MindMapViewModel::lookAt(const QUuid& id) {
  setSelectedNodeIDs({id});
  setSelectedEdgeIDs({});
  centerOn(id, 0.0, 0.0, true);
}

void MindMapViewModel::toggleQuickLook(const QUuid& id) {
  setQuickLookNodeID(m_quickLookNodeID == id ? std::nullopt : std::optional(id));
}

bool MindMapViewModel::moveSelection(Direction direction) {
  const auto current = firstSelectedNode();
  if (!current) return false;
  const MapIndex& index = mapIndex();
  const std::uint32_t start = index.find(*current);
  if (start == MapIndex::npos) return false;
  const std::vector<char>& hidden = hiddenNodes();
  const std::vector<QPointF>& positions = index.positions();
  const std::uint32_t number = index.numberOfNode()[start];
  const bool isSideways = direction == Direction::left || direction == Direction::right;
  const double sign = direction == Direction::right || direction == Direction::down ? 1.0 : -1.0;

  std::size_t best = positions.size();
  double bestScore = 0.0;
  for (std::size_t i = 0; i < positions.size(); ++i) {
    const QPointF step = positions[i] - positions[start];
    const double along = sign * (isSideways ? step.x() : step.y());
    if (!(along > arrowMinDistance) || hidden[i] || index.numberOfNode()[i] == number) continue;
    const double sideways = std::abs(isSideways ? step.y() : step.x());
    const double score = std::sqrt(step.x() * step.x() + step.y() * step.y()) + 2.0 * sideways;
    if (best != positions.size() && !(score < bestScore)) continue;
    best = i;
    bestScore = score;
  }
  if (best == positions.size()) return false;
  lookAt((*index.ids())[index.numberOfNode()[best]]);
  return true;
}

bool MindMapViewModel::escape() {
  if (m_isEdgeCreationMode) {
    setIsEdgeCreationMode(false);
    setEdgeCreationSourceID(std::nullopt);
  } else if (m_isPresentationMode) {
    togglePresentation();
  } else if (m_quickLookNodeID) {
    setQuickLookNodeID(std::nullopt);
  } else if (m_isSearching) {
    toggleSearch();
  } else if (m_activeLens != FocusLens::none) {
    setActiveLens(FocusLens::none);
  } else if (!m_selectedNodeIDs.empty() || !m_selectedEdgeIDs.empty()) {
    clearSelection();
  } else {
    return false;
  }
  return true;
}

}  // namespace quilmora
