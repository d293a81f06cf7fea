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

// The picture of a scene in square tiles, and which of them are stale. Tiles are aligned to the origin of the canvas,
// so that a tile's content depends only on the scene and the zoom: not on the part of the canvas in view, nor on the
// order of painting.
class PictureTiles {
 public:
  static constexpr int side = 256;  // device pixels

  struct Tile {
    QImage image;                                         // null until it is first painted
    bool isStale = true;                                  // a stale tile is shown until its new picture is ready
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

  bool isPainted(const QRect& tiles) const;   // possibly in an earlier state
  bool hasPainted(const QRect& tiles) const;  // at least one
  bool isSettled(const QRect& tiles) const;   // with the current scene
  std::chrono::duration<double, std::milli> cost(const QRect& tiles) const;
  // The tile to paint next: those in view first, among them those that show nothing yet, among these the nearest to a
  // point of importance (device pixels from the canvas origin).
  std::optional<QPoint> mostUrgent(const QRect& inView, const QRect& wanted, QPointF important) const;
  // The smallest rectangle that contains all tiles of `wanted` that are not settled.
  QRect unsettled(const QRect& wanted) const;
  // A picture that no tile uses any more, to be painted over; null if there is none.
  QImage takeSpare() { return std::exchange(m_spare, QImage()); }

 private:
  template <class Predicate>
  bool all(const QRect& tiles, Predicate&& holds) const;

  std::map<std::pair<int, int>, Tile> m_tiles;
  QImage m_spare;
};

}  // namespace quilmora
