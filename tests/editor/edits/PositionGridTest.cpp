#include <cmath>
#include <limits>

#include "editor/edits/EditsRig.h"
#include "editor/edits/TopicEdits.h"
#include "support/MapGenerators.h"

using namespace quilmora;
using namespace quilmora::edits;
using namespace quilmora::test;

namespace {

// The search for a free spot again, over all positions.
QPointF naiveSpot(const std::vector<QPointF>& taken, QPointF wanted, double direction, double step) {
  const double reach = 21 * std::abs(step) + 90.0;
  const auto isFree = [&](QPointF point) {
    for (const QPointF& other : taken)
      if (std::abs(other.x() - wanted.x()) <= reach && std::abs(other.y() - wanted.y()) <= reach &&
          std::hypot(other.x() - point.x(), other.y() - point.y()) < 90.0)
        return false;
    return true;
  };
  const auto [x, y] = std::pair(wanted.x(), wanted.y());
  if (isFree(wanted)) return wanted;
  for (int k = 1; k <= 20; ++k) {
    if (isFree({x, y + k * step})) return {x, y + k * step};
    if (isFree({x, y - k * step})) return {x, y - k * step};
    if (isFree({x + k * direction * step, y})) return {x + k * direction * step, y};
  }
  return wanted;
}

bool isSame(QPointF a, QPointF b) {
  return std::memcmp(&a, &b, sizeof(QPointF)) == 0;
}

double anyCoordinate() {
  static const std::vector<double> hostile{0.0, -0.0, 1e12, 1e12 + 50, -1e12, 1e300, -1e300, INFINITY, NAN, 128.0};
  if (*rc::gen::inRange(0, 12) == 0)
    return hostile[static_cast<std::size_t>(*rc::gen::inRange<int>(0, static_cast<int>(hostile.size())))];
  return *rc::gen::inRange(-6000, 6000) / 16.0;
}

QPointF anyPoint() {
  const double x = anyCoordinate();
  return {x, anyCoordinate()};
}

}  // namespace

TEST(PositionGrid, GivesTheSpotThatASearchOfAllPositionsGives) {
  EXPECT_TRUE(rc::check("the grid changes no spot", [] {
    std::vector<QPointF> taken;
    for (int count = *rc::gen::inRange(0, 80); count > 0; --count) taken.push_back(anyPoint());
    PositionGrid grid{PagedArray<QPointF>(taken)};
    for (int step = 0; step < 12; ++step) {
      if (!taken.empty() && *rc::gen::inRange(0, 3) == 0) {
        const auto place = taken.begin() + *rc::gen::inRange<int>(0, static_cast<int>(taken.size()));
        grid.remove(*place);
        taken.erase(place);
      } else {
        taken.push_back(anyPoint());
        grid.insert(taken.back());
      }
      const QPointF wanted = anyPoint();
      const double direction = *rc::gen::element(-1.0, 1.0);
      const double by = *rc::gen::element(60.0, 20.0, 0.0, -60.0, 1e308, static_cast<double>(NAN));
      RC_ASSERT(isSame(freeSpot(grid, wanted, direction, by), naiveSpot(taken, wanted, direction, by)));
    }
  }));
}

TEST(PositionGrid, FindsRoomInACrowdWithoutAskingAllOfIt) {
  PagedArray<QPointF> crowd;
  for (int i = 0; i < 200'000; ++i) crowd.append(QPointF(i % 500 * 100.0, i / 500 * 100.0));
  const PositionGrid grid(crowd);
  int asked = 0;
  EXPECT_FALSE(grid.hasNear({-1000, -1000}, [&](QPointF) { return ++asked < 0; }));
  EXPECT_FALSE(grid.hasNear({25'000, 20'000}, [&](QPointF) { return ++asked < 0; }));
  EXPECT_LT(asked, 200);
}
