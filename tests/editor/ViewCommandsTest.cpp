#include <limits>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "support/EditorRig.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

using Lens = MindMapViewModel::FocusLens;

struct ViewCommands : ::testing::Test {
  EditorRig rig{mapOf({0, 1, 2}, {{0, 1}, {1, 2}})};
  MindMapViewModel& editor = rig.editor;
  const MindMap before = rig.map();

  ViewCommands() {
    editor.setSelectedNodeIDs({topicId(0)});
    editor.setSelectedEdgeIDs({edgeId(0)});
    editor.setSelectedRegionID(topicId(70));
  }
  // Selection and view change, the map does not.
  ~ViewCommands() override {
    EXPECT_TRUE(isVeryMap(rig.map(), before));
    EXPECT_EQ(editor.undoCount(), 0);
    EXPECT_FALSE(editor.isDirty());
    EXPECT_EQ(editor.treeGeneration(), 0u);
  }
};

void expectOffset(const MindMapViewModel& editor, double x, double y) {
  EXPECT_DOUBLE_EQ(editor.canvasOffset().x(), x);
  EXPECT_DOUBLE_EQ(editor.canvasOffset().y(), y);
}

}  // namespace

TEST_F(ViewCommands, SelectingATopicReplacesAllSelection) {
  editor.selectNode(topicId(2), false);
  EXPECT_EQ(editor.selectedNodeIDs(), IdSet{topicId(2)});
  EXPECT_TRUE(editor.selectedEdgeIDs().empty());
  EXPECT_FALSE(editor.selectedRegionID().has_value());
}

TEST_F(ViewCommands, ExtendingByATopicLeavesTheEdgesAlone) {
  editor.selectNode(topicId(2), true);
  EXPECT_EQ(editor.selectedNodeIDs(), (IdSet{topicId(0), topicId(2)}));
  EXPECT_EQ(editor.selectedEdgeIDs(), IdSet{edgeId(0)});
  EXPECT_FALSE(editor.selectedRegionID().has_value());
}

TEST_F(ViewCommands, ExtendingByASelectedTopicKeepsIt) {
  editor.selectNode(topicId(0), true);
  EXPECT_EQ(editor.selectedNodeIDs(), IdSet{topicId(0)});
}

TEST_F(ViewCommands, SelectingAnEdgeReplacesAllSelection) {
  editor.selectEdge(edgeId(1), false);
  EXPECT_EQ(editor.selectedEdgeIDs(), IdSet{edgeId(1)});
  EXPECT_TRUE(editor.selectedNodeIDs().empty());
  EXPECT_FALSE(editor.selectedRegionID().has_value());
}

TEST_F(ViewCommands, ExtendingByAnEdgeLeavesTheTopicsAlone) {
  editor.selectEdge(edgeId(1), true);
  EXPECT_EQ(editor.selectedEdgeIDs(), (IdSet{edgeId(0), edgeId(1)}));
  EXPECT_EQ(editor.selectedNodeIDs(), IdSet{topicId(0)});
  EXPECT_FALSE(editor.selectedRegionID().has_value());
}

TEST_F(ViewCommands, ClearingEmptiesAllThree) {
  editor.clearSelection();
  EXPECT_TRUE(editor.selectedNodeIDs().empty());
  EXPECT_TRUE(editor.selectedEdgeIDs().empty());
  EXPECT_FALSE(editor.selectedRegionID().has_value());
}

TEST_F(ViewCommands, SelectingAllLeavesEdgesAndRegion) {
  editor.setCollapsedNodeIDs({topicId(0)});
  editor.selectAll();
  EXPECT_EQ(editor.selectedNodeIDs(), (IdSet{topicId(0), topicId(1), topicId(2)}));
  EXPECT_EQ(editor.selectedEdgeIDs(), IdSet{edgeId(0)});
  EXPECT_EQ(editor.selectedRegionID(), topicId(70));
}

TEST_F(ViewCommands, FirstSelectedNodeIsOneOfTheSelection) {
  EXPECT_EQ(editor.firstSelectedNode(), topicId(0));
  editor.selectAll();
  ASSERT_TRUE(editor.firstSelectedNode().has_value());
  EXPECT_TRUE(editor.selectedNodeIDs().contains(*editor.firstSelectedNode()));
  EXPECT_EQ(editor.firstSelectedNode(), editor.firstSelectedNode());
  editor.clearSelection();
  EXPECT_FALSE(editor.firstSelectedNode().has_value());
}

TEST_F(ViewCommands, NoLensDimsNothing) {
  EXPECT_EQ(editor.nodeOpacity(topic(2)), 1.0);
}

TEST_F(ViewCommands, PriorityLensTakesEveryBadge) {
  editor.setActiveLens(Lens::priority);
  Node node = topic(0);
  EXPECT_EQ(editor.nodeOpacity(node), 0.2);
  for (const Badge badge :
       {Badge::priority1, Badge::priority2, Badge::priority3, Badge::done, Badge::inProgress, Badge::blocked}) {
    node.badge = badge;
    EXPECT_EQ(editor.nodeOpacity(node), 1.0);
  }
}

TEST_F(ViewCommands, ProgressLensTakesTheThreeStates) {
  editor.setActiveLens(Lens::progress);
  Node node = topic(0);
  EXPECT_EQ(editor.nodeOpacity(node), 0.25);
  for (const Badge badge : {Badge::priority1, Badge::priority2, Badge::priority3}) {
    node.badge = badge;
    EXPECT_EQ(editor.nodeOpacity(node), 0.25);
  }
  for (const Badge badge : {Badge::done, Badge::inProgress, Badge::blocked}) {
    node.badge = badge;
    EXPECT_EQ(editor.nodeOpacity(node), 1.0);
  }
}

TEST(DepthLens, DimsByAFifthALevelAndNeverBelowAFifth) {
  std::vector<int> numbers = {0};
  std::vector<Ends> ends;
  for (int i = 1; i < 10; ++i) {
    numbers.push_back(i);
    ends.push_back({i - 1, i});
  }
  EditorRig rig(mapOf(numbers, ends));
  rig.editor.setActiveLens(Lens::depth);
  EXPECT_DOUBLE_EQ(rig.editor.nodeOpacity(topic(0)), 1.0);
  EXPECT_DOUBLE_EQ(rig.editor.nodeOpacity(topic(1)), 0.8);
  EXPECT_DOUBLE_EQ(rig.editor.nodeOpacity(topic(3)), 0.4);
  EXPECT_EQ(rig.editor.nodeOpacity(topic(4)), 0.2);
  EXPECT_EQ(rig.editor.nodeOpacity(topic(9)), 0.2);
  EXPECT_EQ(rig.editor.nodeOpacity(topic(55)), 1.0);
}

TEST_F(ViewCommands, ZoomIsLimited) {
  editor.zoomAt(100.0, 0.0, 0.0);
  EXPECT_EQ(editor.canvasZoom(), 5.0);
  editor.zoomAt(0.0, 0.0, 0.0);
  EXPECT_EQ(editor.canvasZoom(), 0.1);
  editor.zoomAt(-3.0, 0.0, 0.0);
  EXPECT_EQ(editor.canvasZoom(), 0.1);
  editor.zoomAt(std::numeric_limits<double>::infinity(), 0.0, 0.0);
  EXPECT_EQ(editor.canvasZoom(), 5.0);
}

TEST_F(ViewCommands, ZoomKeepsThePointUnderTheAnchor) {
  editor.setCanvasOffset(QPointF(10.0, 20.0));
  editor.zoomAt(2.0, 100.0, 50.0);
  EXPECT_EQ(editor.canvasZoom(), 2.0);
  expectOffset(editor, -80.0, -10.0);
}

TEST_F(ViewCommands, AnchorGoesByTheLimitedZoom) {
  editor.zoomAt(100.0, 30.0, 60.0);
  expectOffset(editor, -120.0, -240.0);
  // At the limit nothing moves any more.
  editor.zoomAt(7.0, 500.0, 500.0);
  expectOffset(editor, -120.0, -240.0);
}

TEST(ZoomAt, KeepsTheAnchorOnEveryView) {
  EXPECT_TRUE(rc::check("the canvas point under the anchor stays", [] {
    const auto number = [](int low, int high) { return *rc::gen::inRange(low, high) / 16.0; };
    EditorRig rig;
    rig.editor.setCanvasZoom(number(2, 80));
    rig.editor.setCanvasOffset(QPointF(number(-9999, 9999), number(-9999, 9999)));
    const QPointF anchor(number(0, 30000), number(0, 30000));
    const QPointF point = (anchor - rig.editor.canvasOffset()) / rig.editor.canvasZoom();
    rig.editor.zoomAt(number(-10, 200), anchor.x(), anchor.y());
    const QPointF shown = point * rig.editor.canvasZoom() + rig.editor.canvasOffset();
    RC_ASSERT(std::abs(shown.x() - anchor.x()) < 1e-6);
    RC_ASSERT(std::abs(shown.y() - anchor.y()) < 1e-6);
    RC_ASSERT(rig.editor.canvasZoom() >= 0.1 && rig.editor.canvasZoom() <= 5.0);
  }));
}

TEST_F(ViewCommands, CenteringAnUnknownTopicDoesNothing) {
  editor.setCanvasOffset(QPointF(1.0, 2.0));
  QSignalSpy offsets(&editor, &MindMapViewModel::canvasOffsetChanged);
  editor.centerOn(topicId(9), 800.0, 600.0, false);
  editor.centerOn(topicId(9), 800.0, 600.0, true);
  expectOffset(editor, 1.0, 2.0);
  EXPECT_EQ(offsets.count(), 0);
}

TEST(CenterOn, PutsTheTopicInTheMiddleAndKeepsTheZoom) {
  MindMap map = mapOf({});
  map.nodes = {topic(0, 100.0, -50.0)};
  EditorRig rig(map);
  rig.editor.setCanvasZoom(2.0);
  rig.editor.centerOn(topicId(0), 1000.0, 400.0, false);
  expectOffset(rig.editor, 300.0, 300.0);
  EXPECT_EQ(rig.editor.canvasZoom(), 2.0);
}

TEST(CenterOn, TakesTheLastKnownSizeWhenAskedTo) {
  MindMap map = mapOf({});
  map.nodes = {topic(0, 100.0, -50.0)};
  EditorRig rig(map);
  rig.editor.centerOn(topicId(0), 1000.0, 400.0, true);
  expectOffset(rig.editor, 300.0, 350.0);
  rig.editor.setLastKnownCanvasSize(QSizeF(200.0, 100.0));
  rig.editor.centerOn(topicId(0), 1000.0, 400.0, true);
  expectOffset(rig.editor, 0.0, 100.0);
  rig.editor.centerOn(topicId(0), 1000.0, 400.0, false);
  expectOffset(rig.editor, 400.0, 250.0);
}
