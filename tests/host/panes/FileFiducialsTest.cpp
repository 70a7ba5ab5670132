// The points of the dipole file stand beside the head's own where they are others, and nowhere twice.
#include <gtest/gtest.h>
#include <string>

#include "host/panes/DipolePicture.h"
#include "host/panes/PaneFiducials.h"
#include "host/panes/ScenePane.h"
#include "host/picture/ScenePainter.h"
#include "tests/host/paint/SceneShapes.h"
#include "tests/host/panes/SlicePaneFixture.h"

namespace {

using host::Fiducials;
using host::Image;
using host::Vector3;
using host::View;

Vector3 hostAxes(const Vector3& scanner) {
  return {-scanner.x, scanner.z, scanner.y};
}

struct FileFiducials : SlicePaneFixture {
  // The file has these points, scanner mm of any head.
  void setPoints(const Fiducials& scanner) {
    const auto store = [](CFiducialzq& set, const Vector3& n, const Vector3& l, const Vector3& r) {
      set.setNasionf(n.x, n.y, n.z);
      set.setLeftEarf(l.x, l.y, l.z);
      set.setRightEarf(r.x, r.y, r.z);
    };
    const Vector3 n = hostAxes(scanner.nasion);
    const Vector3 l = hostAxes(scanner.leftEar);
    const Vector3 r = hostAxes(scanner.rightEar);
    store(dipoles->m_fiducialCtf, n, l, r);
    store(dipoles->m_fiducialMri, n, l, r);  // that there are some
  }

  // The file's points as numbers of slices: sagittal, coronal, axial.
  void setSlices(const Fiducials& numbers) {
    const auto stored = [](const Vector3& s) { return Vector3{256 - s.x, 256 - s.z, 256 - s.y}; };
    const Vector3 n = stored(numbers.nasion);
    const Vector3 l = stored(numbers.leftEar);
    const Vector3 r = stored(numbers.rightEar);
    dipoles->m_fiducialMri.setNasionf(n.x, n.y, n.z);
    dipoles->m_fiducialMri.setLeftEarf(l.x, l.y, l.z);
    dipoles->m_fiducialMri.setRightEarf(r.x, r.y, r.z);
  }

  std::string letters() const {
    std::string all;
    for (const host::SceneFiducial& point : host::fileFiducials(contents())) {
      all += point.letter;
    }
    return all;
  }

  static int differing(const Image& one, const Image& other, const host::PixelBox& box) {
    int pixels = 0;
    for (int row = box.top; row < box.bottom; ++row) {
      for (int column = box.left; column < box.right; ++column) {
        pixels += one.pixel(column, row) != other.pixel(column, row) ? 1 : 0;
      }
    }
    return pixels;
  }

  // The nasion so much farther from the ears, which does not turn the frame.
  static Fiducials fartherNasion(double mm) {
    Fiducials farther = points();
    const Vector3 middle = (farther.leftEar + farther.rightEar) * 0.5;
    const Vector3 front = farther.nasion - middle;
    farther.nasion = farther.nasion + front * (mm / length(front));
    return farther;
  }
};

void expectNear(const Vector3& place, const Vector3& expected, double mm = 1e-3) {
  EXPECT_LT(length(place - expected), mm) << place.x << " " << place.y << " " << place.z;
}

}  // namespace

TEST_F(FileFiducials, AreNotDrawnTwiceWhenTheyAgreeWithinRounding) {
  EXPECT_EQ(letters(), "");  // a file without points
  setPoints(points());
  EXPECT_EQ(letters(), "");
  setPoints(fartherNasion(0.7));
  EXPECT_EQ(letters(), "");
  setPoints(fartherNasion(0.9));
  EXPECT_EQ(letters(), "N");
}

TEST_F(FileFiducials, StandInTheFrameOfTheirOwnHead) {
  setPoints(fartherNasion(5.0));
  const auto shown = host::fileFiducials(contents());
  ASSERT_EQ(shown.size(), 1U);
  expectNear(shown[0].place, head.frame.fromScanner(fartherNasion(5.0).nasion));
  Fiducials mirrored = fartherNasion(5.0);  // of an MRI that was stored from right to left
  for (Vector3* const point : {&mirrored.nasion, &mirrored.leftEar, &mirrored.rightEar}) {
    point->x = -point->x;
  }
  setPoints(mirrored);
  ASSERT_EQ(letters(), "N");
  expectNear(host::fileFiducials(contents())[0].place, shown[0].place);
}

TEST_F(FileFiducials, StandBySlicesInTheMriThatHasItsPointsSo) {
  const Fiducials numbers = {{100, 30, 120}, {30, 120, 130}, {170, 120, 130}};
  head.source.slices = host::SliceNumbers{numbers, {1.0, 2.0, 3.0}};
  Fiducials others = numbers;
  others.leftEar = others.leftEar + Vector3{2, 0, 0};
  others.rightEar = others.rightEar + Vector3{0, 2, 2};
  setSlices(others);
  ASSERT_EQ(letters(), "LR");
  const auto shown = host::fileFiducials(contents());
  expectNear(shown[0].place, head.frame.fromScanner(points().leftEar + Vector3{2, 0, 0}));
  expectNear(shown[1].place, head.frame.fromScanner(points().rightEar - Vector3{0, 4, 6}));
  setSlices(numbers);
  EXPECT_EQ(letters(), "");
  // Numbers that grow towards the patient's left.
  const Fiducials fromRight = {{100, 30, 120}, {170, 120, 130}, {30, 120, 130}};
  head.source.slices = host::SliceNumbers{fromRight, {1.0, 2.0, 3.0}};
  others = fromRight;
  others.leftEar = others.leftEar + Vector3{2, 0, 0};
  setSlices(others);
  ASSERT_EQ(letters(), "L");
  expectNear(host::fileFiducials(contents())[0].place,
             head.frame.fromScanner(points().leftEar - Vector3{2, 0, 0}));
}

TEST_F(FileFiducials, GoWithTheSwitchOfTheHeadsAndNeedAHeadThatIsSomebodys) {
  setPoints(fartherNasion(5.0));
  ASSERT_EQ(letters(), "N");
  dipoles->setShowFiducialPt(0);
  EXPECT_EQ(letters(), "");
  dipoles->setShowFiducialPt(1);
  head.isPhantom = true;
  EXPECT_EQ(letters(), "");
  head.isPhantom = false;
  head.fiducials.reset();
  EXPECT_EQ(letters(), "");
}

TEST_F(FileFiducials, AreDiamondsWithTheWordFileOnSlicesAndIn3D) {
  crosshair = {0, 0, 0};
  host::SlicePane slice = paneOf(View::axial);
  slice.paint(contents());
  slice.zoom(0.5, 200, 180);
  const host::Rgb green = host::fiducialColour('N');
  const Image without = slice.paint(contents());
  EXPECT_FALSE(slice.hasFiducialDiamonds());
  setPoints(fartherNasion(12.0));
  const Image with = slice.paint(contents());
  EXPECT_TRUE(slice.hasFiducialDiamonds());
  EXPECT_TRUE(slice.hasFiducialRings());
  const host::PixelPoint at = slice.pixelOf(head.frame.fromScanner(fartherNasion(12.0).nasion)).value();
  EXPECT_EQ(with.pixel(at.column + 4, at.row + 4), green);  // the middle of an edge
  EXPECT_NE(with.pixel(at.column + 4, at.row), green);
  const host::PixelBox word = {at.column - 60, at.row - 9, at.column - 11, at.row + 9};
  EXPECT_GT(differing(with, without, word), 40);
  const host::PixelBox below = {at.column - 60, at.row + 40, at.column + 60, at.row + 80};
  EXPECT_EQ(differing(with, without, below), 0);

  host::ScenePane scene;
  scene.resize(600, 600);
  scene.lookFrom(host::Standpoint::front);
  scene.paint(contents());
  scene.zoom(0.6);  // the ears lie beside the head's box
  Fiducials wide = points();
  wide.leftEar = wide.leftEar + Vector3{-12, 0, 0};
  setPoints(wide);
  const Image pictured = scene.paint(contents());
  ASSERT_EQ(letters(), "LR");
  const host::ScreenPoint left = scene.camera().project(host::fileFiducials(contents()).at(0).place);
  const int column = static_cast<int>(left.column);
  const int row = static_cast<int>(left.row);
  setPoints(points());
  const Image bare = scene.paint(contents());
  EXPECT_GT(differing(pictured, bare, {column - 12, row - 12, column + 12, row + 12}), 60)
      << column << " " << row;
}

TEST_F(FileFiducials, AWholePictureSaysWhoseTheyAre) {
  put({10, 0, 20});
  setPoints(fartherNasion(-40.0));
  const auto heightOf = [&] {
    return host::slicesPicture(contents(), {{"", {{View::axial, 0.0}}}}, 1.0, {}).image.height();
  };
  const int with = heightOf();
  setPoints(points());
  EXPECT_GT(with, heightOf());  // a line more below the picture
}
