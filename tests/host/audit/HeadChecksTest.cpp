#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <vector>

#include "host/audit/HeadChecks.h"

using host::Finding;
using host::FindingCode;
using host::Severity;

namespace {

// A set with a head sphere of 85 mm around (1, 53, 4) in the head frame.
class HeadChecks : public testing::Test {
 protected:
  HeadChecks() {
    set->m_bCtfSphereSet = 1;
    set->m_sphereCtf.m_center[0] = 1.0;
    set->m_sphereCtf.m_center[1] = 53.0;
    set->m_sphereCtf.m_center[2] = 4.0;
    set->m_sphereCtf.m_radius = 85.0;
  }

  void add(float x, float y, float z) const { set->addDipoleF(x, y, z); }
  std::optional<Finding> findOutsideSphere() const {
    return host::findOutsideSphere(*set, 0, set->m_totalDipoles, "a.dip");
  }

  // Points in the head frame, the ears so far from each other.
  static host::Fiducials wide(double width) { return {{0, 0, 100}, {width / 2, 0, 0}, {-width / 2, 0, 0}}; }

  std::unique_ptr<CDipoleFace9File> set = std::make_unique<CDipoleFace9File>();
};

// Scanner axes are those of the head turned: head x (left) is scanner -x, y (up) is z, z (front) is y.
const host::Fiducials points = {{0, 100, 0}, {-70, 0, 0}, {70, 0, 0}};

// A head of these points, in an MRI of such voxels, mm.
host::Head headOf(double voxel, double depth = 1.0) {
  auto volume = std::make_shared<const host::Volume>(
      std::array<int, 3>{1, 1, 1}, std::vector<float>(1),
      host::Affine({voxel, 0, 0}, {0, 0, voxel}, {0, voxel * depth, 0}, {}));
  return {"", std::move(volume), host::HeadFrame(points), points};
}

}  // namespace

TEST_F(HeadChecks, ADipoleMoreThanTwentyMillimetresOutsideOfTheSphereIsDoubtful) {
  add(1, 53 + 85 + 19, 4);
  EXPECT_FALSE(findOutsideSphere());
  add(1, 53 + 85 + 21, 4);
  add(1, 53, 4 - 85 - 25);
  const std::optional<Finding> finding = findOutsideSphere();
  ASSERT_TRUE(finding);
  EXPECT_EQ(finding->code, FindingCode::outsideHead);
  EXPECT_EQ(finding->severity, Severity::doubtful);
  EXPECT_EQ(finding->slots, (std::vector{1, 2}));
  EXPECT_EQ(finding->file, "a.dip");
  EXPECT_TRUE(finding->sentence.starts_with("2 dipoles lie more than 20 mm outside of the head sphere"));
}

TEST_F(HeadChecks, ASphereThatNoFileGaveSaysNothing) {
  set->m_bCtfSphereSet = 0;
  add(1, 300, 4);
  EXPECT_FALSE(findOutsideSphere());
  set->m_bCtfSphereSet = 1;  // a set file keeps that there was a sphere, but not the sphere
  set->m_sphereCtf.m_radius = 0.0;
  EXPECT_FALSE(findOutsideSphere());
}

TEST_F(HeadChecks, EmptySlotsAndOtherFilesDipolesAreNotLookedAt) {
  add(0, 400, 0);
  add(0, 400, 0);
  add(0, 400, 0);
  set->deleteDipole(1, 0);
  EXPECT_EQ(host::findOutsideSphere(*set, 1, 3, "a.dip")->slots, std::vector{2});
}

TEST_F(HeadChecks, ADipoleOutsideOfTheVolumeIsDoubtful) {
  // 100 voxels of 2 mm along each axis: scanner -100 .. 98 mm, and half a voxel around.
  const host::Volume volume({100, 100, 100}, std::vector<float>(1000000),
                            {{2, 0, 0}, {0, 2, 0}, {0, 0, 2}, {-100, -100, -100}});
  const host::HeadFrame frame(points);
  add(-98.5F, 0, 0);  // scanner x 98.5
  add(0, 0, -100.5F);
  EXPECT_FALSE(host::findOutsideMri(*set, 0, 2, volume, frame, "a.dip"));
  add(-99.5F, 0, 0);
  add(0, 99.5F, 0);
  add(0, 0, -101.5F);
  const std::optional<Finding> finding = host::findOutsideMri(*set, 0, 5, volume, frame, "a.dip");
  ASSERT_TRUE(finding);
  EXPECT_EQ(finding->code, FindingCode::outsideHead);
  EXPECT_EQ(finding->severity, Severity::doubtful);
  EXPECT_EQ(finding->slots, (std::vector{2, 3, 4}));
  EXPECT_TRUE(finding->sentence.starts_with("3 dipoles lie outside of the MRI. Nothing can be active there"));
  EXPECT_TRUE(finding->remedy.empty());
}

TEST_F(HeadChecks, ADipoleWhosePlaceIsNoNumberHasNoValidLocationAndLiesNowhere) {
  const host::Volume volume({2, 2, 2}, std::vector<float>(8),
                            {{2, 0, 0}, {0, 2, 0}, {0, 0, 2}, {-1, -1, -1}});
  const host::HeadFrame frame(points);
  add(std::numeric_limits<float>::quiet_NaN(), 0, 0);
  const std::string nowhere = "1 dipole has no valid location: what stands there is no number.";
  const std::optional<Finding> alone = host::findOutsideMri(*set, 0, 1, volume, frame, "a.dip");
  ASSERT_TRUE(alone);
  EXPECT_EQ(alone->severity, Severity::doubtful);
  EXPECT_EQ(alone->slots, std::vector{0});
  EXPECT_EQ(alone->file, "a.dip");
  EXPECT_EQ(alone->sentence, nowhere);
  add(0, 99, 0);
  add(0, 0, std::numeric_limits<float>::infinity());
  const std::optional<Finding> both = host::findOutsideMri(*set, 0, 2, volume, frame, "a.dip");
  ASSERT_TRUE(both);
  EXPECT_EQ(both->slots, (std::vector{0, 1}));
  EXPECT_TRUE(both->sentence.starts_with("1 dipole lies outside of the MRI.")) << both->sentence;
  EXPECT_TRUE(both->sentence.ends_with(" " + nowhere)) << both->sentence;
  EXPECT_EQ(host::findOutsideMri(*set, 2, 3, volume, frame, "a.dip")->sentence, nowhere);
}

TEST_F(HeadChecks, FilesThatNameDifferentPatientsAreDoubtful) {
  using Files = std::vector<host::FilePatient>;
  EXPECT_FALSE(host::findSeveralPatients(Files{{"a", "Anna"}, {"b", ""}, {"c", "Anna"}}));
  const std::optional<Finding> finding =
      host::findSeveralPatients(Files{{"a", "Anna"}, {"b", ""}, {"c", "Berta"}, {"d", "Berta"}});
  ASSERT_TRUE(finding);
  EXPECT_EQ(finding->code, FindingCode::severalPatients);
  EXPECT_EQ(finding->severity, Severity::doubtful);
  EXPECT_EQ(finding->sentence,
            "The files name different patients: Anna (a), Berta (c). A set can keep one name only.");
}

TEST_F(HeadChecks, FiducialPointsOfAnotherHeadAreWrong) {
  EXPECT_FALSE(host::findOtherHead(wide(140), "a.dip", headOf(3.0)));
  EXPECT_FALSE(host::findOtherHead(wide(149), "a.dip", headOf(3.0)));  // within 10 mm
  const std::optional<Finding> finding = host::findOtherHead(wide(151), "a.dip", headOf(3.0));
  ASSERT_TRUE(finding);
  EXPECT_EQ(finding->code, FindingCode::otherHead);
  EXPECT_EQ(finding->severity, Severity::wrong);
  EXPECT_EQ(finding->file, "a.dip");
  EXPECT_TRUE(finding->sentence.starts_with("For this MRI the distances")) << finding->sentence;
  EXPECT_TRUE(finding->remedy.empty());
  EXPECT_NE(finding->sentence.find("11 mm"), std::string::npos) << finding->sentence;
}

// An import counts with voxels of 0.859375 mm, whatever MRI the points were set in.
TEST_F(HeadChecks, PointsCountedInTheVoxelsOfTheMriAreOfTheSameHead) {
  const double half = 0.859375 / 2.0;
  const host::Fiducials inVoxelsOf2Mm = {{0, 0, 100 * half}, {70 * half, 0, 0}, {-70 * half, 0, 0}};
  EXPECT_FALSE(host::findOtherHead(inVoxelsOf2Mm, "a.dip", headOf(2.0)));
  EXPECT_FALSE(host::findOtherHead(inVoxelsOf2Mm, "a.dip", headOf(2.0, 1.009)));
  EXPECT_TRUE(host::findOtherHead(inVoxelsOf2Mm, "a.dip", headOf(2.0, 1.02)));  // no cubes
  EXPECT_TRUE(host::findOtherHead(inVoxelsOf2Mm, "a.dip", headOf(2.5)));
  EXPECT_TRUE(host::findOtherHead({inVoxelsOf2Mm.nasion, inVoxelsOf2Mm.leftEar, {-76 * half, 0, 0}}, "a.dip",
                                  headOf(2.0)) == std::nullopt);  // 6 mm
  EXPECT_TRUE(host::findOtherHead({inVoxelsOf2Mm.nasion, inVoxelsOf2Mm.leftEar, {-81 * half, 0, 0}}, "a.dip",
                                  headOf(2.0)));
}

TEST_F(HeadChecks, NoDistanceIsToldAsNothing) {
  for (const auto& [apart, said] :
       {std::pair{0.04, "lie less than 0.1 mm from"}, {0.06, "lie up to 0.1 mm from"}}) {
    const std::string sentence = host::findingOf({{}, apart}, "a-trans.fif").sentence;
    EXPECT_NE(sentence.find(said), std::string::npos) << sentence;
  }
}

TEST_F(HeadChecks, TwoFilesOfDifferentHeadsAreWrong) {
  EXPECT_FALSE(host::findOtherHead(wide(140), "a.dip", wide(149), "b.dip"));
  const std::optional<Finding> finding = host::findOtherHead(wide(140), "a.dip", wide(155), "b.dip");
  ASSERT_TRUE(finding);
  EXPECT_EQ(finding->severity, Severity::wrong);
  EXPECT_TRUE(finding->sentence.starts_with("Beside b.dip the distances")) << finding->sentence;
  EXPECT_EQ(finding->file, "a.dip");
}
