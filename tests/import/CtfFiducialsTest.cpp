// setCtfFiducial and the conversion of axes.
#include <array>
#include <gtest/gtest.h>

#include "tests/import/CtfImportTest.h"

namespace {

class CtfFiducials : public CtfImport {
 protected:
  using Point = std::array<double, 3>;

  void setSphere(double radius) {
    set->m_bCtfSphereSet = 1;
    set->m_sphereCtf.m_radius = radius;
    set->m_sphereCtf.m_center[0] = 11;
    set->m_sphereLocational.m_center[1] = 12;
  }
  void setMriPoints(const Point& nasion, const Point& left, const Point& right) {
    set->m_fiducialMri.setNasionf(nasion[0], nasion[1], nasion[2]);
    set->m_fiducialMri.setLeftEarf(left[0], left[1], left[2]);
    set->m_fiducialMri.setRightEarf(right[0], right[1], right[2]);
  }
  void expectPoint(int point, double x, double y, double z) const {
    Point actual;
    EXPECT_EQ(set->m_fiducialCtf.m_points[point].getPosition(actual[0], actual[1], actual[2]), 1);
    EXPECT_EQ(actual, (Point{x, y, z}));
  }
  // One coordinate as the formula says it: relative to the middle of the ears, then in single precision.
  static double headCoordinate(double voxel, double left, double right) {
    const double middle = (left + right - 256) * 0.859375 * 0.5;
    return double{static_cast<float>((voxel - 128) * 0.859375 - middle)};
  }
};

}  // namespace

TEST(CoordinateCtf2zq, RotatesFloatsWithoutSignOrScale) {
  const auto set = std::make_unique<CtfImporter>();
  float x = 1.5F;
  float y = -2.5F;
  float z = 3.5F;
  EXPECT_EQ(set->coordinateCtf2zq(x, y, z), 1);
  EXPECT_EQ((std::array{x, y, z}), (std::array{-2.5F, 3.5F, 1.5F}));
}

TEST(CoordinateCtf2zq, RotatesDoublesWithoutSignOrScale) {
  const auto set = std::make_unique<CtfImporter>();
  double x = 0.1;
  double y = -0.2;
  double z = 0.3;
  EXPECT_EQ(set->coordinateCtf2zq_double(x, y, z), 1);
  EXPECT_EQ((std::array{x, y, z}), (std::array{-0.2, 0.3, 0.1}));
}

TEST_F(CtfFiducials, WithoutASphereNothingChangesButAMessageComes) {
  setMriPoints({1, 2, 3}, {4, 5, 6}, {7, 8, 9});
  set->m_fiducialCtf.setNasionf(1, 2, 3);
  set->m_sphereLocational.m_radius = 5;
  EXPECT_EQ(set->setCtfFiducial(), 0);
  EXPECT_EQ(shown(), Texts{noSphere});
  expectPoint(CFiducial::nasion, 1, 2, 3);
  EXPECT_EQ(set->m_sphereLocational.m_radius, 5);
}

TEST_F(CtfFiducials, AnyFlagButZeroTellsOfASphere) {
  for (const int flag : {2, -1}) {
    setSphere(80);
    set->m_bCtfSphereSet = flag;
    EXPECT_EQ(set->setCtfFiducial(), 1) << flag;
  }
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfFiducials, WithoutMriPointsTheyComeFromTheRadius) {
  setSphere(80);
  EXPECT_EQ(set->setCtfFiducial(), 1);
  expectPoint(CFiducial::nasion, 0, 0, 80);
  expectPoint(CFiducial::leftEar, 80, 0, 0);
  expectPoint(CFiducial::rightEar, -80, 0, 0);
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfFiducials, TwoMriPointsAreTooFew) {
  setSphere(80);
  set->m_fiducialMri.setNasionf(1, 2, 3);
  set->m_fiducialMri.setLeftEarf(1, 2, 3);
  EXPECT_EQ(set->setCtfFiducial(), 1);
  expectPoint(CFiducial::nasion, 0, 0, 80);
}

TEST_F(CtfFiducials, FallbackPointsHaveShapeTwoAndATwentiethOfTheRadius) {
  setSphere(90);
  set->setCtfFiducial();
  for (const CFiduciaryPtzq& point : set->m_fiducialCtf.m_points) {
    EXPECT_EQ(point.m_int1, 2);
    EXPECT_EQ(point.m_values2[CFiduciaryPt::size3D], 4.5);
  }
}

TEST_F(CtfFiducials, PointsOfTheMriHaveShapeTwoAndSizeFour) {
  setSphere(90);
  setMriPoints({1, 2, 3}, {4, 5, 6}, {7, 8, 9});
  set->setCtfFiducial();
  for (const CFiduciaryPtzq& point : set->m_fiducialCtf.m_points) {
    EXPECT_EQ(point.m_int1, 2);
    EXPECT_EQ(point.m_values2[CFiduciaryPt::size3D], 4.0);
  }
}

TEST_F(CtfFiducials, BothEarsInTheMiddleVoxelGiveTheOrigin) {
  setSphere(80);
  setMriPoints({128, 128, 128}, {128, 128, 128}, {128, 128, 128});
  set->setCtfFiducial();
  expectPoint(CFiducial::nasion, 0, 0, 0);
  expectPoint(CFiducial::leftEar, 0, 0, 0);
  expectPoint(CFiducial::rightEar, 0, 0, 0);
}

TEST_F(CtfFiducials, PointsAreRelativeToTheMiddleOfTheEarsInMillimetres) {
  setSphere(80);
  setMriPoints({128, 100, 230}, {228, 92, 106}, {28, 90, 106});
  set->setCtfFiducial();
  expectPoint(CFiducial::leftEar, 100 * 0.859375, 0.859375, 0);
  expectPoint(CFiducial::rightEar, -100 * 0.859375, -0.859375, 0);
  expectPoint(CFiducial::nasion, 0, 9 * 0.859375, 124 * 0.859375);
}

TEST_F(CtfFiducials, CoordinatesAreRoundedToSinglePrecision) {
  setSphere(80);
  const Point nasion = {128.3, 100.7, 230.1};
  const Point left = {227.9, 91.3, 106.6};
  const Point right = {27.7, 90.1, 105.2};
  setMriPoints(nasion, left, right);
  set->setCtfFiducial();
  const Point* points[3] = {&nasion, &left, &right};
  for (int point = 0; point < 3; ++point) {
    Point expected;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      expected[axis] = headCoordinate((*points[point])[axis], left[axis], right[axis]);
    }
    expectPoint(point, expected[0], expected[1], expected[2]);
  }
}

TEST_F(CtfFiducials, TheMriPointsThemselvesStay) {
  setSphere(80);
  setMriPoints({1, 2, 3}, {4, 5, 6}, {7, 8, 9});
  set->setCtfFiducial();
  EXPECT_EQ(set->m_fiducialMri.m_points[CFiducial::leftEar].m_values[CFiduciaryPt::positionX], 4);
}

TEST_F(CtfFiducials, OtherPointsOfTheHeadFrameAreReset) {
  setSphere(80);
  set->m_fiducialCtf.m_points[4].setPosition(1, 2, 3);
  set->setCtfFiducial();
  EXPECT_EQ(set->m_fiducialCtf.getTotalFiduciaryPts(true), 3);
}

TEST_F(CtfFiducials, TheHeadSphereGetsTheOriginAndTheFilesRadius) {
  setSphere(80);
  set->setCtfFiducial();
  expectTriple(set->m_sphereLocational.m_center, 0, 0, 0);
  EXPECT_EQ(set->m_sphereLocational.m_radius, 80);
  EXPECT_EQ(set->m_sphereCtf.m_center[0], 11);
}

TEST_F(CtfFiducials, AnImportSetsThemAfterTheLastFile) {
  import(oneSphere +
         section("Fid_Points", "NASION: 128 26 156\nLEFT_EAR: 28 150 165\nRIGHT_EAR: 228 150 165\n"));
  expectPoint(CFiducial::leftEar, 100 * 0.859375, 0, 0);
  expectPoint(CFiducial::nasion, 0, 9 * 0.859375, 124 * 0.859375);
  expectTriple(set->m_sphereLocational.m_center, 0, 0, 0);
  EXPECT_EQ(set->m_sphereLocational.m_radius, 80);
  EXPECT_EQ(shown(), Texts{totalMessage(0, 0)});
}

TEST_F(CtfFiducials, AnImportWithoutASphereSaysSoBeforeTheTotal) {
  import(dipoles(1));
  EXPECT_EQ(shown(), (Texts{noSphere, totalMessage(0, 1)}));
}

TEST_F(CtfFiducials, AnImportThatSkipsThemLeavesThemAndTheSphere) {
  set->m_skipFiducialSetup = true;
  import(oneSphere + dipoles(1));
  EXPECT_EQ(set->m_fiducialCtf.getTotalFiduciaryPts(true), 0);
  expectTriple(set->m_sphereLocational.m_center, 20, 30, 10);
  EXPECT_EQ(shown(), Texts{totalMessage(0, 1)});
}

TEST_F(CtfFiducials, AnImportThatSkipsThemAsksForNoSphere) {
  set->m_skipFiducialSetup = true;
  import(dipoles(1));
  EXPECT_EQ(shown(), Texts{totalMessage(0, 1)});
}

TEST_F(CtfFiducials, EveryImportBuildsThemAgainFromTheFirstSphere) {
  import(oneSphere);
  import(section("MEG_Sphere", "ORIGIN_X: 1\nORIGIN_Y: 2\nORIGIN_Z: 3\nRADIUS: 8.5\n"));
  expectPoint(CFiducial::nasion, 0, 0, 80);
}
