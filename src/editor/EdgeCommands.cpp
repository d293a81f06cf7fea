#include "editor/MindMapViewModel.h"
#include "editor/edits/ConnectionEdits.h"
#include "editor/edits/Hierarchy.h"
#include "model/FindById.h"

namespace quilmora {

void MindMapViewModel::createEdge(const QUuid& fromID, const QUuid& toID) {
  switch (edits::connectionBetween(treeInfo(), fromID, toID)) {
    case edits::Connection::none:
      return;
    case edits::Connection::relationship:
      addRelationship(fromID, toID);
      return;
    case edits::Connection::edge:
      break;
  }
  captureSnapshot(false);
  stampedEdit([&](MindMap& map) { map.edges.append(edits::newEdge(fromID, toID, newEdgeStyle())); });
  setIsEdgeCreationMode(false);
  setEdgeCreationSourceID(std::nullopt);
}

void MindMapViewModel::addRelationship(const QUuid& fromID, const QUuid& toID) {
  if (fromID == toID || edits::areRelated(mindMap(), fromID, toID)) return;
  captureSnapshot(false);
  stampedEdit([&](MindMap& map) { map.relationships.append(edits::newRelationship(fromID, toID)); });
}

void MindMapViewModel::deleteRelationship(const QUuid& id) {
  captureSnapshot(false);
  stampedEdit([&](MindMap& map) { eraseByID(map.relationships, id); });
}

void MindMapViewModel::reconnectEdgeSource(const QUuid& edgeID, const QUuid& newFromID) {
  const std::vector<std::size_t> found = mapIndex().edgesWithId(edgeID);
  if (found.empty() || edits::isChild(treeInfo(), mindMap().edges[found.front()].to, newFromID)) return;
  reconnectEdge(edgeID, &Edge::from, newFromID);
}

void MindMapViewModel::reconnectEdgeTarget(const QUuid& edgeID, const QUuid& newToID) {
  // A topic that any edge leads to has a parent already; this includes edges from this edge's own source.
  if (mapIndex().edgesWithId(edgeID).empty() || treeInfo().parent(newToID)) return;
  reconnectEdge(edgeID, &Edge::to, newToID);
}

void MindMapViewModel::reconnectEdge(const QUuid& edgeID, QUuid Edge::*end, const QUuid& newID) {
  captureSnapshot(false);
  editEdge(edgeID, [&](Edge& edge) { edge.*end = newID; });
}

void MindMapViewModel::editEdge(const QUuid& id, const std::function<void(Edge&)>& change) {
  const std::vector<std::size_t> found = mapIndex().edgesWithId(id);
  edit([&](MindMap& map) {
    if (found.empty()) return;
    map.edges.update(found.front(), change);
    stamp(map);
  });
}

void MindMapViewModel::setEdgeBend(const QUuid& edgeID, std::optional<QPointF> offset) {
  captureSnapshot(true);
  editEdge(edgeID, [&](Edge& edge) { edge.controlPointOffset = offset; });
}

void MindMapViewModel::setRelationshipBend(const QUuid& id, std::optional<QPointF> offset) {
  captureSnapshot(true);
  edit([&](MindMap& map) {
    const std::optional<std::size_t> ordinal = ordinalOf(map.relationships, id);
    if (!ordinal) return;
    map.relationships.update(*ordinal, [&](Relationship& link) { link.controlPointOffset = offset; });
    stamp(map);
  });
}

void MindMapViewModel::setEdgeStyle(const QUuid& edgeID, const EdgeStyle& style) {
  captureSnapshot(false);
  editEdge(edgeID, [&](Edge& edge) { edge.style = style; });
}

void MindMapViewModel::deleteEdge(const QUuid& edgeID) {
  captureSnapshot(false);
  const std::vector<std::size_t> found = mapIndex().edgesWithId(edgeID);
  stampedEdit([&](MindMap& map) { map.edges.eraseAt(found); });
  IdSet selected = selectedEdgeIDs();
  selected.remove(edgeID);
  setSelectedEdgeIDs(std::move(selected));
}

}  // namespace quilmora
