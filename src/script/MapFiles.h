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

// Reads a map: .opml, .mm and .md as what they are, anything else as a plain document or a package. Throws FileError.
MindMap readMap(const QString& path);

// Reads a map from what a stream gave, whose kind shows by how it begins: XML is OPML or FreeMind by its root element,
// what begins like a heading or a list is Markdown, and all else a plain document. Throws FileError.
MindMap readMapFrom(const QByteArray& bytes);

// Writes a map by the extension of `path`: .mindmap and .json as the plain document, where a path that ends in "/" or
// names a package that is there asks for a package; any other extension as the export of that name. On failure what was
// there stays as it was. Throws FileError.
void writeMap(const MindMap& map, const QString& path);

// Writes the export, whatever the extension. Throws FileError.
void exportMap(const MindMap& map, ExportFormat format, const QString& path);

// Writes the plain document, whatever the extension. Throws FileError.
void writePlainDocument(const MindMap& map, const QString& path);

}  // namespace quilmora
