// What is unknown of a dipole stays with it, and with nothing else; filters, colours and sorts heed it.
#include <array>
#include <gtest/gtest.h>
#include <memory>

#include "host/dipoles/DipoleArrows.h"
#include "host/dipoles/DipoleVisibility.h"
#include "host/dipoles/SortSet.h"
#include "host/dipoles/UnknownDipoles.h"
#include "host/dipoles/ValueColors.h"
#include "tests/file/SetFixture.h"
#include "tests/host/undo/Selecting.h"

namespace {

using host::DipoleValue;

Set setOf(int dipoles) {
  auto set = std::make_unique<CDipoleFace9File>();
  for (int i = 0; i < dipoles; ++i) {
    set->addDipole();
    set->m_dipoles[i]->m_id = i;
    set->m_dipoles[i]->m_latency = dipoles - i;
    set->m_dipoles[i]->m_location[0] = i;
  }
  return set;
}

host::UnknownValues latencyOf(std::initializer_list<int> slots) {
  host::UnknownValues values;
  for (const int slot : slots) {
    values.mark(slot, DipoleValue::latency);
  }
  return values;
}

bool isShown(const CDipoleFace3On3DView& set, int slot, const host::ViewSettings& view) {
  return host::visibilityOf(set, slot, *set.m_dipoles[slot], view) == host::Visibility::shown;
}

}  // namespace

TEST(UnknownDipoles, ANewDipoleDoesNotInheritFromADeletedOne) {
  const Set set = setOf(1);
  host::UnknownDipoles unknown;
  unknown.mark(*set, latencyOf({0}));
  for (int i = 0; i < 100; ++i) {
    set->deleteCurrentDipole();
    set->addDipole();
    set->m_dipoles[0]->m_latency = 1.0;  // the value that was marked
    ASSERT_FALSE(unknown.isUnknown(*set->m_dipoles[0], DipoleValue::latency));
  }
}

TEST(UnknownDipoles, AnEditedValueIsKnownAtOnceAndStaysSo) {
  const Set set = setOf(1);
  host::UnknownDipoles unknown;
  unknown.mark(*set, latencyOf({0}));
  set->m_dipoles[0]->m_latency = 7.0;
  EXPECT_FALSE(unknown.isUnknown(*set->m_dipoles[0], DipoleValue::latency));
  unknown.follow(*set);
  set->m_dipoles[0]->m_latency = 1.0;
  EXPECT_FALSE(unknown.isUnknown(*set->m_dipoles[0], DipoleValue::latency));
}

TEST(UnknownDipoles, AnAverageOfDipolesThatCannotBeToldIsAsUnknownAsAny) {
  const Set set = setOf(4);
  host::UnknownDipoles unknown;
  unknown.mark(*set, latencyOf({0}));
  select(*set, {2, 3});
  ASSERT_TRUE(addAverage(*set, {2, 3}));
  unknown.follow(*set);
  EXPECT_EQ(int{unknown.of(*set->getCurrentDipole())}, 0);
  ASSERT_TRUE(addAverage(*set, {1, 2, 3}));  // but 2 and 3 are selected
  unknown.follow(*set);
  EXPECT_TRUE(unknown.isUnknown(*set->getCurrentDipole(), DipoleValue::latency));
}

TEST(UnknownDipoles, AveragesThatWereThereAreKnown) {
  const Set set = setOf(2);
  ASSERT_TRUE(addAverage(*set, {0, 1}));
  host::UnknownDipoles unknown;
  unknown.mark(*set, latencyOf({0}));
  unknown.follow(*set);
  EXPECT_EQ(int{unknown.of(*set->m_dipoles[2])}, 0);
}

TEST(UnknownDipoles, PassNoFilterOfThatValueAndHaveNoColour) {
  const Set set = setOf(3);
  host::UnknownDipoles unknown;
  unknown.mark(*set, latencyOf({0}));
  host::ViewSettings view;
  view.unknown = &unknown;
  EXPECT_TRUE(isShown(*set, 0, view));
  view.filter.latency.most = 100.0;
  EXPECT_FALSE(isShown(*set, 0, view));
  EXPECT_TRUE(isShown(*set, 1, view));
  view.filter = {};
  view.filter.fitError.most = 100.0;
  EXPECT_TRUE(isShown(*set, 0, view));
  set->m_showDipoleLatencySelected = 1;
  view.latency = {0.0, 100.0};
  EXPECT_FALSE(isShown(*set, 0, view));
  EXPECT_TRUE(isShown(*set, 1, view));

  const host::ValueColors colours(*set, DipoleValue::latency, &unknown);
  EXPECT_EQ(colours.colorOf(*set->m_dipoles[0]), host::noValueColor);
  EXPECT_NE(colours.colorOf(*set->m_dipoles[1]), host::noValueColor);
  ASSERT_TRUE(colours.range());
  EXPECT_EQ(colours.range()->high, 2.0);  // 3 is the unknown one's
}

TEST(UnknownDipoles, HaveNoArrowWithoutOrientationNorByAMomentThatIsUnknown) {
  const Set set = setOf(3);
  set->m_dipoles[0]->m_moment = 40.0;  // the strongest, if it were known
  host::UnknownValues values;
  values.mark(0, DipoleValue::moment);
  values.mark(1, DipoleValue::orientation);
  host::UnknownDipoles unknown;
  unknown.mark(*set, values);
  const auto hasArrow = [&](const host::DipoleArrows& arrows, int slot) {
    return arrows.of(*set->m_dipoles[slot]) != host::Vector3{};
  };
  const host::DipoleArrows alike(*set, false, &unknown);
  EXPECT_EQ((std::array{hasArrow(alike, 0), hasArrow(alike, 1), hasArrow(alike, 2)}),
            (std::array{true, false, true}));
  const host::DipoleArrows byMoment(*set, true, &unknown);
  EXPECT_EQ((std::array{hasArrow(byMoment, 0), hasArrow(byMoment, 1), hasArrow(byMoment, 2)}),
            (std::array{false, false, true}));
  EXPECT_EQ(byMoment.strongest(), 1.0);
}

TEST(SortSet, WhatIsUnknownComesLastInItsOrder) {
  const Set set = setOf(7);
  set->deleteDipole(3, 0);
  host::UnknownValues unknown = latencyOf({1, 5, 6});
  unknown.mark(0, DipoleValue::moment);
  host::sortSet(*set, 1, unknown);  // latencies fall with the slot
  const auto idOf = [&](int slot) {
    return set->m_dipoles[slot] == nullptr ? -1 : set->m_dipoles[slot]->m_id;
  };
  EXPECT_EQ((std::vector{idOf(0), idOf(1), idOf(2), idOf(3), idOf(4), idOf(5), idOf(6)}),
            (std::vector{4, 2, 0, -1, 6, 5, 1}));
  host::UnknownValues expected = latencyOf({4, 5, 6});
  expected.mark(2, DipoleValue::moment);
  EXPECT_EQ(unknown, expected);
}

TEST(SortSet, OtherKeysAreSortedAsTheModuleDoes) {
  const Set set = setOf(30);
  host::UnknownValues unknown = latencyOf({0, 29});
  host::sortSet(*set, 2, unknown);
  EXPECT_EQ(set->m_dipoles[0]->m_id, 0);
  EXPECT_EQ(set->m_dipoles[29]->m_id, 29);
  EXPECT_EQ(unknown, latencyOf({0, 29}));
}
