#include <cmath>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "canvas/geometry/Reveal.h"

using namespace quilmora;

namespace {

const QRectF room(0, 0, 100, 80);

QRectF genRect(int maxX, int maxY, int maxSide) {
  return {static_cast<double>(*rc::gen::inRange(-20, maxX)), static_cast<double>(*rc::gen::inRange(-20, maxY)),
          static_cast<double>(*rc::gen::inRange(1, maxSide)), static_cast<double>(*rc::gen::inRange(1, maxSide))};
}

}  // namespace

TEST(Reveal, LeavesWhatIsInSight) {
  EXPECT_EQ(shortestReveal({10, 10, 20, 10}, room, {}), QPointF());
  EXPECT_EQ(shortestReveal({10, 10, 20, 10}, room, {QRectF(30, 0, 10, 80)}), QPointF());
}

TEST(Reveal, BringsWhatIsOutsideToTheNearestEdge) {
  EXPECT_EQ(shortestReveal({200, -50, 20, 10}, room, {}), QPointF(-120, 50));
}

TEST(Reveal, MovesOutFromBelowACoverTheShortWay) {
  EXPECT_EQ(shortestReveal({50, 60, 20, 10}, room, {QRectF(60, 40, 40, 40)}), QPointF(-10, 0));
}

TEST(Reveal, ShowsTheCornerOfWhatIsTooLarge) {
  EXPECT_EQ(shortestReveal({30, 30, 300, 10}, room, {}), QPointF(-30, 0));
}

TEST(Reveal, IgnoresCoversThatLeaveNoRoom) {
  EXPECT_EQ(shortestReveal({110, 10, 20, 10}, room, {room}), QPointF(-30, 0));
}

// No free place with whole coordinates is nearer, and if there is one, the result is free.
RC_GTEST_PROP(Reveal, FindsTheNearestFreePlace, ()) {
  const QRectF target = genRect(130, 110, 40);
  std::vector<QRectF> covers;
  for (int i = *rc::gen::inRange(0, 4); i > 0; --i) covers.push_back(genRect(100, 80, 60));
  const auto isFree = [&](const QRectF& place) {
    if (!room.contains(place)) return false;
    for (const QRectF& cover : covers)
      if (cover.intersects(place)) return false;
    return true;
  };
  const QPointF way = shortestReveal(target, room, covers);
  double shortest = -1.0;
  for (int x = 0; x <= room.width() - target.width(); ++x)
    for (int y = 0; y <= room.height() - target.height(); ++y) {
      const double length = std::hypot(x - target.x(), y - target.y());
      if (isFree(QRectF(QPointF(x, y), target.size())) && (shortest < 0 || length < shortest)) shortest = length;
    }
  if (shortest < 0) return;
  RC_ASSERT(isFree(target.translated(way)));
  RC_ASSERT(std::abs(std::hypot(way.x(), way.y()) - shortest) < 1e-9);
}
