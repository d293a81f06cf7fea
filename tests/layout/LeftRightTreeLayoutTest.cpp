#include <map>
#include <set>

#include <rapidcheck.h>

#include "layout/LayoutMaps.h"
#include "layout/LeftRightTreeLayout.h"
#include "support/MapGenerators.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

PositionTable place(int count, const std::vector<Ends>& ends) {
  return SmallMap(count, ends).place(LeftRightTreeLayout());
}

// The rules again, recursive and with dictionaries.
class Reference {
 public:
  Reference(const LeftRightTreeLayout& layout, const SmallMap& map) : m_layout(layout) {
    std::set<QUuid> targets;
    for (const Edge& edge : map.edges) {
      targets.insert(edge.to);
      m_children[edge.from].push_back(edge.to);
    }
    for (const Node& node : map.nodes) {
      if (targets.count(node.id)) continue;
      points[node.id] = QPointF(500.0, 300.0);
      double right = 0.0, left = 0.0;
      const std::vector<QUuid> children = m_children[node.id];
      for (std::size_t i = 0; i < children.size(); ++i) {
        double& offset = i % 2 == 0 ? right : left;
        placeNode(children[i], 1, offset, i % 2 == 0 ? 1.0 : -1.0);
        offset += i % 2 == 0 ? layout.siblingSpacing : -layout.siblingSpacing;
      }
    }
    int k = 0;
    for (const Node& node : map.nodes)
      if (!points.count(node.id)) points[node.id] = QPointF(50.0 + 80.0 * k++, 550.0);
  }

  std::map<QUuid, QPointF> points;

 private:
  void placeNode(const QUuid& id, int depth, double offset, double direction) {
    if (points.count(id)) return;
    points[id] = QPointF(500.0 + depth * direction * m_layout.levelSpacing, 300.0 + offset);
    const std::vector<QUuid> children = m_children[id];
    double childOffset = offset - (static_cast<double>(children.size()) - 1.0) * m_layout.siblingSpacing * 0.5;
    for (const QUuid& child : children) {
      placeNode(child, depth + 1, childOffset, direction);
      childOffset += m_layout.siblingSpacing;
    }
  }

  const LeftRightTreeLayout& m_layout;
  std::map<QUuid, std::vector<QUuid>> m_children;
};

}  // namespace

TEST(LeftRightTreeLayout, SendsChildrenRightAndLeftInTurn) {
  const PositionTable placed = place(6, {{0, 1}, {0, 2}, {0, 3}, {0, 4}, {0, 5}});
  expectAt(placed, 0, 500.0, 300.0);
  expectAt(placed, 1, 750.0, 300.0);
  expectAt(placed, 2, 250.0, 300.0);
  expectAt(placed, 3, 750.0, 380.0);
  expectAt(placed, 4, 250.0, 220.0);
  expectAt(placed, 5, 750.0, 460.0);
}

TEST(LeftRightTreeLayout, CentresDeeperChildrenOnTheirParent) {
  const PositionTable placed = place(7, {{0, 1}, {1, 2}, {1, 3}, {0, 4}, {4, 5}, {5, 6}});
  expectAt(placed, 2, 1000.0, 260.0);
  expectAt(placed, 3, 1000.0, 340.0);
  expectAt(placed, 5, 0.0, 300.0);
  expectAt(placed, 6, -250.0, 300.0);
}

TEST(LeftRightTreeLayout, PutsASingleTopicOnTheCanvasCentre) {
  expectAt(place(1, {}), 0, 500.0, 300.0);
}

TEST(LeftRightTreeLayout, KeepsTheFirstVisitOfATopicWithTwoParents) {
  expectAt(place(4, {{0, 1}, {0, 2}, {1, 3}, {2, 3}}), 3, 1000.0, 300.0);
}

TEST(LeftRightTreeLayout, AChildPlacedBeforeStillTakesItsTurnAndItsStep) {
  // The second edge to 1 takes the left side's first turn, and 2 is the right side's second.
  const PositionTable placed = place(3, {{0, 1}, {0, 1}, {0, 2}});
  expectAt(placed, 1, 750.0, 300.0);
  expectAt(placed, 2, 750.0, 380.0);
}

TEST(LeftRightTreeLayout, PutsAPureCycleInTheBottomRow) {
  const PositionTable placed = place(3, {{0, 1}, {1, 2}, {2, 0}});
  expectAt(placed, 0, 50.0, 550.0);
  expectAt(placed, 1, 130.0, 550.0);
  expectAt(placed, 2, 210.0, 550.0);
}

TEST(LeftRightTreeLayout, StacksSeveralRootsOnOnePoint) {
  const PositionTable placed = place(4, {{0, 2}, {1, 3}});
  expectAt(placed, 0, 500.0, 300.0);
  expectAt(placed, 1, 500.0, 300.0);
  expectAt(placed, 2, 750.0, 300.0);
  expectAt(placed, 3, 750.0, 300.0);
}

TEST(LeftRightTreeLayout, OfNoTopicsIsEmptyWhateverTheEdges) {
  EXPECT_TRUE(place(0, {{0, 1}}).empty());
}

TEST(LeftRightTreeLayout, EndsOnACycleThatARootReaches) {
  const PositionTable placed = place(3, {{0, 1}, {1, 2}, {2, 1}});
  expectAt(placed, 1, 750.0, 300.0);
  expectAt(placed, 2, 1000.0, 300.0);
}

TEST(LeftRightTreeLayout, PlacesChainsStarsAndLaddersOfAnyLength) {
  expectAt(chainOf(100'000).place(LeftRightTreeLayout()), 99'999, 500.0 + 250.0 * 99'999, 300.0);
  const PositionTable star = starOf(100'001).place(LeftRightTreeLayout());
  expectAt(star, 99'999, 750.0, 300.0 + 80.0 * 49'999);
  expectAt(star, 100'000, 250.0, 300.0 - 80.0 * 49'999);
  const PositionTable ladder = ladderOf(60).place(LeftRightTreeLayout());
  ASSERT_EQ(ladder.size(), 181u);
  // The first path decides: the upper topic of every diamond but the first, 40 higher each time.
  expectAt(ladder, 180, 500.0 + 250.0 * 120, 300.0 - 40.0 * 59);
}

TEST(LeftRightTreeLayout, AgreesWithTheRecursiveReferenceOnEveryMap) {
  EXPECT_TRUE(rc::check("agrees with the reference", [](const Drawing& drawing) {
    const SmallMap map(drawing.numbers, drawing.ends);
    const LeftRightTreeLayout layout;
    const PositionTable placed = map.place(layout);
    const Reference reference(layout, map);
    if (map.nodes.empty()) {
      RC_ASSERT(placed.empty());
      return;
    }
    RC_ASSERT(placed.size() == reference.points.size());
    for (const auto& [id, point] : reference.points) RC_ASSERT(placed.find(id) == point);
  }));
}
