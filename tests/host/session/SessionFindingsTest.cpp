// What is found about imported files follows the dipoles through changes, undo and redo, and is repaired.
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/session/Session.h"
#include "platform/Utf.h"
#include "tests/host/session/SmallMri.h"
#include "tests/host/undo/WholeSet.h"
#include "tests/support/ScriptedOperator.h"
#include "tests/support/TempFolder.h"

namespace {

using host::DipoleValue;
using host::FindingCode;
using host::LengthUnit;
using host::Session;
using Texts = std::vector<std::string>;

// 5.2 cm to the left, without a word of the unit; latencies and errors are given.
const std::string noUnit =
    "Dipoles\n{\n// xp yp zp xo yo zo Mom(nAm) Label\n"
    "1: 1.0 5.2 5.8 0 0 1 20 left\n2: 1.3 -5.1 5.6 0 0 1 30 right\n3: 1.4 -5.0 5.5 0 0 1 30\n}\n"
    "Dipole_FitInfo\n{\n// Trial Start Latency (s)\n"
    "1: 1 1 0.1 5 5 0 0 0 1 a\n2: 1 1 0.1 5 5 0 0 0 1 a\n3: 1 1 0.1 5 5 0 0 0 1 a\n}\n";
const std::string noFit =
    "Dipoles\n{\n// xp (cm) yp (cm) zp (cm) xo yo zo Mom(nAm) Label\n1: 1.0 5.2 5.8 0 0 1 20 left\n}\n";
const std::string otherColumns =
    "Latency  x  y  z  Qx  Qy  Qz  Rad  |Q|  RMS  Vol  Corr  Iter  GOF  A  B  C  Label\n"
    "20.0 1.5 5.0 6.0 9.0 2.0 -1.0 4.5 22.0 0.3 0.5 0.97 7 0.75 b c 1 first\n";
// The second row has a point where the import wants an integer, so it does not come.
const std::string refusedRow =
    "Latency  x  y  z  Qx  Qy  Qz  Q  Rad  Corr  GOF  Vol  Grp  A  B  C  D  Label\n"
    "20.0 1.5 5.0 6.0 9.0 2.0 -1.0 22.0 4.5 0.97 0.75 0.4 1 a b c 1 first\n"
    "21.0 1.5 5.0 6.0 9.0 2.0 -1.0 22.0 4.5 0.97 0.50 0.4 1.0 a b c 1 second\n"
    "22.0 1.5 5.0 6.0 9.0 2.0 -1.0 22.0 4.5 0.97 0.50 0.4 1 a b c 1 third\n";

class SessionFindings : public testing::Test {
 protected:
  void import(const std::string& name, const std::string& text) {
    m_session.importFiles({m_folder.write(name, text)}, nullptr);
  }
  // "a.dip wrong unit 0 1 2" for each, in order.
  Texts outline() const {
    Texts lines;
    for (const host::StandingFinding& standing : m_session.findings()) {
      const host::Finding& finding = standing.finding;
      std::string line = finding.file + " " + std::string(nameOf(finding.severity)) + " " +
                         std::string(nameOf(finding.code));
      for (const int slot : finding.slots) {
        line += " " + std::to_string(slot);
      }
      lines.push_back(line + (standing.isShown ? "" : " not shown"));
    }
    return lines;
  }
  std::size_t fileOf(FindingCode code) const {
    for (const host::StandingFinding& standing : m_session.findings()) {
      if (standing.finding.code == code) {
        return standing.file;
      }
    }
    return host::StandingFinding::none;
  }
  Texts repair(FindingCode code) { return m_session.repair(fileOf(code), {{code}, {}}); }
  Texts takeAs(LengthUnit unit) { return m_session.repair(fileOf(FindingCode::unit), {{}, unit}); }
  CDipoleszq& dipole(int slot) { return *m_set->m_dipoles[slot]; }
  double left(int slot) { return dipole(slot).m_location[0]; }
  std::string label(int slot) { return toUtf8(dipole(slot).m_label); }
  std::string undoText() const { return toUtf8(m_session.history().undoText()); }

  TempFolder m_folder;
  ScriptedOperator m_user;
  std::unique_ptr<CDipoleFace9File> m_set = std::make_unique<CDipoleFace9File>();
  Session m_session{*m_set};
};

const Texts unitAndLabel = {"a.dip wrong unit 0 1 2", "a.dip wrong labels 2"};

}  // namespace

TEST_F(SessionFindings, ComeWithTheImportAndGoAndComeBackWithItsUndoAndRedo) {
  EXPECT_EQ(outline(), Texts());
  import("a.dip", noUnit);
  EXPECT_EQ(outline(), unitAndLabel);
  m_session.undo();
  EXPECT_EQ(outline(), Texts());
  m_session.redo();
  EXPECT_EQ(outline(), unitAndLabel);
}

TEST_F(SessionFindings, ARepairIsOneStepAndItsUndoBringsTheFindingBack) {
  import("a.dip", noUnit);
  const WholeSet before = wholeSet(*m_set);
  EXPECT_EQ(takeAs(LengthUnit::centimetre), Texts{"3 dipoles: the position was taken as cm."});
  EXPECT_EQ(left(0), 52);
  EXPECT_EQ(left(2), -50);
  EXPECT_EQ(outline(), Texts{"a.dip wrong labels 2"});
  EXPECT_EQ(m_session.history().undoSteps(), 2U);
  EXPECT_EQ(undoText(), "Undo Repair");
  EXPECT_EQ(repair(FindingCode::labels), Texts{"1 dipole: the label of the dipole before was taken off."});
  EXPECT_EQ(label(2), "Non");
  EXPECT_EQ(left(2), -50);  // the unit that was said still counts
  EXPECT_EQ(outline(), Texts());
  m_session.undo();
  EXPECT_EQ(outline(), Texts{"a.dip wrong labels 2"});
  m_session.undo();
  EXPECT_EQ(outline(), unitAndLabel);
  EXPECT_TRUE(isSame(wholeSet(*m_set), before));
  m_session.redo();
  m_session.redo();
  EXPECT_EQ(outline(), Texts());
  EXPECT_EQ(left(0), 52);
}

TEST_F(SessionFindings, FollowTheirDipolesAndAreRepairedWhereTheseAre) {
  import("a.dip", noUnit);
  import("b.dip", noFit);
  m_set->deleteDipole(0, 1);
  m_set->m_dipoles.swap(0, 2);  // as a sort does
  m_session.noteChange();
  EXPECT_EQ(outline(), (Texts{"a.dip wrong unit 1 2", "a.dip wrong labels 1", "b.dip note no-fit 0"}));
  EXPECT_EQ(takeAs(LengthUnit::centimetre), Texts{"3 dipoles: the position was taken as cm."});
  EXPECT_EQ(left(0), 52);  // that of the other file, as it was
  EXPECT_EQ(left(1), -50);
  EXPECT_EQ(left(2), -51);
  m_session.undo();
  m_session.undo();
  EXPECT_EQ(outline(), (Texts{"a.dip wrong unit 0 1 2", "a.dip wrong labels 2", "b.dip note no-fit 3"}));
  repair(FindingCode::labels);  // of objects that undo has made anew
  EXPECT_EQ(label(2), "Non");
  EXPECT_EQ(label(3), "left");
}

TEST_F(SessionFindings, GoWithTheLastDipoleOfTheirFile) {
  import("a.dip", noUnit);
  m_set->deleteDipole(2, 1);
  m_session.noteChange();
  EXPECT_EQ(outline(), Texts{"a.dip wrong unit 0 1"});
  m_set->cleanDipoles();
  m_session.noteChange();
  EXPECT_EQ(outline(), Texts());
}

TEST_F(SessionFindings, AnAverageOfWrongDipolesIsStillWrong) {
  import("a.dip", noUnit);
  m_set->cleanDipoles();
  m_set->addDipoleF(1, 2, 3);
  dipole(0).m_label = _T("AverageDipole3");
  m_session.noteChange();
  EXPECT_EQ(outline(), (Texts{"a.dip wrong unit", "a.dip wrong labels"}));
  EXPECT_THROW(takeAs(LengthUnit::centimetre), std::runtime_error);
}

TEST_F(SessionFindings, DipolesThatWereChangedSinceAreNotRepaired) {
  import("a.dip", noUnit);
  dipole(1).m_location[0] = 7;
  m_session.noteChange();
  const WholeSet before = wholeSet(*m_set);
  EXPECT_THROW(takeAs(LengthUnit::centimetre), std::runtime_error);
  EXPECT_TRUE(isSame(wholeSet(*m_set), before));
  EXPECT_EQ(outline(), unitAndLabel);
  EXPECT_EQ(repair(FindingCode::labels).size(), 1U);  // it changes nothing of these
  EXPECT_EQ(left(1), 7);
}

TEST_F(SessionFindings, RowsThatARepairBringsComeWhereTheyStandInTheFile) {
  import("b.dip", noFit);
  import("a.txt", refusedRow);
  ASSERT_EQ(m_set->m_totalDipoles, 3);
  EXPECT_EQ(repair(FindingCode::msiColumns), Texts{"1 dipole that the import had refused came to the set."});
  ASSERT_EQ(m_set->m_totalDipoles, 4);
  EXPECT_EQ(label(2), "second");
  EXPECT_EQ(dipole(2).m_fitError, 50);
  EXPECT_EQ(dipole(3).m_number, 4);
  EXPECT_EQ(m_set->m_currentDipole, 3);  // the same dipole as before
  EXPECT_EQ(outline(), Texts{"b.dip note no-fit 0"});
  m_session.undo();
  EXPECT_EQ(m_set->m_totalDipoles, 3);
  EXPECT_EQ(outline().size(), 2U);
}

TEST_F(SessionFindings, RowsThatARepairBringsDoNotComeBesideDipolesThatWereMoved) {
  import("a.txt", refusedRow);
  dipole(0).m_location[1] += 5;
  m_session.noteChange();
  EXPECT_THROW(repair(FindingCode::msiColumns), std::runtime_error);
  EXPECT_EQ(m_set->m_totalDipoles, 2);
}

TEST_F(SessionFindings, InASetInAnotherOrderTheyComeBehindTheOneBeforeAndNumbersStay) {
  import("a.txt", refusedRow);
  m_set->m_dipoles.swap(0, 1);
  m_session.noteChange();
  repair(FindingCode::msiColumns);
  ASSERT_EQ(m_set->m_totalDipoles, 3);
  EXPECT_EQ((Texts{label(0), label(1), label(2)}), (Texts{"third", "first", "second"}));
  EXPECT_EQ(dipole(0).m_number, 2);
  EXPECT_EQ(dipole(1).m_number, 1);
  EXPECT_EQ(dipole(2).m_number, 3);
}

TEST_F(SessionFindings, AFileThatBroughtNothingCanBeRepairedAndSaysNothingOfThePictureUntilThen) {
  std::string hidden = otherColumns;
  hidden.replace(hidden.find("  A "), 4, "  Code ");
  import("a.txt", hidden);
  EXPECT_EQ(m_set->m_totalDipoles, 0);
  EXPECT_EQ(outline(), Texts{"a.txt wrong msi-columns not shown"});
  EXPECT_TRUE(m_session.shownFindings().empty());
  repair(FindingCode::msiColumns);
  ASSERT_EQ(m_set->m_totalDipoles, 1);
  EXPECT_EQ(dipole(0).m_moment, 22);
  EXPECT_EQ(m_set->m_currentDipole, 0);
  EXPECT_EQ(outline(), Texts());
}

TEST_F(SessionFindings, ValuesThatTheFileDoesNotGiveAreUnknown) {
  import("b.dip", noFit);
  EXPECT_EQ(outline(), Texts{"b.dip note no-fit 0"});
  EXPECT_TRUE(m_session.unknown().isUnknown(dipole(0), DipoleValue::latency));
  EXPECT_TRUE(m_session.unknown().isUnknown(dipole(0), DipoleValue::fitError));
  EXPECT_FALSE(m_session.unknown().isUnknown(dipole(0), DipoleValue::moment));
}

TEST_F(SessionFindings, AnAnswerThatChangesNothingIsNoStep) {
  import("a.dip", noUnit);
  EXPECT_EQ(takeAs(LengthUnit::millimetre), Texts());
  EXPECT_EQ(outline(), Texts{"a.dip wrong labels 2"});
  EXPECT_EQ(m_session.history().undoSteps(), 1U);
  m_session.undo();
  m_session.redo();
  EXPECT_EQ(outline(), Texts{"a.dip wrong labels 2"});  // the answer stays
}

TEST_F(SessionFindings, ASetThatIsSavedAndOpenedSaysNothing) {
  import("a.dip", noUnit);
  dipole(0).m_label = _T("AverageDipole3");
  const CString path = m_folder.path("a.dipset");
  m_session.saveSet(path);
  EXPECT_EQ(outline(), unitAndLabel);
  m_session.openSet(path);
  EXPECT_EQ(m_set->m_totalDipoles, 3);
  EXPECT_EQ(outline(), Texts());
  import("b.dip", noFit);
  EXPECT_EQ(outline(), Texts{"b.dip note no-fit 3"});
  m_session.newSet();
  EXPECT_EQ(outline(), Texts());
}

TEST_F(SessionFindings, SeveralPatientsStandAsLongAsBothAreThere) {
  const auto of = [](const std::string& patient) {
    return "File_Info\n{\nPATIENT:\t" + patient + "\n}\n" + noFit;
  };
  import("a.dip", of("Anna"));
  import("b.dip", of("Bert"));
  EXPECT_EQ(outline(), (Texts{"a.dip note no-fit 0", "b.dip note no-fit 1", " doubtful several-patients"}));
  m_set->deleteDipole(1, 1);
  m_session.noteChange();
  EXPECT_EQ(outline(), Texts{"a.dip note no-fit 0"});
}

TEST_F(SessionFindings, WhatTheHeadSaysIsLookedForAnewWithEveryMriAndRegistration) {
  std::string distant = noFit;
  distant.replace(distant.find("5.2"), 3, "25");  // cm to the left
  import("b.dip", distant);
  const Texts own = {"b.dip note no-fit 0"};
  const Texts inMri = {"b.dip note no-fit 0", " doubtful outside-head 0"};
  EXPECT_EQ(outline(), own);  // the phantom is nobody's head
  m_folder.write("head.fiducials", points);
  m_session.openMri(m_folder.write("head.nii", mri()));
  EXPECT_EQ(outline(), inMri);
  const host::Fiducials used = *m_session.head().fiducials;
  m_session.unregister();
  EXPECT_EQ(outline(), own);
  m_session.registerHead(used);
  EXPECT_EQ(outline(), inMri);
  dipole(0).m_location[0] = 10;
  m_session.noteChange();
  EXPECT_EQ(outline(), own);
  m_session.undo();
  EXPECT_EQ(outline(), inMri);
  m_session.usePhantom();
  EXPECT_EQ(outline(), own);
}

TEST_F(SessionFindings, PointsOfAnotherHeadAreWrongInTheMri) {
  const std::string fiducials = "MEG_Sphere\n{\nORIGIN_X: 0\nORIGIN_Y: 0\nORIGIN_Z: 5\nRADIUS: 8\n}\n";
  const std::string own =
      "Fid_Points\n{\nNASION: 128 40 128\nLEFT_EAR: 40 128 128\nRIGHT_EAR: 60 128 128\n}\n";
  m_folder.write("head.fiducials", points);
  m_session.openMri(m_folder.write("head.nii", mri()));
  m_session.importFiles({m_folder.write("b.dip", fiducials + own + noFit)}, nullptr,
                        [](const std::string&) { return true; });
  EXPECT_EQ(outline(), (Texts{"b.dip note no-fit 0", "b.dip wrong other-head"}));
  EXPECT_EQ(m_session.shownFindings().back().sentence.rfind("For this MRI ", 0), 0U);
  m_session.usePhantom();
  EXPECT_EQ(outline(), Texts{"b.dip note no-fit 0"});
}

// Neuromag's positions take the fiducial points of the head that is open; without them the ears are a guess.
TEST_F(SessionFindings, NeuromagPositionsAreCarriedByThePointsOfTheHead) {
  const std::string text =
      "# CoordinateSystem \"Head\"\n# begin end X/mm Y/mm Z/mm Q/nAm Qx/nAm Qy/nAm Qz/nAm g/%\n"
      "1 1 10 20 30 5 3 4 0 90\n";
  const auto hasGuess = [&] {
    const auto findings = m_session.findings();
    return std::any_of(findings.begin(), findings.end(), [](const host::StandingFinding& standing) {
      return standing.finding.code == host::FindingCode::symmetricEars;
    });
  };
  import("a.dip", text);
  ASSERT_EQ(m_set->m_totalDipoles, 1);
  EXPECT_EQ(m_set->m_dipoles[0]->m_location[0], -10.0);
  EXPECT_TRUE(hasGuess());
  m_session.undo();
  m_folder.write("head.nii", mri());
  m_folder.write("head.fiducials", "nasion 5 95 -20\nleft -75 -20 -40\nright 75 -5 -40\n");
  m_session.openMri(m_folder.path("head.nii"));
  import("a.dip", text);
  ASSERT_EQ(m_set->m_totalDipoles, 1);
  EXPECT_GT(std::abs(m_set->m_dipoles[0]->m_location[0] + 10.0), 1.0);
  EXPECT_FALSE(hasGuess());
}
