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

QString extensionOf(const QString& path) {
  return QFileInfo(path).suffix().toLower();
}

// A document opens whatever its name; only what is certainly of another kind is refused by it.
void checkReadable(const QString& path) {
  const QString extension = extensionOf(path);
  for (const auto* other : {"opml", "mm", "md"})
    if (extension == QLatin1String(other)) throw FileError(QStringLiteral("cannot read .%1 files").arg(extension));
}

void checkWritable(const QString& path) {
  const QString extension = extensionOf(path);
  if (extension == QLatin1String("mindmap") || extension == QLatin1String("json")) return;
  if (extension.isEmpty()) throw FileError(QStringLiteral("cannot write a file without an extension"));
  throw FileError(QStringLiteral("cannot write .%1 files").arg(extension));
}

}  // namespace

MindMap readMap(const QString& path) {
  const QString plain = withoutTrailingSlashes(path);
  if (!QFileInfo(plain).isDir()) checkReadable(plain);
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
  checkWritable(plain);
  if (!path.endsWith(u'/') && !QFileInfo(plain).isDir()) return writePlainDocument(map, plain);
  try {
    writePackage(map, plain);
  } catch (const DocumentError& error) {
    throw FileError(error.message());
  }
}

}  // namespace quilmora
