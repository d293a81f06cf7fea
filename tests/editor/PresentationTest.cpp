#include "editor/CommandRig.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

std::vector<QUuid> ids(const std::vector<int>& numbers) {
  std::vector<QUuid> result;
  for (const int number : numbers) result.push_back(topicId(number));
  return result;
}

// 0 with the children 2 and 1 in the order of their edges, 2 with 3; topics 100 apart along the x axis.
struct Show : CommandRig {
  Show() : CommandRig(talk()) {}
  static MindMap talk() {
    MindMap map = mapOf({}, {{0, 2}, {2, 3}, {0, 1}});
    for (int i = 0; i < 4; ++i) map.nodes.append(topic(i, 100.0 * i, 10.0 * i));
    return map;
  }
  std::vector<QUuid> order() const { return editor.presentationOrder(); }
};

std::vector<QUuid> orderOf(const MindMap& map) {
  CommandRig rig(map);
  rig.editor.togglePresentation();
  return rig.editor.presentationOrder();
}

}  // namespace

TEST(Presentation, StartsAtTheFirstRootAtZoom1_8) {
  Show rig;
  rig.editor.setSelectedEdgeIDs({edgeId(0)});
  rig.editor.setLastKnownCanvasSize(QSizeF(1000.0, 500.0));
  rig.log.take();
  rig.editor.togglePresentation();
  EXPECT_EQ(rig.log.take(), QStringLiteral("presentation presentationIndex nodes edges zoom offset"));
  EXPECT_TRUE(rig.editor.isPresentationMode());
  EXPECT_EQ(rig.order(), ids({0, 2, 3, 1}));
  EXPECT_EQ(rig.editor.presentationNodeIndex(), 0);
  EXPECT_EQ(rig.editor.currentPresentationNode(), topicId(0));
  EXPECT_EQ(rig.selected(), idSet({0}));
  EXPECT_TRUE(rig.editor.selectedEdgeIDs().empty());
  EXPECT_EQ(rig.editor.canvasZoom(), 1.8);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(500.0, 250.0));
  rig.expectMapUntouched();
}

TEST(Presentation, StepsSelectZoomAndCentre) {
  Show rig;
  rig.editor.togglePresentation();
  rig.editor.setCanvasZoom(0.5);
  rig.log.take();
  rig.editor.nextPresentationStep();
  EXPECT_EQ(rig.log.take(), QStringLiteral("presentationIndex nodes edges zoom offset"));
  EXPECT_EQ(rig.editor.presentationNodeIndex(), 1);
  EXPECT_EQ(rig.selected(), idSet({2}));
  EXPECT_EQ(rig.editor.canvasZoom(), 1.8);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(40.0, 264.0));
}

TEST(Presentation, StepsWrapAround) {
  Show rig;
  rig.editor.togglePresentation();
  rig.editor.previousPresentationStep();
  EXPECT_EQ(rig.editor.presentationNodeIndex(), 3);
  EXPECT_EQ(rig.selected(), idSet({1}));
  rig.editor.nextPresentationStep();
  EXPECT_EQ(rig.editor.presentationNodeIndex(), 0);
}

TEST(Presentation, StepsDoNothingOutsideOfIt) {
  Show rig;
  rig.editor.nextPresentationStep();
  rig.editor.previousPresentationStep();
  rig.expectNothing();
  EXPECT_EQ(rig.editor.currentPresentationNode(), std::nullopt);
}

TEST(Presentation, LeavingFitsTheMapWhenTheCanvasSizeIsKnown) {
  Show rig;
  rig.editor.togglePresentation();
  rig.editor.setLastKnownCanvasSize(QSizeF(1000.0, 500.0));
  rig.log.take();
  rig.editor.togglePresentation();
  EXPECT_EQ(rig.log.take(), QStringLiteral("presentation zoom offset"));
  // The content is 500 by 250, raised to half the canvas height; 840 ÷ 500 and 340 ÷ 250.
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), 1.36);
  EXPECT_EQ(rig.editor.currentPresentationNode(), std::nullopt);
  EXPECT_EQ(rig.selected(), idSet({0}));
}

TEST(Presentation, LeavingWithoutACanvasSizeKeepsTheView) {
  Show rig;
  rig.editor.togglePresentation();
  rig.log.take();
  rig.editor.togglePresentation();
  EXPECT_EQ(rig.log.take(), QStringLiteral("presentation"));
  EXPECT_EQ(rig.editor.canvasZoom(), 1.8);
}

TEST(Presentation, ShowsCollapsedTopicsToo) {
  Show rig;
  rig.editor.setCollapsedNodeIDs(idSet({0, 2}));
  rig.editor.togglePresentation();
  EXPECT_EQ(rig.order(), ids({0, 2, 3, 1}));
}

TEST(Presentation, OfAnEmptyMapHasNothingToShow) {
  CommandRig rig;
  rig.editor.togglePresentation();
  EXPECT_TRUE(rig.editor.isPresentationMode());
  EXPECT_EQ(rig.log.take(), QStringLiteral("presentation presentationIndex"));
  rig.editor.nextPresentationStep();
  rig.editor.previousPresentationStep();
  rig.expectNothing();
  EXPECT_EQ(rig.editor.currentPresentationNode(), std::nullopt);
}

TEST(Presentation, ThatStartedEmptyShowsATopicAddedSince) {
  CommandRig rig;
  rig.editor.togglePresentation();
  rig.editor.createFreeNode(0.0, 0.0);
  rig.editor.setSelectedNodeIDs({});
  rig.editor.nextPresentationStep();
  EXPECT_EQ(rig.editor.currentPresentationNode(), rig.node(0).id);
}

TEST(Presentation, AddedTopicRebuildsTheOrderAndTheSelectionKeepsThePlace) {
  Show rig;
  rig.editor.togglePresentation();
  rig.editor.createChild(topicId(2));
  const QUuid added = rig.node(4).id;
  EXPECT_EQ(rig.order().size(), 4u);
  EXPECT_EQ(rig.selected(), (IdSet{added}));
  rig.editor.nextPresentationStep();
  EXPECT_EQ(rig.order(), (std::vector<QUuid>{topicId(0), topicId(2), topicId(3), added, topicId(1)}));
  EXPECT_EQ(rig.editor.currentPresentationNode(), topicId(1));
}

TEST(Presentation, RebuiltOrderKeepsTheTopicShownWhenTheSelectionIsGone) {
  Show rig;
  rig.editor.togglePresentation();
  rig.editor.previousPresentationStep();
  ASSERT_EQ(rig.editor.currentPresentationNode(), topicId(1));
  rig.editor.deleteNode(topicId(3));
  rig.select({});
  rig.editor.previousPresentationStep();
  EXPECT_EQ(rig.order(), ids({0, 2, 1}));
  EXPECT_EQ(rig.editor.currentPresentationNode(), topicId(2));
}

TEST(Presentation, RebuiltOrderCapsTheOldIndexWhenItsTopicIsGone) {
  Show rig;
  rig.editor.togglePresentation();
  rig.editor.previousPresentationStep();
  rig.editor.deleteNode(topicId(1));
  rig.editor.previousPresentationStep();
  EXPECT_EQ(rig.order(), ids({0, 2, 3}));
  EXPECT_EQ(rig.editor.presentationNodeIndex(), 1);
  EXPECT_EQ(rig.editor.currentPresentationNode(), topicId(2));
}

TEST(Presentation, RebuiltOrderOfAMapWithoutTopicsStopsTheSteps) {
  Show rig;
  rig.editor.togglePresentation();
  rig.editor.selectAll();
  rig.editor.deleteSelection();
  rig.log.take();
  rig.editor.nextPresentationStep();
  EXPECT_EQ(rig.log.take(), QString());
  EXPECT_TRUE(rig.order().empty());
  EXPECT_EQ(rig.editor.currentPresentationNode(), std::nullopt);
}

TEST(Presentation, ChangeThatKeepsTheCountKeepsTheOrder) {
  Show rig;
  rig.editor.togglePresentation();
  rig.editor.deleteNode(topicId(3));
  rig.editor.createFreeNode(0.0, 0.0);
  rig.editor.nextPresentationStep();
  EXPECT_EQ(rig.order(), ids({0, 2, 3, 1}));
}

TEST(Presentation, AppendsTopicsOfCyclesInMapOrder) {
  EXPECT_EQ(orderOf(mapOf({3, 0, 2, 1}, {{0, 1}, {2, 3}, {3, 2}})), ids({0, 1, 3, 2}));
}

TEST(Presentation, ShowsATopicWithTwoParentsAtItsFirstVisit) {
  EXPECT_EQ(orderOf(mapOf({0, 1, 2, 3}, {{0, 1}, {0, 2}, {1, 3}, {2, 3}})), ids({0, 1, 3, 2}));
}

TEST(Presentation, EndsOnACycleThatARootReaches) {
  EXPECT_EQ(orderOf(mapOf({0, 1, 2}, {{0, 1}, {1, 2}, {2, 1}})), ids({0, 1, 2}));
}

TEST(Presentation, SkipsIdsThatNameNoTopic) {
  EXPECT_EQ(orderOf(mapOf({0, 1, 2}, {{0, 90}, {90, 1}, {0, 2}})), ids({0, 1, 2}));
}

TEST(Presentation, OfDoubledIdsStepsOn) {
  CommandRig rig(mapOf({0, 0, 1, 2}));
  rig.editor.togglePresentation();
  EXPECT_EQ(rig.editor.presentationOrder(), ids({0, 1, 2}));
  for (const int expected : {1, 2, 0, 1}) {
    rig.editor.nextPresentationStep();
    EXPECT_EQ(rig.editor.currentPresentationNode(), topicId(expected));
  }
}

TEST(Presentation, AnIndexOutOfRangeShowsNothingAndIsTakenBackByAStep) {
  Show rig;
  rig.editor.togglePresentation();
  rig.editor.setPresentationNodeIndex(-9);
  EXPECT_EQ(rig.editor.currentPresentationNode(), std::nullopt);
  rig.editor.nextPresentationStep();
  EXPECT_EQ(rig.editor.presentationNodeIndex(), 0);
  rig.editor.setPresentationNodeIndex(4);
  EXPECT_EQ(rig.editor.currentPresentationNode(), std::nullopt);
}
