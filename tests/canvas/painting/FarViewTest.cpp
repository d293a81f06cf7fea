#include <set>

#include <gtest/gtest.h>

#include "canvas/painting/BadgeLook.h"
#include "canvas/painting/HiddenCount.h"
#include "canvas/painting/PaintedMap.h"
#include "canvas/painting/PartVisibility.h"

// Maps seen from as far away as a fitted view shows them.

namespace quilmora {
namespace {

constexpr QSize viewSize(400, 300);
constexpr double far = 0.2;

int pixelsNear(const QImage& image, const QColor& color, int distance = 40) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) count += colorDistance(image.pixelColor(x, y), color) <= distance;
  return count;
}

int differingPixels(const QImage& a, const QImage& b) {
  int count = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x) count += a.pixel(x, y) != b.pixel(x, y);
  return count;
}

TEST(FarView, BadgesKeepTheirColourAndTheirSymbol) {
  for (const Badge badge : {Badge::priority1, Badge::done, Badge::inProgress, Badge::blocked}) {
    PaintedMap painted;
    painted.addNode(QPointF(0, 0), QStringLiteral("A title"), "#405060");
    painted.changeNode(0, [&](Node& node) { node.badge = badge; });
    const QImage image = painted.paint(viewSize, 1.0, far);
    const QRectF shown = shownPart(CanvasPart::badge, painted.metrics(0).badge, far);
    EXPECT_GE(shown.width() * far, 10.0);
    EXPECT_GE(pixelsNear(image, badgeLook(badge).color), 25);
    // Its middle belongs to the symbol: pale on the disc.
    int pale = 0;
    for (double y = shown.top(); y < shown.bottom(); y += 5)
      for (double x = shown.left(); x < shown.right(); x += 5) {
        const QColor color = painted.at(image, QPointF(x, y));
        pale += color.lightness() > badgeLook(badge).color.lightness() + 30 && color != white;
      }
    EXPECT_GE(pale, 6);
  }
}

TEST(FarView, ACollapsedBranchDiffersFromAnOpenOneAtAGlance) {
  for (const double zoom : {far, 0.5, 1.0}) {
    PaintedMap painted;
    const QUuid root = painted.addNode(QPointF(0, 0), QStringLiteral("Branch"));
    painted.addEdge(root, painted.addNode(QPointF(9000, 0)));
    const QImage open = painted.paint(viewSize, 1.0, zoom);
    painted.collapsed.insert(root);
    painted.hidden = {0, 1};
    const QImage collapsed = painted.paint(viewSize, 1.0, zoom);
    EXPECT_GE(differingPixels(open, collapsed), 60) << zoom;
    // The plate with the count is below the box; this is beside the digit.
    EXPECT_NE(painted.at(collapsed, QPointF(-4, painted.metrics(0).box.bottom() + 3)), white);
  }
}

TEST(HiddenCount, CountsEachTopicBelowOnceAndNoFurtherThanItShows) {
  PaintedMap painted;
  const QUuid root = painted.addNode(QPointF(0, 0));
  const QUuid a = painted.addNode(QPointF(0, 0));
  const QUuid b = painted.addNode(QPointF(0, 0));
  painted.addEdge(root, a);
  painted.addEdge(root, b);
  painted.addEdge(a, b);
  painted.addEdge(b, root);
  painted.refresh();
  const TreeInfo& tree = painted.scene.tree;
  EXPECT_EQ(hiddenCount(tree, tree.number(root)), 2U);
  EXPECT_EQ(hiddenCountText(tree, tree.number(root)), QStringLiteral("2"));
  for (int i = 0; i < 1200; ++i) painted.addEdge(root, painted.addNode(QPointF(0, 0)));
  painted.refresh();
  const TreeInfo& wide = painted.scene.tree;
  EXPECT_EQ(hiddenCountText(wide, wide.number(root)), QStringLiteral("999+"));
}

TEST(FarView, DoesNotDependOnWhatWasSeenBefore) {
  PaintedMap painted;
  for (int i = 0; i < 3100; ++i)
    painted.addNode(QPointF(i % 60 * 260 - 7800, i / 60 * 70 - 1800), QString(i % 37, QLatin1Char(i % 2 ? 'w' : 'i')));
  painted.paint(viewSize, 1.0, 1.0);
  painted.paint(viewSize, 1.0, 0.5);
  const QImage after = painted.paint(viewSize, 1.0, far);
  PaintedMap fresh;
  fresh.map = painted.map;
  EXPECT_EQ(fresh.paint(viewSize, 1.0, far), after);
}

TEST(FarView, HasNoBarsForTheTextUnderAnOpenTitleField) {
  PaintedMap painted;
  const QUuid id = painted.addNode(QPointF(0, 0), QStringLiteral("A title of some length"));
  const QImage resting = painted.paint(viewSize, 1.0, far);
  painted.scene.shown.editingNodeID = id;
  const QImage edited = painted.paint(viewSize, 1.0, far);
  EXPECT_NE(resting, edited);
  painted.changeNode(0, [](Node& node) { node.style.textColor = QStringLiteral("#00FF00"); });
  EXPECT_EQ(painted.paint(viewSize, 1.0, far), edited);
}

TEST(FarView, LettersOfFourPixelsAreLetters) {
  PaintedMap painted;
  painted.addNode(QPointF(0, 0), QStringLiteral("MM            MM"), "#000000");
  painted.changeNode(0, [](Node& node) { node.style.textColor = QStringLiteral("#FFFFFF"); });
  const QColor black(Qt::black);
  // A bar continues where letters leave a gap.
  EXPECT_EQ(painted.at(painted.paint(viewSize, 1.0, 4.05 / 15.0), QPointF(0, 0)), black);
  EXPECT_NE(painted.at(painted.paint(viewSize, 1.0, 3.9 / 15.0), QPointF(0, 0)), black);
}

TEST(FarView, TheSmallestTopicsKeepTheirOutlineTheirSelectionAndTheirOrder) {
  PaintedMap painted;
  const QUuid red = painted.addNode(QPointF(0, 0), QStringLiteral("Somewhat long"), "#FF0000", "#000000");
  painted.addNode(QPointF(60, 0), QStringLiteral("Somewhat long"), "#00FF00", "#000000");
  QImage image = painted.paint(viewSize, 1.0, 0.1);
  EXPECT_EQ(painted.at(image, QPointF(30, 0)), QColor(0x00FF00));  // the later one is in front
  PaintedMap turned;
  turned.addNode(QPointF(60, 0), QStringLiteral("Somewhat long"), "#00FF00", "#000000");
  turned.addNode(QPointF(0, 0), QStringLiteral("Somewhat long"), "#FF0000", "#000000");
  EXPECT_EQ(turned.at(turned.paint(viewSize, 1.0, 0.1), QPointF(30, 0)), QColor(0xFF0000));
  painted.selectedNodes.insert(red);
  image = painted.paint(viewSize, 1.0, 0.1);
  EXPECT_GE(pixelsNear(image, QColor(0x0A6CFF)), 20);
  EXPECT_EQ(painted.at(image, QPointF(-20, 0)), QColor(0xFF0000));
}

TEST(FarView, ArrowHeadsStayWhileTheyAreWiderThanAPixel) {
  PaintedMap painted;
  const QUuid a = painted.addNode(QPointF(-700, 0));
  const QUuid b = painted.addNode(QPointF(700, 0));
  painted.addEdge(a, b, "#FF0000", 1.0);
  painted.changeEdge(0, [](Edge& edge) { edge.style.taper = {1.0, 40.0, EdgeStyle::TaperEasing::cubicIn}; });
  painted.map.hierarchical.edgeSizing = true;
  painted.map.hierarchical.rootEdgeWidth = 2.0;
  painted.map.hierarchical.leafEdgeWidth = 2.0;
  // The ribbon is a line of less than a pixel, the head 100 long and 60 wide at its base.
  const QImage image = painted.paint(viewSize, 1.0, far);
  EXPECT_NE(painted.at(image, QPointF(610, 20)), white);
  EXPECT_EQ(painted.at(image, QPointF(500, 20)), white);
}

TEST(FarView, TapersStayWhileTheyAreWiderThanAPixel) {
  PaintedMap painted;
  const QUuid a = painted.addNode(QPointF(-900, 0));
  const QUuid b = painted.addNode(QPointF(900, 0));
  painted.addEdge(a, b, "#FF0000", 1.0);
  painted.changeEdge(0, [](Edge& edge) { edge.style.taper = {6.0, 0.5, EdgeStyle::TaperEasing::linear}; });
  const QImage image = painted.paint(viewSize, 1.0, far);
  const auto inkAt = [&](double x) {
    int ink = 0;
    for (double y = -20; y <= 20; y += 5) ink += 255 - painted.at(image, QPointF(x, y)).green();
    return ink;
  };
  EXPECT_GT(inkAt(-600), 2 * inkAt(600));
}

TEST(FarView, LinesAreSmoothOnLargeMapsToo) {
  PaintedMap painted;
  const QUuid a = painted.addNode(QPointF(-900, -300));
  const QUuid b = painted.addNode(QPointF(900, 300));
  painted.addEdge(a, b, "#000000", 2.0);
  const QUuid c = painted.addNode(QPointF(90000, 0));
  const QUuid d = painted.addNode(QPointF(91000, 0));
  for (int i = 0; i < 2600; ++i) painted.addEdge(c, d);
  const QImage image = painted.paint(viewSize, 1.0, far);
  std::set<int> shades;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 150; x < 250; ++x) shades.insert(image.pixelColor(x, y).green() / 4);
  EXPECT_GE(shades.size(), 8U);
}

TEST(FarView, ThinConnectorsKeepTheirOrder) {
  const auto crossing = [](const char* first, const char* second) {
    PaintedMap painted;
    painted.options.fullEdgeOpacity = true;
    const QUuid a = painted.addNode(QPointF(-900, 0));
    const QUuid b = painted.addNode(QPointF(900, 0));
    painted.addEdge(a, b, first, 4.5);
    painted.addEdge(a, b, second, 4.5);
    return painted.at(painted.paint(viewSize, 1.0, far), QPointF(0, 2));
  };
  const QColor redInFront = crossing("#0000FF", "#FF0000");
  const QColor blueInFront = crossing("#FF0000", "#0000FF");
  EXPECT_GT(redInFront.red(), redInFront.blue());
  EXPECT_GT(blueInFront.blue(), blueInFront.red());
}

TEST(PartVisibility, PartsStayWithinTheSurroundingsOfTheirTopic) {
  for (const double zoom : {0.1, 0.15, 0.2, 0.35, 0.6, 1.0, 5.0}) {
    PaintedMap painted;
    painted.addNode(QPointF(0, 0));
    painted.changeNode(0, [](Node& node) {
      node.badge = Badge::done;
      node.aiGenerated = true;
      node.notes = QStringLiteral("x");
    });
    const NodeMetrics metrics = painted.metrics(0);
    const double reach = topicSurroundings(zoom, false, false);
    const double selected = topicSurroundings(zoom, true, false);
    const auto around = [&](double margin) { return metrics.box.adjusted(-margin, -margin, margin, margin); };
    for (const auto& [part, place] :
         {std::pair(CanvasPart::badge, metrics.badge), std::pair(CanvasPart::collapseToggle, metrics.collapseToggle),
          std::pair(CanvasPart::aiMarker, metrics.aiMarker), std::pair(CanvasPart::noteMarker, metrics.noteMarker)}) {
      const QRectF shown = shownPart(part, place, zoom);
      EXPECT_TRUE(shown.isEmpty() || around(reach).contains(shown)) << zoom << " part " << static_cast<int>(part);
    }
    const QRectF handle = shownPart(CanvasPart::connectionHandle, metrics.connectionHandle, zoom);
    EXPECT_TRUE(handle.isEmpty() || around(selected).contains(handle)) << zoom;
    EXPECT_LE(selected, maxTopicSurroundings(zoom));
  }
}

TEST(PartVisibility, ACollapseMarkGrowsAwayFromTheTitle) {
  const QRectF place(-58, -8, 16, 16);  // half of it over a box that starts at -50
  for (const double zoom : {1.0, 0.5, 0.3, 0.2}) {
    const QRectF shown = shownPart(CanvasPart::collapseToggle, place, zoom);
    EXPECT_DOUBLE_EQ(shown.right(), -42) << zoom;
    EXPECT_DOUBLE_EQ(shown.center().y(), 0) << zoom;
    EXPECT_GE(shown.width() * zoom, 9.0 - 1e-9) << zoom;
  }
}

TEST(PartVisibility, WhatIsNotShownHasNoPlace) {
  const QRectF place(10, 10, 8, 8);
  EXPECT_FALSE(isPartShown(CanvasPart::linkMarker, 0.3));
  EXPECT_TRUE(shownPart(CanvasPart::linkMarker, place, 0.3).isEmpty());
  EXPECT_EQ(shownPart(CanvasPart::linkMarker, place, 0.35), place);
  EXPECT_TRUE(isPartShown(CanvasPart::collapseToggle, 0.2));
  EXPECT_TRUE(shownPart(CanvasPart::badge, QRectF(), 1.0).isEmpty());
}

}  // namespace
}  // namespace quilmora
