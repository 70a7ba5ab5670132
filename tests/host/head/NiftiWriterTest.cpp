// What is written as NIfTI is read back as it was, by the sform and by the qform alone.
#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "host/head/HeadReader.h"
#include "host/head/NiftiWriter.h"
#include "host/text/PathText.h"
#include "tests/host/head/NiftiFile.h"
#include "tests/host/text/Failing.h"
#include "tests/support/TempFolder.h"

namespace {

using host::Affine;
using host::MriSpace;
using host::Vector3;
using host::Volume;

constexpr std::array<int, 3> dimensions = {2, 3, 4};

std::vector<float> voxels(float factor, float shift) {
  std::vector<float> values(24);
  for (std::size_t i = 0; i < values.size(); ++i) {
    values[i] = static_cast<float>(i) * factor + shift;
  }
  return values;
}

// A turn of a random axis and side, with voxels of different sizes.
Affine randomMap(std::mt19937& random, bool isMirrored) {
  std::normal_distribution<double> normal;
  const auto unit = [](const Vector3& v) { return v * (1.0 / host::length(v)); };
  const Vector3 x = unit({normal(random), normal(random), normal(random)});
  const Vector3 y = unit(host::cross(x, {normal(random), normal(random), normal(random)}));
  const Vector3 z = host::cross(x, y) * (isMirrored ? -1.0 : 1.0);
  return {x * 0.9, y * 1.1, z * 2.5, {normal(random) * 100, normal(random) * 100, normal(random) * 100}};
}

// What single precision leaves of a map in its qform, mm. The quaternion's first part a is the root of
// what the squares of the other three leave of 1. Each of these is rounded by at most 2^-25, so the
// sum of their squares by at most 2 sqrt(3) 2^-25 = 1.04e-7, and a by at most that over a; where a
// square below 1e-7 is left, a is taken as 0, and is at most the root of 2.04e-7, 4.6e-4, off. A
// column changes by at most twice that times its length, 2.5 mm.
double qformError(const Affine& map) {
  const auto unit = [](const Vector3& v) { return v * (1.0 / host::length(v)); };
  const Vector3 x = unit(map.column(0));
  const Vector3 y = unit(map.column(1));
  const double a = std::sqrt(std::max(0.0, 1.0 + x.x + y.y + host::cross(x, y).z)) / 2.0;
  const double errorOfA = a > 4.6e-4 ? std::min(4.6e-4, 1.04e-7 / a) : 4.6e-4;
  return 2.0 * 2.5 * errorOfA + 1e-5;
}

void expectNear(const Affine& found, const Affine& expected, double error = 1e-5) {
  for (int column = 0; column < 3; ++column) {
    EXPECT_NEAR(host::length(found.column(column) - expected.column(column)), 0, error);
  }
  EXPECT_NEAR(host::length(found.shift() - expected.shift()), 0, 1e-4);
}

}  // namespace

TEST(NiftiWriter, ValuesComeBackInTheTypeThatHoldsThem) {
  const TempFolder folder;
  const std::array<std::array<double, 3>, 4> cases = {
      {{2000, 0, 512}, {2000, -30000, 4}, {0.5, 0, 16}, {5000, -30000, 16}}};
  for (const auto& [factor, shift, type] : cases) {
    for (const char* name : {"a.nii", "b.nii.gz"}) {
      const auto values = voxels(static_cast<float>(factor), static_cast<float>(shift));
      host::writeNifti(folder.path(name), Volume(dimensions, values, Affine()), MriSpace::scanner);
      EXPECT_EQ(host::readHead(host::pathOf(folder.path(name))).volume.voxels(), values) << factor;
    }
    EXPECT_EQ(folder.read("a.nii").at(70) + 256 * folder.read("a.nii").at(71), static_cast<int>(type));
    EXPECT_EQ(folder.read("b.nii.gz").substr(0, 2), "\x1F\x8B");
  }
}

TEST(NiftiWriter, PlacesComeBackBySformAndByQform) {
  const TempFolder folder;
  std::mt19937 random(20061206);
  for (int i = 0; i < 200; ++i) {
    const Affine map = randomMap(random, i % 2 == 1);
    const CString path = folder.path("a.nii");
    host::writeNifti(path, Volume(dimensions, voxels(1, 0), map), MriSpace::scanner);
    const host::ReadHead head = host::readHead(host::pathOf(path));
    EXPECT_EQ(head.source.sides, "the file's sform");
    expectNear(head.volume.toScanner(), map);
    std::string bytes = folder.read("a.nii");
    put(bytes, 254, std::int16_t{0}, std::endian::little);
    const host::ReadHead turned = host::readHead(host::pathOf(folder.write("b.nii", bytes)));
    EXPECT_EQ(turned.source.sides, "the file's qform");
    expectNear(turned.volume.toScanner(), map, qformError(map));
  }
}

TEST(NiftiWriter, HalfTurnsComeBackByQform) {
  const TempFolder folder;
  for (const Affine& map :
       {Affine({-1, 0, 0}, {0, -1, 0}, {0, 0, 1}, {}), Affine({-1, 0, 0}, {0, 1, 0}, {0, 0, -1}, {}),
        Affine({1, 0, 0}, {0, -1, 0}, {0, 0, -1}, {}), Affine({0, 1, 0}, {1, 0, 0}, {0, 0, -1}, {}),
        Affine({0, -1, 0}, {0, 0, -1}, {1, 0, 0}, {})}) {
    host::writeNifti(folder.path("a.nii"), Volume(dimensions, voxels(1, 0), map), MriSpace::scanner);
    std::string bytes = folder.read("a.nii");
    put(bytes, 254, std::int16_t{0}, std::endian::little);
    expectNear(host::readHead(host::pathOf(folder.write("b.nii", bytes))).volume.toScanner(), map);
  }
}

TEST(NiftiWriter, SidesThatAreNotKnownStayUnknown) {
  const TempFolder folder;
  host::writeNifti(folder.path("a.nii"), Volume(dimensions, voxels(1, 0), Affine(), false),
                   MriSpace::scanner);
  EXPECT_FALSE(host::readHead(host::pathOf(folder.path("a.nii"))).volume.sidesStated());
}

TEST(NiftiWriter, TheSpaceComesBackAndOnlyTheScannersFrameIsCalledSo) {
  const TempFolder folder;
  for (const int code : {0, 1, 2, 3, 4, 5}) {
    const auto space = static_cast<MriSpace>(code);
    host::writeNifti(folder.path("a.nii"), Volume(dimensions, voxels(1, 0), Affine()), space);
    for (const std::size_t at : {252U, 254U}) {
      EXPECT_EQ(folder.read("a.nii").at(at), space == MriSpace::middle ? 2 : code);
    }
    const host::ReadHead head = host::readHead(host::pathOf(folder.path("a.nii")));
    EXPECT_EQ(head.source.space, space);
    EXPECT_EQ(head.source.spaceCode, "sform code " + std::to_string(code == 0 ? 2 : code));
  }
  // Others' code 2 is not the middle of the volume, and no scanner's.
  host::writeNifti(folder.path("a.nii"), Volume(dimensions, voxels(1, 0), Affine()), MriSpace::middle);
  std::string bytes = folder.read("a.nii");
  bytes[148] = 'x';
  EXPECT_EQ(host::readHead(host::pathOf(folder.write("b.nii", bytes))).source.space, MriSpace::aligned);
  put(bytes, 254, std::int16_t{0}, std::endian::little);
  put(bytes, 252, std::int16_t{4}, std::endian::little);
  const host::ReadHead turned = host::readHead(host::pathOf(folder.write("b.nii", bytes)));
  EXPECT_EQ(turned.source.space, MriSpace::mni);
  EXPECT_EQ(turned.source.spaceCode, "qform code 4");
}

TEST(NiftiWriter, SkewAxesHaveNoQform) {
  const TempFolder folder;
  const Affine skew({1, 0, 0}, {0.1, 1, 0}, {0, 0, 1}, {});
  host::writeNifti(folder.path("a.nii"), Volume(dimensions, voxels(1, 0), skew), MriSpace::scanner);
  EXPECT_EQ(folder.read("a.nii").at(252), 0);
  expectNear(host::readHead(host::pathOf(folder.path("a.nii"))).volume.toScanner(), skew);
}

TEST(NiftiWriter, RefusesMoreVoxelsAlongAnAxisThanTheHeaderCounts) {
  const TempFolder folder;
  constexpr int most = 32767;
  const auto write = [&](const std::array<int, 3>& size) {
    const std::vector<float> values(std::size_t{most} + (size[0] + size[1] + size[2] > most + 2 ? 1 : 0));
    return failureOf(
        [&] { host::writeNifti(folder.path("a.nii"), Volume(size, values, Affine()), MriSpace::scanner); });
  };
  const std::string cause = "the volume is too large for a NIfTI-1 file: 32768 voxels along an axis";
  EXPECT_EQ(write({most + 1, 1, 1}), cause);
  EXPECT_EQ(write({1, most + 1, 1}), cause);
  EXPECT_EQ(write({1, 1, most + 1}), cause);
  EXPECT_EQ(folder.names(), std::vector<std::string>());
  EXPECT_EQ(write({1, 1, most}), "");
  EXPECT_EQ(host::readHead(host::pathOf(folder.path("a.nii"))).volume.dimensions()[2], most);
}
