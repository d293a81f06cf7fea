#include <cstdio>
#include <fstream>
#include <string>

#include <QFileInfo>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include "BenchMap.h"
#include "exchange/ExportWriter.h"
#include "layout/LayoutAlgorithm.h"
#include "platform/FileWriter.h"

namespace quilmora {

namespace {

// Resets the process's peak memory, and reads it in megabytes.
void forgetPeak() {
  std::ofstream("/proc/self/clear_refs") << '5';
}
double peakMegabytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.starts_with("VmHWM:")) return std::strtod(line.c_str() + 6, nullptr) / 1024;
  return 0.0;
}

void picture(benchmark::State& state, ExportFormat format) {
  MindMap map = benchMap(static_cast<int>(state.range(0)));
  const PositionTable positions =
      makeLayout(MindMap::Layout::tree)->computePositions(map.nodes, map.edges, QSizeF(1200, 800));
  map.nodes.updateAll([&](Node& node) { node.position = *positions.find(node.id); });
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("picture"));
  DiskFileWriter writer;
  forgetPeak();
  for (auto _ : state) {
    const ExportOutcome outcome = writeExport(map, format, path, writer);
    if (outcome.state != ExportOutcome::State::written) state.SkipWithError("the picture was not written");
  }
  state.counters["megabytes of the file"] = static_cast<double>(QFileInfo(path).size()) / 1e6;
  state.counters["megabytes of memory at the peak"] = peakMegabytes();
}

const bool isRegistered = [] {
  const auto add = [](const char* name, ExportFormat format) {
    benchmark::RegisterBenchmark(name, [format](benchmark::State& state) { picture(state, format); })
        ->Arg(1000)
        ->Arg(10'000)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime()
        ->Iterations(1)
        ->Repetitions(3);
  };
  add("picture PNG of a tree", ExportFormat::png);
  add("picture PDF of a tree", ExportFormat::pdf);
  return true;
}();

}  // namespace

}  // namespace quilmora
