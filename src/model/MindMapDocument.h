#pragma once

#include <QByteArray>

#include "model/MindMap.h"
#include "platform/TextError.h"

namespace quilmora {

// Why a document could not be read or written. The text names the place or the cause and is fit to be shown, such as
// "nodes[12].style.fill: missing".
class DocumentError : public TextError {
 public:
  using TextError::TextError;
};

enum class JsonForm { pretty, compact };

// The map as JSON text: UTF-8, sorted keys, indented unless compact is asked for, dates in whole seconds. Always
// readable by decodeDocument: a number that is not finite is written as the nearest finite one.
QByteArray encodeDocument(const MindMap& map, JsonForm form = JsonForm::pretty);

// Reads what encodeDocument writes, strictly and whole. Throws DocumentError.
MindMap decodeDocument(const QByteArray& json);

// One record of a document by itself, in the same form: compact when written, strict when read.
QByteArray encodeNodeStyle(const NodeStyle& style);
EdgeStyle decodeEdgeStyle(const QByteArray& json);

// Reads the plain document at `path`, or the `document.json` inside it when it is a package folder. Throws
// DocumentError.
MindMap decodeDocumentAt(const QString& path);

// Writes a new package: a folder at `path` with `document.json` and the empty folders `Assets` and `Thumbnails`. Throws
// DocumentError.
void writePackage(const MindMap& map, const QString& path);

// The document beside the editor: the map as it was last handed over by reading or by editing.
struct MindMapDocument {
  MindMap mindMap;

  explicit MindMapDocument(const Clock& clock) : mindMap(MindMap::blankMap(clock)) {}
};

}  // namespace quilmora
