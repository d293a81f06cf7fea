#include <limits>

#include <gtest/gtest.h>

#include "app/look/NumberText.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

TEST(NumberText, HasSoManyDecimals) {
  EXPECT_EQ(fixedText(6, 1), QStringLiteral("6.0"));
  EXPECT_EQ(fixedText(13.5, 1), QStringLiteral("13.5"));
  EXPECT_EQ(fixedText(17, 0), QStringLiteral("17"));
  EXPECT_EQ(fixedText(77.28, 1), QStringLiteral("77.3"));
  EXPECT_EQ(fixedText(-3, 1), QStringLiteral("-3.0"));
}

TEST(NumberText, WhatLiesBetweenTwoGoesToTheEvenOne) {
  EXPECT_EQ(fixedText(77.25, 1), QStringLiteral("77.2"));
  EXPECT_EQ(fixedText(77.75, 1), QStringLiteral("77.8"));
  EXPECT_EQ(fixedText(16.5, 0), QStringLiteral("16"));
  EXPECT_EQ(fixedText(17.5, 0), QStringLiteral("18"));
}

TEST(NumberText, TheLargestNumberHasRoom) {
  EXPECT_EQ(fixedText(-std::numeric_limits<double>::max(), 1).size(), 312);
}

}  // namespace
}  // namespace quilmora
