// The set of fiducial points: setting, counting, comparing.
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <type_traits>

#include "headmodel/Fiducialzq.h"
#include "tests/headmodel/FiducialSample.h"

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

CFiducialzq headPoints() {
  CFiducialzq set;
  set.setNasionf(0.0, 0.0, 100.0);
  set.setLeftEarf(70.0, 0.0, 0.0);
  set.setRightEarf(-70.0, 0.0, 0.0);
  return set;
}

void expectPosition(const CFiduciaryPt& point, double x, double y, double z) {
  EXPECT_EQ(point.m_values[4], x);
  EXPECT_EQ(point.m_values[5], y);
  EXPECT_EQ(point.m_values[6], z);
}

}  // namespace

TEST(Fiducial, IsAChainOfLayersWithVirtualDestructors) {
  EXPECT_TRUE((std::is_base_of_v<CFiducial, CFiducial02Prcs>));
  EXPECT_TRUE((std::is_base_of_v<CFiducial02Prcs, CFiducial03Operator>));
  EXPECT_TRUE((std::is_base_of_v<CFiducial03Operator, CFiducial9File>));
  EXPECT_TRUE((std::is_base_of_v<CFiducial9File, CFiducialzq>));
  EXPECT_TRUE(std::has_virtual_destructor_v<CFiducial>);
}

TEST(Fiducial, LayersAddNoData) {
  EXPECT_EQ(sizeof(CFiducialzq), sizeof(CFiducial));
}

TEST(Fiducial, MembersHaveTheirTypes) {
  EXPECT_TRUE((std::is_same_v<decltype(CFiducial::m_points), CFiduciaryPtzq[6]>));
  EXPECT_TRUE((std::is_same_v<decltype(CFiducial::m_ints), int[4]>));
  EXPECT_TRUE((std::is_same_v<decltype(CFiducial::m_tail), LONGLONG[3]>));
}

TEST(Fiducial, MembersLieInTheirDeclaredOrder) {
  const CFiducialzq set;
  EXPECT_TRUE(rising({set.m_points, set.m_ints, set.m_tail}));
}

TEST(Fiducial, NewSetHasNoPointSet) {
  EXPECT_EQ(CFiducialzq().getTotalFiduciaryPts(true), 0);
}

TEST(Fiducial, NewSetCarriesZerosAlong) {
  const CFiducialzq set;
  EXPECT_EQ(set.m_ints[0] | set.m_ints[1] | set.m_ints[2] | set.m_ints[3], 0);
  EXPECT_EQ(set.m_tail[0] | set.m_tail[1] | set.m_tail[2], 0);
}

TEST(Fiducial, NewSetHasRoomForSixPoints) {
  EXPECT_EQ(CFiducialzq().getTotalFiduciaryPts(false), 6);
}

TEST(SetNasionf, StoresPointZeroAndReturnsOne) {
  CFiducialzq set;
  EXPECT_EQ(set.setNasionf(1.5, -2.5, 3.5), 1);
  expectPosition(set.m_points[0], 1.5, -2.5, 3.5);
}

TEST(SetLeftEarf, StoresPointOneAndReturnsOne) {
  CFiducialzq set;
  EXPECT_EQ(set.setLeftEarf(1.5, -2.5, 3.5), 1);
  expectPosition(set.m_points[1], 1.5, -2.5, 3.5);
}

TEST(SetRightEarf, StoresPointTwoAndReturnsOne) {
  CFiducialzq set;
  EXPECT_EQ(set.setRightEarf(1.5, -2.5, 3.5), 1);
  expectPosition(set.m_points[2], 1.5, -2.5, 3.5);
}

TEST(FiducialSetters, LeaveTheOtherPointsAlone) {
  CFiducialzq set;
  set.setLeftEarf(1.0, 2.0, 3.0);
  for (const int other : {0, 2, 3, 4, 5}) {
    expectPosition(set.m_points[other], 0.0, 0.0, 0.0);
    EXPECT_FALSE(set.m_points[other].isSet()) << other;
  }
}

TEST(FiducialSetters, EachMarksOnePointAsSet) {
  CFiducialzq set;
  set.setNasionf(0.0, 0.0, 0.0);
  EXPECT_EQ(set.getTotalFiduciaryPts(true), 1);
  set.setRightEarf(0.0, 0.0, 0.0);
  EXPECT_EQ(set.getTotalFiduciaryPts(true), 2);
  set.setLeftEarf(0.0, 0.0, 0.0);
  EXPECT_EQ(set.getTotalFiduciaryPts(true), 3);
}

TEST(FiducialSetters, SettingAPointAgainCountsItOnce) {
  CFiducialzq set;
  set.setNasionf(1.0, 1.0, 1.0);
  set.setNasionf(2.0, 2.0, 2.0);
  EXPECT_EQ(set.getTotalFiduciaryPts(true), 1);
  expectPosition(set.m_points[0], 2.0, 2.0, 2.0);
}

TEST(ResetAllFiducialPt, LeavesNoPointSetAndReturnsOne) {
  CFiducialzq set = sampleSet();
  ASSERT_EQ(set.getTotalFiduciaryPts(true), 6);
  EXPECT_EQ(set.resetAllFiducialPt(), 1);
  EXPECT_EQ(set.getTotalFiduciaryPts(true), 0);
}

TEST(ResetAllFiducialPt, ClearsAllSixPoints) {
  CFiducialzq set = sampleSet();
  set.resetAllFiducialPt();
  for (const CFiduciaryPtzq& point : set.m_points) {
    expectPosition(point, 0.0, 0.0, 0.0);
    EXPECT_EQ(point.m_int1, 0);
    EXPECT_EQ(point.m_values2[0], 0.0);
    EXPECT_TRUE(point.m_label.IsEmpty());
  }
}

TEST(ResetAllFiducialPt, ThreeSettersAfterwardsCountThree) {
  CFiducialzq set = sampleSet();
  set.resetAllFiducialPt();
  set.setLeftEarf(1.0, 0.0, 0.0);
  set.setRightEarf(-1.0, 0.0, 0.0);
  set.setNasionf(0.0, 0.0, 1.0);
  EXPECT_EQ(set.getTotalFiduciaryPts(true), 3);
}

TEST(SetAllFiducialPtShap, GivesAllSixPointsTheShapeAndReturnsOne) {
  CFiducialzq set;
  EXPECT_EQ(set.setAllFiducialPtShap(2), 1);
  for (const CFiduciaryPtzq& point : set.m_points) {
    EXPECT_EQ(point.m_int1, 2);
  }
}

TEST(SetAllFiducialSize3D, GivesAllSixPointsTheSizeAndReturnsOne) {
  CFiducialzq set;
  EXPECT_EQ(set.setAllFiducialSize3D(4.5), 1);
  for (const CFiduciaryPtzq& point : set.m_points) {
    EXPECT_EQ(point.m_values2[0], 4.5);
  }
}

TEST(FiducialDisplay, ShapeAndSizeMarkNoPointAsSet) {
  CFiducialzq set;
  set.setAllFiducialPtShap(2);
  set.setAllFiducialSize3D(4.0);
  EXPECT_EQ(set.getTotalFiduciaryPts(true), 0);
}

TEST(FiducialDisplay, ShapeAndSizeSurviveThePointSetters) {
  CFiducialzq set;
  set.resetAllFiducialPt();
  set.setAllFiducialPtShap(2);
  set.setAllFiducialSize3D(4.0);
  set.setLeftEarf(70.0, 0.0, 0.0);
  set.setRightEarf(-70.0, 0.0, 0.0);
  set.setNasionf(0.0, 0.0, 100.0);
  for (const int point : {0, 1, 2}) {
    EXPECT_EQ(set.m_points[point].m_int1, 2) << point;
    EXPECT_EQ(set.m_points[point].m_values2[0], 4.0) << point;
  }
}

TEST(FiducialDisplay, ShapeAndSizeLeavePositions) {
  CFiducialzq set = headPoints();
  set.setAllFiducialPtShap(2);
  set.setAllFiducialSize3D(4.0);
  expectPosition(set.m_points[1], 70.0, 0.0, 0.0);
  EXPECT_EQ(set.getTotalFiduciaryPts(true), 3);
}

TEST(Compare3FiducialPts, EqualSetsGiveZero) {
  const CFiducialzq a = headPoints();
  CFiducialzq b = headPoints();
  EXPECT_EQ(a.compare3FiducialPts(&b, 0.5), 0.0);
}

TEST(Compare3FiducialPts, DistancesWithinTheToleranceGiveZero) {
  const CFiducialzq a = headPoints();
  CFiducialzq b = headPoints();
  b.setNasionf(0.0, 0.5, 100.0);
  EXPECT_EQ(a.compare3FiducialPts(&b, 0.5), 0.0);
}

TEST(Compare3FiducialPts, GivesTheLargestDistanceBeyondTheTolerance) {
  const CFiducialzq a = headPoints();
  CFiducialzq b = headPoints();
  b.setLeftEarf(70.0, 3.0, 4.0);
  b.setRightEarf(-71.0, 0.0, 0.0);
  EXPECT_EQ(a.compare3FiducialPts(&b, 0.5), 5.0);
}

TEST(Compare3FiducialPts, LooksAtEachOfTheThreePoints) {
  const CFiducialzq a = headPoints();
  for (const int point : {0, 1, 2}) {
    CFiducialzq b = headPoints();
    b.m_points[point].m_values[6] += 2.0;
    EXPECT_EQ(a.compare3FiducialPts(&b, 0.5), 2.0) << point;
  }
}

TEST(Compare3FiducialPts, IgnoresTheOtherPoints) {
  const CFiducialzq a = headPoints();
  CFiducialzq b = headPoints();
  b.m_points[3].setPosition(500.0, 0.0, 0.0);
  EXPECT_EQ(a.compare3FiducialPts(&b, 0.5), 0.0);
}

TEST(Compare3FiducialPts, APositionThatIsNoNumberGivesNoNumber) {
  const CFiducialzq a = headPoints();
  CFiducialzq b = headPoints();
  b.setLeftEarf(notANumber, 0.0, 0.0);
  EXPECT_TRUE(std::isnan(a.compare3FiducialPts(&b, 0.5)));
}

TEST(Compare3FiducialPts, WithoutAnotherSetGivesMinusOne) {
  EXPECT_EQ(headPoints().compare3FiducialPts(nullptr, 0.5), -1.0);
}
