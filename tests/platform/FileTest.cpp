// CFile does what it says on a real disk, and says what went wrong when the disk does not.
#include <afx.h>

#include <gtest/gtest.h>

#include "tests/support/FailingOs.h"
#include "tests/support/Promising.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Thrown.h"

namespace {

using Call = FailingOs::Call;

constexpr UINT createNew = CFile::modeCreate | CFile::modeWrite;

std::string readAll(CFile& file) {
  std::string bytes(static_cast<std::size_t>(file.GetLength()), '\0');
  file.SeekToBegin();
  EXPECT_EQ(file.Read(bytes.data(), static_cast<UINT>(bytes.size())), bytes.size());
  return bytes;
}

TEST(File, WritesAndReadsBytes) {
  const TempFolder folder;
  const std::string bytes("a\0\r\n\x1A\xFF", 6);
  CFile out(folder.path("x"), createNew);
  out.Write(bytes.data(), 6);
  EXPECT_EQ(out.GetPosition(), 6U);
  EXPECT_EQ(out.GetLength(), 6U);
  out.Close();
  EXPECT_EQ(folder.read("x"), bytes);

  CFile in(folder.path("x"), CFile::modeRead | CFile::shareDenyWrite);
  char buffer[10] = {};
  EXPECT_EQ(in.Read(buffer, 4), 4U);
  EXPECT_EQ(in.GetPosition(), 4U);
  EXPECT_EQ(in.Read(buffer, 10), 2U);
  EXPECT_EQ(buffer[1], '\xFF');
  EXPECT_EQ(in.Read(buffer, 10), 0U);
}

TEST(File, OpensForReadingAndWriting) {
  const TempFolder folder;
  folder.write("x", "abc");
  CFile file(folder.path("x"), CFile::modeReadWrite);
  EXPECT_EQ(readAll(file), "abc");
  file.Seek(1, CFile::begin);
  file.Write("X", 1);
  EXPECT_EQ(readAll(file), "aXc");
}

TEST(File, CreateEmptiesUnlessTold) {
  const TempFolder folder;
  folder.write("x", "abc");
  {
    CFile kept(folder.path("x"), CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite);
    EXPECT_EQ(kept.GetLength(), 3U);
  }
  {
    const CFile emptied(folder.path("x"), createNew);
    EXPECT_EQ(emptied.GetLength(), 0U);
  }
  const CFile made(folder.path("new"), CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite);
  EXPECT_TRUE(folder.has("new"));
}

TEST(File, SeeksFromEveryPlace) {
  const TempFolder folder;
  folder.write("x", "0123456789");
  CFile file(folder.path("x"), CFile::modeRead);
  EXPECT_EQ(file.Seek(4, CFile::begin), 4U);
  EXPECT_EQ(file.Seek(-1, CFile::current), 3U);
  EXPECT_EQ(file.Seek(-2, CFile::end), 8U);
  EXPECT_EQ(file.SeekToEnd(), 10U);
  EXPECT_EQ(file.Seek(5, CFile::end), 15U);
  char byte = 0;
  EXPECT_EQ(file.Read(&byte, 1), 0U);
  EXPECT_EQ(fileCause([&] { file.Seek(-11, CFile::end); }), CFileException::badSeek);
  file.SeekToBegin();
  EXPECT_EQ(file.GetPosition(), 0U);
}

TEST(File, LengthIsCutAndGrownWithZeros) {
  const TempFolder folder;
  folder.write("x", "abcdef");
  CFile file(folder.path("x"), CFile::modeReadWrite);
  file.SetLength(2);
  EXPECT_EQ(readAll(file), "ab");
  file.SetLength(4);
  EXPECT_EQ(readAll(file), std::string("ab\0\0", 4));
}

TEST(File, KnowsItsNameAndAbsolutePath) {
  const TempFolder folder;
  folder.write("\xC3\xA9 b.dip", "abc");
  CFile file(folder.path("\xC3\xA9 b.dip"), CFile::modeRead);
  EXPECT_EQ(toUtf8(file.GetFileName()), "\xC3\xA9 b.dip");
  EXPECT_EQ(toUtf8(file.GetFilePath()), folder.pathUtf8("\xC3\xA9 b.dip"));
  file.Close();
  EXPECT_TRUE(file.GetFilePath().IsEmpty());
  EXPECT_TRUE(file.GetFileName().IsEmpty());
}

TEST(File, RelativePathsAreFromTheCurrentDirectory) {
  const TempFolder folder;
  TCHAR before[4096];
  ASSERT_NE(GetCurrentDirectory(4096, before), 0U);
  folder.write("x", "abc");
  ASSERT_TRUE(SetCurrentDirectory(folder.path()));
  CFile file;
  EXPECT_TRUE(file.Open(_T("x"), CFile::modeRead));
  EXPECT_EQ(toUtf8(file.GetFilePath()), folder.pathUtf8("x"));
  ASSERT_TRUE(SetCurrentDirectory(before));
  EXPECT_EQ(toUtf8(file.GetFilePath()), folder.pathUtf8("x"));
}

TEST(File, OpenTellsWhyItFailsAndNeverThrows) {
  const Promising promising(Promising::more);
  const TempFolder folder;
  folder.makeFolder("sub");
  CFile file;
  CFileException error;
  EXPECT_FALSE(file.Open(folder.path("no"), CFile::modeRead, &error));
  EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
  EXPECT_NE(error.m_lOsError, -1);
  EXPECT_EQ(toUtf8(error.m_strFileName), folder.pathUtf8("no"));
  EXPECT_EQ(messageOf(error), folder.pathUtf8("no") + " was not found.");
  EXPECT_FALSE(file.Open(folder.path("no/such"), CFile::modeRead, &error));
  EXPECT_EQ(error.m_cause, CFileException::badPath);
  EXPECT_FALSE(file.Open(folder.path("no/such"), createNew, &error));
  EXPECT_EQ(error.m_cause, CFileException::badPath);
  EXPECT_FALSE(file.Open(folder.path("sub"), CFile::modeRead, &error));
  EXPECT_EQ(error.m_cause, CFileException::accessDenied);
  EXPECT_FALSE(file.Open(folder.path("sub"), createNew, &error));
  EXPECT_EQ(error.m_cause, CFileException::accessDenied);
  EXPECT_FALSE(file.Open(folder.path("no"), CFile::modeRead));
}

TEST(File, OpenLeavesTheExceptionAloneOnSuccess) {
  const TempFolder folder;
  folder.write("x", "abc");
  CFileException error(CFileException::hardIO, 7, _T("other"));
  CFile file;
  EXPECT_TRUE(file.Open(folder.path("x"), CFile::modeRead, &error));
  EXPECT_EQ(error.m_cause, CFileException::hardIO);
  EXPECT_EQ(toUtf8(error.m_strFileName), "other");
}

TEST(File, ConstructorThrows) {
  const TempFolder folder;
  EXPECT_EQ(fileCause([&] { const CFile file(folder.path("no"), CFile::modeRead); }),
            CFileException::fileNotFound);
}

TEST(File, OpeningAnotherClosesTheFirst) {
  const Promising promising(Promising::more);
  const TempFolder folder;
  folder.write("x", "abc");
  folder.write("y", "de");
  CFile file(folder.path("x"), CFile::modeRead);
  FailingOs os(Call::close, 99, 0);
  EXPECT_TRUE(file.Open(folder.path("y"), CFile::modeRead));
  EXPECT_EQ(os.calls, 1);
  EXPECT_EQ(file.GetLength(), 2U);
}

TEST(File, ClosedFileRefusesEverythingButClosing) {
  const Promising promising(Promising::more);
  CFile file;
  char byte = 0;
  EXPECT_EQ(fileCause([&] { file.Read(&byte, 1); }), CFileException::invalidFile);
  EXPECT_EQ(fileCause([&] { file.Write(&byte, 1); }), CFileException::invalidFile);
  EXPECT_EQ(fileCause([&] { file.SeekToBegin(); }), CFileException::invalidFile);
  EXPECT_EQ(fileCause([&] { static_cast<void>(file.GetPosition()); }), CFileException::invalidFile);
  EXPECT_EQ(fileCause([&] { static_cast<void>(file.GetLength()); }), CFileException::invalidFile);
  EXPECT_EQ(fileCause([&] { file.SetLength(1); }), CFileException::invalidFile);
  EXPECT_EQ(fileCause([&] { file.Flush(); }), nothingThrown);
  EXPECT_EQ(fileCause([&] { file.Close(); }), nothingThrown);
  file.Abort();
}

TEST(File, ReadingWhatIsOpenForWritingFails) {
  const TempFolder folder;
  CFile file(folder.path("x"), createNew);
  char byte = 0;
  EXPECT_NE(fileCause([&] { file.Read(&byte, 1); }), nothingThrown);
  file.Close();
  file.Open(folder.path("x"), CFile::modeRead);
  EXPECT_NE(fileCause([&] { file.Write(&byte, 1); }), nothingThrown);
}

TEST(File, RemovesAndRenames) {
  const Promising promising(Promising::more);
  const TempFolder folder;
  folder.write("x", "abc");
  folder.makeFolder("sub");
  CFile::Rename(folder.path("x"), folder.path("y"));
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"sub", "y"}));
  folder.write("z", "other");
  EXPECT_EQ(fileCause([&] { CFile::Rename(folder.path("y"), folder.path("z")); }),
            CFileException::accessDenied);
  EXPECT_EQ(folder.read("z"), "other");
  EXPECT_EQ(fileCause([&] { CFile::Rename(folder.path("no"), folder.path("w")); }),
            CFileException::fileNotFound);
  EXPECT_EQ(fileCause([&] { CFile::Rename(folder.path("z"), folder.path("no/z")); }),
            CFileException::badPath);
  CFile::Remove(folder.path("y"));
  EXPECT_FALSE(folder.has("y"));
  EXPECT_EQ(fileCause([&] { CFile::Remove(folder.path("y")); }), CFileException::fileNotFound);
  EXPECT_EQ(fileCause([&] { CFile::Remove(folder.path("sub")); }), CFileException::accessDenied);
  EXPECT_TRUE(folder.has("sub"));
}

// Every system call fails in turn; the cause and the file's name arrive.
TEST(File, FailuresOfTheSystemArrive) {
  const Promising promising(Promising::more);
  const TempFolder folder;
  folder.write("x", "abc");
  char byte = 0;
  const auto failing = [&](Call kind, auto use) {
    CFile file(folder.path("x"), CFile::modeReadWrite);
    FailingOs os(kind, 1, CFileException::hardIO);
    try {
      use(file);
    } catch (CFileException* error) {
      EXPECT_EQ(error->m_cause, CFileException::hardIO);
      EXPECT_EQ(error->m_lOsError, 12345);
      EXPECT_EQ(toUtf8(error->m_strFileName), folder.pathUtf8("x"));
      error->Delete();
      return true;
    }
    return false;
  };
  EXPECT_TRUE(failing(Call::read, [&](CFile& file) { file.Read(&byte, 1); }));
  EXPECT_TRUE(failing(Call::write, [&](CFile& file) { file.Write(&byte, 1); }));
  EXPECT_TRUE(failing(Call::seek, [&](CFile& file) { file.SeekToEnd(); }));
  EXPECT_TRUE(failing(Call::seek, [&](CFile& file) { static_cast<void>(file.GetPosition()); }));
  EXPECT_TRUE(failing(Call::length, [&](CFile& file) { static_cast<void>(file.GetLength()); }));
  EXPECT_TRUE(failing(Call::setLength, [&](CFile& file) { file.SetLength(1); }));
  EXPECT_TRUE(failing(Call::flush, [&](CFile& file) { file.Flush(); }));
  EXPECT_TRUE(failing(Call::close, [&](CFile& file) { file.Close(); }));
  EXPECT_TRUE(failing(Call::remove, [&](CFile&) { CFile::Remove(folder.path("x")); }));
  EXPECT_TRUE(failing(Call::rename, [&](CFile&) { CFile::Rename(folder.path("x"), folder.path("y")); }));
}

TEST(File, FailureToOpenArrives) {
  const TempFolder folder;
  folder.write("x", "abc");
  FailingOs os(Call::open, 1, CFileException::tooManyOpenFiles);
  CFile file;
  CFileException error;
  EXPECT_FALSE(file.Open(folder.path("x"), CFile::modeRead, &error));
  EXPECT_EQ(error.m_cause, CFileException::tooManyOpenFiles);
  EXPECT_TRUE(file.Open(folder.path("x"), CFile::modeRead, &error));
}

TEST(File, ShortCallsAreContinued) {
  const TempFolder folder;
  FailingOs os;
  os.maxWrite = 3;
  os.maxRead = 2;
  CFile file(folder.path("x"), CFile::modeCreate | CFile::modeReadWrite);
  file.Write("0123456789", 10);
  EXPECT_EQ(readAll(file), "0123456789");
}

TEST(File, DiskThatTakesNothingMoreIsFull) {
  const TempFolder folder;
  FailingOs os;
  os.maxWrite = 0;
  CFile file(folder.path("x"), createNew);
  EXPECT_EQ(fileCause([&] { file.Write("abc", 3); }), CFileException::diskFull);
}

TEST(File, AbortAndDestructorSwallowFailures) {
  const TempFolder folder;
  FailingOs os;
  CFile file(folder.path("x"), createNew);
  os.failAt(Call::close, 1, CFileException::hardIO);
  EXPECT_EQ(fileCause([&] { file.Abort(); }), nothingThrown);
  EXPECT_TRUE(os.failed);
  os.failAt(Call::close, 1, CFileException::hardIO);
  EXPECT_EQ(fileCause([&] { const CFile other(folder.path("y"), createNew); }), nothingThrown);
  EXPECT_TRUE(os.failed);
}

TEST(CurrentDirectory, IsSetAndRead) {
  const TempFolder folder;
  TCHAR before[4096];
  ASSERT_NE(GetCurrentDirectory(4096, before), 0U);
  const CString sub = folder.makeFolder("sub");
  EXPECT_TRUE(SetCurrentDirectory(sub));
  TCHAR now[4096];
  EXPECT_EQ(GetCurrentDirectory(4096, now), static_cast<DWORD>(sub.GetLength()));
  EXPECT_EQ(CString(now), sub);
  TCHAR small[2] = {_T('?'), _T('?')};
  EXPECT_EQ(GetCurrentDirectory(2, small), static_cast<DWORD>(sub.GetLength() + 1));
  EXPECT_FALSE(SetCurrentDirectory(folder.path("no")));
  EXPECT_TRUE(SetCurrentDirectory(before));
}

}  // namespace
