// The sections before the dipoles: File_Info, Model, MEG_Sphere and Fid_Points; and what opens a section.
#include <array>
#include <gtest/gtest.h>

#include "tests/import/CtfImportTest.h"

namespace {

class CtfFileInfo : public CtfImport {};
class CtfModel : public CtfImport {};
class CtfSphere : public CtfImport {
 protected:
  static std::string sphere(const std::string& x, const std::string& y, const std::string& z,
                            const std::string& radius) {
    return section("MEG_Sphere",
                   "ORIGIN_X: " + x + "\nORIGIN_Y: " + y + "\nORIGIN_Z: " + z + "\nRADIUS: " + radius + "\n");
  }
};
class CtfFidPoints : public CtfImport {
 protected:
  void expectPoint(int point, double x, double y, double z) const {
    double actual[3] = {-1, -1, -1};
    EXPECT_EQ(set->m_fiducialMri.m_points[point].getPosition(actual[0], actual[1], actual[2]), 1);
    expectTriple(actual, x, y, z);
  }
  int pointsSet() const { return set->m_fiducialMri.getTotalFiduciaryPts(true); }
};
class CtfSections : public CtfImport {};

}  // namespace

TEST_F(CtfFileInfo, TheVersionIsTheLineWithoutItsFirstEightCharacters) {
  parse(section("File_Info", "VERSION:\tCTF_5.0 \n"));
  EXPECT_EQ(toUtf8(set->m_fileVersion), "\tCTF_5.0 ");
}

TEST_F(CtfFileInfo, ABlankBeforeTheKeywordLeavesTheColon) {
  parse(section("File_Info", "\tVERSION:\t5.0\n\tPATIENT:\tA B\n"));
  EXPECT_EQ(toUtf8(set->m_fileVersion), ":\t5.0");
  EXPECT_EQ(toUtf8(set->m_patient), ":\tA B");
}

TEST_F(CtfFileInfo, ThePatientIsTheLineWithoutItsFirstEightCharacters) {
  parse(section("File_Info", "PATIENT:somebody\n"));
  EXPECT_EQ(toUtf8(set->m_patient), "somebody");
}

TEST_F(CtfFileInfo, BothKeywordsOnOneLineAreCutOneAfterTheOther) {
  parse(section("File_Info", "VERSION:12345678PATIENT:x\n"));
  EXPECT_EQ(toUtf8(set->m_fileVersion), "12345678PATIENT:x");
  EXPECT_EQ(toUtf8(set->m_patient), "PATIENT:x");
}

TEST_F(CtfFileInfo, AKeywordThatTheVersionCutsIsNoKeywordAnyMore) {
  parse(section("File_Info", "PATIENT:VERSION:x\n"));
  EXPECT_EQ(toUtf8(set->m_fileVersion), "VERSION:x");
  EXPECT_EQ(toUtf8(set->m_patient), "non");
}

TEST_F(CtfFileInfo, KeywordsHaveCase) {
  parse(section("File_Info", "Version:1\npatient:2\n"));
  EXPECT_EQ(toUtf8(set->m_fileVersion), "non");
  EXPECT_EQ(toUtf8(set->m_patient), "non");
}

TEST_F(CtfFileInfo, CommentsAndLinesWithABraceArePassedOver) {
  parse(section("File_Info", "// VERSION:1\nVERSION:2 {\nVERSION:3 } {\nPATIENT:p\n"));
  EXPECT_EQ(toUtf8(set->m_fileVersion), "non");
  EXPECT_EQ(toUtf8(set->m_patient), "p");
}

TEST_F(CtfFileInfo, ABraceAnywhereEndsTheSection) {
  parse("File_Info\n{\nVERSION:1 }\nPATIENT:p\n");
  EXPECT_EQ(toUtf8(set->m_fileVersion), "non");
  EXPECT_EQ(toUtf8(set->m_patient), "non");
}

TEST_F(CtfFileInfo, TheLastValueStays) {
  parse(section("File_Info", "VERSION:1\nVERSION:2\n") + section("File_Info", "PATIENT:3\n"));
  EXPECT_EQ(toUtf8(set->m_fileVersion), "2");
  EXPECT_EQ(toUtf8(set->m_patient), "3");
}

TEST_F(CtfFileInfo, TheEndOfTheFileStopsTheFileButKeepsTheValues) {
  EXPECT_EQ(parse("File_Info\n{\nVERSION:1\n"), 1);
  EXPECT_EQ(toUtf8(set->m_fileVersion), "1");
}

TEST_F(CtfModel, TheMriFileIsTheLineWithoutItsFirstNineCharacters) {
  parse(section("Model", "MRI_FILE:\thead.mri\n"));
  EXPECT_EQ(toUtf8(set->m_mriFile), "\thead.mri");
}

TEST_F(CtfModel, MegOnlyIsSetByBothWordsOnOneLine) {
  parse(section("Model", "\tMODEL_TYPE:\tMEG_ONLY\n"));
  EXPECT_EQ(set->m_megOnly, 1);
}

TEST_F(CtfModel, MegOnlyNeedsBothWordsOnOneLine) {
  parse(section("Model", "MODEL_TYPE: EEG\nMEG_ONLY\n"));
  EXPECT_EQ(set->m_megOnly, 0);
}

TEST_F(CtfModel, NothingTakesMegOnlyBack) {
  parse(section("Model", "MODEL_TYPE: MEG_ONLY\n") + section("Model", "MODEL_TYPE: EEG\n"));
  EXPECT_EQ(set->m_megOnly, 1);
}

TEST_F(CtfModel, TheEndOfTheFileStopsTheFile) {
  EXPECT_EQ(parse("Model\n{\nMRI_FILE:x\n"), 1);
  EXPECT_EQ(toUtf8(set->m_mriFile), "x");
}

TEST_F(CtfModel, CommentsArePassedOver) {
  parse(section("Model", "//MODEL_TYPE: MEG_ONLY\n//MRI_FILE:x\n"));
  EXPECT_EQ(set->m_megOnly, 0);
  EXPECT_EQ(toUtf8(set->m_mriFile), "non");
}

TEST_F(CtfSphere, CentimetresBecomeMillimetresInTheHostsAxes) {
  parse(sphere("1", "2", "3", "8"));
  expectTriple(set->m_sphereCtf.m_center, 20, 30, 10);
  EXPECT_EQ(set->m_sphereCtf.m_radius, 80);
  EXPECT_EQ(set->m_bCtfSphereSet, 1);
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfSphere, ValuesHaveSinglePrecision) {
  parse(sphere("0.1", "0.7", "-0.3", "7.77"));
  expectTriple(set->m_sphereCtf.m_center, double{0.7F * 10.0F}, double{-0.3F * 10.0F}, double{0.1F * 10.0F});
  EXPECT_EQ(set->m_sphereCtf.m_radius, double{7.77F * 10.0F});
}

TEST_F(CtfSphere, TheHeadSphereInUseIsACopy) {
  parse(sphere("1", "2", "3", "8"));
  expectTriple(set->m_sphereLocational.m_center, 20, 30, 10);
  EXPECT_EQ(set->m_sphereLocational.m_radius, 80);
}

TEST_F(CtfSphere, FewerThanFourValuesAreReportedAndTheSphereIsUsed) {
  parse(section("MEG_Sphere", "ORIGIN_X: 1\nORIGIN_Z: 3\nRADIUS: 8\n"));
  EXPECT_EQ(shown(), Texts{fewSphereValues});
  expectTriple(set->m_sphereCtf.m_center, 0, 30, 10);
  EXPECT_EQ(set->m_bCtfSphereSet, 1);
}

TEST_F(CtfSphere, TheEndOfTheFileClosesTheSection) {
  parse("MEG_Sphere\n{\nRADIUS: 8\n");
  EXPECT_EQ(shown(), Texts{fewSphereValues});
  EXPECT_EQ(set->m_sphereCtf.m_radius, 80);
  EXPECT_EQ(set->m_bCtfSphereSet, 1);
}

TEST_F(CtfSphere, AValueWithoutANumberCounts) {
  parse(sphere("", "x", "3", "8"));
  EXPECT_EQ(shown(), Texts{});
  expectTriple(set->m_sphereCtf.m_center, 0, 30, 0);
}

TEST_F(CtfSphere, ARepeatedValueCountsAgain) {
  parse(section("MEG_Sphere", "RADIUS: 1\nRADIUS: 2\nRADIUS: 3\nRADIUS: 4\n"));
  EXPECT_EQ(shown(), Texts{});
  EXPECT_EQ(set->m_sphereCtf.m_radius, 40);
}

TEST_F(CtfSphere, ARepeatedValueWithoutANumberIsScaledAgain) {
  parse(section("MEG_Sphere", "ORIGIN_X: 1\nORIGIN_Y: 1\nORIGIN_Z: 1\nRADIUS: 8\nRADIUS:\n"));
  EXPECT_EQ(set->m_sphereCtf.m_radius, 800);
}

TEST_F(CtfSphere, TheFirstKeywordInTheirOrderCounts) {
  parse(section("MEG_Sphere", "RADIUS:ORIGIN_Y:ORIGIN_X: 4\n"));
  expectTriple(set->m_sphereCtf.m_center, 0, 0, 40);
  EXPECT_EQ(set->m_sphereCtf.m_radius, 0);
}

TEST_F(CtfSphere, TheNumberIsTheSecondTokenOfTheLine) {
  parse(section("MEG_Sphere", "my RADIUS: 8\nRADIUS:9\nb 7 RADIUS:\nORIGIN_X: 1\n"));
  // "my" and then no number; a token with the number in it; "b" and 7.
  EXPECT_EQ(set->m_sphereCtf.m_radius, 70);
}

TEST_F(CtfSphere, CommentsArePassedOver) {
  parse(section("MEG_Sphere", "// RADIUS: 1\nORIGIN_X: 1\nORIGIN_Y: 2\nORIGIN_Z: 3\n"));
  EXPECT_EQ(shown(), Texts{fewSphereValues});
  EXPECT_EQ(set->m_sphereCtf.m_radius, 0);
}

TEST_F(CtfSphere, ALaterSphereIsOnlyCompared) {
  parse(sphere("1", "2", "3", "8") + sphere("1.1", "2.1", "3.1", "8.1"));
  EXPECT_EQ(shown(), Texts{});
  expectTriple(set->m_sphereCtf.m_center, 20, 30, 10);
  EXPECT_EQ(set->m_sphereCtf.m_radius, 80);
}

TEST_F(CtfSphere, AnOriginThreeMillimetresAwayIsTheSame) {
  for (const auto& [x, y, z] : {std::array{"1.3", "2", "3"}, {"1", "1.7", "3"}, {"1", "2", "3.3"}}) {
    set = std::make_unique<CtfImporter>();
    parse(sphere("1", "2", "3", "8") + sphere(x, y, z, "8"));
  }
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfSphere, AnOriginMoreThanThreeMillimetresAwayAlongAnyAxisIsReported) {
  for (const auto& [x, y, z] : {std::array{"1.301", "2", "3"}, {"1", "1.699", "3"}, {"1", "2", "3.301"}}) {
    set = std::make_unique<CtfImporter>();
    parse(sphere("1", "2", "3", "8") + sphere(x, y, z, "8"));
    expectTriple(set->m_sphereCtf.m_center, 20, 30, 10);
  }
  EXPECT_EQ(shown(), (Texts{sphereDiffers, sphereDiffers, sphereDiffers}));
}

TEST_F(CtfSphere, ARadiusFiveMillimetresLargerIsTheSame) {
  parse(sphere("1", "2", "3", "8") + sphere("1", "2", "3", "8.5"));
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfSphere, ARadiusSixMillimetresAwayIsTheSame) {
  parse(sphere("1", "2", "3", "8") + sphere("1", "2", "3", "8.6") + sphere("1", "2", "3", "7.4"));
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfSphere, ARadiusMoreThanSixMillimetresAwayIsReported) {
  parse(sphere("1", "2", "3", "8") + sphere("1", "2", "3", "8.601") + sphere("1", "2", "3", "7.399"));
  EXPECT_EQ(shown(), (Texts{sphereDiffers, sphereDiffers}));
  EXPECT_EQ(set->m_sphereCtf.m_radius, 80);
}

TEST_F(CtfSphere, AnyFlagButZeroTellsOfAnEarlierOne) {
  for (const int flag : {2, -1}) {
    set = std::make_unique<CtfImporter>();
    set->m_bCtfSphereSet = flag;
    parse(sphere("1", "2", "3", "8"));
    EXPECT_EQ(set->m_sphereCtf.m_radius, 0) << flag;
  }
  EXPECT_EQ(shown(), (Texts{sphereDiffers, sphereDiffers}));
}

TEST_F(CtfSphere, AShortLaterSphereGivesBothMessages) {
  parse(sphere("1", "2", "3", "8") + section("MEG_Sphere", "RADIUS: 8\n"));
  EXPECT_EQ(shown(), (Texts{fewSphereValues, sphereDiffers}));
}

TEST_F(CtfSphere, TheFileGoesOnBehindIt) {
  parse(oneSphere + dipoles(1));
  EXPECT_EQ(labels(), Texts{"d1"});
}

TEST_F(CtfFidPoints, VoxelsCountFromTheOtherEndWithTheAxesSwapped) {
  parse(section("Fid_Points", "NASION: 128 26 156\nLEFT_EAR: 28 150 165\nRIGHT_EAR: 228 150 165\n"));
  expectPoint(CFiducial::nasion, 128, 100, 230);
  expectPoint(CFiducial::leftEar, 228, 91, 106);
  expectPoint(CFiducial::rightEar, 28, 91, 106);
  EXPECT_EQ(pointsSet(), 3);
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfFidPoints, APointKeepsDoubles) {
  parse(section("Fid_Points", "NASION: -1 0 2147483647\n"));
  expectPoint(CFiducial::nasion, 257, 256.0 - 2147483647.0, 256);
}

TEST_F(CtfFidPoints, TheSectionResetsAllPoints) {
  set->m_fiducialMri.setRightEarf(1, 2, 3);
  set->m_fiducialMri.setAllFiducialPtShap(5);
  parse(section("Fid_Points", "NASION: 1 2 3\n"));
  EXPECT_EQ(pointsSet(), 1);
  EXPECT_EQ(set->m_fiducialMri.m_points[5].m_int1, 0);
}

TEST_F(CtfFidPoints, TheEarsNeedNoColonBehindTheirNames) {
  parse(section("Fid_Points", "LEFT_EAR x: 1 2 3\nRIGHT_EAR_: 4 5 6\n"));
  EXPECT_EQ(pointsSet(), 2);
}

TEST_F(CtfFidPoints, TheNasionNeedsItsColon) {
  parse(section("Fid_Points", "NASION x: 1 2 3\n"));
  EXPECT_EQ(pointsSet(), 0);
}

TEST_F(CtfFidPoints, LinesWithoutAColonAreIgnored) {
  parse(section("Fid_Points", "LEFT_EAR 1 2 3\n"));
  EXPECT_EQ(pointsSet(), 0);
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfFidPoints, TheNumbersStandBehindTheFirstColon) {
  parse(section("Fid_Points", "a: 1 2 3 NASION: 4 5 6\n"));
  expectPoint(CFiducial::nasion, 255, 253, 254);
}

TEST_F(CtfFidPoints, TheNasionIsLookedForFirstThenTheLeftEar) {
  parse(section("Fid_Points", ": 1 2 3 RIGHT_EAR LEFT_EAR NASION:\n: 1 2 3 RIGHT_EAR LEFT_EAR\n"));
  EXPECT_TRUE(set->m_fiducialMri.m_points[CFiducial::nasion].isSet());
  EXPECT_TRUE(set->m_fiducialMri.m_points[CFiducial::leftEar].isSet());
  EXPECT_FALSE(set->m_fiducialMri.m_points[CFiducial::rightEar].isSet());
}

TEST_F(CtfFidPoints, OtherNamesAreIgnored) {
  parse(section("Fid_Points", "INION: 1 2 3\nnasion: 1 2 3\n"));
  EXPECT_EQ(pointsSet(), 0);
}

TEST_F(CtfFidPoints, CommentsArePassedOver) {
  parse(section("Fid_Points", "// NASION: 1 2 3\n"));
  EXPECT_EQ(pointsSet(), 0);
}

TEST_F(CtfFidPoints, APointWithoutThreeIntegersIsReportedAndNotSet) {
  parse(section("Fid_Points", "NASION: 1.5 2 3\nLEFT_EAR: 1 2\nRIGHT_EAR: 1 2 3\n"));
  const std::string message = "MRI fiducial point reading error: three integers expected";
  EXPECT_EQ(shown(), (Texts{message, message}));
  EXPECT_EQ(pointsSet(), 1);
}

TEST_F(CtfFidPoints, TheEndOfTheFileKeepsThePoints) {
  EXPECT_EQ(parse("Fid_Points\n{\nNASION: 1 2 3\n"), 1);
  EXPECT_EQ(pointsSet(), 1);
}

TEST_F(CtfFidPoints, MriFidPointsIsAnotherSection) {
  parse(section("MRI_Fid_Points", "NASION: 1 2 3\n"));
  EXPECT_EQ(pointsSet(), 0);
}

TEST_F(CtfSections, NamesIgnoreCase) {
  parse(section("dipoles", unitHeader + "1: 1 2 3 1 0 0 3 a\n") +
        section("DIPOLES", unitHeader + "1: 1 2 3 1 0 0 3 b\n") + section("fILE_iNFO", "PATIENT:p\n"));
  EXPECT_EQ(labels(), (Texts{"a", "b"}));
  EXPECT_EQ(toUtf8(set->m_patient), "p");
}

TEST_F(CtfSections, BlanksAroundANameHideIt) {
  for (const std::string name : {" Dipoles", "Dipoles ", "\tDipoles", "Dipoles\t"}) {
    parse(section(name, unitHeader + "1: 1 2 3 1 0 0 3 a\n"));
  }
  EXPECT_EQ(labels(), Texts{});
}

TEST_F(CtfSections, ANameIsTheWholeLine) {
  for (const std::string name : {"Dipoles{", "Dipole", "MyDipoles", "Dipoles2", "Dipoles\xA0"}) {
    parse(section(name, unitHeader + "1: 1 2 3 1 0 0 3 a\n"));
  }
  EXPECT_EQ(labels(), Texts{});
}

TEST_F(CtfSections, UnknownSectionsAndBracesAndCommentsAreSkipped) {
  EXPECT_EQ(parse("}\n{\n// x\n" + section("Params", "ORIGIN_X: 1\n1: 1 2 3 1 0 0 3 a\n") + dipoles(1)), 1);
  EXPECT_EQ(labels(), Texts{"d1"});
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfSections, ANameInsideAnUnknownSectionOpensItAllTheSame) {
  parse("Params\n{\n" + dipoles(1) + "}\n");
  EXPECT_EQ(labels(), Texts{"d1"});
}

TEST_F(CtfSections, TheBraceBehindTheNameIsNotNeeded) {
  parse("Dipoles\n" + unitHeader + "1: 1 2 3 1 0 0 3 a\n}\n");
  EXPECT_EQ(labels(), Texts{"a"});
}

TEST_F(CtfSections, AnotherSectionsNameInsideABodyIsNoSection) {
  parse("File_Info\n{\nDipoles\n1: 1 2 3 1 0 0 3 a\nPATIENT:p\n}\n");
  EXPECT_EQ(labels(), Texts{});
  EXPECT_EQ(toUtf8(set->m_patient), "p");
}

TEST_F(CtfSections, OrderDoesNotMatter) {
  parse(section("Dipole_Flags", "1: 2 4 1 1 1\n"));
  EXPECT_EQ(shown(), Texts{fileNotCorrect});
}

TEST_F(CtfSections, AnUnclosedHeadSectionSwallowsTheRestOfTheFile) {
  for (const std::string name : {"File_Info", "Model"}) {
    EXPECT_EQ(parse(name + "\n{\nDipoles\n{\n"), 1);
  }
  EXPECT_EQ(labels(), Texts{});
}

TEST_F(CtfSections, ASectionWhoseBraceHasNoLineEndStaysOpen) {
  EXPECT_EQ(parse("Dipoles\n{\n1: 1 2 3 1 0 0 3 a\n}"), 1);
  EXPECT_EQ(labels(), Texts{"a"});
  EXPECT_EQ(shown(), Texts{});  // the message about the unit belongs to the brace
}
