// The pixel grid of the slice pictures, in numbers worked out by hand.
#include <cmath>
#include <gtest/gtest.h>
#include <stdexcept>

#include "host/picture/SliceGeometry.h"

namespace {

using host::SliceGeometry;
using host::Vector3;
using host::View;

// 160 x 120 x 200 cells of 0.5 mm: from -40 to 40, -30 to 30 and -50 to 50 mm.
const SliceGeometry grid(0.5, {40, 30, 50});

void expectPoint(const Vector3& found, double x, double y, double z) {
  EXPECT_DOUBLE_EQ(found.x, x);
  EXPECT_DOUBLE_EQ(found.y, y);
  EXPECT_DOUBLE_EQ(found.z, z);
}

}  // namespace

TEST(SliceGeometry, HasAnEvenNumberOfCellsThatHoldTheReach) {
  EXPECT_EQ(grid.pixels(0), 160);
  EXPECT_EQ(grid.pixels(1), 120);
  EXPECT_EQ(grid.pixels(2), 200);
  EXPECT_EQ(SliceGeometry(0.5, {40.1, 0, -3}).pixels(0), 162);
  EXPECT_EQ(SliceGeometry(0.5, {40.1, 0, -3}).pixels(1), 2);
  EXPECT_EQ(SliceGeometry(0.5, {40.1, 0, -3}).pixels(2), 12);
  EXPECT_EQ(SliceGeometry(1.0, {1e9, 1, 1}).pixels(0), 600);
}

TEST(SliceGeometry, LaysTheAxesOfEachViewOnThePicture) {
  EXPECT_EQ(grid.columns(View::axial), 160);
  EXPECT_EQ(grid.rows(View::axial), 200);
  EXPECT_EQ(grid.columns(View::coronal), 160);
  EXPECT_EQ(grid.rows(View::coronal), 120);
  EXPECT_EQ(grid.columns(View::sagittal), 200);
  EXPECT_EQ(grid.rows(View::sagittal), 120);
}

TEST(SliceGeometry, SamplesTheCentresOfTheCells) {
  expectPoint(grid.headPoint(View::axial, 7, 0, 0), -39.75, 7, 49.75);
  expectPoint(grid.headPoint(View::axial, 7, 159, 199), 39.75, 7, -49.75);
  expectPoint(grid.headPoint(View::coronal, 7, 0, 0), -39.75, 29.75, 7);
  expectPoint(grid.headPoint(View::sagittal, 7, 0, 0), 7, 29.75, -49.75);
  expectPoint(grid.headPoint(View::sagittal, 7, 199, 119), 7, -29.75, 49.75);
}

TEST(SliceGeometry, FindsThePixelOfEveryCellAgain) {
  for (const View view : {View::axial, View::coronal, View::sagittal})
    for (int row = 0; row < grid.rows(view); ++row)
      for (int column = 0; column < grid.columns(view); ++column) {
        const auto pixel = grid.pixelOf(view, grid.headPoint(view, 3, column, row));
        ASSERT_EQ(pixel.column, column);
        ASSERT_EQ(pixel.row, row);
      }
}

TEST(SliceGeometry, PutsPointsBeyondTheGridAtItsBorder) {
  EXPECT_EQ(grid.pixelOf(View::axial, {1000, 0, 1000}).column, 160);
  EXPECT_EQ(grid.pixelOf(View::axial, {1000, 0, 1000}).row, 0);
  EXPECT_EQ(grid.pixelOf(View::axial, {-1000, 0, -1000}).column, 0);
  EXPECT_EQ(grid.pixelOf(View::axial, {-1000, 0, -1000}).row, 200);
  EXPECT_FALSE(grid.holds(View::axial, {41, 0, 0}));
  EXPECT_FALSE(grid.holds(View::axial, {0, 0, -51}));
  EXPECT_TRUE(grid.holds(View::axial, {39, 1000, -49}));  // its depth is not in the plane
}

TEST(SliceGeometry, CountsSlicesFromTheOrigin) {
  EXPECT_EQ(grid.sliceAt(View::axial, 0), 60);
  EXPECT_EQ(grid.sliceAt(View::axial, 58), 176);
  EXPECT_EQ(grid.sliceAt(View::coronal, 0.2), 100);
  EXPECT_EQ(grid.sliceAt(View::coronal, 0.3), 101);
  EXPECT_EQ(grid.sliceAt(View::sagittal, -100), -120);
  EXPECT_EQ(grid.slicePosition(View::sagittal, -120), -100.0);
  EXPECT_THROW((void)grid.sliceAt(View::axial, 1e9), std::invalid_argument);
  EXPECT_THROW((void)grid.sliceAt(View::axial, std::nan("")), std::invalid_argument);
}

TEST(SliceGeometry, GivesTheSlabsThatTheModuleSearches) {
  EXPECT_EQ(grid.slab(View::coronal, 124).from, 11.75);
  EXPECT_EQ(grid.slab(View::coronal, 124).to, 12.25);
  EXPECT_EQ(grid.slab(View::sagittal, 80).from, -0.25);
  EXPECT_EQ(grid.slab(View::axial, 176).from, 0.0);
  EXPECT_EQ(grid.slab(View::axial, 176).to, 58.25);
  EXPECT_TRUE(grid.slab(View::axial, 60).holds(0.0));
  EXPECT_FALSE(grid.slab(View::axial, 59).holds(0.0));
  EXPECT_FALSE(grid.slab(View::axial, 59).holds(-0.5));
}

TEST(SliceGeometry, RefusesImpossibleNumbers) {
  EXPECT_THROW(SliceGeometry(0.05, {1, 1, 1}), std::invalid_argument);
  EXPECT_THROW(SliceGeometry(6, {1, 1, 1}), std::invalid_argument);
  EXPECT_THROW(SliceGeometry(std::nan(""), {1, 1, 1}), std::invalid_argument);
  EXPECT_THROW(SliceGeometry(1, {1, std::nan(""), 1}), std::invalid_argument);
}
