#pragma once

#include <memory>

#include <QByteArray>
#include <QString>

#include "platform/Outcome.h"

namespace quilmora {

// A file being written that is too large to hold in memory. Without a commit it leaves no trace.
class FileStream {
 public:
  virtual ~FileStream() = default;
  // False once something failed; commit() then tells why.
  virtual bool append(const char* data, qsizetype size) = 0;
  virtual bool hasFailed() const { return false; }
  // Puts the file in its place.
  virtual Outcome commit() = 0;
};

// Writes whole files: a reader finds the old content or the new, never a part of it. A temporary file in the same
// folder is flushed to disk and renamed over the target; permissions and symbolic links are kept. If that fails, the
// old file is untouched.
class FileWriter {
 public:
  virtual ~FileWriter() = default;
  virtual Outcome write(const QString& path, const QByteArray& data) = 0;
  // Starts a file that is appended to piece by piece, under the same rules. The writer must outlive it.
  virtual std::unique_ptr<FileStream> stream(const QString& path);
};

class DiskFileWriter final : public FileWriter {
 public:
  Outcome write(const QString& path, const QByteArray& data) override;
  // Holds no more than one piece in memory.
  std::unique_ptr<FileStream> stream(const QString& path) override;
};

}  // namespace quilmora
