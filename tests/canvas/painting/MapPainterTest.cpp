#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "canvas/painting/BadgeLook.h"
#include "canvas/painting/MapPainter.h"
#include "canvas/painting/PaintedMap.h"

namespace quilmora {
namespace {

const QColor fill(0x4080C0);
const QColor stroke(0x203040);
const QColor selection(0x0A6CFF);
const QColor reparentGreen(0x34C759);

int differingPixels(const QImage& a, const QImage& b) {
  int count = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x) count += a.pixel(x, y) != b.pixel(x, y);
  return count;
}

// Every look below is checked for the usual pixel ratios of screens.
class NodeLook : public testing::TestWithParam<double> {
 protected:
  QImage paint() { return painted.paint(QSize(400, 300), GetParam()); }
  // A point `inset` canvas units inside the middle of the box's bottom edge.
  QPointF insideBottom(double inset) { return QPointF(0, painted.metrics(0).box.bottom() - inset); }

  // The width in canvas units of the border at the box's bottom edge: mixed pixels count by their share. Boxes are
  // aligned to whole pixels, so the edge itself may be half a pixel off.
  double borderWidthAt(const QImage& image, const QColor& border) {
    const double ratio = GetParam();
    const int x = static_cast<int>(200 * ratio);
    const int start = static_cast<int>((150 + painted.metrics(0).box.bottom() - 6) * ratio);
    double pixels = 0.0;
    for (int y = start; y < start + static_cast<int>(8 * ratio); ++y) {
      const QColor color = image.pixelColor(x, y);
      if (color == border)
        pixels += 1.0;
      else if (color != fill && pixels == 0.0)
        pixels += static_cast<double>(color.green() - fill.green()) / (border.green() - fill.green());
      else if (pixels > 0.0)
        break;
    }
    return pixels / ratio;
  }

  PaintedMap painted;
};
INSTANTIATE_TEST_SUITE_P(PixelRatios, NodeLook, testing::Values(1.0, 1.5, 2.25));

TEST_P(NodeLook, HasItsFillAndABorderOfOneAndAHalf) {
  painted.addNode(QPointF(0, 0), QString(40, QLatin1Char(' ')));
  const QImage image = paint();
  EXPECT_NEAR(borderWidthAt(image, stroke), 1.5, 0.06);
  EXPECT_EQ(painted.at(image, insideBottom(3.2)), fill);
  EXPECT_EQ(painted.at(image, QPointF(150, 100)), white);
}

TEST_P(NodeLook, HasASelectionBorderOfTwoAndAHalf) {
  painted.selectedNodes.insert(painted.addNode(QPointF(0, 0)));
  const QImage image = paint();
  EXPECT_NEAR(borderWidthAt(image, selection), 2.5, 0.06);
  EXPECT_EQ(painted.at(image, insideBottom(4.2)), fill);
}

TEST_P(NodeLook, ShowsTheDropTargetBeforeTheSelection) {
  const QUuid id = painted.addNode(QPointF(0, 0));
  painted.selectedNodes.insert(id);
  painted.scene.shown.reparentTargetID = id;
  QImage image = paint();
  EXPECT_NEAR(borderWidthAt(image, reparentGreen), 3.0, 0.06);
  EXPECT_EQ(painted.at(image, insideBottom(4.5)), fill);
  painted.scene.shown.reparentTargetID.reset();
  painted.scene.shown.handleDragTargetID = id;
  image = paint();
  EXPECT_NEAR(borderWidthAt(image, selection), 3.0, 0.06);
}

TEST_P(NodeLook, RunsItsGradientFromTopLeftToBottomRight) {
  painted.addNode(QPointF(0, 0), QStringLiteral("          "), "#FF0000");
  painted.changeNode(0, [](Node& node) { node.style.fillGradient = QStringLiteral("#0000FF"); });
  const QImage image = paint();
  const QRectF box = painted.metrics(0).box;
  const QColor start = painted.at(image, box.topLeft() + QPointF(4, 4));
  const QColor end = painted.at(image, box.bottomRight() - QPointF(4, 4));
  EXPECT_GT(start.red(), 190);
  EXPECT_LT(start.blue(), 65);
  EXPECT_GT(end.blue(), 190);
  EXPECT_LT(end.red(), 65);
}

TEST_P(NodeLook, HasABadgeOnADiscOfItsColour) {
  painted.addNode(QPointF(0, 0));
  for (const Badge badge :
       {Badge::priority1, Badge::priority2, Badge::priority3, Badge::done, Badge::inProgress, Badge::blocked}) {
    painted.changeNode(0, [&](Node& node) { node.badge = badge; });
    const QImage image = paint();
    const QRectF disc = painted.metrics(0).badge;
    EXPECT_EQ(painted.at(image, QPointF(disc.left() + 1.5, disc.center().y())), badgeLook(badge).color);
  }
}

TEST_P(NodeLook, ShowsEmojiInColour) {
  painted.addNode(QPointF(0, 0), QString(), "#FFFFFF");
  painted.changeNode(0, [](Node& node) { node.emoji = QStringLiteral("🍎"); });
  const QImage image = paint();
  const QRectF place = painted.metrics(0).emoji;
  int reds = 0;
  for (double y = place.top(); y < place.bottom(); ++y)
    for (double x = place.left(); x < place.right(); ++x) {
      const QColor color = painted.at(image, QPointF(x, y));
      reds += color.red() > color.green() + 80;
    }
  EXPECT_GT(reds, 40);
}

TEST_P(NodeLook, ShowsItsImageWithRoundedCorners) {
  QImage picture(100, 50, QImage::Format_RGB32);
  picture.fill(QColor(0xFF8800));
  painted.addNode(QPointF(0, 0));
  painted.changeNode(0, [&](Node& node) { node.imageData = pngData(picture); });
  const QImage image = paint();
  const QRectF place = painted.metrics(0).image;
  EXPECT_LT(colorDistance(painted.at(image, place.center()), QColor(0xFF8800)), 3);
  EXPECT_LT(colorDistance(painted.at(image, place.topLeft() + QPointF(6, 6)), QColor(0xFF8800)), 3);
  EXPECT_LT(colorDistance(painted.at(image, place.topLeft() + QPointF(0.3, 0.3)), fill), 40);
}

TEST_P(NodeLook, ShowsTheConnectionHandleOnlyWhenSelectedAndNotEdited) {
  const QUuid id = painted.addNode(QPointF(0, 0));
  const QPointF probe = painted.metrics(0).connectionHandle.center() + QPointF(8, 0);
  EXPECT_EQ(painted.at(paint(), probe), white);
  painted.selectedNodes.insert(id);
  EXPECT_EQ(painted.at(paint(), probe), selection);
  painted.scene.shown.editingNodeID = id;
  EXPECT_EQ(painted.at(paint(), painted.metrics(0).connectionHandle.center() + QPointF(8, 0)), white);
}

TEST_P(NodeLook, CastsAShadowBelow) {
  painted.addNode(QPointF(0, 0));
  const QImage image = paint();
  const QColor below = painted.at(image, insideBottom(-1.5));
  EXPECT_LT(below.red(), 250);
  EXPECT_GT(below.red(), 190);
  EXPECT_EQ(painted.at(image, insideBottom(-12)), white);
}

TEST(MapPainter, DrawsEveryShapeAsTheSameBox) {
  PaintedMap painted;
  painted.addNode(QPointF(0, 0), QStringLiteral("Same"));
  const QImage rounded = painted.paint();
  for (const auto shape : {NodeStyle::Shape::circle, NodeStyle::Shape::ellipse, NodeStyle::Shape::rectangle}) {
    painted.changeNode(0, [&](Node& node) { node.style.shape = shape; });
    EXPECT_EQ(painted.paint(), rounded);
  }
}

TEST(MapPainter, DrawsTitlesButForTheOneBeingEdited) {
  PaintedMap painted;
  const QUuid id = painted.addNode(QPointF(0, 0), QStringLiteral("MMMMMMMM MMMMMMM"), "#000000", "#000000");
  const auto lightPixels = [&](const QImage& image) {
    int count = 0;
    const QRectF place = painted.metrics(0).title;
    for (double y = place.top(); y < place.bottom(); ++y)
      for (double x = place.left(); x < place.right(); ++x) count += painted.at(image, QPointF(x, y)).red() > 128;
    return count;
  };
  EXPECT_GT(lightPixels(painted.paint()), 150);
  painted.scene.shown.editingNodeID = id;
  EXPECT_EQ(lightPixels(painted.paint()), 0);
}

TEST(MapPainter, EachLineOfATitleHasADirectionOfItsOwn) {
  const QString left = QStringLiteral("A line that is long");
  const QString right = QString::fromUtf8("שלום");
  for (const QStringList& lines : {QStringList{left, right}, QStringList{right, left}}) {
    PaintedMap painted;
    painted.addNode(QPointF(0, 0), lines.join(QLatin1Char('\n')), "#FFFFFF", "#FFFFFF");
    painted.changeNode(0, [](Node& node) { node.style.textColor = QStringLiteral("#000000"); });
    const QImage image = painted.paint();
    const QRectF title = painted.metrics(0).title;
    const auto inkOfLine = [&](const QString& line) {
      const double top = title.top() + (line == lines[0] ? 0 : title.height() / 2);
      QRectF ink;
      for (double y = top; y < top + title.height() / 2; y += 1)
        for (double x = title.left() - 10; x < title.right() + 10; x += 1)
          if (painted.at(image, QPointF(x, y)).value() < 128) ink |= QRectF(x, y, 1, 1);
      return ink;
    };
    EXPECT_NEAR(inkOfLine(left).left(), title.left(), 3);
    EXPECT_NEAR(inkOfLine(left).right(), title.right(), 4);
    EXPECT_NEAR(inkOfLine(right).right(), title.right(), 4);
    EXPECT_LT(inkOfLine(right).width(), title.width() / 2);
  }
}

TEST(MapPainter, LeavesOutHiddenTopicsAndTheirEdges) {
  PaintedMap painted;
  const QUuid a = painted.addNode(QPointF(-150, 0));
  const QUuid b = painted.addNode(QPointF(150, 0));
  painted.addEdge(a, b);
  QImage image = painted.paint();
  EXPECT_NE(painted.at(image, QPointF(0, 0)), white);
  EXPECT_EQ(painted.at(image, QPointF(150, 4)), fill);
  painted.hidden = {0, 1};
  image = painted.paint();
  EXPECT_EQ(painted.at(image, QPointF(0, 0)), white);
  EXPECT_EQ(painted.at(image, QPointF(150, 4)), white);
  EXPECT_EQ(painted.at(image, QPointF(-150, 4)), fill);
}

TEST(MapPainter, LeavesOutEdgesOfTopicsThatDoNotExist) {
  PaintedMap painted;
  const QUuid a = painted.addNode(QPointF(-100, 0));
  const QImage before = painted.paint();
  painted.addEdge(a, QUuid::createUuid());
  painted.options.collapseToggles = false;
  EXPECT_EQ(painted.paint(), before);
}

TEST(MapPainter, DrawsEdgesSolidWhenSelectedElseAtFourFifths) {
  PaintedMap painted;
  const QUuid a = painted.addNode(QPointF(-150, 0));
  const QUuid b = painted.addNode(QPointF(150, 0));
  const QUuid edge = painted.addEdge(a, b, "#FF0000", 10.0);
  QImage image = painted.paint();
  EXPECT_LE(colorDistance(painted.at(image, QPointF(40, 2)), QColor(255, 51, 51)), 1);
  EXPECT_EQ(painted.at(image, QPointF(40, 7)), white);
  painted.selectedEdges.insert(edge);
  image = painted.paint();
  EXPECT_EQ(painted.at(image, QPointF(40, 2)), QColor(255, 0, 0));
  // The bend handle of the selected edge, purple at 0.7 above the red.
  const QColor handle = painted.at(image, QPointF(0, 0));
  EXPECT_GT(handle.blue(), 100);
}

TEST(MapPainter, FillsRibbonAndHeadAsOneShape) {
  PaintedMap painted;
  const QUuid a = painted.addNode(QPointF(-150, 0), QString(), "#FFFFFF");
  const QUuid b = painted.addNode(QPointF(150, 0), QString(), "#FFFFFF");
  painted.addEdge(a, b, "#FF0000", 16.0);  // a head of 40 by 24, larger than the topic
  const QImage image = painted.paint();
  EXPECT_LE(colorDistance(painted.at(image, QPointF(120, 3)), QColor(255, 51, 51)), 1);    // in both
  EXPECT_LE(colorDistance(painted.at(image, QPointF(112, 8.5)), QColor(255, 51, 51)), 1);  // in the head alone
  EXPECT_EQ(painted.at(image, QPointF(100, 9.5)), white);
}

TEST(MapPainter, ADashedEdgeIsASolidRibbonWithADashedContour) {
  PaintedMap painted;
  const QUuid a = painted.addNode(QPointF(-150, 0));
  const QUuid b = painted.addNode(QPointF(150, 0));
  painted.addEdge(a, b, "#FF0000", 10.0);
  painted.options.fullEdgeOpacity = true;
  painted.changeEdge(0, [](Edge& edge) { edge.style.dashed = true; });
  const QImage image = painted.paint(QSize(400, 300), 2.25);
  int tinted = 0;
  int bare = 0;
  for (double x = -100; x <= 100; x += 1) {
    EXPECT_EQ(painted.at(image, QPointF(x, 3)), QColor(255, 0, 0));
    (painted.at(image, QPointF(x, 5.3)).green() < 230 ? tinted : bare) += 1;
  }
  EXPECT_NEAR(tinted, 100, 25);
  EXPECT_NEAR(bare, 100, 25);
}

TEST(MapPainter, AThinDashedEdgeHasItsDashesToo) {
  PaintedMap painted;
  const QUuid a = painted.addNode(QPointF(-150, 0));
  const QUuid b = painted.addNode(QPointF(150, 0));
  painted.addEdge(a, b, "#FF0000", 1.0);
  painted.changeEdge(0, [](Edge& edge) { edge.style.dashed = true; });
  const QImage image = painted.paint(QSize(400, 300));
  int least = 255;
  int most = 0;
  for (int x = -80; x <= 80; ++x) {
    const int green = painted.at(image, QPointF(x + 0.5, 0.5)).green();
    least = std::min(least, green);
    most = std::max(most, green);
  }
  EXPECT_GT(most - least, 30);
}

TEST(MapPainter, ShowsStraightPreviewsOfTheEdgesOfDraggedTopics) {
  PaintedMap painted;
  const QUuid a = painted.addNode(QPointF(-150, -60));
  const QUuid b = painted.addNode(QPointF(150, -60));
  const QUuid c = painted.addNode(QPointF(150, 100));
  painted.addEdge(a, b);
  painted.addEdge(a, c);
  painted.selectedNodes.insert(c);
  const QImage still = painted.paint();
  EXPECT_LE(colorDistance(painted.at(still, QPointF(0, -57)), QColor(255, 51, 51)), 1);

  painted.scene.shown.nodeDragTranslation = QPointF(0, 20);
  const QImage dragged = painted.paint();
  // The edge between the other two keeps its ribbon; the one with a dragged end is a line from centre to centre.
  EXPECT_LE(colorDistance(painted.at(dragged, QPointF(0, -57)), QColor(255, 51, 51)), 1);
  const QColor onLine = painted.at(dragged, QPointF(0, 30));
  EXPECT_LE(colorDistance(onLine, QColor(255, 102, 102)), 60);
  EXPECT_EQ(painted.at(dragged, QPointF(0, 36)), white);
  EXPECT_EQ(painted.at(dragged, QPointF(150, 124)), fill);

  painted.scene.shown.nodeDragTranslation = QPointF(0, 0);
  EXPECT_EQ(painted.paint(), still);
}

TEST(MapPainter, DrawsRelationshipsDashed) {
  PaintedMap painted;
  Relationship relationship;
  relationship.id = QUuid::createUuid();
  relationship.from = painted.addNode(QPointF(-170, -10));
  relationship.to = painted.addNode(QPointF(170, -10));
  relationship.color = QStringLiteral("#FF0000");
  relationship.controlPointOffset = QPointF(0, -68);  // straightens the curve
  painted.map.relationships.append(relationship);
  const QImage image = painted.paint();
  int dashes = 0;
  for (int x = -100; x < 100; ++x) dashes += painted.at(image, QPointF(x, -10.5)).green() < 200;
  EXPECT_NEAR(dashes, 133, 20);
  painted.hidden = {0, 1};
  EXPECT_EQ(painted.at(painted.paint(), QPointF(-60, -10.5)), white);
}

TEST(MapPainter, DimsTopicsByTheLens) {
  PaintedMap painted;
  painted.addNode(QPointF(0, 0), QString(), "#000000", "#000000");
  painted.scene.nodeOpacity = [](const Node&) { return 0.2; };
  const QImage image = painted.paint();
  EXPECT_LE(colorDistance(painted.at(image, QPointF(5, 12)), QColor(204, 204, 204)), 12);
}

TEST(MapPainter, DrawsRegionsBelowTopics) {
  PaintedMap painted;
  painted.addNode(QPointF(0, 0));
  Region region;
  region.id = QUuid::createUuid();
  region.color = QStringLiteral("#000000");
  region.rect = QRectF(-100, -80, 200, 160);
  painted.map.regions.append(region);
  QImage image = painted.paint();
  EXPECT_LE(colorDistance(painted.at(image, QPointF(80, 60)), QColor(224, 224, 224)), 1);
  EXPECT_EQ(painted.at(image, QPointF(5, 5)), fill);
  painted.scene.selectedRegionID = region.id;
  image = painted.paint();
  EXPECT_EQ(painted.at(image, QPointF(100, 80)), white);  // the resize handle
  painted.scene.shown.regions.resizingRegionID = region.id;
  painted.scene.shown.regions.resizeDelta = QSizeF(-120, -100);
  EXPECT_EQ(painted.at(painted.paint(), QPointF(80, 60)), white);
}

TEST(MapPainter, ThePictureOfAnExportLeavesOutWhatOnlyTheCanvasShows) {
  PaintedMap painted;
  const QUuid a = painted.addNode(QPointF(-150, 0));
  const QUuid b = painted.addNode(QPointF(150, 0));
  painted.addEdge(a, b);
  const QImage plain = [&] {
    painted.options = PaintOptions::forExport();
    return painted.paint();
  }();
  painted.changeEdge(0, [](Edge& edge) { edge.controlPointOffset = QPointF(0, 90); });
  painted.map.regions.append(
      Region{QUuid::createUuid(), QString(), QStringLiteral("#FF0000"), QRectF(-50, -50, 100, 99)});
  painted.map.relationships.append(
      Relationship{QUuid::createUuid(), a, b, QString(), QStringLiteral("#FF0000"), QPointF(0, 60)});
  painted.selectedNodes.insert(a);
  painted.map.hierarchical.edgeSizing = true;
  EXPECT_EQ(painted.paint(), plain);
}

TEST(MapPainter, DrawsFromAfarInTheColoursOfTheTopics) {
  PaintedMap painted;
  const QUuid a = painted.addNode(QPointF(-1000, 0), QStringLiteral("Some title"));
  const QUuid b = painted.addNode(QPointF(1000, 0), QStringLiteral("Some title"));
  painted.addEdge(a, b);
  const QImage image = painted.paint(QSize(400, 300), 1.0, 0.1);
  EXPECT_EQ(painted.at(image, QPointF(1000, 0)), fill);
  EXPECT_NE(painted.at(image, QPointF(0, 0)), white);
  EXPECT_EQ(painted.at(image, QPointF(0, 60)), white);
}

TEST(MapPainter, HidesNothingThatOpaqueTopicsDoNotCover) {
  // The same crowd with and without the shortcuts: only antialiasing may differ.
  PaintedMap painted;
  std::vector<QUuid> ids;
  for (int i = 0; i < 60; ++i) {
    ids.push_back(
        painted.addNode(QPointF((i * 37) % 300 - 150, (i * 61) % 220 - 110), QStringLiteral("Topic %1").arg(i)));
    if (i > 0) painted.addEdge(ids[static_cast<std::size_t>(i / 2)], ids.back());
  }
  const QImage quick = painted.paint();
  painted.options.levelsOfDetail = false;
  const QImage whole = painted.paint();
  int far = 0;
  for (int y = 0; y < quick.height(); ++y)
    for (int x = 0; x < quick.width(); ++x) far += colorDistance(quick.pixelColor(x, y), whole.pixelColor(x, y)) > 60;
  EXPECT_LT(far, 60);
}

TEST(MapPainter, BearsCoordinatesBeyondReason) {
  for (const double far : {1e9, 1e300, 1.7e308}) {
    PaintedMap painted;
    const QUuid a = painted.addNode(QPointF(-far, -far), QStringLiteral("far"));
    const QUuid b = painted.addNode(QPointF(far, far), QStringLiteral("away"));
    const QUuid c = painted.addNode(QPointF(0, 0), QStringLiteral("near"));
    painted.addEdge(a, b);
    painted.addEdge(c, a);
    painted.addEdge(b, c);
    painted.changeEdge(0, [](Edge& edge) { edge.style.dashed = true; });
    painted.changeEdge(1, [&](Edge& edge) { edge.controlPointOffset = QPointF(far, -far); });
    painted.changeEdge(2, [&](Edge& edge) { edge.style.taper = {far, far, EdgeStyle::TaperEasing::cubicIn}; });
    painted.map.relationships.append(Relationship{QUuid::createUuid(), a, c, QString(), QStringLiteral("#00FF00"), {}});
    painted.map.regions.append(
        Region{QUuid::createUuid(), QString(), QStringLiteral("#00FF00"), QRectF(-far, -far, far, far * 0.5)});
    for (const double zoom : {0.1, 1.0, 5.0}) {
      const QImage image = painted.paint(QSize(400, 300), 1.0, zoom);
      // Nearby parts are drawn as usual.
      const QPointF insideBottom(0, painted.metrics(2).box.bottom() - 3.2);
      if (zoom < 1.0) continue;
      EXPECT_EQ(painted.at(image, insideBottom), fill) << far << " at " << zoom;
    }
    painted.refresh();
    EXPECT_EQ(painted.painter.nodeAt(painted.scene, QPointF(0, 0)), 2u);
    EXPECT_EQ(painted.painter.nodeAt(painted.scene, QPointF(0, 100)), std::nullopt);
    // With shapes this large any result will do, as long as there is one.
    painted.painter.edgeAt(painted.scene, QPointF(50, 50));
    painted.painter.relationshipAt(painted.scene, QPointF(50, 50));
  }
}

TEST(MapPainter, AnEdgeOfAThousandMillionUnitsStaysALine) {
  PaintedMap painted;
  const QUuid a = painted.addNode(QPointF(-1e9, 0));
  const QUuid b = painted.addNode(QPointF(1e9, 0));
  painted.addEdge(a, b, "#FF0000", 10.0);
  const QImage image = painted.paint();
  EXPECT_LE(colorDistance(painted.at(image, QPointF(0, 2)), QColor(255, 51, 51)), 1);
  EXPECT_EQ(painted.at(image, QPointF(0, 20)), white);
  EXPECT_EQ(painted.at(image, QPointF(190, -20)), white);
}

TEST(MapPainter, PaintsNothingForAViewWithoutSense) {
  PaintedMap painted;
  painted.addNode(QPointF(0, 0));
  painted.refresh();
  QImage image(50, 50, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::black);
  const QImage before = image;
  QPainter painter(&image);
  painted.scene.exposed = QRectF(0, 0, 50, 50);
  painted.scene.view = {QPointF(qQNaN(), 0), 1.0};
  painted.painter.paint(painter, painted.scene);
  painted.scene.view = {QPointF(0, 0), 0.0};
  painted.painter.paint(painter, painted.scene);
  painter.end();
  EXPECT_EQ(differingPixels(image, before), 0);
}

TEST(MapPainter, FindsTheTopmostTopicUnderAPoint) {
  PaintedMap painted;
  painted.addNode(QPointF(0, 0), QStringLiteral("below"));
  painted.addNode(QPointF(10, 0), QStringLiteral("above"));
  painted.refresh();
  EXPECT_EQ(painted.painter.nodeAt(painted.scene, QPointF(5, 0)), 1u);
  EXPECT_EQ(painted.painter.nodeAt(painted.scene, QPointF(0, 100)), std::nullopt);
  painted.hidden = {0, 1};
  painted.refresh();
  EXPECT_EQ(painted.painter.nodeAt(painted.scene, QPointF(5, 0)), 0u);
}

TEST(MapPainter, FindsEdgesAndRelationshipsUnderAPoint) {
  PaintedMap painted;
  const QUuid a = painted.addNode(QPointF(-150, 0));
  const QUuid b = painted.addNode(QPointF(150, 0));
  painted.addEdge(a, b, "#FF0000", 10.0);
  painted.map.relationships.append(Relationship{QUuid::createUuid(), a, b, QString(), QStringLiteral("#00FF00"), {}});
  painted.refresh();
  EXPECT_EQ(painted.painter.edgeAt(painted.scene, QPointF(0, 4)), 0u);
  EXPECT_EQ(painted.painter.edgeAt(painted.scene, QPointF(0, 6)), std::nullopt);
  EXPECT_EQ(painted.painter.relationshipAt(painted.scene, QPointF(0, 36)), 0u);
  EXPECT_EQ(painted.painter.relationshipAt(painted.scene, QPointF(0, 45)), std::nullopt);
}

TEST(MapPainter, DrawsAFarBentEdgeBetweenTopicsOnOnePoint) {
  PaintedMap painted;
  const QUuid a = painted.addNode(QPointF(0, 0));
  const QUuid b = painted.addNode(QPointF(0, 0));
  painted.addEdge(a, b, "#FF0000", 10.0);
  // Its control point is far below the picture, its start in the middle.
  painted.changeEdge(0, [](Edge& edge) { edge.controlPointOffset = QPointF(0, 4000); });
  const QImage image = painted.paint();
  // It goes down and comes back over itself.
  EXPECT_LT(colorDistance(painted.at(image, QPointF(0, 100)), QColor(Qt::red)), 60);
}

}  // namespace
}  // namespace quilmora
