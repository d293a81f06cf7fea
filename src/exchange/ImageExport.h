#pragma once

#include <stop_token>

#include "exchange/ExportWriter.h"
#include "exchange/PictureStream.h"

namespace quilmora {

// Writes a picture of the whole map as a PNG file, or as the one page of a PDF file. Zoom, selection and collapsed
// branches don't matter; regions, relationships, bends and sizing by depth are left out. What cannot be drawn is not
// rendered. Paints in threads of its own, so that it may be called from any; `progress` is called in the calling one.
ExportOutcome exportPicture(const MindMap& map, ExportFormat format, const QString& path, FileWriter& writer,
                            const ExportProgress& progress = {}, const std::stop_token& stop = {},
                            const PictureParts& parts = {});

}  // namespace quilmora
