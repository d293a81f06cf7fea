#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <utility>

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QRectF>

namespace quilmora {

// The picture of a scene in square tiles, and which of them no longer show what they should. Tiles keep their place
// relative to the origin of the canvas, so that a tile's content depends on nothing but the scene and the zoom: not on
// the part of the canvas in view, nor on the order in which tiles were painted.
class PictureTiles {
 public:
  static constexpr int side = 256;  // device pixels

  struct Tile {
    QImage image;                                         // null until it is painted for the first time
    bool isStale = true;                                  // a stale tile shows until its new picture is ready
    std::chrono::duration<double, std::milli> cost{0.0};  // of its last painting
  };

  // The coordinates of the tiles that a rectangle touches, in device pixels from the canvas origin.
  static QRect under(const QRectF& pixels);

  const Tile* find(QPoint tile) const;
  void put(QPoint tile, QImage image, std::chrono::duration<double, std::milli> cost);
  // Stale tiles that were never painted have no entry and need no mark.
  void markStale(QPoint tile);
  void markStale(const QRect& tiles);
  void markAllStale();
  void forgetBeyond(const QRect& tiles);
  void clear() { m_tiles.clear(); }

  bool isPainted(const QRect& tiles) const;   // maybe of an earlier state
  bool hasPainted(const QRect& tiles) const;  // at least one
  bool isSettled(const QRect& tiles) const;   // as the scene stands
  std::chrono::duration<double, std::milli> cost(const QRect& tiles) const;
  // The tile that should be painted next: first those in view, of these the ones that show nothing yet, of these the
  // nearest to a place of importance (device pixels from the canvas origin).
  std::optional<QPoint> mostUrgent(const QRect& inView, const QRect& wanted, QPointF important) const;
  // The smallest rectangle that holds all of `wanted` that is not settled.
  QRect unsettled(const QRect& wanted) const;
  // A picture that no tile uses any more, to be painted over; null when there is none.
  QImage takeSpare() { return std::exchange(m_spare, QImage()); }

 private:
  template <class Predicate>
  bool all(const QRect& tiles, Predicate&& holds) const;

  std::map<std::pair<int, int>, Tile> m_tiles;
  QImage m_spare;
};

}  // namespace quilmora
