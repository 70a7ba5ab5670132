// CFileDialog asks the operator and lays the answer into the caller's buffer as Windows' dialogs do.
#include <afxdlgs.h>

#include <array>
#include <gtest/gtest.h>

#include "platform/Os.h"
#include "platform/Utf.h"
#include "tests/support/Promising.h"
#include "tests/support/ScriptedOperator.h"

namespace {

using Names = std::vector<std::string>;

const std::string separator(1, static_cast<char>(pathSeparator));
#ifdef _WIN32
const std::string root = "C:\\";
#else
const std::string root = "/";
#endif

std::string inFolder(const std::string& folder, const std::string& name) {
  return root + folder + separator + name;
}

// The texts in a buffer, each closed by 0, up to an empty one that is not the first.
template <std::size_t size>
Names laidOut(const std::array<TCHAR, size>& buffer) {
  Names texts;
  const TCHAR* at = buffer.data();
  while (texts.empty() || *at != 0) {
    const CString text = at;
    texts.push_back(toUtf8(text));
    at += text.GetLength() + 1;
  }
  return texts;
}

Names chosen(const CFileDialog& dialog) {
  Names paths;
  POSITION position = dialog.GetStartPosition();
  while (position != nullptr) {
    paths.push_back(toUtf8(dialog.GetNextPathName(position)));
  }
  return paths;
}

constexpr DWORD several = OFN_ALLOWMULTISELECT | OFN_EXPLORER | OFN_HIDEREADONLY;

TEST(FileDialog, AsksWithWhatItWasGiven) {
  ScriptedOperator someone;
  someone.cancelFiles();
  CFileDialog dialog(FALSE, _T("dip"), _T("offer"), OFN_OVERWRITEPROMPT, _T("Dipoles (*.dip)|*.dip||"));
  dialog.m_ofn.lpstrTitle = _T("Save dipoles");
  dialog.m_ofn.lpstrInitialDir = _T("somewhere");
  dialog.m_ofn.nFilterIndex = 1;
  EXPECT_EQ(dialog.DoModal(), IDCANCEL);
  EXPECT_EQ(CommDlgExtendedError(), 0U);
  ASSERT_EQ(someone.fileQuestions.size(), 1U);
  const FileQuestion& question = someone.fileQuestions[0];
  EXPECT_FALSE(question.open);
  EXPECT_FALSE(question.multiple);
  EXPECT_EQ(toUtf8(question.title), "Save dipoles");
  EXPECT_EQ(toUtf8(question.name), "offer");
  EXPECT_EQ(toUtf8(question.folder), "somewhere");
  EXPECT_EQ(toUtf8(question.extension), "dip");
  EXPECT_EQ(toUtf8(question.filter), "Dipoles (*.dip)|*.dip||");
  EXPECT_EQ(question.filterIndex, 1U);
  EXPECT_NE(question.flags & OFN_OVERWRITEPROMPT, 0U);
}

TEST(FileDialog, OneFileIsOneFullPath) {
  const Promising promising(Promising::more);
  ScriptedOperator someone;
  someone.answerFilesUtf8({inFolder("data", "a.b.dip")});
  CFileDialog dialog(TRUE);
  EXPECT_EQ(dialog.DoModal(), IDOK);
  EXPECT_EQ(toUtf8(dialog.GetPathName()), inFolder("data", "a.b.dip"));
  EXPECT_EQ(toUtf8(dialog.GetFileName()), "a.b.dip");
  EXPECT_EQ(toUtf8(dialog.GetFileExt()), "dip");
  EXPECT_EQ(toUtf8(CString(dialog.m_ofn.lpstrFile)), inFolder("data", "a.b.dip"));
  EXPECT_EQ(toUtf8(CString(dialog.m_ofn.lpstrFile + dialog.m_ofn.nFileOffset)), "a.b.dip");
  EXPECT_EQ(toUtf8(CString(dialog.m_ofn.lpstrFile + dialog.m_ofn.nFileExtension)), "dip");
  EXPECT_EQ(chosen(dialog), Names{inFolder("data", "a.b.dip")});
}

TEST(FileDialog, OneOfSeveralPossibleIsOneFullPathAndTwoZeros) {
  ScriptedOperator someone;
  someone.answerFilesUtf8({inFolder("data", "a.dip")});
  std::array<TCHAR, 100> buffer;
  buffer.fill(_T('?'));
  buffer[0] = 0;
  CFileDialog dialog(TRUE, nullptr, nullptr, several);
  dialog.m_ofn.lpstrFile = buffer.data();
  dialog.m_ofn.nMaxFile = 100;
  EXPECT_EQ(dialog.DoModal(), IDOK);
  EXPECT_TRUE(someone.fileQuestions[0].multiple);
  EXPECT_EQ(laidOut(buffer), Names{inFolder("data", "a.dip")});
  EXPECT_EQ(chosen(dialog), Names{inFolder("data", "a.dip")});
}

TEST(FileDialog, SeveralOfOneFolderAreTheFolderAndNames) {
  const Promising promising(Promising::more);
  ScriptedOperator someone;
  const Names paths = {inFolder("data", "a.dip"), inFolder("data", "\xC3\xA9.dip"),
                       inFolder("data", "c c.dip")};
  someone.answerFilesUtf8(paths);
  std::array<TCHAR, 100> buffer;
  buffer.fill(_T('?'));
  buffer[0] = 0;
  CFileDialog dialog(TRUE, nullptr, nullptr, several);
  dialog.m_ofn.lpstrFile = buffer.data();
  dialog.m_ofn.nMaxFile = 100;
  EXPECT_EQ(dialog.DoModal(), IDOK);
  EXPECT_EQ(laidOut(buffer), (Names{root + "data", "a.dip", "\xC3\xA9.dip", "c c.dip"}));
  EXPECT_EQ(chosen(dialog), paths);
  EXPECT_EQ(toUtf8(dialog.GetPathName()), paths[0]);
}

TEST(FileDialog, SeveralOfTheRootKeepTheRootsSeparator) {
  ScriptedOperator someone;
  const Names paths = {root + "a.dip", root + "b.dip"};
  someone.answerFilesUtf8(paths);
  std::array<TCHAR, 100> buffer = {};
  CFileDialog dialog(TRUE, nullptr, nullptr, several);
  dialog.m_ofn.lpstrFile = buffer.data();
  dialog.m_ofn.nMaxFile = 100;
  EXPECT_EQ(dialog.DoModal(), IDOK);
  EXPECT_EQ(laidOut(buffer), (Names{root, "a.dip", "b.dip"}));
  EXPECT_EQ(chosen(dialog), paths);
}

TEST(FileDialog, SeveralOfDifferentFoldersAreFullPaths) {
  ScriptedOperator someone;
  const Names paths = {inFolder("one", "a.dip"), inFolder("two", "b.dip")};
  someone.answerFilesUtf8(paths);
  std::array<TCHAR, 100> buffer = {};
  CFileDialog dialog(TRUE, nullptr, nullptr, several);
  dialog.m_ofn.lpstrFile = buffer.data();
  dialog.m_ofn.nMaxFile = 100;
  EXPECT_EQ(dialog.DoModal(), IDOK);
  EXPECT_EQ(laidOut(buffer), (Names{"", paths[0], paths[1]}));
  EXPECT_EQ(chosen(dialog), paths);
}

// The buffer must hold everything with its zeros: one unit less is too small, and nothing is written.
TEST(FileDialog, WhatDoesNotFitIsRefusedWhole) {
  const Promising promising(Promising::more);
  const Names paths = {inFolder("data", "a.dip"), inFolder("data", "b.dip")};
  const auto needed = static_cast<DWORD>((root + "data").size() + 1 + 6 + 6 + 1);
  for (const DWORD size : {needed, needed - 1}) {
    ScriptedOperator someone;
    someone.answerFilesUtf8(paths);
    std::array<TCHAR, 100> buffer = {};
    CFileDialog dialog(TRUE, nullptr, nullptr, several);
    dialog.m_ofn.lpstrFile = buffer.data();
    dialog.m_ofn.nMaxFile = size;
    const bool fits = size == needed;
    EXPECT_EQ(dialog.DoModal(), fits ? IDOK : IDCANCEL);
    EXPECT_EQ(CommDlgExtendedError(), fits ? DWORD{0} : DWORD{FNERR_BUFFERTOOSMALL});
    EXPECT_EQ(buffer[0] == 0, !fits);
  }
}

TEST(FileDialog, OwnBufferHoldsAShortPathOnly) {
  const Promising promising(Promising::more);
  ScriptedOperator someone;
  someone.answerFilesUtf8({inFolder("data", std::string(300, 'x'))});
  CFileDialog dialog(TRUE);
  EXPECT_EQ(dialog.DoModal(), IDCANCEL);
  EXPECT_EQ(CommDlgExtendedError(), DWORD{FNERR_BUFFERTOOSMALL});
  someone.cancelFiles();
  EXPECT_EQ(dialog.DoModal(), IDCANCEL);
  EXPECT_EQ(CommDlgExtendedError(), 0U);
}

TEST(FileDialog, SeveralAnswersToAQuestionForOneAreCancelled) {
  ScriptedOperator someone;
  someone.answerFilesUtf8({inFolder("data", "a.dip"), inFolder("data", "b.dip")});
  CFileDialog dialog(TRUE);
  EXPECT_EQ(dialog.DoModal(), IDCANCEL);
}

TEST(FileDialog, MissingExtensionIsAppended) {
  ScriptedOperator someone;
  someone.answerFilesUtf8({inFolder("da.ta", "a")});
  someone.answerFilesUtf8({inFolder("data", "a.txt")});
  CFileDialog dialog(FALSE, _T("dip"));
  EXPECT_EQ(dialog.DoModal(), IDOK);
  EXPECT_EQ(toUtf8(dialog.GetPathName()), inFolder("da.ta", "a.dip"));
  EXPECT_EQ(dialog.DoModal(), IDOK);
  EXPECT_EQ(toUtf8(dialog.GetPathName()), inFolder("data", "a.txt"));
  CFileDialog without(FALSE);
  someone.answerFilesUtf8({inFolder("data", "a")});
  EXPECT_EQ(without.DoModal(), IDOK);
  EXPECT_EQ(toUtf8(without.GetPathName()), inFolder("data", "a"));
  EXPECT_EQ(toUtf8(without.GetFileExt()), "");
}

TEST(FileDialog, FilterFollowsTheChosenName) {
  const Promising promising(Promising::more);
  const auto indexFor = [](DWORD offered, const std::string& name) {
    ScriptedOperator someone;
    someone.answerFilesUtf8({inFolder("data", name)});
    CFileDialog dialog(FALSE, nullptr, nullptr, 0, _T("A|*.dip;*.DPL|Text|*.txt|All|*.*||"));
    dialog.m_ofn.nFilterIndex = offered;
    EXPECT_EQ(dialog.DoModal(), IDOK);
    return dialog.m_ofn.nFilterIndex;
  };
  EXPECT_EQ(indexFor(0, "a.txt"), 2U);
  EXPECT_EQ(indexFor(1, "a.dpl"), 1U);
  EXPECT_EQ(indexFor(1, "a.txt"), 2U);
  EXPECT_EQ(indexFor(3, "a.txt"), 3U);
  EXPECT_EQ(indexFor(2, "a.xyz"), 3U);
}

TEST(FileDialog, FilterLiesInPairs) {
  CFileDialog dialog(TRUE, nullptr, nullptr, 0, _T("A|*.a||"));
  EXPECT_EQ(std::basic_string_view<TCHAR>(dialog.m_ofn.lpstrFilter, 7),
            std::basic_string_view<TCHAR>(_T("A\0*.a\0\0"), 7));
  EXPECT_EQ(CFileDialog(TRUE).m_ofn.lpstrFilter, nullptr);
}

}  // namespace
