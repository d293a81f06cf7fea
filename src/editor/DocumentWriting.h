#pragma once

#include <optional>

#include <QString>

#include "model/MindMap.h"
#include "platform/FileState.h"
#include "platform/Outcome.h"

namespace quilmora {

class FileWriter;

// One write of a document, as a value that another thread may take.
struct DocumentWrite {
  MindMap map;
  QString path;
  // What must still stand there. Nothing where the person agreed to replace whatever does.
  std::optional<FileState> known;
  // The copy that auto-save made while the map had no place of its own. It goes once the map is written elsewhere,
  // where it is still as it was left.
  struct Superseded {
    QString path;
    FileState state;
  };
  std::optional<Superseded> superseded;
  // Where the version that is replaced is kept first; empty where nobody would miss it.
  QString otherVersion;
};

struct WrittenDocument {
  Outcome outcome = Outcome::done();
  // What kept it from being written, where another program did.
  FileChange change = FileChange::none;
  // The file as it is now, where it was written or changed.
  FileState state;
};

// Encodes, writes, flushes and renames. Looks at the file before the work and again right before the new one takes its
// place. Throws nothing.
WrittenDocument writeDocument(const DocumentWrite& write, FileWriter& writer);

// What another program did, as a sentence; empty for what keeps nobody from writing.
QString sentenceOf(FileChange change);

}  // namespace quilmora
