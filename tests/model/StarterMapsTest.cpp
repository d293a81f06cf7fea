#include <set>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "model/StarterMaps.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

// "Name | icon | branches".
QStringList rows() {
  QStringList rows;
  for (const StarterMap& starter : templates())
    rows.append(starter.name + QStringLiteral(" | ") + starter.icon + QStringLiteral(" | ") +
                starter.branches.join(QStringLiteral(", ")));
  return rows;
}

MindMap mapOf(const char* name) {
  const StarterMap* starter = templateNamed(QLatin1String(name));
  return templateMap(starter->name, starter->branches, ManualClock());
}

TEST(StarterMaps, TheTable) {
  EXPECT_EQ(rows(), (QStringList{
                        QStringLiteral("Brainstorm | lightbulb | Ideas, Research, Questions, Inspiration, Next Steps"),
                        QStringLiteral("Project Plan | checklist | Goals, Timeline, Resources, Risks, Milestones"),
                        QStringLiteral("Meeting Notes | person.3 | Agenda, Decisions, Action Items, Follow-ups"),
                        QStringLiteral("Research | book | Hypothesis, Sources, Findings, Analysis, Conclusion"),
                        QStringLiteral("Personal Goals | star | Health, Career, Learning, Finance, Relationships"),
                    }));
}

TEST(StarterMaps, OneIsFoundByItsNameAlone) {
  EXPECT_EQ(templateNamed(QStringLiteral("Research")), &templates().at(3));
  EXPECT_EQ(templateNamed(QStringLiteral("research")), nullptr);
  EXPECT_EQ(templateNamed(QString()), nullptr);
}

TEST(StarterMaps, FourBranchesStandAtTheTopRightBottomAndLeftOfTheRoot) {
  const MindMap map = mapOf("Meeting Notes");
  ASSERT_EQ(map.nodes.size(), 5u);
  const std::vector<QPointF> expected = {{400, 300}, {400, 120}, {580, 300}, {400, 480}, {220, 300}};
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_NEAR(map.nodes[i].position.x(), expected[i].x(), 1e-9) << i;
    EXPECT_NEAR(map.nodes[i].position.y(), expected[i].y(), 1e-9) << i;
  }
  EXPECT_EQ(map.nodes[1].title, QStringLiteral("Agenda"));
  EXPECT_EQ(map.nodes[4].title, QStringLiteral("Follow-ups"));
}

TEST(StarterMaps, TheRootHasTheNameAndNothingReadsStartHere) {
  for (const StarterMap& starter : templates()) {
    const MindMap map = templateMap(starter.name, starter.branches, ManualClock());
    EXPECT_EQ(map.title, starter.name);
    EXPECT_EQ(map.nodes[0].title, starter.name);
    for (const Node& node : map.nodes) EXPECT_NE(node.title, QStringLiteral("Start Here"));
    QStringList titles;
    for (std::size_t i = 1; i < map.nodes.size(); ++i) titles.append(map.nodes[i].title);
    EXPECT_EQ(titles, starter.branches);
  }
}

TEST(StarterMaps, EveryValueIsThatOfABlankMap) {
  ManualClock clock;
  const MindMap blank = MindMap::blankMap(clock);
  const MindMap map = mapOf("Brainstorm");
  EXPECT_EQ(map.version, 1);
  EXPECT_EQ(map.createdAt, clock.now());
  EXPECT_EQ(map.updatedAt, clock.now());
  EXPECT_EQ(map.layout, MindMap::Layout::manual);
  EXPECT_EQ(map.canvas, (CanvasConfig{QStringLiteral("#F8F0FF"), true, true, QStringLiteral("purple")}));
  EXPECT_EQ(map.hierarchical, blank.hierarchical);
  EXPECT_EQ(map.relationships.size(), 0u);
  EXPECT_EQ(map.regions.size(), 0u);
}

TEST(StarterMaps, TopicsAreBareAndOfTheDefaultStyle) {
  for (const Node& node : mapOf("Project Plan").nodes) {
    EXPECT_EQ(node.style, NodeStyle::defaultStyle());
    EXPECT_EQ(node.notes, QString());
    EXPECT_FALSE(node.icon || node.badge || node.aiGenerated || node.emoji || node.url || node.imageData);
  }
}

TEST(StarterMaps, EveryBranchHangsOnTheRoot) {
  const MindMap map = mapOf("Personal Goals");
  ASSERT_EQ(map.edges.size(), 5u);
  std::set<QUuid> ids;
  for (std::size_t i = 0; i < map.edges.size(); ++i) {
    const Edge& edge = map.edges[i];
    EXPECT_EQ(edge.from, map.nodes[0].id);
    EXPECT_EQ(edge.to, map.nodes[i + 1].id);
    EXPECT_EQ(edge.label, QString());
    EXPECT_EQ(edge.style.color, QStringLiteral("#3B82A0"));
    EXPECT_FALSE(edge.style.dashed);
    EXPECT_EQ(edge.style.arrowHead, EdgeStyle::ArrowHead::triangle);
    EXPECT_EQ(edge.style.taper, (EdgeStyle::TaperConfig{6.0, 2.0, EdgeStyle::TaperEasing::quadraticIn}));
    EXPECT_FALSE(edge.controlPointOffset.has_value());
    ids.insert(edge.id);
    ids.insert(edge.to);
  }
  EXPECT_EQ(ids.size(), 10u);
}

TEST(StarterMaps, WithoutBranchesTheRootIsAlone) {
  const MindMap map = templateMap(QStringLiteral("Alone"), {}, ManualClock());
  EXPECT_EQ(map.nodes.size(), 1u);
  EXPECT_EQ(map.edges.size(), 0u);
  EXPECT_EQ(map.nodes[0].title, QStringLiteral("Alone"));
  EXPECT_EQ(map.nodes[0].position, QPointF(400, 300));
}

RC_GTEST_PROP(StarterMapLaws, BranchesStand180FromTheRootAtEqualTurns, ()) {
  const int count = *rc::gen::inRange(1, 40);
  QStringList branches;
  for (int i = 0; i < count; ++i) branches.append(QString::number(i));
  const MindMap map = templateMap(QStringLiteral("Root"), branches, ManualClock());
  RC_ASSERT(map.nodes.size() == static_cast<std::size_t>(count) + 1);
  QPointF before;
  for (std::size_t i = 1; i < map.nodes.size(); ++i) {
    const QPointF arm = map.nodes[i].position - map.nodes[0].position;
    RC_ASSERT(std::abs(std::hypot(arm.x(), arm.y()) - 180.0) < 1e-9);
    // Clockwise with y growing downwards: each arm turns to the right of the previous one.
    if (i > 1 && count > 2) {
      RC_ASSERT(before.x() * arm.y() - before.y() * arm.x() > 0.0);
    }
    before = arm;
  }
}

}  // namespace
}  // namespace quilmora
