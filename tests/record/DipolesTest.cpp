// The dipole's accessors and geometry.
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "record/Dipoleszq.h"
#include "tests/record/DipoleMembers.h"
#include "tests/support/ScriptedOperator.h"

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

CDipoleszq dipoleAt(double x, double y, double z) {
  CDipoleszq dipole;
  dipole.m_location[0] = x;
  dipole.m_location[1] = y;
  dipole.m_location[2] = z;
  return dipole;
}

CDipoleszq dipoleAlong(double x, double y, double z) {
  CDipoleszq dipole;
  dipole.setDipoleOrientation(x, y, z);
  return dipole;
}

// The values that differ between two dipoles' members, by name.
std::vector<std::string> changed(const MemberValues& before, const MemberValues& after) {
  std::vector<std::string> names;
  for (const auto& [name, value] : before) {
    if (after.at(name) != value) {
      names.push_back(name);
    }
  }
  return names;
}

// The largest signed coordinate, step by step as documented.
float literalRange(double x, double y, double z) {
  float m = static_cast<float>(x);
  if (y > static_cast<double>(m)) {
    m = static_cast<float>(y);
  }
  if (z > static_cast<double>(m)) {
    return static_cast<float>(z);
  }
  return m;
}

bool same(double a, double b) {
  return a == b || (std::isnan(a) && std::isnan(b));
}

}  // namespace

TEST(GetDipoleLocation, GivesSinglePrecisionAndReturnsOne) {
  const CDipoleszq dipole = dipoleAt(0.1, -2.0, 1e300);
  float x = 0.0F;
  float y = 0.0F;
  float z = 0.0F;
  EXPECT_EQ(dipole.getDipoleLocation(x, y, z), 1);
  EXPECT_EQ(x, 0.1F);
  EXPECT_EQ(y, -2.0F);
  EXPECT_EQ(z, std::numeric_limits<float>::infinity());
}

TEST(GetDipoleLocationD, GivesTheLocationAndReturnsOne) {
  const CDipoleszq dipole = dipoleAt(0.1, -2.0, 3.5);
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  EXPECT_EQ(dipole.getDipoleLocationD(x, y, z), 1);
  EXPECT_EQ(x, 0.1);
  EXPECT_EQ(y, -2.0);
  EXPECT_EQ(z, 3.5);
}

TEST(GetDipoleOrientation, GivesTheOrientationAndReturnsOne) {
  const CDipoleszq dipole = dipoleAlong(0.1, -2.0, 3.5);
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  EXPECT_EQ(dipole.getDipoleOrientation(x, y, z), 1);
  EXPECT_EQ(x, 0.1);
  EXPECT_EQ(y, -2.0);
  EXPECT_EQ(z, 3.5);
}

TEST(SetDipoleOrientation, StoresWithoutNormalisingAndReturnsOne) {
  CDipoleszq dipole;
  EXPECT_EQ(dipole.setDipoleOrientation(3.0, 4.0, 12.0), 1);
  EXPECT_EQ(dipole.m_orientation[0], 3.0);
  EXPECT_EQ(dipole.m_orientation[1], 4.0);
  EXPECT_EQ(dipole.m_orientation[2], 12.0);
}

TEST(SetDipoleOrientation, ChangesNothingElse) {
  CDipoleszq dipole;
  const MemberValues before = membersOf(dipole);
  dipole.setDipoleOrientation(3.0, 4.0, 12.0);
  EXPECT_EQ(changed(before, membersOf(dipole)), std::vector<std::string>{"m_orientation"});
}

TEST(DipoleMoment, IsStoredAndGivenBack) {
  CDipoleszq dipole;
  EXPECT_EQ(dipole.setDipoleMoment(-12.5), 1);
  EXPECT_EQ(dipole.getDipoleMoment(), -12.5);
  EXPECT_EQ(dipole.m_moment, -12.5);
}

TEST(MinusDipoleLocational, SubtractsComponentByComponentAndReturnsOne) {
  CDipoleszq dipole = dipoleAt(10.0, 20.0, 30.0);
  EXPECT_EQ(dipole.minusDipoleLocational(1.0, -2.0, 3.5), 1);
  EXPECT_EQ(dipole.m_location[0], 9.0);
  EXPECT_EQ(dipole.m_location[1], 22.0);
  EXPECT_EQ(dipole.m_location[2], 26.5);
}

TEST(MinusDipoleLocational, ChangesNothingElse) {
  CDipoleszq dipole;
  const MemberValues before = membersOf(dipole);
  dipole.minusDipoleLocational(1.0, -2.0, 3.5);
  EXPECT_EQ(changed(before, membersOf(dipole)), std::vector<std::string>{"m_location"});
}

TEST(PositionCM2MM, MultipliesByTheGivenFactorAndReturnsOne) {
  CDipoleszq dipole = dipoleAt(1.5, -2.0, 0.25);
  EXPECT_EQ(dipole.positionCM2MM(10.0F), 1);
  EXPECT_EQ(dipole.m_location[0], 15.0);
  EXPECT_EQ(dipole.m_location[1], -20.0);
  EXPECT_EQ(dipole.m_location[2], 2.5);
}

TEST(PositionCM2MM, WidensTheFactorBeforeItMultiplies) {
  CDipoleszq dipole = dipoleAt(1.0, 3.0, 0.1);
  dipole.positionCM2MM(0.1F);
  const double factor = static_cast<double>(0.1F);
  EXPECT_EQ(dipole.m_location[0], factor);
  EXPECT_EQ(dipole.m_location[1], 3.0 * factor);
  EXPECT_EQ(dipole.m_location[2], 0.1 * factor);
}

TEST(PositionCM2MM, ChangesNothingElse) {
  CDipoleszq dipole;
  const MemberValues before = membersOf(dipole);
  dipole.positionCM2MM(2.0F);
  EXPECT_EQ(changed(before, membersOf(dipole)), std::vector<std::string>{"m_location"});
}

TEST(NormalizeOrientation1, LeavesAZeroOrientationAndReturnsZero) {
  CDipoleszq dipole = dipoleAlong(0.0, 0.0, 0.0);
  EXPECT_EQ(dipole.normalizeOrientation1(), 0);
  EXPECT_EQ(dipole.m_orientation[0], 0.0);
  EXPECT_EQ(dipole.m_orientation[1], 0.0);
  EXPECT_EQ(dipole.m_orientation[2], 0.0);
}

TEST(NormalizeOrientation1, ScalesThreeZeroFourAndReturnsZeroToo) {
  CDipoleszq dipole = dipoleAlong(3.0, 0.0, 4.0);
  EXPECT_EQ(dipole.normalizeOrientation1(), 0);
  EXPECT_EQ(dipole.m_orientation[0], 3.0 / 5.0);
  EXPECT_EQ(dipole.m_orientation[1], 0.0);
  EXPECT_EQ(dipole.m_orientation[2], 4.0 / 5.0);
}

TEST(NormalizeOrientation1, DividesByTheLengthRoundedToSinglePrecision) {
  CDipoleszq dipole;  // (1, 0, 1)
  dipole.normalizeOrientation1();
  const double length = static_cast<double>(static_cast<float>(std::sqrt(2.0)));
  EXPECT_EQ(dipole.m_orientation[0], 1.0 / length);
  EXPECT_NE(dipole.m_orientation[0], 1.0 / std::sqrt(2.0));
}

TEST(NormalizeOrientation1, LeavesALengthThatVanishesInSinglePrecision) {
  CDipoleszq dipole = dipoleAlong(1e-60, 0.0, 0.0);
  dipole.normalizeOrientation1();
  EXPECT_EQ(dipole.m_orientation[0], 1e-60);
}

TEST(NormalizeOrientation1, LeavesALengthThatIsNotFinite) {
  for (const double x : {infinity, -infinity, 1e200, 1e39}) {
    CDipoleszq dipole = dipoleAlong(x, 2.0, 3.0);
    EXPECT_EQ(dipole.normalizeOrientation1(), 0);
    EXPECT_EQ(dipole.m_orientation[0], x);
    EXPECT_EQ(dipole.m_orientation[1], 2.0);
    EXPECT_EQ(dipole.m_orientation[2], 3.0);
  }
}

TEST(NormalizeOrientation1, LeavesComponentsThatAreNoNumbers) {
  CDipoleszq dipole = dipoleAlong(notANumber, 2.0, 3.0);
  EXPECT_EQ(dipole.normalizeOrientation1(), 0);
  EXPECT_TRUE(std::isnan(dipole.m_orientation[0]));
  EXPECT_EQ(dipole.m_orientation[1], 2.0);
  EXPECT_EQ(dipole.m_orientation[2], 3.0);
}

TEST(NormalizeOrientation1, FollowsItsStepsOnRandomOrientations) {
  std::mt19937 random(20061206);
  std::normal_distribution<double> component(0.0, 50.0);
  for (int i = 0; i < 20000; ++i) {
    const double v[3] = {component(random), component(random), component(random)};
    CDipoleszq dipole = dipoleAlong(v[0], v[1], v[2]);
    dipole.normalizeOrientation1();
    const float length = static_cast<float>(std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]));
    for (int axis = 0; axis < 3; ++axis) {
      ASSERT_EQ(dipole.m_orientation[axis], v[axis] / static_cast<double>(length));
    }
  }
}

TEST(BackUpLocationRotationRaw, TakesLocationAndOrientationAndReturnsOne) {
  CDipoleszq dipole = dipoleAt(1.0, 2.0, 3.0);
  dipole.setDipoleOrientation(4.0, 5.0, 6.0);
  EXPECT_EQ(dipole.backUpLocationRotationRaw(), 1);
  for (int axis = 0; axis < 3; ++axis) {
    EXPECT_EQ(dipole.m_rawLocation.m_center[axis], 1.0 + axis);
    EXPECT_EQ(dipole.m_rawOrientation.m_center[axis], 4.0 + axis);
  }
  EXPECT_EQ(dipole.m_rawLocation.m_radius, 1.0);
  EXPECT_EQ(dipole.m_rawOrientation.m_radius, 1.0);
}

TEST(BackUpLocationRotationRaw, ChangesNothingButTheBackups) {
  CDipoleszq dipole = dipoleAt(1.0, 2.0, 3.0);
  const MemberValues before = membersOf(dipole);
  dipole.backUpLocationRotationRaw();
  EXPECT_EQ(changed(before, membersOf(dipole)),
            (std::vector<std::string>{"m_rawLocation", "m_rawOrientation"}));
}

TEST(BackUpLocationRotationRaw, KeepsTheFirstLocationAndOrientation) {
  CDipoleszq dipole = dipoleAt(1.0, 2.0, 3.0);
  dipole.backUpLocationRotationRaw();
  dipole.minusDipoleLocational(10.0, 10.0, 10.0);
  dipole.setDipoleOrientation(7.0, 8.0, 9.0);
  EXPECT_EQ(dipole.backUpLocationRotationRaw(), 1);
  EXPECT_EQ(dipole.m_rawLocation.m_center[0], 1.0);
  EXPECT_EQ(dipole.m_rawOrientation.m_center[1], 0.0);
  EXPECT_EQ(dipole.m_rawOrientation.m_center[2], 1.0);
}

TEST(BackUpLocationRotationRaw, AZeroedLocationBackupIsTakenAgainAlone) {
  CDipoleszq dipole = dipoleAt(1.0, 2.0, 3.0);
  dipole.backUpLocationRotationRaw();
  dipole.m_rawLocation.zeroSphere();
  dipole.m_location[0] = 50.0;
  dipole.setDipoleOrientation(7.0, 8.0, 9.0);
  dipole.backUpLocationRotationRaw();
  EXPECT_EQ(dipole.m_rawLocation.m_center[0], 50.0);
  EXPECT_EQ(dipole.m_rawOrientation.m_center[0], 1.0);
}

TEST(BackUpLocationRotationRaw, AZeroedOrientationBackupIsTakenAgainAlone) {
  CDipoleszq dipole = dipoleAt(1.0, 2.0, 3.0);
  dipole.backUpLocationRotationRaw();
  dipole.m_rawOrientation.zeroSphere();
  dipole.m_location[0] = 50.0;
  dipole.setDipoleOrientation(7.0, 8.0, 9.0);
  dipole.backUpLocationRotationRaw();
  EXPECT_EQ(dipole.m_rawLocation.m_center[0], 1.0);
  EXPECT_EQ(dipole.m_rawOrientation.m_center[0], 7.0);
}

TEST(BackUpLocationRotationRaw, AnyRadiusOtherThanZeroCountsAsTaken) {
  CDipoleszq dipole = dipoleAt(1.0, 2.0, 3.0);
  dipole.m_rawLocation.m_radius = -0.5;
  dipole.backUpLocationRotationRaw();
  EXPECT_EQ(dipole.m_rawLocation.m_center[0], 0.0);
  EXPECT_EQ(dipole.m_rawLocation.m_radius, -0.5);
}

TEST(DipoleRange, SignsCount) {
  EXPECT_EQ(dipoleAt(-50.0, -20.0, -30.0).getMaxDipoleRange(), -20.0F);
}

TEST(DipoleRange, EqualCoordinatesGiveTheirValue) {
  EXPECT_EQ(dipoleAt(1.0, 2.0, 2.0).getMaxDipoleRange(), 2.0F);
}

TEST(DipoleRange, EachAxisCanBeTheLargest) {
  EXPECT_EQ(dipoleAt(3.0, 2.0, 1.0).getMaxDipoleRange(), 3.0F);
  EXPECT_EQ(dipoleAt(1.0, 3.0, 2.0).getMaxDipoleRange(), 3.0F);
  EXPECT_EQ(dipoleAt(1.0, 2.0, 3.0).getMaxDipoleRange(), 3.0F);
}

TEST(DipoleRange, IsRoundedToSinglePrecision) {
  EXPECT_EQ(dipoleAt(0.1, 0.0, 0.0).getMaxDipoleRange(), 0.1F);
}

TEST(DipoleRange, FollowsItsStepsOnRandomAndOddLocations) {
  std::mt19937 random(7);
  const double odd[] = {0.0, -0.0, 0.1, static_cast<double>(0.1F), infinity, -infinity, notANumber, 1e300};
  std::uniform_int_distribution<std::size_t> pick(0, 11);
  std::uniform_real_distribution<double> any(-100.0, 100.0);
  const auto coordinate = [&] {
    const std::size_t i = pick(random);
    return i < std::size(odd) ? odd[i] : any(random);
  };
  for (int i = 0; i < 20000; ++i) {
    const double x = coordinate();
    const double y = coordinate();
    const double z = coordinate();
    const double range = static_cast<double>(dipoleAt(x, y, z).getMaxDipoleRange());
    ASSERT_TRUE(same(range, static_cast<double>(literalRange(x, y, z)))) << x << ' ' << y << ' ' << z;
  }
}

TEST(DipoleSetColor, WhiteGivesFractionsOf256) {
  ScriptedOperator user;
  user.answerColor(0x00FFFFFF);
  CDipoleszq dipole;
  EXPECT_EQ(dipole.setColor(), 1);
  EXPECT_EQ(dipole.m_colorF[0], 0.99609375F);
  EXPECT_EQ(dipole.m_colorF[1], 0.99609375F);
  EXPECT_EQ(dipole.m_colorF[2], 0.99609375F);
  EXPECT_EQ(dipole.m_color, 0x00FFFFFFU);
}

TEST(DipoleSetColor, RedIsTheLowestByte) {
  ScriptedOperator user;
  user.answerColor(0x00408020);
  CDipoleszq dipole;
  dipole.setColor();
  EXPECT_EQ(dipole.m_colorF[0], 0.125F);
  EXPECT_EQ(dipole.m_colorF[1], 0.5F);
  EXPECT_EQ(dipole.m_colorF[2], 0.25F);
  EXPECT_EQ(dipole.m_color, 0x00408020U);
}

TEST(DipoleSetColor, AsksOnceStartingFromBlack) {
  ScriptedOperator user;
  user.answerColor(1);
  CDipoleszq dipole;
  dipole.m_color = 0x00123456;
  dipole.setColor();
  EXPECT_EQ(user.colorQuestions, std::vector<COLORREF>{0});
}

TEST(DipoleSetColor, CancelledChangesNothingAndReturnsOne) {
  ScriptedOperator user;
  user.cancelColor();
  CDipoleszq dipole;
  fillMembers(dipole);
  const MemberValues before = membersOf(dipole);
  EXPECT_EQ(dipole.setColor(), 1);
  EXPECT_EQ(membersOf(dipole), before);
}

TEST(DipoleSetColor, ChangesNothingButTheColours) {
  ScriptedOperator user;
  user.answerColor(0x00010203);
  CDipoleszq dipole;
  const MemberValues before = membersOf(dipole);
  dipole.setColor();
  EXPECT_EQ(changed(before, membersOf(dipole)), (std::vector<std::string>{"m_color", "m_colorF"}));
}

TEST(SetColorValue, EveryByteBecomesItself256thAndTheHighestIsKept) {
  for (COLORREF part = 0; part < 256; ++part) {
    CDipoleszq dipole;
    const COLORREF color = part | (255 - part) << 8 | part << 16 | 0xFE000000U;
    dipole.setColorValue(color);
    ASSERT_EQ(dipole.m_color, color);
    ASSERT_EQ(dipole.m_colorF[0], static_cast<float>(part) / 256.0F);
    ASSERT_EQ(dipole.m_colorF[1], static_cast<float>(255 - part) / 256.0F);
    ASSERT_EQ(dipole.m_colorF[2], static_cast<float>(part) / 256.0F);
  }
}

TEST(GetDipoleXYZ, WritesNothingAndReturnsOne) {
  CDipoleszq dipole = dipoleAt(1.0, 2.0, 3.0);
  CSpherezq translation;
  CSpherezq rotation;
  double x = 11.0;
  double y = 12.0;
  double z = 13.0;
  EXPECT_EQ(dipole.getDipoleXYZ(&translation, &rotation, x, y, z), 1);
  EXPECT_EQ(x, 11.0);
  EXPECT_EQ(y, 12.0);
  EXPECT_EQ(z, 13.0);
}

TEST(GetDipoleXYZ, NeedsNoSpheres) {
  CDipoleszq dipole;
  double x = 11.0;
  double y = 12.0;
  double z = 13.0;
  EXPECT_EQ(dipole.getDipoleXYZ(nullptr, nullptr, x, y, z), 1);
}

TEST(DrawDipole, GivesZeroForAHiddenDipoleThatIsChecked) {
  CDipoleszq dipole;
  dipole.m_show = 0;
  EXPECT_EQ(dipole.drawDipole(nullptr, nullptr, 1), 0);
  EXPECT_EQ(dipole.drawDipole(nullptr, nullptr, -3), 0);
}

TEST(DrawDipole, GivesOneForAShownDipoleThatIsChecked) {
  CDipoleszq dipole;
  EXPECT_EQ(dipole.drawDipole(nullptr, nullptr, 1), 1);
  dipole.m_show = -1;
  EXPECT_EQ(dipole.drawDipole(nullptr, nullptr, 1), 1);
}

TEST(DrawDipole, WithoutTheCheckGivesOneWhateverIsShown) {
  CDipoleszq dipole;
  EXPECT_EQ(dipole.drawDipole(nullptr, nullptr, 0), 1);
  dipole.m_show = 0;
  EXPECT_EQ(dipole.drawDipole(nullptr, nullptr, 0), 1);
}

TEST(DipoleStubs, ChangeNothing) {
  CDipoleszq dipole;
  fillMembers(dipole);
  const MemberValues before = membersOf(dipole);
  EXPECT_EQ(dipole.traceDipole(), 1);
  dipole.drawDipole(nullptr, nullptr, 1);
  EXPECT_EQ(membersOf(dipole), before);
}
