#pragma once

#include <optional>
#include <vector>

#include <QByteArray>
#include <QRectF>

#include "model/MindMap.h"
#include "platform/TextError.h"

namespace quilmora {

// Why a map could not be exported, as a text to show.
class ExportError : public TextError {
 public:
  using TextError::TextError;
};

// A map as text in UTF-8. Half a surrogate pair becomes U+FFFD, and so does, in OPML and SVG, every character that XML
// cannot hold. Linear time; any depth and any damage of the map is accepted, except as noted.

// The plain document, pictures included. Throws ExportError if it could not be opened again.
QByteArray exportJSON(const MindMap& map);

// OPML 2.0: the forest with titles and notes. If the indentation of a very deep map would take more than 512 MiB, it
// stops at level 100.
QByteArray exportOPML(const MindMap& map);

// A nested list of bold titles, each with its note below. Throws ExportError if the indentation, which is the structure
// here, would take more than 512 MiB.
QByteArray exportMarkdown(const MindMap& map);

// A simple drawing: topics as boxes of one size, edges as straight lines. The picture has the size of `area`, or else
// that of the map plus 200, and always starts at 0, 0; nothing is moved to fit.
QByteArray exportSVG(const MindMap& map, const std::optional<QRectF>& area = {});

// The topics to which no edge leads, in their order.
std::vector<Node> rootNodes(const MindMap& map);
// The topics to which the topic's edges lead, in the order of the edges; of topics with the same id always the first.
std::vector<Node> childNodes(const Node& node, const MindMap& map);

// The trimmed text if it is "#" and six hexadecimal digits, else "#808080".
QString safeColor(const QString& text);

}  // namespace quilmora
