#include <algorithm>
#include <cmath>

#include "editor/EditorNavigation.h"
#include "editor/edits/Framing.h"

namespace quilmora {

namespace {

constexpr double minZoom = 0.1;
constexpr double maxZoom = 5.0;

}  // namespace

void EditorNavigation::selectNode(const QUuid& id, bool extend) {
  IdSet selected = extend ? selectedNodeIDs() : IdSet();
  selected.insert(id);
  setSelectedNodeIDs(std::move(selected));
  if (!extend) setSelectedEdgeIDs({});
  setSelectedRegionID(std::nullopt);
}

void EditorNavigation::selectEdge(const QUuid& id, bool extend) {
  IdSet selected = extend ? selectedEdgeIDs() : IdSet();
  selected.insert(id);
  setSelectedEdgeIDs(std::move(selected));
  if (!extend) setSelectedNodeIDs({});
  setSelectedRegionID(std::nullopt);
}

void EditorNavigation::clearSelection() {
  setSelectedNodeIDs({});
  setSelectedEdgeIDs({});
  setSelectedRegionID(std::nullopt);
}

void EditorNavigation::selectAll() {
  IdSet all;
  all.reserve(mindMap().nodes.size());
  for (const Node& node : mindMap().nodes) all.insert(node.id);
  setSelectedNodeIDs(std::move(all));
}

std::optional<QUuid> EditorNavigation::firstSelectedNode() const {
  if (selectedNodeIDs().empty()) return std::nullopt;
  return *selectedNodeIDs().begin();
}

void EditorNavigation::toggleCollapsed(const QUuid& id) {
  IdSet collapsed = collapsedNodeIDs();
  if (!collapsed.remove(id)) collapsed.insert(id);
  setCollapsedNodeIDs(std::move(collapsed));
}

double EditorNavigation::opacityUnder(FocusLens lens, const Node& node, const TreeInfo& tree) {
  switch (lens) {
    case FocusLens::none:
      return 1.0;
    case FocusLens::priority:
      return node.badge ? 1.0 : 0.2;
    case FocusLens::progress:
      return node.badge == Badge::done || node.badge == Badge::inProgress || node.badge == Badge::blocked ? 1.0 : 0.25;
    case FocusLens::depth:
      return std::max(1.0 - tree.depth(node.id).value_or(0) * 0.2, 0.2);
  }
  Q_UNREACHABLE();
}

void EditorNavigation::zoomAt(double zoom, double anchorX, double anchorY) {
  if (std::isnan(zoom)) return;
  const double clamped = std::clamp(zoom, minZoom, maxZoom);
  const double ratio = clamped / canvasZoom();
  const QPointF offset((1.0 - ratio) * anchorX + ratio * canvasOffset().x(),
                       (1.0 - ratio) * anchorY + ratio * canvasOffset().y());
  setCanvasZoom(clamped);
  setCanvasOffset(offset);
}

void EditorNavigation::centerOn(const QUuid& id, double width, double height, bool useLastKnownSize) {
  const std::uint32_t ordinal = mapIndex().find(id);
  if (ordinal == MapIndex::npos) return;
  QSizeF size(width, height);
  if (useLastKnownSize) size = lastKnownCanvasSize().value_or(assumedCanvasSize);
  const QPointF center = mapIndex().positions()[ordinal];
  setCanvasOffset(
      QPointF(size.width() * 0.5 - center.x() * canvasZoom(), size.height() * 0.5 - center.y() * canvasZoom()));
}

void EditorNavigation::fitToContent(double width, double height, double padding) {
  const QSizeF size = width > 0.0 && height > 0.0 ? QSizeF(width, height) : assumedCanvasSize;
  const std::optional<edits::Framing> framing = edits::framingOf(mapIndex().positions(), size, padding);
  if (!framing) return;
  setCanvasZoom(framing->zoom);
  setCanvasOffset(framing->offset);
}

void EditorNavigation::lookAt(const QUuid& id) {
  setSelectedNodeIDs({id});
  setSelectedEdgeIDs({});
  centerOn(id, 0.0, 0.0, true);
}

void EditorNavigation::toggleQuickLook(const QUuid& id) {
  setQuickLookNodeID(quickLookNodeID() == id ? std::nullopt : std::optional(id));
}

bool EditorNavigation::moveSelection(Direction direction) {
  const std::optional<QUuid> current = firstSelectedNode();
  const std::uint32_t from = current ? mapIndex().find(*current) : MapIndex::npos;
  if (from == MapIndex::npos) return false;
  const std::optional<QUuid> next = edits::neighbour(mapIndex(), hiddenNodes(), from, direction);
  if (next) lookAt(*next);
  return next.has_value();
}

void EditorNavigation::startEdgeCreation() {
  setIsEdgeCreationMode(true);
  setEdgeCreationSourceID(firstSelectedNode());
}

bool EditorNavigation::escape() {
  if (isEdgeCreationMode()) {
    setIsEdgeCreationMode(false);
    setEdgeCreationSourceID(std::nullopt);
  } else if (isPresentationMode()) {
    togglePresentation();
  } else if (quickLookNodeID()) {
    setQuickLookNodeID(std::nullopt);
  } else if (isSearching()) {
    toggleSearch();
  } else if (activeLens() != FocusLens::none) {
    setActiveLens(FocusLens::none);
  } else if (!selectedNodeIDs().empty() || !selectedEdgeIDs().empty()) {
    clearSelection();
  } else {
    return false;
  }
  return true;
}

}  // namespace quilmora
