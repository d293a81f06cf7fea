#pragma once

#include <QByteArray>
#include <QString>

namespace quilmora {

// Writes whole files, so that a reader finds the old content or the new one and never a part: a temporary file in the
// same folder, flushed to the disk, renamed over. Permissions and symbolic links are kept. On failure the old file
// stands.
class FileWriter {
 public:
  virtual ~FileWriter() = default;
  // Returns an empty text, or why the write failed, fit to be shown.
  virtual QString write(const QString& path, const QByteArray& data) = 0;
};

class DiskFileWriter final : public FileWriter {
 public:
  QString write(const QString& path, const QByteArray& data) override;
};

}  // namespace quilmora
