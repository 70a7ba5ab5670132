// Modal and modeless dialogs on real windows.
#include <afxwin.h>

#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include "tests/platform/windows/HandleCount.h"
#include "tests/platform/windows/Robot.h"
#include "tests/platform/windows/ids.h"
#include "tests/support/Promising.h"

namespace {

// Keeps a log of what happens to it.
class PlainDialog : public CDialog {
 public:
  explicit PlainDialog(CWnd* parent = nullptr) : CDialog(IDD_PLAIN, parent) {}

  BOOL OnInitDialog() override {
    log.emplace_back("init");
    return CDialog::OnInitDialog();
  }
  void OnOK() override {
    log.emplace_back("ok");
    CDialog::OnOK();
  }
  void OnCancel() override {
    log.emplace_back("cancel");
    CDialog::OnCancel();
  }
  void PostNcDestroy() override {
    log.emplace_back("gone");
    CDialog::PostNcDestroy();
  }

  std::vector<std::string> log;
};

using Log = std::vector<std::string>;

TEST(ModalDialog, EndsWithTheButtonPressed) {
  PlainDialog dialog;
  Robot robot;
  robot.when("Plain", [](HWND window) { press(window, IDOK); });
  EXPECT_EQ(dialog.DoModal(), IDOK);
  EXPECT_EQ(dialog.log, (Log{"init", "ok", "gone"}));
  EXPECT_EQ(dialog.m_hWnd, nullptr);

  dialog.log.clear();
  robot.when("Plain", [](HWND window) { press(window, IDCANCEL); });
  EXPECT_EQ(dialog.DoModal(), IDCANCEL);
  EXPECT_EQ(dialog.log, (Log{"init", "cancel", "gone"}));
}

TEST(ModalDialog, EnterEscapeAndTheFrameWork) {
  PlainDialog dialog;
  Robot robot;
  robot.when("Plain",
             [](HWND window) { ::PostMessageW(::GetDlgItem(window, IDOK), WM_KEYDOWN, VK_RETURN, 0); });
  EXPECT_EQ(dialog.DoModal(), IDOK);
  robot.when("Plain",
             [](HWND window) { ::PostMessageW(::GetDlgItem(window, IDOK), WM_KEYDOWN, VK_ESCAPE, 0); });
  EXPECT_EQ(dialog.DoModal(), IDCANCEL);
  robot.when("Plain", [](HWND window) { ::PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0); });
  EXPECT_EQ(dialog.DoModal(), IDCANCEL);
}

TEST(ModalDialog, TheFirstControlHasTheFocus) {
  PlainDialog dialog;
  Robot robot;
  robot.when("Plain", [](HWND window) {
    EXPECT_EQ(::GetFocus(), ::GetDlgItem(window, IDOK));
    press(window, IDOK);
  });
  dialog.DoModal();
}

TEST(ModalDialog, OwnerIsDisabledMeanwhile) {
  PlainDialog owner;
  ASSERT_TRUE(owner.Create(IDD_PLAIN));
  owner.SetWindowText(_T("Owner"));
  owner.ShowWindow(SW_SHOWNORMAL);
  PlainDialog dialog(&owner);
  Robot robot;
  robot.when("Plain", [&](HWND window) {
    EXPECT_FALSE(owner.IsWindowEnabled());
    EXPECT_EQ(::GetWindow(window, GW_OWNER), owner.m_hWnd);
    press(window, IDOK);
  });
  EXPECT_EQ(dialog.DoModal(), IDOK);
  EXPECT_TRUE(owner.IsWindowEnabled());
  EXPECT_EQ(::GetActiveWindow(), owner.m_hWnd);
}

TEST(ModalDialog, AnOwnerThatWasDisabledStaysSo) {
  PlainDialog owner;
  ASSERT_TRUE(owner.Create(IDD_PLAIN));
  owner.EnableWindow(FALSE);
  PlainDialog dialog(&owner);
  Robot robot;
  robot.when("Plain", [](HWND window) { press(window, IDOK); });
  dialog.DoModal();
  EXPECT_FALSE(owner.IsWindowEnabled());
}

TEST(ModalDialog, OneMayOpenAnother) {
  class Outer : public PlainDialog {
   public:
    void OnOK() override {
      PlainDialog inner(this);
      innerResult = inner.DoModal();
      PlainDialog::OnOK();
    }
    INT_PTR innerResult = 0;
  } outer;
  Robot robot;
  robot.when("Plain", [](HWND window) {
    ::SetWindowTextW(window, L"Outer");
    press(window, IDOK);
  });
  robot.when("Plain", [](HWND window) { press(window, IDCANCEL); });
  EXPECT_EQ(outer.DoModal(), IDOK);
  EXPECT_EQ(outer.innerResult, IDCANCEL);
}

TEST(ModalDialog, EndedWhileItIsMadeIsNeverShown) {
  class Quick : public PlainDialog {
   public:
    BOOL OnInitDialog() override {
      EndDialog(77);
      return TRUE;
    }
    afx_msg void OnShowWindow(BOOL show, UINT status) {
      shown = shown || show != FALSE;
      CDialog::OnShowWindow(show, status);
    }
    bool shown = false;
    const MessageMap* GetMessageMap() const override {
      using ThisClass = Quick;
      static const MessageEntry entries[] = {ON_WM_SHOWWINDOW(){0, 0, 0, 0, nullptr}};
      static const MessageMap map = {CDialog::GetThisMessageMap(), entries};
      return &map;
    }
  } dialog;
  EXPECT_EQ(dialog.DoModal(), 77);
  EXPECT_FALSE(dialog.shown);
}

TEST(ModalDialog, WithoutATemplateIsMinusOne) {
  CDialog dialog(UINT{9999});
  EXPECT_EQ(dialog.DoModal(), -1);
}

TEST(ModalDialog, MayLoseItsWindow) {
  const Promising promising(Promising::more);
  PlainDialog dialog;
  Robot robot;
  robot.when("Plain", [&](HWND) { dialog.DestroyWindow(); });
  EXPECT_EQ(dialog.DoModal(), -1);
  EXPECT_EQ(dialog.log, (Log{"init", "gone"}));
}

TEST(ModalDialog, MayBeDestroyedItself) {
  const Promising promising(Promising::more);
  PlainDialog owner;
  ASSERT_TRUE(owner.Create(IDD_PLAIN));
  auto dialog = std::make_unique<PlainDialog>(&owner);
  Robot robot;
  robot.when("Plain", [&](HWND) { dialog.reset(); });
  EXPECT_EQ(dialog->DoModal(), -1);
  EXPECT_EQ(dialog, nullptr);
  EXPECT_TRUE(owner.IsWindowEnabled());
}

TEST(ModalDialog, PassesTheEndOfTheProgramOn) {
  const Promising promising(Promising::more);
  PlainDialog dialog;
  Robot robot;
  robot.when("Plain", [](HWND) { ::PostQuitMessage(5); });
  EXPECT_EQ(dialog.DoModal(), -1);
  MSG message = {};
  ASSERT_TRUE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 5U);
}

TEST(ModelessDialog, IsShownHiddenAndShownAgain) {
  PlainDialog dialog;
  ASSERT_TRUE(dialog.Create(IDD_PLAIN));
  EXPECT_EQ(dialog.log, Log{"init"});
  EXPECT_FALSE(dialog.IsWindowVisible());
  EXPECT_EQ(CWnd::FromHandle(dialog.m_hWnd), &dialog);
  EXPECT_EQ(::GetWindow(dialog.m_hWnd, GW_OWNER), nullptr);
  dialog.ShowWindow(SW_SHOWNORMAL);
  EXPECT_TRUE(dialog.IsWindowVisible());
  for (const int button : {IDOK, IDCANCEL}) {
    press(dialog.m_hWnd, button);
    EXPECT_NE(dialog.m_hWnd, nullptr);
    EXPECT_FALSE(dialog.IsWindowVisible());
    dialog.ShowWindow(SW_SHOWNORMAL);
    EXPECT_TRUE(dialog.IsWindowVisible());
  }
  dialog.SendMessage(WM_CLOSE);
  pump();
  EXPECT_FALSE(dialog.IsWindowVisible());
  EXPECT_EQ(dialog.log, (Log{"init", "ok", "cancel", "cancel"}));
  EXPECT_TRUE(dialog.DestroyWindow());
  EXPECT_EQ(dialog.m_hWnd, nullptr);
  EXPECT_EQ(dialog.log.back(), "gone");
  EXPECT_FALSE(dialog.DestroyWindow());
}

TEST(ModelessDialog, CannotBeMadeTwiceAtOnce) {
  PlainDialog dialog;
  ASSERT_TRUE(dialog.Create(IDD_PLAIN));
  EXPECT_FALSE(dialog.Create(IDD_PLAIN));
  EXPECT_EQ(dialog.DoModal(), -1);
}

TEST(ModelessDialog, WithoutATemplateIsFalse) {
  PlainDialog dialog;
  EXPECT_FALSE(dialog.Create(UINT{9999}));
  EXPECT_EQ(dialog.m_hWnd, nullptr);
}

TEST(ModelessDialog, BelongsToTheMainWindow) {
  PlainDialog window;
  ASSERT_TRUE(window.Create(IDD_PLAIN));
  AfxGetApp()->m_pMainWnd = &window;
  PlainDialog dialog;
  EXPECT_TRUE(dialog.Create(IDD_PLAIN));
  EXPECT_EQ(::GetWindow(dialog.m_hWnd, GW_OWNER), window.m_hWnd);
  AfxGetApp()->m_pMainWnd = nullptr;
}

TEST(ModelessDialog, DestroysItsWindowWithItself) {
  HWND window = nullptr;
  {
    PlainDialog dialog;
    ASSERT_TRUE(dialog.Create(IDD_PLAIN));
    window = dialog.m_hWnd;
  }
  EXPECT_FALSE(::IsWindow(window));
  EXPECT_EQ(CWnd::FromHandlePermanent(window), nullptr);
}

TEST(ModelessDialog, MayDeleteItselfWhenItsWindowGoes) {
  static bool deleted = false;
  class Own : public CDialog {
   public:
    ~Own() override { deleted = true; }
    void PostNcDestroy() override { delete this; }
  };
  auto* const dialog = new Own;
  ASSERT_TRUE(dialog->Create(IDD_PLAIN));
  dialog->DestroyWindow();
  EXPECT_TRUE(deleted);
}

TEST(HandleCount, SeesWindowsMenusAndBrushes) {
  const int windows = windowHandles();
  const int drawing = gdiHandles();
  CDialog dialog;
  ASSERT_TRUE(dialog.Create(IDD_PLAIN));
  EXPECT_GE(windowHandles(), windows + 3);  // it and its two buttons
  const int withDialog = windowHandles();
  CMenu menu;
  ASSERT_TRUE(menu.CreatePopupMenu());
  EXPECT_GT(windowHandles(), withDialog);
  const HBRUSH brush = ::CreateSolidBrush(RGB(1, 2, 3));
  EXPECT_GE(gdiHandles(), drawing + 1);
  ::DeleteObject(brush);
}

TEST(Dialogs, LeaveNoHandlesBehind) {
  const auto oneEach = [] {
    PlainDialog modeless;
    ASSERT_TRUE(modeless.Create(IDD_PLAIN));
    modeless.ShowWindow(SW_SHOWNORMAL);
    CClientDC context(&modeless);
    context.FillSolidRect(0, 0, 5, 5, RGB(1, 2, 3));
    PlainDialog modal(&modeless);
    Robot robot;
    robot.when("Plain", [&](HWND) { modal.EndDialog(IDOK); });
    modal.DoModal();
  };
  oneEach();  // what is made once and kept
  oneEach();
  const int windows = windowHandles();
  const int drawing = gdiHandles();
  DWORD handles = 0;
  ::GetProcessHandleCount(::GetCurrentProcess(), &handles);
  for (int i = 0; i < 100; ++i) {
    oneEach();
  }
  DWORD handlesAfter = 0;
  ::GetProcessHandleCount(::GetCurrentProcess(), &handlesAfter);
  EXPECT_EQ(windowHandles(), windows);
  EXPECT_EQ(gdiHandles(), drawing);
  EXPECT_LE(handlesAfter, handles + 2);
}

}  // namespace
