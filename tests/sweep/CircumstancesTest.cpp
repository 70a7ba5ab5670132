// Claim: texts of any kind go through a set file and the text export unchanged, and a disk or a file that
// refuses is told of and costs nothing that was there.
#include <algorithm>

#include "platform/Utf.h"
#include "tests/support/FailingOs.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Thrown.h"
#include "tests/sweep/SweptSets.h"

namespace {

std::vector<CString> hostileLabels() {
  std::vector<CString> labels;
  for (const char* text :
       {"", " ", "\"", "\"quoted\"", "a,b;c", "line\nfeed", "return\r\nfeed", "tab\tstop", "{}//(cm)",
        "100 %d %s %n", "\xC3\xA4\xE2\x82\xAC", "\xF0\x9F\xA7\xA0 outside the basic plane"}) {
    labels.push_back(fromUtf8(text));
  }
  labels.push_back(CString(static_cast<TCHAR>(0xD800)));  // half a pair
  labels.push_back(CString(_T('x'), 70000));
  return labels;
}

Set labelledSet() {
  auto set = std::make_unique<CDipoleFace9File>();
  for (const CString& label : hostileLabels()) {
    set->addDipole();
    set->setDipoleName(-1, label);
  }
  return set;
}

void expectLabels(const CDipoleFace& set) {
  const std::vector<CString> labels = hostileLabels();
  ASSERT_EQ(set.m_totalDipoles, static_cast<int>(labels.size()));
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    EXPECT_TRUE(set.m_dipoles[slot]->m_label == labels[static_cast<std::size_t>(slot)]) << slot;
  }
}

// UTF-16LE of a text.
std::string bytesOf(const CString& text) {
  std::string bytes;
  for (int i = 0; i < text.GetLength(); ++i) {
    const auto unit = static_cast<unsigned>(text[i]);
    bytes += static_cast<char>(unit & 0xFFU);
    bytes += static_cast<char>(unit >> 8U);
  }
  return bytes;
}

// Saves as a host does, with the archive's own buffer.
int save(CDipoleFace9File& set, const CString& path) {
  CFile file(path, CFile::modeCreate | CFile::modeWrite);
  CArchive archive(&file, CArchive::store);
  const int result = set.serializeDipolesFace(archive);
  archive.Close();
  file.Close();
  return result;
}

}  // namespace

TEST(Labels, OfAnyTextSurviveASetFile) {
  const Set set = labelledSet();
  const Set again = std::make_unique<CDipoleFace9File>();
  EXPECT_EQ(readCurrent(currentBytes(*set), *again), 1);
  expectLabels(*again);
}

TEST(Labels, OfAnyTextSurviveASetFileOf2001) {
  const Set set = labelledSet();
  const Set again = std::make_unique<CDipoleFace9File>();
  EXPECT_EQ(readObsolete(obsoleteBytes(*set), *again), 1);
  expectLabels(*again);
}

TEST(Labels, OfAnyTextAreExportedUnchanged) {
  const TempFolder folder;
  ScriptedOperator user;
  user.answerFiles({folder.path("labels.txt")});
  EXPECT_EQ(labelledSet()->exportExelFile(), 1);
  std::string expected;
  for (const CString& label : hostileLabels()) {
    expected +=
        bytesOf(_T("0  0.00   100.00 100.00 100.00   1.00 0.00 1.00   0.20  1.00  ") + label + _T(" \n"));
  }
  const std::string written = folder.read("labels.txt");
  ASSERT_GE(written.size(), expected.size());
  EXPECT_TRUE(written.substr(written.size() - expected.size()) == expected);
}

TEST(FullDisk, RaisesItsExceptionAndLeavesTheSet) {
  const TempFolder folder;
  const ScriptedOperator user;
  const Set set = sweptSet(3);
  const Lines before = linesOf(*set);
  {
    FailingOs os;
    os.maxWrite = 0;
    EXPECT_EQ(fileCause([&] { save(*set, folder.path("set.bin")); }), CFileException::diskFull);
    EXPECT_EQ(os.openFiles, 0);
  }
  EXPECT_EQ(user.texts(), Texts{});
  EXPECT_EQ(differences(before, linesOf(*set)), Lines{});
  EXPECT_EQ(save(*set, folder.path("set.bin")), 1);  // with room again
  EXPECT_EQ(folder.read("set.bin"), currentBytes(*set));
}

TEST(FullDisk, InsideARecordIsToldOfAndLeavesTheSet) {
  const TempFolder folder;
  const ScriptedOperator user;
  const Set set = labelledSet();
  const Lines before = linesOf(*set);
  FailingOs os(FailingOs::Call::write, 1, CFileException::diskFull, Lasting::fromThenOn);
  CFile file(folder.path("set.bin"), CFile::modeCreate | CFile::modeWrite);
  CArchive archive(&file, CArchive::store);
  EXPECT_EQ(set->serializeDipolesFace(archive), 0);
  EXPECT_EQ(user.texts(), Texts{"3DPtB file could not be opened "});
  EXPECT_EQ(differences(before, linesOf(*set)), Lines{});
  os.stop();
  archive.Abort();
}

TEST(RefusedExport, IsToldOfAndLeavesTheFileThatWasThere) {
  const TempFolder folder;
  const CString path = folder.write("table.txt", "an older table");
  for (const int cause :
       {CFileException::accessDenied, CFileException::sharingViolation, CFileException::lockViolation}) {
    ScriptedOperator user;
    user.answerFiles({path});
    const Set set = sweptSet(2);
    const FailingOs os(FailingOs::Call::open, 1, cause);
    EXPECT_EQ(set->exportExelFile(), 0);
    EXPECT_EQ(user.texts(), Texts{"File could not be opened "});
    EXPECT_EQ(folder.read("table.txt"), "an older table");
  }
}

TEST(RefusedExport, ToAFolderIsToldOf) {
  const TempFolder folder;
  ScriptedOperator user;
  user.answerFiles({folder.makeFolder("table.txt")});
  EXPECT_EQ(sweptSet(2)->exportExelFile(), 0);
  EXPECT_EQ(user.texts(), Texts{"File could not be opened "});
  EXPECT_EQ(folder.names(), Texts{"table.txt"});
}
