#pragma once

#include "support/SmallMap.h"

// Maps so large or damaged that a careless walk would not survive. The first topic is 0.
namespace quilmora::test {

inline void addTopics(MindMap& map, int count) {
  for (int i = 0; i < count; ++i) map.nodes.append(topic(i, 200.0 * (i % 300), 200.0 * (i / 300)));
}

inline MindMap chainMap(int count) {
  MindMap map = mapOf({});
  addTopics(map, count);
  for (int i = 1; i < count; ++i) map.edges.append(edgeBetween(i - 1, i - 1, i));
  return map;
}

inline MindMap starMap(int count) {
  MindMap map = mapOf({});
  addTopics(map, count);
  for (int i = 1; i < count; ++i) map.edges.append(edgeBetween(i - 1, 0, i));
  return map;
}

// All at the point (5, 5), without edges.
inline MindMap pileMap(int count) {
  MindMap map = mapOf({});
  for (int i = 0; i < count; ++i) map.nodes.append(topic(i, 5.0, 5.0));
  return map;
}

// Diamonds stacked on each other: each doubles the number of paths from the root 0 to the last topic.
inline MindMap ladderMap(int diamonds) {
  MindMap map = mapOf({});
  addTopics(map, 3 * diamonds + 1);
  int number = 0;
  for (int top = 0; top < 3 * diamonds; top += 3)
    for (const auto& [from, to] : {Ends{top, top + 1}, {top, top + 2}, {top + 1, top + 3}, {top + 2, top + 3}})
      map.edges.append(edgeBetween(number++, from, to));
  return map;
}

// 0 → 1 → 2 → 3 → 1, and separately 4 → 5 → 4.
inline MindMap cycleMap() {
  MindMap map = mapOf({}, {{0, 1}, {1, 2}, {2, 3}, {3, 1}, {4, 5}, {5, 4}});
  addTopics(map, 6);
  return map;
}

// Four topics at the ends of the canvas.
inline MindMap farMap() {
  MindMap map = mapOf({}, {{0, 1}, {0, 2}});
  map.nodes = {topic(0, -1e9, -1e9), topic(1, 1e9, -1e9), topic(2, 1e9, 1e9), topic(3, -1e9, 1e9)};
  return map;
}

// Repeated topics and edges, self-loops, and edges that name nothing.
inline MindMap brokenMap() {
  MindMap map = mapOf({0, 1, 1, 2, 0, 3}, {{0, 1}, {0, 1}, {80, 2}, {2, 81}, {82, 83}, {3, 3}});
  map.edges.append(edgeBetween(0, 2, 1));
  map.relationships.append({edgeId(900), topicId(0), topicId(84), {}, QStringLiteral("#888888"), {}});
  map.relationships.append({edgeId(900), topicId(85), topicId(86), {}, QStringLiteral("#888888"), {}});
  return map;
}

}  // namespace quilmora::test
