#include "editor/DocumentFileName.h"

#include <QTextBoundaryFinder>

namespace quilmora {

namespace {

const QString documentExtension = QStringLiteral("mindmap");
constexpr qsizetype maxFileNameBytes = 255;

QChar legalCharacter(QChar character) {
  switch (character.unicode()) {
    case u'/':
    case u'\0':
      return u'-';
    case u'\n':
    case u'\v':
    case u'\f':
    case u'\r':
    case QChar::LineSeparator:
    case QChar::ParagraphSeparator:
      return u' ';
    default:
      return character;
  }
}

// The longest prefix within `maxBytes` of UTF-8 that ends between two user-perceived characters.
QString cutToBytes(const QString& text, qsizetype maxBytes) {
  if (text.toUtf8().size() <= maxBytes) return text;
  QTextBoundaryFinder boundaries(QTextBoundaryFinder::Grapheme, text);
  qsizetype end = 0;
  qsizetype bytes = 0;
  for (qsizetype next; (next = boundaries.toNextBoundary()) > 0; end = next) {
    bytes += QStringView(text).mid(end, next - end).toUtf8().size();
    if (bytes > maxBytes) break;
  }
  return text.left(end);
}

QString fileName(QString title, const QString& ending) {
  for (QChar& character : title) character = legalCharacter(character);
  return cutToBytes(title, maxFileNameBytes - ending.toUtf8().size()) + ending;
}

}  // namespace

QStringList documentExtensions() {
  return {documentExtension, QStringLiteral("json")};
}

QString documentFileName(const QString& title, int number) {
  return fileName(title, (number > 0 ? u' ' + QString::number(number) : QString()) + u'.' + documentExtension);
}

QString exportFileName(const QString& title, const QString& extension) {
  return fileName(title, u'.' + extension);
}

QString withDocumentExtension(const QString& path) {
  const qsizetype nameStart = path.lastIndexOf(u'/') + 1;
  const qsizetype dot = path.lastIndexOf(u'.');
  const QStringView extension = QStringView(path).mid(dot + 1);
  // A leading dot hides a file, and a dot before a space ends a sentence ("1. Plan"): neither starts an extension.
  const bool hasExtension = dot > nameStart && !extension.isEmpty() && !extension.contains(u' ');
  return (hasExtension ? path.left(dot) : path) + u'.' + documentExtension;
}

QString withExtension(const QString& path, const QString& extension) {
  const QString ending = u'.' + extension;
  return path.endsWith(ending, Qt::CaseInsensitive) ? path : path + ending;
}

}  // namespace quilmora
