#pragma once

#include <optional>

#include "editor/edits/PositionGrid.h"
#include "model/IdSet.h"
#include "model/MindMap.h"
#include "model/TreeInfo.h"

// Creating, moving and removing topics. Nothing here sets updatedAt; the command does.
namespace quilmora::edits {

// A topic called "New Node" with a new id.
Node newTopic(QPointF position, NodeStyle style);

// Appends the topic and, if there is a parent, the edge that leads to it.
void addTopic(MindMap& map, Node node, const std::optional<QUuid>& parentID, const EdgeStyle& edgeStyle);

// A free point at or near the wanted one: no position in `taken` is closer than 90. `direction` is 1 or -1. The wanted
// point itself if none of the places tried is free.
QPointF freeSpot(const PositionGrid& taken, QPointF wanted, double direction, double step);

// Where the next child of a topic goes; the topic is given by its ordinal in the index. `taken` are the index's
// positions.
QPointF childSpot(const MapIndex& index, const TreeInfo& tree, const PositionGrid& taken, std::uint32_t parentOrdinal);

// Moves the topics with these ordinals.
void moveTopics(MindMap& map, const std::vector<std::uint32_t>& ordinals, QPointF translation);

// Moves the topic below another parent, as its last child, with an edge of this style replacing all that led to it.
void reparent(MindMap& map, const MapIndex& index, const QUuid& nodeID, const QUuid& newParentID,
              const EdgeStyle& edgeStyle);

// Removes topics, edges and a region, and the edges and relationships that touch one of the topics.
void removeRecords(MindMap& map, const MapIndex& index, const IdSet& nodes, const IdSet& edges,
                   const std::optional<QUuid>& region);

}  // namespace quilmora::edits
