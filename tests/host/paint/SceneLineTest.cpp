// Lines lie between their ends, are as thick as asked, and pale where something hides them.
#include <gtest/gtest.h>

#include "host/paint/SceneLine.h"
#include "tests/host/paint/SceneShapes.h"

namespace {

using host::DepthPicture;
using host::Image;
using host::Rgb;

constexpr Rgb black{0, 0, 0};
constexpr Rgb white{255, 255, 255};

bool isDrawn(const Rgb& pixel) {
  return pixel != black;
}

}  // namespace

TEST(DrawLine, CoversItsWidth) {
  Image image(40, 20, black);
  drawLine(image, {5, 10, 0}, {35, 10, 0}, {white, 2.0});
  EXPECT_EQ(image.pixel(20, 8), black);
  EXPECT_EQ(image.pixel(20, 9), white);
  EXPECT_EQ(image.pixel(20, 10), white);
  EXPECT_EQ(image.pixel(20, 11), black);
  EXPECT_EQ(image.pixel(2, 10), black);
  EXPECT_EQ(image.pixel(37, 10), black);
}

TEST(DrawLine, IsTheSameFromEitherEnd) {
  Image one(50, 50, black);
  Image other(50, 50, black);
  drawLine(one, {3, 41, 0}, {46, 8, 0}, {white, 1.5});
  drawLine(other, {46, 8, 0}, {3, 41, 0}, {white, 1.5});
  EXPECT_EQ(one.pixels(), other.pixels());
  EXPECT_GT(drawnWhere(one, isDrawn).pixels, 60);
}

TEST(DrawLine, IsPaleWhereItIsHidden) {
  DepthPicture picture(40, 20, black);
  for (int column = 0; column < 20; ++column) {
    picture.depths(10)[column] = 5.0F;
  }
  const host::LineStyle style{white, 1.0, 1.0, 0.2};
  drawLine(picture, {0, 10.5, 6}, {40, 10.5, 6}, style);
  EXPECT_EQ(picture.image().pixel(10, 10), (Rgb{51, 51, 51}));
  EXPECT_EQ(picture.image().pixel(30, 10), white);
  DepthPicture before(40, 20, black);
  before.depths(10)[10] = 5.0F;
  drawLine(before, {0, 10.5, 4}, {40, 10.5, 4}, style);
  EXPECT_EQ(before.image().pixel(10, 10), white);
}

TEST(DrawLine, ItsDepthRunsFromEndToEnd) {
  DepthPicture picture(100, 3, black);
  for (int column = 0; column < 100; ++column) {
    picture.depths(1)[column] = 50.0F;
  }
  drawLine(picture, {0, 1.5, 0}, {100, 1.5, 100}, {white, 1.0, 1.0, 0.0});
  EXPECT_EQ(picture.image().pixel(48, 1), white);
  EXPECT_EQ(picture.image().pixel(51, 1), black);
}

TEST(DrawLine, IsCutAtTheBorder) {
  Image image(30, 30, black);
  drawLine(image, {-1e7, -1e7, 0}, {1e7, 1e7, 0}, {white, 1.0});
  for (int i = 0; i < 30; ++i) {
    EXPECT_EQ(image.pixel(i, i), white);
  }
  Image outside(30, 30, black);
  drawLine(outside, {-50, 100, 0}, {100, 100, 0}, {white, 1.0});
  drawLine(outside, {-5, -5, 0}, {-5, 100, 0}, {white, 1.0});
  EXPECT_EQ(drawnWhere(outside, isDrawn).pixels, 0);
}

TEST(DrawLine, WithoutALengthIsADot) {
  Image image(20, 20, black);
  drawLine(image, {10.5, 10.5, 0}, {10.5, 10.5, 0}, {white, 3.0});
  EXPECT_EQ(image.pixel(10, 10), white);
  EXPECT_NEAR(drawnWhere(image, isDrawn).pixels, 9, 5);
}
