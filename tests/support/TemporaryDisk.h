#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

// A small file system that exists as long as the object, for testing with a really full and a really read-only disk.
// Mounting needs root; without it isMounted() is false and the test must be skipped.
class TemporaryDisk {
 public:
  explicit TemporaryDisk(const QByteArray& size = QByteArrayLiteral("64k"));
  ~TemporaryDisk();
  TemporaryDisk(const TemporaryDisk&) = delete;
  TemporaryDisk& operator=(const TemporaryDisk&) = delete;

  bool isMounted() const { return m_isMounted; }
  bool makeReadOnly();
  // Uses up the remaining space, except for about `rest` bytes.
  void fill(qint64 rest = 0);
  QString path(const QString& name) const { return m_folder.filePath(name); }

 private:
  QTemporaryDir m_folder;
  QByteArray m_mountPoint;
  QByteArray m_options;
  bool m_isMounted = false;
};
