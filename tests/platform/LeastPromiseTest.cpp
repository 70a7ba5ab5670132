// Where the least is promised the MFC names do no more than MFC's documentation says, line by line of what
// docs/platform.md lists. What leans on more is found that way: see the last test.
#include <afxdlgs.h>

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/LeastPromise.h"
#include "tests/support/FailingNew.h"
#include "tests/support/MemoryArchive.h"
#include "tests/support/Promising.h"
#include "tests/support/ScriptedOperator.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Thrown.h"

namespace {

class LeastPromise : public testing::Test {
 protected:
  const Promising m_promising{Promising::least};
};

using LeastPromiseDeathTest = LeastPromise;

std::vector<std::string> found(const CString& pattern) {
  std::vector<std::string> names;
  CFileFind find;
  BOOL more = find.FindFile(pattern);
  while (more) {
    more = find.FindNextFile();
    names.push_back(toUtf8(find.GetFileName()));
  }
  return names;
}

CString rootOf(const CString& pattern) {
  CFileFind find;
  EXPECT_TRUE(find.FindFile(pattern));
  find.FindNextFile();
  return find.GetRoot();
}

// Counts what an archive hands over at a time.
class Calls : public CMemFile {
 public:
  void Write(const void* buffer, UINT count) override {
    largest = (std::max)(largest, count);
    CMemFile::Write(buffer, count);
  }
  UINT largest = 0;
};

UINT largestWrite() {
  Calls file;
  CArchive archive(&file, CArchive::store);
  for (int i = 0; i < 100000; ++i) {
    archive << BYTE{1};
  }
  archive.Close();
  return file.largest;
}

TEST(Promising, IsTurnedAndTurnedBack) {
  const bool before = isLeastPromised();
  {
    const Promising least(Promising::least);
    EXPECT_TRUE(isLeastPromised());
    const Promising more(Promising::more);
    EXPECT_FALSE(isLeastPromised());
  }
  EXPECT_EQ(isLeastPromised(), before);
}

TEST_F(LeastPromise, ArchivesMoveFourKibibytesAtATime) {
  EXPECT_EQ(largestWrite(), 4096U);
  const Promising more(Promising::more);
  EXPECT_EQ(largestWrite(), 65536U);
}

TEST_F(LeastPromise, ArchiveThatEndsByAnExceptionWritesHalfARecord) {
  CMemFile file;
  EXPECT_EQ(fileCause([&] {
              CArchive archive(&file, CArchive::store);
              archive << BYTE{1};
              AfxThrowFileException(CFileException::hardIO);
            }),
            CFileException::hardIO);
  EXPECT_EQ(file.GetLength(), 1U);
}

TEST_F(LeastPromise, LoadingArchiveLeavesTheFileBehindItsBuffer) {
  std::string bytes = "abcdef";
  CMemFile file(reinterpret_cast<BYTE*>(bytes.data()), 6);
  CArchive archive(&file, CArchive::load);
  BYTE byte = 0;
  archive >> byte;
  archive.Flush();
  EXPECT_EQ(file.GetPosition(), 6U);
  archive >> byte;
  EXPECT_EQ(byte, 'b');
  archive.Close();
  EXPECT_EQ(file.GetPosition(), 6U);
}

TEST_F(LeastPromise, ValueThatCannotBeReadIsSpoilt) {
  double number = 1.5;
  CString text = _T("before");
  EXPECT_EQ(archiveCause([&] { loadBytes("abc", [&](CArchive& archive) { archive >> number; }); }),
            CArchiveException::endOfFile);
  EXPECT_NE(number, 1.5);
  EXPECT_EQ(archiveCause([&] { loadBytes("\x05", [&](CArchive& archive) { archive >> text; }); }),
            CArchiveException::endOfFile);
  EXPECT_NE(toUtf8(text), "before");
}

TEST_F(LeastPromise, TextThatClaimsGigabytesTakesAllMemory) {
  CString text;
  EXPECT_TRUE(throwsMemoryException([&] {
    loadBytes(std::string("\xFF\xFF\xFF\xFF\xFF\xFF\x7F", 7), [&](CArchive& archive) { archive >> text; });
  }));
}

TEST_F(LeastPromise, MemoryThatRunsOutIsTheFrameworksException) {
  const CString longText(_T('x'), 1000);
  EXPECT_TRUE(throwsMemoryException([&] {
    const FailingNew memory(1);
    const CString copy = longText + _T("y");
  }));
}

TEST_F(LeastPromise, ClosedFileRefusesToBeClosedOrFlushed) {
  CFile file;
  EXPECT_EQ(fileCause([&] { file.Close(); }), CFileException::invalidFile);
  EXPECT_EQ(fileCause([&] { file.Flush(); }), CFileException::invalidFile);
  file.Abort();
}

TEST_F(LeastPromise, PositionMovesWithTheLength) {
  const TempFolder folder;
  CFile file(folder.write("x", "abcdef"), CFile::modeReadWrite);
  file.SetLength(4);
  EXPECT_EQ(file.GetPosition(), 4U);
}

TEST_F(LeastPromise, FolderAndFileInTheWayHaveNoCause) {
  const TempFolder folder;
  CFile file;
  CFileException error;
  EXPECT_FALSE(file.Open(folder.makeFolder("sub"), CFile::modeRead, &error));
  EXPECT_EQ(error.m_cause, CFileException::genericException);
  const CString one = folder.write("one", "1");
  EXPECT_EQ(fileCause([&] { CFile::Rename(one, folder.write("two", "2")); }),
            CFileException::genericException);
  EXPECT_EQ(folder.read("two"), "2");
}

TEST_F(LeastPromise, BytesThatNobodyWroteAreSpoilt) {
  CMemFile file;
  file.Write("ab", 2);
  file.SetLength(3);
  file.SeekToBegin();
  std::array<BYTE, 4> read = {};
  EXPECT_EQ(file.Read(read.data(), 4), 3U);
  EXPECT_NE(read[2], 0);
  EXPECT_NE(read[3], 0);  // behind what was read
}

TEST_F(LeastPromise, SearchHasNoOrderAndMatchesShortNames) {
  const TempFolder folder;
  folder.write("a.dip", "");
  folder.write("b.dipx", "");
  EXPECT_EQ(found(folder.path("*.dip")), (std::vector<std::string>{"b.dipx", "a.dip"}));
}

TEST_F(LeastPromise, RootIsThePathOfThePatternWithoutItsSeparator) {
  const TempFolder folder;
  folder.write("a.dip", "");
  EXPECT_EQ(toUtf8(rootOf(folder.path("*.dip"))), folder.pathUtf8());
  TCHAR before[4096];
  ASSERT_NE(GetCurrentDirectory(4096, before), 0U);
  ASSERT_TRUE(SetCurrentDirectory(folder.path()));
  EXPECT_TRUE(rootOf(_T("*.dip")).IsEmpty());
  ASSERT_TRUE(SetCurrentDirectory(before));
}

TEST_F(LeastPromise, DialogThatChoseNothingDoesNotTellWhy) {
  ScriptedOperator someone;
  someone.answerFilesUtf8({"/data/" + std::string(300, 'x')});
  CFileDialog dialog(TRUE, nullptr, _T("offer"));
  EXPECT_EQ(dialog.DoModal(), IDCANCEL);
  EXPECT_NE(CommDlgExtendedError(), 0U);
  EXPECT_NE(CommDlgExtendedError(), DWORD{FNERR_BUFFERTOOSMALL});
  EXPECT_NE(toUtf8(CString(dialog.m_ofn.lpstrFile)), "offer");
  someone.cancelColor();
  CColorDialog colors(RGB(1, 2, 3));
  EXPECT_EQ(colors.DoModal(), IDCANCEL);
  EXPECT_NE(colors.GetColor(), RGB(1, 2, 3));
}

TEST_F(LeastPromise, PathOfSeveralFilesIsTheirFolder) {
  ScriptedOperator someone;
  const TempFolder folder;
  someone.answerFiles({folder.path("a.dip"), folder.path("b.dip")});
  std::vector<TCHAR> buffer(4096);
  CFileDialog dialog(TRUE, nullptr, nullptr, OFN_ALLOWMULTISELECT, _T("A|*.dip|B|*.txt||"));
  dialog.m_ofn.lpstrFile = buffer.data();
  dialog.m_ofn.nMaxFile = 4096;
  dialog.m_ofn.nFilterIndex = 2;
  EXPECT_EQ(dialog.DoModal(), IDOK);
  EXPECT_EQ(toUtf8(dialog.GetPathName()), folder.pathUtf8());
  EXPECT_EQ(dialog.m_ofn.nFilterIndex, 2U);
}

TEST_F(LeastPromise, ExceptionsHaveNoText) {
  EXPECT_EQ(messageOf(CFileException(CFileException::fileNotFound, 2, _T("x"))), "");
  EXPECT_EQ(messageOf(CMemoryException()), "");
}

TEST_F(LeastPromise, TextBufferIsSpoiltWhereItGrows) {
  CString text = _T("ab");
  EXPECT_NE(text.GetBuffer(8)[0], _T('a'));
  text.ReleaseBuffer(1);
  text = _T("ab");
  const LPTSTR grown = text.GetBufferSetLength(3);
  EXPECT_EQ(grown[1], _T('b'));
  EXPECT_NE(grown[2], 0);
}

TEST_F(LeastPromise, LettersBeyondAsciiMayHaveACase) {
  EXPECT_EQ(CString(_T("\u00C9")).CompareNoCase(_T("\u00E9")), 0);
  EXPECT_EQ(toUtf8(CString(_T("a\u00E9\u00F7")).MakeUpper()), "AÉ÷");
  EXPECT_EQ(toUtf8(CString(_T("A\u00C9\u00D7")).MakeLower()), "aé×");
}

TEST_F(LeastPromise, NewBitmapIsSpoiltAndSelectingGivesATemporaryObject) {
  CBitmap bitmap;
  ASSERT_TRUE(bitmap.CreateBitmap(1, 1, 1, 32, nullptr));
  CDC dc;
  ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
  CBitmap* const before = dc.SelectObject(&bitmap);
  ASSERT_NE(before, nullptr);
  EXPECT_NE(dc.GetPixel(0, 0), RGB(0, 0, 0));
  CBitmap* const again = dc.SelectObject(before);
  EXPECT_NE(again, nullptr);
  EXPECT_NE(again, &bitmap);
}

#if GTEST_HAS_DEATH_TEST

TEST_F(LeastPromiseDeathTest, WhatIsNotAllowedEndsTheProgram) {
  EXPECT_DEATH(
      {
        CFileFind find;
        find.FindFile(_T("."));
        find.GetFileName();
      },
      "before FindNextFile");
  EXPECT_DEATH(static_cast<void>(CString(_T("a"))[2]), "an index outside a text");
  EXPECT_DEATH(CFileDialog(TRUE).GetStartPosition(), "only one can be chosen");
  const TempFolder folder;
  const CString path = folder.write("x", "");
  EXPECT_DEATH(
      {
        CFile file(path, CFile::modeRead);
        file.Open(path, CFile::modeRead);
      },
      "open already");
}

TEST_F(LeastPromiseDeathTest, NoApplicationObjectIsMadeForAProgramThatHasNone) {
  EXPECT_DEATH(
      {
        const ScriptedOperator user;
        AfxGetApp()->~CWinApp();  // that of the tests
        AfxMessageBox(_T("text"));
      },
      "a message without an application object");
}

#endif

// The use of more than is promised: a path put together from GetRoot as if a separator closed it.
CString besideTheFirst(const CString& pattern, LPCTSTR name) {
  return rootOf(pattern) + name;
}

TEST_F(LeastPromise, FindsWhatLeansOnTheSeparatorOfARoot) {
  const TempFolder folder;
  folder.write("a.dip", "");
  CFile file;
  EXPECT_FALSE(file.Open(besideTheFirst(folder.path("*.dip"), _T("a.dip")), CFile::modeRead));
  const Promising more(Promising::more);
  EXPECT_TRUE(file.Open(besideTheFirst(folder.path("*.dip"), _T("a.dip")), CFile::modeRead));
}

}  // namespace
