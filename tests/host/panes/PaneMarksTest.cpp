// What stands over the pictures is legible over anything and leaves out what has no room.
#include <gtest/gtest.h>

#include "host/paint/PictureText.h"
#include "host/panes/PaneMarks.h"
#include "tests/host/paint/SceneShapes.h"

using host::Image;
using host::PaneTexts;
using host::PixelBox;
using host::Rgb;
using host::View;

namespace {

int changed(const Image& image, Rgb ground, const PixelBox& box) {
  const Image part = image.cropped(box);
  return drawnWhere(part, [&](const Rgb& pixel) { return pixel != ground; }).pixels;
}

int darkPixels(const Image& image) {
  return drawnWhere(image, [](const Rgb& pixel) { return pixel.red < 40; }).pixels;
}

constexpr Rgb bright{240, 240, 240};
constexpr Rgb black{0, 0, 0};

PaneTexts texts() {
  return {"Axial", {{"y = 52.0 mm (up)", host::ink}, {"dipoles: 3 of 120 on this slice", host::ink}}, {}};
}

}  // namespace

TEST(PaneMarks, LettersHaveADarkEdgeOverBrightBone) {
  Image image(300, 300, bright);
  drawSides(image, View::axial);
  EXPECT_GT(darkPixels(image), 100);
  Image dark(300, 300, black);
  drawSides(dark, View::axial);
  EXPECT_GT(drawnWhere(dark, [](const Rgb& pixel) { return pixel.red > 200; }).pixels, 100);
}

TEST(PaneMarks, LettersStandInTheMiddleOfTheBorders) {
  Image image(300, 200, black);
  drawSides(image, View::coronal);
  EXPECT_GT(changed(image, black, {0, 80, 30, 120}), 20);
  EXPECT_GT(changed(image, black, {270, 80, 300, 120}), 20);
  EXPECT_GT(changed(image, black, {135, 0, 165, 34}), 20);
  EXPECT_GT(changed(image, black, {135, 166, 165, 200}), 20);
  EXPECT_EQ(changed(image, black, {34, 36, 266, 164}), 0);
}

TEST(PaneMarks, TheCaptionKeepsToTheUpperPartAndOffTheLetter) {
  Image image(400, 300, black);
  drawPaneTexts(image, texts());
  EXPECT_GT(changed(image, black, {0, 0, 160, 30}), 50);
  EXPECT_EQ(changed(image, black, {165, 0, 235, 34}), 0);
  EXPECT_EQ(changed(image, black, {0, 92, 400, 300}), 0);
}

TEST(PaneMarks, WithoutRoomCaptionLinesAreLeftOut) {
  const auto inked = [](int width, int height) {
    Image image(width, height, black);
    drawPaneTexts(image, texts());
    return changed(image, black, {0, 0, width, height});
  };
  EXPECT_GT(inked(400, 300), inked(400, 180));
  EXPECT_GT(inked(400, 180), inked(400, 90));
  EXPECT_EQ(inked(40, 300), 0);
}

TEST(PaneMarks, WarningsAreBrokenIntoLinesAboveTheLetterAtTheBottom) {
  PaneTexts warning;
  warning.warnings.push_back({"Not registered: dipoles are not drawn on this MRI", host::warningInk});
  Image wide(600, 300, black);
  drawPaneTexts(wide, warning);
  Image narrow(200, 300, black);
  drawPaneTexts(narrow, warning);
  EXPECT_GT(changed(wide, black, {0, 240, 600, 264}), 200);
  EXPECT_EQ(changed(wide, black, {0, 0, 600, 240}), 0);
  EXPECT_GT(changed(narrow, black, {0, 225, 200, 264}), 200);
  EXPECT_EQ(changed(narrow, black, {0, 266, 200, 300}), 0);
}

TEST(PaneMarks, TheScaleBarIsAsLongAsItSays) {
  Image image(400, 300, black);
  drawScaleBar(image, 0.5);
  // 50 mm: 100 pixels, a quarter of the picture.
  const auto isInk = [&](int column) { return image.pixel(column, 286).red > 150; };
  int first = 0;
  while (first < 400 && !isInk(first))
    ++first;
  int last = first;
  while (last < 399 && isInk(last + 1))
    ++last;
  EXPECT_NEAR(last - first + 1, 100, 3);
}

TEST(PaneMarks, ANarrowPaneHasNoScaleBar) {
  Image image(120, 300, black);
  drawScaleBar(image, 0.5);
  EXPECT_EQ(changed(image, black, {0, 0, 120, 300}), 0);
}

TEST(PaneMarks, LinesOfACrosshairOutsideAreLeftOut) {
  Image image(100, 80, black);
  drawCrosshair(image, {-5, 200});
  EXPECT_EQ(changed(image, black, {0, 0, 100, 80}), 0);
  drawCrosshair(image, {-5, 40});
  EXPECT_EQ(changed(image, black, {0, 0, 100, 80}), 100 - (14 - 5) - 1);
}

TEST(PaneMarks, ArrowsWithoutLengthDrawNothing) {
  Image image(100, 80, black);
  drawArrows(image, {{{50, 40}, 0.0, 0.0, bright}, {{50, 40}, 0.5, -0.5, bright}});
  EXPECT_EQ(changed(image, black, {0, 0, 100, 80}), 0);
}
