// Exceptions carry their cause and a text that a user can read.
#include <afxwin.h>

#include <gtest/gtest.h>
#include <set>

#include "tests/support/Promising.h"
#include "tests/support/ScriptedOperator.h"
#include "tests/support/Thrown.h"

namespace {

TEST(FileException, NamesTheFile) {
  const Promising promising(Promising::more);
  EXPECT_EQ(messageOf(CFileException(CFileException::fileNotFound, 2, _T("C:\\x.dip"))),
            "C:\\x.dip was not found.");
  EXPECT_EQ(messageOf(CFileException(CFileException::accessDenied, 5, _T("C:\\x.dip"))),
            "Access to C:\\x.dip was denied.");
}

TEST(FileException, SpeaksWithoutAName) {
  const Promising promising(Promising::more);
  EXPECT_EQ(messageOf(CFileException(CFileException::fileNotFound)), "The file was not found.");
  EXPECT_EQ(messageOf(CFileException(CFileException::accessDenied)), "Access to the file was denied.");
}

TEST(FileException, EveryCauseHasItsOwnText) {
  const Promising promising(Promising::more);
  std::set<std::string> texts;
  for (int cause = CFileException::none; cause <= CFileException::endOfFile; ++cause) {
    const std::string text = messageOf(CFileException(cause, -1, _T("x.dip")));
    EXPECT_NE(text.find("x.dip"), std::string::npos) << cause;
    texts.insert(text);
  }
  EXPECT_EQ(texts.size(), 15U);
}

TEST(FileException, CausesHaveTheirNumbers) {
  EXPECT_EQ(CFileException::none, 0);
  EXPECT_EQ(CFileException::fileNotFound, 2);
  EXPECT_EQ(CFileException::badPath, 3);
  EXPECT_EQ(CFileException::accessDenied, 5);
  EXPECT_EQ(CFileException::diskFull, 13);
  EXPECT_EQ(CFileException::endOfFile, 14);
  EXPECT_EQ(CArchiveException::readOnly, 2);
  EXPECT_EQ(CArchiveException::endOfFile, 3);
  EXPECT_EQ(CArchiveException::badSchema, 7);
}

TEST(FileException, StartsWithoutACause) {
  const CFileException exception;
  EXPECT_EQ(exception.m_cause, CFileException::none);
  EXPECT_EQ(exception.m_lOsError, -1);
  EXPECT_TRUE(exception.m_strFileName.IsEmpty());
}

TEST(ArchiveException, TextsTellTheCause) {
  const Promising promising(Promising::more);
  EXPECT_EQ(messageOf(CArchiveException(CArchiveException::endOfFile, _T("x.dip"))),
            "x.dip ended too early.");
  EXPECT_EQ(messageOf(CArchiveException(CArchiveException::endOfFile)), "The file ended too early.");
  EXPECT_EQ(messageOf(CArchiveException(CArchiveException::badSchema, _T("x.dip"))),
            "x.dip was written by a version of the program that this one does not know.");
}

TEST(Exception, MessageIsCutToTheBuffer) {
  const Promising promising(Promising::more);
  const CFileException exception(CFileException::fileNotFound, 2, _T("abc"));
  TCHAR text[4] = {_T('?'), _T('?'), _T('?'), _T('?')};
  UINT help = 77;
  EXPECT_TRUE(exception.GetErrorMessage(text, 4, &help));
  EXPECT_EQ(toUtf8(text), "abc");
  EXPECT_EQ(help, 0U);
  EXPECT_TRUE(exception.GetErrorMessage(text, 1));
  EXPECT_EQ(text[0], 0);
  EXPECT_FALSE(exception.GetErrorMessage(text, 0));
  EXPECT_FALSE(exception.GetErrorMessage(nullptr, 5));
}

TEST(Exception, WithoutTextSaysSo) {
  CException exception(FALSE);
  TCHAR text[8] = {_T('?'), 0};
  EXPECT_FALSE(exception.GetErrorMessage(text, 8));
  EXPECT_EQ(text[0], 0);
  ScriptedOperator someone;
  EXPECT_EQ(exception.ReportError(), IDOK);
  EXPECT_EQ(someone.texts(), std::vector<std::string>{"Something failed, for an unknown reason."});
}

TEST(Exception, ReportsInOneMessageBox) {
  const Promising promising(Promising::more);
  ScriptedOperator someone;
  someone.answer(IDCANCEL);
  CFileException exception(CFileException::accessDenied, 5, _T("x.dip"));
  EXPECT_EQ(exception.ReportError(MB_OKCANCEL | MB_ICONSTOP), IDCANCEL);
  ASSERT_EQ(someone.messages.size(), 1U);
  EXPECT_EQ(someone.messages[0].text, "Access to x.dip was denied.");
  EXPECT_EQ(someone.messages[0].type, MB_OKCANCEL | MB_ICONSTOP);
}

TEST(Exception, IsThrownAsAPointerAndDeleted) {
  const Promising promising(Promising::more);
  EXPECT_EQ(fileCause([] { AfxThrowFileException(CFileException::hardIO, 5, _T("x")); }),
            CFileException::hardIO);
  EXPECT_EQ(archiveCause([] { AfxThrowArchiveException(CArchiveException::badIndex); }),
            CArchiveException::badIndex);
  EXPECT_TRUE(throwsMemoryException([] { AfxThrowMemoryException(); }));
  EXPECT_TRUE(throwsMemoryException([] { AfxThrowMemoryException(); }));  // the one object serves again
  EXPECT_EQ(messageOf(CMemoryException()), "There is not enough memory.");
}

TEST(Exception, KeepsWhatItWasGiven) {
  try {
    AfxThrowFileException(CFileException::diskFull, 112, _T("y.dip"));
  } catch (CException* exception) {
    const auto* file = dynamic_cast<CFileException*>(exception);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->m_lOsError, 112);
    EXPECT_EQ(toUtf8(file->m_strFileName), "y.dip");
    exception->Delete();
  }
}

}  // namespace
