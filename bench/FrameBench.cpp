#include <algorithm>
#include <chrono>
#include <cmath>
#include <map>
#include <vector>

#include <QImage>
#include <QPainter>
#include <benchmark/benchmark.h>

#include "BenchMap.h"
#include "canvas/painting/MapPainter.h"
#include "layout/LayoutAlgorithm.h"

namespace quilmora {
namespace {

constexpr QSize screen(1920, 1080);

// A map in a layout, with everything needed to paint it.
struct FrameScene {
  MindMap map;
  MapIndex index;
  TreeInfo tree;
  QRectF bounds;
  MapPainter painter;

  FrameScene(int topics, MindMap::Layout layout) : map(benchMap(topics)) {
    if (const auto algorithm = makeLayout(layout)) {
      const PositionTable positions = algorithm->computePositions(map.nodes, map.edges, QSizeF(screen));
      map.nodes.updateAll([&](Node& node) { node.position = positions.find(node.id).value_or(node.position); });
    }
    index = MapIndex(map.nodes, map.edges);
    tree = TreeInfo(index);
    QPointF low = index.positions().front();
    QPointF high = low;
    for (QPointF position : index.positions()) {
      low = QPointF(std::min(low.x(), position.x()), std::min(low.y(), position.y()));
      high = QPointF(std::max(high.x(), position.x()), std::max(high.y(), position.y()));
    }
    bounds = QRectF(low, high).adjusted(-100, -100, 100, 100);
  }

  double fittingZoom() const { return std::min(screen.width() / bounds.width(), screen.height() / bounds.height()); }
};

// Only one scene is kept at a time: the benchmarks of one map follow each other.
FrameScene& sceneOf(int topics, MindMap::Layout layout) {
  static std::unique_ptr<FrameScene> scene;
  static std::pair<int, MindMap::Layout> kept;
  if (!scene || kept != std::pair(topics, layout)) {
    scene.reset();
    scene = std::make_unique<FrameScene>(topics, layout);
    kept = {topics, layout};
  }
  return *scene;
}

// Frames of a slow pan at a zoom, around the topic in the middle of the list; or around the middle of the map if the
// zoom is 0, which means fitted.
void frame(benchmark::State& state, MindMap::Layout layout, double wantedZoom) {
  FrameScene& scene = sceneOf(static_cast<int>(state.range(0)), layout);
  const double zoom = wantedZoom > 0 ? wantedZoom : scene.fittingZoom();
  const QPointF center =
      wantedZoom > 0 ? scene.index.positions()[scene.index.positions().size() / 2] : scene.bounds.center();
  QImage image(screen, QImage::Format_ARGB32_Premultiplied);
  QPainter painter(&image);
  MapScene picture;
  picture.map = scene.map;
  picture.index = scene.index;
  picture.tree = scene.tree;
  picture.exposed = QRectF(QPointF(0, 0), QSizeF(screen));
  picture.view.zoom = zoom;
  const QPointF middle(screen.width() / 2.0, screen.height() / 2.0);

  std::vector<double> milliseconds;
  int step = 0;
  const auto paintOne = [&] {
    picture.view.offset = middle - center * zoom + QPointF(3 * (step % 40), 2 * (step % 30));
    ++step;
    scene.painter.paint(painter, picture);
  };
  paintOne();
  for (auto _ : state) {
    const auto start = std::chrono::steady_clock::now();
    paintOne();
    milliseconds.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
  }
  std::sort(milliseconds.begin(), milliseconds.end());
  if (!milliseconds.empty()) state.counters["95th percentile ms"] = milliseconds[milliseconds.size() * 95 / 100];
}

const int registered = [] {
  const std::pair<const char*, MindMap::Layout> layouts[] = {{"tree", MindMap::Layout::tree},
                                                             {"radial", MindMap::Layout::radial}};
  const std::pair<const char*, double> zooms[] = {{"fitted", 0.0}, {"at 0.1", 0.1}, {"at 0.2", 0.2}, {"at 0.3", 0.3},
                                                  {"at 0.5", 0.5}, {"at 1", 1.0},   {"at 5", 5.0}};
  for (const int topics : {1000, 10'000, 100'000})
    for (const auto& [layoutName, layout] : layouts)
      for (const auto& [zoomName, zoom] : zooms)
        benchmark::RegisterBenchmark(
            (std::string("frame ") + layoutName + " " + zoomName).c_str(),
            [layout = layout, zoom = zoom](benchmark::State& state) { frame(state, layout, zoom); })
            ->Arg(topics)
            ->UseRealTime()
            ->Unit(benchmark::kMillisecond);
  return 0;
}();

}  // namespace
}  // namespace quilmora
