#pragma once

#include <stop_token>

#include "exchange/ExportWriter.h"
#include "exchange/PictureStream.h"

namespace quilmora {

// Writes a picture of the whole map as a PNG file, or as the single page of a PDF file. Zoom, selection and collapsed
// branches are ignored; regions, relationships, bends and sizing by depth are left out. A map that cannot be drawn
// gives notRendered. Paints in its own threads and may be called from any; `progress` is called in the calling thread.
ExportOutcome exportPicture(const MindMap& map, ExportFormat format, const QString& path, FileWriter& writer,
                            const ExportProgress& progress = {}, const std::stop_token& stop = {},
                            const PictureParts& parts = {});

}  // namespace quilmora
