#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include "BenchMap.h"
#include "app/Application.h"
#include "app/dialogs/Alerts.h"
#include "app/inspectors/CopyFields.h"
#include "app/inspectors/InspectorPanel.h"
#include "app/inspectors/SliderRow.h"
#include "app/look/DesktopAppearance.h"
#include "app/look/Look.h"
#include "app/window/MainWindow.h"
#include "canvas/view/CanvasView.h"
#include "layout/LayoutAlgorithm.h"
#include "platform/Bookmarks.h"
#include "platform/Clipboard.h"
#include "platform/FileDialogs.h"
#include "platform/FileWriter.h"
#include "platform/HttpTransport.h"
#include "platform/KeyStore.h"
#include "platform/Log.h"
#include "platform/OnDeviceModel.h"
#include "platform/Scheduler.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

// What the inspector adds to a frame, measured in the whole window with its panels open, on the offscreen platform.

namespace quilmora {
namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;
using Steady = std::chrono::steady_clock;

constexpr int frameCount = 60;
constexpr std::chrono::milliseconds frameInterval{16};

// A running application on in-memory twins.
struct Desk {
  explicit Desk(int topics) {
    settings.setFlag(settings::onboardingShown, true);
    application.start({});
    window().resize(1920, 1080);
    MindMap map = benchMap(topics);
    const auto algorithm = makeLayout(MindMap::Layout::tree);
    const PositionTable positions = algorithm->computePositions(map.nodes, map.edges, QSizeF(1340, 1000));
    map.nodes.updateAll([&](Node& node) { node.position = positions.find(node.id).value_or(node.position); });
    map.hierarchical.edgeSizing = false;
    editor().setMindMap(std::move(map));
    editor().setCanvasZoom(1.0);
    const auto& places = editor().mapIndex().positions();
    editor().setCanvasOffset(QPointF(670, 500) - places[places.size() / 2]);
    settle();
  }
  MainWindow& window() { return application.window(); }
  MindMapViewModel& editor() { return window().editor(); }
  void settle() {
    window().repaint();
    const auto end = Steady::now() + std::chrono::milliseconds(200);
    while (Steady::now() < end || !window().canvas().isPictureSettled()) QApplication::processEvents();
  }
  template <class Control>
  Control& control(const char* name) {
    for (Control* each : window().inspector().inspector()->findChildren<Control*>())
      if (each->accessibleName() == QLatin1String(name)) return *each;
    qFatal("no %s", name);
  }

  QTemporaryDir folder;
  SystemClock clock;
  MemorySettingsStore settings;
  PathBookmarks bookmarks;
  MemoryLog log;
  DiskFileWriter writer;
  TimerScheduler scheduler;
  QueuedFileDialogs panels;
  MemoryClipboard clipboard;
  RecordedAlerts alerts;
  FixedDesktopAppearance desktop;
  MemoryKeyStore keys;
  MemoryHttpTransport transport;
  MemoryOnDeviceModel onDeviceModel;
  Look look{settings, desktop};
  Application application{*qApp,
                          {clock, settings, bookmarks, log, writer, scheduler, panels, clipboard, alerts, look,
                           folder.path(), [] {}, keys, transport, onDeviceModel}};
};

Desk& deskOf(int topics) {
  static std::unique_ptr<Desk> desk;
  static int kept = 0;
  if (!desk || kept != topics) {
    // Widgets must be destroyed before the application.
    if (!desk) qAddPostRoutine([] { desk.reset(); });
    desk.reset();
    desk = std::make_unique<Desk>(topics);
    kept = topics;
  }
  return *desk;
}

using Step = std::function<void(int frame)>;

Step selectTopics(Desk& desk) {
  const std::size_t count = desk.editor().mindMap().nodes.size();
  return [&desk, count](int frame) {
    const std::size_t place = (count / 2 + static_cast<std::size_t>(frame) * 7) % count;
    desk.editor().selectNode(desk.editor().mindMap().nodes[place].id, false);
  };
}

Step selectAllAndNone(Desk& desk) {
  return [&desk](int frame) {
    if (frame % 2 == 0)
      desk.editor().selectAll();
    else
      desk.editor().clearSelection();
  };
}

Step typeTitle(Desk& desk) {
  const SharedArray<Node>& nodes = desk.editor().mindMap().nodes;
  desk.editor().selectNode(nodes[nodes.size() / 2].id, false);
  desk.settle();
  auto& title = desk.control<CopyField>("Title");
  return [&title](int frame) {
    QKeyEvent event(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier,
                    QString(QLatin1Char(static_cast<char>('a' + frame % 26))));
    QCoreApplication::sendEvent(&title, &event);
    // Every fifth letter ends an edit.
    if (frame % 5 == 4) title.commit();
  };
}

Step moveSlider(Desk& desk, const char* name) {
  auto& slider = desk.control<StepSlider>(name);
  slider.setSliderDown(true);
  return [&slider](int frame) {
    slider.setSliderPosition(frame % slider.maximum());
    if (frame == frameCount) slider.setSliderDown(false);
  };
}

Step moveEdgeSlider(Desk& desk) {
  const SharedArray<Edge>& edges = desk.editor().mindMap().edges;
  desk.editor().selectEdge(edges[edges.size() / 2].id, false);
  desk.settle();
  return moveSlider(desk, "Start Width");
}

Step moveCanvasSlider(Desk& desk) {
  return moveSlider(desk, "Leaf Font");
}

Step pickSamples(Desk& desk) {
  const SharedArray<Node>& nodes = desk.editor().mindMap().nodes;
  desk.editor().selectNode(nodes[nodes.size() / 2].id, false);
  desk.settle();
  return [&desk](int frame) { desk.control<QAbstractButton>(frame % 2 == 0 ? "Ocean" : "Sand").click(); };
}

// The time of a run is the 95th percentile of its frames: a step and everything after it until the window is painted.
void frames(benchmark::State& state, Step (*begin)(Desk&)) {
  Desk& desk = deskOf(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    const MindMap start = desk.editor().mindMap();
    desk.editor().clearSelection();
    desk.settle();
    const Step step = begin(desk);
    desk.settle();
    std::vector<double> times;
    for (int frame = 0; frame <= frameCount; ++frame) {
      const auto from = Steady::now();
      step(frame);
      QCoreApplication::sendPostedEvents();
      desk.window().repaint();
      times.push_back(Milliseconds(Steady::now() - from).count());
      while (Steady::now() < from + frameInterval) QApplication::processEvents();
    }
    std::ranges::sort(times);
    state.SetIterationTime(times[times.size() * 95 / 100] / 1000);
    state.counters["ms median"] = times[times.size() / 2];
    state.counters["ms worst"] = times.back();
    desk.editor().setMindMap(start);
    desk.editor().clearHistory();
    desk.editor().clearSelection();
  }
}

const int registered = [] {
  const std::pair<const char*, Step (*)(Desk&)> rows[] = {{"select a topic", selectTopics},
                                                          {"select all and none", selectAllAndNone},
                                                          {"type a title", typeTitle},
                                                          {"move a slider of a connector", moveEdgeSlider},
                                                          {"move a slider of the canvas", moveCanvasSlider},
                                                          {"pick a style", pickSamples}};
  for (const int topics : {1000, 100'000})
    for (const auto& [name, begin] : rows)
      benchmark::RegisterBenchmark((std::string("inspector: ") + name).c_str(),
                                   [begin = begin](benchmark::State& state) { frames(state, begin); })
          ->Arg(topics)
          ->Iterations(1)
          ->UseManualTime()
          ->Unit(benchmark::kMillisecond);
  return 0;
}();

}  // namespace
}  // namespace quilmora
