#include "editor/MindMapViewModel.h"

namespace quilmora {

namespace {

constexpr QPointF pasteOffset(40.0, 40.0);

}  // namespace

void MindMapViewModel::copySelection() {
  std::vector<Node> nodes;
  for (const Node& node : m_mindMap.nodes)
    if (m_selectedNodeIDs.contains(node.id)) nodes.push_back(node);
  if (nodes.empty()) return;
  m_copiedNodes = std::move(nodes);
  m_copiedEdges.clear();
  for (const Edge& edge : m_mindMap.edges)
    if (m_selectedNodeIDs.contains(edge.from) && m_selectedNodeIDs.contains(edge.to)) m_copiedEdges.push_back(edge);
}

void MindMapViewModel::pasteClipboard() {
  if (m_copiedNodes.empty()) return;
  captureSnapshot(false);
  IdTable originals;
  std::vector<QUuid> fresh;
  IdSet pasted;
  for (const Node& node : m_copiedNodes) {
    const std::uint32_t number = originals.insert(node.id);
    if (number == fresh.size()) fresh.push_back(QUuid::createUuid());
    pasted.insert(fresh[number]);
  }
  edit([&](MindMap& map) {
    for (const Node& copy : m_copiedNodes) {
      // Badge, AI mark, emoji, link and picture are left behind on purpose.
      Node node;
      node.id = fresh[originals.find(copy.id)];
      node.title = copy.title;
      node.notes = copy.notes;
      node.style = copy.style;
      node.icon = copy.icon;
      node.position = copy.position + pasteOffset;
      map.nodes.append(std::move(node));
    }
    for (const Edge& copy : m_copiedEdges) {
      const std::uint32_t from = originals.find(copy.from);
      const std::uint32_t to = originals.find(copy.to);
      if (from == IdTable::npos || to == IdTable::npos) continue;
      map.edges.append(
          Edge{QUuid::createUuid(), fresh[from], fresh[to], copy.label, copy.style, copy.controlPointOffset});
    }
    map.updatedAt = m_services.clock.now();
  });
  setSelectedNodeIDs(std::move(pasted));
  setSelectedEdgeIDs({});
}

void MindMapViewModel::duplicateSelection() {
  copySelection();
  pasteClipboard();
}

}  // namespace quilmora
