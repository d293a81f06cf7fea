#include <algorithm>
#include <array>
#include <chrono>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QThreadPool>
#include <benchmark/benchmark.h>

#include "BenchMap.h"
#include "canvas/view/BoxSelection.h"
#include "canvas/view/CanvasView.h"
#include "canvas/view/TitleEditor.h"
#include "editor/DocumentSession.h"
#include "editor/MindMapViewModel.h"
#include "editor/RecentFiles.h"
#include "editor/WindowCommands.h"
#include "layout/LayoutAlgorithm.h"
#include "platform/Bookmarks.h"
#include "platform/FileDialogs.h"
#include "platform/FileWriter.h"
#include "platform/Log.h"
#include "platform/Notifications.h"
#include "platform/Scheduler.h"
#include "platform/SettingsStore.h"

// Frames of gestures on the canvas widget, in a window on the offscreen platform.

namespace quilmora {
namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;
using Steady = std::chrono::steady_clock;

// Of all threads of this process; other work on the machine does not count.
double processorMilliseconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
}

constexpr QSize screen(1920, 1080);
constexpr std::chrono::milliseconds frameInterval{16};
constexpr int frameCount = 60;

MindMap arranged(int topics, MindMap::Layout layout) {
  MindMap map = benchMap(topics);
  if (const auto algorithm = makeLayout(layout)) {
    const PositionTable positions = algorithm->computePositions(map.nodes, map.edges, QSizeF(screen));
    map.nodes.updateAll([&](Node& node) { node.position = positions.find(node.id).value_or(node.position); });
  }
  return map;
}

// A canvas on the screen, and what moves it. Every run starts with the same map.
struct Window {
  explicit Window(MindMap map) : start(map), editor(std::move(map), EditorServices{clock, settings, bookmarks, log}) {
    view.resize(screen);
    view.show();
    QApplication::processEvents();
  }

  SystemClock clock;
  TimerScheduler scheduler;
  MemorySettingsStore settings;
  PathBookmarks bookmarks;
  MemoryLog log;
  NotificationCenter notifications;
  MindMap start;
  MindMapViewModel editor;
  WindowCommands commands{editor};
  CanvasView view{editor, commands, notifications, scheduler, clock};

  void mouse(QEvent::Type type, QPointF to, Qt::MouseButtons held) {
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, to, view.mapToGlobal(to), button, held, {});
    QCoreApplication::sendEvent(&view, &event);
  }
  // Milliseconds until the picture has every detail.
  double settle() {
    const auto begin = Steady::now();
    view.repaint();
    while (!view.isPictureSettled()) QApplication::processEvents();
    const double taken = Milliseconds(Steady::now() - begin).count();
    // Tiles outside the view, and a zoom that has not rested yet.
    const auto end = Steady::now() + std::chrono::milliseconds(150);
    while (Steady::now() < end) QApplication::processEvents();
    return taken;
  }
  // Sets the zoom around the topic in the middle of the list, or fits the whole map (0).
  void look(double zoom) {
    if (zoom <= 0) {
      editor.fitToContent(screen.width(), screen.height(), 80);
      return;
    }
    const auto& positions = editor.mapIndex().positions();
    editor.setCanvasZoom(zoom);
    editor.setCanvasOffset(QPointF(screen.width(), screen.height()) / 2 - positions[positions.size() / 2] * zoom);
  }
  // The topics nearest to the middle of the view, as ordinals in `nodes`.
  std::vector<std::uint32_t> nearest(std::size_t count) {
    const auto& positions = editor.mapIndex().positions();
    const QPointF middle = (QPointF(screen.width(), screen.height()) / 2 - editor.canvasOffset()) / editor.canvasZoom();
    std::vector<std::uint32_t> order(positions.size());
    for (std::uint32_t i = 0; i < order.size(); ++i) order[i] = i;
    count = std::min(count, order.size());
    const auto distance = [&](std::uint32_t i) {
      const QPointF way = positions[i] - middle;
      return QPointF::dotProduct(way, way);
    };
    std::ranges::partial_sort(order, order.begin() + static_cast<std::ptrdiff_t>(count), {}, distance);
    order.resize(count);
    return order;
  }
  QPointF shown(std::uint32_t node) {
    return editor.mapIndex().positions()[node] * editor.canvasZoom() + editor.canvasOffset();
  }
};

using Step = std::function<void(int frame)>;

// Starts a gesture and returns what each frame does; the last one is number `frameCount`. Returns no step if the
// gesture cannot start.
using Gesture = std::function<Step(Window&)>;

Step dragTopics(Window& window, std::size_t count) {
  IdSet ids;
  const std::vector<std::uint32_t> chosen = window.nearest(count);
  for (const std::uint32_t node : chosen) ids.insert(window.editor.mindMap().nodes[node].id);
  for (const std::uint32_t node : chosen) {
    window.editor.setSelectedNodeIDs(ids);
    const QPointF place = window.shown(node);
    window.mouse(QEvent::MouseMove, place, Qt::NoButton);
    window.mouse(QEvent::MouseButtonPress, place, Qt::LeftButton);
    window.mouse(QEvent::MouseMove, place + QPointF(9, 9), Qt::LeftButton);
    window.mouse(QEvent::MouseMove, place + QPointF(60, 60), Qt::LeftButton);
    if (window.view.gestures().state().draggedNodeID && window.editor.selectedNodeIDs() == ids)
      return [&window, place](int frame) {
        const QPointF to = place + QPointF(60 + 6 * frame, 60 + 3 * frame);
        if (frame < frameCount)
          window.mouse(QEvent::MouseMove, to, Qt::LeftButton);
        else
          window.mouse(QEvent::MouseButtonRelease, to, Qt::NoButton);
      };
    window.mouse(QEvent::MouseButtonRelease, place + QPointF(60, 60), Qt::NoButton);
  }
  return {};
}

Step typeTitle(Window& window) {
  for (const std::uint32_t node : window.nearest(50)) {
    for (int click = 0; click < 2; ++click) {
      window.mouse(QEvent::MouseButtonPress, window.shown(node), Qt::LeftButton);
      window.mouse(QEvent::MouseButtonRelease, window.shown(node), Qt::NoButton);
    }
    if (!window.view.titleEditor()) continue;
    window.settle();
    return [&window](int frame) {
      if (frame == frameCount) return window.view.commitTitleEdit();
      const QChar letter = frame % 6 == 5 ? QLatin1Char(' ') : QLatin1Char(static_cast<char>('a' + frame % 26));
      QKeyEvent event(QEvent::KeyPress, letter.toUpper().unicode(), Qt::NoModifier, QString(letter));
      QCoreApplication::sendEvent(window.view.titleEditor(), &event);
    };
  }
  return {};
}

Step pullBox(Window& window) {
  for (const QPointF corner : {QPointF(3, 3), QPointF(screen.width() - 4, 3), QPointF(3, screen.height() - 4)}) {
    window.mouse(QEvent::MouseMove, corner, Qt::NoButton);
    window.mouse(QEvent::MouseButtonPress, corner, Qt::LeftButton);
    const QPointF far = QPointF(screen.width(), screen.height()) - corner;
    window.mouse(QEvent::MouseMove, corner + (far - corner) / 50, Qt::LeftButton);
    if (window.view.gestures().state().selectionBoxStart)
      return [&window, corner, far](int frame) {
        const QPointF to = corner + (far - corner) * frame / frameCount;
        if (frame < frameCount)
          window.mouse(QEvent::MouseMove, to, Qt::LeftButton);
        else
          window.mouse(QEvent::MouseButtonRelease, to, Qt::NoButton);
      };
    window.mouse(QEvent::MouseButtonRelease, corner, Qt::NoButton);
  }
  return {};
}

Step searchAsYouType(Window& window) {
  window.editor.toggleSearch();
  return [&window](int frame) {
    static const QString text = QStringLiteral("design launch");
    window.editor.setSearchQuery(text.left(1 + frame % text.size()));
    window.editor.runSearch();
  };
}

Step present(Window& window) {
  window.editor.togglePresentation();
  return [&window](int) { window.editor.nextPresentationStep(); };
}

Step pan(Window& window) {
  return [&window](int frame) {
    const QPointF way = frame % 30 < 15 ? QPointF(-10, 0) : QPointF(0, -10);
    window.editor.setCanvasOffset(window.editor.canvasOffset() + way);
  };
}

Step zoom(Window& window) {
  return [&window](int frame) {
    window.editor.zoomAt(window.editor.canvasZoom() * (frame < frameCount / 2 ? 1.02 : 1 / 1.02), 900, 500);
  };
}

Window& windowOf(int topics, MindMap::Layout layout) {
  static std::unique_ptr<Window> window;
  static std::pair<int, MindMap::Layout> kept;
  if (!window || kept != std::pair(topics, layout)) {
    // Widgets must be destroyed before the application.
    if (!window) qAddPostRoutine([] { window.reset(); });
    window.reset();
    window = std::make_unique<Window>(arranged(topics, layout));
    kept = {topics, layout};
  }
  return *window;
}

// The time of a run is the 95th percentile of its frames: a step together with the painting after it.
void gesture(benchmark::State& state, MindMap::Layout layout, double zoomLevel, const Gesture& begin) {
  Window& window = windowOf(static_cast<int>(state.range(0)), layout);
  for (auto _ : state) {
    window.editor.setMindMap(window.start);
    window.editor.clearHistory();
    window.editor.clearSelection();
    window.look(zoomLevel);
    window.settle();
    const Step step = begin(window);
    if (!step) {
      state.SkipWithError("no room to begin");
      return;
    }
    window.settle();
    std::vector<double> frames;
    std::vector<double> processor;
    double longestTurn = 0.0;
    double last = 0.0;
    double lastProcessor = 0.0;
    for (int frame = 0; frame <= frameCount; ++frame) {
      const auto start = Steady::now();
      const double startOfWork = processorMilliseconds();
      step(frame);
      window.view.repaint();
      last = Milliseconds(Steady::now() - start).count();
      lastProcessor = processorMilliseconds() - startOfWork;
      if (frame < frameCount) frames.push_back(last);
      if (frame < frameCount) processor.push_back(processorMilliseconds() - startOfWork);
      while (frame < frameCount && Steady::now() < start + frameInterval) {
        const auto turn = Steady::now();
        QApplication::processEvents();
        longestTurn = std::max(longestTurn, Milliseconds(Steady::now() - turn).count());
      }
    }
    const double startOfRest = processorMilliseconds();
    state.counters["ms to settle"] = window.settle();
    state.counters["ms of processor to settle"] = processorMilliseconds() - startOfRest;
    std::ranges::sort(frames);
    std::ranges::sort(processor);
    state.counters["ms of processor, 95th"] = processor[processor.size() * 95 / 100];
    const double high = frames[frames.size() * 95 / 100];
    state.SetIterationTime(high / 1000);
    state.counters["ms median"] = frames[frames.size() / 2];
    state.counters["ms worst"] = frames.back();
    state.counters["ms last"] = last;
    state.counters["ms of processor, last"] = lastProcessor;
    state.counters["ms longest slice"] = longestTurn;
    if (window.editor.isPresentationMode()) window.editor.togglePresentation();
    if (window.editor.isSearching()) window.editor.toggleSearch();
  }
}

// Frames of a pan, with and without an auto-save in progress. The time is the worst frame with it, or the longest turn
// of the event loop in between, whichever is longer: the user notices both.
void panWhileSaving(benchmark::State& state, MindMap::Layout layout) {
  Window& window = windowOf(static_cast<int>(state.range(0)), layout);
  QTemporaryDir folder;
  QThreadPool pool;
  pool.setMaxThreadCount(1);
  DiskFileWriter writer;
  QueuedFileDialogs panels;
  RecentFiles recentFiles(window.settings, window.bookmarks);
  for (auto _ : state) {
    window.editor.setMindMap(window.start);
    window.editor.clearHistory();
    DocumentSession session(window.editor, {{window.clock, window.settings, window.bookmarks, window.log},
                                            writer,
                                            panels,
                                            window.scheduler,
                                            window.notifications,
                                            recentFiles,
                                            folder.path(),
                                            nullptr,
                                            &pool});
    window.look(1.0);
    window.settle();
    const Step step = pan(window);
    int frame = 0;
    double longestTurn = 0.0;
    const auto worstOf = [&](const std::function<bool()>& goesOn) {
      std::vector<double> frames;
      longestTurn = 0.0;
      while (goesOn()) {
        const auto start = Steady::now();
        step(frame++);
        window.view.repaint();
        frames.push_back(Milliseconds(Steady::now() - start).count());
        do {
          const auto turn = Steady::now();
          QApplication::processEvents();
          longestTurn = std::max(longestTurn, Milliseconds(Steady::now() - turn).count());
        } while (Steady::now() < start + frameInterval);
      }
      std::ranges::sort(frames);
      return frames;
    };
    const int calmEnd = frame + 2 * frameCount;
    const std::vector<double> calm = worstOf([&] { return frame < calmEnd; });
    state.counters["ms worst without"] = calm.back();
    state.counters["ms longest slice without"] = longestTurn;
    window.editor.createFreeNode(0, 0);
    window.settle();
    const auto begin = Steady::now();
    session.autoSave();
    state.counters["ms to begin"] = Milliseconds(Steady::now() - begin).count();
    const std::vector<double> busy = worstOf([&] { return session.isSaving(); });
    state.counters["ms to save"] = Milliseconds(Steady::now() - begin).count();
    state.counters["frames"] = static_cast<double>(busy.size());
    state.counters["ms 95th"] = busy[busy.size() * 95 / 100];
    state.counters["ms worst"] = busy.back();
    state.counters["ms longest slice"] = longestTurn;
    state.SetIterationTime(std::max(busy.back(), longestTurn) / 1000);
    if (!session.autoSaveProblem().isEmpty()) state.SkipWithError(qPrintable(session.autoSaveProblem()));
  }
}

const int registered = [] {
  struct Row {
    const char* name;
    Gesture begin;
  };
  const Row rows[] = {{"pan", pan},
                      {"zoom", zoom},
                      {"drag one", [](Window& window) { return dragTopics(window, 1); }},
                      {"drag 500", [](Window& window) { return dragTopics(window, 500); }},
                      {"type a title", typeTitle},
                      {"box selection", pullBox},
                      {"search", searchAsYouType},
                      {"presentation", present}};
  const std::pair<const char*, MindMap::Layout> layouts[] = {{"tree", MindMap::Layout::tree},
                                                             {"radial", MindMap::Layout::radial}};
  const std::pair<const char*, double> zooms[] = {{"fitted", 0.0}, {"at 1", 1.0}, {"at 5", 5.0}};
  for (const int topics : {1000, 10'000, 100'000, 1'000'000})
    for (const auto& [layoutName, layout] : layouts)
      for (const auto& [zoomName, level] : zooms)
        for (const Row& row : rows)
          benchmark::RegisterBenchmark(
              (std::string("frame of ") + row.name + ", " + layoutName + " " + zoomName).c_str(),
              [layout = layout, level = level, begin = row.begin](benchmark::State& state) {
                gesture(state, layout, level, begin);
              })
              ->Arg(topics)
              ->Iterations(1)
              ->Repetitions(1)
              ->UseManualTime()
              ->Unit(benchmark::kMillisecond);
  for (const int topics : {10'000, 100'000, 1'000'000})
    for (const auto& [layoutName, layout] : layouts)
      benchmark::RegisterBenchmark((std::string("frame of pan while saving, ") + layoutName).c_str(),
                                   [layout = layout](benchmark::State& state) { panWhileSaving(state, layout); })
          ->Arg(topics)
          ->Iterations(1)
          ->Repetitions(1)
          ->UseManualTime()
          ->Unit(benchmark::kMillisecond);
  return 0;
}();

}  // namespace
}  // namespace quilmora
