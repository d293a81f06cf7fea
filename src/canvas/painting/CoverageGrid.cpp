#include "canvas/painting/CoverageGrid.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace quilmora {

void CoverageGrid::reset(const QRect& pixels, int cellSide) {
  m_pixels = QRectF(pixels);
  m_cellSide = cellSide;
  m_columns = pixels.isEmpty() ? 0 : (pixels.width() + cellSide - 1) / cellSide;
  m_rows = pixels.isEmpty() ? 0 : (pixels.height() + cellSide - 1) / cellSide;
  m_covered.assign(static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(m_rows), 0);
}

void CoverageGrid::cover(const QRectF& opaque) {
  const QRectF inside = opaque.intersected(m_pixels).translated(-m_pixels.topLeft());
  if (inside.isEmpty() || !isActive()) return;
  // Cells at the right and bottom rims count as whole where the picture ends inside them.
  const auto last = [this](double end, double full, int count) {
    return end >= full ? count : static_cast<int>(std::floor(end / m_cellSide));
  };
  const int left = static_cast<int>(std::ceil(inside.left() / m_cellSide));
  const int top = static_cast<int>(std::ceil(inside.top() / m_cellSide));
  const int right = last(inside.right(), m_pixels.width(), m_columns);
  const int bottom = last(inside.bottom(), m_pixels.height(), m_rows);
  if (right <= left) return;
  for (int row = top; row < bottom; ++row)
    std::memset(m_covered.data() + static_cast<std::size_t>(row * m_columns + left), 1,
                static_cast<std::size_t>(right - left));
}

bool CoverageGrid::isCovered(const QRectF& rect) const {
  if (!isActive()) return false;
  const double left = std::max(rect.left(), m_pixels.left()) - m_pixels.left();
  const double top = std::max(rect.top(), m_pixels.top()) - m_pixels.top();
  const double right = std::min(rect.right(), m_pixels.right()) - m_pixels.left();
  const double bottom = std::min(rect.bottom(), m_pixels.bottom()) - m_pixels.top();
  if (!(left <= right) || !(top <= bottom)) return true;
  const int firstColumn = std::min(static_cast<int>(left / m_cellSide), m_columns - 1);
  const int lastColumn = std::min(static_cast<int>(right / m_cellSide), m_columns - 1);
  const int firstRow = std::min(static_cast<int>(top / m_cellSide), m_rows - 1);
  const int lastRow = std::min(static_cast<int>(bottom / m_cellSide), m_rows - 1);
  for (int row = firstRow; row <= lastRow; ++row)
    for (int column = firstColumn; column <= lastColumn; ++column)
      if (!m_covered[static_cast<std::size_t>(row * m_columns + column)]) return false;
  return true;
}

}  // namespace quilmora
