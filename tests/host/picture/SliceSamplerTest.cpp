// The samples of a slice are those of the volume, wherever the slice lies.
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <stdexcept>
#include <vector>

#include "host/picture/SliceSampler.h"
#include "tests/host/head/Phantom.h"

namespace {

using host::Affine;
using host::GreyWindow;
using host::HeadFrame;
using host::SampleGrid;
using host::Vector3;
using host::Volume;

Volume noise(const std::array<int, 3>& dimensions, const Affine& toScanner) {
  std::mt19937 random(5);
  std::uniform_real_distribution<float> value(-200.0F, 1800.0F);
  std::vector<float> voxels(static_cast<std::size_t>(dimensions[0]) *
                            static_cast<std::size_t>(dimensions[1]) *
                            static_cast<std::size_t>(dimensions[2]));
  for (float& voxel : voxels) {
    voxel = value(random);
  }
  return {dimensions, std::move(voxels), toScanner};
}

void expectSamplesOfVolume(const Volume& volume, const HeadFrame& frame, const SampleGrid& grid) {
  const std::vector<float> values = sampleSlice(volume, frame, grid);
  ASSERT_EQ(values.size(), static_cast<std::size_t>(grid.columns * grid.rows));
  std::size_t at = 0;
  for (int row = 0; row < grid.rows; ++row) {
    for (int column = 0; column < grid.columns; ++column, ++at) {
      const Vector3 place = grid.first + grid.perColumn * column + grid.perRow * row;
      ASSERT_NEAR(static_cast<double>(values[at]), volume.sampleScanner(frame.toScanner(place)), 1e-3)
          << "column " << column << ", row " << row;
    }
  }
}

}  // namespace

TEST(SliceSampler, SamplesAreThoseOfTheVolumeOnAnyPlane) {
  const HeadFrame frame = tiltedFrame();
  const Volume volume = noise({23, 31, 17}, {{-3, 0.2, 0}, {0, 3, 0.1}, {0.3, 0, 4}, {30, -50, -40}});
  std::mt19937 random(8);
  std::uniform_real_distribution<double> place(-70.0, 70.0);
  std::uniform_real_distribution<double> step(-2.0, 2.0);
  for (int i = 0; i < 60; ++i) {
    expectSamplesOfVolume(volume, frame,
                          {{place(random), place(random), place(random)},
                           {step(random), step(random), step(random)},
                           {step(random), step(random), step(random)},
                           70,
                           50});
  }
}

TEST(SliceSampler, PlanesAlongTheVoxelsAreSampledUpToTheLastVoxelAndBeyond) {
  // The head frame is the scanner's with left, up and front; voxels of 2 mm on the same axes.
  const HeadFrame frame({{0, 90, 0}, {-75, 0, 0}, {75, 0, 0}});
  const Volume volume = noise({20, 20, 20}, {{2, 0, 0}, {0, 2, 0}, {0, 0, 2}, {-19, -19, -19}});
  for (const double depth : {-21.5, -21.0, -19.0, -18.99, 0.0, 18.99, 19.0, 20.9, 21.0, 30.0}) {
    expectSamplesOfVolume(volume, frame, {{-30, depth, -30}, {1, 0, 0}, {0, 0, 1}, 61, 61});
  }
}

TEST(SliceSampler, AVolumeOfOneSliceFadesToBothSides) {
  const HeadFrame frame({{0, 90, 0}, {-75, 0, 0}, {75, 0, 0}});
  const Volume volume = noise({20, 20, 1}, {{2, 0, 0}, {0, 2, 0}, {0, 0, 2}, {-19, -19, 0}});
  for (const double depth : {-2.0, -1.0, 0.0, 0.5, 2.0}) {
    expectSamplesOfVolume(volume, frame, {{-30, depth, -30}, {1, 0, 0}, {0, 0, 1}, 61, 61});
  }
}

TEST(SliceSampler, GreysAreThoseOfTheWindow) {
  const GreyWindow window{-17.5, 913.25};
  std::vector<float> values;
  for (int i = 0; i < 200 * 100; ++i) {
    values.push_back(static_cast<float>(-60.0 + i * 0.0511));
  }
  const host::Image picture = host::greyPicture(values, 200, 100, window);
  for (int row = 0; row < 100; ++row) {
    for (int column = 0; column < 200; ++column) {
      const std::uint8_t grey = window.grey(static_cast<double>(
          values[static_cast<std::size_t>(row) * 200 + static_cast<std::size_t>(column)]));
      ASSERT_EQ(picture.pixel(column, row), (host::Rgb{grey, grey, grey}));
    }
  }
  EXPECT_EQ(picture.pixel(0, 0).red, 0);
  EXPECT_EQ(picture.pixel(199, 99).red, 255);
}

TEST(SliceSampler, AWindowWithoutWidthIsAStep) {
  const std::vector<float> values{99.0F, 100.0F, 101.0F};
  const host::Image picture = host::greyPicture(values, 3, 1, {100.0, 100.0});
  EXPECT_EQ(picture.pixel(0, 0).red, 0);
  EXPECT_EQ(picture.pixel(1, 0).red, 0);
  EXPECT_EQ(picture.pixel(2, 0).red, 255);
}
