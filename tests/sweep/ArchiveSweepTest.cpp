// Claim: whatever gives out, a set or a record that is not saved or read whole is never called so; saving
// leaves the set as it is, reading leaves the file as it is and a set of whole dipoles, old or new ones.
#include <algorithm>
#include <functional>

#include "tests/support/TempFolder.h"
#include "tests/sweep/FaultSweep.h"
#include "tests/sweep/SweptSets.h"

namespace {

const Texts faultTold = {"3DPtB file could not be opened "};
const Texts memoryTold = {"Not enough memory"};

// What a host does with a file and an archive on it, in small blocks so that many calls can fail.
template <class Transfer>
int transferFile(const CString& path, CArchive::Mode mode, Transfer transfer) {
  const bool isStoring = mode == CArchive::store;
  CFile file(path, isStoring ? CFile::modeCreate | CFile::modeWrite : UINT{CFile::modeRead});
  BYTE block[128];
  CArchive archive(&file, mode, sizeof block, block);
  const int result = transfer(archive);
  archive.Close();
  file.Close();
  return result;
}

int current(CDipoleFace9File& set, CArchive& archive) {
  return set.serializeDipolesFace(archive);
}

int of2001(CDipoleFace9File& set, CArchive& archive) {
  return set.serializeObsolete20050630(archive);
}

using SetTransfer = int (*)(CDipoleFace9File&, CArchive&);

// The result of an entry point behind "3DPtB file could not be opened ".
int faultyResult(SetTransfer transfer) {
  return transfer == of2001 ? 1 : 0;
}

// Saying nothing means that all went well; otherwise one of the documented ways must have been taken.
void expectDocumented(const Fault& fault, const Texts& shown, int result, int resultOfFault) {
  switch (fault.escaped()) {
    case Escaped::nothing:
      if (shown == faultTold) {
        EXPECT_FALSE(fault.isMemory());
        EXPECT_EQ(result, resultOfFault);
      } else if (shown == memoryTold) {
        EXPECT_TRUE(fault.isMemory());
        EXPECT_EQ(result, 1);
      } else {
        EXPECT_EQ(shown, Texts{});
        EXPECT_EQ(result, 1);
      }
      break;
    case Escaped::noMemory:
      EXPECT_TRUE(fault.isMemory());
      EXPECT_TRUE(shown.empty() || shown == memoryTold);
      break;
    case Escaped::fileException:
      EXPECT_FALSE(fault.isMemory());
      EXPECT_EQ(fault.cause(), fault.isSilent() ? CFileException::diskFull : fault.kind().cause);
      EXPECT_TRUE(shown.empty() || shown == faultTold);
      break;
    case Escaped::endOfArchive:
      EXPECT_TRUE(fault.isSilent());
      EXPECT_EQ(shown, Texts{});
      break;
    case Escaped::somethingElse:
      ADD_FAILURE() << "an exception that nobody expects";
  }
}

// Whether the caller was led to believe that all is well.
bool isCalledWhole(const Fault& fault, const Texts& shown) {
  return fault.escaped() == Escaped::nothing && shown.empty();
}

FailurePoints sweepSaving(const char* name, SetTransfer transfer) {
  const TempFolder folder;
  const CString path = folder.path("saved.bin");
  const auto makeSet = [] {
    Set set = sweptSet(5);
    set->deleteDipole(1, 0);
    set->m_dipoles[2]->m_label = CString(_T('x'), 2000);
    return set;
  };
  const Set reference = makeSet();
  transferFile(path, CArchive::store, [&](CArchive& archive) { return transfer(*reference, archive); });
  const std::string whole = folder.read("saved.bin");
  EXPECT_GT(whole.size(), 4000U);
  return sweep(name, allFaults(), [&](Fault& fault) {
    folder.write("saved.bin", "an older file");
    const ScriptedOperator user;
    const Set set = makeSet();
    const Lines before = linesOf(*set);
    int result = -1;
    fault.during([&] {
      result =
          transferFile(path, CArchive::store, [&](CArchive& archive) { return transfer(*set, archive); });
    });
    EXPECT_EQ(differences(before, linesOf(*set)), Lines{});
    expectDocumented(fault, user.texts(), result, faultyResult(transfer));
    const bool isWhole = isCalledWhole(fault, user.texts());
    EXPECT_TRUE(isWhole || fault.happened());
    if (isWhole) {
      EXPECT_EQ(folder.read("saved.bin"), whole);
    }
    expectUsable(*set);
  });
}

// A set after reading.
struct Read {
  explicit Read(const CDipoleFace& set) : lines(linesOf(set)), setWide(setWideLines(set)) {
    for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
      slots.push_back(slotLines(set, slot));
    }
  }

  Lines lines;
  Lines setWide;
  std::vector<Lines> slots;
};

bool tellsWhose(const std::string& line) {
  for (const char* name : {"m_fileVersion ", "m_patient ", "m_mriFile ", "m_megOnly ", "m_coordinateType ",
                           "m_momentInNAm ", "m_sphereCtf.", "m_sphereLocational."}) {
    if (line.find(name) == 0) {
      return true;
    }
  }
  return false;
}

// The set-wide lines while a file's dipoles are read: what tells whose head they are from is nobody's until
// the file's own is read, unless the file does not carry it.
Lines whileReading(const Read& before, const Read& whole) {
  const Lines initial = setWideLines(*std::make_unique<CDipoleFace9File>());
  Lines lines = before.setWide;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const bool waits = tellsWhose(lines[i]) && lines[i] != whole.setWide[i];
    lines[i] = waits ? initial[i] : lines[i];
  }
  return lines;
}

// A set that was not read whole: the old one, or the first dipoles of the new one, each of them whole.
void expectPart(const Read& before, const Read& whole, const CDipoleFace9File& set) {
  const Read now(set);
  if (now.lines == before.lines) {
    return;
  }
  EXPECT_TRUE(isBetween(now.setWide, whileReading(before, whole), whole.setWide));
  EXPECT_LT(set.m_currentDipole, set.m_totalDipoles);
  ASSERT_LE(now.slots.size(), whole.slots.size());
  for (std::size_t slot = 0; slot < now.slots.size(); ++slot) {
    EXPECT_EQ(differences(whole.slots[slot], now.slots[slot]), Lines{}) << slot;
  }
}

FailurePoints sweepReading(const std::string& name, SetTransfer transfer) {
  const TempFolder folder;
  const CString path = folder.write("set.bin", archiveBytes(name));
  const auto read = [&](CDipoleFace9File& set) {
    return transferFile(path, CArchive::load, [&](CArchive& archive) { return transfer(set, archive); });
  };
  const Set reference = sweptSet(2);
  const Read before(*reference);
  EXPECT_EQ(read(*reference), 1);
  const Read whole(*reference);
  EXPECT_NE(before.lines, whole.lines);
  return sweep(name.c_str(), allFaults(), [&](Fault& fault) {
    const ScriptedOperator user;
    const Set set = sweptSet(2);
    int result = -1;
    fault.during([&] { result = read(*set); });
    EXPECT_EQ(folder.read("set.bin"), archiveBytes(name));
    expectDocumented(fault, user.texts(), result, faultyResult(transfer));
    const bool isWhole = isCalledWhole(fault, user.texts());
    EXPECT_TRUE(isWhole || fault.happened());
    if (isWhole) {
      EXPECT_EQ(differences(whole.lines, linesOf(*set)), Lines{});
    } else {
      expectPart(before, whole, *set);
    }
    expectUsable(*set);
  });
}

using RecordTransfer = int (CDipoles4File::*)(CArchive&);

CDipoleszq sweptDipole() {
  CDipoleszq dipole;
  fillMembers(dipole);
  dipole.m_label = _T("a label that needs memory");
  return dipole;
}

FailurePoints sweepRecordSaving(const char* name, RecordTransfer transfer) {
  const TempFolder folder;
  const CString path = folder.path("saved.bin");
  const auto save = [&](CDipoleszq& dipole) {
    return transferFile(path, CArchive::store,
                        [&](CArchive& archive) { return (dipole.*transfer)(archive); });
  };
  CDipoleszq reference = sweptDipole();
  EXPECT_EQ(save(reference), 1);
  const std::string whole = folder.read("saved.bin");
  return sweep(name, allFaults(), [&](Fault& fault) {
    folder.write("saved.bin", "an older file");
    const ScriptedOperator user;
    CDipoleszq dipole = sweptDipole();
    const Lines before = linesOf(dipole);
    int result = -1;
    fault.during([&] { result = save(dipole); });
    EXPECT_EQ(differences(before, linesOf(dipole)), Lines{});
    expectDocumented(fault, user.texts(), result, 0);
    const bool isWhole = isCalledWhole(fault, user.texts());
    EXPECT_TRUE(isWhole || fault.happened());
    if (isWhole) {
      EXPECT_EQ(folder.read("saved.bin"), whole);
    }
  });
}

FailurePoints sweepRecordReading(const std::string& name, RecordTransfer transfer) {
  const TempFolder folder;
  const CString path = folder.write("record.bin", archiveBytes(name));
  const auto read = [&](CDipoleszq& dipole) {
    return transferFile(path, CArchive::load, [&](CArchive& archive) { return (dipole.*transfer)(archive); });
  };
  CDipoleszq reference = sweptDipole();
  const Lines before = linesOf(reference);
  EXPECT_EQ(read(reference), 1);
  const Lines whole = linesOf(reference);
  EXPECT_NE(before, whole);
  return sweep(name.c_str(), allFaults(), [&](Fault& fault) {
    const ScriptedOperator user;
    CDipoleszq dipole = sweptDipole();
    int result = -1;
    fault.during([&] { result = read(dipole); });
    EXPECT_EQ(folder.read("record.bin"), archiveBytes(name));
    expectDocumented(fault, user.texts(), result, 0);
    const bool isWhole = isCalledWhole(fault, user.texts());
    EXPECT_TRUE(isWhole || fault.happened());
    EXPECT_TRUE(isBetween(linesOf(dipole), before, whole));
    if (isWhole) {
      EXPECT_EQ(differences(whole, linesOf(dipole)), Lines{});
    }
  });
}

class CurrentSetSweep : public testing::TestWithParam<const char*> {};
class ObsoleteSetSweep : public testing::TestWithParam<const char*> {};
class StandAloneRecordSweep : public testing::TestWithParam<const char*> {};
class EmbeddedRecordSweep : public testing::TestWithParam<const char*> {};

}  // namespace

TEST(ArchiveSweep, SavingASet) {
  const FailurePoints points = sweepSaving("saving a set", current);
  EXPECT_GE(points.allocations, 5);
  EXPECT_GE(points.fileCalls, 15);
}

TEST(ArchiveSweep, SavingASetOf2001) {
  const FailurePoints points = sweepSaving("saving a set of 2001", of2001);
  EXPECT_GE(points.allocations, 5);
  EXPECT_GE(points.fileCalls, 20);
}

TEST_P(CurrentSetSweep, Reading) {
  const FailurePoints points = sweepReading(GetParam(), current);
  EXPECT_GE(points.allocations, 5);
  EXPECT_GE(points.fileCalls, 6);
}

INSTANTIATE_TEST_SUITE_P(ArchiveSweep, CurrentSetSweep,
                         testing::Values("set_20050629", "set_20050629_small", "set_20050629_empty"));

TEST_P(ObsoleteSetSweep, Reading) {
  const FailurePoints points = sweepReading(GetParam(), of2001);
  EXPECT_GE(points.allocations, 5);
  EXPECT_GE(points.fileCalls, 6);
}

INSTANTIATE_TEST_SUITE_P(ArchiveSweep, ObsoleteSetSweep,
                         testing::Values("set_20010101_version_0", "set_20010101_version_1", "set_20010901",
                                         "set_20011118", "set_20011118_foreign"));

TEST(ArchiveSweep, SavingAStandAloneRecord) {
  const FailurePoints points = sweepRecordSaving("saving a record", &CDipoles4File::serializeDipole);
  EXPECT_GE(points.allocations, 4);
  EXPECT_GE(points.fileCalls, 4);
}

TEST(ArchiveSweep, SavingAnEmbeddedRecord) {
  const FailurePoints points =
      sweepRecordSaving("saving an embedded record", &CDipoles4File::serializeObsolete20050629);
  EXPECT_GE(points.allocations, 4);
  EXPECT_GE(points.fileCalls, 4);
}

TEST_P(StandAloneRecordSweep, Reading) {
  const FailurePoints points = sweepRecordReading(GetParam(), &CDipoles4File::serializeDipole);
  EXPECT_GE(points.allocations, 5);
  EXPECT_GE(points.fileCalls, 4);
}

INSTANTIATE_TEST_SUITE_P(ArchiveSweep, StandAloneRecordSweep,
                         testing::Values("record_20050629", "record_20061206", "record_20061206_narrow"));

TEST_P(EmbeddedRecordSweep, Reading) {
  const FailurePoints points = sweepRecordReading(GetParam(), &CDipoles4File::serializeObsolete20050629);
  EXPECT_GE(points.allocations, 4);
  EXPECT_GE(points.fileCalls, 4);
}

INSTANTIATE_TEST_SUITE_P(ArchiveSweep, EmbeddedRecordSweep,
                         testing::Values("record_20010101", "record_20011118", "record_20011118_foreign"));
