#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include <QPoint>
#include <QRect>
#include <QRectF>

namespace quilmora {

// Which parts of the picture are settled by what is painted later: a coarse grid over its device pixels. Opaque topics
// cover cells at once; see-through shapes take a share of each cell's light, and a cell with next to no light left
// counts as covered, too.
class CoverageGrid {
 public:
  // The light below which nobody sees what lies beneath.
  static constexpr float darkness = 0.01F;

  // Without a size nothing is ever covered. Cells keep their place relative to `anchor` (device pixels), so that
  // pictures of neighbouring parts of a scene decide alike; the grid reaches over the rim of the pixels up to whole
  // cells.
  void reset(const QRect& pixels, int cellSide, QPoint anchor = {});
  bool isActive() const { return !m_covered.empty(); }
  bool isAllCovered() const { return m_openCount == 0; }
  // In device pixels.
  const QRectF& pixels() const { return m_pixels; }
  double cellSide() const { return m_cellSide; }
  // Marks the cells that lie wholly inside.
  void cover(const QRectF& opaque);
  // Whether all of the rectangle that lies in the picture is covered. What lies outside counts as covered.
  bool isCovered(const QRectF& rect) const;
  // The smallest rectangle of device pixels that holds all of `rect` that is not covered; empty where all of it is.
  QRect uncoveredPart(const QRectF& rect) const;

  // A shape is shaded by its parts, which don't overlap, and then finished with its opacity. Parts are convex
  // quadrilaterals, or lines that are thinner than a cell; in device pixels.
  void shadeQuadrilateral(const std::array<QPointF, 4>& corners);
  void shadeLine(QPointF from, QPointF to, double width);
  void finishShape(double opacity);

 private:
  // The cells that a rectangle touches, limited to the grid; empty where it lies outside.
  QRect cellsOf(const QRectF& rect) const;
  void shadeRow(int row, double left, double right, float weight);
  void add(std::size_t cell, float share);

  QRectF m_pixels;
  double m_cellSide = 1.0;
  int m_columns = 0;
  int m_rows = 0;
  std::size_t m_openCount = 0;
  std::vector<char> m_covered;
  std::vector<float> m_light;            // what share of what lies beneath shows through
  std::vector<float> m_shape;            // how much of each cell the shape under way fills
  std::vector<std::uint32_t> m_touched;  // the cells that it touches
};

}  // namespace quilmora
