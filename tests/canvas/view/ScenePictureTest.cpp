#include "canvas/view/ScenePicture.h"

#include <functional>

#include <QPainter>

#include "canvas/view/WindowRig.h"

using namespace quilmora;
using namespace quilmora::test;
using namespace std::chrono_literals;

namespace {

// Discs on a canvas, painted through a picture and directly, in device pixels.
struct PictureRig {
  explicit PictureRig(double ratio = 1.0) : pixelRatio(ratio) {}

  static void paintDiscs(QPainter& painter, const ViewTransform& view, const QRect& part) {
    painter.fillRect(part, Qt::white);
    painter.setClipRect(part);
    painter.setTransform(view.transform());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int i = -20; i < 40; ++i) {
      painter.setBrush(QColor(40 + i, 90, 200 - i));
      painter.drawEllipse(QPointF(i * 11.3, i * 7.7), 9.1, 6.3);
    }
  }
  QImage blank() const {
    QImage image(QSize(120 * pixelRatio, 80 * pixelRatio), QImage::Format_RGB32);
    image.fill(Qt::black);
    image.setDevicePixelRatio(pixelRatio);
    return image;
  }
  QImage shown() {
    QImage image = blank();
    QPainter painter(&image);
    picture.show(painter, QSize(120, 80), pixelRatio, view, Qt::white,
                 [this](QPainter& part, const ViewTransform& transform, const QRect& rect) {
                   parts.push_back(rect);
                   paintDiscs(part, transform, rect);
                 });
    return image;
  }
  QImage direct() const {
    QImage image(blank().size(), QImage::Format_RGB32);
    QPainter painter(&image);
    const QPointF offset(std::round(view.offset.x() * pixelRatio), std::round(view.offset.y() * pixelRatio));
    paintDiscs(painter, {offset, view.zoom * pixelRatio}, image.rect());
    painter.end();
    image.setDevicePixelRatio(pixelRatio);
    return image;
  }

  double pixelRatio;
  ViewTransform view;
  ManualScheduler scheduler;
  int refreshes = 0;
  std::vector<QRect> parts;
  ScenePicture picture{scheduler, [this] { ++refreshes; }};
};

}  // namespace

TEST(ScenePicture, IsPaintedOnceForAViewThatRests) {
  PictureRig rig;
  EXPECT_EQ(rig.shown(), rig.direct());
  EXPECT_EQ(rig.shown(), rig.direct());
  EXPECT_EQ(rig.parts, std::vector<QRect>({QRect(0, 0, 120, 80)}));
  EXPECT_EQ(rig.scheduler.waitingCount(), 0U);
}

TEST(ScenePicture, PaintsOnlyTheStripsThatComeIntoSight) {
  PictureRig rig;
  rig.shown();
  rig.parts.clear();
  rig.view.offset = {10, -4};
  rig.shown();
  EXPECT_EQ(rig.parts, std::vector<QRect>({QRect(0, 76, 120, 4), QRect(0, 0, 10, 76)}));
  rig.parts.clear();
  rig.view.offset = {7, 1};
  rig.shown();
  EXPECT_EQ(rig.parts, std::vector<QRect>({QRect(0, 0, 120, 5), QRect(117, 5, 3, 75)}));
}

TEST(ScenePicture, LooksAfterEveryMoveAsIfPaintedAnew) {
  for (const double ratio : {1.0, 1.5, 2.25}) {
    PictureRig rig(ratio);
    EXPECT_EQ(rig.shown(), rig.direct());
    for (const QPointF way : {QPointF(10, 0), QPointF(-3, 7), QPointF(0.4, -0.3), QPointF(-31.7, -22.2), QPointF(300, 0)}) {
      rig.view.offset += way;
      EXPECT_EQ(rig.shown(), rig.direct()) << ratio << " " << way.x();
    }
  }
}

TEST(ScenePicture, FollowsAZoomAtOnceWherePaintingIsQuick) {
  PictureRig rig;
  rig.picture.assumePaintingTime(12ms);
  rig.shown();
  rig.view.zoom = 1.02;
  EXPECT_EQ(rig.shown(), rig.direct());
  EXPECT_EQ(rig.scheduler.waitingCount(), 0U);
}

TEST(ScenePicture, IsScaledDuringASlowZoomAndSharpWhenTheZoomRests) {
  PictureRig rig;
  rig.picture.assumePaintingTime(13ms);
  rig.shown();
  rig.parts.clear();
  rig.view.zoom = 1.5;
  EXPECT_NE(rig.shown(), rig.direct());
  rig.scheduler.advance(60ms);
  rig.view.zoom = 1.6;
  rig.shown();
  rig.scheduler.advance(60ms);
  EXPECT_EQ(rig.refreshes, 0);
  EXPECT_TRUE(rig.parts.empty());
  rig.scheduler.advance(40ms);
  EXPECT_EQ(rig.refreshes, 1);
  EXPECT_EQ(rig.shown(), rig.direct());
  EXPECT_EQ(rig.scheduler.waitingCount(), 0U);
}

TEST(ScenePicture, IsPaintedAnewWhenSizeRatioOrContentChange) {
  PictureRig rig;
  rig.picture.assumePaintingTime(13ms);
  rig.shown();
  rig.picture.invalidate();
  rig.view.zoom = 2.0;
  EXPECT_EQ(rig.shown(), rig.direct());
  EXPECT_EQ(rig.parts.size(), 2U);
  rig.pixelRatio = 2.0;
  EXPECT_EQ(rig.shown(), rig.direct());
  EXPECT_EQ(rig.parts.size(), 3U);
}

// --- In the window ---

namespace {

struct PictureInWindow : testing::Test {
  WindowRig rig{mapWith({topic(1, 100, 100), topic(2, 300, 100), topic(3, 300, 250)}, {{1, 2}})};

  QImage shown() { return rig.view.grab().toImage(); }
  QImage paintedAnew() {
    rig.view.resize(801, 600);
    shown();
    rig.view.resize(800, 600);
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
