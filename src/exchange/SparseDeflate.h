#pragma once

#include <array>
#include <cstdint>

#include "exchange/PixelDeflate.h"

namespace quilmora {

// Compresses rows that differ little from the row above, much faster than a general compressor, because it never
// touches what stays the same. It uses one fixed code that suits such rows, and only repeats of a byte or a pixel. For
// one thread.
class SparseDeflater {
 public:
  // A row with or without its filter's number; unchanged if there is no row above.
  void row(const QRgb* pixels, const QRgb* above, int width, bool isWithFilter);
  // Adds the rows since the last call to `target`, and starts over.
  void finish(DeflatedStretch& target);

 private:
  void begin();
  void put(std::uint64_t bits, int count);
  void literal(std::uint8_t byte);
  void zeros(std::size_t count);
  void pixelRun(const std::uint8_t* bytes, std::size_t pixelCount);
  void repeatOfPixel(std::size_t byteCount);
  void weigh(const std::uint8_t* bytes, std::size_t size);

  DeflatedStretch m_stretch;
  std::vector<std::uint8_t> m_differences;
  bool m_isUnderWay = false;
  std::uint64_t m_bits = 0;
  int m_bitCount = 0;
  bool m_endsInZero = false;
};

}  // namespace quilmora
