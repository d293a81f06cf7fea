#pragma once

#include "model/MindMap.h"

// Edges and relationships. Nothing here sets updatedAt; the command does.
namespace quilmora::edits {

// An edge with a new id, without a label or a bend.
Edge newEdge(const QUuid& fromID, const QUuid& toID, const EdgeStyle& style);

// A grey relationship with a new id, without a label or a bend.
Relationship newRelationship(const QUuid& fromID, const QUuid& toID);

// Whether a relationship leads from the first to the second.
bool areRelated(const MindMap& map, const QUuid& fromID, const QUuid& toID);

}  // namespace quilmora::edits
