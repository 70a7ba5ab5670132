// An older file read over a set: the dipoles behind its count stay owned, holes inside it are filled.
#include "tests/file/SetFixture.h"
#include "tests/support/FreeLog.h"

namespace {

// A set of five dipoles, over which the three of a file were read.
Set threeOverFive() {
  Set set = filledSet(5);
  EXPECT_EQ(readObsolete(archiveBytes("set_20011118"), *set), 1);
  EXPECT_EQ(set->m_totalDipoles, 3);
  return set;
}

class FilesOf2001 : public testing::TestWithParam<const char*> {};

}  // namespace

TEST_P(FilesOf2001, FillAHoleByANewDipoleAndOverwriteItsNeighbours) {
  const Set set = filledSet(5);
  set->deleteDipole(1, 0);
  const CDipoleszq* first = set->m_dipoles[0];
  const CDipoleszq* third = set->m_dipoles[2];
  Lines before = linesOf(*set);
  EXPECT_EQ(std::erase(before, "slot 1 empty"), 1U);
  const Lines made = prefixed("slot 1 ", linesOf(CDipoleszq()));
  before.insert(before.end(), made.begin(), made.end());
  EXPECT_EQ(readObsolete(archiveBytes(GetParam()), *set), 1);
  EXPECT_EQ(differences(replaced(before, archiveLines(GetParam())), linesOf(*set)), Lines{});
  EXPECT_EQ(set->m_dipoles[0], first);
  EXPECT_EQ(set->m_dipoles[2], third);
}

INSTANTIATE_TEST_SUITE_P(SetFile, FilesOf2001,
                         testing::Values("set_20011118", "set_20011118_foreign", "set_20010901",
                                         "set_20010101_version_0"));

TEST(SetFileOver, CleaningReleasesTheDipolesBehindTheCountOnce) {
  const Set set = threeOverFive();
  const void* held[5];
  for (int slot = 0; slot < 5; ++slot) {
    held[slot] = set->m_dipoles[slot];
    ASSERT_NE(held[slot], nullptr);
  }
  const FreeLog log;
  set->cleanDipoles();
  for (int slot = 0; slot < 5; ++slot) {
    EXPECT_EQ(log.timesFreed(held[slot]), 1) << slot;
  }
  set->cleanDipoles();
  EXPECT_EQ(log.timesFreed(held[3]), 1);
  EXPECT_EQ(log.timesFreed(held[4]), 1);
  EXPECT_FALSE(log.overflowed());
}

TEST(SetFileOver, AddingReleasesTheDipoleOfItsSlotOnceAndDestructionTheRest) {
  Set set = threeOverFive();
  const void* fourth = set->m_dipoles[3];
  const void* fifth = set->m_dipoles[4];
  {
    const FreeLog log;
    EXPECT_EQ(set->addDipole(), 4);
    EXPECT_EQ(log.timesFreed(fourth), 1);
    EXPECT_EQ(log.timesFreed(fifth), 0);
    EXPECT_FALSE(log.overflowed());
  }
  EXPECT_NE(set->m_dipoles[3], fourth);
  EXPECT_EQ(set->m_dipoles[4], fifth);
  const void* added = set->m_dipoles[3];
  const FreeLog log;
  set.reset();
  EXPECT_EQ(log.timesFreed(added), 1);
  EXPECT_EQ(log.timesFreed(fifth), 1);
  EXPECT_FALSE(log.overflowed());
}
