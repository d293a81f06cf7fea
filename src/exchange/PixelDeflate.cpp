#include "exchange/PixelDeflate.h"

#include <array>
#include <cstring>
#include <new>

#include <zlib.h>

namespace quilmora {

namespace {

constexpr int compressionLevel = 6;
constexpr int rawWindowBits = -15;  // without zlib's own header and trailer
constexpr int memoryLevel = 8;

std::size_t rowLength(int width) {
  return static_cast<std::size_t>(width) * bytesPerPixel;
}

}  // namespace

void DeflatedStretch::append(const DeflatedStretch& next) {
  bytes.insert(bytes.end(), next.bytes.begin(), next.bytes.end());
  checksum = static_cast<std::uint32_t>(adler32_combine(checksum, next.checksum, static_cast<z_off_t>(next.rawLength)));
  rawLength += next.rawLength;
}

struct StretchDeflater::State {
  z_stream stream{};
  bool isUnderWay = false;
  DeflatedStretch stretch;
  std::array<Bytef, 64 * 1024> output;

  void run(int flush) {
    do {
      stream.next_out = output.data();
      stream.avail_out = static_cast<uInt>(output.size());
      ::deflate(&stream, flush);
      const auto* bytes = reinterpret_cast<const char*>(output.data());
      stretch.bytes.insert(stretch.bytes.end(), bytes, bytes + (output.size() - stream.avail_out));
    } while (stream.avail_out == 0);
  }
};

StretchDeflater::StretchDeflater() : m_state(std::make_unique<State>()) {
  if (deflateInit2(&m_state->stream, compressionLevel, Z_DEFLATED, rawWindowBits, memoryLevel, Z_DEFAULT_STRATEGY) !=
      Z_OK)
    throw std::bad_alloc();
}

StretchDeflater::~StretchDeflater() {
  deflateEnd(&m_state->stream);
}

void StretchDeflater::append(const std::uint8_t* data, std::size_t size) {
  State& state = *m_state;
  state.isUnderWay = true;
  state.stretch.checksum = static_cast<std::uint32_t>(adler32_z(state.stretch.checksum, data, size));
  state.stretch.rawLength += size;
  state.stream.next_in = const_cast<Bytef*>(data);
  state.stream.avail_in = static_cast<uInt>(size);
  state.run(Z_NO_FLUSH);
}

void StretchDeflater::finish(DeflatedStretch& target) {
  State& state = *m_state;
  if (!state.isUnderWay) return;
  state.stream.avail_in = 0;
  state.run(Z_SYNC_FLUSH);
  target.append(state.stretch);
  state.stretch.bytes.clear();
  state.stretch.checksum = 1;
  state.stretch.rawLength = 0;
  state.isUnderWay = false;
  deflateReset(&state.stream);
}

SteadyRows::SteadyRows(int width, QRgb background, bool isWithFilter) {
  StretchDeflater deflater;
  const std::size_t filterLength = isWithFilter ? 1 : 0;
  std::vector<std::uint8_t> row(filterLength + rowLength(width), 0);
  if (isWithFilter) row[0] = filterUp;
  deflater.append(row.data(), row.size());
  deflater.finish(m_row);
  for (int count = 0; count < blockRows; ++count) deflater.append(row.data(), row.size());
  deflater.finish(m_block);
  if (isWithFilter) row[0] = filterNone;
  const std::vector<QRgb> pixels(static_cast<std::size_t>(width), background);
  putPixels(row.data() + filterLength, pixels.data(), width);
  deflater.append(row.data(), row.size());
  deflater.finish(m_backgroundRow);
}

void putPixels(std::uint8_t* target, const QRgb* pixels, int width) {
  for (int x = 0; x < width; ++x, target += bytesPerPixel) {
    target[0] = static_cast<std::uint8_t>(qRed(pixels[x]));
    target[1] = static_cast<std::uint8_t>(qGreen(pixels[x]));
    target[2] = static_cast<std::uint8_t>(qBlue(pixels[x]));
  }
}

void putDifferences(std::uint8_t* target, const QRgb* pixels, const QRgb* above, int width) {
  for (int x = 0; x < width; ++x, target += bytesPerPixel) {
    target[0] = static_cast<std::uint8_t>(qRed(pixels[x]) - qRed(above[x]));
    target[1] = static_cast<std::uint8_t>(qGreen(pixels[x]) - qGreen(above[x]));
    target[2] = static_cast<std::uint8_t>(qBlue(pixels[x]) - qBlue(above[x]));
  }
}

bool isSameRow(const QRgb* a, const QRgb* b, int width) {
  return std::memcmp(a, b, static_cast<std::size_t>(width) * sizeof(QRgb)) == 0;
}

}  // namespace quilmora
