// Sampling and the grey window of a volume.
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>

#include "host/head/Volume.h"

namespace {

using host::Affine;
using host::Volume;

const Affine identity;

// 0 1 2 3 4 5 6 7 at the corners of a cube of 2 voxels.
Volume cube(const Affine& toScanner = identity) {
  return {{2, 2, 2}, {0, 1, 2, 3, 4, 5, 6, 7}, toScanner};
}

}  // namespace

TEST(Volume, SamplesVoxelCentresExactly) {
  EXPECT_EQ(cube().sampleIndex({1, 0, 0}), 1.0);
  EXPECT_EQ(cube().sampleIndex({0, 1, 0}), 2.0);
  EXPECT_EQ(cube().sampleIndex({0, 0, 1}), 4.0);
  EXPECT_EQ(cube().sampleIndex({1, 1, 1}), 7.0);
}

TEST(Volume, SamplesLinearlyBetweenThem) {
  EXPECT_DOUBLE_EQ(cube().sampleIndex({0.25, 0, 0}), 0.25);
  EXPECT_DOUBLE_EQ(cube().sampleIndex({0, 0.25, 0}), 0.5);
  EXPECT_DOUBLE_EQ(cube().sampleIndex({0, 0, 0.25}), 1.0);
  EXPECT_DOUBLE_EQ(cube().sampleIndex({0.5, 0.5, 0.5}), 3.5);
}

TEST(Volume, FadesToTheBackgroundOutside) {
  EXPECT_DOUBLE_EQ(cube().sampleIndex({1.5, 1, 1}), 3.5);
  EXPECT_DOUBLE_EQ(cube().sampleIndex({1, 1, -0.5}), 1.5);
  EXPECT_EQ(cube().sampleIndex({2, 1, 1}), 0.0);
  EXPECT_EQ(cube().sampleIndex({-1, 1, 1}), 0.0);
  EXPECT_EQ(cube().sampleIndex({1e300, 0, 0}), 0.0);
  EXPECT_EQ(cube().sampleIndex({std::nan(""), 0, 0}), 0.0);
}

TEST(Volume, SamplesAtScannerMm) {
  const Affine map({0, 2, 0}, {-3, 0, 0}, {0, 0, 4}, {10, 20, 30});
  EXPECT_DOUBLE_EQ(cube(map).sampleScanner({7, 22, 34}), 7.0);
  EXPECT_DOUBLE_EQ(cube(map).sampleScanner({10, 21, 30}), 0.5);
}

TEST(Volume, TakesTheLowestNegativeVoxelAsBackground) {
  const Volume volume({2, 1, 1}, {-1000, 40}, identity);
  EXPECT_EQ(volume.background(), -1000.0);
  EXPECT_EQ(volume.sampleIndex({9, 0, 0}), -1000.0);
}

TEST(Volume, MakesVoxelsThatAreNotFiniteZero) {
  const float infinity = std::numeric_limits<float>::infinity();
  const Volume volume({4, 1, 1}, {std::nanf(""), infinity, -infinity, 5}, identity);
  EXPECT_EQ(volume.voxels(), (std::vector<float>{0, 0, 0, 5}));
}

TEST(Volume, WindowsFromThe2ndToThe995thOfAThousand) {
  std::vector<float> values(2000, 0.0F);  // half of it is background, which does not count
  for (int i = 0; i < 1000; ++i) {
    values[static_cast<std::size_t>(i) * 2] = static_cast<float>(i + 1);
  }
  const Volume volume({2000, 1, 1}, values, identity);
  EXPECT_EQ(volume.window().low, 20.0);    // the value of rank 19.98, cut, from 0
  EXPECT_EQ(volume.window().high, 995.0);  // of rank 994.005
}

TEST(Volume, ShowsTheWindowFromBlackToWhite) {
  const host::GreyWindow window{100, 300};
  EXPECT_EQ(window.grey(50), 0);
  EXPECT_EQ(window.grey(100), 0);
  EXPECT_EQ(window.grey(200), 128);
  EXPECT_EQ(window.grey(300), 255);
  EXPECT_EQ(window.grey(1e30), 255);
}

TEST(Volume, ShowsTheOnlyValueBesidesTheBackgroundAsWhite) {
  const Volume volume({3, 1, 1}, {0, 7, 7}, identity);
  EXPECT_EQ(volume.window().grey(7), 255);
  EXPECT_EQ(volume.window().grey(0), 0);
}

TEST(Volume, ShowsAnEmptyVolumeBlack) {
  const Volume volume({2, 1, 1}, {0, 0}, identity);
  EXPECT_EQ(volume.window().grey(0), 0);
}

TEST(Volume, RefusesSizesThatDoNotAgree) {
  EXPECT_THROW(Volume({2, 2, 2}, std::vector<float>(7), identity), std::invalid_argument);
  EXPECT_THROW(Volume({2, 0, 2}, {}, identity), std::invalid_argument);
  EXPECT_THROW(Volume({1, 1, 1}, {1}, Affine({1, 0, 0}, {0, 1, 0}, {0, 0, 0}, {})), std::invalid_argument);
}
