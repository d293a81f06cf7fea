#include "cli/MapFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include "model/MindMapDocument.h"
#include "platform/FileWriter.h"

namespace quilmora {

namespace {

bool asksForPackage(const QString& path) { return path.endsWith(u'/'); }

// "/a/b.mindmap/" and "/a/b.mindmap" name the same folder; everything below wants the second.
QString withoutTrailingSlashes(QString path) {
  while (path.size() > 1 && path.endsWith(u'/')) path.chop(1);
  return path;
}

void checkExtension(const QString& path, const QString& verb) {
  const QString extension = QFileInfo(path).suffix().toLower();
  if (extension == QLatin1String("mindmap") || extension == QLatin1String("json")) return;
  if (extension.isEmpty()) throw FileError(QStringLiteral("cannot %1 a file without an extension").arg(verb));
  throw FileError(QStringLiteral("cannot %1 .%2 files").arg(verb, extension));
}

bool isPackage(const QString& path) { return QFileInfo(path + QStringLiteral("/document.json")).isFile(); }

// A package comes into being beside its place and is then renamed, so that nobody sees a part of it.
void writeNewPackage(const MindMap& map, const QString& path) {
  const QFileInfo target(path);
  if (target.exists() || target.isSymLink()) throw FileError(QStringLiteral("something that is no package is there"));
  QTemporaryDir workshop(target.absolutePath() + QStringLiteral("/.quilmora-XXXXXX"));
  if (!workshop.isValid()) throw FileError(workshop.errorString());
  const QString made = workshop.filePath(target.fileName());
  try {
    writePackage(map, made);
  } catch (const DocumentError& error) {
    throw FileError(error.message());
  }
  if (!QDir().rename(made, path)) throw FileError(QStringLiteral("cannot move the new package to its place"));
}

}  // namespace

MindMap readMap(const QString& path) {
  const QString plain = withoutTrailingSlashes(path);
  if (!QFileInfo(plain).isDir()) checkExtension(plain, QStringLiteral("read"));
  try {
    return decodeDocumentAt(plain);
  } catch (const DocumentError& error) {
    throw FileError(error.message());
  }
}

void writePlainDocument(const MindMap& map, const QString& path) {
  const QString problem = DiskFileWriter().write(path, encodeDocument(map));
  if (!problem.isEmpty()) throw FileError(problem);
}

void writeMap(const MindMap& map, const QString& path) {
  const QString plain = withoutTrailingSlashes(path);
  checkExtension(plain, QStringLiteral("write"));
  if (isPackage(plain)) return writePlainDocument(map, plain + QStringLiteral("/document.json"));
  if (asksForPackage(path)) return writeNewPackage(map, plain);
  if (QFileInfo(plain).isDir()) throw FileError(QStringLiteral("is a folder and no package"));
  writePlainDocument(map, plain);
}

}  // namespace quilmora
