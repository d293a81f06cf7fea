#pragma once

#include <vector>

#include <QRect>
#include <QRectF>

namespace quilmora {

// Which parts of the picture opaque topics will hide: a coarse grid over its device pixels. Never calls anything covered that
// shows.
class CoverageGrid {
 public:
  // Without a size nothing is ever covered.
  void reset(const QRect& pixels, int cellSide);
  bool isActive() const { return !m_covered.empty(); }
  // Marks the cells that lie wholly inside.
  void cover(const QRectF& opaque);
  // Whether all of the rectangle that lies in the picture is covered. What lies outside counts as covered.
  bool isCovered(const QRectF& rect) const;

 private:
  QRectF m_pixels;
  double m_cellSide = 1.0;
  int m_columns = 0;
  int m_rows = 0;
  std::vector<char> m_covered;
};

}  // namespace quilmora
