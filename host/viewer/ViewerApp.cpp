#include "host/viewer/ViewerApp.h"

#include <algorithm>
#include <commctrl.h>
#include <filesystem>
#include <shellapi.h>
#include <vector>

#include "host/exchange/FileKind.h"
#include "host/exchange/ModuleMessages.h"
#include "host/text/PathText.h"
#include "host/viewer/Benchmark.h"
#include "host/viewer/ScreenScale.h"

namespace host {

namespace {

std::vector<CString> arguments() {
  int count = 0;
  LPWSTR* const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  std::vector<CString> texts;
  for (int i = 1; i < count; ++i) {
    texts.emplace_back(words[i]);
  }
  ::LocalFree(words);
  return texts;
}

CString wholePath(const CString& path) {
  std::error_code error;
  const std::filesystem::path whole = std::filesystem::absolute(pathOf(path), error);
  return error ? path : textOf(whole);
}

// Whether a field has the keyboard, and the key is one of its own: undo, and the caret's steps.
bool isForField(const MSG& message) {
  TCHAR className[16] = {};
  ::GetClassNameW(message.hwnd, className, 16);
  const bool isOwn = message.wParam == 'Z' || message.wParam == 'Y' || message.wParam == VK_LEFT ||
                     message.wParam == VK_RIGHT;
  return isOwn && CString(className).CompareNoCase(_T("Edit")) == 0;
}

}  // namespace

int ViewerApp::DoMessageBox(LPCTSTR text, UINT type, UINT helpId) {
  // The module tells of each file that it imports; of many that would be a message box for each.
  const bool isKept = ModuleMessages::isNoting() && (type & MB_TYPEMASK) == MB_OK;
  const int answer = isKept ? IDOK : CWinApp::DoMessageBox(text, type, helpId);
  ModuleMessages::note(text, type, answer);
  return answer;
}

BOOL ViewerApp::InitInstance() {
  return makeFrame() && openArguments();
}

BOOL ViewerApp::makeFrame() {
  const INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_WIN95_CLASSES | ICC_LISTVIEW_CLASSES};
  ::InitCommonControlsEx(&controls);
  SetRegistryKey(_T("Dipole"));
  auto* const made = new MainFrame;  // ends itself with its window
  m_pMainWnd = made;
  if (!made->create()) {
    return FALSE;
  }
  const int width = onScreen(1280);
  const int height = onScreen(940);
  CRect screen;
  ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &screen, 0);
  made->SetWindowPos(nullptr, screen.left, screen.top, (std::min)(width, screen.Width()),
                     (std::min)(height, screen.Height()), SWP_NOZORDER);
  made->ShowWindow(m_nCmdShow);
  made->UpdateWindow();
  return TRUE;
}

// FALSE: there is nothing left to do.
BOOL ViewerApp::openArguments() {
  std::vector<CString> files;
  CString fiducials;
  CString report;
  const std::vector<CString> words = arguments();
  for (std::size_t i = 0; i < words.size(); ++i) {
    const bool isFollowed = i + 1 < words.size();
    if (words[i] == _T("--fiducials") && isFollowed) {
      fiducials = wholePath(words[++i]);
    } else if (words[i] == _T("--benchmark") && isFollowed) {
      report = wholePath(words[++i]);
    } else if (!words[i].IsEmpty()) {
      files.push_back(wholePath(words[i]));
    }
  }
  std::stable_sort(files.begin(), files.end(),
                   [](const CString& left, const CString& right) { return kindOf(left) < kindOf(right); });
  const auto firstOther = std::find_if(files.begin(), files.end(),
                                       [](const CString& path) { return kindOf(path) != FileKind::mri; });
  frame()->openFiles({files.begin(), firstOther});
  if (!fiducials.IsEmpty()) {
    frame()->registerFromFile(fiducials);
  }
  frame()->openFiles({firstOther, files.end()});
  if (report.IsEmpty()) {
    return TRUE;
  }
  writeBenchmark(*frame(), report, {files.begin(), firstOther});
  return FALSE;
}

// The main window's keys also work while one of the module's windows or the view panel has the keyboard,
// except those that mean something in a field.
BOOL ViewerApp::PreTranslateMessage(MSG* message) {
  const bool isKey = message->message == WM_KEYDOWN || message->message == WM_SYSKEYDOWN;
  if (frame() == nullptr) {
    return CWinApp::PreTranslateMessage(message);
  }
  if (isKey && !MainFrame::isBusy() && !isForField(*message) &&
      frame()->PreTranslateMessage(message) != FALSE) {
    return TRUE;
  }
  const bool isInput = isKey || message->message == WM_LBUTTONUP || message->message == WM_LBUTTONDBLCLK;
  if (isInput && ::GetAncestor(message->hwnd, GA_ROOT) != frame()->m_hWnd) {
    frame()->noteLater();
  }
  return CWinApp::PreTranslateMessage(message);
}

BOOL ViewerApp::OnIdle(LONG count) {
  if (frame() != nullptr) {
    frame()->onIdle();
  }
  return CWinApp::OnIdle(count);
}

}  // namespace host
