#include <cmath>

#include <gtest/gtest.h>

#include "layout/TreeLayout.h"
#include "support/EditorRig.h"
#include "support/MapGenerators.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

constexpr QSizeF canvas(800.0, 600.0);

MindMap topicsAt(const std::vector<QPointF>& points) {
  MindMap map = mapOf({});
  int number = 0;
  for (const QPointF& point : points) map.nodes.append(topic(number++, point.x(), point.y()));
  return map;
}

void expectView(const EditorRig& rig, double zoom, double x, double y) {
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), zoom);
  EXPECT_DOUBLE_EQ(rig.editor.canvasOffset().x(), x);
  EXPECT_DOUBLE_EQ(rig.editor.canvasOffset().y(), y);
}

}  // namespace

TEST(ApplyLayout, ManualHasNoEffectAtAll) {
  MindMap map = mapOf({0, 1}, {{0, 1}});
  map.layout = MindMap::Layout::tree;
  EditorRig rig(map);
  const MindMap before = rig.map();
  QSignalSpy changes(&rig.editor, &MindMapViewModel::mindMapChanged);
  rig.editor.applyLayout(MindMap::Layout::manual, canvas);
  EXPECT_TRUE(isVeryMap(rig.map(), before));
  EXPECT_EQ(rig.map().layout, MindMap::Layout::tree);
  EXPECT_EQ(rig.editor.undoCount(), 0);
  EXPECT_FALSE(rig.editor.isDirty());
  EXPECT_EQ(changes.count(), 0);
}

TEST(ApplyLayout, TreeWritesPositionsLayoutAndStampInOneStep) {
  EditorRig rig(mapOf({0, 1, 2}, {{0, 1}, {0, 2}}));
  const MindMap before = rig.map();
  rig.editor.applyLayout(MindMap::Layout::tree, canvas);
  EXPECT_EQ(rig.position(0), QPointF(275.0, 300.0));
  EXPECT_EQ(rig.position(1), QPointF(525.0, 230.0));
  EXPECT_EQ(rig.position(2), QPointF(525.0, 370.0));
  EXPECT_EQ(rig.map().layout, MindMap::Layout::tree);
  EXPECT_TRUE(rig.isStamped());
  EXPECT_EQ(rig.editor.undoCount(), 1);
  EXPECT_TRUE(rig.editor.isDirty());
  EXPECT_GE(rig.editor.treeGeneration(), 1u);
  rig.editor.undo();
  EXPECT_TRUE(isVeryMap(rig.map(), before));
  EXPECT_EQ(rig.map().layout, MindMap::Layout::manual);
}

TEST(ApplyLayout, SnapshotIsNotThrottled) {
  EditorRig rig(mapOf({0}));
  rig.editor.captureSnapshot(true);
  rig.editor.applyLayout(MindMap::Layout::tree, canvas);
  rig.editor.applyLayout(MindMap::Layout::verticalTree, canvas);
  EXPECT_EQ(rig.editor.undoCount(), 3);
}

TEST(ApplyLayout, VerticalTreeGrowsDown) {
  EditorRig rig(mapOf({0, 1}, {{0, 1}}));
  rig.editor.applyLayout(MindMap::Layout::verticalTree, canvas);
  EXPECT_EQ(rig.position(0), QPointF(400.0, 175.0));
  EXPECT_EQ(rig.position(1), QPointF(400.0, 425.0));
  EXPECT_EQ(rig.map().layout, MindMap::Layout::verticalTree);
}

TEST(ApplyLayout, EmptyMapStillTakesSnapshotLayoutAndStamp) {
  EditorRig rig(mapOf({}));
  rig.editor.applyLayout(MindMap::Layout::tree, canvas);
  EXPECT_EQ(rig.editor.undoCount(), 1);
  EXPECT_EQ(rig.map().layout, MindMap::Layout::tree);
  EXPECT_TRUE(rig.isStamped());
}

TEST(ApplyLayout, HiddenTopicsAreLaidOutToo) {
  EditorRig open(mapOf({0, 1, 2}, {{0, 1}, {1, 2}}));
  EditorRig folded(mapOf({0, 1, 2}, {{0, 1}, {1, 2}}));
  folded.editor.setCollapsedNodeIDs({topicId(0)});
  open.editor.applyLayout(MindMap::Layout::tree, canvas);
  folded.editor.applyLayout(MindMap::Layout::tree, canvas);
  EXPECT_EQ(open.map(), folded.map());
}

TEST(ApplyLayout, MissingTopicsTakeTheirSlotAndNothingIsWritten) {
  EditorRig rig(mapOf({0, 1}, {{0, 99}, {0, 1}}));
  rig.editor.applyLayout(MindMap::Layout::tree, canvas);
  EXPECT_EQ(rig.map().nodes.size(), 2u);
  EXPECT_EQ(rig.position(1), QPointF(525.0, 370.0));
}

TEST(ApplyLayout, RelationshipsRegionsAndStylesStay) {
  MindMap map = mapOf({0, 1}, {{0, 1}});
  map.relationships = {Relationship{edgeId(7), topicId(0), topicId(1), {}, QStringLiteral("#010203"), QPointF(5, 5)}};
  map.regions = {Region{edgeId(8), {}, QStringLiteral("#040506"), QRectF(1, 2, 3, 4)}};
  map.edges.update(0, [](Edge& edge) { edge.controlPointOffset = QPointF(9.0, 9.0); });
  EditorRig rig(map);
  rig.editor.applyLayout(MindMap::Layout::tree, canvas);
  EXPECT_EQ(rig.map().relationships, map.relationships);
  EXPECT_EQ(rig.map().regions, map.regions);
  EXPECT_EQ(rig.map().edges, map.edges);
  EXPECT_EQ(rig.node(1).style, map.nodes[1].style);
}

TEST(ApplyLayout, ViewAndSelectionStay) {
  EditorRig rig(mapOf({0, 1}, {{0, 1}}));
  rig.editor.setSelectedNodeIDs({topicId(1)});
  rig.editor.setCanvasZoom(1.25);
  rig.editor.setCanvasOffset(QPointF(3.0, 4.0));
  rig.editor.applyLayout(MindMap::Layout::tree, canvas);
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet{topicId(1)});
  expectView(rig, 1.25, 3.0, 4.0);
}

TEST(ApplyLayout, MovingATopicByHandKeepsTheLayoutValue) {
  EditorRig rig(mapOf({0}));
  rig.editor.applyLayout(MindMap::Layout::tree, canvas);
  rig.editor.selectAll();
  rig.editor.moveSelectedNodes(QPointF(50.0, 0.0));
  rig.editor.createChild(topicId(0));
  EXPECT_EQ(rig.map().layout, MindMap::Layout::tree);
  EXPECT_EQ(rig.position(0), QPointF(450.0, 300.0));
}

TEST(ApplyLayout, WritesWhatTheAlgorithmAnswers) {
  EXPECT_TRUE(rc::check("every topic stands where the layout placed its id", [](const Drawing& drawing) {
    EditorRig rig(drawing.map());
    const MindMap before = rig.map();
    const PositionTable table = TreeLayout().computePositions(before.nodes, before.edges, canvas);
    rig.editor.applyLayout(MindMap::Layout::tree, canvas);
    RC_ASSERT(rig.map().nodes.size() == before.nodes.size());
    for (const Node& node : before.nodes) RC_ASSERT(rig.editor.nodeByID(node.id)->position == table.find(node.id));
  }));
}

TEST(FitToContent, MapWithoutTopicsLeavesTheView) {
  EditorRig rig(mapOf({}, {{0, 1}}));
  rig.editor.setCanvasZoom(3.0);
  rig.editor.setCanvasOffset(QPointF(1.0, 2.0));
  QSignalSpy zooms(&rig.editor, &MindMapViewModel::canvasZoomChanged);
  rig.editor.fitToContent(800.0, 600.0, 80.0);
  expectView(rig, 3.0, 1.0, 2.0);
  EXPECT_EQ(zooms.count(), 0);
}

TEST(FitToContent, OneTopicStandsAtTheCenterAtTheZoomOfHalfTheCanvas) {
  // Content of 200 is raised to 400 and 300: min(640 / 400, 440 / 300) = 1.4667.
  EditorRig rig(topicsAt({{1000.0, -500.0}}));
  rig.editor.fitToContent(800.0, 600.0, 80.0);
  const double zoom = 440.0 / 300.0;
  expectView(rig, zoom, 400.0 - 1000.0 * zoom, 300.0 + 500.0 * zoom);
  const QPointF shown = QPointF(1000.0, -500.0) * rig.editor.canvasZoom() + rig.editor.canvasOffset();
  EXPECT_NEAR(shown.x(), 400.0, 1e-9);
  EXPECT_NEAR(shown.y(), 300.0, 1e-9);
}

TEST(FitToContent, ZoomIsAtMost1Point5) {
  // min(1840 / 1000, 1840 / 1000) = 1.84.
  EditorRig rig(topicsAt({{0.0, 0.0}}));
  rig.editor.fitToContent(2000.0, 2000.0, 80.0);
  expectView(rig, 1.5, 1000.0, 1000.0);
}

TEST(FitToContent, ZoomIsAtLeast0Point2) {
  EditorRig rig(topicsAt({{0.0, 0.0}, {100'000.0, 0.0}}));
  rig.editor.fitToContent(800.0, 600.0, 80.0);
  expectView(rig, 0.2, 400.0 - 50'000.0 * 0.2, 300.0);
}

TEST(FitToContent, SmallerOfTheTwoZoomsWins) {
  EditorRig wide(topicsAt({{0.0, 0.0}, {1080.0, 0.0}}));
  wide.editor.fitToContent(800.0, 600.0, 80.0);
  expectView(wide, 0.5, 400.0 - 540.0 * 0.5, 300.0);
  EditorRig tall(topicsAt({{0.0, -340.0}, {0.0, 340.0}}));
  tall.editor.fitToContent(800.0, 600.0, 80.0);
  expectView(tall, 0.5, 400.0, 300.0);
}

TEST(FitToContent, CanvasWithoutExtentCountsAs800By600) {
  for (const QSizeF size : {QSizeF(0.0, 0.0), QSizeF(0.0, 500.0), QSizeF(500.0, 0.0), QSizeF(-1.0, 500.0)}) {
    EditorRig rig(topicsAt({{0.0, 0.0}, {1080.0, 0.0}}));
    rig.editor.fitToContent(size.width(), size.height(), 80.0);
    expectView(rig, 0.5, 130.0, 300.0);
  }
}

TEST(FitToContent, PaddingIsTakenFromBothSides) {
  EditorRig rig(topicsAt({{0.0, 0.0}, {600.0, 0.0}}));
  rig.editor.fitToContent(800.0, 600.0, 0.0);
  expectView(rig, 1.0, 100.0, 300.0);
  rig.editor.fitToContent(800.0, 600.0, 5000.0);
  EXPECT_EQ(rig.editor.canvasZoom(), 0.2);
}

TEST(FitToContent, HiddenTopicsCount) {
  MindMap map = topicsAt({{0.0, 0.0}, {1080.0, 0.0}});
  map.edges = edgesOf({{0, 1}});
  EditorRig rig(map);
  rig.editor.setCollapsedNodeIDs({topicId(0)});
  rig.editor.fitToContent(800.0, 600.0, 80.0);
  EXPECT_DOUBLE_EQ(rig.editor.canvasZoom(), 0.5);
}

TEST(FitToContent, ChangesNoMapAndTakesNoSnapshot) {
  EditorRig rig(topicsAt({{0.0, 0.0}}));
  rig.editor.fitToContent(800.0, 600.0, 80.0);
  EXPECT_EQ(rig.editor.treeGeneration(), 0u);
  EXPECT_EQ(rig.editor.undoCount(), 0);
  EXPECT_FALSE(rig.editor.isDirty());
}

TEST(FitToContent, HugeCoordinatesGiveAFiniteView) {
  for (const double far : {1e9, 1e300, 1.7e308}) {
    EditorRig rig(topicsAt({{-far, -far}, {far, far}}));
    rig.editor.fitToContent(800.0, 600.0, 80.0);
    expectView(rig, 0.2, 400.0, 300.0);
  }
}

TEST(FitToContent, LoneTopicFarAwayGivesAFiniteView) {
  for (const double far : {1e9, 1e300}) {
    EditorRig rig(topicsAt({{far, -far}}));
    rig.editor.fitToContent(800.0, 600.0, 80.0);
    EXPECT_TRUE(std::isfinite(rig.editor.canvasOffset().x()));
    EXPECT_TRUE(std::isfinite(rig.editor.canvasOffset().y()));
  }
}
