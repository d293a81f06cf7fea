#pragma once

#include <cstdint>
#include <vector>

#include <QPointF>

#include "model/PagedArray.h"

namespace quilmora::edits {

// Positions by the square of the canvas that they lie in, to find those near a point at the cost of what lies there.
class PositionGrid {
 public:
  // How far from a point one can look.
  static constexpr double reach = 90.0;

  explicit PositionGrid(const PagedArray<QPointF>& positions);

  void insert(QPointF position);
  // A position that is there, bit for bit.
  void remove(QPointF position);

  // Whether matches(QPointF) holds for a position. All positions within `reach` of the point are asked, and others too.
  template <class Matches>
  bool hasNear(QPointF point, Matches&& matches) const {
    for (const QPointF& position : m_far)
      if (matches(position)) return true;
    const Range columns = cellsAround(point.x());
    const Range rows = cellsAround(point.y());
    for (std::int64_t column = columns.first; column <= columns.last; ++column)
      for (std::int64_t row = rows.first; row <= rows.last; ++row)
        for (std::uint32_t i = m_heads[bucketOf(column, row)]; i != none; i = m_entries[i].next)
          if (matches(m_entries[i].position)) return true;
    return false;
  }

 private:
  static constexpr std::uint32_t none = 0xFFFFFFFFu;
  struct Entry {
    QPointF position;
    std::uint32_t next;  // in the same bucket, or among the free entries
  };
  struct Range {
    std::int64_t first;
    std::int64_t last;
  };

  static bool isFar(QPointF position);
  static std::int64_t cellOf(double coordinate);
  static Range cellsAround(double coordinate);
  std::size_t bucketOf(std::int64_t column, std::int64_t row) const;
  std::size_t bucketOf(QPointF position) const { return bucketOf(cellOf(position.x()), cellOf(position.y())); }

  std::vector<std::uint32_t> m_heads;  // by bucket; the size is a power of two
  std::vector<Entry> m_entries;
  std::uint32_t m_free = none;
  std::vector<QPointF> m_far;  // beyond all cells, or no number
};

}  // namespace quilmora::edits
