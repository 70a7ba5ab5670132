// The sections that add to dipoles read before: "Dipole_Flags" and "Dipole_FitInfo".
#include <gtest/gtest.h>

#include "tests/import/CtfImportTest.h"

namespace {

class CtfFlags : public CtfImport {
 protected:
  static std::string flags(const std::string& rows) { return section("Dipole_Flags", rows); }
  void expectColor(int slot, float red, float green, float blue) const {
    EXPECT_EQ(dipole(slot).m_colorF[0], red);
    EXPECT_EQ(dipole(slot).m_colorF[1], green);
    EXPECT_EQ(dipole(slot).m_colorF[2], blue);
  }
};

class CtfFitInfo : public CtfImport {
 protected:
  static std::string fitInfo(const std::string& rows) { return section("Dipole_FitInfo", rows); }
};

}  // namespace

TEST_F(CtfFlags, TheSecondColumnChoosesTheColour) {
  const float colors[9][3] = {{1, 1, 0}, {0, 1, 0}, {1, 0, 0}, {0, 1, 1}, {1, 0, 1},
                              {1, 1, 1}, {0, 0, 0}, {0, 0, 1}, {0, 0, 1}};
  const std::string codes[9] = {"0", "1", "2", "3", "4", "5", "6", "7", "-1"};
  std::string rows;
  for (const std::string& code : codes) {
    rows += "1: " + code + " 0 1 1 1\n";
  }
  parse(dipoles(9) + flags(rows));
  for (int slot = 0; slot < 9; ++slot) {
    expectColor(slot, colors[slot][0], colors[slot][1], colors[slot][2]);
    EXPECT_EQ(dipole(slot).m_color, 65535U);  // not touched
  }
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfFlags, TheThirdColumnSetsTheDisplayState) {
  const int states[7] = {1, 2, 0, 1, 2, 0, 0};
  parse(dipoles(7) + flags("1: 0 0 1 1 1\n1: 0 1 1 1 1\n1: 0 2 1 1 1\n1: 0 3 1 1 1\n1: 0 4 1 1 1\n"
                           "1: 0 5 1 1 1\n1: 0 -1 1 1 1\n"));
  for (int slot = 0; slot < 7; ++slot) {
    EXPECT_EQ(dipole(slot).m_display, states[slot]) << slot;
  }
}

TEST_F(CtfFlags, RowsGoToTheFilesDipolesInOrderWhateverTheirNumbers) {
  parse(dipoles(2) + flags("9: 2 0 1 1 1\n1: 1 0 1 1 1\n"));
  expectColor(0, 1, 0, 0);
  expectColor(1, 0, 1, 0);
}

TEST_F(CtfFlags, TheFirstRowGoesToTheFilesFirstDipole) {
  parse(dipoles(2));
  parse(dipoles(1) + flags("1: 2 0 1 1 1\n"));
  expectColor(0, 1, 1, 0);
  expectColor(2, 1, 0, 0);
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfFlags, RowsOfFiveFieldsAreIgnored) {
  parse(dipoles(1) + flags("1: 2 4 1 1\n1 : 2 4 1 1 1\n1: 6 1 1 1 1 more\n"));
  expectColor(0, 0, 0, 0);
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfFlags, FewerRowsThanDipolesAreReportedAndKept) {
  parse(dipoles(2) + flags("1: 2 1 1 1 1\n"));
  EXPECT_EQ(shown(), Texts{fileNotCorrect});
  expectColor(0, 1, 0, 0);
  EXPECT_EQ(dipole(0).m_display, 2);
  expectColor(1, 1, 1, 0);
}

TEST_F(CtfFlags, MoreRowsThanDipolesMakeDipolesBehindTheCount) {
  parse(dipoles(1) + flags("1: 2 1 1 1 1\n2: 1 4 1 1 1\n"));
  EXPECT_EQ(shown(), Texts{fileNotCorrect});
  EXPECT_EQ(set->m_totalDipoles, 1);
  ASSERT_NE(set->m_dipoles[1], nullptr);
  EXPECT_EQ(dipole(1).m_display, 2);
  EXPECT_EQ(set->m_currentDipole, 0);
}

TEST_F(CtfFlags, AnObjectLeftBehindTheCountIsUsedAndTheCountsAreCompared) {
  parse(flags("1: 2 1 1 1 1\n"));
  parse(flags("1: 6 1 1 1 1\n"));
  EXPECT_EQ(shown(), (Texts{fileNotCorrect, fileNotCorrect}));
  expectColor(0, 0, 0, 0);
}

TEST_F(CtfFlags, NoRowsForNoDipolesIsCorrect) {
  parse(flags(""));
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfFlags, CommentsArePassedOver) {
  parse(dipoles(1) + flags("//1: 2 1 1 1 1\n1: 2 0 1 1 1\n"));
  expectColor(0, 1, 0, 0);
  EXPECT_EQ(dipole(0).m_display, 1);
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfFlags, TheFileGoesOnBehindThemWhateverTheyHold) {
  parse(flags("") + section("File_Info", "PATIENT:p\n"));
  EXPECT_EQ(toUtf8(set->m_patient), "p");
}

TEST_F(CtfFlags, TheEndOfTheFileKeepsWhatWasAppliedWithoutAMessage) {
  EXPECT_EQ(parse(dipoles(2) + "Dipole_Flags\n{\n1: 2 1 1 1 1\n"), 1);
  expectColor(0, 1, 0, 0);
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfFlags, Slot30000HasNoSpace) {
  while (set->m_totalDipoles < 29999) {
    set->addDipole();
  }
  parse(dipoles(1) + flags("1: 2 1 1 1 1\n2: 2 1 1 1 1\n3: 2 1 1 1 1\n"));
  EXPECT_EQ(shown(), Texts{noSpace});  // the one row that fits agrees with the count
  expectColor(29999, 1, 0, 0);
}

TEST_F(CtfFlags, NoSpaceIsFollowedByTheComparison) {
  while (set->m_totalDipoles < 29999) {
    set->addDipole();
  }
  parse(flags("1: 2 1 1 1 1\n2: 2 1 1 1 1\n"));
  EXPECT_EQ(shown(), (Texts{noSpace, fileNotCorrect}));
}

TEST_F(CtfFlags, MovingDipolesGetTheirFlags) {
  user.answer(IDYES);
  parse(dipoles(3) + movingDipoles(1) + flags("1: 2 1 1 1 1\n"));
  EXPECT_EQ(shown(), Texts{movingQuestion});
  expectColor(0, 1, 0, 0);
}

TEST_F(CtfFitInfo, ARowSetsIdTagLatencyAndError) {
  parse(dipoles(1) + fitInfo("\t1:\t4\t60\t0.125\t1\t7.5\t0\t0\t1\tsubject.ds\n"));
  EXPECT_EQ(dipole(0).m_id, 4);
  EXPECT_EQ(dipole(0).m_fitTag, 60);
  EXPECT_EQ(dipole(0).m_latency, 125);
  EXPECT_EQ(dipole(0).m_fitError, 7.5);
  EXPECT_EQ(toUtf8(dipole(0).m_label), "d1");
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfFitInfo, TheLatencyIsMultipliedInSinglePrecision) {
  parse(dipoles(1) + fitInfo("1: 1 1 0.1003 1 0.7 0 0 0\n"));
  EXPECT_EQ(dipole(0).m_latency, double{0.1003F * 1000.0F});
  EXPECT_NE(dipole(0).m_latency, double{0.1003F} * 1000.0);
  EXPECT_EQ(dipole(0).m_fitError, double{0.7F});
}

TEST_F(CtfFitInfo, NineFieldsAreEnough) {
  parse(dipoles(2) + fitInfo("1: 1 5 0.1 1 7 0 0 0\n2: 1 6 0.1 1 7 0 0\n3: 1 7 0.1 1 7 0 0 0 x y z\n"));
  EXPECT_EQ(dipole(0).m_fitTag, 5);
  EXPECT_EQ(dipole(1).m_fitTag, 7);
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfFitInfo, ANumberWithAPointWhereAnIntegerBelongsHidesTheRow) {
  parse(dipoles(1) + fitInfo("1: 1 5 0.1 1 7 0.5 0 0 x\n"));
  EXPECT_EQ(dipole(0).m_fitTag, 0);
  EXPECT_EQ(shown(), Texts{fileNotCorrect});
}

TEST_F(CtfFitInfo, RowsStartAtTheFilesFirstDipole) {
  parse(dipoles(1));
  parse(dipoles(1) + fitInfo("1: 1 5 0.1 1 7 0 0 0\n"));
  EXPECT_EQ(dipole(0).m_fitTag, 0);
  EXPECT_EQ(dipole(1).m_fitTag, 5);
}

TEST_F(CtfFitInfo, FewerRowsAreReportedAndKept) {
  parse(dipoles(2) + fitInfo("1: 1 5 0.1 1 7 0 0 0\n"));
  EXPECT_EQ(shown(), Texts{fileNotCorrect});
  EXPECT_EQ(dipole(0).m_fitTag, 5);
}

TEST_F(CtfFitInfo, MoreRowsMakeDipolesBehindTheCount) {
  parse(dipoles(1) + fitInfo("1: 1 5 0.1 1 7 0 0 0\n1: 1 6 0.1 1 7 0 0 0\n"));
  EXPECT_EQ(shown(), Texts{fileNotCorrect});
  EXPECT_EQ(set->m_totalDipoles, 1);
  ASSERT_NE(set->m_dipoles[1], nullptr);
  EXPECT_EQ(dipole(1).m_fitTag, 6);
}

TEST_F(CtfFitInfo, BothSectionsApplyInEitherOrder) {
  parse(dipoles(1) + fitInfo("1: 1 5 0.1 1 7 0 0 0\n") + section("Dipole_Flags", "1: 2 4 1 1 1\n"));
  EXPECT_EQ(dipole(0).m_fitTag, 5);
  EXPECT_EQ(dipole(0).m_display, 2);
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfFitInfo, TheEndOfTheFileKeepsWhatWasAppliedWithoutAMessage) {
  EXPECT_EQ(parse(dipoles(2) + "Dipole_FitInfo\n{\n1: 1 5 0.1 1 7 0 0 0\n"), 1);
  EXPECT_EQ(dipole(0).m_fitTag, 5);
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfFitInfo, Slot30000HasNoSpace) {
  while (set->m_totalDipoles < 29999) {
    set->addDipole();
  }
  parse(dipoles(1) + fitInfo("1: 1 5 0.1 1 7 0 0 0\n2: 1 6 0.1 1 7 0 0 0\n"));
  EXPECT_EQ(shown(), Texts{noSpace});
  EXPECT_EQ(dipole(29999).m_fitTag, 5);
}
