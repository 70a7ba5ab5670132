// The two ways to start an import: by the file dialog and by a path.
#include <afxdlgs.h>

#include <gtest/gtest.h>
#include <memory>

#include "platform/Os.h"
#include "tests/import/CtfImportTest.h"
#include "tests/support/FailingOs.h"

namespace {

class CtfDialog : public CtfImport {};

class CtfPath : public CtfImport {
 protected:
  int importPath(CString path, bool offerFolder = false) { return set->importCTFDipolesX(path, offerFolder); }
  void SetUp() override {
    CtfImport::SetUp();
    set->m_skipFiducialSetup = true;
  }
};

// A file that is there when it is looked up and gone when it is opened.
class VanishingOs : public FailingOs {
 public:
  VanishingOs() : FailingOs(Call::open, 1, CFileException::fileNotFound) {}
};

std::string labelled(const std::string& label) {
  return section("Dipoles", unitHeader + "1: 1 2 3 1 0 0 3 " + label + "\n");
}

}  // namespace

TEST_F(CtfDialog, AsksForFilesToOpenWithTheCtfFilter) {
  user.cancelFiles();
  set->importCTFDipoles();
  ASSERT_EQ(user.fileQuestions.size(), 1U);
  const FileQuestion& question = user.fileQuestions[0];
  EXPECT_TRUE(question.open);
  EXPECT_EQ(toUtf8(question.filter), "CTF Dipole Files(*.DIP)|*.DIP|All Files(*.*)|*.*||");
  EXPECT_EQ(question.filterIndex, 1U);
  EXPECT_TRUE(question.name.IsEmpty());
  EXPECT_TRUE(question.extension.IsEmpty());
}

TEST_F(CtfDialog, ManyFilesMayBeChosenAndNothingElseIsAskedFor) {
  user.cancelFiles();
  set->importCTFDipoles();
  // The style flag of the dialog itself, and no other.
  EXPECT_EQ(user.fileQuestions[0].flags & ~DWORD{OFN_EXPLORER}, DWORD{OFN_ALLOWMULTISELECT});
  EXPECT_TRUE(user.fileQuestions[0].multiple);
}

TEST_F(CtfDialog, CancelledGivesZeroAndDoesNothing) {
  user.cancelFiles();
  set->m_importFirst = 7;
  EXPECT_EQ(set->importCTFDipoles(), 0);
  EXPECT_EQ(shown(), Texts{});
  EXPECT_EQ(set->listUpdates, 0);
  EXPECT_EQ(set->m_importFirst, 7);
}

TEST_F(CtfDialog, ChosenFilesAreImportedInTheOrderChosen) {
  user.answerFiles({folder.write("b.dip", labelled("b")), folder.write("c.dip", labelled("c")),
                    folder.write("a.dip", labelled("a"))});
  EXPECT_EQ(set->importCTFDipoles(), 1);
  EXPECT_EQ(labels(), (Texts{"b", "c", "a"}));
}

TEST_F(CtfDialog, FilesOfSeveralFoldersAreImported) {
  folder.makeFolder("one");
  folder.makeFolder("two");
  user.answerFiles({folder.write("one/a.dip", labelled("a")), folder.write("two/b.dip", labelled("b"))});
  EXPECT_EQ(set->importCTFDipoles(), 1);
  EXPECT_EQ(labels(), (Texts{"a", "b"}));
}

TEST_F(CtfDialog, ThousandsOfFilesAreImported) {
  std::vector<CString> paths;
  for (int i = 0; i < 3000; ++i) {
    paths.push_back(folder.write("a quite long name of a file to choose " + std::to_string(i) + ".dip", ""));
  }
  paths.push_back(folder.write("last.dip", labelled("last")));
  user.answerFiles(paths);
  EXPECT_EQ(set->importCTFDipoles(), 1);
  EXPECT_EQ(labels(), Texts{"last"});
}

TEST_F(CtfDialog, AChoiceThatDoesNotFitIsReportedAndGivesZero) {
  const std::vector<CString> paths(static_cast<std::size_t>(DipoleTable::capacity) + 1,
                                   CString(_T('x'), MAX_PATH));
  user.answerFiles(paths);
  EXPECT_EQ(set->importCTFDipoles(), 0);
  EXPECT_EQ(shown(), Texts{"The files could not be taken over, please choose fewer!"});
}

TEST_F(CtfDialog, AnOkWithoutAFileIsReportedAndGivesZero) {
  user.answerFiles({CString()});
  EXPECT_EQ(set->importCTFDipoles(), 0);
  EXPECT_EQ(shown(), Texts{"The files could not be taken over, please choose fewer!"});
}

TEST_F(CtfDialog, TheRangeAndTheTotalNameTheNewDipoles) {
  set->addDipole();
  set->addDipole();
  set->m_skipFiducialSetup = true;
  EXPECT_EQ(import(dipoles(3)), 1);
  EXPECT_EQ(set->m_importFirst, 2);
  EXPECT_EQ(set->m_importEnd, 5);
  EXPECT_EQ(user.messages,
            (std::vector<ScriptedOperator::Message>{{"Total imported dipoles:3 (2-5)\n", MB_OK}}));
}

TEST_F(CtfDialog, TheNewDipolesAreBackedUpAndNoOthers) {
  set->addDipole();
  import(oneSphere + dipoles(2));
  EXPECT_EQ(dipole(0).m_rawLocation.m_radius, 0.0);
  for (int slot = 1; slot <= 2; ++slot) {
    EXPECT_EQ(dipole(slot).m_rawLocation.m_radius, 1.0);
    EXPECT_EQ(dipole(slot).m_rawOrientation.m_radius, 1.0);
    expectTriple(dipole(slot).m_rawLocation.m_center, 5, 2.5, 10 * slot);
    expectTriple(dipole(slot).m_rawOrientation.m_center, 0, 0, 1);
  }
}

TEST_F(CtfDialog, TheListIsUpdatedOnceBehindTheTotal) {
  user.answerFiles({folder.write("a.dip", labelled("a")), folder.write("b.dip", labelled("b"))});
  set->importCTFDipoles();
  EXPECT_EQ(set->listUpdates, 1);
  EXPECT_EQ(set->messagesAtUpdate, user.messages.size());
}

TEST_F(CtfDialog, TheListUpdateOfThisLayerDoesNothingAndGivesOne) {
  class Bare : public CDipoleFace8Import01_CTF {
   public:
    using CDipoleFace8Import01_CTF::updateDipoleList;
  };
  EXPECT_EQ(std::make_unique<Bare>()->updateDipoleList(), 1);
  EXPECT_EQ(shown(), Texts{});
}

TEST_F(CtfDialog, AFileThatIsGoneIsReportedAndTheOthersGoOn) {
  const CString gone = folder.path("gone.dip");
  user.answerFiles({folder.write("a.dip", labelled("a")), gone, folder.write("b.dip", labelled("b"))});
  set->m_skipFiducialSetup = true;
  EXPECT_EQ(set->importCTFDipoles(), 1);
  EXPECT_EQ(labels(), (Texts{"a", "b"}));
  EXPECT_EQ(shown(), (Texts{openFailure(gone, CFileException::fileNotFound), totalMessage(0, 2)}));
}

TEST_F(CtfDialog, AFolderIsReportedAsAFileThatCannotBeOpened) {
  const CString path = folder.makeFolder("folder.dip");
  user.answerFiles({path});
  set->m_skipFiducialSetup = true;
  EXPECT_EQ(set->importCTFDipoles(), 1);
  EXPECT_EQ(shown(), (Texts{openFailure(path, causeToOpen(path)), totalMessage(0, 0)}));
}

TEST_F(CtfDialog, AFileThatCannotBeReadIsReportedWithItsCause) {
  const CString path = folder.write("a.dip", labelled("a"));
  user.answerFiles({path});
  set->m_skipFiducialSetup = true;
  FailingOs os(FailingOs::Call::open, 1, CFileException::sharingViolation);
  EXPECT_EQ(set->importCTFDipoles(), 1);
  EXPECT_EQ(shown(), (Texts{openFailure(path, CFileException::sharingViolation), totalMessage(0, 0)}));
}

TEST_F(CtfDialog, TheSphereOfTheFirstFileStaysForTheOthers) {
  user.answerFiles(
      {folder.write("a.dip", oneSphere),
       folder.write("b.dip", section("MEG_Sphere", "ORIGIN_X: 1\nORIGIN_Y: 2\nORIGIN_Z: 3.5\nRADIUS: 7\n"))});
  set->importCTFDipoles();
  EXPECT_EQ(shown(), (Texts{sphereDiffers, totalMessage(0, 0)}));
  EXPECT_EQ(set->m_sphereCtf.m_radius, 80);
}

TEST_F(CtfDialog, TheLimitHoldsAcrossFiles) {
  while (set->m_totalDipoles < 29998) {
    set->addDipole();
  }
  set->m_skipFiducialSetup = true;
  user.answerFiles({folder.write("a.dip", dipoles(1)), folder.write("b.dip", dipoles(2)),
                    folder.write("c.dip", dipoles(1))});
  set->importCTFDipoles();
  EXPECT_EQ(shown(), (Texts{noSpace, noSpace, totalMessage(29998, 30000)}));
}

TEST_F(CtfDialog, MovingDipolesOfASecondFileLeaveTheFirstFilesDipoles) {
  set->m_skipFiducialSetup = true;
  user.answerFiles({folder.write("a.dip", dipoles(2)), folder.write("b.dip", dipoles(3) + movingDipoles(1))});
  user.answer(IDYES);
  set->importCTFDipoles();
  EXPECT_EQ(labels(), (Texts{"d1", "d2", "m1"}));
  EXPECT_EQ(shown(), (Texts{movingQuestion, totalMessage(0, 3)}));
}

TEST_F(CtfPath, APathThatIsNotThereIsReportedAndGivesZero) {
  const CString path = folder.path("gone.dip");
  const CString before = currentFolder();
  EXPECT_EQ(importPath(path), 0);
  EXPECT_EQ(shown(), Texts{"Find file:" + toUtf8(path) + " error \n"});
  EXPECT_EQ(set->listUpdates, 0);
  EXPECT_TRUE(currentFolder() == before);
}

TEST_F(CtfPath, TheFileIsImported) {
  EXPECT_EQ(importPath(folder.write("a.dip", labelled("a"))), 1);
  EXPECT_EQ(labels(), Texts{"a"});
  EXPECT_EQ(shown(), Texts{totalMessage(0, 1)});
  EXPECT_EQ(set->listUpdates, 1);
  EXPECT_EQ(dipole(0).m_rawLocation.m_radius, 1.0);
}

TEST_F(CtfPath, ItsFolderBecomesTheCurrentDirectory) {
  importPath(folder.write("a.dip", ""));
  CString current = currentFolder();
  SetCurrentDirectory(folder.path());
  EXPECT_TRUE(current == currentFolder()) << toUtf8(current);
}

TEST_F(CtfPath, ARelativePathIsImportedAlthoughTheDirectoryChanges) {
  folder.makeFolder("inner");
  folder.write("inner/a.dip", labelled("a"));
  SetCurrentDirectory(folder.path());
  EXPECT_EQ(importPath(CString(_T("inner")) + CString(pathSeparator) + CString(_T("a.dip"))), 1);
  EXPECT_EQ(labels(), Texts{"a"});
}

TEST_F(CtfPath, TheFiducialsAreSetUnlessSkipped) {
  set->m_skipFiducialSetup = false;
  importPath(folder.write("a.dip", oneSphere));
  EXPECT_EQ(set->m_fiducialCtf.getTotalFiduciaryPts(true), 3);
}

TEST_F(CtfPath, TheFolderIsNotOfferedUnlessAskedFor) {
  folder.write("b.dip", labelled("b"));
  importPath(folder.write("a.dip", labelled("a")), false);
  EXPECT_EQ(labels(), Texts{"a"});
}

TEST_F(CtfPath, TheFolderIsOfferedByYesOrNo) {
  user.answer(IDNO);
  importPath(folder.write("a.dip", ""), true);
  EXPECT_EQ(user.messages.front(), (ScriptedOperator::Message{folderQuestion, MB_YESNO}));
}

TEST_F(CtfPath, NoImportsTheFileAlone) {
  folder.write("b.dip", labelled("b"));
  user.answer(IDNO);
  importPath(folder.write("a.dip", labelled("a")), true);
  EXPECT_EQ(labels(), Texts{"a"});
}

TEST_F(CtfPath, YesImportsEveryFileOfItsExtensionInTheOrderOfTheSearch) {
  folder.write("c.dip", labelled("c"));
  folder.write("A.dip", labelled("A"));
  folder.write("x.txt", labelled("x"));
  folder.write("dip", labelled("none"));
  folder.write("d.dip2", labelled("d"));
  user.answer(IDYES);
  EXPECT_EQ(importPath(folder.write("b.dip", labelled("b")), true), 1);
  EXPECT_EQ(labels(), titlesFound(folder, _T(".dip")));
  EXPECT_EQ(shown(), (Texts{folderQuestion, totalMessage(0, 3)}));
}

TEST_F(CtfPath, TheExtensionIgnoresCase) {
  folder.write("c.DIP", labelled("c"));
  user.answer(IDYES);
  importPath(folder.write("b.dip", labelled("b")), true);
  EXPECT_EQ(labels(), titlesFound(folder, _T(".dip")));
  EXPECT_EQ(labels().size(), 2U);
}

TEST_F(CtfPath, TheExtensionIsTheLastFourCharacters) {
  folder.write("b.text", labelled("b"));
  folder.write("cext", labelled("c"));
  user.answer(IDYES);
  importPath(folder.write("a.text", labelled("a")), true);
  EXPECT_EQ(labels(), titlesFound(folder, _T("text")));
  EXPECT_EQ(labels().size(), 2U);
}

TEST_F(CtfPath, FoldersNamedLikeFilesAreLeftOut) {
  folder.makeFolder("a.dip");
  user.answer(IDYES);
  importPath(folder.write("b.dip", labelled("b")), true);
  EXPECT_EQ(labels(), Texts{"b"});
  EXPECT_EQ(shown(), (Texts{folderQuestion, totalMessage(0, 1)}));
}

TEST_F(CtfPath, AFolderGivenAsThePathCannotBeOpened) {
  const CString path = folder.makeFolder("a.dip");
  EXPECT_EQ(importPath(path), 1);
  EXPECT_EQ(shown(), (Texts{openFailure(path, causeToOpen(path)), totalMessage(0, 0)}));
}

TEST_F(CtfPath, AFileThatVanishesAfterTheSearchIsReported) {
  const CString path = folder.write("a.dip", labelled("a"));
  const VanishingOs os;
  EXPECT_EQ(importPath(path), 1);
  EXPECT_EQ(shown(), (Texts{openFailure(path, CFileException::fileNotFound), totalMessage(0, 0)}));
}
