// A change that nobody named is called by what has changed.
#include <functional>
#include <gtest/gtest.h>
#include <string>

#include "collection/SelectedDipoles.h"
#include "host/undo/ChangeName.h"
#include "platform/Utf.h"
#include "tests/file/SetFixture.h"

namespace {

std::string nameOf(const std::function<void(CDipoleFace9File&)>& change, int dipoles = 4) {
  const Set set = filledSet(dipoles);
  for (int slot = 0; slot < dipoles; ++slot) {
    set->m_dipoles[slot]->m_latency = 100.0 - slot;
  }
  const host::SetImage before = host::imageOf(*set);
  change(*set);
  return toUtf8(nameOfChange(before, host::imageOf(*set)));
}

}  // namespace

TEST(ChangeName, OfDipolesThatCome) {
  EXPECT_EQ(nameOf([](auto& set) { set.addDipole(); }), "Add");
  EXPECT_EQ(nameOf([](auto& set) {
              set.addDipole();
              set.addDipole();
            }),
            "Import");
  EXPECT_EQ(nameOf([](auto& set) {
              set.addDipole();
              set.m_importEnd = set.m_totalDipoles;
            }),
            "Import");
}

TEST(ChangeName, OfAverages) {
  EXPECT_EQ(nameOf([](auto& set) { addAverage(set, {0, 2}); }), "Average");
  EXPECT_EQ(nameOf([](auto& set) { replaceByAverage(set, {0, 2}); }), "Average");
}

TEST(ChangeName, AnAverageOfBeforeDoesNotNameADelete) {
  EXPECT_EQ(nameOf([](auto& set) {
              set.deleteDipole(0, 1);
              set.m_dipoles[2]->m_latency += 1.0;
            }),
            "Delete");
  const Set set = filledSet(4);
  addAverage(*set, {0, 1});
  const host::SetImage before = host::imageOf(*set);
  set->deleteDipole(0, 1);
  EXPECT_EQ(toUtf8(nameOfChange(before, host::imageOf(*set))), "Delete");
}

// The new dipole has the memory of one that is gone.
TEST(ChangeName, AnAverageThatSeemsToBeTheDipoleItReplacesIsOne) {
  const Set set = filledSet(4);
  const host::SetImage before = host::imageOf(*set);
  replaceByAverage(*set, {0, 2});
  host::SetImage after = host::imageOf(*set);
  ASSERT_EQ(after.objects.size(), 3U);
  after.objects.back() = before.objects[2];
  EXPECT_EQ(toUtf8(nameOfChange(before, after)), "Average");
}

TEST(ChangeName, OfDipolesThatGo) {
  EXPECT_EQ(nameOf([](auto& set) { deleteDipoles(set, {1, 2}); }), "Delete");
  EXPECT_EQ(nameOf([](auto& set) { set.deleteDipole(1, 0); }), "Delete");
  EXPECT_EQ(nameOf([](auto& set) { set.cleanDipoles(); }), "Clear");
}

TEST(ChangeName, OfDipolesThatStandElsewhere) {
  EXPECT_EQ(nameOf([](auto& set) { set.sortDipoles(1); }), "Sort");
}

TEST(ChangeName, OfMembers) {
  EXPECT_EQ(nameOf([](auto& set) { nameDipoles(set, {1, 2}, _T("x")); }), "Name");
  EXPECT_EQ(nameOf([](auto& set) { colorDipoles(set, {1, 2}, RGB(1, 2, 3)); }), "Color");
  EXPECT_EQ(nameOf([](auto& set) { set.m_dipoles[3]->m_show = 77; }), "Show/Hide");
  EXPECT_EQ(nameOf([](auto& set) { set.m_dipoles[3]->m_showOrientation = 77; }), "Show/Hide");
  EXPECT_EQ(nameOf([](auto& set) { set.m_dipoles[3]->m_display = 77; }), "Show/Hide");
  EXPECT_EQ(nameOf([](auto& set) { set.m_dipoles[3]->m_location[2] += 1.0; }), "Edit");
  EXPECT_EQ(nameOf([](auto& set) { set.m_dipoles[3]->m_rawLocation.m_center[0] += 1.0; }), "Edit");
  EXPECT_EQ(nameOf([](auto& set) { set.m_dipoles[3]->m_rawOrientation.m_auxText = _T("x"); }), "Edit");
}

TEST(ChangeName, OfSeveralKindsOfMembers) {
  EXPECT_EQ(nameOf([](auto& set) {
              set.m_dipoles[0]->m_label = _T("x");
              set.m_dipoles[1]->setColorValue(RGB(1, 2, 3));
            }),
            "Edit");
  EXPECT_EQ(nameOf([](auto& set) {
              set.sortDipoles(1);
              set.m_dipoles[1]->m_latency = 5.0;
            }),
            "Edit");
}

TEST(ChangeName, OfTheSetAlone) {
  EXPECT_EQ(nameOf([](auto& set) { set.m_patient = _T("x"); }), "Set");
  EXPECT_EQ(nameOf([](auto& set) { set.m_mergeRadius += 1.0F; }), "Set");
}

TEST(ChangeName, WhatWindowsNoteIsNoMember) {
  EXPECT_EQ(nameOf([](auto& set) {
              set.m_dipoles[1]->m_selected = !set.m_dipoles[1]->m_selected;
              set.m_dipoles[1]->m_listItemId += 1;
              set.m_dipoles[2]->m_label = _T("x");
            }),
            "Name");
}
