#pragma once

#include "model/MindMap.h"

// Edges and relationships. Nothing here sets updatedAt: the command that edits does.
namespace quilmora::edits {

// An edge without a label or a bend, with an id of its own.
Edge newEdge(const QUuid& fromID, const QUuid& toID, const EdgeStyle& style);

// A relationship in grey without a label or a bend, with an id of its own.
Relationship newRelationship(const QUuid& fromID, const QUuid& toID);

// Whether a relationship leads from the one to the other.
bool areRelated(const MindMap& map, const QUuid& fromID, const QUuid& toID);

}  // namespace quilmora::edits
