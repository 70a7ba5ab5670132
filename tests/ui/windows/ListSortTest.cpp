// A click on a heading sorts the set by that column.
#include <algorithm>
#include <gtest/gtest.h>

#include "tests/ui/windows/Host.h"
#include "tests/ui/windows/Spy.h"

namespace {

using Texts = std::vector<std::string>;

// Dipoles whose values differ in each column, in another order in each.
void mix(Host& host) {
  const int count = host.face->m_totalDipoles;
  for (int slot = 0; slot < count; ++slot) {
    CDipoleszq& dipole = host.dipole(slot);
    const auto value = [&](int step) { return static_cast<double>((slot * step + step / 2) % count) - 3.5; };
    dipole.m_number = (slot * 3 + 4) % count;
    dipole.m_latency = value(4);
    std::generate_n(dipole.m_location, 3, [&, step = 5]() mutable { return value(step++); });
    std::generate_n(dipole.m_orientation, 3, [&, step = 8]() mutable { return value(step++); });
    dipole.m_fitError = value(2);
    dipole.m_moment = value(6);
    dipole.m_label.Format(_T("%d"), (slot * 7 + 1) % count);
  }
}

double keyOf(const CDipoleszq& dipole, int column) {
  const double keys[] = {static_cast<double>(dipole.m_number),
                         dipole.m_latency,
                         dipole.m_location[0],
                         dipole.m_location[1],
                         dipole.m_location[2],
                         dipole.m_orientation[0],
                         dipole.m_orientation[1],
                         dipole.m_orientation[2],
                         dipole.m_fitError,
                         dipole.m_moment};
  return keys[column];
}

class SortedColumn : public testing::TestWithParam<int> {};

TEST_P(SortedColumn, IsAscendingAfterAClickOnItsHeading) {
  Host host(11);
  mix(host);
  host.openManager();
  std::vector<double> keys;
  for (int slot = 0; slot < 11; ++slot) {
    keys.push_back(keyOf(host.dipole(slot), GetParam()));
  }
  ASSERT_FALSE(std::ranges::is_sorted(keys));
  const SentMessages sent(host.list());
  host.clickHeading(GetParam());
  std::ranges::sort(keys);
  for (int slot = 0; slot < 11; ++slot) {
    EXPECT_EQ(keyOf(host.dipole(slot), GetParam()), keys[static_cast<std::size_t>(slot)]);
    EXPECT_EQ(host.cell(slot, 10), host.labels()[static_cast<std::size_t>(slot)]);
    EXPECT_EQ(host.dipole(slot).m_listItemId, slot);
  }
  EXPECT_EQ(sent.count(LVM_DELETEALLITEMS), 1);
  EXPECT_EQ(host.updates(), 0);
}

INSTANTIATE_TEST_SUITE_P(EachNumber, SortedColumn, testing::Range(0, 10));

TEST(List, ClickOnLabelRefillsWithoutReordering) {
  Host host(11);
  mix(host);
  host.openManager();
  const std::vector<std::string> labels = host.labels();
  host.dipole(4).m_label = _T("another");
  const SentMessages sent(host.list());
  host.clickHeading(10);
  EXPECT_EQ(sent.count(LVM_DELETEALLITEMS), 1);
  EXPECT_EQ(host.cell(4, 10), "another");
  EXPECT_EQ(host.cell(3, 10), labels[3]);
  EXPECT_EQ(host.cell(5, 10), labels[5]);
}

TEST(List, StaysWhereItWasScrolledToTheRightWhenSorted) {
  Host host(11);
  mix(host);
  host.openManager();
  host.clickHeading(9);  // out of sight at first
  const int place = ::GetScrollPos(host.list(), SB_HORZ);
  EXPECT_GT(place, 100);
  host.clickHeading(9);
  EXPECT_EQ(::GetScrollPos(host.list(), SB_HORZ), place);
}

TEST(List, ClickOnAHeadingOfAnEmptyListDoesNothing) {
  Host host;
  host.openManager();
  for (int column = 0; column < 11; ++column) {
    host.clickHeading(column);
  }
  EXPECT_EQ(host.rows(), 0);
}

TEST(List, RowsKeepTheirDipolesAfterASort) {
  Host host(4);
  host.dipole(0).m_moment = 9.0;
  host.openManager();
  host.clickHeading(9);
  EXPECT_EQ(host.column(0), (Texts{"2", "3", "4", "1"}));
  host.click(3);
  EXPECT_EQ(host.dipole(3).m_number, 1);
  EXPECT_EQ(host.selected(), std::vector<int>{3});
}

}  // namespace
