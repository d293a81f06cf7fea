#include "editor/CommandRig.h"
#include "editor/WindowCommands.h"
#include "themes/Theme.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

Relationship link(int number, int from, int to) {
  return {edgeId(1000 + number), topicId(from), topicId(to), QString(), QStringLiteral("#888888"), std::nullopt};
}

MindMap linked(MindMap map, const std::vector<Ends>& ends) {
  int number = 0;
  for (const auto& [from, to] : ends) map.relationships.append(link(number++, from, to));
  return map;
}

}  // namespace

TEST(BranchMode, StartsFromTheFirstSelectedTopic) {
  CommandRig rig(mapOf({0, 1}));
  rig.select({1, 0});
  rig.editor.startEdgeCreation();
  EXPECT_TRUE(rig.editor.isEdgeCreationMode());
  EXPECT_EQ(rig.editor.edgeCreationSourceID(), topicId(1));
  EXPECT_EQ(rig.log.take(), QStringLiteral("branchMode branchSource"));
  rig.expectMapUntouched();
}

TEST(BranchMode, StartsWithoutASourceWhenNothingIsSelected) {
  CommandRig rig(mapOf({0}));
  rig.editor.setEdgeCreationSourceID(topicId(0));
  rig.editor.startEdgeCreation();
  EXPECT_TRUE(rig.editor.isEdgeCreationMode());
  EXPECT_EQ(rig.editor.edgeCreationSourceID(), std::nullopt);
}

TEST(BranchMode, ToggleKeySwitchesItOnAndOff) {
  CommandRig rig(mapOf({0}));
  WindowCommands commands(rig.editor);
  rig.select({0});
  commands.toggleEdgeCreation();
  EXPECT_TRUE(rig.editor.isEdgeCreationMode());
  EXPECT_EQ(rig.editor.edgeCreationSourceID(), topicId(0));
  commands.toggleEdgeCreation();
  EXPECT_FALSE(rig.editor.isEdgeCreationMode());
  EXPECT_EQ(rig.editor.edgeCreationSourceID(), std::nullopt);
}

TEST(BranchMode, ToggleKeyIsIgnoredWhileATitleIsEdited) {
  CommandRig rig(mapOf({0}));
  WindowCommands commands(rig.editor);
  rig.editor.setIsEditingInline(true);
  rig.log.take();
  commands.toggleEdgeCreation();
  EXPECT_FALSE(rig.editor.isEdgeCreationMode());
  rig.expectNothing();
}

TEST(CreateEdge, ConnectsAndEndsBranchMode) {
  CommandRig rig(mapOf({0, 1}));
  rig.select({0});
  rig.editor.startEdgeCreation();
  rig.log.take();
  rig.editor.createEdge(topicId(0), topicId(1));
  EXPECT_EQ(rig.log.take(), QStringLiteral("history dirty mindMap branchMode branchSource"));
  ASSERT_EQ(rig.map().edges.size(), 1u);
  EXPECT_EQ(rig.edge(0).from, topicId(0));
  EXPECT_EQ(rig.edge(0).to, topicId(1));
  EXPECT_FALSE(rig.edge(0).id.isNull());
  EXPECT_EQ(rig.edge(0).label, QString());
  EXPECT_EQ(rig.edge(0).controlPointOffset, std::nullopt);
  EXPECT_EQ(rig.edge(0).style, rig.editor.newEdgeStyle());
  EXPECT_FALSE(rig.editor.isEdgeCreationMode());
  EXPECT_EQ(rig.editor.edgeCreationSourceID(), std::nullopt);
  EXPECT_EQ(rig.selected(), idSet({0}));
  rig.expectChange(1, true);
}

TEST(CreateEdge, ToItselfDoesNothing) {
  CommandRig rig(mapOf({0}));
  rig.editor.createEdge(topicId(0), topicId(0));
  rig.expectNothing();
}

TEST(CreateEdge, ThatExistsDoesNothing) {
  CommandRig rig(mapOf({0, 1}, {{0, 1}}));
  rig.editor.startEdgeCreation();
  rig.log.take();
  rig.editor.createEdge(topicId(0), topicId(1));
  EXPECT_TRUE(rig.editor.isEdgeCreationMode());
  rig.expectNothing();
}

TEST(CreateEdge, ToATopicWithAParentBecomesARelationshipAndKeepsBranchMode) {
  CommandRig rig(mapOf({0, 1, 2}, {{0, 1}}));
  rig.select({2});
  rig.editor.startEdgeCreation();
  rig.log.take();
  rig.editor.createEdge(topicId(2), topicId(1));
  EXPECT_EQ(rig.log.take(), QStringLiteral("history dirty mindMap"));
  EXPECT_EQ(rig.map().edges, rig.before.edges);
  ASSERT_EQ(rig.map().relationships.size(), 1u);
  const Relationship& made = rig.map().relationships[0];
  EXPECT_EQ(made.from, topicId(2));
  EXPECT_EQ(made.to, topicId(1));
  EXPECT_EQ(made.label, QString());
  EXPECT_EQ(made.color, QStringLiteral("#888888"));
  EXPECT_EQ(made.controlPointOffset, std::nullopt);
  EXPECT_TRUE(rig.editor.isEdgeCreationMode());
  EXPECT_EQ(rig.editor.edgeCreationSourceID(), topicId(2));
  rig.expectChange(1, true);
}

TEST(CreateEdge, ToAnAncestorBecomesARelationshipAndKeepsBranchMode) {
  CommandRig rig(mapOf({0, 1, 2}, {{0, 1}, {1, 2}}));
  rig.editor.startEdgeCreation();
  rig.editor.createEdge(topicId(2), topicId(0));
  EXPECT_EQ(rig.map().edges, rig.before.edges);
  ASSERT_EQ(rig.map().relationships.size(), 1u);
  EXPECT_EQ(rig.map().relationships[0].from, topicId(2));
  EXPECT_EQ(rig.map().relationships[0].to, topicId(0));
  EXPECT_TRUE(rig.editor.isEdgeCreationMode());
  rig.expectChange(1, true);
}

TEST(CreateEdge, WhoseRelationshipExistsDoesNothing) {
  CommandRig rig(linked(mapOf({0, 1, 2}, {{0, 1}}), {{2, 1}}));
  rig.editor.createEdge(topicId(2), topicId(1));
  rig.expectNothing();
}

TEST(CreateEdge, CountsAParentThatNamesNoTopic) {
  CommandRig rig(mapOf({0, 1}, {{77, 1}}));
  rig.editor.createEdge(topicId(0), topicId(1));
  EXPECT_EQ(rig.map().edges.size(), 1u);
  EXPECT_EQ(rig.map().relationships.size(), 1u);
}

TEST(CreateEdge, TakesTheColourOfTheThemeInForce) {
  CommandRig rig(mapOf({0, 1}));
  rig.editor.createEdge(topicId(0), topicId(1));
  EXPECT_EQ(rig.edge(0).style.color, rig.editor.currentTheme().edgeColor);
  EXPECT_EQ(rig.edge(0).style.taper.startWidth, 6.0);
  EXPECT_EQ(rig.edge(0).style.taper.endWidth, 2.0);
  EXPECT_EQ(rig.edge(0).style.taper.easing, EdgeStyle::TaperEasing::quadraticIn);
  EXPECT_EQ(rig.edge(0).style.arrowHead, EdgeStyle::ArrowHead::triangle);
  EXPECT_FALSE(rig.edge(0).style.dashed);
}

TEST(Relationships, AreAddedOncePerDirection) {
  CommandRig rig(mapOf({0, 1}));
  rig.editor.addRelationship(topicId(0), topicId(1));
  ASSERT_EQ(rig.map().relationships.size(), 1u);
  rig.expectChange(1, true);
  rig.settle();
  rig.editor.addRelationship(topicId(0), topicId(1));
  rig.expectNothing();
  rig.editor.addRelationship(topicId(1), topicId(0));
  ASSERT_EQ(rig.map().relationships.size(), 2u);
  EXPECT_EQ(rig.map().relationships[1].from, topicId(1));
  EXPECT_EQ(rig.map().relationships[1].to, topicId(0));
  rig.expectChange(1, true);
}

TEST(Relationships, ToItselfAreNotAdded) {
  CommandRig rig(mapOf({0}));
  rig.editor.addRelationship(topicId(0), topicId(0));
  rig.expectNothing();
}

TEST(Relationships, DeleteRemovesEveryOneWithTheId) {
  CommandRig rig(linked(mapOf({0, 1}), {{0, 1}, {1, 0}}));
  MindMap map = rig.map();
  map.relationships.append(link(0, 1, 0));
  rig.editor.setMindMap(map);
  rig.settle();
  rig.editor.deleteRelationship(edgeId(1000));
  EXPECT_EQ(rig.log.take(), QStringLiteral("history dirty mindMap"));
  ASSERT_EQ(rig.map().relationships.size(), 1u);
  EXPECT_EQ(rig.map().relationships[0].id, edgeId(1001));
  rig.expectChange(1, true);
}

TEST(Relationships, DeleteTakesASnapshotAlsoWhenNoneHasTheId) {
  CommandRig rig(linked(mapOf({0, 1}), {{0, 1}}));
  rig.editor.deleteRelationship(missingId());
  EXPECT_EQ(rig.map().relationships.size(), 1u);
  EXPECT_EQ(rig.editor.undoCount(), 1);
  EXPECT_TRUE(rig.editor.isDirty());
}

TEST(ReconnectSource, MovesTheParentEnd) {
  CommandRig rig(mapOf({0, 1, 2}, {{0, 1}}));
  rig.editor.reconnectEdgeSource(edgeId(0), topicId(2));
  EXPECT_EQ(rig.log.take(), QStringLiteral("history dirty mindMap"));
  EXPECT_EQ(rig.edge(0).id, edgeId(0));
  EXPECT_EQ(rig.edge(0).from, topicId(2));
  EXPECT_EQ(rig.edge(0).to, topicId(1));
  rig.expectChange(1, true);
}

TEST(ReconnectSource, RefusesAnUnknownEdgeTheSameSourceAndADuplicate) {
  CommandRig rig(mapOf({0, 1, 2}, {{0, 1}, {2, 1}}));
  rig.editor.reconnectEdgeSource(edgeId(7), topicId(2));
  rig.editor.reconnectEdgeSource(edgeId(0), topicId(0));
  rig.editor.reconnectEdgeSource(edgeId(0), topicId(2));
  rig.expectNothing();
}

TEST(ReconnectSource, LeavesTheCycleTestToItsCaller) {
  CommandRig rig(mapOf({0, 1, 2}, {{0, 1}, {1, 2}}));
  rig.editor.reconnectEdgeSource(edgeId(0), topicId(2));
  EXPECT_EQ(rig.edge(0).from, topicId(2));
  EXPECT_TRUE(rig.editor.isDescendant(topicId(1), topicId(1)));
}

TEST(ReconnectTarget, MovesTheChildEnd) {
  CommandRig rig(mapOf({0, 1, 2}, {{0, 1}}));
  rig.editor.reconnectEdgeTarget(edgeId(0), topicId(2));
  EXPECT_EQ(rig.log.take(), QStringLiteral("history dirty mindMap"));
  EXPECT_EQ(rig.edge(0).from, topicId(0));
  EXPECT_EQ(rig.edge(0).to, topicId(2));
  rig.expectChange(1, true);
}

TEST(ReconnectTarget, RefusesTheSameTargetAndAnyTopicWithAParent) {
  CommandRig rig(mapOf({0, 1, 2, 3}, {{0, 1}, {3, 2}}));
  rig.editor.reconnectEdgeTarget(edgeId(0), topicId(1));
  rig.editor.reconnectEdgeTarget(edgeId(0), topicId(2));
  rig.editor.reconnectEdgeTarget(edgeId(9), topicId(3));
  rig.expectNothing();
}

TEST(Bends, AreSetAndClearedUnderTheThrottle) {
  CommandRig rig(mapOf({0, 1}, {{0, 1}}));
  rig.editor.setEdgeBend(edgeId(0), QPointF(12.0, -3.5));
  EXPECT_EQ(rig.log.take(), QStringLiteral("history dirty mindMap"));
  EXPECT_EQ(rig.edge(0).controlPointOffset, QPointF(12.0, -3.5));
  EXPECT_TRUE(rig.isStamped());
  rig.clock.advance(std::chrono::milliseconds(500));
  rig.editor.setEdgeBend(edgeId(0), QPointF(20.0, 0.0));
  EXPECT_EQ(rig.log.take(), QStringLiteral("mindMap"));
  EXPECT_EQ(rig.editor.undoCount(), 1);
  EXPECT_TRUE(rig.isStamped());
  rig.clock.advance(std::chrono::milliseconds(1));
  rig.editor.setEdgeBend(edgeId(0), std::nullopt);
  EXPECT_EQ(rig.edge(0).controlPointOffset, std::nullopt);
  EXPECT_EQ(rig.editor.undoCount(), 2);
  rig.editor.undo();
  EXPECT_EQ(rig.edge(0).controlPointOffset, QPointF(20.0, 0.0));
  rig.editor.undo();
  EXPECT_EQ(rig.edge(0).controlPointOffset, std::nullopt);
}

TEST(Bends, OfRelationshipsWorkTheSame) {
  CommandRig rig(linked(mapOf({0, 1}), {{0, 1}}));
  rig.editor.setRelationshipBend(edgeId(1000), QPointF(1.0, 2.0));
  EXPECT_EQ(rig.map().relationships[0].controlPointOffset, QPointF(1.0, 2.0));
  rig.expectChange(1, true);
  rig.editor.setRelationshipBend(edgeId(1000), std::nullopt);
  EXPECT_EQ(rig.map().relationships[0].controlPointOffset, std::nullopt);
  EXPECT_EQ(rig.editor.undoCount(), 1);
}

TEST(Bends, OfAnUnknownIdTakeTheSnapshotAndLeaveTheTimeStamp) {
  CommandRig rig(mapOf({0, 1}, {{0, 1}}));
  rig.editor.setEdgeBend(missingId(), QPointF(1.0, 1.0));
  EXPECT_EQ(rig.editor.undoCount(), 1);
  EXPECT_TRUE(isVeryMap(rig.map(), rig.before));
  rig.clock.advance(std::chrono::seconds(1));
  rig.editor.setRelationshipBend(missingId(), QPointF(1.0, 1.0));
  EXPECT_EQ(rig.editor.undoCount(), 2);
  EXPECT_TRUE(isVeryMap(rig.map(), rig.before));
}

TEST(EdgeStyles, AreReplacedWhole) {
  CommandRig rig(mapOf({0, 1}, {{0, 1}}));
  const EdgeStyle style{
      QStringLiteral("#123456"), true, EdgeStyle::ArrowHead::none, {1.0, 9.0, EdgeStyle::TaperEasing::cubicIn}};
  rig.editor.setEdgeStyle(edgeId(0), style);
  EXPECT_EQ(rig.edge(0).style, style);
  rig.expectChange(1, true);
  rig.settle();
  rig.editor.setEdgeStyle(edgeId(0), style);
  rig.expectChange(1, true);
}

TEST(DeleteEdge, RemovesEveryEdgeWithTheIdAndUnselectsIt) {
  MindMap map = mapOf({0, 1, 2}, {{0, 1}, {1, 2}});
  map.edges.append(edgeBetween(0, 2, 0));
  CommandRig rig(map);
  rig.editor.setSelectedEdgeIDs({edgeId(0), edgeId(1)});
  rig.select({0});
  rig.editor.deleteEdge(edgeId(0));
  EXPECT_EQ(rig.log.take(), QStringLiteral("history dirty mindMap edges"));
  ASSERT_EQ(rig.map().edges.size(), 1u);
  EXPECT_EQ(rig.edge(0).id, edgeId(1));
  EXPECT_EQ(rig.editor.selectedEdgeIDs(), (IdSet{edgeId(1)}));
  EXPECT_EQ(rig.selected(), idSet({0}));
  rig.expectChange(1, true);
}
