#pragma once

#include <optional>
#include <span>

#include <QString>

namespace quilmora {

// What a map can be exported to, in the order of the menu.
enum class ExportFormat { json, png, pdf, svg, opml, markdown };

std::span<const ExportFormat> allExportFormats();

// The stored text, which is also the extension of the file: "md" for Markdown.
QString rawValue(ExportFormat format);
// Nothing for a text that is no format's.
std::optional<ExportFormat> exportFormatFromRawValue(const QString& text);
// What a request to export asks for: an unknown text asks for JSON.
ExportFormat requestedExportFormat(const QString& text);

// Such as "Markdown".
QString label(ExportFormat format);
// The entry in the menu "Export", such as "PNG Image".
QString menuEntry(ExportFormat format);

}  // namespace quilmora
