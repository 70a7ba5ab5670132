// The section "Dipoles": the static dipoles of a CTF file.
#include <gtest/gtest.h>

#include "tests/import/CtfImportTest.h"

namespace {

class CtfDipoles : public CtfImport {
 protected:
  // One section with the usual unit header.
  int parseRows(const std::string& rows) { return parse(section("Dipoles", unitHeader + rows)); }
  static std::string question(const std::string& location) {
    return "It seems the dipole location is wrong (" + location + "), do you like to import?";
  }
  void fill(int count) {
    while (set->m_totalDipoles < count) {
      set->addDipole();
    }
  }
};

}  // namespace

TEST_F(CtfDipoles, ARowBecomesADipoleInTheHostsAxesInMillimetres) {
  parseRows("\t1:\t-2.5\t3.00\t1.25\t1.0000\t0.5\t-0.25\t3.5\tspike_1\n");
  ASSERT_EQ(set->m_totalDipoles, 1);
  expectTriple(dipole(0).m_location, 30, 12.5, -25);
  expectTriple(dipole(0).m_orientation, 0.5, -0.25, 1);
  EXPECT_EQ(dipole(0).m_moment, 3.5);
  EXPECT_EQ(toUtf8(dipole(0).m_label), "spike_1");
  EXPECT_EQ(dipole(0).m_number, 1);
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfDipoles, EveryMemberThatTheRowDoesNotNameKeepsItsDefault) {
  parseRows("9: 1 2 3 1 0 0 7 a\n");
  const CDipoleszq fresh;
  EXPECT_EQ(dipole(0).m_id, fresh.m_id);
  EXPECT_EQ(dipole(0).m_fitTag, fresh.m_fitTag);
  EXPECT_EQ(dipole(0).m_latency, fresh.m_latency);
  EXPECT_EQ(dipole(0).m_fitError, fresh.m_fitError);
  EXPECT_EQ(dipole(0).m_display, fresh.m_display);
  EXPECT_EQ(dipole(0).m_color, fresh.m_color);
  EXPECT_EQ(dipole(0).m_size, fresh.m_size);
  EXPECT_EQ(dipole(0).m_rawLocation.m_radius, 0.0);
}

TEST_F(CtfDipoles, NumbersHaveSinglePrecision) {
  parseRows("1: 0.1 -0.7 7.77 0.1 0.2 0.3 0.7 a\n");
  expectTriple(dipole(0).m_location, double{-0.7F * 10.0F}, double{7.77F * 10.0F}, double{0.1F * 10.0F});
  expectTriple(dipole(0).m_orientation, double{0.2F}, double{0.3F}, double{0.1F});
  EXPECT_EQ(dipole(0).m_moment, double{0.7F});
}

TEST_F(CtfDipoles, TheNumberIsThePlaceInTheCollectionNotTheOneInTheFile) {
  fill(2);
  parseRows("70: 1 2 3 1 0 0 3 a\n4: 1 2 3 1 0 0 3 b\n");
  EXPECT_EQ(dipole(2).m_number, 3);
  EXPECT_EQ(dipole(3).m_number, 4);
}

TEST_F(CtfDipoles, TheLastDipoleBecomesTheCurrentOne) {
  fill(2);
  parseRows("1: 1 2 3 1 0 0 3 a\n2: 1 2 3 1 0 0 3 b\n");
  EXPECT_EQ(set->m_currentDipole, 3);
}

TEST_F(CtfDipoles, TheUnitHeaderSetsTheCoordinateTypeAndTheUnitOfMoments) {
  parseRows("");
  EXPECT_EQ(set->m_coordinateType, 3);
  EXPECT_EQ(set->m_momentInNAm, 1);
}

TEST_F(CtfDipoles, TheUnitOfMomentsNeedsItsOwnWord) {
  parse(section("Dipoles", "(cm)\n(nAm)\n"));
  EXPECT_EQ(set->m_coordinateType, 3);
  EXPECT_EQ(set->m_momentInNAm, 0);
}

TEST_F(CtfDipoles, AUnitHeaderWrittenAsACommentIsRecognised) {
  parse(section("Dipoles", "// (cm) (nAm)\n1: 1 2 3 1 0 0 3 a\n"));
  expectTriple(dipole(0).m_location, 20, 30, 10);
  EXPECT_EQ(set->m_momentInNAm, 1);
}

TEST_F(CtfDipoles, AUnitHeaderWithABraceIsAUnitHeader) {
  parse("Dipoles\n{ (cm)\n1: 1 2 3 1 0 0 3 a\n(cm) }\n2: 1 2 3 1 0 0 3 b\n}\n");
  EXPECT_EQ(labels(), (Texts{"a", "b"}));
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfDipoles, ARowThatNamesTheUnitIsAUnitHeader) {
  parse(section("Dipoles", "1: 1 2 3 1 0 0 3 (cm)\n2: 1 2 3 1 0 0 3 b\n"));
  EXPECT_EQ(labels(), Texts{"b"});
}

TEST_F(CtfDipoles, WithoutAUnitHeaderRowsAreMillimetresAndAMessageSaysSo) {
  EXPECT_EQ(parse(section("Dipoles", "1: 1 2 3 1 0 0 3 a\n")), 1);
  expectTriple(dipole(0).m_location, 2, 3, 1);
  EXPECT_EQ(shown(), Texts{unitMissing});
  EXPECT_EQ(set->m_coordinateType, 0);
}

TEST_F(CtfDipoles, AUnitHeaderHoldsForTheRowsBehindIt) {
  parse(section("Dipoles", "1: 1 2 3 1 0 0 3 a\n(cm)\n2: 1 2 3 1 0 0 3 b\n"));
  expectTriple(dipole(0).m_location, 2, 3, 1);
  expectTriple(dipole(1).m_location, 20, 30, 10);
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfDipoles, AUnitHeaderHoldsForItsOwnSectionOnly) {
  parse(dipoles(1) + section("Dipoles", "1: 1 2 3 1 0 0 3 b\n"));
  expectTriple(dipole(1).m_location, 2, 3, 1);
  EXPECT_EQ(shown(), Texts{unitMissing});
}

TEST_F(CtfDipoles, AHeaderOutsideTheSectionDoesNotCount) {
  parse(unitHeader + section("Dipoles", "1: 1 2 3 1 0 0 3 a\n"));
  EXPECT_EQ(shown(), Texts{unitMissing});
}

TEST_F(CtfDipoles, TheUnitIsFoundWithItsCaseOnly) {
  parse(section("Dipoles", "(CM)\n1: 1 2 3 1 0 0 3 a\n"));
  EXPECT_EQ(shown(), Texts{unitMissing});
}

TEST_F(CtfDipoles, RowsOfSevenNumbersAreIgnored) {
  parseRows("1: 1 2 3 1 0 0\nx: 1 2 3 1 0 0 3 a\n1 1 2 3 1 0 0 3 a\n1: 1 2 3 y 0 0 3 a\n");
  EXPECT_EQ(labels(), Texts{});
}

TEST_F(CtfDipoles, BlanksMayStandBeforeTheColonAndMayLackBehindIt) {
  parseRows("1 \t:1 2 3 1 0 0 3 a\n2:1 2 3 1 0 0 3 b\n");
  EXPECT_EQ(labels(), (Texts{"a", "b"}));
}

TEST_F(CtfDipoles, TheLabelEndsAtABlank) {
  parseRows("1: 1 2 3 1 0 0 3 left spike\n");
  EXPECT_EQ(labels(), Texts{"left"});
}

TEST_F(CtfDipoles, TheFirstRowWithoutALabelIsCalledNon) {
  parseRows("1: 1 2 3 1 0 0 3\n");
  EXPECT_EQ(labels(), Texts{"Non"});
}

TEST_F(CtfDipoles, ARowWithoutALabelTakesTheOneOfTheRowBefore) {
  parseRows("1: 1 2 3 1 0 0 3 a\n2: 1 2 3 1 0 0 3 \t\n3: 1 2 3 1 0 0 3\n4: 1 2 3 1 0 0 3 b\n");
  EXPECT_EQ(labels(), (Texts{"a", "a", "a", "b"}));
}

TEST_F(CtfDipoles, ARowWithoutALabelTakesTheOneOfARefusedRow) {
  user.answer(IDNO);
  parseRows("1: 1 2 3 1 0 0 3 a\n2: 90 2 3 1 0 0 3 refused\n3: 1 2 3 1 0 0 3\n");
  EXPECT_EQ(labels(), (Texts{"a", "refused"}));
}

TEST_F(CtfDipoles, LabelsDoNotPassFromSectionToSection) {
  parseRows("1: 1 2 3 1 0 0 3 a\n");
  parseRows("1: 1 2 3 1 0 0 3\n");
  EXPECT_EQ(labels(), (Texts{"a", "Non"}));
}

TEST_F(CtfDipoles, LabelsAreTextOfTheAnsiCodePage) {
  parseRows("1: 1 2 3 1 0 0 3 \xE4\x80\n2: 1 2 3 1 0 0 3 \xC3\xA4\n");
  EXPECT_EQ(labels(), (Texts{"\u00E4\u20AC", "\u00C3\u00A4"}));
}

TEST_F(CtfDipoles, ANoBreakSpaceBelongsToTheLabel) {
  parseRows(
      "1: 1 2 3 1 0 0 3 a\xA0"
      "b\n");
  EXPECT_EQ(labels(), Texts{"a\u00A0b"});
}

TEST_F(CtfDipoles, CommentsAndBracesInRowsHideThem) {
  parseRows("//1: 1 2 3 1 0 0 3 a\n1: 1 2 3 1 0 0 3 x//y\n1: 1 2 3 1 0 0 3 {b}\n1: 1 2 3 1 0 0 3 c\n");
  EXPECT_EQ(labels(), Texts{"c"});
}

TEST_F(CtfDipoles, ALabelWithAClosingBraceEndsTheSection) {
  parseRows("1: 1 2 3 1 0 0 3 a\n2: 1 2 3 1 0 0 3 b}\n3: 1 2 3 1 0 0 3 c\n");
  EXPECT_EQ(labels(), Texts{"a"});
}

TEST_F(CtfDipoles, ALocationOf250CentimetresIsQuestionedInMillimetres) {
  user.answer(IDYES);
  parseRows("1: 1 250 -3.25 1 0 0 3 far\n");
  EXPECT_EQ(user.messages,
            (std::vector<ScriptedOperator::Message>{{question("10.000 x 2500.000 x -32.500"), MB_YESNO}}));
  EXPECT_EQ(labels(), Texts{"far"});
  expectTriple(dipole(0).m_location, 2500, -32.5, 10);
}

TEST_F(CtfDipoles, NoSkipsTheQuestionedRow) {
  user.answer(IDNO);
  parseRows("1: 1 2 3 1 0 0 3 a\n2: 31 2 3 1 0 0 3 far\n3: 1 2 3 1 0 0 3 b\n");
  EXPECT_EQ(labels(), (Texts{"a", "b"}));
  EXPECT_EQ(dipole(1).m_number, 2);
}

TEST_F(CtfDipoles, EveryAxisIsQuestioned) {
  for (int i = 0; i < 3; ++i) {
    user.answer(IDNO);
  }
  parseRows("1: 30.1 0 0 1 0 0 3 a\n2: 0 30.1 0 1 0 0 3 b\n3: 0 0 30.1 1 0 0 3 c\n");
  EXPECT_EQ(shown(), (Texts{question("301.000 x 0.000 x 0.000"), question("0.000 x 301.000 x 0.000"),
                            question("0.000 x 0.000 x 301.000")}));
}

TEST_F(CtfDipoles, ExactlyThreeHundredMillimetresAreNotQuestioned) {
  parseRows("1: 30 30 30 1 0 0 3 a\n");
  EXPECT_EQ(labels(), Texts{"a"});
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfDipoles, NegativeLocationsAreNeverQuestioned) {
  parseRows("1: -250 -250 -250 1 0 0 3 a\n");
  expectTriple(dipole(0).m_location, -2500, -2500, -2500);
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfDipoles, WithoutAUnitTheQuestionIsAboutMillimetresAsRead) {
  user.answer(IDYES);
  parse(section("Dipoles", "1: 300 1 1 1 0 0 3 a\n2: 300.5 1 1 1 0 0 3 b\n"));
  EXPECT_EQ(shown(), (Texts{question("300.500 x 1.000 x 1.000"), unitMissing}));
}

TEST_F(CtfDipoles, AnInfiniteLocationIsQuestionedAndOneThatIsNoNumberIsNot) {
  user.answer(IDNO);
  parseRows("1: inf 1 1 1 0 0 3 a\n2: nan 1 1 1 0 0 3 b\n");
  EXPECT_EQ(labels(), Texts{"b"});
  EXPECT_EQ(user.messages.size(), 1U);
}

TEST_F(CtfDipoles, The30000thDipoleIsTheLast) {
  fill(29999);
  parseRows("1: 1 2 3 1 0 0 3 a\n2: 1 2 3 1 0 0 3 b\n3: 1 2 3 1 0 0 3 c\n");
  EXPECT_EQ(set->m_totalDipoles, 30000);
  EXPECT_EQ(toUtf8(dipole(29999).m_label), "a");
  EXPECT_EQ(shown(), Texts{noSpace});
}

TEST_F(CtfDipoles, NoSpaceComesBeforeTheQuestionAndTheUnitMessage) {
  fill(30000);
  parse(section("Dipoles", "1: 900 2 3 1 0 0 3 a\n"));
  EXPECT_EQ(shown(), (Texts{noSpace, unitMissing}));
}

TEST_F(CtfDipoles, NoSpaceEndsTheSectionNotTheFile) {
  fill(30000);
  parseRows("1: 1 2 3 1 0 0 3 a\n" + section("File_Info", "PATIENT:p\n"));
  EXPECT_EQ(toUtf8(set->m_patient), "p");
}

TEST_F(CtfDipoles, ASectionThatLeavesTheCollectionEmptyStopsTheFile) {
  parse(section("Dipoles", unitHeader) + section("File_Info", "PATIENT:p\n"));
  EXPECT_EQ(toUtf8(set->m_patient), "non");
}

TEST_F(CtfDipoles, AnEmptySectionGoesOnWhenTheCollectionHoldsDipoles) {
  fill(1);
  parse(section("Dipoles", unitHeader) + section("File_Info", "PATIENT:p\n"));
  EXPECT_EQ(toUtf8(set->m_patient), "p");
}

TEST_F(CtfDipoles, TheEndOfTheFileKeepsTheDipolesWithoutAMessage) {
  EXPECT_EQ(parse("Dipoles\n{\n1: 1 2 3 1 0 0 3 a\n2: 1 2 3 1 0 0 3 b\n"), 1);
  EXPECT_EQ(labels(), (Texts{"a", "b"}));
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfDipoles, ARowWithoutALineEndIsDropped) {
  parse("Dipoles\n{\n(cm)\n1: 1 2 3 1 0 0 3 a\n2: 1 2 3 1 0 0 3 b");
  EXPECT_EQ(labels(), Texts{"a"});
}

TEST_F(CtfDipoles, SectionsMayRepeat) {
  parse(dipoles(2) + dipoles(1));
  EXPECT_EQ(labels(), (Texts{"d1", "d2", "d1"}));
}

TEST_F(CtfDipoles, ARowReplacesAnObjectThatAnEarlierImportLeftBehindTheCount) {
  parse(section("Dipole_Flags", "1: 6 4 1 1 1\n"));  // makes a black, half shown dipole in slot 0
  ASSERT_NE(set->m_dipoles[0], nullptr);
  parseRows("1: 1 2 3 1 0 0 3 a\n");
  EXPECT_EQ(dipole(0).m_colorF[0], 1.0F);
  EXPECT_EQ(dipole(0).m_display, 1);
}

TEST_F(CtfDipoles, WhatWasThereBeforeStays) {
  set->addDipoleF(1, 2, 3);
  const CDipoleszq* before = set->m_dipoles[0];
  parseRows("1: 1 2 3 1 0 0 3 a\n");
  EXPECT_EQ(set->m_dipoles[0], before);
  expectTriple(dipole(0).m_location, 1, 2, 3);
}
