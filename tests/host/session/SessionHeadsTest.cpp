// Heads of every format, the MRI that a dipole file names, and what the user is asked: once, and no is safe.
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "host/session/Session.h"
#include "platform/Utf.h"
#include "tests/host/head/CtfFile.h"
#include "tests/host/session/SmallMri.h"
#include "tests/host/text/Failing.h"
#include "tests/support/ScriptedOperator.h"
#include "tests/support/TempFolder.h"

namespace {

using host::FindingCode;
using host::Session;
using host::Severity;
using Texts = std::vector<std::string>;

// Numbers of the MRI's slices, as those of CtfFile.
std::string dipFile(const std::string& mri, const std::string& nasion = "9 2 8") {
  return "File_Info\n{\nPATIENT:\tA\n}\nModel\n{\nMRI_FILE:\t" + mri + "\n}\n" +
         "MEG_Sphere\n{\nORIGIN_X: 0\nORIGIN_Y: 0\nORIGIN_Z: 5\nRADIUS: 8\n}\n" +
         "Fid_Points\n{\nNASION: " + nasion + "\nLEFT_EAR: 2 9 9\nRIGHT_EAR: 15 9 9\n}\n" +
         "Dipoles\n{\n// xp (cm) yp (cm) zp (cm) xo yo zo Mom(nAm) Label\n1: 1 2 3 1 0 0 12 a\n}\n";
}

CtfFile flatHead() {
  CtfFile file;
  file.nasion = {9, 6, 9};  // 30 mm before the ears
  return file;
}

class SessionHeads : public testing::Test {
 protected:
  host::Ask says(bool answer) {
    return [this, answer](const std::string& question) {
      m_asked.push_back(question);
      return answer;
    };
  }
  bool open(const std::string& name, bool answer) {
    return m_session.openMri(m_folder.path(name.c_str()), says(answer));
  }
  Session::ImportResult import(const std::string& name, bool answer) {
    return m_session.importFiles({m_folder.path(name.c_str())}, nullptr, says(answer));
  }
  Severity severityOf(FindingCode code) const {
    for (const host::StandingFinding& standing : m_session.findings()) {
      if (standing.finding.code == code) {
        return standing.finding.severity;
      }
    }
    ADD_FAILURE() << "not found: " << nameOf(code);
    return Severity::note;
  }
  bool has(FindingCode code) const {
    const auto& findings = m_session.findings();
    return std::any_of(findings.begin(), findings.end(),
                       [&](const auto& standing) { return standing.finding.code == code; });
  }
  const std::string& headName() const { return m_session.head().name; }
  bool isRegistered() const { return m_session.head().isRegistered(); }

  TempFolder m_folder;
  ScriptedOperator m_user;
  Texts m_asked;
  std::unique_ptr<CDipoleFace9File> m_set = std::make_unique<CDipoleFace9File>();
  Session m_session{*m_set};
};

TEST_F(SessionHeads, ACtfMriRegistersItselfWithoutAQuestion) {
  m_folder.write("head.mri", CtfFile().bytes());
  EXPECT_TRUE(open("head.mri", false));
  EXPECT_TRUE(isRegistered());
  EXPECT_EQ(m_asked, Texts());
  EXPECT_EQ(severityOf(FindingCode::mriPoints), Severity::note);
  EXPECT_EQ(m_session.notice(), "");
}

TEST_F(SessionHeads, UnusualPointsAreTakenOnlyWhenTheUserSaysSoAndAskedForOnceAFile) {
  m_folder.write("head.mri", flatHead().bytes());
  m_folder.write("other.mri", CtfFile().bytes());
  EXPECT_TRUE(open("head.mri", false));
  EXPECT_FALSE(isRegistered());
  ASSERT_EQ(m_asked.size(), 1U);
  EXPECT_NE(m_asked[0].find("30.0 mm, where heads have at least 40 mm"), std::string::npos) << m_asked[0];
  EXPECT_NE(m_session.notice().find("so they were not taken"), std::string::npos) << m_session.notice();
  EXPECT_FALSE(has(FindingCode::mriPoints));  // what is not used is not wrong
  EXPECT_TRUE(open("head.mri", true));
  EXPECT_FALSE(isRegistered());  // the answer is kept
  EXPECT_EQ(m_asked.size(), 1U);
  open("other.mri", true);
  EXPECT_TRUE(open("head.mri", true));
  EXPECT_EQ(m_asked.size(), 2U);
  EXPECT_TRUE(isRegistered());
  EXPECT_EQ(m_session.notice(), "");
  EXPECT_EQ(severityOf(FindingCode::mriPoints), Severity::wrong);
}

TEST_F(SessionHeads, Version21IsReadOnlyWhenTheUserSaysSo) {
  CtfFile old;
  old.version = "2.1";
  m_folder.write("head.mri", old.bytes());
  EXPECT_FALSE(open("head.mri", false));
  EXPECT_EQ(headName(), "Phantom");
  EXPECT_TRUE(m_session.recentHeads().paths().empty());
  EXPECT_TRUE(open("head.mri", true));
  EXPECT_EQ(headName(), "head.mri");
  EXPECT_TRUE(isRegistered());
  ASSERT_EQ(m_asked.size(), 2U);
  EXPECT_NE(m_asked[0].find("2.1"), std::string::npos);
  EXPECT_NE(m_asked[0].find("2.2"), std::string::npos);
}

TEST_F(SessionHeads, AnMriThatADipoleFileNamesIsOpenedWhenNoHeadIs) {
  m_folder.write("Head.MRI", CtfFile().bytes());
  m_folder.write("a.dip", dipFile("D:\\patients\\head.mri"));
  const Session::ImportResult result = import("a.dip", false);
  EXPECT_EQ(m_asked, Texts());
  EXPECT_TRUE(result.openedMri);
  EXPECT_EQ(result.notes, Texts{"The MRI head.mri was opened, which a.dip names."});
  EXPECT_EQ(CString(headName().c_str()).CompareNoCase(_T("Head.MRI")),
            0);  // a system may not tell letters apart
  EXPECT_TRUE(isRegistered());
  EXPECT_EQ(result.dipoles, 1);
  EXPECT_EQ(severityOf(FindingCode::otherHead), Severity::note);  // the points agree
  ASSERT_EQ(m_session.recentHeads().paths().size(), 1U);
}

TEST_F(SessionHeads, AnMriInAnotherFolderIsNotFollowed) {
  m_folder.makeFolder("mri");
  m_folder.write("mri/head.mri", CtfFile().bytes());
  m_folder.write("a.dip", dipFile("mri/head.mri"));
  const Session::ImportResult result = import("a.dip", true);
  EXPECT_FALSE(result.openedMri);
  EXPECT_EQ(headName(), "Phantom");
  EXPECT_EQ(result.notes, Texts{"The MRI head.mri that a.dip names is not beside it."});
}

TEST_F(SessionHeads, AnotherMriIsOpenedInsteadOnlyWhenTheUserSaysSoAndAskedForOnce) {
  m_folder.write("open.mri", CtfFile().bytes());
  m_folder.write("named.mri", CtfFile().bytes());
  m_folder.write("a.dip", dipFile("named.mri"));
  open("open.mri", false);
  EXPECT_FALSE(import("a.dip", false).openedMri);
  EXPECT_EQ(headName(), "open.mri");
  EXPECT_EQ(m_set->m_totalDipoles, 1);
  ASSERT_EQ(m_asked.size(), 1U);
  EXPECT_EQ(m_asked[0],
            "a.dip names the MRI named.mri, which lies beside it, but open.mri is open. Open named.mri "
            "instead?");
  import("a.dip", true);
  EXPECT_EQ(m_asked.size(), 1U);
  EXPECT_EQ(headName(), "open.mri");
  open("named.mri", false);
  open("open.mri", false);
  EXPECT_TRUE(import("a.dip", true).openedMri);
  EXPECT_EQ(headName(), "named.mri");
  EXPECT_EQ(m_asked.size(), 2U);
}

TEST_F(SessionHeads, AnMriThatIsNamedAndCannotBeReadIsToldAndTheDipolesCome) {
  m_folder.write("head.mri", "no head");
  m_folder.write("a.dip", dipFile("head.mri"));
  const Session::ImportResult result = import("a.dip", true);
  EXPECT_EQ(result.dipoles, 1);
  EXPECT_EQ(headName(), "Phantom");
  const auto isTold = [](const std::string& text) {
    return text.starts_with("a.dip names an MRI that cannot be opened: ");
  };
  EXPECT_TRUE(std::any_of(result.told.begin(), result.told.end(), isTold));
}

TEST_F(SessionHeads, DipolesOfAnotherHeadComeOnlyWhenTheUserSaysSoAndAskedForOnceAFile) {
  m_folder.write("head.mri", CtfFile().bytes());
  m_folder.write("a.dip", dipFile("none.mri", "9 4 8"));  // 20 mm farther back
  open("head.mri", false);
  Session::ImportResult result = import("a.dip", false);
  EXPECT_EQ(result.dipoles, 0);
  ASSERT_EQ(result.failed.size(), 1U);
  EXPECT_EQ(result.failed[0].cause, "its fiducial points are those of another head than this MRI's");
  ASSERT_EQ(m_asked.size(), 1U);
  EXPECT_NE(m_asked[0].find("20.0 mm"), std::string::npos) << m_asked[0];
  EXPECT_NE(m_asked[0].find("Up to 10 mm"), std::string::npos) << m_asked[0];
  EXPECT_EQ(import("a.dip", true).dipoles, 0);  // the answer is kept
  m_session.usePhantom();
  open("head.mri", false);
  EXPECT_EQ(import("a.dip", true).dipoles, 1);
  EXPECT_EQ(m_asked.size(), 2U);
  EXPECT_EQ(severityOf(FindingCode::otherHead), Severity::wrong);
}

TEST_F(SessionHeads, PointsThatWereSetAnewAreDoubtfulAndNotAskedFor) {
  CtfFile fine;
  fine.spacing = {10, 8, 10};
  fine.nasion = {9, 1, 8};
  m_folder.write("head.mri", fine.bytes());
  m_folder.write("a.dip", dipFile("head.mri", "9 2 8"));  // 8 mm
  EXPECT_EQ(import("a.dip", false).dipoles, 1);
  EXPECT_EQ(severityOf(FindingCode::otherHead), Severity::doubtful);
  EXPECT_EQ(m_asked, Texts());
}

TEST_F(SessionHeads, AnMriOfAnotherHeadThanTheDipolesIsNotRegisteredUnlessTheUserSaysSo) {
  m_folder.write("head.mri", CtfFile().bytes());
  m_folder.write("a.dip", dipFile("none.mri", "9 4 8"));
  import("a.dip", false);
  ASSERT_EQ(m_set->m_totalDipoles, 1);
  EXPECT_TRUE(open("head.mri", false));
  EXPECT_EQ(headName(), "head.mri");
  EXPECT_FALSE(isRegistered());
  EXPECT_NE(m_session.notice().find("another head"), std::string::npos);
  ASSERT_EQ(m_asked.size(), 1U);
  EXPECT_NE(m_asked[0].find("a.dip: "), std::string::npos) << m_asked[0];
  m_session.usePhantom();
  EXPECT_TRUE(open("head.mri", true));
  EXPECT_TRUE(isRegistered());
}

TEST_F(SessionHeads, NeuromagPositionsOfOtherPointsAreToldWhenAnotherHeadIsOpened) {
  m_folder.write("a.dip",
                 "# CoordinateSystem \"Head\"\n# begin end X/mm Y/mm Z/mm Q/nAm Qx/nAm Qy/nAm Qz/nAm g/%\n"
                 "1 1 10 20 30 5 3 4 0 90\n");
  import("a.dip", false);
  EXPECT_EQ(severityOf(FindingCode::symmetricEars), Severity::doubtful);
  m_folder.write("head.nii", mri());
  m_folder.write("head.fiducials", "nasion 5 95 -20\nleft -75 -20 -40\nright 75 -5 -40\n");
  m_folder.write("same.nii", mri());
  m_folder.write("same.fiducials", points);
  const auto carried = [&] {
    std::string text;
    for (const host::Finding& finding : m_session.shownFindings()) {
      if (finding.sentence.starts_with("The positions were carried")) {
        text += std::string(nameOf(finding.severity)) + ": " + finding.sentence;
      }
    }
    return text;
  };
  EXPECT_EQ(carried(), "");
  open("head.nii", false);
  EXPECT_EQ(carried().find("wrong: The positions were carried from the Neuromag head frame with ears taken"),
            0U)
      << carried();
  m_session.undo();
  import("a.dip", false);
  EXPECT_EQ(carried(), "");
  open("same.nii", false);
  EXPECT_EQ(carried().find("wrong: The positions were carried from the Neuromag head frame by the fiducial"),
            0U)
      << carried();
  open("head.nii", false);
  EXPECT_EQ(carried(), "");
}

TEST_F(SessionHeads, ASetCanBeImportedToo) {
  m_folder.write("a.dip", dipFile("none.mri"));
  import("a.dip", false);
  m_session.saveSet(m_folder.path("a.dipset"));
  const Session::ImportResult result = import("a.dipset", false);
  EXPECT_EQ(result.dipoles, 1);
  EXPECT_EQ(m_set->m_totalDipoles, 2);
  EXPECT_EQ(m_set->m_dipoles[1]->m_location[0], 20.0);
}

TEST_F(SessionHeads, AFileThatBringsNothingIsNamedForWhatItIs) {
  const std::string neuromag =
      "# CoordinateSystem \"Head\"\n# begin end X/mm Y/mm Z/mm Q/nAm Qx/nAm Qy/nAm Qz/nAm g/%\n"
      "1 1 10 20 30 5 3 4 0 90\n";
  m_folder.write("a.txt", neuromag);
  m_folder.write("head.dip", CtfFile().bytes());
  EXPECT_EQ(import("a.txt", false).failed.at(0).cause,
            "it is a Neuromag (Xfit, MNE) file of dipoles; give it a name that ends in .dip");
  EXPECT_EQ(import("head.dip", false).failed.at(0).cause, "it is an MRI: File, Open MRI takes it");
}

}  // namespace
