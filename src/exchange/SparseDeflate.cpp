#include "exchange/SparseDeflate.h"

#include <algorithm>
#include <cstring>

#include <zlib.h>

namespace quilmora {

namespace {

constexpr int endSymbol = 256;
constexpr int firstLengthSymbol = 257;
constexpr int symbolCount = 286;
constexpr std::size_t minRepeat = 3;
constexpr std::size_t maxRepeat = 258;
constexpr std::uint32_t checksumModulus = 65521;

// Code lengths in bits. They use the code space completely: 1/4 + 1/32 + 28/128 + 256/512 = 1.
constexpr int codeLength(int symbol) {
  if (symbol == symbolCount - 1) return 2;  // a repeat of 258 bytes
  if (symbol == 0) return 5;
  return symbol >= firstLengthSymbol ? 7 : 9;
}

struct Code {
  std::uint32_t bits = 0;
  int count = 0;
};

constexpr std::uint32_t reversed(std::uint32_t bits, int count) {
  std::uint32_t result = 0;
  for (int i = 0; i < count; ++i) result |= (bits >> i & 1U) << (count - 1 - i);
  return result;
}

// Codes as the format numbers them: shorter ones first, then by symbol. The stream takes their bits in reverse order.
constexpr std::array<Code, symbolCount> makeCodes() {
  std::array<Code, symbolCount> codes{};
  std::uint32_t next = 0;
  for (int length = 1; length <= 9; ++length, next <<= 1)
    for (int symbol = 0; symbol < symbolCount; ++symbol)
      if (codeLength(symbol) == length) codes[static_cast<std::size_t>(symbol)] = {reversed(next++, length), length};
  return codes;
}
constexpr std::array<Code, symbolCount> codes = makeCodes();

// The code of a repeat by its length, with the extra bits for the length within its symbol.
constexpr std::array<Code, maxRepeat + 1> makeRepeats() {
  std::array<Code, maxRepeat + 1> repeats{};
  std::size_t length = minRepeat;
  for (int symbol = firstLengthSymbol; symbol < symbolCount - 1; ++symbol) {
    const int group = (symbol - firstLengthSymbol) / 4;
    const int extraBits = group > 1 ? group - 1 : 0;
    const Code code = codes[static_cast<std::size_t>(symbol)];
    for (std::uint32_t extra = 0; extra < 1U << extraBits && length < maxRepeat; ++extra, ++length)
      repeats[length] = {code.bits | extra << code.count, code.count + extraBits};
  }
  repeats[maxRepeat] = codes[symbolCount - 1];
  return repeats;
}
constexpr std::array<Code, maxRepeat + 1> repeats = makeRepeats();

// Two distances, with codes of one bit each.
constexpr std::uint32_t distanceOne = 0;
constexpr std::uint32_t distanceThree = 1;

}  // namespace

void SparseDeflater::put(std::uint64_t bits, int count) {
  m_bits |= bits << m_bitCount;
  m_bitCount += count;
  if (m_bitCount < 32) return;
  std::array<char, 4> bytes;
  for (std::size_t i = 0; i < 4; ++i) bytes[i] = static_cast<char>(m_bits >> (8 * i));
  m_stretch.bytes.insert(m_stretch.bytes.end(), bytes.begin(), bytes.end());
  m_bits >>= 32;
  m_bitCount -= 32;
}

// The header of a block with its own codes.
void SparseDeflater::begin() {
  m_isUnderWay = true;
  m_endsInZero = false;
  put(0, 1);  // not the last block
  put(2, 2);
  constexpr int distanceCount = 3;
  put(symbolCount - 257, 5);
  put(distanceCount - 1, 5);
  // The lengths 9, 7, 0, 1, 2 and 5 occur; their codes have these lengths, in the order that the format requires.
  constexpr std::array<int, 18> lengthsOfLengths{0, 0, 0, 4, 0, 2, 1, 0, 0, 4, 0, 0, 0, 0, 0, 4, 0, 4};
  put(lengthsOfLengths.size() - 4, 4);
  for (const int length : lengthsOfLengths) put(static_cast<std::uint64_t>(length), 3);
  const auto putLength = [this](int length) {
    switch (length) {
      case 9:
        return put(0b0, 1);
      case 7:
        return put(0b01, 2);
      case 0:
        return put(reversed(0b1100, 4), 4);
      case 1:
        return put(reversed(0b1101, 4), 4);
      case 2:
        return put(reversed(0b1110, 4), 4);
      default:
        return put(reversed(0b1111, 4), 4);
    }
  };
  for (int symbol = 0; symbol < symbolCount; ++symbol) putLength(codeLength(symbol));
  // Of the distances 1, 2 and 3.
  putLength(1);
  putLength(0);
  putLength(1);
}

void SparseDeflater::literal(std::uint8_t byte) {
  put(codes[byte].bits, codes[byte].count);
  m_endsInZero = byte == 0;
}

void SparseDeflater::zeros(std::size_t count) {
  if (count == 0) return;
  // A zero leaves one half of the checksum as it is, and adds that half to the other.
  const std::uint32_t low = m_stretch.checksum & 0xFFFF;
  const std::uint64_t high = (m_stretch.checksum >> 16) + std::uint64_t{low} * (count % checksumModulus);
  m_stretch.checksum = static_cast<std::uint32_t>(high % checksumModulus) << 16 | low;
  m_stretch.rawLength += count;
  if (!m_endsInZero) {
    literal(0);
    --count;
  }
  for (; count >= maxRepeat; count -= maxRepeat) {
    const Code code = repeats[maxRepeat];
    put(code.bits | distanceOne << code.count, code.count + 1);
  }
  if (count >= minRepeat) {
    put(repeats[count].bits, repeats[count].count);
    put(distanceOne, 1);
  } else {
    for (; count > 0; --count) literal(0);
  }
}

void SparseDeflater::weigh(const std::uint8_t* bytes, std::size_t size) {
  m_stretch.checksum = static_cast<std::uint32_t>(adler32_z(m_stretch.checksum, bytes, size));
  m_stretch.rawLength += size;
}

void SparseDeflater::repeatOfPixel(std::size_t byteCount) {
  while (byteCount > 0) {
    const std::size_t length = std::min(byteCount, maxRepeat);
    put(repeats[length].bits, repeats[length].count);
    put(distanceThree, 1);
    byteCount -= length;
  }
}

void SparseDeflater::pixelRun(const std::uint8_t* bytes, std::size_t pixelCount) {
  weigh(bytes, pixelCount * bytesPerPixel);
  std::size_t repeated = 0;
  for (std::size_t i = 0; i < pixelCount; ++i, bytes += bytesPerPixel) {
    if (i > 0 && std::memcmp(bytes, bytes - bytesPerPixel, bytesPerPixel) == 0) {
      repeated += bytesPerPixel;
      continue;
    }
    repeatOfPixel(repeated);
    repeated = 0;
    for (int k = 0; k < bytesPerPixel; ++k) literal(bytes[k]);
  }
  repeatOfPixel(repeated);
}

void SparseDeflater::row(const QRgb* pixels, const QRgb* above, int width, bool isWithFilter) {
  if (!m_isUnderWay) begin();
  if (isWithFilter) {
    const std::uint8_t filter = above ? filterUp : filterNone;
    weigh(&filter, 1);
    literal(filter);
  }
  if (!above) {
    m_differences.resize(static_cast<std::size_t>(width) * bytesPerPixel);
    putPixels(m_differences.data(), pixels, width);
    pixelRun(m_differences.data(), static_cast<std::size_t>(width));
    return;
  }
  constexpr int blockWidth = 16;
  constexpr int gapBetweenRuns = 6;
  for (int x = 0; x < width;) {
    const int start = x;
    while (x + blockWidth <= width && std::memcmp(pixels + x, above + x, blockWidth * sizeof(QRgb)) == 0)
      x += blockWidth;
    while (x < width && pixels[x] == above[x]) ++x;
    zeros(static_cast<std::size_t>(x - start) * bytesPerPixel);
    const int first = x;
    int end = x;
    for (; x < width && x - end < gapBetweenRuns; ++x)
      if (pixels[x] != above[x]) end = x + 1;
    x = end;
    m_differences.resize(static_cast<std::size_t>(end - first) * bytesPerPixel);
    putDifferences(m_differences.data(), pixels + first, above + first, end - first);
    pixelRun(m_differences.data(), static_cast<std::size_t>(end - first));
  }
}

void SparseDeflater::finish(DeflatedStretch& target) {
  if (!m_isUnderWay) return;
  put(codes[endSymbol].bits, codes[endSymbol].count);
  // An empty stored block fills the last byte.
  put(0, 3);
  if (m_bitCount % 8 != 0) put(0, 8 - m_bitCount % 8);
  for (; m_bitCount > 0; m_bitCount -= 8, m_bits >>= 8) m_stretch.bytes.push_back(static_cast<char>(m_bits));
  static constexpr std::array<char, 4> emptyBlock{'\0', '\0', '\xFF', '\xFF'};
  m_stretch.bytes.insert(m_stretch.bytes.end(), emptyBlock.begin(), emptyBlock.end());
  target.append(m_stretch);
  m_stretch.bytes.clear();
  m_stretch.checksum = 1;
  m_stretch.rawLength = 0;
  m_bits = 0;
  m_bitCount = 0;
  m_isUnderWay = false;
}

}  // namespace quilmora
