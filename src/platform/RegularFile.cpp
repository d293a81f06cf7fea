#include "platform/RegularFile.h"

#include <cerrno>

#include <QFile>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/Paths.h"

namespace quilmora {

namespace {

[[noreturn]] void failWithSystemError(int error) {
  throw FileReadError(readingFailure(error));
}

void requireRegularFile(const struct stat& status, const QString& folderReason) {
  if (S_ISREG(status.st_mode)) return;
  if (S_ISDIR(status.st_mode)) throw FileReadError(folderReason);
  throw FileReadError(QStringLiteral("this is a pipe, a socket or a device and not a file"));
}

}  // namespace

QString readingFailure(int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return QStringLiteral("there is no such file");
    case EACCES:
    case EPERM:
      return QStringLiteral("permission denied");
    default:
      return qt_error_string(error);
  }
}

RegularFile::RegularFile(const QByteArray& path, const QString& folderReason) {
  if (path.contains('\0')) failWithSystemError(ENOENT);
  // A pipe must not be opened without O_NONBLOCK, and a device not at all; the open file is checked again because the
  // path may lead elsewhere by now.
  struct stat status {};
  if (::stat(path.constData(), &status) != 0) failWithSystemError(errno);
  requireRegularFile(status, folderReason);
  m_descriptor = ::open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (m_descriptor < 0) failWithSystemError(errno);
  try {
    if (::fstat(m_descriptor, &status) != 0) failWithSystemError(errno);
    requireRegularFile(status, folderReason);
  } catch (...) {
    ::close(m_descriptor);
    throw;
  }
  m_size = static_cast<std::uint64_t>(status.st_size);
}

RegularFile::~RegularFile() {
  ::close(m_descriptor);
}

std::size_t RegularFile::read(char* bytes, std::size_t capacity) {
  while (true) {
    const ssize_t count = ::read(m_descriptor, bytes, capacity);
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno != EINTR) failWithSystemError(errno);
  }
}

QByteArray readWholeFile(const QString& path, qsizetype maxSize) {
  if (const QString refusal = refusalOfPath(path); !refusal.isEmpty()) throw FileReadError(refusal);
  RegularFile file(QFile::encodeName(path));
  const auto tooLarge = [] { return FileReadError(QStringLiteral("the file is too large")); };
  if (file.size() > static_cast<std::uint64_t>(maxSize)) throw tooLarge();
  // One byte more than expected, so that a file that has not grown ends within the first round.
  QByteArray bytes(static_cast<qsizetype>(file.size()) + 1, Qt::Uninitialized);
  qsizetype size = 0;
  while (true) {
    const std::size_t count = file.read(bytes.data() + size, static_cast<std::size_t>(bytes.size() - size));
    if (count == 0) break;
    size += static_cast<qsizetype>(count);
    if (size > maxSize) throw tooLarge();
    if (size == bytes.size()) bytes.resize(2 * bytes.size());
  }
  bytes.resize(size);
  return bytes;
}

}  // namespace quilmora
