#include "platform/Paths.h"

#include <algorithm>

#include <QDir>
#include <QFile>
#include <QStringDecoder>
#include <QUrl>

namespace quilmora {

namespace {

// The first of the code units that stand for bytes from 0x80 on that are not part of a character.
constexpr char16_t firstStrayByte = 0xDC80;
constexpr char16_t lastStrayByte = 0xDCFF;

// The length of the UTF-8 character that starts here, or 0 if there is none.
qsizetype characterLength(QByteArrayView bytes) {
  for (qsizetype length = 1; length <= std::min<qsizetype>(4, bytes.size()); ++length) {
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decode(bytes.first(length));
    if (!decode.hasError() && !text.isEmpty() && text.toUtf8() == bytes.first(length)) return length;
  }
  return 0;
}

bool isStrayByte(const QString& path, qsizetype index) {
  const char16_t code = path.at(index).unicode();
  return code >= firstStrayByte && code <= lastStrayByte && (index == 0 || !path.at(index - 1).isHighSurrogate());
}

}  // namespace

QString absolutePath(const QString& path) {
  QString result = path.startsWith(u'/') ? path : QDir::currentPath() + u'/' + path;
  while (result.size() > 1 && result.endsWith(u'/')) result.chop(1);
  return result;
}

QString fileNameIn(const QString& path) {
  return path.mid(path.lastIndexOf(u'/') + 1);
}

QString pathFromBytes(const QByteArray& bytes) {
  const QString whole = QString::fromUtf8(bytes);
  if (whole.toUtf8() == bytes) return whole;
  QString path;
  for (qsizetype index = 0; index < bytes.size();) {
    const qsizetype length = characterLength(QByteArrayView(bytes).sliced(index));
    if (length == 0)
      path.append(QChar(firstStrayByte - 0x80 + static_cast<unsigned char>(bytes.at(index))));
    else
      path.append(QString::fromUtf8(bytes.constData() + index, length));
    index += std::max<qsizetype>(length, 1);
  }
  return path;
}

QByteArray bytesFromPath(const QString& path) {
  QByteArray bytes;
  qsizetype begin = 0;
  for (qsizetype index = 0; index < path.size(); ++index) {
    if (!isStrayByte(path, index)) continue;
    bytes += QStringView(path).sliced(begin, index - begin).toUtf8();
    bytes += static_cast<char>(path.at(index).unicode() - firstStrayByte + 0x80);
    begin = index + 1;
  }
  return bytes + QStringView(path).sliced(begin).toUtf8();
}

QString pathFromUrl(const QUrl& url) {
  if (!url.host().isEmpty()) return url.toLocalFile();
  return pathFromBytes(QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1()));
}

QString stateFolder() {
  const QString given = QFile::decodeName(qgetenv("XDG_STATE_HOME"));
  return (given.startsWith(u'/') ? given : QDir::homePath() + QStringLiteral("/.local/state")) +
         QStringLiteral("/quilmora");
}

QString refusalOfPath(const QString& path) {
  if (path.contains(QChar(u'\0'))) return QStringLiteral("there is no such file");
  if (!path.isValidUtf16()) return QStringLiteral("the name is not UTF-8 text; rename the file first");
  return {};
}

}  // namespace quilmora
