#include "exchange/RowDeflate.h"

#include <algorithm>

namespace quilmora {

namespace {

// If a larger share of a part differs from row to row, a thorough compressor is worthwhile.
constexpr double denseShare = 0.08;
constexpr int sampleStep = 8;

const QRgb* rowAt(const QRgb* pixels, int width, int y) {
  return pixels + static_cast<std::ptrdiff_t>(y) * width;
}

// Whether a part changes much from row to row, judged by a sample of its rows.
bool isDense(const QRgb* pixels, int width, int rows) {
  std::int64_t looked = 0;
  std::int64_t changed = 0;
  for (int y = sampleStep / 2; y < rows; y += sampleStep, looked += width) {
    const QRgb* row = rowAt(pixels, width, y);
    const QRgb* above = rowAt(pixels, width, y - 1);
    for (int x = 0; x < width; ++x) changed += row[x] != above[x] ? 1 : 0;
  }
  return static_cast<double>(changed) > denseShare * static_cast<double>(looked);
}

}  // namespace

DeflatedStretch RowDeflater::rows(const QRgb* pixels, int width, int rows, const SteadyRows& steady) {
  if (isDense(pixels, width, rows)) return denseRows(pixels, width, rows);
  DeflatedStretch result;
  for (int y = 0; y < rows;) {
    // Long runs of unchanged rows are not compressed again.
    int steadyCount = 0;
    while (y > 0 && steadyCount < SteadyRows::blockRows && y + steadyCount < rows &&
           isSameRow(rowAt(pixels, width, y + steadyCount), rowAt(pixels, width, y + steadyCount - 1), width))
      ++steadyCount;
    if (steadyCount == SteadyRows::blockRows) {
      m_sparse.finish(result);
      result.append(steady.block());
      y += steadyCount;
      continue;
    }
    // Those before the next change, and the changed one.
    for (const int end = std::min(y + steadyCount + 1, rows); y < end; ++y)
      m_sparse.row(rowAt(pixels, width, y), y > 0 ? rowAt(pixels, width, y - 1) : nullptr, width, true);
  }
  m_sparse.finish(result);
  return result;
}

DeflatedStretch RowDeflater::denseRows(const QRgb* pixels, int width, int rows) {
  DeflatedStretch result;
  std::vector<std::uint8_t> row(1 + static_cast<std::size_t>(width) * bytesPerPixel);
  for (int y = 0; y < rows; ++y) {
    row[0] = y == 0 ? filterNone : filterUp;
    if (y == 0)
      putPixels(row.data() + 1, rowAt(pixels, width, y), width);
    else
      putDifferences(row.data() + 1, rowAt(pixels, width, y), rowAt(pixels, width, y - 1), width);
    m_dense.append(row.data(), row.size());
  }
  m_dense.finish(result);
  return result;
}

DeflatedStretch RowDeflater::rowPart(const QRgb* pixels, const QRgb* above, int width) {
  DeflatedStretch result;
  m_sparse.row(pixels, above, width, false);
  m_sparse.finish(result);
  return result;
}

}  // namespace quilmora
