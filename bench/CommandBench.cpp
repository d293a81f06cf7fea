#include <algorithm>
#include <ctime>
#include <functional>
#include <map>
#include <memory>
#include <optional>

#include <benchmark/benchmark.h>

#include "BenchMap.h"
#include "editor/MindMapViewModel.h"
#include "platform/Bookmarks.h"
#include "platform/Clock.h"
#include "platform/Log.h"
#include "platform/SettingsStore.h"

// Cost over size: the processor time of one command, with its snapshot and all that a window asks for after it.
namespace quilmora {
namespace {

constexpr int rounds = 15;

double processorSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// What a window keeps of the map that it shows; its copies share storage with the editor's own.
struct Shown {
  explicit Shown(MindMapViewModel& editor)
      : map(editor.mindMap()), index(editor.mapIndex()), tree(editor.treeInfo()), hidden(editor.sharedHiddenNodes()) {}

  MindMap map;
  MapIndex index;
  TreeInfo tree;
  std::decay_t<decltype(std::declval<MindMapViewModel&>().sharedHiddenNodes())> hidden;
};

// An open map with a window that follows it: the scene being painted, and the one painted before.
struct OpenMap {
  explicit OpenMap(int topics) : editor(benchMap(topics), {clock, settings, bookmarks, log}) {
    follow();
    for (const QUuid& id : everyTopic()) {
      const std::size_t children = editor.treeInfo().childCount(id);
      if (children == 0 && leaves.size() < 4 * rounds) leaves.push_back(id);
      if (children >= 2 && children <= 4 && branches.size() < 4 * rounds) branches.push_back(id);
    }
  }

  // Topics from all over the map.
  std::vector<QUuid> everyTopic() const {
    const auto& nodes = editor.mindMap().nodes;
    std::vector<QUuid> ids;
    for (std::size_t i = 0; i < std::min<std::size_t>(nodes.size(), 1000); ++i)
      ids.push_back(nodes[(i * 7919 + 1) * (nodes.size() / 1000 * 619 + 1) % nodes.size()].id);
    return ids;
  }
  void follow() {
    before = std::move(now);
    now = std::make_unique<Shown>(editor);
  }
  // Back to the map as it was opened, with nothing selected or collapsed.
  void restore() {
    while (editor.undoCount() > 0) editor.undo();
    editor.clearHistory();
    editor.clearSelection();
    if (!editor.collapsedNodeIDs().empty()) editor.setCollapsedNodeIDs({});
    follow();
    follow();
    clock.advance(std::chrono::seconds(1));
  }

  ManualClock clock;
  MemorySettingsStore settings;
  PathBookmarks bookmarks;
  MemoryLog log;
  MindMapViewModel editor;
  std::unique_ptr<Shown> now;
  std::unique_ptr<Shown> before;
  std::vector<QUuid> leaves;
  std::vector<QUuid> branches;  // with two to four children
};

OpenMap& openMap(int topics) {
  static std::map<int, std::unique_ptr<OpenMap>> maps;
  auto& map = maps[topics];
  if (!map) map = std::make_unique<OpenMap>(topics);
  return *map;
}

struct Command {
  const char* name;
  std::function<void(OpenMap&, int round)> run;
  std::function<void(OpenMap&, int round)> prepare = nullptr;
};

void measure(benchmark::State& state, const Command& command) {
  OpenMap& open = openMap(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
      if (command.prepare) {
        command.prepare(open, round);
        open.follow();
        open.follow();
      }
      const double start = processorSeconds();
      command.run(open, round);
      open.follow();
      times.push_back(processorSeconds() - start);
      open.restore();
    }
    std::ranges::nth_element(times, times.begin() + rounds / 2);
    state.SetIterationTime(times[rounds / 2]);
  }
}

QUuid leaf(const OpenMap& open, int round) {
  return open.leaves[static_cast<std::size_t>(round)];
}
QUuid otherLeaf(const OpenMap& open, int round) {
  return open.leaves[static_cast<std::size_t>(round + rounds)];
}
QUuid branch(const OpenMap& open, int round) {
  return open.branches[static_cast<std::size_t>(round)];
}
// The edge in the middle of the map, give or take.
QUuid someEdge(const OpenMap& open, int round) {
  const auto& edges = open.editor.mindMap().edges;
  return edges[edges.size() / 2 + static_cast<std::size_t>(round)].id;
}
void selectAll(OpenMap& open, int) {
  open.editor.selectAll();
}
void collapse(OpenMap& open, int round) {
  open.editor.toggleCollapsed(branch(open, round));
}
void createChild(OpenMap& open, int round) {
  open.editor.createChild(leaf(open, round));
}
void setTitle(OpenMap& open, int round) {
  open.editor.setNodeTitle(leaf(open, round), QStringLiteral("A title of some length"));
}
void deleteLeaf(OpenMap& open, int round) {
  open.editor.deleteNode(leaf(open, round));
}
void undo(OpenMap& open, int) {
  open.editor.undo();
}
void redo(OpenMap& open, int) {
  open.editor.redo();
}
void setColor(OpenMap& open, int round) {
  NodeStyle style = open.editor.nodeByID(leaf(open, round))->style;
  style.fill = QStringLiteral("#123456");
  open.editor.setNodeStyle(leaf(open, round), style);
}

std::function<void(OpenMap&, int)> undone(void (*run)(OpenMap&, int)) {
  return [run](OpenMap& open, int round) {
    run(open, round);
    open.follow();
    open.editor.undo();
  };
}

const std::vector<Command>& commands() {
  static const std::vector<Command> table{
      {"create a child", createChild},
      {"create a free topic", [](OpenMap& open, int) { open.editor.createFreeNode(120, 80); }},
      {"set a title", setTitle},
      {"move a topic",
       [](OpenMap& open, int) {
         open.editor.moveSelectedNodes({40, 30});
       },
       [](OpenMap& open, int round) { open.editor.selectNode(leaf(open, round), false); }},
      {"delete a leaf", deleteLeaf},
      {"delete a topic with children", [](OpenMap& open, int round) { open.editor.deleteNode(branch(open, round)); }},
      {"delete the selected leaf", [](OpenMap& open, int) { open.editor.deleteSelection(); },
       [](OpenMap& open, int round) { open.editor.selectNode(leaf(open, round), false); }},
      {"collapse a branch", collapse},
      {"expand a branch", collapse, collapse},
      {"put a topic under another parent",
       [](OpenMap& open, int round) { open.editor.reparentNode(leaf(open, round), otherLeaf(open, round)); }},
      {"reconnect a connector's source",
       [](OpenMap& open, int round) { open.editor.reconnectEdgeSource(someEdge(open, round), leaf(open, round)); }},
      {"select a topic", [](OpenMap& open, int round) { open.editor.selectNode(leaf(open, round), false); }},
      {"add a relationship",
       [](OpenMap& open, int round) { open.editor.addRelationship(leaf(open, round), otherLeaf(open, round)); }},
      {"delete a relationship",
       [](OpenMap& open, int round) {
         const auto& links = open.editor.mindMap().relationships;
         open.editor.deleteRelationship(links[static_cast<std::size_t>(round) % links.size()].id);
       }},
      {"change the style of a topic", setColor},
      {"delete a connector", [](OpenMap& open, int round) { open.editor.deleteEdge(someEdge(open, round)); }},
      {"undo a child", undo, createChild},
      {"undo a title", undo, setTitle},
      {"undo a deletion", undo, deleteLeaf},
      {"redo a child", redo, undone(createChild)},
      {"redo a deletion", redo, undone(deleteLeaf)},
      {"every topic: apply a theme", [](OpenMap& open, int) { open.editor.applyTheme(allThemes()[7]); }},
      {"every topic: recolour by branch", [](OpenMap& open, int) { open.editor.recolorByBranch(); }},
      {"every topic: apply a tree layout",
       [](OpenMap& open, int) { open.editor.applyLayout(MindMap::Layout::tree, QSizeF(1920.0, 1080.0)); }},
      {"every topic: select", selectAll},
      {"every topic: move",
       [](OpenMap& open, int) {
         open.editor.moveSelectedNodes({4, 0});
       },
       selectAll},
  };
  return table;
}

const bool isRegistered = [] {
  for (const Command& command : commands())
    benchmark::RegisterBenchmark((std::string("cost ") + command.name).c_str(),
                                 [&command](benchmark::State& state) { measure(state, command); })
        ->Arg(1000)
        ->Arg(10'000)
        ->Arg(100'000)
        ->Arg(1'000'000)
        ->Iterations(1)
        ->Repetitions(1)
        ->UseManualTime();
  return true;
}();

}  // namespace
}  // namespace quilmora
