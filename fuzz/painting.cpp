#include <cstdint>
#include <cstring>

#include <QGuiApplication>

#include "model/MindMapDocument.h"
#include "support/ExtremeMap.h"
#include "support/MapJourney.h"

using namespace quilmora;

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  static const QGuiApplication application(*argc, *argv);
  return 0;
}

// Whatever opens can be drawn, searched, presented, exported and arranged in bounded time; run with -timeout. A valid
// document is used as it is; anything else is the seed of an extreme map.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  MindMap map;
  try {
    map = decodeDocument(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    if (map.nodes.size() > 2000 || map.edges.size() > 4000) return 0;
  } catch (const DocumentError&) {
    if (size > 9) return 0;
    std::uint64_t seed = 0;
    std::memcpy(&seed, data, std::min<std::size_t>(size, sizeof(seed)));
    map = test::ExtremeMapMaker(seed).map(size == 9 ? data[8] % 40 : 12);
  }
  test::MapJourney(map, [](const char*) {}).run();
  return 0;
}
