#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QByteArray>
#include <QString>

#include "platform/FileState.h"
#include "platform/Outcome.h"

namespace quilmora {

// A file being written that is too large to hold in memory. Without a commit it leaves no trace.
class FileStream {
 public:
  virtual ~FileStream() = default;
  // False once something has failed; commit() then returns the reason.
  virtual bool append(const char* data, qsizetype size) = 0;
  virtual bool hasFailed() const { return false; }
  // Puts the file in its place.
  Outcome commit() { return commitWith({}); }
  // Calls `consent` once everything is on the disk, right before the file takes its place. If that fails with a reason,
  // the old file stays.
  virtual Outcome commitWith(const std::function<Outcome()>& consent) = 0;
  // The file as it was committed, if known, before anybody else could change it.
  virtual std::optional<FileStamp> stamp() const { return std::nullopt; }
};

// Writes files atomically: a reader finds the old content or the new, never a part of it. A temporary file in the same
// folder is flushed to disk and renamed over the target; permissions and symbolic links are kept. On failure the old
// file is untouched.
class FileWriter {
 public:
  virtual ~FileWriter() = default;
  virtual Outcome write(const QString& path, const QByteArray& data) = 0;
  // Starts a file that is written in pieces, under the same rules. The writer must outlive it.
  virtual std::unique_ptr<FileStream> stream(const QString& path);
};

// A failed write: the file's name and the cause, as a sentence.
Outcome refusedWrite(const QString& path, const QString& cause);

class DiskFileWriter final : public FileWriter {
 public:
  Outcome write(const QString& path, const QByteArray& data) override;
  // Holds no more than one piece in memory.
  std::unique_ptr<FileStream> stream(const QString& path) override;
};

}  // namespace quilmora
