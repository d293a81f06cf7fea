#include <cmath>
#include <limits>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "canvas/geometry/TaperedConnector.h"
#include "model/MapIndex.h"
#include "model/TreeInfo.h"

namespace quilmora {
namespace {

using Easing = EdgeStyle::TaperEasing;

Edge makeEdge(double startWidth = 6.0, double endWidth = 2.0, Easing easing = Easing::linear) {
  Edge edge;
  edge.id = QUuid::createUuid();
  edge.style = EdgeStyle::defaultStyle();
  edge.style.taper = {startWidth, endWidth, easing};
  return edge;
}

void expectPoint(QPointF actual, double x, double y) {
  EXPECT_NEAR(actual.x(), x, 1e-9);
  EXPECT_NEAR(actual.y(), y, 1e-9);
}

TEST(TaperedConnector, LeavesAndArrivesHorizontallyAtAThirdOfTheWidth) {
  const TaperedConnector connector(makeEdge(), QPointF(10, 20), QPointF(310, 120));
  EXPECT_EQ(connector.startPoint, QPointF(10, 20));
  EXPECT_EQ(connector.controlPoint1, QPointF(110, 20));
  EXPECT_EQ(connector.controlPoint2, QPointF(210, 120));
  EXPECT_EQ(connector.endPoint, QPointF(310, 120));
}

TEST(TaperedConnector, AddsTheOffsetToBothControlPoints) {
  Edge edge = makeEdge();
  edge.controlPointOffset = QPointF(7, -40);
  const TaperedConnector connector(edge, QPointF(0, 0), QPointF(300, 0));
  EXPECT_EQ(connector.controlPoint1, QPointF(107, -40));
  EXPECT_EQ(connector.controlPoint2, QPointF(207, -40));
  EXPECT_EQ(connector.endPoint, QPointF(300, 0));
}

TEST(TaperedConnector, TreatsAMissingOffsetAsZero) {
  Edge edge = makeEdge();
  const TaperedConnector without(edge, QPointF(0, 0), QPointF(200, 90));
  edge.controlPointOffset = QPointF(0, 0);
  EXPECT_EQ(TaperedConnector(edge, QPointF(0, 0), QPointF(200, 90)).outline(), without.outline());
}

int samplesAt(double distance) {
  return TaperedConnector(makeEdge(), QPointF(0, 0), QPointF(distance, 0)).sampleCount();
}

TEST(TaperedConnector, CountsOneSampleInTenUnitsFromTwentyToAHundred) {
  EXPECT_EQ(samplesAt(0), 20);
  EXPECT_EQ(samplesAt(150), 20);
  EXPECT_EQ(samplesAt(209.99), 20);
  EXPECT_EQ(samplesAt(210), 21);
  EXPECT_EQ(samplesAt(559.9), 55);
  EXPECT_EQ(samplesAt(1000), 100);
  EXPECT_EQ(samplesAt(1500), 100);
}

TEST(TaperedConnector, LeavesControlPointsOutOfTheSampleCount) {
  Edge edge = makeEdge();
  edge.controlPointOffset = QPointF(0, 5000);
  EXPECT_EQ(TaperedConnector(edge, QPointF(0, 0), QPointF(150, 0)).sampleCount(), 20);
}

TEST(TaperedConnector, HasTwoSidesOfOneMoreSampleThanItsCount) {
  EXPECT_EQ(TaperedConnector(makeEdge(), QPointF(0, 0), QPointF(150, 0)).outline().size(), 42u);
  EXPECT_EQ(TaperedConnector(makeEdge(), QPointF(0, 0), QPointF(5000, 0)).outline().size(), 202u);
}

TEST(TaperedConnector, RunsAlongTheLeftSideAndBackAlongTheRight) {
  const auto outline = TaperedConnector(makeEdge(6, 2), QPointF(0, 0), QPointF(200, 0)).outline();
  ASSERT_EQ(outline.size(), 42u);
  expectPoint(outline[0], 0, 3);
  expectPoint(outline[10], 100, 2);
  expectPoint(outline[20], 200, 1);
  expectPoint(outline[21], 200, -1);
  expectPoint(outline[31], 100, -2);
  expectPoint(outline[41], 0, -3);
}

TEST(TaperedConnector, EasesTheWidthByTheSquareOrCubeOfTheParameter) {
  const auto halfWidthInTheMiddle = [](Easing easing) {
    return TaperedConnector(makeEdge(10, 2, easing), QPointF(0, 0), QPointF(200, 0)).outline()[10].y();
  };
  EXPECT_NEAR(halfWidthInTheMiddle(Easing::linear), 3.0, 1e-9);
  EXPECT_NEAR(halfWidthInTheMiddle(Easing::quadraticIn), 4.0, 1e-9);
  EXPECT_NEAR(halfWidthInTheMiddle(Easing::cubicIn), 4.5, 1e-9);
}

TEST(TaperedConnector, FollowsTheCurve) {
  const TaperedConnector connector(makeEdge(), QPointF(0, 0), QPointF(300, 80));
  expectPoint(connector.pointAt(0.5), 150, 40);
  expectPoint(connector.tangentAt(0), 300, 0);
  expectPoint(connector.tangentAt(1), 300, 0);
  // P0·27/64 + P1·27/64 + P2·9/64 + P3·1/64 at a quarter
  expectPoint(connector.pointAt(0.25), 75, 12.5);
}

TEST(TaperedConnector, CollapsesToAVerticalBarOnOnePoint) {
  const TaperedConnector connector(makeEdge(6, 2), QPointF(50, 50), QPointF(50, 50));
  const auto outline = connector.outline();
  ASSERT_EQ(outline.size(), 42u);
  expectPoint(outline[0], 50, 53);
  expectPoint(outline[20], 50, 51);
  expectPoint(outline[21], 50, 49);
  expectPoint(outline[41], 50, 47);
  EXPECT_TRUE(connector.arrowHead().empty());
}

TEST(TaperedConnector, GrowsOutOfOnePointWhereAnOffsetBendsIt) {
  Edge edge = makeEdge();
  edge.controlPointOffset = QPointF(0, 40);
  const TaperedConnector connector(edge, QPointF(0, 0), QPointF(0, 0));
  expectPoint(connector.pointAt(0.5), 0, 30);
  EXPECT_EQ(connector.sampleCount(), 20);
  EXPECT_EQ(connector.arrowHead().size(), 3u);
}

TEST(TaperedConnector, DrawsAVerticalPairStraightAndWithoutAHead) {
  const TaperedConnector connector(makeEdge(6, 6), QPointF(0, 0), QPointF(0, 300));
  EXPECT_EQ(connector.controlPoint1, QPointF(0, 0));
  EXPECT_EQ(connector.controlPoint2, QPointF(0, 300));
  expectPoint(connector.pointAt(0.5), 0, 150);
  expectPoint(connector.outline()[15], -3, connector.pointAt(0.5).y());
  EXPECT_TRUE(connector.arrowHead().empty());
}

TEST(TaperedConnector, PutsTheHeadInsideTheEndOfTheCurve) {
  const auto head = TaperedConnector(makeEdge(6, 4), QPointF(0, 0), QPointF(300, 0)).arrowHead();
  ASSERT_EQ(head.size(), 3u);
  expectPoint(head[0], 300, 0);
  expectPoint(head[1], 290, 3);
  expectPoint(head[2], 290, -3);
}

TEST(TaperedConnector, SizesTheHeadByTheStyleEvenWhenWidthsComeFromDepth) {
  const TaperedConnector connector(makeEdge(6, 4), QPointF(0, 0), QPointF(300, 0),
                                   EdgeStyle::TaperConfig{15, 5, Easing::linear});
  expectPoint(connector.arrowHead()[1], 290, 3);
  expectPoint(connector.outline()[0], 0, 7.5);
  expectPoint(connector.outline()[30], 300, 2.5);
}

TEST(TaperedConnector, EndsInAPointAndAHeadOfNoSizeForAnEndWidthOfZero) {
  const TaperedConnector connector(makeEdge(6, 0), QPointF(0, 0), QPointF(200, 0));
  const auto head = connector.arrowHead();
  ASSERT_EQ(head.size(), 3u);
  for (QPointF point : head) expectPoint(point, 200, 0);
  expectPoint(connector.outline()[20], 200, 0);
  expectPoint(connector.outline()[21], 200, 0);
}

TEST(TaperedConnector, HasNoHeadWhereTheStyleHasNone) {
  Edge edge = makeEdge();
  edge.style.arrowHead = EdgeStyle::ArrowHead::none;
  EXPECT_TRUE(TaperedConnector(edge, QPointF(0, 0), QPointF(200, 0)).arrowHead().empty());
}

TEST(TaperedConnector, PutsTheBendHandleInTheMiddleOfTheBentCurve) {
  Edge edge = makeEdge();
  edge.controlPointOffset = QPointF(0, 40);
  expectPoint(TaperedConnector(edge, QPointF(0, 0), QPointF(200, 100)).bendHandlePosition(), 100, 80);
}

TEST(TaperedConnector, IsHitOnItsShapesOnly) {
  const TaperedConnector connector(makeEdge(6, 4), QPointF(0, 0), QPointF(300, 0));
  EXPECT_TRUE(connector.contains(QPointF(10, 2.5)));
  EXPECT_FALSE(connector.contains(QPointF(10, 3.5)));
  EXPECT_TRUE(connector.contains(QPointF(291, 2.5)));  // in the head, beside the ribbon
  EXPECT_FALSE(connector.contains(QPointF(280, 2.5)));
  EXPECT_FALSE(connector.contains(QPointF(301, 0)));
}

TEST(TaperedConnector, BoundsHoldTheWholeShape) {
  EXPECT_TRUE(rc::check("bounds hold every point", [] {
    const auto coordinate = [] { return static_cast<double>(*rc::gen::inRange(-2000, 2000)); };
    Edge edge = makeEdge(*rc::gen::inRange(0, 30), *rc::gen::inRange(0, 30));
    if (*rc::gen::arbitrary<bool>()) edge.controlPointOffset = QPointF(coordinate(), coordinate());
    const TaperedConnector connector(edge, QPointF(coordinate(), coordinate()), QPointF(coordinate(), coordinate()));
    const QRectF bounds = connector.bounds().adjusted(-1e-6, -1e-6, 1e-6, 1e-6);
    for (QPointF point : connector.outline()) RC_ASSERT(bounds.contains(point));
    for (QPointF point : connector.arrowHead()) RC_ASSERT(bounds.contains(point));
  }));
}

TEST(TaperedConnector, BearsNumbersBeyondReason) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (double far : {1e9, 1e300, 1.7e308, infinity, nan}) {
    const TaperedConnector connector(makeEdge(far, -far), QPointF(-far, far), QPointF(far, -far));
    const int count = connector.sampleCount();
    EXPECT_GE(count, 20);
    EXPECT_LE(count, 100);
    EXPECT_EQ(connector.outline().size(), static_cast<std::size_t>(2 * count + 2));
    connector.arrowHead();
    connector.contains(QPointF(1, 1));
  }
  EXPECT_EQ(samplesAt(1e300), 100);
  EXPECT_EQ(samplesAt(infinity), 100);
  EXPECT_EQ(samplesAt(nan), 20);
}

// A chain of topics with an edge from each to the next.
struct Chain {
  SharedArray<Node> nodes;
  SharedArray<Edge> edges;

  explicit Chain(int length) {
    for (int i = 0; i < length; ++i) {
      Node node;
      node.id = QUuid::createUuid();
      nodes.append(node);
      if (i == 0) continue;
      Edge edge = makeEdge();
      edge.from = nodes[static_cast<std::size_t>(i - 1)].id;
      edge.to = node.id;
      edges.append(edge);
    }
  }
  TreeInfo tree() const { return TreeInfo(MapIndex(nodes, edges)); }
};

TEST(EffectiveTaper, StepsFromTheRootWidthToTheLeafWidth) {
  const Chain chain(4);
  HierarchicalConfig config;
  config.rootEdgeWidth = 16.0;
  config.leafEdgeWidth = 4.0;
  EXPECT_EQ(effectiveTaper(chain.edges[0], chain.tree(), config), (EdgeStyle::TaperConfig{16.0, 7.0, Easing::linear}));
  EXPECT_EQ(effectiveTaper(chain.edges[1], chain.tree(), config), (EdgeStyle::TaperConfig{7.0, 4.0, Easing::linear}));
  EXPECT_EQ(effectiveTaper(chain.edges[2], chain.tree(), config), (EdgeStyle::TaperConfig{4.0, 4.0, Easing::linear}));
}

TEST(EffectiveTaper, IgnoresTheDecayFunction) {
  const Chain chain(3);
  HierarchicalConfig config;
  config.decayFunction = Easing::cubicIn;
  EXPECT_EQ(effectiveTaper(chain.edges[1], chain.tree(), config), (EdgeStyle::TaperConfig{7.5, 5.0, Easing::linear}));
}

TEST(EffectiveTaper, IsAbsentWhenSizingIsOff) {
  const Chain chain(3);
  HierarchicalConfig config;
  config.edgeSizing = false;
  EXPECT_EQ(effectiveTaper(chain.edges[0], chain.tree(), config), std::nullopt);
}

TEST(EffectiveTaper, IsAbsentOnAMapOfRootsOnly) {
  Chain chain(1);
  Edge edge = makeEdge();
  edge.from = chain.nodes[0].id;
  edge.to = chain.nodes[0].id;
  EXPECT_EQ(effectiveTaper(edge, chain.tree(), HierarchicalConfig()), std::nullopt);
}

TEST(EffectiveTaper, CountsAnUnknownTopicAsARoot) {
  const Chain chain(3);
  Edge edge = makeEdge();
  edge.from = QUuid::createUuid();
  edge.to = chain.nodes[2].id;
  EXPECT_EQ(effectiveTaper(edge, chain.tree(), HierarchicalConfig()),
            (EdgeStyle::TaperConfig{15.0, 5.0, Easing::linear}));
}

}  // namespace
}  // namespace quilmora
