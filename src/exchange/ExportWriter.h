#pragma once

#include <functional>
#include <stop_token>

#include <QString>

#include "exchange/ExportFormat.h"
#include "model/MindMap.h"
#include "platform/Outcome.h"

namespace quilmora {

class FileWriter;

// Called now and then with the share of a long export that is done, from 0 to 1.
using ExportProgress = std::function<void(double share)>;

struct ExportOutcome {
  enum class State {
    written,
    failed,       // `reason` says why
    notRendered,  // no picture of this map can be made
    canceled,
  };

  State state = State::written;
  QString reason;  // can be shown to the user

  static ExportOutcome failure(const QString& reason) { return {State::failed, reason}; }
  static ExportOutcome of(const Outcome& written) {
    return written.isDone() ? ExportOutcome() : failure(written.reason());
  }
};

// Writes a map in a format, whatever the extension of `path`. If it fails, the file at the path stays as it was.
ExportOutcome writeExport(const MindMap& map, ExportFormat format, const QString& path, FileWriter& writer,
                          const ExportProgress& progress = {}, const std::stop_token& stop = {});

// The text of a text format in UTF-8; nothing for a picture format. Throws ExportError.
std::optional<QByteArray> exportedText(const MindMap& map, ExportFormat format);

}  // namespace quilmora
