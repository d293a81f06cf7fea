#pragma once

// Documents with all that reads and writes them.
#include "model/DocumentFile.h"
#include "model/DocumentReader.h"
#include "model/DocumentWriter.h"

namespace quilmora {

// The document beside the editor: the map as it was last handed over by reading or by editing.
struct MindMapDocument {
  MindMap mindMap;

  explicit MindMapDocument(const Clock& clock) : mindMap(MindMap::blankMap(clock)) {}
};

}  // namespace quilmora
