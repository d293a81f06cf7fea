#pragma once

#include "model/MindMap.h"

namespace quilmora {

// What all imports share: the map that they begin with, their topics and edges, and where the topics stand.

// A map of this title without topics, made now, with the default configurations and manual layout.
MindMap importedMap(const QString& title, const Clock& clock);

// A topic with a new id and the default style, at (0, 0).
Node importedNode(QString title, QString notes);
// An edge with a new id and the default style, which owes nothing to the theme in force.
Edge importedEdge(const QUuid& from, const QUuid& to);

// Place every topic that a root reaches: at depth d, as number s of its level from 0, it stands at
// (d × 200 + 100, s × 100 + 100). Neither recurses, and a topic that is reached twice is placed once.

// Levels are filled depth first from each root, children in the order of the edges.
void placeDepthFirst(MindMap& map);
// Depths are found depth first from each root; then levels are filled in the order of the map's topics.
void placeByDepthTable(MindMap& map);

}  // namespace quilmora
