#include <gtest/gtest.h>

#include "model/MindMapDocument.h"
#include "model/NumberedIds.h"

namespace quilmora {
namespace {

using namespace std::chrono_literals;

// A clock that advances by a second at each reading.
class TickingClock final : public Clock {
 public:
  TimePoint now() const override { return TimePoint(std::chrono::seconds(1000 + m_readings++)); }
  SteadyPoint steadyNow() const override { return {}; }
  int readings() const { return m_readings; }

 private:
  mutable int m_readings = 0;
};

using test::id;

Node topic(unsigned number) {
  Node node;
  node.id = id(number);
  node.style = NodeStyle::defaultStyle();
  return node;
}

Edge connector(unsigned number, unsigned from, unsigned to) {
  return {id(number), id(from), id(to), QString(), EdgeStyle::defaultStyle(), {}};
}

// 1 → 2 → 3, 1 → 4, a cross-link 2 – 4 and a region.
MindMap family() {
  MindMap map;
  map.nodes = {topic(1), topic(2), topic(3), topic(4)};
  map.edges = {connector(11, 1, 2), connector(12, 2, 3), connector(13, 1, 4)};
  map.relationships = {Relationship{id(21), id(2), id(4), QString(), QString(), {}},
                       Relationship{id(22), id(3), id(4), QString(), QString(), {}}};
  map.regions = {Region{id(31), QString(), QString(), QRectF(0, 0, 10, 10)}};
  return map;
}

TEST(Records, NodeStyleHasItsDefaults) {
  const NodeStyle& style = NodeStyle::defaultStyle();
  EXPECT_EQ(style.fill, QStringLiteral("#4A148C"));
  EXPECT_EQ(style.stroke, QStringLiteral("#2A0054"));
  EXPECT_EQ(style.textColor, QStringLiteral("#FFFFFF"));
  EXPECT_EQ(style.shape, NodeStyle::Shape::roundedRect);
  EXPECT_EQ(style.iconSize, 20.0);
  EXPECT_FALSE(style.bold);
  EXPECT_FALSE(style.italic);
  EXPECT_EQ(style.fillGradient, std::nullopt);
}

TEST(Records, EdgeStyleHasItsDefaults) {
  const EdgeStyle& style = EdgeStyle::defaultStyle();
  EXPECT_EQ(style.color, QStringLiteral("#3B82A0"));
  EXPECT_FALSE(style.dashed);
  EXPECT_EQ(style.arrowHead, EdgeStyle::ArrowHead::triangle);
  EXPECT_EQ(style.taper.startWidth, 6.0);
  EXPECT_EQ(style.taper.endWidth, 2.0);
  EXPECT_EQ(style.taper.easing, EdgeStyle::TaperEasing::quadraticIn);
}

TEST(Records, CanvasAndSizingHaveTheirDefaults) {
  const CanvasConfig& canvas = CanvasConfig::defaultConfig();
  EXPECT_EQ(canvas.background, QStringLiteral("#F8F0FF"));
  EXPECT_TRUE(canvas.grid);
  EXPECT_TRUE(canvas.snap);
  EXPECT_EQ(canvas.themeId, QStringLiteral("purple"));
  const HierarchicalConfig sizing;
  EXPECT_TRUE(sizing.edgeSizing);
  EXPECT_EQ(sizing.rootEdgeWidth, 15.0);
  EXPECT_EQ(sizing.leafEdgeWidth, 5.0);
  EXPECT_FALSE(sizing.nodeSizing);
  EXPECT_EQ(sizing.rootFontSize, 17.0);
  EXPECT_EQ(sizing.leafFontSize, 12.0);
  EXPECT_EQ(sizing.rootPadding, 14.0);
  EXPECT_EQ(sizing.leafPadding, 8.0);
  EXPECT_EQ(sizing.decayFunction, EdgeStyle::TaperEasing::linear);
}

TEST(Records, CompareEveryFieldExactly) {
  const Node node = topic(1);
  const auto differs = [&](auto change) {
    Node other = node;
    change(other);
    return !(other == node);
  };
  EXPECT_TRUE(node == topic(1));
  EXPECT_TRUE(differs([](Node& n) { n.id = id(2); }));
  EXPECT_TRUE(differs([](Node& n) { n.title = QStringLiteral("x"); }));
  EXPECT_TRUE(differs([](Node& n) { n.notes = QStringLiteral("x"); }));
  EXPECT_TRUE(differs([](Node& n) { n.position.setX(1e-13); }));  // closer than QPointF's own comparison can tell
  EXPECT_TRUE(differs([](Node& n) { n.style.bold = true; }));
  EXPECT_TRUE(differs([](Node& n) { n.icon = IconRef(); }));
  EXPECT_TRUE(differs([](Node& n) { n.badge = Badge::done; }));
  EXPECT_TRUE(differs([](Node& n) { n.aiGenerated = false; }));
  EXPECT_TRUE(differs([](Node& n) { n.emoji = QString(); }));
  EXPECT_TRUE(differs([](Node& n) { n.url = QString(); }));
  EXPECT_TRUE(differs([](Node& n) { n.imageData = QString(); }));
}

TEST(Records, ConnectorsCompareEveryField) {
  const Edge edge = connector(1, 2, 3);
  const auto differs = [&](auto change) {
    Edge other = edge;
    change(other);
    return !(other == edge);
  };
  EXPECT_TRUE(edge == connector(1, 2, 3));
  EXPECT_TRUE(differs([](Edge& e) { e.id = id(9); }));
  EXPECT_TRUE(differs([](Edge& e) { e.from = id(9); }));
  EXPECT_TRUE(differs([](Edge& e) { e.to = id(9); }));
  EXPECT_TRUE(differs([](Edge& e) { e.label = QStringLiteral("x"); }));
  EXPECT_TRUE(differs([](Edge& e) { e.style.taper.endWidth = 2.5; }));
  EXPECT_TRUE(differs([](Edge& e) { e.controlPointOffset = QPointF(0, 0); }));
  const Region region{id(1), QString(), QString(), QRectF(0, 0, 1, 1)};
  Region wider = region;
  wider.rect.setWidth(1 + 1e-13);
  EXPECT_FALSE(region == wider);
}

TEST(MindMap, BlankMapHasOneTopic) {
  const TickingClock clock;
  const MindMap map = MindMap::blankMap(clock);
  EXPECT_EQ(map.version, 1);
  EXPECT_EQ(map.title, QStringLiteral("Untitled Map"));
  EXPECT_EQ(clock.readings(), 2);
  EXPECT_EQ(map.createdAt, TimePoint(1000s));
  EXPECT_EQ(map.updatedAt, TimePoint(1001s));
  ASSERT_EQ(map.nodes.size(), 1u);
  const Node& node = map.nodes[0];
  EXPECT_FALSE(node.id.isNull());
  EXPECT_EQ(node.title, QStringLiteral("Start Here"));
  EXPECT_TRUE(node.notes.isEmpty());
  EXPECT_EQ(node.position, QPointF(400, 300));
  EXPECT_EQ(node.style, NodeStyle::defaultStyle());
  EXPECT_FALSE(node.icon || node.badge || node.aiGenerated || node.emoji || node.url || node.imageData);
  EXPECT_TRUE(map.edges.empty() && map.relationships.empty() && map.regions.empty());
  EXPECT_EQ(map.layout, MindMap::Layout::manual);
  EXPECT_EQ(map.canvas, CanvasConfig::defaultConfig());
  EXPECT_EQ(map.hierarchical, HierarchicalConfig());
}

TEST(MindMap, EveryBlankMapHasAFreshId) {
  const TickingClock clock;
  EXPECT_NE(MindMap::blankMap(clock).nodes[0].id, MindMap::blankMap(clock).nodes[0].id);
}

TEST(MindMap, DocumentBeginsWithTheBlankMap) {
  const ManualClock clock;
  const MindMapDocument document(clock);
  ASSERT_EQ(document.mindMap.nodes.size(), 1u);
  EXPECT_EQ(document.mindMap.nodes[0].title, QStringLiteral("Start Here"));
}

TEST(MindMap, MapsThatDifferOnlyInTimeStampsAreEqual) {
  const MindMap map = family();
  MindMap other = map;
  other.updatedAt += 5s;
  other.createdAt += 9s;
  EXPECT_EQ(map, other);
}

TEST(MindMap, MapsThatDifferInAnythingElseAreNot) {
  const MindMap map = family();
  const auto differs = [&](auto change) {
    MindMap other = map;
    change(other);
    return !(other == map);
  };
  EXPECT_TRUE(differs([](MindMap& m) { m.version = 2; }));
  EXPECT_TRUE(differs([](MindMap& m) { m.title = QStringLiteral("x"); }));
  EXPECT_TRUE(differs([](MindMap& m) { m.nodes.update(2, [](Node& node) { node.title = QStringLiteral("x"); }); }));
  EXPECT_TRUE(differs([](MindMap& m) { m.edges.append(connector(14, 4, 3)); }));
  EXPECT_TRUE(differs([](MindMap& m) { m.relationships.clear(); }));
  EXPECT_TRUE(differs([](MindMap& m) { m.regions.clear(); }));
  EXPECT_TRUE(differs([](MindMap& m) { m.layout = MindMap::Layout::radial; }));
  EXPECT_TRUE(differs([](MindMap& m) { m.canvas.grid = false; }));
  EXPECT_TRUE(differs([](MindMap& m) { m.hierarchical.leafPadding = 9; }));
}

TEST(MindMap, RemoveNodeLeavesItsSubtreeAsRoots) {
  MindMap map = family();
  map.removeNode(id(2), TimePoint(7s));
  EXPECT_EQ(map.nodes, (SharedArray<Node>{topic(1), topic(3), topic(4)}));
  EXPECT_EQ(map.edges, (SharedArray<Edge>{connector(13, 1, 4)}));
  ASSERT_EQ(map.relationships.size(), 1u);
  EXPECT_EQ(map.relationships[0].id, id(22));
  EXPECT_EQ(map.regions.size(), 1u);
  EXPECT_EQ(map.updatedAt, TimePoint(7s));
}

TEST(MindMap, RemoveNodeKeepsTheSubtreeOfAFormerChild) {
  MindMap map = family();
  map.removeNode(id(1), TimePoint(7s));
  EXPECT_EQ(map.nodes, (SharedArray<Node>{topic(2), topic(3), topic(4)}));
  EXPECT_EQ(map.edges, (SharedArray<Edge>{connector(12, 2, 3)}));
}

TEST(MindMap, RemoveNodeRemovesEveryNodeWithTheId) {
  MindMap map;
  map.nodes = {topic(1), topic(2), topic(1)};
  map.removeNode(id(1), TimePoint(7s));
  EXPECT_EQ(map.nodes, (SharedArray<Node>{topic(2)}));
}

TEST(MindMap, RemoveNodeOfAnUnknownIdStillSetsUpdatedAt) {
  MindMap map = family();
  map.removeNode(id(99), TimePoint(7s));
  EXPECT_EQ(map, family());
  EXPECT_EQ(map.updatedAt, TimePoint(7s));
}

TEST(MindMap, RemoveNodeTakesDanglingConnectorsOfAnIdThatIsNoNode) {
  MindMap map = family();
  map.edges.append(connector(15, 1, 99));
  map.removeNode(id(99), TimePoint(7s));
  EXPECT_EQ(map, family());
}

TEST(MindMap, CopyIsUnaffectedByLaterChanges) {
  MindMap map = family();
  const MindMap copy = map;
  map.removeNode(id(1), TimePoint(7s));
  map.nodes.updateAll([](Node& node) { node.title = QStringLiteral("changed"); });
  map.title = QStringLiteral("changed");
  EXPECT_EQ(copy, family());
  EXPECT_FALSE(copy == map);
}

template <class Enumeration>
void expectRawValues(std::initializer_list<std::pair<Enumeration, const char*>> pairs) {
  for (const auto& [value, text] : pairs) {
    EXPECT_EQ(rawValue(value), QLatin1String(text));
    EXPECT_EQ(fromRawValue<Enumeration>(text), value);
  }
  for (const char* other : {"", "x", "Rounded-rect", "p4", "triangle ", "QUADRATICIN"})
    EXPECT_EQ(fromRawValue<Enumeration>(other), std::nullopt) << other;
}

TEST(RawValues, OfEveryEnumeration) {
  expectRawValues<NodeStyle::Shape>({{NodeStyle::Shape::roundedRect, "rounded-rect"},
                                     {NodeStyle::Shape::circle, "circle"},
                                     {NodeStyle::Shape::rectangle, "rectangle"},
                                     {NodeStyle::Shape::ellipse, "ellipse"}});
  expectRawValues<Badge>({{Badge::priority1, "p1"},
                          {Badge::priority2, "p2"},
                          {Badge::priority3, "p3"},
                          {Badge::done, "done"},
                          {Badge::inProgress, "in-progress"},
                          {Badge::blocked, "blocked"}});
  expectRawValues<IconRef::IconType>(
      {{IconRef::IconType::sfSymbol, "sf-symbol"}, {IconRef::IconType::embedded, "embedded"}});
  expectRawValues<EdgeStyle::ArrowHead>(
      {{EdgeStyle::ArrowHead::triangle, "triangle"}, {EdgeStyle::ArrowHead::none, "none"}});
  expectRawValues<EdgeStyle::TaperEasing>({{EdgeStyle::TaperEasing::linear, "linear"},
                                           {EdgeStyle::TaperEasing::quadraticIn, "quadraticIn"},
                                           {EdgeStyle::TaperEasing::cubicIn, "cubicIn"}});
  expectRawValues<MindMap::Layout>({{MindMap::Layout::manual, "manual"},
                                    {MindMap::Layout::tree, "tree"},
                                    {MindMap::Layout::radial, "radial"},
                                    {MindMap::Layout::verticalTree, "verticalTree"},
                                    {MindMap::Layout::leftRightTree, "leftRightTree"},
                                    {MindMap::Layout::orgChart, "orgChart"}});
}

}  // namespace
}  // namespace quilmora
