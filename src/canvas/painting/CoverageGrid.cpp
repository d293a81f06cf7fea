#include "canvas/painting/CoverageGrid.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace quilmora {

namespace {

// The largest multiple of `step` from `anchor` that is not above `value`.
int alignedDown(int value, int step, int anchor) {
  const int rest = (value - anchor) % step;
  return value - (rest < 0 ? rest + step : rest);
}

}  // namespace

void CoverageGrid::reset(const QRect& pixels, int cellSide, QPoint anchor) {
  m_cellSide = cellSide;
  m_columns = m_rows = 0;
  if (!pixels.isEmpty()) {
    const int left = alignedDown(pixels.left(), cellSide, anchor.x());
    const int top = alignedDown(pixels.top(), cellSide, anchor.y());
    m_columns = (pixels.right() - left) / cellSide + 1;
    m_rows = (pixels.bottom() - top) / cellSide + 1;
    m_pixels = QRectF(left, top, m_columns * cellSide, m_rows * cellSide);
  }
  const std::size_t count = static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(m_rows);
  m_openCount = count;
  m_covered.assign(count, 0);
  m_light.assign(count, 1.0F);
  m_shape.assign(count, 0.0F);
  m_touched.clear();
}

void CoverageGrid::cover(const QRectF& opaque) {
  const QRectF inside = opaque.intersected(m_pixels).translated(-m_pixels.topLeft());
  if (inside.isEmpty() || !isActive()) return;
  const int left = static_cast<int>(std::ceil(inside.left() / m_cellSide));
  const int top = static_cast<int>(std::ceil(inside.top() / m_cellSide));
  const int right = static_cast<int>(std::floor(inside.right() / m_cellSide));
  const int bottom = static_cast<int>(std::floor(inside.bottom() / m_cellSide));
  for (int row = top; row < bottom; ++row)
    for (int column = left; column < right; ++column) {
      char& cell = m_covered[static_cast<std::size_t>(row * m_columns + column)];
      m_openCount -= cell ? 0 : 1;
      cell = 1;
    }
}

QRect CoverageGrid::cellsOf(const QRectF& rect) const {
  const double left = std::max(rect.left(), m_pixels.left()) - m_pixels.left();
  const double top = std::max(rect.top(), m_pixels.top()) - m_pixels.top();
  const double right = std::min(rect.right(), m_pixels.right()) - m_pixels.left();
  const double bottom = std::min(rect.bottom(), m_pixels.bottom()) - m_pixels.top();
  if (!(left <= right) || !(top <= bottom)) return {};
  const auto cell = [this](double pixel, int count) {
    return std::min(static_cast<int>(pixel / m_cellSide), count - 1);
  };
  return QRect(QPoint(cell(left, m_columns), cell(top, m_rows)), QPoint(cell(right, m_columns), cell(bottom, m_rows)));
}

bool CoverageGrid::isCovered(const QRectF& rect) const {
  if (!isActive()) return false;
  const QRect cells = cellsOf(rect);
  for (int row = cells.top(); row <= cells.bottom(); ++row)
    if (std::memchr(m_covered.data() + row * m_columns + cells.left(), 0, static_cast<std::size_t>(cells.width())))
      return false;
  return true;
}

QRect CoverageGrid::uncoveredPart(const QRectF& rect) const {
  if (!isActive()) return rect.toAlignedRect();
  const QRect cells = cellsOf(rect);
  QRect open;
  for (int row = cells.top(); row <= cells.bottom(); ++row) {
    const char* start = m_covered.data() + row * m_columns + cells.left();
    const char* end = start + cells.width();
    const char* first = std::find(start, end, 0);
    if (first == end) continue;
    const char* last = end - 1;
    while (*last) --last;
    open |= QRect(QPoint(cells.left() + static_cast<int>(first - start), row),
                  QPoint(cells.left() + static_cast<int>(last - start), row));
  }
  const int side = static_cast<int>(m_cellSide);
  return open.isEmpty() ? QRect() : QRect(open.topLeft() * side + m_pixels.topLeft().toPoint(), open.size() * side);
}

void CoverageGrid::add(std::size_t cell, float share) {
  if (m_covered[cell]) return;
  if (m_shape[cell] == 0.0F) m_touched.push_back(static_cast<std::uint32_t>(cell));
  m_shape[cell] += share;
}

void CoverageGrid::shadeRow(int row, double left, double right, float weight) {
  left = std::max(left, 0.0);
  right = std::min(right, static_cast<double>(m_columns));
  if (!(left < right)) return;
  const auto first = static_cast<int>(left);
  const int last = std::min(static_cast<int>(right), m_columns - 1);
  const std::size_t start = static_cast<std::size_t>(row) * static_cast<std::size_t>(m_columns);
  for (int column = first; column <= last; ++column) {
    const double share = std::min(right, column + 1.0) - std::max(left, static_cast<double>(column));
    if (share > 0) add(start + static_cast<std::size_t>(column), static_cast<float>(share) * weight);
  }
}

void CoverageGrid::shadeQuadrilateral(const std::array<QPointF, 4>& corners) {
  // Two scan lines per row of cells.
  constexpr int linesPerRow = 2;
  std::array<QPointF, 4> points;
  double top = m_rows;
  double bottom = 0.0;
  for (std::size_t i = 0; i < 4; ++i) {
    points[i] = (corners[i] - m_pixels.topLeft()) / m_cellSide;
    top = std::min(top, points[i].y());
    bottom = std::max(bottom, points[i].y());
  }
  top = std::max(top, 0.0);
  bottom = std::min(bottom, static_cast<double>(m_rows));
  if (!(top < bottom)) return;
  const int firstLine = static_cast<int>(std::ceil(top * linesPerRow - 0.5));
  for (int line = std::max(firstLine, 0); line < linesPerRow * m_rows; ++line) {
    const double y = (line + 0.5) / linesPerRow;
    if (y >= bottom) break;
    double left = m_columns;
    double right = 0.0;
    for (std::size_t i = 0; i < 4; ++i) {
      const QPointF a = points[i];
      const QPointF b = points[(i + 1) % 4];
      if ((a.y() <= y) == (b.y() <= y)) continue;
      const double x = a.x() + (b.x() - a.x()) * ((y - a.y()) / (b.y() - a.y()));
      left = std::min(left, x);
      right = std::max(right, x);
    }
    shadeRow(line / linesPerRow, left, right, 1.0F / linesPerRow);
  }
}

void CoverageGrid::shadeLine(QPointF from, QPointF to, double width) {
  const QPointF start = (from - m_pixels.topLeft()) / m_cellSide;
  const QPointF way = (to - from) / m_cellSide;
  const double length = std::hypot(way.x(), way.y());
  const int steps = static_cast<int>(std::clamp(std::ceil(length), 1.0, 20000.0));
  const auto share = static_cast<float>(length / steps * width / m_cellSide);
  for (int step = 0; step < steps; ++step) {
    const QPointF point = start + way * ((step + 0.5) / steps);
    if (!(point.x() >= 0 && point.y() >= 0 && point.x() < m_columns && point.y() < m_rows)) continue;
    add(static_cast<std::size_t>(static_cast<int>(point.y()) * m_columns + static_cast<int>(point.x())), share);
  }
}

void CoverageGrid::finishShape(double opacity) {
  for (const std::uint32_t cell : m_touched) {
    float& light = m_light[cell];
    light *= 1.0F - static_cast<float>(opacity) * std::min(m_shape[cell], 1.0F);
    m_shape[cell] = 0.0F;
    if (light >= darkness || m_covered[cell]) continue;
    m_covered[cell] = 1;
    --m_openCount;
  }
  m_touched.clear();
}

}  // namespace quilmora
