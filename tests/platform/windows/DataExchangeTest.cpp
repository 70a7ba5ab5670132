// Data exchange and validation between members and the controls of a real dialog.
#include <afxwin.h>

#include <gtest/gtest.h>

#include "platform/Utf.h"
#include "tests/platform/windows/Robot.h"
#include "tests/platform/windows/ids.h"
#include "tests/support/Promising.h"
#include "tests/support/ScriptedOperator.h"

namespace {

class ValuesDialog : public CDialog {
 public:
  ValuesDialog() : CDialog(IDD_VALUES) {}

  double real = 1.5;
  float narrow = 2.5F;
  int whole = -3;
  CString text = _T("four");
  int check = 1;
  CButton apply;
  CEdit field;
  int changes = 0;
  std::vector<BOOL> updates;

 protected:
  void DoDataExchange(CDataExchange* exchange) override {
    m_isWriting = exchange->m_bSaveAndValidate == FALSE;
    CDialog::DoDataExchange(exchange);
    DDX_Text(exchange, IDC_DOUBLE, real);
    DDX_Text(exchange, IDC_FLOAT, narrow);
    DDV_MinMaxFloat(exchange, narrow, 1.0F, 9000.0F);
    DDX_Text(exchange, IDC_INT, whole);
    DDV_MinMaxInt(exchange, whole, -10, 10);
    DDX_Text(exchange, IDC_TEXT, text);
    DDV_MaxChars(exchange, text, 8);
    DDX_Check(exchange, IDC_CHECK, check);
    DDX_Control(exchange, IDC_APPLY, apply);
    DDX_Control(exchange, IDC_TEXT, field);
    m_isWriting = false;
  }
  afx_msg void OnChange() {
    ++changes;
    if (!m_isWriting) {  // where the least is promised, what the program writes is reported too
      updates.push_back(UpdateData(TRUE));
    }
  }
  DECLARE_MESSAGE_MAP()

 private:
  bool m_isWriting = false;
};

BEGIN_MESSAGE_MAP(ValuesDialog, CDialog)
ON_EN_CHANGE(IDC_FLOAT, &ValuesDialog::OnChange)
END_MESSAGE_MAP()

class DataExchange : public testing::Test {
 protected:
  DataExchange() {
    EXPECT_TRUE(m_dialog.Create(IDD_VALUES));
    m_dialog.ShowWindow(SW_SHOWNORMAL);
  }
  void put(int control, const char* text) { m_dialog.SetDlgItemText(control, fromUtf8(text)); }
  std::string shown(int control) { return textOf(m_dialog.m_hWnd, control); }
  // Reads with `text` in the control, which must be refused: one message, which is returned.
  std::string refusal(int control, const char* text) {
    m_user.messages.clear();
    put(control, text);
    m_user.messages.clear();
    EXPECT_FALSE(m_dialog.UpdateData(TRUE)) << text;
    EXPECT_EQ(m_user.messages.size(), 1U) << text;
    EXPECT_EQ(::GetFocus(), ::GetDlgItem(m_dialog.m_hWnd, control));
    return m_user.messages.empty() ? "" : m_user.messages.front().text;
  }

  ScriptedOperator m_user;
  ValuesDialog m_dialog;
};

TEST_F(DataExchange, MembersAreShownFromTheStart) {
  EXPECT_EQ(shown(IDC_DOUBLE), "1.5");
  EXPECT_EQ(shown(IDC_FLOAT), "2.5");
  EXPECT_EQ(shown(IDC_INT), "-3");
  EXPECT_EQ(shown(IDC_TEXT), "four");
  EXPECT_EQ(m_dialog.IsDlgButtonChecked(IDC_CHECK), 1U);
}

TEST_F(DataExchange, FloatHas6AndDouble15SignificantDigits) {
  m_dialog.real = 1.0 / 3;
  m_dialog.narrow = 1234.5678F;
  m_dialog.UpdateData(FALSE);
  EXPECT_EQ(shown(IDC_DOUBLE), "0.333333333333333");
  EXPECT_EQ(shown(IDC_FLOAT), "1234.57");
  m_dialog.real = -1e-20;
  m_dialog.narrow = 1e20F;
  m_dialog.UpdateData(FALSE);
  EXPECT_EQ(shown(IDC_DOUBLE), "-1e-20");
  EXPECT_EQ(shown(IDC_FLOAT), "1e+20");
}

TEST_F(DataExchange, ControlsAreRead) {
  put(IDC_DOUBLE, " -12.25e1 ");
  put(IDC_FLOAT, "9000");
  put(IDC_INT, "+10");
  put(IDC_TEXT, "né");
  m_dialog.CheckDlgButton(IDC_CHECK, 0);
  ASSERT_TRUE(m_dialog.UpdateData(TRUE));
  EXPECT_EQ(m_dialog.real, -122.5);
  EXPECT_EQ(m_dialog.narrow, 9000.0F);
  EXPECT_EQ(m_dialog.whole, 10);
  EXPECT_EQ(toUtf8(m_dialog.text), "né");
  EXPECT_EQ(m_dialog.check, 0);
  EXPECT_TRUE(m_user.messages.empty());
}

TEST_F(DataExchange, WhatIsNoNumberIsRefused) {
  const Promising promising(Promising::more);
  for (const char* text : {"", " ", "x", "1x", "1 2", "--1", "1e", "nan", "inf", "0x10", "1e999", "1,5"}) {
    EXPECT_EQ(refusal(IDC_DOUBLE, text), "Please enter a number.") << text;
    EXPECT_EQ(m_dialog.real, 1.5);
  }
  put(IDC_DOUBLE, "1");
  EXPECT_EQ(refusal(IDC_FLOAT, "1e39"), "Please enter a number.");
  EXPECT_EQ(m_dialog.narrow, 2.5F);
}

TEST_F(DataExchange, WhatIsNoIntegerIsRefused) {
  for (const char* text : {"", "1.5", "x", "99999999999"}) {
    EXPECT_EQ(refusal(IDC_INT, text), "Please enter an integer.") << text;
    EXPECT_EQ(m_dialog.whole, -3);
  }
}

TEST_F(DataExchange, WhatIsOutOfRangeIsRefused) {
  EXPECT_EQ(refusal(IDC_FLOAT, "0.5"), "Please enter a number between 1 and 9000.");
  EXPECT_EQ(refusal(IDC_FLOAT, "9000.01"), "Please enter a number between 1 and 9000.");
  put(IDC_FLOAT, "1");
  EXPECT_EQ(refusal(IDC_INT, "11"), "Please enter an integer between -10 and 10.");
  put(IDC_INT, "-10");
  EXPECT_EQ(refusal(IDC_TEXT, "ninechars"), "Please enter no more than 8 characters.");
  EXPECT_EQ(m_user.messages.front().type, UINT{MB_ICONEXCLAMATION});
}

TEST_F(DataExchange, ARefusedTextIsSelected) {
  refusal(IDC_DOUBLE, "wrong");
  CEdit& field = *static_cast<CEdit*>(CWnd::FromHandle(::GetDlgItem(m_dialog.m_hWnd, IDC_DOUBLE)));
  int first = -1;
  int end = -1;
  field.GetSel(first, end);
  EXPECT_EQ(first, 0);
  EXPECT_EQ(end, 5);
}

TEST_F(DataExchange, MembersBehindTheRefusedOneAreNotRead) {
  put(IDC_DOUBLE, "7");
  put(IDC_TEXT, "new");
  refusal(IDC_INT, "x");
  EXPECT_EQ(m_dialog.real, 7.0);
  EXPECT_EQ(toUtf8(m_dialog.text), "four");
}

TEST_F(DataExchange, WritingDoesNotReportChanges) {
  const Promising promising(Promising::more);
  m_dialog.changes = 0;
  m_dialog.narrow = 5.0F;
  m_dialog.UpdateData(FALSE);
  EXPECT_EQ(m_dialog.changes, 0);
  type(m_dialog.m_hWnd, IDC_FLOAT, "6");
  EXPECT_EQ(m_dialog.changes, 1);
  EXPECT_EQ(m_dialog.narrow, 6.0F);
  type(m_dialog.m_hWnd, IDC_FLOAT, "0.5");
  EXPECT_EQ(m_dialog.updates, (std::vector<BOOL>{TRUE, FALSE}));
  EXPECT_EQ(m_user.texts(), std::vector<std::string>{"Please enter a number between 1 and 9000."});
}

TEST_F(DataExchange, ControlsAreBoundOnce) {
  EXPECT_EQ(m_dialog.apply.m_hWnd, ::GetDlgItem(m_dialog.m_hWnd, IDC_APPLY));
  EXPECT_EQ(m_dialog.GetDlgItem(IDC_APPLY), &m_dialog.apply);
  EXPECT_TRUE(m_dialog.UpdateData(TRUE));
  m_dialog.DestroyWindow();
  EXPECT_EQ(m_dialog.apply.m_hWnd, nullptr);
  EXPECT_TRUE(m_dialog.Create(IDD_VALUES));
  EXPECT_EQ(m_dialog.GetDlgItem(IDC_APPLY), &m_dialog.apply);
}

TEST_F(DataExchange, AMissingControlIsNotSupported) {
  CDataExchange exchange(&m_dialog, TRUE);
  try {
    DDX_Text(&exchange, 4711, m_dialog.real);
    FAIL();
  } catch (CNotSupportedException* exception) {
    exception->Delete();
  }
}

TEST_F(DataExchange, OkStaysWhereSomethingIsNotValid) {
  put(IDC_INT, "x");
  press(m_dialog.m_hWnd, IDOK);
  EXPECT_TRUE(m_dialog.IsWindowVisible());
  put(IDC_INT, "1");
  press(m_dialog.m_hWnd, IDOK);
  EXPECT_FALSE(m_dialog.IsWindowVisible());
}

TEST(DataExchangeMessage, IsTheSystemsWithoutAnOperator) {
  Operator* const before = installOperator(nullptr);
  ValuesDialog dialog;
  Robot robot;
  robot.when("Values", [](HWND window) {
    ::SetDlgItemTextW(window, IDC_INT, L"11");
    press(window, IDOK);
  });
  std::string shown;
  robot.when("mini", [&](HWND message) {
    shown = messageOf(message);
    press(message, IDOK);
  });
  robot.when("Values", [](HWND window) { press(window, IDCANCEL); });
  CWinApp app(_T("mini"));
  EXPECT_EQ(dialog.DoModal(), IDCANCEL);
  EXPECT_EQ(shown, "Please enter an integer between -10 and 10.");
  installOperator(before);
}

}  // namespace
