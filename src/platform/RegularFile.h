#pragma once

#include <cstdint>

#include <QByteArray>
#include <QString>

#include "platform/TextError.h"

namespace quilmora {

// Why a file could not be read. One line, can be shown to the user, without the file's name.
class FileReadError : public TextError {
 public:
  using TextError::TextError;
};

// Words for the errno of a failed system call, such as "permission denied".
QString readingFailure(int error);

// A file open for reading. Pipes, sockets and devices, which could block the reader, are refused without being opened.
// Throws FileReadError.
class RegularFile {
 public:
  // `path` in the file system's own bytes; `folderReason` is the error text for a folder.
  explicit RegularFile(const QByteArray& path,
                       const QString& folderReason = QStringLiteral("this is a folder and not a file"));
  ~RegularFile();
  RegularFile(const RegularFile&) = delete;
  RegularFile& operator=(const RegularFile&) = delete;

  // In bytes, when it was opened.
  std::uint64_t size() const { return m_size; }
  // Reads up to `capacity` bytes; 0 at the end.
  std::size_t read(char* bytes, std::size_t capacity);

 private:
  int m_descriptor = -1;
  std::uint64_t m_size = 0;
};

// The whole file, if it has at most `maxSize` bytes. Throws FileReadError.
QByteArray readWholeFile(const QString& path, qsizetype maxSize);

}  // namespace quilmora
