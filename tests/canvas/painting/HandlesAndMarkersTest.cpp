#include <gtest/gtest.h>

#include "canvas/painting/BadgeLook.h"
#include "canvas/painting/PaintedMap.h"

namespace quilmora {
namespace {

const QColor fill(0x4080C0);
const QColor accent(0x0A6CFF);
const QColor orange(0xFF9500);
const QColor purple(0xAF52DE);
const QColor red(0xFF3B30);

QColor blend(const QColor& above, double opacity, const QColor& below) {
  const auto mix = [opacity](int a, int b) { return static_cast<int>(std::lround(a * opacity + b * (1 - opacity))); };
  return QColor(mix(above.red(), below.red()), mix(above.green(), below.green()), mix(above.blue(), below.blue()));
}

// The colour below a handle, including the handle's shadow.
QColor shaded(const QColor& color) {
  return blend(Qt::black, 0.185, color);
}

QImage paintFinely(PaintedMap& painted) {
  return painted.paint(QSize(400, 300), 4.0);
}

// How many points of a rectangle, four per canvas unit, are close to the colour.
int pointsNear(PaintedMap& painted, const QImage& image, const QRectF& rect, const QColor& color, int distance = 30) {
  int count = 0;
  for (double y = rect.top() + 0.25; y < rect.bottom(); y += 0.5)
    for (double x = rect.left() + 0.25; x < rect.right(); x += 0.5)
      count += colorDistance(painted.at(image, QPointF(x, y)), color) <= distance;
  return count;
}

// Two topics 300 apart with an edge of width 10, as shown on the canvas.
struct HandlePainting : testing::Test {
  HandlePainting() { painted.options.handlesAboveNodes = true; }
  QImage select() {
    painted.selectedEdges = IdSet({edge});
    return paintFinely(painted);
  }
  PaintedMap painted;
  const QUuid a = painted.addNode(QPointF(-150, 0));
  const QUuid b = painted.addNode(QPointF(150, 0));
  const QUuid edge = painted.addEdge(a, b);
};

// The same two topics, joined by a relationship instead, whose middle is (0, 30).
struct RelationshipPainting : testing::Test {
  RelationshipPainting() {
    painted.options.handlesAboveNodes = true;
    painted.map.canvas.background = QStringLiteral("#E0E0E0");
    painted.map.relationships.append(link);
    painted.scene.shown.selectedRelationshipID = link.id;
  }
  PaintedMap painted;
  const QUuid a = painted.addNode(QPointF(-150, 0));
  const QUuid b = painted.addNode(QPointF(150, 0));
  const Relationship link{QUuid::createUuid(), a, b, QString(), QStringLiteral("#888888"), {}};
  const QColor ground{0xE0E0E0};
};

}  // namespace

// --- Handles of edges ---

TEST_F(HandlePainting, EndsAreOrangeDiscsOfTwelveWithAWhiteContourOfTwo) {
  const QImage image = select();
  for (const double x : {-150.0, 150.0}) {
    EXPECT_EQ(painted.at(image, QPointF(x, 0)), orange);
    EXPECT_EQ(painted.at(image, QPointF(x + 3, 0)), orange);
    EXPECT_EQ(painted.at(image, QPointF(x + 4.5, 0)), white);
    EXPECT_EQ(painted.at(image, QPointF(x - 5.5, 0)), white);
    // Its shadow darkens the topic around it.
    EXPECT_LT(painted.at(image, QPointF(x, 6.8)).green(), fill.green() - 2);
  }
}

TEST_F(HandlePainting, EndsShowOnlyForTheSelectedEdge) {
  const QImage image = paintFinely(painted);
  EXPECT_EQ(painted.at(image, QPointF(-150, 0)), fill);
  EXPECT_EQ(painted.at(image, QPointF(150, 0)), fill);
}

TEST_F(HandlePainting, EndsLieBelowTheTopicsWhereTheOptionsSaySo) {
  painted.options.handlesAboveNodes = false;
  EXPECT_EQ(painted.at(select(), QPointF(150, 0)), fill);
}

TEST_F(HandlePainting, EndUnderADragIsDrawnWhereItWasDraggedTo) {
  painted.scene.shown.draggedHandle =
      ShownGestures::DraggedHandle{ShownGestures::HandleKind::edgeTarget, edge, QPointF(-20, 80)};
  const QImage image = select();
  EXPECT_EQ(painted.at(image, QPointF(130, 80)), orange);
  EXPECT_EQ(painted.at(image, QPointF(150, 0)), fill);
  EXPECT_EQ(painted.at(image, QPointF(-150, 0)), orange);
}

TEST_F(HandlePainting, BendIsAPurpleDiscAtSevenTenthsWithAContourOfOneAndAHalf) {
  const QImage image = select();
  EXPECT_LE(colorDistance(painted.at(image, QPointF(0, 0)), blend(purple, 0.7, shaded(Qt::red))), 3);
  EXPECT_LE(colorDistance(painted.at(image, QPointF(3, 0)), blend(purple, 0.7, shaded(Qt::red))), 3);
  EXPECT_EQ(painted.at(image, QPointF(5.2, 0)), white);
}

TEST_F(HandlePainting, BendUnderADragIsSolid) {
  painted.scene.shown.draggedHandle =
      ShownGestures::DraggedHandle{ShownGestures::HandleKind::edgeBend, edge, QPointF(10, 70)};
  const QImage image = select();
  EXPECT_EQ(painted.at(image, QPointF(10, 70)), purple);
  EXPECT_EQ(painted.at(image, QPointF(0, 0)), QColor(Qt::red));
}

TEST_F(HandlePainting, BendFollowsTheOffsetOfItsEdge) {
  painted.changeEdge(0, [](Edge& changed) { changed.controlPointOffset = QPointF(0, 80); });
  // The middle of the curve moves by three quarters of the offset.
  EXPECT_LE(colorDistance(painted.at(select(), QPointF(0, 60)), blend(purple, 0.7, shaded(Qt::red))), 3);
}

TEST_F(HandlePainting, HandlesGoWithAHiddenTopic) {
  painted.hidden = {0, 1};
  const QImage image = select();
  EXPECT_EQ(painted.at(image, QPointF(-150, 0)), fill);
  EXPECT_EQ(painted.at(image, QPointF(0, 0)), white);
}

// --- Handles of a relationship ---

TEST_F(RelationshipPainting, SelectedOneShowsItsBendAndItsDeleteButton) {
  const QImage image = paintFinely(painted);
  EXPECT_LE(colorDistance(painted.at(image, QPointF(0, 33)), blend(purple, 0.7, shaded(ground))), 3);
  // A red cross on a disc of 16, with a white rim of 2 around it, 15 above the middle.
  EXPECT_EQ(painted.at(image, QPointF(0, 15 - 6)), red);
  EXPECT_EQ(painted.at(image, QPointF(9, 15)), white);
  EXPECT_EQ(painted.at(image, QPointF(11, 15)), ground);
  EXPECT_GT(pointsNear(painted, image, QRectF(-4, 11, 8, 8), white), 10);
}

TEST_F(RelationshipPainting, AnotherOneShowsNoHandles) {
  painted.scene.shown.selectedRelationshipID = QUuid::createUuid();
  const QImage image = paintFinely(painted);
  EXPECT_EQ(painted.at(image, QPointF(0, 9)), ground);
  EXPECT_EQ(painted.at(image, QPointF(0, 34)), ground);
}

TEST_F(RelationshipPainting, HandlesLieAboveTopicsAsThoseOfEdgesDo) {
  painted.addNode(QPointF(0, 22));
  EXPECT_EQ(painted.at(paintFinely(painted), QPointF(0, 9)), red);
  painted.options.handlesAboveNodes = false;
  EXPECT_EQ(painted.at(paintFinely(painted), QPointF(0, 9)), fill);
}

TEST_F(RelationshipPainting, BendUnderADragIsSolidAndTheButtonStays) {
  painted.scene.shown.draggedHandle =
      ShownGestures::DraggedHandle{ShownGestures::HandleKind::relationshipBend, link.id, QPointF(40, 50)};
  const QImage image = paintFinely(painted);
  EXPECT_EQ(painted.at(image, QPointF(40, 80)), purple);
  EXPECT_EQ(painted.at(image, QPointF(0, 9)), red);
}

// --- An unfinished connection ---

TEST(ConnectionPainting, PreviewIsADashedLineWithAPlusOnADiscAtItsEnd) {
  PaintedMap painted;
  const QUuid source = painted.addNode(QPointF(-150, -40));
  painted.scene.shown.handleDragSourceID = source;
  painted.scene.shown.handleDragEndPoint = QPointF(150, -40);
  const QImage image = painted.paint();
  const QColor dash = blend(accent, 0.6, white);
  int dashes = 0;
  int gaps = 0;
  for (double x = -100; x < 130; x += 1) {
    const QColor color = painted.at(image, QPointF(x, -40.5));
    dashes += colorDistance(color, dash) <= 2;
    gaps += color == white;
  }
  EXPECT_NEAR(dashes, 0.6 * 230, 24);
  EXPECT_NEAR(gaps, 0.4 * 230, 24);
  EXPECT_EQ(painted.at(image, QPointF(0, -38)), white);  // no wider than two
  EXPECT_EQ(painted.at(image, QPointF(158, -40)), accent);
  EXPECT_EQ(painted.at(image, QPointF(150, -32)), accent);
  EXPECT_GT(pointsNear(painted, paintFinely(painted), QRectF(144, -46, 12, 12), white), 40);
  EXPECT_NE(painted.at(painted.paint(), QPointF(150, -29)), white);  // the shadow
  EXPECT_EQ(painted.at(image, QPointF(150, -24)), white);
}

TEST(ConnectionPainting, PreviewLeadsToTheCentreOfItsTarget) {
  PaintedMap painted;
  const QUuid source = painted.addNode(QPointF(-150, 0));
  const QUuid target = painted.addNode(QPointF(120, 60));
  painted.scene.shown.handleDragSourceID = source;
  painted.scene.shown.handleDragEndPoint = QPointF(150, 20);
  painted.scene.shown.handleDragTargetID = target;
  const QImage image = paintFinely(painted);
  EXPECT_EQ(painted.at(image, QPointF(150, 12)), white);  // no disc at the pointer
  const double bottom = painted.metrics(1).box.bottom();
  EXPECT_EQ(painted.at(image, QPointF(120, 60 + bottom - 1.5)), accent);
}

TEST(ConnectionPainting, HandleLeavesItsPlaceForTheEndOfTheLine) {
  PaintedMap painted;
  const QUuid source = painted.addNode(QPointF(-100, 0));
  painted.selectedNodes.insert(source);
  const QRectF rest = painted.metrics(0).connectionHandle.translated(-100, 0);
  EXPECT_EQ(rest.size(), QSizeF(22, 22));
  EXPECT_DOUBLE_EQ(rest.center().x(), -100 + painted.metrics(0).box.right() + 8);
  EXPECT_GT(pointsNear(painted, paintFinely(painted), rest.adjusted(5, 5, -5, -5), white), 40);
  painted.scene.shown.handleDragSourceID = source;
  painted.scene.shown.handleDragEndPoint = QPointF(-20, 70);
  const QImage image = paintFinely(painted);
  EXPECT_EQ(painted.at(image, QPointF(-12, 70)), accent);
  EXPECT_GT(pointsNear(painted, image, QRectF(-26, 64, 12, 12), white), 40);
  EXPECT_EQ(painted.at(image, rest.center() + QPointF(6, 6)), white);
  // Over a topic the line leads to its centre, and the handle stays with the pointer.
  painted.scene.shown.handleDragTargetID = painted.addNode(QPointF(60, 90));
  EXPECT_EQ(painted.at(paintFinely(painted), QPointF(-20, 70)), accent);
}

// --- Markers ---

struct MarkerPainting : testing::Test {
  MarkerPainting() {
    painted.addNode(QPointF(0, 0), QStringLiteral("A topic"), "#FFFFFF", "#FFFFFF");
    painted.changeNode(0, [](Node& node) { node.style.textColor = QStringLiteral("#000000"); });
  }
  QImage paint() { return painted.paint(QSize(400, 300), 4.0); }
  // The bounding box of everything darker than the toggle's disc.
  QRectF inkOfToggle() {
    const QImage image = paint();
    const QRectF disc = painted.metrics(0).collapseToggle;
    QRectF ink;
    for (double y = disc.top() + 2; y < disc.bottom() - 2; y += 0.25)
      for (double x = disc.left() + 2; x < disc.right() - 2; x += 0.25)
        if (painted.at(image, QPointF(x, y)).value() < 170) ink |= QRectF(x, y, 0.25, 0.25);
    return ink;
  }
  PaintedMap painted;
};

TEST_F(MarkerPainting, ToggleShowsAChevronDownAndToTheRightWhenCollapsed) {
  EXPECT_TRUE(inkOfToggle().isEmpty());
  const QUuid id = painted.map.nodes[0].id;
  painted.addEdge(id, painted.addNode(QPointF(0, 120)), "#FFFFFF");
  const QRectF down = inkOfToggle();
  ASSERT_FALSE(down.isEmpty());
  EXPECT_GT(down.width(), 1.5 * down.height());
  painted.collapsed.insert(id);
  const QRectF right = inkOfToggle();
  EXPECT_GT(right.height(), 1.5 * right.width());
  EXPECT_LE(std::max(down.width(), right.height()), 10.5);
  painted.options.collapseToggles = false;
  EXPECT_TRUE(inkOfToggle().isEmpty());
}

TEST_F(MarkerPainting, ToggleIsTheTextsColourAtHalfOnTheFillAtFourFifths) {
  painted.changeNode(0, [](Node& node) {
    node.style.fill = QStringLiteral("#FF0000");
    node.style.stroke = QStringLiteral("#FF0000");
    node.style.textColor = QStringLiteral("#0000FF");
  });
  painted.addEdge(painted.map.nodes[0].id, painted.addNode(QPointF(0, 120)), "#FFFFFF");
  const QImage image = paint();
  const QRectF disc = painted.metrics(0).collapseToggle;
  EXPECT_EQ(disc.size(), QSizeF(16, 16));
  // Outside the box, except for the box's shadow, the disc is on white.
  const QColor ground = painted.at(image, QPointF(disc.left() + 1.5, disc.center().y()));
  EXPECT_LE(colorDistance(ground, blend(Qt::red, 0.8, white)), 12);
  const QColor ink = blend(Qt::blue, 0.5, Qt::red);
  EXPECT_GT(pointsNear(painted, image, disc.adjusted(8, 4, -2, -4), ink), 4);
}

TEST_F(MarkerPainting, GeneratedTopicsHaveAPurpleMark) {
  const QRectF place = [&] {
    painted.changeNode(0, [](Node& node) { node.aiGenerated = true; });
    return painted.metrics(0).aiMarker;
  }();
  EXPECT_EQ(place.size(), QSizeF(8, 8));
  EXPECT_EQ(place.topRight(), painted.metrics(0).box.topRight() + QPointF(4, -4));
  EXPECT_GT(pointsNear(painted, paint(), place, blend(purple, 0.7, white)), 8);
  painted.changeNode(0, [](Node& node) { node.aiGenerated = false; });
  EXPECT_EQ(pointsNear(painted, paint(), place, blend(purple, 0.7, white)), 0);
}

TEST_F(MarkerPainting, LinkAndNoteAreInTheTextsColourAtHalf) {
  const QColor ink = blend(Qt::black, 0.5, white);
  painted.changeNode(0, [](Node& node) {
    node.url = QStringLiteral("https://example.org");
    node.notes = QStringLiteral("A note");
  });
  const NodeMetrics metrics = painted.metrics(0);
  EXPECT_LT(metrics.linkMarker.right(), metrics.noteMarker.left());
  const QImage image = paint();
  EXPECT_GT(pointsNear(painted, image, metrics.linkMarker, ink), 10);
  EXPECT_GT(pointsNear(painted, image, metrics.noteMarker, ink), 10);
  painted.changeNode(0, [](Node& node) {
    node.url = QString();
    node.notes = QString();
  });
  EXPECT_EQ(pointsNear(painted, paint(), metrics.linkMarker | metrics.noteMarker, ink), 0);
}

TEST_F(MarkerPainting, BadgesAreWhiteOnTheirColour) {
  for (const Badge badge :
       {Badge::priority1, Badge::priority2, Badge::priority3, Badge::done, Badge::inProgress, Badge::blocked}) {
    painted.changeNode(0, [&](Node& node) { node.badge = badge; });
    const QImage image = paint();
    const QRectF disc = painted.metrics(0).badge;
    EXPECT_EQ(disc.topLeft(), painted.metrics(0).box.topLeft() + QPointF(-6, -6));
    EXPECT_GT(pointsNear(painted, image, disc.adjusted(3, 3, -3, -3), white), 8);
    EXPECT_GT(pointsNear(painted, image, disc, badgeLook(badge).color, 6), 200);
  }
}

// --- Regions ---

struct RegionPainting : testing::Test {
  RegionPainting() { painted.map.regions.append(region); }
  QImage paint() { return painted.paint(QSize(400, 300), 4.0); }
  PaintedMap painted;
  const Region region{QUuid::createUuid(), QStringLiteral("Zone"), QStringLiteral("#000000"),
                      QRectF(-100, -80, 200, 160)};
};

TEST_F(RegionPainting, FillContourAndItsOpacityWhenSelected) {
  EXPECT_LE(colorDistance(painted.at(paint(), QPointF(0, 0)), blend(Qt::black, 0.12, white)), 1);
  // The outer half of the contour is on the canvas.
  EXPECT_LE(colorDistance(painted.at(paint(), QPointF(-100.4, 0)), blend(Qt::black, 0.55, white)), 2);
  EXPECT_EQ(painted.at(paint(), QPointF(-101, 0)), white);
  painted.scene.selectedRegionID = region.id;
  EXPECT_LE(colorDistance(painted.at(paint(), QPointF(-100.4, 0)), blend(Qt::black, 0.9, white)), 2);
  // Round corners.
  EXPECT_EQ(painted.at(paint(), QPointF(99.5, -79.5)), white);
}

TEST_F(RegionPainting, ResizeHandleIsAWhiteDiscOfFourteenWithAContourOfTwo) {
  painted.scene.selectedRegionID = region.id;
  const QImage image = paint();
  EXPECT_EQ(painted.at(image, QPointF(100, 80)), white);
  EXPECT_EQ(painted.at(image, QPointF(104.5, 80)), white);
  EXPECT_EQ(painted.at(image, QPointF(106, 80)), QColor(Qt::black));
  EXPECT_NE(painted.at(image, QPointF(107.5, 80)), white);  // its shadow
  EXPECT_EQ(painted.at(image, QPointF(112, 80)), white);
}

TEST_F(RegionPainting, LabelIsWhiteOnAPlateOfTheColour) {
  const QImage image = paint();
  const QColor plate = blend(Qt::black, 0.95, blend(Qt::black, 0.12, white));
  EXPECT_LE(colorDistance(painted.at(image, QPointF(-96, -70)), plate), 2);
  EXPECT_GT(pointsNear(painted, image, QRectF(-92, -78, 40, 16), white), 40);
  painted.scene.shown.regions.editingLabelID = region.id;
  EXPECT_LE(colorDistance(painted.at(paint(), QPointF(-96, -70)), blend(Qt::black, 0.12, white)), 1);
}

TEST_F(RegionPainting, LabelIsDarkWhereWhiteCouldNotBeRead) {
  for (const char* color : {"#FFCA28", "#9CCC65"}) {
    painted.map.regions.update(0, [&](Region& changed) { changed.color = QString::fromLatin1(color); });
    const QImage image = paint();
    EXPECT_GT(pointsNear(painted, image, QRectF(-92, -78, 40, 16), QColor(0x1D1D1F), 60), 40) << color;
    EXPECT_EQ(pointsNear(painted, image, QRectF(-92, -78, 20, 16), white, 10), 0) << color;
  }
}

TEST_F(RegionPainting, LabelStaysReadableFromAfar) {
  painted.map.regions.update(0, [](Region& changed) { changed.rect = QRectF(-800, -600, 1600, 1200); });
  const QImage image = painted.paint(QSize(400, 300), 1.0, 0.2);
  int plate = 0;
  for (int x = 0; x < 80; ++x) plate += image.pixelColor(40 + x, 32).value() < 60;
  EXPECT_GE(plate, 14);  // the region starts at (40, 30)
  EXPECT_LT(image.pixelColor(50, 30 + 8).value(), 250);
}

TEST_F(RegionPainting, LabelRunsBeyondANarrowRegionInsteadOfEnding) {
  painted.map.regions.update(0, [](Region& changed) {
    changed.rect = QRectF(-180, -80, 60, 100);
    changed.label = QStringLiteral("A name of some words");
  });
  EXPECT_LT(painted.at(paint(), QPointF(-90, -77)).value(), 40);
}

TEST_F(RegionPainting, EmptyLabelKeepsThePlaceOfItsPlate) {
  painted.map.regions.update(0, [](Region& changed) { changed.label.clear(); });
  const QImage image = paint();
  EXPECT_LT(painted.at(image, QPointF(-92, -71)).value(), 40);
  EXPECT_LE(colorDistance(painted.at(image, QPointF(-80, -71)), blend(Qt::black, 0.12, white)), 1);
}

TEST_F(RegionPainting, RegionsLieBelowEdges) {
  const QUuid a = painted.addNode(QPointF(-150, 0));
  const QUuid b = painted.addNode(QPointF(150, 0));
  painted.addEdge(a, b, "#FF0000", 10.0);
  painted.options.fullEdgeOpacity = true;
  EXPECT_EQ(painted.at(paint(), QPointF(0, 0)), QColor(Qt::red));
}

}  // namespace quilmora
