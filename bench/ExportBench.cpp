#include <benchmark/benchmark.h>

#include "BenchMap.h"
#include "exchange/TextExports.h"

namespace quilmora {

namespace {

void exportAs(benchmark::State& state, QByteArray (*write)(const MindMap& map)) {
  const MindMap map = benchMap(static_cast<int>(state.range(0)));
  QByteArray text;
  for (auto _ : state) {
    text = write(map);
    benchmark::DoNotOptimize(text.constData());
  }
  state.counters["bytes of text a topic"] = static_cast<double>(text.size()) / static_cast<double>(state.range(0));
}

const bool isRegistered = [] {
  const auto add = [](const char* name, QByteArray (*write)(const MindMap& map)) {
    benchmark::RegisterBenchmark(name, [write](benchmark::State& state) { exportAs(state, write); })
        ->Arg(1000)
        ->Arg(10'000)
        ->Arg(100'000)
        ->Arg(1'000'000)
        ->UseRealTime();
  };
  add("export OPML", exportOPML);
  add("export Markdown", exportMarkdown);
  add("export SVG", [](const MindMap& map) { return exportSVG(map); });
  return true;
}();

}  // namespace

}  // namespace quilmora
