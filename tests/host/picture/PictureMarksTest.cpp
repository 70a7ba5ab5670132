// The marks over pictures are legible over anything, name the patient's sides, and are as long as they say.
#include <gtest/gtest.h>

#include "host/paint/PictureText.h"
#include "host/picture/PictureMarks.h"
#include "tests/host/paint/SceneShapes.h"

using host::Image;
using host::Rgb;
using host::View;

namespace {

int darkPixels(const Image& image) {
  return drawnWhere(image, [](const Rgb& pixel) { return pixel.red < 40; }).pixels;
}

constexpr Rgb bright{240, 240, 240};
constexpr Rgb black{0, 0, 0};

}  // namespace

TEST(SidesOf, NamesTheClosestSideFirst) {
  EXPECT_EQ(host::sidesOf({1, 0, 0}), "L");
  EXPECT_EQ(host::sidesOf({-1, 0, 0}), "R");
  EXPECT_EQ(host::sidesOf({0, 1, 0}), "S");
  EXPECT_EQ(host::sidesOf({0, -1, 0}), "I");
  EXPECT_EQ(host::sidesOf({0, 0, 1}), "A");
  EXPECT_EQ(host::sidesOf({0, 0, -1}), "P");
  EXPECT_EQ(host::sidesOf({0.5, 0, -0.8}), "PL");
  EXPECT_EQ(host::sidesOf({0.6, -0.5, 0.4}), "LIA");
  EXPECT_EQ(host::sidesOf({10, 0, 2}), "L") << "11 degrees aside";
  EXPECT_EQ(host::sidesOf({0.70710678118, 0, -0.70710678119}), "LP") << "halfway: the same in every run";
}

TEST(SideLetters, AreThoseOfRadiologicalSlices) {
  const auto lettersOf = [](View view) {
    const host::SideLetters letters = host::sideLetters(view);
    return letters.left + letters.right + letters.top + letters.bottom;
  };
  EXPECT_EQ(lettersOf(View::axial), "RLAP");
  EXPECT_EQ(lettersOf(View::coronal), "RLSI");
  EXPECT_EQ(lettersOf(View::sagittal), "PASI");
}

TEST(PictureMarks, LettersHaveADarkEdgeOverBrightBone) {
  Image image(300, 300, bright);
  drawSides(image, sideLetters(View::axial));
  EXPECT_GT(darkPixels(image), 100);
  Image dark(300, 300, black);
  drawSides(dark, sideLetters(View::axial));
  EXPECT_GT(drawnWhere(dark, [](const Rgb& pixel) { return pixel.red > 200; }).pixels, 100);
}

TEST(PictureMarks, LettersStandInTheMiddleOfTheBorders) {
  Image image(300, 200, black);
  drawSides(image, sideLetters(View::coronal));
  EXPECT_GT(changed(image, black, {0, 80, 30, 120}), 20);
  EXPECT_GT(changed(image, black, {270, 80, 300, 120}), 20);
  EXPECT_GT(changed(image, black, {135, 0, 165, 34}), 20);
  EXPECT_GT(changed(image, black, {135, 166, 165, 200}), 20);
  EXPECT_EQ(changed(image, black, {34, 36, 266, 164}), 0);
}

TEST(PictureMarks, TheScaleBarIsAsLongAsItSays) {
  Image image(400, 300, black);
  drawScaleBar(image, 2.0);
  // 50 mm: 100 pixels, a quarter of the picture.
  const auto isInk = [&](int column) { return image.pixel(column, 286).red > 150; };
  int first = 0;
  while (first < 400 && !isInk(first)) {
    ++first;
  }
  int last = first;
  while (last < 399 && isInk(last + 1)) {
    ++last;
  }
  EXPECT_NEAR(last - first + 1, 100, 3);
}

TEST(PictureMarks, ANarrowPaneHasNoScaleBar) {
  Image image(120, 300, black);
  drawScaleBar(image, 2.0);
  EXPECT_EQ(changed(image, black, {0, 0, 120, 300}), 0);
}

TEST(ScaleBarMm, IsTheLongestThatFits) {
  EXPECT_EQ(host::scaleBarMm(2.0, 100.0), 50.0);
  EXPECT_EQ(host::scaleBarMm(2.0, 99.0), 20.0);
  EXPECT_EQ(host::scaleBarMm(20.0, 39.0), 1.0);
  EXPECT_EQ(host::scaleBarMm(0.05, 100.0), 1000.0);
}

TEST(PictureMarks, GrowWithTheScale) {
  Image small(400, 300, black);
  drawSides(small, sideLetters(View::axial));
  Image large(800, 600, black);
  drawSides(large, sideLetters(View::axial), 2.0);
  EXPECT_NEAR(changed(large, black, {0, 0, 800, 600}), 4.0 * changed(small, black, {0, 0, 400, 300}),
              0.3 * changed(large, black, {0, 0, 800, 600}));
}
