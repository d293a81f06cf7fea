#include "editor/edits/Clipping.h"

#include "model/NewId.h"

namespace quilmora::edits {

namespace {

constexpr QPointF pasteOffset(40.0, 40.0);

}  // namespace

Clipping copied(const MindMap& map, const IdSet& ids) {
  Clipping clipping;
  for (const Node& node : map.nodes)
    if (ids.contains(node.id)) clipping.nodes.push_back(node);
  for (const Edge& edge : map.edges)
    if (ids.contains(edge.from) && ids.contains(edge.to)) clipping.edges.push_back(edge);
  return clipping;
}

IdSet paste(MindMap& map, const Clipping& clipping) {
  IdTable originals;
  std::vector<QUuid> fresh;
  IdSet pasted;
  for (const Node& copy : clipping.nodes) {
    const std::uint32_t number = originals.insert(copy.id);
    if (number == fresh.size()) fresh.push_back(newId());
    pasted.insert(fresh[number]);
    Node node;
    node.id = fresh[number];
    node.title = copy.title;
    node.notes = copy.notes;
    node.style = copy.style;
    node.icon = copy.icon;
    node.position = copy.position + pasteOffset;
    map.nodes.append(std::move(node));
  }
  for (const Edge& copy : clipping.edges) {
    const std::uint32_t from = originals.find(copy.from);
    const std::uint32_t to = originals.find(copy.to);
    if (from == IdTable::npos || to == IdTable::npos) continue;
    map.edges.append(Edge{newId(), fresh[from], fresh[to], copy.label, copy.style, copy.controlPointOffset});
  }
  return pasted;
}

}  // namespace quilmora::edits
