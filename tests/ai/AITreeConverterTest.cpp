#include <gtest/gtest.h>

#include "ai/AITreeConverter.h"
#include "layout/RadialLayout.h"
#include "layout/TreeLayout.h"
#include "platform/SettingsKeys.h"
#include "support/QtPrinters.h"
#include "support/SmallMap.h"

namespace quilmora {

namespace {

class AITreeConverterTest : public testing::Test {
 protected:
  MindMap convert(const char* json, MindMap::Layout layout = MindMap::Layout::radial,
                  std::optional<QString> themeId = QStringLiteral("ocean")) {
    return AITreeConverter{QSizeF(1200, 800), layout, std::move(themeId)}.convert(decodeTree(json), m_settings,
                                                                                  m_clock);
  }
  MindMap withChildren(const char* json, MindMap map, int depth = 0) {
    const AITreeNode tree = decodeTree(json);
    AITreeConverter{QSizeF(1200, 800), MindMap::Layout::tree, QStringLiteral("ocean")}.addChildren(
        *tree.children, map, test::topicId(0), depth, m_settings, m_clock);
    return map;
  }

  MemorySettingsStore m_settings;
  ManualClock m_clock;
};

QStringList titlesOf(const MindMap& map) {
  QStringList titles;
  for (const Node& node : map.nodes) titles << node.title;
  return titles;
}

constexpr char fiveLevels[] =
    R"({"title":"1","children":[{"title":"2","children":[{"title":"3","children":[{"title":"4","children":[)"
    R"({"title":"5"}]}]}]}]})";

}  // namespace

TEST_F(AITreeConverterTest, OneTopicGivesAMapOfOneTopic) {
  const MindMap map = convert(R"({"title":"Tea","notes":"hot"})");
  ASSERT_EQ(map.nodes.size(), 1u);
  EXPECT_TRUE(map.edges.empty());
  EXPECT_EQ(map.nodes[0].position, QPointF(600, 400));
  EXPECT_EQ(map.nodes[0].notes, QStringLiteral("hot"));
  EXPECT_EQ(map.title, QStringLiteral("Tea"));
}

TEST_F(AITreeConverterTest, TopicsAndEdgesHaveTheShapeOfHandMadeOnes) {
  const MindMap map = convert(R"({"title":"Tea","children":[{"title":"Green"}]})");
  ASSERT_EQ(map.nodes.size(), 2u);
  const Node& node = map.nodes[1];
  Node expected;
  expected.id = node.id;
  expected.title = QStringLiteral("Green");
  expected.position = node.position;
  const Theme::NodeColorSet& row = builtInTheme(QStringLiteral("ocean"))->nodeColors[1];
  expected.style = {row.fill, row.stroke, row.textColor, NodeStyle::Shape::roundedRect,
                    16.0,     false,      false,         row.fillGradient};
  expected.aiGenerated = true;
  EXPECT_EQ(node, expected);
  EXPECT_FALSE(node.notes.isNull() && !node.notes.isEmpty());

  ASSERT_EQ(map.edges.size(), 1u);
  const Edge& edge = map.edges[0];
  EXPECT_EQ(edge.from, map.nodes[0].id);
  EXPECT_EQ(edge.to, map.nodes[1].id);
  EXPECT_EQ(edge.label, QString());
  EXPECT_EQ(edge.style.color, QStringLiteral("#3B82A0"));
  EXPECT_FALSE(edge.style.dashed);
  EXPECT_EQ(edge.style.arrowHead, EdgeStyle::ArrowHead::triangle);
  EXPECT_EQ(edge.style.taper, (EdgeStyle::TaperConfig{6.0, 2.0, EdgeStyle::TaperEasing::quadraticIn}));
  EXPECT_FALSE(edge.controlPointOffset.has_value());
}

TEST_F(AITreeConverterTest, TheNewMapHasTheSettingsOfANewMapInItsTheme) {
  const MindMap map = convert(R"({"title":"Tea"})");
  EXPECT_EQ(map.version, 1);
  EXPECT_EQ(map.createdAt, m_clock.now());
  EXPECT_EQ(map.updatedAt, m_clock.now());
  EXPECT_EQ(map.canvas, (CanvasConfig{QStringLiteral("#F0F7FF"), true, true, QStringLiteral("ocean")}));
  EXPECT_EQ(map.hierarchical, HierarchicalConfig());
  EXPECT_TRUE(map.relationships.empty());
  EXPECT_TRUE(map.regions.empty());
}

TEST_F(AITreeConverterTest, GoesDepthFirstThroughTheWholeTree) {
  EXPECT_EQ(titlesOf(convert(R"({"title":"a","children":[{"title":"b","children":[{"title":"c"}]},{"title":"d"}]})")),
            QStringList({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("d")}));
  EXPECT_EQ(convert(fiveLevels).nodes.size(), 5u);
}

TEST_F(AITreeConverterTest, EveryLayoutIsAppliedAndNoneIsKept) {
  using Layout = MindMap::Layout;
  for (const Layout layout :
       {Layout::manual, Layout::tree, Layout::radial, Layout::verticalTree, Layout::leftRightTree, Layout::orgChart}) {
    const MindMap map = convert(fiveLevels, layout);
    EXPECT_EQ(map.layout, Layout::manual);
    const auto algorithm = makeLayout(layout == Layout::manual ? Layout::tree : layout);
    const PositionTable expected = algorithm->computePositions(map.nodes, map.edges, QSizeF(1200, 800));
    for (const Node& node : map.nodes) EXPECT_EQ(node.position, expected.find(node.id));
  }
}

TEST_F(AITreeConverterTest, AnUnknownThemeGivesPurpleAndSaysSo) {
  const MindMap map = convert(R"({"title":"Tea"})", MindMap::Layout::tree, QStringLiteral("my-own-theme"));
  EXPECT_EQ(map.canvas.themeId, QStringLiteral("purple"));
  EXPECT_EQ(map.canvas.background, QStringLiteral("#F8F0FF"));
}

TEST_F(AITreeConverterTest, WithoutAThemeTheSettingCountsAndThenPurple) {
  EXPECT_EQ(convert(R"({"title":"Tea"})", MindMap::Layout::tree, std::nullopt).canvas.themeId,
            QStringLiteral("purple"));
  m_settings.setText(settings::defaultTheme, QStringLiteral("forest"));
  EXPECT_EQ(convert(R"({"title":"Tea"})", MindMap::Layout::tree, std::nullopt).canvas.themeId,
            QStringLiteral("forest"));
}

TEST_F(AITreeConverterTest, BeyondTheRowsOfTheThemeTheLastOneRepeats) {
  const AITreeConverter converter{QSizeF(), MindMap::Layout::tree, QStringLiteral("ocean")};
  const auto rows = static_cast<int>(builtInTheme(QStringLiteral("ocean"))->nodeColors.size());
  EXPECT_EQ(converter.styleForDepth(rows + 40, m_settings), converter.styleForDepth(rows - 1, m_settings));
  EXPECT_FALSE(converter.styleForDepth(0, m_settings) == converter.styleForDepth(rows - 1, m_settings));
}

TEST_F(AITreeConverterTest, ChildrenFanOutBesideTheirParent) {
  MindMap parent = test::mapOf({0});
  parent.nodes.update(0, [](Node& node) { node.position = QPointF(100, 200); });
  const MindMap two = withChildren(R"({"title":"","children":[{"title":"a"},{"title":"b"}]})", parent);
  EXPECT_EQ(two.nodes[1].position, QPointF(280, 140));
  EXPECT_EQ(two.nodes[2].position, QPointF(280, 200));
  const MindMap three = withChildren(R"({"title":"","children":[{"title":"a"},{"title":"b"},{"title":"c"}]})", parent);
  EXPECT_EQ(three.nodes[1].position, QPointF(280, 140));
  EXPECT_EQ(three.nodes[2].position, QPointF(280, 200));
  EXPECT_EQ(three.nodes[3].position, QPointF(280, 260));
  EXPECT_EQ(three.nodes[0].position, QPointF(100, 200));
}

TEST_F(AITreeConverterTest, GrandchildrenFanOutAndWhatIsDeeperIsDropped) {
  const MindMap map = withChildren(
      R"({"title":"","children":[{"title":"a","notes":"n","children":[{"title":"a1","children":[{"title":"lost"}]},)"
      R"({"title":"a2"},{"title":"a3"}]},{"title":"b"}]})",
      test::mapOf({0}), 3);
  EXPECT_EQ(titlesOf(map), QStringList({QStringLiteral("Topic 0"), QStringLiteral("a"), QStringLiteral("a1"),
                                        QStringLiteral("a2"), QStringLiteral("a3"), QStringLiteral("b")}));
  EXPECT_EQ(map.nodes[1].position, QPointF(180, -60));
  EXPECT_EQ(map.nodes[2].position, QPointF(360, -110));
  EXPECT_EQ(map.nodes[4].position, QPointF(360, -10));
  EXPECT_EQ(map.nodes[1].notes, QStringLiteral("n"));
  EXPECT_EQ(map.edges[0].from, test::topicId(0));
  EXPECT_EQ(map.edges[1].from, map.nodes[1].id);
  EXPECT_EQ(map.edges[1].to, map.nodes[2].id);
  const AITreeConverter converter{QSizeF(), MindMap::Layout::tree, QStringLiteral("ocean")};
  EXPECT_EQ(map.nodes[1].style, converter.styleForDepth(4, m_settings));
  EXPECT_EQ(map.nodes[2].style, converter.styleForDepth(5, m_settings));
  EXPECT_EQ(map.updatedAt, m_clock.now());
}

TEST_F(AITreeConverterTest, NoChildrenSetTheTimeAlone) {
  const MindMap before = test::mapOf({0});
  const MindMap after = withChildren(R"({"title":"","children":[]})", before);
  EXPECT_EQ(after, before);
  EXPECT_EQ(after.updatedAt, m_clock.now());
}

TEST_F(AITreeConverterTest, AMissingParentStillGetsItsChildren) {
  const MindMap map = withChildren(R"({"title":"","children":[{"title":"a"}]})", test::mapOf({5}));
  ASSERT_EQ(map.nodes.size(), 2u);
  EXPECT_EQ(map.nodes[1].position, QPointF(180, 0));
  EXPECT_EQ(map.edges[0].from, test::topicId(0));
}

TEST_F(AITreeConverterTest, ATreeNestedAHundredThousandDeepConverts) {
  constexpr int depth = 100'000;
  const QByteArray json = QByteArray(R"({"title":"x","children":[)").repeated(depth) + R"({"title":"leaf"})" +
                          QByteArray("]}").repeated(depth);
  using Layout = MindMap::Layout;
  for (const Layout layout : {Layout::tree, Layout::radial, Layout::leftRightTree, Layout::orgChart}) {
    const MindMap map = convert(json.constData(), layout);
    EXPECT_EQ(map.nodes.size(), 100'001u);
    EXPECT_EQ(map.edges.size(), 100'000u);
    EXPECT_EQ(map.edges.back().to, map.nodes.back().id);
  }
}

// The map grows while a reference into it is in use.
TEST_F(AITreeConverterTest, ChildrenComeBelowATopicWhoseIdLiesInTheMapItself) {
  MindMap map;
  Node root;
  root.id = test::topicId(0);
  map.nodes.append(root);
  std::vector<AITreeNode> children(40);
  AITreeConverter{QSizeF(1200, 800), MindMap::Layout::tree, QStringLiteral("ocean")}.addChildren(
      children, map, map.nodes.front().id, 0, m_settings, m_clock);
  ASSERT_EQ(map.edges.size(), 40u);
  for (const Edge& edge : map.edges) EXPECT_EQ(edge.from, test::topicId(0));
}

}  // namespace quilmora
