// A set comes back whole from its backup, also without memory.
#include <gtest/gtest.h>

#include "host/undo/SetBackup.h"
#include "tests/host/undo/WholeSet.h"
#include "tests/support/FailingNew.h"

namespace {

// Four dipoles, an empty slot, and two more behind the count.
Set variedSet() {
  Set set = filledSet(7);
  set->deleteDipole(2, 0);
  set->m_totalDipoles = 5;
  return set;
}

}  // namespace

TEST(SetBackup, UndoesWhatAnImportDoes) {
  const Set set = variedSet();
  const WholeSet before = wholeSet(*set);
  const CDipoleszq* first = set->m_dipoles[0];
  host::SetBackup backup(*set);
  set->m_dipoles[0]->m_label = _T("other");
  set->m_dipoles[5]->m_location[1] = 77.0;
  set->m_dipoles[5]->m_label = _T("a label that needs memory of its own");
  set->m_dipoles.store(6, std::make_unique<CDipoleszq>());
  set->m_dipoles.store(7, std::make_unique<CDipoleszq>());
  set->m_dipoles.store(2, std::make_unique<CDipoleszq>());
  set->m_totalDipoles = 8;
  set->m_patient = _T("Somebody");
  set->m_sphereCtf.m_radius = 1.0;
  set->m_fiducialMri.m_points[0].m_label = _T("nose");
  {
    const FailingNew memory(1, Lasting::fromThenOn);
    backup.restore();
    EXPECT_FALSE(memory.failed());
  }
  EXPECT_TRUE(isSame(wholeSet(*set), before));
  EXPECT_EQ(set->m_dipoles[0], first);
}

TEST(SetBackup, UndoesNothingWhereNothingHappened) {
  const Set set = variedSet();
  const WholeSet before = wholeSet(*set);
  host::SetBackup(*set).restore();
  EXPECT_TRUE(isSame(wholeSet(*set), before));
}
