#include "platform/portable/SystemDialogs.h"

#include <commdlg.h>

#include "platform/portable/WinApp.h"
#include "platform/windows/Wnd.h"

// Here the system's function of this name is meant.
#undef CommDlgExtendedError

namespace {

// What a dialog stands before: the innermost one that is open, so that nothing behind it can be used.
HWND ownerOf(const CWnd* parent) {
  HWND window = parent != nullptr ? parent->m_hWnd : ::GetActiveWindow();
  if (window == nullptr && AfxGetMainWnd() != nullptr) {
    window = AfxGetMainWnd()->m_hWnd;
  }
  return window == nullptr ? nullptr : ::GetLastActivePopup(::GetAncestor(window, GA_ROOT));
}

// The name of the program's file, without its folder and extension.
CString programName() {
  TCHAR path[MAX_PATH] = {};
  ::GetModuleFileNameW(nullptr, path, MAX_PATH);
  CString name = path;
  name = name.Mid(name.ReverseFind(_T('\\')) + 1);
  const int point = name.ReverseFind(_T('.'));
  return point > 0 ? name.Left(point) : name;
}

}  // namespace

int askSystem(LPCTSTR text, LPCTSTR caption, UINT type) {
  const CString name = caption == nullptr ? programName() : CString(caption);
  return ::MessageBoxW(ownerOf(nullptr), text, name, type);
}

bool askSystem(OPENFILENAME& question, bool open, CWnd* parent, DWORD& why) {
  question.hwndOwner = ownerOf(parent);
  const BOOL chosen = open ? ::GetOpenFileNameW(&question) : ::GetSaveFileNameW(&question);
  why = chosen != FALSE ? 0 : ::CommDlgExtendedError();
  return chosen != FALSE;
}

bool askSystem(CHOOSECOLOR& question, CWnd* parent) {
  question.hwndOwner = ownerOf(parent);
  return ::ChooseColorW(&question) != FALSE;
}
