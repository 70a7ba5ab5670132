// Every view shows the patient's sides where they belong: places worked out by hand, for every standpoint.
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>

#include "host/paint/SceneCamera.h"

namespace {

using host::SceneCamera;
using host::ScreenPoint;
using host::Standpoint;
using host::Vector3;

// 20 mm left, 30 mm up, 50 mm in front.
constexpr Vector3 place{20, 30, 50};

SceneCamera cameraAt(Standpoint standpoint) {
  SceneCamera camera(400, 200);
  camera.setScale(1.0);
  camera.lookFrom(standpoint);
  return camera;
}

void expectPlace(const SceneCamera& camera, const Vector3& head, double column, double row, double depth) {
  const ScreenPoint at = camera.project(head);
  EXPECT_NEAR(at.column, column, 1e-9);
  EXPECT_NEAR(at.row, row, 1e-9);
  EXPECT_NEAR(at.depth, depth, 1e-9);
}

}  // namespace

TEST(SceneCamera, FrontHasTheLeftOnTheRightAndTheNoseNear) {
  expectPlace(cameraAt(Standpoint::front), place, 220, 70, -50);
}

TEST(SceneCamera, BackHasTheLeftOnTheLeftAndTheNoseFar) {
  expectPlace(cameraAt(Standpoint::back), place, 180, 70, 50);
}

TEST(SceneCamera, LeftHasTheNoseOnTheLeftAndTheLeftNear) {
  expectPlace(cameraAt(Standpoint::left), place, 150, 70, -20);
}

TEST(SceneCamera, RightHasTheNoseOnTheRightAndTheLeftFar) {
  expectPlace(cameraAt(Standpoint::right), place, 250, 70, 20);
}

TEST(SceneCamera, TopHasTheNoseUpTheLeftOnTheLeftAndTheCrownNear) {
  expectPlace(cameraAt(Standpoint::top), place, 180, 50, -30);
}

TEST(SceneCamera, BottomHasTheNoseUpTheLeftOnTheRightAndTheCrownFar) {
  expectPlace(cameraAt(Standpoint::bottom), place, 220, 50, 30);
}

TEST(SceneCamera, YawGoesToThePatientsLeftAndPitchUp) {
  SceneCamera camera(400, 200);
  camera.setScale(1.0);
  camera.lookFrom({30.0, 0.0});
  expectPlace(camera, {100, 0, 0}, 200 + 100 * std::sqrt(0.75), 100, -50);
  expectPlace(camera, {0, 0, 100}, 150, 100, -100 * std::sqrt(0.75));
  camera.lookFrom({0.0, 30.0});
  expectPlace(camera, {0, 100, 0}, 200, 100 - 100 * std::sqrt(0.75), -50);
  expectPlace(camera, {0, 0, 100}, 200, 150, -100 * std::sqrt(0.75));
}

TEST(SceneCamera, StandardViewsAreExact) {
  for (const Standpoint standpoint : host::allStandpoints) {
    const SceneCamera camera = cameraAt(standpoint);
    for (const Vector3& axis : {camera.right(), camera.up(), camera.toViewer()}) {
      for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(axis[i] == 0.0 || axis[i] == 1.0 || axis[i] == -1.0) << nameOf(standpoint);
      }
    }
  }
}

TEST(SceneCamera, NeverMirrorsTheHead) {
  SceneCamera camera(10, 10);
  for (int column = -24; column <= 24; ++column) {
    for (int row = -12; row <= 12; ++row) {
      const double yaw = column * 7.5;
      const double pitch = row * 7.5;
      camera.lookFrom({yaw, pitch});
      const Vector3 out = cross(camera.right(), camera.up()) - camera.toViewer();
      EXPECT_LT(length(out), 1e-12) << yaw << ' ' << pitch;
      EXPECT_NEAR(length(camera.right()), 1.0, 1e-12);
      EXPECT_NEAR(length(camera.up()), 1.0, 1e-12);
      EXPECT_NEAR(dot(camera.right(), camera.up()), 0.0, 1e-12);
    }
  }
}

TEST(SceneCamera, TurnsAroundItsCentre) {
  SceneCamera camera(400, 200);
  camera.setCentre({5, -6, 7});
  camera.pan(11, 13);
  for (const double yaw : {0.0, 40.0, 110.0, -77.0}) {
    camera.lookFrom({yaw, 20.0});
    expectPlace(camera, {5, -6, 7}, 211, 113, 0);
  }
}

TEST(SceneCamera, TurningAddsUpAndStopsAboveTheHead) {
  SceneCamera camera(10, 10);
  camera.turn(170.0, 80.0);
  camera.turn(20.0, 20.0);
  EXPECT_DOUBLE_EQ(camera.angles().yaw, -170.0);
  EXPECT_DOUBLE_EQ(camera.angles().pitch, 90.0);
  camera.turn(0.0, -1000.0);
  EXPECT_DOUBLE_EQ(camera.angles().pitch, -90.0);
}

TEST(SceneCamera, ZoomKeepsWhatIsInTheMiddle) {
  SceneCamera camera(400, 200);
  camera.setScale(2.0);
  camera.pan(-30, 10);
  const Vector3 middle = camera.unproject(200, 100);
  camera.zoom(3.0);
  EXPECT_DOUBLE_EQ(camera.scale(), 6.0);
  const ScreenPoint at = camera.project(middle);
  EXPECT_NEAR(at.column, 200, 1e-9);
  EXPECT_NEAR(at.row, 100, 1e-9);
}

TEST(SceneCamera, PanMovesThePictureWithThePointer) {
  SceneCamera camera(400, 200);
  camera.setScale(4.0);
  const ScreenPoint before = camera.project(place);
  camera.pan(12, -7);
  EXPECT_NEAR(camera.project(place).column, before.column + 12, 1e-9);
  EXPECT_NEAR(camera.project(place).row, before.row - 7, 1e-9);
}

TEST(SceneCamera, ScaleAndPanStayInReach) {
  SceneCamera camera(100, 100);
  camera.zoom(1e300);
  EXPECT_EQ(camera.scale(), 20.0);
  camera.zoom(0.0);
  EXPECT_EQ(camera.scale(), 0.05);
  camera.setScale(1.0);
  camera.pan(1e300, -1e300);
  EXPECT_NEAR(camera.project({}).column, 1050.0, 1e-9);
  EXPECT_NEAR(camera.project({}).row, -950.0, 1e-9);
}

TEST(SceneCamera, UnprojectIsTheWayBackInThePlaneOfTheCentre) {
  SceneCamera camera(400, 200);
  camera.setCentre({1, 2, 3});
  camera.setScale(2.5);
  camera.lookFrom({33.0, -21.0});
  camera.pan(5, 6);
  const ScreenPoint at = camera.project(camera.unproject(17.0, 180.0));
  EXPECT_NEAR(at.column, 17.0, 1e-9);
  EXPECT_NEAR(at.row, 180.0, 1e-9);
  EXPECT_NEAR(at.depth, 0.0, 1e-9);
}

TEST(SceneCamera, RefusesWhatIsNoNumber) {
  constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
  constexpr double infinite = std::numeric_limits<double>::infinity();
  SceneCamera camera(10, 10);
  EXPECT_THROW(camera.lookFrom({noNumber, 0}), std::invalid_argument);
  EXPECT_THROW(camera.turn(0, infinite), std::invalid_argument);
  EXPECT_THROW(camera.setCentre({0, noNumber, 0}), std::invalid_argument);
  EXPECT_THROW(camera.zoom(noNumber), std::invalid_argument);
  EXPECT_THROW(camera.pan(infinite, 0), std::invalid_argument);
  EXPECT_EQ(camera.project({}).column, 5.0);
}
