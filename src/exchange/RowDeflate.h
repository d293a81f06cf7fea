#pragma once

#include "exchange/SparseDeflate.h"

namespace quilmora {

// Compresses the rows of one part after another, each with the compressor that suits it. For one thread.
class RowDeflater {
 public:
  // The rows of a part as wide as the picture: `pixels` holds `rows` rows of `width` opaque pixels without gaps.
  DeflatedStretch rows(const QRgb* pixels, int width, int rows, const SteadyRows& steady);
  // One row of a narrower part, without the filter's number: unchanged, or as the difference from the row above.
  DeflatedStretch rowPart(const QRgb* pixels, const QRgb* above, int width);

 private:
  DeflatedStretch denseRows(const QRgb* pixels, int width, int rows);

  StretchDeflater m_dense;
  SparseDeflater m_sparse;
};

}  // namespace quilmora
