#pragma once

#include <functional>
#include <stop_token>

#include <QString>

#include "exchange/ExportFormat.h"
#include "model/MindMap.h"
#include "platform/Outcome.h"

namespace quilmora {

class FileWriter;

// Told now and then how much of a long export is done, from 0 to 1.
using ExportProgress = std::function<void(double share)>;

struct ExportOutcome {
  enum class State {
    written,
    failed,       // `reason` tells why
    notRendered,  // no picture of this map can be made
    canceled,
  };

  State state = State::written;
  QString reason;  // fit to be shown

  static ExportOutcome failure(const QString& reason) { return {State::failed, reason}; }
  static ExportOutcome of(const Outcome& written) {
    return written.isDone() ? ExportOutcome() : failure(written.reason());
  }
};

// Writes a map in a format, whatever the extension of `path`. Unless it is written whole, the path stays as it was.
ExportOutcome writeExport(const MindMap& map, ExportFormat format, const QString& path, FileWriter& writer,
                          const ExportProgress& progress = {}, const std::stop_token& stop = {});

// A text format in UTF-8; nothing for a picture. Throws ExportError.
std::optional<QByteArray> exportedText(const MindMap& map, ExportFormat format);

}  // namespace quilmora
