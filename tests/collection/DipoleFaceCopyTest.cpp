// Copies of a collection: views of the same dipoles, of which each is released once, in whatever order the
// collections end.
#include <gtest/gtest.h>
#include <new>

#include "tests/collection/FaceFixture.h"
#include "tests/support/FailingNew.h"
#include "tests/support/FreeLog.h"
#include "tests/support/Thrown.h"

namespace {

std::vector<const void*> dipolesOf(const CDipoleFace& face) {
  std::vector<const void*> dipoles;
  for (int slot = 0; slot < DipoleTable::capacity; ++slot) {
    if (face.m_dipoles[slot] != nullptr) {
      dipoles.push_back(face.m_dipoles[slot]);
    }
  }
  return dipoles;
}

void expectFreed(const FreeLog& log, const std::vector<const void*>& dipoles, int times) {
  for (const void* dipole : dipoles) {
    EXPECT_EQ(log.timesFreed(dipole), times);
  }
}

}  // namespace

TEST(FaceCopy, HoldsTheSameDipoles) {
  const auto face = faceOf(3);
  const auto copy = std::make_unique<CDipoleFace>(*face);
  EXPECT_EQ(dipolesOf(*copy), dipolesOf(*face));
}

TEST(FaceCopy, TakesCountAndCurrentIndex) {
  const auto face = faceOf(3);
  face->setCurrentDipole(1);
  const auto copy = std::make_unique<CDipoleFace>(*face);
  EXPECT_EQ(copy->getTotalDipoles(), 3UL);
  EXPECT_EQ(copy->getCurrentDipoleID(), 1);
}

TEST(FaceCopy, TakesHolesAndObjectsBehindTheCount) {
  const auto face = faceOf(5);
  face->deleteDipole(1, 0);
  leaveBehindCount(*face, 1);
  const auto copy = std::make_unique<CDipoleFace>(*face);
  EXPECT_EQ(idsOf(*copy), (Ids{0, -1, 2, 3}));
  EXPECT_EQ(copy->m_dipoles[4], face->m_dipoles[4]);
}

TEST(FaceCopy, TakesEverySetWideMember) {
  const auto face = faceOf(1);
  face->m_faceValue = 1.5;
  face->m_showDipoleOrientationAll = 2;
  face->m_allDipoleRange[2] = 3.5;
  face->m_bCtfSphereSet = 4;
  face->m_fileVersion = _T("v");
  face->m_patient = _T("p");
  face->m_mriFile = _T("m");
  face->m_megOnly = 5;
  face->m_coordinateType = 6;
  face->m_momentInNAm = 7;
  face->m_skipFiducialSetup = true;
  face->m_showCurrentDipoleOnly = 8;
  face->m_showDipoleLatencySelected = 9;
  face->m_showDipole2DOverlap = 10;
  face->m_mergeRadius = 11.5F;
  face->m_showFiducialPt = 12;
  face->m_showDipoleArray = 13;
  face->m_dimension[1] = 14;
  face->m_space[2] = 15.5;
  face->m_sphereLocational.m_radius = 16.5;
  face->m_sphereCtf.m_radius = 17.5;
  face->m_sphereRotation.m_center[1] = 18.5;
  face->m_sphereMriAngles.m_center[2] = 19.5;
  face->m_fiducialMri.setNasionf(20.0, 0.0, 0.0);
  face->m_fiducialCtf.setLeftEarf(21.0, 0.0, 0.0);
  face->m_cbfDipoleXYZ = [](double, double, double, double) { return 1; };
  face->m_cbfUpdateViewers = [](bool) { return 1; };
  face->m_managerTitle = _T("t");
  const auto constructed = std::make_unique<CDipoleFace>(*face);
  const auto assigned = std::make_unique<CDipoleFace>();
  *assigned = *face;
  for (const CDipoleFace* copy : {constructed.get(), assigned.get()}) {
    EXPECT_EQ(copy->m_faceValue, 1.5);
    EXPECT_EQ(copy->m_showDipoleOrientationAll, 2);
    EXPECT_EQ(copy->m_allDipoleRange[2], 3.5);
    EXPECT_EQ(copy->m_bCtfSphereSet, 4);
    EXPECT_EQ(toUtf8(copy->m_fileVersion), "v");
    EXPECT_EQ(toUtf8(copy->m_patient), "p");
    EXPECT_EQ(toUtf8(copy->m_mriFile), "m");
    EXPECT_EQ(copy->m_megOnly, 5);
    EXPECT_EQ(copy->m_coordinateType, 6);
    EXPECT_EQ(copy->m_momentInNAm, 7);
    EXPECT_TRUE(copy->m_skipFiducialSetup);
    EXPECT_EQ(copy->m_showCurrentDipoleOnly, 8);
    EXPECT_EQ(copy->m_showDipoleLatencySelected, 9);
    EXPECT_EQ(copy->m_showDipole2DOverlap, 10);
    EXPECT_EQ(copy->m_mergeRadius, 11.5F);
    EXPECT_EQ(copy->m_showFiducialPt, 12);
    EXPECT_EQ(copy->m_showDipoleArray, 13);
    EXPECT_EQ(copy->m_dimension[1], 14);
    EXPECT_EQ(copy->m_space[2], 15.5);
    EXPECT_EQ(copy->m_sphereLocational.m_radius, 16.5);
    EXPECT_EQ(copy->m_sphereCtf.m_radius, 17.5);
    EXPECT_EQ(copy->m_sphereRotation.m_center[1], 18.5);
    EXPECT_EQ(copy->m_sphereMriAngles.m_center[2], 19.5);
    EXPECT_EQ(copy->m_fiducialMri.m_points[0].m_values[4], 20.0);
    EXPECT_EQ(copy->m_fiducialCtf.m_points[1].m_values[4], 21.0);
    EXPECT_EQ(copy->m_cbfDipoleXYZ, face->m_cbfDipoleXYZ);
    EXPECT_EQ(copy->m_cbfUpdateViewers, face->m_cbfUpdateViewers);
    EXPECT_EQ(toUtf8(copy->m_managerTitle), "t");
  }
}

TEST(FaceCopy, ChangesInsideADipoleAreSeenThroughBoth) {
  const auto face = faceOf(3);
  const auto copy = std::make_unique<CDipoleFace>(*face);
  copy->setDipoleName(1, _T("seen"));
  EXPECT_EQ(toUtf8(face->getDipole(1)->m_label), "seen");
}

TEST(FaceCopy, SlotsCountAndCurrentIndexAreItsOwn) {
  const auto face = faceOf(3);
  const auto copy = std::make_unique<CDipoleFace>(*face);
  copy->deleteDipole(0, 1);
  copy->addDipole();
  EXPECT_EQ(idsOf(*face), (Ids{0, 1, 2}));
  EXPECT_EQ(idsOf(*copy), (Ids{1, 2, 0}));
  EXPECT_EQ(face->getCurrentDipoleID(), 2);
}

TEST(FaceCopy, EndingBeforeTheOriginalReleasesNothing) {
  auto face = faceOf(3);
  auto copy = std::make_unique<CDipoleFace>(*face);
  const std::vector<const void*> dipoles = dipolesOf(*face);
  const FreeLog log;
  copy.reset();
  expectFreed(log, dipoles, 0);
  face.reset();
  expectFreed(log, dipoles, 1);
}

TEST(FaceCopy, EndingAfterTheOriginalReleasesThemAll) {
  auto face = faceOf(3);
  auto copy = std::make_unique<CDipoleFace>(*face);
  const std::vector<const void*> dipoles = dipolesOf(*face);
  const FreeLog log;
  face.reset();
  expectFreed(log, dipoles, 0);
  EXPECT_EQ(idsOf(*copy), (Ids{0, 1, 2}));
  copy.reset();
  expectFreed(log, dipoles, 1);
}

TEST(FaceCopy, OfACopyReleasesOnceInEveryOrder) {
  for (int order = 0; order < 6; ++order) {
    auto first = faceOf(3);
    auto second = std::make_unique<CDipoleFace>(*first);
    auto third = std::make_unique<CDipoleFace>(*second);
    std::unique_ptr<CDipoleFace>* faces[] = {&first, &second, &third};
    const std::vector<const void*> dipoles = dipolesOf(*first);
    const int one = order % 3;
    const int two = (one + 1 + order / 3) % 3;
    const FreeLog log;
    faces[one]->reset();
    faces[two]->reset();
    expectFreed(log, dipoles, 0);
    faces[3 - one - two]->reset();
    expectFreed(log, dipoles, 1);
  }
}

TEST(FaceCopy, OfACopyWhoseOriginalIsGoneIsComplete) {
  auto first = faceOf(3);
  auto second = std::make_unique<CDipoleFace>(*first);
  first.reset();
  auto third = std::make_unique<CDipoleFace>(*second);
  second.reset();
  EXPECT_EQ(idsOf(*third), (Ids{0, 1, 2}));
  const std::vector<const void*> dipoles = dipolesOf(*third);
  const FreeLog log;
  third.reset();
  expectFreed(log, dipoles, 1);
}

TEST(FaceCopy, ADeleteInTheCopyKeepsTheDipoleOfTheOriginal) {
  const auto face = faceOf(3);
  auto copy = std::make_unique<CDipoleFace>(*face);
  const void* dipole = face->getDipole(1);
  const FreeLog log;
  copy->deleteDipole(1, 1);
  EXPECT_EQ(log.timesFreed(dipole), 0);
  EXPECT_EQ(face->getDipole(1), dipole);
  copy.reset();
  EXPECT_EQ(log.timesFreed(dipole), 0);
}

TEST(FaceCopy, ADeleteInBothReleasesTheDipole) {
  const auto face = faceOf(3);
  const auto copy = std::make_unique<CDipoleFace>(*face);
  const void* dipole = face->getDipole(1);
  const FreeLog log;
  face->deleteDipole(1, 1);
  copy->setCurrentDipole(1);
  copy->deleteCurrentDipole();
  EXPECT_EQ(log.timesFreed(dipole), 1);
}

TEST(FaceCopy, CleaningTheOriginalKeepsTheCopy) {
  const auto face = faceOf(3);
  const auto copy = std::make_unique<CDipoleFace>(*face);
  face->cleanDipoles();
  EXPECT_EQ(idsOf(*copy), (Ids{0, 1, 2}));
}

TEST(FaceCopy, ADipoleAddedAfterwardsBelongsToOneAlone) {
  const auto face = faceOf(2);
  const auto copy = std::make_unique<CDipoleFace>(*face);
  copy->addDipole();
  const void* dipole = copy->getDipole(2);
  const FreeLog log;
  copy->deleteDipole(2, 1);
  EXPECT_EQ(log.timesFreed(dipole), 1);
}

TEST(FaceCopy, AnObjectBehindTheCountIsReleasedWhenBothPutSomethingInItsSlot) {
  const auto face = faceOf(3);
  leaveBehindCount(*face, 1);
  const auto copy = std::make_unique<CDipoleFace>(*face);
  const void* left = face->m_dipoles[2];
  const FreeLog log;
  face->addDipole();
  EXPECT_EQ(log.timesFreed(left), 0);
  copy->addDipole();
  EXPECT_EQ(log.timesFreed(left), 1);
}

TEST(FaceCopy, ReOrderInTheCopyNumbersTheSharedDipoles) {
  const auto face = faceOf(3);
  const auto copy = std::make_unique<CDipoleFace>(*face);
  copy->deleteDipole(0, 0);
  copy->reOrderDipoles();
  EXPECT_EQ(numbersOf(*face), (Ids{0, 1, 2}));
  EXPECT_EQ(numbersOf(*copy), (Ids{1, 2}));
}

TEST(FaceCopy, OfAnEmptyCollectionIsEmpty) {
  const auto face = std::make_unique<CDipoleFace>();
  const auto copy = std::make_unique<CDipoleFace>(*face);
  EXPECT_EQ(copy->getTotalDipoles(), 0UL);
  copy->addDipole();
  EXPECT_EQ(face->getTotalDipoles(), 0UL);
}

TEST(FaceAssignment, OverAFilledCollectionReleasesWhatItHeld) {
  const auto face = faceOf(3);
  const auto target = faceOf(4);
  const std::vector<const void*> before = dipolesOf(*target);
  const FreeLog log;
  EXPECT_EQ(&(*target = *face), target.get());
  expectFreed(log, before, 1);
  EXPECT_EQ(dipolesOf(*target), dipolesOf(*face));
}

TEST(FaceAssignment, ReleasesObjectsBehindTheCountOfItsTarget) {
  const auto face = faceOf(1);
  const auto target = faceOf(4);
  leaveBehindCount(*target, 2);
  const std::vector<const void*> before = dipolesOf(*target);
  const FreeLog log;
  *target = *face;
  expectFreed(log, before, 1);
  EXPECT_EQ(leftovers(*target), 0);
}

TEST(FaceAssignment, ToItselfKeepsEverything) {
  const auto face = faceOf(3);
  const std::vector<const void*> dipoles = dipolesOf(*face);
  const CDipoleFace& same = *face;
  const FreeLog log;
  *face = same;
  expectFreed(log, dipoles, 0);
  EXPECT_EQ(dipolesOf(*face), dipoles);
  EXPECT_EQ(face->getCurrentDipoleID(), 2);
}

TEST(FaceAssignment, OfAViewToItsOriginalKeepsTheDipoles) {
  const auto face = faceOf(3);
  const auto copy = std::make_unique<CDipoleFace>(*face);
  const std::vector<const void*> dipoles = dipolesOf(*face);
  const FreeLog log;
  *face = *copy;
  *copy = *face;
  expectFreed(log, dipoles, 0);
  EXPECT_EQ(idsOf(*face), (Ids{0, 1, 2}));
}

TEST(FaceAssignment, BetweenViewsOfDifferentSetsReleasesEachDipoleOnce) {
  auto a = faceOf(3);
  auto b = faceOf(4);
  auto viewOfA = std::make_unique<CDipoleFace>(*a);
  auto viewOfB = std::make_unique<CDipoleFace>(*b);
  const std::vector<const void*> ofA = dipolesOf(*a);
  const std::vector<const void*> ofB = dipolesOf(*b);
  const FreeLog log;
  *viewOfA = *b;
  *b = *a;
  expectFreed(log, ofA, 0);
  expectFreed(log, ofB, 0);
  a.reset();
  viewOfB.reset();
  expectFreed(log, ofB, 0);
  viewOfA.reset();
  expectFreed(log, ofB, 1);
  b.reset();
  expectFreed(log, ofA, 1);
}

TEST(FaceCopy, ThatRunsOutOfMemoryLeavesTheOriginalWhole) {
  auto face = faceOf(3);
  bool failed = true;
  for (int nth = 1; failed; ++nth) {
    const FailingNew failing(nth);
    runsOutOfMemory([&] { const auto copy = std::make_unique<CDipoleFace>(*face); });
    failed = failing.failed();
  }
  EXPECT_EQ(idsOf(*face), (Ids{0, 1, 2}));
  const std::vector<const void*> dipoles = dipolesOf(*face);
  const FreeLog log;
  face.reset();
  expectFreed(log, dipoles, 1);
}
