// The section "Fit_Results": moving dipoles, which take the places of the file's static ones.
#include <gtest/gtest.h>

#include "tests/import/CtfImportTest.h"

namespace {

class CtfMovingDipoles : public CtfImport {
 protected:
  // One section, accepted.
  int parseRows(const std::string& header, const std::string& rows) {
    user.answer(IDYES);
    return parse(section("Fit_Results", header + rows));
  }
  Texts shownBehindTheQuestion() const {
    Texts all = shown();
    EXPECT_FALSE(all.empty());
    EXPECT_EQ(all.front(), movingQuestion);
    all.erase(all.begin());
    return all;
  }
  void fill(int count) {
    while (set->m_totalDipoles < count) {
      set->addDipole();
    }
  }
};

const std::string row = "1: 4 60 0.0625 1 2 3 0.5 -0.25 1 20 5.5 m\n";

}  // namespace

TEST_F(CtfMovingDipoles, TheQuestionIsYesOrNo) {
  user.answer(IDNO);
  parse(movingDipoles(1));
  EXPECT_EQ(user.messages, (std::vector<ScriptedOperator::Message>{{movingQuestion, MB_YESNO}}));
}

TEST_F(CtfMovingDipoles, ARowBecomesADipole) {
  parseRows(movingHeader, row);
  ASSERT_EQ(set->m_totalDipoles, 1);
  EXPECT_EQ(dipole(0).m_number, 1);
  EXPECT_EQ(dipole(0).m_id, 4);
  EXPECT_EQ(dipole(0).m_fitTag, 60);
  EXPECT_EQ(dipole(0).m_latency, 62.5);
  expectTriple(dipole(0).m_location, 20, 30, 10);
  expectTriple(dipole(0).m_orientation, -0.25, 1, 0.5);
  EXPECT_EQ(dipole(0).m_moment, 20);
  EXPECT_EQ(dipole(0).m_fitError, 5.5);
  EXPECT_EQ(toUtf8(dipole(0).m_label), "m");
  EXPECT_EQ(set->m_currentDipole, 0);
  EXPECT_EQ(shownBehindTheQuestion(), Texts{});
}

TEST_F(CtfMovingDipoles, NumbersHaveSinglePrecision) {
  parseRows(movingHeader, "1: 1 1 0.1 0.7 0.3 -0.9 0 1 0 0.7 3.3 m\n");
  EXPECT_EQ(dipole(0).m_latency, double{0.1F * 1000.0F});
  expectTriple(dipole(0).m_location, double{0.3F * 10.0F}, double{-0.9F * 10.0F}, double{0.7F * 10.0F});
  EXPECT_EQ(dipole(0).m_moment, double{0.7F});
  EXPECT_EQ(dipole(0).m_fitError, double{3.3F});
}

TEST_F(CtfMovingDipoles, RowsWithoutALabelAreCalledNon) {
  parseRows(movingHeader, row + "2: 1 61 0.1 1 2 3 0 1 0 20 5.5\n");
  EXPECT_EQ(labels(), (Texts{"m", "Non"}));
}

TEST_F(CtfMovingDipoles, RowsOfElevenFieldsAreIgnored) {
  parseRows(movingHeader, "1: 4 60 0.1 1 2 3 0 1 0 20\n1 : 4 60 0.1 1 2 3 0 1 0 20 5.5 m\n");
  EXPECT_EQ(set->m_totalDipoles, 0);
}

TEST_F(CtfMovingDipoles, TheThirteenthColumnIsTheLabelWhateverItIs) {
  parseRows(movingHeader, "1:\t1\t60\t0.1\t1\t2\t3\t0\t1\t0\t20\t0.11\t0.12\t0.13\tlabel\n");
  EXPECT_EQ(labels(), Texts{"0.12"});
}

TEST_F(CtfMovingDipoles, WithoutTheCentimetreHeaderBothMessagesCome) {
  parseRows("", row);
  EXPECT_EQ(shownBehindTheQuestion(), (Texts{unitMissing, latencyUnitMissing}));
  expectTriple(dipole(0).m_location, 2, 3, 1);
  EXPECT_EQ(dipole(0).m_latency, 0.0625);
}

TEST_F(CtfMovingDipoles, WithoutTheSecondsTheLatencyStaysAsRead) {
  parseRows("// (cm) (nAm)\n", row);
  EXPECT_EQ(shownBehindTheQuestion(), Texts{latencyUnitMissing});
  EXPECT_EQ(dipole(0).m_latency, 0.0625);
  EXPECT_EQ(set->m_coordinateType, 3);
  EXPECT_EQ(set->m_momentInNAm, 1);
}

TEST_F(CtfMovingDipoles, SecondsCountOnALineWithCentimetresOnly) {
  parseRows("(s)\n(cm)\n", row);
  EXPECT_EQ(shownBehindTheQuestion(), Texts{latencyUnitMissing});
  EXPECT_EQ(set->m_momentInNAm, 0);
}

TEST_F(CtfMovingDipoles, ASecondHeaderMayNameTheSeconds) {
  parseRows("(cm)\n", row + "(cm) (s)\n" + row);
  EXPECT_EQ(shownBehindTheQuestion(), Texts{});
  EXPECT_EQ(dipole(0).m_latency, 0.0625);
  EXPECT_EQ(dipole(1).m_latency, 62.5);
}

TEST_F(CtfMovingDipoles, SecondsOnceNamedStay) {
  parseRows("(cm) (s)\n(cm)\n", row);
  EXPECT_EQ(dipole(0).m_latency, 62.5);
}

TEST_F(CtfMovingDipoles, FarLocationsAreNotQuestioned) {
  parseRows(movingHeader, "1: 1 60 0.1 250 2 3 0 1 0 20 5.5 m\n");
  EXPECT_EQ(shownBehindTheQuestion(), Texts{});
  EXPECT_EQ(dipole(0).m_location[2], 2500);
}

TEST_F(CtfMovingDipoles, YesReplacesTheFilesStaticDipoles) {
  user.answer(IDYES);
  parse(dipoles(3) + movingDipoles(2));
  EXPECT_EQ(labels(), (Texts{"m1", "m2"}));
}

TEST_F(CtfMovingDipoles, NoLeavesTheStaticDipolesAndIgnoresTheBodyLineByLine) {
  user.answer(IDNO);
  parse(dipoles(2) + movingDipoles(3) + section("File_Info", "PATIENT:p\n"));
  EXPECT_EQ(labels(), (Texts{"d1", "d2"}));
  EXPECT_EQ(toUtf8(set->m_patient), "p");
}

TEST_F(CtfMovingDipoles, ASectionNameInADeclinedBodyIsRead) {
  user.answer(IDNO);
  parse("Fit_Results\n{\n" + dipoles(1) + "}\n");
  EXPECT_EQ(labels(), Texts{"d1"});
}

TEST_F(CtfMovingDipoles, DipolesOfBeforeTheFileStay) {
  fill(2);
  user.answer(IDYES);
  parse(dipoles(3) + movingDipoles(1));
  EXPECT_EQ(labels(), (Texts{"Non", "Non", "m1"}));
  EXPECT_EQ(dipole(2).m_number, 3);
}

TEST_F(CtfMovingDipoles, TheObjectsOfTheStaticDipolesAreReusedAsTheyAre) {
  user.answer(IDYES);
  const std::string flags = section("Dipole_Flags", "1: 6 4 1 1 1\n2: 6 4 1 1 1\n");
  parse(dipoles(2) + flags + "Dipoles\n(cm)\n}\n");
  const CDipoleszq* first = set->m_dipoles[0];
  const CDipoleszq* second = set->m_dipoles[1];
  set->m_totalDipoles = 0;
  parse(movingDipoles(1));
  EXPECT_EQ(set->m_dipoles[0], first);
  EXPECT_EQ(set->m_dipoles[1], second);
  EXPECT_EQ(dipole(0).m_display, 2);       // of the flags before
  EXPECT_EQ(dipole(0).m_colorF[0], 0.0F);  // likewise
  EXPECT_EQ(labels(), Texts{"m1"});
}

TEST_F(CtfMovingDipoles, ARepeatedSectionTakesThePlacesOfTheFirst) {
  user.answer(IDYES);
  user.answer(IDYES);
  parse(movingDipoles(3) + movingDipoles(2));
  EXPECT_EQ(labels(), (Texts{"m1", "m2"}));
  EXPECT_EQ(shown(), (Texts{movingQuestion, movingQuestion}));
}

TEST_F(CtfMovingDipoles, ARepeatedSectionThatIsDeclinedLeavesTheFirst) {
  user.answer(IDYES);
  user.answer(IDNO);
  parse(movingDipoles(3) + movingDipoles(2));
  EXPECT_EQ(labels(), (Texts{"m1", "m2", "m3"}));
}

TEST_F(CtfMovingDipoles, StaticDipolesBehindThemAreAppended) {
  user.answer(IDYES);
  parse(movingDipoles(1) + dipoles(1));
  EXPECT_EQ(labels(), (Texts{"m1", "d1"}));
}

TEST_F(CtfMovingDipoles, AnotherFilesMovingDipolesAreAppended) {
  user.answer(IDYES);
  user.answer(IDYES);
  parse(movingDipoles(1));
  parse(movingDipoles(2));
  EXPECT_EQ(labels(), (Texts{"m1", "m1", "m2"}));
  EXPECT_EQ(set->m_currentDipole, 2);
}

TEST_F(CtfMovingDipoles, ASectionWithoutRowsEmptiesTheFilesSetAndStopsTheFile) {
  user.answer(IDYES);
  parse(dipoles(2) + movingDipoles(0) + section("File_Info", "PATIENT:p\n"));
  EXPECT_EQ(labels(), Texts{});
  EXPECT_EQ(toUtf8(set->m_patient), "non");
  EXPECT_EQ(set->getCurrentDipole(), nullptr);
}

TEST_F(CtfMovingDipoles, The30000thDipoleIsTheLast) {
  fill(29999);
  parseRows(movingHeader, row + row + row);
  EXPECT_EQ(set->m_totalDipoles, 30000);
  EXPECT_EQ(shownBehindTheQuestion(), Texts{noSpace});
}

TEST_F(CtfMovingDipoles, TheUnitMessagesFollowNoSpace) {
  fill(30000);
  parseRows("", row + row);
  EXPECT_EQ(shownBehindTheQuestion(), (Texts{noSpace, unitMissing, latencyUnitMissing}));
}

TEST_F(CtfMovingDipoles, TheEndOfTheFileKeepsTheDipolesWithoutAMessage) {
  user.answer(IDYES);
  EXPECT_EQ(parse("Fit_Results\n{\n" + row), 1);
  EXPECT_EQ(labels(), Texts{"m"});
  EXPECT_EQ(shownBehindTheQuestion(), Texts{});
}

TEST_F(CtfMovingDipoles, RowsOf27FieldsAsInTheFieldAreTaken) {
  std::string fields = "1:\t1\t60\t0.096\t1.0\t5.2\t5.8\t0.1\t0.2\t0.9\t25.5";
  for (int i = 0; i < 12; ++i) {
    fields += "\t0." + std::to_string(i + 1);
  }
  parseRows(movingHeader, fields + "\t95\t4.5\t4.5\t0\tN100m\n");
  ASSERT_EQ(set->m_totalDipoles, 1);
  EXPECT_EQ(dipole(0).m_moment, 25.5);
  EXPECT_EQ(dipole(0).m_fitError, double{0.1F});  // the column behind the moment, whatever it holds
  EXPECT_EQ(labels(), Texts{"0.2"});
}
