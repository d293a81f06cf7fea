#include <cstdint>
#include <cstdlib>

#include "exchange/FreeMindParser.h"
#include "exchange/ImportError.h"
#include "model/MindMapDocument.h"

// Any bytes give a forest without notes that can be written as a document and read back, or an error.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quilmora;
  MindMap map;
  try {
    map = FreeMindParser(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)), ManualClock())
              .parse();
  } catch (const ImportError&) {
    return 0;
  }
  if (!map.nodes.empty() && map.edges.size() >= map.nodes.size()) std::abort();
  if (!(decodeDocument(encodeDocument(map)) == map)) std::abort();
  for (const Node& node : map.nodes)
    if (!node.notes.isEmpty() || node.position.x() < 100 || node.position.y() < 100) std::abort();
  return 0;
}
