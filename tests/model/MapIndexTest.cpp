#include <random>

#include <gtest/gtest.h>

#include "model/MapIndex.h"
#include "support/SmallMap.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

// The difference, by ids, between an index and one built from scratch. Empty if they agree.
std::string differenceToFresh(const MapIndex& index, const SharedArray<Node>& nodes, const SharedArray<Edge>& edges) {
  if (index.positions().size() != nodes.size() || index.numberOfNode().size() != nodes.size()) return "size of nodes";
  if (index.edgeFrom().size() != edges.size() || index.edgeTo().size() != edges.size()) return "size of edges";
  const MapIndex fresh(nodes, edges);
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const QUuid id = nodes[i].id;
    if ((*index.ids())[index.numberOfNode()[i]] != id) return "id of a topic";
    if (index.positions()[i] != nodes[i].position) return "position of a topic";
    if (index.find(id) != fresh.find(id)) return "place of an id";
    if (index.nodeOfNumber()[index.numberOfNode()[i]] != index.find(id)) return "place of a number";
  }
  for (std::size_t i = 0; i < edges.size(); ++i) {
    if ((*index.ids())[index.edgeFrom()[i]] != edges[i].from) return "source of a connector";
    if ((*index.ids())[index.edgeTo()[i]] != edges[i].to) return "target of a connector";
    if (index.find(edges[i].to) != fresh.find(edges[i].to)) return "place of a target";
  }
  return {};
}

}  // namespace

TEST(MapIndex, NumbersTopicsAndTheEndsOfConnectors) {
  const MapIndex index(topics({5, 7}), edgesOf({{5, 7}, {7, 9}}));
  EXPECT_EQ(index.numberCount(), 3U);
  EXPECT_EQ(index.find(topicId(5)), 0U);
  EXPECT_EQ(index.find(topicId(7)), 1U);
  EXPECT_EQ(index.edgeFrom()[1], index.numberOfNode()[1]);
  // Named only by a connector.
  EXPECT_EQ(index.find(topicId(9)), MapIndex::npos);
  EXPECT_EQ((*index.ids())[index.edgeTo()[1]], topicId(9));
  EXPECT_EQ(index.nodeOfNumber()[index.edgeTo()[1]], MapIndex::npos);
  EXPECT_EQ(index.find(topicId(1)), MapIndex::npos);
}

TEST(MapIndex, FindsTheLastOfTopicsWithOneId) {
  const MapIndex index(topics({1, 2, 1}), {});
  EXPECT_EQ(index.find(topicId(1)), 2U);
  EXPECT_EQ(index.numberOfNode()[0], index.numberOfNode()[2]);
  EXPECT_EQ(index.numberCount(), 2U);
}

TEST(MapIndex, TellsWhetherStructureOrPositionsChanged) {
  SharedArray<Node> nodes = topics({1, 2});
  SharedArray<Edge> edges = edgesOf({{1, 2}});
  MapIndex index(nodes, edges);
  const auto update = [&] {
    const MapIndex::Change change = index.update(nodes, edges);
    return std::pair(change.structure, change.positions);
  };
  EXPECT_EQ(update(), std::pair(false, false));
  nodes.update(0, [](Node& node) { node.title = QStringLiteral("Other"); });
  edges.update(0, [](Edge& edge) { edge.style.dashed = true; });
  EXPECT_EQ(update(), std::pair(false, false));
  nodes.update(1, [](Node& node) { node.position = QPointF(3, 4); });
  EXPECT_EQ(update(), std::pair(false, true));
  EXPECT_EQ(index.positions()[1], QPointF(3, 4));
  edges.update(0, [](Edge& edge) { std::swap(edge.from, edge.to); });
  EXPECT_EQ(update(), std::pair(true, false));
  nodes.append(topic(3));
  EXPECT_TRUE(index.update(nodes, edges).structure);
}

TEST(MapIndex, ACopyStaysAsItWasWhateverBecomesOfTheOther) {
  SharedArray<Node> nodes = topics({1, 2});
  SharedArray<Edge> edges = edgesOf({{1, 2}});
  MapIndex index(nodes, edges);
  const MapIndex copy = index;
  EXPECT_TRUE(copy.sharesStorageWith(index));
  const SharedArray<Node> nodesBefore = nodes;
  const SharedArray<Edge> edgesBefore = edges;
  nodes.append(topic(3, 7, 7));
  nodes.update(0, [](Node& node) { node.position = QPointF(1, 1); });
  edges.append(edgeBetween(5, 3, 4));
  index.update(nodes, edges);
  EXPECT_FALSE(copy.sharesStorageWith(index));
  EXPECT_EQ(differenceToFresh(index, nodes, edges), "");
  EXPECT_EQ(differenceToFresh(copy, nodesBefore, edgesBefore), "");
  EXPECT_EQ(copy.numberCount(), 2U);
  // The ids are shared and have grown.
  EXPECT_EQ(copy.find(topicId(3)), MapIndex::npos);
  EXPECT_EQ(copy.find(topicId(4)), MapIndex::npos);
}

TEST(MapIndex, StartsAfreshWhenIdsThatLeftOutweighTheOthers) {
  SharedArray<Node> nodes;
  for (int i = 0; i < 3000; ++i) nodes.append(topic(i));
  MapIndex index(nodes, {});
  const MapIndex copy = index;
  nodes = topics({4000});
  EXPECT_TRUE(index.update(nodes, {}).structure);
  EXPECT_EQ(index.numberCount(), 1U);
  EXPECT_EQ(index.find(topicId(4000)), 0U);
  EXPECT_EQ(index.find(topicId(7)), MapIndex::npos);
  EXPECT_EQ(copy.find(topicId(7)), 7U);
}

TEST(MapIndex, FollowsAnyRowOfChanges) {
  std::mt19937 random(11);
  const auto below = [&](std::size_t bound) { return random() % bound; };
  for (int round = 0; round < 20; ++round) {
    SharedArray<Node> nodes = topics({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    SharedArray<Edge> edges = edgesOf({{0, 1}, {0, 2}, {2, 3}, {2, 40}});
    MapIndex index(nodes, edges);
    for (int step = 0; step < 60; ++step) {
      switch (below(7)) {
        case 0:
          nodes.append(topic(static_cast<int>(below(200)), step, round));
          break;
        case 1: {
          const QUuid gone = topicId(static_cast<int>(below(200)));
          nodes.eraseIf([&](const Node& node) { return node.id == gone; });
          break;
        }
        case 2:
          if (!nodes.empty()) nodes.update(below(nodes.size()), [&](Node& node) { node.position += QPointF(1, step); });
          break;
        case 3:
          if (!nodes.empty()) nodes.update(below(nodes.size()), [&](Node& node) { node.id = topicId(below(200)); });
          break;
        case 4:
          edges.append(edgeBetween(step, static_cast<int>(below(200)), static_cast<int>(below(200))));
          break;
        case 5: {
          const QUuid gone = topicId(static_cast<int>(below(200)));
          edges.eraseIf([&](const Edge& edge) { return edge.to == gone; });
          break;
        }
        default:
          if (!edges.empty()) edges.update(below(edges.size()), [&](Edge& edge) { std::swap(edge.from, edge.to); });
      }
      if (below(3) == 0) continue;
      index.update(nodes, edges);
      ASSERT_EQ(differenceToFresh(index, nodes, edges), "") << "round " << round << ", step " << step;
    }
  }
}
