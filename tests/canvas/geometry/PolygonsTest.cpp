#include <cmath>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "canvas/geometry/Polygons.h"
#include "canvas/geometry/ViewTransform.h"

namespace quilmora {
namespace {

const QRectF square(0, 0, 100, 100);

TEST(Polygons, FillByTheNonZeroRule) {
  // A square that winds twice: its middle is inside by this rule, but outside by the odd-even one.
  const std::vector<QPointF> twice{{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}, {10, 0}, {10, 10}, {0, 10}};
  EXPECT_TRUE(polygonContains(twice, QPointF(5, 5)));
  EXPECT_FALSE(polygonContains(twice, QPointF(15, 5)));
  EXPECT_FALSE(polygonContains({}, QPointF(0, 0)));
}

TEST(Polygons, KeepWhatLiesInside) {
  const std::vector<QPointF> triangle{{10, 10}, {60, 10}, {10, 60}};
  EXPECT_EQ(clippedPolygon(triangle, square), triangle);
}

TEST(Polygons, AreCutAtTheRectangle) {
  const auto clipped = clippedPolygon(std::vector<QPointF>{{-1e9, 20}, {1e9, 20}, {1e9, 30}, {-1e9, 30}}, square);
  ASSERT_EQ(clipped.size(), 4u);
  for (QPointF point : clipped) {
    EXPECT_TRUE(std::abs(point.x()) < 1e-3 || std::abs(point.x() - 100) < 1e-3) << point.x();
    EXPECT_TRUE(point.y() == 20 || point.y() == 30) << point.y();
  }
}

TEST(Polygons, VanishOutsideAndOnPointsThatAreNoNumbers) {
  EXPECT_TRUE(clippedPolygon(std::vector<QPointF>{{200, 0}, {300, 0}, {300, 50}}, square).empty());
  EXPECT_TRUE(clippedPolygon(std::vector<QPointF>{{0, 0}, {qQNaN(), 0}, {30, 50}}, square).empty());
  EXPECT_TRUE(clippedPolygon(std::vector<QPointF>{{0, 0}, {qInf(), 0}, {30, 50}}, square).empty());
}

TEST(Polygons, NeverReachBeyondTheRectangle) {
  EXPECT_TRUE(rc::check("clipped points lie in the rectangle", [] {
    const auto polygon = *rc::gen::container<std::vector<std::pair<int, int>>>(
        rc::gen::pair(rc::gen::inRange(-1000, 1000), rc::gen::inRange(-1000, 1000)));
    std::vector<QPointF> points;
    for (auto [x, y] : polygon) points.emplace_back(x, y);
    for (QPointF point : clippedPolygon(points, square))
      RC_ASSERT(square.adjusted(-1e-9, -1e-9, 1e-9, 1e-9).contains(point));
  }));
}

TEST(Segments, AreCutAtTheRectangle) {
  QPointF from(-100, 50);
  QPointF to(300, 50);
  EXPECT_TRUE(clipSegment(from, to, square));
  EXPECT_EQ(from, QPointF(0, 50));
  EXPECT_EQ(to, QPointF(100, 50));
}

TEST(Segments, OutsideAreRefused) {
  QPointF from(-100, -50);
  QPointF to(300, -50);
  EXPECT_FALSE(clipSegment(from, to, square));
  QPointF nowhere(qQNaN(), 0);
  EXPECT_FALSE(clipSegment(nowhere, to, square));
}

TEST(Segments, MeasureTheirDistance) {
  EXPECT_EQ(distanceToSegment(QPointF(5, 3), QPointF(0, 0), QPointF(10, 0)), 3.0);
  EXPECT_EQ(distanceToSegment(QPointF(13, 4), QPointF(0, 0), QPointF(10, 0)), 5.0);
  EXPECT_EQ(distanceToSegment(QPointF(3, 4), QPointF(0, 0), QPointF(0, 0)), 5.0);
}

TEST(ViewTransform, ShowsAPointAtItsZoomAndOffset) {
  const ViewTransform view{QPointF(30, -20), 2.0};
  EXPECT_EQ(view.toView(QPointF(10, 20)), QPointF(50, 20));
  EXPECT_EQ(view.toCanvas(QPointF(50, 20)), QPointF(10, 20));
  EXPECT_EQ(view.toCanvas(QRectF(30, -20, 200, 100)), QRectF(0, 0, 100, 50));
  EXPECT_EQ(view.toView(QRectF(0, 0, 100, 50)), QRectF(30, -20, 200, 100));
  EXPECT_EQ(view.transform().map(QPointF(10, 20)), QPointF(50, 20));
}

TEST(ViewTransform, HasAnInverseAtAnyZoom) {
  const ViewTransform view{QPointF(0, 0), 0.0};
  EXPECT_TRUE(std::isfinite(view.toCanvas(QPointF(100, 100)).x()));
}

}  // namespace
}  // namespace quilmora
