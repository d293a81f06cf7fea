#include "support/TemporaryDisk.h"

#include <QFile>
#include <QStorageInfo>
#include <sys/mount.h>

TemporaryDisk::TemporaryDisk(const QByteArray& size)
    : m_mountPoint(QFile::encodeName(m_folder.path())), m_options("size=" + size) {
  m_isMounted = ::mount("tmpfs", m_mountPoint.constData(), "tmpfs", 0, m_options.constData()) == 0;
}

TemporaryDisk::~TemporaryDisk() {
  if (m_isMounted) ::umount2(m_mountPoint.constData(), MNT_DETACH);
}

bool TemporaryDisk::makeReadOnly() {
  return ::mount("tmpfs", m_mountPoint.constData(), "tmpfs", MS_REMOUNT | MS_RDONLY, m_options.constData()) == 0;
}

void TemporaryDisk::fill(qint64 rest) {
  const qint64 size = QStorageInfo(m_folder.path()).bytesAvailable() - rest;
  QFile filler(path(QStringLiteral("filler")));
  if (size <= 0 || !filler.open(QIODevice::WriteOnly)) return;
  filler.write(QByteArray(size, 'x'));
}
