// Deleting dipoles and closing the gaps: counts, indices, and who is released when.
#include <climits>
#include <gtest/gtest.h>

#include "tests/collection/FaceFixture.h"
#include "tests/support/FreeLog.h"

TEST(DeleteCurrentDipole, RemovesItAndClosesTheGap) {
  const auto face = faceOf(4);
  face->setCurrentDipole(1);
  EXPECT_EQ(face->deleteCurrentDipole(), 1);
  EXPECT_EQ(idsOf(*face), (Ids{0, 2, 3}));
}

TEST(DeleteCurrentDipole, ReleasesThatDipoleOnceAndNoOther) {
  const auto face = faceOf(3);
  face->setCurrentDipole(1);
  const void* gone = face->getDipole(1);
  const void* stays[] = {face->getDipole(0), face->getDipole(2)};
  const FreeLog log;
  face->deleteCurrentDipole();
  EXPECT_EQ(log.timesFreed(gone), 1);
  EXPECT_EQ(log.timesFreed(stays[0]), 0);
  EXPECT_EQ(log.timesFreed(stays[1]), 0);
}

TEST(DeleteCurrentDipole, TheOneBehindItBecomesTheCurrentOne) {
  const auto face = faceOf(4);
  face->setCurrentDipole(1);
  face->deleteCurrentDipole();
  EXPECT_EQ(face->getCurrentDipoleID(), 1);
  EXPECT_EQ(face->getCurrentDipole()->m_id, 2);
}

TEST(DeleteCurrentDipole, OfTheLastOneMakesTheNewLastOneCurrent) {
  const auto face = faceOf(4);
  face->deleteCurrentDipole();
  EXPECT_EQ(face->getCurrentDipoleID(), 2);
  EXPECT_EQ(idsOf(*face), (Ids{0, 1, 2}));
}

TEST(DeleteCurrentDipole, OfTheOnlyDipoleLeavesCountZeroAndCurrentMinusOne) {
  const auto face = faceOf(1);
  EXPECT_EQ(face->deleteCurrentDipole(), 1);
  EXPECT_EQ(face->getTotalDipoles(), 0UL);
  EXPECT_EQ(face->getCurrentDipoleID(), -1);
}

TEST(DeleteCurrentDipole, OfAnEmptyCollectionChangesNothingAndReturnsOne) {
  ScriptedOperator user;
  const auto face = std::make_unique<CDipoleFace>();
  EXPECT_EQ(face->deleteCurrentDipole(), 1);
  EXPECT_EQ(face->getCurrentDipoleID(), 0);
  EXPECT_TRUE(user.messages.empty());
}

TEST(DeleteCurrentDipole, OnAHoleClosesIt) {
  const auto face = faceOf(3);
  face->deleteDipole(1, 0);
  face->setCurrentDipole(1);
  EXPECT_EQ(face->deleteCurrentDipole(), 1);
  EXPECT_EQ(idsOf(*face), (Ids{0, 2}));
}

TEST(DeleteCurrentDipole, WithoutACurrentDipoleDeletesNothing) {
  const auto face = faceOf(3);
  for (const int index : {-1, -7, 3, INT_MAX}) {
    face->m_currentDipole = index;
    EXPECT_EQ(face->deleteCurrentDipole(), 1);
    EXPECT_EQ(idsOf(*face), (Ids{0, 1, 2})) << index;
  }
}

TEST(DeleteCurrentDipole, LeavesNoPointerBehindTheCount) {
  const auto face = faceOf(3);
  face->setCurrentDipole(0);
  face->deleteCurrentDipole();
  EXPECT_EQ(leftovers(*face), 0);
}

TEST(DeleteCurrentDipole, ReleasesTheObjectInTheSlotBehindTheOldCount) {
  const auto face = faceOf(4);
  leaveBehindCount(*face, 1);
  face->setCurrentDipole(0);
  const void* left = face->m_dipoles[3];
  const FreeLog log;
  face->deleteCurrentDipole();
  EXPECT_EQ(log.timesFreed(left), 1);
  EXPECT_EQ(leftovers(*face), 0);
}

TEST(DeleteCurrentDipole, KeepsObjectsFurtherBehind) {
  const auto face = faceOf(5);
  leaveBehindCount(*face, 2);
  face->setCurrentDipole(0);
  const CDipoleszq* further = face->m_dipoles[4];
  face->deleteCurrentDipole();
  EXPECT_EQ(face->m_dipoles[4], further);
  EXPECT_EQ(face->m_dipoles[3], nullptr);
  EXPECT_EQ(face->m_dipoles[2], nullptr);
}

TEST(DeleteDipole, WithShiftClosesTheGap) {
  const auto face = faceOf(4);
  EXPECT_EQ(face->deleteDipole(1, 1), 1);
  EXPECT_EQ(idsOf(*face), (Ids{0, 2, 3}));
}

TEST(DeleteDipole, AnyShiftOtherThanZeroClosesTheGap) {
  const auto face = faceOf(4);
  face->deleteDipole(1, -2);
  EXPECT_EQ(idsOf(*face), (Ids{0, 2, 3}));
}

TEST(DeleteDipole, WithShiftKeepsTheCurrentIndexInRange) {
  const auto face = faceOf(4);
  face->deleteDipole(0, 1);
  EXPECT_EQ(face->getCurrentDipoleID(), 2);
  face->deleteDipole(0, 1);
  EXPECT_EQ(face->getCurrentDipoleID(), 1);
}

TEST(DeleteDipole, WithShiftLeavesACurrentIndexInRangeAlone) {
  const auto face = faceOf(4);
  face->setCurrentDipole(2);
  face->deleteDipole(0, 1);
  EXPECT_EQ(face->getCurrentDipoleID(), 2);
  EXPECT_EQ(face->getCurrentDipole()->m_id, 3);
}

TEST(DeleteDipole, OfTheOnlyDipoleLeavesCountZeroAndCurrentMinusOne) {
  const auto face = faceOf(1);
  face->deleteDipole(0, 1);
  EXPECT_EQ(face->getTotalDipoles(), 0UL);
  EXPECT_EQ(face->getCurrentDipoleID(), -1);
}

TEST(DeleteDipole, IndicesAreClampedIntoTheRange) {
  for (const int shift : {0, 1}) {
    const auto face = faceOf(4);
    const void* first = face->getDipole(0);
    const void* last = face->getDipole(3);
    const FreeLog log;
    face->deleteDipole(INT_MAX, shift);
    EXPECT_EQ(log.timesFreed(last), 1);
    face->deleteDipole(-1, shift);
    EXPECT_EQ(log.timesFreed(first), 1);
  }
}

TEST(DeleteDipole, MinusOneIsNotTheCurrentDipole) {
  const auto face = faceOf(4);
  face->setCurrentDipole(2);
  face->deleteDipole(-1, 1);
  EXPECT_EQ(idsOf(*face), (Ids{1, 2, 3}));
}

TEST(DeleteDipole, WithoutShiftLeavesAHoleUntilReOrder) {
  const auto face = faceOf(10);
  EXPECT_EQ(face->deleteDipole(7, 0), 1);
  EXPECT_EQ(face->getTotalDipoles(), 10UL);
  EXPECT_EQ(face->getDipole(7), nullptr);
  face->reOrderDipoles();
  EXPECT_EQ(face->getTotalDipoles(), 9UL);
  EXPECT_EQ(numbersOf(*face), (Ids{1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST(DeleteDipole, WithoutShiftKeepsTheCurrentIndex) {
  const auto face = faceOf(3);
  face->deleteDipole(2, 0);
  EXPECT_EQ(face->getCurrentDipoleID(), 2);
  EXPECT_EQ(face->getCurrentDipole(), nullptr);
}

TEST(DeleteDipole, OnAHoleWithoutShiftChangesNothing) {
  const auto face = faceOf(3);
  face->deleteDipole(1, 0);
  EXPECT_EQ(face->deleteDipole(1, 0), 1);
  EXPECT_EQ(idsOf(*face), (Ids{0, -1, 2}));
}

TEST(DeleteDipole, OnAHoleWithShiftClosesItAlone) {
  const auto face = faceOf(4);
  face->deleteDipole(1, 0);
  face->deleteDipole(2, 0);
  face->deleteDipole(1, 1);
  EXPECT_EQ(idsOf(*face), (Ids{0, -1, 3}));
}

TEST(DeleteDipole, WithShiftMovesHolesAlong) {
  const auto face = faceOf(5);
  face->deleteDipole(3, 0);
  face->deleteDipole(0, 1);
  EXPECT_EQ(idsOf(*face), (Ids{1, 2, -1, 4}));
}

TEST(DeleteDipole, OfAnEmptyCollectionChangesNothingAndReturnsOne) {
  ScriptedOperator user;
  const auto face = std::make_unique<CDipoleFace>();
  EXPECT_EQ(face->deleteDipole(0, 0), 1);
  EXPECT_EQ(face->deleteDipole(0, 1), 1);
  EXPECT_EQ(face->getTotalDipoles(), 0UL);
  EXPECT_EQ(face->getCurrentDipoleID(), 0);
  EXPECT_TRUE(user.messages.empty());
}

TEST(DeleteDipole, ReleasesThatDipoleOnceAndNoOther) {
  for (const int shift : {0, 1}) {
    const auto face = faceOf(3);
    const void* gone = face->getDipole(1);
    const void* stays[] = {face->getDipole(0), face->getDipole(2)};
    const FreeLog log;
    face->deleteDipole(1, shift);
    EXPECT_EQ(log.timesFreed(gone), 1) << shift;
    EXPECT_EQ(log.timesFreed(stays[0]), 0) << shift;
    EXPECT_EQ(log.timesFreed(stays[1]), 0) << shift;
  }
}

TEST(DeleteDipole, WithShiftReleasesTheObjectInTheSlotBehindTheOldCount) {
  const auto face = faceOf(4);
  leaveBehindCount(*face, 1);
  const void* left = face->m_dipoles[3];
  const FreeLog log;
  face->deleteDipole(0, 1);
  EXPECT_EQ(log.timesFreed(left), 1);
  EXPECT_EQ(leftovers(*face), 0);
}

TEST(DeleteDipole, WithoutShiftKeepsObjectsBehindTheCount) {
  const auto face = faceOf(4);
  leaveBehindCount(*face, 1);
  const CDipoleszq* left = face->m_dipoles[3];
  face->deleteDipole(0, 0);
  EXPECT_EQ(face->m_dipoles[3], left);
}

TEST(DeleteDipole, DoesNotRenumber) {
  const auto face = faceOf(3);
  face->reOrderDipoles();
  face->deleteDipole(0, 1);
  EXPECT_EQ(numbersOf(*face), (Ids{2, 3}));
}

TEST(CleanDipoles, LeavesCountZeroAndCurrentMinusOne) {
  const auto face = faceOf(3);
  EXPECT_EQ(face->cleanDipoles(), 1);
  EXPECT_EQ(face->getTotalDipoles(), 0UL);
  EXPECT_EQ(face->getCurrentDipoleID(), -1);
}

TEST(CleanDipoles, OfAnEmptyCollectionMakesCurrentMinusOne) {
  const auto face = std::make_unique<CDipoleFace>();
  EXPECT_EQ(face->cleanDipoles(), 1);
  EXPECT_EQ(face->getCurrentDipoleID(), -1);
}

TEST(CleanDipoles, ReleasesEveryDipoleOnceTheOnesBehindTheCountToo) {
  const auto face = faceOf(6);
  face->deleteDipole(1, 0);
  leaveBehindCount(*face, 2);
  std::vector<const void*> held;
  for (const int slot : {0, 2, 3, 4, 5}) {
    held.push_back(face->m_dipoles[slot]);
  }
  const FreeLog log;
  face->cleanDipoles();
  for (const void* dipole : held) {
    EXPECT_EQ(log.timesFreed(dipole), 1);
  }
}

TEST(CleanDipoles, EmptiesEverySlot) {
  const auto face = faceOf(6);
  leaveBehindCount(*face, 2);
  face->cleanDipoles();
  EXPECT_EQ(leftovers(*face), 0);
}

TEST(CleanDipoles, WalksToTheLastSlot) {
  const auto face = faceOf(1);
  face->m_dipoles.store(DipoleTable::capacity - 1, std::make_unique<CDipoleszq>());
  const void* last = face->m_dipoles[DipoleTable::capacity - 1];
  const FreeLog log;
  face->cleanDipoles();
  EXPECT_EQ(log.timesFreed(last), 1);
}

TEST(CleanDipoles, TheNextDipoleTakesSlotZero) {
  const auto face = faceOf(3);
  face->cleanDipoles();
  EXPECT_EQ(face->addDipole(), 1);
  EXPECT_NE(face->m_dipoles[0], nullptr);
}

TEST(CleanDipoles, LeavesTheSetWideMembers) {
  const auto face = faceOf(3);
  face->m_patient = _T("P1");
  face->cleanDipoles();
  EXPECT_EQ(toUtf8(face->m_patient), "P1");
}

TEST(Destruction, ReleasesEveryDipoleOnceTheOnesBehindTheCountToo) {
  auto face = faceOf(4);
  leaveBehindCount(*face, 2);
  std::vector<const void*> held;
  for (int slot = 0; slot < 4; ++slot) {
    held.push_back(face->m_dipoles[slot]);
  }
  const FreeLog log;
  face.reset();
  for (const void* dipole : held) {
    EXPECT_EQ(log.timesFreed(dipole), 1);
  }
}

TEST(ReOrderDipoles, ClosesHolesKeepingTheOrder) {
  const auto face = faceOf(7);
  for (const int index : {0, 3, 4}) {
    face->deleteDipole(index, 0);
  }
  EXPECT_EQ(face->reOrderDipoles(), 1);
  EXPECT_EQ(idsOf(*face), (Ids{1, 2, 5, 6}));
}

TEST(ReOrderDipoles, NumbersFromOne) {
  const auto face = faceOf(4);
  face->deleteDipole(1, 0);
  face->reOrderDipoles();
  EXPECT_EQ(numbersOf(*face), (Ids{1, 2, 3}));
}

TEST(ReOrderDipoles, WithoutHolesNumbersToo) {
  const auto face = faceOf(3);
  face->reOrderDipoles();
  EXPECT_EQ(idsOf(*face), (Ids{0, 1, 2}));
  EXPECT_EQ(numbersOf(*face), (Ids{1, 2, 3}));
}

TEST(ReOrderDipoles, ReleasesNothing) {
  const auto face = faceOf(4);
  face->deleteDipole(1, 0);
  const FreeLog log;
  face->reOrderDipoles();
  for (int slot = 0; slot < 3; ++slot) {
    EXPECT_EQ(log.timesFreed(face->m_dipoles[slot]), 0);
  }
}

TEST(ReOrderDipoles, ACurrentIndexBeyondTheEndBecomesTheLast) {
  const auto face = faceOf(5);
  face->deleteDipole(0, 0);
  face->deleteDipole(1, 0);
  face->reOrderDipoles();
  EXPECT_EQ(face->getCurrentDipoleID(), 2);
}

TEST(ReOrderDipoles, ACurrentIndexInRangeStays) {
  const auto face = faceOf(5);
  face->setCurrentDipole(1);
  face->deleteDipole(0, 0);
  face->reOrderDipoles();
  EXPECT_EQ(face->getCurrentDipoleID(), 1);
}

TEST(ReOrderDipoles, OfAnEmptyCollectionMakesCurrentMinusOne) {
  const auto face = std::make_unique<CDipoleFace>();
  EXPECT_EQ(face->reOrderDipoles(), 1);
  EXPECT_EQ(face->getTotalDipoles(), 0UL);
  EXPECT_EQ(face->getCurrentDipoleID(), -1);
}

TEST(ReOrderDipoles, OfHolesAloneLeavesCountZeroAndCurrentMinusOne) {
  const auto face = faceOf(2);
  face->deleteDipole(0, 0);
  face->deleteDipole(1, 0);
  face->reOrderDipoles();
  EXPECT_EQ(face->getTotalDipoles(), 0UL);
  EXPECT_EQ(face->getCurrentDipoleID(), -1);
}

TEST(ReOrderDipoles, ANegativeCountBecomesZero) {
  const auto face = std::make_unique<CDipoleFace>();
  face->m_totalDipoles = -3;
  face->reOrderDipoles();
  EXPECT_EQ(face->m_totalDipoles, 0);
}

TEST(ReOrderDipoles, LeavesNoDipoleInTwoSlots) {
  const auto face = faceOf(5);
  face->deleteDipole(1, 0);
  face->reOrderDipoles();
  EXPECT_EQ(leftovers(*face), 0);
}

TEST(ReOrderDipoles, KeepsObjectsBehindTheOldCount) {
  const auto face = faceOf(5);
  leaveBehindCount(*face, 1);
  face->deleteDipole(1, 0);
  const CDipoleszq* left = face->m_dipoles[4];
  face->reOrderDipoles();
  EXPECT_EQ(face->m_dipoles[4], left);
  EXPECT_EQ(left->m_number, 0);
}

TEST(ReSortDipoles, ClosesHolesWithoutNumbering) {
  const auto face = faceOf(4);
  face->reOrderDipoles();
  face->deleteDipole(1, 0);
  EXPECT_EQ(face->reSortDipoles(), 1);
  EXPECT_EQ(idsOf(*face), (Ids{0, 2, 3}));
  EXPECT_EQ(numbersOf(*face), (Ids{1, 3, 4}));
}

TEST(ReSortDipoles, ACurrentIndexBeyondTheEndBecomesTheLast) {
  const auto face = faceOf(5);
  face->deleteDipole(0, 0);
  face->reSortDipoles();
  EXPECT_EQ(face->getCurrentDipoleID(), 3);
}

TEST(ReSortDipoles, ANegativeCurrentIndexBecomesZero) {
  const auto face = faceOf(3);
  face->m_currentDipole = -1;
  face->reSortDipoles();
  EXPECT_EQ(face->getCurrentDipoleID(), 0);
}

TEST(ReSortDipoles, AnEmptiedCollectionEndsWithCurrentZero) {
  const auto face = faceOf(2);
  face->deleteDipole(0, 0);
  face->deleteDipole(1, 0);
  face->reSortDipoles();
  EXPECT_EQ(face->getTotalDipoles(), 0UL);
  EXPECT_EQ(face->getCurrentDipoleID(), 0);
}

TEST(ReSortDipoles, AnEmptyCollectionEndsWithCurrentZero) {
  const auto face = faceOf(1);
  face->cleanDipoles();
  EXPECT_EQ(face->reSortDipoles(), 1);
  EXPECT_EQ(face->getCurrentDipoleID(), 0);
}

TEST(ReSortDipoles, LeavesNoDipoleInTwoSlots) {
  const auto face = faceOf(5);
  face->deleteDipole(0, 0);
  face->reSortDipoles();
  EXPECT_EQ(leftovers(*face), 0);
}
