// The table of dipoles by itself: storing, clearing, moving, sharing.
#include <gtest/gtest.h>

#include "collection/DipoleTable.h"
#include "tests/support/FreeLog.h"

namespace {

constexpr int last = DipoleTable::capacity - 1;

CDipoleszq* put(DipoleTable& table, int slot) {
  table.store(slot, std::make_unique<CDipoleszq>());
  return table[slot];
}

}  // namespace

TEST(DipoleTable, StartsEmpty) {
  const auto table = std::make_unique<DipoleTable>();
  for (int slot = 0; slot < DipoleTable::capacity; ++slot) {
    ASSERT_EQ((*table)[slot], nullptr);
  }
}

TEST(DipoleTable, StoresInTheFirstAndTheLastSlot) {
  const auto table = std::make_unique<DipoleTable>();
  EXPECT_NE(put(*table, 0), nullptr);
  EXPECT_NE(put(*table, last), nullptr);
}

TEST(DipoleTable, StoringOverADipoleReleasesIt) {
  const auto table = std::make_unique<DipoleTable>();
  const void* before = put(*table, 5);
  const FreeLog log;
  put(*table, 5);
  EXPECT_EQ(log.timesFreed(before), 1);
}

TEST(DipoleTable, StoringNothingEmptiesTheSlot) {
  const auto table = std::make_unique<DipoleTable>();
  const void* before = put(*table, 5);
  const FreeLog log;
  table->store(5, nullptr);
  EXPECT_EQ((*table)[5], nullptr);
  EXPECT_EQ(log.timesFreed(before), 1);
}

TEST(DipoleTable, ClearReleasesOnce) {
  const auto table = std::make_unique<DipoleTable>();
  const void* before = put(*table, 5);
  const FreeLog log;
  table->clear(5);
  table->clear(5);
  EXPECT_EQ((*table)[5], nullptr);
  EXPECT_EQ(log.timesFreed(before), 1);
}

TEST(DipoleTable, ClearAllReachesTheLastSlot) {
  const auto table = std::make_unique<DipoleTable>();
  put(*table, 0);
  put(*table, last);
  table->clearAll();
  EXPECT_EQ((*table)[0], nullptr);
  EXPECT_EQ((*table)[last], nullptr);
}

TEST(DipoleTable, MoveEmptiesTheSlotThatItLeaves) {
  const auto table = std::make_unique<DipoleTable>();
  const CDipoleszq* dipole = put(*table, 5);
  const FreeLog log;
  table->move(5, 2);
  EXPECT_EQ((*table)[2], dipole);
  EXPECT_EQ((*table)[5], nullptr);
  EXPECT_EQ(log.timesFreed(dipole), 0);
}

TEST(DipoleTable, MoveOntoItselfKeepsTheDipole) {
  const auto table = std::make_unique<DipoleTable>();
  const CDipoleszq* dipole = put(*table, 5);
  table->move(5, 5);
  EXPECT_EQ((*table)[5], dipole);
}

TEST(DipoleTable, MoveOfAnEmptySlotLeavesTwoEmptyOnes) {
  const auto table = std::make_unique<DipoleTable>();
  table->move(5, 2);
  EXPECT_EQ((*table)[2], nullptr);
  EXPECT_EQ((*table)[5], nullptr);
}

TEST(DipoleTable, SwapExchangesTwoDipolesAndReleasesNone) {
  const auto table = std::make_unique<DipoleTable>();
  const CDipoleszq* first = put(*table, 0);
  const CDipoleszq* second = put(*table, last);
  const FreeLog log;
  table->swap(0, last);
  EXPECT_EQ((*table)[0], second);
  EXPECT_EQ((*table)[last], first);
  EXPECT_EQ(log.timesFreed(first), 0);
  EXPECT_EQ(log.timesFreed(second), 0);
}

TEST(DipoleTable, SwapWithAnEmptySlotMoves) {
  const auto table = std::make_unique<DipoleTable>();
  const CDipoleszq* dipole = put(*table, 5);
  table->swap(2, 5);
  EXPECT_EQ((*table)[2], dipole);
  EXPECT_EQ((*table)[5], nullptr);
  table->swap(5, 2);
  EXPECT_EQ((*table)[5], dipole);
  EXPECT_EQ((*table)[2], nullptr);
}

TEST(DipoleTable, SwapWithItselfKeepsTheDipole) {
  const auto table = std::make_unique<DipoleTable>();
  const CDipoleszq* dipole = put(*table, 5);
  const FreeLog log;
  table->swap(5, 5);
  EXPECT_EQ((*table)[5], dipole);
  EXPECT_EQ(log.timesFreed(dipole), 0);
}

TEST(DipoleTable, SwappedSharedDipolesStayWhereTheyAreInTheOther) {
  const auto table = std::make_unique<DipoleTable>();
  const CDipoleszq* first = put(*table, 0);
  const CDipoleszq* second = put(*table, 1);
  auto other = std::make_unique<DipoleTable>(*table);
  table->swap(0, 1);
  EXPECT_EQ((*other)[0], first);
  EXPECT_EQ((*other)[1], second);
  const FreeLog log;
  table->clear(0);
  EXPECT_EQ(log.timesFreed(second), 0);
  other.reset();
  EXPECT_EQ(log.timesFreed(second), 1);
  EXPECT_EQ(log.timesFreed(first), 0);
}

TEST(DipoleTable, MovedSharedDipolesAreStillSharedByBoth) {
  const auto table = std::make_unique<DipoleTable>();
  const CDipoleszq* dipole = put(*table, 5);
  const auto other = std::make_unique<DipoleTable>(*table);
  const FreeLog log;
  other->move(5, 0);
  table->clear(5);
  EXPECT_EQ(log.timesFreed(dipole), 0);
  other->clear(0);
  EXPECT_EQ(log.timesFreed(dipole), 1);
}

TEST(DipoleTable, ADipoleSharedAgainAfterItWasLetGoCountsAfresh) {
  const auto table = std::make_unique<DipoleTable>();
  const CDipoleszq* dipole = put(*table, 0);
  auto other = std::make_unique<DipoleTable>(*table);
  other->clear(0);
  other = std::make_unique<DipoleTable>(*table);
  const FreeLog log;
  table->clear(0);
  EXPECT_EQ(log.timesFreed(dipole), 0);
  other.reset();
  EXPECT_EQ(log.timesFreed(dipole), 1);
}

TEST(DipoleTable, AHeldDipoleStaysAfterItsSlotWasCleared) {
  const auto table = std::make_unique<DipoleTable>();
  const CDipoleszq* dipole = put(*table, 5);
  const CDipoleszq* free = put(*table, 6);
  DipoleTable::Hold hold(*table, 5);
  EXPECT_EQ(hold.get(), dipole);
  const FreeLog log;
  table->clear(5);
  table->clear(6);
  EXPECT_EQ(log.timesFreed(dipole), 0);
  EXPECT_EQ(log.timesFreed(free), 1);
  hold = DipoleTable::Hold();
  EXPECT_EQ(log.timesFreed(dipole), 1);
}

TEST(DipoleTable, AHoldThatGoesFirstLeavesTheDipoleToTheTable) {
  const auto table = std::make_unique<DipoleTable>();
  const CDipoleszq* dipole = put(*table, 5);
  const FreeLog log;
  { const DipoleTable::Hold hold(*table, 5); }
  EXPECT_EQ(log.timesFreed(dipole), 0);
  table->clear(5);
  EXPECT_EQ(log.timesFreed(dipole), 1);
}

TEST(DipoleTable, AHoldGoesAlongWhenItIsMovedAndOutlivesEveryTable) {
  auto table = std::make_unique<DipoleTable>();
  const CDipoleszq* dipole = put(*table, 5);
  DipoleTable::Hold hold;
  {
    DipoleTable::Hold first(*table, 5);
    hold = std::move(first);
  }
  auto copy = std::make_unique<DipoleTable>(*table);
  const FreeLog log;
  table.reset();
  copy.reset();
  EXPECT_EQ(hold.get(), dipole);
  EXPECT_EQ(log.timesFreed(dipole), 0);
  const DipoleTable::Hold second(std::move(hold));
  EXPECT_EQ(second.get(), dipole);
  EXPECT_EQ(log.timesFreed(dipole), 0);
}

TEST(DipoleTable, AnEmptySlotHasNothingToHold) {
  const auto table = std::make_unique<DipoleTable>();
  const DipoleTable::Hold hold(*table, 5);
  EXPECT_EQ(hold.get(), nullptr);
}
