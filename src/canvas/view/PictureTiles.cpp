#include "canvas/view/PictureTiles.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace quilmora {

QRect PictureTiles::under(const QRectF& pixels) {
  if (!(pixels.width() > 0 && pixels.height() > 0)) return {};
  const auto tile = [](double place) {
    constexpr double farthest = 1e9;
    return static_cast<int>(std::clamp(place, -farthest, farthest));
  };
  return QRect(QPoint(tile(std::floor(pixels.left() / side)), tile(std::floor(pixels.top() / side))),
               QPoint(tile(std::ceil(pixels.right() / side) - 1), tile(std::ceil(pixels.bottom() / side) - 1)));
}

const PictureTiles::Tile* PictureTiles::find(QPoint tile) const {
  const auto found = m_tiles.find({tile.x(), tile.y()});
  return found == m_tiles.end() ? nullptr : &found->second;
}

void PictureTiles::put(QPoint tile, QImage image, std::chrono::duration<double, std::milli> cost) {
  Tile& entry = m_tiles[{tile.x(), tile.y()}];
  m_spare = std::exchange(entry.image, std::move(image));
  entry.isStale = false;
  entry.cost = cost;
}

void PictureTiles::markStale(QPoint tile) {
  const auto found = m_tiles.find({tile.x(), tile.y()});
  if (found != m_tiles.end()) found->second.isStale = true;
}

void PictureTiles::markStale(const QRect& tiles) {
  for (auto& [place, tile] : m_tiles)
    if (tiles.contains(place.first, place.second)) tile.isStale = true;
}

void PictureTiles::markAllStale() {
  for (auto& [place, tile] : m_tiles) tile.isStale = true;
}

void PictureTiles::forgetBeyond(const QRect& tiles) {
  std::erase_if(m_tiles, [&](const auto& entry) { return !tiles.contains(entry.first.first, entry.first.second); });
}

template <class Predicate>
bool PictureTiles::all(const QRect& tiles, Predicate&& holds) const {
  for (int y = tiles.top(); y <= tiles.bottom(); ++y)
    for (int x = tiles.left(); x <= tiles.right(); ++x)
      if (const Tile* tile = find({x, y}); !tile || !holds(*tile)) return false;
  return true;
}

bool PictureTiles::isPainted(const QRect& tiles) const {
  return all(tiles, [](const Tile& tile) { return !tile.image.isNull(); });
}

bool PictureTiles::hasPainted(const QRect& tiles) const {
  return std::ranges::any_of(m_tiles, [&](const auto& entry) {
    return tiles.contains(entry.first.first, entry.first.second) && !entry.second.image.isNull();
  });
}

bool PictureTiles::isSettled(const QRect& tiles) const {
  return all(tiles, [](const Tile& tile) { return !tile.isStale; });
}

std::chrono::duration<double, std::milli> PictureTiles::cost(const QRect& tiles) const {
  std::chrono::duration<double, std::milli> sum{0.0};
  for (const auto& [place, tile] : m_tiles)
    if (tiles.contains(place.first, place.second)) sum += tile.cost;
  return sum;
}

std::optional<QPoint> PictureTiles::mostUrgent(const QRect& inView, const QRect& wanted, QPointF important) const {
  using Rank = std::tuple<bool, bool, double>;
  std::optional<Rank> best;
  std::optional<QPoint> result;
  for (int y = wanted.top(); y <= wanted.bottom(); ++y)
    for (int x = wanted.left(); x <= wanted.right(); ++x) {
      const Tile* tile = find({x, y});
      if (tile && !tile->isStale) continue;
      const QPointF way = QPointF((x + 0.5) * side, (y + 0.5) * side) - important;
      const Rank rank(!inView.contains(x, y), tile && !tile->image.isNull(), QPointF::dotProduct(way, way));
      if (best && !(rank < *best)) continue;
      best = rank;
      result = QPoint(x, y);
    }
  return result;
}

QRect PictureTiles::unsettled(const QRect& wanted) const {
  QRect open;
  for (int y = wanted.top(); y <= wanted.bottom(); ++y)
    for (int x = wanted.left(); x <= wanted.right(); ++x)
      if (const Tile* tile = find({x, y}); !tile || tile->isStale) open |= QRect(x, y, 1, 1);
  return open;
}

}  // namespace quilmora
