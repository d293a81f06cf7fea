#include <cmath>
#include <limits>

#include "editor/edits/EditsRig.h"
#include "editor/edits/Framing.h"

using namespace quilmora::edits;

TEST(Framing, NothingToShowGivesNothing) {
  EXPECT_FALSE(framingOf({}, {800, 600}, 80));
}

TEST(Framing, OnePointIsCentredAtTheLargestZoomThatItsMarginAllows) {
  const auto framing = framingOf({{100, 50}}, {800, 600}, 80);
  ASSERT_TRUE(framing);
  EXPECT_DOUBLE_EQ(framing->zoom, 440.0 / 300.0);
  EXPECT_EQ(framing->offset, QPointF(400 - 100 * framing->zoom, 300 - 50 * framing->zoom));
}

TEST(Framing, ZoomStaysWithinItsBounds) {
  EXPECT_EQ(framingOf({{0, 0}, {1e6, 0}}, {800, 600}, 80)->zoom, 0.2);
  EXPECT_EQ(framingOf({{0, 0}}, {800, 600}, 0)->zoom, 1.5);
}

TEST(Framing, TheMiddleOfVeryLargePointsIsFinite) {
  const double huge = 0.6 * std::numeric_limits<double>::max();
  EXPECT_TRUE(std::isfinite(framingOf({{huge, 0}, {huge, 0}}, {800, 600}, 80)->offset.x()));
}
