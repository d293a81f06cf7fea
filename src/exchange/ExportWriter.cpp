#include "exchange/ExportWriter.h"

#include <new>

#include "exchange/ImageExport.h"
#include "exchange/TextExports.h"
#include "platform/FileWriter.h"

namespace quilmora {

std::optional<QByteArray> exportedText(const MindMap& map, ExportFormat format) {
  switch (format) {
    case ExportFormat::json:
      return exportJSON(map);
    case ExportFormat::svg:
      return exportSVG(map);
    case ExportFormat::opml:
      return exportOPML(map);
    case ExportFormat::markdown:
      return exportMarkdown(map);
    case ExportFormat::png:
    case ExportFormat::pdf:
      break;
  }
  return std::nullopt;
}

ExportOutcome writeExport(const MindMap& map, ExportFormat format, const QString& path, FileWriter& writer,
                          const ExportProgress& progress, const std::stop_token& stop) {
  try {
    if (isPicture(format)) return exportPicture(map, format, path, writer, progress, stop);
    return ExportOutcome::of(writer.write(path, exportedText(map, format).value()));
  } catch (const ExportError& error) {
    return ExportOutcome::failure(error.message());
  } catch (const std::bad_alloc&) {
    if (isPicture(format)) return {ExportOutcome::State::notRendered, {}};
    return ExportOutcome::failure(QStringLiteral("the map is too large for the memory of this machine"));
  }
}

}  // namespace quilmora
