#include <random>

#include <gtest/gtest.h>

#include "canvas/painting/PaintedMap.h"

using namespace quilmora;

// Hidden handles are left out, and the others are copied from small pictures: no reason to look different. The edges
// themselves are invisible here.
TEST(ManyHandles, LookLikeHandlesDrawnOneByOne) {
  std::mt19937 random(3);
  const auto below = [&](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
  for (const bool isBelowTopics : {false, true}) {
    PaintedMap painted;
    painted.options.handlesAboveNodes = true;
    std::vector<QUuid> ids;
    for (int i = 0; i < 60; ++i) ids.push_back(painted.addNode(QPointF(8 * below(44) - 176, 8 * below(32) - 128)));
    for (int i = 0; i < 500; ++i) {
      const QUuid edge = painted.addEdge(ids[static_cast<std::size_t>(below(60))],
                                         ids[static_cast<std::size_t>(below(60))], "#FFFFFF");
      if (below(3) > 0) painted.selectedEdges.insert(edge);
    }
    if (isBelowTopics) painted.selectedNodes.insert(ids.front());
    const QImage quick = painted.paint();
    painted.options.levelsOfDetail = false;
    const QImage plain = painted.paint();
    int farthest = 0;
    for (int y = 0; y < plain.height(); ++y)
      for (int x = 0; x < plain.width(); ++x)
        farthest = std::max(farthest, colorDistance(quick.pixelColor(x, y), plain.pixelColor(x, y)));
    // Many shadows on one place add up their rounding.
    EXPECT_LE(farthest, 8) << isBelowTopics;
  }
}

// Composed rings stand on whole pixels, less than half a pixel from where they would be stroked.
TEST(ManyRings, LookLikeRingsStrokedOneByOne) {
  for (const double zoom : {0.7, 1.0, 2.3}) {
    PaintedMap painted;
    painted.options.collapseToggles = false;
    const QUuid one = painted.addNode(QPointF(-90, -40), QStringLiteral("One"));
    painted.selectedNodes = IdSet{one, painted.addNode(QPointF(60, 30), QStringLiteral("Another title\nof two lines"))};
    const QImage quick = painted.paint(QSize(400, 300), 1.0, zoom);
    painted.options.levelsOfDetail = false;
    const QImage plain = painted.paint(QSize(400, 300), 1.0, zoom);
    int farthest = 0;
    for (int y = 0; y < plain.height(); ++y)
      for (int x = 0; x < plain.width(); ++x)
        farthest = std::max(farthest, colorDistance(quick.pixelColor(x, y), plain.pixelColor(x, y)));
    // A line of two pixels that is off by half of one; a missing one would be off by 245.
    EXPECT_LE(farthest, 160) << zoom;
  }
}
