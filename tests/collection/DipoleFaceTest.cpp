// The collection's construction, its look-ups and its getters by index.
#include <climits>
#include <gtest/gtest.h>
#include <type_traits>

#include "collection/DipoleFace.h"
#include "tests/collection/FaceFixture.h"
#include "tests/headmodel/ArchiveRecord.h"

namespace {

const int badIndices[] = {-2, -100, INT_MIN, 3, 4, 29999, 30000, INT_MAX};  // for three dipoles

}  // namespace

TEST(DipoleFaceDefaults, HoldsNothing) {
  const auto face = std::make_unique<CDipoleFace>();
  EXPECT_EQ(face->getTotalDipoles(), 0UL);
  for (int slot = 0; slot < DipoleTable::capacity; ++slot) {
    ASSERT_EQ(face->m_dipoles[slot], nullptr);
  }
}

TEST(DipoleFaceDefaults, CurrentIndexIsZeroAlthoughThereIsNoDipole) {
  const auto face = std::make_unique<CDipoleFace>();
  EXPECT_EQ(face->getCurrentDipoleID(), 0);
  EXPECT_EQ(face->getCurrentDipole(), nullptr);
}

TEST(DipoleFaceDefaults, CapacityIs30000) {
  EXPECT_EQ(static_cast<int>(DipoleTable::capacity), 30000);
}

TEST(DipoleFaceDefaults, SwitchesAreAsDocumented) {
  const auto face = std::make_unique<CDipoleFace>();
  EXPECT_EQ(face->m_showDipoleOrientationAll, 0);
  EXPECT_EQ(face->m_showDipoleLatencySelected, 0);
  EXPECT_EQ(face->m_showDipole2DOverlap, 1);
  EXPECT_EQ(face->m_showFiducialPt, 1);
  EXPECT_EQ(face->m_showDipoleArray, 1);
  EXPECT_FALSE(face->m_skipFiducialSetup);
}

TEST(DipoleFaceDefaults, NewDipolesLieAtOneHundred) {
  const auto face = std::make_unique<CDipoleFace>();
  EXPECT_EQ(face->m_allDipoleRange[0], 100.0);
  EXPECT_EQ(face->m_allDipoleRange[1], 100.0);
  EXPECT_EQ(face->m_allDipoleRange[2], 100.0);
}

TEST(DipoleFaceDefaults, FlagsOfImportsAreClear) {
  const auto face = std::make_unique<CDipoleFace>();
  EXPECT_EQ(face->m_bCtfSphereSet, 0);
  EXPECT_EQ(face->m_megOnly, 0);
  EXPECT_EQ(face->m_coordinateType, 0);
}

TEST(DipoleFaceDefaults, TextsOfImportsAreNon) {
  const auto face = std::make_unique<CDipoleFace>();
  EXPECT_EQ(toUtf8(face->m_fileVersion), "non");
  EXPECT_EQ(toUtf8(face->m_patient), "non");
  EXPECT_EQ(toUtf8(face->m_mriFile), "non");
}

TEST(DipoleFaceDefaults, ManagerTitleIsDipoleManager) {
  EXPECT_EQ(toUtf8(std::make_unique<CDipoleFace>()->m_managerTitle), "Dipole Manager");
}

TEST(DipoleFaceDefaults, CallbacksAreNull) {
  const auto face = std::make_unique<CDipoleFace>();
  EXPECT_EQ(face->m_cbfDipoleXYZ, nullptr);
  EXPECT_EQ(face->m_cbfUpdateViewers, nullptr);
}

TEST(DipoleFaceDefaults, SpheresAreZero) {
  const auto face = std::make_unique<CDipoleFace>();
  for (const CSpherezq* sphere :
       {&face->m_sphereLocational, &face->m_sphereCtf, &face->m_sphereRotation, &face->m_sphereMriAngles}) {
    EXPECT_EQ(sphere->m_center[0], 0.0);
    EXPECT_EQ(sphere->m_center[1], 0.0);
    EXPECT_EQ(sphere->m_center[2], 0.0);
    EXPECT_EQ(sphere->m_radius, 0.0);
  }
}

TEST(DipoleFaceDefaults, NoFiducialIsSet) {
  const auto face = std::make_unique<CDipoleFace>();
  EXPECT_EQ(face->m_fiducialMri.getTotalFiduciaryPts(true), 0);
  EXPECT_EQ(face->m_fiducialCtf.getTotalFiduciaryPts(true), 0);
}

TEST(DipoleFace, HasAVirtualDestructor) {
  EXPECT_TRUE(std::has_virtual_destructor_v<CDipoleFace>);
}

TEST(DipoleFace, CountIsHandedOutAsUnsignedLong) {
  EXPECT_TRUE(
      (std::is_same_v<decltype(std::declval<const CDipoleFace&>().getTotalDipoles()), unsigned long>));
}

TEST(DipoleFace, MembersLieInTheirDeclaredOrder) {
  const auto f = std::make_unique<CDipoleFace>();
  EXPECT_TRUE(rising({&f->m_currentDipole,
                      &f->m_totalDipoles,
                      &f->m_dipoles,
                      &f->m_faceValue,
                      &f->m_showDipoleOrientationAll,
                      f->m_allDipoleRange,
                      &f->m_bCtfSphereSet,
                      &f->m_fileVersion,
                      &f->m_patient,
                      &f->m_mriFile,
                      &f->m_megOnly,
                      &f->m_coordinateType,
                      &f->m_momentInNAm,
                      &f->m_skipFiducialSetup,
                      &f->m_showCurrentDipoleOnly,
                      &f->m_showDipoleLatencySelected,
                      &f->m_showDipole2DOverlap,
                      &f->m_mergeRadius,
                      &f->m_showFiducialPt,
                      &f->m_showDipoleArray,
                      f->m_dimension,
                      f->m_space,
                      &f->m_sphereLocational,
                      &f->m_sphereCtf,
                      &f->m_sphereRotation,
                      &f->m_sphereMriAngles,
                      &f->m_fiducialMri,
                      &f->m_fiducialCtf,
                      &f->m_cbfDipoleXYZ,
                      &f->m_cbfUpdateViewers,
                      &f->m_managerTitle}));
}

TEST(GetDipole, GivesTheDipoleOfASlot) {
  const auto face = faceOf(3);
  EXPECT_EQ(face->getDipole(0)->m_id, 0);
  EXPECT_EQ(face->getDipole(2)->m_id, 2);
}

TEST(GetDipole, MinusOneIsTheCurrentDipole) {
  const auto face = faceOf(3);
  face->setCurrentDipole(1);
  EXPECT_EQ(face->getDipole(-1)->m_id, 1);
}

TEST(GetDipole, BadIndicesGiveNull) {
  const auto face = faceOf(3);
  for (const int index : badIndices) {
    EXPECT_EQ(face->getDipole(index), nullptr) << index;
  }
}

TEST(GetDipole, ObjectsBehindTheCountAreOutOfReach) {
  const auto face = faceOf(5);
  leaveBehindCount(*face, 2);
  EXPECT_NE(face->m_dipoles[3], nullptr);
  EXPECT_EQ(face->getDipole(3), nullptr);
}

TEST(GetDipole, MinusOneWithoutACurrentDipoleGivesNull) {
  const auto face = faceOf(3);
  face->m_currentDipole = -1;
  EXPECT_EQ(face->getDipole(-1), nullptr);
}

TEST(GetDipole, EmptyCollectionGivesNull) {
  const auto face = std::make_unique<CDipoleFace>();
  EXPECT_EQ(face->getDipole(0), nullptr);
  EXPECT_EQ(face->getDipole(-1), nullptr);
}

TEST(GetDipole, EmptySlotGivesNull) {
  const auto face = faceOf(3);
  face->deleteDipole(1, 0);
  EXPECT_EQ(face->getDipole(1), nullptr);
}

TEST(GetCurrentDipole, GivesTheDipoleOfTheCurrentIndex) {
  const auto face = faceOf(3);
  face->setCurrentDipole(1);
  EXPECT_EQ(face->getCurrentDipole(), face->getDipole(1));
}

TEST(GetCurrentDipole, IndexBehindTheCountGivesNull) {
  const auto face = faceOf(3);
  face->m_currentDipole = 3;
  EXPECT_EQ(face->getCurrentDipole(), nullptr);
  face->m_currentDipole = -2;
  EXPECT_EQ(face->getCurrentDipole(), nullptr);
}

TEST(GetDipoleListItemID, GivesTheRowOfTheSlot) {
  const auto face = faceOf(3);
  face->getDipole(1)->m_listItemId = 77;
  EXPECT_EQ(face->getDipoleListItemID(1), 77);
  EXPECT_EQ(face->getDipoleListItemID(0), -1);
}

TEST(GetDipoleListItemID, WithoutACurrentDipoleGivesMinusOneForEverySlot) {
  const auto face = faceOf(3);
  face->getDipole(1)->m_listItemId = 77;
  face->m_currentDipole = -1;
  EXPECT_EQ(face->getDipoleListItemID(1), -1);
}

TEST(GetDipoleListItemID, BadIndicesAndEmptySlotsGiveMinusOne) {
  const auto face = faceOf(3);
  for (int slot = 0; slot < 3; ++slot) {
    face->getDipole(slot)->m_listItemId = 77;
  }
  for (const int index : badIndices) {
    EXPECT_EQ(face->getDipoleListItemID(index), -1) << index;
  }
  EXPECT_EQ(face->getDipoleListItemID(-1), -1);
  face->deleteDipole(0, 0);
  EXPECT_EQ(face->getDipoleListItemID(0), -1);
}

TEST(GetDipoleListItemID, EmptyCollectionGivesMinusOne) {
  EXPECT_EQ(std::make_unique<CDipoleFace>()->getDipoleListItemID(0), -1);
}

TEST(FaceGetDipoleLocation, GivesTheLocationAndOne) {
  const auto face = faceOf(3);
  double x = -1.0;
  double y = -1.0;
  double z = -1.0;
  EXPECT_EQ(face->getDipoleLocation(1, x, y, z), 1);
  EXPECT_EQ(x, 1.0);
  EXPECT_EQ(y, 10.0);
  EXPECT_EQ(z, 100.0);
  EXPECT_EQ(face->getDipoleLocation(-1, x, y, z), 1);
  EXPECT_EQ(z, 200.0);
}

TEST(FaceGetDipoleLocation, WithoutSuchADipoleGivesZerosAndZero) {
  const auto face = faceOf(3);
  for (const int index : badIndices) {
    double x = 5.0;
    double y = 5.0;
    double z = 5.0;
    EXPECT_EQ(face->getDipoleLocation(index, x, y, z), 0) << index;
    EXPECT_EQ(x, 0.0);
    EXPECT_EQ(y, 0.0);
    EXPECT_EQ(z, 0.0);
  }
}

TEST(FaceGetDipoleOrientation, GivesSinglePrecisionAndOne) {
  const auto face = faceOf(2);
  face->getDipole(0)->setDipoleOrientation(0.1, -2.0, 3.0);
  float x = 5.0F;
  float y = 5.0F;
  float z = 5.0F;
  EXPECT_EQ(face->getDipoleOrientation(0, x, y, z), 1);
  EXPECT_EQ(x, 0.1F);
  EXPECT_EQ(y, -2.0F);
  EXPECT_EQ(z, 3.0F);
}

TEST(FaceGetDipoleOrientation, WithoutSuchADipoleGivesZerosAndZero) {
  const auto face = faceOf(3);
  for (const int index : badIndices) {
    float x = 5.0F;
    float y = 5.0F;
    float z = 5.0F;
    EXPECT_EQ(face->getDipoleOrientation(index, x, y, z), 0) << index;
    EXPECT_EQ(x, 0.0F);
    EXPECT_EQ(y, 0.0F);
    EXPECT_EQ(z, 0.0F);
  }
}

TEST(FaceGetDipoleOrientationD, GivesTheOrientationAndOne) {
  const auto face = faceOf(2);
  face->getDipole(1)->setDipoleOrientation(0.1, -2.0, 3.0);
  double x = 5.0;
  double y = 5.0;
  double z = 5.0;
  EXPECT_EQ(face->getDipoleOrientationD(-1, x, y, z), 1);
  EXPECT_EQ(x, 0.1);
  EXPECT_EQ(y, -2.0);
  EXPECT_EQ(z, 3.0);
}

TEST(FaceGetDipoleOrientationD, WithoutSuchADipoleGivesZerosAndZero) {
  const auto face = faceOf(3);
  for (const int index : badIndices) {
    double x = 5.0;
    double y = 5.0;
    double z = 5.0;
    EXPECT_EQ(face->getDipoleOrientationD(index, x, y, z), 0) << index;
    EXPECT_EQ(x, 0.0);
    EXPECT_EQ(y, 0.0);
    EXPECT_EQ(z, 0.0);
  }
}

TEST(GetDipoleOrientationLength, GivesTheLengthOrZero) {
  const auto face = faceOf(3);
  face->getDipole(1)->m_orientationLength = 12.5;
  EXPECT_EQ(face->getDipoleOrientationLength(1), 12.5);
  EXPECT_EQ(face->getDipoleOrientationLength(-1), 30.0);
  for (const int index : badIndices) {
    EXPECT_EQ(face->getDipoleOrientationLength(index), 0.0) << index;
  }
}

TEST(GetMriName, GivesACopyOfTheName) {
  const auto face = std::make_unique<CDipoleFace>();
  face->m_mriFile = _T("head.mri");
  CString name = face->getMriName();
  EXPECT_EQ(toUtf8(name), "head.mri");
  name = _T("other");
  EXPECT_EQ(toUtf8(face->m_mriFile), "head.mri");
}

TEST(GetMriFiducialVoxel, GivesTheSetItselfForChanging) {
  const auto face = std::make_unique<CDipoleFace>();
  EXPECT_EQ(face->getMriFiducialVoxel(), &face->m_fiducialMri);
  face->getMriFiducialVoxel()->setNasionf(1.0, 2.0, 3.0);
  EXPECT_EQ(face->m_fiducialMri.getTotalFiduciaryPts(true), 1);
}
