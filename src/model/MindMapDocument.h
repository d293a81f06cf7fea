#pragma once

// Documents and everything that reads and writes them.
#include "model/DocumentFile.h"
#include "model/DocumentReader.h"
#include "model/DocumentWriter.h"

namespace quilmora {

// The map as it was last passed on by reading or editing.
struct MindMapDocument {
  MindMap mindMap;

  explicit MindMapDocument(const Clock& clock) : mindMap(MindMap::blankMap(clock)) {}
};

}  // namespace quilmora
