#include "exchange/ExportFormat.h"

#include <algorithm>
#include <array>

namespace quilmora {

namespace {

struct Row {
  ExportFormat format;
  QLatin1String rawValue;
  QLatin1String label;
  QLatin1String menuEntry;
};

// By the value of the enumeration.
constexpr std::array rows{
    Row{ExportFormat::json, QLatin1String("json"), QLatin1String("JSON"), QLatin1String("JSON")},
    Row{ExportFormat::png, QLatin1String("png"), QLatin1String("PNG"), QLatin1String("PNG Image")},
    Row{ExportFormat::pdf, QLatin1String("pdf"), QLatin1String("PDF"), QLatin1String("PDF")},
    Row{ExportFormat::svg, QLatin1String("svg"), QLatin1String("SVG"), QLatin1String("SVG")},
    Row{ExportFormat::opml, QLatin1String("opml"), QLatin1String("OPML"), QLatin1String("OPML")},
    Row{ExportFormat::markdown, QLatin1String("md"), QLatin1String("Markdown"), QLatin1String("Markdown")},
};

const Row& rowOf(ExportFormat format) {
  return rows[static_cast<std::size_t>(format)];
}

}  // namespace

std::span<const ExportFormat> allExportFormats() {
  static constexpr auto formats = [] {
    std::array<ExportFormat, rows.size()> result{};
    std::transform(rows.begin(), rows.end(), result.begin(), [](const Row& row) { return row.format; });
    return result;
  }();
  return formats;
}

QString rawValue(ExportFormat format) {
  return rowOf(format).rawValue;
}

std::optional<ExportFormat> exportFormatFromRawValue(const QString& text) {
  const auto found = std::find_if(rows.begin(), rows.end(), [&](const Row& row) { return text == row.rawValue; });
  if (found == rows.end()) return std::nullopt;
  return found->format;
}

ExportFormat requestedExportFormat(const QString& text) {
  return exportFormatFromRawValue(text).value_or(ExportFormat::json);
}

QString label(ExportFormat format) {
  return rowOf(format).label;
}

QString menuEntry(ExportFormat format) {
  return rowOf(format).menuEntry;
}

}  // namespace quilmora
