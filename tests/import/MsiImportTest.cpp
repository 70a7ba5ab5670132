// The 4D/MSI import: the driver, the zones of a file, the rows of its table.
#include <gtest/gtest.h>

#include "import/DipoleFace8Import02_4DMSI.h"
#include "tests/import/CtfImportTest.h"
#include "tests/record/DipoleMembers.h"
#include "tests/support/CurrentFolder.h"
#include "tests/support/FailingNew.h"
#include "tests/support/FailingOs.h"

namespace {

class MsiImporter : public CDipoleFace8Import02_4DMSI {
 public:
  using CDipoleFace8Import02_4DMSI::import4DMSIDipolesX;

  int listUpdates = 0;

 protected:
  int updateDipoleList() override { return ++listUpdates; }
};

class MsiImport : public testing::Test {
 protected:
  int import(const std::string& bytes) { return importPath(folder.write("table.txt", bytes)); }
  int importPath(CString path, bool offerFolder = false) {
    return set->import4DMSIDipolesX(path, offerFolder);
  }

  const CDipoleszq& dipole(int slot) const { return *set->m_dipoles[slot]; }
  Texts shown() const { return user.texts(); }
  Texts labels() const {
    Texts all;
    for (int slot = 0; slot < set->m_totalDipoles; ++slot) {
      all.push_back(toUtf8(dipole(slot).m_label));
    }
    return all;
  }

  ScriptedOperator user;
  TempFolder folder;
  std::unique_ptr<MsiImporter> set = std::make_unique<MsiImporter>();

 private:
  KeptCurrentFolder m_currentFolder;
};

// A row of 17 columns, at these places in cm, and its label.
std::string row(const std::string& label, const std::string& place = "1 2 3") {
  return "12.5 " + place + " 0.5 0.25 -1 20.5 1.5 9 0.75 2.5 7 a b c 8 " + label + "\n";
}

std::string question(const std::string& values) {
  return "It seems the dipole location is wrong (" + values + "), do you like to import?";
}

const std::string table = "Latency (ms)\n";

}  // namespace

TEST_F(MsiImport, EveryColumnGoesToItsMember) {
  ASSERT_EQ(import(table + "12.3 1.1 2.2 -3.3 0.5 0.3 -1 20.5 1.5 9 0.85 2.5 7 a b c 8 spike\n"), 1);
  ASSERT_EQ(set->m_totalDipoles, 1);
  CDipoleszq expected;
  expected.m_number = 1;
  expected.m_latency = 12.3F;
  expected.m_location[0] = 2.2F * 10.0F;
  expected.m_location[1] = -3.3F * 10.0F;
  expected.m_location[2] = 1.1F * 10.0F;
  expected.m_orientation[0] = 0.3F / 10.0F;
  expected.m_orientation[1] = -1.0F / 10.0F;
  expected.m_orientation[2] = 0.5F / 10.0F;
  expected.m_moment = 20.5;
  expected.m_importTag1 = 1.5F;
  expected.m_fitError = 100.0F - 0.85F * 100.0F;
  expected.m_importTag2 = 2.5F;
  expected.m_label = _T("spike");
  expected.backUpLocationRotationRaw();
  EXPECT_EQ(membersOf(dipole(0)), membersOf(expected));
  EXPECT_EQ(set->m_currentDipole, 0);
  EXPECT_EQ(set->m_coordinateType, 3);
  EXPECT_EQ(set->m_momentInNAm, 1);
  EXPECT_EQ(shown(), Texts{totalMessage(0, 1)});
}

// Multiplied by 0.1 instead, each would round to the next float.
TEST_F(MsiImport, OrientationsAreDividedByTenInSinglePrecision) {
  import(table + "0 1 2 3 0.2 0.4 -0.8 0 0 0 0 0 0 a b c 0 x\n");
  ASSERT_EQ(set->m_totalDipoles, 1);
  expectTriple(dipole(0).m_orientation, 0x1.47ae14p-5, -0x1.47ae14p-4, 0x1.47ae14p-6);  // 0.04, -0.08, 0.02
}

TEST_F(MsiImport, SeventeenColumnsAreARowAndSixteenAreNone) {
  import(table + row("") + "1 2 3 4 5 6 7 8 9 10 11 12 13 a b c\n" + row("labelled"));
  EXPECT_EQ(labels(), (Texts{"Non", "labelled"}));
  EXPECT_EQ(dipole(1).m_number, 2);
}

TEST_F(MsiImport, ARowWithoutItsLabelDoesNotInheritTheOneBefore) {
  import(table + row("first") + row(""));
  EXPECT_EQ(labels(), (Texts{"first", "Non"}));
}

TEST_F(MsiImport, LinesThatAreNoRowsAreSkipped) {
  import(table + "\n \n  \nms cm cm cm\n" + row("a") + "x " + row("no") + row("b extra words"));
  EXPECT_EQ(labels(), (Texts{"a", "b"}));
}

TEST_F(MsiImport, ALastLineWithoutItsEndIsDropped) {
  import(table + row("a") + "1 1 2 3 1 0 0 3 1 1 1 1 1 a b c 1 lost");
  EXPECT_EQ(labels(), Texts{"a"});
}

TEST_F(MsiImport, TheTableRunsToTheEndWhateverItsLinesSay) {
  import(table + row("a") + "Disk Media: x\nMRI/CT Patient: nobody\nDate of File:\nLatency\n" +
         row("Circle"));
  EXPECT_EQ(labels(), (Texts{"a", "Circle"}));
  EXPECT_EQ(toUtf8(set->m_patient), "non");
}

TEST_F(MsiImport, RowsInFrontOfTheTableAreSkipped) {
  import(row("early") + table + row("a"));
  EXPECT_EQ(labels(), Texts{"a"});
}

TEST_F(MsiImport, LegendLinesDoNotStartTheTable) {
  for (const char* word : {"Code", "Circle", "Square", "Triangle", "Dot", "Shape"}) {
    set->cleanDipoles();
    import(std::string(word) + " Latency\n" + row("no") + "xx" + word + " Disk Media:\nDipole File:no\n");
    EXPECT_EQ(set->m_totalDipoles, 0) << word;
    EXPECT_EQ(toUtf8(set->m_fileVersion), "non") << word;
  }
  import("code circle SQUARE dots shape Latency\n" + row("a"));
  EXPECT_EQ(labels(), Texts{"a"});
}

TEST_F(MsiImport, TheWordsAreLookedForWithTheirCase) {
  import("latency\nLATENCY\ndisk media:\nMRI/CT Patient: x\n" + row("a"));
  EXPECT_EQ(set->m_totalDipoles, 0);
  EXPECT_EQ(toUtf8(set->m_patient), "non");
}

TEST_F(MsiImport, FileInformationKeepsTheBlankBehindItsKey) {
  import("Disk Media: disk\nMRI/CT Patient: Some One \nDipole File:run 1\nDate of File: today\n" + table +
         row("a"));
  EXPECT_EQ(toUtf8(set->m_patient), " Some One ");
  EXPECT_EQ(toUtf8(set->m_fileVersion), "run 1");
  EXPECT_EQ(labels(), Texts{"a"});
}

TEST_F(MsiImport, LinesOfEitherKeyKeepTheBlockOpen) {
  import("Disk Media:\nDipole File:run 1\nMRI/CT Patient:P\nDipole File:run 2\nMRI/CT Patient:Q\n");
  EXPECT_EQ(toUtf8(set->m_patient), "Q");
  EXPECT_EQ(toUtf8(set->m_fileVersion), "run 2");
}

TEST_F(MsiImport, AKeysLengthIsTakenFromTheStartOfItsLine) {
  import("Disk Media:\n  MRI/CT Patient:X\n\tDipole File:Y\n");
  EXPECT_EQ(toUtf8(set->m_patient), "t:X");
  EXPECT_EQ(toUtf8(set->m_fileVersion), ":Y");
}

TEST_F(MsiImport, ALineWithBothKeysGivesThePatientFirstAndTheFileFromWhatIsLeft) {
  import("Disk Media:\nMRI/CT Patient:Some One Dipole File:run 1\n");
  EXPECT_EQ(toUtf8(set->m_patient), "Some One Dipole File:run 1");
  EXPECT_EQ(toUtf8(set->m_fileVersion), "ole File:run 1");
  import("Disk Media:\nDipole File:run 2 MRI/CT Patient:Other\n");  // the second key is cut with the first
  EXPECT_EQ(toUtf8(set->m_patient), " 2 MRI/CT Patient:Other");
  EXPECT_EQ(toUtf8(set->m_fileVersion), "ole File:run 1");
}

TEST_F(MsiImport, InformationOutsideItsBlockIsNotRead) {
  import("MRI/CT Patient: early\nDisk Media:\nnothing\nDipole File: late\n");
  EXPECT_EQ(toUtf8(set->m_patient), "non");
  EXPECT_EQ(toUtf8(set->m_fileVersion), "non");
}

TEST_F(MsiImport, TheLineThatEndsTheBlockIsUsedUp) {
  import("Disk Media:\nLatency\n" + row("no") + "Disk Media:\nDate of File: Latency\n" + row("no") + table +
         row("a"));
  EXPECT_EQ(labels(), Texts{"a"});
}

TEST_F(MsiImport, TheDateEndsTheBlockWhateverElseItsLineHolds) {
  import("Disk Media:\nDate of File:Dipole File:no\nMRI/CT Patient:no\n");
  EXPECT_EQ(toUtf8(set->m_fileVersion), "non");
  EXPECT_EQ(toUtf8(set->m_patient), "non");
}

TEST_F(MsiImport, ABlockAtTheEndOfTheFileEndsIt) {
  EXPECT_EQ(import("Disk Media:\nMRI/CT Patient:P\n"), 1);
  EXPECT_EQ(toUtf8(set->m_patient), "P");
  EXPECT_EQ(shown(), Texts{totalMessage(0, 0)});
}

TEST_F(MsiImport, AFileWithoutATableShowsItsTotalOfNone) {
  set->addDipole();
  EXPECT_EQ(import("nothing\n"), 1);
  EXPECT_EQ(shown(), Texts{"Total imported dipoles:0 (1-1)\n"});
  EXPECT_EQ(set->m_importFirst, 1);
  EXPECT_EQ(set->m_importEnd, 1);
  EXPECT_EQ(set->m_coordinateType, 0);
  EXPECT_EQ(set->listUpdates, 1);
}

TEST_F(MsiImport, TheHeadSphereIsAlwaysTheFixedOne) {
  set->m_bCtfSphereSet = 7;
  set->m_sphereLocational.m_center[1] = set->m_sphereCtf.m_center[1] = 5.0;
  set->m_sphereLocational.m_radius = set->m_sphereCtf.m_radius = 88.0;
  import("");
  expectTriple(set->m_sphereLocational.m_center, 0, 0, 0);
  expectTriple(set->m_sphereCtf.m_center, 0, 5, 0);
  EXPECT_EQ(set->m_sphereLocational.m_radius, 70.0);
  EXPECT_EQ(set->m_sphereCtf.m_radius, 70.0);
  EXPECT_EQ(set->m_bCtfSphereSet, 7);
  EXPECT_EQ(set->m_fiducialCtf.getTotalFiduciaryPts(true), 0);
}

TEST_F(MsiImport, AFarLocationIsQuestionedInItsOwnUnit) {
  user.answer(IDYES);
  user.answer(IDNO);
  import(table + row("far", "301 2 3") + row("refused", "1 2 300.5") + row("near", "300 300 -999"));
  EXPECT_EQ(shown(), (Texts{question("301.000 x 2.000 x 3.000"), question("1.000 x 2.000 x 300.500"),
                            totalMessage(0, 2)}));
  EXPECT_EQ(user.messages[0].type, UINT{MB_YESNO});
  EXPECT_EQ(labels(), (Texts{"far", "near"}));
  expectTriple(dipole(0).m_location, 20, 30, 3010);
  EXPECT_EQ(dipole(1).m_number, 2);
}

TEST_F(MsiImport, NumbersThatAreNoneAreImportedUnquestioned) {
  import(table + row("a", "nan -inf 3"));
  ASSERT_EQ(set->m_totalDipoles, 1);
  EXPECT_NE(dipole(0).m_location[2], dipole(0).m_location[2]);
}

TEST_F(MsiImport, AFullCollectionEndsTheTableBeforeAnyQuestion) {
  while (set->m_totalDipoles < 29999) {
    set->addDipole();
  }
  import(table + row("last") + row("far", "301 2 3") + row("more") + table + row("more"));
  EXPECT_EQ(shown(), (Texts{"No dipole space", totalMessage(29999, 30000)}));
  EXPECT_EQ(toUtf8(dipole(29999).m_label), "last");
}

TEST_F(MsiImport, NewDipolesFollowThePresentOnesAndAreBackedUpAlone) {
  set->addDipole();
  import(table + row("a"));
  EXPECT_EQ(dipole(0).m_rawLocation.m_radius, 0.0);
  EXPECT_EQ(dipole(1).m_rawLocation.m_radius, 1.0);
  EXPECT_EQ(dipole(1).m_rawOrientation.m_radius, 1.0);
  EXPECT_EQ(set->m_currentDipole, 1);
  EXPECT_EQ(shown(), Texts{totalMessage(1, 2)});
}

TEST_F(MsiImport, LabelsAreWidenedFromTheCodePage) {
  import(table + row("\xE4\x80"));
  EXPECT_EQ(labels(), Texts{"ä€"});
}

TEST_F(MsiImport, TheFoldersFileBecomesTheCurrentDirectory) {
  folder.makeFolder("deep");
  folder.write("deep/other.txt", table + row("other"));
  ASSERT_EQ(importPath(folder.write("deep/a.txt", table + row("a"))), 1);
  ASSERT_EQ(importPath(_T("other.txt")), 1);  // found from there
  EXPECT_EQ(labels(), (Texts{"a", "other"}));
  const CString current = currentFolder();
  EXPECT_EQ(toUtf8(current.Mid(current.GetLength() - 4)), "deep");
}

TEST_F(MsiImport, APathThatIsNotThereGivesZeroAndChangesNothing) {
  set->m_sphereCtf.m_radius = 80.0;
  const CString path = folder.path("gone.txt");
  EXPECT_EQ(importPath(path, true), 0);
  EXPECT_EQ(shown(), Texts{"Find file:" + toUtf8(path) + " error \n"});
  EXPECT_EQ(set->m_sphereCtf.m_radius, 80.0);
  EXPECT_EQ(set->listUpdates, 0);
}

TEST_F(MsiImport, TheWholeFolderIsOfferedAndRead) {
  folder.write("b.TXT", table + row("b"));
  folder.write("c.dip", table + row("c"));
  const CString path = folder.write("a.txt", table + row("a"));
  user.answer(IDYES);
  EXPECT_EQ(importPath(path, true), 1);
  Texts expected = titlesFound(folder, _T(".txt"));
  EXPECT_EQ(expected.size(), 2U);
  EXPECT_EQ(labels(), expected);
  user.answer(IDNO);
  importPath(path, true);
  expected.emplace_back("a");
  EXPECT_EQ(labels(), expected);
  EXPECT_EQ(user.messages[0], (ScriptedOperator::Message{folderQuestion, MB_YESNO}));
  EXPECT_EQ(shown(), (Texts{folderQuestion, totalMessage(0, 2), folderQuestion, totalMessage(2, 3)}));
}

TEST_F(MsiImport, AFileThatCannotBeOpenedEndsTheImportAfterTwoMessages) {
  const CString path = folder.write("a.txt", table + row("a"));
  folder.write("b.txt", table + row("b"));
  user.answer(IDYES);
  set->m_sphereCtf.m_radius = 80.0;
  {
    const FailingOs os(FailingOs::Call::open, 1, CFileException::sharingViolation);
    EXPECT_EQ(importPath(path, true), 1);
  }
  ASSERT_EQ(user.messages.size(), 3U);
  const CString first = folder.path(titlesFound(folder, _T(".txt")).front() + ".txt");
  EXPECT_EQ(user.messages[1].text, openFailure(first, CFileException::sharingViolation));
  EXPECT_NE(user.messages[2].text, "");
  EXPECT_EQ(set->m_totalDipoles, 0);
  EXPECT_EQ(set->m_sphereCtf.m_radius, 80.0);
  EXPECT_EQ(set->listUpdates, 0);
}

TEST_F(MsiImport, AReadFaultEndsTheImportAndWhatWasReadStays) {
  std::string rows = table;
  for (int i = 0; i < 2000; ++i) {
    rows += row("a");
  }
  ASSERT_GT(rows.size(), 65536U);
  const CString path = folder.write("a.txt", rows);
  {
    const FailingOs os(FailingOs::Call::read, 2, CFileException::hardIO);
    EXPECT_EQ(importPath(path), 1);
  }
  EXPECT_EQ(user.messages.size(), 1U);
  EXPECT_GT(set->m_totalDipoles, 0);
  EXPECT_LT(set->m_totalDipoles, 2000);
  EXPECT_EQ(dipole(0).m_rawLocation.m_radius, 0.0);
  EXPECT_EQ(set->listUpdates, 0);
}

// Memory that gives out anywhere ends the whole import without a message and without its last steps.
TEST_F(MsiImport, MemoryThatGivesOutAnywhereEndsTheWholeImportSilently) {
  folder.write("b.txt", table + row("b"));
  const CString path =
      folder.write("a.txt", table + row("a") + row("a label that is too long to be stored inside"));
  int cutShort = 0;
  for (int nth = 1; nth < 2000; ++nth) {
    user.messages.clear();
    set = std::make_unique<MsiImporter>();
    CString argument = path;
    bool failed = false;
    {
      const FailingNew failing(nth);
      user.answer(IDYES);
      EXPECT_EQ(set->import4DMSIDipolesX(argument, true), 1);
      failed = failing.failed();
    }
    for (int slot = 0; slot < set->m_totalDipoles; ++slot) {
      ASSERT_NE(set->m_dipoles[slot], nullptr);
    }
    if (!failed) {
      EXPECT_EQ(set->m_totalDipoles, 3);
      EXPECT_EQ(set->m_sphereCtf.m_radius, 70.0);
      EXPECT_GE(cutShort, 1);
      return;
    }
    EXPECT_LE(user.messages.size(), 1U) << nth;  // the question for the folder
    EXPECT_EQ(set->listUpdates, 0);
    if (set->m_totalDipoles == 1) {
      EXPECT_NE(set->m_sphereCtf.m_radius, 70.0);
      EXPECT_EQ(dipole(0).m_rawLocation.m_radius, 0.0);
      ++cutShort;
    }
  }
  FAIL() << "the import never ended";
}
