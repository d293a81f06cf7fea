#include "editor/journal/JournalWriter.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <fcntl.h>
#include <unistd.h>

#include "editor/journal/JournalFolder.h"
#include "editor/journal/MapDelta.h"
#include "platform/TemporaryFiles.h"

namespace quilmora::journal {

namespace {

// A document takes more than this for a topic, and for a connector, however short their texts are.
constexpr std::uint64_t minTopicBytes = 300;
constexpr std::uint64_t minEdgeBytes = 250;
// From this size on, rewriting a journal is worthwhile.
constexpr std::uint64_t minLimit = 64 * 1024;

QString systemError() {
  return qt_error_string(errno);
}

bool writeAll(int descriptor, const QByteArray& bytes) {
  for (qsizetype done = 0; done < bytes.size();) {
    const ssize_t written =
        ::write(descriptor, bytes.constData() + done, static_cast<std::size_t>(bytes.size() - done));
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return false;
    done += written;
  }
  return true;
}

bool flush(int descriptor) {
  return ::fdatasync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP;
}

void flushFolder(const QByteArray& path) {
  const int folder = ::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return;
  ::fsync(folder);
  ::close(folder);
}

}  // namespace

std::uint64_t journalLimit(const MindMap& map) {
  return std::max(minLimit, map.nodes.size() * minTopicBytes + map.edges.size() * minEdgeBytes);
}

QString JournalWriter::path() const {
  return journalPath(m_folder, m_document);
}

JournalWriter::~JournalWriter() {
  close();
}

void JournalWriter::close() {
  if (isOpen()) ::close(std::exchange(m_descriptor, -1));
  m_size = 0;
  m_count = 0;
}

void JournalWriter::remove() {
  if (m_ownsFile && (isOpen() || !isHeld(path()))) QFile::remove(path());
  m_ownsFile = false;
  close();
}

QString JournalWriter::start(const QString& document, const MindMap& base, bool takesOver) {
  if (m_document != document || !takesOver) remove();
  close();
  m_document = document;
  m_base = m_last = base;
  m_ownsFile = takesOver;
  m_fingerprint.of(base);
  return {};
}

QString JournalWriter::moveBase(const QString& document, const MindMap& base) {
  const bool hadJournal = isOpen();
  const MindMap now = m_last;
  if (document != m_document) remove();
  m_document = document;
  m_base = base;
  if (!hadJournal || deltaBetween(base, now).isEmpty()) {
    remove();
    m_last = base;
    return {};
  }
  return rewrite(now);
}

void JournalWriter::clear() {
  remove();
  m_last = m_base;
}

QString JournalWriter::record(const MindMap& now) {
  const QByteArray delta = deltaBetween(m_last, now);
  if (delta.isEmpty()) {
    if (!isOpen()) remove();
    return {};
  }
  const bool fits = m_size + static_cast<std::uint64_t>(delta.size()) <= std::max(m_limit, journalLimit(now));
  return isOpen() && fits ? append(now, delta) : rewrite(now);
}

QString JournalWriter::append(const MindMap& now, const QByteArray& delta) {
  const QByteArray bytes = bytesOf({m_fingerprint.of(now), delta}, m_header, m_count);
  if (!writeAll(m_descriptor, bytes) || !flush(m_descriptor)) {
    const QString error = systemError();
    // A partial record would hide those after it.
    if (::ftruncate(m_descriptor, static_cast<off_t>(m_size)) != 0 ||
        ::lseek(m_descriptor, static_cast<off_t>(m_size), SEEK_SET) < 0)
      close();
    return error;
  }
  m_size += static_cast<std::uint64_t>(bytes.size());
  ++m_count;
  m_last = now;
  return {};
}

QString JournalWriter::rewrite(const MindMap& now) {
  const QByteArray folder = QFile::encodeName(m_folder);
  const QByteArray target = QFile::encodeName(path());
  if (!QDir().mkpath(m_folder)) return QStringLiteral("the folder %1 cannot be made").arg(m_folder);
  removeStaleTemporariesOnce(folder);
  if (!isOpen() && isHeld(path())) return QStringLiteral("another editor keeps a journal of this map");
  if (!m_ownsFile && QFileInfo::exists(path())) setAside(path());
  JournalHeader header{QRandomGenerator::system()->generate64(), m_fingerprint.of(m_base), m_document};
  const JournalRecord record{m_fingerprint.of(now), deltaBetween(m_base, now)};
  const QByteArray bytes = bytesOf(header) + bytesOf(record, header, 0);

  const QByteArray temporary = folder + '/' + temporaryName();
  const int descriptor = ::open(temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
  if (descriptor < 0) return systemError();
  // The lock is on the file itself: it stays with it wherever the file is moved, and is released with the process.
  holdTemporary(descriptor);
  if (!writeAll(descriptor, bytes) || !flush(descriptor) || ::rename(temporary.constData(), target.constData()) != 0) {
    const QString error = systemError();
    ::unlink(temporary.constData());
    ::close(descriptor);
    return error;
  }
  flushFolder(folder);
  close();
  m_descriptor = descriptor;
  m_header = header;
  m_count = 1;
  m_size = static_cast<std::uint64_t>(bytes.size());
  m_limit = m_size + minLimit;
  m_last = now;
  m_ownsFile = true;
  return {};
}

}  // namespace quilmora::journal
