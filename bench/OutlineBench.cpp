#include <functional>
#include <memory>

#include <QApplication>
#include <benchmark/benchmark.h>

#include "BenchMap.h"
#include "ai/MockProvider.h"
#include "app/look/DesktopAppearance.h"
#include "app/look/Look.h"
#include "app/outline/OutlineList.h"
#include "app/outline/OutlineView.h"
#include "editor/AIWorkflows.h"
#include "platform/Bookmarks.h"
#include "platform/HttpTransport.h"
#include "platform/KeyStore.h"
#include "platform/Log.h"
#include "platform/OnDeviceModel.h"
#include "platform/SettingsStore.h"

// The outline as a panel shows it, in a window on the offscreen platform: its rows and their painting, without the
// editor's own work for the same change.

namespace quilmora {
namespace {

constexpr QSize panel(260, 800);

struct Window {
  explicit Window(const benchmark::State& state)
      : editor(benchMap(static_cast<int>(state.range(0))), EditorServices{clock, settings, bookmarks, log}) {
    editor.treeInfo();
    frame.resize(panel);
    frame.show();
    QApplication::processEvents();
  }

  void open() {
    view = std::make_unique<OutlineView>(look, editor, workflows, &frame);
    view->setGeometry(frame.rect());
    view->show();
    QApplication::processEvents();
    view->list().viewport()->repaint();
  }

  ManualClock clock;
  MemorySettingsStore settings;
  PathBookmarks bookmarks;
  MemoryLog log;
  MemoryKeyStore keys;
  MemoryHttpTransport transport;
  MemoryOnDeviceModel onDevice;
  FixedDesktopAppearance desktop;
  Look look{settings, desktop};
  MindMapViewModel editor;
  AIWorkflows workflows{editor, {clock, settings, bookmarks, log}, {settings, keys, transport, onDevice, [] {
                                                                      return std::make_shared<MockProvider>();
                                                                    }}};
  QWidget frame;
  std::unique_ptr<OutlineView> view;
};

void open(benchmark::State& state) {
  Window window(state);
  for (auto _ : state) {
    window.open();
    state.PauseTiming();
    window.view.reset();
    state.ResumeTiming();
  }
}

using Command = void (*)(MindMapViewModel& editor, const QUuid& topic);

void follow(benchmark::State& state, Command run) {
  Window window(state);
  window.open();
  std::size_t place = 0;
  for (auto _ : state) {
    state.PauseTiming();
    const auto& nodes = window.editor.mindMap().nodes;
    place = (place + nodes.size() / 50 * 17 + 1) % nodes.size();
    const QUuid topic = nodes[place].id;
    window.clock.advance(std::chrono::seconds(1));
    run(window.editor, topic);
    window.editor.treeInfo();
    state.ResumeTiming();
    QApplication::processEvents();
    state.PauseTiming();
    if (window.editor.undoCount() > 0) window.editor.undo();
    window.editor.treeInfo();
    QApplication::processEvents();
    state.ResumeTiming();
  }
}

// Folds and expands the first root, with all rows below it.
void fold(benchmark::State& state) {
  Window window(state);
  window.open();
  for (auto _ : state) {
    window.view->model().toggle(0);
    QApplication::processEvents();
    window.view->model().toggle(0);
    QApplication::processEvents();
  }
}

void searchInVain(benchmark::State& state) {
  Window window(state);
  window.open();
  for (auto _ : state) window.view->list().keyboardSearch(QStringLiteral("§"));
}

const bool isRegistered = [] {
  const auto add = [](const char* name, std::function<void(benchmark::State&)> run) {
    benchmark::RegisterBenchmark(name, run)->Arg(1000)->Arg(10'000)->Arg(100'000)->UseRealTime();
  };
  const auto addFollow = [&](const char* name, Command run) {
    add(name, [run](benchmark::State& state) { follow(state, run); });
  };
  add("outline-open", open);
  addFollow("outline-follow setNodeTitle", [](MindMapViewModel& editor, const QUuid& topic) {
    editor.setNodeTitle(topic, QStringLiteral("A title of some length"));
  });
  addFollow("outline-follow createChild",
            [](MindMapViewModel& editor, const QUuid& topic) { editor.createChild(topic); });
  addFollow("outline-follow deleteNode",
            [](MindMapViewModel& editor, const QUuid& topic) { editor.deleteNode(topic); });
  addFollow("outline-follow reparentNode", [](MindMapViewModel& editor, const QUuid& topic) {
    editor.reparentNode(topic, editor.mindMap().nodes.front().id);
  });
  addFollow("outline-follow recolorByBranch", [](MindMapViewModel& editor, const QUuid&) { editor.recolorByBranch(); });
  addFollow("outline-follow select",
            [](MindMapViewModel& editor, const QUuid& topic) { editor.setSelectedNodeIDs({topic}); });
  add("outline-fold", fold);
  add("outline-search", searchInVain);
  return true;
}();

}  // namespace
}  // namespace quilmora
