// The list of recent files holds the last eight, newest first, each file once.
#include <gtest/gtest.h>
#include <vector>

#include "host/text/RecentFiles.h"

namespace {

using host::PathRule;
using host::RecentFiles;
using Paths = std::vector<CString>;

Paths after(PathRule rule, const Paths& added) {
  RecentFiles files(rule);
  for (const CString& path : added) {
    files.add(path);
  }
  return files.paths();
}

}  // namespace

TEST(RecentFiles, NewestFirst) {
  EXPECT_EQ(after(PathRule::exact, {_T("/a"), _T("/b"), _T("/c")}), (Paths{_T("/c"), _T("/b"), _T("/a")}));
}

TEST(RecentFiles, TheLastEightStay) {
  RecentFiles files(PathRule::exact);
  for (int i = 1; i <= 10; ++i) {
    CString path;
    path.Format(_T("/%d"), i);
    files.add(path);
  }
  ASSERT_EQ(files.paths().size(), 8U);
  EXPECT_EQ(files.paths().front(), _T("/10"));
  EXPECT_EQ(files.paths().back(), _T("/3"));
}

TEST(RecentFiles, AKnownOneComesToTheFront) {
  EXPECT_EQ(after(PathRule::exact, {_T("/a"), _T("/b"), _T("/a")}), (Paths{_T("/a"), _T("/b")}));
}

TEST(RecentFiles, OneOfItsOwnMayBeAdded) {
  RecentFiles files(PathRule::exact);
  files.add(_T("/a path that is long enough for the heap"));
  files.add(_T("/b"));
  files.add(files.paths().back());
  EXPECT_EQ(files.paths(), (Paths{_T("/a path that is long enough for the heap"), _T("/b")}));
  files.remove(files.paths().front());
  EXPECT_EQ(files.paths(), (Paths{_T("/b")}));
}

TEST(RecentFiles, OnWindowsCaseAndSlashesAreAlike) {
  EXPECT_EQ(after(PathRule::windows, {_T("C:\\Data\\Set.dip"), _T("c:/data/SET.DIP")}),
            (Paths{_T("c:/data/SET.DIP")}));
  EXPECT_EQ(after(PathRule::windows, {_T("c:/\u00C4\u0394\u0416\u0401"), _T("C:\\\u00E4\u03B4\u0436\u0451")}),
            (Paths{_T("C:\\\u00E4\u03B4\u0436\u0451")}));
}

TEST(RecentFiles, OnWindowsOtherSignsAreNot) {
  EXPECT_EQ(after(PathRule::windows, {_T("c:\\\u00D7"), _T("c:\\\u00F7"), _T("c:\\a"), _T("c:\\a ")}).size(),
            4U);
  EXPECT_EQ(after(PathRule::windows, {_T("c:\\@"), _T("c:\\`"), _T("c:\\["), _T("c:\\{")}).size(), 4U);
}

TEST(RecentFiles, ElsewhereSpellingCounts) {
  EXPECT_EQ(after(PathRule::exact, {_T("/a"), _T("/A"), _T("\\a")}).size(), 3U);
}

TEST(RecentFiles, RemoveFollowsTheSameRule) {
  RecentFiles files(PathRule::windows);
  files.add(_T("c:\\a"));
  files.remove(_T("C:/A"));
  EXPECT_TRUE(files.paths().empty());
}

TEST(RecentFiles, AnEmptyPathIsLeftOut) {
  EXPECT_TRUE(after(PathRule::exact, {_T("")}).empty());
}
