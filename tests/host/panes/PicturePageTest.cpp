// All panes in one picture, each in its corner.
#include <gtest/gtest.h>

#include "host/panes/WholePicture.h"
#include "tests/host/paint/SceneShapes.h"

using host::Image;
using host::Rgb;
using host::WholePictureTexts;

namespace {

Drawn where(const Image& image, Rgb colour) {
  return drawnWhere(image, [&](const Rgb& pixel) { return pixel == colour; });
}

constexpr Rgb one{250, 0, 0};
constexpr Rgb two{0, 250, 0};
constexpr Rgb three{0, 0, 250};
constexpr Rgb four{250, 0, 250};

}  // namespace

TEST(WholePicture, EveryPaneIsWholeAndInItsCorner) {
  const Image picture = fourPanes(Image(300, 200, one), Image(310, 210, two), Image(290, 180, three),
                                  Image(305, 220, four), {"A-1", {"head.nii", "left.dip"}, {"all slices"}});
  EXPECT_EQ(where(picture, one).pixels, 300 * 200);
  EXPECT_EQ(where(picture, two).pixels, 310 * 210);
  EXPECT_EQ(where(picture, three).pixels, 290 * 180);
  EXPECT_EQ(where(picture, four).pixels, 305 * 220);
  EXPECT_LT(where(picture, one).column, where(picture, two).column);
  EXPECT_LT(where(picture, three).column, where(picture, four).column);
  EXPECT_LT(where(picture, one).row, where(picture, three).row);
  EXPECT_LT(where(picture, two).row, where(picture, four).row);
}

TEST(WholePicture, PatientFilesAndSettingsStandAbove) {
  const auto height = [](const WholePictureTexts& texts) {
    const Image pane(300, 200, one);
    return fourPanes(pane, pane, pane, pane, texts).height();
  };
  const int bare = height({});
  EXPECT_GT(height({"A-1", {}, {}}), bare);
  EXPECT_GT(height({"A-1", {"head.nii"}, {}}), height({"A-1", {}, {}}));
  EXPECT_GT(height({"A-1", {"head.nii"}, {"all slices"}}), height({"A-1", {"head.nii"}, {}}));
  EXPECT_EQ(height({"", {""}, {""}}), bare);
}
