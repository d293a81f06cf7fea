#include <map>
#include <set>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "layout/TreeLayout.h"
#include "support/MapGenerators.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

constexpr QSizeF canvas(800.0, 600.0);

PositionTable place(const std::vector<int>& numbers, const std::vector<Ends>& ends, QSizeF size = canvas) {
  return TreeLayout().computePositions(topics(numbers), edgesOf(ends), size);
}

QPointF at(const PositionTable& table, int number) {
  return table.find(topicId(number)).value_or(QPointF(-1e9, -1e9));
}

void expectAt(const PositionTable& table, int number, double x, double y) {
  EXPECT_EQ(at(table, number).x(), x) << "topic " << number;
  EXPECT_EQ(at(table, number).y(), y) << "topic " << number;
}

// The rules again, recursive and with dictionaries.
class Reference {
 public:
  Reference(const TreeLayout& layout, const MindMap& map, QSizeF size) : m_layout(layout) {
    std::set<QUuid> targets;
    for (const Edge& edge : map.edges) {
      targets.insert(edge.to);
      m_children[edge.from].push_back(edge.to);
    }
    std::vector<QUuid> roots;
    for (const Node& node : map.nodes)
      if (!targets.count(node.id)) roots.push_back(node.id);
    for (std::size_t i = 0; i < roots.size(); ++i) {
      placeNode(roots[i], 0);
      if (i + 1 != roots.size()) m_cursor += 2 * layout.siblingSpacing;
    }
    for (const Node& node : map.nodes) {
      if (m_points.count(node.id)) continue;
      m_points[node.id] = point(0, m_cursor);
      m_cursor += layout.siblingSpacing;
    }
    if (map.nodes.empty()) m_points.clear();
    center(size);
  }

  std::map<QUuid, QPointF> points() const { return m_points; }

 private:
  QPointF point(double along, double cross) const {
    return m_layout.orientation == TreeLayout::Orientation::horizontal ? QPointF(along, cross) : QPointF(cross, along);
  }

  void placeNode(const QUuid& id, int depth) {
    if (!m_visited.insert(id).second) return;
    const std::vector<QUuid> children = m_children[id];
    if (children.empty()) {
      m_points[id] = point(depth * m_layout.levelSpacing, m_cursor);
      m_cursor += m_layout.siblingSpacing;
      return;
    }
    const double start = m_cursor;
    for (std::size_t i = 0; i < children.size(); ++i) {
      placeNode(children[i], depth + 1);
      if (i + 1 != children.size()) m_cursor += m_layout.subtreeSpacing;
    }
    m_points[id] = point(depth * m_layout.levelSpacing, (start + m_cursor - m_layout.siblingSpacing) * 0.5);
  }

  void center(QSizeF size) {
    if (m_points.empty()) return;
    double minX = 1e300, maxX = -1e300, minY = 1e300, maxY = -1e300;
    for (const auto& [id, p] : m_points) {
      minX = std::min(minX, p.x());
      maxX = std::max(maxX, p.x());
      minY = std::min(minY, p.y());
      maxY = std::max(maxY, p.y());
    }
    const QPointF offset(size.width() * 0.5 - (minX + maxX) * 0.5, size.height() * 0.5 - (minY + maxY) * 0.5);
    for (auto& [id, p] : m_points) p += offset;
  }

  const TreeLayout m_layout;
  std::map<QUuid, std::vector<QUuid>> m_children;
  std::set<QUuid> m_visited;
  std::map<QUuid, QPointF> m_points;
  double m_cursor = 0;
};

std::map<QUuid, QPointF> asMap(const PositionTable& table) {
  std::map<QUuid, QPointF> points;
  for (std::size_t i = 0; i < table.size(); ++i) points[table.ids()[i]] = table.points()[i];
  return points;
}

bool isSame(const std::map<QUuid, QPointF>& a, const std::map<QUuid, QPointF>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& left, const auto& right) {
    return left.first == right.first && left.second.x() == right.second.x() && left.second.y() == right.second.y();
  });
}

}  // namespace

TEST(TreeLayout, NoTopicsGiveNoPositionsWhateverTheEdgesHold) {
  EXPECT_TRUE(place({}, {}).empty());
  EXPECT_TRUE(place({}, {{0, 1}, {1, 0}}).empty());
}

TEST(TreeLayout, OneTopicStandsOnTheCanvasCenter) {
  const PositionTable table = place({0}, {});
  EXPECT_EQ(table.size(), 1u);
  expectAt(table, 0, 400.0, 300.0);
}

TEST(TreeLayout, CanvasSizeIsTakenAsItIs) {
  expectAt(place({0}, {}, QSizeF(0.0, 0.0)), 0, 0.0, 0.0);
  expectAt(place({0}, {}, QSizeF(-100.0, 50.0)), 0, -50.0, 25.0);
}

TEST(TreeLayout, LeafSiblingsStand140ApartAndTheParentAtTheirMiddle) {
  const PositionTable table = place({0, 1, 2}, {{0, 1}, {0, 2}});
  expectAt(table, 0, 275.0, 300.0);
  expectAt(table, 1, 525.0, 230.0);
  expectAt(table, 2, 525.0, 370.0);
}

TEST(TreeLayout, VerticalSwapsTheAxes) {
  const TreeLayout vertical(TreeLayout::Orientation::vertical, 250.0, 100.0, 40.0);
  const PositionTable table = vertical.computePositions(topics({0, 1, 2}), edgesOf({{0, 1}, {0, 2}}), canvas);
  expectAt(table, 0, 400.0, 175.0);
  expectAt(table, 1, 330.0, 425.0);
  expectAt(table, 2, 470.0, 425.0);
}

TEST(TreeLayout, SiblingsStandInTheOrderOfTheEdges) {
  const PositionTable table = place({0, 1, 2}, {{0, 2}, {0, 1}});
  expectAt(table, 2, 525.0, 230.0);
  expectAt(table, 1, 525.0, 370.0);
}

TEST(TreeLayout, ParentStandsAtTheMiddleOfItsLeavesAndNotOfItsChildren) {
  // 0 has a leaf 1 and a branch 2 with the leaves 3, 4, 5: leaves at 0, 140, 280, 420 before centring.
  const PositionTable table = place({0, 1, 2, 3, 4, 5}, {{0, 1}, {0, 2}, {2, 3}, {2, 4}, {2, 5}});
  const double shift = 300.0 - 210.0;
  expectAt(table, 1, 400.0, shift);
  expectAt(table, 2, 400.0, shift + 280.0);
  expectAt(table, 3, 650.0, shift + 140.0);
  expectAt(table, 5, 650.0, shift + 420.0);
  expectAt(table, 0, 150.0, shift + 210.0);
}

TEST(TreeLayout, RootsOfTwoTreesStand300ApartAtDepth0) {
  const PositionTable table = place({0, 1}, {});
  expectAt(table, 0, 400.0, 150.0);
  expectAt(table, 1, 400.0, 450.0);
}

TEST(TreeLayout, OutermostLeavesOfConsecutiveRootsStand300Apart) {
  const PositionTable table = place({0, 1, 2, 3, 4, 5}, {{0, 1}, {0, 2}, {3, 4}, {3, 5}});
  EXPECT_EQ(at(table, 4).y() - at(table, 2).y(), 300.0);
  EXPECT_EQ(at(table, 0).x(), at(table, 3).x());
}

TEST(TreeLayout, PureCycleStandsInOneRankInTheOrderOfTopics) {
  const PositionTable table = place({2, 0, 1}, {{0, 1}, {1, 2}, {2, 0}});
  expectAt(table, 2, 400.0, 200.0);
  expectAt(table, 0, 400.0, 300.0);
  expectAt(table, 1, 400.0, 400.0);
}

TEST(TreeLayout, TopicsThatNoRootReachesFollowTheLastRootWithoutAFurtherGap) {
  const PositionTable table = place({0, 1, 2, 3}, {{1, 2}, {2, 1}, {2, 3}});
  expectAt(table, 0, 400.0, 150.0);
  expectAt(table, 1, 400.0, 250.0);
  expectAt(table, 2, 400.0, 350.0);
  expectAt(table, 3, 400.0, 450.0);
}

TEST(TreeLayout, TopicWithTwoParentsStandsUnderTheFirstAndStillTakesAGapUnderTheSecond) {
  // 0 -> 1, 2; 1 -> 3; 2 -> 3, 4. Before centring: 3 at 0, then 40 twice (after 1, and after 3 is skipped), 4 at 180.
  const PositionTable table = place({0, 1, 2, 3, 4}, {{0, 1}, {0, 2}, {1, 3}, {2, 3}, {2, 4}});
  EXPECT_EQ(table.size(), 5u);
  const double shift = 300.0 - 90.0;
  expectAt(table, 3, 650.0, shift);
  expectAt(table, 1, 400.0, shift);
  expectAt(table, 4, 650.0, shift + 180.0);
  expectAt(table, 2, 400.0, shift + 160.0);
  expectAt(table, 0, 150.0, shift + 90.0);
}

TEST(TreeLayout, DoubledEdgeTakesAGapToo) {
  const PositionTable table = place({0, 1, 2}, {{0, 1}, {0, 1}, {0, 2}});
  EXPECT_EQ(at(table, 2).y() - at(table, 1).y(), 180.0);
}

TEST(TreeLayout, SelfLoopMakesItsTopicNoRoot) {
  const PositionTable table = place({0, 1}, {{0, 0}});
  expectAt(table, 1, 400.0, 250.0);
  expectAt(table, 0, 400.0, 350.0);
}

TEST(TreeLayout, SelfLoopBelowARootIsPlacedThere) {
  const PositionTable table = place({0, 1}, {{0, 1}, {1, 1}});
  expectAt(table, 0, 275.0, 300.0);
  expectAt(table, 1, 525.0, 300.0);
}

TEST(TreeLayout, MissingTopicTakesALeafSlotAndCountsInTheBox) {
  const PositionTable table = place({0, 1}, {{0, 99}, {0, 1}});
  EXPECT_EQ(table.size(), 3u);
  expectAt(table, 99, 525.0, 230.0);
  expectAt(table, 1, 525.0, 370.0);
  expectAt(table, 0, 275.0, 300.0);
}

TEST(TreeLayout, EdgeFromAMissingTopicLeavesItsChildForTheLastRank) {
  const PositionTable table = place({0, 1}, {{99, 1}});
  EXPECT_EQ(table.size(), 2u);
  expectAt(table, 0, 400.0, 250.0);
  expectAt(table, 1, 400.0, 350.0);
}

TEST(TreeLayout, CycleBelowARootEnds) {
  const PositionTable table = place({0, 1, 2}, {{0, 1}, {1, 2}, {2, 1}});
  EXPECT_EQ(table.size(), 3u);
  expectAt(table, 0, 150.0, 300.0);
  expectAt(table, 1, 400.0, 300.0);
  expectAt(table, 2, 650.0, 300.0);
}

TEST(TreeLayout, DoubledRootTakesARootGapOnce) {
  const PositionTable table = place({0, 0, 1}, {});
  EXPECT_EQ(table.size(), 2u);
  // 100 after the first root, and twice the gap of 200 between three roots.
  EXPECT_EQ(at(table, 1).y() - at(table, 0).y(), 500.0);
}

TEST(TreeLayout, TitlesAndPositionsAreNotLookedAt) {
  SharedArray<Node> nodes = topics({0, 1});
  nodes.update(1, [](Node& node) {
    node.title = QString(1000, u'x');
    node.position = QPointF(1e9, -1e9);
    node.style.iconSize = 500.0;
  });
  EXPECT_TRUE(
      isSame(asMap(TreeLayout().computePositions(nodes, edgesOf({{0, 1}}), canvas)), asMap(place({0, 1}, {{0, 1}}))));
}

TEST(TreeLayout, ChainOf100000TopicsIsPlaced) {
  constexpr int count = 100'000;
  SharedArray<Node> nodes;
  SharedArray<Edge> edges;
  for (int i = 0; i < count; ++i) {
    nodes.append(topic(i));
    if (i > 0) edges.append(edgeBetween(i, i - 1, i));
  }
  const PositionTable table = TreeLayout().computePositions(nodes, edges, QSizeF(0.0, 0.0));
  ASSERT_EQ(table.size(), static_cast<std::size_t>(count));
  expectAt(table, 0, -12'499'875.0, 0.0);
  expectAt(table, count - 1, 12'499'875.0, 0.0);
}

TEST(TreeLayout, StarOf100000ChildrenIsPlaced) {
  constexpr int count = 100'000;
  SharedArray<Node> nodes;
  SharedArray<Edge> edges;
  nodes.append(topic(0));
  for (int i = 1; i <= count; ++i) {
    nodes.append(topic(i));
    edges.append(edgeBetween(i, 0, i));
  }
  const PositionTable table = TreeLayout().computePositions(nodes, edges, QSizeF(0.0, 0.0));
  ASSERT_EQ(table.size(), count + 1u);
  expectAt(table, 0, -125.0, 0.0);
  expectAt(table, 1, 125.0, -6'999'930.0);
  expectAt(table, count, 125.0, 6'999'930.0);
}

TEST(TreeLayout, LadderOfDiamondsEnds) {
  SharedArray<Node> nodes;
  SharedArray<Edge> edges;
  constexpr int rungs = 20'000;
  for (int i = 0; i < rungs; ++i) {
    for (int k = 0; k < 3; ++k) nodes.append(topic(3 * i + k));
    for (int k = 1; k < 3; ++k) {
      edges.append(edgeBetween(4 * i + k, 3 * i, 3 * i + k));
      if (i + 1 < rungs) edges.append(edgeBetween(4 * i + 2 + k, 3 * i + k, 3 * i + 3));
    }
  }
  EXPECT_EQ(TreeLayout().computePositions(nodes, edges, canvas).size(), 3u * rungs);
}

TEST(TreeLayout, AgreesWithTheRecursiveReference) {
  EXPECT_TRUE(rc::check("every map is placed as the rules tell", [](const Drawing& drawing) {
    const MindMap map = drawing.map();
    const auto orientation = *rc::gen::element(TreeLayout::Orientation::horizontal, TreeLayout::Orientation::vertical);
    const TreeLayout layout(orientation, 250.0, 100.0, 40.0);
    const PositionTable table = layout.computePositions(map.nodes, map.edges, canvas);
    for (const Node& node : map.nodes) RC_ASSERT(table.contains(node.id));
    RC_ASSERT(isSame(asMap(table), Reference(layout, map, canvas).points()));
  }));
}
