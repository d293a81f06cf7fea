#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "canvas/geometry/TaperedConnector.h"
#include "canvas/painting/PaintedMap.h"
#include "canvas/painting/SceneDifference.h"

using namespace quilmora;

namespace {

struct DifferenceOfScenes : testing::Test {
  PaintedMap painted;
  SceneDifference difference;
  QUuid a = painted.addNode(QPointF(-120, 0), QStringLiteral("From"));
  QUuid b = painted.addNode(QPointF(120, 60), QStringLiteral("To"));
  QUuid c = painted.addNode(QPointF(0, -100), QStringLiteral("Apart"));
  QUuid edge = painted.addEdge(a, b);

  DifferenceOfScenes() { follow(); }

  ChangedParts follow() {
    painted.refresh();
    return difference.follow(painted.scene, painted.options, painted.painter);
  }
  bool isMarked(const ChangedParts& parts, std::size_t node) {
    const QRectF box = painted.metrics(node).box.translated(painted.map.nodes[node].position);
    return std::ranges::any_of(parts.areas, [&](const QRectF& area) { return area.contains(box); });
  }
};

}  // namespace

TEST(SceneDifference, OfTheFirstSceneIsEverything) {
  PaintedMap painted;
  SceneDifference difference;
  painted.refresh();
  EXPECT_TRUE(difference.follow(painted.scene, painted.options, painted.painter).everything);
}

TEST_F(DifferenceOfScenes, OfOneSceneIsNothing) {
  EXPECT_TRUE(follow().isEmpty());
}

TEST_F(DifferenceOfScenes, LeavesTheViewOut) {
  painted.scene.view.zoom = 3;
  painted.scene.exposed = QRectF(4, 4, 100, 100);
  EXPECT_TRUE(follow().isEmpty());
}

TEST_F(DifferenceOfScenes, OfATitleIsTheTopicAlone) {
  painted.changeNode(2, [](Node& node) { node.title = QStringLiteral("Another title"); });
  const ChangedParts parts = follow();
  EXPECT_TRUE(isMarked(parts, 2));
  EXPECT_FALSE(isMarked(parts, 0));
  EXPECT_TRUE(parts.edges.empty());
}

TEST_F(DifferenceOfScenes, OfAMoveIsBothPlacesAndTheConnectors) {
  painted.changeNode(1, [](Node& node) { node.position = QPointF(300, 200); });
  const ChangedParts parts = follow();
  EXPECT_TRUE(isMarked(parts, 1));
  EXPECT_TRUE(std::ranges::any_of(parts.areas, [](const QRectF& area) { return area.contains(QPointF(120, 60)); }));
  ASSERT_EQ(parts.edges.size(), 2U);
  EXPECT_EQ(parts.edges[0].to, QPointF(120, 60));
  EXPECT_EQ(parts.edges[1].to, QPointF(300, 200));
}

TEST_F(DifferenceOfScenes, OfADragIsOnceAtItsBeginningAndOnceAtItsEnd) {
  painted.selectedNodes.insert(a);
  painted.selectedNodes.insert(b);
  follow();
  painted.scene.shown.nodeDragTranslation = QPointF(5, 5);
  EXPECT_EQ(follow().edges.size(), 1U);
  painted.scene.shown.nodeDragTranslation = QPointF(30, 5);
  EXPECT_TRUE(follow().isEmpty());
  painted.scene.shown.nodeDragTranslation = QPointF();
  for (const std::size_t node : {0U, 1U})
    painted.changeNode(node, [](Node& moved) { moved.position += QPointF(30, 5); });
  const ChangedParts parts = follow();
  EXPECT_TRUE(isMarked(parts, 0) && isMarked(parts, 1));
  ASSERT_EQ(parts.edges.size(), 1U);
  EXPECT_EQ(parts.edges[0].from, QPointF(-90, 5));
}

TEST_F(DifferenceOfScenes, OfASelectionLeavesTheMapAlone) {
  painted.selectedNodes = IdSet{b};
  ChangedParts parts = follow();
  EXPECT_TRUE(parts.leaveMapAlone);
  EXPECT_EQ(parts.areas.size(), 1U);
  EXPECT_TRUE(isMarked(parts, 1));
  // The handle of the first one goes.
  painted.selectedNodes.insert(c);
  parts = follow();
  EXPECT_TRUE(parts.leaveMapAlone && isMarked(parts, 1) && isMarked(parts, 2));
  // A drag lifts topics out of the picture as they were selected.
  painted.scene.shown.nodeDragTranslation = QPointF(5, 5);
  parts = follow();
  EXPECT_TRUE(!parts.leaveMapAlone && isMarked(parts, 1) && isMarked(parts, 2));
  painted.map.hierarchical.nodeSizing = true;
  EXPECT_FALSE(follow().leaveMapAlone);
}

TEST_F(DifferenceOfScenes, OfALensOrTheGroundIsEverything) {
  painted.scene.opacityRule = 2;
  EXPECT_TRUE(follow().everything);
  painted.map.canvas.background = QStringLiteral("#000000");
  EXPECT_TRUE(follow().everything);
}

TEST_F(DifferenceOfScenes, OfAMarkOnOneOfTwoTopicsWithOneIdIsEverything) {
  painted.map.nodes.append(painted.map.nodes[0]);
  follow();
  painted.scene.shown.reparentTargetID = a;
  EXPECT_TRUE(follow().everything);
  EXPECT_TRUE(follow().isEmpty());
}

TEST_F(DifferenceOfScenes, OfGesturesIsWhereTheyShow) {
  ShownGestures& shown = painted.scene.shown;
  shown.reparentTargetID = c;
  EXPECT_TRUE(isMarked(follow(), 2));
  shown.reparentTargetID.reset();
  shown.handleDragTargetID = c;  // another colour
  EXPECT_TRUE(isMarked(follow(), 2));
  shown.handleDragTargetID.reset();
  EXPECT_TRUE(isMarked(follow(), 2));
  shown.editingNodeID = b;
  EXPECT_TRUE(isMarked(follow(), 1));
  shown.editingTitle = QStringLiteral("Longer than before");
  EXPECT_TRUE(isMarked(follow(), 1));
  shown.draggedHandle = ShownGestures::DraggedHandle{ShownGestures::HandleKind::edgeBend, edge, QPointF(1, 1)};
  EXPECT_EQ(follow().edges.size(), 1U);
  shown.draggedHandle->translation = QPointF(50, 50);
  EXPECT_TRUE(follow().isEmpty());
}

TEST_F(DifferenceOfScenes, OfARegionUnderADragIsWhereItWasAndWhereItIs) {
  const Region region{QUuid::createUuid(), QStringLiteral("Name"), QStringLiteral("#7C4DFF"), QRectF(0, 0, 100, 80)};
  painted.map.regions.append(region);
  follow();
  painted.scene.shown.regions.draggingRegionID = region.id;
  painted.scene.shown.regions.dragOffset = QSizeF(500, 0);
  const ChangedParts parts = follow();
  ASSERT_EQ(parts.areas.size(), 2U);
  EXPECT_TRUE(parts.areas[0].contains(QRectF(0, 0, 100, 80)));
  EXPECT_TRUE(parts.areas[1].contains(QRectF(500, 0, 100, 80)));
  // It has disappeared from where it was dragged to.
  painted.map.regions.eraseIf([](const Region&) { return true; });
  EXPECT_TRUE(std::ranges::any_of(follow().areas, [](const QRectF& area) { return area.contains(QPointF(550, 40)); }));
}

// Every pixel that changes is in the reported parts.
TEST(SceneDifference, TellsAllThatLooksDifferentAfterAnyChange) {
  std::mt19937 random(23);
  const auto below = [&](std::size_t bound) { return static_cast<int>(random() % bound); };
  constexpr QSize size(500, 400);
  for (int round = 0; round < 12; ++round) {
    PaintedMap painted;
    SceneDifference difference;
    std::vector<QUuid> ids;
    for (int i = 0; i < 10; ++i) {
      ids.push_back(painted.addNode(QPointF(below(460) - 230, below(360) - 180), QStringLiteral("Topic %1").arg(i)));
      if (i > 0) painted.addEdge(ids[static_cast<std::size_t>(below(ids.size()))], ids.back(), "#3060A0", 1 + below(9));
    }
    const auto anyNode = [&] { return static_cast<std::size_t>(below(painted.map.nodes.size())); };
    const auto anyEdge = [&] { return static_cast<std::size_t>(below(painted.map.edges.size())); };
    QImage before = painted.paint(size);
    difference.follow(painted.scene, painted.options, painted.painter);
    for (int step = 0; step < 25; ++step) {
      const int kind = below(10);
      if (kind == 0) painted.changeNode(anyNode(), [&](Node& node) { node.position += QPointF(below(90) - 45, 20); });
      if (kind == 1) painted.changeNode(anyNode(), [&](Node& node) { node.title += QStringLiteral(" more"); });
      if (kind == 2) painted.changeNode(anyNode(), [&](Node& node) { node.badge = Badge::done; });
      if (kind == 3) painted.changeEdge(anyEdge(), [&](Edge& one) { one.controlPointOffset = QPointF(0, below(80)); });
      if (kind == 4) painted.changeEdge(anyEdge(), [&](Edge& one) { one.style.dashed = !one.style.dashed; });
      if (kind == 5) painted.selectedNodes.insert(ids[anyNode()]);
      if (kind == 6) painted.selectedEdges.insert(painted.map.edges[anyEdge()].id);
      if (kind == 7) painted.hidden[anyNode()] ^= 1;
      if (kind == 8) painted.selectedNodes = IdSet{ids[anyNode()]};
      if (kind == 9) painted.selectedNodes = painted.selectedEdges = IdSet();
      const QImage after = painted.paint(size);
      const ChangedParts parts = difference.follow(painted.scene, painted.options, painted.painter);
      if (!parts.everything)
        for (int y = 0; y < size.height(); ++y)
          for (int x = 0; x < size.width(); ++x) {
            if (before.pixel(x, y) == after.pixel(x, y)) continue;
            const QPointF place(x + 0.5 - size.width() / 2.0, y + 0.5 - size.height() / 2.0);
            const auto isNear = [&](const ChangedParts::EdgePath& path) {
              TaperedConnector curve;
              curve.startPoint = path.from;
              curve.endPoint = path.to;
              const auto controls = edgeControlPoints(path.from, path.to, path.bend);
              curve.controlPoint1 = controls[0];
              curve.controlPoint2 = controls[1];
              for (int k = 0; k <= 400; ++k) {
                const QPointF way = curve.pointAt(k / 400.0) - place;
                if (std::hypot(way.x(), way.y()) <= path.reach + 2.0) return true;
              }
              return false;
            };
            const bool isTold =
                std::ranges::any_of(parts.areas, [&](const QRectF& area) { return area.contains(place); }) ||
                std::ranges::any_of(parts.edges, isNear);
            ASSERT_TRUE(isTold) << "round " << round << ", step " << step << ", change " << kind << " at " << x << " "
                                << y;
          }
      before = after;
    }
  }
}

TEST_F(DifferenceOfScenes, OfADropIsBothPlacesAndTheConnectors) {
  painted.selectedNodes = IdSet{b};
  follow();
  painted.scene.shown.nodeDragTranslation = QPointF(180, 140);
  ChangedParts parts = follow();
  EXPECT_TRUE(isMarked(parts, 1));
  EXPECT_EQ(parts.edges.size(), 1U);
  painted.scene.shown.nodeDragTranslation = QPointF();
  painted.changeNode(1, [](Node& node) { node.position += QPointF(180, 140); });
  parts = follow();
  EXPECT_FALSE(parts.everything);
  EXPECT_TRUE(isMarked(parts, 1));
  ASSERT_EQ(parts.edges.size(), 1U);
  EXPECT_EQ(parts.edges[0].to, QPointF(300, 200));
  EXPECT_TRUE(follow().isEmpty());
}
