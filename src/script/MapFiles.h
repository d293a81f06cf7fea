#pragma once

#include <QString>

#include "exchange/ExportFormat.h"
#include "model/MindMap.h"
#include "platform/TextError.h"

namespace quilmora {

// Why a file given on the command line or in a script could not be read or written. One line, without the file's name.
class FileError : public TextError {
 public:
  using TextError::TextError;
  const QString& reason() const { return message(); }
};

// Reads a map: .opml, .mm and .md by their format, anything else as a plain document or a package. Throws FileError.
MindMap readMap(const QString& path);

// Reads a map from a stream's bytes, whose format is recognised by how they begin: XML is OPML or FreeMind by its root
// element, a text that begins like a heading or a list is Markdown, and anything else is a plain document. Throws
// FileError.
MindMap readMapFrom(const QByteArray& bytes);

// Writes a map by the extension of `path`: .mindmap and .json as a plain document, or as a package if the path ends in
// "/" or names an existing package; any other extension as the export of that name. On failure an existing file stays
// as it was. Throws FileError.
void writeMap(const MindMap& map, const QString& path);

// Writes the export, whatever the extension. Throws FileError.
void exportMap(const MindMap& map, ExportFormat format, const QString& path);

// Writes the plain document, whatever the extension. Throws FileError.
void writePlainDocument(const MindMap& map, const QString& path);

}  // namespace quilmora
