// A span holds exactly the pixels whose centres lie inside of its borders.
#include <gtest/gtest.h>
#include <random>

#include "host/paint/PixelSpan.h"

using host::PixelSpan;
using host::RowBorder;

TEST(PixelSpan, BeginsAsTheWholeRow) {
  EXPECT_EQ(PixelSpan(7).first(), 0);
  EXPECT_EQ(PixelSpan(7).end(), 7);
}

TEST(PixelSpan, BordersThroughACentreKeepThePixel) {
  PixelSpan span(10);
  span.keepBetween(2.5, 6.5);
  EXPECT_EQ(span.first(), 2);
  EXPECT_EQ(span.end(), 7);
}

TEST(PixelSpan, NothingBetweenTwoCentres) {
  PixelSpan span(10);
  span.keepBetween(2.6, 3.4);
  EXPECT_GE(span.first(), span.end());
}

TEST(PixelSpan, ABorderAlongTheRowKeepsAllOrNothing) {
  PixelSpan all(10);
  all.keep(RowBorder(0.0), 0.0);
  EXPECT_EQ(all.end(), 10);
  PixelSpan none(10);
  none.keep(RowBorder(0.0), -1e-9);
  EXPECT_GE(none.first(), none.end());
}

TEST(PixelSpan, AgreesWithAskingEveryPixel) {
  std::mt19937 random(5);
  std::uniform_real_distribution<double> slopes(-3.0, 3.0);
  std::uniform_real_distribution<double> starts(-40.0, 40.0);
  for (int round = 0; round < 5000; ++round) {
    constexpr int width = 23;
    const double slope[2] = {slopes(random), slopes(random)};
    const double start[2] = {starts(random), starts(random)};
    PixelSpan span(width);
    span.keep(RowBorder(slope[0]), start[0]);
    span.keep(RowBorder(slope[1]), start[1]);
    for (int column = 0; column < width; ++column) {
      const double x = column + 0.5;
      const bool isInside = slope[0] * x + start[0] >= 0.0 && slope[1] * x + start[1] >= 0.0;
      ASSERT_EQ(column >= span.first() && column < span.end(), isInside);
    }
  }
}
