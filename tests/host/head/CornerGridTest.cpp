// Claim: a place in scanner mm is counted from the corner of the volume to the left, up and to the front,
// whichever way the voxels' axes lie.

#include <gtest/gtest.h>
#include <vector>

#include "host/head/CornerGrid.h"

namespace {

using host::Affine;
using host::CornerGrid;
using host::Vector3;
using host::Volume;

Volume volumeOf(const std::array<int, 3>& dimensions, const Affine& toScanner) {
  const std::size_t count = static_cast<std::size_t>(dimensions[0]) *
                            static_cast<std::size_t>(dimensions[1]) * static_cast<std::size_t>(dimensions[2]);
  return {dimensions, std::vector<float>(count), toScanner};
}

void expectPlace(const CornerGrid& grid, const Vector3& scanner, const Vector3& wanted) {
  const Vector3 place = grid(scanner);
  for (int axis = 0; axis < 3; ++axis) {
    EXPECT_NEAR(place[axis], wanted[axis], 1e-9) << axis;
  }
}

TEST(CornerGrid, CountsToTheLeftUpAndToTheFront) {
  // Voxels of 2, 3 and 4 mm to the right, forward and up; the first at -10, -20, -30.
  const CornerGrid grid(volumeOf({11, 12, 13}, Affine({2, 0, 0}, {0, 3, 0}, {0, 0, 4}, {-10, -20, -30})));
  EXPECT_EQ(grid.dimension(), (std::array<int, 3>{11, 13, 12}));
  EXPECT_EQ(grid.spacing(), (std::array<float, 3>{2, 4, 3}));
  expectPlace(grid, {-10, -20, -30}, {20, 0, 0});
  expectPlace(grid, {10, -17, -22}, {0, 8, 3});
}

TEST(CornerGrid, DoesNotDependOnTheOrderOfTheVoxels) {
  // The same places: first up from above, then to the left, then forward.
  const CornerGrid grid(volumeOf({13, 11, 12}, Affine({0, 0, -4}, {-2, 0, 0}, {0, 3, 0}, {10, -20, 18})));
  EXPECT_EQ(grid.dimension(), (std::array<int, 3>{11, 13, 12}));
  EXPECT_EQ(grid.spacing(), (std::array<float, 3>{2, 4, 3}));
  expectPlace(grid, {-10, -20, -30}, {20, 0, 0});
  expectPlace(grid, {10, -17, -22}, {0, 8, 3});
}

TEST(CornerGrid, CountsAlongTheVoxelsOfATiltedVolume) {
  // Voxels of 2, 5 and 4 mm, turned about the axis to the right by the angle whose sine is 0.6.
  const CornerGrid grid(
      volumeOf({11, 12, 13}, Affine({2, 0, 0}, {0, 4, 3}, {0, -2.4, 3.2}, {-10, -20, -30})));
  EXPECT_EQ(grid.dimension(), (std::array<int, 3>{11, 13, 12}));
  EXPECT_EQ(grid.spacing(), (std::array<float, 3>{2, 4, 5}));
  expectPlace(grid, {-10, -20, -30}, {20, 0, 0});
  expectPlace(grid, {-8, -12, -24}, {18, 0, 10});      // one voxel to the right, two forward
  expectPlace(grid, {-10, -22.4, -26.8}, {20, 4, 0});  // one up
  expectPlace(grid, {-10, -18, -28.5}, {20, 0, 2.5});  // half of one forward
}

TEST(CornerGrid, CountsOnBeyondTheVolume) {
  const CornerGrid grid(volumeOf({3, 3, 3}, Affine({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0})));
  expectPlace(grid, {5, -4, 7}, {-3, 7, -4});
}

}  // namespace
