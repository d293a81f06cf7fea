#include "app/companions/CompanionsFixture.h"
#include "app/companions/MiniMapView.h"
#include "app/look/Widgets.h"

namespace quilmora::test {
namespace {

using namespace std::chrono_literals;

// Topics 100 apart in a grid of 50 columns, all below the first.
MindMap wideStar(int count) {
  MindMap map;
  for (int i = 0; i < count; ++i) {
    map.nodes.append(topic(i, 100.0 * (i % 50), 100.0 * (i / 50)));
    if (i > 0) map.edges.append(edgeBetween(i, 0, i));
  }
  return map;
}

class MiniMapViewTest : public CompanionsTest {
 protected:
  MiniMapView& view() { return companions().miniMap(); }
  void startWithTwoTopics() {
    MindMap map;
    map.nodes = {topic(1, 0, 0), topic(2, 300, 50)};
    map.edges = {edgeBetween(1, 1, 2)};
    start(std::move(map));
  }
  // The middle of the overview in the card's coordinates.
  QPoint centre() { return view().mapRect().center().toPoint(); }
};

TEST_F(MiniMapViewTest, StandsAtTheBottomRightWithASmallMapDrawnAtOnce) {
  startWithTwoTopics();
  EXPECT_TRUE(view().isVisible());
  EXPECT_TRUE(view().isCurrent());
  EXPECT_EQ(view().miniMapSize(), QSizeF(180, 120));
  EXPECT_EQ(view().canvasSize(), QSizeF(800, 600));
  EXPECT_EQ(view().geometry()->world(), QRectF(-50, -50, 400, 150));
  EXPECT_EQ(view().QWidget::geometry(), QRect(608, 454, 180, 134));
}

TEST_F(MiniMapViewTest, AClickBringsThatPlaceToTheMiddleOfTheCanvas) {
  startWithTwoTopics();
  editor().setCanvasZoom(2.0);
  QTest::mouseClick(&view(), Qt::LeftButton, {}, centre());
  EXPECT_EQ(editor().canvasOffset(), QPointF(100, 250));
  EXPECT_EQ(editor().canvasZoom(), 2.0);
}

TEST_F(MiniMapViewTest, ADragGoesOnMovingTheCanvas) {
  startWithTwoTopics();
  QTest::mousePress(&view(), Qt::LeftButton, {}, centre());
  EXPECT_EQ(editor().canvasOffset(), QPointF(250, 275));
  QTest::mouseMove(&view(), centre() + QPoint(45, 9));
  EXPECT_EQ(editor().canvasOffset(), QPointF(150, 255));
  QTest::mouseRelease(&view(), Qt::LeftButton, {}, centre() + QPoint(45, 9));
  QTest::mouseMove(&view(), centre());
  EXPECT_EQ(editor().canvasOffset(), QPointF(150, 255));
  EXPECT_EQ(view().pos(), QPoint(608, 454));
}

TEST_F(MiniMapViewTest, MakesWayForTheSelectedTopicOnceTheViewRestsAndComesHome) {
  m_desktop.setPrefersStillness(true);
  startWithTwoTopics();
  // It never moves away from under the pointer, and another test may have left one there.
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(&view(), &leave);
  editor().createFreeNode(700, 520);
  m_scheduler.advance(100ms);
  EXPECT_EQ(view().pos(), QPoint(608, 454));
  m_scheduler.advance(100ms);
  EXPECT_EQ(view().pos(), QPoint(12, 454));
  EXPECT_FALSE(companions().coveredAreas().empty());
  // It does not jump back as long as it hides nothing where it is.
  editor().setSelectedNodeIDs({topicId(2)});
  m_scheduler.advance(200ms);
  EXPECT_EQ(view().pos(), QPoint(12, 454));
  editor().setSelectedNodeIDs({});
  m_scheduler.advance(200ms);
  EXPECT_EQ(view().pos(), QPoint(608, 454));
  EXPECT_EQ(m_scheduler.waitingCount(), 0u);
}

TEST_F(MiniMapViewTest, IsPutAwayAndBroughtBackByItsButton) {
  startWithTwoTopics();
  view().foldButton().click();
  EXPECT_TRUE(view().isFolded());
  EXPECT_EQ(view().QWidget::geometry(), QRect(758, 558, 30, 30));
  editor().createFreeNode(900, 900);
  settle();
  EXPECT_FALSE(view().isCurrent());
  view().unfoldButton().click();
  settle();
  EXPECT_EQ(view().QWidget::geometry(), QRect(608, 454, 180, 134));
  EXPECT_TRUE(view().isCurrent());
}

TEST_F(MiniMapViewTest, WithoutTopicsItDrawsOnlyItsFrame) {
  start(MindMap());
  EXPECT_TRUE(view().isVisible());
  EXPECT_FALSE(view().geometry());
  editor().setCanvasOffset({7, 8});
  QTest::mouseClick(&view(), Qt::LeftButton, {}, centre());
  EXPECT_EQ(editor().canvasOffset(), QPointF(7, 8));
}

TEST_F(MiniMapViewTest, FollowsTheMap) {
  startWithTwoTopics();
  editor().createFreeNode(800, 50);
  settle();
  EXPECT_TRUE(view().isCurrent());
  EXPECT_EQ(view().geometry()->world().right(), 850);
}

TEST_F(MiniMapViewTest, ALargeMapIsDrawnLaterAndPieceByPiece) {
  start(wideStar(4000));
  EXPECT_FALSE(view().isCurrent());
  m_scheduler.advance(149ms);
  EXPECT_FALSE(view().geometry());
  m_scheduler.advance(1ms);
  EXPECT_TRUE(view().geometry());
  EXPECT_FALSE(view().isCurrent());
  m_scheduler.advance(1s);
  EXPECT_TRUE(view().isCurrent());
  EXPECT_EQ(m_scheduler.waitingCount(), 0U);
}

TEST_F(MiniMapViewTest, TheOldPictureStaysUntilTheNewOneIsComplete) {
  start(wideStar(4000));
  m_scheduler.advance(1s);
  const double before = view().geometry()->world().bottom();
  EXPECT_EQ(before, 7950);
  editor().createFreeNode(0, 9000);
  m_scheduler.advance(150ms);
  EXPECT_EQ(view().geometry()->world().bottom(), before);
  // A change in the middle restarts the drawing.
  editor().createFreeNode(0, 19000);
  m_scheduler.advance(149ms);
  EXPECT_EQ(view().geometry()->world().bottom(), before);
  m_scheduler.advance(1s);
  EXPECT_GT(view().geometry()->world().bottom(), 19000);
}

TEST_F(MiniMapViewTest, ALargeMapThatBecomesSmallLeavesNoWorkBehind) {
  start(wideStar(4000));
  editor().setMindMap(wideStar(10));
  settle();
  EXPECT_TRUE(view().isCurrent());
  EXPECT_EQ(m_scheduler.waitingCount(), 0U);
}

TEST_F(MiniMapViewTest, IsDraggedByItsStripToAnotherCorner) {
  startWithTwoTopics();
  const QPoint strip(40, 5);
  QTest::mousePress(&view(), Qt::LeftButton, {}, strip);
  QTest::mouseMove(&view(), strip + QPoint(-500, -400));
  EXPECT_EQ(view().pos(), QPoint(108, 54));
  // Changes of the map do not take it away from a drag.
  editor().createFreeNode(5, 5);
  canvas().resize(801, 600);
  settle();
  EXPECT_EQ(view().pos(), QPoint(108, 54));
  QTest::mouseRelease(&view(), Qt::LeftButton, {}, strip);
  EXPECT_TRUE(QTest::qWaitFor([this] { return view().pos() == QPoint(12, 12); }));
  EXPECT_EQ(editor().canvasOffset(), QPointF(0, 0));
  canvas().resize(900, 700);
  EXPECT_EQ(view().pos(), QPoint(12, 12));
}

TEST(MiniMapPicture, EdgesLieBehindDotsOfDiameter4) {
  MindMap map;
  map.nodes = {topic(1, 0, 0), topic(2, 100, 0), topic(3, 50, 100)};
  // The last edge leads to no topic.
  map.edges = {edgeBetween(1, 1, 2), edgeBetween(2, 3, 9)};
  const MapIndex index(map.nodes, map.edges);
  const auto geometry = MiniMapGeometry::of(index.positions(), {200, 200});
  MiniMapPicture picture(*geometry, {200, 200}, 1.0, Qt::red, Qt::blue);
  EXPECT_TRUE(picture.advance(index, 100));
  const QImage& image = picture.image();
  for (const QPoint dot : {QPoint(50, 50), QPoint(150, 50), QPoint(100, 150)}) {
    EXPECT_EQ(image.pixelColor(dot), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(dot - QPoint(1, 1)), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(dot + QPoint(0, 3)).alpha(), 0);
    EXPECT_EQ(image.pixelColor(dot - QPoint(0, 4)).alpha(), 0);
  }
  EXPECT_GT(image.pixelColor(100, 50).alpha() + image.pixelColor(100, 49).alpha(), 100);
  EXPECT_EQ(image.pixelColor(100, 140).alpha(), 0);
}

TEST(MiniMapPicture, DrawnInPiecesItIsTheSame) {
  const MindMap map = wideStar(300);
  const MapIndex index(map.nodes, map.edges);
  const auto geometry = MiniMapGeometry::of(index.positions(), {180, 120});
  MiniMapPicture whole(*geometry, {180, 120}, 2.0, QColor(128, 128, 128, 77), Qt::blue);
  MiniMapPicture pieces(*geometry, {180, 120}, 2.0, QColor(128, 128, 128, 77), Qt::blue);
  EXPECT_TRUE(whole.advance(index, 10'000));
  int calls = 1;
  while (!pieces.advance(index, 7)) ++calls;
  EXPECT_GE(calls, 599 / 7);
  EXPECT_EQ(whole.image(), pieces.image());
}

TEST(MiniMapPicture, ManyEdgesAreDrawnLikeFew) {
  MindMap map;
  map.nodes = {topic(1, 0, 0), topic(2, 100, 30), topic(3, 50, 100)};
  map.edges = {edgeBetween(1, 1, 2)};
  const auto pictureOf = [&map] {
    const MapIndex index(map.nodes, map.edges);
    const auto geometry = MiniMapGeometry::of(index.positions(), {200, 200});
    MiniMapPicture picture(*geometry, {200, 200}, 1.0, QColor(128, 128, 128, 80), Qt::blue);
    EXPECT_TRUE(picture.advance(index, 100'000));
    return picture.image();
  };
  const QImage few = pictureOf();
  for (int i = 0; i < 3000; ++i) map.edges.append(edgeBetween(10 + i, 1, 2));
  EXPECT_EQ(pictureOf(), few);
}

TEST(MiniMapPicture, DotsGrowThinnerWhereTheyWouldRunTogether) {
  EXPECT_EQ(MiniMapPicture::dotRadius(1, {180, 120}), 2.0);
  EXPECT_EQ(MiniMapPicture::dotRadius(400, {180, 120}), 2.0);
  EXPECT_LT(MiniMapPicture::dotRadius(2000, {180, 120}), 1.5);
  EXPECT_GT(MiniMapPicture::dotRadius(2000, {180, 120}), MiniMapPicture::dotRadius(10'000, {180, 120}));
  EXPECT_GE(MiniMapPicture::dotRadius(1'000'000, {180, 120}), 0.5);
}

TEST_F(MiniMapViewTest, StandsOnTheColourOfTheCanvas) {
  startWithTwoTopics();
  for (const char* color : {"#101014", "#FFF8E8"}) {
    MindMap map = editor().mindMap();
    map.canvas.background = QString::fromLatin1(color);
    editor().setMindMap(map);
    QCoreApplication::processEvents();
    const QImage picture = canvas().grab().toImage();
    const QPoint corner = view().mapTo(&canvas(), view().mapRect().topLeft().toPoint() + QPoint(6, 6));
    const QColor ground = picture.pixelColor(corner * picture.devicePixelRatio());
    // Some of what is below shows through.
    EXPECT_NEAR(ground.lightness(), QColor(QLatin1String(color)).lightness(), 40) << color;
  }
}

TEST(MiniMapPicture, TopicsOnOnePointAreDrawnOnce) {
  MindMap map;
  for (int i = 0; i < 5000; ++i) {
    map.nodes.append(topic(i));
    map.edges.append(edgeBetween(i, 0, i));
  }
  const MapIndex index(map.nodes, map.edges);
  const auto geometry = MiniMapGeometry::of(index.positions(), {180, 120});
  MiniMapPicture picture(*geometry, {180, 120}, 1.0, Qt::gray, Qt::blue);
  EXPECT_TRUE(picture.advance(index, 1000));
}

}  // namespace
}  // namespace quilmora::test
