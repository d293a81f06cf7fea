#include <gtest/gtest.h>

#include "canvas/view/PictureTiles.h"

using namespace quilmora;

namespace {

QImage picture() {
  return QImage(1, 1, QImage::Format_RGB32);
}

// Tiles from (0, 0) to (3, 2), all settled.
PictureTiles settledTiles() {
  PictureTiles tiles;
  for (int y = 0; y < 3; ++y)
    for (int x = 0; x < 4; ++x) tiles.put({x, y}, picture(), std::chrono::milliseconds(2));
  return tiles;
}

constexpr QRect all(0, 0, 4, 3);

}  // namespace

TEST(PictureTiles, LieUnderEveryPixelThatIsTouched) {
  EXPECT_EQ(PictureTiles::under(QRectF(0, 0, 256, 256)), QRect(0, 0, 1, 1));
  EXPECT_EQ(PictureTiles::under(QRectF(0, 0, 256.5, 257)), QRect(0, 0, 2, 2));
  EXPECT_EQ(PictureTiles::under(QRectF(-1, -257, 2, 2)), QRect(-1, -2, 2, 2));
  EXPECT_EQ(PictureTiles::under(QRectF(255.5, 0, 1, 1)), QRect(0, 0, 2, 1));
  EXPECT_TRUE(PictureTiles::under(QRectF()).isEmpty());
}

TEST(PictureTiles, AreMissingThenSettledThenStale) {
  PictureTiles tiles;
  EXPECT_FALSE(tiles.isPainted(QRect(0, 0, 1, 1)));
  tiles.put({0, 0}, picture(), {});
  EXPECT_TRUE(tiles.isPainted(QRect(0, 0, 1, 1)));
  EXPECT_TRUE(tiles.isSettled(QRect(0, 0, 1, 1)));
  EXPECT_FALSE(tiles.isSettled(QRect(0, 0, 2, 1)));
  tiles.markStale(QPoint(0, 0));
  EXPECT_TRUE(tiles.isPainted(QRect(0, 0, 1, 1)));
  EXPECT_FALSE(tiles.isSettled(QRect(0, 0, 1, 1)));
}

TEST(PictureTiles, AMarkReachesTheTilesOfItsRectangleAlone) {
  PictureTiles tiles = settledTiles();
  tiles.markStale(QRect(1, 1, 2, 1));
  EXPECT_EQ(tiles.unsettled(all), QRect(1, 1, 2, 1));
  tiles.put({1, 1}, picture(), {});
  EXPECT_EQ(tiles.unsettled(all), QRect(2, 1, 1, 1));
  tiles.put({2, 1}, picture(), {});
  EXPECT_TRUE(tiles.isSettled(all));
  tiles.markAllStale();
  EXPECT_EQ(tiles.unsettled(all), all);
}

TEST(PictureTiles, MostUrgentIsInViewThenBlankThenNear) {
  PictureTiles tiles = settledTiles();
  const QRect inView(0, 0, 3, 3);
  const QPointF place(2.5 * 256, 0.5 * 256);
  EXPECT_EQ(tiles.mostUrgent(inView, all, place), std::nullopt);
  tiles.markStale(QPoint(3, 0));
  EXPECT_EQ(tiles.mostUrgent(inView, all, place), QPoint(3, 0));
  tiles.markStale(QPoint(0, 2));
  EXPECT_EQ(tiles.mostUrgent(inView, all, place), QPoint(0, 2));
  tiles.markStale(QPoint(1, 0));
  EXPECT_EQ(tiles.mostUrgent(inView, all, place), QPoint(1, 0));
  tiles.forgetBeyond(QRect(0, 0, 4, 2));
  EXPECT_EQ(tiles.mostUrgent(inView, all, place), QPoint(2, 2));
}

TEST(PictureTiles, AddUpWhatTheirPaintingCost) {
  PictureTiles tiles = settledTiles();
  EXPECT_EQ(tiles.cost(QRect(0, 0, 2, 2)), std::chrono::milliseconds(8));
  EXPECT_EQ(tiles.cost(QRect(3, 2, 5, 5)), std::chrono::milliseconds(2));
}

TEST(PictureTiles, GiveReplacedPicturesBack) {
  PictureTiles tiles;
  EXPECT_TRUE(tiles.takeSpare().isNull());
  const QImage first = picture();
  tiles.put({0, 0}, first, {});
  tiles.put({0, 0}, picture(), {});
  EXPECT_EQ(tiles.takeSpare().constBits(), first.constBits());
  EXPECT_TRUE(tiles.takeSpare().isNull());
}
