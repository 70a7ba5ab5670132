// Undo brings back the state before each command of the module, and redo the one after it, bit by bit.
#include <bit>
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include "collection/SelectedDipoles.h"
#include "host/undo/UndoHistory.h"
#include "tests/host/undo/WholeSet.h"
#include "tests/record/DipoleMembers.h"
#include "tests/support/TestPlaces.h"

namespace {

using host::UndoHistory;

// Eleven dipoles with values of their own; one slot is empty, one holds something behind the count.
Set variedSet() {
  Set set = filledSet(12);
  for (int slot = 0; slot < 12; ++slot) {
    CDipoleszq& dipole = *set->m_dipoles[slot];
    dipole.m_latency = 80.0 + 7.5 * ((slot * 5) % 12);
    dipole.m_fitError = 12.0 - slot;
    dipole.m_location[0] = 3.0 * ((slot * 7) % 12) - 10.0;
    dipole.m_id = slot;
    dipole.m_show = slot % 3 == 0 ? 0 : 1;
  }
  set->deleteDipole(4, 0);
  set->m_totalDipoles = 11;
  set->m_currentDipole = 6;
  return set;
}

// Undo, redo, and undo again of one change.
void expectUndone(const Set& set, const std::function<void(CDipoleFace9File&)>& change) {
  UndoHistory history(*set);
  const WholeSet before = wholeSet(*set);
  change(*set);
  const WholeSet after = wholeSet(*set);
  ASSERT_FALSE(before == after) << "the change must change something";
  ASSERT_EQ(history.record(_T("Change")), recordedStep);
  for (int round = 0; round < 2; ++round) {
    ASSERT_EQ(history.undo(), moved);
    ASSERT_TRUE(isSame(wholeSet(*set), before)) << "undo, round " << round;
    ASSERT_EQ(history.redo(), moved);
    ASSERT_TRUE(isSame(wholeSet(*set), after)) << "redo, round " << round;
  }
}

void importExample(CDipoleFace9File& set, const char* name) {
  ScriptedOperator user;
  for (int i = 0; i < 4; ++i) {
    user.answer(IDYES);
  }
  CString path(examplesFolder().c_str());
  path += name;
  ASSERT_EQ(set.importDipoleX(path, false), 1);
}

CFiducialzq mriPoints() {
  CFiducialzq points;
  points.setNasionf(128.0, 40.0, 120.0);
  points.setLeftEarf(40.0, 130.0, 110.0);
  points.setRightEarf(216.0, 128.0, 112.0);
  return points;
}

double numberOf(std::uint64_t bits) {
  return std::bit_cast<double>(bits);
}

}  // namespace

TEST(UndoHistory, DeleteOfSome) {
  expectUndone(variedSet(), [](auto& set) { deleteDipoles(set, {0, 3, 5, 6, 10}); });
}

TEST(UndoHistory, DeleteOfTheCurrentOneAndOfTheLastOne) {
  expectUndone(variedSet(), [](auto& set) { set.deleteCurrentDipole(); });
  expectUndone(variedSet(), [](auto& set) { set.deleteDipole(10, 1); });
}

TEST(UndoHistory, EmptySlotsStayWhereTheyWere) {
  expectUndone(variedSet(), [](auto& set) { set.deleteDipole(2, 0); });
  expectUndone(variedSet(), [](auto& set) { set.reOrderDipoles(); });
  expectUndone(variedSet(), [](auto& set) { set.reSortDipoles(); });
}

TEST(UndoHistory, ClearBringsBackWhatStoodBehindTheCountToo) {
  const Set set = variedSet();
  ASSERT_NE(set->m_dipoles[11], nullptr);
  expectUndone(set, [](auto& cleared) { cleared.cleanDipoles(); });
}

TEST(UndoHistory, ShowAndHide) {
  expectUndone(variedSet(), [](auto& set) { showDipoles(set, {0, 1, 2, 6, 7}, 0); });
  expectUndone(variedSet(), [](auto& set) { showDipoles(set, {0, 3, 9}, 1); });
  expectUndone(variedSet(), [](auto& set) { set.setShowAllDipole(0); });
  expectUndone(variedSet(), [](auto& set) { set.setShowDipoleOrientationAll(0); });
}

TEST(UndoHistory, NameAndColour) {
  expectUndone(variedSet(), [](auto& set) { nameDipoles(set, {1, 2, 8}, _T("one name for all of them")); });
  expectUndone(variedSet(), [](auto& set) { colorDipoles(set, {1, 2, 8}, RGB(1, 2, 3)); });
}

TEST(UndoHistory, Averages) {
  expectUndone(variedSet(), [](auto& set) { EXPECT_TRUE(addAverage(set, {1, 2, 8})); });
  expectUndone(variedSet(), [](auto& set) { EXPECT_TRUE(replaceByAverage(set, {1, 2, 8})); });
}

TEST(UndoHistory, SortByEveryColumn) {
  for (const int key : {1, 2, 8}) {
    expectUndone(variedSet(), [key](auto& set) { set.sortDipoles(key); });
  }
}

TEST(UndoHistory, Registration) {
  expectUndone(variedSet(), [](auto& set) {
    for (int slot = 0; slot < 6; ++slot) {
      if (slot != 4) {
        set.m_dipoles[slot]->m_rawLocation.zeroSphere();  // so that it is taken
      }
    }
    set.m_fiducialCtf = CFiducialzq();
    set.m_sphereCtf.m_radius = 80.0;
    set.setCtfFiducial();
    const CFiducialzq mri = mriPoints();
    EXPECT_EQ(
        set.transferDipole3D_MRIFit(&mri, true, nullptr, &set.m_sphereCtf, 256, 256, 256, 1.0F, 1.0F, 1.0F),
        1);
  });
  expectUndone(variedSet(), [](auto& set) {
    set.m_sphereCtf.m_radius = 80.0;
    EXPECT_EQ(set.registerMRI_DimensionFit(200.0, 220.0, 240.0), 1);
  });
}

TEST(UndoHistory, ImportsOfEveryKind) {
  for (const char* name : {"auditory.dip", "spikes.dip", "moving.dip", "median.txt"}) {
    SCOPED_TRACE(name);
    expectUndone(variedSet(), [name](auto& set) { importExample(set, name); });
    expectUndone(std::make_unique<CDipoleFace9File>(), [name](auto& set) { importExample(set, name); });
  }
}

TEST(UndoHistory, LoadingAnArchiveOverTheSet) {
  const Set other = filledSet(5);
  other->m_dipoles[2]->m_label = _T("of the file");
  const std::string present = currentBytes(*other);
  const std::string old = obsoleteBytes(*other);
  expectUndone(variedSet(), [&](auto& set) { EXPECT_EQ(readCurrent(present, set), 1); });
  expectUndone(variedSet(), [&](auto& set) { EXPECT_EQ(readObsolete(old, set), 1); });
}

TEST(UndoHistory, Adding) {
  expectUndone(variedSet(), [](auto& set) { set.addDipole(); });
  expectUndone(variedSet(), [](auto& set) { set.addDipoleF(1.0F, 2.0F, 3.0F); });
}

// What the editor and a host may write: every member of a dipole, one by one, and all of them.
TEST(UndoHistory, EveryMemberOfADipole) {
  const auto expectOne = [](auto write) {
    expectUndone(variedSet(), [&](auto& set) { write(*set.m_dipoles[3]); });
  };
  expectOne([](CDipoleszq& d) { d.m_number = -9; });
  expectOne([](CDipoleszq& d) { d.m_show = -9; });
  expectOne([](CDipoleszq& d) { d.m_showOrientation = -9; });
  expectOne([](CDipoleszq& d) { d.m_color = 9; });
  expectOne([](CDipoleszq& d) { d.m_colorF[2] = 9.0F; });
  expectOne([](CDipoleszq& d) { d.m_id = -9; });
  expectOne([](CDipoleszq& d) { d.m_fitTag = -9; });
  expectOne([](CDipoleszq& d) { d.m_extraFlag = -9; });
  expectOne([](CDipoleszq& d) { d.m_latency = -9.0; });
  expectOne([](CDipoleszq& d) { d.m_extraValue = -9.0; });
  expectOne([](CDipoleszq& d) { d.m_fitError = -9.0; });
  expectOne([](CDipoleszq& d) { d.m_display = -9; });
  expectOne([](CDipoleszq& d) { d.m_location[2] = -9.0; });
  expectOne([](CDipoleszq& d) { d.m_size = -9.0; });
  expectOne([](CDipoleszq& d) { d.m_segments = -9; });
  expectOne([](CDipoleszq& d) { d.m_orientation[1] = -9.0; });
  expectOne([](CDipoleszq& d) { d.m_moment = -9.0; });
  expectOne([](CDipoleszq& d) { d.m_scale = -9.0; });
  expectOne([](CDipoleszq& d) { d.m_orientationScale = -9.0; });
  expectOne([](CDipoleszq& d) { d.m_orientationLength = -9.0; });
  expectOne([](CDipoleszq& d) { d.m_dimY = -9; });
  expectOne([](CDipoleszq& d) { d.m_dimX = -9; });
  expectOne([](CDipoleszq& d) { d.m_dimZ = -9; });
  expectOne([](CDipoleszq& d) { d.m_importTag1 = -9.0F; });
  expectOne([](CDipoleszq& d) { d.m_importTag2 = -9.0F; });
  expectOne([](CDipoleszq& d) { d.m_rawLocation.m_center[1] = -9.0; });
  expectOne([](CDipoleszq& d) { d.m_rawLocation.m_auxInt[1] = -9; });
  expectOne([](CDipoleszq& d) { d.m_rawLocation.m_auxText = _T("changed here, too long to be short"); });
  expectOne([](CDipoleszq& d) { d.m_rawOrientation.m_radius = -9.0; });
  expectOne([](CDipoleszq& d) { d.m_rawOrientation.m_auxText = _T(""); });
  expectUndone(std::make_unique<CDipoleFace9File>(), [](auto& set) {
    set.addDipole();
    fillMembers(*set.m_dipoles[0]);
  });
}

TEST(UndoHistory, EverySetWideMember) {
  expectUndone(std::make_unique<CDipoleFace9File>(), [](auto& set) {
    const CString title = set.m_managerTitle;
    fillMembers(set);
    set.m_managerTitle = title;
    set.m_currentDipole = 0;
    set.m_importFirst = 3;
    set.m_importEnd = 9;
  });
}

TEST(UndoHistory, WindowsOfTheHostAreLeftAlone) {
  const Set set = variedSet();
  UndoHistory history(*set);
  set->deleteDipole(0, 1);
  history.record(_T("Delete"));
  set->m_managerTitle = _T("of the host");
  set->m_cbfUpdateViewers = [](bool) { return 1; };
  ASSERT_EQ(history.undo(), moved);
  EXPECT_EQ(set->m_managerTitle, _T("of the host"));
  EXPECT_NE(set->m_cbfUpdateViewers, nullptr);
}

TEST(UndoHistory, BitsThatComparisonsDoNotSee) {
  expectUndone(variedSet(),
               [](auto& set) { set.m_dipoles[0]->m_location[0] = numberOf(0x7FF8000000000001U); });
  const Set set = variedSet();
  set->m_dipoles[0]->m_moment = numberOf(0x7FF0000000000123U);  // a signalling one
  set->m_dipoles[1]->m_moment = 0.0;
  set->m_dipoles[2]->m_moment = numberOf(0xFFF8000000000777U);
  set->m_mergeRadius = 0.0F;
  expectUndone(set, [](auto& changed) {
    changed.m_dipoles[0]->m_moment = numberOf(0x7FF0000000000124U);
    changed.m_dipoles[1]->m_moment = -0.0;
    changed.m_dipoles[2]->m_moment = numberOf(0xFFF8000000000776U);
  });
  expectUndone(set, [](auto& changed) { changed.m_mergeRadius = -0.0F; });
}

TEST(UndoHistory, LabelsOfAnyUnits) {
  const Set set = variedSet();
  const TCHAR units[] = {0xD800, 0, 0xDFFF, 0xFFFE, _T('a'), 0xDC00, 1, 0, 0};
  set->m_dipoles[0]->m_label = CString(units, 9);
  set->m_dipoles[1]->m_label = CString(units, 2);
  set->m_dipoles[2]->m_label = CString(_T('x'), 5000);
  set->m_patient = CString(units, 9);
  expectUndone(set, [&](auto& changed) {
    changed.m_dipoles[0]->m_label = CString(units, 8);  // differs behind a 0 only
    changed.m_dipoles[1]->m_label.Empty();
    changed.m_dipoles[2]->m_label = CString(_T('x'), 4999);
    changed.m_patient = CString(units, 7);
  });
  expectUndone(set, [](auto& changed) { changed.cleanDipoles(); });
}

TEST(UndoHistory, NoStepWithoutAChange) {
  const Set set = variedSet();
  UndoHistory history(*set);
  EXPECT_EQ(history.record(_T("Nothing")), recordedNothing);
  set->m_dipoles[0]->m_show = 1 - set->m_dipoles[0]->m_show;
  set->m_dipoles[0]->m_show = 1 - set->m_dipoles[0]->m_show;
  EXPECT_EQ(history.record(_T("Nothing")), recordedNothing);
  EXPECT_EQ(history.undoSteps(), 0U);
  EXPECT_EQ(history.undo(), UndoHistory::Moved::nothing);
  EXPECT_EQ(history.redo(), UndoHistory::Moved::nothing);
}

TEST(UndoHistory, WhatWindowsNoteIsNoStepButComesBackWithOne) {
  const Set set = variedSet();
  UndoHistory history(*set);
  const WholeSet first = wholeSet(*set);
  set->m_dipoles[0]->m_listItemId = 77;
  set->m_dipoles[1]->m_selected = !set->m_dipoles[1]->m_selected;
  set->m_currentDipole = 1;
  EXPECT_EQ(history.record(_T("Selection")), recordedNothing);
  set->setDipoleColor(2, 5);
  EXPECT_EQ(history.record(_T("Colour")), recordedStep);
  set->m_dipoles[0]->m_listItemId = 78;
  const WholeSet last = wholeSet(*set);
  ASSERT_EQ(history.undo(), moved);
  EXPECT_TRUE(isSame(wholeSet(*set), first));
  ASSERT_EQ(history.redo(), moved);
  EXPECT_TRUE(isSame(wholeSet(*set), last));
}

TEST(UndoHistory, WhatWasNotRecordedComesBackWithTheOppositeStep) {
  const Set set = variedSet();
  UndoHistory history(*set);
  const WholeSet first = wholeSet(*set);
  set->sortDipoles(1);
  ASSERT_EQ(history.record(_T("Sort")), recordedStep);
  set->cleanDipoles();
  set->addDipole();
  const WholeSet unrecorded = wholeSet(*set);
  ASSERT_EQ(history.undo(), moved);
  EXPECT_TRUE(isSame(wholeSet(*set), first));
  ASSERT_EQ(history.redo(), moved);
  EXPECT_TRUE(isSame(wholeSet(*set), unrecorded));
}

// The steps behind and ahead still lead to their own states when something was changed in between.
TEST(UndoHistory, UnrecordedChangesBetweenStepsReachNoOtherState) {
  const Set set = variedSet();
  UndoHistory history(*set);
  std::vector<WholeSet> states{wholeSet(*set)};
  for (const int key : {1, 8, 2}) {
    set->sortDipoles(key);
    set->addDipole();
    ASSERT_EQ(history.record(_T("Sort and add")), recordedStep);
    states.push_back(wholeSet(*set));
  }
  ASSERT_EQ(history.undo(), moved);
  set->cleanDipoles();
  set->m_patient = _T("not recorded");
  const WholeSet unrecorded = wholeSet(*set);
  ASSERT_EQ(history.undo(), moved);
  EXPECT_TRUE(isSame(wholeSet(*set), states[1]));
  ASSERT_EQ(history.redo(), moved);
  EXPECT_TRUE(isSame(wholeSet(*set), unrecorded));
  ASSERT_EQ(history.redo(), moved);
  EXPECT_TRUE(isSame(wholeSet(*set), states[3]));
  set->m_dipoles[1]->m_selected = !set->m_dipoles[1]->m_selected;
  ASSERT_EQ(history.undo(), moved);
  set->deleteDipole(3, 0);
  ASSERT_EQ(history.redo(), moved);
  ASSERT_EQ(history.undo(), moved);
  ASSERT_EQ(history.undo(), moved);
  ASSERT_EQ(history.undo(), moved);
  EXPECT_TRUE(isSame(wholeSet(*set), states[0]));
}

TEST(UndoHistory, DipolesMadeAnewWithTheSameValuesAreNoStep) {
  const Set set = filledSet(3);
  const std::string bytes = currentBytes(*set);
  ASSERT_EQ(readCurrent(bytes, *set), 1);
  UndoHistory history(*set);
  ASSERT_EQ(readCurrent(bytes, *set), 1);
  EXPECT_EQ(history.record(_T("Open")), recordedNothing);
  set->setDipoleColor(0, 9);
  EXPECT_EQ(history.record(_T("Colour")), recordedStep);
}

TEST(UndoHistory, ANewChangeEndsWhatCouldBeRedone) {
  const Set set = variedSet();
  UndoHistory history(*set);
  set->setDipoleColor(0, 1);
  history.record(_T("First"));
  set->setDipoleColor(0, 2);
  history.record(_T("Second"));
  ASSERT_EQ(history.undo(), moved);
  EXPECT_EQ(history.redoSteps(), 1U);
  EXPECT_EQ(history.record(_T("Nothing")), recordedNothing);
  EXPECT_EQ(history.redoSteps(), 1U);
  set->setDipoleColor(0, 3);
  history.record(_T("Third"));
  EXPECT_EQ(history.redoSteps(), 0U);
  EXPECT_EQ(history.undoSteps(), 2U);
  ASSERT_EQ(history.undo(), moved);
  EXPECT_EQ(set->m_dipoles[0]->m_color, 1U);
}

TEST(UndoHistory, MenuTexts) {
  const Set set = variedSet();
  UndoHistory history(*set);
  EXPECT_EQ(history.undoText(), _T("Undo"));
  EXPECT_EQ(history.redoText(), _T("Redo"));
  set->deleteDipole(0, 1);
  history.record(_T("Delete"));
  set->sortDipoles(1);
  history.record(_T("Sort"));
  EXPECT_EQ(history.undoText(), _T("Undo Sort"));
  ASSERT_EQ(history.undo(), moved);
  EXPECT_EQ(history.undoText(), _T("Undo Delete"));
  EXPECT_EQ(history.redoText(), _T("Redo Sort"));
}

TEST(UndoHistory, KeepsTheLastHundredSteps) {
  const Set set = variedSet();
  UndoHistory history(*set);
  WholeSet fifth;
  for (int step = 1; step <= 105; ++step) {
    set->setDipoleColor(0, static_cast<COLORREF>(step));
    ASSERT_EQ(history.record(_T("Colour")), recordedStep);
    if (step == 5) {
      fifth = wholeSet(*set);
    }
  }
  EXPECT_EQ(history.undoSteps(), 100U);
  EXPECT_EQ(history.droppedSteps(), 0U);
  while (history.undo() == moved) {
  }
  EXPECT_TRUE(isSame(wholeSet(*set), fifth));
  EXPECT_EQ(history.redoSteps(), 100U);
}

TEST(UndoHistory, DipolesThatStayKeepTheirObjects) {
  const Set set = variedSet();
  UndoHistory history(*set);
  const CDipoleszq* last = set->m_dipoles[10];
  deleteDipoles(*set, {0, 1, 2});
  history.record(_T("Delete"));
  ASSERT_EQ(history.undo(), moved);
  EXPECT_EQ(set->m_dipoles[10], last);
}

TEST(UndoHistory, ACopyOfTheSetKeepsItsDipoles) {
  const Set set = variedSet();
  UndoHistory history(*set);
  const auto copy = std::make_unique<CDipoleFace9File>(*set);
  set->cleanDipoles();
  history.record(_T("Clear"));
  const WholeSet before = wholeSet(*copy);
  ASSERT_EQ(history.undo(), moved);
  ASSERT_EQ(history.redo(), moved);
  EXPECT_TRUE(isSame(wholeSet(*copy), before));
}

TEST(UndoHistory, ClearStartsAnew) {
  const Set set = variedSet();
  UndoHistory history(*set);
  set->setDipoleColor(0, 1);
  history.record(_T("Colour"));
  set->setDipoleColor(0, 2);
  history.clear();
  EXPECT_EQ(history.undo(), UndoHistory::Moved::nothing);
  EXPECT_EQ(history.record(_T("Nothing")), recordedNothing);
}
