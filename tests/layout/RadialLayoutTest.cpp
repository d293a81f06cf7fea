#include <functional>
#include <numbers>

#include <gtest/gtest.h>

#include "layout/LeftRightTreeLayout.h"
#include "layout/OrgChartLayout.h"
#include "layout/RadialLayout.h"

namespace quilmora {
namespace {

constexpr QSizeF canvas(1000.0, 600.0);
constexpr QPointF center(500.0, 300.0);

// Topics 0 to n - 1 and edges between them by number; a number from n on names no topic.
struct SmallMap {
  SharedArray<Node> nodes;
  SharedArray<Edge> edges;
  std::vector<QUuid> ids;

  SmallMap(int count, std::initializer_list<std::pair<int, int>> links, int extraIds = 0) {
    for (int i = 0; i < count + extraIds; ++i) ids.push_back(QUuid::createUuid());
    for (int i = 0; i < count; ++i) {
      Node node;
      node.id = ids[i];
      nodes.append(node);
    }
    for (const auto& [from, to] : links) {
      Edge edge;
      edge.id = QUuid::createUuid();
      edge.from = ids[from];
      edge.to = ids[to];
      edges.append(edge);
    }
  }

  QPointF at(const LayoutAlgorithm& layout, int number) const {
    return layout.computePositions(nodes, edges, canvas).find(ids[number]).value();
  }
};

void expectPoint(QPointF actual, double x, double y) {
  EXPECT_NEAR(actual.x(), x, 1e-9);
  EXPECT_NEAR(actual.y(), y, 1e-9);
}

TEST(RadialLayout, PutsASingleTopicOnTheCanvasCentre) {
  expectPoint(SmallMap(1, {}).at(RadialLayout(), 0), center.x(), center.y());
}

TEST(RadialLayout, PutsAnOnlyChildToTheLeftOfTheRoot) {
  const SmallMap map(2, {{0, 1}});
  expectPoint(map.at(RadialLayout(), 0), 500.0, 300.0);
  expectPoint(map.at(RadialLayout(), 1), 300.0, 300.0);
}

TEST(RadialLayout, PutsTwoLoneRootsRightAndLeft) {
  const SmallMap map(2, {});
  expectPoint(map.at(RadialLayout(), 0), 700.0, 300.0);
  expectPoint(map.at(RadialLayout(), 1), 300.0, 300.0);
}

TEST(RadialLayout, GivesSectorsByLeaves) {
  // The first branch has three leaves, the second one: slices of 3/4 and 1/4 of the circle.
  const SmallMap map(6, {{0, 1}, {0, 2}, {1, 3}, {1, 4}, {1, 5}});
  const double first = 0.75 * std::numbers::pi;
  const double second = 1.75 * std::numbers::pi;
  expectPoint(map.at(RadialLayout(), 1), 500.0 + 200.0 * std::cos(first), 300.0 + 200.0 * std::sin(first));
  expectPoint(map.at(RadialLayout(), 2), 500.0 + 200.0 * std::cos(second), 300.0 + 200.0 * std::sin(second));
  // The middle leaf of the three stands behind its parent, on the next ring.
  expectPoint(map.at(RadialLayout(), 4), 500.0 + 380.0 * std::cos(first), 300.0 + 380.0 * std::sin(first));
}

TEST(RadialLayout, KeepsTheChildrenOfSeveralRootsOnTheFirstRing) {
  const SmallMap map(3, {{0, 2}});
  expectPoint(map.at(RadialLayout(), 0), 700.0, 300.0);
  expectPoint(map.at(RadialLayout(), 2), 700.0, 300.0);
}

TEST(RadialLayout, LetsTheLastPathDecideForTwoParents) {
  // Topic 3 lies below 1 and below 2: the later path, under 2, stands. Both branches own half of the circle.
  const SmallMap map(4, {{0, 1}, {0, 2}, {1, 3}, {2, 3}});
  const double second = 1.5 * std::numbers::pi;
  expectPoint(map.at(RadialLayout(), 3), 500.0 + 380.0 * std::cos(second), 300.0 + 380.0 * std::sin(second));
}

TEST(RadialLayout, PutsAPureCycleInTheBottomRow) {
  const SmallMap map(3, {{0, 1}, {1, 2}, {2, 0}});
  expectPoint(map.at(RadialLayout(), 0), 50.0, 550.0);
  expectPoint(map.at(RadialLayout(), 1), 130.0, 550.0);
  expectPoint(map.at(RadialLayout(), 2), 210.0, 550.0);
}

TEST(RadialLayout, EndsOnACycleBelowARootAndOnALadderOfDiamonds) {
  const SmallMap cycle(3, {{0, 1}, {1, 2}, {2, 1}});
  EXPECT_EQ(RadialLayout().computePositions(cycle.nodes, cycle.edges, canvas).size(), 3u);

  SmallMap ladder(1 + 3 * 200, {});
  const auto link = [&ladder](int from, int to) {
    Edge edge;
    edge.from = ladder.ids[from];
    edge.to = ladder.ids[to];
    ladder.edges.append(edge);
  };
  for (int step = 0; step < 200; ++step) {
    const int top = 3 * step;
    link(top, top + 1);
    link(top, top + 2);
    link(top + 1, top + 3);
    link(top + 2, top + 3);
  }
  const PositionTable placed = RadialLayout().computePositions(ladder.nodes, ladder.edges, canvas);
  EXPECT_EQ(placed.size(), 601u);
  for (const QPointF& point : placed.points()) EXPECT_TRUE(std::isfinite(point.x()) && std::isfinite(point.y()));
}

// The rule as it reads: every path is walked, and the last write stands.
void placeNaively(int parent, int depth, double start, double end, std::vector<QPointF>& points,
                  const std::function<double(int)>& leaves, const std::vector<std::vector<int>>& children) {
  double total = 0.0;
  for (const int child : children[parent]) total += leaves(child);
  const double radius = (depth - 1) * 180.0 + 200.0;
  double running = start;
  for (const int child : children[parent]) {
    const double slice = (end - start) * (leaves(child) / total);
    points[child] =
        QPointF(500.0 + radius * std::cos(running + slice * 0.5), 300.0 + radius * std::sin(running + slice * 0.5));
    placeNaively(child, depth + 1, running, running + slice, points, leaves, children);
    running += slice;
  }
}

TEST(RadialLayout, AgreesWithTheNaiveWalkWhereTopicsHaveSeveralParents) {
  // Topics link to later ones only, so that the naive walk ends.
  std::uint32_t state = 12345;
  const auto random = [&state](int bound) {
    state = state * 1664525u + 1013904223u;
    return static_cast<int>((state >> 8) % static_cast<unsigned>(bound));
  };
  for (int round = 0; round < 200; ++round) {
    const int count = 2 + random(8);
    SmallMap map(count, {});
    std::vector<std::vector<int>> children(count);
    for (int to = 1; to < count; ++to)
      for (int k = 1 + random(2); k > 0; --k) {
        const int from = random(to);
        Edge edge;
        edge.from = map.ids[from];
        edge.to = map.ids[to];
        map.edges.append(edge);
        children[from].push_back(to);
      }
    const std::function<double(int)> leaves = [&](int number) {
      if (children[number].empty()) return 1.0;
      double sum = 0.0;
      for (const int child : children[number]) sum += leaves(child);
      return sum;
    };
    std::vector<QPointF> expected(count, center);
    placeNaively(0, 1, 0.0, 2.0 * std::numbers::pi, expected, leaves, children);
    for (int number = 0; number < count; ++number)
      expectPoint(map.at(RadialLayout(), number), expected[number].x(), expected[number].y());
  }
}

TEST(LeftRightTreeLayout, SendsChildrenRightAndLeftInTurn) {
  const SmallMap map(4, {{0, 1}, {0, 2}, {0, 3}});
  expectPoint(map.at(LeftRightTreeLayout(), 1), 750.0, 300.0);
  expectPoint(map.at(LeftRightTreeLayout(), 2), 250.0, 300.0);
  expectPoint(map.at(LeftRightTreeLayout(), 3), 750.0, 380.0);
}

TEST(LeftRightTreeLayout, CentresDeeperChildrenOnTheirParent) {
  const SmallMap map(4, {{0, 1}, {1, 2}, {1, 3}});
  expectPoint(map.at(LeftRightTreeLayout(), 2), 1000.0, 260.0);
  expectPoint(map.at(LeftRightTreeLayout(), 3), 1000.0, 340.0);
}

TEST(LeftRightTreeLayout, KeepsTheFirstVisitOfATopicWithTwoParents) {
  const SmallMap map(4, {{0, 1}, {0, 2}, {1, 3}, {2, 3}});
  expectPoint(map.at(LeftRightTreeLayout(), 3), 1000.0, 300.0);
}

TEST(LeftRightTreeLayout, PutsAPureCycleInTheBottomRow) {
  const SmallMap map(2, {{0, 1}, {1, 0}});
  expectPoint(map.at(LeftRightTreeLayout(), 0), 50.0, 550.0);
  expectPoint(map.at(LeftRightTreeLayout(), 1), 130.0, 550.0);
}

TEST(LeftRightTreeLayout, StacksSeveralRootsOnOnePoint) {
  const SmallMap map(4, {{0, 2}, {1, 3}});
  expectPoint(map.at(LeftRightTreeLayout(), 0), 500.0, 300.0);
  expectPoint(map.at(LeftRightTreeLayout(), 1), 500.0, 300.0);
  expectPoint(map.at(LeftRightTreeLayout(), 2), 750.0, 300.0);
  expectPoint(map.at(LeftRightTreeLayout(), 3), 750.0, 300.0);
}

TEST(OrgChartLayout, GrowsDownwardsWithItsOwnConstants) {
  // Two leaves lie 120 + 50 apart, the root above their middle.
  const SmallMap map(3, {{0, 1}, {0, 2}});
  expectPoint(map.at(OrgChartLayout(), 0), 500.0, 225.0);
  expectPoint(map.at(OrgChartLayout(), 1), 415.0, 375.0);
  expectPoint(map.at(OrgChartLayout(), 2), 585.0, 375.0);
}

TEST(OrgChartLayout, PutsUnreachedTopicsIntoTheRootsRank) {
  const SmallMap map(4, {{0, 1}, {2, 3}, {3, 2}});
  EXPECT_DOUBLE_EQ(map.at(OrgChartLayout(), 2).y(), map.at(OrgChartLayout(), 0).y());
  EXPECT_DOUBLE_EQ(map.at(OrgChartLayout(), 3).y(), map.at(OrgChartLayout(), 0).y());
}

}  // namespace
}  // namespace quilmora
