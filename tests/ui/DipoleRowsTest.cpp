// The cells of the manager's list, and that they stay as they were when the list was filled.
#include <limits>

#include "tests/collection/FaceFixture.h"
#include "ui/DipoleRows.h"

namespace {

std::string cell(const DipoleRows& rows, int row, int column) {
  return toUtf8(rows.text(row, column));
}

TEST(DipoleRows, HaveTheHeadingsOfTheSortKeys) {
  Texts headings;
  for (int column = 0; column < DipoleRows::columns; ++column) {
    headings.push_back(toUtf8(DipoleRows::heading(column)));
  }
  EXPECT_EQ(headings,
            (Texts{"Index", "Latency(ms)", "Position X(mm)", "Position Y(mm)", "Position Z(mm)",
                   "Orientation X", "Orientation Y", "Orientation Z", "Fit Error", "Moment", "Label"}));
}

TEST(DipoleRows, ShowNumbersWithFourDecimals) {
  const auto face = faceOf(1);
  CDipoleszq& dipole = *face->getDipole(0);
  dipole.m_number = 17;
  dipole.m_latency = 86.33333333;
  dipole.m_location[0] = -12.34567;
  dipole.m_location[1] = 0.00004;
  dipole.m_location[2] = -0.00001;
  dipole.setDipoleOrientation(0.5, -1.0, 1e10);
  dipole.m_fitError = 7.0;
  dipole.m_moment = 12345.67897;
  dipole.m_label = _T("Müller, left");
  const DipoleRows rows(*face);
  const Texts expected = {"17",      "86.3333",          "-12.3457", "0.0000",     "-0.0000",     "0.5000",
                          "-1.0000", "10000000000.0000", "7.0000",   "12345.6790", "Müller, left"};
  for (int column = 0; column < DipoleRows::columns; ++column) {
    EXPECT_EQ(cell(rows, 0, column), expected[static_cast<std::size_t>(column)]) << column;
  }
}

TEST(DipoleRows, ShowWhatIsNoNumberAsSuch) {
  const auto face = faceOf(1);
  face->getDipole(0)->m_location[0] = std::numeric_limits<double>::quiet_NaN();
  face->getDipole(0)->m_location[1] = -std::numeric_limits<double>::infinity();
  const DipoleRows rows(*face);
  EXPECT_EQ(cell(rows, 0, 2), "nan");
  EXPECT_EQ(cell(rows, 0, 3), "-inf");
}

TEST(DipoleRows, KnowWhichDipoleEachWasMadeFrom) {
  const auto face = faceOf(2);
  const DipoleRows rows(*face);
  EXPECT_TRUE(rows.isOf(1, face->getDipole(1)));
  EXPECT_FALSE(rows.isOf(0, face->getDipole(1)));
  EXPECT_FALSE(rows.isOf(-1, face->getDipole(0)));
  EXPECT_FALSE(rows.isOf(2, face->getDipole(1)));
}

TEST(DipoleRows, GiveEachDipoleItsRowAsListItem) {
  const auto face = faceOf(3);
  const DipoleRows rows(*face);
  EXPECT_EQ(rows.count(), 3);
  EXPECT_EQ(face->getDipoleListItemID(0), -1) << "not before the list has them";
  rows.giveItemIds(*face);
  EXPECT_EQ(face->getDipoleListItemID(0), 0);
  EXPECT_EQ(face->getDipoleListItemID(2), 2);
}

TEST(DipoleRows, PictureTellsShownFromHidden) {
  const auto face = faceOf(3);
  face->getDipole(1)->m_show = 0;
  face->getDipole(2)->m_show = -7;
  const DipoleRows rows(*face);
  EXPECT_EQ(rows.image(0), 0);
  EXPECT_EQ(rows.image(1), 1);
  EXPECT_EQ(rows.image(2), 0);
}

TEST(DipoleRows, EndBeforeAnEmptySlot) {
  const auto face = faceOf(4);
  DipoleRows(*face).giveItemIds(*face);
  face->deleteDipole(2, 0);
  const DipoleRows rows(*face);
  EXPECT_EQ(rows.count(), 2);
  rows.giveItemIds(*face);
  EXPECT_EQ(face->getDipoleListItemID(1), 1);
  EXPECT_EQ(face->getDipoleListItemID(3), -1) << "it has none any more";
}

TEST(DipoleRows, StayAsTheyWereFilled) {
  const auto face = faceOf(2);
  const DipoleRows rows(*face);
  face->getDipole(0)->m_number = 99;
  face->getDipole(0)->m_show = 0;
  face->cleanDipoles();
  EXPECT_EQ(cell(rows, 0, 0), "0");
  EXPECT_EQ(rows.image(0), 0);
  EXPECT_EQ(cell(rows, 1, 2), "1.0000");
  EXPECT_TRUE(rows.has(0));
  EXPECT_TRUE(rows.has(1));
  EXPECT_FALSE(rows.has(2));
  EXPECT_FALSE(rows.has(-1));
}

TEST(DipoleRows, AreFoundByTheBeginningOfTheirNumber) {
  const auto face = faceOf(4);
  const int numbers[] = {5, 12, 31, 123};
  for (int slot = 0; slot < 4; ++slot) {
    face->getDipole(slot)->m_number = numbers[slot];
  }
  const DipoleRows rows(*face);
  EXPECT_EQ(rows.find(_T("12"), false, 0), 1);
  EXPECT_EQ(rows.find(_T("12"), false, 2), 3);
  EXPECT_EQ(rows.find(_T("5"), false, 2), 0) << "the search goes on at the top";
  EXPECT_EQ(rows.find(_T("123"), true, 0), 3);
  EXPECT_EQ(rows.find(_T("3"), true, 0), -1);
  EXPECT_EQ(rows.find(_T("7"), false, 0), -1);
  EXPECT_EQ(DipoleRows().find(_T("5"), false, 0), -1);
}

}  // namespace
