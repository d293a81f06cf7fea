#pragma once

#include <memory>

#include <QByteArray>
#include <QString>

namespace quilmora {

// A file under way, too large to be held whole. What is not committed leaves no trace when the object goes.
class FileStream {
 public:
  virtual ~FileStream() = default;
  // False once something failed; commit() then tells why.
  virtual bool append(const char* data, qsizetype size) = 0;
  // Puts the file in its place. Returns an empty text, or why it failed, fit to be shown.
  virtual QString commit() = 0;
};

// Writes whole files, so that a reader finds the old content or the new one and never a part: a temporary file in the
// same folder, flushed to the disk, renamed over. Permissions and symbolic links are kept. On failure the old file
// stands.
class FileWriter {
 public:
  virtual ~FileWriter() = default;
  // Returns an empty text, or why the write failed, fit to be shown.
  virtual QString write(const QString& path, const QByteArray& data) = 0;
  // Starts a file that is appended to piece by piece and written by the same rules. The writer must outlive it.
  virtual std::unique_ptr<FileStream> stream(const QString& path);
};

class DiskFileWriter final : public FileWriter {
 public:
  QString write(const QString& path, const QByteArray& data) override;
  // Needs no memory beyond the pieces.
  std::unique_ptr<FileStream> stream(const QString& path) override;
};

}  // namespace quilmora
