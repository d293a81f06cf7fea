#include "editor/journal/JournalFolder.h"

#include <cerrno>

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <fcntl.h>
#include <stdio.h>
#include <sys/file.h>
#include <unistd.h>

namespace quilmora::journal {

namespace {

constexpr int maxSetAside = 5;

}  // namespace

QString journalPath(const QString& folder, const QString& document) {
  const QByteArray name =
      document.isEmpty() ? QByteArrayLiteral("untitled")
                         : QCryptographicHash::hash(document.toUtf8(), QCryptographicHash::Sha256).first(12).toHex();
  return folder + u'/' + QString::fromLatin1(name) + QStringLiteral(".journal");
}

bool isHeld(const QString& path) {
  const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return false;
  const bool isHeld = ::flock(descriptor, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  ::close(descriptor);
  return isHeld;
}

void setAside(const QString& path, bool staysInPlace) {
  const QFileInfo file(path);
  const QString folder = file.path() + QStringLiteral("/aside");
  QDir().mkpath(folder);
  const QString time = QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMddHHmmsszzz"));
  QString target = folder + u'/' + time + u'-' + file.fileName();
  for (int number = 1; QFileInfo::exists(target); ++number)
    target = folder + QStringLiteral("/%1-%2-").arg(time).arg(number) + file.fileName();
  const QByteArray from = QFile::encodeName(path);
  const QByteArray to = QFile::encodeName(target);
  if (staysInPlace) [[maybe_unused]]
    const int linked = ::link(from.constData(), to.constData());
  else
    ::rename(from.constData(), to.constData());
  QStringList names =
      QDir(folder).entryList({QStringLiteral("*.journal")}, QDir::Files | QDir::System | QDir::Hidden, QDir::Name);
  while (names.size() > maxSetAside) QFile::remove(folder + u'/' + names.takeFirst());
}

}  // namespace quilmora::journal
