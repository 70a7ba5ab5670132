// Where the least is promised, windows do no more than MFC's documentation says.
#include <afxwin.h>

#include <cmath>
#include <functional>
#include <gtest/gtest.h>

#include "platform/LeastPromise.h"
#include "tests/platform/windows/Robot.h"
#include "tests/platform/windows/ids.h"
#include "tests/support/Promising.h"
#include "tests/support/ScriptedOperator.h"

namespace {

class NumberDialog : public CDialog {
 public:
  double number = 1.5;
  int changes = 0;

 protected:
  void DoDataExchange(CDataExchange* exchange) override { DDX_Text(exchange, IDC_DOUBLE, number); }
  afx_msg void OnChange() { ++changes; }
  DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(NumberDialog, CDialog)
ON_EN_CHANGE(IDC_DOUBLE, &NumberDialog::OnChange)
END_MESSAGE_MAP()

class LeastPromiseWindows : public testing::Test {
 protected:
  LeastPromiseWindows() { EXPECT_TRUE(m_dialog.Create(IDD_VALUES)); }
  CWnd* field() { return m_dialog.GetDlgItem(IDC_DOUBLE); }

  const Promising m_promising{Promising::least};
  NumberDialog m_dialog;
};

// The use of more than is promised: a pointer to a control that is kept while the program is idle.
TEST_F(LeastPromiseWindows, TemporaryObjectIsGoneWhenTheProgramIsIdle) {
  const CWnd* kept = field();
  EXPECT_NE(kept->m_hWnd, nullptr);
  pump();
  EXPECT_EQ(kept->m_hWnd, nullptr);
  EXPECT_NE(field()->m_hWnd, nullptr);  // asked for anew
  const Promising more(Promising::more);
  kept = field();
  pump();
  EXPECT_NE(kept->m_hWnd, nullptr);
}

// Presses OK in "Plain" as soon as `isDone`, or after so many looks: a loop need not be idle at the first.
void pressWhen(Robot& robot, const std::function<bool()>& isDone, int looks) {
  robot.when("Plain", [&robot, isDone, looks](HWND window) {
    if (looks == 0 || isDone()) {
      press(window, IDOK);
    } else {
      pressWhen(robot, isDone, looks - 1);
    }
  });
}

TEST_F(LeastPromiseWindows, TemporaryObjectIsGoneBehindAModalDialog) {
  const CWnd* const kept = field();
  CMenu menu;
  ASSERT_TRUE(menu.LoadMenu(IDR_MENU));
  const CMenu* const tools = menu.GetSubMenu(1);
  CDialog inner(UINT{IDD_PLAIN}, &m_dialog);
  Robot robot;
  const auto isIdle = [kept] { return kept->m_hWnd == nullptr; };
  pressWhen(robot, isIdle, 300);
  EXPECT_EQ(inner.DoModal(), IDOK);
  EXPECT_EQ(kept->m_hWnd, nullptr);
  EXPECT_EQ(tools->m_hMenu, nullptr);
  EXPECT_NE(m_dialog.m_hWnd, nullptr);
}

TEST_F(LeastPromiseWindows, ControlsReportWhatTheProgramWrites) {
  const int before = m_dialog.changes;
  m_dialog.UpdateData(FALSE);  // the text that is there already
  EXPECT_EQ(m_dialog.changes, before + 1);
}

TEST_F(LeastPromiseWindows, WhatIsNoFiniteNumberIsRead) {
  m_dialog.SetDlgItemText(IDC_DOUBLE, _T("nan"));
  EXPECT_TRUE(m_dialog.UpdateData(TRUE));
  EXPECT_TRUE(std::isnan(m_dialog.number));
  m_dialog.SetDlgItemText(IDC_DOUBLE, _T("1e999"));
  EXPECT_TRUE(m_dialog.UpdateData(TRUE));
  EXPECT_TRUE(std::isinf(m_dialog.number));
}

TEST_F(LeastPromiseWindows, ModalDialogThatLosesItsWindowIsAborted) {
  CDialog inner(UINT{IDD_PLAIN}, &m_dialog);
  Robot robot;
  robot.when("Plain", [&](HWND) { inner.DestroyWindow(); });
  EXPECT_EQ(inner.DoModal(), IDABORT);
}

TEST_F(LeastPromiseWindows, NameOfAWindowClassLastsUntilTheNext) {
  const LPCTSTR name = AfxRegisterWndClass(CS_DBLCLKS);
  const CString kept = name;
  AfxRegisterWndClass(CS_HREDRAW);
  EXPECT_NE(kept, CString(name));
}

// What blinks and what is painted is no news: an idle program is not told that it is idle again.
class IdleProgram : public CWinApp {
 public:
  explicit IdleProgram(HWND window) : m_window(window) {}
  int timesIdle = 0;

  BOOL OnIdle(LONG /*count*/) override {
    if (++timesIdle == 1) {
      constexpr UINT caretTimer = 0x118;
      ::PostMessageW(m_window, caretTimer, 0, 0);
      ::SetTimer(m_window, 1, 100, [](HWND window, UINT, UINT_PTR id, DWORD) {
        ::KillTimer(window, id);
        ::PostQuitMessage(0);
      });
    }
    return FALSE;
  }

 private:
  HWND m_window;
};

TEST_F(LeastPromiseWindows, ProgramIsIdleOnceBeforeARedundantMessageAndNotBehindIt) {
  pump();
  IdleProgram least(m_dialog.m_hWnd);
  least.Run();
  EXPECT_EQ(least.timesIdle, 1);
  const Promising more(Promising::more);
  IdleProgram eager(m_dialog.m_hWnd);
  eager.Run();
  EXPECT_GT(eager.timesIdle, 1);
}

#if GTEST_HAS_DEATH_TEST

class ThrowingWindow : public CWnd {
 public:
  LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
    if (message == WM_APP) {
      throw new CMemoryException;
    }
    return CWnd::WindowProc(message, wParam, lParam);
  }
};

using LeastPromiseWindowsDeathTest = LeastPromiseWindows;

void throwOutOfAHandler() {
  const ScriptedOperator user;  // whom the framework would tell
  ThrowingWindow window;
  const RECT place = {0, 0, 10, 10};
  window.CreateEx(0, AfxRegisterWndClass(0), _T(""), WS_POPUP, place, nullptr, 0);
  window.SendMessage(WM_APP);
}

TEST_F(LeastPromiseWindowsDeathTest, ExceptionThatLeavesAHandlerEndsTheProgram) {
  EXPECT_DEATH(throwOutOfAHandler(), "an exception leaves a handler");
}

#endif

}  // namespace
