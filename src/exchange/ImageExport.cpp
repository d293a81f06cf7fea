#include "exchange/ImageExport.h"

#include <QFileInfo>

#include "exchange/PdfWriter.h"
#include "exchange/PngWriter.h"
#include "platform/FileWriter.h"

namespace quilmora {

namespace {

// Writes the picture between the header and the trailer of a file.
template <class Writer>
PictureStreamEnd stream(Writer&& writer, const PictureScene& scene, const QString& folder,
                        const ExportProgress& progress, const std::stop_token& stop, const PictureParts& parts) {
  if (!writer.begin()) return PictureStreamEnd::stopped;
  const auto take = [&](const char* data, qsizetype size) { return writer.take(data, size); };
  const PictureStreamEnd end = streamPicture(scene, folder, take, progress, stop, parts);
  return end == PictureStreamEnd::done && !writer.finish() ? PictureStreamEnd::stopped : end;
}

}  // namespace

ExportOutcome exportPicture(const MindMap& map, ExportFormat format, const QString& path, FileWriter& writer,
                            const ExportProgress& progress, const std::stop_token& stop, const PictureParts& parts) {
  const QRectF bounds = pictureBounds(map);
  const auto size = pictureSize(bounds);
  if (!size) return {ExportOutcome::State::notRendered, {}};
  const QFileInfo file(path);
  const auto output = writer.stream(path);
  const PictureScene scene(map, bounds, *size);
  const PictureStreamEnd end =
      format == ExportFormat::pdf
          ? stream(PdfWriter(*output, *size, bounds.size()), scene, file.path(), progress, stop, parts)
          : stream(PngWriter(*output, *size), scene, file.path(), progress, stop, parts);
  if (end == PictureStreamEnd::notDrawn) return {ExportOutcome::State::notRendered, {}};
  if (end == PictureStreamEnd::outOfRoom)
    return ExportOutcome::failure(
        QStringLiteral("“%1” could not be written. The disk has no room for the parts of the picture.")
            .arg(file.fileName()));
  if (stop.stop_requested()) return {ExportOutcome::State::canceled, {}};
  if (end != PictureStreamEnd::done && !output->hasFailed())
    return ExportOutcome::failure(
        QStringLiteral("“%1” could not be written. The picture is too large for this kind of file.")
            .arg(file.fileName()));
  // If the file stopped the picture, its commit says why.
  return ExportOutcome::of(output->commit());
}

}  // namespace quilmora
