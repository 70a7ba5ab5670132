// All panes in one picture, each in its corner.
#include <gtest/gtest.h>

#include "host/paint/PictureText.h"
#include "host/panes/PicturePage.h"
#include "tests/host/paint/SceneShapes.h"

using host::Image;
using host::PageTexts;
using host::Rgb;

namespace {

Drawn where(const Image& image, Rgb colour) {
  return drawnWhere(image, [&](const Rgb& pixel) { return pixel == colour; });
}

constexpr Rgb one{250, 0, 0};
constexpr Rgb two{0, 250, 0};
constexpr Rgb three{0, 0, 250};
constexpr Rgb four{250, 0, 250};

}  // namespace

TEST(PicturePage, EveryPaneIsWholeAndInItsCorner) {
  const Image picture =
      fourPanes(Image(300, 200, one), Image(310, 210, two), Image(290, 180, three), Image(305, 220, four),
                {"", "A-1", {"head.nii", "left.dip"}, {"all slices"}, {}, {}});
  EXPECT_EQ(where(picture, one).pixels, 300 * 200);
  EXPECT_EQ(where(picture, two).pixels, 310 * 210);
  EXPECT_EQ(where(picture, three).pixels, 290 * 180);
  EXPECT_EQ(where(picture, four).pixels, 305 * 220);
  EXPECT_LT(where(picture, one).column, where(picture, two).column);
  EXPECT_LT(where(picture, three).column, where(picture, four).column);
  EXPECT_LT(where(picture, one).row, where(picture, three).row);
  EXPECT_LT(where(picture, two).row, where(picture, four).row);
}

TEST(PicturePage, PatientFilesAndSettingsStandAbove) {
  const auto height = [](const PageTexts& texts) {
    const Image pane(300, 200, one);
    return fourPanes(pane, pane, pane, pane, texts).height();
  };
  const int bare = height({});
  EXPECT_GT(height({"left.dip", "", {}, {}, {}, {}}), bare);
  EXPECT_GT(height({"", "A-1", {}, {}, {}, {}}), bare);
  EXPECT_GT(height({"", "A-1", {"head.nii"}, {}, {}, {}}), height({"", "A-1", {}, {}, {}, {}}));
  EXPECT_GT(height({"", "A-1", {"head.nii"}, {"all slices"}, {}, {}}),
            height({"", "A-1", {"head.nii"}, {}, {}, {}}));
  EXPECT_EQ(height({"", "", {""}, {""}, {""}, {}}), bare);
}

TEST(PicturePage, WhatIsWrongStandsInABandAboveEverythingInFullWidth) {
  const Rgb band{168, 24, 32};
  const Image pane(300, 200, one);
  const Image right = fourPanes(pane, pane, pane, pane, {});
  EXPECT_EQ(where(right, band).pixels, 0);
  PageTexts texts;
  texts.wrong = {"moment taken from the radius"};
  const Image wrong = fourPanes(pane, pane, pane, pane, texts);
  EXPECT_GT(wrong.height(), right.height());
  EXPECT_EQ(wrong.pixel(0, 0), band);
  EXPECT_EQ(wrong.pixel(wrong.width() - 1, 0), band);
  EXPECT_GT(drawnWhere(wrong.cropped({0, 0, wrong.width(), wrong.height() - right.height()}),
                       [](const Rgb& pixel) { return pixel.green > 240; })
                .pixels,
            100)
      << "its text";
  texts.wrong.push_back(std::string(200, 'w'));
  const Image longer = fourPanes(pane, pane, pane, pane, texts);
  EXPECT_EQ(longer.width(), wrong.width()) << "broken into lines";
  EXPECT_GT(longer.height(), wrong.height() + 40);
}

TEST(PicturePage, NotesStandBelowThePanes) {
  const Image pane(300, 200, one);
  const int bare = pageOf(pane, {}).height();
  PageTexts texts;
  texts.notes = {{"how to read it", host::quietInk}};
  EXPECT_GT(pageOf(pane, texts).height(), bare);
}

TEST(PicturePage, TheColumnsOfAGridBeginAtOnePlace) {
  const Image grid =
      host::gridOf({{Image(10, 5, one), Image(20, 5, two)}, {Image(30, 5, three), Image(5, 9, four)}}, 3);
  EXPECT_EQ(grid.width(), 30 + 3 + 20);
  EXPECT_EQ(grid.height(), 5 + 3 + 9);
  EXPECT_EQ(grid.pixel(33, 0), two);
  EXPECT_EQ(grid.pixel(33, 8), four);
}
