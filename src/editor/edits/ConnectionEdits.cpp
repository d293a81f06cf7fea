#include "editor/edits/ConnectionEdits.h"

#include <algorithm>

#include "model/NewId.h"

namespace quilmora::edits {

Edge newEdge(const QUuid& fromID, const QUuid& toID, const EdgeStyle& style) {
  return Edge{newId(), fromID, toID, QString(), style, std::nullopt};
}

Relationship newRelationship(const QUuid& fromID, const QUuid& toID) {
  return Relationship{newId(), fromID, toID, QString(), QStringLiteral("#888888"), std::nullopt};
}

bool areRelated(const MindMap& map, const QUuid& fromID, const QUuid& toID) {
  return std::any_of(map.relationships.begin(), map.relationships.end(),
                     [&](const Relationship& link) { return link.from == fromID && link.to == toID; });
}

}  // namespace quilmora::edits
