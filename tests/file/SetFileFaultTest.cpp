// Set files that are none or break off, and memory and disks that give out.
#include <cstring>

#include "tests/file/SetFixture.h"
#include "tests/support/FailingNew.h"
#include "tests/support/FailingOs.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Thrown.h"

namespace {

using Messages = std::vector<ScriptedOperator::Message>;

const Messages wrongFormat = {{"Wrong file format!", MB_OK}};
const Messages formatError = {{"Dipole file format error", MB_OK}};

// What must hold after every read, whole or not.
void expectConsistent(const CDipoleFace& set, const std::vector<int>& holes) {
  ASSERT_GE(set.m_totalDipoles, 0);
  ASSERT_LE(set.m_totalDipoles, DipoleTable::capacity);
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    const bool isHole = std::find(holes.begin(), holes.end(), slot) != holes.end();
    EXPECT_EQ(set.m_dipoles[slot] == nullptr, isHole) << slot;
  }
}

class BrokenOff : public testing::TestWithParam<const char*> {};

}  // namespace

TEST(SetFileFault, AnotherMagicGivesZeroSilentlyAndChangesNothing) {
  std::string bytes = archiveBytes("set_20050629_small");
  bytes[4] = 'X';
  for (const std::string& other : {bytes, archiveBytes("record_20061206"), std::string(1, '\0')}) {
    const ScriptedOperator user;
    const Set set = filledSet(3);
    const Lines before = linesOf(*set);
    EXPECT_EQ(readCurrent(other, *set), 0);
    EXPECT_EQ(user.texts(), Texts{});
    EXPECT_EQ(differences(before, linesOf(*set)), Lines{});
  }
}

TEST(SetFileFault, AnotherVersionGivesZeroAfterAMessageAndChangesNothing) {
  for (const int version : {0, 1, 20010901, 20011118, 20050630, -20050629}) {
    const ScriptedOperator user;
    const Set set = filledSet(3);
    const Lines before = linesOf(*set);
    EXPECT_EQ(readCurrent(patched(archiveBytes("set_20050629_small"), 30, version), *set), 0);
    EXPECT_EQ(user.messages, wrongFormat);
    EXPECT_EQ(differences(before, linesOf(*set)), Lines{});
  }
}

TEST(SetFileFault, AnUnknownVersionOf2001GivesOneAfterAMessageAndChangesNothing) {
  for (const int version : {2, -1, 20010101, 20050629, 20011119}) {
    const ScriptedOperator user;
    const Set set = filledSet(3);
    const Lines before = linesOf(*set);
    std::size_t rest = 0;
    EXPECT_EQ(readObsolete(patched(std::string(12, 'x'), 0, version), *set, &rest), 1);
    EXPECT_EQ(rest, 8U);
    EXPECT_EQ(user.messages, formatError);
    EXPECT_EQ(differences(before, linesOf(*set)), Lines{});
  }
}

TEST_P(BrokenOff, EndsInTheArchiveExceptionAndAConsistentSet) {
  const std::string name = GetParam();
  const std::string whole = archiveBytes(name);
  const auto read = name.find("set_20050629") == 0 ? readCurrent : readObsolete;
  const std::vector<int> holes = name == "set_20050629" ? std::vector<int>{1} : std::vector<int>{};
  const Set reference = filledSet(0);
  read(whole, *reference, nullptr);
  const Set set = filledSet(0);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const ScriptedOperator user;
    set->cleanDipoles();
    for (const LPCTSTR label : {_T("present"), _T("present")}) {
      set->addDipole();
      set->setDipoleName(-1, label);
    }
    const int cause = archiveCause([&] { read(whole.substr(0, length), *set, nullptr); });
    EXPECT_EQ(cause, CArchiveException::endOfFile) << length;
    EXPECT_EQ(user.texts(), Texts{}) << length;
    EXPECT_LE(set->m_totalDipoles, (std::max)(2, reference->m_totalDipoles));
    const bool isPresentSet = set->m_totalDipoles == 2 && set->m_dipoles[0]->m_label == _T("present");
    expectConsistent(*set, isPresentSet ? std::vector<int>{} : holes);
    set->reOrderDipoles();
    currentBytes(*set);
  }
}

INSTANTIATE_TEST_SUITE_P(SetFileFault, BrokenOff,
                         testing::Values("set_20050629_small", "set_20050629_empty", "set_20050629",
                                         "set_20010901", "set_20010101_version_0", "set_20011118_foreign"));

TEST(SetFileFault, WhatWasReadWholeBeforeTheBreakStays) {
  const std::string whole = archiveBytes("set_20050629");
  const std::size_t last = whole.rfind(std::string("y\0y\0", 4));
  const Set set = filledSet(0);
  EXPECT_EQ(archiveCause([&] { readCurrent(whole.substr(0, last), *set); }), CArchiveException::endOfFile);
  ASSERT_EQ(set->m_totalDipoles, 3);
  EXPECT_NE(set->m_dipoles[0], nullptr);
  EXPECT_EQ(set->m_dipoles[1], nullptr);
  ASSERT_NE(set->m_dipoles[2], nullptr);
  EXPECT_EQ(set->m_dipoles[2]->m_label.GetLength(), 254);
  EXPECT_EQ(set->m_dipoles[3], nullptr);
  EXPECT_EQ(set->m_currentDipole, 2);
  EXPECT_EQ(set->m_faceValue, 2.5);
}

TEST(SetFileFault, AnArchiveMeantTheOtherWayRaisesItsException) {
  CMemFile file;
  CArchive archive(&file, CArchive::load);
  const Set set = filledSet(1);
  EXPECT_EQ(archiveCause([&] { set->serializeDipolesFace(archive); }), CArchiveException::endOfFile);
  EXPECT_EQ(archiveCause([&] { set->serializeObsolete20050630(archive); }), CArchiveException::endOfFile);
  EXPECT_EQ(set->m_totalDipoles, 1);
}

TEST(SetFileFault, MemoryThatGivesOutEndsTheDipolesWithAMessage) {
  const std::string bytes = archiveBytes("set_20050629_small");
  int reported = 0;
  for (int nth = 1; nth < 200; ++nth) {
    const ScriptedOperator user;
    const Set set = filledSet(2);
    bool failed = false;
    int result = -1;
    bool threw = false;
    std::string copy = bytes;
    CMemFile file(reinterpret_cast<BYTE*>(copy.data()), static_cast<UINT>(copy.size()));
    CArchive archive(&file, CArchive::load);
    {
      const FailingNew failing(nth);
      threw = runsOutOfMemory([&] { result = set->serializeDipolesFace(archive); });
      failed = failing.failed();
    }
    archive.Abort();
    expectConsistent(*set, {});
    if (!failed) {
      EXPECT_GT(nth, 1);
      EXPECT_EQ(result, 1);
      break;
    }
    if (!threw) {
      EXPECT_EQ(result, 1) << nth;
      EXPECT_EQ(user.texts(), Texts{"Not enough memory"}) << nth;
      EXPECT_EQ(set->m_totalDipoles, 0);
      EXPECT_EQ(set->m_faceValue, 2.5);  // what follows was not read from the wrong place
      ++reported;
    }
  }
  EXPECT_GE(reported, 1);
}

TEST(SetFileFault, AFullDiskIsReportedAndGivesZero) {
  const TempFolder folder;
  const ScriptedOperator user;
  const Set set = filledSet(3);
  FailingOs os;
  CFile file(folder.path("set.bin"), CFile::modeCreate | CFile::modeWrite);
  CArchive archive(&file, CArchive::store, 128);
  os.failAt(FailingOs::Call::write, 2, CFileException::diskFull);
  EXPECT_EQ(set->serializeDipolesFace(archive), 0);
  EXPECT_EQ(user.texts(), Texts{"3DPtB file could not be opened "});
  os.stop();
  archive.Abort();
}

TEST(SetFileFault, AReadFaultInADipoleIsReportedAndWhatWasReadStays) {
  const TempFolder folder;
  const CString path = folder.write("set.bin", archiveBytes("set_20050629"));
  const ScriptedOperator user;
  const Set set = filledSet(1);
  FailingOs os;
  CFile file(path, CFile::modeRead);
  CArchive archive(&file, CArchive::load, 128);
  os.failAt(FailingOs::Call::read, 5, CFileException::hardIO);
  EXPECT_EQ(set->serializeDipolesFace(archive), 0);
  EXPECT_TRUE(os.failed);
  EXPECT_EQ(user.texts(), Texts{"3DPtB file could not be opened "});
  expectConsistent(*set, {1});
  os.stop();
  archive.Abort();
}
