// Claim: the whole-set transforms and the MRI registration leave exactly the members that their description
// names, computed step by step in the stated precision.
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "collection/DipoleFace1Process.h"
#include "tests/collection/FaceFixture.h"

namespace {

using Triple = std::array<double, 3>;

Triple centreOf(const CSphere& sphere) {
  return {sphere.m_center[0], sphere.m_center[1], sphere.m_center[2]};
}

Triple pointOf(const CFiducial& set, int index) {
  Triple p;
  set.m_points[index].getPosition(p[0], p[1], p[2]);
  return p;
}

Triple locationOf(const CDipoleFace& set, int slot) {
  Triple p;
  set.getDipoleLocation(slot, p[0], p[1], p[2]);
  return p;
}

CFiducialzq fiducials(const Triple& nasion, const Triple& left, const Triple& right) {
  CFiducialzq set;
  set.setNasionf(nasion[0], nasion[1], nasion[2]);
  set.setLeftEarf(left[0], left[1], left[2]);
  set.setRightEarf(right[0], right[1], right[2]);
  return set;
}

// An MRI of 256 x 256 x 200 voxels of 0.9 x 1.1 x 1.0 mm, with points in mm from its corner.
const Triple mriNasion = {116.3, 131.9, 230.6};
const Triple mriLeft = {195.2, 128.4, 118.7};
const Triple mriRight = {37.9, 130.1, 121.2};

// A collection is large: on the heap.
std::unique_ptr<CDipoleFace1Process> makeFace() {
  return std::make_unique<CDipoleFace1Process>();
}

int transfer(CDipoleFace1Process& set, const CFiducialzq& mri, bool rotate, double radius = 81.5) {
  CSpherezq sphere;
  sphere.m_radius = radius;
  return set.transferDipole3D_MRIFit(&mri, rotate, &mri, &sphere, 256, 256, 200, 0.9F, 1.1F, 1.0F);
}

}  // namespace

TEST(WholeSet, TranslationAndRotationAreWhatWasSet) {
  const auto face = makeFace();
  double x = 9.0;
  double y = 9.0;
  double z = 9.0;
  EXPECT_EQ(face->getAllDipoleRotation(x, y, z), 1);
  EXPECT_EQ((Triple{x, y, z}), (Triple{0.0, 0.0, 0.0}));
  EXPECT_EQ(face->setAllDipoleLocational(1.5, -2.5, 3.5), 1);
  EXPECT_EQ(face->setAllDipoleRotation(10.0, 20.0, -30.0), 1);
  EXPECT_EQ(face->getAllDipoleLocational(x, y, z), 1);
  EXPECT_EQ((Triple{x, y, z}), (Triple{1.5, -2.5, 3.5}));
  EXPECT_EQ(centreOf(face->m_sphereLocational), (Triple{1.5, -2.5, 3.5}));
  face->getAllDipoleRotation(x, y, z);
  EXPECT_EQ((Triple{x, y, z}), (Triple{10.0, 20.0, -30.0}));
  EXPECT_EQ(centreOf(face->m_sphereRotation), (Triple{10.0, 20.0, -30.0}));
}

TEST(WholeSet, RangeIsWhereANewDipoleIsPut) {
  const auto face = makeFace();
  EXPECT_EQ(face->setAllDipoleRange(1.0, 2.0, 3.0), 1);
  face->addDipole();
  EXPECT_EQ(face->getDipole(0)->m_location[0], 1.0);
  EXPECT_EQ(face->getDipole(0)->m_location[1], 2.0);
  EXPECT_EQ(face->getDipole(0)->m_location[2], 3.0);
}

TEST(RegisterDimensionFit, WithoutAHeadSphereSaysSoAndChangesNothing) {
  ScriptedOperator asked;
  const auto face = makeFace();
  face->m_sphereLocational.m_radius = 5.0;
  face->setAllDipoleLocational(1.0, -2.0, 3.0);
  EXPECT_EQ(face->registerMRI_DimensionFit(200.0, 200.0, 200.0), 0);
  EXPECT_EQ(asked.texts(), (Texts{"Please set the dipole fiducial points first!"}));
  EXPECT_EQ(asked.messages[0].type, UINT{MB_OK});
  EXPECT_EQ(face->m_sphereLocational.m_radius, 5.0);
  EXPECT_EQ(centreOf(face->m_sphereLocational), (Triple{1.0, -2.0, 3.0}));
}

TEST(RegisterDimensionFit, PutsTheSphereIntoTheMiddleLessOneRadius) {
  const auto face = makeFace();
  face->m_bCtfSphereSet = 1;
  face->m_sphereCtf.m_radius = 80.0;
  EXPECT_EQ(face->registerMRI_DimensionFit(200.0, 220.0, 150.0), 1);
  EXPECT_EQ(face->m_sphereLocational.m_radius, 80.0);
  EXPECT_EQ(centreOf(face->m_sphereLocational), (Triple{20.0, 30.0, -5.0}));
}

TEST(RegisterDimensionFit, AnyFlagButZeroTellsOfAHeadSphere) {
  ScriptedOperator asked;
  for (const int flag : {2, -1}) {
    const auto face = makeFace();
    face->m_bCtfSphereSet = flag;
    EXPECT_EQ(face->registerMRI_DimensionFit(200.0, 220.0, 150.0), 1) << flag;
  }
  EXPECT_EQ(asked.texts(), Texts{});
}

TEST(TransferMriFit, EndsWithTranslationAndRotationZeroedAndTheGivenRadius) {
  const auto face = makeFace();
  face->setAllDipoleLocational(1.0, 2.0, 3.0);
  face->setAllDipoleRotation(1.0, 2.0, 3.0);
  face->m_sphereRotation.m_radius = 5.0;
  EXPECT_EQ(transfer(*face, fiducials(mriNasion, mriLeft, mriRight), true), 1);
  EXPECT_EQ(centreOf(face->m_sphereLocational), (Triple{0.0, 0.0, 0.0}));
  EXPECT_EQ(face->m_sphereLocational.m_radius, 81.5);
  EXPECT_EQ(centreOf(face->m_sphereRotation), (Triple{0.0, 0.0, 0.0}));
  EXPECT_EQ(face->m_sphereRotation.m_radius, 0.0);
}

TEST(TransferMriFit, RewritesTheHeadFiducialsWhateverTheFlag) {
  for (const bool rotate : {false, true}) {
    const auto face = makeFace();
    // What an earlier registration left: all of it goes.
    face->m_fiducialCtf.setAllFiducialPtShap(7);
    face->m_fiducialCtf.setAllFiducialSize3D(9.0);
    face->m_fiducialCtf.m_points[4].setPosition(1.0, 2.0, 3.0);
    face->m_fiducialCtf.m_points[4].m_label = _T("old");
    face->m_fiducialCtf.m_points[CFiducial::nasion].m_label = _T("old");
    transfer(*face, fiducials(mriNasion, mriLeft, mriRight), rotate);
    // Half extents in single precision; the whole origin between the ears, truncated.
    const double half[3] = {static_cast<double>(256.0F * 0.9F * 0.5F),
                            static_cast<double>(256.0F * 1.1F * 0.5F), 100.0};
    for (int axis = 0; axis < 3; ++axis) {
      const auto a = static_cast<std::size_t>(axis);
      const int origin = static_cast<int>(((mriLeft[a] + mriRight[a]) - (half[axis] + half[axis])) * 0.5);
      EXPECT_EQ(pointOf(face->m_fiducialCtf, 0)[a], mriNasion[a] - half[axis] - origin);
      EXPECT_EQ(pointOf(face->m_fiducialCtf, 1)[a], mriLeft[a] - half[axis] - origin);
      EXPECT_EQ(pointOf(face->m_fiducialCtf, 2)[a], mriRight[a] - half[axis] - origin);
    }
    EXPECT_EQ(face->m_fiducialCtf.getTotalFiduciaryPts(true), 3);
    EXPECT_EQ(pointOf(face->m_fiducialCtf, 4), (Triple{0.0, 0.0, 0.0}));
    for (const CFiduciaryPtzq& point : face->m_fiducialCtf.m_points) {
      EXPECT_EQ(point.m_int1, 2);
      EXPECT_EQ(point.m_values2[CFiduciaryPt::size3D], 4.0);
      EXPECT_EQ(point.m_label.GetLength(), 0);
    }
  }
}

// 181 x 0.9, 217 x 1.1 and 181 x 1.3 mm: halved, they differ in single and in double precision.
TEST(TransferMriFit, HalvesTheExtentsInSinglePrecision) {
  const double half[3] = {0x1.45cccc0000000p+6, 0x1.dd66680000000p+6, 0x1.d699980000000p+6};
  const auto face = makeFace();
  const CFiducialzq mri = fiducials({80.0, 118.0, 200.0}, {150.0, 120.0, 118.0}, {13.0, 119.0, 117.5});
  const CSpherezq sphere;
  face->transferDipole3D_MRIFit(&mri, true, &mri, &sphere, 181, 217, 181, 0.9F, 1.1F, 1.3F);
  for (int axis = 0; axis < 3; ++axis) {  // the ears' middle lies nearer than 1 mm to the volume's
    const auto a = static_cast<std::size_t>(axis);
    EXPECT_EQ(pointOf(face->m_fiducialCtf, CFiducial::nasion)[a],
              pointOf(mri, CFiducial::nasion)[a] - half[a]);
    EXPECT_EQ(pointOf(face->m_fiducialCtf, CFiducial::leftEar)[a],
              pointOf(mri, CFiducial::leftEar)[a] - half[a]);
    EXPECT_EQ(pointOf(face->m_fiducialCtf, CFiducial::rightEar)[a],
              pointOf(mri, CFiducial::rightEar)[a] - half[a]);
  }
}

TEST(TransferMriFit, TruncatesTheOriginTowardZero) {
  // Ears midway at 128 - 0.7 and at 128 + 2.9 mm of a volume whose half extent is 128 mm.
  CSpherezq sphere;
  for (const auto& [middle, origin] :
       {std::pair{127.3, 0.0}, std::pair{130.9, 2.0}, std::pair{125.1, -2.0}}) {
    const auto face = makeFace();
    const CFiducialzq mri = fiducials({0, 0, 0}, {middle, 128, 128}, {middle, 128, 128});
    face->transferDipole3D_MRIFit(&mri, false, &mri, &sphere, 256, 256, 256, 1.0F, 1.0F, 1.0F);
    EXPECT_EQ(pointOf(face->m_fiducialCtf, 1)[0], middle - 128.0 - origin);
  }
}

// Formed after subtracting the half extent from each ear, the middle would be 0.99..., -27.99... and 28.99...
TEST(TransferMriFit, FormsTheOriginFromTheSumsOfEarsAndOfHalfExtents) {
  constexpr double half = 128.0;
  const Triple left = {192.7, 131.8, 244.2};
  const Triple right = {65.3, 68.2, 69.8};
  const Triple origin = {1.0, -28.0, 29.0};
  const auto face = makeFace();
  const CFiducialzq mri = fiducials({0, 0, 0}, left, right);
  const CSpherezq sphere;
  face->transferDipole3D_MRIFit(&mri, false, &mri, &sphere, 256, 256, 256, 1.0F, 1.0F, 1.0F);
  for (std::size_t axis = 0; axis < 3; ++axis) {
    EXPECT_NE(std::trunc(((left[axis] - half) + (right[axis] - half)) * 0.5), origin[axis]);
    EXPECT_EQ(pointOf(face->m_fiducialCtf, CFiducial::leftEar)[axis], left[axis] - half - origin[axis]);
    EXPECT_EQ(pointOf(face->m_fiducialCtf, CFiducial::rightEar)[axis], right[axis] - half - origin[axis]);
  }
}

// Points of a volume of 256 voxels of 1.1 mm that the other order would round to another double.
TEST(TransferMriFit, TakesTheHalfExtentOffAPointFirstAndThenTheOrigin) {
  constexpr double half = 0x1.19999ap+7;  // 256 x 1.1 x 0.5 in single precision
  const Triple origin = {-9.0, -10.0, -8.0};
  const Triple points[] = {{125.3, 119.2, 121.7}, {255.1, 253.1, 252.4}, {7.2, 7.8, 12.2}};
  const auto face = makeFace();
  const CFiducialzq mri =
      fiducials(points[CFiducial::nasion], points[CFiducial::leftEar], points[CFiducial::rightEar]);
  const CSpherezq sphere;
  face->transferDipole3D_MRIFit(&mri, false, &mri, &sphere, 256, 256, 256, 1.1F, 1.1F, 1.1F);
  for (const int point : {CFiducial::nasion, CFiducial::leftEar, CFiducial::rightEar}) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const double p = points[point][axis];
      EXPECT_NE(p - origin[axis] - half, p - half - origin[axis]);
      EXPECT_EQ(pointOf(face->m_fiducialCtf, point)[axis], p - half - origin[axis]) << point << ' ' << axis;
    }
  }
}

TEST(TransferMriFit, OfPointsThatNoOriginHoldsEndsAtTheNearestOneOrTheLowest) {
  constexpr double lowest = -2147483648.0;
  constexpr double highest = 2147483647.0;
  const double infinity = std::numeric_limits<double>::infinity();
  const double notANumber = std::numeric_limits<double>::quiet_NaN();
  const CSpherezq sphere;
  for (const auto& [ear, origin] : {std::pair{1e300, highest}, std::pair{-1e300, lowest},
                                    std::pair{infinity, highest}, std::pair{notANumber, lowest}}) {
    const auto face = makeFace();
    const CFiducialzq mri = fiducials({1e300, 1.5, notANumber}, {ear, ear, 128.0}, {ear, ear, 128.0});
    EXPECT_EQ(face->transferDipole3D_MRIFit(&mri, true, &mri, &sphere, 256, 256, 256, 1.0F, 1.0F, 1.0F), 1);
    const Triple nasion = pointOf(face->m_fiducialCtf, CFiducial::nasion);
    EXPECT_EQ(nasion[0], 1e300);  // against which an origin is nothing
    EXPECT_EQ(nasion[1], 1.5 - 128.0 - origin) << ear;
    EXPECT_TRUE(std::isnan(nasion[2]));
    EXPECT_EQ(pointOf(face->m_fiducialCtf, CFiducial::leftEar)[2], 0.0);
    EXPECT_EQ(std::isnan(pointOf(face->m_fiducialCtf, CFiducial::leftEar)[0]), std::isnan(ear));
  }
}

TEST(TransferMriFit, WithoutRotationMovesNoDipoleAndWritesNoAngle) {
  const CFiducialzq mri = fiducials(mriNasion, mriLeft, mriRight);
  const auto face = makeFace();
  face->addDipoleF(1.0F, 2.0F, 3.0F);
  face->backupLocationRotationRaw();
  face->setDipoleLocation(0, 4.0F, 5.0F, 6.0F);
  face->m_sphereMriAngles.m_center[0] = 7.0;
  transfer(*face, mri, false);
  EXPECT_EQ(face->getDipole(0)->m_location[0], 4.0);
  EXPECT_EQ(centreOf(face->m_sphereMriAngles), (Triple{7.0, 0.0, 0.0}));
}

TEST(TransferMriFit, WithRotationPutsEveryDipoleBackToItsRawLocation) {
  const auto face = makeFace();
  face->addDipoleF(1.0F, 2.0F, 3.0F);
  face->backupLocationRotationRaw();
  face->addDipoleF(7.0F, 8.0F, 9.0F);  // without a backup yet: it is taken first
  face->addDipoleF(0.0F, 0.0F, 0.0F);
  face->deleteDipole(2, 0);
  face->setDipoleLocation(0, 4.0F, 5.0F, 6.0F);
  transfer(*face, fiducials(mriNasion, mriLeft, mriRight), true);
  EXPECT_EQ(locationOf(*face, 0), (Triple{1.0, 2.0, 3.0}));
  EXPECT_EQ(locationOf(*face, 1), (Triple{7.0, 8.0, 9.0}));
  EXPECT_EQ(face->getDipole(1)->m_rawLocation.m_radius, 1.0);
}

TEST(TransferMriFit, LeavesEveryOrientationAndTheRawBackupsAlone) {
  for (const bool rotate : {false, true}) {
    const auto face = makeFace();
    face->addDipoleF(1.0F, 2.0F, 3.0F);
    face->setDipoleOrientation(0, 0.5F, 0.25F, 0.125F);
    face->backupLocationRotationRaw();
    face->setDipoleLocation(0, 4.0F, 5.0F, 6.0F);
    face->setDipoleOrientation(0, -1.0F, -2.0F, -3.0F);
    transfer(*face, fiducials(mriNasion, mriLeft, mriRight), rotate);
    const CDipoleszq& dipole = *face->getDipole(0);
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    dipole.getDipoleOrientation(x, y, z);
    EXPECT_EQ((Triple{x, y, z}), (Triple{-1.0, -2.0, -3.0}));
    EXPECT_EQ(locationOf(*face, 0), (rotate ? Triple{1.0, 2.0, 3.0} : Triple{4.0, 5.0, 6.0}));
    EXPECT_EQ(centreOf(dipole.m_rawLocation), (Triple{1.0, 2.0, 3.0}));
    EXPECT_EQ(centreOf(dipole.m_rawOrientation), (Triple{0.5, 0.25, 0.125}));
  }
}

TEST(TransferMriFit, StoresTangentsAsDegreesInSinglePrecision) {
  const auto face = makeFace();
  transfer(*face, fiducials(mriNasion, mriLeft, mriRight), true);
  const double hx = static_cast<double>(256.0F * 0.9F * 0.5F);
  const double hy = static_cast<double>(256.0F * 1.1F * 0.5F);
  const double hz = 100.0;
  const int ox = static_cast<int>((mriLeft[0] + mriRight[0] - (hx + hx)) * 0.5);
  const int oy = static_cast<int>((mriLeft[1] + mriRight[1] - (hy + hy)) * 0.5);
  const int oz = static_cast<int>((mriLeft[2] + mriRight[2] - (hz + hz)) * 0.5);
  const auto degrees = [](double tangent) {
    const float narrow = static_cast<float>(tangent) * 180.0F;
    return static_cast<double>(static_cast<float>(static_cast<double>(narrow) / 3.14159265358979));
  };
  const Triple angles = {degrees(std::tan((mriNasion[1] - oy - hy) / (mriNasion[2] - oz - hz))),
                         degrees(std::tan((mriRight[2] - oz - hz) / (mriRight[0] - ox - hx))),
                         degrees(std::tan((mriLeft[1] - oy - hy) / (mriLeft[0] - ox - hx)))};
  EXPECT_EQ(centreOf(face->m_sphereMriAngles), angles);
  EXPECT_NE(angles[0], 0.0);
}

TEST(TransferMriFit, KeepsAngleThatNoNumberDescribes) {
  const auto face = makeFace();
  const CFiducialzq mri = fiducials({100, 100, 100}, {100, 100, 100}, {100, 100, 100});
  CSpherezq sphere;
  face->transferDipole3D_MRIFit(&mri, true, nullptr, &sphere, 200, 200, 200, 1.0F, 1.0F, 1.0F);
  EXPECT_TRUE(std::isnan(face->m_sphereMriAngles.m_center[0]));  // 0 / 0
}

// Each angle in turn has a divisor of zero under something else: the tangent of an infinity is no number.
TEST(TransferMriFit, KeepsEachAngleWhoseDivisorIsZero) {
  struct Case {
    CFiducialzq mri;
    int axis;
  };
  const auto degrees = [](double ratio) {
    const float narrow = static_cast<float>(std::tan(ratio)) * 180.0F;
    return static_cast<double>(static_cast<float>(static_cast<double>(narrow) / 3.14159265358979));
  };
  // The ears' middle is the volume's, or lies within 1 mm of it: the origin is 0.
  const Case cases[] = {{fiducials({100, 120, 100}, {150, 110, 105}, {50, 90, 95}), 0},
                        {fiducials({100, 80, 100}, {150, 110, 105}, {50, 90, 95}), 0},
                        {fiducials({100, 120, 190}, {101, 110, 105}, {100, 90, 95}), 1},
                        {fiducials({100, 120, 190}, {100, 110, 105}, {101, 90, 95}), 2}};
  const CSpherezq sphere;
  for (const Case& c : cases) {
    const auto face = makeFace();
    face->addDipoleF(1.0F, 2.0F, 3.0F);
    face->transferDipole3D_MRIFit(&c.mri, true, nullptr, &sphere, 200, 200, 200, 1.0F, 1.0F, 1.0F);
    const Triple nasion = pointOf(c.mri, CFiducial::nasion);
    const Triple left = pointOf(c.mri, CFiducial::leftEar);
    const Triple right = pointOf(c.mri, CFiducial::rightEar);
    const Triple finite = {degrees((nasion[1] - 100) / (nasion[2] - 100)),
                           degrees((right[2] - 100) / (right[0] - 100)),
                           degrees((left[1] - 100) / (left[0] - 100))};
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const double angle = face->m_sphereMriAngles.m_center[axis];
      if (static_cast<int>(axis) == c.axis) {
        EXPECT_TRUE(std::isnan(angle)) << axis;
      } else {
        EXPECT_EQ(angle, finite[axis]) << axis;
        EXPECT_NE(angle, 0.0);
      }
    }
    EXPECT_EQ(centreOf(face->m_sphereRotation), (Triple{0.0, 0.0, 0.0}));
    EXPECT_EQ(face->getDipole(0)->m_location[1], 2.0);
  }
}

TEST(TransferMriFit, TakesTheRadiusOfItsOwnSpheresBehindTheirZeroing) {
  const CFiducialzq mri = fiducials(mriNasion, mriLeft, mriRight);
  const auto radiusWith = [&](CSpherezq CDipoleFace::*argument) {
    const auto face = makeFace();
    (*face.*argument).m_radius = 77.5;
    face->m_sphereLocational.m_radius += 10.0;
    face->transferDipole3D_MRIFit(&mri, true, &mri, &(*face.*argument), 256, 256, 200, 0.9F, 1.1F, 1.0F);
    EXPECT_EQ(centreOf(face->m_sphereLocational), (Triple{0.0, 0.0, 0.0}));
    EXPECT_EQ(face->m_sphereRotation.m_radius, 0.0);
    return face->m_sphereLocational.m_radius;
  };
  EXPECT_EQ(radiusWith(&CDipoleFace::m_sphereLocational), 0.0);  // zeroed before its radius is taken
  EXPECT_EQ(radiusWith(&CDipoleFace::m_sphereRotation), 77.5);   // zeroed only afterwards
  EXPECT_EQ(radiusWith(&CDipoleFace::m_sphereCtf), 77.5);
}

TEST(TransferMriFit, TakesItsOwnHeadFiducialsAsTheMriPoints) {
  const auto face = makeFace();
  face->m_fiducialCtf = fiducials(mriNasion, mriLeft, mriRight);
  const auto other = makeFace();
  transfer(*other, fiducials(mriNasion, mriLeft, mriRight), true);
  transfer(*face, face->m_fiducialCtf, true);
  for (int point = 0; point < 3; ++point) {
    EXPECT_EQ(pointOf(face->m_fiducialCtf, point), pointOf(other->m_fiducialCtf, point));
  }
}
