// The history keeps to its memory, and the set stays whole when memory is used up.
#include <gtest/gtest.h>
#include <memory>

#include "collection/SelectedDipoles.h"
#include "tests/host/undo/WholeSet.h"
#include "tests/sweep/FaultSweep.h"
#include "tests/sweep/SweptSets.h"

namespace {

using host::UndoHistory;

using Command = void (*)(CDipoleFace9File&);

void deleteSome(CDipoleFace9File& set) {
  deleteDipoles(set, {0, 2});
}

void clearAll(CDipoleFace9File& set) {
  set.cleanDipoles();
}

void sortAndName(CDipoleFace9File& set) {
  set.sortDipoles(8);
  nameDipoles(set, {0, 1}, _T("a new name that needs memory of its own"));
  set.m_patient = _T("a new name that needs memory of its own");
}

void addTwo(CDipoleFace9File& set) {
  set.addDipole();
  set.setDipoleName(-1, _T("a label that needs memory of its own"));
  set.addDipole();
}

// Dipoles with labels of so many units, one apart from the next.
Set longLabels(int count, int length) {
  auto set = std::make_unique<CDipoleFace9File>();
  for (int i = 0; i < count; ++i) {
    set->addDipole();
    CString label(_T('m'), length);
    label.SetAt(i % length, _T('n'));
    set->setDipoleName(-1, label);
  }
  return set;
}

}  // namespace

TEST(UndoHistoryMemory, WithoutItRecordingChangesNothing) {
  for (const Command command : {deleteSome, clearAll, sortAndName, addTwo}) {
    sweep("undo: record", memoryFaults(), [command](Fault& fault) {
      const Set set = sweptSet(4);
      UndoHistory history(*set);
      const WholeSet before = wholeSet(*set);
      command(*set);
      const WholeSet after = wholeSet(*set);
      auto outcome = UndoHistory::Recorded::nothing;
      const CString name = _T("a command with a long name");
      fault.during([&] { outcome = history.record(name); });
      EXPECT_EQ(fault.escaped(), Escaped::nothing);
      EXPECT_TRUE(isSame(wholeSet(*set), after));
      EXPECT_EQ(outcome, fault.happened() ? UndoHistory::Recorded::noMemory : recordedStep);
      EXPECT_EQ(history.undoSteps(), fault.happened() ? 0U : 1U);
      if (fault.happened()) {
        EXPECT_EQ(history.record(name), recordedStep);
      }
      EXPECT_EQ(history.undo(), moved);
      EXPECT_TRUE(isSame(wholeSet(*set), before));
    });
  }
}

TEST(UndoHistoryMemory, WithoutItUndoAndRedoChangeNothing) {
  for (const Command command : {deleteSome, clearAll, sortAndName, addTwo}) {
    for (const bool isRedo : {false, true}) {
      sweep(isRedo ? "undo: redo" : "undo: undo", memoryFaults(), [command, isRedo](Fault& fault) {
        const Set set = sweptSet(4);
        UndoHistory history(*set);
        const WholeSet before = wholeSet(*set);
        command(*set);
        const WholeSet after = wholeSet(*set);
        EXPECT_EQ(history.record(_T("a command with a long name")), recordedStep);
        if (isRedo) {
          EXPECT_EQ(history.undo(), moved);
        }
        const auto move = [&] { return isRedo ? history.redo() : history.undo(); };
        auto outcome = UndoHistory::Moved::nothing;
        fault.during([&] { outcome = move(); });
        EXPECT_EQ(fault.escaped(), Escaped::nothing);
        if (fault.happened()) {
          EXPECT_EQ(outcome, UndoHistory::Moved::noMemory);
          EXPECT_TRUE(isSame(wholeSet(*set), isRedo ? before : after));
          outcome = move();
        }
        EXPECT_EQ(outcome, moved);
        EXPECT_TRUE(isSame(wholeSet(*set), isRedo ? after : before));
        expectUsable(*set);
      });
    }
  }
}

TEST(UndoHistoryMemory, WithoutItNoStepIsLostBehindAnUnrecordedChange) {
  sweep("undo: behind an unrecorded change", memoryFaults(), [](Fault& fault) {
    const Set set = sweptSet(4);
    UndoHistory history(*set);
    const WholeSet first = wholeSet(*set);
    deleteSome(*set);
    EXPECT_EQ(history.record(_T("Delete")), recordedStep);
    sortAndName(*set);
    EXPECT_EQ(history.record(_T("Name")), recordedStep);
    const WholeSet last = wholeSet(*set);
    EXPECT_EQ(history.undo(), moved);
    set->setDipoleName(0, _T("a label that was not recorded"));
    const WholeSet unrecorded = wholeSet(*set);
    auto outcome = UndoHistory::Moved::nothing;
    fault.during([&] { outcome = history.undo(); });
    EXPECT_EQ(outcome, fault.happened() ? UndoHistory::Moved::noMemory : moved);
    EXPECT_TRUE(isSame(wholeSet(*set), fault.happened() ? unrecorded : first));
    if (fault.happened()) {
      EXPECT_EQ(history.undo(), moved);
    }
    EXPECT_TRUE(isSame(wholeSet(*set), first));
    EXPECT_EQ(history.redo(), moved);
    EXPECT_TRUE(isSame(wholeSet(*set), unrecorded));
    EXPECT_EQ(history.redo(), moved);
    EXPECT_TRUE(isSame(wholeSet(*set), last));
  });
}

TEST(UndoHistoryMemory, TheBudgetLetsTheOldestStepsGo) {
  const Set set = longLabels(100, 1000);
  UndoHistory history(*set, std::size_t{2} * 1024 * 1024);
  for (int step = 0; step < 40; ++step) {
    for (int slot = 0; slot < 100; ++slot) {
      set->m_dipoles[slot]->m_label.SetAt(step, static_cast<TCHAR>(0x100 + step));
    }
    ASSERT_EQ(history.record(_T("Name")), recordedStep);
    ASSERT_LE(history.bytes(), std::size_t{2} * 1024 * 1024);
  }
  EXPECT_GT(history.undoSteps(), 5U);
  EXPECT_LT(history.undoSteps(), 40U);
  EXPECT_EQ(history.undoSteps() + history.droppedSteps(), 40U);
  const std::size_t steps = history.undoSteps();
  for (std::size_t undone = 0; undone < steps; ++undone) {
    EXPECT_EQ(set->m_dipoles[7]->m_label[static_cast<int>(39 - undone)],
              static_cast<TCHAR>(0x100 + 39 - undone));
    ASSERT_EQ(history.undo(), moved);
    EXPECT_NE(set->m_dipoles[7]->m_label[static_cast<int>(39 - undone)],
              static_cast<TCHAR>(0x100 + 39 - undone));
    ASSERT_LE(history.bytes(), std::size_t{2} * 1024 * 1024);
  }
  EXPECT_EQ(history.undo(), UndoHistory::Moved::nothing);
}

// Steps from one value for all dipoles to many values: small to undo, large to redo.
TEST(UndoHistoryMemory, UndoLetsTheFarthestRedoGo) {
  constexpr int dipoles = 2000;
  const auto spread = [](CDipoleFace9File& set, double CDipoles::*member) {
    for (int slot = 0; slot < dipoles; ++slot) {
      set.m_dipoles[slot]->*member = 1.0 / (slot + 3.0);
    }
  };
  const auto changeAll = [&](CDipoleFace9File& set, UndoHistory& history) {
    for (const auto member : {&CDipoles::m_latency, &CDipoles::m_extraValue, &CDipoles::m_fitError,
                              &CDipoles::m_moment, &CDipoles::m_scale, &CDipoles::m_orientationScale}) {
      spread(set, member);
      ASSERT_EQ(history.record(_T("Spread")), recordedStep);
    }
  };
  const Set set = longLabels(dipoles, 3);
  UndoHistory measured(*set);
  changeAll(*set, measured);
  const std::size_t budget = measured.bytes() + 40'000;  // two and a half columns
  while (measured.undo() == moved) {
  }
  UndoHistory history(*set, budget);
  const std::string first = currentBytes(*set);
  changeAll(*set, history);
  ASSERT_EQ(history.droppedSteps(), 0U);
  for (int i = 0; i < 6; ++i) {
    ASSERT_EQ(history.undo(), moved) << i;
    ASSERT_LE(history.bytes(), budget);
  }
  EXPECT_TRUE(currentBytes(*set) == first);
  EXPECT_GT(history.droppedSteps(), 0U);
  EXPECT_EQ(history.redoSteps() + history.droppedSteps(), 6U);
  EXPECT_EQ(history.redo(), moved);
  EXPECT_EQ(set->m_dipoles[1]->m_latency, 0.25);
}

TEST(UndoHistoryMemory, AStepBeyondTheBudgetIsSaid) {
  const Set set = longLabels(2000, 1000);
  UndoHistory history(*set, std::size_t{5} * 1024 * 1024);
  set->setDipoleColor(0, 3);
  EXPECT_EQ(history.record(_T("Colour")), recordedStep);
  set->cleanDipoles();
  EXPECT_EQ(history.record(_T("Clear")), recordedStep) << "the set is gone: there is room for it now";
  ASSERT_EQ(history.undo(), moved);
  const Set larger = longLabels(6000, 1000);
  UndoHistory small(*larger, std::size_t{5} * 1024 * 1024);
  larger->cleanDipoles();
  EXPECT_EQ(small.record(_T("Clear")), UndoHistory::Recorded::tooLarge);
  EXPECT_EQ(small.undo(), UndoHistory::Moved::nothing);
  EXPECT_EQ(small.undoText(), _T("Undo"));
  EXPECT_EQ(small.droppedSteps(), 1U);
}

TEST(UndoHistoryMemory, AFullTableComesBack) {
  auto set = std::make_unique<CDipoleFace9File>();
  for (int i = 0; i < DipoleTable::capacity; ++i) {
    set->addDipoleF(static_cast<float>((i * 7919) % 30011), 0.0F, 1.0F);
    set->m_dipoles[i]->m_id = i;
  }
  UndoHistory history(*set);
  const std::string full = currentBytes(*set);
  set->sortDipoles(2);
  ASSERT_EQ(history.record(_T("Sort")), recordedStep);
  const std::string sorted = currentBytes(*set);
  set->cleanDipoles();
  ASSERT_EQ(history.record(_T("Clear")), recordedStep);
  ASSERT_EQ(history.undo(), moved);
  EXPECT_TRUE(currentBytes(*set) == sorted);
  ASSERT_EQ(history.undo(), moved);
  EXPECT_TRUE(currentBytes(*set) == full);
  ASSERT_EQ(history.redo(), moved);
  EXPECT_TRUE(currentBytes(*set) == sorted);
}
