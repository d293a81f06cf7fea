#include <gtest/gtest.h>

#include "platform/SettingsKeys.h"
#include "support/EditorRig.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

const Theme& theme(const char* id) {
  return *builtInTheme(QString::fromLatin1(id));
}

MindMap themed(MindMap map, const char* id) {
  map.canvas.themeId = QString::fromLatin1(id);
  return map;
}

// "fill stroke text gradient" of a topic.
std::string colors(const NodeStyle& style) {
  QStringList parts = {style.fill, style.stroke, style.textColor};
  if (style.fillGradient) parts.append(*style.fillGradient);
  return parts.join(u' ').toStdString();
}

std::string edgeColor(const EditorRig& rig, std::size_t index) {
  return rig.edge(index).style.color.toStdString();
}

constexpr const char* lavenderRoot = "#4A148C #2A0054 #FFFFFF";
constexpr const char* branchRoot = "#37474F #263238 #FFFFFF";
constexpr const char* blueHead = "#1565C0 #0D47A1 #FFFFFF";

}  // namespace

TEST(CurrentTheme, IsTheMapsTheme) {
  EditorRig rig(themed(mapOf({0}), "ocean"));
  rig.settings.setText(settings::defaultTheme, QStringLiteral("neon"));
  EXPECT_EQ(rig.editor.currentTheme().id, QStringLiteral("ocean"));
}

TEST(CurrentTheme, IsTheDefaultThemeOfTheSettingsWhereTheMapHasNone) {
  EditorRig rig(mapOf({0}));
  MindMap map = rig.map();
  map.canvas.themeId.reset();
  rig.editor.setMindMap(map);
  EXPECT_EQ(rig.editor.currentTheme().id, QStringLiteral("purple"));
  rig.settings.setText(settings::defaultTheme, QStringLiteral("neon"));
  EXPECT_EQ(rig.editor.currentTheme().id, QStringLiteral("neon"));
  rig.settings.setText(settings::defaultTheme, QStringLiteral("custom_1"));
  EXPECT_EQ(rig.editor.currentTheme().id, QStringLiteral("purple"));
}

TEST(CurrentTheme, UnknownAndCustomIdsFallToPurpleAndNotToTheSetting) {
  for (const char* id : {"custom_4711", "nothing", ""}) {
    EditorRig rig(themed(mapOf({0}), id));
    rig.settings.setText(settings::defaultTheme, QStringLiteral("neon"));
    EXPECT_EQ(rig.editor.currentTheme().id, QStringLiteral("purple")) << id;
  }
}

TEST(CurrentTheme, SelectedThemeOfTheSettingsIsNotLookedAt) {
  EditorRig rig(themed(mapOf({0}), "ocean"));
  rig.settings.setText(settings::selectedTheme, QStringLiteral("neon"));
  EXPECT_EQ(rig.editor.currentTheme().id, QStringLiteral("ocean"));
}

TEST(StyleForDepth, TakesTheRowAndDropsTheGradient) {
  EditorRig rig(themed(mapOf({0}), "sunset"));
  const NodeStyle style = rig.editor.styleForDepth(2);
  EXPECT_EQ(colors(style), "#FF8F00 #E65100 #3E2200");
  EXPECT_EQ(style.shape, NodeStyle::Shape::roundedRect);
  EXPECT_EQ(style.iconSize, 16.0);
  EXPECT_FALSE(style.bold);
  EXPECT_FALSE(style.italic);
  EXPECT_FALSE(style.fillGradient.has_value());
}

TEST(StyleForDepth, LastRowServesDeeperLevels) {
  EditorRig rig(themed(mapOf({0}), "sunset"));
  EXPECT_EQ(colors(rig.editor.styleForDepth(4)), "#FFE0B2 #FFB74D #4E342E");
  EXPECT_EQ(rig.editor.styleForDepth(4), rig.editor.styleForDepth(400));
}

TEST(StyleForDepth, PlainHasOneRowForEveryDepth) {
  EditorRig rig(themed(mapOf({0}), "default"));
  for (const int depth : {0, 1, 7}) EXPECT_EQ(colors(rig.editor.styleForDepth(depth)), "#F0F0F0 #333333 #000000");
}

TEST(NewEdgeStyle, IsTheDefaultInTheThemesColor) {
  EditorRig rig(themed(mapOf({0}), "aurora"));
  const EdgeStyle style = rig.editor.newEdgeStyle();
  EXPECT_EQ(style.color, QStringLiteral("#7C4DFF"));
  EXPECT_FALSE(style.dashed);
  EXPECT_EQ(style.arrowHead, EdgeStyle::ArrowHead::triangle);
  EXPECT_EQ(style.taper.startWidth, 6.0);
  EXPECT_EQ(style.taper.endWidth, 2.0);
  EXPECT_EQ(style.taper.easing, EdgeStyle::TaperEasing::quadraticIn);
}

TEST(NewContent, InAMapOfACustomThemeIsLavender) {
  EditorRig rig(themed(mapOf({0}), "custom_9"));
  rig.editor.createFreeNode(1000.0, 0.0);
  rig.editor.createChild(topicId(0));
  EXPECT_EQ(colors(rig.node(1).style), lavenderRoot);
  EXPECT_EQ(colors(rig.node(2).style), "#7B1FA2 #4A148C #FFFFFF");
  EXPECT_EQ(edgeColor(rig, 0), "#7B5EA7");
}

TEST(ApplyTheme, ColorsEveryTopicByDepthAndEveryEdge) {
  EditorRig rig(mapOf({0, 1, 2, 3, 4, 5, 6}, {{0, 1}, {1, 2}, {2, 3}, {3, 4}, {4, 5}}));
  rig.editor.applyTheme(theme("candy"));
  EXPECT_EQ(colors(rig.node(0).style), "#FF6B9D #C9266F #FFFFFF #FFC4E0");
  EXPECT_EQ(colors(rig.node(1).style), "#FFA07A #E67C5A #FFFFFF #FFD4B8");
  EXPECT_EQ(colors(rig.node(4).style), "#4D96FF #1E5FBF #FFFFFF #B4D4FF");
  EXPECT_EQ(colors(rig.node(5).style), "#4D96FF #1E5FBF #FFFFFF #B4D4FF");
  EXPECT_EQ(colors(rig.node(6).style), "#FF6B9D #C9266F #FFFFFF #FFC4E0");
  for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(edgeColor(rig, i), "#C05DC5");
  EXPECT_EQ(rig.map().canvas.background, QStringLiteral("#FFF0F7"));
  EXPECT_EQ(rig.map().canvas.themeId, QStringLiteral("candy"));
  EXPECT_TRUE(rig.map().canvas.grid);
  EXPECT_TRUE(rig.isStamped());
}

TEST(ApplyTheme, IsOneStep) {
  EditorRig rig(mapOf({0, 1}, {{0, 1}}));
  const MindMap before = rig.map();
  QSignalSpy changes(&rig.editor, &MindMapViewModel::mindMapChanged);
  rig.editor.applyTheme(theme("neon"));
  EXPECT_EQ(rig.editor.undoCount(), 1);
  EXPECT_TRUE(rig.editor.isDirty());
  EXPECT_GE(changes.count(), 1);
  rig.editor.undo();
  EXPECT_TRUE(isVeryMap(rig.map(), before));
}

TEST(ApplyTheme, EmptyMapTakesBackgroundAndThemeIdAndCanBeUndone) {
  EditorRig rig(mapOf({}));
  rig.editor.applyTheme(theme("blueprint"));
  EXPECT_EQ(rig.map().canvas.background, QStringLiteral("#1A2332"));
  EXPECT_EQ(rig.map().canvas.themeId, QStringLiteral("blueprint"));
  EXPECT_TRUE(rig.isStamped());
  rig.editor.undo();
  EXPECT_EQ(rig.map().canvas.background, QStringLiteral("#F8F0FF"));
  EXPECT_EQ(rig.map().canvas.themeId, QStringLiteral("purple"));
}

TEST(ApplyTheme, ClassicThemeRemovesGradients) {
  EditorRig rig(mapOf({0, 1}, {{0, 1}}));
  rig.editor.applyTheme(theme("sunset"));
  EXPECT_EQ(rig.node(1).style.fillGradient, QStringLiteral("#FF8F00"));
  rig.editor.applyTheme(theme("forest"));
  for (std::size_t i = 0; i < 2; ++i) EXPECT_FALSE(rig.node(i).style.fillGradient.has_value());
  EXPECT_EQ(colors(rig.node(1).style), "#2E7D32 #1E5631 #FFFFFF");
}

TEST(ApplyTheme, LeavesWhatIsNoColorAndWhatIsNoTree) {
  MindMap map = mapOf({0, 1}, {{0, 1}});
  map.nodes.update(0, [](Node& node) {
    node.style.shape = NodeStyle::Shape::ellipse;
    node.style.iconSize = 31.0;
    node.style.bold = node.style.italic = true;
  });
  map.edges.update(0, [](Edge& edge) {
    edge.style.dashed = true;
    edge.style.arrowHead = EdgeStyle::ArrowHead::none;
    edge.style.taper = {9.0, 1.0, EdgeStyle::TaperEasing::cubicIn};
    edge.label = QStringLiteral("x");
  });
  map.relationships = {Relationship{edgeId(7), topicId(0), topicId(1), {}, QStringLiteral("#010203"), {}}};
  map.regions = {Region{edgeId(8), {}, QStringLiteral("#040506"), QRectF(1, 2, 3, 4)}};
  EditorRig rig(map);
  rig.editor.applyTheme(theme("teal"));
  MindMap expected = map;
  expected.canvas.background = QStringLiteral("#F0FAFA");
  expected.canvas.themeId = QStringLiteral("teal");
  const auto give = [](NodeStyle& style, const Theme::NodeColorSet& row) {
    style.fill = row.fill;
    style.stroke = row.stroke;
    style.textColor = row.textColor;
  };
  expected.nodes.update(0, [&](Node& node) { give(node.style, theme("teal").nodeColors[0]); });
  expected.nodes.update(1, [&](Node& node) { give(node.style, theme("teal").nodeColors[1]); });
  expected.edges.update(0, [](Edge& edge) { edge.style.color = QStringLiteral("#00796B"); });
  EXPECT_EQ(rig.map(), expected);
}

TEST(ApplyTheme, StoresTheIdOfACustomThemeAsItIs) {
  Theme custom = theme("mono");
  custom.id = QStringLiteral("custom_ABC");
  EditorRig rig(mapOf({0}));
  rig.editor.applyTheme(custom);
  EXPECT_EQ(rig.map().canvas.themeId, QStringLiteral("custom_ABC"));
  EXPECT_EQ(rig.editor.currentTheme().id, QStringLiteral("purple"));
}

TEST(ApplyTheme, ManualColorSurvivesNewTopicsButNoWholeMapCommand) {
  EditorRig rig(mapOf({0}));
  const auto paint = [&] {
    MindMap map = rig.map();
    map.nodes.update(0, [](Node& node) { node.style.fill = QStringLiteral("#123456"); });
    rig.editor.setMindMap(map);
  };
  paint();
  rig.editor.createChild(topicId(0));
  EXPECT_EQ(rig.node(0).style.fill, QStringLiteral("#123456"));
  rig.editor.applyTheme(theme("ocean"));
  EXPECT_EQ(rig.node(0).style.fill, QStringLiteral("#1A5276"));
  paint();
  rig.editor.recolorByBranch();
  EXPECT_EQ(rig.node(0).style.fill, QStringLiteral("#37474F"));
  paint();
  rig.editor.recolorByTheme();
  EXPECT_EQ(rig.node(0).style.fill, QStringLiteral("#4A148C"));
}

TEST(RecolorByBranch, LoneRootGetsItsRowAndNothingElseChanges) {
  EditorRig rig(themed(mapOf({0}), "ocean"));
  const TimePoint stamp = rig.map().updatedAt;
  rig.editor.recolorByBranch();
  MindMap expected = themed(mapOf({0}), "ocean");
  expected.nodes.update(0, [](Node& node) {
    node.style.fill = QStringLiteral("#37474F");
    node.style.stroke = QStringLiteral("#263238");
    node.style.textColor = QStringLiteral("#FFFFFF");
  });
  EXPECT_EQ(rig.map(), expected);
  EXPECT_EQ(rig.map().updatedAt, stamp);
  EXPECT_EQ(rig.editor.undoCount(), 1);
  EXPECT_TRUE(rig.editor.isDirty());
}

TEST(RecolorByBranch, NinthBranchIsBlueAgain) {
  std::vector<int> numbers = {0};
  std::vector<Ends> ends;
  for (int i = 1; i <= 9; ++i) {
    numbers.push_back(i);
    ends.push_back({0, i});
  }
  EditorRig rig(mapOf(numbers, ends));
  rig.editor.recolorByBranch();
  const char* fills[] = {"#1565C0", "#2E7D32", "#EF6C00", "#7B1FA2", "#C62828",
                         "#00796B", "#C2185B", "#F57F17", "#1565C0"};
  const char* strokes[] = {"#0D47A1", "#1B5E20", "#E65100", "#4A148C", "#8E0000",
                           "#004D40", "#880E4F", "#E65100", "#0D47A1"};
  for (std::size_t i = 0; i < 9; ++i) {
    EXPECT_EQ(rig.node(i + 1).style.fill, QString::fromLatin1(fills[i]));
    EXPECT_EQ(edgeColor(rig, i), strokes[i]);
  }
}

TEST(RecolorByBranch, RowGoesByTheDepthBelowTheBranchHead) {
  // 0 is the root, 1 the branch's top topic, and 8 is 7 levels below it.
  std::vector<int> numbers = {0};
  std::vector<Ends> ends;
  for (int i = 1; i <= 8; ++i) {
    numbers.push_back(i);
    ends.push_back({i - 1, i});
  }
  EditorRig rig(mapOf(numbers, ends));
  rig.editor.recolorByBranch();
  const char* rows[] = {branchRoot,
                        blueHead,
                        "#1E88E5 #1565C0 #FFFFFF",
                        "#64B5F6 #1E88E5 #0D2F4F",
                        "#BBDEFB #64B5F6 #0D2F4F",
                        "#E3F2FD #BBDEFB #0D2F4F"};
  for (std::size_t i = 0; i <= 8; ++i) EXPECT_EQ(colors(rig.node(i).style), rows[std::min<std::size_t>(i, 5)]) << i;
}

TEST(RecolorByBranch, EachRootNumbersItsOwnBranches) {
  EditorRig rig(mapOf({0, 1, 2, 3}, {{0, 1}, {2, 3}}));
  rig.editor.recolorByBranch();
  EXPECT_EQ(colors(rig.node(0).style), branchRoot);
  EXPECT_EQ(colors(rig.node(1).style), blueHead);
  EXPECT_EQ(colors(rig.node(2).style), branchRoot);
  EXPECT_EQ(colors(rig.node(3).style), blueHead);
}

TEST(RecolorByBranch, BranchesStandInTheOrderOfTheEdges) {
  EditorRig rig(mapOf({0, 1, 2}, {{0, 2}, {0, 1}}));
  rig.editor.recolorByBranch();
  EXPECT_EQ(colors(rig.node(2).style), blueHead);
  EXPECT_EQ(colors(rig.node(1).style), "#2E7D32 #1B5E20 #FFFFFF");
}

TEST(RecolorByBranch, ClearsGradients) {
  EditorRig rig(mapOf({0, 1}, {{0, 1}}));
  rig.editor.applyTheme(theme("neon"));
  rig.editor.recolorByBranch();
  for (std::size_t i = 0; i < 2; ++i) EXPECT_FALSE(rig.node(i).style.fillGradient.has_value());
}

TEST(RecolorByBranch, LeavesTopicsAndEdgesThatNoRootReaches) {
  EditorRig rig(mapOf({0, 1, 2}, {{1, 2}, {2, 1}}));
  rig.editor.recolorByBranch();
  EXPECT_EQ(rig.node(1), topic(1));
  EXPECT_EQ(rig.edge(0), edgeBetween(0, 1, 2));
  EXPECT_EQ(colors(rig.node(0).style), branchRoot);
}

TEST(RecolorByBranch, TopicOfTwoBranchesKeepsTheLaterRow) {
  // 3 is reached from the branches 1 and 2, and 4 is below it.
  EditorRig rig(mapOf({0, 1, 2, 3, 4}, {{0, 1}, {0, 2}, {1, 3}, {2, 3}, {3, 4}}));
  rig.editor.recolorByBranch();
  EXPECT_EQ(colors(rig.node(1).style), blueHead);
  EXPECT_EQ(colors(rig.node(3).style), "#43A047 #2E7D32 #FFFFFF");
  EXPECT_EQ(colors(rig.node(4).style), "#81C784 #43A047 #1B3A1B");
  EXPECT_EQ(edgeColor(rig, 2), "#2E7D32");
  EXPECT_EQ(edgeColor(rig, 3), "#2E7D32");
}

TEST(RecolorByBranch, TopicOfTwoRootsKeepsTheRowOfTheLaterRoot) {
  // 4 is the second branch of root 0 and the first of root 1.
  EditorRig rig(mapOf({0, 1, 3, 4}, {{0, 3}, {0, 4}, {1, 4}}));
  rig.editor.recolorByBranch();
  EXPECT_EQ(colors(rig.node(3).style), blueHead);
}

TEST(RecolorByBranch, DoubledEdgeFromTheRootMakesTwoBranches) {
  EditorRig rig(mapOf({0, 1, 2}, {{0, 1}, {0, 1}, {0, 2}}));
  rig.editor.recolorByBranch();
  EXPECT_EQ(colors(rig.node(1).style), "#2E7D32 #1B5E20 #FFFFFF");
  EXPECT_EQ(colors(rig.node(2).style), "#EF6C00 #E65100 #FFFFFF");
}

TEST(RecolorByBranch, BackgroundAndThemeStay) {
  EditorRig rig(themed(mapOf({0, 1}, {{0, 1}}), "ocean"));
  const CanvasConfig canvas = rig.map().canvas;
  const TimePoint stamp = rig.map().updatedAt;
  rig.editor.recolorByBranch();
  EXPECT_EQ(rig.map().canvas, canvas);
  EXPECT_EQ(rig.map().updatedAt, stamp);
  EXPECT_EQ(rig.editor.undoCount(), 1);
}

TEST(RecolorByBranch, EdgeToAMissingTopicTakesTheColorOfItsBranch) {
  EditorRig rig(mapOf({0}, {{0, 99}}));
  rig.editor.recolorByBranch();
  EXPECT_EQ(edgeColor(rig, 0), "#0D47A1");
}

TEST(RecolorByTheme, GivesLavenderWhateverThemeTheMapHas) {
  EditorRig rig(mapOf({0, 1}, {{0, 1}}));
  rig.editor.applyTheme(theme("ocean"));
  const TimePoint stamp = rig.map().updatedAt;
  rig.clock.advance(std::chrono::seconds(60));
  rig.editor.recolorByTheme();
  EXPECT_EQ(colors(rig.node(0).style), lavenderRoot);
  EXPECT_EQ(colors(rig.node(1).style), "#7B1FA2 #4A148C #FFFFFF");
  EXPECT_EQ(edgeColor(rig, 0), "#7B5EA7");
  EXPECT_EQ(rig.map().canvas.background, QStringLiteral("#F0F7FF"));
  EXPECT_EQ(rig.map().canvas.themeId, QStringLiteral("ocean"));
  EXPECT_EQ(rig.map().updatedAt, stamp);
  EXPECT_EQ(rig.editor.undoCount(), 2);
}

TEST(RecolorByTheme, DefaultThemeOfTheSettingsIsNotLookedAt) {
  EditorRig rig(mapOf({0}));
  rig.settings.setText(settings::defaultTheme, QStringLiteral("ocean"));
  rig.editor.recolorByTheme();
  EXPECT_EQ(colors(rig.node(0).style), lavenderRoot);
}

TEST(RecolorByTheme, TakesTheSelectedThemeOfTheSettingsWithItsGradients) {
  EditorRig rig(mapOf({0}));
  rig.settings.setText(settings::selectedTheme, QStringLiteral("coral"));
  rig.editor.recolorByTheme();
  EXPECT_EQ(colors(rig.node(0).style), "#C0392B #922B21 #FFFFFF #E74C3C");
}

TEST(RecolorByTheme, UnknownSelectedThemeFallsToTheFirstOfTheTable) {
  for (const char* id : {"custom_1", "nothing", ""}) {
    EditorRig rig(mapOf({0}, {{0, 1}}));
    rig.settings.setText(settings::selectedTheme, QString::fromLatin1(id));
    rig.editor.recolorByTheme();
    EXPECT_EQ(colors(rig.node(0).style), "#1A5276 #0E3652 #FFFFFF") << id;
    EXPECT_EQ(edgeColor(rig, 0), "#3B82A0") << id;
  }
}

TEST(RecolorByTheme, RemovesGradientsThatTheThemeDoesNotHave) {
  EditorRig rig(mapOf({0}));
  rig.editor.applyTheme(theme("neon"));
  rig.editor.recolorByTheme();
  EXPECT_FALSE(rig.node(0).style.fillGradient.has_value());
}

TEST(ThemeCommands, WriteNoSetting) {
  EditorRig rig(mapOf({0, 1}, {{0, 1}}));
  rig.editor.applyTheme(theme("neon"));
  rig.editor.recolorByBranch();
  rig.editor.recolorByTheme();
  EXPECT_TRUE(rig.settings.isEmpty());
}
