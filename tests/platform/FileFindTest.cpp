// CFileFind lists what a pattern names, in order, and takes the last file as valid.
#include <afx.h>

#include <gtest/gtest.h>

#include "platform/Os.h"
#include "tests/support/FailingOs.h"
#include "tests/support/Promising.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Thrown.h"

namespace {

using Names = std::vector<std::string>;

Names found(const CString& pattern) {
  Names names;
  CFileFind find;
  BOOL more = find.FindFile(pattern);
  while (more) {
    more = find.FindNextFile();
    names.push_back(toUtf8(find.GetFileName()));
  }
  return names;
}

std::string closedFolder(const TempFolder& folder) {
  return folder.pathUtf8("");
}

TEST(FileFind, ListsInOrderIgnoringCase) {
  const Promising promising(Promising::more);
  const TempFolder folder;
  for (const char* name : {"b.dip", "A.dip", "c.dip", "_.dip", "a0.dip", "B0.dip"}) {
    folder.write(name, "");
  }
  EXPECT_EQ(found(folder.path("*.dip")), (Names{"A.dip", "a0.dip", "b.dip", "B0.dip", "c.dip", "_.dip"}));
}

TEST(FileFind, PatternsIgnoreCaseAndMatchWhole) {
  const Promising promising(Promising::more);
  const TempFolder folder;
  for (const char* name : {"x.DIP", "y.dip", "z.dipx", "xdip", "xy.dip", "\xC3\x89.dip"}) {
    folder.write(name, "");
  }
  EXPECT_EQ(found(folder.path("*.dip")), (Names{"x.DIP", "xy.dip", "y.dip", "\xC3\x89.dip"}));
  EXPECT_EQ(found(folder.path("?.dip")), (Names{"x.DIP", "y.dip", "\xC3\x89.dip"}));
  EXPECT_EQ(found(folder.path("\xC3\xA9.d*")), (Names{"\xC3\x89.dip"}));
  EXPECT_EQ(found(folder.path("x*i*p")), (Names{"x.DIP", "xdip", "xy.dip"}));
  EXPECT_EQ(found(folder.path("*.txt")), Names());
}

TEST(FileFind, EveryNameIncludesFoldersAndDots) {
  const Promising promising(Promising::more);
  const TempFolder folder;
  folder.write("noext", "12345");
  folder.makeFolder("sub.d");
  for (const char* pattern : {"*", "*.*"}) {
    EXPECT_EQ(found(folder.path(pattern)), (Names{".", "..", "noext", "sub.d"})) << pattern;
  }
  CFileFind find;
  ASSERT_TRUE(find.FindFile(folder.path("*.*")));
  EXPECT_TRUE(find.FindNextFile());
  EXPECT_TRUE(find.IsDots());
  EXPECT_TRUE(find.IsDirectory());
  EXPECT_TRUE(find.FindNextFile());
  EXPECT_TRUE(find.IsDots());
  EXPECT_TRUE(find.FindNextFile());
  EXPECT_FALSE(find.IsDots());
  EXPECT_FALSE(find.IsDirectory());
  EXPECT_EQ(find.GetLength(), 5U);
  EXPECT_FALSE(find.FindNextFile());
  EXPECT_TRUE(find.IsDirectory());
  EXPECT_FALSE(find.IsDots());
  EXPECT_EQ(toUtf8(find.GetFileName()), "sub.d");
}

TEST(FileFind, GettersTellTheParts) {
  const Promising promising(Promising::more);
  const TempFolder folder;
  folder.write("a.b.dip", "123");
  CFileFind find;
  ASSERT_TRUE(find.FindFile(folder.path("*.dip")));
  EXPECT_FALSE(find.FindNextFile());
  EXPECT_EQ(toUtf8(find.GetFileName()), "a.b.dip");
  EXPECT_EQ(toUtf8(find.GetFileTitle()), "a.b");
  EXPECT_EQ(toUtf8(find.GetFilePath()), folder.pathUtf8("a.b.dip"));
  EXPECT_EQ(toUtf8(find.GetRoot()), closedFolder(folder));
  EXPECT_EQ(find.GetLength(), 3U);
}

TEST(FileFind, BeforeTheFirstStepNothingIsCurrent) {
  const Promising promising(Promising::more);
  const TempFolder folder;
  folder.write("a.dip", "123");
  CFileFind find;
  ASSERT_TRUE(find.FindFile(folder.path("*.dip")));
  EXPECT_TRUE(find.GetFileName().IsEmpty());
  EXPECT_TRUE(find.GetFilePath().IsEmpty());
  EXPECT_EQ(find.GetLength(), 0U);
  EXPECT_FALSE(find.IsDirectory());
  EXPECT_FALSE(find.IsDots());
}

TEST(FileFind, PlainPathFindsAFileOrAFolder) {
  const TempFolder folder;
  folder.write("a.dip", "123");
  folder.makeFolder("sub");
  EXPECT_EQ(found(folder.path("a.dip")), Names{"a.dip"});
  EXPECT_EQ(found(folder.path("sub")), Names{"sub"});
  EXPECT_EQ(found(folder.path("A.DIP")), Names{"a.dip"});
  EXPECT_EQ(found(folder.path("no.dip")), Names());
  EXPECT_EQ(found(folder.path("no/*.dip")), Names());
  EXPECT_EQ(found(_T("")), Names());
  EXPECT_EQ(found(folder.path("sub/")), Names());
}

TEST(FileFind, RelativePatternsStartInTheCurrentDirectory) {
  const Promising promising(Promising::more);
  const TempFolder folder;
  folder.makeFolder("sub");
  folder.write("a.dip", "");
  folder.write("sub/b.dip", "");
  TCHAR before[4096];
  ASSERT_NE(GetCurrentDirectory(4096, before), 0U);
  ASSERT_TRUE(SetCurrentDirectory(folder.path()));
  EXPECT_EQ(found(_T("*.dip")), Names{"a.dip"});
  EXPECT_EQ(found(_T("sub/*.dip")), Names{"b.dip"});
  CFileFind find;
  EXPECT_TRUE(find.FindFile());
  while (find.FindNextFile()) {
  }
  EXPECT_EQ(toUtf8(find.GetFilePath()), folder.pathUtf8("sub"));
  find.Close();
  ASSERT_TRUE(find.FindFile(_T("sub/*.dip")));
  find.FindNextFile();
  ASSERT_TRUE(SetCurrentDirectory(before));
  EXPECT_EQ(toUtf8(find.GetRoot()), folder.pathUtf8("sub") + closedFolder(folder).back());
  EXPECT_EQ(CFile(find.GetFilePath(), CFile::modeRead).GetLength(), 0U);
}

TEST(FileFind, SearchesAgain) {
  const Promising promising(Promising::more);
  const TempFolder folder;
  folder.write("a.dip", "");
  folder.write("b.txt", "");
  CFileFind find;
  ASSERT_TRUE(find.FindFile(folder.path("*.dip")));
  find.FindNextFile();
  ASSERT_TRUE(find.FindFile(folder.path("*.txt")));
  find.FindNextFile();
  EXPECT_EQ(toUtf8(find.GetFileName()), "b.txt");
  EXPECT_FALSE(find.FindNextFile());
  EXPECT_EQ(toUtf8(find.GetFileName()), "b.txt");
  find.Close();
  EXPECT_TRUE(find.GetFileName().IsEmpty());
}

TEST(FileFind, FolderThatCannotBeListedHoldsNothing) {
  const TempFolder folder;
  folder.write("a.dip", "");
  FailingOs os(FailingOs::Call::list, 1, CFileException::accessDenied);
  EXPECT_EQ(found(folder.path("*.dip")), Names());
  EXPECT_TRUE(os.failed);
  os.failAt(FailingOs::Call::fullPath, 1, CFileException::badPath);
  EXPECT_EQ(found(folder.path("*.dip")), Names());
}

}  // namespace
