// The head frame: x to the left ear, y up, z to the nasion, origin between the ears.
#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>
#include <string>

#include "host/head/HeadFrame.h"

namespace {

using host::Fiducials;
using host::HeadFrame;
using host::Vector3;

// A head that lies straight in the scanner, its origin at (1, 2, 3).
const Fiducials straight{{1, 102, 3}, {-79, 2, 3}, {81, 2, 3}};

void expectNear(const Vector3& found, const Vector3& expected) {
  EXPECT_NEAR(found.x, expected.x, 1e-9);
  EXPECT_NEAR(found.y, expected.y, 1e-9);
  EXPECT_NEAR(found.z, expected.z, 1e-9);
}

std::string causeOf(const Fiducials& points) {
  try {
    const HeadFrame frame(points);
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
  return "was taken";
}

}  // namespace

TEST(HeadFrame, NamesTheSidesOfAStraightHead) {
  const HeadFrame frame(straight);
  expectNear(frame.toScanner({0, 0, 0}), {1, 2, 3});
  expectNear(frame.toScanner({10, 0, 0}), {-9, 2, 3});  // left is negative in the scanner
  expectNear(frame.toScanner({0, 10, 0}), {1, 2, 13});  // up is positive
  expectNear(frame.toScanner({0, 0, 10}), {1, 12, 3});  // front is positive
}

TEST(HeadFrame, GoesBackToTheHead) {
  const HeadFrame frame({{3, 86, -39}, {-86, -19, -47}, {85, -25, -50}});
  expectNear(frame.fromScanner(frame.toScanner({12, -34, 56})), {12, -34, 56});
}

TEST(HeadFrame, PutsTheThreePointsIntoThePlaneOfTheEarsAndTheNasion) {
  const Fiducials points{{3, 86, -39}, {-86, -19, -47}, {85, -25, -50}};
  const HeadFrame frame(points);
  const Vector3 nasion = frame.fromScanner(points.nasion);
  const Vector3 left = frame.fromScanner(points.leftEar);
  const Vector3 right = frame.fromScanner(points.rightEar);
  expectNear({nasion.x, nasion.y, 0}, {0, 0, 0});
  EXPECT_GT(nasion.z, 80.0);
  EXPECT_NEAR(left.y, 0.0, 1e-9);
  EXPECT_GT(left.x, 80.0);
  expectNear(left + right, {0, 0, 0});
}

TEST(HeadFrame, IsRightHandedAndKeepsLengths) {
  const HeadFrame frame({{3, 86, -39}, {-86, -19, -47}, {85, -25, -50}});
  const Vector3& x = frame.toScanner().column(0);
  const Vector3& y = frame.toScanner().column(1);
  const Vector3& z = frame.toScanner().column(2);
  expectNear(cross(x, y), z);
  EXPECT_NEAR(length(x), 1.0, 1e-12);
  EXPECT_NEAR(length(y), 1.0, 1e-12);
  EXPECT_NEAR(length(z), 1.0, 1e-12);
}

TEST(HeadFrame, RefusesExchangedEars) {
  EXPECT_EQ(causeOf({straight.nasion, straight.rightEar, straight.leftEar}),
            "the left ear is not on the left of the right ear: the ears are exchanged, or left is given as "
            "positive");
}

TEST(HeadFrame, RefusesANasionBehindTheEars) {
  EXPECT_EQ(causeOf({{1, -98, 3}, straight.leftEar, straight.rightEar}),
            "the nasion is not in front of the ears: points are exchanged, or back is given as positive");
}

TEST(HeadFrame, RefusesPointsInCmOrM) {
  const std::string cause = "the fiducials lie too close together (they are expected in mm)";
  EXPECT_EQ(causeOf({{0, 10, 0}, {-8, 0, 0}, {8, 0, 0}}), cause);
  EXPECT_EQ(causeOf({{1, 2, 3}, straight.leftEar, straight.rightEar}), cause);
  EXPECT_EQ(causeOf({straight.nasion, straight.leftEar, straight.leftEar}), cause);
}

TEST(HeadFrame, RefusesPointsTooFarApart) {
  EXPECT_EQ(causeOf({{0, 1e5, 0}, {-8e4, 0, 0}, {8e4, 0, 0}}),
            "the fiducials lie too far apart (they are expected in mm)");
}

TEST(HeadFrame, RefusesPointsOnOneLine) {
  EXPECT_EQ(causeOf({{200, 5, 3}, straight.leftEar, straight.rightEar}),
            "the fiducials lie nearly on one line");
}

TEST(HeadFrame, RefusesPointsThatAreNotNumbers) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const std::string cause = "a fiducial coordinate is not a number";
  EXPECT_EQ(causeOf({{1, nan, 3}, straight.leftEar, straight.rightEar}), cause);
  EXPECT_EQ(causeOf({straight.nasion, {nan, 2, 3}, straight.rightEar}), cause);
  EXPECT_EQ(causeOf({straight.nasion, straight.leftEar, {81, 2, nan}}), cause);
}
