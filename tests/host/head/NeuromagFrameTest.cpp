// The Neuromag head frame, and the way between it and the head frame of the dipoles.
#include <cmath>
#include <gtest/gtest.h>
#include <random>

#include "host/head/NeuromagFrame.h"

namespace {

using host::Affine;
using host::Fiducials;
using host::Vector3;

void expectNear(const Vector3& found, const Vector3& expected, double tolerance = 1e-9) {
  EXPECT_NEAR(found.x, expected.x, tolerance);
  EXPECT_NEAR(found.y, expected.y, tolerance);
  EXPECT_NEAR(found.z, expected.z, tolerance);
}

// The right ear 10 mm farther in front than the left one, the nasion 5 mm to the right.
const Fiducials crooked{{5, 100, 0}, {-75, -5, 0}, {75, 5, 0}};

}  // namespace

TEST(NeuromagFrame, HasTheEarsOnItsFirstAxisAndTheNasionOnItsSecond) {
  const Affine toFrame = host::neuromagToScanner(crooked).inverse().value();
  const Vector3 nasion = toFrame(crooked.nasion);
  const Vector3 left = toFrame(crooked.leftEar);
  const Vector3 right = toFrame(crooked.rightEar);
  expectNear({nasion.x, left.y, left.z}, {0, 0, 0});
  expectNear({nasion.z, right.y, right.z}, {0, 0, 0});
  EXPECT_GT(nasion.y, 90.0);
  EXPECT_LT(left.x, -60.0);
  EXPECT_GT(right.x, 60.0);
  expectNear(turned(toFrame, {0, 0, 1}), {0, 0, 1});
}

TEST(NeuromagFrame, OfSymmetricEarsIsTheHeadFrameUnderOtherNames) {
  const Affine known = host::neuromagToHead({{0, 90, 4}, {-70, 1, 4}, {70, 1, 4}});
  for (const Vector3& point : {Vector3{1, 2, 3}, Vector3{-40, 20, 60}}) {
    expectNear(known(point), {-point.x, point.z, point.y});
    expectNear(host::symmetricNeuromagToHead()(point), {-point.x, point.z, point.y});
    expectNear(host::headToSymmetricNeuromag()({-point.x, point.z, point.y}), point);
  }
}

// With the nasion at (n, 0, 0) and the left ear at (a, b, 0), x to the front and y to the left:
// x' = (-a x - b y)/d + n a/d, y' = (b x - a y)/d, z' = z.
TEST(NeuromagFrame, OfCrookedEarsIsTurnedAndShiftedAsTheFormulaSays) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> some(-1.0, 1.0);
  for (int round = 0; round < 1000; ++round) {
    const Fiducials points{{some(random) * 20, 90 + some(random) * 20, some(random) * 30},
                           {-75 + some(random) * 15, some(random) * 15, some(random) * 20},
                           {75 + some(random) * 15, some(random) * 15, some(random) * 20}};
    const Affine toHead = host::HeadFrame(points).fromScanner();
    const double n = toHead(points.nasion).z;
    const double a = toHead(points.leftEar).z;
    const double b = toHead(points.leftEar).x;
    const double d = std::hypot(a, b);
    const Vector3 place{some(random) * 80, some(random) * 80, some(random) * 80};  // left, up, front
    const Vector3 expected{(-a * place.z - b * place.x) / d + n * a / d, (b * place.z - a * place.x) / d,
                           place.y};
    expectNear(host::headToNeuromag(points)(place), expected, 1e-11);
    expectNear(host::neuromagToHead(points)(expected), place, 1e-11);
  }
}

TEST(NeuromagFrame, RefusesExchangedEars) {
  EXPECT_THROW((void)host::neuromagToHead({crooked.nasion, crooked.rightEar, crooked.leftEar}),
               std::invalid_argument);
}
