#include "cli/MapFiles.h"

#include <QFileInfo>

#include "model/MindMapDocument.h"
#include "platform/FileWriter.h"

namespace quilmora {

namespace {

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
  if (!path.endsWith(u'/') && !QFileInfo(plain).isDir()) return writePlainDocument(map, plain);
  try {
    writePackage(map, plain);
  } catch (const DocumentError& error) {
    throw FileError(error.message());
  }
}

}  // namespace quilmora
