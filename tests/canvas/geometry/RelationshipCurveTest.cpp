#include <cmath>

#include <gtest/gtest.h>

#include "canvas/geometry/Handles.h"
#include "canvas/geometry/RelationshipCurve.h"

namespace quilmora {
namespace {

TEST(RelationshipCurve, BowsByAFifthOfTheDistanceToOneSide) {
  EXPECT_EQ(RelationshipCurve(QPointF(0, 0), QPointF(100, 0), std::nullopt).control, QPointF(50, 20));
  EXPECT_EQ(RelationshipCurve(QPointF(100, 0), QPointF(0, 0), std::nullopt).control, QPointF(50, -20));
  EXPECT_EQ(RelationshipCurve(QPointF(0, 0), QPointF(0, 100), std::nullopt).control, QPointF(-20, 50));
}

TEST(RelationshipCurve, AddsTheOffsetToItsControlPoint) {
  EXPECT_EQ(RelationshipCurve(QPointF(0, 0), QPointF(100, 0), QPointF(5, 30)).control, QPointF(55, 50));
}

TEST(RelationshipCurve, TreatsAMissingOffsetAsZero) {
  EXPECT_EQ(RelationshipCurve(QPointF(3, 4), QPointF(70, 9), std::nullopt).control,
            RelationshipCurve(QPointF(3, 4), QPointF(70, 9), QPointF(0, 0)).control);
}

TEST(RelationshipCurve, HasItsMidpointHalfwayToTheControlPoint) {
  const RelationshipCurve curve(QPointF(0, 0), QPointF(100, 0), std::nullopt);
  EXPECT_EQ(curve.midpoint(), QPointF(50, 10));
  EXPECT_EQ(curve.pointAt(0.5), QPointF(50, 10));
}

TEST(RelationshipCurve, IsHitWithinHalfOfItsHitWidth) {
  const RelationshipCurve curve(QPointF(0, 0), QPointF(100, 0), std::nullopt);
  EXPECT_TRUE(curve.contains(QPointF(50, 10)));
  EXPECT_TRUE(curve.contains(QPointF(50, 17.4)));
  EXPECT_TRUE(curve.contains(QPointF(50, 2.6)));
  EXPECT_FALSE(curve.contains(QPointF(50, 17.6)));
  EXPECT_FALSE(curve.contains(QPointF(50, 2.3)));
  EXPECT_FALSE(curve.contains(QPointF(200, 10)));
}

TEST(RelationshipCurve, IsHitAllAlongALongCurve) {
  const RelationshipCurve curve(QPointF(-30000, 0), QPointF(30000, 500), std::nullopt);
  for (int i = 0; i <= 20; ++i) EXPECT_TRUE(curve.contains(curve.pointAt(i / 20.0) + QPointF(0, 6))) << i;
}

TEST(RelationshipCurve, BearsNumbersBeyondReason) {
  for (double far : {1e9, 1e300, 1.7e308, qInf(), qQNaN()}) {
    const RelationshipCurve curve(QPointF(-far, far), QPointF(far, -far), QPointF(far, far));
    EXPECT_FALSE(curve.contains(QPointF(0, 0))) << far;
    if (std::isfinite(far) && far < 1e300) {
      EXPECT_TRUE(curve.bounds().contains(QPointF(-far, far))) << far;
    }
  }
}

TEST(Handles, AreHitInsideTheirCircle) {
  EXPECT_TRUE(handleContains(QPointF(10, 10), 12, QPointF(16, 10)));
  EXPECT_FALSE(handleContains(QPointF(10, 10), 12, QPointF(15, 15)));
}

TEST(Handles, SitAtTheirPlaces) {
  EXPECT_EQ(deleteButtonCenter(QPointF(50, 10)), QPointF(50, -5));
  EXPECT_EQ(resizeHandleCenter(QRectF(10, 20, 100, 50)), QPointF(110, 70));
}

}  // namespace
}  // namespace quilmora
