// Every message box passes through the application object, and from there to the operator.
#include <afxdlgs.h>

#include <gtest/gtest.h>

#include "platform/Operator.h"
#include "platform/Utf.h"
#include "tests/support/Promising.h"
#include "tests/support/ScriptedOperator.h"

namespace {

class LoudApp : public CWinApp {
 public:
  LoudApp() : CWinApp(_T("Loud")) {}
  int DoMessageBox(LPCTSTR text, UINT type, UINT helpId) override {
    last = toUtf8(text);
    lastType = type;
    lastHelp = helpId;
    return IDIGNORE;
  }
  std::string last;
  UINT lastType = 99;
  UINT lastHelp = 99;
};

TEST(AfxMessageBox, AsksTheApplicationObject) {
  LoudApp app;
  EXPECT_EQ(AfxGetApp(), &app);
  EXPECT_EQ(toUtf8(AfxGetApp()->m_pszAppName), "Loud");
  EXPECT_EQ(AfxMessageBox(_T("hello"), MB_YESNO, 5), IDIGNORE);
  EXPECT_EQ(app.last, "hello");
  EXPECT_EQ(app.lastType, MB_YESNO);
  EXPECT_EQ(app.lastHelp, 5U);
  AfxMessageBox(_T("plain"));
  EXPECT_EQ(app.lastType, MB_OK);
  EXPECT_EQ(app.lastHelp, 0U);
}

TEST(AfxMessageBox, ApplicationObjectsAreStacked) {
  CWinApp* const before = AfxGetApp();
  ASSERT_NE(before, nullptr);
  {
    LoudApp app;
    EXPECT_EQ(AfxGetApp(), &app);
  }
  EXPECT_EQ(AfxGetApp(), before);
}

TEST(AfxMessageBox, DefaultAsksTheOperator) {
  ScriptedOperator someone;
  someone.answer(IDYES);
  EXPECT_EQ(AfxMessageBox(_T("Sure? \u20AC"), MB_YESNO | MB_ICONQUESTION), IDYES);
  EXPECT_EQ(AfxMessageBox(_T("Done.")), IDOK);
  const std::vector<ScriptedOperator::Message> expected = {{"Sure? €", MB_YESNO | MB_ICONQUESTION},
                                                           {"Done.", MB_OK}};
  EXPECT_EQ(someone.messages, expected);
}

TEST(Operator, InstallingReturnsTheOneBefore) {
  ScriptedOperator outer;
  EXPECT_EQ(installedOperator(), &outer);
  {
    ScriptedOperator inner;
    EXPECT_EQ(installedOperator(), &inner);
  }
  EXPECT_EQ(installedOperator(), &outer);
  EXPECT_EQ(installOperator(nullptr), &outer);
  EXPECT_EQ(installOperator(&outer), nullptr);
}

TEST(ColorDialog, ReturnsTheChosenColor) {
  ScriptedOperator someone;
  someone.answerColor(RGB(1, 2, 3));
  CColorDialog dialog(RGB(9, 8, 7));
  EXPECT_EQ(dialog.GetColor(), RGB(9, 8, 7));
  EXPECT_EQ(dialog.DoModal(), IDOK);
  EXPECT_EQ(dialog.GetColor(), RGB(1, 2, 3));
  EXPECT_EQ(someone.colorQuestions, std::vector<COLORREF>{RGB(9, 8, 7)});
}

TEST(ColorDialog, CancelledKeepsTheColor) {
  const Promising promising(Promising::more);
  ScriptedOperator someone;
  someone.cancelColor();
  CColorDialog dialog(RGB(9, 8, 7));
  EXPECT_EQ(dialog.DoModal(), IDCANCEL);
  EXPECT_EQ(dialog.GetColor(), RGB(9, 8, 7));
}

TEST(Colors, AreBlueGreenRed) {
  EXPECT_EQ(RGB(0x11, 0x22, 0x33), COLORREF{0x332211});
  EXPECT_EQ(GetRValue(COLORREF{0x332211}), 0x11);
  EXPECT_EQ(GetGValue(COLORREF{0x332211}), 0x22);
  EXPECT_EQ(GetBValue(COLORREF{0x332211}), 0x33);
}

}  // namespace
