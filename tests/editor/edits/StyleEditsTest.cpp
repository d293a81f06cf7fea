#include "editor/edits/EditsRig.h"
#include "editor/edits/StyleEdits.h"

using namespace quilmora;
using namespace quilmora::edits;
using namespace quilmora::test;

TEST(StyleEdits, ANewTopicTakesItsRowButNotItsGradient) {
  const Theme& theme = allThemes().front();
  const NodeStyle style = newTopicStyle(theme, 1);
  EXPECT_EQ(style.fill, theme.rowForDepth(1).fill);
  EXPECT_EQ(style.iconSize, 16.0);
  EXPECT_FALSE(style.fillGradient);
  EXPECT_EQ(newEdgeStyle(theme).color, theme.edgeColor);
}

TEST(StyleEdits, AThemeColoursByDepth) {
  EditsRig rig(mapOf({0, 1, 2}, {{0, 1}, {1, 2}}));
  const Theme& theme = allThemes().back();
  recolorByTheme(rig.map, theme, rig.tree, rig.index);
  for (int depth = 0; depth < 3; ++depth)
    EXPECT_EQ(rig.map.nodes[depth].style.fill, theme.rowForDepth(depth).fill) << depth;
  EXPECT_EQ(rig.map.edges[1].style.color, theme.edgeColor);
}

TEST(StyleEdits, EachBranchOfARootHasItsPalette) {
  EditsRig rig(mapOf({0, 1, 2, 3}, {{0, 1}, {0, 2}, {2, 3}}));
  recolorByBranch(rig.map, rig.tree, rig.index);
  EXPECT_EQ(rig.map.nodes[0].style.fill, branchRootColors().fill);
  EXPECT_EQ(rig.map.nodes[1].style.fill, branchPalettes()[0][0].fill);
  EXPECT_EQ(rig.map.nodes[2].style.fill, branchPalettes()[1][0].fill);
  EXPECT_EQ(rig.map.nodes[3].style.fill, branchPalettes()[1][1].fill);
  EXPECT_EQ(rig.map.edges[2].style.color, branchPalettes()[1][1].stroke);
}

TEST(StyleEdits, WhatNoRootReachesKeepsItsColours) {
  EditsRig rig(mapOf({0, 1}, {{0, 1}, {1, 0}}));
  const MindMap before = rig.map;
  recolorByBranch(rig.map, rig.tree, rig.index);
  EXPECT_EQ(rig.map, before);
}

TEST(StyleEdits, ColoursByHandLeaveTheGradientAndAllElse) {
  MindMap map = mapOf({0, 1, 2});
  map.nodes.update(1, [](Node& node) {
    node.style.fillGradient = QStringLiteral("#123456");
    node.style.bold = true;
  });
  EditsRig rig(map);
  const TopicColors colors{QStringLiteral("#111111"), QStringLiteral("#222222"), QStringLiteral("#333333")};
  colorTopics(rig.map, rig.index, ids({1, 2, 9}), colors);
  EXPECT_EQ(rig.map.nodes[0], map.nodes[0]);
  NodeStyle expected = map.nodes[1].style;
  expected.fill = QStringLiteral("#111111");
  expected.stroke = QStringLiteral("#222222");
  expected.textColor = QStringLiteral("#333333");
  EXPECT_EQ(rig.map.nodes[1].style, expected);
  EXPECT_EQ(rig.map.nodes[2].style.fill, QStringLiteral("#111111"));
}

TEST(StyleEdits, ConnectorsTakeAColourOrWidthsAlone) {
  EditsRig rig(mapOf({0, 1, 2}, {{0, 1}, {0, 2}}));
  const IdSet first{edgeId(0)};
  colorEdges(rig.map, first, QStringLiteral("#ABCDEF"));
  taperEdges(rig.map, first, 12.5, 3);
  EdgeStyle expected = EdgeStyle::defaultStyle();
  EXPECT_EQ(rig.map.edges[1].style, expected);
  expected.color = QStringLiteral("#ABCDEF");
  expected.taper.startWidth = 12.5;
  expected.taper.endWidth = 3;
  EXPECT_EQ(rig.map.edges[0].style, expected);
}
