#include <algorithm>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include "BenchMap.h"
#include "editor/MindMapViewModel.h"
#include "layout/LayoutAlgorithm.h"
#include "platform/Bookmarks.h"
#include "platform/Clock.h"
#include "platform/Log.h"
#include "platform/SettingsStore.h"

namespace quilmora {
namespace {

double allocatedBytes() {
  const auto info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd);
}

// An open map of the benchmark's size with its tree built, as in a window.
struct OpenMap {
  explicit OpenMap(const benchmark::State& state)
      : editor(benchMap(static_cast<int>(state.range(0))), {clock, settings, bookmarks, log}) {
    editor.treeInfo();
  }

  // Topics from all over the map, one after the other.
  QUuid nextTopic() {
    const auto& nodes = editor.mindMap().nodes;
    m_place = (m_place + nodes.size() / 50 * 17 + 1) % nodes.size();
    return nodes[m_place].id;
  }

  ManualClock clock;
  MemorySettingsStore settings;
  PathBookmarks bookmarks;
  MemoryLog log;
  MindMapViewModel editor;

 private:
  std::size_t m_place = 0;
};

using Command = void (*)(MindMapViewModel& editor, const QUuid& topic);

// The command with its snapshot, and the tree rebuilt after it. Undone between runs, so that the map keeps its size.
void command(benchmark::State& state, Command run) {
  OpenMap open(state);
  for (auto _ : state) {
    state.PauseTiming();
    const QUuid topic = open.nextTopic();
    open.clock.advance(std::chrono::seconds(1));
    state.ResumeTiming();
    run(open.editor, topic);
    benchmark::DoNotOptimize(open.editor.treeInfo().maxDepth());
    state.PauseTiming();
    open.editor.undo();
    open.editor.treeInfo();
    state.ResumeTiming();
  }
}

// What opening adds to reading: nothing has been derived yet.
void treeFromScratch(benchmark::State& state) {
  const MindMap map = benchMap(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    const TreeInfo tree{MapIndex(map.nodes, map.edges)};
    benchmark::DoNotOptimize(tree.maxDepth());
  }
}

// The memory that fifty snapshots with an edit each may take beyond the map, in megabytes.
double historyBudget(const benchmark::State& state) {
  return state.range(0) <= 10'000 ? 4.0 : 16.0;
}

void fiftySnapshots(benchmark::State& state, Command run) {
  OpenMap open(state);
  double most = 0.0;
  for (auto _ : state) {
    state.PauseTiming();
    while (open.editor.undoCount() > 0) open.editor.undo();
    open.editor.clearHistory();
    open.editor.treeInfo();
    const double before = allocatedBytes();
    state.ResumeTiming();
    for (int i = 0; i < MindMapViewModel::maxHistorySize; ++i) {
      open.clock.advance(std::chrono::seconds(1));
      run(open.editor, open.nextTopic());
      benchmark::DoNotOptimize(open.editor.treeInfo().maxDepth());
    }
    state.PauseTiming();
    most = std::max(most, (allocatedBytes() - before) / 1e6);
    state.ResumeTiming();
  }
  state.counters["MB beyond the map"] = most;
  if (most > historyBudget(state)) state.SkipWithError("the history takes more memory than its budget");
}

void layout(benchmark::State& state, MindMap::Layout value) {
  const MindMap map = benchMap(static_cast<int>(state.range(0)));
  const auto algorithm = makeLayout(value);
  for (auto _ : state) {
    PositionTable table = algorithm->computePositions(map.nodes, map.edges, QSizeF(1920.0, 1080.0));
    benchmark::DoNotOptimize(table.points().data());
  }
}

void createChild(MindMapViewModel& editor, const QUuid& topic) {
  editor.createChild(topic);
}
void setNodeTitle(MindMapViewModel& editor, const QUuid& topic) {
  editor.setNodeTitle(topic, QStringLiteral("A title of some length"));
}
void deleteNode(MindMapViewModel& editor, const QUuid& topic) {
  editor.deleteNode(topic);
}
void applyTheme(MindMapViewModel& editor, const QUuid&) {
  editor.applyTheme(allThemes()[7]);
}
void recolorByBranch(MindMapViewModel& editor, const QUuid&) {
  editor.recolorByBranch();
}
void applyTreeLayout(MindMapViewModel& editor, const QUuid&) {
  editor.applyLayout(MindMap::Layout::tree, QSizeF(1920.0, 1080.0));
}

const bool isRegistered = [] {
  const auto add = [](const char* name, auto run) {
    benchmark::RegisterBenchmark(name, run)->Arg(1000)->Arg(10'000)->Arg(100'000)->UseRealTime();
  };
  const auto addCommand = [&](const char* name, Command run) {
    add(name, [run](benchmark::State& state) { command(state, run); });
  };
  addCommand("command createChild", createChild);
  addCommand("command setNodeTitle", setNodeTitle);
  addCommand("command deleteNode", deleteNode);
  addCommand("command applyTheme", applyTheme);
  addCommand("command recolorByBranch", recolorByBranch);
  add("fifty snapshots, a child each", [](benchmark::State& state) { fiftySnapshots(state, createChild); });
  add("fifty snapshots, a title each", [](benchmark::State& state) { fiftySnapshots(state, setNodeTitle); });
  add("fifty snapshots, a deletion each", [](benchmark::State& state) { fiftySnapshots(state, deleteNode); });
  add("tree from scratch", treeFromScratch);
  add("layout tree", [](benchmark::State& state) { layout(state, MindMap::Layout::tree); });
  add("layout verticalTree", [](benchmark::State& state) { layout(state, MindMap::Layout::verticalTree); });
  addCommand("layout tree, applied to the map", applyTreeLayout);
  return true;
}();

}  // namespace
}  // namespace quilmora
