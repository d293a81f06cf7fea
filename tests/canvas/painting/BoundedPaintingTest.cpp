#include <limits>

#include <gtest/gtest.h>

#include "canvas/geometry/Polygons.h"
#include "canvas/painting/PaintContext.h"
#include "canvas/painting/PaintedMap.h"

// Numbers in a document that would make painting endless.

namespace quilmora {
namespace {

constexpr double huge = 1e308;

TEST(Segments, ThatAreBeyondMeasureStillEndInTheRectangle) {
  const QRectF rect(-100, -50, 200, 100);
  const std::pair<QPointF, QPointF> segments[] = {{QPointF(-huge, -huge), QPointF(huge, huge)},
                                                  {QPointF(-huge, 3), QPointF(huge, 5)},
                                                  {QPointF(1e300, -2e300), QPointF(-3, 4)},
                                                  {QPointF(-1e15, 1e15), QPointF(1e200, -1e15)}};
  for (auto [from, to] : segments) {
    if (!clipSegment(from, to, rect)) continue;
    EXPECT_TRUE(rect.contains(from)) << from.x() << ' ' << from.y();
    EXPECT_TRUE(rect.contains(to)) << to.x() << ' ' << to.y();
  }
}

TEST(Dashes, AreNeverMoreThanAViewCanShow) {
  std::vector<QLineF> dashes;
  addDashes(dashes, QLineF(0, 0, 1e12, 0), 0.0, 5, 5);
  addDashes(dashes, QLineF(0, 0, huge, 0), 1e300, 5, 5);
  addDashes(dashes, QLineF(-huge, 0, huge, 0), 0.0, 5, 5);
  addDashes(dashes, QLineF(0, 0, 100, 0), std::numeric_limits<double>::infinity(), 5, 5);
  addDashes(dashes, QLineF(0, 0, 100, 0), 0.0, 0, 0);
  EXPECT_TRUE(dashes.empty());
  addDashes(dashes, QLineF(0, 0, 10.0 * maxDashCount - 1, 0), 0.0, 5, 5);
  EXPECT_EQ(dashes.size(), static_cast<std::size_t>(maxDashCount));
  dashes.clear();
  addDashes(dashes, QLineF(0, 0, 100, 0), 1e17, 5, 5);
  EXPECT_LE(dashes.size(), 11U);
}

TEST(BoundedPainting, PaintsConnectorsOfEverySizeAndBend) {
  const double sizes[] = {0.0, -3.0, 1e-300, 1e15, 1e300, std::numeric_limits<double>::max()};
  for (const double far : {1e6, 1e308})
    for (const double width : sizes)
      for (const double bend : {0.0, 1e15, 1e308}) {
        PaintedMap painted;
        const QUuid a = painted.addNode(QPointF(-far, -far), QStringLiteral("a"));
        const QUuid b = painted.addNode(QPointF(far, far), QStringLiteral("b"));
        painted.addEdge(a, b);
        painted.changeEdge(0, [&](Edge& edge) {
          edge.style.dashed = true;
          edge.style.arrowHead = EdgeStyle::ArrowHead::triangle;
          edge.style.taper = {width, width, EdgeStyle::TaperEasing::cubicIn};
          edge.controlPointOffset = QPointF(bend, -bend);
        });
        painted.map.relationships.append(
            Relationship{QUuid::createUuid(), a, b, QString(), QStringLiteral("#FF0000"), QPointF(-bend, bend)});
        painted.map.hierarchical.edgeSizing = true;
        painted.map.hierarchical.leafEdgeWidth = width;
        painted.map.regions.append(Region{QUuid::createUuid(), QStringLiteral("Region"), QStringLiteral("#FF0000"),
                                          QRectF(-width, -bend, far, width)});
        for (const double zoom : {0.1, 1.0}) EXPECT_FALSE(painted.paint(QSize(300, 200), 1.0, zoom).isNull());
        painted.options = PaintOptions::forExport();
        EXPECT_FALSE(painted.paint(QSize(300, 200), 2.0).isNull());
      }
}

TEST(BoundedPainting, PaintsTopicsOfEverySizeByDepth) {
  for (const double size : {0.0, -20.0, 1e-300, 1.0, 1e6, 1e308})
    for (const double padding : {-1e9, 0.0, 1e308}) {
      PaintedMap painted;
      const QUuid a = painted.addNode(QPointF(0, 0), QStringLiteral("🏳️‍🌈 title"));
      painted.addEdge(a, painted.addNode(QPointF(40, 40), QStringLiteral("child")));
      painted.map.hierarchical.nodeSizing = true;
      painted.map.hierarchical.rootFontSize = size;
      painted.map.hierarchical.leafFontSize = size;
      painted.map.hierarchical.rootPadding = padding;
      painted.map.hierarchical.leafPadding = padding;
      painted.selectedNodes.insert(a);
      for (const double zoom : {0.1, 0.2, 1.0}) EXPECT_FALSE(painted.paint(QSize(300, 200), 1.0, zoom).isNull());
      EXPECT_LT(painted.metrics(0).box.width(), 50000);
    }
}

}  // namespace
}  // namespace quilmora
