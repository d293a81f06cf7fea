#include <random>

#include <gtest/gtest.h>

#include "canvas/geometry/TaperedConnector.h"
#include "canvas/painting/PaintedMap.h"
#include "canvas/painting/ScenePlan.h"
#include "canvas/painting/TileWalk.h"

using namespace quilmora;

namespace {

constexpr int side = 64;

// The picture of the view assembled from tiles, each painted in steps.
QImage tiled(PaintedMap& painted, QSize size, double zoom) {
  painted.refresh();
  const QRect tiles(-size.width() / 2 / side, -size.height() / 2 / side, size.width() / side, size.height() / side);
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  painted.scene.view = {QPointF(0, 0), zoom};
  const auto plan = std::make_shared<ScenePlan>(side / zoom, tiles);
  PaintSteps preparation = painted.painter.makePlan(*plan, painted.scene, painted.options);
  while (!preparation.run([] { return true; })) {
  }
  QPainter target(&image);
  for (int y = tiles.top(); y <= tiles.bottom(); ++y)
    for (int x = tiles.left(); x <= tiles.right(); ++x) {
      QImage tile(side, side, QImage::Format_RGB32);
      QPainter painter(&tile);
      painted.scene.view = {-QPointF(x, y) * side, zoom};
      painted.scene.exposed = QRectF(0, 0, side, side);
      PaintSteps steps = painted.painter.paintTile(painter, plan, {x, y}, painted.scene, painted.options);
      while (!steps.run([] { return true; })) {
      }
      steps = {};
      painter.end();
      target.drawImage(QPoint(x - tiles.left(), y - tiles.top()) * side, tile);
    }
  return image;
}

int farthestColors(const QImage& a, const QImage& b) {
  int farthest = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x)
      farthest = std::max(farthest, colorDistance(a.pixelColor(x, y), b.pixelColor(x, y)));
  return farthest;
}

}  // namespace

TEST(ScenePlan, TilesTogetherLookLikeOnePicture) {
  std::mt19937 random(5);
  const auto below = [&](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
  for (const double zoom : {0.1, 0.3, 1.0, 2.3}) {
    PaintedMap painted;
    painted.map.hierarchical.edgeSizing = true;
    std::vector<QUuid> ids;
    for (int i = 0; i < 40; ++i) {
      ids.push_back(painted.addNode(QPointF(below(900) - 450, below(700) - 350), QStringLiteral("Topic %1").arg(i)));
      if (i == 0) continue;
      painted.addEdge(ids[static_cast<std::size_t>(below(i))], ids.back(), "#3060A0", 1 + below(12));
      const auto edge = static_cast<std::size_t>(i - 1);
      if (below(4) == 0)
        painted.changeEdge(edge, [&](Edge& one) { one.controlPointOffset = QPointF(below(200), -90); });
      if (below(4) == 0)
        painted.changeEdge(edge, [&](Edge& one) { one.style.arrowHead = EdgeStyle::ArrowHead::triangle; });
      if (below(6) == 0) painted.changeEdge(edge, [&](Edge& one) { one.style.dashed = true; });
    }
    for (int i = 0; i < 3; ++i) {
      painted.selectedNodes.insert(ids[static_cast<std::size_t>(below(40))]);
      painted.selectedEdges.insert(painted.map.edges[static_cast<std::size_t>(below(39))].id);
      painted.map.relationships.append(Relationship{QUuid::createUuid(),
                                                    ids[static_cast<std::size_t>(below(40))],
                                                    ids[static_cast<std::size_t>(below(40))],
                                                    QString(),
                                                    QStringLiteral("#A03060"),
                                                    {}});
      painted.map.regions.append(Region{QUuid::createUuid(), QStringLiteral("Region"), QStringLiteral("#7C4DFF"),
                                        QRectF(below(300) - 300, below(300) - 300, 300, 200)});
    }
    const QImage whole = painted.paint(QSize(768, 512), 1.0, zoom);
    // The antialiased edges of shapes that cross a tile may be a sixty-fourth of a pixel off.
    EXPECT_LE(farthestColors(tiled(painted, QSize(768, 512), zoom), whole), 20) << zoom;
  }
}

TEST(TileWalk, VisitsEveryTileThatAnEdgeTouchesAndEachOnce) {
  std::mt19937 random(9);
  const auto below = [&](int bound) { return static_cast<double>(random() % static_cast<unsigned>(bound)); };
  const QRect range(-2, -2, 9, 8);
  for (int round = 0; round < 300; ++round) {
    const QPointF from(below(700) - 200, below(700) - 200);
    const QPointF to = round % 7 == 0 ? QPointF(from.x(), below(700)) : QPointF(below(700) - 200, below(700) - 200);
    const QPointF bend = round % 3 == 0 ? QPointF(below(200) - 100, below(200) - 100) : QPointF();
    const double reach = below(30);
    std::vector<QPoint> visited;
    visitTilesOfEdge(from, to, bend, reach, side, range, [&](QPoint tile) { visited.push_back(tile); });
    for (const QPoint tile : visited) {
      EXPECT_TRUE(range.contains(tile));
      EXPECT_EQ(std::ranges::count(visited, tile), 1);
    }
    TaperedConnector curve;
    curve.startPoint = from;
    curve.endPoint = to;
    const auto controls = edgeControlPoints(from, to, bend);
    curve.controlPoint1 = controls[0];
    curve.controlPoint2 = controls[1];
    for (int k = 0; k <= 500; ++k) {
      const QPointF point = curve.pointAt(k / 500.0);
      for (const QPointF away :
           {QPointF(0, 0), QPointF(reach, 0), QPointF(0, reach), QPointF(-reach, 0), QPointF(0, -reach)}) {
        const QPointF place = (point + away * 0.999) / side;
        const QPoint tile(static_cast<int>(std::floor(place.x())), static_cast<int>(std::floor(place.y())));
        EXPECT_TRUE(!range.contains(tile) || std::ranges::find(visited, tile) != visited.end()) << round;
      }
    }
  }
}

TEST(TileWalk, NarrowsUnbentEdgesToWhatLiesInARectangle) {
  const CurveShare whole = curveShareIn(QRectF(-10, -10, 120, 120), QPointF(0, 0), QPointF(100, 100));
  EXPECT_NEAR(whole.first, 0.0, 1e-9);
  EXPECT_NEAR(whole.last, 1.0, 1e-9);
  const CurveShare left = curveShareIn(QRectF(-10, -10, 60, 120), QPointF(0, 0), QPointF(100, 100));
  EXPECT_NEAR(left.last, 0.5, 1e-9);
  // At half the height half the way is done; at 15.625 % a quarter.
  EXPECT_NEAR(curveShareIn(QRectF(-10, -10, 120, 60), QPointF(0, 0), QPointF(100, 100)).last, 0.5, 1e-9);
  EXPECT_NEAR(curveShareIn(QRectF(-10, 15.625, 120, 100), QPointF(0, 0), QPointF(100, 100)).first, 0.25, 1e-9);
  EXPECT_TRUE(curveShareIn(QRectF(200, 0, 10, 10), QPointF(0, 0), QPointF(100, 100)).isEmpty());
}

namespace {

// Sixty selected topics, ten in a row with so much room for each, and one at rest.
void addManyTopics(PaintedMap& painted, int room) {
  for (int i = 0; i < 60; ++i)
    painted.selectedNodes.insert(
        painted.addNode(QPointF((i % 10) * room - 500, (i / 10) * 60 - 200), QStringLiteral("Topic")));
  painted.addNode(QPointF(0, 0), QStringLiteral("At rest"), "#FFCC00");
  painted.addEdge(painted.map.nodes[3].id, painted.map.nodes[60].id);
}

void moveSelected(PaintedMap& painted, QPointF way) {
  for (std::size_t i = 0; i < 60; ++i) painted.map.nodes.update(i, [&](Node& node) { node.position += way; });
}

}  // namespace

TEST(MovingLayer, ManyDraggedTopicsMoveAsOnePicture) {
  // All of them fit into a picture, or only those around the view.
  for (const int room : {90, 260}) {
    PaintedMap kept;
    addManyTopics(kept, room);
    for (const QPointF way : {QPointF(4, 4), QPointF(40, 9), QPointF(140, 60), QPointF(400, 60), QPointF(-30, 5)}) {
      PaintedMap fresh;
      addManyTopics(fresh, room);
      kept.scene.shown.nodeDragTranslation = fresh.scene.shown.nodeDragTranslation = way;
      EXPECT_EQ(farthestColors(kept.paint(QSize(768, 512)), fresh.paint(QSize(768, 512))), 0) << way.x();
    }
    // Another selection is another picture.
    kept.selectedNodes.remove(kept.map.nodes[5].id);
    PaintedMap fresh;
    addManyTopics(fresh, room);
    fresh.selectedNodes.remove(fresh.map.nodes[5].id);
    fresh.scene.shown.nodeDragTranslation = kept.scene.shown.nodeDragTranslation;
    EXPECT_EQ(farthestColors(kept.paint(QSize(768, 512)), fresh.paint(QSize(768, 512))), 0);
  }
}

TEST(MovingLayer, ManyTopicsLookAfterTheirDropAsWhereTheyWereDropped) {
  const QPointF way(130, 20);
  for (const bool areAlike : {true, false})
    for (const int room : {90, 260}) {
      PaintedMap kept;
      PaintedMap fresh;
      for (PaintedMap* painted : {&kept, &fresh}) addManyTopics(*painted, room);
      for (const QPointF step : {QPointF(50, 0), way}) {
        kept.scene.shown.nodeDragTranslation = step;
        kept.paint(QSize(768, 512));
      }
      for (PaintedMap* painted : {&kept, &fresh}) {
        moveSelected(*painted, way);
        // One of them lands elsewhere, or with another title.
        if (!areAlike)
          painted->changeNode(7, [&](Node& node) {
            if (room == 90)
              node.position += QPointF(0, 30);
            else
              node.title = QStringLiteral("Other");
          });
        painted->scene.shown.nodeDragTranslation = {};
        painted->scene.isLanding = true;
      }
      EXPECT_EQ(farthestColors(kept.paint(QSize(768, 512)), fresh.paint(QSize(768, 512))), 0) << room << areAlike;
    }
}

TEST(MovingLayer, TopicsAtRestStayAboveThePreviews) {
  PaintedMap painted;
  const QUuid moved = painted.addNode(QPointF(-150, 0), QStringLiteral("Moved"));
  const QUuid other = painted.addNode(QPointF(150, 0));
  painted.addNode(QPointF(0, 10), {}, "#FFCC00", "#FFCC00");
  painted.addEdge(moved, other);
  painted.selectedNodes.insert(moved);
  painted.scene.shown.nodeDragTranslation = QPointF(0, 5);
  const QImage image = painted.paint();
  EXPECT_EQ(painted.at(image, QPointF(0, 3)), QColor(0xFF, 0xCC, 0x00));
  EXPECT_NE(painted.at(image, QPointF(70, 1.5)), QColor(Qt::white));
}

TEST(ScenePlan, StrokeOfARelationshipStaysInTheTilesFoundForIt) {
  std::mt19937 random(11);
  const auto below = [&](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
  const auto anyPoint = [&] { return QPointF(below(3000) - 1500, below(3000) - 1500); };
  const QRect range(-5, -4, 9, 8);
  for (int round = 0; round < 300; ++round) {
    const bool isBent = below(2) == 0;
    const RelationshipCurve curve(anyPoint(), anyPoint(), isBent ? std::optional(anyPoint()) : std::nullopt);
    constexpr double reach = 3.0;
    ScenePlan plan(side, range);
    plan.addRelationship(7, curve, reach);
    for (int k = 0; k <= 2000; ++k) {
      const QPointF point = curve.pointAt(k / 2000.0);
      for (const QPointF way : {QPointF(reach, 0), QPointF(-reach, 0), QPointF(0, reach), QPointF(0, -reach)}) {
        const QPointF rim = (point + way) / side;
        const QPoint tile(static_cast<int>(std::floor(rim.x())), static_cast<int>(std::floor(rim.y())));
        if (!range.contains(tile)) continue;
        ASSERT_EQ(plan.part(tile).relationships, std::vector<std::uint32_t>{7}) << round << " at " << k / 2000.0;
      }
    }
  }
}
