#include "platform/FileWriter.h"

#include <cerrno>
#include <cstdio>
#include <optional>
#include <system_error>
#include <utility>

#include <QFile>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "platform/Paths.h"
#include "platform/TemporaryFiles.h"

namespace quilmora {

namespace {

constexpr int maxLinksFollowed = 40;
constexpr int maxTemporaryNames = 100;

// Paths below are in the file system's own bytes.
QByteArray folderOf(const QByteArray& path) {
  const qsizetype slash = path.lastIndexOf('/');
  if (slash < 0) return QByteArrayLiteral(".");
  return slash == 0 ? QByteArrayLiteral("/") : path.left(slash);
}

QString quoted(const QByteArray& path) {
  return QStringLiteral("“%1”").arg(QFile::decodeName(path));
}

// The cause of a failed system call, as a sentence.
QString causeOf(int error, const QByteArray& folder) {
  switch (error) {
    case ENOSPC:
      return QStringLiteral("The disk is full.");
    case EDQUOT:
      return QStringLiteral("Your share of the disk is used up.");
    case EACCES:
    case EPERM:
      return QStringLiteral("You have no permission to write in the folder %1.").arg(quoted(folder));
    case EROFS:
      return QStringLiteral("The folder %1 is on a disk that can only be read.").arg(quoted(folder));
    case ENOENT:
    case ENOTDIR:
      return QStringLiteral("The folder %1 does not exist.").arg(quoted(folder));
    case ENAMETOOLONG:
      return QStringLiteral("The file name is too long.");
    case ELOOP:
      return QStringLiteral("Too many symbolic links follow one another.");
    case EFBIG:
      return QStringLiteral("The file is too large for this disk.");
    case EIO:
      return QStringLiteral("The disk reports an error.");
    default:
      return QString::fromStdString(std::system_category().message(error)) + u'.';
  }
}

// One write of one file: begin, append as often as needed, finish. Unless finished, the temporary file is removed with
// the object.
class WholeFileWrite {
 public:
  explicit WholeFileWrite(const QByteArray& path) : m_path(path), m_folder(folderOf(path)) {}
  WholeFileWrite(const WholeFileWrite&) = delete;
  WholeFileWrite& operator=(const WholeFileWrite&) = delete;
  ~WholeFileWrite() { drop(); }

  // The reasons are only the causes.
  Outcome begin() {
    Outcome followed = followLinks();
    if (!followed.isDone()) return followed;
    // An unnamed file leaves nothing behind when the process is killed during the write, but not every file system
    // supports them.
    removeStaleTemporariesOnce(m_folder);
    const bool isReady = create(&WholeFileWrite::createUnnamed) || create(&WholeFileWrite::createNamed);
    return isReady ? Outcome::done() : failure();
  }

  Outcome append(const char* data, qsizetype size) {
    return writeAll(m_descriptor, data, size) ? Outcome::done() : failure();
  }

  Outcome finish(const std::function<Outcome()>& consent) {
    if (!flush() || !(giveName() || copyToNamed())) return failure();
    m_stamp = stampOf(m_descriptor);
    if (!closeFile()) return failure();
    Outcome outcome = consent ? consent() : Outcome::done();
    if (!outcome.isDone()) return outcome;
    if (!replace()) return failure();
    flushFolder();
    return outcome;
  }
  const FileStamp& stamp() const { return m_stamp; }

 private:
  // Of the last system call.
  Outcome failure() const { return Outcome::failed(causeOf(errno, m_folder)); }

  void drop() {
    const int error = errno;
    if (m_descriptor >= 0) ::close(std::exchange(m_descriptor, -1));
    if (!m_temporaryPath.isEmpty()) ::unlink(std::exchange(m_temporaryPath, {}).constData());
    errno = error;
  }

  // Finds the file to be replaced: a link stays a link, and its target is written.
  Outcome followLinks() {
    for (int followed = 0; followed <= maxLinksFollowed; ++followed) {
      struct stat status;
      if (::lstat(m_path.constData(), &status) != 0) {
        return errno == ENOENT ? Outcome::done() : failure();
      }
      if (!S_ISLNK(status.st_mode)) return examine(status);
      QByteArray target(4096, '\0');
      const ssize_t length = ::readlink(m_path.constData(), target.data(), static_cast<std::size_t>(target.size()));
      if (length < 0) return failure();
      target.truncate(length);
      m_path = target.startsWith('/') ? target : m_folder + '/' + target;
      m_folder = folderOf(m_path);
    }
    return Outcome::failed(causeOf(ELOOP, m_folder));
  }

  Outcome examine(const struct stat& status) {
    if (S_ISDIR(status.st_mode)) return Outcome::failed(QStringLiteral("There is a folder of this name."));
    if (!S_ISREG(status.st_mode)) return Outcome::failed(QStringLiteral("It is not a regular file."));
    // Renaming over a file needs no permission for it, but whoever protected it did not want it replaced.
    errno = 0;
    if (!isWritable(m_path.constData(), status.st_mode)) {
      return errno == EROFS ? failure()
                            : Outcome::failed(QStringLiteral("You have no permission to change this file."));
    }
    m_existing = status;
    return Outcome::done();
  }

  // Opens an empty file next to the one to be replaced.
  bool create(bool (WholeFileWrite::*open)(mode_t)) {
    // A file that others must not read is protected from the first byte on; a new one gets the permissions of the
    // user's mask.
    if ((this->*open)(m_existing ? 0600 : 0666) && keepAttributes()) {
      holdTemporary(m_descriptor);
      return true;
    }
    drop();
    return false;
  }

  bool createUnnamed(mode_t mode) {
    m_descriptor = ::open(m_folder.constData(), O_RDWR | O_TMPFILE | O_CLOEXEC, mode);
    return m_descriptor >= 0;
  }

  bool createNamed(mode_t mode) {
    return tryNames([&](const QByteArray& path) {
      m_descriptor = ::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
      return m_descriptor >= 0;
    });
  }

  bool giveName() {
    if (!m_temporaryPath.isEmpty()) return true;
    const QByteArray unnamed = "/proc/self/fd/" + QByteArray::number(m_descriptor);
    return tryNames([&](const QByteArray& path) {
      return ::linkat(AT_FDCWD, unnamed.constData(), AT_FDCWD, path.constData(), AT_SYMLINK_FOLLOW) == 0;
    });
  }

  // For file systems that have unnamed files but cannot give them a name.
  bool copyToNamed() {
    const int source = std::exchange(m_descriptor, -1);
    const bool isCopied = create(&WholeFileWrite::createNamed) && copyAll(source) && flush();
    const int error = errno;
    ::close(source);
    errno = error;
    return isCopied;
  }

  bool copyAll(int source) {
    QByteArray piece(1 << 20, '\0');
    if (::lseek(source, 0, SEEK_SET) != 0) return false;
    for (;;) {
      const ssize_t length = ::read(source, piece.data(), static_cast<std::size_t>(piece.size()));
      if (length < 0 && errno == EINTR) continue;
      if (length <= 0) return length == 0;
      if (!writeAll(m_descriptor, piece.constData(), length)) return false;
    }
  }

  // Uses the first name in the folder for which `attempt` succeeds.
  template <class Attempt>
  bool tryNames(Attempt attempt) {
    for (int count = 0; count < maxTemporaryNames; ++count) {
      const QByteArray path = m_folder + '/' + temporaryName();
      if (attempt(path)) {
        m_temporaryPath = path;
        return true;
      }
      if (errno != EEXIST) return false;
    }
    return false;
  }

  bool keepAttributes() {
    if (!m_existing) return true;
    // Another owner's file becomes the user's own unless the system allows giving it back; its group is kept if
    // allowed.
    if (::fchown(m_descriptor, m_existing->st_uid, m_existing->st_gid) != 0) {
      [[maybe_unused]] const int ignored = ::fchown(m_descriptor, static_cast<uid_t>(-1), m_existing->st_gid);
    }
    if (::fchmod(m_descriptor, m_existing->st_mode & 07777) != 0 && errno != EPERM && errno != ENOTSUP) return false;
    return keepAccessList();
  }

  // With an access list, the mode's group bits are the list's mask, which may exceed the group's own rights: without
  // the list, the group must not get them.
  bool keepAccessList() {
    constexpr const char* attribute = "system.posix_acl_access";
    QByteArray list(qsizetype{64} * 1024, '\0');
    const ssize_t length =
        ::getxattr(m_path.constData(), attribute, list.data(), static_cast<std::size_t>(list.size()));
    if (length <= 0) return true;
    if (::fsetxattr(m_descriptor, attribute, list.constData(), static_cast<std::size_t>(length), 0) == 0) return true;
    return ::fchmod(m_descriptor, m_existing->st_mode & 07707) == 0;
  }

  static bool writeAll(int descriptor, const char* data, qsizetype size) {
    qsizetype done = 0;
    while (done < size) {
      const ssize_t written = ::write(descriptor, data + done, static_cast<std::size_t>(size - done));
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) return false;
      done += written;
    }
    return true;
  }

  // Some file systems report a failed write only here or when closing, so both results must be checked.
  bool flush() { return ::fsync(m_descriptor) == 0 || errno == EINVAL || errno == ENOTSUP; }

  bool closeFile() { return ::close(std::exchange(m_descriptor, -1)) == 0 || errno == EINTR; }

  bool replace() {
    if (::rename(m_temporaryPath.constData(), m_path.constData()) != 0) return false;
    m_temporaryPath.clear();
    return true;
  }

  // Makes the new name survive a power failure. The file is already in place, so a failure here does not fail the
  // write.
  void flushFolder() const {
    const int folder = ::open(m_folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0) return;
    ::fsync(folder);
    ::close(folder);
  }

  QByteArray m_path;
  QByteArray m_folder;
  std::optional<struct stat> m_existing;
  QByteArray m_temporaryPath;
  int m_descriptor = -1;
  FileStamp m_stamp;
};

class DiskFileStream final : public FileStream {
 public:
  explicit DiskFileStream(const QString& path) : m_path(path), m_write(std::in_place, QFile::encodeName(path)) {
    note(path.isEmpty() || path.endsWith(u'/') || !refusalOfPath(path).isEmpty()
             ? Outcome::failed(QStringLiteral("This is not a file name."))
             : m_write->begin());
  }

  bool append(const char* data, qsizetype size) override {
    if (m_write) note(m_write->append(data, size));
    return m_write.has_value();
  }

  bool hasFailed() const override { return !m_outcome.isDone(); }

  Outcome commitWith(const std::function<Outcome()>& consent) override {
    if (m_write) note(m_write->finish(consent));
    if (m_write) m_stamp = m_write->stamp();
    m_write.reset();
    return m_outcome.isDone() ? m_outcome : refusedWrite(m_path, m_outcome.reason());
  }
  std::optional<FileStamp> stamp() const override { return m_stamp; }

 private:
  void note(const Outcome& outcome) {
    if (outcome.isDone()) return;
    m_outcome = outcome;
    m_write.reset();
  }

  QString m_path;
  Outcome m_outcome = Outcome::done();
  std::optional<WholeFileWrite> m_write;
  std::optional<FileStamp> m_stamp;
};

// Collects the pieces for a writer that only writes whole files.
class HeldFileStream final : public FileStream {
 public:
  HeldFileStream(FileWriter& writer, const QString& path) : m_writer(writer), m_path(path) {}

  bool append(const char* data, qsizetype size) override {
    m_data.append(data, size);
    return true;
  }
  Outcome commitWith(const std::function<Outcome()>& consent) override {
    if (const Outcome outcome = consent ? consent() : Outcome::done(); !outcome.isDone())
      return refusedWrite(m_path, outcome.reason());
    return m_writer.write(m_path, m_data);
  }

 private:
  FileWriter& m_writer;
  QString m_path;
  QByteArray m_data;
};

}  // namespace

Outcome refusedWrite(const QString& path, const QString& cause) {
  return Outcome::failed(QStringLiteral("“%1” could not be written. %2").arg(fileNameIn(path), cause));
}

std::unique_ptr<FileStream> FileWriter::stream(const QString& path) {
  return std::make_unique<HeldFileStream>(*this, path);
}

std::unique_ptr<FileStream> DiskFileWriter::stream(const QString& path) {
  return std::make_unique<DiskFileStream>(path);
}

Outcome DiskFileWriter::write(const QString& path, const QByteArray& data) {
  DiskFileStream stream(path);
  stream.append(data.constData(), data.size());
  return stream.commit();
}

}  // namespace quilmora
