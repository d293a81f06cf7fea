#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "app/companions/MiniMapGeometry.h"

namespace quilmora {
namespace {

constexpr QSizeF miniMap(180, 120);
constexpr QSizeF viewSize(800, 600);

const PagedArray<QPointF> twoTopics = {{0, 0}, {300, 50}};

TEST(MiniMapGeometry, AMapWithoutTopicsHasNone) {
  EXPECT_FALSE(MiniMapGeometry::of({}, miniMap));
}

TEST(MiniMapGeometry, ASingleTopicStandsInTheMiddleOfAWorldOf100By100) {
  const auto geometry = MiniMapGeometry::of({{10, 20}}, miniMap);
  ASSERT_TRUE(geometry);
  EXPECT_EQ(geometry->world(), QRectF(-40, -30, 100, 100));
  EXPECT_DOUBLE_EQ(geometry->scale(), 1.2);
  EXPECT_EQ(geometry->toMiniMap({10, 20}), QPointF(60, 60));
  EXPECT_EQ(geometry->toMiniMap({10, 20}) + geometry->inset(), QPointF(90, 60));
}

TEST(MiniMapGeometry, TheWorldIs50LargerOnEachSideAndTheSmallerScaleHolds) {
  const auto geometry = MiniMapGeometry::of(twoTopics, miniMap);
  ASSERT_TRUE(geometry);
  EXPECT_EQ(geometry->world(), QRectF(-50, -50, 400, 150));
  EXPECT_DOUBLE_EQ(geometry->scale(), 0.45);
  EXPECT_EQ(geometry->toMiniMap({0, 0}), QPointF(22.5, 22.5));
  EXPECT_EQ(geometry->toMiniMap({300, 50}), QPointF(157.5, 45));
  EXPECT_EQ(geometry->inset(), QPointF(0, 26.25));
}

TEST(MiniMapGeometry, WidthAndHeightAreAtLeast1) {
  // So far out that 50 units are lost to rounding.
  const auto geometry = MiniMapGeometry::of({{1e18, 0}}, miniMap);
  ASSERT_TRUE(geometry);
  EXPECT_EQ(geometry->world().size(), QSizeF(1, 100));
  EXPECT_DOUBLE_EQ(geometry->scale(), 1.2);
}

TEST(MiniMapGeometry, AMapTooWideForNumbersHasNone) {
  EXPECT_FALSE(MiniMapGeometry::of({{-1e308, 0}, {1e308, 0}}, miniMap));
}

TEST(MiniMapGeometry, TheViewportAtHalfTheZoomIsTwiceAsLarge) {
  const auto geometry = MiniMapGeometry::of(twoTopics, miniMap);
  ASSERT_TRUE(geometry);
  EXPECT_EQ(geometry->viewport({100, -50}, 1.0, viewSize), QRectF(-22.5, 45, 360, 270));
  EXPECT_EQ(geometry->viewport({100, -50}, 0.5, viewSize), QRectF(-67.5, 67.5, 720, 540));
}

TEST(MiniMapGeometry, TheMiniMapsCentreBringsTheMapsMiddleToTheCanvasCentre) {
  const auto geometry = MiniMapGeometry::of(twoTopics, miniMap);
  ASSERT_TRUE(geometry);
  const QPointF centre = QPointF(90, 60) - geometry->inset();
  EXPECT_EQ(geometry->toWorld(centre), QPointF(150, 25));
  EXPECT_EQ(geometry->offsetCentring(centre, 1.0, viewSize), QPointF(250, 275));
  EXPECT_EQ(geometry->offsetCentring(centre, 2.0, viewSize), QPointF(100, 250));
}

TEST(MiniMapGeometry, EveryTopicLiesInTheMiniMapAndIsFoundThere) {
  EXPECT_TRUE(rc::check("mini-map and canvas points are inverse", [] {
    const auto coordinate = rc::gen::map(rc::gen::inRange(-1'000'000, 1'000'000), [](int n) { return n / 7.0; });
    const auto point = rc::gen::map(rc::gen::pair(coordinate, coordinate),
                                    [](const std::pair<double, double>& p) { return QPointF(p.first, p.second); });
    const auto positions = *rc::gen::nonEmpty(rc::gen::container<std::vector<QPointF>>(point));
    const auto geometry = MiniMapGeometry::of(PagedArray(positions), miniMap);
    RC_ASSERT(geometry.has_value());
    for (const QPointF& position : positions) {
      const QPointF shown = geometry->toMiniMap(position) + geometry->inset();
      RC_ASSERT(QRectF(QPointF(), miniMap).adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(shown));
      const QPointF back = geometry->toWorld(geometry->toMiniMap(position)) - position;
      RC_ASSERT(back.manhattanLength() < 1e-6);
    }
  }));
}

}  // namespace
}  // namespace quilmora
