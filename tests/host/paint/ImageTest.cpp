// Pictures hold what is laid into them and leave out what lies outside.
#include <gtest/gtest.h>
#include <stdexcept>

#include "host/paint/Image.h"

namespace {

using host::Image;
using host::Rgb;

constexpr Rgb black{0, 0, 0};
constexpr Rgb red{255, 0, 0};

int countOf(const Image& image, Rgb colour) {
  int count = 0;
  for (const Rgb& pixel : image.pixels()) {
    count += pixel == colour ? 1 : 0;
  }
  return count;
}

}  // namespace

TEST(Image, FillsTheBoxOnly) {
  Image image(5, 4, black);
  image.fill({1, 2, 3, 4}, red);
  EXPECT_EQ(countOf(image, red), 4);
  EXPECT_EQ(image.pixel(1, 2), red);
  EXPECT_EQ(image.pixel(2, 3), red);
}

TEST(Image, CutsTheBoxToThePicture) {
  Image image(5, 4, black);
  image.fill({-100, -100, 1, 100}, red);
  EXPECT_EQ(countOf(image, red), 4);
  image.fill({4, 3, 2, 1}, red);  // turned around: nothing
  EXPECT_EQ(countOf(image, red), 4);
}

TEST(Image, BlendsByCoverage) {
  Image image(1, 1, {100, 100, 100});
  image.blendPixel(0, 0, {200, 0, 100}, 0.5);
  EXPECT_EQ(image.pixel(0, 0), (Rgb{150, 50, 100}));
  image.blendPixel(0, 1, red, 1.0);
  image.blendPixel(-1, 0, red, 1.0);
  EXPECT_EQ(image.pixel(0, 0), (Rgb{150, 50, 100}));
}

TEST(Image, PastesAndCrops) {
  Image image(5, 4, black);
  Image stamp(3, 3, red);
  stamp.setPixel(0, 0, {1, 2, 3});
  image.paste(stamp, 3, 2);
  EXPECT_EQ(image.pixel(3, 2), (Rgb{1, 2, 3}));
  EXPECT_EQ(countOf(image, red), 3);
  const Image part = image.cropped({3, 2, 99, 99});
  EXPECT_EQ(part.width(), 2);
  EXPECT_EQ(part.height(), 2);
  EXPECT_EQ(part.pixel(0, 0), (Rgb{1, 2, 3}));
}

TEST(Image, RefusesImpossibleSizes) {
  EXPECT_THROW(Image(-1, 5, black), std::invalid_argument);
  EXPECT_THROW(Image(5, 40000, black), std::invalid_argument);
}
