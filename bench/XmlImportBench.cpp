#include <benchmark/benchmark.h>

#include "BenchMap.h"
#include "exchange/FreeMindParser.h"
#include "exchange/OPMLParser.h"
#include "exchange/TextExports.h"

namespace quilmora {
namespace {

QByteArray benchOpml(int topics) {
  return exportOPML(benchMap(topics));
}

// The same outline as FreeMind would write it: with ids, dates, and an occasional icon.
QByteArray benchFreeMind(int topics) {
  QByteArray text = benchOpml(topics);
  text.replace("<outline text=\"",
               "<node CREATED=\"1700000000000\" ID=\"ID_1234567890\" MODIFIED=\"1700000000000\" TEXT=\"");
  text.replace("<outline", "<node").replace("</outline>", "<icon BUILTIN=\"idea\"/>\n</node>");
  return text;
}

template <class Parser>
void parse(benchmark::State& state, QByteArray (*make)(int)) {
  const QByteArray text = make(static_cast<int>(state.range(0)));
  const ManualClock clock;
  for (auto _ : state) {
    MindMap map = Parser(text, clock).parse();
    if (map.nodes.size() != static_cast<std::size_t>(state.range(0))) return state.SkipWithError("topics are missing");
    benchmark::DoNotOptimize(map);
    state.PauseTiming();
    map = MindMap();
    state.ResumeTiming();
  }
  state.counters["bytes of text a topic"] = static_cast<double>(text.size()) / static_cast<double>(state.range(0));
}

const bool isRegistered = [] {
  const auto add = [](const char* name, auto run) {
    benchmark::RegisterBenchmark(name, run)->Arg(1000)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->UseRealTime();
  };
  add("import OPML", [](benchmark::State& state) { parse<OPMLParser>(state, benchOpml); });
  add("import FreeMind", [](benchmark::State& state) { parse<FreeMindParser>(state, benchFreeMind); });
  return true;
}();

}  // namespace
}  // namespace quilmora
