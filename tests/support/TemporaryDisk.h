#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

// A small file system of its own for the life of the object, to meet a full and a read-only disk for real. Mounting
// needs root; without it isMounted() is false and the test has to be skipped.
class TemporaryDisk {
 public:
  explicit TemporaryDisk(const QByteArray& size = QByteArrayLiteral("64k"));
  ~TemporaryDisk();
  TemporaryDisk(const TemporaryDisk&) = delete;
  TemporaryDisk& operator=(const TemporaryDisk&) = delete;

  bool isMounted() const { return m_isMounted; }
  bool makeReadOnly();
  // Uses up what is left of the space, but for about `rest` bytes.
  void fill(qint64 rest = 0);
  QString path(const QString& name) const { return m_folder.filePath(name); }

 private:
  QTemporaryDir m_folder;
  QByteArray m_mountPoint;
  QByteArray m_options;
  bool m_isMounted = false;
};
