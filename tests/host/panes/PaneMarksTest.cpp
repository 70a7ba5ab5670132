// What stands over the pictures is legible over anything and leaves out what has no room.
#include <gtest/gtest.h>

#include "host/paint/PictureText.h"
#include "host/panes/PaneMarks.h"
#include "tests/host/paint/SceneShapes.h"

using host::Image;
using host::PaneTexts;
using host::Rgb;

namespace {

constexpr Rgb bright{240, 240, 240};
constexpr Rgb black{0, 0, 0};

PaneTexts texts() {
  return {"Axial", "y = 52.0 mm (up)", {{"dipoles: 3 of 120 on this slice", host::ink}}, {}};
}

}  // namespace

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
