#include "platform/OpeningMark.h"

#include <QFile>
#include <fcntl.h>
#include <unistd.h>

#include "platform/RegularFile.h"

namespace quilmora {

namespace {

constexpr qsizetype maxMarkBytes = 16 * 1024;

}  // namespace

FileOpeningMark::FileOpeningMark(QString file) : m_file(std::move(file)) {
  try {
    const QByteArray bytes = readWholeFile(m_file, maxMarkBytes);
    if (bytes.startsWith('/')) m_left = QString::fromUtf8(bytes);
  } catch (const FileReadError&) {
    m_left.reset();  // no mark, or none of ours
  }
}

// Not flushed to disk: the kernel keeps it when a process ends, and a power failure is not the document's fault.
void FileOpeningMark::set(const QString& path) {
  m_left.reset();
  const int descriptor = ::open(QFile::encodeName(m_file).constData(),
                                O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600);
  if (descriptor < 0) return;
  const QByteArray bytes = path.toUtf8();
  [[maybe_unused]] const ssize_t written =
      ::write(descriptor, bytes.constData(), static_cast<std::size_t>(bytes.size()));
  ::close(descriptor);
}

void FileOpeningMark::clear() {
  ::unlink(QFile::encodeName(m_file).constData());
}

}  // namespace quilmora
