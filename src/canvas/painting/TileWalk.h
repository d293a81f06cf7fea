#pragma once

#include <algorithm>
#include <cmath>
#include <utility>

#include <QPointF>
#include <QRect>
#include <QRectF>

#include "canvas/geometry/RelationshipCurve.h"

namespace quilmora {

// The part of an unbent edge between two parameters, from 0 to 1. Such an edge advances evenly in x, and its y follows
// 3t² − 2t³, which is monotonic.
struct CurveShare {
  double first = 0.0;
  double last = 1.0;

  bool isEmpty() const { return !(first <= last); }
};

// The part of an unbent edge that can be in a rectangle.
inline CurveShare curveShareIn(const QRectF& rect, QPointF from, QPointF to) {
  CurveShare share;
  const auto narrow = [&share](double low, double high, double start, double way, auto&& shareOf) {
    if (std::abs(way) < 1e-9) {
      if (start < low || start > high) share.last = -1.0;
      return;
    }
    double first = (low - start) / way;
    double last = (high - start) / way;
    if (first > last) std::swap(first, last);
    if (last < 0.0 || first > 1.0) {
      share.last = -1.0;
      return;
    }
    share.first = std::max(share.first, shareOf(std::clamp(first, 0.0, 1.0)));
    share.last = std::min(share.last, shareOf(std::clamp(last, 0.0, 1.0)));
  };
  narrow(rect.left(), rect.right(), from.x(), to.x() - from.x(), [](double f) { return f; });
  narrow(rect.top(), rect.bottom(), from.y(), to.y() - from.y(),
         [](double f) { return 0.5 - std::sin(std::asin(1.0 - 2.0 * f) / 3.0); });
  return share;
}

// The tiles of `range` that a rectangle touches.
inline QRect tilesUnder(const QRectF& rect, double side, const QRect& range) {
  const auto tile = [side](double coordinate, int low, int high) {
    return static_cast<int>(
        std::clamp(std::floor(coordinate / side), static_cast<double>(low), static_cast<double>(high)));
  };
  if (!(rect.right() >= range.left() * side && rect.left() < (range.right() + 1) * side &&
        rect.bottom() >= range.top() * side && rect.top() < (range.bottom() + 1) * side))
    return {};
  return QRect(
      QPoint(tile(rect.left(), range.left(), range.right()), tile(rect.top(), range.top(), range.bottom())),
      QPoint(tile(rect.right(), range.left(), range.right()), tile(rect.bottom(), range.top(), range.bottom())));
}

// Calls visit(tile) for the tiles of `range` that an edge staying within `reach` of its curve can touch.
template <class Visit>
void visitTilesOfEdge(QPointF from, QPointF to, QPointF bend, double reach, double side, const QRect& range,
                      Visit&& visit) {
  QRectF hull(QPointF(std::min(from.x(), to.x()) - reach, std::min(from.y(), to.y()) - reach),
              QPointF(std::max(from.x(), to.x()) + reach, std::max(from.y(), to.y()) + reach));
  if (!bend.isNull()) hull = hull.united(hull.translated(bend));
  const QRect tiles = tilesUnder(hull, side, range);
  const bool isSimple = !bend.isNull() || (tiles.width() <= 1 || tiles.height() <= 1);
  for (int x = tiles.left(); x <= tiles.right(); ++x) {
    QRect column(x, tiles.top(), 1, tiles.height());
    if (!isSimple) {
      // Within the column of tiles the curve rises or falls monotonically.
      const double left = x * side - reach;
      const CurveShare share = curveShareIn(QRectF(left, hull.top(), side + 2 * reach, hull.height()), from, to);
      if (share.isEmpty()) continue;
      const auto yAt = [&](double t) { return from.y() + (to.y() - from.y()) * t * t * (3.0 - 2.0 * t); };
      const std::pair<double, double> ends = std::minmax({yAt(share.first), yAt(share.last)});
      const double middle = (x + 0.5) * side;
      column =
          tilesUnder(QRectF(QPointF(middle, ends.first - reach), QPointF(middle, ends.second + reach)), side, column);
    }
    for (int y = column.top(); y <= column.bottom(); ++y) visit(QPoint(x, y));
  }
}

// Calls visit(tile) for the tiles of `range` that a stroke within `reach` of a relationship's curve can touch, for some
// more than once.
template <class Visit>
void visitTilesOfRelationship(const RelationshipCurve& curve, double reach, double side, const QRect& range,
                              Visit&& visit) {
  constexpr int maxStretchCount = 128;
  const QRectF bounds = curve.bounds().adjusted(-reach, -reach, reach, reach);
  const QRect tiles = tilesUnder(bounds, side, range);
  if (tiles.isEmpty()) return;
  const bool isSimple = tiles.width() <= 1 || tiles.height() <= 1;
  const double longest = std::ceil(std::max(bounds.width(), bounds.height()) / side);
  const int stretches = isSimple ? 1 : static_cast<int>(std::clamp(longest, 1.0, double{maxStretchCount}));
  for (int k = 0; k < stretches; ++k) {
    // A stretch of the curve is a curve of its own, within its three points.
    const double first = static_cast<double>(k) / stretches;
    const double last = static_cast<double>(k + 1) / stretches;
    const QPointF start = curve.pointAt(first);
    const QPointF end = curve.pointAt(last);
    const QPointF inner = curve.from * ((1 - first) * (1 - last)) +
                          curve.control * ((1 - first) * last + (1 - last) * first) + curve.to * (first * last);
    const auto [left, right] = std::minmax({start.x(), inner.x(), end.x()});
    const auto [top, bottom] = std::minmax({start.y(), inner.y(), end.y()});
    const QRect near =
        tilesUnder(QRectF(QPointF(left - reach, top - reach), QPointF(right + reach, bottom + reach)), side, tiles);
    for (int y = near.top(); y <= near.bottom(); ++y)
      for (int x = near.left(); x <= near.right(); ++x) visit(QPoint(x, y));
  }
}

}  // namespace quilmora
