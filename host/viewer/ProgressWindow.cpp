#include "host/viewer/ProgressWindow.h"

#include <afxcmn.h>

namespace host {

ProgressWindow::ProgressWindow(CWnd* parent) : m_parent(parent) {
  if (Create(IDD_PROGRESS, parent)) {
    m_parent->EnableWindow(FALSE);
    ShowWindow(SW_SHOW);
  }
}

ProgressWindow::~ProgressWindow() {
  m_parent->EnableWindow(TRUE);  // first, so that it becomes the active window again
  DestroyWindow();
}

bool ProgressWindow::show(int done, int total, const CString& path) {
  if (m_hWnd == nullptr)
    return true;  // no window, no cancelling
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
