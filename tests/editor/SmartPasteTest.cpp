#include "editor/CommandRig.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

constexpr auto single = SmartPasteMode::singleNode;
constexpr auto siblings = SmartPasteMode::multipleNodes;
constexpr auto outline = SmartPasteMode::nestedOutline;
constexpr SmartPasteMode allModes[] = {single, siblings, outline};

// "a(b c)" for a root a with the children b and c: the titles of the whole map.
QString treeText(MindMapViewModel& editor) {
  const TreeInfo& tree = editor.treeInfo();
  const auto write = [&](const auto& self, const QUuid& id) -> QString {
    QStringList below;
    for (const QUuid& child : tree.children(id)) below.append(self(self, child));
    const QString title = editor.nodeByID(id)->title;
    return below.isEmpty() ? title : title + QLatin1Char('(') + below.join(QLatin1Char(' ')) + QLatin1Char(')');
  };
  QStringList roots;
  for (const QUuid& root : tree.roots()) roots.append(write(write, root));
  return roots.join(QLatin1Char(' '));
}

struct PasteRig : CommandRig {
  using CommandRig::CommandRig;
  void paste(const char16_t* text, SmartPasteMode mode, std::optional<QUuid> parent = std::nullopt) {
    editor.smartPaste(QString::fromUtf16(text), mode, parent);
  }
  std::vector<QPointF> positionsFrom(std::size_t first) const {
    std::vector<QPointF> result;
    for (std::size_t i = first; i < map().nodes.size(); ++i) result.push_back(position(i));
    return result;
  }
};

}  // namespace

TEST(SmartPaste, BlankTextDoesNothing) {
  for (const SmartPasteMode mode : allModes) {
    PasteRig rig(mapOf({0}));
    rig.select({0});
    rig.paste(u"", mode);
    rig.paste(u" \n\t\r\n\n", mode, topicId(0));
    rig.expectNothing();
    EXPECT_FALSE(rig.editor.isDirty());
  }
}

TEST(SmartPaste, TellsOfSnapshotMapSelectionAndFlagInThisOrder) {
  for (const SmartPasteMode mode : allModes) {
    PasteRig rig(mapOf({0}));
    rig.paste(u"a\nb", mode);
    EXPECT_EQ(rig.log.take(), QStringLiteral("history dirty mindMap nodes dirty"));
  }
}

TEST(SmartPaste, IsUndoneInOneStepAndOnlyTheSingleTopicSetsTheDate) {
  for (const SmartPasteMode mode : allModes) {
    PasteRig rig(mapOf({0}));
    rig.settle();
    rig.paste(u"a\n  b\nc", mode, topicId(0));
    rig.expectChange(1, mode == single);
    EXPECT_TRUE(rig.editor.isDirty());
  }
}

TEST(SmartPaste, SelectsTheNewTopicsAloneAndLeavesTheOtherSelectionsBe) {
  PasteRig rig(mapOf({0, 1}, {{0, 1}}));
  rig.select({0, 1});
  rig.editor.setSelectedEdgeIDs({edgeId(0)});
  rig.editor.setSelectedRegionID(topicId(50));
  rig.paste(u"a\nb", siblings);
  EXPECT_EQ(rig.selected(), IdSet({rig.node(2).id, rig.node(3).id}));
  EXPECT_EQ(rig.editor.selectedEdgeIDs(), IdSet({edgeId(0)}));
  EXPECT_EQ(rig.editor.selectedRegionID(), topicId(50));
}

TEST(SmartPaste, NewTopicsHaveNothingButTitlePlaceAndStyle) {
  for (const SmartPasteMode mode : allModes) {
    PasteRig rig;
    rig.paste(u"a", mode);
    Node expected;
    expected.id = rig.node(0).id;
    expected.title = QStringLiteral("a");
    expected.position = QPointF(400, 300);
    expected.style = mode == single ? NodeStyle::defaultStyle() : rig.editor.styleForDepth(1);
    EXPECT_EQ(rig.node(0), expected);
    EXPECT_FALSE(expected.id.isNull());
  }
}

TEST(SmartPaste, NewEdgesHaveTheColourOfTheTheme) {
  for (const SmartPasteMode mode : allModes) {
    MindMap map = mapOf({0});
    map.canvas.themeId = QStringLiteral("forest");
    PasteRig rig(map);
    rig.paste(u"a", mode, topicId(0));
    ASSERT_EQ(rig.map().edges.size(), 1u);
    EdgeStyle style{builtInTheme(QStringLiteral("forest"))->edgeColor,
                    false,
                    EdgeStyle::ArrowHead::triangle,
                    {6.0, 2.0, EdgeStyle::TaperEasing::quadraticIn}};
    EXPECT_EQ(rig.edge(0), (Edge{rig.edge(0).id, topicId(0), rig.node(1).id, QString(), style, std::nullopt}));
  }
}

// --- Single node ---

TEST(SmartPaste, ASingleTopicKeepsItsInnerLinesAndLosesTheWhiteSpaceAround) {
  PasteRig rig;
  rig.paste(u"\n\u00A0 \u2028 a \n\n\t- b\r\nc \u0085", single);
  EXPECT_EQ(rig.node(0).title, QStringLiteral("a \n\n\t- b\r\nc"));
  EXPECT_EQ(rig.position(0), QPointF(400, 300));
  EXPECT_EQ(rig.node(0).style, NodeStyle::defaultStyle());
  EXPECT_TRUE(rig.map().edges.empty());
}

TEST(SmartPaste, ASingleTopicStandsBesideItsAnchor) {
  PasteRig rig(mapOf({0}));
  rig.editor.setMindMap([] {
    MindMap map = mapOf({});
    map.nodes = {topic(0, 10.5, -20.0)};
    return map;
  }());
  rig.paste(u"a", single, topicId(0));
  EXPECT_EQ(rig.position(1), QPointF(190.5, -20.0));
  EXPECT_EQ(treeText(rig.editor), QStringLiteral("Topic 0(a)"));
}

TEST(SmartPaste, AnAnchorThatIsGoneStillTakesTheEdge) {
  for (const SmartPasteMode mode : allModes) {
    PasteRig rig(mapOf({0}));
    rig.paste(u"a\nb", mode, missingId());
    EXPECT_EQ(rig.position(1), QPointF(400, 300));
    ASSERT_GE(rig.map().edges.size(), 1u);
    EXPECT_EQ(rig.edge(0).from, missingId());
    EXPECT_EQ(rig.edge(0).to, rig.node(1).id);
  }
}

// --- The anchor ---

TEST(SmartPaste, TheGivenParentComesBeforeTheSelection) {
  PasteRig rig(mapOf({0, 1}));
  rig.select({0});
  rig.paste(u"a", siblings, topicId(1));
  EXPECT_EQ(rig.edge(0).from, topicId(1));
}

TEST(SmartPaste, WithoutAParentTheFirstSelectedTopicIsTheAnchor) {
  PasteRig rig(mapOf({0, 1}));
  rig.select({1, 0});
  const QUuid first = *rig.editor.firstSelectedNode();
  rig.paste(u"a", siblings);
  EXPECT_EQ(rig.edge(0).from, first);
}

// --- Multiple nodes ---

TEST(SmartPaste, TwoLinesWithNothingSelectedStandAloneBelowEachOther) {
  PasteRig rig;
  rig.paste(u"a\nb", siblings);
  EXPECT_EQ(treeText(rig.editor), QStringLiteral("a b"));
  EXPECT_EQ(rig.positionsFrom(0), (std::vector<QPointF>{{400, 300}, {400, 360}}));
  EXPECT_EQ(rig.selected(), IdSet({rig.node(0).id, rig.node(1).id}));
  EXPECT_TRUE(rig.map().edges.empty());
  EXPECT_EQ(rig.node(0).style, rig.editor.styleForDepth(1));
}

TEST(SmartPaste, SiblingsFanOutBesideTheirAnchor) {
  PasteRig rig(mapOf({0}));
  rig.paste(u"  - a \n\n\tb\u00A0\nc", siblings, topicId(0));
  EXPECT_EQ(rig.node(1).title, QStringLiteral("- a"));
  EXPECT_EQ(rig.node(2).title, QStringLiteral("b\u00A0"));
  EXPECT_EQ(rig.node(3).title, QStringLiteral("c"));
  EXPECT_EQ(rig.positionsFrom(1), (std::vector<QPointF>{{180, -60}, {180, 0}, {180, 60}}));
  EXPECT_EQ(rig.editor.treeInfo().children(topicId(0)).size(), 3u);
}

TEST(SmartPaste, SiblingsTakeTheStyleOfOneLevelBelowTheirAnchor) {
  PasteRig rig(mapOf({0, 1, 2}, {{0, 1}, {1, 2}}));
  rig.paste(u"a", siblings, topicId(0));
  rig.paste(u"b", siblings, topicId(2));
  rig.paste(u"c", siblings, missingId());
  EXPECT_EQ(rig.node(3).style, rig.editor.styleForDepth(1));
  EXPECT_EQ(rig.node(4).style, rig.editor.styleForDepth(3));
  EXPECT_EQ(rig.node(5).style, rig.editor.styleForDepth(1));
  EXPECT_NE(rig.node(3).style, rig.node(4).style);
}

// --- Nested outline ---

TEST(SmartPaste, IndentsMakeAnOutline) {
  PasteRig rig;
  rig.paste(u"a\n  b\n c", outline);
  EXPECT_EQ(treeText(rig.editor), QStringLiteral("a(b c)"));
}

TEST(SmartPaste, DeeperLinesNest) {
  PasteRig rig;
  rig.paste(u"a\n b\n  c\n d\n\te\n\t\tf\n   g", outline);
  EXPECT_EQ(treeText(rig.editor), QStringLiteral("a(b(c) d e(f(g)))"));
}

TEST(SmartPaste, ABlankAndATabCountOneEach) {
  PasteRig rig;
  rig.paste(u"a\n\tb\n c\n\t d\n\t\te", outline);
  EXPECT_EQ(treeText(rig.editor), QStringLiteral("a(b c(d e))"));
}

TEST(SmartPaste, AMoreIndentedFirstLineTakesAllOthers) {
  PasteRig rig;
  rig.paste(u"    a\n  b\nc\n  d", outline);
  EXPECT_EQ(treeText(rig.editor), QStringLiteral("a(b c(d))"));
}

TEST(SmartPaste, WithAnAnchorEveryLineStaysBelowIt) {
  PasteRig rig(mapOf({0}));
  rig.paste(u"  a\nb\n c", outline, topicId(0));
  EXPECT_EQ(treeText(rig.editor), QStringLiteral("Topic 0(a b(c))"));
}

TEST(SmartPaste, OneDashIsDroppedAndNothingElse) {
  PasteRig rig;
  rig.paste(u"- a\n  - - b\n  * c\n  -d\n  -\n  -  e", outline);
  EXPECT_EQ(rig.node(0).title, QStringLiteral("a"));
  EXPECT_EQ(rig.node(1).title, QStringLiteral("- b"));
  EXPECT_EQ(rig.node(2).title, QStringLiteral("* c"));
  EXPECT_EQ(rig.node(3).title, QStringLiteral("-d"));
  EXPECT_EQ(rig.node(4).title, QStringLiteral("-"));
  EXPECT_EQ(rig.node(5).title, QStringLiteral(" e"));
}

TEST(SmartPaste, OutlinesFallWithTheCountOfAllTopicsMade) {
  PasteRig rig;
  rig.paste(u"a\n  b\n    c\n  d", outline);
  EXPECT_EQ(rig.positionsFrom(0), (std::vector<QPointF>{{400, 300}, {580, 300}, {760, 360}, {580, 420}}));

  PasteRig below(mapOf({0}));
  below.paste(u"a\n  b\nc", outline, topicId(0));
  EXPECT_EQ(below.positionsFrom(1), (std::vector<QPointF>{{180, -60}, {360, -60}, {180, 60}}));

  PasteRig gone(mapOf({0}));
  gone.paste(u"a\nb", outline, missingId());
  EXPECT_EQ(gone.positionsFrom(1), (std::vector<QPointF>{{400, 300}, {400, 360}}));
}

TEST(SmartPaste, OutlineStylesFollowTheDepthOfTheParent) {
  PasteRig rig(mapOf({0, 1}, {{0, 1}}));
  rig.paste(u"a\n b\n  c\n   d\n    e\n     f\n      g", outline, topicId(1));
  for (std::size_t i = 2; i < 9; ++i) EXPECT_EQ(rig.node(i).style, rig.editor.styleForDepth(static_cast<int>(i))) << i;

  PasteRig free;
  free.paste(u"a\n b\n  c", outline);
  EXPECT_EQ(free.node(0).style, free.editor.styleForDepth(1));
  EXPECT_EQ(free.node(1).style, free.editor.styleForDepth(1));
  EXPECT_EQ(free.node(2).style, free.editor.styleForDepth(2));
}

TEST(SmartPaste, BelowACycleEveryParentLiesAtDepthZero) {
  PasteRig rig(mapOf({0, 1}, {{0, 1}, {1, 0}}));
  rig.paste(u"a\n b\n  c\n   d", outline, topicId(0));
  for (std::size_t i = 2; i < 6; ++i) EXPECT_EQ(rig.node(i).style, rig.editor.styleForDepth(1)) << i;
}

// --- Size ---

TEST(SmartPaste, HundredThousandLinesOfAnyShape) {
  constexpr int count = 100'000;
  QString flat;
  QString zigzag;
  for (int i = 0; i < count; ++i) {
    flat += QStringLiteral("line\n");
    zigzag += QString(i % 100, u' ') + QStringLiteral("- line\n");
  }
  PasteRig rig(mapOf({0}));
  rig.editor.smartPaste(flat, siblings, topicId(0));
  EXPECT_EQ(rig.editor.treeInfo().childCount(topicId(0)), std::size_t{count});
  rig.editor.undo();
  rig.editor.smartPaste(zigzag, outline, topicId(0));
  EXPECT_EQ(rig.map().nodes.size(), count + 1u);
  EXPECT_EQ(rig.editor.treeInfo().maxDepth(), 100);
  EXPECT_EQ(rig.editor.treeInfo().childCount(topicId(0)), std::size_t{count / 100});
}

TEST(SmartPaste, AChainOfThousandsOfLevels) {
  QString text;
  for (int i = 0; i < 5000; ++i) text += QString(i, u' ') + QStringLiteral("x\n");
  PasteRig rig;
  rig.editor.smartPaste(text, outline, std::nullopt);
  EXPECT_EQ(rig.editor.treeInfo().maxDepth(), 4999);
}

TEST(SmartPaste, OneLineOfFiftyMegabytes) {
  for (const SmartPasteMode mode : allModes) {
    PasteRig rig;
    rig.editor.smartPaste(QString(50'000'000, u' ') + QString(50'000'000, u'x') + QStringLiteral("\ny"), mode,
                          std::nullopt);
    EXPECT_EQ(rig.map().nodes.size(), mode == single ? 1u : 2u);
    EXPECT_EQ(rig.node(0).title.size(), mode == single ? 50'000'002 : 50'000'000);
  }
}
