// Messages and dialogs that nobody answers, where the system has none of its own.
#include <afxdlgs.h>

#include <gtest/gtest.h>
#include <string>

#include "platform/Operator.h"
#include "tests/support/Promising.h"

namespace {

class NobodyThere {
 public:
  NobodyThere() : m_before(installOperator(nullptr)) {}
  ~NobodyThere() { installOperator(m_before); }
  NobodyThere(const NobodyThere&) = delete;
  NobodyThere& operator=(const NobodyThere&) = delete;

 private:
  Operator* m_before;
};

TEST(AfxMessageBox, WithoutAnOperatorSpeaksOnStderrAndAnswersCarefully) {
  const NobodyThere nobody;
  testing::internal::CaptureStderr();
  EXPECT_EQ(AfxMessageBox(_T("one \u20AC"), MB_OK), IDOK);
  EXPECT_EQ(AfxMessageBox(_T("two"), MB_YESNO | MB_ICONSTOP), IDNO);
  EXPECT_EQ(AfxMessageBox(_T("three"), MB_YESNOCANCEL), IDNO);
  EXPECT_EQ(AfxMessageBox(_T("four"), MB_OKCANCEL), IDCANCEL);
  EXPECT_EQ(AfxMessageBox(_T("five"), MB_RETRYCANCEL), IDCANCEL);
  EXPECT_EQ(AfxMessageBox(_T("six"), MB_ABORTRETRYIGNORE), IDABORT);
  const std::string shown = testing::internal::GetCapturedStderr();
  EXPECT_EQ(shown, "one €\ntwo\nthree\nfour\nfive\nsix\n");
}

TEST(ColorDialog, WithoutAnOperatorIsCancelled) {
  const NobodyThere nobody;
  CColorDialog dialog;
  EXPECT_EQ(dialog.DoModal(), IDCANCEL);
  EXPECT_NE(dialog.m_cc.lpCustColors, nullptr);
}

TEST(FileDialog, WithoutAnOperatorIsCancelled) {
  const Promising promising(Promising::more);
  const NobodyThere nobody;
  CFileDialog dialog(TRUE);
  EXPECT_EQ(dialog.DoModal(), IDCANCEL);
  EXPECT_EQ(CommDlgExtendedError(), 0U);
  EXPECT_EQ(dialog.GetStartPosition(), nullptr);
  EXPECT_TRUE(dialog.GetPathName().IsEmpty());
}

}  // namespace
