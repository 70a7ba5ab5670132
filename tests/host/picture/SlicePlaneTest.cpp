// A slice of the head stands where it was cut, hides what is behind it, and leaves the air out.
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>

#include "host/paint/SolidShapes.h"
#include "host/picture/SlicePlane.h"
#include "tests/host/head/Phantom.h"
#include "tests/host/paint/SceneShapes.h"

namespace {

using host::DepthPicture;
using host::Rgb;
using host::SceneCamera;
using host::SlicePlane;
using host::Standpoint;
using host::Vector3;
using host::View;

constexpr Rgb black{0, 0, 0};
constexpr Rgb blue{0, 0, 230};
constexpr double endless = std::numeric_limits<double>::infinity();
constexpr Vector3 blob{25, 15, -20};

const host::HeadFrame& frame() {
  static const host::HeadFrame made = tiltedFrame();
  return made;
}
const host::Volume& head() {
  static const host::Volume made = phantom(frame(), blob);
  return made;
}
SlicePlane plane(View view, double position) {
  return {head(), frame(), findHead(head(), frame()), view, position};
}

SceneCamera cameraAt(const host::ViewAngles& angles) {
  SceneCamera camera(320, 320);
  camera.lookFrom(angles);
  return camera;
}

bool isWhite(const Rgb& pixel) {
  return pixel.red > 225;
}

}  // namespace

TEST(SlicePlane, ShowsTheHeadWhereItIs) {
  for (const View view : {View::axial, View::coronal, View::sagittal}) {
    const SlicePlane slice = plane(view, blob[host::axesOf(view).slab]);
    for (const Standpoint standpoint : host::allStandpoints) {
      const SceneCamera camera = cameraAt(anglesOf(standpoint));
      if (std::abs(camera.toViewer()[host::axesOf(view).slab]) < 0.5) {
        continue;
      }
      DepthPicture picture(320, 320, black);
      slice.draw(picture, camera);
      const Drawn bright = drawnWhere(picture.image(), isWhite);
      const host::ScreenPoint at = camera.project(blob);
      EXPECT_NEAR(bright.pixels, 3.14159 * 24 * 24, 250) << nameOf(view) << ' ' << nameOf(standpoint);
      EXPECT_NEAR(bright.column, at.column, 1.0);
      EXPECT_NEAR(bright.row, at.row, 1.0);
      EXPECT_NEAR(static_cast<double>(picture.depth(static_cast<int>(at.column), static_cast<int>(at.row))),
                  at.depth, 1e-3);
    }
  }
}

TEST(SlicePlane, StandsWhereItIsInTiltedViewsToo) {
  const SlicePlane slice = plane(View::coronal, blob.z);
  for (const host::ViewAngles& angles : {host::ViewAngles{30, 20}, {-50, -35}, {140, 10}}) {
    const SceneCamera camera = cameraAt(angles);
    DepthPicture picture(320, 320, black);
    slice.draw(picture, camera);
    for (const Vector3& on : {blob, Vector3{-30, 20, blob.z}, Vector3{10, -35, blob.z}}) {
      const host::ScreenPoint at = camera.project(on);
      const int column = static_cast<int>(at.column);
      const int row = static_cast<int>(at.row);
      EXPECT_NEAR(static_cast<double>(picture.depth(column, row)), at.depth, 1.5);
      EXPECT_NEAR(slice.depthAt(camera, at.column, at.row), at.depth, 1e-9);
      // A slice that is turned away is up to 30 percent darker.
      EXPECT_EQ(picture.image().pixel(column, row).red > 200, length(on - blob) < 1.0);
    }
  }
}

TEST(SlicePlane, HidesWhatIsBehindAndNotWhatIsBefore) {
  const SlicePlane slice = plane(View::coronal, 0.0);
  for (const Standpoint standpoint : {Standpoint::front, Standpoint::back}) {
    const SceneCamera camera = cameraAt(anglesOf(standpoint));
    for (const double z : {20.0, -20.0}) {
      DepthPicture picture(320, 320, black);
      const Vector3 place{10, 10, z};
      drawBall(picture, camera.project(place), 10, 5, blue);
      slice.draw(picture, camera);
      const bool isBefore = (z > 0.0) == (standpoint == Standpoint::front);
      EXPECT_EQ(drawnWhere(picture.image(), isBluish).pixels > 200, isBefore) << z;
      if (!isBefore) {
        EXPECT_EQ(drawnWhere(picture.image(), isBluish).pixels, 0);
      }
    }
  }
}

TEST(SlicePlane, AirIsNotDrawn) {
  const SlicePlane slice = plane(View::coronal, 0.0);
  const SceneCamera camera = cameraAt({});
  DepthPicture picture(320, 320, black);
  slice.draw(picture, camera);
  for (int row = 0; row < 320; ++row) {
    for (int column = 0; column < 320; ++column) {
      const Vector3 at = camera.unproject(column + 0.5, row + 0.5);
      const bool isDrawn = static_cast<double>(picture.depth(column, row)) < endless;
      ASSERT_EQ(slice.depthAt(camera, column + 0.5, row + 0.5) < endless, isDrawn);
      if (length(at) < 57.0 || length(at) > 64.0) {
        ASSERT_EQ(isDrawn, length(at) < 60.0) << at.x << ' ' << at.y;
      }
    }
  }
}

TEST(SlicePlane, DarkPartsInsideStay) {
  // The phantom's specks are as dark as air.
  const SceneCamera camera = cameraAt({});
  DepthPicture picture(320, 320, black);
  plane(View::coronal, 0.0).draw(picture, camera);
  int dark = 0;
  for (int row = 120; row < 200; ++row) {
    for (int column = 120; column < 200; ++column) {
      EXPECT_LT(static_cast<double>(picture.depth(column, row)), endless);
      dark += picture.image().pixel(column, row).red < 60 ? 1 : 0;
    }
  }
  EXPECT_GT(dark, 50);
}

TEST(SlicePlane, FromItsEdgeItHasNoWidth) {
  const SceneCamera camera = cameraAt(anglesOf(Standpoint::left));
  DepthPicture picture(320, 320, black);
  plane(View::coronal, 0.0).draw(picture, camera);
  plane(View::axial, 0.0).draw(picture, camera);
  EXPECT_EQ(drawnWhere(picture.image(), [](const Rgb& pixel) { return pixel != black; }).pixels, 0);
  EXPECT_EQ(plane(View::axial, 0.0).depthAt(camera, 160, 160), endless);
}

TEST(SlicePlane, OutsideOfTheHeadItIsEmpty) {
  const SceneCamera camera = cameraAt({});
  DepthPicture picture(320, 320, black);
  plane(View::coronal, 150.0).draw(picture, camera);
  EXPECT_EQ(drawnWhere(picture.image(), [](const Rgb& pixel) { return pixel != black; }).pixels, 0);
}

TEST(SlicePlane, ExtremeZoomDrawsAndReturns) {
  SceneCamera camera = cameraAt({40, 30});
  for (const double scale : {0.0, 1e9}) {
    camera.setScale(scale);
    DepthPicture picture(320, 320, black);
    plane(View::axial, 0.0).draw(picture, camera);
    EXPECT_GT(drawnWhere(picture.image(), [](const Rgb& pixel) { return pixel != black; }).pixels, 5);
  }
}

TEST(SlicePlane, RefusesAPositionThatIsNoNumber) {
  EXPECT_THROW(plane(View::axial, std::nan("")), std::invalid_argument);
}
