#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <QRgb>

namespace quilmora {

// A part of a compressed stream that does not depend on what precedes it: deflate blocks in whole bytes. Such stretches
// in sequence, between a header and a trailer, form a stream in the zlib format, which PNG and PDF share.
struct DeflatedStretch {
  std::vector<char> bytes;
  std::uint32_t checksum = 1;   // Adler-32 of the uncompressed bytes
  std::uint64_t rawLength = 0;  // of the uncompressed bytes

  void append(const DeflatedStretch& next);
};

// Compresses bytes into stretches. For one thread.
class StretchDeflater {
 public:
  StretchDeflater();
  ~StretchDeflater();
  StretchDeflater(const StretchDeflater&) = delete;
  StretchDeflater& operator=(const StretchDeflater&) = delete;

  // Starts a stretch if none has been started.
  void append(const std::uint8_t* data, std::size_t size);
  // Adds what was appended since the last call to `target`, and starts over.
  void finish(DeflatedStretch& target);

 private:
  struct State;
  std::unique_ptr<State> m_state;
};

// Rows of 8 bit red, green and blue, each preceded by the number of its PNG filter: the first row of a part unchanged,
// and later ones as the difference from the row above, so that the parts of a picture are independent.
inline constexpr std::uint8_t filterNone = 0;
inline constexpr std::uint8_t filterUp = 2;
inline constexpr int bytesPerPixel = 3;

// Unchanged rows, which are needed many times: compressed once per width. With `isWithFilter` each row includes its
// filter's number. Threads may share it.
class SteadyRows {
 public:
  static constexpr int blockRows = 32;

  SteadyRows(int width, QRgb background, bool isWithFilter);

  // One row equal to the one above it, and a whole block of such rows.
  const DeflatedStretch& row() const { return m_row; }
  const DeflatedStretch& block() const { return m_block; }
  // One row of background that needs no row above it.
  const DeflatedStretch& backgroundRow() const { return m_backgroundRow; }

 private:
  DeflatedStretch m_row;
  DeflatedStretch m_block;
  DeflatedStretch m_backgroundRow;
};

// Red, green and blue of pixels, and their differences from those above.
void putPixels(std::uint8_t* target, const QRgb* pixels, int width);
void putDifferences(std::uint8_t* target, const QRgb* pixels, const QRgb* above, int width);
bool isSameRow(const QRgb* a, const QRgb* b, int width);

}  // namespace quilmora
