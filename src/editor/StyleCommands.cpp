#include "editor/MindMapViewModel.h"
#include "editor/edits/Finding.h"
#include "editor/edits/StyleEdits.h"

namespace quilmora {

void MindMapViewModel::setNodeStyle(const QUuid& id, const NodeStyle& style) {
  if (!hasNode(id)) return;
  captureSnapshot(false);
  editNode(id, [&](Node& node) { node.style = style; });
}

void MindMapViewModel::setNodeEmoji(const QUuid& id, const std::optional<QString>& emoji) {
  if (!hasNode(id)) return;
  captureSnapshot(false);
  editNode(id, [&](Node& node) { node.emoji = emoji; });
}

// Typed text, like a title.
void MindMapViewModel::setNodeUrl(const QUuid& id, const std::optional<QString>& url) {
  if (!hasNode(id)) return;
  captureSnapshot(true);
  editNode(id, [&](Node& node) { node.url = url; });
}

void MindMapViewModel::colorSelectedNodes(const TopicColors& colors) {
  if (edits::ordinalsOf(mapIndex(), selectedNodeIDs()).empty()) return;
  captureSnapshot(false);
  restyle([&](MindMap& map) {
    edits::colorTopics(map, mapIndex(), selectedNodeIDs(), colors);
    stamp(map);
  });
}

void MindMapViewModel::colorSelectedEdges(const QString& color) {
  if (selectedEdgeIDs().empty()) return;
  captureSnapshot(false);
  restyle([&](MindMap& map) {
    edits::colorEdges(map, selectedEdgeIDs(), color);
    stamp(map);
  });
}

void MindMapViewModel::taperSelectedEdges(double startWidth, double endWidth) {
  if (selectedEdgeIDs().empty()) return;
  captureSnapshot(false);
  restyle([&](MindMap& map) {
    edits::taperEdges(map, selectedEdgeIDs(), startWidth, endWidth);
    stamp(map);
  });
}

void MindMapViewModel::arrange(const std::vector<edits::Placement>& placements) {
  if (placements.empty()) return;
  captureSnapshot(false);
  stampedEdit([&](MindMap& map) { edits::place(map, placements); });
}

void MindMapViewModel::alignSelectedNodes(edits::Alignment alignment) {
  arrange(edits::aligned(mapIndex(), selectedNodeIDs(), alignment));
}

void MindMapViewModel::distributeSelectedNodes(edits::Axis axis) {
  arrange(edits::distributed(mapIndex(), selectedNodeIDs(), axis));
}

void MindMapViewModel::setCanvasBackground(const QString& color) {
  captureSnapshot(false);
  restyle([&](MindMap& map) {
    map.canvas.background = color;
    stamp(map);
  });
}

void MindMapViewModel::setHierarchical(const HierarchicalConfig& config, bool isContinuous) {
  captureSnapshot(isContinuous);
  restyle([&](MindMap& map) {
    map.hierarchical = config;
    stamp(map);
  });
}

}  // namespace quilmora
