// Messages and common dialogs of the system, where no operator is installed; drawing into windows; where
// resources are looked for.
#include <afxdlgs.h>

#include <fstream>
#include <gtest/gtest.h>

#include "platform/Operator.h"
#include "platform/Utf.h"
#include "tests/platform/windows/Robot.h"
#include "tests/platform/windows/ids.h"
#include "tests/support/TempFolder.h"

namespace {

class SystemDialogs : public testing::Test {
 protected:
  SystemDialogs() : m_before(installOperator(nullptr)) {}
  ~SystemDialogs() override { installOperator(m_before); }

  CWinApp m_app{_T("Viewer")};
  Operator* m_before;
  Robot m_robot;
};

TEST_F(SystemDialogs, MessageBoxesHaveTheApplicationsName) {
  std::string shown;
  m_robot.when("Viewer", [&](HWND box) {
    shown = messageOf(box);
    press(box, IDNO);
  });
  EXPECT_EQ(AfxMessageBox(_T("Delete? \u20AC"), MB_YESNO | MB_ICONQUESTION), IDNO);
  EXPECT_EQ(shown, "Delete? €");
  m_robot.when("Viewer", [](HWND box) { press(box, IDOK); });
  EXPECT_EQ(AfxMessageBox(_T("Done.")), IDOK);
}

TEST_F(SystemDialogs, MessageBoxesDisableTheDialogBehind) {
  CDialog behind;
  ASSERT_TRUE(behind.Create(IDD_PLAIN));
  behind.ShowWindow(SW_SHOWNORMAL);
  behind.SetActiveWindow();
  m_robot.when("Viewer", [&](HWND box) {
    EXPECT_FALSE(behind.IsWindowEnabled());
    press(box, IDOK);
  });
  AfxMessageBox(_T("Done."));
  EXPECT_TRUE(behind.IsWindowEnabled());
}

TEST_F(SystemDialogs, ColorIsChosen) {
  CColorDialog dialog(RGB(10, 20, 30), CC_FULLOPEN);
  m_robot.when("Color", [](HWND window) { press(window, IDOK); });
  EXPECT_EQ(dialog.DoModal(), IDOK);
  EXPECT_EQ(dialog.GetColor(), RGB(10, 20, 30));
  m_robot.when("Color", [](HWND window) { press(window, IDCANCEL); });
  EXPECT_EQ(dialog.DoModal(), IDCANCEL);
}

TEST_F(SystemDialogs, FileIsChosen) {
  const TempFolder folder;
  const CString path = folder.write("one.dip", std::string_view("bytes"));
  CFileDialog dialog(TRUE, _T("dip"), path, OFN_HIDEREADONLY, _T("Dipoles|*.dip|All|*.*||"));
  m_robot.when("Open", [](HWND window) { ::PostMessageW(window, WM_COMMAND, IDOK, 0); });
  EXPECT_EQ(dialog.DoModal(), IDOK);
  EXPECT_EQ(toUtf8(dialog.GetPathName()), toUtf8(path));
  EXPECT_EQ(toUtf8(dialog.GetFileName()), "one.dip");
  m_robot.when("Open", [](HWND window) { ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0); });
  EXPECT_EQ(dialog.DoModal(), IDCANCEL);
  EXPECT_EQ(CommDlgExtendedError(), 0U);
}

TEST(WindowContexts, DrawIntoTheirWindow) {
  CDialog dialog;
  ASSERT_TRUE(dialog.Create(IDD_PLAIN));
  dialog.ShowWindow(SW_SHOWNORMAL);
  pump();
  CClientDC context(&dialog);
  context.FillSolidRect(2, 3, 4, 5, RGB(200, 100, 50));
  EXPECT_EQ(context.GetPixel(2, 3), RGB(200, 100, 50));
  EXPECT_EQ(context.GetPixel(5, 7), RGB(200, 100, 50));
  EXPECT_NE(context.GetPixel(6, 8), RGB(200, 100, 50));
  CDC* const borrowed = dialog.GetDC();
  EXPECT_EQ(borrowed->GetPixel(2, 3), RGB(200, 100, 50));
  EXPECT_EQ(dialog.ReleaseDC(borrowed), 1);
}

TEST(WindowContexts, WithoutAWindowAreRefused) {
  CDialog dialog;
  ASSERT_TRUE(dialog.Create(IDD_PLAIN));
  CWnd gone;
  gone.m_hWnd = reinterpret_cast<HWND>(INT_PTR{0x7FFFFFF});
  try {
    const CClientDC context(&gone);
    ADD_FAILURE() << "no exception";
  } catch (CResourceException* exception) {
    exception->Delete();
  }
  gone.m_hWnd = nullptr;
}

TEST(Resources, AreFoundInExtensionLibraries) {
  const HMODULE library = ::LoadLibraryW(L"comdlg32.dll");
  ASSERT_NE(library, nullptr);
  const LPCTSTR name = MAKEINTRESOURCEW(10);  // the system's dialog to choose a colour
  const auto found = [&] { return AfxFindResourceHandle(MAKEINTRESOURCEW(IDD_PLAIN), RT_DIALOG); };
  EXPECT_EQ(found(), AfxGetInstanceHandle());
  static AFX_EXTENSION_MODULE state = {};
  ASSERT_TRUE(AfxInitExtensionModule(state, library));
  const auto* const linked = new CDynLinkLibrary(state);
  EXPECT_EQ(linked->m_hResource, library);
  const bool has = ::FindResourceW(library, name, RT_DIALOG) != nullptr;
  EXPECT_EQ(AfxFindResourceHandle(name, RT_DIALOG), has ? library : AfxGetInstanceHandle());
  EXPECT_EQ(found(), AfxGetInstanceHandle());  // the program's own come first
  AfxTermExtensionModule(state);
  EXPECT_EQ(AfxFindResourceHandle(name, RT_DIALOG), AfxGetInstanceHandle());
  ::FreeLibrary(library);
}

}  // namespace
