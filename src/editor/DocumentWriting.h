#pragma once

#include <optional>

#include <QString>

#include "model/MindMap.h"
#include "platform/FileState.h"
#include "platform/Outcome.h"

namespace quilmora {

class FileWriter;

// One write of a document, as a value that another thread can take.
struct DocumentWrite {
  MindMap map;
  QString path;
  // What must still be there; nothing if the user agreed to replace whatever is.
  std::optional<FileState> known;
  // The copy that auto-save made while the map had no place of its own. It is removed once the map has been written
  // elsewhere, if it is still unchanged.
  struct Superseded {
    QString path;
    FileState state;
  };
  std::optional<Superseded> superseded;
  // Where the version to be replaced is kept first; empty if nobody would miss it.
  QString otherVersion;
};

struct WrittenDocument {
  Outcome outcome = Outcome::done();
  // What prevented the write, if another program did.
  FileChange change = FileChange::none;
  // The file as it is now, if it was written or changed.
  FileState state;
};

// Encodes, writes, flushes and renames. Checks the file before the work and again right before the new one replaces it.
// Does not throw.
WrittenDocument writeDocument(const DocumentWrite& write, FileWriter& writer);

// What another program did, as a sentence; empty for changes that do not prevent writing.
QString sentenceOf(FileChange change);

}  // namespace quilmora
