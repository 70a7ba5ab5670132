#include "host/viewer/ProgressWindow.h"

#include <afxcmn.h>

namespace host {

ProgressWindow::ProgressWindow(CWnd* parent) {
  if (!Create(IDD_PROGRESS, parent)) {
    return;
  }
  const auto disable = [](HWND window, LPARAM parameter) -> BOOL {
    auto& progress = *reinterpret_cast<ProgressWindow*>(parameter);
    if (window != progress.m_hWnd && ::IsWindowVisible(window) != FALSE &&
        ::IsWindowEnabled(window) != FALSE) {
      progress.m_disabled.push_back(window);
      ::EnableWindow(window, FALSE);
    }
    return TRUE;
  };
  ::EnumThreadWindows(::GetCurrentThreadId(), disable, reinterpret_cast<LPARAM>(this));
  ShowWindow(SW_SHOW);
}

ProgressWindow::~ProgressWindow() {
  // First, so that one of them becomes the active window again.
  for (const HWND window : m_disabled) {
    ::EnableWindow(window, TRUE);
  }
  DestroyWindow();
}

bool ProgressWindow::show(int done, int total, const CString& path) {
  if (m_hWnd == nullptr) {
    return true;  // no window, no cancelling
  }
  CString text;
  text.Format(_T("File %d of %d: %s"), done + 1, total, static_cast<LPCTSTR>(path));
  SetDlgItemText(IDC_PROGRESS_TEXT, text);
  SendDlgItemMessage(IDC_PROGRESS_BAR, PBM_SETRANGE32, 0, total);
  SendDlgItemMessage(IDC_PROGRESS_BAR, PBM_SETPOS, static_cast<WPARAM>(done));
  MSG message = {};
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    if (message.message == WM_QUIT) {
      ::PostQuitMessage(static_cast<int>(message.wParam));
      return false;
    }
    if (!AfxPreTranslateMessage(&message)) {
      ::TranslateMessage(&message);
      ::DispatchMessageW(&message);
    }
  }
  return !m_isCancelled;
}

}  // namespace host
