#include <benchmark/benchmark.h>

#include "BenchMap.h"
#include "editor/MindMapViewModel.h"
#include "exchange/MarkdownImport.h"
#include "exchange/TextExports.h"
#include "platform/Bookmarks.h"
#include "platform/Clock.h"
#include "platform/Log.h"
#include "platform/SettingsStore.h"

namespace quilmora {
namespace {

void importOutline(benchmark::State& state) {
  const QByteArray text = exportMarkdown(benchMap(static_cast<int>(state.range(0))));
  const ManualClock clock;
  for (auto _ : state) {
    const MindMap map = importMarkdown(text, clock);
    benchmark::DoNotOptimize(map.nodes.size());
  }
}

// Lines with realistic indentation, pasted below the root of a map with as many topics, including the tree rebuilt
// after it.
void pasteLines(benchmark::State& state, SmartPasteMode mode) {
  const ManualClock clock;
  MemorySettingsStore settings;
  PathBookmarks bookmarks;
  MemoryLog log;
  const MindMap map = benchMap(static_cast<int>(state.range(0)));
  const QString text = QString::fromUtf8(exportMarkdown(map));
  MindMapViewModel editor(map, {clock, settings, bookmarks, log});
  for (auto _ : state) {
    editor.smartPaste(text, mode, map.nodes[0].id);
    benchmark::DoNotOptimize(editor.treeInfo().maxDepth());
    state.PauseTiming();
    editor.undo();
    editor.treeInfo();
    state.ResumeTiming();
  }
}

const bool isRegistered = [] {
  const auto add = [](const char* name, auto run) {
    return benchmark::RegisterBenchmark(name, run)->Arg(1000)->Arg(10'000)->Arg(100'000)->UseRealTime();
  };
  add("import Markdown", importOutline)->Arg(1'000'000);
  add("paste lines as siblings", [](benchmark::State& state) { pasteLines(state, SmartPasteMode::multipleNodes); });
  add("paste lines as an outline", [](benchmark::State& state) { pasteLines(state, SmartPasteMode::nestedOutline); });
  add("paste lines as one topic", [](benchmark::State& state) { pasteLines(state, SmartPasteMode::singleNode); });
  return true;
}();

}  // namespace
}  // namespace quilmora
