#pragma once

#include <optional>
#include <span>

#include <QString>

namespace quilmora {

// The formats a map can be exported to, in the order of the menu.
enum class ExportFormat { json, png, pdf, svg, opml, markdown };

std::span<const ExportFormat> allExportFormats();

// The stored text, which is also the extension of the file: "md" for Markdown.
QString rawValue(ExportFormat format);
// Nothing for an unknown text.
std::optional<ExportFormat> exportFormatFromRawValue(const QString& text);
// The format of a request to export: an unknown text means JSON.
ExportFormat requestedExportFormat(const QString& text);

// Whether it shows the map as it looks, in a file that takes long to make.
inline bool isPicture(ExportFormat format) {
  return format == ExportFormat::png || format == ExportFormat::pdf;
}

// Such as "Markdown".
QString label(ExportFormat format);
// The entry in the "Export" menu, such as "PNG Image".
QString menuEntry(ExportFormat format);

}  // namespace quilmora
