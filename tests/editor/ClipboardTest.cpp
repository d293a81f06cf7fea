#include "editor/CommandRig.h"
#include "editor/WindowCommands.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

MindMap family() {
  MindMap map = mapOf({}, {{0, 1}, {1, 2}, {0, 3}});
  map.nodes = {topic(0, 0.0, 0.0), topic(1, 180.0, 10.0), topic(2, 360.0, 20.0), topic(3, 180.0, 90.0)};
  return map;
}

}  // namespace

TEST(Copy, TakesTopicsInMapOrderAndOnlyEdgesWithinTheSelection) {
  CommandRig rig(family());
  rig.select({2, 1});
  rig.editor.copySelection();
  rig.expectNothing();
  EXPECT_FALSE(rig.editor.isDirty());
  ASSERT_EQ(rig.editor.copiedNodes().size(), 2u);
  EXPECT_EQ(rig.editor.copiedNodes()[0], rig.node(1));
  EXPECT_EQ(rig.editor.copiedNodes()[1], rig.node(2));
  ASSERT_EQ(rig.editor.copiedEdges().size(), 1u);
  EXPECT_EQ(rig.editor.copiedEdges()[0], rig.edge(1));
}

TEST(Copy, WithNothingSelectedKeepsTheClipboard) {
  CommandRig rig(family());
  rig.select({0, 1});
  rig.editor.copySelection();
  rig.select({});
  rig.editor.copySelection();
  EXPECT_EQ(rig.editor.copiedNodes().size(), 2u);
  EXPECT_EQ(rig.editor.copiedEdges().size(), 1u);
  rig.select({77});
  rig.editor.copySelection();
  EXPECT_EQ(rig.editor.copiedNodes().size(), 2u);
  EXPECT_EQ(rig.editor.copiedEdges().size(), 1u);
}

TEST(Copy, OfALoneTopicDropsTheEdgesOfTheCopyBefore) {
  CommandRig rig(family());
  rig.select({0, 1});
  rig.editor.copySelection();
  rig.select({3});
  rig.editor.copySelection();
  EXPECT_EQ(rig.editor.copiedNodes().size(), 1u);
  EXPECT_TRUE(rig.editor.copiedEdges().empty());
}

TEST(Paste, WithAnEmptyClipboardDoesNothing) {
  CommandRig rig(family());
  rig.editor.pasteClipboard();
  rig.expectNothing();
}

TEST(Paste, KeepsTheShapeOfASubtreeAndNoLinkToItsSource) {
  CommandRig rig(family());
  rig.select({1, 2});
  rig.editor.setSelectedEdgeIDs({edgeId(0)});
  rig.editor.copySelection();
  rig.settle();
  rig.editor.pasteClipboard();
  EXPECT_EQ(rig.log.take(), QStringLiteral("history dirty mindMap nodes edges"));
  ASSERT_EQ(rig.map().nodes.size(), 6u);
  ASSERT_EQ(rig.map().edges.size(), 4u);
  const Node first = rig.node(4);
  const Node second = rig.node(5);
  EXPECT_NE(first.id, topicId(1));
  EXPECT_NE(second.id, topicId(2));
  EXPECT_NE(first.id, second.id);
  EXPECT_EQ(first.title, QStringLiteral("Topic 1"));
  EXPECT_EQ(first.position, QPointF(220.0, 50.0));
  EXPECT_EQ(second.position, QPointF(400.0, 60.0));
  EXPECT_NE(rig.edge(3).id, edgeId(1));
  EXPECT_EQ(rig.edge(3).from, first.id);
  EXPECT_EQ(rig.edge(3).to, second.id);
  EXPECT_EQ(rig.selected(), (IdSet{first.id, second.id}));
  EXPECT_TRUE(rig.editor.selectedEdgeIDs().empty());
  EXPECT_EQ(rig.editor.treeInfo().parent(first.id), std::nullopt);
  rig.expectChange(1, true);
}

TEST(Paste, CarriesTitleNotesStyleAndIconAndNothingElse) {
  MindMap map = family();
  map.nodes.update(1, [](Node& node) {
    node.notes = QStringLiteral("Notes");
    node.style.bold = true;
    node.style.fillGradient = QStringLiteral("#010203");
    node.icon = IconRef{IconRef::IconType::sfSymbol, QStringLiteral("star")};
    node.badge = Badge::done;
    node.aiGenerated = true;
    node.emoji = QStringLiteral("🎈");
    node.url = QStringLiteral("https://example.org");
    node.imageData = QStringLiteral("aGVsbG8=");
  });
  CommandRig rig(map);
  rig.select({1});
  rig.editor.duplicateSelection();
  const Node source = rig.node(1);
  const Node copy = rig.node(4);
  EXPECT_EQ(copy.title, source.title);
  EXPECT_EQ(copy.notes, QStringLiteral("Notes"));
  EXPECT_EQ(copy.style, source.style);
  EXPECT_EQ(copy.icon, source.icon);
  EXPECT_EQ(copy.badge, std::nullopt);
  EXPECT_EQ(copy.aiGenerated, std::nullopt);
  EXPECT_EQ(copy.emoji, std::nullopt);
  EXPECT_EQ(copy.url, std::nullopt);
  EXPECT_EQ(copy.imageData, std::nullopt);
}

TEST(Paste, CarriesLabelStyleAndBendOfEdges) {
  MindMap map = family();
  map.edges.update(1, [](Edge& edge) {
    edge.label = QStringLiteral("because");
    edge.style.dashed = true;
    edge.controlPointOffset = QPointF(5.0, 6.0);
  });
  CommandRig rig(map);
  rig.select({1, 2});
  rig.editor.duplicateSelection();
  EXPECT_EQ(rig.edge(3).label, QStringLiteral("because"));
  EXPECT_TRUE(rig.edge(3).style.dashed);
  EXPECT_EQ(rig.edge(3).controlPointOffset, QPointF(5.0, 6.0));
}

TEST(Paste, TwiceLandsOnTheFirstPaste) {
  CommandRig rig(family());
  rig.select({2});
  rig.editor.copySelection();
  rig.editor.pasteClipboard();
  rig.editor.pasteClipboard();
  EXPECT_EQ(rig.node(4).position, QPointF(400.0, 60.0));
  EXPECT_EQ(rig.node(5).position, QPointF(400.0, 60.0));
  EXPECT_EQ(rig.selected(), (IdSet{rig.node(5).id}));
}

TEST(Paste, IsUndoneInOneStep) {
  CommandRig rig(family());
  rig.select({0, 1, 2, 3});
  rig.editor.duplicateSelection();
  EXPECT_EQ(rig.map().nodes.size(), 8u);
  rig.editor.undo();
  EXPECT_TRUE(isVeryMap(rig.map(), rig.before));
}

TEST(Paste, WorksAfterTheSourceWasDeleted) {
  CommandRig rig(family());
  rig.select({1, 2});
  rig.editor.copySelection();
  rig.editor.deleteSelection();
  ASSERT_EQ(rig.map().nodes.size(), 2u);
  rig.editor.pasteClipboard();
  ASSERT_EQ(rig.map().nodes.size(), 4u);
  EXPECT_EQ(rig.node(2).title, QStringLiteral("Topic 1"));
  EXPECT_EQ(rig.editor.treeInfo().parent(rig.node(3).id), rig.node(2).id);
}

TEST(Paste, LeavesRelationshipsRegionsAndTheSelectedRegionAlone) {
  MindMap map = family();
  map.relationships.append({edgeId(50), topicId(1), topicId(2), {}, QStringLiteral("#888888"), {}});
  CommandRig rig(map);
  rig.editor.createRegion(std::nullopt);
  const auto region = rig.editor.selectedRegionID();
  rig.select({1, 2});
  rig.editor.duplicateSelection();
  EXPECT_EQ(rig.map().relationships.size(), 1u);
  EXPECT_EQ(rig.map().regions.size(), 1u);
  EXPECT_EQ(rig.editor.selectedRegionID(), region);
}

TEST(Duplicate, StepsOnByFortyEachTime) {
  CommandRig rig(family());
  rig.select({3});
  rig.editor.duplicateSelection();
  rig.editor.duplicateSelection();
  EXPECT_EQ(rig.node(4).position, QPointF(220.0, 130.0));
  EXPECT_EQ(rig.node(5).position, QPointF(260.0, 170.0));
}

// With nothing selected the paste step still finds what was copied last.
TEST(Duplicate, WithNothingSelectedPastesTheOldClipboard) {
  CommandRig rig(family());
  rig.select({3});
  rig.editor.duplicateSelection();
  rig.select({});
  rig.editor.duplicateSelection();
  EXPECT_EQ(rig.map().nodes.size(), 6u);
  EXPECT_EQ(rig.node(5).position, QPointF(220.0, 130.0));
}

TEST(Duplicate, OfTheWindowIsIgnoredWhileATitleIsEdited) {
  CommandRig rig(family());
  WindowCommands commands(rig.editor);
  rig.select({3});
  rig.editor.setIsEditingInline(true);
  rig.log.take();
  commands.duplicateSelection();
  rig.expectNothing();
  rig.editor.setIsEditingInline(false);
  commands.duplicateSelection();
  EXPECT_EQ(rig.map().nodes.size(), 5u);
}

TEST(Duplicate, OfDoubledIdsAndDanglingEdgesKeepsEveryCopy) {
  MindMap map = mapOf({0, 0, 1}, {{0, 1}, {0, 1}, {1, 88}});
  CommandRig rig(map);
  rig.select({0, 1, 88});
  rig.editor.duplicateSelection();
  EXPECT_EQ(rig.map().nodes.size(), 6u);
  // The edge to the id without a topic is copied, but cannot be pasted.
  EXPECT_EQ(rig.editor.copiedEdges().size(), 3u);
  EXPECT_EQ(rig.map().edges.size(), 5u);
  rig.expectChange(1, true);
}
