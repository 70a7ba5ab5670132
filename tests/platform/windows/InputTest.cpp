// Mouse, wheel, capture, sliders, dropped files and the end of the session on their way to a window.
#include <afxcmn.h>
#include <afxwin.h>

#include <cstring>
#include <gtest/gtest.h>
#include <shlobj.h>
#include <string>
#include <vector>

#include "platform/Utf.h"
#include "tests/platform/windows/Robot.h"
#include "tests/platform/windows/ids.h"

namespace {

struct Wheel {
  UINT flags;
  int delta;
  CPoint at;
};
struct Scroll {
  UINT code;
  UINT position;
  int control;  // its number, -1: the window's own bar
};

class Target : public CWnd {
 public:
  std::vector<Wheel> wheels;
  bool takesWheel = true;
  std::vector<Scroll> across;
  std::vector<Scroll> upAndDown;
  std::vector<std::string> dropped;
  std::vector<CPoint> middlePresses;
  UINT middleFlags = 0;
  int middleReleases = 0;
  int captureChanges = 0;
  HWND capturedNext = nullptr;
  BOOL mayEnd = TRUE;
  int choices = 0;

 protected:
  afx_msg BOOL OnMouseWheel(UINT flags, short delta, CPoint at) {
    wheels.push_back({flags, delta, at});
    return takesWheel ? TRUE : CWnd::OnMouseWheel(flags, delta, at);
  }
  static Scroll scrollOf(UINT code, UINT position, CScrollBar* control) {
    return {code, position, control == nullptr ? -1 : control->GetDlgCtrlID()};
  }
  afx_msg void OnHScroll(UINT code, UINT position, CScrollBar* control) {
    across.push_back(scrollOf(code, position, control));
  }
  afx_msg void OnVScroll(UINT code, UINT position, CScrollBar* control) {
    upAndDown.push_back(scrollOf(code, position, control));
  }
  afx_msg void OnDropFiles(HDROP files) {
    const UINT count = ::DragQueryFileW(files, UINT_MAX, nullptr, 0);
    for (UINT i = 0; i < count; ++i) {
      TCHAR name[MAX_PATH] = {};
      ::DragQueryFileW(files, i, name, MAX_PATH);
      dropped.push_back(toUtf8(name));
    }
    ::DragFinish(files);
  }
  afx_msg void OnMButtonDown(UINT flags, CPoint at) {
    middleFlags = flags;
    middlePresses.push_back(at);
  }
  afx_msg void OnMButtonUp(UINT /*flags*/, CPoint /*at*/) { ++middleReleases; }
  afx_msg void OnCaptureChanged(CWnd* next) {
    ++captureChanges;
    capturedNext = next == nullptr ? nullptr : next->m_hWnd;
  }
  afx_msg BOOL OnQueryEndSession() { return mayEnd; }
  afx_msg void OnChoice() { ++choices; }
  DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Target, CWnd)
ON_WM_MOUSEWHEEL()
ON_WM_HSCROLL()
ON_WM_VSCROLL()
ON_WM_DROPFILES()
ON_WM_MBUTTONDOWN()
ON_WM_MBUTTONUP()
ON_WM_CAPTURECHANGED()
ON_WM_QUERYENDSESSION()
ON_CBN_SELCHANGE(IDC_LIST, &Target::OnChoice)
END_MESSAGE_MAP()

class Input : public testing::Test {
 protected:
  Input() {
    const LPCTSTR name = AfxRegisterWndClass(CS_DBLCLKS);
    const RECT place = {10, 10, 310, 210};
    EXPECT_TRUE(m_target.CreateEx(0, name, _T(""), WS_POPUP | WS_VISIBLE, place, nullptr, 0));
    const RECT inside = {0, 0, 100, 100};
    EXPECT_TRUE(m_child.Create(name, _T(""), WS_CHILD | WS_VISIBLE, inside, &m_target, IDC_TEXT));
  }

  Target m_target;
  Target m_child;
};

TEST_F(Input, WheelBringsItsNotchesKeysAndPlace) {
  m_target.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(MK_CONTROL | MK_SHIFT, 120), MAKELPARAM(30, 40));
  m_target.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -360), MAKELPARAM(-1500, -20));  // a screen to the left
  ASSERT_EQ(m_target.wheels.size(), 2U);
  EXPECT_EQ(m_target.wheels[0].flags, UINT{MK_CONTROL | MK_SHIFT});
  EXPECT_EQ(m_target.wheels[0].delta, 120);
  EXPECT_EQ(m_target.wheels[0].at, CPoint(30, 40));
  EXPECT_EQ(m_target.wheels[1].flags, 0U);
  EXPECT_EQ(m_target.wheels[1].delta, -360);
  EXPECT_EQ(m_target.wheels[1].at, CPoint(-1500, -20));
}

TEST_F(Input, WheelThatIsTakenStaysThere) {
  m_child.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
  EXPECT_EQ(m_child.wheels.size(), 1U);
  EXPECT_TRUE(m_target.wheels.empty());
}

TEST_F(Input, WheelThatIsPassedOnReachesTheParentOnce) {
  m_child.takesWheel = false;
  m_child.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), MAKELPARAM(5, 6));
  EXPECT_EQ(m_child.wheels.size(), 1U);
  ASSERT_EQ(m_target.wheels.size(), 1U);
  EXPECT_EQ(m_target.wheels[0].at, CPoint(5, 6));
}

TEST_F(Input, ScrollingNamesItsControl) {
  CWnd slider;
  const RECT place = {0, 100, 100, 120};
  ASSERT_TRUE(slider.Create(TRACKBAR_CLASSW, _T(""), WS_CHILD | WS_VISIBLE, place, &m_target, IDC_DOUBLE));
  const LPARAM control = reinterpret_cast<LPARAM>(slider.m_hWnd);
  m_target.SendMessage(WM_HSCROLL, MAKEWPARAM(TB_THUMBTRACK, 50000), control);
  m_target.SendMessage(WM_VSCROLL, MAKEWPARAM(SB_LINEDOWN, 0), 0);
  ASSERT_EQ(m_target.across.size(), 1U);
  EXPECT_EQ(m_target.across[0].code, UINT{TB_THUMBTRACK});
  EXPECT_EQ(m_target.across[0].position, 50000U);
  EXPECT_EQ(m_target.across[0].control, IDC_DOUBLE);
  ASSERT_EQ(m_target.upAndDown.size(), 1U);
  EXPECT_EQ(m_target.upAndDown[0].code, UINT{SB_LINEDOWN});
  EXPECT_EQ(m_target.upAndDown[0].control, -1);
}

TEST_F(Input, SliderTellsOfItsKeys) {
  CWnd slider;
  const RECT place = {0, 100, 100, 120};
  ASSERT_TRUE(slider.Create(TRACKBAR_CLASSW, _T(""), WS_CHILD | WS_VISIBLE, place, &m_target, IDC_DOUBLE));
  slider.SendMessage(WM_KEYDOWN, VK_RIGHT, 1);
  ASSERT_FALSE(m_target.across.empty());
  EXPECT_EQ(m_target.across[0].code, UINT{TB_LINEDOWN});
  EXPECT_EQ(m_target.across[0].control, IDC_DOUBLE);
}

TEST_F(Input, DroppedFilesComeWithTheirNames) {
  const CString names =
      CString(_T("C:\\one.dip")) + TCHAR{0} + _T("C:\\\u00E4 two.txt") + TCHAR{0} + TCHAR{0};
  const std::size_t bytes = static_cast<std::size_t>(names.GetLength()) * sizeof(TCHAR);
  const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + bytes);
  auto* const list = static_cast<DROPFILES*>(::GlobalLock(memory));
  list->pFiles = sizeof(DROPFILES);
  list->fWide = TRUE;
  std::memcpy(list + 1, names.GetString(), bytes);
  ::GlobalUnlock(memory);
  m_target.SendMessage(WM_DROPFILES, reinterpret_cast<WPARAM>(memory));
  EXPECT_EQ(m_target.dropped, (std::vector<std::string>{"C:\\one.dip", "C:\\ä two.txt"}));
}

TEST_F(Input, WindowsSayWhetherTheyAcceptFiles) {
  EXPECT_EQ(m_target.GetExStyle() & WS_EX_ACCEPTFILES, 0U);
  m_target.DragAcceptFiles();
  EXPECT_NE(m_target.GetExStyle() & WS_EX_ACCEPTFILES, 0U);
  m_target.DragAcceptFiles(FALSE);
  EXPECT_EQ(m_target.GetExStyle() & WS_EX_ACCEPTFILES, 0U);
}

TEST_F(Input, MiddleButtonBringsItsPlace) {
  m_target.SendMessage(WM_MBUTTONDOWN, MK_MBUTTON | MK_SHIFT, MAKELPARAM(-7, 300));
  m_target.SendMessage(WM_MBUTTONUP, 0, MAKELPARAM(1, 2));
  ASSERT_EQ(m_target.middlePresses.size(), 1U);
  EXPECT_EQ(m_target.middlePresses[0], CPoint(-7, 300));
  EXPECT_EQ(m_target.middleFlags, UINT{MK_MBUTTON | MK_SHIFT});
  EXPECT_EQ(m_target.middleReleases, 1);
}

TEST_F(Input, CaptureGoesFromOneWindowToTheNext) {
  EXPECT_EQ(CWnd::GetCapture(), nullptr);
  EXPECT_EQ(m_target.SetCapture(), nullptr);
  EXPECT_EQ(CWnd::GetCapture(), &m_target);
  EXPECT_EQ(m_child.SetCapture(), &m_target);
  EXPECT_EQ(m_target.captureChanges, 1);
  EXPECT_EQ(m_target.capturedNext, m_child.m_hWnd);
  EXPECT_EQ(CWnd::GetCapture(), &m_child);
  ::ReleaseCapture();
  EXPECT_EQ(m_child.captureChanges, 1);
  EXPECT_EQ(m_child.capturedNext, nullptr);
  EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST_F(Input, WindowMayRefuseTheEndOfTheSession) {
  EXPECT_EQ(m_target.SendMessage(WM_QUERYENDSESSION), TRUE);
  m_target.mayEnd = FALSE;
  EXPECT_EQ(m_target.SendMessage(WM_QUERYENDSESSION), FALSE);
}

TEST_F(Input, ComboBoxTellsOfItsChoice) {
  CWnd box;
  const RECT place = {0, 0, 100, 100};
  ASSERT_TRUE(box.Create(_T("COMBOBOX"), _T(""), WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST, place, &m_target,
                         IDC_LIST));
  box.SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(_T("one")));
  box.SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(_T("two")));
  box.SendMessage(CB_SETCURSEL, 0);
  EXPECT_EQ(m_target.choices, 0);  // the program's, not the user's
  box.SendMessage(WM_KEYDOWN, VK_DOWN, 1);
  EXPECT_EQ(box.SendMessage(CB_GETCURSEL), 1);
  EXPECT_EQ(m_target.choices, 1);
}

}  // namespace
