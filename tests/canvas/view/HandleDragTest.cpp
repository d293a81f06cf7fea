#include <gtest/gtest.h>

#include "canvas/view/CanvasRig.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

using Kind = CanvasTarget::Kind;

// The handle of the first topic is at (158, 100).
struct ConnectionHandleDrag : testing::Test {
  ConnectionHandleDrag() {
    rig.extraTargets = {{handle, {Kind::connectionHandle, topicId(1)}}};
    rig.editor.setSelectedNodeIDs({topicId(1)});
  }
  const QPointF handle{158, 100};
  CanvasRig rig{mapWith({topic(1, 100, 100), topic(2, 400, 100), topic(3, 400, 140)})};

  void dropAt(QPointF end, InputModifiers modifiers = {}) {
    // Grabbed near its edge: what counts is where the pointer ends.
    rig.drag(handle + QPointF(3, -3), end, modifiers);
  }
};

// Edge 0 leads from topic 1 to topic 2; topic 3 is free, topic 4 a child of topic 2.
struct EdgeHandleDrag : testing::Test {
  EdgeHandleDrag() {
    rig.extraTargets = {{{100, 100}, {Kind::edgeSourceHandle, edgeId(0)}},
                        {{400, 100}, {Kind::edgeTargetHandle, edgeId(0)}},
                        {{250, 100}, {Kind::edgeBendHandle, edgeId(0)}},
                        {{250, 300}, {Kind::relationshipBendHandle, edgeId(70)}},
                        {{250, 285}, {Kind::relationshipDeleteButton, edgeId(70)}}};
    MindMap map = rig.editor.mindMap();
    map.relationships.append(
        Relationship{edgeId(70), topicId(1), topicId(3), QString(), QStringLiteral("#888888"), QPointF(1, 2)});
    rig.editor.setMindMap(map);
  }
  CanvasRig rig{
      mapWith({topic(1, 100, 100), topic(2, 400, 100), topic(3, 400, 500), topic(4, 700, 100)}, {{1, 2}, {2, 4}})};

  const Edge& edge(std::size_t index) const { return rig.editor.mindMap().edges[index]; }
};

}  // namespace

TEST_F(ConnectionHandleDrag, ShowsItsEndAndItsTarget) {
  rig.press(handle);
  rig.move(handle + QPointF(2.9, 0));
  EXPECT_FALSE(rig.state().handleDragSourceID);
  rig.move({200, 150});
  EXPECT_EQ(rig.state().handleDragSourceID, topicId(1));
  EXPECT_EQ(rig.state().handleDragEndPoint, QPointF(200, 150));
  EXPECT_FALSE(rig.state().handleDragTargetID);
  rig.move({351, 100});
  EXPECT_EQ(rig.state().handleDragTargetID, topicId(2));
  rig.gestures.cancel();
  EXPECT_FALSE(rig.state().handleDragSourceID);
  EXPECT_FALSE(rig.state().handleDragEndPoint);
  EXPECT_FALSE(rig.state().handleDragTargetID);
  EXPECT_EQ(rig.editor.undoCount(), 0);
}

TEST_F(ConnectionHandleDrag, OntoATopicConnectsIt) {
  dropAt({400, 61});
  ASSERT_EQ(rig.editor.mindMap().edges.size(), 1u);
  EXPECT_EQ(rig.editor.mindMap().edges[0].from, topicId(1));
  EXPECT_EQ(rig.editor.mindMap().edges[0].to, topicId(2));
  EXPECT_FALSE(rig.state().handleDragSourceID);
}

TEST_F(ConnectionHandleDrag, TakesTheFirstTopicWithinFortyNotTheNearest) {
  dropAt({400, 130});
  EXPECT_EQ(rig.editor.mindMap().edges[0].to, topicId(2));
}

TEST_F(ConnectionHandleDrag, WithShiftMakesARelationship) {
  dropAt({400, 100}, shift);
  EXPECT_EQ(rig.editor.mindMap().edges.size(), 0u);
  ASSERT_EQ(rig.editor.mindMap().relationships.size(), 1u);
  EXPECT_EQ(rig.editor.mindMap().relationships[0].to, topicId(2));
}

TEST_F(ConnectionHandleDrag, BetweenFortyAndFiftyOfAHighlightedTopicMakesAChild) {
  rig.press(handle);
  rig.move({400, 55});
  EXPECT_EQ(rig.state().handleDragTargetID, topicId(2));
  rig.release({400, 55});
  ASSERT_EQ(rig.editor.mindMap().nodes.size(), 4u);
  EXPECT_EQ(rig.editor.mindMap().nodes[3].position, QPointF(400, 55));
  EXPECT_EQ(rig.editor.treeInfo().parent(rig.editor.mindMap().nodes[3].id), topicId(1));
}

TEST_F(ConnectionHandleDrag, WithShiftOnTheFreeCanvasStillMakesAChild) {
  dropAt({250, 300}, shift);
  ASSERT_EQ(rig.editor.mindMap().nodes.size(), 4u);
  EXPECT_EQ(rig.editor.mindMap().nodes[3].position, QPointF(250, 300));
  EXPECT_TRUE(rig.editor.mindMap().relationships.empty());
}

TEST_F(EdgeHandleDrag, OfAnEndShowsWhereItIs) {
  rig.press({400, 100});
  rig.move({410, 120});
  EXPECT_EQ(rig.state().draggingEdgeID, edgeId(0));
  EXPECT_EQ(rig.state().draggingEdgeEndpoint, EdgeEndpoint::target);
  EXPECT_EQ(rig.state().edgeDragPosition, QPointF(410, 120));
  rig.gestures.cancel();
  EXPECT_FALSE(rig.state().draggingEdgeID);
  EXPECT_FALSE(rig.state().draggingEdgeEndpoint);
  EXPECT_FALSE(rig.state().edgeDragPosition);
}

TEST_F(EdgeHandleDrag, OfTheTargetReconnectsIt) {
  rig.drag({400, 100}, {400, 451});
  EXPECT_EQ(edge(0).to, topicId(3));
  EXPECT_EQ(rig.editor.undoCount(), 1);
}

TEST_F(EdgeHandleDrag, OfTheTargetToAParentedTopicDoesNothing) {
  rig.drag({400, 100}, {700, 100});
  EXPECT_EQ(edge(0).to, topicId(2));
  EXPECT_EQ(rig.editor.undoCount(), 0);
}

TEST_F(EdgeHandleDrag, OfTheSourceReconnectsIt) {
  rig.drag({100, 100}, {400, 500});
  EXPECT_EQ(edge(0).from, topicId(3));
}

TEST_F(EdgeHandleDrag, OfTheSourceBelowItsOwnTargetDoesNothing) {
  rig.drag({100, 100}, {700, 100});
  EXPECT_EQ(edge(0).from, topicId(1));
  EXPECT_EQ(rig.editor.undoCount(), 0);
}

TEST_F(EdgeHandleDrag, ToASelectedTopicFindsNothing) {
  rig.editor.setSelectedNodeIDs({topicId(3)});
  rig.drag({400, 100}, {400, 500});
  EXPECT_EQ(edge(0).to, topicId(2));
}

TEST_F(EdgeHandleDrag, FiftyAwayFindsNothing) {
  rig.drag({400, 100}, {400, 450});
  EXPECT_EQ(edge(0).to, topicId(2));
}

TEST_F(EdgeHandleDrag, ToTheOtherEndFindsNothing) {
  rig.drag({400, 100}, {110, 100});
  EXPECT_EQ(edge(0).to, topicId(2));
  EXPECT_EQ(rig.editor.undoCount(), 0);
}

TEST_F(EdgeHandleDrag, TapOnAnEndIsATapOnItsTopic) {
  rig.editor.setSelectedEdgeIDs({edgeId(0)});
  rig.tap({100, 100});
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1)}));
  EXPECT_TRUE(rig.editor.selectedEdgeIDs().empty());
  rig.tap({400, 100}, shift);
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1), topicId(2)}));
  rig.tap({400, 100});
  EXPECT_EQ(rig.state().editingNodeID, topicId(2));
}

TEST_F(EdgeHandleDrag, OfABendAddsToItAtTheEnd) {
  rig.press({250, 100});
  rig.move({251.9, 100});
  EXPECT_FALSE(rig.state().draggedHandle);
  rig.move({250, 140});
  EXPECT_EQ(rig.state().draggedHandle,
            (ShownGestures::DraggedHandle{ShownGestures::HandleKind::edgeBend, edgeId(0), QPointF(0, 40)}));
  EXPECT_FALSE(edge(0).controlPointOffset);
  rig.release({250, 140});
  EXPECT_EQ(edge(0).controlPointOffset, QPointF(0, 40));
  EXPECT_FALSE(rig.state().draggedHandle);
  rig.look(0.5, {0, 0});
  rig.drag({125, 50}, {130, 45});
  EXPECT_EQ(edge(0).controlPointOffset, QPointF(10, 30));
}

TEST_F(EdgeHandleDrag, OfARelationshipsBendAddsToIt) {
  rig.drag({250, 300}, {260, 320});
  EXPECT_EQ(rig.editor.mindMap().relationships[0].controlPointOffset, QPointF(11, 22));
}

TEST_F(EdgeHandleDrag, DeleteButtonRemovesTheRelationship) {
  rig.tap({250, 284});
  EXPECT_TRUE(rig.editor.mindMap().relationships.empty());
  EXPECT_FALSE(rig.state().selectedRelationshipID);
}

// --- Branch mode ---

TEST_F(EdgeHandleDrag, TapInBranchModeConnectsAndEndsTheMode) {
  rig.extraTargets.clear();
  rig.editor.setSelectedNodeIDs({topicId(4)});
  rig.editor.startEdgeCreation();
  rig.tap({400, 500});
  EXPECT_EQ(rig.editor.treeInfo().parent(topicId(3)), topicId(4));
  EXPECT_FALSE(rig.editor.isEdgeCreationMode());
  EXPECT_FALSE(rig.editor.edgeCreationSourceID());
}

TEST_F(EdgeHandleDrag, TapInBranchModeEndsTheModeAlsoWhereARelationshipComesOfIt) {
  rig.extraTargets.clear();
  rig.editor.setSelectedNodeIDs({topicId(4)});
  rig.editor.startEdgeCreation();
  rig.tap({100, 100});
  EXPECT_EQ(rig.editor.mindMap().relationships.size(), 2u);
  EXPECT_FALSE(rig.editor.isEdgeCreationMode());
}

TEST_F(EdgeHandleDrag, TapInBranchModeWithoutASourceSelectsWithoutShift) {
  rig.extraTargets.clear();
  rig.editor.startEdgeCreation();
  rig.editor.setSelectedNodeIDs({topicId(4)});
  rig.tap({400, 500}, shift);
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(3)}));
  EXPECT_TRUE(rig.editor.isEdgeCreationMode());
}
