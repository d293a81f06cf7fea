#pragma once

#include <initializer_list>
#include <utility>
#include <vector>

#include <QUuid>

#include "model/MindMap.h"

// Maps written out in a test: topics and edges are numbers, and a number always gives the same id.
namespace quilmora::test {

using Ends = std::pair<int, int>;

inline QUuid topicId(int number) {
  return QUuid(0x70000000u, 0, 0x4000, 0x80, 0, 0, 0, static_cast<uchar>(number >> 24),
               static_cast<uchar>(number >> 16), static_cast<uchar>(number >> 8), static_cast<uchar>(number));
}

inline QUuid edgeId(int number) {
  return QUuid(0xE0000000u, 0, 0x4000, 0x80, 0, 0, 0, static_cast<uchar>(number >> 24),
               static_cast<uchar>(number >> 16), static_cast<uchar>(number >> 8), static_cast<uchar>(number));
}

inline Node topic(int number, double x = 0.0, double y = 0.0) {
  Node node;
  node.id = topicId(number);
  node.title = QStringLiteral("Topic %1").arg(number);
  node.position = QPointF(x, y);
  node.style = NodeStyle::defaultStyle();
  return node;
}

inline Edge edgeBetween(int number, int from, int to) {
  return Edge{edgeId(number), topicId(from), topicId(to), QString(), EdgeStyle::defaultStyle(), std::nullopt};
}

inline SharedArray<Node> topics(const std::vector<int>& numbers) {
  SharedArray<Node> nodes;
  for (const int number : numbers) nodes.append(topic(number));
  return nodes;
}

inline SharedArray<Edge> edgesOf(const std::vector<Ends>& ends) {
  SharedArray<Edge> edges;
  int number = 0;
  for (const auto& [from, to] : ends) edges.append(edgeBetween(number++, from, to));
  return edges;
}

inline MindMap mapOf(const std::vector<int>& numbers, const std::vector<Ends>& ends = {}) {
  MindMap map;
  map.title = QStringLiteral("Small");
  map.nodes = topics(numbers);
  map.edges = edgesOf(ends);
  map.canvas = CanvasConfig::defaultConfig();
  return map;
}

}  // namespace quilmora::test
