// The archive records of a dipole: their bytes, their reading, and what stays as it was.
#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "platform/Utf.h"
#include "record/Dipoles4File.h"
#include "record/Dipoleszq.h"
#include "tests/file/ExactMembers.h"
#include "tests/headmodel/ArchiveRecord.h"
#include "tests/record/DipoleMembers.h"
#include "tests/support/FailingOs.h"
#include "tests/support/MemoryArchive.h"
#include "tests/support/ScriptedOperator.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Thrown.h"

namespace {

using Texts = std::vector<std::string>;

std::string textOf(const ByteWriter& writer) {
  return {writer.bytes().begin(), writer.bytes().end()};
}

std::string aloneBytes(CDipoleszq& dipole) {
  return storedBytes([&](CArchive& archive) { EXPECT_EQ(dipole.serializeDipole(archive), 1); });
}

std::string embeddedBytes(CDipoleszq& dipole) {
  return storedBytes([&](CArchive& archive) { EXPECT_EQ(dipole.serializeObsolete20050629(archive), 1); });
}

// Each reads from bytes and gives the result; `rest` is what stays unread.
int readAlone(const std::string& bytes, CDipoleszq& dipole, std::size_t* rest = nullptr) {
  int result = -1;
  loadBytes(bytes, [&](CArchive& archive) {
    result = dipole.serializeDipole(archive);
    char unread[64];
    const UINT count = archive.Read(unread, sizeof unread);
    if (rest != nullptr) {
      *rest = count;
    }
  });
  return result;
}

int readEmbedded(const std::string& bytes, CDipoleszq& dipole, std::size_t* rest = nullptr) {
  int result = -1;
  loadBytes(bytes, [&](CArchive& archive) {
    result = dipole.serializeObsolete20050629(archive);
    char unread[64];
    const UINT count = archive.Read(unread, sizeof unread);
    if (rest != nullptr) {
      *rest = count;
    }
  });
  return result;
}

// Fields 1 to 17 of 2001, of a dipole with the values of fillMembers.
void appendFields2001(ByteWriter& bytes) {
  bytes.value(1003).value(1004).value(1020.5).value(1021.5).value(1022.5).value(1016.5);
  bytes.value(0xFE0003EDU).value(1).value(1006.5F).value(1006.25F).value(1006.0F);
  bytes.value(1018.0).value(1018.25).value(1018.5).value(1015.0).value(1015.25).value(1015.5);
  bytes.value(1025).value(1023).value(1024).value(1012.5).value(1010.5).value(1019.5);
  bytes.value(1008).value(1007).value(1014).text("spike 13");
}

// The 18 fields of 2005-06-29 likewise.
void appendFields2005(ByteWriter& bytes) {
  bytes.value(1001)
      .value(1002)
      .value(1003)
      .value(1004)
      .value(1020.5)
      .value(0xFE0003EDU)
      .value(1007)
      .value(1008);
  bytes.value(1010.5).value(1019.5).value(1012.5).text("spike 13").value(1014).value(BYTE{1});
  bytes.value(1015.0).value(1015.25).value(1015.5).value(1016.5).value(1018.0).value(1018.25).value(1018.5);
  bytes.value(1021.5).value(1022.5).value(1023).value(1024).value(1025);
  bytes.value(1006.0F).value(1006.25F).value(1006.5F);
}

// A dipole whose values no archive of make_archives.py holds.
CDipoleszq filled() {
  CDipoleszq dipole;
  fillMembers(dipole);
  dipole.m_label = _T("kept");
  dipole.m_latency = -1.0;
  return dipole;
}

// What a read of a file made by make_archives.py changed, beyond what the list beside it says: nothing.
void expectListed(const std::string& name, const CDipoleszq& before, const CDipoleszq& after) {
  const Lines listed = archiveLines(name);
  Lines expected;
  for (const std::string& line : linesOf(before)) {
    const std::string member = line.substr(0, line.find(' ') + 1);
    std::string value = line;
    for (const std::string& found : listed) {
      if (found.compare(0, member.size(), member) == 0) {
        value = found;
      }
    }
    expected.push_back(value);
  }
  EXPECT_EQ(differences(expected, linesOf(after)), Lines{}) << name;
}

class EmbeddedFile : public testing::TestWithParam<const char*> {};
class StandAloneFile : public testing::TestWithParam<const char*> {};

}  // namespace

TEST(DipoleRecord, StandAloneBytesFollowTheLayout) {
  CDipoleszq dipole;
  fillMembers(dipole);
  ByteWriter expected;
  expected.text("DIPOLEZQ").value(20061206);
  appendFields2005(expected);
  expected.value(1011.5).value(1009);
  EXPECT_EQ(aloneBytes(dipole), textOf(expected));
}

TEST(DipoleRecord, StandAloneStartsWithItsMagicAndVersion) {
  CDipoleszq dipole;
  EXPECT_EQ(aloneBytes(dipole).substr(0, 24), std::string("\xFF\xFE\xFF\x08"
                                                          "D\0I\0P\0O\0L\0E\0Z\0Q\0"
                                                          "\x16\x1C\x32\x01",
                                                          24));
}

TEST(DipoleRecord, EmbeddedBytesFollowTheLayout) {
  CDipoleszq dipole;
  fillMembers(dipole);
  ByteWriter expected;
  expected.value(20011118);
  appendFields2001(expected);
  expected.value(1001);
  expected.value(0.0).value(0.0).value(0.0).value(0.0).value(0).value(0).text("");  // the fresh sphere
  EXPECT_EQ(embeddedBytes(dipole), textOf(expected));
}

TEST(DipoleRecord, WritingLeavesTheDipoleAsItIs) {
  CDipoleszq dipole = filled();
  const Lines before = linesOf(dipole);
  aloneBytes(dipole);
  embeddedBytes(dipole);
  EXPECT_EQ(linesOf(dipole), before);
}

TEST_P(EmbeddedFile, IsReadFieldByFieldAndNothingElseChanges) {
  const ScriptedOperator user;
  CDipoleszq dipole = filled();
  const CDipoleszq before = dipole;
  std::size_t rest = 0;
  EXPECT_EQ(readEmbedded(archiveBytes(GetParam()) + "rest", dipole, &rest), 1);
  EXPECT_EQ(rest, 4U);
  expectListed(GetParam(), before, dipole);
  EXPECT_EQ(user.texts(), Texts{});
}

INSTANTIATE_TEST_SUITE_P(DipoleRecord, EmbeddedFile,
                         testing::Values("record_20010101", "record_20010101_code_page",
                                         "record_20010101_odd", "record_20011118", "record_20011118_odd",
                                         "record_20011118_foreign"));

TEST_P(StandAloneFile, IsReadFieldByFieldAndNothingElseChanges) {
  const ScriptedOperator user;
  CDipoleszq dipole = filled();
  const CDipoleszq before = dipole;
  std::size_t rest = 0;
  EXPECT_EQ(readAlone(archiveBytes(GetParam()) + "rest", dipole, &rest), 1);
  EXPECT_EQ(rest, 4U);
  expectListed(GetParam(), before, dipole);
  EXPECT_EQ(user.texts(), Texts{});
}

INSTANTIATE_TEST_SUITE_P(DipoleRecord, StandAloneFile,
                         testing::Values("record_20050629", "record_20050629_odd", "record_20061206",
                                         "record_20061206_odd", "record_20061206_narrow"));

TEST(DipoleRecord, WhatAnotherProgramWroteIsWrittenAgainByteForByte) {
  for (const char* name : {"record_20061206", "record_20061206_odd"}) {
    CDipoleszq dipole;
    readAlone(archiveBytes(name), dipole);
    EXPECT_EQ(aloneBytes(dipole), archiveBytes(name)) << name;
  }
  for (const char* name : {"record_20011118", "record_20011118_odd"}) {
    CDipoleszq dipole;
    readEmbedded(archiveBytes(name), dipole);
    EXPECT_EQ(embeddedBytes(dipole), archiveBytes(name)) << name;
  }
}

TEST(DipoleRecord, AnEightBitLabelIsWidenedFromTheCodePage) {
  CDipoleszq dipole;
  ASSERT_EQ(readEmbedded(archiveBytes("record_20010101_code_page"), dipole), 1);
  EXPECT_EQ(toUtf8(dipole.m_label),
            "Sch\xC3\xA4"
            "del \xE2\x82\xAC");
}

TEST(DipoleRecord, StandAloneKeepsEveryMemberButThoseThatNoVersionCarries) {
  CDipoleszq written;
  fillMembers(written);
  CDipoleszq read;
  ASSERT_EQ(readAlone(aloneBytes(written), read), 1);
  const CDipoleszq fresh;
  CDipoleszq expected = written;
  expected.m_segments = fresh.m_segments;
  expected.m_importTag1 = fresh.m_importTag1;
  expected.m_importTag2 = fresh.m_importTag2;
  expected.m_rawLocation = fresh.m_rawLocation;
  expected.m_rawOrientation = fresh.m_rawOrientation;
  EXPECT_EQ(linesOf(read), linesOf(expected));
}

TEST(DipoleRecord, EmbeddedLosesFourMembersMore) {
  CDipoleszq written;
  fillMembers(written);
  CDipoleszq read;
  ASSERT_EQ(readEmbedded(embeddedBytes(written), read), 1);
  const CDipoleszq fresh;
  CDipoleszq expected = written;
  expected.m_listItemId = fresh.m_listItemId;
  expected.m_selected = fresh.m_selected;
  expected.m_extraValue = fresh.m_extraValue;
  expected.m_extraFlag = fresh.m_extraFlag;
  expected.m_segments = fresh.m_segments;
  expected.m_importTag1 = fresh.m_importTag1;
  expected.m_importTag2 = fresh.m_importTag2;
  expected.m_rawLocation = fresh.m_rawLocation;
  expected.m_rawOrientation = fresh.m_rawOrientation;
  EXPECT_EQ(linesOf(read), linesOf(expected));
}

TEST(DipoleRecord, LabelsOfEveryLengthFormSurvive) {
  for (const int length : {0, 1, 254, 255, 256, 65533, 65534, 65535, 70000}) {
    CDipoleszq written;
    written.m_label = CString(_T('x'), length);
    if (length > 1) {  // a character beyond the basic plane, and the halves of one in the wrong order
      written.m_label.SetAt(0, static_cast<TCHAR>(0xDDE0));
      written.m_label.SetAt(length - 1, static_cast<TCHAR>(0xD83E));
    }
    for (const bool alone : {true, false}) {
      CDipoleszq read;
      ASSERT_EQ(alone ? readAlone(aloneBytes(written), read) : readEmbedded(embeddedBytes(written), read), 1);
      ASSERT_EQ(read.m_label.GetLength(), length);
      EXPECT_TRUE(read.m_label == written.m_label) << length;
    }
  }
}

TEST(DipoleRecord, AnotherMagicGivesZeroSilentlyBehindTheText) {
  const ScriptedOperator user;
  CDipoleszq dipole = filled();
  const Lines before = linesOf(dipole);
  std::size_t rest = 0;
  EXPECT_EQ(readAlone(textOf(ByteWriter().text("DIPOLEZ").value(20061206)), dipole, &rest), 0);
  EXPECT_EQ(rest, 4U);
  EXPECT_EQ(user.texts(), Texts{});
  EXPECT_EQ(linesOf(dipole), before);
}

TEST(DipoleRecord, AnotherVersionGivesZeroAfterAMessage) {
  for (const int version : {20011118, 20010101, 0, 1, -1, 20061207}) {
    const ScriptedOperator user;
    CDipoleszq dipole = filled();
    const Lines before = linesOf(dipole);
    std::size_t rest = 0;
    EXPECT_EQ(readAlone(textOf(ByteWriter().text("DIPOLEZQ").value(version).text("")), dipole, &rest), 0);
    EXPECT_EQ(rest, 4U);
    EXPECT_EQ(user.messages, (std::vector<ScriptedOperator::Message>{{"Wrong file format!", MB_OK}}));
    EXPECT_EQ(linesOf(dipole), before);
  }
}

TEST(DipoleRecord, AHiddenDipoleOf2001IsHiddenAndKeepsItsNumber) {
  CDipoleszq dipole;
  dipole.m_number = 42;
  EXPECT_EQ(readEmbedded(archiveBytes("record_20010101"), dipole), 1);
  EXPECT_EQ(dipole.m_show, 0);
  EXPECT_EQ(dipole.m_number, 42);
  EXPECT_EQ(toUtf8(dipole.m_label), "dipole A");
}

TEST(DipoleRecord, ARecordThatBreaksOffAnywhereRaisesTheArchiveException) {
  for (const char* name : {"record_20050629", "record_20061206", "record_20061206_narrow"}) {
    const std::string whole = archiveBytes(name);
    for (std::size_t length = 0; length < whole.size(); ++length) {
      CDipoleszq dipole;
      EXPECT_EQ(archiveCause([&] { readAlone(whole.substr(0, length), dipole); }),
                CArchiveException::endOfFile)
          << name << length;
    }
  }
  for (const char* name : {"record_20010101", "record_20011118"}) {
    const std::string whole = archiveBytes(name);
    for (std::size_t length = 0; length < whole.size(); ++length) {
      const ScriptedOperator user;
      CDipoleszq dipole;
      EXPECT_EQ(archiveCause([&] { readEmbedded(whole.substr(0, length), dipole); }),
                CArchiveException::endOfFile)
          << name << length;
      EXPECT_EQ(user.texts(), Texts{});
    }
  }
}

TEST(DipoleRecord, AFileFaultInAnEmbeddedRecordIsReportedAndWhatWasReadStays) {
  const TempFolder folder;
  const CString path = folder.write("record.bin", archiveBytes("record_20011118"));
  const ScriptedOperator user;
  FailingOs os;
  CFile file(path, CFile::modeRead);
  CArchive archive(&file, CArchive::load, 128);
  os.failAt(FailingOs::Call::read, 2, CFileException::hardIO);
  CDipoleszq dipole;
  EXPECT_EQ(dipole.serializeObsolete20050629(archive), 0);
  EXPECT_TRUE(os.failed);
  EXPECT_EQ(user.texts(), Texts{"3DPtB file could not be opened "});
  EXPECT_EQ(dipole.m_show, 1001);
  EXPECT_EQ(toUtf8(dipole.m_label), "Non");
  os.stop();
  archive.Abort();
}

TEST(DipoleRecord, AFileFaultInAStandAloneRecordPasses) {
  const TempFolder folder;
  const CString path = folder.write("record.bin", archiveBytes("record_20061206"));
  const ScriptedOperator user;
  FailingOs os;
  CFile file(path, CFile::modeRead);
  CArchive archive(&file, CArchive::load, 128);
  os.failAt(FailingOs::Call::read, 2, CFileException::hardIO);
  CDipoleszq dipole;
  EXPECT_EQ(fileCause([&] { dipole.serializeDipole(archive); }), CFileException::hardIO);
  EXPECT_EQ(user.texts(), Texts{});
  os.stop();
  archive.Abort();
}

TEST(DipoleRecord, AFullDiskIsReportedWhenAnEmbeddedRecordIsWritten) {
  const TempFolder folder;
  const ScriptedOperator user;
  FailingOs os;
  CFile file(folder.path("record.bin"), CFile::modeCreate | CFile::modeWrite);
  CArchive archive(&file, CArchive::store, 128);
  os.failAt(FailingOs::Call::write, 1, CFileException::diskFull);
  CDipoleszq dipole;
  EXPECT_EQ(dipole.serializeObsolete20050629(archive), 0);
  EXPECT_EQ(user.texts(), Texts{"3DPtB file could not be opened "});
  os.stop();
  archive.Abort();
}
