#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <malloc.h>

#include "BenchMap.h"
#include "model/MindMapDocument.h"

namespace quilmora {
namespace {

double allocatedBytes() {
  const auto info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd);
}

void decode(benchmark::State& state) {
  const QByteArray json = encodeDocument(benchMap(static_cast<int>(state.range(0))));
  MindMap map;
  for (auto _ : state) {
    map = decodeDocument(json);
    benchmark::DoNotOptimize(map);
    state.PauseTiming();
    map = MindMap();
    state.ResumeTiming();
  }
  const double before = allocatedBytes();
  map = decodeDocument(json);
  state.counters["bytes of memory a topic"] = (allocatedBytes() - before) / static_cast<double>(state.range(0));
}

void decodeFile(benchmark::State& state) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("bench.mindmap"));
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return state.SkipWithError("no temporary file");
  file.write(encodeDocument(benchMap(static_cast<int>(state.range(0)))));
  file.close();
  for (auto _ : state) {
    MindMap map = decodeDocumentAt(path);
    benchmark::DoNotOptimize(map);
    state.PauseTiming();
    map = MindMap();
    state.ResumeTiming();
  }
}

void encode(benchmark::State& state) {
  const MindMap map = benchMap(static_cast<int>(state.range(0)));
  QByteArray json;
  for (auto _ : state) {
    json = encodeDocument(map);
    benchmark::DoNotOptimize(json.constData());
  }
  state.counters["bytes of text a topic"] = static_cast<double>(json.size()) / static_cast<double>(state.range(0));
}

const auto sizes = [](auto* bench) { bench->Arg(1000)->Arg(10'000)->Arg(100'000)->UseRealTime(); };
BENCHMARK(decode)->Name("decode")->Apply(sizes);
BENCHMARK(decodeFile)->Name("decode from a file")->Apply(sizes);
BENCHMARK(encode)->Name("encode")->Apply(sizes);

}  // namespace
}  // namespace quilmora
