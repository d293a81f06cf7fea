#include <algorithm>

#include "editor/MindMapViewModel.h"

namespace quilmora {

namespace {

// Position of the first record with this id, or the size of the array.
template <class Record>
std::size_t indexOf(const SharedArray<Record>& records, const QUuid& id) {
  std::size_t index = 0;
  for (const Record& record : records) {
    if (record.id == id) break;
    ++index;
  }
  return index;
}

}  // namespace

bool MindMapViewModel::hasEdge(const QUuid& fromID, const QUuid& toID) {
  return std::ranges::any_of(treeInfo().children(fromID), [&](const QUuid& child) { return child == toID; });
}

void MindMapViewModel::startEdgeCreation() {
  setIsEdgeCreationMode(true);
  setEdgeCreationSourceID(firstSelectedNode());
}

void MindMapViewModel::createEdge(const QUuid& fromID, const QUuid& toID) {
  if (fromID == toID) return;
  if (hasEdge(fromID, toID)) return;
  const bool wouldCloseCycle = isDescendant(fromID, toID);
  const bool hasParent = treeInfo().parent(toID).has_value();
  if (wouldCloseCycle || hasParent) {
    addRelationship(fromID, toID);
    return;
  }
  captureSnapshot(false);
  edit([&](MindMap& map) {
    map.edges.append(Edge{QUuid::createUuid(), fromID, toID, QString(), newEdgeStyle(), std::nullopt});
    map.updatedAt = m_services.clock.now();
  });
  setIsEdgeCreationMode(false);
  setEdgeCreationSourceID(std::nullopt);
}

void MindMapViewModel::addRelationship(const QUuid& fromID, const QUuid& toID) {
  if (fromID == toID) return;
  for (const Relationship& link : m_mindMap.relationships)
    if (link.from == fromID && link.to == toID) return;
  captureSnapshot(false);
  edit([&](MindMap& map) {
    map.relationships.append(
        Relationship{QUuid::createUuid(), fromID, toID, QString(), QStringLiteral("#888888"), std::nullopt});
    map.updatedAt = m_services.clock.now();
  });
}

void MindMapViewModel::deleteRelationship(const QUuid& id) {
  captureSnapshot(false);
  edit([&](MindMap& map) {
    map.relationships.eraseIf([&](const Relationship& link) { return link.id == id; });
    map.updatedAt = m_services.clock.now();
  });
}

void MindMapViewModel::reconnectEdgeSource(const QUuid& edgeID, const QUuid& newFromID) {
  const std::size_t index = indexOf(m_mindMap.edges, edgeID);
  if (index == m_mindMap.edges.size()) return;
  if (hasEdge(newFromID, m_mindMap.edges[index].to)) return;
  captureSnapshot(false);
  edit([&](MindMap& map) {
    map.edges.update(index, [&](Edge& edge) { edge.from = newFromID; });
    map.updatedAt = m_services.clock.now();
  });
}

void MindMapViewModel::reconnectEdgeTarget(const QUuid& edgeID, const QUuid& newToID) {
  const std::size_t index = indexOf(m_mindMap.edges, edgeID);
  if (index == m_mindMap.edges.size()) return;
  // A topic that any edge leads to has a parent already, which covers an edge from this edge's own source.
  if (treeInfo().parent(newToID)) return;
  captureSnapshot(false);
  edit([&](MindMap& map) {
    map.edges.update(index, [&](Edge& edge) { edge.to = newToID; });
    map.updatedAt = m_services.clock.now();
  });
}

template <class Record>
void MindMapViewModel::editRecord(SharedArray<Record> MindMap::*records, const QUuid& id,
                                  const std::function<void(Record&)>& change) {
  edit([&](MindMap& map) {
    const std::size_t index = indexOf(map.*records, id);
    if (index == (map.*records).size()) return;
    (map.*records).update(index, change);
    map.updatedAt = m_services.clock.now();
  });
}

void MindMapViewModel::setEdgeBend(const QUuid& edgeID, std::optional<QPointF> offset) {
  captureSnapshot(true);
  editRecord<Edge>(&MindMap::edges, edgeID, [&](Edge& edge) { edge.controlPointOffset = offset; });
}

void MindMapViewModel::setRelationshipBend(const QUuid& id, std::optional<QPointF> offset) {
  captureSnapshot(true);
  editRecord<Relationship>(&MindMap::relationships, id, [&](Relationship& link) { link.controlPointOffset = offset; });
}

void MindMapViewModel::setEdgeStyle(const QUuid& edgeID, const EdgeStyle& style) {
  captureSnapshot(false);
  editRecord<Edge>(&MindMap::edges, edgeID, [&](Edge& edge) { edge.style = style; });
}

void MindMapViewModel::deleteEdge(const QUuid& edgeID) {
  captureSnapshot(false);
  edit([&](MindMap& map) {
    map.edges.eraseIf([&](const Edge& edge) { return edge.id == edgeID; });
    map.updatedAt = m_services.clock.now();
  });
  IdSet selected = m_selectedEdgeIDs;
  selected.remove(edgeID);
  setSelectedEdgeIDs(std::move(selected));
}

}  // namespace quilmora
