#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include <QPoint>
#include <QRect>
#include <QRectF>

namespace quilmora {

// Which parts of the picture are hidden by what is painted later: a coarse grid over its device pixels. Opaque topics
// cover cells at once; translucent shapes take a share of each cell's light, and a cell with almost no light left
// counts as covered, too.
class CoverageGrid {
 public:
  // The light below which nobody can see what is beneath.
  static constexpr float darkness = 0.01F;

  // Without a size nothing is ever covered. Cells are aligned to `anchor` (device pixels), so that pictures of
  // neighbouring parts of a scene decide alike; the grid extends beyond the pixels to whole cells.
  void reset(const QRect& pixels, int cellSide, QPoint anchor = {});
  bool isActive() const { return !m_covered.empty(); }
  bool isAllCovered() const { return m_openCount == 0; }
  // In device pixels.
  const QRectF& pixels() const { return m_pixels; }
  double cellSide() const { return m_cellSide; }
  // Marks the cells that are entirely inside.
  void cover(const QRectF& opaque);
  // Whether all of the rectangle inside the picture is covered. The part outside counts as covered.
  bool isCovered(const QRectF& rect) const;
  // The smallest rectangle of device pixels that contains every part of `rect` that is not covered; empty if there is
  // none.
  QRect uncoveredPart(const QRectF& rect) const;

  // A shape is shaded by its parts, which do not overlap, and then finished with its opacity. Parts are convex
  // quadrilaterals, or lines thinner than a cell; in device pixels.
  void shadeQuadrilateral(const std::array<QPointF, 4>& corners);
  void shadeLine(QPointF from, QPointF to, double width);
  void finishShape(double opacity);

 private:
  // The cells that a rectangle touches, limited to the grid; empty if it is outside.
  QRect cellsOf(const QRectF& rect) const;
  void shadeRow(int row, double left, double right, float weight);
  void add(std::size_t cell, float share);

  QRectF m_pixels;
  double m_cellSide = 1.0;
  int m_columns = 0;
  int m_rows = 0;
  std::size_t m_openCount = 0;
  std::vector<char> m_covered;
  std::vector<float> m_light;            // what share of the picture beneath shows through
  std::vector<float> m_shape;            // how much of each cell the current shape fills
  std::vector<std::uint32_t> m_touched;  // the cells that it touches
};

}  // namespace quilmora
