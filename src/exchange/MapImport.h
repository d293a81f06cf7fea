#pragma once

#include <optional>

#include <QByteArray>

#include "model/MindMap.h"

namespace quilmora {

// A larger file is refused. An outline of 100,000 topics in one chain has about this many bytes.
constexpr qsizetype maxImportSize = qsizetype{600} << 20;

// The extensions of importable files, in lower case.
QStringList importedExtensions();

// Reads `bytes` as the kind of file that `extension` names in either case: "json" as a document, "opml" and "mm" as XML
// outlines, "md" as Markdown. Nothing for any other extension. Throws ImportError or DocumentError.
std::optional<MindMap> importMap(const QByteArray& bytes, const QString& extension, const Clock& clock);

// The same for the file at `path`, by the extension of its name; the file is read only if the extension is known. Also
// throws FileReadError, for instance when the file is larger than maxImportSize.
std::optional<MindMap> importMapAt(const QString& path, const Clock& clock);

}  // namespace quilmora
