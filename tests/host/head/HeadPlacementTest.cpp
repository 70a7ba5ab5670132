// Where points of the surface and head frames lie in an MRI, and in which MRIs that is known.
#include <array>
#include <cstddef>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/head/HeadFile.h"
#include "host/head/HeadPlacement.h"
#include "host/head/NeuromagFrame.h"
#include "tests/host/text/Failing.h"

namespace {

using host::Affine;
using host::Vector3;

constexpr int extent = 64;
// Stored to the left, down and to the front; the middle (half the size) lies at 5 -7 9.
const Affine conformed({-4, 0, 0}, {0, 0, -4}, {0, 4, 0}, {133, -135, 137});
const host::Fiducials points = {{1, 95, -3}, {-74, -5, 2}, {77, 6, -4}};

host::Head headOf(const Affine& map, bool isMgh, int depth = extent) {
  host::Head head = host::noHead();
  const std::size_t count = static_cast<std::size_t>(extent) * extent * static_cast<std::size_t>(depth);
  head.volume = std::make_shared<const host::Volume>(std::array<int, 3>{extent, extent, depth},
                                                     std::vector<float>(count), map);
  head.source.hasSurfaceFrame = isMgh;
  return head;
}

std::string causeOf(const host::Head& head) {
  return failureOf([&] { (void)host::surfaceToScanner(head); });
}

void expectNear(const Vector3& found, const Vector3& expected) {
  EXPECT_NEAR(length(found - expected), 0.0, 1e-9);
}

}  // namespace

TEST(HeadPlacement, SurfaceFrameOfAConformedMriIsItsMiddle) {
  for (const bool isMgh : {true, false}) {
    const Affine map = host::surfaceToScanner(headOf(conformed, isMgh));
    expectNear(map({0, 0, 0}), {5, -7, 9});
    expectNear(map({10, 20, 30}), {15, 13, 39});
  }
}

TEST(HeadPlacement, SurfaceFrameFollowsTheVoxelsOfAnMghFile) {
  // Axes a quarter turn about the vertical: the second column stays down, left runs to the front.
  const Affine turned({0, 4, 0}, {0, 0, -4}, {4, 0, 0}, {0, 0, 0});
  const Affine map = host::surfaceToScanner(headOf(turned, true));
  expectNear(map({-4, 0, 0}) - map({0, 0, 0}), {0, 4, 0});
  expectNear(map({0, 4, 0}) - map({0, 0, 0}), {4, 0, 0});
  expectNear(map({0, 0, 0}), {128, 128, -128});
}

TEST(HeadPlacement, OtherMrisHaveNoSurfaceFrame) {
  const std::string cause = "surface RAS is not known in this MRI";
  EXPECT_EQ(causeOf(headOf(conformed, false)), "");
  const Affine rightFirst({4, 0, 0}, {0, 0, -4}, {0, 4, 0}, {0, 0, 0});
  const Affine tilted({-4, 0.1, 0}, {0, 0, -4}, {0.1, 4, 0}, {0, 0, 0});
  const Affine unequal({-4, 0, 0}, {0, 0, -4.1}, {0, 4, 0}, {0, 0, 0});
  for (const Affine& map : {rightFirst, tilted, unequal}) {
    EXPECT_TRUE(causeOf(headOf(map, false)).starts_with(cause));
  }
  EXPECT_TRUE(causeOf(headOf(conformed, false, extent - 2)).starts_with(cause));
  EXPECT_EQ(causeOf(headOf(tilted, true)), "");
  EXPECT_NE(causeOf(headOf(rightFirst, true)).find("mirror image"), std::string::npos);
  host::Head without = headOf(conformed, false);
  without.source.space = host::MriSpace::middle;
  EXPECT_TRUE(causeOf(without).starts_with(cause));
  without = headOf(conformed, true);
  without.source.unplaceable = "nobody knows its sides";
  EXPECT_NE(causeOf(without).find("nobody knows its sides"), std::string::npos);
}

TEST(HeadPlacement, PointsAreCarriedToTheScanner) {
  const host::Head head = headOf(conformed, true);
  expectNear(host::inScanner({points, host::PointFrame::scanner}, head).leftEar, points.leftEar);
  expectNear(host::inScanner({points, host::PointFrame::surface}, head).leftEar, {-69, -12, 11});
  EXPECT_NE(failureOf([&] {
              (void)host::inScanner({points, host::PointFrame::head}, head);
            }).find("trans.fif"),
            std::string::npos);
}

TEST(HeadPlacement, PointsAroundTheMiddleOfAVolumeAreNoScanners) {
  using host::MriSpace;
  for (const MriSpace own : {MriSpace::middle, MriSpace::scanner, MriSpace::mni}) {
    for (const MriSpace given : {MriSpace::middle, MriSpace::scanner, MriSpace::aligned}) {
      host::Head head = headOf(conformed, true);
      head.source.space = own;
      const std::string cause = failureOf([&] {
        (void)host::inScanner({points, host::PointFrame::scanner, given}, head);
      });
      EXPECT_EQ(cause.empty(), (own == MriSpace::middle) == (given == MriSpace::middle)) << cause;
    }
  }
}

TEST(HeadPlacement, TransformGivesTheNeuromagFrameWithAndWithoutPoints) {
  const host::Head head = headOf(conformed, true);
  const Affine way({0.8, 0.6, 0}, {-0.6, 0.8, 0}, {0, 0, 1}, {3, -4, 5});
  const Affine expected = host::surfaceToScanner(head).after(way);
  const host::Fiducials own = {{0, 97, 0}, {-70, 0, 0}, {76, 0, 0}};
  const host::Fiducials off = {{0, 97, 3}, {-70, 0, 0}, {76, 4, 0}};
  const host::Fiducials inScanner = {expected(off.nasion), expected(off.leftEar), expected(off.rightEar)};
  for (const auto& known :
       {std::optional<host::FramedPoints>(), {{own, host::PointFrame::head}}, {{inScanner}}}) {
    const host::HeadPlacement placed = host::placedBy(way, known, head);
    const Affine found = host::neuromagToScanner(placed.points);
    for (const Vector3& place : {Vector3{0, 0, 0}, {100, 0, 0}, {0, 100, 0}, {0, 0, 100}}) {
      expectNear(found(place), expected(place));
    }
    EXPECT_EQ(placed.arePointsKnown(), known.has_value());
    if (known) {
      expectNear(placed.points.rightEar, expected({76, 0, 0}));
      EXPECT_NEAR(*placed.apart, known->frame == host::PointFrame::head ? 0.0 : 4.0, 1e-9);
    }
  }
}
