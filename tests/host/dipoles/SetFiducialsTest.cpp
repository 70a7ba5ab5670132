// The points of a dipole file stand in the right places of an MRI however its voxel axes lie, and are refused
// where that is not certain.
#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include "host/dipoles/SetFiducials.h"
#include "host/head/HeadFile.h"
#include "module/dipole.h"
#include "tests/host/text/Failing.h"

namespace {

using host::Vector3;
using Slices = std::array<Vector3, 3>;  // nasion, left ear, right ear: sagittal, coronal, axial

constexpr double voxel = 3.4375;                      // mm
constexpr std::array<int, 3> extents = {64, 72, 60};  // slices
constexpr Vector3 middle = {10, -7, 3};               // scanner mm
const Slices usual = {{{31, 11, 33}, {9, 34, 42}, {54, 32, 43}}};

std::unique_ptr<CDipoleFace9File> setOf(const Slices& slices, double scale = voxel) {
  auto set = std::make_unique<CDipoleFace9File>();
  const auto store = [](CFiducialzq& points, const Slices& values) {
    points.setNasionf(values[0].x, values[0].y, values[0].z);
    points.setLeftEarf(values[1].x, values[1].y, values[1].z);
    points.setRightEarf(values[2].x, values[2].y, values[2].z);
  };
  Slices stored;
  Slices head;
  std::transform(slices.begin(), slices.end(), stored.begin(), [](const Vector3& s) {
    return Vector3{256 - s.x, 256 - s.z, 256 - s.y};
  });
  std::transform(slices.begin(), slices.end(), head.begin(), [scale](const Vector3& s) { return s * scale; });
  store(set->m_fiducialMri, stored);
  store(set->m_fiducialCtf, head);
  return set;
}

// Where slices counted from the left, the front and the top lie, relative to the middle, mm.
Vector3 offsetOf(const Vector3& slices) {
  return {(slices.x - (extents[0] - 1) / 2.0) * voxel, ((extents[1] - 1) / 2.0 - slices.y) * voxel,
          ((extents[2] - 1) / 2.0 - slices.z) * voxel};
}

// Turned about the z axis.
Vector3 turned(const Vector3& v, double angle) {
  return {std::cos(angle) * v.x - std::sin(angle) * v.y, std::sin(angle) * v.x + std::cos(angle) * v.y, v.z};
}

// The MRI with its voxel axes in an order of the scanner's axes, each along it or against it, and then
// turned.
host::Volume volumeOf(const std::array<int, 3>& order, unsigned along, double angle = 0.0,
                      bool sidesStated = true) {
  std::array<int, 3> dimensions{};
  std::array<Vector3, 3> columns;
  Vector3 first;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const auto scanner = static_cast<std::size_t>(order[axis]);
    const double sign = ((along >> axis) & 1U) != 0 ? 1.0 : -1.0;
    dimensions[axis] = extents[scanner];
    columns[axis][static_cast<int>(scanner)] = sign * voxel;
    columns[axis] = turned(columns[axis], angle);
    first = first - columns[axis] * ((extents[scanner] - 1) / 2.0);
  }
  const host::Affine toScanner(columns[0], columns[1], columns[2], middle + first);
  return {dimensions, std::vector<float>(std::size_t{64} * 72 * 60, 1.0F), toScanner, sidesStated};
}

void expectPlace(const Vector3& place, const Vector3& expected) {
  EXPECT_NEAR(place.x, expected.x, 1e-9);
  EXPECT_NEAR(place.y, expected.y, 1e-9);
  EXPECT_NEAR(place.z, expected.z, 1e-9);
}

void expectUsual(const host::Fiducials& points, double angle = 0.0) {
  expectPlace(points.nasion, middle + turned(offsetOf(usual[0]), angle));
  expectPlace(points.leftEar, middle + turned(offsetOf(usual[1]), angle));
  expectPlace(points.rightEar, middle + turned(offsetOf(usual[2]), angle));
}

Slices countedFromTheRight(Slices slices) {
  for (Vector3& point : slices) {
    point.x = extents[0] - 1 - point.x;
  }
  return slices;
}

std::string causeOf(const CDipoleFace& set, const host::Volume& volume) {
  return failureOf([&] { (void)host::fiducialsOfSet(set, volume); });
}

const host::Volume& plain() {
  static const host::Volume volume = volumeOf({0, 1, 2}, 7);
  return volume;
}

}  // namespace

TEST(SetFiducials, StandInTheirPlacesForEveryOrderAndDirectionOfVoxelAxes) {
  const auto set = setOf(usual);
  std::array<int, 3> order = {0, 1, 2};
  do {
    for (unsigned along = 0; along < 8; ++along) {
      expectUsual(host::fiducialsOfSet(*set, volumeOf(order, along)));
    }
  } while (std::next_permutation(order.begin(), order.end()));
}

TEST(SetFiducials, LeftEarIsOnTheScannersLeft) {
  const host::Fiducials points = host::fiducialsOfSet(*setOf(usual), plain());
  EXPECT_LT(points.leftEar.x, middle.x);
  EXPECT_GT(points.rightEar.x, middle.x);
  EXPECT_GT(points.nasion.y, middle.y);
}

TEST(SetFiducials, SlicesOfAnMriWithLeftOnRightCountFromTheRight) {
  const auto set = setOf(countedFromTheRight(usual));
  expectUsual(host::fiducialsOfSet(*set, plain()));
  expectUsual(host::fiducialsOfSet(*set, volumeOf({2, 0, 1}, 0)));
}

TEST(SetFiducials, MriMayBeTilted) {
  for (const double angle : {0.4, -0.7}) {
    expectUsual(host::fiducialsOfSet(*setOf(usual), volumeOf({1, 2, 0}, 2, angle)), angle);
  }
}

TEST(SetFiducials, RefusedWithoutPoints) {
  EXPECT_EQ(causeOf(CDipoleFace9File(), plain()), "the dipole file gave no fiducial points of an MRI");
  const auto two = setOf(usual);
  two->m_fiducialMri.m_points[CFiducial::rightEar] = CFiduciaryPtzq();
  EXPECT_EQ(causeOf(*two, plain()), "the dipole file gave no fiducial points of an MRI");
}

TEST(SetFiducials, RefusedWithoutAnythingToCheckThemBy) {
  const auto set = setOf(usual);
  set->m_fiducialCtf.resetAllFiducialPt();
  EXPECT_EQ(causeOf(*set, plain()),
            "the dipole file gave no head sphere, so its fiducial points cannot be checked");
}

TEST(SetFiducials, RefusedWhereSidesAreOnlyAssumed) {
  EXPECT_EQ(
      causeOf(*setOf(usual), volumeOf({0, 1, 2}, 7, 0.0, false)),
      "this MRI does not state its sides: the fiducial points of the dipole file cannot be placed in it");
}

TEST(SetFiducials, RefusedOutsideOfTheMri) {
  for (int axis = 0; axis < 3; ++axis) {
    for (const double number : {-1.0, static_cast<double>(extents[static_cast<std::size_t>(axis)])}) {
      Slices slices = usual;
      slices[0][axis] = number;
      EXPECT_EQ(causeOf(*setOf(slices), plain()),
                "the fiducial points of the dipole file lie outside of this MRI: they are of another one");
    }
  }
}

TEST(SetFiducials, RefusedWhenTheDistancesAreOfAnotherMri) {
  const double ears = length(usual[1] - usual[2]);
  EXPECT_EQ(causeOf(*setOf(usual, voxel - 9.9 / ears), plain()), "");
  EXPECT_EQ(
      causeOf(*setOf(usual, voxel - 11.0 / ears), plain()),
      "the distances between the fiducial points of the dipole file differ by 11 mm in this MRI: it is not "
      "the one they were set in");
  EXPECT_NE(causeOf(*setOf(usual, std::nan("")), plain()), "");
}

TEST(SetFiducials, RefusedWhenTheyAreNoHead) {
  Slices level = usual;
  level[1].x = level[2].x = 31;
  level[1].z = 20;
  EXPECT_EQ(causeOf(*setOf(level), plain()).substr(0, 61),
            "the fiducial points of the dipole file do not fit this MRI: t");
  Slices behind = usual;
  behind[0].y = 70;
  EXPECT_NE(causeOf(*setOf(behind), plain()).find("the nasion is not in front of the ears"),
            std::string::npos);
}

namespace {

std::string mismatchOf(const CDipoleFace9File& set, const host::Fiducials& head) {
  return host::headMismatch(host::measuredPoints(set).value(), head);
}

}  // namespace

TEST(HeadMismatch, WarnsAboveTenMillimetres) {
  const host::Fiducials head = {usual[0] * voxel, usual[1] * voxel, usual[2] * voxel};
  const double ears = length(usual[1] - usual[2]);
  EXPECT_EQ(mismatchOf(*setOf(usual), head), "");
  EXPECT_EQ(mismatchOf(*setOf(usual, voxel + 9.9 / ears), head), "");
  EXPECT_EQ(
      mismatchOf(*setOf(usual, voxel + 12.0 / ears), head),
      "the distances between the fiducial points differ by 12 mm from those in the dipole file: is this the "
      "same head?");
  EXPECT_EQ(
      mismatchOf(*setOf(usual, std::nan("")), head),
      "the distances between the fiducial points differ by a distance that is not a number from those in the "
      "dipole file: is this the same head?");
}

TEST(HeadMismatch, SaysNothingOfPointsThatTheModuleMadeUp) {
  const auto set = setOf(usual, 9.0);
  const host::Head head = host::phantomHead();
  EXPECT_NE(host::headMismatch(*set, head), "");
  set->m_fiducialMri.resetAllFiducialPt();
  EXPECT_EQ(host::headMismatch(*set, head), "");
  EXPECT_EQ(host::headMismatch(CDipoleFace9File(), head), "");
}
