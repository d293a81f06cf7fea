#include <cstdint>
#include <cstdlib>

#include "exchange/ImportError.h"
#include "exchange/MarkdownImport.h"
#include "model/MindMapDocument.h"

// Any bytes give a forest that can be written as a document and read back, or an error.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quilmora;
  MindMap map;
  try {
    map = importMarkdown(QByteArrayView(data, static_cast<qsizetype>(size)), ManualClock());
  } catch (const ImportError&) {
    return 0;
  }
  if (!map.nodes.empty() && map.edges.size() >= map.nodes.size()) std::abort();
  if (!(decodeDocument(encodeDocument(map)) == map)) std::abort();
  return 0;
}
