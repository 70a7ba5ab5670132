// Heads and dipole files of every kind on the real windows: dropped, chosen, asked for, written.
#include <gtest/gtest.h>

#include "platform/Utf.h"
#include "tests/host/head/CtfFile.h"
#include "tests/host/session/SmallMri.h"
#include "tests/host/viewer/windows/ViewerUser.h"
#include "tests/support/ScriptedOperator.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPlaces.h"

namespace {

std::string dipFile(const std::string& mriName, const std::string& nasion = "9 2 8") {
  return "Model\n{\nMRI_FILE:\t" + mriName +
         "\n}\nMEG_Sphere\n{\nORIGIN_X: 0\nORIGIN_Y: 0\nORIGIN_Z: 5\nRADIUS: 8\n}\nFid_Points\n{\nNASION: " +
         nasion + "\nLEFT_EAR: 2 9 9\nRIGHT_EAR: 15 9 9\n}\n" +
         "Dipoles\n{\n// xp (cm) yp (cm) zp (cm) xo yo zo Mom(nAm) Label\n1: 1 2 3 1 0 0 12 a\n}\n";
}

const std::string mneFile =
    "# CoordinateSystem \"Head\"\n# begin end X/mm Y/mm Z/mm Q/nAm Qx/nAm Qy/nAm Qz/nAm g/%\n"
    "1 1 10 20 30 5 3 4 0 90\n";

class ViewerHeads : public testing::Test {
 protected:
  std::string file(const std::string& name, const std::string& bytes) {
    m_folder.write(name, bytes);
    return m_folder.pathUtf8(name.c_str());
  }
  int total() { return m_user.dipoles().m_totalDipoles; }
  std::string head() { return m_user.session().head().name; }
  bool isSaid(const std::string& words) const {
    for (const auto& message : m_operator.messages) {
      if (message.text.find(words) != std::string::npos) {
        return true;
      }
    }
    return false;
  }
  std::size_t questions() const {
    std::size_t count = 0;
    for (const auto& message : m_operator.messages) {
      count += (message.type & MB_TYPEMASK) == MB_YESNO ? 1 : 0;
    }
    return count;
  }

  TempFolder m_folder;
  ScriptedOperator m_operator;
  ViewerUser m_user;
};

TEST_F(ViewerHeads, AHeadAndDipoleFilesOfSeveralKindsAreDroppedAtOnce) {
  m_user.drop(
      {file("a.dip", dipFile("head.mri")), file("mne.dip", mneFile), file("head.mri", CtfFile().bytes())});
  EXPECT_EQ(head(), "head.mri");
  EXPECT_TRUE(m_user.session().head().isRegistered());
  EXPECT_EQ(total(), 2);
  EXPECT_EQ(questions(), 0U);
  EXPECT_FALSE(isSaid("taken as symmetric"));  // the open head carried them
  EXPECT_NE(m_user.menuText(ID_FILE_RECENT_MRI_FIRST).find("head.mri"), std::string::npos);
}

TEST_F(ViewerHeads, ADroppedHeadIsKnownByItsContent) {
  m_user.drop({file("head of tuesday", mri())});
  EXPECT_EQ(head(), "head of tuesday");
}

TEST_F(ViewerHeads, ADroppedDipoleFileBringsTheMriThatItNames) {
  file("head.mri", CtfFile().bytes());
  m_user.drop({file("a.dip", dipFile("/data/somewhere/head.mri"))});
  EXPECT_EQ(head(), "head.mri");
  EXPECT_EQ(total(), 1);
  EXPECT_TRUE(isSaid("The MRI head.mri was opened, which a.dip names."));
  EXPECT_NE(m_user.title().find("head.mri"), std::string::npos) << m_user.title();
}

TEST_F(ViewerHeads, AnotherOpenHeadIsAskedForOnceAndEnterKeepsIt) {
  const std::string open = file("open.mri", CtfFile().bytes());
  file("named.mri", CtfFile().bytes());
  m_user.drop({open});
  m_operator.answer(IDNO);
  m_user.drop({file("a.dip", dipFile("named.mri"))});
  EXPECT_EQ(head(), "open.mri");
  ASSERT_EQ(questions(), 1U);
  for (const auto& message : m_operator.messages) {
    if ((message.type & MB_TYPEMASK) == MB_YESNO) {
      EXPECT_EQ(message.type & MB_DEFMASK, static_cast<UINT>(MB_DEFBUTTON2));
    }
  }
  m_user.drop({m_folder.pathUtf8("a.dip")});
  EXPECT_EQ(questions(), 1U);
  EXPECT_EQ(total(), 2);
}

TEST_F(ViewerHeads, DipolesOfAnotherHeadAreAskedForWithBothNumbers) {
  m_user.drop({file("head.mri", CtfFile().bytes())});
  m_operator.answer(IDNO);
  m_user.drop({file("a.dip", dipFile("none.mri", "9 4 8"))});
  EXPECT_TRUE(isSaid("20.0 mm"));
  EXPECT_TRUE(isSaid("Up to 10 mm are taken for the same head."));
  EXPECT_EQ(total(), 0);
  EXPECT_TRUE(isSaid("its fiducial points are those of another head"));
}

TEST_F(ViewerHeads, UnusualPointsAndOldVersionsAreAskedFor) {
  CtfFile flat;
  flat.nasion = {9, 6, 9};  // 30 mm before the ears
  m_operator.answer(IDNO);
  m_user.drop({file("flat.mri", flat.bytes())});
  EXPECT_FALSE(m_user.session().head().isRegistered());
  EXPECT_TRUE(isSaid("30.0 mm, where heads have at least 40 mm"));
  CtfFile old;
  old.version = "2.1";
  m_operator.answer(IDNO);
  m_user.drop({file("old.mri", old.bytes())});
  EXPECT_EQ(head(), "flat.mri");
  m_operator.answer(IDYES);
  m_user.drop({m_folder.pathUtf8("old.mri")});
  EXPECT_EQ(head(), "old.mri");
  EXPECT_TRUE(m_user.session().head().isRegistered());
}

TEST_F(ViewerHeads, APairOfHeaderAndVoxelsIsOneHead) {
  NiftiFile pair;
  pair.dim = {3, 4, 4, 4, 1, 1, 1, 1};
  pair.count();
  pair.magic = std::string("ni1\0", 4);
  std::string whole = pair.version1();
  whole.replace(108, 4, 4, '\0');  // the voxels begin their own file
  m_user.drop({file("head.img", pair.voxels), file("head.hdr", whole.substr(0, 348))});
  for (const CString& path : m_user.session().recentHeads().paths()) {
    EXPECT_NE(path, m_folder.path("head.img"));
  }
  EXPECT_EQ(head(), "head.hdr");
}

// A manager's "Import CTF" that gets a file of Neuromag brings its dipoles, and says what they are.
TEST_F(ViewerHeads, TheModulesImportTakesANeuromagFileForWhatItIs) {
  m_user.choose(ID_DIPOLES_MANAGER);
  m_operator.answerFilesUtf8({file("mne.dip", mneFile), file("a.txt", mneFile)});
  ::SendMessageW(m_user.manager(), WM_COMMAND, ID_MANAGER_IMPORT_CTF, 0);
  m_user.wait();
  EXPECT_EQ(total(), 1);
  EXPECT_TRUE(
      isSaid("a.txt: it is a Neuromag (Xfit, MNE) file of dipoles; give it a name that ends in .dip"));
  EXPECT_TRUE(isSaid("1 dipoles from 1 file."));
}

TEST_F(ViewerHeads, EveryWriterWritesWhatIsReadBackAndTellsItsLosses) {
  m_user.drop({examplesFolder() + "auditory.dip"});
  for (const host::ExportKind& kind : host::exportKinds()) {
    const std::string name = "out" + std::to_string(static_cast<int>(kind.format)) + kind.ending;
    m_user.frame().exportSet(m_folder.path(name.c_str()), kind.format);
    EXPECT_GT(m_folder.read(name).size(), 100U) << name;
    const bool isRead = kind.format != host::ExportFormat::text && kind.format != host::ExportFormat::vtp &&
                        kind.format != host::ExportFormat::slicer &&
                        kind.format != host::ExportFormat::slicerArrows;
    if (isRead) {
      const int before = total();
      m_operator.answerFilesUtf8({m_folder.pathUtf8(name.c_str())});
      m_user.choose(ID_FILE_IMPORT);
      EXPECT_EQ(total(), before + 2) << name;
      m_user.choose(ID_DIPOLES_UNDO);
      EXPECT_EQ(total(), before);
    }
  }
  EXPECT_TRUE(isSaid(".vtp was written.\nWhere the head lies in the scanner is not known"));
  EXPECT_TRUE(isSaid("This file cannot hold: "));
}

TEST_F(ViewerHeads, TheDialogOffersEveryFormatAndTheNameDecidesAgainstTheFilter) {
  m_user.drop({examplesFolder() + "auditory.dip"});
  m_operator.answerFilesUtf8({m_folder.pathUtf8("a.vtp")});
  m_user.choose(ID_FILE_EXPORT);
  EXPECT_EQ(m_folder.read("a.vtp").rfind("<?xml", 0), 0U);
  const std::string filter = toUtf8(m_operator.fileQuestions.back().filter);
  for (const host::ExportKind& kind : host::exportKinds()) {
    EXPECT_NE(filter.find(std::string(kind.name) + " (*" + kind.ending + ")"), std::string::npos) << filter;
  }
  m_operator.answerFilesUtf8({m_folder.pathUtf8("a.csv")});
  m_user.choose(ID_FILE_EXPORT);
  EXPECT_EQ(m_folder.read("a.csv").rfind("number,", 0), 0U);
}

}  // namespace
