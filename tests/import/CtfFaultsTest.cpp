// Faults while an import runs, and files that are no CTF files: what was there stays, nothing is invented.
#include <gtest/gtest.h>

#include "tests/import/CtfImportTest.h"
#include "tests/support/FailingNew.h"
#include "tests/support/FailingOs.h"
#include "tests/support/Thrown.h"

namespace {

class CtfFaults : public CtfImport {
 protected:
  // Imports a file of which reading fails at its nth block. The archive reads blocks of 4096 bytes.
  int importWithReadFault(const std::string& bytes, int nth) {
    m_path = folder.write("bad.dip", bytes);
    const CString other = folder.write("other.dip", dipoles(1));
    user.answerFiles({m_path, other});
    FailingOs os(FailingOs::Call::read, nth, CFileException::hardIO);
    const int result = set->importCTFDipoles();
    EXPECT_TRUE(os.failed);
    return result;
  }
  std::string reportOf(int cause) const { return ::reportOf(CFileException(cause, 12345, m_path)); }

  CString m_path;
};

class CtfForeignFiles : public CtfImport {
 protected:
  void SetUp() override {
    CtfImport::SetUp();
    set->addDipoleF(1, 2, 3);
    set->m_skipFiducialSetup = true;
  }
  void expectNothingImported() const {
    EXPECT_EQ(shown(), Texts{totalMessage(1, 1)});
    EXPECT_EQ(set->m_totalDipoles, 1);
    expectTriple(dipole(0).m_location, 1, 2, 3);
    EXPECT_EQ(set->m_currentDipole, 0);
    EXPECT_EQ(toUtf8(set->m_patient), "non");
  }
};

}  // namespace

TEST_F(CtfFaults, AFileFaultIsReportedByItsOwnBoxAndGivesOne) {
  EXPECT_EQ(importWithReadFault(dipoles(1), 1), 1);
  EXPECT_EQ(shown(), Texts{reportOf(CFileException::hardIO)});
}

TEST_F(CtfFaults, AFileFaultEndsTheImportAtOnce) {
  set->addDipole();
  const std::string rows = dipoles(4000);
  ASSERT_GT(rows.size(), 65536U);
  set->m_importEnd = 77;
  EXPECT_EQ(importWithReadFault(oneSphere + rows, 2), 1);
  EXPECT_EQ(user.messages.size(), 1U);  // no total
  EXPECT_EQ(set->listUpdates, 0);
  EXPECT_EQ(set->m_importFirst, 1);
  EXPECT_EQ(set->m_importEnd, 77);
  EXPECT_EQ(set->m_fiducialCtf.getTotalFiduciaryPts(true), 0);
}

TEST_F(CtfFaults, AFileFaultKeepsTheDipolesBeforeIt) {
  set->addDipole();
  importWithReadFault(dipoles(4000), 2);
  const int count = set->m_totalDipoles;
  EXPECT_GT(count, 1);
  EXPECT_LT(count, 4001);
  EXPECT_EQ(toUtf8(dipole(count - 1).m_label), "d" + std::to_string(count - 1));
  EXPECT_EQ(dipole(count - 1).m_rawLocation.m_radius, 0.0);  // no backup
}

TEST_F(CtfFaults, TheFileIsClosedAfterAFault) {
  importWithReadFault(dipoles(1), 1);
  EXPECT_NO_THROW(CFile::Remove(m_path));  // Windows removes no open file
  EXPECT_FALSE(folder.has("bad.dip"));
}

TEST_F(CtfFaults, AFaultAfterAFaultIsReportedLikewise) {
  importWithReadFault(dipoles(1), 1);
  importWithReadFault(dipoles(1), 1);
  EXPECT_EQ(user.messages.size(), 2U);
  EXPECT_EQ(import(oneSphere + dipoles(1)), 1);
  EXPECT_EQ(labels(), Texts{"d1"});
}

TEST_F(CtfFaults, AFaultInAnImportByPathIsReportedLikewise) {
  CString path = m_path = folder.write("bad.dip", dipoles(1));
  const FailingOs os(FailingOs::Call::read, 1, CFileException::hardIO);
  EXPECT_EQ(set->importCTFDipolesX(path, false), 1);
  EXPECT_EQ(shown(), Texts{reportOf(CFileException::hardIO)});
  EXPECT_EQ(set->listUpdates, 0);
}

TEST_F(CtfFaults, AFaultOnClosingIsReportedLikewise) {
  m_path = folder.write("bad.dip", dipoles(1));
  user.answerFiles({m_path});
  const FailingOs os(FailingOs::Call::close, 1, CFileException::hardIO);
  EXPECT_EQ(set->importCTFDipoles(), 1);
  EXPECT_EQ(shown(), Texts{reportOf(CFileException::hardIO)});
  EXPECT_EQ(labels(), Texts{"d1"});
}

// Lets every allocation of an import fail in turn. Nothing may escape, leak (the sanitizer looks) or break
// what was there; a dipole that could not be made is reported.
TEST_F(CtfFaults, ExhaustedMemoryAnywhereLeavesASoundCollection) {
  const CString path =
      folder.write("a.dip", oneSphere + dipoles(2) + section("Dipole_Flags", "1: 2 1 1 1 1\n"));
  const std::string total = totalMessage(1, 3);
  bool reported = false;
  bool silent = false;
  for (int nth = 1, failed = 1; failed != 0; ++nth) {
    set = std::make_unique<CtfImporter>();
    set->addDipoleF(1, 2, 3);
    ScriptedOperator quiet;
    CString copy = path;
    int result = -1;
    {
      const FailingNew memory(nth);
      result = set->importCTFDipolesX(copy, false);
      failed = memory.failed() ? 1 : 0;
    }
    EXPECT_EQ(result, 1);
    for (const std::string& text : quiet.texts()) {
      reported = reported || text == notEnoughMemory;
    }
    silent = silent || quiet.messages.empty();
    ASSERT_GE(set->m_totalDipoles, 1);
    ASSERT_LE(set->m_totalDipoles, 3);
    for (int slot = 0; slot < set->m_totalDipoles; ++slot) {
      ASSERT_NE(set->m_dipoles[slot], nullptr);
    }
    expectTriple(dipole(0).m_location, 1, 2, 3);
    ASSERT_LT(nth, 2000);
  }
  EXPECT_TRUE(reported);
  EXPECT_TRUE(silent);  // elsewhere the import ends without a word
}

TEST_F(CtfForeignFiles, AnEmptyFileImportsNothing) {
  EXPECT_EQ(import(""), 1);
  expectNothingImported();
}

TEST_F(CtfForeignFiles, TextOfAnotherProgramImportsNothing) {
  import(
      "# CTF? no: dipole fit\n# begin end X (mm) Y (mm) Z (mm) Q(nAm) Qx Qy Qz g(%)\n"
      "  100.0 100.0 -51.2 10.4 60.3 25.1 3.0 -10.2 22.7 92.1\n## Name \"x\"\n");
  expectNothingImported();
}

TEST_F(CtfForeignFiles, ASectionFileWithoutDipolesImportsNothing) {
  import(section("MultiSphere_Data", "HEADPOS: 1\n") + section("Params", "x: 1 2 3 4 5 6 7 8 9\n") +
         "EEG_Sphere\n{\n\tRADIUS:\t9\n}\n");
  expectNothingImported();
}

TEST_F(CtfForeignFiles, ABinaryFileImportsNothing) {
  std::string bytes;
  unsigned state = 1;
  for (int i = 0; i < 200000; ++i) {
    state = state * 1664525U + 1013904223U;
    bytes += static_cast<char>(state >> 24U);
  }
  import(bytes);
  expectNothingImported();
}

TEST_F(CtfForeignFiles, WideTextImportsNothing) {
  std::string bytes = "\xFF\xFE";
  for (const char c : dipoles(2)) {
    bytes += c;
    bytes += '\0';
  }
  import(bytes);
  expectNothingImported();
}

TEST_F(CtfForeignFiles, ALineOfAHundredMegabytesImportsNothing) {
  import(std::string(100U << 20U, 'x'));
  expectNothingImported();
}

TEST_F(CtfForeignFiles, ADipoleBehindALineOfAHundredMegabytesIsFound) {
  import(std::string(100U << 20U, ' ') + "\n" + dipoles(1));
  EXPECT_EQ(labels(), (Texts{"Non", "d1"}));
}

TEST_F(CtfForeignFiles, APieceOfALongLineMayOpenASection) {
  // The rest of a long line is a line of its own.
  import(std::string(2048, 'x') + dipoles(1));
  EXPECT_EQ(labels(), (Texts{"Non", "d1"}));
}

TEST_F(CtfForeignFiles, AByteOrderMarkHidesTheFirstName) {
  import("\xEF\xBB\xBF" + dipoles(1));
  expectNothingImported();
}
