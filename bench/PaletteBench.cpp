#include <algorithm>
#include <chrono>
#include <memory>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <benchmark/benchmark.h>

#include "BenchMap.h"
#include "app/look/DesktopAppearance.h"
#include "app/look/Look.h"
#include "app/palette/CommandPalette.h"
#include "canvas/view/CanvasView.h"
#include "editor/MindMapViewModel.h"
#include "editor/WindowCommands.h"
#include "platform/Bookmarks.h"
#include "platform/Log.h"
#include "platform/Notifications.h"
#include "platform/Scheduler.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

// Letters typed into the palette above a canvas, in a window on the offscreen platform.

namespace quilmora {
namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;
using Steady = std::chrono::steady_clock;

constexpr int keyCount = 200;
constexpr std::chrono::milliseconds keyInterval{16};

// In the form stored in the settings.
QByteArray customThemes(int count) {
  QByteArray json = "[";
  for (int i = 0; i < count; ++i) {
    if (i > 0) json += ',';
    json += R"({"id":"THEME-)" + QByteArray::number(i) + R"(","name":"My Theme )" + QByteArray::number(i) +
            R"(","background":"#FFFFFF","edgeColor":"#808080","nodeColors":[)"
            R"({"fill":"#1A5276","stroke":"#0E3652","textColor":"#FFFFFF"}]})";
  }
  return json + ']';
}

struct PaletteWindow {
  explicit PaletteWindow(int topics) : editor(benchMap(topics), EditorServices{clock, settings, bookmarks, log}) {
    settings.setBytes(settings::customThemes, customThemes(100));
    window.resize(1920, 1080);
    view.setGeometry(window.rect());
    editor.fitToContent(view.width(), view.height(), EditorNavigation::fitPadding);
    window.show();
    while (!view.isPictureSettled()) QApplication::processEvents();
  }

  SystemClock clock;
  TimerScheduler scheduler;
  MemorySettingsStore settings;
  PathBookmarks bookmarks;
  MemoryLog log;
  NotificationCenter notifications;
  FixedDesktopAppearance desktop;
  Look look{settings, desktop};
  MindMapViewModel editor;
  WindowCommands commands{editor};
  QWidget window;
  CanvasView view{editor, commands, notifications, scheduler, clock, &window};
};

// The time of a run is the 95th percentile of its keys: the filtering and the painting that follows it.
void typeIntoPalette(benchmark::State& state) {
  PaletteWindow window(static_cast<int>(state.range(0)));
  static const QString text = QStringLiteral("my theme 4");
  for (auto _ : state) {
    CommandPalette palette(window.look, window.settings, window.view, &window.window);
    palette.open();
    std::vector<double> frames;
    for (int key = 0; key < keyCount; ++key) {
      const auto start = Steady::now();
      const auto place = key % (2 * text.size());
      const bool isLetter = place < text.size();
      QKeyEvent event(QEvent::KeyPress, isLetter ? Qt::Key_A : Qt::Key_Backspace, Qt::NoModifier,
                      isLetter ? QString(text.at(place)) : QString());
      QCoreApplication::sendEvent(&palette.field(), &event);
      palette.repaint();
      frames.push_back(Milliseconds(Steady::now() - start).count());
      while (Steady::now() < start + keyInterval) QApplication::processEvents();
    }
    palette.leave();
    std::ranges::sort(frames);
    state.SetIterationTime(frames[frames.size() * 95 / 100] / 1000);
    state.counters["ms median"] = frames[frames.size() / 2];
    state.counters["ms worst"] = frames.back();
  }
}

BENCHMARK(typeIntoPalette)
    ->Name("frame of typing in the palette")
    ->Arg(1000)
    ->Arg(100'000)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quilmora
