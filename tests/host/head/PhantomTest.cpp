// The phantom tells its sides, and its points lie on its skin.
#include <gtest/gtest.h>

#include "host/head/HeadBox.h"
#include "host/head/Phantom.h"

namespace {

const host::Phantom& phantomOnce() {
  static const host::Phantom phantom = host::makePhantom();
  return phantom;
}

double at(double x, double y, double z) {
  return phantomOnce().volume.sampleScanner({x, y, z});
}

}  // namespace

TEST(Phantom, CapsuleLiesOnThePatientsLeft) {
  const host::Vector3 capsule = phantomOnce().capsule;
  EXPECT_LT(capsule.x, 0.0);
  EXPECT_GT(at(capsule.x, capsule.y, capsule.z), 250.0);
  EXPECT_LT(at(-capsule.x, capsule.y, capsule.z), 10.0);
  EXPECT_GT(host::HeadFrame(phantomOnce().fiducials).fromScanner(capsule).x, 70.0);
  EXPECT_TRUE(phantomOnce().volume.sidesStated());
}

TEST(Phantom, BothSidesAreAlikeButForTheCapsule) {
  const host::Volume& volume = phantomOnce().volume;
  const auto [width, height, depth] = volume.dimensions();
  const host::Vector3 capsule = phantomOnce().capsule;
  int different = 0;
  for (int k = 0; k < depth; ++k) {
    for (int j = 0; j < height; ++j) {
      for (int i = 0; i < width / 2; ++i) {
        if (volume.voxel(i, j, k) != volume.voxel(width - 1 - i, j, k)) {
          ++different;
          const host::Vector3 index{static_cast<double>(i), static_cast<double>(j), static_cast<double>(k)};
          ASSERT_LT(length(volume.toScanner()(index) - capsule), 14.0);
        }
      }
    }
  }
  EXPECT_GT(different, 20);
}

TEST(Phantom, PointsLieOnTheSkin) {
  const host::Fiducials& points = phantomOnce().fiducials;
  for (const host::Vector3& point : {points.nasion, points.leftEar, points.rightEar}) {
    const host::Vector3 middle{0, -15, -30};
    const host::Vector3 outward = (point - middle) * (8.0 / length(point - middle));
    const host::Vector3 outside = point + outward;
    EXPECT_GT(at(point.x, point.y, point.z), 60.0);
    EXPECT_LT(at(outside.x, outside.y, outside.z), 200.0);
  }
  EXPECT_NO_THROW(host::HeadFrame{points});
}

TEST(Phantom, FrontHasEyesAndNose) {
  EXPECT_NEAR(at(31, 60, -28), 55.0, 10.0);
  EXPECT_NEAR(at(-31, 60, -28), 55.0, 10.0);
  EXPECT_GT(at(0, 92, -52), 50.0);
  EXPECT_LT(at(0, -120, -52), 10.0);
}

TEST(Phantom, HeadFillsItsVolume) {
  const host::HeadFrame frame(phantomOnce().fiducials);
  const host::HeadBox box = findHead(phantomOnce().volume, frame);
  EXPECT_NEAR(box.high.x, 86.0, 6.0);
  EXPECT_NEAR(box.low.x, -81.0, 6.0);
  EXPECT_GT(box.high.y - box.low.y, 150.0);
  EXPECT_GT(box.high.z - box.low.z, 180.0);
}
