// The collection's setters by index, and its operations on every dipole.
#include <climits>
#include <gtest/gtest.h>

#include "tests/collection/FaceFixture.h"
#include "tests/record/DipoleMembers.h"

namespace {

// The members of every dipole of a collection.
std::vector<MemberValues> membersOfAll(const CDipoleFace& face) {
  std::vector<MemberValues> all;
  for (int slot = 0; slot < face.m_totalDipoles; ++slot) {
    all.push_back(face.m_dipoles[slot] != nullptr ? membersOf(*face.m_dipoles[slot]) : MemberValues());
  }
  return all;
}

const int badIndices[] = {-2, -100, INT_MIN, 3, 4, 29999, 30000, INT_MAX};  // for three dipoles

}  // namespace

TEST(SetDipoleColor, SetsColourAndFractionsOf256) {
  const auto face = faceOf(2);
  EXPECT_EQ(face->setDipoleColor(-1, 0x0000FF), 1);
  const CDipoleszq* dipole = face->getDipole(1);
  EXPECT_EQ(dipole->m_color, 0x0000FFU);
  EXPECT_EQ(dipole->m_colorF[0], 0.99609375F);
  EXPECT_EQ(dipole->m_colorF[1], 0.0F);
  EXPECT_EQ(dipole->m_colorF[2], 0.0F);
}

TEST(SetDipoleColor, TouchesTheAskedDipoleAlone) {
  const auto face = faceOf(2);
  face->setDipoleColor(0, 0x00804020);
  EXPECT_EQ(face->getDipole(0)->m_colorF[2], 0.5F);
  EXPECT_EQ(face->getDipole(1)->m_color, 65535U);
}

TEST(SetDipoleListItemID, SetsTheRowAndReturnsOne) {
  const auto face = faceOf(2);
  EXPECT_EQ(face->setDipoleListItemID(0, 5), 1);
  EXPECT_EQ(face->setDipoleListItemID(-1, 6), 1);
  EXPECT_EQ(face->getDipole(0)->m_listItemId, 5);
  EXPECT_EQ(face->getDipole(1)->m_listItemId, 6);
}

TEST(SetDipoleLocation, WidensTheFloatsAndReturnsOne) {
  const auto face = faceOf(2);
  EXPECT_EQ(face->setDipoleLocation(0, 0.1F, -2.0F, 3.0F), 1);
  EXPECT_EQ(face->getDipole(0)->m_location[0], static_cast<double>(0.1F));
  EXPECT_EQ(face->getDipole(0)->m_location[1], -2.0);
  EXPECT_EQ(face->getDipole(0)->m_location[2], 3.0);
  EXPECT_EQ(face->setDipoleLocation(-1, 7.0F, 8.0F, 9.0F), 1);
  EXPECT_EQ(face->getDipole(1)->m_location[0], 7.0);
}

TEST(FaceSetDipoleOrientation, WidensTheFloatsWithoutNormalisingAndReturnsOne) {
  const auto face = faceOf(2);
  EXPECT_EQ(face->setDipoleOrientation(0, 0.1F, -2.0F, 3.0F), 1);
  EXPECT_EQ(face->getDipole(0)->m_orientation[0], static_cast<double>(0.1F));
  EXPECT_EQ(face->getDipole(0)->m_orientation[1], -2.0);
  EXPECT_EQ(face->getDipole(0)->m_orientation[2], 3.0);
  EXPECT_EQ(face->setDipoleOrientation(-1, 7.0F, 8.0F, 9.0F), 1);
  EXPECT_EQ(face->getDipole(1)->m_orientation[0], 7.0);
}

TEST(SetDipoleName, SetsTheLabelAndReturnsOne) {
  const auto face = faceOf(2);
  EXPECT_EQ(face->setDipoleName(0, _T("left")), 1);
  EXPECT_EQ(face->setDipoleName(-1, CString()), 1);
  EXPECT_EQ(toUtf8(face->getDipole(0)->m_label), "left");
  EXPECT_EQ(toUtf8(face->getDipole(1)->m_label), "");
}

TEST(SetDipoleSelection, SelectsAndDeselectsAndReturnsOne) {
  const auto face = faceOf(2);
  EXPECT_EQ(face->setDipoleSelection(0, true), 1);
  EXPECT_TRUE(face->getDipole(0)->m_selected);
  EXPECT_FALSE(face->getDipole(1)->m_selected);
  EXPECT_EQ(face->setDipoleSelection(0, false), 1);
  EXPECT_FALSE(face->getDipole(0)->m_selected);
}

TEST(SetDipoleSelection, MinusOneIsOutOfRange) {
  const auto face = faceOf(2);
  EXPECT_EQ(face->setDipoleSelection(-1, true), 0);
  EXPECT_FALSE(face->getDipole(1)->m_selected);
}

TEST(SetDipoleSelection, AnEmptySlotGivesOne) {
  const auto face = faceOf(2);
  face->deleteDipole(0, 0);
  EXPECT_EQ(face->setDipoleSelection(0, true), 1);
}

TEST(DipoleSetters, BadIndicesChangeNothingAndGiveTheirResults) {
  const auto face = faceOf(3);
  const std::vector<MemberValues> before = membersOfAll(*face);
  for (const int index : badIndices) {
    EXPECT_EQ(face->setDipoleColor(index, 1), 1) << index;
    EXPECT_EQ(face->setDipoleListItemID(index, 1), 1) << index;
    EXPECT_EQ(face->setDipoleName(index, _T("x")), 1) << index;
    EXPECT_EQ(face->setDipoleLocation(index, 1.0F, 1.0F, 1.0F), 0) << index;
    EXPECT_EQ(face->setDipoleOrientation(index, 1.0F, 1.0F, 1.0F), 0) << index;
    EXPECT_EQ(face->setDipoleSelection(index, true), 0) << index;
  }
  EXPECT_EQ(membersOfAll(*face), before);
}

TEST(DipoleSetters, AnEmptySlotGivesTheResultsOfNoDipole) {
  const auto face = faceOf(3);
  face->deleteDipole(1, 0);
  EXPECT_EQ(face->setDipoleColor(1, 1), 1);
  EXPECT_EQ(face->setDipoleListItemID(1, 1), 1);
  EXPECT_EQ(face->setDipoleName(1, _T("x")), 1);
  EXPECT_EQ(face->setDipoleLocation(1, 1.0F, 1.0F, 1.0F), 0);
  EXPECT_EQ(face->setDipoleOrientation(1, 1.0F, 1.0F, 1.0F), 0);
}

TEST(DipoleSetters, ChangeTheirMembersAlone) {
  const auto face = faceOf(2);
  std::vector<MemberValues> expected = membersOfAll(*face);
  face->setDipoleColor(1, 0);
  face->setDipoleListItemID(1, 9);
  face->setDipoleName(1, _T("n"));
  face->setDipoleLocation(1, 4.0F, 5.0F, 6.0F);
  face->setDipoleOrientation(1, 7.0F, 8.0F, 9.0F);
  face->setDipoleSelection(1, true);
  expected[1]["m_color"] = "0";
  expected[1]["m_colorF"] = "0 0 0";
  expected[1]["m_listItemId"] = "9";
  expected[1]["m_label"] = "n";
  expected[1]["m_location"] = "4 5 6";
  expected[1]["m_orientation"] = "7 8 9";
  expected[1]["m_selected"] = "true";
  EXPECT_EQ(membersOfAll(*face), expected);
}

TEST(BackupLocationRotationRaw, TakesTheBackupOfEveryDipoleAndReturnsOne) {
  const auto face = faceOf(3);
  EXPECT_EQ(face->backupLocationRotationRaw(), 1);
  for (int slot = 0; slot < 3; ++slot) {
    EXPECT_EQ(face->getDipole(slot)->m_rawLocation.m_radius, 1.0);
    EXPECT_EQ(face->getDipole(slot)->m_rawLocation.m_center[1], 10.0 * slot);
    EXPECT_EQ(face->getDipole(slot)->m_rawOrientation.m_radius, 1.0);
  }
}

TEST(BackupLocationRotationRaw, DoesNotOverwriteABackup) {
  const auto face = faceOf(2);
  face->backupLocationRotationRaw();
  face->setDipoleLocation(1, 9.0F, 9.0F, 9.0F);
  face->backupLocationRotationRaw();
  EXPECT_EQ(face->getDipole(1)->m_rawLocation.m_center[0], 1.0);
}

TEST(BackupLocationRotationRaw, LeavesObjectsBehindTheCount) {
  const auto face = faceOf(3);
  leaveBehindCount(*face, 1);
  face->backupLocationRotationRaw();
  EXPECT_EQ(face->m_dipoles[2]->m_rawLocation.m_radius, 0.0);
}

TEST(BackupLocationRotationRaw, PassesOverAnEmptySlot) {
  const auto face = faceOf(3);
  face->deleteDipole(1, 0);
  EXPECT_EQ(face->backupLocationRotationRaw(), 1);
  EXPECT_EQ(face->getDipole(2)->m_rawLocation.m_radius, 1.0);
}

TEST(BackupLocationRotationRaw, EmptyCollectionGivesOne) {
  EXPECT_EQ(std::make_unique<CDipoleFace>()->backupLocationRotationRaw(), 1);
}

TEST(TraceDipoleSphere, ChangesNothingAndReturnsOne) {
  const auto face = faceOf(2);
  const std::vector<MemberValues> before = membersOfAll(*face);
  EXPECT_EQ(face->traceDipoleSphere(), 1);
  EXPECT_EQ(membersOfAll(*face), before);
}
