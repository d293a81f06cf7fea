#pragma once

#include <optional>

#include <QByteArray>

#include "model/MindMap.h"

namespace quilmora {

// A foreign file of more bytes is refused. An outline of 100,000 topics in a chain has about as much.
constexpr qsizetype maxImportSize = qsizetype{600} << 20;

// The extensions of the files that can be imported, in lower case.
QStringList importedExtensions();

// Reads `bytes` as the kind of file that `extension` names in either case: "json" as a document, "opml" and "mm" as
// outlines in XML, "md" as Markdown. Nothing for any other extension. Throws ImportError or DocumentError.
std::optional<MindMap> importMap(const QByteArray& bytes, const QString& extension, const Clock& clock);

// The same for the file at `path`, by the extension of its name, read only when that is known. Throws FileReadError
// too; a size above maxImportSize is one.
std::optional<MindMap> importMapAt(const QString& path, const Clock& clock);

}  // namespace quilmora
