#include <cmath>
#include <functional>
#include <random>

#include <QPainter>

#include "canvas/painting/PaintedMap.h"
#include "canvas/view/ScenePicture.h"
#include "canvas/view/WindowRig.h"

using namespace quilmora;
using namespace quilmora::test;
using namespace std::chrono_literals;

namespace {

// Discs on a canvas, painted in tiles through a picture and also directly, in device pixels. Each tile takes three
// steps.
struct PictureRig final : ScenePicture::Source {
  explicit PictureRig(double ratio = 1.0) : pixelRatio(ratio) {
    picture.assumeSlices([this] { return [this, left = stepsOfASlice]() mutable { return --left <= 0; }; });
  }

  void paintDiscs(QPainter& painter, const ViewTransform& transform, const QRectF& part) const {
    painter.save();
    painter.fillRect(part, paper);
    painter.setClipRect(part);
    painter.setTransform(transform.transform());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int i = -40; i < 80; ++i) {
      painter.setBrush(QColor(60 + i, 90, 150 - i));
      painter.drawEllipse(QPointF(i * 41.3, i * 27.7), 39.1, 26.3);
    }
    painter.restore();
  }
  PaintSteps prepare(double, const QRect& tiles) override {
    prepared.push_back(tiles);
    co_return;
  }
  PaintSteps paint(QPainter& painter, double zoom, QPoint tile) override {
    co_yield PaintSteps::Work::shapes;
    const double side = PictureTiles::side;
    paintDiscs(painter, {-QPointF(tile) * side, zoom}, QRectF(0, 0, side, side));
    co_yield PaintSteps::Work::texts;
    painted.push_back(tile);
  }

  QImage blank() const {
    QImage image(QSize(600 * pixelRatio, 400 * pixelRatio), QImage::Format_RGB32);
    image.fill(Qt::black);
    image.setDevicePixelRatio(pixelRatio);
    return image;
  }
  QImage shown(ScenePicture::Effort effort = ScenePicture::Effort::slice) {
    QImage image = blank();
    QPainter painter(&image);
    picture.show(painter, QSize(600, 400), pixelRatio, view, Qt::gray, effort);
    return image;
  }
  QImage direct() const {
    QImage image(blank().size(), QImage::Format_RGB32);
    QPainter painter(&image);
    paintDiscs(painter, ScenePicture::onDevicePixels(view, pixelRatio), image.rect());
    painter.end();
    image.setDevicePixelRatio(pixelRatio);
    return image;
  }
  void settle() {
    for (int turn = 0; turn < 1000 && scheduler.waitingCount() > 0; ++turn) scheduler.advance(1ms);
  }

  double pixelRatio;
  ViewTransform view;
  QColor paper = Qt::white;
  int stepsOfASlice = 1'000'000;
  ManualScheduler scheduler;
  int refreshes = 0;
  std::vector<QRect> prepared;
  std::vector<QPoint> painted;
  ScenePicture picture{scheduler, *this, [this] { ++refreshes; }};
};

// Shapes that cross the edge of a tile may be a sixty-fourth of a pixel off.
bool looksAlike(const QImage& a, const QImage& b) {
  if (a.size() != b.size()) return false;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x)
      if (colorDistance(a.pixelColor(x, y), b.pixelColor(x, y)) > 6) return false;
  return true;
}

}  // namespace

TEST(ScenePicture, IsPaintedOnceForAViewThatRests) {
  PictureRig rig;
  EXPECT_TRUE(looksAlike(rig.shown(), rig.direct()));
  const std::size_t count = rig.painted.size();
  EXPECT_EQ(count, 16U);  // three by two tiles, plus those of the margin
  rig.shown();
  EXPECT_EQ(rig.painted.size(), count);
  EXPECT_EQ(rig.scheduler.waitingCount(), 0U);
}

TEST(ScenePicture, PaintsOnlyTheTilesThatComeIntoSight) {
  PictureRig rig;
  rig.shown();
  rig.painted.clear();
  rig.view.offset = {-30, 4};
  rig.shown();
  EXPECT_TRUE(rig.painted.empty());
  rig.view.offset = {-180, 4};
  rig.shown();
  EXPECT_EQ(rig.painted, (std::vector<QPoint>{{3, 0}, {3, 1}, {3, -1}, {3, 2}}));
}

TEST(ScenePicture, LooksAfterEveryMoveAsIfPaintedAnew) {
  for (const double ratio : {1.0, 1.5, 2.25}) {
    PictureRig rig(ratio);
    EXPECT_TRUE(looksAlike(rig.shown(), rig.direct()));
    for (const QPointF way :
         {QPointF(10, 0), QPointF(-3, 7), QPointF(0.4, -0.3), QPointF(-131.7, -222.2), QPointF(900, 0)}) {
      rig.view.offset += way;
      const QImage moved = rig.shown();
      EXPECT_TRUE(looksAlike(moved, rig.direct())) << ratio << " " << way.x();
      PictureRig fresh(ratio);
      fresh.view = rig.view;
      EXPECT_EQ(moved, fresh.shown()) << ratio << " " << way.x();
    }
  }
}

TEST(ScenePicture, ShowsAChangeOfEveryFrameThoughNoTileIsDoneBetweenTwo) {
  PictureRig rig;
  rig.shown();
  rig.stepsOfASlice = 1;
  rig.painted.clear();
  for (int frame = 0; frame < 3 * ScenePicture::maxInterruptions; ++frame) {
    rig.picture.markStale({false, {QRectF(300, 60, 20, 20)}, {}});
    rig.shown();
  }
  EXPECT_EQ(rig.painted, (std::vector<QPoint>(3, QPoint(1, 0))));
}

TEST(ScenePicture, AGestureInEveryFrameLetsTilesComeToTheirEnd) {
  PictureRig rig;
  rig.shown();
  rig.stepsOfASlice = 1;
  rig.painted.clear();
  rig.prepared.clear();
  constexpr std::size_t frames = 18;
  for (std::size_t frame = 0; frame < frames; ++frame) {
    rig.paper = QColor::fromHsv(static_cast<int>(frame), 90, 250);
    rig.picture.markStale({false, {QRectF(0, 0, 256, 256)}, {}, true});
    rig.shown();
    // No slice was longer than the others, and none was in vain.
    EXPECT_EQ(rig.painted.size(), (frame + 1) / 3);
  }
  EXPECT_TRUE(rig.prepared.empty()) << "what lies where is as it was";
  EXPECT_FALSE(rig.picture.isSettled());
  rig.settle();
  EXPECT_TRUE(rig.picture.isSettled());
  EXPECT_EQ(rig.shown().pixel(10, 250), rig.paper.rgb());
}

TEST(ScenePicture, IsPaintedInSlicesWithTheSameResult) {
  PictureRig whole;
  const QImage wanted = whole.shown();
  for (const int steps : {1, 2, 3, 7}) {
    PictureRig rig;
    rig.stepsOfASlice = steps;
    EXPECT_NE(rig.shown(), wanted);
    EXPECT_FALSE(rig.picture.isSettled());
    EXPECT_LE(rig.painted.size(), static_cast<std::size_t>(steps));
    rig.settle();
    EXPECT_TRUE(rig.picture.isSettled());
    EXPECT_GT(rig.refreshes, 0);
    EXPECT_EQ(rig.shown(), wanted);
    EXPECT_EQ(rig.scheduler.waitingCount(), 0U);
  }
}

TEST(ScenePicture, PaintsTheNearestToThePointOfImportanceFirst) {
  PictureRig rig;
  rig.picture.setImportantPoint({500, 20});
  rig.shown();
  EXPECT_EQ(rig.painted.front(), QPoint(1, 0));
  EXPECT_EQ(rig.painted[1], QPoint(2, 0));
  // Tiles in view come before those outside it.
  EXPECT_TRUE(QRect(0, 0, 3, 2).contains(rig.painted[5]));
  EXPECT_FALSE(QRect(0, 0, 3, 2).contains(rig.painted[6]));
}

TEST(ScenePicture, PaintsOnlyWhatBecameStale) {
  PictureRig rig;
  const QImage before = rig.shown();
  rig.painted.clear();
  rig.paper = Qt::yellow;
  rig.picture.markStale(ChangedParts{false, {QRectF(250, 10, 20, 20)}, {}});
  const QImage after = rig.shown();
  EXPECT_EQ(rig.painted.size(), 2U);
  EXPECT_EQ(after.copy(0, 256, 600, 144), before.copy(0, 256, 600, 144));
  EXPECT_EQ(after.copy(512, 0, 88, 256), before.copy(512, 0, 88, 256));
  EXPECT_EQ(after.pixelColor(5, 250), QColor(Qt::yellow));
}

TEST(ScenePicture, ShowsWhatWasUntilTheNewPictureIsReady) {
  PictureRig rig;
  const QImage before = rig.shown();
  rig.paper = Qt::yellow;
  rig.stepsOfASlice = 1;
  rig.picture.markAllStale();
  EXPECT_EQ(rig.shown(), before);
  rig.settle();
  EXPECT_TRUE(looksAlike(rig.shown(), rig.direct()));
}

TEST(ScenePicture, AnInterruptedPaintingBeginsAnew) {
  PictureRig rig;
  rig.stepsOfASlice = 2;
  rig.shown();
  rig.paper = Qt::yellow;
  rig.picture.interrupt();
  rig.picture.markAllStale();
  EXPECT_EQ(rig.scheduler.waitingCount(), 0U);
  rig.shown();
  rig.settle();
  EXPECT_TRUE(looksAlike(rig.shown(), rig.direct()));
}

TEST(ScenePicture, WithAllEffortNothingIsLeftStale) {
  PictureRig rig;
  rig.stepsOfASlice = 1;
  EXPECT_TRUE(looksAlike(rig.shown(ScenePicture::Effort::all), rig.direct()));
  EXPECT_TRUE(rig.picture.isSettled());
}

TEST(ScenePicture, FollowsAZoomAtOnceWherePaintingIsQuick) {
  PictureRig rig;
  rig.picture.assumeViewCost(ScenePicture::sliceTime);
  rig.shown();
  rig.view.zoom = 1.02;
  EXPECT_TRUE(looksAlike(rig.shown(), rig.direct()));
  EXPECT_EQ(rig.scheduler.waitingCount(), 0U);
}

TEST(ScenePicture, IsScaledDuringASlowZoomAndSharpWhenTheZoomRests) {
  PictureRig rig;
  rig.picture.assumeViewCost(2 * ScenePicture::sliceTime);
  rig.shown();
  rig.painted.clear();
  rig.view.zoom = 1.5;
  EXPECT_FALSE(looksAlike(rig.shown(), rig.direct()));
  rig.scheduler.advance(60ms);
  rig.view.zoom = 1.6;
  rig.shown();
  rig.scheduler.advance(60ms);
  EXPECT_EQ(rig.refreshes, 0);
  EXPECT_TRUE(rig.painted.empty());
  rig.scheduler.advance(40ms);
  EXPECT_EQ(rig.refreshes, 1);
  EXPECT_TRUE(looksAlike(rig.shown(), rig.direct()));
  EXPECT_EQ(rig.scheduler.waitingCount(), 0U);
}

TEST(ScenePicture, AChangeDuringASlowZoomShowsAtOnce) {
  PictureRig rig;
  rig.picture.assumeViewCost(2 * ScenePicture::sliceTime);
  rig.shown();
  rig.view.zoom = 1.5;
  rig.shown();
  rig.paper = Qt::yellow;
  rig.picture.markStale(ChangedParts{false, {QRectF(0, 0, 10, 10)}, {}});
  EXPECT_TRUE(looksAlike(rig.shown(), rig.direct()));
}

TEST(ScenePicture, ALongGlideEndsSharpAndAsTheSceneIs) {
  PictureRig rig;
  rig.picture.assumeViewCost(2 * ScenePicture::sliceTime);
  rig.stepsOfASlice = 5;
  for (int frame = 0; frame < 60; ++frame) {
    rig.view.zoom = 1.0 + frame * 0.02;
    rig.view.offset = {-7.0 * frame, 3.0 * frame};
    if (frame == 30) {
      rig.paper = Qt::yellow;
      rig.picture.markStale(ChangedParts{false, {QRectF(-1e6, -1e6, 2e6, 2e6)}, {}});
    }
    rig.shown();
    rig.scheduler.advance(16ms);
  }
  // A refresh is followed by a frame.
  for (int turn = 0; turn < 100; ++turn) {
    rig.shown();
    rig.scheduler.advance(16ms);
  }
  EXPECT_TRUE(looksAlike(rig.shown(), rig.direct()));
  EXPECT_EQ(rig.scheduler.waitingCount(), 0U);
}

TEST(ScenePicture, FollowsSizeAndRatio) {
  PictureRig rig;
  rig.shown();
  rig.pixelRatio = 2.0;
  rig.picture.assumeViewCost(0ms);
  EXPECT_TRUE(looksAlike(rig.shown(), rig.direct()));
}

TEST(ScenePicture, BearsViewsWithoutSense) {
  PictureRig rig;
  for (const QPointF offset : {QPointF(5e9, -5e9), QPointF(std::nan(""), 0), QPointF(1e300, 1e300)}) {
    rig.view.offset = offset;
    rig.shown();
  }
  rig.view = ViewTransform();
  EXPECT_TRUE(looksAlike(rig.shown(), rig.direct()));
}

// --- In the window ---

namespace {

struct PictureInWindow : testing::Test {
  WindowRig rig{mapWith({topic(1, 100, 100), topic(2, 300, 100), topic(3, 300, 250)}, {{1, 2}})};

  QImage shown() { return rig.view.grab().toImage(); }
  QImage paintedAnew() {
    rig.view.forgetPicture();
    return shown();
  }
};

}  // namespace

TEST_F(PictureInWindow, PanningShowsWhatPaintingAnewShows) {
  shown();
  for (const QPointF way : {QPointF(10, 0), QPointF(-37, 12), QPointF(3.5, -90.25)}) {
    rig.editor.setCanvasOffset(rig.editor.canvasOffset() + way);
    const QImage panned = shown();
    EXPECT_EQ(panned, paintedAnew());
  }
}

TEST_F(PictureInWindow, EveryChangeOfTheSceneShowsAtOnce) {
  const std::function<void()> changes[] = {
      [this] { rig.click(rig.at(1)); },
      [this] { rig.editor.setNodeTitle(topicId(1), QStringLiteral("Another")); },
      [this] { rig.editor.selectEdge(edgeId(0), false); },
      [this] { rig.editor.setActiveLens(MindMapViewModel::FocusLens::priority); },
      [this] { rig.editor.toggleCollapsed(topicId(1)); },
      [this] { rig.editor.createRegion(QPointF(400, 300)); },
      [this] { rig.editor.undo(); },
      [this] {
        rig.mouse(QTest::MousePress, rig.at(3));
        rig.mouse(QTest::MouseMove, rig.at(3, {20, 20}));
        rig.mouse(QTest::MouseMove, rig.at(3, {60, 40}));
      },
  };
  QImage before = shown();
  int number = 0;
  for (const auto& change : changes) {
    change();
    const QImage after = shown();
    EXPECT_NE(after, before) << number;
    EXPECT_EQ(after, paintedAnew()) << number;
    before = after;
    ++number;
  }
  rig.mouse(QTest::MouseRelease, rig.at(3, {60, 40}));
  const QImage dropped = shown();
  EXPECT_EQ(dropped, paintedAnew());
}

TEST_F(PictureInWindow, ADraggedTopicLooksInTheEndAsIfPaintedAnew) {
  shown();
  rig.mouse(QTest::MousePress, rig.at(1));
  for (int step = 1; step < 12; ++step) {
    rig.mouse(QTest::MouseMove, rig.at(1, {step * 25, step * 20}));
    const QImage dragged = shown();
    EXPECT_EQ(dragged, paintedAnew()) << step;
  }
  rig.mouse(QTest::MouseRelease, rig.at(1, {275, 220}));
  const QImage dropped = shown();
  EXPECT_EQ(dropped, paintedAnew());
  rig.editor.undo();
  const QImage undone = shown();
  EXPECT_EQ(undone, paintedAnew());
}

TEST_F(PictureInWindow, ShowsWhatPaintingAnewShowsAfterAnyRowOfCommands) {
  std::mt19937 random(77);
  const auto below = [&](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
  auto& editor = rig.editor;
  const auto anyNode = [&] {
    const auto& nodes = editor.mindMap().nodes;
    return nodes.empty() ? topicId(1) : nodes[random() % nodes.size()].id;
  };
  const auto anyEdge = [&] {
    const auto& edges = editor.mindMap().edges;
    return edges.empty() ? edgeId(1) : edges[random() % edges.size()].id;
  };
  const auto anyPlace = [&] { return QPointF(below(1400) - 200, below(1000) - 200); };
  const auto anyRegion = [&] {
    const auto& regions = editor.mindMap().regions;
    return regions.empty() ? QUuid() : regions[random() % regions.size()].id;
  };
  using Lens = MindMapViewModel::FocusLens;
  const std::vector<std::function<void()>> commands{
      [&] { editor.createChild(anyNode()); },
      [&] { editor.createChild(anyNode()); },
      [&] { editor.createChildAt(anyNode(), below(800), below(600)); },
      [&] { editor.createFreeNode(below(800), below(600)); },
      [&] { editor.setNodeTitle(anyNode(), QString(below(60), QLatin1Char('w'))); },
      [&] { editor.setNodeBadge(anyNode(), below(2) ? std::optional(Badge::done) : std::nullopt); },
      [&] { editor.selectNode(anyNode(), below(2)); },
      [&] { editor.selectEdge(anyEdge(), below(2)); },
      [&] { editor.clearSelection(); },
      [&] { editor.selectAll(); },
      [&] { editor.moveSelectedNodes(anyPlace() - QPointF(500, 300)); },
      [&] { editor.reparentNode(anyNode(), anyNode()); },
      [&] { editor.deleteNode(anyNode()); },
      [&] { editor.deleteSelection(); },
      [&] { editor.toggleCollapsed(anyNode()); },
      [&] { editor.createEdge(anyNode(), anyNode()); },
      [&] { editor.addRelationship(anyNode(), anyNode()); },
      [&] { editor.setEdgeBend(anyEdge(), anyPlace() - QPointF(500, 300)); },
      [&] { editor.reconnectEdgeTarget(anyEdge(), anyNode()); },
      [&] { editor.deleteEdge(anyEdge()); },
      [&] { editor.createRegion(anyPlace()); },
      [&] { editor.moveRegion(anyRegion(), anyPlace() - QPointF(500, 300)); },
      [&] { editor.setSelectedRegionID(anyRegion()); },
      [&] { editor.setRegionLabel(anyRegion(), QStringLiteral("Label %1").arg(below(9))); },
      [&] { editor.duplicateSelection(); },
      [&] { editor.undo(); },
      [&] { editor.undo(); },
      [&] { editor.redo(); },
      [&] { editor.setActiveLens(below(3) ? Lens::none : Lens::depth); },
      [&] { editor.recolorByBranch(); },
      [&] { editor.setCanvasOffset(editor.canvasOffset() + QPointF(below(200) - 100, below(200) - 100)); },
      [&] { editor.zoomAt(0.4 + below(12) * 0.15, below(800), below(600)); },
      [&] { editor.applyLayout(MindMap::Layout::tree, QSizeF(800, 600)); },
  };
  for (int step = 0; step < 400; ++step) {
    const auto number = static_cast<std::size_t>(below(static_cast<int>(commands.size())));
    commands[number]();
    if (editor.mindMap().nodes.size() > 60) editor.undo();
    if (below(3) == 0) continue;  // several changes in one frame
    const QImage after = shown();
    const QImage anew = paintedAnew();
    if (after != anew) {
      QRect different;
      for (int y = 0; y < anew.height(); ++y)
        for (int x = 0; x < anew.width(); ++x)
          if (after.pixel(x, y) != anew.pixel(x, y)) different |= QRect(x, y, 1, 1);
      FAIL() << "step " << step << ", last command " << number << ", differs in " << different.x() << " "
             << different.y() << " " << different.width() << " " << different.height();
    }
  }
}

TEST_F(PictureInWindow, AChangeOfOneTopicPaintsItsSurroundingsAlone) {
  // Away from the topic the picture is not repainted: what was drawn over it stays.
  SceneDifference difference;
  MapPainter painter;
  const PaintOptions options;
  MapScene scene;
  const auto follow = [&] {
    scene.map = rig.editor.mindMap();
    scene.index = rig.editor.mapIndex();
    scene.tree = rig.editor.treeInfo();
    scene.selectedNodeIDs = rig.editor.selectedNodeIDs();
    return difference.follow(scene, options, painter);
  };
  EXPECT_TRUE(follow().everything);
  EXPECT_TRUE(follow().isEmpty());
  rig.editor.setNodeTitle(topicId(3), QStringLiteral("New"));
  const ChangedParts titled = follow();
  EXPECT_FALSE(titled.everything);
  EXPECT_TRUE(titled.edges.empty());
  ASSERT_EQ(titled.areas.size(), 2U);
  for (const QRectF& area : titled.areas) {
    EXPECT_TRUE(QRectF(100, 150, 400, 200).contains(area));
    EXPECT_TRUE(area.contains(QRectF(280, 240, 40, 20)));
  }
  rig.editor.selectNode(topicId(1), false);
  rig.editor.moveSelectedNodes(QPointF(0, 200));
  const ChangedParts moved = follow();
  EXPECT_FALSE(moved.everything);
  EXPECT_EQ(moved.edges.size(), 2U);  // its edge, before and after
}

TEST_F(PictureInWindow, NothingIsPaintedOrAwaitedWhileIdle) {
  struct Counter : QObject {
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::Paint) ++count;
      return false;
    }
    int count = 0;
  } counter;
  rig.editor.setCanvasOffset({5, 5});
  QApplication::processEvents();
  rig.scheduler.advance(1000ms);
  QApplication::processEvents();
  rig.view.installEventFilter(&counter);
  rig.scheduler.advance(1000ms);
  QApplication::processEvents();
  EXPECT_EQ(counter.count, 0);
}
