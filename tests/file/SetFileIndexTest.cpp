// A file's index of the current dipole is taken as it is, also where it names none; every operation on such a
// set stays inside it.
#include <limits>

#include "tests/file/SetFixture.h"

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

// A set of three dipoles with this index, as it comes back from the current form or the older one.
Set readBack(int current, bool isCurrentForm) {
  const Set set = filledSet(3);
  set->m_currentDipole = current;
  Set read = filledSet(5);
  if (isCurrentForm) {
    EXPECT_EQ(readCurrent(currentBytes(*set), *read), 1);
  } else {
    EXPECT_EQ(readObsolete(obsoleteBytes(*set), *read), 1);
  }
  EXPECT_EQ(read->m_totalDipoles, 3);
  return read;
}

class IndexOutside : public testing::TestWithParam<int> {
 protected:
  ScriptedOperator user;
};

}  // namespace

TEST_P(IndexOutside, IsStoredAndLoadedAsItIs) {
  for (const bool isCurrentForm : {true, false}) {
    const Set set = readBack(GetParam(), isCurrentForm);
    EXPECT_EQ(set->m_currentDipole, GetParam());
    EXPECT_EQ(set->getCurrentDipoleID(), GetParam());
    EXPECT_EQ(user.texts(), Texts{});
  }
}

TEST_P(IndexOutside, IsNoDipole) {
  const Set set = readBack(GetParam(), true);
  double x = 1.0;
  double y = 1.0;
  double z = 1.0;
  EXPECT_EQ(set->getCurrentDipole(), nullptr);
  EXPECT_EQ(set->getDipole(-1), nullptr);
  EXPECT_EQ(set->getDipoleLocation(-1, x, y, z), 0);
  EXPECT_EQ(set->setDipoleLocation(-1, 1.0F, 2.0F, 3.0F), 0);
  EXPECT_EQ(set->setDipoleName(-1, _T("nobody")), 1);
  for (int slot = 0; slot < 3; ++slot) {
    EXPECT_NE(set->m_dipoles[slot]->m_label, _T("nobody"));
  }
}

TEST_P(IndexOutside, StepsToTheFirstOrTheLastDipole) {
  const Set next = readBack(GetParam(), true);
  EXPECT_EQ(next->getNextDipole(), next->m_dipoles[0]);
  EXPECT_EQ(next->m_currentDipole, 0);
  const Set previous = readBack(GetParam(), true);
  EXPECT_EQ(previous->getPreviousDipole(), previous->m_dipoles[2]);
  EXPECT_EQ(previous->m_currentDipole, 2);
}

TEST_P(IndexOutside, DeletesNoCurrentDipole) {
  const Set set = readBack(GetParam(), true);
  EXPECT_EQ(set->deleteCurrentDipole(), 1);
  ASSERT_EQ(set->m_totalDipoles, 3);
  EXPECT_EQ(set->m_currentDipole, GetParam());
  for (int slot = 0; slot < 3; ++slot) {
    EXPECT_EQ(set->m_dipoles[slot]->m_number, 5000 + slot);
  }
}

TEST_P(IndexOutside, EndsAtTheLastDipoleWhenOneIsDeletedAndItWasBeyond) {
  for (const int shift : {0, 1}) {
    const Set set = readBack(GetParam(), true);
    EXPECT_EQ(set->deleteDipole(1, shift), 1);
    EXPECT_EQ(set->reOrderDipoles(), 1);
    EXPECT_EQ(set->m_totalDipoles, 2);
    EXPECT_EQ(set->m_currentDipole, GetParam() > 0 ? 1 : GetParam());
    EXPECT_EQ(set->m_dipoles[1]->m_label, _T("before 2"));
  }
}

TEST_P(IndexOutside, GivesWayToAnAddedDipoleAndToAChosenOne) {
  const Set set = readBack(GetParam(), true);
  EXPECT_EQ(set->addDipole(), 4);
  EXPECT_EQ(set->m_currentDipole, 3);
  const Set chosen = readBack(GetParam(), true);
  EXPECT_EQ(chosen->setCurrentDipole(1), 1);
  EXPECT_EQ(chosen->getCurrentDipole(), chosen->m_dipoles[1]);
}

INSTANTIATE_TEST_SUITE_P(SetFile, IndexOutside, testing::Values(3, 777, -5, highest, lowest));
