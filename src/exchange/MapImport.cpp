#include "exchange/MapImport.h"

#include <QFileInfo>
#include <QStringList>

#include "exchange/FreeMindParser.h"
#include "exchange/MarkdownImport.h"
#include "exchange/OPMLParser.h"
#include "model/DocumentReader.h"
#include "platform/RegularFile.h"

namespace quilmora {

QStringList importedExtensions() {
  return {QStringLiteral("json"), QStringLiteral("opml"), QStringLiteral("md"), QStringLiteral("mm")};
}

std::optional<MindMap> importMap(const QByteArray& bytes, const QString& extension, const Clock& clock) {
  const QString kind = extension.toLower();
  if (kind == QLatin1String("json")) return decodeDocument(bytes);
  if (kind == QLatin1String("opml")) return OPMLParser(bytes, clock).parse();
  if (kind == QLatin1String("md")) return importMarkdown(bytes, clock);
  if (kind == QLatin1String("mm")) return FreeMindParser(bytes, clock).parse();
  return std::nullopt;
}

std::optional<MindMap> importMapAt(const QString& path, const Clock& clock) {
  const QString extension = QFileInfo(path).suffix();
  if (!importedExtensions().contains(extension.toLower())) return std::nullopt;
  return importMap(readWholeFile(path, maxImportSize), extension, clock);
}

}  // namespace quilmora
