#pragma once

#include <vector>

#include "model/MindMap.h"

namespace quilmora {

// What all imports share: the empty map they start from, their topics and edges, and where topics are placed.

// A map of more topics takes gigabytes; imports refuse it.
inline constexpr std::size_t maxImportedTopics = 1'000'000;

// A map of this title without topics, made now, with the default configurations and manual layout.
MindMap importedMap(const QString& title, const Clock& clock);

// A topic with a new id and the default style, at (0, 0).
Node importedNode(QString title, QString notes);
// An edge with a new id and the default style, whatever the current theme is.
Edge importedEdge(const QUuid& from, const QUuid& to);

// Gives topics their places: at depth d, as number s of its level from 0, a topic stands at (d × 200 + 100, s × 100 +
// 100). Importers make topics depth first and children in the order of the edges, so each is placed when it is made.
class LevelPlaces {
 public:
  QPointF next(std::size_t depth);

 private:
  std::vector<std::int64_t> m_taken;  // by depth
};

}  // namespace quilmora
