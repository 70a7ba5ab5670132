// Claim: paths beyond 260 characters work everywhere, and folders and files without permission are told of.
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/import/CtfImportTest.h"
#include "tests/support/CurrentFolder.h"
#include "tests/support/Thrown.h"
#include "tests/sweep/SweptSets.h"

namespace {

const std::string oneRow = "12.5 1 2 3 0.5 0.25 -1 20.5 1.5 9 0.75 2.5 7 a b c 8 a-table\n";

class HostilePaths : public testing::Test {
 protected:
  int import(CString path, bool offerFolder = false) { return set->importDipoleX(path, offerFolder); }

  ScriptedOperator user;
  TempFolder folder;
  Set set = std::make_unique<CDipoleFace9File>();

 private:
  KeptCurrentFolder m_currentFolder;
};

class LongPath : public HostilePaths {
 protected:
  void SetUp() override {
    HostilePaths::SetUp();
    for (int depth = 0; depth < 4; ++depth) {
      m_inner += std::string(depth == 0 ? "" : "/") + std::string(120, static_cast<char>('a' + depth));
      folder.makeFolder(m_inner);
    }
    ASSERT_GT(folder.path(m_inner).GetLength(), 480);
  }

  std::string inner(const std::string& name) const { return m_inner + "/" + name; }

 private:
  std::string m_inner;
};

// Takes the rights of the superuser, who may do everything, from the process while it lives.
class OrdinaryUser {
 public:
  OrdinaryUser() : m_before(::geteuid()) {
    if (m_before == 0) {
      EXPECT_EQ(::seteuid(nobody), 0);
    }
  }
  ~OrdinaryUser() {
    if (m_before == 0) {
      EXPECT_EQ(::seteuid(m_before), 0);
    }
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;

 private:
  static constexpr uid_t nobody = 65534;
  uid_t m_before;
};

}  // namespace

TEST_F(LongPath, ImportsCtfFilesAndTheirFolder) {
  const CString path = folder.write(inner("a.dip"), oneSphere + dipoles(2));
  folder.write(inner("b.dip"), dipoles(3));
  EXPECT_EQ(import(path), 1);
  user.answer(IDYES);
  EXPECT_EQ(import(path, true), 1);
  EXPECT_EQ(user.texts(), (Texts{totalMessage(0, 2), folderQuestion, totalMessage(2, 7)}));
}

TEST_F(LongPath, ImportsMsiTables) {
  EXPECT_EQ(import(folder.write(inner("a.txt"), "Latency (ms)\n" + oneRow)), 1);
  EXPECT_EQ(user.texts(), Texts{totalMessage(0, 1)});
}

TEST_F(LongPath, ImportsFilesChosenInTheDialog) {
  user.answerFiles(
      {folder.write(inner("a.dip"), oneSphere + dipoles(2)), folder.write(inner("b.dip"), dipoles(1))});
  EXPECT_EQ(set->importCTFDipoles(), 1);
  EXPECT_EQ(user.texts(), Texts{totalMessage(0, 3)});
}

TEST_F(LongPath, ExportsText) {
  set->addDipole();
  user.answerFiles({folder.path(inner("table"))});
  EXPECT_EQ(set->exportExelFile(), 1);
  EXPECT_EQ(user.texts(), Texts{});
  EXPECT_GT(folder.read(inner("table.txt")).size(), 200U);
}

TEST_F(LongPath, SavesAndReadsSets) {
  const Set saved = sweptSet(3);
  const CString path = folder.path(inner("set.bin"));
  {
    CFile file(path, CFile::modeCreate | CFile::modeWrite);
    CArchive archive(&file, CArchive::store);
    EXPECT_EQ(saved->serializeDipolesFace(archive), 1);
    archive.Close();
    file.Close();
  }
  CFile file(path, CFile::modeRead);
  CArchive archive(&file, CArchive::load);
  EXPECT_EQ(set->serializeDipolesFace(archive), 1);
  EXPECT_EQ(currentBytes(*set), currentBytes(*saved));
}

TEST_F(HostilePaths, AFolderWithoutWritePermissionIsToldOfByTheExport) {
  const CString inner = folder.makeFolder("inner");
  ASSERT_EQ(::chmod(toUtf8(inner).c_str(), 0555), 0);
  set->addDipole();
  user.answerFiles({folder.path("inner/table.txt")});
  {
    const OrdinaryUser noRights;
    EXPECT_EQ(set->exportExelFile(), 0);
  }
  EXPECT_EQ(user.texts(), Texts{"File could not be opened "});
  EXPECT_FALSE(folder.has("inner/table.txt"));
}

TEST_F(HostilePaths, AFolderWithoutWritePermissionRaisesItsExceptionWhenASetIsSaved) {
  const CString inner = folder.makeFolder("inner");
  ASSERT_EQ(::chmod(toUtf8(inner).c_str(), 0555), 0);
  const OrdinaryUser noRights;
  const CString path = folder.path("inner/set.bin");
  EXPECT_EQ(fileCause([&] { CFile(path, CFile::modeCreate | CFile::modeWrite); }),
            CFileException::accessDenied);
}

TEST_F(HostilePaths, AFileWithoutReadPermissionIsToldOfByTheImport) {
  const CString path = folder.write("a.dip", dipoles(1));
  ASSERT_EQ(::chmod(folder.pathUtf8().c_str(), 0755), 0);
  ASSERT_EQ(::chmod(toUtf8(path).c_str(), 0), 0);
  set->m_skipFiducialSetup = true;
  {
    const OrdinaryUser noRights;
    EXPECT_EQ(import(path), 1);
  }
  EXPECT_EQ(user.texts(), (Texts{openFailure(path, CFileException::accessDenied), totalMessage(0, 0)}));
}

TEST_F(HostilePaths, AReadOnlyFolderIsImportedFrom) {
  const CString inner = folder.makeFolder("inner");
  const CString path = folder.write("inner/a.dip", oneSphere + dipoles(2));
  ASSERT_EQ(::chmod(toUtf8(inner).c_str(), 0555), 0);
  ASSERT_EQ(::chmod(toUtf8(path).c_str(), 0444), 0);
  {
    const OrdinaryUser noRights;
    EXPECT_EQ(import(path), 1);
  }
  EXPECT_EQ(user.texts(), Texts{totalMessage(0, 2)});
}
