#include "script/MapFiles.h"

#include <QFileInfo>
#include <QXmlStreamReader>

#include "exchange/ExportWriter.h"
#include "exchange/ImportError.h"
#include "exchange/MapImport.h"
#include "model/DocumentFile.h"
#include "platform/FileWriter.h"
#include "platform/Paths.h"
#include "platform/RegularFile.h"

namespace quilmora {

namespace {

// "/a/b.mindmap/" and "/a/b.mindmap" name the same folder; everything below expects the second form.
QString withoutTrailingSlashes(QString path) {
  while (path.size() > 1 && path.endsWith(u'/')) path.chop(1);
  return path;
}

QString extensionOf(const QString& path) {
  return QFileInfo(path).suffix().toLower();
}

bool isForeign(const QString& path) {
  const QString extension = extensionOf(path);
  return extension != QLatin1String("json") && importedExtensions().contains(extension);
}

bool isDocument(const QString& extension) {
  return extension == QLatin1String("mindmap") || extension == QLatin1String("json");
}

ExportFormat exportFormatOf(const QString& extension) {
  if (extension.isEmpty()) throw FileError(QStringLiteral("cannot write a file without an extension"));
  const auto format = exportFormatFromRawValue(extension);
  if (!format) throw FileError(QStringLiteral("cannot write .%1 files").arg(extension));
  return *format;
}

void requireFilePath(const QString& path) {
  if (const QString refusal = refusalOfPath(path); !refusal.isEmpty()) throw FileError(refusal);
}

// The extension for files that start like this. Throws FileError for XML of another kind.
QString kindOf(const QByteArray& bytes) {
  const qsizetype mark = bytes.startsWith("\xEF\xBB\xBF") ? 3 : 0;
  const QByteArray begin = bytes.mid(mark, 4096).trimmed();
  if (begin.startsWith('<')) {
    QXmlStreamReader reader(bytes);
    const bool hasRoot = reader.readNextStartElement();
    if (reader.name() == QLatin1String("map")) return QStringLiteral("mm");
    // The importer reports what is wrong with XML that has no root.
    if (!hasRoot || reader.name() == QLatin1String("opml")) return QStringLiteral("opml");
    throw FileError(QStringLiteral("this XML is neither OPML nor FreeMind"));
  }
  return !begin.isEmpty() && QByteArrayView("#-*+").contains(begin.front()) ? QStringLiteral("md")
                                                                            : QStringLiteral("json");
}

// Turns every failure to read into this folder's own error.
template <class Read>
MindMap readOrFail(Read&& read) {
  try {
    return read();
  } catch (const DocumentError& error) {
    throw FileError(error.message());
  } catch (const ImportError& error) {
    throw FileError(error.message());
  } catch (const FileReadError& error) {
    throw FileError(error.message());
  }
}

}  // namespace

MindMap readMap(const QString& path) {
  requireFilePath(path);
  const QString plain = withoutTrailingSlashes(path);
  return readOrFail([&] {
    // A document opens whatever its name; only a file that is certainly of another kind is read as that.
    if (isForeign(plain) && !QFileInfo(plain).isDir()) return importMapAt(plain, SystemClock()).value();
    return decodeDocumentAt(plain);
  });
}

MindMap readMapFrom(const QByteArray& bytes) {
  return readOrFail([&] { return importMap(bytes, kindOf(bytes), SystemClock()).value(); });
}

void writePlainDocument(const MindMap& map, const QString& path) {
  exportMap(map, ExportFormat::json, path);
}

void exportMap(const MindMap& map, ExportFormat format, const QString& path) {
  DiskFileWriter writer;
  const ExportOutcome outcome = writeExport(map, format, path, writer);
  if (outcome.state == ExportOutcome::State::failed) throw FileError(outcome.reason);
  if (outcome.state == ExportOutcome::State::notRendered)
    throw FileError(QStringLiteral("no picture of this map can be made"));
}

void writeMap(const MindMap& map, const QString& path) {
  requireFilePath(path);
  const QString plain = withoutTrailingSlashes(path);
  const QString extension = extensionOf(plain);
  const bool asksForFolder = path.endsWith(u'/') || QFileInfo(plain).isDir();
  if (!isDocument(extension)) {
    const ExportFormat format = exportFormatOf(extension);
    if (asksForFolder) throw FileError(QStringLiteral("a .%1 file cannot be a folder").arg(extension));
    return exportMap(map, format, plain);
  }
  if (!asksForFolder) return writePlainDocument(map, plain);
  try {
    writePackage(map, plain);
  } catch (const DocumentError& error) {
    throw FileError(error.message());
  }
}

}  // namespace quilmora
