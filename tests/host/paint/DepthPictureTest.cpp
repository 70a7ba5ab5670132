// What a picture says to be hidden is hidden.
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

#include "host/paint/DepthPicture.h"

namespace {

using host::DepthPicture;

constexpr float endless = std::numeric_limits<float>::infinity();

}  // namespace

TEST(DepthPicture, IsEmptyAtFirstAndAfterClear) {
  DepthPicture picture(40, 33, {1, 2, 3});
  picture.depths(32)[39] = -5.0F;
  picture.colours(32)[39] = {9, 9, 9};
  picture.summarise();
  picture.clear({4, 5, 6});
  EXPECT_EQ(picture.depth(39, 32), endless);
  EXPECT_EQ(picture.image().pixel(39, 32), (host::Rgb{4, 5, 6}));
  EXPECT_FALSE(picture.hides(0, 0, 40, 33, 1e30));
}

TEST(DepthPicture, HidesOnlyBehindAFullPart) {
  DepthPicture picture(64, 64, {});
  for (int row = 0; row < 64; ++row) {
    for (int column = 0; column < 64; ++column) {
      picture.depths(row)[column] = 10.0F;
    }
  }
  EXPECT_FALSE(picture.hides(20, 20, 40, 40, 11.0)) << "before the summary";
  picture.summarise();
  EXPECT_TRUE(picture.hides(20, 20, 40, 40, 11.0));
  EXPECT_TRUE(picture.hides(20, 20, 40, 40, 10.0));
  EXPECT_FALSE(picture.hides(20, 20, 40, 40, 9.99));
  picture.depths(39)[39] = endless;
  picture.summarise();
  EXPECT_FALSE(picture.hides(20, 20, 40, 40, 11.0));
  EXPECT_TRUE(picture.hides(1, 1, 30, 30, 11.0));
}

TEST(DepthPicture, OutsideNothingIsSeen) {
  const DepthPicture picture(64, 48, {});
  EXPECT_TRUE(picture.hides(-20, 0, -1, 48, -1e9));
  EXPECT_TRUE(picture.hides(64, 0, 90, 48, -1e9));
  EXPECT_TRUE(picture.hides(0, 48, 64, 1e12, -1e9));
  EXPECT_TRUE(picture.hides(0, -1e12, 64, 0, -1e9));
  EXPECT_FALSE(picture.hides(-1e12, -1e12, 1e12, 1e12, 1e9));
}

TEST(DepthPicture, NeverHidesWhatAPixelWouldShow) {
  std::mt19937 random(8);
  std::uniform_real_distribution<float> depths(0.0F, 20.0F);
  std::uniform_int_distribution<int> places(0, 74);
  DepthPicture picture(75, 75, {});
  for (int row = 0; row < 75; ++row) {
    for (int column = 0; column < 75; ++column) {
      picture.depths(row)[column] = depths(random);
    }
  }
  picture.summarise();
  for (int round = 0; round < 2000; ++round) {
    const int left = places(random);
    const int top = places(random);
    const int right = left + 1 + places(random) % 5;
    const int bottom = top + 1 + places(random) % 5;
    const float nearest = 15.0F + depths(random) * 0.25F;
    if (!picture.hides(left, top, right, bottom, static_cast<double>(nearest))) {
      continue;
    }
    for (int row = top; row < (std::min)(bottom, 75); ++row) {
      for (int column = left; column < (std::min)(right, 75); ++column) {
        ASSERT_LE(picture.depth(column, row), nearest);
      }
    }
  }
}

TEST(HidesAll, NeedsEveryPixelNearer) {
  std::vector<float> depths(37, 3.0F);
  EXPECT_TRUE(host::hidesAll(depths, 3.0F));
  EXPECT_FALSE(host::hidesAll(depths, 2.5F));
  for (std::size_t i = 0; i < depths.size(); ++i) {
    depths[i] = 4.0F;
    EXPECT_FALSE(host::hidesAll(depths, 3.5F)) << i;
    depths[i] = 3.0F;
  }
}
