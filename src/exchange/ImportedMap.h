#pragma once

#include <vector>

#include "model/MindMap.h"

namespace quilmora {

// What all imports share: the empty map they start with, their topics and edges, and the placement of topics.

// A map with more topics takes gigabytes; imports refuse it.
inline constexpr std::size_t maxImportedTopics = 1'000'000;

// A map with this title and no topics, created now, with the default configurations and manual layout.
MindMap importedMap(const QString& title, const Clock& clock);

// A topic with a new id and the default style, at (0, 0).
Node importedNode(QString title, QString notes);
// An edge with a new id and the default style, regardless of the current theme.
Edge importedEdge(const QUuid& from, const QUuid& to);

// Places topics: the topic number s (from 0) at depth d is at (d × 200 + 100, s × 100 + 100). Importers create topics
// depth first and children in the order of the edges, so each can be placed when it is created.
class LevelPlaces {
 public:
  QPointF next(std::size_t depth);

 private:
  std::vector<std::int64_t> m_taken;  // by depth
};

}  // namespace quilmora
