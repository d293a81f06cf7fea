#include "exchange/PngWriter.h"

#include <array>

#include <QByteArray>
#include <QtEndian>
#include <zlib.h>

#include "platform/FileWriter.h"

namespace quilmora {

namespace {

constexpr quint32 pixelsPerMetre = 5669;  // 144 per inch

void append(QByteArray& bytes, quint32 number) {
  const quint32 bigEndian = qToBigEndian(number);
  bytes.append(reinterpret_cast<const char*>(&bigEndian), sizeof(bigEndian));
}

}  // namespace

bool PngWriter::begin() {
  static constexpr std::array<char, 8> signature{'\x89', 'P', 'N', 'G', '\r', '\n', '\x1A', '\n'};
  QByteArray header;
  append(header, static_cast<quint32>(m_size.width));
  append(header, static_cast<quint32>(m_size.height));
  // Eight bits, true colour, the only compression and filter method, not interlaced.
  header.append("\x08\x02\x00\x00\x00", 5);
  QByteArray density;
  append(density, pixelsPerMetre);
  append(density, pixelsPerMetre);
  density.append('\x01');  // the unit is the metre
  return m_file.append(signature.data(), signature.size()) && writeChunk("IHDR", header.constData(), header.size()) &&
         writeChunk("pHYs", density.constData(), density.size());
}

bool PngWriter::take(const char* data, qsizetype size) {
  return size == 0 || writeChunk("IDAT", data, size);
}

bool PngWriter::finish() {
  return writeChunk("IEND", nullptr, 0);
}

bool PngWriter::writeChunk(const char* type, const char* data, qsizetype size) {
  QByteArray head;
  append(head, static_cast<quint32>(size));
  head.append(type, 4);
  uLong checksum = crc32_z(0, reinterpret_cast<const Bytef*>(type), 4);
  if (size > 0) checksum = crc32_z(checksum, reinterpret_cast<const Bytef*>(data), static_cast<z_size_t>(size));
  QByteArray end;
  append(end, static_cast<quint32>(checksum));
  return m_file.append(head.constData(), head.size()) && (size == 0 || m_file.append(data, size)) &&
         m_file.append(end.constData(), end.size());
}

}  // namespace quilmora
