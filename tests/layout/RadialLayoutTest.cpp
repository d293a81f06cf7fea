#include <cmath>
#include <map>
#include <numbers>
#include <set>

#include <rapidcheck.h>

#include "layout/LayoutMaps.h"
#include "layout/RadialLayout.h"
#include "support/MapGenerators.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

constexpr double pi = std::numbers::pi;

PositionTable place(int count, const std::vector<Ends>& ends) {
  return SmallMap(count, ends).place(RadialLayout());
}

void expectOnRing(const PositionTable& table, int number, double radius, double angle) {
  expectAt(table, number, 500.0 + radius * std::cos(angle), 300.0 + radius * std::sin(angle));
}

// The rules as stated: every path is walked, and the last write counts. Ends only if no root reaches a cycle.
class Reference {
 public:
  Reference(const RadialLayout& layout, const SmallMap& map) : m_layout(layout) {
    std::set<QUuid> targets;
    for (const Edge& edge : map.edges) {
      targets.insert(edge.to);
      m_children[edge.from].push_back(edge.to);
    }
    std::vector<QUuid> roots;
    for (const Node& node : map.nodes)
      if (!targets.count(node.id)) roots.push_back(node.id);
    for (const QUuid& root : roots) leafCount(root);
    if (roots.size() == 1) {
      points[roots[0]] = QPointF(500.0, 300.0);
      placeChildren(roots[0], 1, 0.0, 2.0 * pi);
    } else {
      const double n = static_cast<double>(roots.size());
      for (std::size_t i = 0; i < roots.size(); ++i) {
        const double angle = static_cast<double>(i) * 2.0 * pi / n;
        points[roots[i]] = onRing(layout.baseRadius, angle);
        placeChildren(roots[i], 1, angle - pi / n, angle + pi / n);
      }
    }
    int k = 0;
    for (const Node& node : map.nodes)
      if (!points.count(node.id)) points[node.id] = QPointF(50.0 + 80.0 * k++, 550.0);
  }

  std::map<QUuid, QPointF> points;

 private:
  static QPointF onRing(double radius, double angle) {
    return {500.0 + radius * std::cos(angle), 300.0 + radius * std::sin(angle)};
  }

  double leafCount(const QUuid& id) {
    if (m_memo.count(id)) return m_memo[id];
    if (!m_inProgress.insert(id).second) return 1.0;
    double sum = 0.0;
    for (const QUuid& child : m_children[id]) sum += leafCount(child);
    m_inProgress.erase(id);
    return m_memo[id] = m_children[id].empty() ? 1.0 : sum;
  }

  double entry(const QUuid& id) { return m_memo.count(id) ? m_memo[id] : 1.0; }

  void placeChildren(const QUuid& parent, int depth, double start, double end) {
    const std::vector<QUuid> children = m_children[parent];
    double total = 0.0;
    for (const QUuid& child : children) total += entry(child);
    double running = start;
    for (const QUuid& child : children) {
      const double slice = (end - start) * (entry(child) / total);
      points[child] = onRing((depth - 1) * m_layout.ringSpacing + m_layout.baseRadius, running + slice * 0.5);
      placeChildren(child, depth + 1, running, running + slice);
      running += slice;
    }
  }

  const RadialLayout& m_layout;
  std::map<QUuid, std::vector<QUuid>> m_children;
  std::map<QUuid, double> m_memo;
  std::set<QUuid> m_inProgress;
};

// Topics in any order, some repeated, some missing, with edges from lower to higher numbers, so that no root reaches a
// cycle; and sometimes a cycle of two that leads into them.
Drawing anyLayeredDrawing() {
  Drawing drawing;
  drawing.numbers = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 9));
  const auto ends =
      *rc::gen::container<std::vector<Ends>>(rc::gen::pair(rc::gen::inRange(0, 10), rc::gen::inRange(0, 10)));
  for (const auto& [a, b] : ends)
    if (a != b) drawing.ends.push_back({std::min(a, b), std::max(a, b)});
  if (drawing.ends.size() > 14) drawing.ends.resize(14);
  if (*rc::gen::arbitrary<bool>()) {
    drawing.numbers.insert(drawing.numbers.end(), {20, 21});
    drawing.ends.insert(drawing.ends.end(), {{20, 21}, {21, *rc::gen::inRange(0, 10)}, {21, 20}});
  }
  return drawing;
}

}  // namespace

TEST(RadialLayout, PutsASingleTopicOnTheCanvasCentre) {
  expectAt(place(1, {}), 0, 500.0, 300.0);
}

TEST(RadialLayout, PutsAnOnlyChildToTheLeftOfTheRoot) {
  const PositionTable placed = place(2, {{0, 1}});
  expectAt(placed, 0, 500.0, 300.0);
  expectAt(placed, 1, 300.0, 300.0);
}

TEST(RadialLayout, PutsTwoLoneRootsRightAndLeft) {
  const PositionTable placed = place(2, {});
  expectAt(placed, 0, 700.0, 300.0);
  expectAt(placed, 1, 300.0, 300.0);
}

TEST(RadialLayout, GoesRoundInEdgeOrderFromThreeOClock) {
  const PositionTable placed = place(5, {{0, 3}, {0, 1}, {0, 4}, {0, 2}});
  expectOnRing(placed, 3, 200.0, 0.25 * pi);
  expectOnRing(placed, 1, 200.0, 0.75 * pi);
  expectOnRing(placed, 4, 200.0, 1.25 * pi);
  expectOnRing(placed, 2, 200.0, 1.75 * pi);
}

TEST(RadialLayout, GivesSectorsByLeaves) {
  // The first branch has three leaves, the second one: slices of 3/4 and 1/4 of the circle.
  const PositionTable placed = place(6, {{0, 1}, {0, 2}, {1, 3}, {1, 4}, {1, 5}});
  expectOnRing(placed, 1, 200.0, 0.75 * pi);
  expectOnRing(placed, 2, 200.0, 1.75 * pi);
  // The middle leaf of the three is behind its parent, on the next ring.
  expectOnRing(placed, 3, 380.0, 0.25 * pi);
  expectOnRing(placed, 4, 380.0, 0.75 * pi);
  expectOnRing(placed, 5, 380.0, 1.25 * pi);
}

TEST(RadialLayout, KeepsTheChildrenOfSeveralRootsOnTheFirstRing) {
  const PositionTable placed = place(5, {{0, 2}, {1, 3}, {1, 4}});
  expectAt(placed, 0, 700.0, 300.0);
  expectAt(placed, 2, 700.0, 300.0);
  expectAt(placed, 1, 300.0, 300.0);
  expectOnRing(placed, 3, 200.0, 0.75 * pi);
  expectOnRing(placed, 4, 200.0, 1.25 * pi);
}

TEST(RadialLayout, LetsTheLastPathDecideForTwoParents) {
  // Topic 3 is below 1 and below 2: the later path, under 2, counts. Both branches own half of the circle.
  expectOnRing(place(4, {{0, 1}, {0, 2}, {1, 3}, {2, 3}}), 3, 380.0, 1.5 * pi);
}

TEST(RadialLayout, PutsAPureCycleInTheBottomRow) {
  const PositionTable placed = place(3, {{0, 1}, {1, 2}, {2, 0}});
  expectAt(placed, 0, 50.0, 550.0);
  expectAt(placed, 1, 130.0, 550.0);
  expectAt(placed, 2, 210.0, 550.0);
}

TEST(RadialLayout, PutsWhatNoRootReachesInTheBottomRow) {
  const PositionTable placed = place(4, {{1, 2}, {2, 1}, {2, 3}});
  expectAt(placed, 0, 500.0, 300.0);
  expectAt(placed, 1, 50.0, 550.0);
  expectAt(placed, 2, 130.0, 550.0);
  expectAt(placed, 3, 210.0, 550.0);
}

TEST(RadialLayout, OfNoTopicsIsEmptyWhateverTheEdges) {
  EXPECT_TRUE(place(0, {{0, 1}}).empty());
}

TEST(RadialLayout, IsNeitherCentredNorKeptInsideTheCanvas) {
  const PositionTable placed = chainOf(8).place(RadialLayout());
  for (int i = 1; i < 8; ++i) expectAt(placed, i, 300.0 - 180.0 * (i - 1), 300.0);
}

TEST(RadialLayout, EndsOnACycleThatARootReaches) {
  const PositionTable placed = place(3, {{0, 1}, {1, 2}, {2, 1}});
  ASSERT_EQ(placed.size(), 3u);
  expectAt(placed, 1, 300.0, 300.0);
  expectAt(placed, 2, 120.0, 300.0);
}

TEST(RadialLayout, PlacesChainsStarsAndLaddersOfAnyLength) {
  expectOnRing(chainOf(100'000).place(RadialLayout()), 99'999, 200.0 + 180.0 * 99'998, pi);
  const PositionTable star = starOf(100'001).place(RadialLayout());
  ASSERT_EQ(star.size(), 100'001u);
  const QPointF last = star.find(topicId(100'000)).value();
  const double angle = 2.0 * pi * (1.0 - 0.5 / 100'000);
  EXPECT_NEAR(last.x(), 500.0 + 200.0 * std::cos(angle), 1e-6);
  EXPECT_NEAR(last.y(), 300.0 + 200.0 * std::sin(angle), 1e-6);
  // On the ladder the last path, right at every step, decides: ever smaller sectors at the end of the circle.
  const PositionTable ladder = ladderOf(60).place(RadialLayout());
  ASSERT_EQ(ladder.size(), 181u);
  expectOnRing(ladder, 1, 200.0, 0.5 * pi);
  expectOnRing(ladder, 2, 200.0, 1.5 * pi);
  expectOnRing(ladder, 3, 380.0, 1.5 * pi);
  expectOnRing(ladder, 6, 740.0, 1.75 * pi);
  EXPECT_NEAR(ladder.find(topicId(180))->x(), 500.0 + 200.0 + 180.0 * 119, 1e-6);
  EXPECT_NEAR(ladder.find(topicId(180))->y(), 300.0, 1e-6);
  const PositionTable longLadder = ladderOf(2000).place(RadialLayout());
  for (const QPointF& point : longLadder.points()) EXPECT_TRUE(std::isfinite(point.x()) && std::isfinite(point.y()));
}

TEST(RadialLayout, AgreesWithTheNaiveWalkWhereverThatEnds) {
  EXPECT_TRUE(rc::check("agrees with the reference", [] {
    const Drawing drawing = *rc::gen::noShrink(rc::gen::exec(anyLayeredDrawing));
    const SmallMap map(drawing.numbers, drawing.ends);
    RC_PRE(!map.nodes.empty());
    const RadialLayout layout;
    const PositionTable placed = map.place(layout);
    const Reference reference(layout, map);
    RC_ASSERT(placed.size() == reference.points.size());
    for (const auto& [id, point] : reference.points) {
      const QPointF actual = placed.find(id).value();
      RC_ASSERT(std::abs(actual.x() - point.x()) < 1e-9 && std::abs(actual.y() - point.y()) < 1e-9);
    }
  }));
}

TEST(RadialLayout, GivesEveryTopicAPlaceOnEveryMap) {
  EXPECT_TRUE(rc::check("gives every topic a place", [](const Drawing& drawing) {
    const SmallMap map(drawing.numbers, drawing.ends);
    const PositionTable placed = map.place(RadialLayout());
    for (const Node& node : map.nodes) {
      const auto point = placed.find(node.id);
      RC_ASSERT(point && std::isfinite(point->x()) && std::isfinite(point->y()));
    }
  }));
}
