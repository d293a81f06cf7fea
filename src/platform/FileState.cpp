#include "platform/FileState.h"

#include <cerrno>
#include <memory>

#include <QFile>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/ContentHash.h"
#include "platform/RegularFile.h"

namespace quilmora {

namespace {

std::int64_t nanoseconds(const timespec& time) {
  return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

void fill(FileStamp& stamp, const struct stat& status) {
  stamp.kind = S_ISREG(status.st_mode) ? FileStamp::Kind::file : FileStamp::Kind::other;
  stamp.device = status.st_dev;
  stamp.inode = status.st_ino;
  stamp.size = status.st_size;
  stamp.modified = nanoseconds(status.st_mtim);
  stamp.changed = nanoseconds(status.st_ctim);
}

bool hasFolder(const QByteArray& path) {
  const qsizetype slash = path.lastIndexOf('/');
  struct stat status {};
  return slash < 1 || (::stat(path.left(slash).constData(), &status) == 0 && S_ISDIR(status.st_mode));
}

}  // namespace

// The system lets an administrator write a file that nobody may write; we do not.
bool isWritable(const char* path, unsigned permissions) {
  return (permissions & (S_IWUSR | S_IWGRP | S_IWOTH)) != 0 && ::access(path, W_OK) == 0;
}

bool FileStamp::isSameFile(const FileStamp& other) const {
  return kind == other.kind && device == other.device && inode == other.inode && size == other.size &&
         modified == other.modified;
}

FileStamp stampOf(const QString& path) {
  const QByteArray bytes = QFile::encodeName(path);
  FileStamp stamp;
  struct stat status {};
  if (::lstat(bytes.constData(), &status) != 0) {
    if (!hasFolder(bytes)) stamp.kind = FileStamp::Kind::folderMissing;
    return stamp;
  }
  if (S_ISLNK(status.st_mode)) {
    QByteArray target(4096, '\0');
    const ssize_t length = ::readlink(bytes.constData(), target.data(), static_cast<std::size_t>(target.size()));
    stamp.link = target.left(std::max<qsizetype>(length, 0));
    // A broken link is a missing file.
    if (::stat(bytes.constData(), &status) != 0) return stamp;
  }
  fill(stamp, status);
  stamp.isWritable = isWritable(bytes.constData(), status.st_mode);
  return stamp;
}

FileStamp stampOf(int descriptor) {
  FileStamp stamp;
  struct stat status {};
  if (::fstat(descriptor, &status) == 0) fill(stamp, status);
  return stamp;
}

std::optional<std::uint64_t> contentHashAt(const QString& path) try {
  constexpr std::size_t pieceSize = std::size_t{1} << 18;
  RegularFile file(QFile::encodeName(path));
  const auto piece = std::make_unique<char[]>(pieceSize);
  ContentHash hash;
  while (const std::size_t count = file.read(piece.get(), pieceSize)) hash.add({piece.get(), count});
  return hash.value();
} catch (const FileReadError&) {
  return std::nullopt;
}

FileComparison compareFile(const FileState& known, const QString& path) {
  FileComparison comparison;
  FileState& now = comparison.now;
  now.stamp = stampOf(path);
  now.contentHash = known.contentHash;
  const auto answer = [&](FileChange change) {
    comparison.change = change;
    return comparison;
  };
  if (now.stamp.kind == FileStamp::Kind::folderMissing) {
    now.mayBeMissing = true;
    return answer(FileChange::folderGone);
  }
  if (now.stamp == known.stamp) {
    now.mayBeMissing = known.mayBeMissing;
    return comparison;
  }
  switch (now.stamp.kind) {
    case FileStamp::Kind::folderMissing:
    case FileStamp::Kind::missing:
      if (now.stamp.link != known.stamp.link && !now.stamp.link.isEmpty()) return answer(FileChange::becameLink);
      now.mayBeMissing = known.mayBeMissing;
      return answer(known.mayBeMissing ? FileChange::none : FileChange::removed);
    case FileStamp::Kind::other:
      return answer(FileChange::changed);
    case FileStamp::Kind::file:
      break;
  }
  // A change during reading gives another stamp, and the next comparison finds it.
  const std::optional<std::uint64_t> hash = contentHashAt(path);
  if (now.stamp.link != known.stamp.link) {
    now.contentHash = hash.value_or(0);
    return answer(FileChange::becameLink);
  }
  if (!hash || *hash != known.contentHash) {
    now.contentHash = hash.value_or(0);
    return answer(FileChange::changed);
  }
  return answer(known.stamp.isWritable && !now.stamp.isWritable ? FileChange::madeReadOnly : FileChange::none);
}

}  // namespace quilmora
