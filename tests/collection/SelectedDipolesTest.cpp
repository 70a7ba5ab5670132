// Commands on several dipoles: which ones they reach, what an average is, and what is current afterwards.
#include <cmath>
#include <limits>

#include "collection/SelectedDipoles.h"
#include "tests/collection/FaceFixture.h"
#include "tests/support/FailingNew.h"
#include "tests/support/Thrown.h"

namespace {

// As faceOf, of the layer that can show and hide; item ids are the slots.
std::unique_ptr<CDipoleFace3On3DView> listedFace(int count) {
  auto face = std::make_unique<CDipoleFace3On3DView>();
  for (int n = 0; n < count; ++n) {
    const auto value = static_cast<float>(n);
    face->addDipoleF(value, 10.0F * value, 100.0F * value);
    face->getDipole(-1)->m_id = n;
    face->setDipoleListItemID(-1, n);
  }
  return face;
}

void place(CDipoleszq& dipole, double x, double y, double z) {
  dipole.m_location[0] = x;
  dipole.m_location[1] = y;
  dipole.m_location[2] = z;
}

std::vector<int> shownOf(const CDipoleFace& face) {
  std::vector<int> shown;
  for (int slot = 0; slot < face.m_totalDipoles; ++slot) {
    shown.push_back(face.getDipole(slot)->m_show);
  }
  return shown;
}

TEST(DipolesOfRows, GoesByTheItemNotByTheSlot) {
  const auto face = listedFace(3);
  face->setDipoleListItemID(0, 2);
  face->setDipoleListItemID(2, 0);
  EXPECT_EQ(dipolesOfRows(*face, {true, false, false}), DipoleSlots{2});
  EXPECT_EQ(dipolesOfRows(*face, {true, true, true}), (DipoleSlots{0, 1, 2}));
}

TEST(DipolesOfRows, LeavesOutWhatIsNotListed) {
  const auto face = listedFace(4);
  face->setDipoleListItemID(1, -1);
  face->setDipoleListItemID(3, 4);  // behind the last row
  face->deleteDipole(2, 0);
  EXPECT_EQ(dipolesOfRows(*face, {true, true, true, true}), DipoleSlots{0});
}

TEST(DipolesOfRows, AreNoneWithoutACurrentDipole) {
  const auto face = listedFace(2);
  face->m_currentDipole = -1;
  EXPECT_EQ(dipolesOfRows(*face, {true, true}), DipoleSlots{});
}

TEST(MarkRows, SetsTheFlagsOfTheseAndClearsAllOthers) {
  const auto face = listedFace(5);
  face->setDipoleSelection(0, true);
  face->setDipoleSelection(1, true);
  face->setDipoleListItemID(2, 4);
  face->setDipoleListItemID(4, 2);
  face->deleteDipole(3, 0);
  EXPECT_EQ(markRows(*face, {false, true, true, true, false}), (DipoleSlots{1, 4}));
  EXPECT_FALSE(face->getDipole(0)->m_selected);
  EXPECT_TRUE(face->getDipole(1)->m_selected);
  EXPECT_FALSE(face->getDipole(2)->m_selected);
  EXPECT_TRUE(face->getDipole(4)->m_selected);
}

TEST(MarkRows, WithoutMemoryLeavesEveryFlagAsItWas) {
  for (int nth = 1; nth <= 3; ++nth) {
    const auto face = listedFace(5);
    face->setDipoleSelection(1, true);
    const std::vector<bool> rows = {true, false, true, true, true};
    bool isOut = false;
    {
      const FailingNew failing(nth);
      isOut = runsOutOfMemory([&] { markRows(*face, rows); });
    }
    EXPECT_TRUE(isOut) << nth;
    for (int slot = 0; slot < 5; ++slot) {
      EXPECT_EQ(face->getDipole(slot)->m_selected, slot == 1) << nth << " " << slot;
    }
  }
}

TEST(MarkRows, ClearsAllFlagsWhenNoRowIsSelected) {
  const auto face = listedFace(2);
  face->setDipoleSelection(1, true);
  EXPECT_EQ(markRows(*face, {}), DipoleSlots{});
  EXPECT_FALSE(face->getDipole(1)->m_selected);
}

TEST(MarkRows, ClearsAllFlagsWithoutACurrentDipole) {
  const auto face = listedFace(2);
  face->setDipoleSelection(1, true);
  face->m_currentDipole = -1;
  EXPECT_EQ(markRows(*face, {true, true}), DipoleSlots{});
  EXPECT_FALSE(face->getDipole(1)->m_selected);
}

TEST(DeleteDipoles, ClosesTheGapsAndKeepsTheCurrentIndexInRange) {
  const auto face = listedFace(5);
  face->setCurrentDipole(4);
  deleteDipoles(*face, {0, 2, 4});
  EXPECT_EQ(idsOf(*face), (Ids{1, 3}));
  EXPECT_EQ(face->getCurrentDipoleID(), 1);
  deleteDipoles(*face, {0, 1});
  EXPECT_EQ(face->getTotalDipoles(), 0U);
  EXPECT_EQ(face->getCurrentDipoleID(), 0);  // deliberately not -1
}

TEST(ShowDipoles, MakesTheLastShownCurrent) {
  const auto face = listedFace(4);
  face->setShowAllDipole(0);
  showDipoles(*face, {0, 2}, 1);
  EXPECT_EQ(shownOf(*face), (Ids{1, 0, 1, 0}));
  EXPECT_EQ(face->getCurrentDipoleID(), 2);
}

TEST(ShowDipoles, HidingTheCurrentOneMakesTheLastStillShownCurrent) {
  const auto face = listedFace(4);
  face->setCurrentDipole(0);
  showDipoles(*face, {0, 3}, 0);
  EXPECT_EQ(shownOf(*face), (Ids{0, 1, 1, 0}));
  EXPECT_EQ(face->getCurrentDipoleID(), 2);
}

TEST(NameAndColorDipoles, ReachTheseOnly) {
  const auto face = listedFace(3);
  nameDipoles(*face, {0, 2}, _T("focus"));
  colorDipoles(*face, {1}, RGB(1, 2, 3));
  EXPECT_EQ(face->getDipole(0)->m_label, _T("focus"));
  EXPECT_EQ(face->getDipole(1)->m_label, _T("Non"));
  EXPECT_EQ(face->getDipole(2)->m_label, _T("focus"));
  EXPECT_EQ(face->getDipole(0)->m_color, 65535U);
  EXPECT_EQ(face->getDipole(1)->m_color, 0x030201U);
  EXPECT_EQ(face->getDipole(1)->m_colorF[2], 3.0F / 256.0F);
}

// -1 is the current dipole elsewhere, and deleteDipole clamps what is outside: here both are left out.
TEST(SlotsOutside, AreLeftOutByEveryCommand) {
  for (const DipoleSlots& outside : {DipoleSlots{-1}, DipoleSlots{3}, DipoleSlots{-1, -7, 3, 30000}}) {
    const auto face = listedFace(3);
    face->setCurrentDipole(1);
    deleteDipoles(*face, outside);
    ASSERT_EQ(idsOf(*face), (Ids{0, 1, 2}));
    nameDipoles(*face, outside, _T("nobody"));
    colorDipoles(*face, outside, RGB(1, 2, 3));
    showDipoles(*face, outside, 0);
    EXPECT_EQ(averageOf(*face, outside).count, 0);
    EXPECT_FALSE(addAverage(*face, outside));
    EXPECT_FALSE(replaceByAverage(*face, outside));
    ASSERT_EQ(idsOf(*face), (Ids{0, 1, 2}));
    EXPECT_EQ(face->getCurrentDipoleID(), 1);
    EXPECT_EQ(shownOf(*face), (Ids{1, 1, 1}));
    for (int slot = 0; slot < 3; ++slot) {
      EXPECT_EQ(face->getDipole(slot)->m_label, _T("Non"));
      EXPECT_EQ(face->getDipole(slot)->m_color, 65535U);
    }
    face->setShowAllDipole(0);
    showDipoles(*face, outside, 1);
    EXPECT_EQ(shownOf(*face), (Ids{0, 0, 0}));
  }
}

TEST(SlotsOutside, DoNotKeepTheOthersFromTheirPart) {
  const auto face = listedFace(4);
  face->setCurrentDipole(0);
  const DipoleSlots mixed = {-1, 1, 3, 4};
  const DipoleAverage average = averageOf(*face, mixed);
  EXPECT_EQ(average.count, 2);
  EXPECT_EQ(average.location[0], 2.0);
  nameDipoles(*face, mixed, _T("focus"));
  EXPECT_EQ(face->getDipole(0)->m_label, _T("Non"));
  EXPECT_EQ(face->getDipole(3)->m_label, _T("focus"));
  deleteDipoles(*face, mixed);
  EXPECT_EQ(idsOf(*face), (Ids{0, 2}));
}

// An empty current slot: hiding it would make another dipole the current one.
TEST(ShowDipoles, LeavesAnEmptySlotOut) {
  const auto face = listedFace(3);
  face->setCurrentDipole(1);
  face->deleteDipole(1, 0);
  showDipoles(*face, {1}, 0);
  EXPECT_EQ(face->getCurrentDipoleID(), 1);
}

TEST(NameDipoles, ClosesGapsThatWereThere) {
  const auto face = listedFace(3);
  face->deleteDipole(1, 0);
  nameDipoles(*face, {}, _T("nobody"));
  EXPECT_EQ(idsOf(*face), (Ids{0, 2}));
}

TEST(AverageOf, IsTheMeanOfEveryQuantity) {
  const auto face = listedFace(3);
  for (int slot = 0; slot < 3; ++slot) {
    CDipoleszq& dipole = *face->getDipole(slot);
    dipole.setDipoleOrientation(slot, 2.0 * slot, -slot);
    dipole.m_latency = 10.0 + slot;
    dipole.m_moment = 5.0 * slot;
    dipole.m_fitError = 0.5 + slot;
  }
  const DipoleAverage average = averageOf(*face, {0, 2});
  EXPECT_EQ(average.count, 2);
  EXPECT_EQ(average.location[0], 1.0);
  EXPECT_EQ(average.location[1], 10.0);
  EXPECT_EQ(average.location[2], 100.0);
  EXPECT_EQ(average.orientation[0], 1.0);
  EXPECT_EQ(average.orientation[1], 2.0);
  EXPECT_EQ(average.orientation[2], -1.0);
  EXPECT_EQ(average.latency, 11.0);
  EXPECT_EQ(average.moment, 5.0);
  EXPECT_EQ(average.fitError, 1.5);
  EXPECT_EQ(average.size, (2.0 * 0.5 + 20.0 * 0.5 + 200.0 * 0.5) / 3.0);
}

TEST(AverageOf, MeasuresTheBoxFromTheOrigin) {
  const auto face = listedFace(2);
  place(*face->getDipole(0), 10.0, -4.0, 3.0);
  place(*face->getDipole(1), 20.0, -8.0, -5.0);
  // x: 0 to 20, y: -8 to 0, z: -5 to 3
  EXPECT_EQ(averageOf(*face, {0, 1}).size, (10.0 + 4.0 + 4.0) / 3.0);
}

TEST(AverageOf, LeavesACoordinateThatIsNoNumberOutOfTheBox) {
  const auto face = listedFace(2);
  place(*face->getDipole(0), std::numeric_limits<double>::quiet_NaN(), 0.0, 0.0);
  place(*face->getDipole(1), 6.0, 0.0, 0.0);
  const DipoleAverage average = averageOf(*face, {0, 1});
  EXPECT_TRUE(std::isnan(average.location[0]));
  EXPECT_EQ(average.size, 1.0);
}

TEST(AverageOf, NothingIsNothing) {
  const auto face = listedFace(2);
  EXPECT_EQ(averageOf(*face, {}).count, 0);
  face->deleteDipole(1, 0);
  EXPECT_EQ(averageOf(*face, {0, 1, 7}).count, 1);
}

TEST(AddAverage, AppendsADipoleWithTheDefaultsOfANewOne) {
  const auto face = listedFace(3);
  EXPECT_TRUE(addAverage(*face, {1, 2}));
  EXPECT_EQ(face->getTotalDipoles(), 4U);
  EXPECT_EQ(face->getCurrentDipoleID(), 3);
  const CDipoleszq& added = *face->getDipole(3);
  EXPECT_EQ(added.m_label, _T("AverageDipole_2"));
  EXPECT_EQ(added.m_location[2], 150.0);
  EXPECT_EQ(added.m_number, 0);
  EXPECT_EQ(added.m_show, 1);
  EXPECT_EQ(added.m_color, 65535U);
  EXPECT_EQ(added.m_orientationLength, 30.0);
}

TEST(AddAverage, GivesTheNewDipoleEveryMeanOfTheSelection) {
  const auto face = listedFace(3);
  for (int slot = 0; slot < 3; ++slot) {
    CDipoleszq& dipole = *face->getDipole(slot);
    place(dipole, 4.0 * slot, -8.0 * slot, 16.0 * slot);
    dipole.setDipoleOrientation(0.25 * slot, -0.5 * slot, 0.75 * slot);
    dipole.m_latency = 50.0 + slot;
    dipole.m_moment = 60.0 + slot;
    dipole.m_fitError = 70.0 + slot;
  }
  EXPECT_TRUE(addAverage(*face, {1, 2}));
  const CDipoleszq& added = *face->getCurrentDipole();
  const double location[] = {6.0, -12.0, 24.0};
  const double orientation[] = {0.375, -0.75, 1.125};
  for (int axis = 0; axis < 3; ++axis) {
    EXPECT_EQ(added.m_location[axis], location[axis]) << axis;
    EXPECT_EQ(added.m_orientation[axis], orientation[axis]) << axis;
  }
  EXPECT_EQ(added.m_latency, 51.5);
  EXPECT_EQ(added.m_moment, 61.5);
  EXPECT_EQ(added.m_fitError, 71.5);
  EXPECT_EQ(added.m_size, (4.0 + 8.0 + 16.0) / 3.0);  // half of 0 to 8, -16 to 0 and 0 to 32
}

TEST(AddAverage, ClosesGapsThatWereThereAndStaysTheCurrentOne) {
  const auto face = listedFace(4);
  face->deleteDipole(1, 0);
  EXPECT_TRUE(addAverage(*face, {0, 2}));
  EXPECT_EQ(face->getTotalDipoles(), 4U);
  EXPECT_EQ(idsOf(*face), (Ids{0, 2, 3, 0}));
  EXPECT_EQ(face->getCurrentDipoleID(), 3);
  EXPECT_EQ(face->getCurrentDipole()->m_label, _T("AverageDipole_2"));
}

TEST(AddAverage, AddsNothingOfNothing) {
  const auto face = listedFace(2);
  EXPECT_FALSE(addAverage(*face, {}));
  EXPECT_EQ(face->getTotalDipoles(), 2U);
}

TEST(AddAverage, SaysSoWhenTheTableIsFull) {
  ScriptedOperator script;
  const auto face = listedFace(DipoleTable::capacity);
  EXPECT_FALSE(addAverage(*face, {0, 1}));
  EXPECT_EQ(script.texts(), Texts{"No more dipole space"});
  EXPECT_EQ(face->getTotalDipoles(), 30000U);
  EXPECT_EQ(face->getDipole(0)->m_label, _T("Non"));
}

TEST(ReplaceByAverage, TakesTheSourcesAway) {
  const auto face = listedFace(5);
  EXPECT_TRUE(replaceByAverage(*face, {0, 2, 4}));
  EXPECT_EQ(idsOf(*face), (Ids{1, 3, 0}));
  const CDipoleszq& added = *face->getCurrentDipole();
  EXPECT_EQ(face->getCurrentDipoleID(), 2);
  EXPECT_EQ(added.m_label, _T("AverageDipole3"));
  EXPECT_EQ(added.m_location[0], 2.0);
}

TEST(ReplaceByAverage, HasRoomInAFullTable) {
  const auto face = listedFace(DipoleTable::capacity);
  EXPECT_TRUE(replaceByAverage(*face, {0, 1}));
  EXPECT_EQ(face->getTotalDipoles(), 29999U);
}

TEST(ReplaceByAverage, ClosesGapsEvenWhenNothingIsSelected) {
  const auto face = listedFace(3);
  face->deleteDipole(0, 0);
  EXPECT_FALSE(replaceByAverage(*face, {}));
  EXPECT_EQ(idsOf(*face), (Ids{1, 2}));
}

TEST(ReplaceByAverage, LeavesAnEmptyCollectionAsItIs) {
  const auto face = listedFace(1);
  face->cleanDipoles();
  EXPECT_FALSE(replaceByAverage(*face, {}));
  EXPECT_EQ(face->getCurrentDipoleID(), -1);
}

TEST(ChosenDipoles, AreFoundWhereverTheyHaveGone) {
  const auto face = listedFace(5);
  const ChosenDipoles chosen(*face, {1, 3});
  EXPECT_EQ(chosen.slotsIn(*face), (DipoleSlots{1, 3}));
  face->deleteDipole(0, 1);
  EXPECT_EQ(chosen.slotsIn(*face), (DipoleSlots{0, 2}));
  face->m_dipoles.swap(2, 3);
  face->addDipole();
  EXPECT_EQ(chosen.slotsIn(*face), (DipoleSlots{0, 3}));
  face->m_dipoles.swap(0, 3);  // the order is that of the collection
  EXPECT_EQ(chosen.slotsIn(*face), (DipoleSlots{0, 3}));
}

TEST(ChosenDipoles, AreNothingWhenOneOfThemIsGone) {
  const auto face = listedFace(4);
  const ChosenDipoles chosen(*face, {1, 2});
  face->deleteDipole(2, 0);  // the slot stays
  EXPECT_EQ(chosen.slotsIn(*face), std::nullopt);
}

TEST(ChosenDipoles, MayBeNoneAndStayNone) {
  const auto face = listedFace(2);
  const ChosenDipoles chosen(*face, {});
  face->cleanDipoles();
  EXPECT_EQ(chosen.slotsIn(*face), DipoleSlots{});
}

TEST(ChosenDipoles, LeaveOutEmptySlotsAndThoseThatThereAreNot) {
  const auto face = listedFace(3);
  face->deleteDipole(1, 0);
  const ChosenDipoles chosen(*face, {1, 2, 7});
  EXPECT_EQ(chosen.slotsIn(*face), DipoleSlots{2});
}

TEST(ChosenDipoles, AreNeverTheCurrentOneBySlotMinusOne) {
  const auto face = listedFace(3);
  face->setCurrentDipole(1);
  EXPECT_EQ(ChosenDipoles(*face, {-1}).slotsIn(*face), DipoleSlots{});
}

// Each new dipole has an address of its own as long as the question waits.
TEST(ChosenDipoles, AreNotMistakenForNewOnes) {
  const auto face = listedFace(3);
  const ChosenDipoles chosen(*face, {0, 1, 2});
  face->cleanDipoles();
  for (int n = 0; n < 30; ++n) {
    face->addDipole();
    EXPECT_EQ(chosen.slotsIn(*face), std::nullopt);
  }
}

TEST(ChosenDipoles, MayOutliveTheCollection) {
  auto face = listedFace(3);
  const ChosenDipoles chosen(*face, {0, 2});
  face.reset();
  EXPECT_EQ(chosen.slotsIn(*listedFace(3)), std::nullopt);
}

}  // namespace
