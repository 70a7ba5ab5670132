// Claim: a file that another program keeps for itself, which only Windows allows, is told of by import and
// export and raises its exception when a set is saved over it or read from it.
#include "tests/import/CtfImportTest.h"
#include "tests/support/CurrentFolder.h"
#include "tests/support/Thrown.h"
#include "tests/sweep/SweptSets.h"

namespace {

class LockedFile : public testing::Test {
 protected:
  void SetUp() override { set->m_skipFiducialSetup = true; }

  ScriptedOperator user;
  TempFolder folder;
  Set set = std::make_unique<CDipoleFace9File>();

 private:
  KeptCurrentFolder m_currentFolder;
};

}  // namespace

TEST_F(LockedFile, IsToldOfByTheImport) {
  CString path = folder.write("a.dip", dipoles(1));
  const CFile lock(path, CFile::modeRead | CFile::shareExclusive);
  EXPECT_EQ(set->importDipoleX(path, false), 1);
  EXPECT_EQ(user.texts(), (Texts{openFailure(path, CFileException::sharingViolation), totalMessage(0, 0)}));
}

TEST_F(LockedFile, ThatOthersMayReadIsImported) {
  CString path = folder.write("a.dip", dipoles(1));
  const CFile lock(path, CFile::modeRead | CFile::shareDenyWrite);
  EXPECT_EQ(set->importDipoleX(path, false), 1);
  EXPECT_EQ(user.texts(), Texts{totalMessage(0, 1)});
}

TEST_F(LockedFile, IsToldOfByTheExportAndStays) {
  const CString path = folder.write("table.txt", "an older table");
  user.answerFiles({path});
  {
    const CFile lock(path, CFile::modeRead | CFile::shareDenyWrite);
    EXPECT_EQ(set->exportExelFile(), 0);
  }
  EXPECT_EQ(user.texts(), Texts{"File could not be opened "});
  EXPECT_EQ(folder.read("table.txt"), "an older table");
}

TEST_F(LockedFile, RaisesItsExceptionWhenASetIsSavedOrRead) {
  const CString path = folder.write("set.bin", "an older set");
  const CFile lock(path, CFile::modeRead | CFile::shareExclusive);
  EXPECT_EQ(fileCause([&] { CFile(path, CFile::modeCreate | CFile::modeWrite); }),
            CFileException::sharingViolation);
  EXPECT_EQ(fileCause([&] { CFile(path, CFile::modeRead | CFile::shareDenyNone); }),
            CFileException::sharingViolation);
}
