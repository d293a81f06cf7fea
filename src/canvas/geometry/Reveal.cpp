#include "canvas/geometry/Reveal.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quilmora {

namespace {

double intoRoom(double start, double length, double roomStart, double roomEnd) {
  return std::max(std::min(start, roomEnd - length), roomStart);
}

}  // namespace

// On each axis, the best place is the current one, or at an edge of the room or of a cover.
QPointF shortestReveal(const QRectF& target, const QRectF& room, const std::vector<QRectF>& covers) {
  const QPointF clamped(intoRoom(target.left(), target.width(), room.left(), room.right()),
                        intoRoom(target.top(), target.height(), room.top(), room.bottom()));
  std::vector<double> columns{clamped.x()};
  std::vector<double> rows{clamped.y()};
  for (const QRectF& cover : covers) {
    columns.insert(columns.end(), {cover.left() - target.width(), cover.right()});
    rows.insert(rows.end(), {cover.top() - target.height(), cover.bottom()});
  }
  const auto isFree = [&](const QRectF& place) {
    return room.contains(place) && std::ranges::none_of(covers, [&](const QRectF& c) { return c.intersects(place); });
  };
  QPointF best = clamped - target.topLeft();
  double shortest = std::numeric_limits<double>::infinity();
  for (const double x : columns)
    for (const double y : rows) {
      const QPointF way = QPointF(x, y) - target.topLeft();
      const double length = std::hypot(way.x(), way.y());
      if (!(length < shortest) || !isFree(QRectF(QPointF(x, y), target.size()))) continue;
      shortest = length;
      best = way;
    }
  return best;
}

}  // namespace quilmora
