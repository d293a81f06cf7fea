#pragma once

#include <cstdint>
#include <optional>

#include <QByteArray>
#include <QString>

namespace quilmora {

// What the system reports about the file at a path without reading it.
struct FileStamp {
  enum class Kind { missing, folderMissing, file, other };

  Kind kind = Kind::missing;
  QByteArray link;  // the target, if the path itself is a symbolic link
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::int64_t size = 0;
  std::int64_t modified = 0;  // nanoseconds
  std::int64_t changed = 0;   // the same for changes of the file's place, name or permissions
  bool isWritable = false;

  bool operator==(const FileStamp&) const = default;
  // Whether both describe the same file with the same content, even if it was moved in between.
  bool isSameFile(const FileStamp& other) const;
};

FileStamp stampOf(const QString& path);
// Whether this user may write a file with these permissions; a file that nobody may write counts as protected from
// everybody.
bool isWritable(const char* path, unsigned permissions);
FileStamp stampOf(int descriptor);
// The hash of the content, or nothing if it cannot be read.
std::optional<std::uint64_t> contentHashAt(const QString& path);

// A file as this program last read or wrote it, or its absence.
struct FileState {
  FileStamp stamp;
  std::uint64_t contentHash = 0;
  // Only this program would miss the file: its folder had gone, or the file never existed.
  bool mayBeMissing = false;

  // No file exists, and none is expected.
  static FileState absent() { return {{}, 0, true}; }
};

// What other programs have done to a file since.
enum class FileChange { none, folderGone, madeReadOnly, removed, becameLink, changed };

struct FileComparison {
  FileChange change = FileChange::none;
  // The file as it is now; its content is read only if the stamps differ.
  FileState now;
};

// Unchanged content is no change, whoever wrote it again; a path that became a link, or leads elsewhere, is one all the
// same. May read the whole file.
FileComparison compareFile(const FileState& known, const QString& path);

}  // namespace quilmora
