#include <gtest/gtest.h>

#include "app/companions/CardPlacement.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

using enum CardAnchor;

constexpr QSize canvas(700, 600);

TEST(CardPlacement, EachCornerIs12FromTheEdges) {
  const auto rects = placeCards(canvas, {{topLeft, {100, 50}},
                                         {topRight, {100, 50}},
                                         {bottomLeft, {100, 50}},
                                         {bottomRight, {100, 50}},
                                         {top, {100, 50}}});
  EXPECT_EQ(rects,
            (std::vector<QRect>{
                {12, 12, 100, 50}, {588, 12, 100, 50}, {12, 538, 100, 50}, {588, 538, 100, 50}, {300, 12, 100, 50}}));
}

TEST(CardPlacement, LaterCardsGoFurtherInWhereAPlaceIsTaken) {
  const auto rects =
      placeCards(canvas, {{topRight, {340, 40}}, {topRight, {180, 134}}, {top, {300, 32}}, {top, {300, 32}}});
  EXPECT_EQ(rects,
            (std::vector<QRect>{{348, 12, 340, 40}, {508, 60, 180, 134}, {200, 60, 300, 32}, {200, 100, 300, 32}}));
  EXPECT_EQ(placeCards(canvas, {{bottomLeft, {400, 30}}, {bottomLeft, {180, 134}}})[1], QRect(12, 416, 180, 134));
}

TEST(CardPlacement, CardsThatOnlyComeCloserThan8AlsoMakeWay) {
  EXPECT_EQ(placeCards(canvas, {{topLeft, {338, 40}}, {topRight, {330, 40}}})[1], QRect(358, 12, 330, 40));
  EXPECT_EQ(placeCards(canvas, {{topLeft, {339, 40}}, {topRight, {330, 40}}})[1], QRect(358, 60, 330, 40));
}

TEST(CardPlacement, WhatFindsNoRoomStaysInsideTheCanvas) {
  EXPECT_EQ(placeCards({200, 100}, {{topLeft, {150, 80}}, {topLeft, {150, 80}}})[1], QRect(12, 20, 150, 80));
  EXPECT_EQ(placeCards({200, 100}, {{bottomRight, {300, 300}}})[0], QRect(0, 0, 300, 300));
}

TEST(CardPlacement, ACardSettlesInTheCornerOfItsQuarter) {
  EXPECT_EQ(nearestCorner(canvas, {349, 299}), topLeft);
  EXPECT_EQ(nearestCorner(canvas, {350, 299}), topRight);
  EXPECT_EQ(nearestCorner(canvas, {349, 300}), bottomLeft);
  EXPECT_EQ(nearestCorner(canvas, {350, 300}), bottomRight);
}

}  // namespace
}  // namespace quilmora
