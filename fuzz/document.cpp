#include <cstdint>
#include <cstdlib>

#include "model/MindMapDocument.h"

// Any bytes give a map that can be written and read back unchanged, or an error.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quilmora;
  MindMap map;
  try {
    map = decodeDocument(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
  } catch (const DocumentError&) {
    return 0;
  }
  const QByteArray written = encodeDocument(map);
  if (!(decodeDocument(written) == map) || encodeDocument(decodeDocument(written)) != written) std::abort();
  return 0;
}
