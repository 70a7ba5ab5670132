// Names stand beside their dipoles, away from the letters of the sides.
#include <gtest/gtest.h>

#include "host/panes/DipolePicture.h"
#include "host/panes/PaneLabels.h"

namespace {

using host::PixelBox;

constexpr host::Rgb black{0, 0, 0};
const host::SideLetters letters = host::sideLetters(host::View::coronal);

bool isBlack(const host::Image& image, const PixelBox& box) {
  for (int row = box.top; row < box.bottom; ++row) {
    for (int column = box.left; column < box.right; ++column) {
      if (!(image.pixel(column, row) == black)) {
        return false;
      }
    }
  }
  return true;
}

}  // namespace

TEST(PaneLabels, NoNameTouchesALetterOfASide) {
  for (const double scale : {0.8, 1.0, 2.0}) {
    for (int column = 0; column < 300; column += 12) {
      for (int row = 0; row < 300; row += 12) {
        host::Image image(300, 300, black);
        host::drawLabels(image, {{{column, row}, "R1", host::Rgb{255, 255, 255}}}, 4, letters, scale);
        for (const PixelBox& letter : host::sideBoxes(image, letters, scale)) {
          ASSERT_TRUE(isBlack(image, {letter.left - 4, letter.top, letter.right + 4, letter.bottom}))
              << column << ", " << row << ", " << scale;
        }
      }
    }
  }
}

TEST(PaneLabels, ANameStandsThereAlthoughTheFirstPlaceIsALetters) {
  host::Image image(300, 300, black);
  const PixelBox right = host::sideBoxes(image, letters, 1.0)[1];
  EXPECT_EQ(
      host::drawLabels(image, {{{right.left - 30, 150}, "spike", host::Rgb{255, 255, 255}}}, 4, letters), 0);
  EXPECT_FALSE(isBlack(image, {0, 0, 300, 300}));
}

TEST(DipoleSquares, KeepTheirSizeAgainstTheHeadAndStayVisible) {
  EXPECT_EQ(host::glyphPixels(9, 0.5), 9);
  EXPECT_EQ(host::glyphPixels(9, 0.1), 45);
  EXPECT_EQ(host::glyphPixels(9, 1.0), 5);
  EXPECT_EQ(host::glyphPixels(9, 2.0), 3);
  EXPECT_EQ(host::glyphPixels(9, 5.0), 3);
  EXPECT_EQ(host::glyphPixels(64, 0.1), 64);
}
