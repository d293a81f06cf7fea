#include <gtest/gtest.h>

#include "canvas/view/CanvasRig.h"

using namespace quilmora;
using namespace quilmora::test;
using namespace std::chrono_literals;

namespace {

struct CanvasTap : testing::Test {
  CanvasRig rig{mapWith({topic(1, 100, 100), topic(2, 400, 100)}, {{1, 2}})};
};

}  // namespace

TEST_F(CanvasTap, OnATopicSelectsItAlone) {
  rig.editor.setSelectedNodeIDs({topicId(2)});
  rig.editor.setSelectedEdgeIDs({edgeId(0)});
  rig.tap({100, 100});
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1)}));
  EXPECT_TRUE(rig.editor.selectedEdgeIDs().empty());
}

TEST_F(CanvasTap, SelectsAtTheReleaseAndNotBefore) {
  rig.press({100, 100});
  EXPECT_TRUE(rig.editor.selectedNodeIDs().empty());
  rig.release({100, 100});
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1)}));
}

TEST_F(CanvasTap, WithShiftAddsTheTopicAndKeepsEdges) {
  rig.editor.setSelectedNodeIDs({topicId(2)});
  rig.editor.setSelectedEdgeIDs({edgeId(0)});
  rig.tap({100, 100}, shift);
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1), topicId(2)}));
  EXPECT_EQ(rig.editor.selectedEdgeIDs(), IdSet({edgeId(0)}));
}

TEST_F(CanvasTap, OnTheBackgroundClearsEverySelection) {
  rig.extraTargets = {{{250, 50}, {CanvasTarget::Kind::relationship, edgeId(7)}}};
  rig.tap({250, 50});
  rig.editor.setSelectedNodeIDs({topicId(2)});
  rig.editor.setSelectedEdgeIDs({edgeId(0)});
  rig.tap({250, 300});
  EXPECT_TRUE(rig.editor.selectedNodeIDs().empty());
  EXPECT_TRUE(rig.editor.selectedEdgeIDs().empty());
  EXPECT_FALSE(rig.state().selectedRelationshipID);
}

TEST_F(CanvasTap, OnAnEdgeSelectsIt) {
  rig.extraTargets = {{{250, 100}, {CanvasTarget::Kind::edge, edgeId(0)}}};
  rig.editor.setSelectedNodeIDs({topicId(2)});
  rig.tap({250, 100});
  EXPECT_EQ(rig.editor.selectedEdgeIDs(), IdSet({edgeId(0)}));
  EXPECT_TRUE(rig.editor.selectedNodeIDs().empty());
}

TEST_F(CanvasTap, OnAnEdgeWithShiftKeepsTopics) {
  rig.extraTargets = {{{250, 100}, {CanvasTarget::Kind::edge, edgeId(0)}}};
  rig.editor.setSelectedNodeIDs({topicId(2)});
  rig.tap({250, 100}, shift);
  EXPECT_EQ(rig.editor.selectedEdgeIDs(), IdSet({edgeId(0)}));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(2)}));
}

TEST_F(CanvasTap, OnARelationshipSelectsItInPlaceOfTopicsAndEdges) {
  rig.extraTargets = {{{250, 50}, {CanvasTarget::Kind::relationship, edgeId(7)}}};
  rig.editor.setSelectedNodeIDs({topicId(2)});
  rig.editor.setSelectedEdgeIDs({edgeId(0)});
  rig.tap({250, 50});
  EXPECT_EQ(rig.state().selectedRelationshipID, edgeId(7));
  EXPECT_TRUE(rig.editor.selectedNodeIDs().empty());
  EXPECT_TRUE(rig.editor.selectedEdgeIDs().empty());
}

TEST_F(CanvasTap, OnTheCollapseToggleCollapsesAndExpands) {
  rig.extraTargets = {{{50, 100}, {CanvasTarget::Kind::collapseToggle, topicId(1)}}};
  rig.tap({50, 100});
  EXPECT_EQ(rig.editor.collapsedNodeIDs(), IdSet({topicId(1)}));
  EXPECT_TRUE(rig.editor.selectedNodeIDs().empty());
  rig.tap({50, 100});
  EXPECT_TRUE(rig.editor.collapsedNodeIDs().empty());
}

TEST_F(CanvasTap, OnTheCollapseToggleCountsOnlyWhenReleasedOnIt) {
  rig.extraTargets = {{{50, 100}, {CanvasTarget::Kind::collapseToggle, topicId(1)}}};
  rig.press({50, 100});
  rig.move({70, 160});
  rig.release({70, 160});
  EXPECT_TRUE(rig.editor.collapsedNodeIDs().empty());
  EXPECT_EQ(rig.positionOf(1), QPointF(100, 100));
}

TEST_F(CanvasTap, OnTheConnectionHandleMakesAChild) {
  rig.extraTargets = {{{458, 100}, {CanvasTarget::Kind::connectionHandle, topicId(2)}}};
  rig.tap({458, 100});
  ASSERT_EQ(rig.editor.mindMap().nodes.size(), 3u);
  EXPECT_EQ(rig.editor.mindMap().nodes[2].position, QPointF(580, 100));
  EXPECT_EQ(rig.editor.undoCount(), 1);
}

TEST_F(CanvasTap, TwiceOnOneTopicEditsItsTitle) {
  rig.tap({100, 100});
  rig.clock.advance(349ms);
  rig.tap({100, 100});
  EXPECT_EQ(rig.state().editingNodeID, topicId(1));
  EXPECT_TRUE(rig.editor.isEditingInline());
  EXPECT_FALSE(rig.state().lastTapNodeID);
}

TEST_F(CanvasTap, TwiceExactlyTheIntervalApartIsNoDoubleTap) {
  rig.tap({100, 100});
  rig.clock.advance(350ms);
  rig.tap({100, 100});
  EXPECT_FALSE(rig.state().editingNodeID);
  EXPECT_FALSE(rig.editor.isEditingInline());
  rig.clock.advance(349ms);
  rig.tap({100, 100});
  EXPECT_EQ(rig.state().editingNodeID, topicId(1));
}

TEST_F(CanvasTap, OnDifferentTopicsIsNoDoubleTap) {
  rig.tap({100, 100});
  rig.clock.advance(100ms);
  rig.tap({400, 100});
  EXPECT_FALSE(rig.state().editingNodeID);
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(2)}));
}

TEST_F(CanvasTap, SettingTheTimeOfDayMakesNoDoubleTapAndEndsNone) {
  rig.tap({100, 100});
  rig.clock.advance(1h);
  rig.clock.set(rig.clock.now() - 1h);
  rig.tap({100, 100});
  EXPECT_FALSE(rig.state().editingNodeID);
  rig.clock.set(rig.clock.now() - 1h);
  rig.clock.advance(100ms);
  rig.tap({100, 100});
  EXPECT_EQ(rig.state().editingNodeID, topicId(1));
}

TEST_F(CanvasTap, TwiceInPresentationModeEditsNothing) {
  rig.editor.setIsPresentationMode(true);
  rig.tap({100, 100});
  rig.clock.advance(100ms);
  rig.tap({100, 100});
  EXPECT_FALSE(rig.state().editingNodeID);
  EXPECT_FALSE(rig.editor.isEditingInline());
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1)}));
}

TEST_F(CanvasTap, WithTheRightButtonDoesNothing) {
  rig.press({100, 100}, {}, PointerButton::right);
  rig.release({100, 100}, {}, PointerButton::right);
  EXPECT_TRUE(rig.editor.selectedNodeIDs().empty());
}

TEST_F(CanvasTap, FindsItsTopicWhereTheCanvasLooks) {
  rig.look(0.5, {200, 30});
  rig.tap({400, 80});
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(2)}));
}

TEST_F(CanvasTap, TellsItsObserverOfAChangeOnlyOnce) {
  int notices = 0;
  rig.gestures.setStateObserver([&] { ++notices; });
  rig.tap({100, 100});
  EXPECT_EQ(notices, 1);
  rig.move({110, 100});
  EXPECT_EQ(notices, 1);
}

// --- Buttons and handles under the pointer ---

TEST_F(CanvasTap, PartUnderThePointerIsKnown) {
  const CanvasTarget toggle{CanvasTarget::Kind::collapseToggle, topicId(1)};
  rig.extraTargets = {{{50, 100}, toggle}, {{250, 50}, {CanvasTarget::Kind::edge, edgeId(0)}}};
  rig.move({50, 100});
  EXPECT_EQ(rig.state().hoveredPart, toggle);
  rig.move({100, 100});
  EXPECT_FALSE(rig.state().hoveredPart);
  rig.move({250, 50});
  EXPECT_FALSE(rig.state().hoveredPart);
  rig.move({50, 100});
  rig.gestures.wheel({{20, 0}, true, {}});
  EXPECT_FALSE(rig.state().hoveredPart);
  rig.move({70, 100});
  EXPECT_EQ(rig.state().hoveredPart, toggle);
  rig.gestures.leave();
  EXPECT_FALSE(rig.state().hoveredPart);
}

TEST_F(CanvasTap, PartIsPressedWhileThePointerIsOnIt) {
  const CanvasTarget toggle{CanvasTarget::Kind::collapseToggle, topicId(1)};
  rig.extraTargets = {{{50, 100}, toggle}, {{200, 200}, {CanvasTarget::Kind::collapseToggle, topicId(2)}}};
  rig.move({50, 100});
  rig.press({50, 100});
  EXPECT_EQ(rig.state().pressedPart, toggle);
  EXPECT_FALSE(rig.state().hoveredPart);
  rig.move({100, 180});
  EXPECT_FALSE(rig.state().pressedPart);
  rig.move({200, 200});
  EXPECT_FALSE(rig.state().pressedPart);
  EXPECT_FALSE(rig.state().hoveredPart);
  rig.move({52, 100});
  EXPECT_EQ(rig.state().pressedPart, toggle);
  rig.release({52, 100});
  EXPECT_FALSE(rig.state().pressedPart);
  EXPECT_EQ(rig.state().hoveredPart, toggle);
}

TEST_F(CanvasTap, PartUnderADragShowsNothing) {
  const CanvasTarget handle{CanvasTarget::Kind::connectionHandle, topicId(1)};
  rig.extraTargets = {{{158, 100}, handle}, {{250, 300}, {CanvasTarget::Kind::collapseToggle, topicId(2)}}};
  rig.press({158, 100});
  EXPECT_EQ(rig.state().pressedPart, handle);
  rig.move({250, 300});
  EXPECT_FALSE(rig.state().pressedPart);
  EXPECT_FALSE(rig.state().hoveredPart);
  rig.gestures.cancel();
  rig.press({100, 100});
  rig.move({250, 300});
  EXPECT_FALSE(rig.state().hoveredPart);
  rig.gestures.cancel();
  rig.press({158, 100});
  rig.gestures.cancel();
  EXPECT_FALSE(rig.state().pressedPart);
}

// --- Title editing ---

TEST_F(CanvasTap, CommitOfATitleStoresItAndEndsTheEdit) {
  rig.gestures.beginEditing(topicId(1));
  rig.gestures.commitTitle(QStringLiteral("Renamed"));
  EXPECT_EQ(rig.editor.nodeByID(topicId(1))->title, QStringLiteral("Renamed"));
  EXPECT_FALSE(rig.state().editingNodeID);
  EXPECT_FALSE(rig.editor.isEditingInline());
  EXPECT_EQ(rig.editor.undoCount(), 1);
}

TEST_F(CanvasTap, EndOfAnEditWithoutCommitChangesNothing) {
  rig.gestures.beginEditing(topicId(1));
  rig.gestures.endEditing();
  EXPECT_EQ(rig.editor.nodeByID(topicId(1))->title, QStringLiteral("Topic 1"));
  EXPECT_FALSE(rig.editor.isEditingInline());
  EXPECT_EQ(rig.editor.undoCount(), 0);
}

TEST_F(CanvasTap, TitleSetElsewhereEndsTheEdit) {
  rig.gestures.beginEditing(topicId(1));
  rig.editor.setNodeTitle(topicId(2), QStringLiteral("From elsewhere"));
  EXPECT_FALSE(rig.state().editingNodeID);
}

TEST_F(CanvasTap, TopicUndoneAwayTakesItsEditWithIt) {
  rig.editor.createChild(topicId(1));
  const QUuid child = rig.editor.mindMap().nodes.back().id;
  rig.gestures.beginEditing(child);
  rig.editor.undo();
  EXPECT_FALSE(rig.state().editingNodeID);
  EXPECT_FALSE(rig.editor.isEditingInline());
  const MindMap before = rig.editor.mindMap();
  rig.gestures.commitTitle(QStringLiteral("Too late"));
  EXPECT_EQ(rig.editor.mindMap(), before);
  EXPECT_EQ(rig.editor.undoCount(), 0);
}

TEST_F(CanvasTap, TopicThatDoesNotExistIsNotEdited) {
  rig.gestures.beginEditing(topicId(99));
  EXPECT_FALSE(rig.state().editingNodeID);
  EXPECT_FALSE(rig.editor.isEditingInline());
}
