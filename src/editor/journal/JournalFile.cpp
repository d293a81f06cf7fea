#include "editor/journal/JournalFile.h"

#include <QFile>
#include <zlib.h>

#include "platform/Paths.h"
#include "platform/RegularFile.h"

namespace quilmora::journal {

namespace {

constexpr QByteArrayView magic("QMJRNL01");
constexpr std::uint64_t headerSize = 8 + 8 + 8 + 4;  // magic, id, base, length of the path
constexpr std::uint64_t maxPathLength = 64 * 1024;
constexpr std::uint64_t recordHeadSize = 8 + 8;  // length, fingerprint
constexpr std::uint64_t checksumSize = 4;

std::uint32_t checksum(QByteArrayView bytes, std::uint32_t seed) {
  auto sum = static_cast<uLong>(seed);
  while (!bytes.isEmpty()) {
    const qsizetype piece = std::min<qsizetype>(bytes.size(), 1 << 30);
    sum = ::crc32(sum, reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uInt>(piece));
    bytes = bytes.sliced(piece);
  }
  return static_cast<std::uint32_t>(sum);
}

// A record from another journal, or from another place in this one, does not match.
std::uint32_t seedOf(const JournalHeader& header, std::uint64_t number) {
  ByteWriter place;
  place.putFixed(header.id, 8);
  place.putFixed(header.base, 8);
  place.putFixed(number, 8);
  return checksum(place.bytes(), 0);
}

void putChecksum(QByteArray& bytes, std::uint32_t seed) {
  ByteWriter end;
  end.putFixed(checksum(bytes, seed), checksumSize);
  bytes += end.take();
}

bool isIntact(const QByteArray& bytes, std::uint32_t seed) {
  const QByteArrayView view(bytes);
  const qsizetype length = bytes.size() - static_cast<qsizetype>(checksumSize);
  return ByteReader(view.sliced(length)).takeFixed(checksumSize) == checksum(view.first(length), seed);
}

}  // namespace

QByteArray bytesOf(const JournalHeader& header) {
  const QByteArray path = header.document.toUtf8();
  ByteWriter out;
  out.putFixed(header.id, 8);
  out.putFixed(header.base, 8);
  out.putFixed(static_cast<std::uint64_t>(path.size()), 4);
  QByteArray bytes = magic.toByteArray() + out.take() + path;
  putChecksum(bytes, 0);
  return bytes;
}

QByteArray bytesOf(const JournalRecord& record, const JournalHeader& header, std::uint64_t number) {
  ByteWriter out;
  out.putFixed(static_cast<std::uint64_t>(record.delta.size()), 8);
  out.putFixed(record.fingerprint, 8);
  QByteArray bytes = out.take();
  bytes.reserve(bytes.size() + record.delta.size() + static_cast<qsizetype>(checksumSize));
  bytes += record.delta;
  putChecksum(bytes, seedOf(header, number));
  return bytes;
}

JournalReader::JournalReader(const QString& path)
    : m_file(std::make_unique<RegularFile>(QFile::encodeName(path))), m_size(m_file->size()) {
  const auto fail = [] { throw JournalError(QStringLiteral("this is no journal")); };
  std::optional<QByteArray> bytes = read(headerSize);
  if (!bytes || !bytes->startsWith(magic)) fail();
  ByteReader in(QByteArrayView(*bytes).sliced(magic.size()));
  m_header.id = in.takeFixed(8);
  m_header.base = in.takeFixed(8);
  const std::uint64_t length = in.takeFixed(4);
  if (length > maxPathLength) fail();
  const std::optional<QByteArray> rest = read(length + checksumSize);
  if (!rest) fail();
  *bytes += *rest;
  if (!isIntact(*bytes, 0)) fail();
  const QByteArray path8 = rest->first(static_cast<qsizetype>(length));
  m_header.document = QString::fromUtf8(path8);
  if (m_header.document.toUtf8() != path8) fail();
  m_at = headerSize + length + checksumSize;
}

JournalReader::~JournalReader() = default;

std::optional<QByteArray> JournalReader::read(std::uint64_t count) {
  // No memory is allocated for more than the file can hold.
  if (count > m_size) return std::nullopt;
  QByteArray bytes(static_cast<qsizetype>(count), Qt::Uninitialized);
  for (std::uint64_t done = 0; done < count;) {
    const std::size_t piece = m_file->read(bytes.data() + done, count - done);
    if (piece == 0) return std::nullopt;
    done += piece;
  }
  return bytes;
}

std::optional<JournalRecord> JournalReader::next() {
  if (m_isBroken || m_at == m_size) return std::nullopt;
  m_isBroken = true;
  std::optional<QByteArray> bytes = read(recordHeadSize);
  if (!bytes) return std::nullopt;
  ByteReader in(*bytes);
  JournalRecord record;
  const std::uint64_t length = in.takeFixed(8);
  record.fingerprint = in.takeFixed(8);
  if (length > m_size) return std::nullopt;
  const std::optional<QByteArray> rest = read(length + checksumSize);
  if (!rest) return std::nullopt;
  *bytes += *rest;
  if (!isIntact(*bytes, seedOf(m_header, m_number))) return std::nullopt;
  record.delta = rest->first(static_cast<qsizetype>(length));
  m_isBroken = false;
  m_at += recordHeadSize + length + checksumSize;
  ++m_number;
  return record;
}

}  // namespace quilmora::journal
